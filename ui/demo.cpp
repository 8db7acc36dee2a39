#include "ui/demo.h"

#include <QImage>
#include <QPixmap>
#include <QThreadPool>
#include <cmath>
#include <cstdio>
#include <sstream>

#include "base/text.h"

namespace quorvane {
namespace {

constexpr std::int32_t kStartSignal = 60000;    // ms on the race clock
constexpr std::int32_t kPictureOfCount = 2000;  // ms into the count

std::vector<std::string> Fields(const std::string& text) {
  std::vector<std::string> fields;
  std::istringstream stream(text);
  for (std::string field; std::getline(stream, field, ',');) fields.push_back(field);
  return fields;
}

// The pylon of a cut: judges 1 to 3 report as stations 0 to 2, the console's keys as "MP1" to "MP3".
int PylonOf(const std::string& source, const std::string& name) {
  const double station = LeadingNumber(source);
  if (station <= 2) return static_cast<int>(station) + 1;
  return name.size() == 3 && name.starts_with("MP") ? name[2] - '0' : 0;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return quoted + "\"";
}

void Append(std::string& list, const std::string& item) {
  list += (list.empty() ? "" : ",") + item;
}

}  // namespace

RecordedLane DescribeLane(int lane, const std::function<std::string(const std::string&)>& value) {
  std::string laps;
  std::string cuts;
  int turns = 0;
  const int events = static_cast<int>(LeadingNumber(value("NumEvents")));
  for (int i = 0; i < events; ++i) {
    const std::vector<std::string> fields = Fields(value("Event" + std::to_string(i)));
    if (fields.size() != 6) continue;
    const std::string time = std::to_string(static_cast<int>(LeadingNumber(fields[4])));
    if (fields[2] == "L") Append(laps, time);
    if (fields[2] == "C") {
      Append(cuts, "{\"pylon\":" + std::to_string(PylonOf(fields[1], fields[3])) + ",\"time\":" + time + "}");
    }
    if (fields[2] == "T") ++turns;
  }
  const std::string place = value("Placing");
  const bool result = value("Position") != "100";
  const int final = result ? static_cast<int>(std::lround(LeadingNumber(value("Time")) * 1000)) : kNoResult;
  RecordedLane recorded;
  recorded.json = "{\"lane\":" + std::to_string(lane) + ",\"laps\":[" + laps + "],\"cuts\":[" + cuts +
                  "],\"turns\":" + std::to_string(turns) + ",\"final\":" + std::to_string(final) +
                  ",\"place\":" + Quoted(place) + "}";
  recorded.text = "  lane " + std::to_string(lane) + ": " + place +
                  (result ? " in " + value("Time") + " s" : "") + ", laps " + value("NumLaps") + ", cuts " +
                  value("NumCuts");
  return recorded;
}

Demo::Demo(Program& program, ProgramWindows& windows, std::string folder, int heats)
    : program_(program), windows_(windows), folder_(std::move(folder)), heats_(heats) {}

Demo::~Demo() {
  windows_.SetAfterEvent({});
  QThreadPool::globalInstance()->waitForDone();
}

bool Demo::Begin() {
  shown_.open(folder_ + "/shown.jsonl");
  windows_.SetAfterEvent([this] { Look(); });
  return shown_.is_open();
}

DialogAnswer Demo::Answer(const DialogBox& box) {
  using Word = DialogAnswer::Word;
  switch (box.kind) {
    case DialogKind::Ok:
    case DialogKind::OkCancel:
      std::fprintf(stderr, "%s: %s\n", box.title.c_str(), box.text.c_str());
      return {Word::Ok};
    case DialogKind::YesNo:
    case DialogKind::YesNoCancel:
      return {Word::Yes};
    case DialogKind::Input:
      return {Word::Text, box.title == "Heats per Round" ? "4" : "Demonstration"};
    case DialogKind::OpenFile:
    case DialogKind::SaveFile:
      break;
  }
  return {Word::Cancel};
}

void Demo::Look() {
  if (!sized_ && windows_.Console().isVisible()) {
    sized_ = true;
    windows_.Console().resize(windows_.Console().sizeHint().expandedTo(QSize(1280, 800)));
  }
  if (heat_ < heats_) LookAtRace();
}

void Demo::LookAtRace() {
  const RaceState& race = program_.race();
  const std::int32_t time = program_.clock().RaceTime();
  if (stage_ == Stage::Waiting) {
    if (!race.RaceActive || race.RaceDone) return;
    stage_ = Stage::Counting;
    race_ = race.RaceNumber;
    lanes_.clear();
    for (int i = 0; i < 4; ++i) {
      if (program_.lane(i).Visible()) lanes_.push_back(i + 1);
    }
  }
  if (program_.judge().HasRun(race_)) return WriteHeat();
  if (stage_ == Stage::Counting && time >= kPictureOfCount) {
    stage_ = Stage::Flying;
    if (time < kStartSignal) Picture("countdown");
    pictured_ = false;
  }
  if (stage_ == Stage::Flying && !pictured_ && program_.lane(0).Laps() >= 3) {
    pictured_ = true;
    Picture("flight");
  }
  if (stage_ == Stage::Flying && race.RaceDone) {
    stage_ = Stage::Finished;
    Picture("finish");
  }
}

// The picture is packed elsewhere: bytes that arrive meanwhile must not wait for it.
void Demo::Picture(const char* what) {
  const QString file =
      QString::fromStdString(folder_ + "/heat" + std::to_string(heat_ + 1) + "-" + what + ".png");
  QThreadPool::globalInstance()->start(
      [image = windows_.Console().grab().toImage(), file] { image.save(file); });
}

void Demo::WriteHeat() {
  ++heat_;
  stage_ = Stage::Waiting;
  std::string lanes;
  std::printf("Heat %d\n", heat_);
  for (const int lane : lanes_) {
    const std::string section = "Race" + std::to_string(race_) + "_Lane" + std::to_string(lane);
    const RecordedLane recorded = DescribeLane(
        lane, [&](const std::string& key) { return program_.project().GetProjectValue(section, key, ""); });
    Append(lanes, recorded.json);
    std::printf("%s\n", recorded.text.c_str());
  }
  std::fflush(stdout);
  shown_ << "{\"heat\":" << heat_ << ",\"lanes\":[" << lanes << "]}" << std::endl;
  if (heat_ == heats_) program_.door().System().EndProgram();
}

}  // namespace quorvane

#include "ui/demo.h"

#include <fmt/format.h>

#include <QImage>
#include <QPixmap>
#include <QThreadPool>
#include <cctype>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

#include "base/text.h"

namespace quorvane {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::int32_t kStartSignal = 60000;    // ms on the race clock
constexpr std::int32_t kPictureOfCount = 2000;  // ms into the count

// Pylon 2 of "P2" or "MP2"; 0 for a cut that names none.
int PylonOf(const std::string& source) {
  const char last = source.empty() ? '0' : source.back();
  return std::isdigit(static_cast<unsigned char>(last)) != 0 ? last - '0' : 0;
}

Json LaneJson(const LaneRecord& lane) {
  Json laps = Json::array();
  for (const LapRecord& lap : lane.laps) laps.push_back(lap.time);
  Json cuts = Json::array();
  for (const CutRecord& cut : lane.cuts) cuts.push_back({{"pylon", PylonOf(cut.pylon)}, {"time", cut.time}});
  return {{"lane", lane.lane},          {"laps", laps},        {"cuts", cuts},
          {"turns", lane.turns.size()}, {"final", lane.final}, {"place", lane.placing}};
}

std::string HeatJson(int heat, const RaceRecord& race) {
  Json lanes = Json::array();
  for (const LaneRecord& lane : FlyingLanes(race)) lanes.push_back(LaneJson(lane));
  return Json{{"heat", heat}, {"lanes", lanes}}.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// As lines to be read.
std::string HeatText(int heat, const RaceRecord& race) {
  std::string text = fmt::format("Heat {}\n", heat);
  for (const LaneRecord& lane : FlyingLanes(race)) {
    const std::string time = HasResult(lane) ? " in " + FormatSeconds(lane.final) + " s" : "";
    text += fmt::format("  lane {}: {}{}, laps {}, cuts {}\n", lane.lane, lane.placing, time,
                        lane.laps.size(), lane.cuts.size());
  }
  return text;
}

}  // namespace

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
  if (box.kind == DialogKind::YesNo || box.kind == DialogKind::YesNoCancel) return {Word::Yes};
  if (box.kind == DialogKind::Input) {
    return {Word::Text, box.title == "Heats per Round" ? "4" : "Demonstration"};
  }
  if (box.kind == DialogKind::OpenFile || box.kind == DialogKind::SaveFile) return {Word::Cancel};
  std::fprintf(stderr, "%s: %s\n", box.title.c_str(), box.text.c_str());
  return {Word::Ok};
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
  if (race_ == 0) {
    if (!program_.judge().RaceBeingFlown()) return;
    race_ = race.RaceNumber;
    std::cout << "Race " << race_ << " is flown" << std::endl;  // at once, for whoever measures
  }
  if (program_.judge().HasRun(race_)) return WriteHeat();
  const std::int32_t time = program_.clock().RaceTime();
  if (time >= kPictureOfCount && time < kStartSignal) Picture("countdown");
  if (program_.lane(0).Counts().laps >= 3) Picture("flight");
  if (race.RaceDone) Picture("finish");
}

// The picture is packed elsewhere: bytes that arrive meanwhile must not wait for it.
void Demo::Picture(const std::string& what) {
  if (!pictured_.insert(what).second) return;
  const std::string file = fmt::format("{}/heat{}-{}.png", folder_, heat_ + 1, what);
  QThreadPool::globalInstance()->start(
      [image = windows_.Console().grab().toImage(), file] { image.save(QString::fromStdString(file)); });
}

void Demo::WriteHeat() {
  ++heat_;
  const RaceRecord race = ReadRace(OpenProject(program_.project(), program_.race()), race_);
  race_ = 0;
  pictured_.clear();
  std::cout << HeatText(heat_, race) << std::flush;
  shown_ << HeatJson(heat_, race) << std::endl;
  if (heat_ == heats_) program_.door().System().EndProgram();
}

}  // namespace quorvane

// A lane in the project file.

#include <algorithm>

#include "base/text.h"
#include "lane/frm_lane.h"

namespace quorvane {
namespace {

constexpr const char* kNoCaptions = ",,,,,,,,,,,,,";

std::string Captions(const ControlArray& labels, int number) {
  std::vector<std::string> captions;
  for (int i = 0; i < number; ++i) captions.push_back(labels[i].Caption());
  return Join(captions, ',');
}

}  // namespace

std::string frmLane::LaneSection(const std::string& section) const {
  return section + "_Lane" + std::to_string(laneNumber_);
}

void frmLane::SaveLane(const std::string& section) {
  const std::string lane = LaneSection(section);
  const auto set = [&](const std::string& key, const std::string& value) {
    owner_.SetProjectValue(lane, key, value);
  };
  set("NumEvents", std::to_string(log_.EventCount()));
  set("NumCuts", std::to_string(counts_.cutCount));
  set("NumLaps", std::to_string(counts_.laps));
  set("Placing", status_);
  set("Position", position_);
  set("Time", counts_.finalTime < kNoResult ? FormatSeconds(counts_.finalTime) : "nt");
  set("Laps", Captions(lblLap, kLastLapCell + 1));
  set("Cuts", Captions(lblCut, std::min<int>(counts_.cutCount, kLastCutMark)));
  for (int i = 0; i < log_.EventCount(); ++i) set("Event" + std::to_string(i), EventText(log_[i]));
}

void frmLane::LoadLane(const std::string& section) {
  const std::string lane = LaneSection(section);
  const auto value = [&](const std::string& key) { return owner_.GetProjectValue(lane, key, ""); };
  const double mode = LeadingNumber(owner_.GetProjectValue(section, "RaceMode", ""));
  TurnToAnotherRace();
  loadedFai_ = mode >= 1 && mode < 7 ? mode >= kFirstFaiMode : race_.IsFaiMode;
  LoadCaptions(lane, "Laps", lblLap);
  LoadCaptions(lane, "Cuts", lblCut);
  // The counts and the time that the file gives are for its readers; the log has the last word here.
  log_.Read(value);
  // A lane that flew was saved with a place, or with why it has none.
  doesNotFly_ = !Flies() || (log_.EventCount() == 0 && value("Placing").empty());

  const int laps = RecountLaps(log_, *loadedFai_).laps;
  for (int i = 0; i <= kLastLapCell; ++i) lblLap[i].SetBackColor(i < laps ? kSilver : kWhite);
  SetPosition("");
  NeedsCutDisplay_ = true;
  FinalizeRace();
  for (Control* cell : lblLap) cell->SetVisible(cell->Caption().find_first_not_of(' ') != std::string::npos);
  SetStatus(value("Placing"));
  SetPosition(value("Position"));
}

void frmLane::LoadCaptions(const std::string& laneSection, const char* key, const ControlArray& labels) {
  const std::vector<std::string> fields = Split(owner_.GetProjectValue(laneSection, key, kNoCaptions), ',');
  for (int i = 0; i <= labels.Upper(); ++i) {
    const auto field = static_cast<std::size_t>(i);
    labels[i].SetCaption(field < fields.size() ? fields[field] : " ");
    labels[i].SetVisible(field < fields.size());
  }
}

}  // namespace quorvane

// A lane in the project file.

#include <algorithm>

#include "base/text.h"
#include "base/time_text.h"
#include "lane/frm_lane.h"
#include "lane/lane_text.h"

namespace quorvane {
namespace {

constexpr const char* kNoCaptions = ",,,,,,,,,,,,,";

std::string Captions(const ControlArray& labels, int number) {
  std::vector<std::string> captions;
  captions.reserve(static_cast<std::size_t>(number));
  for (int i = 0; i < number; ++i) captions.push_back(labels[i].Caption());
  return Join(captions, ',');
}

bool HasContent(const Control& label) {
  return label.Caption().find_first_not_of(' ') != std::string::npos;
}

}  // namespace

std::string frmLane::LaneSection(const std::string& section) const {
  return section + "_Lane" + std::to_string(laneNumber_);
}

void frmLane::SaveLane(const std::string& section) {
  const std::string lane = LaneSection(section);
  owner_.SetProjectValue(lane, "NumEvents", std::to_string(log_.EventCount()));
  owner_.SetProjectValue(lane, "NumCuts", std::to_string(CutCount_));
  owner_.SetProjectValue(lane, "NumLaps", std::to_string(Laps_));
  owner_.SetProjectValue(lane, "Placing", lblStatus.Caption());
  owner_.SetProjectValue(lane, "Position", lblStatus.Tag());
  owner_.SetProjectValue(lane, "Time", FinalTime_ < kNoFinalTime ? FormatSeconds(FinalTime_) : "nt");
  owner_.SetProjectValue(lane, "Laps", Captions(lblLap, lblLap.Upper() + 1));
  owner_.SetProjectValue(lane, "Cuts", Captions(lblCut, std::min<int>(CutCount_, lblCut.Upper())));
  for (int i = 0; i < log_.EventCount(); ++i) {
    owner_.SetProjectValue(lane, "Event" + std::to_string(i), EventText(log_[i]));
  }
}

void frmLane::LoadLane(const std::string& section) {
  const std::string lane = LaneSection(section);
  const double mode = LeadingNumber(owner_.GetProjectValue(section, "RaceMode", ""));
  TurnToAnotherRace();
  loaded_ = true;
  loadedFai_ = mode >= 1 && mode < 7 ? mode >= 4 : race_.IsFaiMode;
  LoadCaptions(lane, "Laps", lblLap);
  LoadCaptions(lane, "Cuts", lblCut);
  // The counts and the time that the file gives are for its readers; the log has the last word here.
  LoadLog(lane);
  // A lane that flew was saved with a place, or with why it has none.
  doesNotFly_ = !Flies() || (log_.EventCount() == 0 && owner_.GetProjectValue(lane, "Placing", "").empty());

  const int laps = RecountLaps(log_, loadedFai_).laps;
  for (int i = 0; i <= lblLap.Upper(); ++i) lblLap[i].SetBackColor(i < laps ? kSilver : kWhite);
  lblStatus.SetTag("");
  NeedsCutDisplay_ = true;
  FinalizeRace();
  for (Control* cell : lblLap) cell->SetVisible(HasContent(*cell));
  LoadStatus(section);
}

void frmLane::LoadCaptions(const std::string& laneSection, const char* key, const ControlArray& labels) {
  const std::vector<std::string> fields = Split(owner_.GetProjectValue(laneSection, key, kNoCaptions), ',');
  for (int i = 0; i <= labels.Upper(); ++i) {
    const auto field = static_cast<std::size_t>(i);
    labels[i].SetCaption(field < fields.size() ? fields[field] : " ");
    labels[i].SetVisible(field < fields.size());
  }
}

void frmLane::LoadLog(const std::string& laneSection) {
  const LaneValue value = [&](const std::string& key, const std::string& fallback) {
    return owner_.GetProjectValue(laneSection, key, fallback);
  };
  log_ = ReadLog(value, log_);
}

void frmLane::LoadStatus(const std::string& section) {
  const std::string lane = LaneSection(section);
  lblStatus.SetCaption(owner_.GetProjectValue(lane, "Placing", ""));
  lblStatus.SetTag(owner_.GetProjectValue(lane, "Position", ""));
}

}  // namespace quorvane

// A lane in the project file.

#include <algorithm>
#include <cmath>
#include <optional>

#include "common/checked.h"
#include "common/text.h"
#include "common/time_text.h"
#include "lane/frm_lane.h"

namespace quorvane {
namespace {

constexpr const char* kNoCaptions = ",,,,,,,,,,,,,";
constexpr std::size_t kEventFields = 6;

std::string Captions(const ControlArray& labels, int number) {
  std::vector<std::string> captions;
  for (int i = 0; i < number; ++i) captions.push_back(labels[i].Caption());
  return Join(captions, ',');
}

std::string EventText(const LaneEvent& event) {
  return Join({std::to_string(event.Count), std::to_string(event.Source), event.Kind, event.SourceName,
               std::to_string(event.EventTime), std::to_string(event.FirstReported)},
              ',');
}

// None for an entry with another number of fields or a number that its field cannot hold.
std::optional<LaneEvent> ReadEvent(const std::string& text) {
  const std::vector<std::string> fields = Split(text, ',');
  if (fields.size() != kEventFields) return std::nullopt;
  try {
    return LaneEvent{RoundTo<std::uint8_t>(LeadingNumber(fields[0])),
                     RoundTo<std::uint8_t>(LeadingNumber(fields[1])),
                     fields[2],
                     fields[3],
                     LeadingLong(fields[4]),
                     LeadingLong(fields[5])};
  } catch (const OverflowError&) {
    return std::nullopt;
  }
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

  const int laps = RecountLaps(log_, loadedFai_).laps;
  for (int i = 0; i <= lblLap.Upper(); ++i) lblLap[i].SetBackColor(i < laps ? kSilver : kWhite);
  lblStatus.SetTag("");
  cmdCut.SetTag("-1");
  NeedsCutDisplay_ = true;
  FinalizeRace();
  // The boxes take the cells' colours, and the finishing lap has got its own only now.
  DisplayTotals();
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
  const double number = LeadingNumber(owner_.GetProjectValue(laneSection, "NumEvents", "0"));
  log_.Clear();
  log_.SetEventCount(static_cast<int>(std::clamp(std::nearbyint(number), 0.0, double{LaneLog::kSlots})));
  for (int i = 0; i < log_.EventCount(); ++i) {
    auto event = ReadEvent(owner_.GetProjectValue(laneSection, "Event" + std::to_string(i), ",,,,"));
    if (event) log_.Restore(i, *std::move(event));
  }
}

void frmLane::LoadStatus(const std::string& section) {
  const std::string lane = LaneSection(section);
  lblStatus.SetCaption(owner_.GetProjectValue(lane, "Placing", ""));
  lblStatus.SetTag(owner_.GetProjectValue(lane, "Position", ""));
}

}  // namespace quorvane

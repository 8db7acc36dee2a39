// Finish, placing and totals.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/checked.h"
#include "base/text.h"
#include "lane/frm_lane.h"

namespace quorvane {
namespace {

constexpr Color kFinishingLap = Color::Rgb(0x80FF80);
constexpr Color kNoFinish = Color::Rgb(0xFFC0C0);
constexpr int kAllGiven = 5;  // the place that is offered after the last one
constexpr int kTenthCell = kLastLapCell - 1;

// "First", "1", "1." or "1st", with or without "place" after it; 0 for anything else, such as "2 cuts".
int PlaceIn(const std::string& text) {
  static constexpr std::array kEndings = {"st", "nd", "rd", "th"};
  std::vector<std::string> words = Split(text, ' ');
  std::erase(words, "");
  if (words.size() == 2 && EqualsIgnoringCase(words[1], "place")) words.pop_back();
  if (words.size() != 1) return 0;
  if (words[0].ends_with('.')) words[0].pop_back();
  for (std::size_t i = 0; i < kPlaceWords.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    for (const std::string& form : {std::string(kPlaceWords[i]), number, number + kEndings[i]}) {
      if (EqualsIgnoringCase(words[0], form)) return static_cast<int>(i + 1);
    }
  }
  return 0;
}

std::string PlaceWord(int place) {
  return place >= 1 && place < kAllGiven ? kPlaceWords[static_cast<std::size_t>(place - 1)] : "";
}

}  // namespace

std::int32_t frmLane::GetFinal() {
  if (doesNotFly_) return kNoResult;
  const bool doubleCut = counts_.cutsBeforeFinish >= 2;
  if (counts_.laps < counts_.lapTarget || doubleCut) {
    txtLapTen.SetBackColor(kNoFinish);
    txtLapEleven.SetBackColor(kNoFinish);
    if (!StatusLocked()) SetStatus(doubleCut ? "Dbl Cut" : "DNF");
    return kNoResult;
  }
  const bool withTen = counts_.cutsBeforeFinish == 0 || IsFai();
  lblLap[kTenthCell].SetBackColor(withTen ? kFinishingLap : kSilver);
  lblLap[kLastLapCell].SetBackColor(withTen ? kSilver : kFinishingLap);
  if (!StatusLocked()) SetStatus(FormatMinutes(FormatSeconds(counts_.finalTime)));
  return counts_.finalTime;
}

void frmLane::FinalizeRace() {
  if (NeedsCutDisplay_) RecalculateCuts();
  counts_ = RecountLaps(log_, IsFai());
  const int laps = counts_.laps;
  if (!doesNotFly_ && HasCell(laps)) lblLap[laps].SetCaption(counts_.cutsBeforeFinish > 1 ? "DBL" : "DNF");
  for (int i = laps + 1; i <= kLastLapCell; ++i) lblLap[i].SetCaption("");
  DisplayTotals();
}

void frmLane::DisplayTotals() {
  if (log_.EventCount() > 0) {
    if (IsFinished()) return ShowResult();
    return DisplayCutTotals();
  }
  ShowCuts(0);
  if (!StatusLocked()) {
    SetPosition("");
    SetStatus("");
    lblStatus.SetForeColor(kButtonText);
  }
  for (Control* box : {&txtLapTen, &txtLapEleven}) {
    box->SetText("");
    box->SetBackColor(kSilver);
  }
}

void frmLane::ShowResult() {
  txtLapTen.SetText(lblLap[kTenthCell].Caption());
  txtLapEleven.SetText(lblLap[kLastLapCell].Caption());
  DisplayCutTotals();
  if (GetFinal() >= kNoResult) return;
  txtLapTen.SetBackColor(lblLap[kTenthCell].BackColor());
  txtLapEleven.SetBackColor(lblLap[kLastLapCell].BackColor());
}

// An entry made after the race is over must show in the result at once, however short a time ago the lane's
// last lap is: no tick comes any more. Once that race is saved, the panel is that of the next one.
void frmLane::EntryMade() {
  if (!race_.RaceActive || !race_.RaceDone) return;
  FinalizeRace();
  ShowResult();
  owner_.ResultChanged();
}

void frmLane::SetStatus(std::string text) {
  status_ = std::move(text);
  lblStatus.SetCaption(status_);
}

void frmLane::SetPosition(std::string position) {
  position_ = std::move(position);
  lblStatus.SetTag(position_);
}

int frmLane::PlaceByHand() const {
  return StatusLocked() ? PlaceIn(status_) : 0;
}

void frmLane::Rank(int place) {
  if (StatusLocked()) return;
  if (place == 0) return SetPosition("100");
  SetStatus(PlaceWord(place));
  SetPosition(std::to_string(place));
}

void frmLane::LaneOrder(int place) {
  if (place == 1) {
    if (StatusLocked()) SetPosition("");
    cmdOrder.SetVisible(GetFinal() < kNoResult);
  }
  OfferPlace(place);
}

void frmLane::OfferPlace(int place) {
  if (place < 1 || place > kAllGiven) throw RunTimeError("Invalid use of Null");
  placeOffered_ = place;
  cmdOrder.SetCaption(PlaceWord(place));
  cmdOrder.SetTag(std::to_string(place));
}

void frmLane::GiveUpPlace() {
  SetPosition("");
  const bool hasResult = GetFinal() < kNoResult;
  if (placeOffered_ != 0) cmdOrder.SetVisible(hasResult);
}

void frmLane::cmdOrder_Click() {
  const int place = placeOffered_;
  SetPosition("Locked");
  SetStatus(PlaceWord(place));
  cmdOrder.SetVisible(false);
  if (place < kAllGiven) owner_.SetOrder(std::min(place + 1, kAllGiven - 1));
}

// What the operator writes stands like a place that was given by the button: nothing else replaces it.
void frmLane::lblStatus_Click() {
  const unsigned race = raceSerial_;
  const DialogAnswer answer =
      owner_.Ask({DialogKind::Input, "Finish Order", "Enter finish order", DialogIcon::None, status_});
  if (answer.word != DialogAnswer::Word::Text || race != raceSerial_ || answer.text <= " ") return;
  const int place = PlaceIn(answer.text);
  if (place != 0) owner_.TakePlace(laneNumber_, place);
  SetPosition("Locked");
  SetStatus(answer.text);
  cmdOrder.SetVisible(false);
  // The place that is offered may be taken now, or one before it free again.
  if (placeOffered_ != 0) owner_.SetOrder(std::min(placeOffered_ + 1, kAllGiven - 1));
  owner_.ResultChanged();
}

std::uint8_t frmLane::LightLeft() const {
  if (!tmrLaps.Enabled() && !tmrTurns.Enabled()) return 0;
  const std::int64_t end = tmrLaps.Enabled() ? lapLightEnd_ : TurnTimerEnd_;
  return static_cast<std::uint8_t>(std::clamp<std::int64_t>((end - owner_.RaceTime()) / 8, 0, 255));
}

}  // namespace quorvane

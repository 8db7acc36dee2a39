// Finish, placing and totals.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "base/text.h"
#include "base/time_text.h"
#include "lane/frm_lane.h"

namespace quorvane {
namespace {

constexpr Color kFinishingLap = Color::Rgb(0x80FF80);
constexpr Color kNoFinish = Color::Rgb(0xFFC0C0);
constexpr int kTenthCell = 9;
constexpr int kEleventhCell = 10;

// "First", "1", "1." or "1st", with or without "place" after it; 0 for anything else: "2 cuts" and "1:23.45"
// are none.
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

}  // namespace

void frmLane::GetFinal(std::int32_t& result) {
  if (doesNotFly_) {
    result = kNoFinalTime;
    return;
  }
  std::string status;
  if (Laps_ < LapTarget_ || CutsBeforeFinish_ >= 2) {
    result = kNoFinalTime;
    txtLapTen.SetBackColor(kNoFinish);
    txtLapEleven.SetBackColor(kNoFinish);
    status = CutsBeforeFinish_ >= 2 ? "Dbl Cut" : "DNF";
  } else {
    result = FinalTime_;
    status = FormatMinutes(FormatSeconds(FinalTime_));
    const bool withTen = CutsBeforeFinish_ == 0 || IsFai();
    lblLap[kTenthCell].SetBackColor(withTen ? kFinishingLap : kSilver);
    lblLap[kEleventhCell].SetBackColor(withTen ? kSilver : kFinishingLap);
  }
  if (!StatusLocked()) lblStatus.SetCaption(status);
}

void frmLane::FinalizeRace() {
  RecalculateCuts(true);
  RecalculateLaps(false);
  if (!doesNotFly_ && HasCell(Laps_)) lblLap[Laps_].SetCaption(CutsBeforeFinish_ > 1 ? "DBL" : "DNF");
  for (int i = Laps_ + 1; i <= lblLap.Upper(); ++i) lblLap[i].SetCaption("");
  DisplayTotals();
}

void frmLane::DisplayTotals() {
  if (log_.EventCount() == 0) {
    cmdCut.SetCaption("Cut");
    cmdCut.SetTag("0");
    if (!StatusLocked()) {
      lblStatus.SetTag("");
      lblStatus.SetCaption("");
      lblStatus.SetForeColor(kButtonText);
    }
    for (Control* box : {&txtLapTen, &txtLapEleven}) {
      box->SetText("");
      box->SetBackColor(kSilver);
    }
    return;
  }
  if (IsFinished()) {
    ShowResult();
  } else {
    DisplayCutTotals();
  }
}

void frmLane::ShowResult() {
  txtLapTen.SetText(lblLap[kTenthCell].Caption());
  txtLapEleven.SetText(lblLap[kEleventhCell].Caption());
  DisplayCutTotals();
  std::int32_t final = 0;
  GetFinal(final);
  if (final < kNoFinalTime) {
    txtLapTen.SetBackColor(lblLap[kTenthCell].BackColor());
    txtLapEleven.SetBackColor(lblLap[kEleventhCell].BackColor());
  }
}

// An entry made after the race is over must show in the result at once, however short a time ago the lane's
// last lap is: no tick comes any more. Once that race is saved, the panel is that of the next one.
void frmLane::EntryMade() {
  if (!race_.RaceActive || !race_.RaceDone) return;
  FinalizeRace();
  ShowResult();
  owner_.ResultChanged();
}

int frmLane::PlaceByHand() const {
  return StatusLocked() ? PlaceIn(lblStatus.Caption()) : 0;
}

void frmLane::LaneOrder(int place) {
  if (place == 1) {
    if (StatusLocked()) lblStatus.SetTag("");
    std::int32_t final = 0;
    GetFinal(final);
    cmdOrder.SetVisible(final < kNoFinalTime);
  }
  OfferPlace(place);
}

void frmLane::OfferPlace(int place) {
  const int none = static_cast<int>(kPlaceWords.size()) + 1;
  if (place < 1 || place > none) throw RunTimeError("Invalid use of Null");
  cmdOrder.SetCaption(place == none ? "" : kPlaceWords[static_cast<std::size_t>(place - 1)]);
  cmdOrder.SetTag(std::to_string(place));
}

void frmLane::GiveUpPlace() {
  lblStatus.SetTag("");
  std::int32_t final = 0;
  GetFinal(final);
  if (LeadingInteger(cmdOrder.Tag()) != 0) cmdOrder.SetVisible(final < kNoFinalTime);
}

void frmLane::cmdOrder_Click() {
  const int n = LeadingInteger(cmdOrder.Tag());
  lblStatus.SetTag("Locked");
  lblStatus.SetCaption(cmdOrder.Caption());
  cmdOrder.SetVisible(false);
  if (n < 5) owner_.SetOrder(std::min(n + 1, 4));
}

// What the operator writes stands like a place that was given by the button: nothing else replaces it.
void frmLane::lblStatus_Click() {
  const unsigned race = raceSerial_;
  const DialogAnswer answer = owner_.Ask(
      {DialogKind::Input, "Finish Order", "Enter finish order", DialogIcon::None, lblStatus.Caption()});
  if (answer.word != DialogAnswer::Word::Text || race != raceSerial_) return;
  if (answer.text <= " ") return;
  const int place = PlaceIn(answer.text);
  if (place != 0) owner_.TakePlace(laneNumber_, place);
  lblStatus.SetTag("Locked");
  lblStatus.SetCaption(answer.text);
  cmdOrder.SetVisible(false);
  // The place that is offered may be taken now, or one before it free again.
  const int offered = LeadingInteger(cmdOrder.Tag());
  if (offered != 0) owner_.SetOrder(std::min(offered + 1, 4));
  owner_.ResultChanged();
}

void frmLane::GetInfo(std::uint8_t& laps, std::uint8_t& lit, std::array<std::int16_t, 4>& cuts) const {
  std::int64_t left = 0;
  if (tmrLaps.Enabled()) {
    left = lapLightEnd_ - owner_.RaceTime();
  } else if (tmrTurns.Enabled()) {
    left = std::int64_t{TurnTimerEnd_} - owner_.RaceTime();
  }
  laps = static_cast<std::uint8_t>(std::clamp<int>(Laps_, 0, 255));
  lit = static_cast<std::uint8_t>(std::clamp<std::int64_t>(left / 8, 0, 255));
  cuts = PylonCuts_;
}

}  // namespace quorvane

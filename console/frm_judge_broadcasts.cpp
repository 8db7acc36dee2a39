// What the console tells the stations, and the keys.

#include <algorithm>

#include "console/frm_judge.h"

namespace quorvane {

// A console that controls counts its race time from the start signal where there is no 60-second count; the
// stations always count from the start of that minute.
bool frmJudge::AddStartDelay() const {
  return chkSixtySecondCount.Value() == 0 && link_->IsControllerMode();
}

void frmJudge::LoadStartInfo(std::array<std::uint8_t, 4>& time, std::uint8_t& start, std::uint8_t& mode) {
  std::int32_t ms = 0;
  if (race_.StartInfoPending || !race_.RaceActive) {
    race_.StartInfoPending = false;
    ms = AddStartDelay() ? 59999 : 0;
  } else {
    ms = AddStartDelay() ? AddLong(RaceTime(), 60000) : RaceTime();
  }
  const auto bits = static_cast<std::uint32_t>(ms);
  for (std::size_t i = 0; i < time.size(); ++i) time[i] = static_cast<std::uint8_t>(bits >> (24 - 8 * i));
  start = race_.RaceActive ? 1 : 0;
  int raceMode = 0;
  GetRaceMode(raceMode);
  mode = ToByte(raceMode);
}

void frmJudge::GetLaneInfo(std::uint8_t lane, std::uint8_t& laps, std::uint8_t& lit,
                           std::array<std::int16_t, 4>& cuts) {
  Lane(lane).GetInfo(laps, lit, cuts);
}

void frmJudge::IssueRaceEvent(bool /*flag*/) {
  if (link_ == nullptr || !link_->IsControllerMode()) return;
  LastTimeSent_ = RaceTime();
  link_->SendMessage(6, 3);
}

void frmJudge::IssueLapEvent() {
  if (link_ == nullptr || !link_->IsControllerMode()) return;
  LastTimeSent_ = RaceTime();
  link_->SendMessage(3, 4);
}

// Once a second, and only while the stations still set their clocks.
void frmJudge::IssueTimeEvent() {
  if (link_ == nullptr || !link_->IsControllerMode()) return;
  const std::int32_t t = RaceTime();
  if (SubtractLong(t, 1000) < LastTimeSent_ || t >= 54000) return;
  LastTimeSent_ = t;
  link_->SendMessage(6, 3);
}

// The lamps lose their letters as soon as a port is spoken of.
void frmJudge::ShowPort(const std::string& text, bool open) {
  lblComm.SetCaption(text);
  lblComm.SetForeColor(open ? kButtonText : kRed);
  for (Control* lamp : {&lblReadComm, &lblWriteComm}) lamp->SetForeColor(kButtonFace);
}

void frmJudge::ShowTraffic(Traffic lamp, bool lit) {
  Control& label = lamp == Traffic::Received ? lblReadComm : lblWriteComm;
  label.SetBackColor(lit ? kGreen : kButtonFace);
  if (lit) label.SetTag(std::to_string(door_.Now()));
}

void frmJudge::ShowRadioWarning(const std::string& text) {
  lblSilent.SetCaption(text);
  lblSilent.SetVisible(!text.empty());
}

void frmJudge::LapKey(int lane) {
  if (lane == 0 && !race_.RaceActive) {
    if (cmdStart.Enabled()) cmdStart_Click();
  } else if (Lane(lane).Visible()) {
    Lane(lane).cmdLap_Click();
  }
}

// The keys stand in rows of four, one for each lane. A lane that does not fly has none. After the finish they
// enter nothing: a slip of the hand, or a key meant to start the next race, would change a result that nobody
// looks at any more. The buttons stay for late corrections.
void frmJudge::KeyDown(const std::string& key) {
  const auto found = std::find(kKeyNames.begin(), kKeyNames.end(), key);
  if (found == kKeyNames.end()) return;
  const int place = static_cast<int>(found - kKeyNames.begin());
  if (WaitsForSave()) return ShowNotice(kSaveFirst);
  const int lane = place % 4;
  if (place < 4) {
    LapKey(lane);
    return;
  }
  if (!Lane(lane).Visible()) return;
  Lane(lane).cntrCut(place / 4);
}

void frmJudge::lblComm_Click() {
  door_.AllForms().Show(*link_);
}

}  // namespace quorvane

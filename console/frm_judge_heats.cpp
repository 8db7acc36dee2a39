// Moving between races: heats, rounds, race modes, reflies, the event's name.

#include <algorithm>

#include "base/text.h"
#include "console/frm_judge.h"
#include "records/lane_colors.h"
#include "records/race_record.h"

namespace quorvane {
void frmJudge::ApplyRaceMode(int index) {
  // A finished race that waits to be saved keeps the mode it was flown in, whatever the starter is set to
  // now.
  if (WaitsForSave()) index = race_.RaceMode;
  race_.RaceMode = ToInteger(std::clamp(index, 1, 6));
  if (cboRaceMode.Visible()) cboRaceMode.SetListIndex(race_.RaceMode - 1);
  race_.IsFaiMode = race_.RaceMode >= 4;
  lblRaceMode.SetCaption(kRaceModeNames[static_cast<std::size_t>(race_.RaceMode - 1)]);
  lblRaceMode.SetForeColor(kWindowText);
}

void frmJudge::GetRaceMode(int& mode) const {
  mode = cboRaceMode.Visible() ? cboRaceMode.ListIndex() + 1 : 0;
}

// The list's index, counted from 0, goes to a procedure that counts modes from 1: the first two entries both
// give "RaceHorse" and the list moves on by itself. Pilots' habits are built on it.
void frmJudge::cboRaceMode_Change() {
  if (!race_.RaceActive) ApplyRaceMode(cboRaceMode.ListIndex());
}

// With 1 the places are given anew. After that the first one that no lane has is offered: the operator may
// have typed places in between, or taken one back.
void frmJudge::SetOrder(int place) {
  if (place <= 1) {
    for (const auto& lane : lanes_) lane->LaneOrder(place);
    return;
  }
  const auto taken = [&](int n) {
    return std::any_of(lanes_.begin(), lanes_.end(),
                       [n](const auto& lane) { return lane->PlaceByHand() == n; });
  };
  int next = 1;
  while (next <= static_cast<int>(kPlaceWords.size()) && taken(next)) ++next;
  for (const auto& lane : lanes_) lane->OfferPlace(next);
}

// The operator's last word counts: whoever types a place that another lane has is putting an error right.
void frmJudge::TakePlace(int lane, int place) {
  for (int i = 0; i < 4; ++i) {
    if (i + 1 == lane || Lane(i).PlaceByHand() != place) continue;
    Lane(i).GiveUpPlace();
    ShowNotice(kPlaceWords[static_cast<std::size_t>(place - 1)] + std::string(" now lane ") +
               std::to_string(lane) + ", no more lane " + std::to_string(i + 1));
  }
}

void frmJudge::cmdReorder_Click() {
  cmdReset.SetEnabled(true);
  cmdSave.SetEnabled(true);
  SetOrder(1);
}

std::int16_t frmJudge::HeatsInRound() const {
  return std::max<std::int16_t>(race_.HeatsPerRound, 1);
}

std::string frmJudge::RaceSection(std::int16_t race) const {
  return "Race" + std::to_string(race);
}

bool frmJudge::HasRun(std::int16_t race) {
  return LeadingNumber(GetProjectValue(RaceSection(race), "Timestamp", "0")) > 0.0;
}

bool frmJudge::HasTimestamp(std::int16_t race) {
  return LeadingNumber(GetProjectValue(RaceSection(race), "Timestamp", "0.0")) != 0.0;
}

// Stops at the last number there is, so that a file that claims them all still opens.
void frmJudge::SkipRacesRun() {
  while (race_.RaceNumber < 32767 && HasTimestamp(race_.RaceNumber)) ++race_.RaceNumber;
}

void frmJudge::DeriveHeat() {
  const int before = race_.RaceNumber - 1;
  round_ = ToInteger(before / HeatsInRound() + 1);
  heat_ = ToInteger(before % HeatsInRound() + 1);
}

void frmJudge::ShowHeatCaption(bool refly) {
  fraHeatControl.SetCaption("Race " + std::to_string(race_.RaceNumber) + (refly ? " REFLY" : ""));
  fraHeatControl.SetForeColor(refly ? kRed : kButtonText);
}

void frmJudge::ShowCurrentRace() {
  if (ShowingRace_) return;
  ++raceSerial_;
  ShowingRace_ = true;
  const std::unique_ptr<bool, void (*)(bool*)> guard(&ShowingRace_, [](bool* flag) { *flag = false; });
  {
    const Project::Group group(project_);
    if (race_.RaceNumber < 1) race_.RaceNumber = 1;
    SetProjectValue("Current", "Race", std::to_string(race_.RaceNumber));
    DeriveHeat();
    txtHeat.SetText(std::to_string(heat_));
    SetProjectValue("Current", "Heat", std::to_string(heat_));
    txtRound.SetText(std::to_string(round_));
    SetProjectValue("Current", "Round", std::to_string(round_));
  }
  cmdRefly.SetEnabled(HasTimestamp(race_.RaceNumber));
  race_.ReflyMode = false;
  LoadRaceHeader();
  if (!RaceBeingFlown()) ShowRaceLanes();
  cmdReset.SetEnabled(false);
  cmdSave.SetEnabled(false);
  cmdStart.SetEnabled(!HasRun(race_.RaceNumber));
}

// Both buttons and boxes move from the race that is on the console now: saving it moves the console on by
// itself.
void frmJudge::MoveBy(std::int64_t races) {
  if (RaceBeingFlown()) return;
  const std::int16_t target = ToInteger(race_.RaceNumber + races);
  cmdSave_Click();
  race_.RaceNumber = target;
  ShowCurrentRace();
}

void frmJudge::cmdIncHeat_Click() {
  if (RaceBeingFlown()) return;
  MoveBy(1);
  race_.LastRaceRun = -1;
}

void frmJudge::cmdDecHeat_Click() {
  MoveBy(-1);
}
void frmJudge::cmdIncRound_Click() {
  MoveBy(HeatsInRound());
}
void frmJudge::cmdDecRound_Click() {
  MoveBy(-std::int64_t{HeatsInRound()});
}

void frmJudge::txtHeat_Change() {
  MoveToTyped(txtHeat, true);
}
void frmJudge::txtRound_Change() {
  MoveToTyped(txtRound, false);
}

void frmJudge::MoveToTyped(Control& box, bool isHeat) {
  if (ShowingRace_) return;
  std::int16_t target = race_.RaceNumber;
  try {
    if (RaceBeingFlown()) throw RunTimeError("A race is being flown");
    const std::int16_t typed = LeadingInteger(box.Text());
    const std::int64_t heat = isHeat ? typed : heat_;
    const std::int64_t round = isHeat ? round_ : typed;
    target = ToInteger((round - 1) * HeatsInRound() + heat);
  } catch (const RunTimeError&) {
    // The box must not go on showing a race that the console did not move to.
    box.SetText(std::to_string(isHeat ? heat_ : round_));
    throw;
  }
  cmdSave_Click();
  race_.RaceNumber = target;
  ShowCurrentRace();
}

void frmJudge::cmdRefly_Click() {
  if (RaceBeingFlown()) return;
  const bool on = !race_.ReflyMode;
  // Switched off, what was flown before is shown again.
  if (!on) ShowCurrentRace();
  race_.ReflyMode = on;
  if (on) txtComments.SetText("No comments");
  ShowHeatCaption(race_.ReflyMode);
  cmdStart.SetEnabled(race_.ReflyMode || !HasRun(race_.RaceNumber));
}

void frmJudge::mnuHeatsPerRound_Click() {
  if (RaceBeingFlown()) return;
  cmdSave_Click();
  const std::int16_t heats = AskHeatsPerRound();
  if (RaceAtStake()) return;
  race_.HeatsPerRound = heats;
  SetProjectValue("Current", "HeatsPerRound", std::to_string(race_.HeatsPerRound));
  ShowCurrentRace();
}

// There is no way out but an answer: without it no heat could be named.
std::int16_t frmJudge::AskHeatsPerRound() {
  std::int16_t heats = race_.HeatsPerRound;
  do {
    const DialogBox box{DialogKind::Input, "Heats per Round",
                        "Enter the number of heats per round:", DialogIcon::None, std::to_string(heats)};
    const DialogAnswer answer = door_.Ask(box);
    const double number =
        LeadingNumber(answer.word == DialogAnswer::Word::Text ? answer.text : std::string());
    heats = number < 32767.5 && number > -32768.5 ? RoundTo<std::int16_t>(number) : std::int16_t{0};
  } while (heats < 2);
  return heats;
}

void frmJudge::SetCaption() {
  Form::SetCaption("Quorvane - " + eventName_ + " (" + FileNameOf(race_.ProjectFile) + ") - ");
}

void frmJudge::mnuSetEventName_Click() {
  const DialogBox box{DialogKind::Input, eventName_, "Enter the Event Name:"};
  const DialogAnswer answer = door_.Ask(box);
  eventName_ = answer.word == DialogAnswer::Word::Text ? answer.text : std::string();
  SetProjectValue("Current", "Title", eventName_);
  SetCaption();
}

void frmJudge::mnuLaneColors_Click() {
  SettingsStore& settings = door_.System().Settings();
  race_.LaneColorScheme = LoadLaneColorScheme(settings);
  const auto current = static_cast<std::size_t>(race_.LaneColorScheme);
  const bool known = race_.LaneColorScheme >= 0 && current < kLaneColorSchemes.size();
  const auto number = static_cast<int>(LeadingNumber(known ? kLaneColorSchemes[current] : ""));
  std::string prompt = "Enter the lane color assignments (1-" + std::to_string(kLaneColorSchemesOffered) +
                       ") :\rCurrent assignment (" + std::to_string(number) + ")\r\rChoices are:";
  for (std::size_t i = 1; i <= kLaneColorSchemesOffered; ++i) {
    prompt += "\r    " + std::string(kLaneColorSchemes[i]);
  }
  const DialogBox box{DialogKind::Input, eventName_, prompt, DialogIcon::None,
                      std::to_string(race_.LaneColorScheme)};
  for (;;) {
    const DialogAnswer answer = door_.Ask(box);
    if (answer.word != DialogAnswer::Word::Text || answer.text.empty()) return;
    const double chosen = LeadingNumber(answer.text);
    if (!(chosen > 0.0) || chosen > kLaneColorSchemesOffered) continue;
    const auto scheme = RoundTo<std::int16_t>(chosen);
    if (scheme == 0) continue;
    race_.LaneColorScheme = scheme;
    SaveLaneColorScheme(settings, race_.LaneColorScheme);
    for (const auto& lane : lanes_) lane->UpdateLaneColor();
    return;
  }
}

}  // namespace quorvane

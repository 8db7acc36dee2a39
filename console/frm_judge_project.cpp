// The open project and its races: moving between heats and rounds, race modes, reflies, places by hand,
// saving a race, the heat report of the race on the console.

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "console/frm_judge.h"
#include "console/score.h"
#include "records/lane_colors.h"
#include "results/race_records.h"

namespace quorvane {
namespace {

// The race as it stands in the file when it is shown from there, otherwise one of this moment.
RaceRecord HeaderOf(const RaceState& race, const ProjectSource& project, const std::string& eventName,
                    const LocalDateTime& now) {
  const int number = std::max<int>(race.RaceNumber, 1);
  RaceRecord record;
  if (race.RaceLoaded) record = ReadStandingHeader(project, number);
  if (!record.hasRun) {
    record = {};
    record.number = number;
    record.round = race.Round();
    record.heat = race.Heat();
    record.hasRun = !race.RaceLoaded;
    record.when = now;
    record.eventName = eventName;
    record.projectFile = project.file;
    // The number that the save is going to give it.
    if (record.hasRun && race.ReflyMode) record.refly = ReflysCounted(project) + 1;
  }
  if (record.mode == 0) SetMode(record, std::clamp<int>(race.RaceMode, 1, 6));
  return record;
}

}  // namespace

// Beside what is done here: a click on Save leads straight to it.
void frmJudge::HookProject() {
  cmdSave.onClick = [this] { race_.Amending ? SaveAmendment() : cmdSave_Click(); };
  mnuSave.onClick = [this] { cmdSave.onClick(); };
  cmdRefly.onClick = [this] { cmdRefly_Click(); };
  cmdIncHeat.onClick = [this] {
    MoveBy(1);
    race_.LastRaceRun = -1;
  };
  cmdDecHeat.onClick = [this] { MoveBy(-1); };
  cmdIncRound.onClick = [this] { MoveBy(race_.HeatsInRound()); };
  cmdDecRound.onClick = [this] { MoveBy(-race_.HeatsInRound()); };
  txtHeat.onChange = [this] { MoveToTyped(txtHeat, true); };
  txtRound.onChange = [this] { MoveToTyped(txtRound, false); };
  // The list's index, counted from 0, goes to a procedure that counts modes from 1: the first two entries
  // both give "RaceHorse" and the list moves on by itself. Pilots' habits are built on it.
  cboRaceMode.onChange = [this] { ApplyRaceMode(cboRaceMode.ListIndex()); };
  mnuNewProject.onClick = [this] { OpenAnother([this] { return chooser_.AskNew(); }); };
  mnuSelectFile.onClick = [this] { OpenAnother([this] { return chooser_.Ask(false); }); };
  mnuOpenRecent.onChange = [this] { mnuOpenRecent_Change(); };
  mnuHeatsPerRound.onClick = [this] { mnuHeatsPerRound_Click(); };
  mnuSetEventName.onClick = [this] { mnuSetEventName_Click(); };
  mnuLaneColors.onClick = [this] { mnuLaneColors_Click(); };
}

void frmJudge::ApplyRaceMode(int index) {
  // A finished race that waits to be saved keeps the mode it was flown in, whatever the starter says now.
  if (!race_.WaitsForSave()) race_.RaceMode = ToInteger(std::clamp(index, 1, 6));
  cboRaceMode.SetListIndex(race_.RaceMode - 1);
  race_.IsFaiMode = race_.RaceMode >= kFirstFaiMode;
  ShowMode(kRaceModeNames[static_cast<std::size_t>(race_.RaceMode - 1)], kWindowText);
}

// A race is saved with what is shown here, also in a hold.
void frmJudge::ShowMode(const std::string& text, Color color) {
  shownMode_ = text;
  lblRaceMode.SetCaption(text);
  lblRaceMode.SetForeColor(color);
}

void frmJudge::ShowHeatCaption(bool refly, Color color) {
  fraHeatControl.SetCaption("Race " + std::to_string(race_.RaceNumber) + (refly ? " REFLY" : ""));
  fraHeatControl.SetForeColor(color);
}

void frmJudge::ShowCurrentRace() {
  ++raceSerial_;
  EndAmending(false);
  desk_.Undo().Clear();
  race_.RaceNumber = std::max<std::int16_t>(race_.RaceNumber, 1);
  txtHeat.SetText(std::to_string(race_.Heat()));
  txtRound.SetText(std::to_string(race_.Round()));
  book_.KeepPlace();
  race_.ReflyMode = false;
  race_.RaceLoaded = true;
  const std::string section = book_.ShownSection(race_.RaceNumber);
  const bool hasRun = HasRun(race_.RaceNumber);
  ShowHeatCaption(section.starts_with("Refly"), kButtonText);
  txtComments.SetText(project_.GetProjectValue(section, "Comments", kDefaultComments));
  if (!race_.BeingFlown()) {
    if (!hasRun) desk_.InitializeRace(race_.LaneStartOffset);
    for (const auto& lane : lanes_) {
      if (hasRun) lane->LoadLane(section, OpenProject(project_, race_).read);
    }
    Lane(3).SetVisible(Lane(3).Flies());
  }
  OfferSave(false);
  cmdStart.SetEnabled(!hasRun);
  cmdRefly.SetEnabled(book_.HasTimestamp(race_.RaceNumber));
}

// Buttons and boxes move from the race that is on the console before the save, which moves on by itself.
void frmJudge::MoveBy(int races) {
  MoveTo(ToInteger(race_.RaceNumber + races));
}

void frmJudge::MoveTo(std::int16_t race) {
  cmdSave_Click();
  race_.RaceNumber = race;
  ShowCurrentRace();
}

// A number that no race can have is taken back: the box shows where the console is.
void frmJudge::MoveToTyped(Control& box, bool isHeat) {
  std::optional<std::int16_t> target;
  try {
    const int typed = LeadingInteger(box.Text());
    const std::int64_t round = isHeat ? race_.Round() : typed;
    target = ToInteger((round - 1) * race_.HeatsInRound() + (isHeat ? typed : race_.Heat()));
  } catch (const OverflowError&) {
  }
  if (target) return MoveTo(*target);
  box.SetText(std::to_string(isHeat ? race_.Heat() : race_.Round()));
}

void frmJudge::cmdRefly_Click() {
  const bool on = !race_.ReflyMode;
  // Switched off, what was flown before is shown again.
  if (!on) ShowCurrentRace();
  race_.ReflyMode = on;
  if (on) txtComments.SetText(kDefaultComments);
  ShowHeatCaption(on, on ? kRed : kButtonText);
  cmdStart.SetEnabled(on || !HasRun(race_.RaceNumber));
}

// There is no way out but an answer: without it no heat could be named.
void frmJudge::mnuHeatsPerRound_Click() {
  if (race_.BeingFlown()) return;
  cmdSave_Click();
  std::int16_t heats = race_.HeatsPerRound;
  do {
    const double number = LeadingNumber(
        door_.AskText("Heats per Round", "Enter the number of heats per round:", std::to_string(heats)));
    heats = number < 32767.5 && number > -32768.5 ? RoundTo<std::int16_t>(number) : std::int16_t{0};
  } while (heats < 2);
  if (race_.AtStake()) return notices_.TellOvertaken();
  race_.HeatsPerRound = heats;
  book_.Keep("HeatsPerRound", std::to_string(heats));
  ShowCurrentRace();
}

void frmJudge::SetCaption() {
  Form::SetCaption("Quorvane - " + eventName_ + " (" + FileNameOf(race_.ProjectFile) + ") - ");
}

void frmJudge::mnuSetEventName_Click() {
  eventName_ = door_.AskText(eventName_, "Enter the Event Name:");
  book_.Keep("Title", eventName_);
  SetCaption();
}

void frmJudge::mnuLaneColors_Click() {
  SettingsStore& settings = door_.System().Settings();
  race_.LaneColorScheme = LoadLaneColorScheme(settings);
  const auto current = static_cast<std::size_t>(race_.LaneColorScheme);
  const std::string_view known = current < kLaneColorSchemes.size() ? kLaneColorSchemes[current] : "";
  std::string prompt = "Enter the lane color assignments (1-" + std::to_string(kLaneColorSchemesOffered) +
                       ") :\rCurrent assignment (" + std::to_string(LeadingInteger(known)) +
                       ")\r\rChoices are:";
  for (std::size_t i = 1; i <= kLaneColorSchemesOffered; ++i) {
    prompt += "\r    " + std::string(kLaneColorSchemes[i]);
  }
  std::int16_t scheme = 0;
  while (scheme == 0) {
    const std::string answer = door_.AskText(eventName_, prompt, std::to_string(race_.LaneColorScheme));
    if (answer.empty()) return;
    const double chosen = LeadingNumber(answer);
    if (chosen > 0.0 && chosen <= kLaneColorSchemesOffered) scheme = RoundTo<std::int16_t>(chosen);
  }
  if (race_.BeingFlown()) return notices_.TellOvertaken();
  race_.LaneColorScheme = scheme;
  SaveLaneColorScheme(settings, scheme);
  for (const auto& lane : lanes_) lane->UpdateLaneColor();
}

void frmJudge::OpenAnother(const std::function<bool()>& open) {
  // A finished race belongs to the project it was flown in.
  cmdSave_Click();
  if (!open()) return;
  ShowOpenProject();
  OfferRecovery();
}

// The menu is about to be shown. No disk is asked while a race is flown.
void frmJudge::mnuFile_Click() {
  if (!race_.BeingFlown()) mnuOpenRecent.SetItems(chooser_.Recent());
}

void frmJudge::mnuOpenRecent_Change() {
  const std::string file = mnuOpenRecent.Text();
  mnuOpenRecent.SetText("");
  OpenAnother([&] { return chooser_.AskRecent(file); });
}

void frmJudge::ShowOpenProject() {
  EndAmending(false);
  notices_.TakeAway(Notices::Kind::kSaved);
  notices_.TakeAway(Notices::Kind::kThrownAway);
  race_.ProjectBaseName = WithoutExtension(race_.ProjectFile);
  race_.ResultsFile = race_.ProjectBaseName + ".csv";
  if (!race_.ProjectFile.empty()) CreateResultsFile(race_.ResultsFile);
  keeper_.FindLeft();
  eventName_ = book_.Text("Title");
  race_.RaceNumber = std::max<std::int16_t>(book_.Number("Race", 1), 1);
  race_.HeatsPerRound = book_.Number("HeatsPerRound", 1);
  mnuAutoPrint.SetChecked(LeadingNumber(book_.Text("AutoPrint")) != 0.0);
  {
    const Project::Group group(project_);  // each replacement of the file is a wait for the disk
    book_.SkipRacesRun();
    ShowCurrentRace();
    race_.NumberReflys = book_.Number("NumberReflys", 0);
    book_.Keep("NumberReflys", std::to_string(race_.NumberReflys));
    book_.Keep("EventFormat", "Lap, Station, EventType, Pylon, Time");
  }
  if (race_.HeatsPerRound < 2) mnuHeatsPerRound_Click();
  if (eventName_.empty()) mnuSetEventName_Click();
  SetCaption();
  if (!race_.AtStake()) OfferSave(false);
}

// Saving concludes the race. What it writes, and the move to the next race, are one replacement of the file.
void frmJudge::cmdSave_Click() {
  if (!race_.Unsaved) return;
  const Project::Group group(project_);
  race_.RaceActive = false;
  race_.ManualStart = false;
  IssueRaceEvent();
  SettleResult();
  const RaceRecord record = RecordNow();
  const std::string section = book_.Write(shownMode_, txtComments.Text(), door_.LocalNow());
  const auto keep = [this](const auto&... entry) { project_.SetProjectValue(entry...); };
  if (!recovered_.empty()) keep(section, "Recovered", recovered_);
  if (const auto radio = RadioInRace()) {
    KeepRadio(*radio, [&](const auto* key, const auto& value) { keep(section, key, value); });
  }
  for (const auto& lane : lanes_) {
    lane->SaveLane(section, keep);
    lane->chkNovice.SetValue(0);
  }
  txtComments.SetText(kDefaultComments);
  race_.ReflyMode = false;
  OfferSave(false);
  ReadyForNextRace();
  const std::string saved = fmt::format("Race {}{} saved", record.number, record.refly != 0 ? " refly" : "");
  notices_.Show((moved_.empty() ? saved : std::exchange(moved_, {})) + ": " + ResultLine(record),
                Notices::Kind::kSaved);
}

// Places, of which the operator may have given only some, and number, as they are printed and saved.
void frmJudge::SettleResult() {
  const Project::Group group(project_);
  desk_.RankLanes();
  if (race_.ReflyMode) return;
  if (const std::string moved = book_.TakeFreeNumber(); !moved.empty()) ShowNotice(moved_ = moved);
}

RaceRecord frmJudge::RecordAt(const LocalDateTime& now) const {
  const ProjectSource project = OpenProject(project_, race_);
  RaceRecord record = HeaderOf(race_, project, eventName_, now);
  // The novice boxes speak of the next race while an old one is shown.
  const bool shownFromFile = race_.RaceLoaded && record.hasRun;
  record.comments = txtComments.Text();
  if (!recovered_.empty()) record.recovered = recovered_;
  // Nobody has said so yet: a score sheet leaves room for comments.
  if (!record.hasRun && record.comments == kDefaultComments) record.comments.clear();
  MarkLanes(record, project.laneColorScheme);
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    const frmLane& panel = *lanes_[i];
    LaneRecord& lane = record.lanes[i];
    ReadLane(lane, panel.Events(), record.mode);
    if (!shownFromFile && panel.chkNovice.Value() != 0) lane.novice = true;
    // Before the finish the label shows other things than a place.
    if (!record.hasRun || RaceBeingFlown()) continue;
    lane.placing = panel.Status();
    lane.position = panel.Position();
  }
  return record;
}

// With what was noted before the program died in it.
std::optional<RadioRecord> frmJudge::RadioInRace() const {
  const auto radio = link_.InRace();
  if (!radio || !radioBefore_) return radio ? radio : radioBefore_;
  return Together(*radioBefore_, *radio);
}

void frmJudge::mnuProtestSheet_Click() {
  RaceRecord race = RecordNow();
  if (race_.AtStake()) race.radio = RadioInRace();
  printer_->ShowProtestSheet(race);
}

// The race is taken before the question: behind the box the console may move on to the next one.
void frmJudge::mnuSavePdf_Click() {
  const RaceRecord race = RecordNow();
  const std::string name = race_.ProjectBaseName + " race " + std::to_string(race.number);
  const DialogAnswer answer = door_.Ask({.kind = DialogKind::SaveFile,
                                         .title = "Save Heat Report as PDF",
                                         .preset = name + (race.refly != 0 ? " refly" : "") + ".pdf",
                                         .folder = ParentFolder(race_.ProjectFile),
                                         .defaultExtension = ".pdf"});
  if (answer.word == DialogAnswer::Word::File && !answer.text.empty()) printer_->SaveHeat(race, answer.text);
}

}  // namespace quorvane

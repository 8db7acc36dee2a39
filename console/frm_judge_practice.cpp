// Practice on the simulated field: in a project of its own, with the contest's put aside until it ends.

#include <tuple>

#include "base/text.h"
#include "console/first_start.h"
#include "console/frm_judge.h"

namespace quorvane {

// Nothing of a race may be lost, nor go into the other project.
std::string frmJudge::WhyRaceKeepsProject() const {
  if (!race_.BeingFlown()) return WhySaveFirst();
  // The field would begin again whatever is reset.
  return Practising() ? "A race is being flown: wait for its end, or end the practice"
                      : "A race is being flown: wait for its end, or reset it";
}

std::string frmJudge::WhySaveFirst() const {
  if (race_.BeingFlown()) return "";
  if (race_.Unsaved) return "A race is not saved: save it first";
  return race_.Amending ? "A saved race is being amended: save it first" : "";
}

std::string frmJudge::WhyNoPractice() const {
  std::string why = WhyRaceKeepsProject();
  if (!why.empty() || !link_.IsControllerMode()) return why;
  return "System Controller is on: switch it off first, the field has a starter of its own";
}

// Run after every event.
void frmJudge::FollowPractice() {
  practice_.Follow(Practising(), fieldTrouble_, WhyNoPractice(), WhySaveFirst());
  lblPractice.SetVisible(Practising());
}

// In a folder beside the contest's file, a new one each time: what was practised before is not gone on with.
std::string frmJudge::NewPracticeFile() const {
  const std::string moment = Replaced(MomentText(door_.LocalNow(), ' '), ":", "");
  const std::string name = ParentFolder(race_.ProjectFile) + "Practice/Practice " + moment;
  std::string file = name + ".ini";
  for (int number = 2; FileExists(file); ++number) file = name + "-" + std::to_string(number) + ".ini";
  return file;
}

void frmJudge::BeginPractice(bool ask) {
  if (!WhyNoPractice().empty()) return;
  if (Practising()) {
    link_.LosePractice();
  } else {
    const std::string contest = race_.ProjectFile;
    const DialogBox box{DialogKind::YesNo, "Practice Field",
                        "What is flown in practice goes into a project of its own. This contest stays as it "
                        "is, and is opened again at the end of practice:\r\r" +
                            contest + "\r\rStart practice?"};
    if (ask && door_.Ask(box).word != DialogAnswer::Word::Yes) return;
    // The radio went on behind the box.
    if (!WhyNoPractice().empty()) return ShowNotice("Practice was not started. " + WhyNoPractice());
    if (!OpenPracticeProject()) return;
    contest_ = contest;
    lastOfContest_ = {race_.LastRaceRun, race_.LastRaceFile};
    link_.SetVisible(false);  // with the practice's it would lie over the lanes
  }
  fieldTrouble_.clear();
  field_->Start(practice_.Options());
}

bool frmJudge::OpenPracticeProject() {
  constexpr int kPracticeHeats = 4;  // a round, where the contest has not said how many
  const int heats = race_.HeatsPerRound < kLeastHeats ? kPracticeHeats : race_.HeatsPerRound;
  link_.BeginPractice();  // from here on the radio is not heard
  if (!chooser_.Open(NewPracticeFile())) {
    link_.EndPractice();
    return false;
  }
  {
    const Project::Group group(project_);
    book_.Keep("Title", "Practice");
    book_.Keep("HeatsPerRound", std::to_string(heats));
  }
  ShowOpenProject();
  return true;
}

// A race of the practice is nobody's result, but only the operator can say so.
bool frmJudge::MayEndPractice() {
  if (!Practising() || !WhySaveFirst().empty()) return false;
  if (!race_.BeingFlown()) return true;
  const DialogBox box{.kind = DialogKind::YesNo,
                      .title = "End Practice",
                      .text =
                          "A race is being flown. The practice race is thrown away, and the contest is "
                          "opened again:\r\r" +
                          contest_ + "\r\rEnd practice?",
                      .usual = DialogAnswer::Word::No};
  return door_.Ask(box).word == DialogAnswer::Word::Yes;
}

// Back to the contest. Where its file cannot be had any more, to another one.
void frmJudge::EndPractice() {
  if (!MayEndPractice()) return;
  link_.LosePractice();
  field_->Stop();
  // Behind the box it may have come to its end.
  if (race_.AtStake()) {
    race_.ManualStart = false;
    ReadyForNextRace();
  }
  if (!chooser_.Open(contest_) && !chooser_.Ask(false)) {
    fieldTrouble_ = "The field was stopped, but the contest is not open";
    return;
  }
  contest_.clear();
  std::tie(race_.LastRaceRun, race_.LastRaceFile) = lastOfContest_;
  fieldTrouble_.clear();
  ShowOpenProject();
  OfferRecovery();
  link_.EndPractice();
}

// Port 0: it does not answer, and why.
void frmJudge::FieldChanged(int port, const std::string& trouble) {
  if (!Practising()) return;
  fieldTrouble_ = trouble;
  if (port == 0) {
    link_.LosePractice();
  } else if (const SerialError error = link_.OpenPractice(port)) {
    fieldTrouble_ = error.description;
  }
  if (!fieldTrouble_.empty()) ShowNotice("Practice field: " + fieldTrouble_);
}

// As the form of the first start was answered.
void frmJudge::BeginPracticeAtStart() {
  if (!TakePracticeAtStart(door_.System().Settings())) return;
  BeginPractice(false);
  if (Practising()) door_.AllForms().Show(practice_);
}

}  // namespace quorvane

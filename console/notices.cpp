#include "console/notices.h"

#include <utility>

#include "base/text.h"

namespace quorvane {

void Notices::Show(const std::string& text, Kind kind) {
  if (text.empty() && kind_ != Kind::kSaved && !saved_.empty()) return Show(saved_, Kind::kSaved);
  kind_ = kind;
  if (kind == Kind::kSaved || text.empty()) saved_ = text;
  shown_.lblNotice.SetToolTip(text);  // a long one does not fit its place
  shown_.lblNotice.SetCaption(text);
  shown_.lblNotice.SetVisible(!text.empty());
}

void Notices::ShowDone(const std::string& text) {
  if (saved_.empty()) return Show(text);
  Show(saved_, Kind::kSaved);
}

void Notices::TakeAway(Kind kind) {
  if (kind == Kind::kSaved) saved_.clear();
  if (kind_ == kind) Show("");
}

void Notices::TellTroubles() {
  if (const auto moved = project_.TakeMoved(); !moved.empty()) Show(Join(moved, ';'));
  const std::string unkept = keeper_.Problem();
  if (std::exchange(unkept_, unkept) != unkept) {
    if (unkept.empty()) {
      TakeAway(Kind::kNotKept);
    } else {
      Show("A crash would lose this race: " + unkept, Kind::kNotKept);
    }
  }
  TellUnsaved();
  // Such an error is a fault of the program, or a full log: what was asked for has not been done.
  const int errors = door_.ErrorsContained();
  if (std::exchange(errors_, errors) == errors) return;
  Show("Something failed and was left undone: " + door_.LastError());
}

void Notices::TellUnsaved() {
  const std::string problem = project_.Saved() ? "" : project_.Problem();
  shown_.lblNotSaved.SetVisible(!problem.empty());
  shown_.tmrSaveRetry.SetEnabled(!problem.empty());
  // Nobody is to read that a race is saved while it is not.
  const bool told = kind_ != Kind::kSaved || problem.empty();
  if (std::exchange(unsaved_, problem) == problem && told) return;
  if (!problem.empty()) return Show("Not saved: " + problem, Kind::kNotSaved);
  TakeAway(Kind::kNotSaved);
}

}  // namespace quorvane

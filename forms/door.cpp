#include "forms/door.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/checked.h"

namespace quorvane {
namespace {

bool PassesOpenDialog(EventKind kind) {
  return kind == EventKind::Bytes || kind == EventKind::LineError || kind == EventKind::Ports ||
         kind == EventKind::Field || kind == EventKind::Timer || kind == EventKind::Quit;
}

// The procedure that asked cannot go on, because nobody is left to answer. No fault of it.
class ProgramEnds : public RunTimeError {
 public:
  ProgramEnds() : RunTimeError("The program ends") {}
};

// Less than this is the rounding of two clocks to whole seconds, or their drift.
constexpr std::chrono::seconds kClockSet(2);
constexpr std::int64_t kFollowMs = 1000;

// Whole seconds are taken off, because the moment has lost its part of a second.
LocalDateTime MomentOfZero(const LocalDateTime& shown, std::int64_t ms) {
  return shown - std::chrono::seconds(ms / 1000);
}

}  // namespace

void Door::SampleClock() {
  const std::int64_t ms = platform_.ClockMs();
  if (ms > now_) now_ = ms;
}

LocalDateTime Door::LocalStart() {
  if (!localStart_) localStart_ = localZero_ = MomentOfZero(platform_.LocalNow(), platform_.ClockMs());
  return *localStart_;
}

LocalDateTime Door::LocalNow() {
  LocalStart();
  return AddMilliseconds(localZero_, now_);
}

void Door::FollowLocalClock() {
  SampleClock();
  followedAt_ = now_;
  const LocalDateTime shown = platform_.LocalNow();
  if (std::chrono::abs(shown - LocalNow()) < kClockSet) return;
  localZero_ = MomentOfZero(shown, now_);
  journal_->ClockSet(now_, shown);
}

ComputerTime Door::ComputerNow() {
  ComputerTime time = platform_.Computer();
  const std::int64_t since = platform_.ClockMs() - now_;  // the start of this event
  time.utcMs -= since;
  time.sinceBootMs -= since;
  return time;
}

ComputerTime Door::LookAtComputer() {
  ComputerTime time = ComputerNow();
  journal_->ComputerLooked(now_, time);
  return time;
}

void Door::SampleAndFollow() {
  SampleClock();
  if (now_ - followedAt_ >= kFollowMs) FollowLocalClock();
}

bool Door::Contain(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (const ProgramEnds&) {
    return false;
  } catch (const std::exception& error) {
    ++errors_;
    lastError_ = error.what();
    journal_->Failed(now_, lastError_);
    return false;
  }
}

void Door::Enter(const Event& event) {
  if (quit_ || (dialogs_ > 0 && !PassesOpenDialog(event.kind))) return;
  if (inHand_ > depthAtDialog_) return waiting_.push_back(event);
  Handle(event);
  Drain();
}

void Door::Handle(const Event& event) {
  SampleAndFollow();
  journal_->Entered(now_, event);
  Run([&] { Dispatch(event); });
}

void Door::Run(const std::function<void()>& action) {
  const auto contain = [this](const std::function<void()>& part) {
    const Restored depth(inHand_, inHand_ + 1);
    Contain(part);
  };
  contain(action);
  contain([this] { devices_->EventEnded(); });
  if (afterEvent_) afterEvent_();
}

// While a box is open the event that opened it stands still, and one event at a time may run inside it.
void Door::Drain() {
  while (inHand_ == depthAtDialog_ && !quit_) {
    if (dialogs_ == 0 && !posted_.empty()) {
      const std::function<void()> action = std::move(posted_.front());
      posted_.pop_front();
      Run(action);  // the clock stands still: a journal says nothing of this, so it must not see another time
      continue;
    }
    const auto next = std::find_if(waiting_.begin(), waiting_.end(), [this](const Event& event) {
      return dialogs_ == 0 || PassesOpenDialog(event.kind);
    });
    if (next == waiting_.end()) return;
    const Event event = std::move(*next);
    waiting_.erase(next);
    Handle(event);
  }
}

DialogAnswer Door::Ask(const DialogBox& box) {
  if (quit_) throw ProgramEnds();
  DialogAnswer answer;
  {
    const Restored depth(dialogs_, dialogs_ + 1);
    const Restored outer(depthAtDialog_, inHand_);
    if (afterEvent_) afterEvent_();
    Drain();
    answer = platform_.ShowDialog(box);
  }
  if (quit_) throw ProgramEnds();
  SampleAndFollow();
  journal_->Answered(now_, box, answer);
  return answer;
}

std::string Door::AskText(const std::string& title, const std::string& prompt, const std::string& preset) {
  const DialogAnswer answer = Ask({DialogKind::Input, title, prompt, DialogIcon::None, preset});
  return answer.word == DialogAnswer::Word::Text ? answer.text : "";
}

void Door::Post(std::function<void()> action) {
  posted_.push_back(std::move(action));
  Drain();
}

void Door::FireTimer(Control& timer) {
  SampleClock();
  forms_.Timers().Arm(timer, now_);
  Enter({EventKind::Timer, timer.FullName()});
}

void Door::RunDueTimers() {
  const std::int64_t until = platform_.ClockMs();
  // A timer armed again by its own firing is due after `until`, so this ends.
  while (forms_.Timers().NextDue().value_or(until + 1) <= until) FireTimer(*forms_.Timers().NextTimer());
}

void Door::Dispatch(const Event& event) {
  Form* const form = forms_.Find(event.target);
  switch (event.kind) {
    case EventKind::Load:
      return devices_->Load();
    case EventKind::Bytes:
      return devices_->BytesArrived(event.bytes);
    case EventKind::LineError:
      return devices_->LineError(event.number);
    case EventKind::Ports:
      return devices_->PortsChanged(event.numbers);
    case EventKind::Field:
      return devices_->FieldChanged(event.number, event.text);
    case EventKind::Quit:
      quit_ = true;
      return devices_->Quit();
    case EventKind::Key:
      if (forms_.Main() != nullptr && forms_.Main()->Visible()) forms_.Main()->KeyDown(event.text);
      return;
    case EventKind::Activate:
      if (form != nullptr && form->Visible()) forms_.Activate(*form);
      return;
    case EventKind::Close:
      if (form != nullptr && form->Visible()) form->CloseRequested();
      return;
    case EventKind::Resize:
      if (form != nullptr) form->Resized();
      return;
    default:
      if (Control* control = forms_.FindControl(event.target)) DispatchToControl(event, *control);
      return;
  }
}

void Door::DispatchToControl(const Event& event, Control& control) {
  const auto run = [](const std::function<void()>& procedure) {
    if (procedure) procedure();
  };
  if (event.kind == EventKind::Timer) {
    if (control.Enabled()) run(control.onTimer);  // it may have been stopped while its event waited
    return;
  }
  if (!control.Reachable()) return;
  switch (event.kind) {
    case EventKind::Click:
      if (control.Kind() != ControlKind::CheckBox) return run(control.onClick);
      return control.SetValue(control.Value() == 0 ? 1 : 0);  // raises onClick itself
    case EventKind::Type:
      if (control.Kind() != ControlKind::TextBox && control.Kind() != ControlKind::Menu) return;
      if (control.Text() == event.text) return;
      control.SetText(event.text);
      return run(control.onChange);
    case EventKind::Choose:
      if (control.Kind() != ControlKind::ComboBox && control.Kind() != ControlKind::List) return;
      if (control.ListIndex() == event.number) return;
      if (event.number < 0 || event.number >= static_cast<int>(control.Items().size())) return;
      control.SetListIndex(event.number);
      return run(control.onChange);
    case EventKind::Hover:
      return run(control.onHover);
    default:
      return;
  }
}

}  // namespace quorvane

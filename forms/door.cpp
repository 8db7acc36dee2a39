#include "forms/door.h"

#include <cstdlib>
#include <exception>
#include <utility>

#include "base/run_time_error.h"

namespace quorvane {
namespace {

bool PassesOpenDialog(EventKind kind) {
  return kind == EventKind::Bytes || kind == EventKind::LineError || kind == EventKind::Ports ||
         kind == EventKind::Timer || kind == EventKind::Quit;
}

// The procedure that asked cannot go on, because nobody is left to answer. No fault of it.
class ProgramEnds : public RunTimeError {
 public:
  ProgramEnds() : RunTimeError("The program ends") {}
};

// Less than this is the rounding of two clocks to whole seconds, or their drift.
constexpr std::int64_t kClockSetSeconds = 2;
constexpr std::int64_t kFollowMs = 1000;

// Whole seconds are taken off, because the moment has lost its part of a second.
LocalDateTime MomentOfZero(const LocalDateTime& shown, std::int64_t ms) {
  return AddMilliseconds(shown, -(ms - ms % 1000));
}

// Counts up for as long as it lives.
class Depth {
 public:
  explicit Depth(int& count) : count_(count) { ++count_; }
  ~Depth() { --count_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;

 private:
  int& count_;
};

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
  if (std::abs(SecondsBetween(LocalNow(), shown)) < kClockSetSeconds) return;
  localZero_ = MomentOfZero(shown, now_);
  if (journal_ != nullptr) journal_->ClockSet(now_, shown);
}

void Door::FollowNowAndThen() {
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
    if (journal_ != nullptr) journal_->Failed(now_, lastError_);
    return false;
  }
}

// While a box is open the event that opened it stands still, and one event at a time may run inside it.
bool Door::MustWait(EventKind kind) const {
  if (dialogs_ > 0) return !PassesOpenDialog(kind) || inHand_ > depthAtDialog_;
  return inHand_ > 0;
}

void Door::Enter(const Event& event) {
  if (quit_ || (dialogs_ > 0 && !PassesOpenDialog(event.kind))) return;
  if (MustWait(event.kind)) {
    waiting_.push_back(event);
    return;
  }
  Handle(event);
  if (dialogs_ > 0) {
    DrainWhileOpen();
  } else {
    DrainWhenIdle();
  }
}

void Door::Handle(const Event& event) {
  SampleClock();
  FollowNowAndThen();
  if (journal_ != nullptr) journal_->Entered(now_, event);
  {
    const Depth depth(inHand_);
    Contain([&] { Dispatch(event); });
  }
  Ended();
}

void Door::Ended() {
  if (devices_ != nullptr) {
    const Depth depth(inHand_);
    Contain([this] { devices_->EventEnded(); });
  }
  if (afterEvent_) afterEvent_();
}

void Door::DrainWhileOpen() {
  while (dialogs_ > 0 && inHand_ == depthAtDialog_ && !quit_) {
    std::size_t i = 0;
    while (i < waiting_.size() && !PassesOpenDialog(waiting_[i].kind)) ++i;
    if (i == waiting_.size()) return;
    const Event event = std::move(waiting_[i]);
    waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(i));
    Handle(event);
  }
}

void Door::DrainWhenIdle() {
  while (inHand_ == 0 && dialogs_ == 0 && !quit_) {
    if (!posted_.empty()) {
      const std::function<void()> action = std::move(posted_.front());
      posted_.pop_front();
      // The clock stands still: a journal says nothing of this action, so it must not see another time.
      {
        const Depth depth(inHand_);
        Contain(action);
      }
      Ended();
    } else if (!waiting_.empty()) {
      const Event event = std::move(waiting_.front());
      waiting_.pop_front();
      Handle(event);
    } else {
      return;
    }
  }
}

void Door::RefuseAfterQuit() const {
  if (quit_) throw ProgramEnds();
}

DialogAnswer Door::Ask(const DialogBox& box) {
  RefuseAfterQuit();
  DialogAnswer answer;
  {
    const Depth depth(dialogs_);
    const int outer = std::exchange(depthAtDialog_, inHand_);
    try {
      if (afterEvent_) afterEvent_();
      DrainWhileOpen();
      answer = platform_.ShowDialog(box);
    } catch (...) {
      depthAtDialog_ = outer;
      throw;
    }
    depthAtDialog_ = outer;
  }
  RefuseAfterQuit();
  SampleClock();
  FollowNowAndThen();
  if (journal_ != nullptr) journal_->Answered(now_, box, answer);
  return answer;
}

void Door::Post(std::function<void()> action) {
  posted_.push_back(std::move(action));
  if (inHand_ == 0) DrainWhenIdle();
}

void Door::NoteSent(const std::vector<std::uint8_t>& frame) {
  if (journal_ != nullptr) journal_->Sent(now_, frame);
}

void Door::NoteProject(const std::string& path, bool taken) {
  if (journal_ != nullptr) journal_->ProjectOpened(now_, path, taken);
}

void Door::FireTimer(Control& timer) {
  SampleClock();
  forms_.Timers().Arm(timer, now_);
  Event event;
  event.kind = EventKind::Timer;
  event.target = timer.FullName();
  Enter(event);
}

void Door::RunDueTimers() {
  const std::int64_t until = platform_.ClockMs();
  // A timer armed again by its own firing is due after `until`, so this ends.
  while (forms_.Timers().NextDue().value_or(until + 1) <= until) FireTimer(*forms_.Timers().NextTimer());
}

void Door::Dispatch(const Event& event) {
  switch (event.kind) {
    case EventKind::Load:
      if (devices_ != nullptr) devices_->Load();
      return;
    case EventKind::Bytes:
      if (devices_ != nullptr) devices_->BytesArrived(event.bytes);
      return;
    case EventKind::LineError:
      if (devices_ != nullptr) devices_->LineError(event.number);
      return;
    case EventKind::Ports:
      if (devices_ != nullptr) devices_->PortsChanged(event.numbers);
      return;
    case EventKind::Quit:
      quit_ = true;
      if (devices_ != nullptr) devices_->Quit();
      return;
    case EventKind::Key:
      if (forms_.Main() != nullptr && forms_.Main()->Visible()) forms_.Main()->KeyDown(event.text);
      return;
    case EventKind::Activate:
    case EventKind::Close:
    case EventKind::Resize:
      if (Form* form = forms_.Find(event.target)) DispatchToForm(event, *form);
      return;
    default:
      if (Control* control = forms_.FindControl(event.target)) DispatchToControl(event, *control);
      return;
  }
}

void Door::DispatchToForm(const Event& event, Form& form) {
  if (event.kind == EventKind::Resize) {
    form.Resized();
  } else if (form.Visible()) {
    if (event.kind == EventKind::Activate) forms_.Activate(form);
    if (event.kind == EventKind::Close) form.CloseRequested();
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
      if (control.Kind() == ControlKind::CheckBox) {
        control.SetValue(control.Value() == 0 ? 1 : 0);  // raises onClick itself
      } else {
        run(control.onClick);
      }
      return;
    case EventKind::Type:
      if (control.Kind() != ControlKind::TextBox || control.Text() == event.text) return;
      control.SetText(event.text);
      run(control.onChange);
      return;
    case EventKind::Choose:
      if (control.Kind() != ControlKind::ComboBox || control.ListIndex() == event.number) return;
      if (event.number < 0 || event.number >= static_cast<int>(control.Items().size())) return;
      control.SetListIndex(event.number);
      run(control.onChange);
      return;
    case EventKind::Hover:
      run(control.onHover);
      return;
    case EventKind::GotFocus:
      run(control.onGotFocus);
      return;
    default:
      return;
  }
}

}  // namespace quorvane

#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "forms/event.h"
#include "forms/forms.h"
#include "forms/platform.h"

namespace quorvane {

// What the door hands on besides the operator's actions on controls.
class DeviceEvents {
 public:
  virtual ~DeviceEvents() = default;
  virtual void Load() {}
  virtual void BytesArrived(const std::vector<std::uint8_t>& /*bytes*/) {}
  virtual void LineError(int /*code*/) {}
  virtual void PortsChanged(const std::vector<int>& /*ports*/) {}
  virtual void FieldChanged(int /*port*/, const std::string& /*trouble*/) {}
  // The program ends, and nobody can be asked: an Ask is a RunTimeError from here on.
  virtual void Quit() {}
  // An event has been handled, with or without an error.
  virtual void EventEnded() {}
};

// The one door through which every outside event enters. It samples the clock, so that time stands still
// inside an event; an error in a procedure ends its event, and only that; and a journal can be kept.
//
// An event that comes in while another is handled waits its turn. While a dialog box is open, bytes, line
// errors, ports, the practice field, timers and the end of the program go through before the event that
// opened it has ended; the operator's own actions on other windows are dropped, as a modal box has it.
//
// Nothing enters after the event that ends the program. The event that has opened a box is abandoned then.
class Door : public EventClock {
 public:
  explicit Door(Platform& platform) : platform_(platform), forms_(*this) {}

  // Null: none.
  void SetDevices(DeviceEvents* devices) { devices_ = devices != nullptr ? devices : &noDevices_; }
  void SetJournal(Journal* journal) { journal_ = journal != nullptr ? journal : &noJournal_; }
  // Called whenever an event has ended, so that the windows can show what changed.
  void SetAfterEvent(std::function<void()> afterEvent) { afterEvent_ = std::move(afterEvent); }

  void Enter(const Event& event);
  // Enters a timer event for each timer that is due by the console clock, each at the most once.
  void RunDueTimers();
  // Arms the timer again and enters its event.
  void FireTimer(Control& timer);

  std::int64_t Now() const override { return now_; }
  // Of the event in hand: counted on by the console clock, but follows the computer's clock, as the journal
  // notes, when that is set, changes to summer time, or the computer has slept.
  LocalDateTime LocalNow();
  // Of 0 ms of the console clock, as it was then.
  LocalDateTime LocalStart();
  // The computer's clocks at the console clock's Now().
  ComputerTime ComputerNow();
  // The same for something that depends on them: the journal notes it.
  ComputerTime LookAtComputer();
  // Looks whether the computer's clock shows another time than LocalNow(), and takes it over.
  void FollowLocalClock();
  Platform& System() { return platform_; }
  Forms& AllForms() { return forms_; }
  bool DialogOpen() const { return dialogs_ > 0; }

  // Lets the radio and the timers go on behind the box. The clock is sampled again when it closes.
  DialogAnswer Ask(const DialogBox& box);
  // Empty when the operator gives no answer.
  std::string AskText(const std::string& title, const std::string& prompt, const std::string& preset = {});
  // Runs the action as soon as no event is in hand and no box is open, at the time of the last event.
  void Post(std::function<void()> action);
  // An error ends the action, and only it, as it does an event. True: no error.
  bool Contain(const std::function<void()>& action);
  void NoteSent(const std::vector<std::uint8_t>& frame) { journal_->Sent(now_, frame); }
  void NoteCorrected(const std::string& what) { journal_->Corrected(now_, what); }
  void NoteProject(const std::string& path, bool taken) { journal_->ProjectOpened(now_, path, taken); }

  int ErrorsContained() const { return errors_; }
  const std::string& LastError() const { return lastError_; }

 private:
  void Handle(const Event& event);
  void Dispatch(const Event& event);
  void DispatchToControl(const Event& event, Control& control);
  void Drain();
  void SampleClock();
  void SampleAndFollow();
  void Run(const std::function<void()>& action);

  Platform& platform_;
  Forms forms_;
  DeviceEvents noDevices_;
  DeviceEvents* devices_ = &noDevices_;
  Journal noJournal_;
  Journal* journal_ = &noJournal_;
  std::function<void()> afterEvent_;
  std::int64_t now_ = 0;
  std::optional<LocalDateTime> localStart_;
  LocalDateTime localZero_ = {};  // of 0 ms of the console clock, as the computer's clock is set now
  std::int64_t followedAt_ = 0;
  int inHand_ = 0;         // events being handled, one inside the other
  int dialogs_ = 0;        // dialog boxes open
  int depthAtDialog_ = 0;  // inHand_ when the last of them opened, 0 while none is
  bool quit_ = false;      // the program ends
  std::deque<Event> waiting_;
  std::deque<std::function<void()>> posted_;
  int errors_ = 0;
  std::string lastError_;
};

}  // namespace quorvane

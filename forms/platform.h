#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <string>

namespace quorvane {

class Form;

// A local date and time of the computer, by a calendar without time zones.
using LocalDateTime = std::chrono::sys_seconds;

constexpr LocalDateTime MomentOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return std::chrono::sys_days(std::chrono::year(year) / month / day) + std::chrono::hours(hour) +
         std::chrono::minutes(minute) + std::chrono::seconds(second);
}
constexpr LocalDateTime AddMilliseconds(const LocalDateTime& at, std::int64_t ms) {
  return std::chrono::floor<std::chrono::seconds>(at + std::chrono::milliseconds(ms));
}

std::tm CalendarOf(const LocalDateTime& at);
std::string MomentText(const LocalDateTime& at, char separator = 'T');  // "2026-11-21T09:00:00"

// The computer's own clocks at one moment, to tell after a crash how long ago it was.
struct ComputerTime {
  std::int64_t utcMs = 0;        // since 1970; anybody may set it at any time
  std::string boot = {};         // names this run of the computer; empty where that cannot be told
  std::int64_t sinceBootMs = 0;  // goes on while it sleeps, is never set

  bool operator==(const ComputerTime&) const = default;
};

// ms from the first to the second. Setting the clock matters only where the computer has been started anew.
std::int64_t MsBetween(const ComputerTime& first, const ComputerTime& second);

enum class DialogKind : std::uint8_t { Ok, OkCancel, YesNo, YesNoCancel, Input, OpenFile, SaveFile };
enum class DialogIcon : std::uint8_t { None, Exclamation, Critical };

// Ok, Cancel, Yes and No are buttons; Text is an entered text, File a chosen path. A box that is closed
// otherwise answers Cancel, or Ok where there is nothing else; one with only Yes and No cannot be.
struct DialogAnswer {
  enum class Word : std::uint8_t { Ok, Cancel, Yes, No, Text, File };
  Word word = Word::Cancel;
  std::string text = {};
};

// A box that the operator must answer before the procedure that shows it goes on.
struct DialogBox {
  DialogKind kind = DialogKind::Ok;
  std::string title;
  std::string text = {};  // lines end with a carriage return
  DialogIcon icon = DialogIcon::None;
  std::string preset = {};            // input: the text offered; files: the path offered
  std::string folder = {};            // files: where the dialog starts
  std::string defaultExtension = {};  // files: ".ini"
  // The button that Enter presses: the safe one where another loses something. Of none of them: the first.
  DialogAnswer::Word usual = DialogAnswer::Word::Yes;
  // The radio has raised it while the operator's hands are judging: no key or click in its first second.
  bool byRadio = false;
  // Files: the operator has chosen already, from a menu, and `preset` is the answer. Asked all the same, so
  // that the journal knows it as an answer and a replay puts a copy in the place of the file.
  bool chosen = false;
};

// The per-user settings, by section and key. Writing never fails visibly.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::string GetSetting(const std::string& section, const std::string& key,
                                 const std::string& fallback) const = 0;
  virtual void SaveSetting(const std::string& section, const std::string& key, const std::string& value) = 0;
};

// What the stopwatch behind the race clock can tell apart, and how often its counter steps.
struct StopwatchFigures {
  std::int64_t resolutionNs = 1000000;
  std::int64_t frequencyHz = 1000;
};

// The console clock as an event sees it: ms since the program started, never falling. It stands still inside
// an event, until a dialog box has closed.
class EventClock {
 public:
  virtual ~EventClock() = default;
  virtual std::int64_t Now() const = 0;
};

// Everything outside the language that the race logic reaches. The window and the replay each bring one.
class Platform {
 public:
  virtual ~Platform() = default;

  // ms since the program started; never jumps, falls or restarts.
  virtual std::int64_t ClockMs() = 0;
  virtual LocalDateTime LocalNow() = 0;
  virtual ComputerTime Computer() { return {}; }
  // Takes a few milliseconds at the most.
  virtual StopwatchFigures MeasureStopwatch() { return {}; }

  // Shows the box and returns when it has been answered. Events that arrive meanwhile are handed to the door.
  virtual DialogAnswer ShowDialog(const DialogBox& box) = 0;

  // Paints what has changed, now. No event is delivered meanwhile.
  virtual void RepaintWindows() = 0;
  virtual void BringForward(Form& form) = 0;

  // Plays a wave file without waiting for its end; silent on any failure.
  virtual void PlayWave(const std::string& path) = 0;
  virtual void StopWave() = 0;

  virtual void CopyText(const std::string& /*text*/) {}

  virtual SettingsStore& Settings() = 0;
  // Folders with their last separator; the program's has what comes with it, such as the countdown sound.
  virtual std::string ProgramFolder() = 0;
  virtual std::string HomeFolder() = 0;

  // Ends the program once the event in hand has been handled.
  virtual void EndProgram() = 0;
};

// Stops whatever is playing and, where the file exists, plays it without waiting for its end.
void PlaySound(Platform& platform, const std::string& path);

}  // namespace quorvane

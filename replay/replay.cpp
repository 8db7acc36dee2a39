#include "replay/replay.h"

#include <algorithm>

namespace quorvane {
namespace {

constexpr const char* kProjectSection = "DiskFile";
constexpr const char* kProjectKey = "FileName";

// The program was killed while a box was open. No std::exception, like NoWayOut.
struct KilledInBox {};

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return text;
}

}  // namespace

Replay::Replay(const SessionJournal& journal, const ReplayOptions& options)
    : journal_(journal), options_(options), folder_(journal), program_(platform_, serial_, files_) {
  Prepare();
}

void Replay::Prepare() {
  platform_.start = journal_.start;
  platform_.mostDismissals = 1;
  platform_.whileOpen = [this](const DialogBox&) { WhileOpen(); };
  for (const auto& setting : journal_.settings) {
    platform_.settings.SaveSetting(setting.section, setting.key, setting.value);
  }
  std::string recorded = platform_.settings.GetSetting(kProjectSection, kProjectKey, "");
  if (recorded.empty()) recorded = ProjectDate(journal_.start) + ".ini";
  const std::string project =
      options_.project.empty() ? folder_.CopyOf(recorded) : folder_.Use(options_.project, recorded);
  platform_.settings.SaveSetting(kProjectSection, kProjectKey, project);
  platform_.homeFolder = ParentFolder(project);
  platform_.programFolder = platform_.homeFolder;
  if (options_.keepVersions) files_.KeepVersions([this] { return Now(); });
  program_.door().SetJournal(&made_);
}

void Replay::Run() {
  try {
    while (!platform_.ended && Step()) {
    }
  } catch (const NoWayOut& way) {
    stuckIn_ = OneLine(way.box.title + ": " + way.box.text);
  } catch (const KilledInBox&) {
  }
}

// The next thing that happens: in one and the same millisecond records come before timers.
bool Replay::Step() {
  if (next_ >= journal_.records.size()) return false;
  const JournalRecord& record = journal_.records[next_];
  if (FireTimerBefore(record.ms)) return true;
  ++next_;
  platform_.SetClock(record.ms);
  Take(record);
  return true;
}

bool Replay::FireTimerBefore(std::int64_t ms) {
  if (journal_.timersRecorded) return false;
  TimerQueue& timers = program_.door().AllForms().Timers();
  const auto due = timers.NextDue();
  if (!due || *due >= ms) return false;
  platform_.SetClock(std::max(*due, Now()));
  program_.door().FireTimer(*timers.NextTimer());
  return true;
}

// Time goes on behind an open box until it has its answer.
void Replay::WhileOpen() {
  while (!platform_.ended && platform_.answers.empty() && Step()) {
  }
  if (platform_.answers.empty() && options_.stopInOpenBox && !journal_.hasEnd) throw KilledInBox{};
}

void Replay::Take(const JournalRecord& record) {
  switch (record.kind) {
    case JournalRecord::Kind::Input:
      TakeEvent(record);
      return;
    case JournalRecord::Kind::Answer: {
      DialogAnswer answer = record.answer;
      const bool file = answer.word == DialogAnswer::Word::File && !answer.text.empty();
      if (file) answer.text = PathFor(answer.text);
      platform_.answers.push_back(answer);
      return;
    }
    case JournalRecord::Kind::Busy:
      serial_.busy[record.port] = {record.event.number, record.event.text};
      return;
    case JournalRecord::Kind::Held:
      files_.Hold(PathFor(record.event.text), record.held);
      return;
    case JournalRecord::Kind::Clock:
      platform_.start = AddMilliseconds(record.moment, -(record.ms - record.ms % 1000));
      program_.door().FollowLocalClock();
      return;
    case JournalRecord::Kind::Sent:
    case JournalRecord::Kind::End:
      return;
  }
}

// The file that stands for this one of the journal.
std::string Replay::PathFor(const std::string& named) {
  if (options_.inPlace && !folder_.HasCopyOf(named)) return named;
  return folder_.CopyOf(named, !journal_.timersRecorded);
}

void Replay::TakeEvent(const JournalRecord& record) {
  const Event& event = record.event;
  if (event.kind == EventKind::Ports) {
    TakePorts(event);
    return;
  }
  if (event.kind == EventKind::Load) loaded_ = true;
  if (!Names(event)) {
    notes_.push_back("line " + std::to_string(record.line) + ": there is no " + event.target +
                     ", the record does nothing");
    return;
  }
  if (event.kind == EventKind::Timer) {
    program_.door().FireTimer(*program_.door().AllForms().FindControl(event.target));
  } else {
    program_.door().Enter(event);
  }
}

void Replay::TakePorts(const Event& event) {
  serial_.ports = {event.numbers.begin(), event.numbers.end()};
  if (loaded_) program_.door().Enter(event);
}

// Whether the program has what the record names.
bool Replay::Names(const Event& event) {
  if (event.target.empty()) return true;
  const Forms& forms = program_.door().AllForms();
  if (event.target.find('.') == std::string::npos) return forms.Find(event.target) != nullptr;
  const Control* control = forms.FindControl(event.target);
  return control != nullptr && (event.kind != EventKind::Timer || control->Kind() == ControlKind::Timer);
}

}  // namespace quorvane

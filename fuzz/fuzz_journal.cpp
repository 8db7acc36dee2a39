// Any bytes as a session journal: reading ends well or in one clear line, what was read can be written and
// read again, and a short session runs through the whole console to its end.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "journal/journal_text.h"
#include "replay/replay.h"
#include "tests/support/scratch_folder.h"

namespace {

using quorvane::JournalRecord;
using quorvane::SessionJournal;

void Require(bool condition) {
  if (!condition) std::abort();
}

void RequireReadsBack(const SessionJournal& journal) {
  std::string text = quorvane::StartRecords(journal.start, journal.timersRecorded);
  for (const JournalRecord& record : journal.records) text += quorvane::RecordText(record);
  const SessionJournal again = quorvane::ReadJournal(text);
  Require(!again.cutOff && again.records.size() == journal.records.size());
}

void Run(SessionJournal journal) {
  constexpr std::int64_t kLongest = 30000;
  if (!journal.records.empty() && journal.records.back().ms > kLongest) return;
  static const quorvane::ScratchFolder folder;  // its files are replaced again and again
  for (JournalRecord& record : journal.records) {
    // Files anywhere on this computer are not to be written.
    if (record.answer.word == quorvane::DialogAnswer::Word::File) record.answer.text = folder / "other.ini";
  }
  for (const char* name : {"contest.ini", "other.ini"}) std::filesystem::remove(folder / name);
  quorvane::Replay replay(journal, {.project = folder / "contest.ini"});
  replay.Run();
  Require(!quorvane::StateJson(replay).empty());
  Require(!replay.program().door().DialogOpen());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  SessionJournal journal;
  try {
    journal = quorvane::ReadJournal(text);
  } catch (const quorvane::UnreadableJournal& error) {
    Require(error.Line() >= 1 && std::string_view(error.what()).find('\n') == std::string_view::npos);
    return 0;
  }
  RequireReadsBack(journal);
  Run(std::move(journal));
  return 0;
}

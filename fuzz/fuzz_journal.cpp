// Any bytes as a session journal: reading ends well or in one clear line, what was read can be written and
// read again, and a session runs through the whole console to its end, to the results of what it has saved.

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "fuzz/changes_told.h"
#include "fuzz/tell_all.h"
#include "journal/journal_text.h"
#include "replay/replay.h"
#include "tests/support/scratch_folder.h"

namespace {

using namespace quorvane;

void RequireReadsBack(const SessionJournal& journal) {
  std::string text = StartRecords(journal.start, journal.timersRecorded);
  for (const JournalRecord& record : journal.records) text += RecordText(record);
  Tell(text);
  const SessionJournal again = ReadJournal(text);
  Require(!again.cutOff && again.records.size() == journal.records.size());
}

void Run(SessionJournal journal) {
  constexpr std::int64_t kLongest = 400000;
  if (!journal.records.empty() && journal.records.back().ms > kLongest) return;
  static const ScratchFolder folder;  // its files are replaced again and again
  for (JournalRecord& record : journal.records) {
    // Files anywhere on this computer are not to be written.
    if (record.answer.word == DialogAnswer::Word::File) record.answer.text = folder / "other.ini";
  }
  for (const char* name : {"contest.ini", "other.ini"}) std::filesystem::remove(folder / name);
  Replay replay(journal, {.project = folder / "contest.ini", .verify = told != nullptr});
  const ChangesTold changes(replay.program().door().AllForms());
  replay.Run();
  const std::string state = StateJson(replay);
  Require(!state.empty());
  Tell(state + FrameRecords(replay.Sent()) + DialogLines(replay.platform().shown) +
       SettingsText(replay.platform().settings) + Join(replay.Notes(), '\n') + replay.StuckIn());
  if (told != nullptr) {  // what it compares with stands where the journal says, on this computer
    const Verdict verdict = Verify(journal, replay, {});
    Tell(verdict.text + Join(verdict.notes, '\n'));
  }
  Require(!replay.program().door().DialogOpen());
  replay.folder().Remove();
  const std::string saved = FileBytes(folder / "contest.ini");
  Tell(saved);
  TellAll(ProfileFile(saved));
}

// A changed record keeps its place in time, and a whole frame a right check byte; hardly any change would go
// far otherwise.
void Repair(std::string& line, std::int64_t& ms) {
  constexpr std::size_t kHexDigits = 72;
  const std::size_t blank = line.find(' ');
  if (line.empty() || line[0] < '0' || line[0] > '9' || blank == std::string::npos) return;
  const double told = LeadingNumber(line);
  ms = told > static_cast<double>(ms) && told < 1e9 ? static_cast<std::int64_t>(told) : ms;
  line.replace(0, blank, std::to_string(ms));
  const std::size_t at = line.find(" rx 55AA") + 4;
  if (at < 4 || line.size() != at + kHexDigits) return;
  unsigned check = 0;
  for (std::size_t i = at + 6; i < line.size(); i += 2) {
    unsigned byte = 0;
    std::from_chars(&line[i], &line[i] + 2, byte, 16);
    check ^= byte;
  }
  for (const int shift : {4, 0}) line[at + (shift == 0 ? 5 : 4)] = "0123456789ABCDEF"[check >> shift & 15U];
}

std::string Repaired(const std::string& text) {
  std::vector<std::string> lines = Split(text, '\n');
  std::int64_t ms = 0;
  for (std::string& line : lines) Repair(line, ms);
  return Join(lines, '\n');
}

std::optional<SessionJournal> Read(const std::string& text) {
  try {
    SessionJournal journal = ReadJournal(text);
    RequireReadsBack(journal);
    return journal;
  } catch (const UnreadableJournal& error) {
    Tell(error.what());
    Require(error.Line() >= 1 && std::string_view(error.what()).find('\n') == std::string_view::npos);
    return std::nullopt;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  Read(text);
  if (auto journal = Read(Repaired(text))) Run(*std::move(journal));
  return 0;
}

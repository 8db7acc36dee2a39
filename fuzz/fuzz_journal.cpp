// Any bytes as a session journal: reading ends well or in one clear line, what was read can be written and
// read again, and a session runs through the whole console to its end, to the results of what it has saved.

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "fuzz/tell_all.h"
#include "journal/journal_text.h"
#include "replay/replay.h"
#include "tests/support/scratch_folder.h"

namespace {

using namespace quorvane;

void RequireReadsBack(const SessionJournal& journal) {
  std::string text = StartRecords(journal.start, journal.timersRecorded);
  for (const JournalRecord& record : journal.records) text += RecordText(record);
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
  Replay replay(journal, {.project = folder / "contest.ini"});
  replay.Run();
  Require(!StateJson(replay).empty());
  Require(!replay.program().door().DialogOpen());
  replay.folder().Remove();
  TellAll(ProfileFile(FileBytes(folder / "contest.ini")));
}

// Later records stay later, and a frame keeps a right check byte, or hardly any change would go far.
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

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

// Changes a line, or leaves it out, or says it twice; now and then anything.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  std::mt19937 random(seed);
  std::vector<std::string> lines = Split(std::string(data, data + size), '\n');
  if (random() % 8 == 0 || lines.empty()) return LLVMFuzzerMutate(data, size, most);
  const auto at = lines.begin() + static_cast<std::ptrdiff_t>(random() % lines.size());
  const auto what = random() % 8;
  if (what == 0) lines.erase(at);
  if (what == 1) lines.insert(at, std::string(*at));
  if (what == 2) std::iter_swap(at, lines.begin() + static_cast<std::ptrdiff_t>(random() % lines.size()));
  if (what > 2) {
    const std::size_t length = at->size();
    at->resize(length + 40);
    at->resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(at->data()), length, at->size()));
  }
  std::int64_t ms = 0;
  for (std::string& line : lines) Repair(line, ms);
  const std::string text = Join(lines, '\n').substr(0, most);
  std::ranges::copy(text, data);
  return text.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  SessionJournal journal;
  try {
    journal = ReadJournal(text);
  } catch (const UnreadableJournal& error) {
    Require(error.Line() >= 1 && std::string_view(error.what()).find('\n') == std::string_view::npos);
    return 0;
  }
  RequireReadsBack(journal);
  Run(std::move(journal));
  return 0;
}

// quorvane-replay: runs a session journal without a window.

#include <array>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/text.h"
#include "files/file_ops.h"
#include "files/output_guard.h"
#include "journal/journal_text.h"
#include "programs/ending.h"
#include "programs/replay_command.h"
#include "records/project_store.h"
#include "replay/replay.h"

namespace quorvane {
namespace {

constexpr const char* kProgram = "quorvane-replay";
constexpr int kDone = 0;
constexpr int kDifferent = 1;
constexpr int kCannot = 2;

void Say(const std::string& text) {
  std::cerr << kProgram << ": " << text << "\n";
}

// What does not begin as a journal is not read to its end, which may be far away.
bool MayBeJournal(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return text.starts_with(kJournalFirstLine.substr(0, text.size()));
}

std::string ReadStandardInput() {
  std::string text;
  std::array<char, 65536> block;
  while (std::cin && text.size() <= kMostReplayed && MayBeJournal(text)) {
    std::cin.read(block.data(), block.size());
    text.append(block.data(), static_cast<std::size_t>(std::cin.gcount()));
  }
  if (text.size() > kMostReplayed) throw std::runtime_error("-: the journal is too long");
  return text;
}

// What has no end (a device, a named pipe) is not waited for; what is longer than any session is refused.
std::string ReadJournalText(const std::string& path) {
  if (path == "-") return ReadStandardInput();
  std::string text;
  FileStamp stamp;
  const std::error_code error = SystemFiles().ReadFile(path, kMostReplayed, text, stamp);
  if (error) throw std::runtime_error(path + ": the journal cannot be opened: " + error.message());
  return text;
}

// ---- What must not be written over: the journal, the files that it names (--project only if it exists, and
// not when the command says "in place"), one output by another, and what is no output of this kind.

std::vector<std::string> FilesNamedBy(const SessionJournal& journal) {
  std::vector<std::string> files;
  for (const auto& setting : journal.settings) {
    if (setting.section == "DiskFile" && setting.key == "FileName") files.push_back(setting.value);
  }
  for (const auto& project : journal.projects) files.push_back(project.path);
  for (const JournalRecord& record : journal.records) {
    if (record.kind == JournalRecord::Kind::Held) files.push_back(record.event.text);
    if (record.answer.word == DialogAnswer::Word::File) files.push_back(record.answer.text);
  }
  std::erase(files, "");
  return files;
}

std::optional<std::string> WhyNotProject(const ReplayCommand& command,
                                         const std::vector<std::string>& named) {
  const std::string& path = command.project;
  const bool exists = KindOfFile(path) != FileKind::Missing;
  if (command.verify && !exists) return "it is not there, and a comparison writes no project";
  auto reason = WhyNotWrite(path, FileKind::Project);  // a journal is none
  if (reason || command.verify) return reason;
  if (exists && !command.inPlace && WhyNotWrite(path, FileKind::Project, named)) {
    return "it is a file of the session; --in-place writes it all the same";
  }
  if (ProjectStore(path).TryLock() == LockResult::HeldElsewhere) return "it is open in a console";
  return std::nullopt;
}

// Asked before anything is written.
void RefuseWhatMustStay(const ReplayCommand& command, const SessionJournal& journal) {
  std::vector<std::string> inUse = FilesNamedBy(journal);
  if (!command.project.empty()) {
    if (const auto reason = WhyNotProject(command, inUse))
      throw std::runtime_error(command.project + ": " + *reason);
    inUse.push_back(command.project);
  }
  inUse.push_back(command.journal);
  for (const auto& [output, becomes] :
       {std::pair(command.settings, FileKind::Settings), std::pair(command.state, FileKind::Other),
        std::pair(command.frames, FileKind::Other), std::pair(command.dialogs, FileKind::Other)}) {
    if (output.empty()) continue;
    if (const auto reason = WhyNotWrite(output, becomes, inUse))
      throw std::runtime_error(output + ": " + *reason);
    inUse.push_back(output);
  }
}

// ---- Running it.

bool WriteWhole(const std::string& path, const std::string& text) {
  if (path.empty()) return true;
  std::ofstream out(PathOf(path), std::ios::binary);
  out << text;
  out.close();
  if (!out) Say(path + ": cannot be written");
  return static_cast<bool>(out);
}

bool WriteOutputs(const ReplayCommand& command, Replay& replay) {
  bool written = WriteWhole(command.settings, SettingsText(replay.platform().settings));
  written = WriteWhole(command.state, StateJson(replay)) && written;
  written = WriteWhole(command.frames, FrameRecords(replay.Sent())) && written;
  return WriteWhole(command.dialogs, DialogLines(replay.platform().shown)) && written;
}

int Compare(const ReplayCommand& command, const SessionJournal& journal, Replay& replay) {
  const Verdict verdict = Verify(journal, replay, command.project);
  for (const std::string& note : verdict.notes) Say(note);
  std::cout << verdict.text << "\n";
  if (!verdict.same) {
    std::cout << "replayed project: " << replay.program().race().ProjectFile << "\n";
    return kDifferent;
  }
  replay.folder().Remove();
  return kDone;
}

int Run(const ReplayCommand& command, const SessionJournal& journal) {
  RefuseWhatMustStay(command, journal);
  Replay replay(journal, {.project = command.verify ? std::string() : command.project,
                          .inPlace = command.inPlace,
                          .verify = command.verify});
  replay.Run();

  for (const std::string& note : replay.Notes()) Say(command.journal + ": " + note);
  if (journal.cutOff) Say(command.journal + ": the last line is unfinished and was left out");
  bool well = WriteOutputs(command, replay);
  if (command.project.empty() && !command.verify)
    std::cout << "project: " << replay.program().race().ProjectFile << "\n";
  if (!replay.StuckIn().empty()) {
    Say(command.journal + ": no answer is left for a box that must have one: " + replay.StuckIn());
    well = false;
  }
  if (!well) return kCannot;
  return command.verify ? Compare(command, journal, replay) : kDone;
}

int Main(const std::vector<std::string>& arguments) {
  const ReplayCommand command = ReadReplayCommand(arguments);
  try {
    return Run(command, ReadJournal(ReadJournalText(command.journal)));
  } catch (const UnreadableJournal& error) {
    const std::string place = command.journal + ":" + std::to_string(error.Line());
    throw Ending{kCannot, place + ": " + error.what() + "\n"};
  }
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;
  const int status = RunProgram(kProgram, [&] { return Main(CommandLineWords(argc, argv)); });
  if (std::cout.flush()) return status;
  Say("standard output cannot be written");
  return kCannot;
}

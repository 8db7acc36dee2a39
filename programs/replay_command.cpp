#include "programs/replay_command.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <utility>
#include <vector>

#include "files/output_guard.h"
#include "journal/journal_text.h"
#include "records/project_store.h"

namespace quorvane {
namespace {

constexpr std::size_t kMostBytes = std::size_t{1} << 30;

// What does not begin as a journal is not read to its end, which may be far away.
bool MayBeJournal(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  return text.starts_with(kJournalFirstLine.substr(0, text.size()));
}

bool ReadStandardInput(std::string& text, std::string& problem) {
  std::array<char, 65536> block;
  while (std::cin && text.size() <= kMostBytes && MayBeJournal(text)) {
    std::cin.read(block.data(), block.size());
    text.append(block.data(), static_cast<std::size_t>(std::cin.gcount()));
  }
  if (text.size() > kMostBytes) problem = "the journal is too long";
  return problem.empty();
}

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
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

std::optional<std::string> WhyNotProject(const ReplayCommand& command,
                                         const std::vector<std::string>& named) {
  const std::string& path = command.project;
  const FileKind kind = KindOfFile(path);
  if (command.verify) {
    if (kind == FileKind::Missing) return "it is not there, and a comparison writes no project";
    return WhyNotWrite(path, FileKind::Project);
  }
  if (kind != FileKind::Missing && !command.inPlace && WhyNotWrite(path, FileKind::Project, named)) {
    const auto otherwise = WhyNotWrite(path, FileKind::Project);
    return otherwise ? otherwise : "it is a file of the session; --in-place writes it all the same";
  }
  if (auto reason = WhyNotWrite(path, FileKind::Project, {command.journal})) return reason;
  if (ProjectStore(path).TryLock() == LockResult::HeldElsewhere) return "it is open in a console";
  return std::nullopt;
}

}  // namespace

std::variant<ReplayCommand, Ending> ReadReplayCommand(const std::vector<std::string>& arguments) {
  ReplayCommand command;
  Arguments app("quorvane-replay", "Runs a session journal through the console on a virtual clock.\n");
  app.AddFile("--project", command.project,
              "the project file that is written; without it a fresh file in a temporary folder");
  app.AddFile("--settings", command.settings, "gets the settings store at the end, as INI text");
  app.AddFile("--state", command.state,
              "gets the state of the race, the lanes and all controls at the end, as JSON");
  app.AddFile("--frames", command.frames, "gets a tx record for each frame sent");
  app.AddFile("--dialogs", command.dialogs, "gets a line of JSON for each dialog box shown");
  app.add_flag(
      "--in-place", command.inPlace,
      "the files that the journal names by answers are written where they stand; otherwise copies are "
      "used, and --project is no file of the session");
  app.add_flag(
      "--verify", command.verify,
      "compares the frames with the journal's tx records, and the project files with those that the "
      "session left; --project then names the session's file, or a copy of it. No project is written");
  app.AddFile("JOURNAL", command.journal, "of the session; - is standard input")->required();
  app.footer(
      "Exit status: 0 done, or the same; 1 different; 2 the journal cannot be read, or not be run to its "
      "end.");
  if (const auto ending = app.Read(arguments)) return *ending;
  if (command.verify && command.inPlace) {
    return app.Wrong("--verify writes no file of the session, so --in-place does not go with it");
  }
  return command;
}

bool ReadJournalText(const std::string& path, std::string& text, std::string& problem) {
  if (path == "-") return ReadStandardInput(text, problem);
  FileStamp stamp;
  const std::error_code error = SystemFiles().ReadFile(path, kMostBytes, text, stamp);
  if (error) problem = "the journal cannot be opened: " + error.message();
  return !error;
}

std::optional<std::string> WhyNotRun(const ReplayCommand& command, const SessionJournal& journal) {
  std::vector<std::string> inUse = FilesNamedBy(journal);
  if (!command.project.empty()) {
    if (const auto reason = WhyNotProject(command, inUse)) return command.project + ": " + *reason;
    inUse.push_back(command.project);
  }
  inUse.push_back(command.journal);
  for (const auto& [output, becomes] :
       {std::pair(command.settings, FileKind::Settings), std::pair(command.state, FileKind::Other),
        std::pair(command.frames, FileKind::Other), std::pair(command.dialogs, FileKind::Other)}) {
    if (output.empty()) continue;
    if (const auto reason = WhyNotWrite(output, becomes, inUse)) return output + ": " + *reason;
    inUse.push_back(output);
  }
  return std::nullopt;
}

}  // namespace quorvane

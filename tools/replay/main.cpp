// quorvane-replay: runs a session journal without a window.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "tools/replay/journal.h"
#include "tools/replay/options.h"
#include "tools/replay/outputs.h"
#include "tools/replay/replay.h"
#include "tools/replay/verify.h"

namespace quorvane {
namespace {

constexpr int kDone = 0;
constexpr int kDifferent = 1;
constexpr int kCannot = 2;

void Say(const std::string& text) {
  std::cerr << "quorvane-replay: " << text << "\n";
}

bool ReadWhole(const std::string& path, std::string& text) {
  if (path == "-") {
    text.assign(std::istreambuf_iterator<char>(std::cin), {});
    return true;
  }
  std::error_code ignored;
  std::ifstream in(path, std::ios::binary);
  if (!in || std::filesystem::is_directory(path, ignored)) return false;
  text.assign(std::istreambuf_iterator<char>(in), {});
  return true;
}

bool WriteWhole(const std::string& path, const std::string& text) {
  if (path.empty()) return true;
  std::ofstream out(path, std::ios::binary);
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

int RunJournal(const ReplayCommand& command, const SessionJournal& journal) {
  // In a comparison a file that exists is the session's, and one that does not is for the replay.
  const bool isSessions = command.verify && FileExists(command.project);
  ReplayOptions options;
  if (!isSessions) options.project = command.project;
  options.keepVersions = command.verify;
  options.stopInOpenBox = command.verify;
  Replay replay(journal, options);
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
  if (!command.verify || !well) return well ? kDone : kCannot;
  const Verdict verdict = Verify(journal, replay, isSessions ? command.project : "");
  for (const std::string& note : verdict.notes) Say(note);
  std::cout << verdict.text << "\n";
  if (!verdict.same) {
    std::cout << "replayed project: " << replay.program().race().ProjectFile << "\n";
    return kDifferent;
  }
  replay.folder().Remove();
  return kDone;
}

int Main(const std::vector<std::string>& words) {
  std::string problem;
  const auto command = ReadCommand(words, problem);
  if (!command) {
    Say(problem);
    std::cerr << kReplayUsage;
    return kCannot;
  }
  if (command->help) {
    std::cout << kReplayUsage;
    return kDone;
  }
  std::string text;
  if (!ReadWhole(command->journal, text)) {
    Say(command->journal + ": the journal cannot be opened");
    return kCannot;
  }
  try {
    return RunJournal(*command, ReadJournal(text));
  } catch (const UnreadableJournal& error) {
    std::cerr << command->journal << ":" << error.Line() << ": " << error.what() << "\n";
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return kCannot;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  return quorvane::Main(std::vector<std::string>(argv + 1, argv + argc));
}

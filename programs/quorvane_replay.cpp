// quorvane-replay: runs a session journal without a window.

#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "files/file_ops.h"
#include "journal/journal_text.h"
#include "programs/replay_command.h"
#include "replay/outputs.h"
#include "replay/replay.h"

namespace quorvane {
namespace {

constexpr int kDone = 0;
constexpr int kDifferent = 1;
constexpr int kCannot = 2;

void Say(const std::string& text) {
  std::cerr << "quorvane-replay: " << text << "\n";
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
  if (const auto reason = WhyNotRun(command, journal)) {
    Say(*reason);
    return kCannot;
  }
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
  if (!command.verify || !well) return well ? kDone : kCannot;
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

int Main(const std::vector<std::string>& arguments) {
  const auto parsed = ReadReplayCommand(arguments);
  if (const auto* ending = std::get_if<Ending>(&parsed)) return ending->Tell();
  const auto& command = std::get<ReplayCommand>(parsed);
  std::string text;
  std::string problem;
  if (!ReadJournalText(command.journal, text, problem)) {
    Say(command.journal + ": " + problem);
    return kCannot;
  }
  try {
    return RunJournal(command, ReadJournal(text));
  } catch (const UnreadableJournal& error) {
    std::cerr << command.journal << ":" << error.Line() << ": " << error.what() << "\n";
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return kCannot;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) try {
  quorvane::OutliveWriteErrors();
  const int status = quorvane::Main(std::vector<std::string>(argv + 1, argv + argc));
  if (std::cout.flush()) return status;
  quorvane::Say("standard output cannot be written");
  return quorvane::kCannot;
} catch (const std::exception& error) {
  std::fprintf(stderr, "quorvane-replay: %s\n", error.what());
  return quorvane::kCannot;
}

// quorvane-field: the simulated field on a pseudo-terminal.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>
#include <csignal>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "field/compare.h"
#include "field/field.h"
#include "field/pseudo_terminal.h"
#include "files/file_ops.h"
#include "programs/ending.h"
#include "programs/field_command.h"

namespace quorvane::field {
namespace {

constexpr const char* kProgram = "quorvane-field";

volatile std::sig_atomic_t ended = 0;

extern "C" void End(int) {
  ended = 1;
}

void CatchSignals() {
  struct sigaction action {};
  action.sa_handler = End;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

void PrintResults(Field& field) {
  for (const HeatResult& result : field.TakeResults()) std::cout << ToJson(result) << std::endl;
}

int Fly(const CommandLine& line) {
  std::string error;
  const auto terminal = PseudoTerminal::Open(line.link, error);
  if (!terminal) throw Ending{1, fmt::format("{}: {}\n", kProgram, error)};
  CatchSignals();
  std::cerr << kProgram << ": the field is on " << (line.link.empty() ? terminal->path() : line.link)
            << std::endl;
  Field field(line.field);
  const auto start = std::chrono::steady_clock::now();
  while (!ended && (line.stay || !field.Done())) {
    const auto passed = std::chrono::steady_clock::now() - start;
    const std::int64_t now = std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
    if (line.delay ? now >= *line.delay : terminal->Connected()) field.BeginHeats(now);
    field.Receive(terminal->Read(), now);
    for (const Chunk& chunk : field.AdvanceTo(now)) terminal->Write(chunk.bytes);
    PrintResults(field);
    terminal->Wait(field.NextDue() - now);
  }
  PrintResults(field);
  if (line.field.controlled) std::cout << ToJson(field.Heard(), field.counters()) << std::endl;
  return 0;
}

int PrintCourse(const CommandLine& line) {
  Field field(line.field);
  field.BeginHeats(0);
  while (!field.Done() && std::cout) {
    for (const Chunk& chunk : field.AdvanceTo(field.NextDue())) {
      std::cout << fmt::format("{{\"ms\":{},\"rx\":\"{:02X}\"}}\n", chunk.DueMs(),
                               fmt::join(chunk.bytes, ""));
    }
    PrintResults(field);
  }
  return std::cout ? 0 : 1;
}

// A device or a pipe may have no end, and is refused.
std::vector<ToldHeat> HeatsIn(const std::string& name) try {
  constexpr std::size_t kMostBytes = std::size_t{1} << 28;  // many thousand heats
  std::string text;
  FileStamp stamp;
  const std::error_code fault = SystemFiles().ReadFile(name, kMostBytes, text, stamp);
  if (fault) throw std::runtime_error("cannot be opened: " + fault.message());
  return ReadHeats(text);
} catch (const std::runtime_error& fault) {
  throw std::runtime_error(name + ": " + fault.what());
}

int Compare(const CommandLine& line) {
  const std::vector<ToldHeat> flown = HeatsIn(line.compared[0]);
  const std::vector<ToldHeat> shown = HeatsIn(line.compared[1]);
  const std::vector<std::string> differences = CompareHeats(flown, shown, line.compare);
  for (const std::string& difference : differences) std::cout << difference << '\n';
  if (!std::cout.flush()) throw std::runtime_error("standard output cannot be written");
  return differences.empty() ? 0 : 1;
}

int Run(const CommandLine& line) {
  if (!line.compared.empty()) return Compare(line);
  return line.fast ? PrintCourse(line) : Fly(line);
}

}  // namespace
}  // namespace quorvane::field

int main(int argc, char** argv) {
  using namespace quorvane::field;
  return quorvane::RunProgram(kProgram,
                              [&] { return Run(ReadCommandLine(quorvane::CommandLineWords(argc, argv))); });
}

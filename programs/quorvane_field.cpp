#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "field/pseudo_terminal.h"
#include "files/file_ops.h"
#include "programs/field_options.h"

namespace {

using namespace quorvane::field;

constexpr std::size_t kMostBytes = std::size_t{1} << 28;  // of results, many thousand heats

volatile std::sig_atomic_t ended = 0;

extern "C" void End(int) {
  ended = 1;
}

void CatchSignals() {
  struct sigaction action {};
  action.sa_handler = End;
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGHUP, &action, nullptr);
}

void PrintResults(Field& field) {
  for (const HeatResult& result : field.TakeResults()) std::cout << ToJson(result) << std::endl;
}

int Fly(const CommandLine& line) {
  std::string error;
  const auto terminal = PseudoTerminal::Open(line.link, error);
  if (!terminal) {
    std::cerr << "quorvane-field: " << error << '\n';
    return 1;
  }
  CatchSignals();
  std::cerr << "quorvane-field: the field is on " << (line.link.empty() ? terminal->path() : line.link)
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

void PrintChunk(const Chunk& chunk) {
  std::cout << fmt::format("{{\"ms\":{},\"rx\":\"{:02X}\"}}\n", chunk.DueMs(), fmt::join(chunk.bytes, ""));
}

int PrintCourse(const CommandLine& line) {
  Field field(line.field);
  field.BeginHeats(0);
  while (!field.Done() && std::cout) {
    for (const Chunk& chunk : field.AdvanceTo(field.NextDue())) PrintChunk(chunk);
    PrintResults(field);
  }
  return std::cout ? 0 : 1;
}

int Compare(const CommandLine& line) {
  std::vector<ToldHeat> heats[2];
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string& name = line.compared[i];
    // A device or a pipe may have no end.
    std::string text;
    quorvane::FileStamp stamp;
    const std::error_code fault = quorvane::SystemFiles().ReadFile(name, kMostBytes, text, stamp);
    std::string error = "cannot be opened: " + fault.message();
    std::istringstream in(text);
    auto read = fault ? std::nullopt : ReadHeats(in, error);
    if (!read) {
      std::cerr << "quorvane-field: " << name << ": " << error << '\n';
      return 2;
    }
    heats[i] = std::move(*read);
  }
  const std::vector<std::string> differences = CompareHeats(heats[0], heats[1], line.compare);
  for (const std::string& difference : differences) std::cout << difference << '\n';
  if (!std::cout.flush()) {
    std::cerr << "quorvane-field: standard output cannot be written\n";
    return 2;
  }
  return differences.empty() ? 0 : 1;
}

int Run(const CommandLine& line) {
  switch (line.task) {
    case Task::kCompare:
      return Compare(line);
    case Task::kFast:
      return PrintCourse(line);
    case Task::kFly:
      break;
  }
  return Fly(line);
}

}  // namespace

int main(int argc, char** argv) try {
  quorvane::OutliveWriteErrors();
  const auto parsed = ParseCommandLine({argv + 1, argv + argc});
  const auto* ending = std::get_if<quorvane::Ending>(&parsed);
  return ending != nullptr ? ending->Tell() : Run(std::get<CommandLine>(parsed));
} catch (const std::exception& error) {
  std::fprintf(stderr, "quorvane-field: %s\n", error.what());
  return 2;
}

#include "ui/printing/print_command.h"

#include <cstdio>

#include "results/race_records.h"
#include "ui/printing/printer_choice.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

int Complain(const std::string& message, int status) {
  std::fprintf(stderr, "quorvane: %s\n", message.c_str());
  return status;
}

// "7, 8"; empty: all are there.
std::string NotFlown(const std::vector<RaceRecord>& races) {
  QStringList numbers;
  for (const RaceRecord& race : races) {
    if (!race.hasRun) numbers << QString::number(race.number);
  }
  return numbers.join(QStringLiteral(", ")).toStdString();
}

}  // namespace

int RunPrintCommand(const CommandLine& line, const Imprint& imprint, const SettingsStore& settings) {
  std::vector<RaceRecord> races;
  const std::vector<int> numbers = line.print.all ? std::vector<int>{} : line.print.races;
  if (const std::error_code error = ReadRaces(SystemFiles(), line.project, settings, numbers, races)) {
    return Complain("cannot read " + line.project + ": " + error.message(), 1);
  }
  if (races.empty()) return Complain("no race has been flown in " + line.project, 1);
  if (const std::string missing = NotFlown(races); !missing.empty()) {
    return Complain("not flown in " + line.project + ": race " + missing + "; nothing written", 1);
  }
  const QPageSize paper = PaperNamed(ToQString(line.paper)).value_or(LoadPrinterChoice(settings).paper);
  const QString trouble =
      WritePdf(QString::fromStdString(line.output), paper, races, imprint, {line.project, line.settings});
  if (!trouble.isEmpty()) return Complain("cannot write " + line.output + ": " + trouble.toStdString(), 1);
  return 0;
}

}  // namespace quorvane

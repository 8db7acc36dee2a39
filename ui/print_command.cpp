#include "ui/print_command.h"

#include <QFileInfo>
#include <cstdio>

#include "console/race_records.h"
#include "records/file_ops.h"
#include "records/lane_colors.h"
#include "records/profile_file.h"
#include "ui/look.h"
#include "ui/qt_printer.h"

namespace quorvane {
namespace {

constexpr std::size_t kLargestProject = std::size_t{256} << 20;

int Complain(const std::string& message, int status) {
  std::fprintf(stderr, "quorvane: %s\n", message.c_str());
  return status;
}

// Of each race the flight that stands. A race that is asked for by its number prints as a score sheet when it
// has not run.
std::vector<RaceRecord> Wanted(const ProjectSource& project, const RaceList& list) {
  std::vector<RaceRecord> races;
  if (!list.all) {
    for (const int race : list.races) races.push_back(ReadRace(project, race));
    return races;
  }
  for (RaceRecord& race : ReadContest(project).races) {
    if (race.stands) races.push_back(std::move(race));
  }
  return races;
}

}  // namespace

int RunPrintCommand(const CommandLine& line, const Imprint& imprint, const SettingsStore& settings) {
  std::string bytes;
  FileStamp stamp;
  if (const std::error_code error = SystemFiles().ReadFile(line.project, kLargestProject, bytes, stamp)) {
    return Complain("cannot read " + line.project + ": " + error.message(), 1);
  }
  const ProfileFile text(std::move(bytes));
  const ProjectSource project{
      [&](const std::string& section, const std::string& key, const std::string& fallback) {
        return ProfileString(text, section, key, fallback);
      },
      line.project, LoadLaneColorScheme(settings)};
  const std::vector<RaceRecord> races = Wanted(project, line.print);
  if (races.empty()) return Complain("no race has been flown in " + line.project, 1);
  const QFileInfo output(QString::fromStdString(line.output));
  if (output.exists() &&
      output.canonicalFilePath() == QFileInfo(QString::fromStdString(line.project)).canonicalFilePath()) {
    return Complain("the report must not replace the project " + line.project, 2);
  }
  Paper paper = LoadPrinterChoice(settings).paper;
  if (!line.paper.empty()) PaperNamed(line.paper, paper);
  const QString trouble = WritePdf(output.filePath(), paper, races, imprint);
  if (!trouble.isEmpty()) return Complain("cannot write " + line.output + ": " + trouble.toStdString(), 1);
  return 0;
}

}  // namespace quorvane

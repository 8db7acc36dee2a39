#include "ui/printing/paper.h"

#include <sys/stat.h>

#include <QFile>
#include <QProcess>
#include <QRectF>
#include <map>

#include "tests/print/races.h"
#include "tests/support/test_data.h"
#include "tests/ui/fixture.h"

namespace quorvane {
namespace {

const Imprint kImprint{"Quorvane 1.2.3", MomentOf(2026, 11, 21, 17, 5, 0)};

// The words of a page and where they stand, as shares of its width and height, as another program reads it.
struct PdfPage {
  double width, height;
  std::multimap<std::string, QRectF> words = {};
};

std::vector<PdfPage> ReadPdf(const QString& path) {
  QProcess reader;
  reader.start("pdftotext", {"-bbox", path, "-"});
  reader.waitForFinished();
  std::vector<PdfPage> pages;
  for (const QString& line : QString::fromUtf8(reader.readAllStandardOutput()).split('\n')) {
    // <page width="595" height="842">, <word xMin="1" yMin="2" xMax="3" yMax="4">text</word>
    const QStringList parts = line.trimmed().split('"');
    const auto number = [&](int i) { return parts[i].toDouble(); };
    if (parts[0] == "<page width=") pages.push_back({number(1), number(3)});
    if (parts[0] != "<word xMin=") continue;
    auto& [width, height, words] = pages.back();
    const QPointF from(number(1) / width, number(3) / height);
    words.emplace(parts[8].chopped(7).mid(1).toStdString(),
                  QRectF(from, QPointF(number(5) / width, number(7) / height)));
  }
  return pages;
}

class PaperTest : public PlatformTest {
 protected:
  QString Path(const char* name) const { return folder.filePath(name); }
  void SetUp() override {
    QProcess probe;
    probe.start("pdftotext", {"-v"});
    if (!probe.waitForFinished()) GTEST_SKIP() << "needs pdftotext (poppler-utils)";
  }
};

TEST_F(PaperTest, APdfHasAPageARaceWithTheSameWordsInTheSamePlacesOnAnyPaper) {
  std::vector<RaceRecord> races = {FlownRace(), FlownRace()};
  races[1].number = 77;
  EXPECT_EQ(WritePdf(InFolder("a4.pdf"), QPageSize(QPageSize::A4), races, kImprint), "");
  EXPECT_EQ(WritePdf(InFolder("letter.pdf"), QPageSize(QPageSize::Letter), races, kImprint), "");
  const auto a4 = ReadPdf(Path("a4.pdf"));
  const auto letter = ReadPdf(Path("letter.pdf"));
  ASSERT_EQ(a4.size(), 2U);
  ASSERT_EQ(letter.size(), 2U);
  EXPECT_NEAR(a4[0].width, 595, 1);
  EXPECT_NEAR(letter[0].width, 612, 1);
  EXPECT_NEAR(letter[0].height, 792, 1);
  EXPECT_EQ(a4[1].words.count("77"), 1U);
  ASSERT_EQ(a4[0].words.size(), letter[0].words.size());
  for (const auto& [word, box] : a4[0].words) {
    EXPECT_GE(letter[0].words.count(word), 1U) << word;
    EXPECT_TRUE(QRectF(QPointF(0.045, 0.02), QPointF(0.955, 0.98)).contains(box)) << word;
  }
  // Columns stand at the same shares of the width.
  EXPECT_NEAR(a4[0].words.find("Caller")->second.left(), letter[0].words.find("Caller")->second.left(),
              0.002);
}

TEST_F(PaperTest, TheCommandLineWritesProtestSheetsOnAsManyPagesAsTheyTake) {
  const CommandLine line = ParseCommandLine(
      {"--protest", "1", TestData() + "/results/cup.ini", "-o", InFolder("protest.pdf"), "--paper", "a4"});
  EXPECT_EQ(PrintReports(line, {"Quorvane 1.2.3", kImprint.printed, Report::Protest}, settings), "");
  const auto pages = ReadPdf(Path("protest.pdf"));
  EXPECT_EQ(pages.size(), 2U);
  for (const PdfPage& page : pages) EXPECT_EQ(page.words.count("Protest"), 1U);
}

TEST_F(PaperTest, TheCommandLineFailsWithAStatusAndLeavesTheProjectAlone) {
  std::ofstream(InFolder("cup.ini")) << FileBytes(TestData() + "/results/cup.ini");
  QFile(Path("empty.ini")).open(QIODevice::WriteOnly);
  settings.SaveSetting("Printer", "Paper", "A4");
  ASSERT_EQ(mkfifo(Path("fifo").toUtf8().constData(), 0600), 0);
  // Races, project, output and its pages; nothing where it fails.
  for (const auto& row : Rows("ui/printed.json")) {
    const CommandLine line =
        ParseCommandLine({"--print", row[0], InFolder(row[1]), "-o", InFolder(row[2]), "--paper", "a4"});
    EXPECT_EQ(PrintReports(line, kImprint, settings).empty(), !row[3].empty()) << row[2];
    if (row[3].empty()) continue;
    EXPECT_EQ(std::to_string(ReadPdf(Path(row[2].c_str())).size()), row[3]) << row[0];
  }
  EXPECT_FALSE(QFile::exists(Path("none.pdf")));
  EXPECT_FALSE(FileBytes(InFolder("cup.ini")).starts_with("%PDF"));
}

}  // namespace
}  // namespace quorvane

#include "ui/printing/qt_printer.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>
#include <memory>
#include <semaphore>

#include "tests/ui/fixture.h"
#include "ui/printing/printer_choice.h"

namespace quorvane {
namespace {

class QtPrinterTest : public ProgramTest {
 protected:
  QtPrinterTest() { Load(); }
  void SavePdf(const std::string& path) {
    answer = [path](const DialogBox& box) {
      EXPECT_TRUE(box.preset.ends_with(".pdf")) << box.preset;
      return DialogAnswer{DialogAnswer::Word::File, path};
    };
    Click("frmJudge.mnuSavePdf");
  }
  std::string Notice() { return program.judge().lblNotice.Caption(); }

  QtHeatPrinter printer{program, platform, &windows.Console()};
};

TEST_F(QtPrinterTest, TheConsoleGoesOnWhileAPrinterHangsAndTheRaceIsTheOneThatWasShown) {
  std::binary_semaphore hanging(0);
  std::vector<int> printed;
  printer.SetSpooler([&](const PrinterChoice&, const RaceRecord& race, const Imprint&) {
    hanging.acquire();
    printed.push_back(race.number);
    return PrintOutcome{true, QStringLiteral("done %1").arg(race.number)};
  });
  Click("frmJudge.cmdPrint");
  Click("frmJudge.cmdIncHeat");
  EXPECT_EQ(program.race().RaceNumber, 2);
  Click("frmJudge.cmdPrint");
  EXPECT_EQ(Notice(), "Printing race 2 ...");
  const std::string path = InFolder("heat.pdf");
  SavePdf(path);
  EXPECT_TRUE(WaitFor([&] { return Notice() == "PDF saved: race 2\nPrinting race 1 ..."; })) << Notice();
  hanging.release();
  EXPECT_TRUE(WaitFor([&] { return Notice() == "done 1\nPrinting race 2 ..."; }));
  hanging.release();
  EXPECT_TRUE(WaitFor([&] { return Notice() == "done 2"; }));
  EXPECT_TRUE(BytesOf(path).starts_with("%PDF"));
  Click("frmJudge.lblNotice");
  EXPECT_FALSE(program.judge().lblNotice.Visible());
  EXPECT_EQ(printed, (std::vector<int>{1, 2}));
}

TEST(PrintQueue, ARefusingOrPausedPrinterIsNotSaidToHaveTheRace) {
  const struct {
    const char* accepting;
    const char* state;
    const char* notice;
  } cases[] = {{"true", "3", "Race 3 sent to Laser"},
               {"", "", "Race 3 sent to Laser"},
               {"false", "5", "Laser refuses jobs: race 3 not printed"},
               {"true", "5", "Laser is paused: race 3 waits there"}};
  for (const auto& c : cases) {
    const PrintQueue queue = QueueWith([&](const char* name) {
      return QString(name == std::string("printer-state") ? c.state : c.accepting);
    });
    EXPECT_EQ(OutcomeOf(QStringLiteral("Laser"), queue, QStringLiteral("race 3")).notice, c.notice);
  }
}

TEST_F(QtPrinterTest, ClosingWaitsABoundedTimeForAPrinterThatHangsAndSaysSo) {
  const auto hanging = std::make_shared<std::binary_semaphore>(0);
  printer.SetSpooler([hanging](const PrinterChoice&, const RaceRecord&, const Imprint&) {
    hanging->acquire();
    return PrintOutcome();
  });
  Click("frmJudge.cmdPrint");
  QString told;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    told = box->text();
    box->accept();
  });
  look.start(20);
  QElapsedTimer took;
  took.start();
  printer.Finish(200);
  EXPECT_LT(took.elapsed(), 3000);
  EXPECT_EQ(told, "The print server does not answer: race 1 may not be printed.");
  EXPECT_TRUE(WorkThread::AnyLeftBehind());
  hanging->release();
}

TEST_F(QtPrinterTest, WhatCannotBePrintedOrSavedIsANoticeAndNoDialog) {
  SavePrinterChoice(settings, {QStringLiteral("no such printer"), QPageSize(QPageSize::Letter)});
  EXPECT_EQ(LoadPrinterChoice(settings).paper, QPageSize(QPageSize::Letter));
  const std::size_t boxes = shown.size();
  Click("frmJudge.cmdPrint");
  EXPECT_TRUE(WaitFor([&] { return Notice() == "No printer no such printer: race 1 not printed"; }, 10000))
      << Notice();
  EXPECT_EQ(shown.size(), boxes);
  SavePdf("/no/such/folder/x.pdf");
  EXPECT_TRUE(WaitFor([&] { return Notice().starts_with("PDF not saved: "); }));
  SavePdf(program.race().ProjectFile);
  EXPECT_TRUE(WaitFor([&] { return Notice() == "PDF not saved: it is a file in use"; })) << Notice();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtPrinterTest, PreviewScrollsScalesAndClosesInItsWindow) {
  SavePrinterChoice(settings, {{}, QPageSize(QPageSize::A4)});
  Click("frmJudge.mnuPrintPreview");
  PreviewForm& preview = printer.Preview();
  ASSERT_TRUE(WaitFor([&] { return preview.isVisible(); }));
  preview.resize(500, 400);
  Settle();
  const auto* page = qobject_cast<QLabel*>(preview.View().widget());
  EXPECT_EQ(page->pixmap().size(), QSize(794, 1122));
  QScrollBar& across = *preview.View().horizontalScrollBar();
  QScrollBar& down = *preview.View().verticalScrollBar();
  const QSize seen = preview.View().viewport()->size();
  const struct {
    int key, left, top;
  } presses[] = {{Qt::Key_Up, 0, 0},
                 {Qt::Key_Down, 0, qRound(0.1 * seen.height())},
                 {Qt::Key_Right, qRound(0.1 * seen.width()), qRound(0.1 * seen.height())},
                 {Qt::Key_PageDown, across.singleStep(), seen.height()},
                 {Qt::Key_End, across.singleStep(), seen.height()},
                 {Qt::Key_Left, 0, seen.height()},
                 {Qt::Key_PageUp, 0, qRound(0.1 * seen.height())}};
  for (const auto& press : presses) {
    Press(preview.focusWidget(), press.key);
    EXPECT_EQ(-page->x(), press.left) << press.key;
    EXPECT_NEAR(-page->y(), press.top, 1) << press.key;
  }
  down.setValue(100000);
  EXPECT_EQ(-page->y(), 1122 - seen.height());
  preview.Menu().Find(preview.Of().mnuScaleSet[3])->trigger();
  Settle();
  EXPECT_EQ(page->size(), QSize(298, 421));
  EXPECT_EQ(page->pos(), QPoint(0, 0));
  EXPECT_FALSE(across.isVisible());
  EXPECT_TRUE(preview.Menu().Find(preview.Of().mnuScaleSet[3])->isChecked());
  EXPECT_FALSE(preview.Menu().Find(preview.Of().mnuScaleSet[1])->isChecked());
  preview.Menu().Find(preview.Of().mnuFileClose)->trigger();
  EXPECT_FALSE(preview.isVisible());
}

TEST_F(QtPrinterTest, SetupKeepsAPrinterThatIsSwitchedOff) {
  const PrinterChoice now{QStringLiteral("Laser"), QPageSize(QPageSize::Letter)};
  const PrinterSetup setup({QStringLiteral("Ink")}, QStringLiteral("Ink"), now, nullptr);
  EXPECT_EQ(setup.Choice().name, QStringLiteral("Laser"));
  EXPECT_EQ(setup.Choice().paper, QPageSize(QPageSize::Letter));
}

}  // namespace
}  // namespace quorvane

#include "ui/printing/qt_printer.h"

#include <QAction>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>
#include <memory>
#include <semaphore>
#include <tuple>

#include "tests/ui/fixture.h"

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
  void ExpectNotice(const std::string& text) {
    EXPECT_TRUE(WaitFor([&] { return Notice() == text; }, 10000)) << Notice();
  }

  QtHeatPrinter printer{program, &windows.Console()};
};

TEST_F(QtPrinterTest, TheConsoleGoesOnWhileAPrinterHangsAndTheRaceIsTheOneThatWasShown) {
  std::binary_semaphore hanging(0);
  printer.SetSpooler([&](const PrinterChoice&, const RaceRecord& race, const Imprint&) {
    hanging.acquire();
    return PrintOutcome{true, "done " + std::to_string(race.number)};
  });
  Click("frmJudge.cmdPrint");
  Click("frmJudge.cmdIncHeat");
  Click("frmJudge.cmdPrint");
  EXPECT_EQ(Notice(), "Printing race 2 ...");
  const std::string path = InFolder("heat.pdf");
  SavePdf(path);
  ExpectNotice("PDF saved: race 2\nPrinting race 1 ...");
  hanging.release();
  ExpectNotice("done 1\nPrinting race 2 ...");
  hanging.release();
  ExpectNotice("done 2");
  EXPECT_TRUE(FileBytes(path).starts_with("%PDF"));
  Click("frmJudge.lblNotice");
  EXPECT_FALSE(program.judge().lblNotice.Visible());
}

TEST_F(QtPrinterTest, AReportOnPaperGivesWayToWhatTheSaveHasComeToAndTroubleDoesSoWithAClick) {
  PrintOutcome outcome = OutcomeOf("Laser", {}, "race 1");
  printer.SetSpooler([&](const PrinterChoice&, const RaceRecord&, const Imprint&) { return outcome; });
  answer = [](const DialogBox&) { return DialogAnswer{DialogAnswer::Word::Yes, ""}; };
  Click("frmJudge.cmdStart");
  Click("frmJudge.cmdReset");
  const std::string saved = "Race 1 saved: lane 1 DNF, lane 2 DNF, lane 3 DNF, lane 4 DNF";
  EXPECT_EQ(Notice(), saved);
  program.judge().ShowDone("Race 1 sent to Laser");  // sent before the save, told after it
  EXPECT_EQ(Notice(), saved);
  Click("frmJudge.cmdPrint");
  ExpectNotice(saved);
  outcome = OutcomeOf("Laser", {"true", "5"}, "race 1");
  Click("frmJudge.cmdPrint");
  ExpectNotice(outcome.notice);
  Click("frmJudge.lblNotice");
  EXPECT_EQ(Notice(), saved);
}

TEST(PrintQueue, ARefusingOrPausedPrinterIsNotSaidToHaveTheRace) {
  for (const auto& [queue, notice] : {std::pair(PrintQueue{"true", "3"}, "Race 3 sent to Laser"),
                                      {PrintQueue{}, "Race 3 sent to Laser"},
                                      {PrintQueue{"false", "5"}, "Laser refuses jobs: race 3 not printed"},
                                      {PrintQueue{"true", "5"}, "Laser is paused: race 3 waits there"}}) {
    EXPECT_EQ(OutcomeOf("Laser", queue, "race 3").notice, notice);
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
  look.callOnTimeout([&] {
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
  const std::size_t boxes = shown.size();
  Click("frmJudge.cmdPrint");
  ExpectNotice("No printer no such printer: race 1 not printed");
  EXPECT_EQ(shown.size(), boxes);
  SavePdf(program.race().ProjectFile);
  ExpectNotice("PDF not saved: it is a file in use");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtPrinterTest, PreviewScrollsScalesAndClosesInItsWindow) {
  SavePrinterChoice(settings, {{}, QPageSize(QPageSize::A4)});
  Click("frmJudge.mnuPrintPreview");
  PreviewWindow& preview = printer.Preview();
  ASSERT_TRUE(WaitFor([&] { return preview.isVisible(); }));
  preview.resize(500, 400);
  Settle();
  const auto* page = qobject_cast<QLabel*>(preview.View().widget());
  EXPECT_EQ(page->pixmap().size(), QSize(794, 1122));
  const QSize seen = preview.View().viewport()->size();
  const QSize tenth(qRound(0.1 * seen.width()), qRound(0.1 * seen.height()));
  for (const auto& [key, left, top] : {std::tuple(Qt::Key_Down, 0, tenth.height()),
                                       {Qt::Key_Right, tenth.width(), tenth.height()},
                                       {Qt::Key_PageDown, tenth.width(), seen.height()},
                                       {Qt::Key_PageUp, tenth.width(), tenth.height()}}) {
    Press(preview.focusWidget(), key);
    EXPECT_EQ(-page->x(), left) << key;
    EXPECT_NEAR(-page->y(), top, 1) << key;
  }
  preview.View().verticalScrollBar()->setValue(100000);
  EXPECT_EQ(-page->y(), 1122 - seen.height());
  for (const auto& [scale, size] : {std::pair(2, QSize(595, 842)), {3, QSize(298, 421)}}) {
    preview.Menu().Find(&preview.Of().mnuScaleSet[scale])->trigger();
    Settle();
    EXPECT_EQ(page->geometry(), QRect({0, 0}, size));
    for (int i = 1; i <= 3; ++i) {
      EXPECT_EQ(preview.Menu().Find(&preview.Of().mnuScaleSet[i])->isChecked(), i == scale);
    }
  }
  preview.Menu().Find(&preview.Of().mnuFileClose)->trigger();
  EXPECT_FALSE(preview.isVisible());
  Click("frmJudge.mnuPrintPreview");
  EXPECT_TRUE(WaitFor([&] { return page->pixmap().width() == 794; }));
}

TEST_F(QtPrinterTest, AProtestSheetIsShownAndPrintedFromItsWindow) {
  printer.SetSpooler([](const PrinterChoice&, const RaceRecord&, const Imprint& imprint) {
    return PrintOutcome{true, imprint.report == Report::Protest ? "sheet printed" : "report printed"};
  });
  Click("frmJudge.mnuProtestSheet");
  PreviewWindow& preview = printer.Preview();
  ASSERT_TRUE(WaitFor([&] { return preview.windowTitle() == "Protest Sheet" && preview.isVisible(); }));
  preview.Menu().Find(&preview.Of().mnuFilePrint)->trigger();
  ExpectNotice("sheet printed");
  Click("frmJudge.cmdPrint");
  ExpectNotice("report printed");
  Click("frmJudge.cmdStart");
  EXPECT_FALSE(program.judge().mnuProtestSheet.Enabled());
}

TEST_F(QtPrinterTest, SetupKeepsAPrinterThatIsSwitchedOff) {
  SavePrinterChoice(settings, {QStringLiteral("Laser"), QPageSize(QPageSize::Letter)});
  OpenPrinterSetup({QStringLiteral("Ink")}, QStringLiteral("Ink"), settings, nullptr)->accept();
  EXPECT_EQ(LoadPrinterChoice(settings).name, QStringLiteral("Laser"));
  EXPECT_EQ(LoadPrinterChoice(settings).paper, QPageSize(QPageSize::Letter));
}

}  // namespace
}  // namespace quorvane

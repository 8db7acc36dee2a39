#include "ui/words.h"

#include <QAction>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <set>

#include "tests/support/test_data.h"
#include "tests/ui/fixture.h"
#include "ui/session_recording.h"
#include "ui/view_menu.h"
#include "ui/word_patterns.h"

namespace quorvane {
namespace {

// Before the windows are made.
struct InGerman {
  InGerman() { Words::Speak("de_AT"); }
  ~InGerman() { Words::Speak("en"); }
};

TEST(WordsTest, TextIsToldWholeOrByPatternOrInPartsAndWhatIsUnknownStands) {
  const auto told = [](const char* english) { return Words::Of(english).toStdString(); };
  EXPECT_EQ(told("Waiting"), "Waiting");
  const InGerman german;
  for (const auto& row : RowsInUtf8("ui/german.json")) EXPECT_EQ(told(row[0].c_str()), row[1]);
  const QString endless = QString("a, b - c: d; Lap 1, lane 2 (e) ").repeated(60);
  QElapsedTimer clock;
  clock.start();
  EXPECT_EQ(Words::Of(endless), endless);
  EXPECT_LT(clock.elapsed(), 2000);
  EXPECT_EQ(Words::WithMnemonic("Save", 'v'), "S&peichern");
  EXPECT_EQ(Words::WithMnemonic("P & Q", 'q'), "P && &Q");
}

TEST(WordsTest, EveryPatternHasItsTranslationWithTheSamePlaces) {
  const InGerman german;
  for (const WordPattern& pattern : kWordPatterns) {
    QString filled = QString::fromUtf8(pattern.text);
    std::size_t places = 0;
    for (const char* at = pattern.text; *at != 0; ++at) places += *at == '%' ? 1 : 0;
    std::string kinds = pattern.places;
    kinds.resize(places, 'n');
    const auto inPlace = [&](std::size_t i) {
      return kinds[i - 1] == 'w' ? QStringLiteral("turn") : QString::number(70 + i);
    };
    for (std::size_t i = 1; i <= places; ++i) filled.replace("%" + QString::number(i), inPlace(i));
    EXPECT_TRUE(Words::Know(filled)) << filled.toStdString();
    for (std::size_t i = 1; i <= places; ++i) {
      EXPECT_TRUE(Words::Of(filled).contains(Words::Of(inPlace(i)))) << pattern.text;
    }
  }
}

class GermanTest : protected InGerman, public AllWindowsTest {
 protected:
  GermanTest() { UsePort5(); }

  // Names, technical figures and what others have written.
  static bool StandsInEveryLanguage(const QString& text) {
    static const QRegularExpression kSo(
        "^RaceHorse$|Demonstration|test\\.ini|=0x|^Qt |GCC|Clang|offscreen|^/");
    return kSo.match(text).hasMatch();
  }
  void ExpectAllKnown(const char* state) {
    Settle();
    for (const QString& text : Words::Unknown()) {
      EXPECT_TRUE(StandsInEveryLanguage(text)) << "no German while " << state << ": " << text.toStdString();
    }
  }

  ViewMenu view{windows.Console(), settings};
  SessionRecording recording{program, windows};
};
using EnglishTest = ProgramTest;

TEST_F(GermanTest, EveryTextThatIsShownHasItsGerman) {
  Load();
  MakeAll();
  recording.Begin({}, InFolder("a.journal"));
  for (const char* menu : {"mnuTimerSettings", "mnuKeyboard", "mnuAbout", "mnuLog", "mnuResults",
                           "mnuScoreboard", "mnuPrintPreview", "mnuRecordSession"}) {
    Click(std::string("frmJudge.") + menu);
  }
  Click("frmSerialPort.cmdMore");
  delete OpenPrinterSetup({}, {}, settings, &windows.Console());
  ExpectAllKnown("waiting");
  Click("frmJudge.cmdStart");
  for (int lane = 0; lane < 4; ++lane) {
    program.lane(lane).DoLap(6000, 2000);
    program.lane(lane).DoCut("11", lane, 6500 + lane);
    program.lane(lane).DoTurn(4, 7000, 2000);
  }
  ExpectAllKnown("flying");
  Click("frmJudge.mnuUndo");
  Click("frmLog.cmdStrike");
  program.judge().FinalizeRace();
  Click("frmJudge.cmdReorder");
  ExpectAllKnown("finished");
  Click("frmJudge.cmdSave");
  Click("frmJudge.cmdDecHeat");
  Click("frmJudge.mnuAmend");
  Click("frmJudge.mnuProtestSheet");
  ExpectAllKnown("amending");
}

// Letters of one menu, or of one window with its menu bar.
void ExpectLettersOnce(const QStringList& texts, const QString& where) {
  std::set<QChar> used;
  for (const QString& text : texts) {
    const qsizetype at = QString(text).replace("&&", "  ").indexOf('&');
    const bool once = at < 0 || used.insert(text[at + 1].toLower()).second;
    EXPECT_TRUE(once) << (where + ": " + text).toStdString();
  }
}

void ExpectLettersOnceInEachWindowAndMenu() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const auto* form = dynamic_cast<FormWindow*>(window);
    QStringList texts;
    for (const QMenu* menu : window->findChildren<QMenu*>()) {
      QStringList entries;
      for (const QAction* entry : menu->actions()) entries << entry->text();
      ExpectLettersOnce(entries, menu->title());
    }
    if (form == nullptr) continue;
    for (const QAction* menu : form->Menu()->actions()) texts << menu->text();
    for (const QLabel* word : form->View().findChildren<QLabel*>())
      texts << (word->buddy() ? word->text() : "");
    for (const Place& place : form->View().Design().places) {
      if (place.mnemonic == 0) continue;
      texts << form->View().FindWidget(place.name)->property("text").toString();
      EXPECT_TRUE(texts.back().contains('&')) << texts.back().toStdString();
    }
    ExpectLettersOnce(texts, window->windowTitle());
  }
}

TEST_F(GermanTest, LettersForAltAreThereAndUsedOnceInEachWindowAndMenu) {
  Load();
  MakeAll();
  ExpectLettersOnceInEachWindowAndMenu();
}

TEST_F(EnglishTest, LettersForAltAreThereAndUsedOnceInEachWindowAndMenu) {
  Load();
  MakeAll();
  ExpectLettersOnceInEachWindowAndMenu();
}

}  // namespace
}  // namespace quorvane

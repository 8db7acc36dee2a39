#pragma once

#include <QColor>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <array>
#include <vector>

#include "forms/platform.h"
#include "results/race_records.h"
#include "ui/program_windows.h"
#include "ui/window_place.h"

class QComboBox;
class QScreen;

namespace quorvane {

// What the public is shown of the race on the console.
struct Score {
  struct Lane {
    bool flies = true;
    QString name;  // "1"
    QColor low, high;
    QString laps, cuts, time, place;
    bool bad = false;  // the place says that there is none

    bool operator==(const Lane&) const = default;
  };
  QString heat;  // "Round 2  Heat 3"
  QString event, mode;
  QString clock;
  QColor clockBack = Qt::white;
  std::array<Lane, 4> lanes;
};
Score ReadScore(Program& program);
// The same of a race in the project file.
Score ScoreOf(const RaceRecord& race);

// The picture of a score, in type as large as the room allows. Paints only what has changed.
class ScoreView : public QWidget {
 public:
  explicit ScoreView(QWidget* parent);
  void Show(const Score& score);
  const Score& Shown() const { return score_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Cell {
    QRect rect;
    QString text;
    QColor back = Qt::white;
    QColor fore = Qt::black;
    QColor second = {};  // lower half of a lane's marking
    double part = 0.86;  // of the height that the letters take
    Qt::AlignmentFlag align = Qt::AlignLeft;
    QString tail = {};  // stands after the text and is never cut
    int margin = 4;

    bool operator==(const Cell&) const = default;
  };

  std::vector<Cell> Cells() const;
  void AddHead(std::vector<Cell>& cells) const;
  void AddLane(std::vector<Cell>& cells, const Score::Lane& lane, const QRect& row) const;
  static void Paint(QPainter& painter, const Cell& cell);

  Score score_;
  std::vector<Cell> cells_;
  QSize size_;
};

// A window for a screen that is turned to the public, opened by "Scoreboard" in the console's menu. It
// follows the race at most 25 times a second, after the console's own windows have been shown, and takes no
// part in it: no key, no event. Between two races it shows the result of the last.
class Scoreboard : public QWidget {
 public:
  Scoreboard(Program& program, ProgramWindows& windows, SettingsStore& settings);
  ~Scoreboard() override;

  // On the screen that was chosen last, else on one that the console is not on, full screen where there is
  // another one.
  void Open();
  void SetFullScreen(bool full);
  void MoveToScreen(int index);
  ScoreView& View() { return *view_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  QWidget* NewBar();
  void ListScreens();
  QScreen* ScreenToOpenOn() const;
  void Follow();
  const Score* LastResult();

  Program& program_;
  ProgramWindows& windows_;
  SettingsStore& settings_;
  WindowPlace* place_;
  ScoreView* view_;
  QComboBox* screens_ = nullptr;
  QWidget* bar_;
  QTimer soon_;

  // The race that result_ is of.
  int resultRace_ = 0;
  int resultReflys_ = 0;
  std::string resultFile_;
  bool hasResult_ = false;
  Score result_;
};

}  // namespace quorvane

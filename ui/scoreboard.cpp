#include "ui/scoreboard.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "base/time_text.h"
#include "ui/widgets/look.h"

namespace quorvane {
namespace {

constexpr int kFollowMs = 40;
constexpr QSize kScoreboardSize{1024, 620};
constexpr QSize kLeastScoreboardSize{480, 300};
constexpr const char* kSettings = "Scoreboard";  // in the settings store
const QColor kFace(0xEE, 0xEE, 0xEE);

// Shares of the picture's height and width.
constexpr int kMarginShare = 60;
constexpr double kHead = 0.235;
constexpr double kCaptions = 0.06;
constexpr std::array kColumns = {0.13, 0.15, 0.14, 0.32, 0.26};
constexpr std::array kAligned = {Qt::AlignHCenter, Qt::AlignRight, Qt::AlignRight, Qt::AlignRight,
                                 Qt::AlignLeft};
constexpr std::array kColumnNames = {"Lane", "Laps", "Cuts", "Time", "Place"};

QString PlaceText(const std::string& caption) {
  static constexpr std::array<std::pair<const char*, const char*>, 4> kShort = {
      {{"First", "1st"}, {"Second", "2nd"}, {"Third", "3rd"}, {"Fourth", "4th"}}};
  for (const auto& [word, shortWord] : kShort) {
    if (caption == word) return QString::fromLatin1(shortWord);
  }
  return ToQString(caption);
}

// The time of a lane that has finished, otherwise that of its last lap.
QString TimeText(const frmLane& lane) {
  if (lane.IsFinished() && lane.FinalTime() < kNoResult && lane.CutsBeforeFinish() < 2) {
    return ToQString(FormatMinutes(FormatSeconds(lane.FinalTime())));
  }
  const int last = lane.Laps() - 1;
  if (last < 0 || last > lane.lblLap.Upper()) return {};
  return ToQString(lane.lblLap[last].Caption());
}

Score::Lane ReadLane(Program& program, int index) {
  const frmLane& lane = program.lane(index);
  Score::Lane score;
  score.flies = lane.Visible() && !(program.race().IsFaiMode && index == 3);
  score.name = QString::number(index + 1);
  score.low = ToQColor(lane.lblLow.BackColor());
  score.high = ToQColor(lane.lblHigh.BackColor());
  // Until it is flown again, the lanes still have the race that the refly repeats.
  if (program.race().ReflyMode && !program.race().RaceActive) return score;
  const bool placed = !program.judge().RaceBeingFlown() || lane.Status() == "DNF";
  if (placed) score.place = PlaceText(lane.Status());
  if (!placed && lane.CutsBeforeFinish() >= 2) score.place = QStringLiteral("DBL CUT");
  score.bad = lane.CutsBeforeFinish() >= 2 || score.place == QLatin1String("DNF") ||
              (placed && lane.Position() == "100");
  if (lane.EventCount() == 0) return score;
  score.laps = QString::number(lane.Laps());
  score.cuts = lane.CutCount() == 0 ? QString() : QString::number(lane.CutCount());
  score.time = TimeText(lane);
  return score;
}

QRect Part(const QRect& rect, double from, double to) {
  const int left = rect.left() + static_cast<int>(rect.width() * from);
  return {left, rect.top(), rect.left() + static_cast<int>(rect.width() * to) - left, rect.height()};
}

}  // namespace

Score ReadScore(Program& program) {
  const frmJudge& judge = program.judge();
  Score score;
  score.heat = QStringLiteral("Round %1  Heat %2").arg(judge.Round()).arg(judge.Heat());
  if (program.race().ReflyMode) score.heat += QStringLiteral("  Refly");
  score.event = ToQString(judge.EventName());
  score.mode = ToQString(judge.lblRaceMode.Caption());
  score.clock = ToQString(judge.lblStatus.Caption());
  score.clockBack = ToQColor(judge.lblStatus.BackColor());
  for (int i = 0; i < 4; ++i) score.lanes[static_cast<std::size_t>(i)] = ReadLane(program, i);
  return score;
}

Score ScoreOf(const RaceRecord& race) {
  Score score;
  score.heat = QStringLiteral("Round %1  Heat %2").arg(race.round).arg(race.heat);
  if (race.refly != 0) score.heat += QStringLiteral("  Refly");
  score.event = ToQString(race.eventName);
  score.mode = ToQString(race.modeName);
  score.clock = QStringLiteral("Result");
  for (std::size_t i = 0; i < score.lanes.size(); ++i) {
    const LaneRecord& from = race.lanes[i];
    Score::Lane& lane = score.lanes[i];
    lane.flies = from.flies;
    lane.name = QString::number(from.lane);
    lane.low = ToQColor(from.low);
    lane.high = ToQColor(from.high);
    lane.place = PlaceText(from.placing);
    lane.bad = !HasResult(from);
    if (!HasFlown(from)) continue;
    lane.laps = QString::number(from.laps.size());
    if (!from.cuts.empty()) lane.cuts = QString::number(from.cuts.size());
    if (HasResult(from)) lane.time = ToQString(FormatMinutes(FormatSeconds(from.final)));
  }
  return score;
}

ScoreView::ScoreView(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(200, 120);
}

void ScoreView::Show(const Score& score) {
  score_ = score;
  const std::vector<Cell> before = std::exchange(cells_, Cells());
  if (before.size() != cells_.size()) return update();
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    if (before[i] == cells_[i]) continue;
    if (before[i].rect != cells_[i].rect) return update();
    update(cells_[i].rect);
  }
}

std::vector<ScoreView::Cell> ScoreView::Cells() const {
  std::vector<Cell> cells;
  AddHead(cells);
  const auto lanes =
      std::count_if(score_.lanes.begin(), score_.lanes.end(), [](const auto& l) { return l.flies; });
  const int top = static_cast<int>(height() * (kHead + kCaptions));
  int row = 0;
  for (const Score::Lane& lane : score_.lanes) {
    if (!lane.flies) continue;
    const auto edge = [&](int i) { return top + (height() - top) * i / static_cast<int>(lanes); };
    AddLane(cells, lane, {0, edge(row) + 1, width(), edge(row + 1) - edge(row) - 1});
    ++row;
  }
  return cells;
}

void ScoreView::AddHead(std::vector<Cell>& cells) const {
  const int head = static_cast<int>(height() * kHead);
  const QRect left(0, 0, width() * 52 / 100, head);
  const int upper = head * 60 / 100;
  cells.push_back({.rect = {left.x(), 0, left.width(), upper}, .text = score_.heat, .part = 0.62});
  cells.push_back({.rect = {left.x(), upper, left.width(), head - upper},
                   .text = score_.event,
                   .part = 0.62,
                   .tail = score_.event.isEmpty() ? score_.mode : QStringLiteral("  ") + score_.mode});
  cells.push_back({.rect = {left.right() + 1, 0, width() - left.width(), head},
                   .text = score_.clock,
                   .back = score_.clockBack,
                   .fore = ReadableOn(score_.clockBack, Qt::black),
                   .part = 0.92,
                   .align = Qt::AlignHCenter});
  const QRect row(0, head, width(), static_cast<int>(height() * (kHead + kCaptions)) - head);
  double from = 0;
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    cells.push_back({.rect = Part(row, from, from + kColumns[i]),
                     .text = QString::fromLatin1(kColumnNames[i]),
                     .back = kFace,
                     .part = 0.8,
                     .align = kAligned[i],
                     .margin = width() / kMarginShare});
    from += kColumns[i];
  }
}

void ScoreView::AddLane(std::vector<Cell>& cells, const Score::Lane& lane, const QRect& row) const {
  const std::array texts = {lane.name, lane.laps, lane.cuts, lane.time, lane.place};
  double from = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    Cell cell{.rect = Part(row, from, from + kColumns[i]),
              .text = texts[i],
              .align = kAligned[i],
              .margin = width() / kMarginShare};
    if (i == 0) {
      cell.back = lane.low;
      cell.second = lane.high;
      cell.fore = ReadableOn(lane.high, ReadableOn(lane.low, Qt::black));
    }
    if (i == 2 || (i == 4 && lane.bad)) cell.fore = QColor(0xC0, 0, 0);
    cells.push_back(cell);
    from += kColumns[i];
  }
}

void ScoreView::Paint(QPainter& painter, const Cell& cell) {
  painter.fillRect(cell.rect, cell.back);
  if (cell.second.isValid() && cell.second != cell.back) {
    painter.fillRect(QRect(cell.rect.topLeft(), QSize(cell.rect.width(), cell.rect.height() / 2)),
                     cell.second);
  }
  if (cell.text.isEmpty() && cell.tail.isEmpty()) return;
  const int margin = std::max(cell.margin, cell.tail.isEmpty() ? 4 : cell.rect.height() / 12);
  const QRect inner = cell.rect.adjusted(margin, 0, -margin, 0);
  const QFont full = FontOfPixels(cell.rect.height() * cell.part, true);
  const int least = std::max(8, full.pixelSize() * 2 / 3);
  const QFont font = FitFont(full, cell.text + cell.tail, inner.width(), cell.tail.isEmpty() ? 8 : least);
  painter.setFont(font);
  painter.setPen(cell.fore);
  const QFontMetrics metrics(font);
  const int room = inner.width() - metrics.horizontalAdvance(cell.tail);
  const QString shown = cell.tail.isEmpty() ? cell.text : metrics.elidedText(cell.text, Qt::ElideRight, room);
  painter.drawText(inner, Qt::AlignVCenter | Qt::TextSingleLine | cell.align, shown + cell.tail);
}

void ScoreView::paintEvent(QPaintEvent* event) {
  if (size_ != size()) {
    size_ = size();
    cells_ = Cells();
  }
  QPainter painter(this);
  painter.fillRect(event->rect(), kFace);
  for (const Cell& cell : cells_) {
    if (event->region().intersects(cell.rect)) Paint(painter, cell);
  }
}

Scoreboard::Scoreboard(Program& program, ProgramWindows& windows, SettingsStore& settings)
    : program_(program),
      windows_(windows),
      settings_(settings),
      place_(new WindowPlace(*this, settings, "Scoreboard", kLeastScoreboardSize)),
      view_(new ScoreView(this)),
      bar_(NewBar()) {
  setWindowTitle(QStringLiteral("Scoreboard"));
  // The operator's keys belong to the console.
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(view_, 1);
  layout->addWidget(bar_);
  soon_.setSingleShot(true);
  soon_.setInterval(kFollowMs);
  QObject::connect(&soon_, &QTimer::timeout, this, [this] { Follow(); });
  windows_.AddFollower([board = QPointer<Scoreboard>(this)] {
    if (board != nullptr && board->isVisible() && !board->soon_.isActive()) board->soon_.start();
  });
  const auto list = [this] { ListScreens(); };
  QObject::connect(qApp, &QGuiApplication::screenAdded, this, list);
  QObject::connect(qApp, &QGuiApplication::screenRemoved, this, list, Qt::QueuedConnection);
  program_.judge().mnuScoreboard.onClick = [this] { Open(); };
}

Scoreboard::~Scoreboard() {
  program_.judge().mnuScoreboard.onClick = {};
}

QWidget* Scoreboard::NewBar() {
  auto* bar = new QWidget(this);
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(8, 4, 8, 4);
  auto* label = new QLabel(QStringLiteral("Screen"), bar);
  screens_ = new QComboBox(bar);
  screens_->setObjectName(QStringLiteral("screens"));
  auto* full = new QPushButton(QStringLiteral("Full Screen"), bar);
  full->setObjectName(QStringLiteral("fullScreen"));
  auto* hint = new QLabel(QStringLiteral("Esc or a double click: back to a window"), bar);
  for (QWidget* widget : std::initializer_list<QWidget*>{label, screens_, full, hint}) {
    widget->setFont(FontOfPixels(16, false));
    layout->addWidget(widget);
  }
  layout->addStretch(1);
  QObject::connect(screens_, &QComboBox::activated, this, [this](int index) { MoveToScreen(index); });
  QObject::connect(full, &QPushButton::clicked, this, [this] { SetFullScreen(true); });
  ListScreens();
  return bar;
}

void Scoreboard::ListScreens() {
  screens_->clear();
  int number = 0;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QSize size = screen->size();
    screens_->addItem(QStringLiteral("%1: %2 (%3 x %4)")
                          .arg(++number)
                          .arg(screen->name())
                          .arg(size.width())
                          .arg(size.height()),
                      screen->name());
  }
}

QScreen* Scoreboard::ScreenToOpenOn() const {
  const QString chosen = ToQString(settings_.GetSetting(kSettings, "Screen", ""));
  QScreen* other = nullptr;
  for (QScreen* screen : QGuiApplication::screens()) {
    if (screen->name() == chosen) return screen;
    if (other == nullptr && screen != windows_.Console().screen()) other = screen;
  }
  return other == nullptr ? windows_.Console().screen() : other;
}

void Scoreboard::Open() {
  if (isVisible()) return raise();
  QScreen* screen = ScreenToOpenOn();
  if (screen == nullptr) return;
  const bool remembered = place_->Restore(kScoreboardSize);
  Follow();
  const int index = static_cast<int>(QGuiApplication::screens().indexOf(screen));
  screens_->setCurrentIndex(index);
  if (!remembered || this->screen() != screen) MoveToScreen(index);
  SetFullScreen(screen != windows_.Console().screen());
}

// A full-screen window has to leave the one screen before it fills the other.
void Scoreboard::MoveToScreen(int index) {
  const QList<QScreen*> screens = QGuiApplication::screens();
  if (index < 0 || index >= screens.size()) return;
  QScreen* screen = screens[index];
  screens_->setCurrentIndex(index);
  const bool chosen = isVisible();
  setScreen(screen);
  const QRect room = screen->availableGeometry();
  resize(size().boundedTo(room.size()));
  move(room.center() - rect().center());
  if (chosen) settings_.SaveSetting(kSettings, "Screen", screen->name().toStdString());
}

void Scoreboard::SetFullScreen(bool full) {
  bar_->setVisible(!full);
  if (full) {
    showFullScreen();
  } else {
    showNormal();
  }
  view_->setCursor(full ? Qt::BlankCursor : Qt::ArrowCursor);
}

void Scoreboard::Follow() {
  const RaceState& race = program_.race();
  bool empty = !race.RaceActive;
  for (int i = 0; i < 4; ++i) empty = empty && program_.lane(i).EventCount() == 0;
  const Score* result = empty && !race.ReflyMode ? LastResult() : nullptr;
  view_->Show(result != nullptr ? *result : ReadScore(program_));
}

// Read once: the starter's stop makes the console ready for the next race as soon as one is over.
const Score* Scoreboard::LastResult() {
  const RaceState& race = program_.race();
  if (race.LastRaceRun < 1) return nullptr;
  if (race.LastRaceRun != resultRace_ || race.NumberReflys != resultReflys_ ||
      race.ProjectFile != resultFile_) {
    resultRace_ = race.LastRaceRun;
    resultReflys_ = race.NumberReflys;
    resultFile_ = race.ProjectFile;
    const RaceRecord record = ReadRace(OpenProject(program_.project(), race), resultRace_);
    hasResult_ = record.hasRun;
    if (hasResult_) result_ = ScoreOf(record);
  }
  return hasResult_ ? &result_ : nullptr;
}

void Scoreboard::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  if (isFullScreen()) {
    SetFullScreen(false);
  } else {
    hide();
  }
}

void Scoreboard::mouseDoubleClickEvent(QMouseEvent*) {
  SetFullScreen(!isFullScreen());
}

}  // namespace quorvane

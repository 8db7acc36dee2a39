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
#include <algorithm>
#include <array>

#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {
namespace {

constexpr int kFollowMs = 40;
constexpr QSize kScoreboardSize{1024, 620};
constexpr QSize kLeastScoreboardSize{480, 300};
constexpr const char* kSettings = "Scoreboard";  // in the settings store

struct Column {
  const char* name;
  int share;  // of the width, in percent
  Qt::AlignmentFlag align;
};
constexpr std::array<Column, 5> kColumns = {{{"Lane", 13, Qt::AlignHCenter},
                                             {"Laps", 15, Qt::AlignRight},
                                             {"Cuts", 14, Qt::AlignRight},
                                             {"Time", 32, Qt::AlignRight},
                                             {"Place", 26, Qt::AlignLeft}}};

template <typename Layout>
Layout* WithoutGaps(Layout* layout) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  return layout;
}

}  // namespace

// A field of the board, its letters as large as the room allows.
class ScoreField : public QWidget {
 public:
  struct Content {
    QString text;
    QString tail = {};  // stands after the text and is never cut
    QColor back = Shown(kWindow);
    QColor fore = Shown(kWindowText);
    QColor upper = back;  // of the upper half: a lane's marking has two

    bool operator==(const Content&) const = default;
  };

  // part: of the height that the letters take. In a row the margin is a share of that.
  ScoreField(QBoxLayout& into, int share, double part, Qt::AlignmentFlag align, bool inRow = false)
      : part_(part), align_(align), inRow_(inRow) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    into.addWidget(this, share);
  }

  void Show(const Content& content) {
    if (content == content_) return;
    content_ = content;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    const auto& [text, tail, back, fore, upper] = content_;
    QPainter painter(this);
    painter.fillRect(rect(), back);
    painter.fillRect(0, 0, width(), height() / 2, upper);
    const int atWords = tail.isEmpty() ? 4 : std::max(4, height() / 12);
    const int margin = inRow_ ? parentWidget()->width() / 60 : atWords;
    const QRect inner = rect().adjusted(margin, 0, -margin, 0);
    const QFont full = FontOfPixels(height() * part_, true);
    const int least = tail.isEmpty() ? 8 : std::max(8, full.pixelSize() * 2 / 3);
    const QFont font = FitFont(full, text + tail, inner.width(), least);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const int room = inner.width() - metrics.horizontalAdvance(tail);
    const QString shown = tail.isEmpty() ? text : metrics.elidedText(text, Qt::ElideRight, room);
    // The letters lie over both halves.
    for (const auto& [behind, top] : {std::pair(upper, 0), std::pair(back, height() / 2)}) {
      painter.setClipRect(0, top, width(), height() - top);
      painter.setPen(ReadableOn(behind, fore));
      painter.drawText(inner, Qt::AlignVCenter | Qt::TextSingleLine | align_, shown + tail);
    }
  }

 private:
  const double part_;
  const Qt::AlignmentFlag align_;
  const bool inRow_;
  Content content_;
};

// The headings, or a lane.
class ScoreRow : public QWidget {
 public:
  ScoreRow(QBoxLayout& into, int share, double part) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* layout = WithoutGaps(new QHBoxLayout(this));
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      fields_[i] = new ScoreField(*layout, kColumns[i].share, part, kColumns[i].align, true);
    }
    into.addWidget(this, share);
  }

  void ShowHeadings() {
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      fields_[i]->Show({.text = Words::Of(kColumns[i].name), .back = Shown(kButtonFace)});
    }
  }
  void Show(const Score::Lane& lane) {
    const QColor low = Shown(lane.low);
    const QColor high = Shown(lane.high);
    fields_[0]->Show({.text = Words::Of(lane.name), .back = low, .upper = high});
    fields_[1]->Show({.text = ToQString(lane.laps)});
    fields_[2]->Show({.text = ToQString(lane.cuts), .fore = Colors().warning});
    fields_[3]->Show({.text = ToQString(lane.time)});
    fields_[4]->Show(
        {.text = Words::Of(lane.place), .fore = lane.bad ? Colors().warning : Shown(kWindowText)});
    setVisible(lane.flies);
  }

 private:
  std::array<ScoreField*, kColumns.size()> fields_;
};

// The picture of a score. Paints only what has changed.
class ScoreView : public QWidget {
 public:
  explicit ScoreView(QWidget* parent) : QWidget(parent) {
    setAutoFillBackground(true);
    auto* all = WithoutGaps(new QVBoxLayout(this));
    auto* head = WithoutGaps(new QHBoxLayout);
    all->addLayout(head, 235);
    auto* left = WithoutGaps(new QVBoxLayout);
    head->addLayout(left, 52);
    heat_ = new ScoreField(*left, 60, 0.62, Qt::AlignLeft);
    event_ = new ScoreField(*left, 40, 0.62, Qt::AlignLeft);
    clock_ = new ScoreField(*head, 48, 0.92, Qt::AlignHCenter);
    headings_ = new ScoreRow(*all, 60, 0.8);
    auto* lanes = WithoutGaps(new QVBoxLayout);
    lanes->setContentsMargins(0, 1, 0, 0);
    lanes->setSpacing(1);
    all->addLayout(lanes, 705);
    for (ScoreRow*& lane : lanes_) lane = new ScoreRow(*lanes, 1, 0.86);
  }

  void Show(const Score& score) {
    headings_->ShowHeadings();
    heat_->Show({.text = Words::Of(score.heat)});
    const QString gap = score.event.empty() ? QString() : QStringLiteral("  ");
    const QColor behind = Shown(score.practice ? kAmber : kWindow);
    const QString event = score.practice ? Words::Of("PRACTICE") : ToQString(score.event);
    event_->Show({.text = event, .tail = gap + Words::Of(score.mode), .back = behind});
    const QColor back = Shown(score.clockBack);
    clock_->Show({.text = Words::Of(score.clock), .back = back, .fore = Shown(kWindowText)});
    for (std::size_t i = 0; i < lanes_.size(); ++i) lanes_[i]->Show(score.lanes[i]);
  }

 private:
  ScoreField* heat_;
  ScoreField* event_;
  ScoreField* clock_;
  ScoreRow* headings_;
  std::array<ScoreRow*, 4> lanes_;
};

Scoreboard::Scoreboard(Program& program, ProgramWindows& windows)
    : program_(program),
      keeper_(program),
      windows_(windows),
      settings_(program.door().System().Settings()),
      place_(new WindowPlace(*this, settings_, kSettings, kLeastScoreboardSize)) {
  setWindowTitle(Words::Of("Scoreboard"));
  // The operator's keys belong to the console.
  setAttribute(Qt::WA_ShowWithoutActivating);
  windows_.GiveMenuKeys(*this);
  soon_.setSingleShot(true);
  soon_.setInterval(kFollowMs);
  soon_.callOnTimeout(this, &Scoreboard::Follow);
  windows_.AddFollower([board = QPointer<Scoreboard>(this)] {
    if (board != nullptr && board->isVisible() && !board->soon_.isActive()) board->soon_.start();
  });
  program_.judge().mnuScoreboard.onClick = [this] { Open(); };
}

void Scoreboard::Fill() {
  view_ = new ScoreView(this);
  bar_ = NewBar();
  auto* layout = WithoutGaps(new QVBoxLayout(this));
  layout->addWidget(view_, 1);
  layout->addWidget(bar_);
  connect(qApp, &QGuiApplication::screenAdded, this, &Scoreboard::ListScreens);
  connect(qApp, &QGuiApplication::screenRemoved, this, &Scoreboard::ListScreens, Qt::QueuedConnection);
}

QWidget* Scoreboard::NewBar() {
  auto* bar = new QWidget(this);
  auto* layout = new QHBoxLayout(bar);
  layout->setContentsMargins(8, 4, 8, 4);
  auto* label = new QLabel(Words::Of("Screen"), bar);
  screens_ = new QComboBox(bar);
  screens_->setObjectName(QStringLiteral("screens"));
  auto* full = new QPushButton(Words::Of("Full Screen"), bar);
  full->setToolTip(Words::Of("Show the scoreboard alone on the chosen screen"));
  full->setObjectName(QStringLiteral("fullScreen"));
  auto* hint = new QLabel(Words::Of("Esc or a double click: back to a window"), bar);
  for (QWidget* widget : std::initializer_list<QWidget*>{label, screens_, full, hint}) {
    widget->setFont(FontOfPixels(16, false));
    layout->addWidget(widget);
  }
  layout->addStretch(1);
  connect(screens_, &QComboBox::activated, this, &Scoreboard::MoveToScreen);
  connect(full, &QPushButton::clicked, this, [this] { SetFullScreen(true); });
  ListScreens();
  return bar;
}

void Scoreboard::ListScreens() {
  screens_->clear();
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QString number = QString::number(screens_->count() + 1);
    const auto [width, height] = screen->size();
    screens_->addItem(QStringLiteral("%1: %2 (%3 x %4)").arg(number, screen->name()).arg(width).arg(height));
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
  if (view_ == nullptr) Fill();
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
  QScreen* screen = QGuiApplication::screens().value(index);
  if (screen == nullptr) return;
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
  full ? showFullScreen() : showNormal();
  view_->setCursor(full ? Qt::BlankCursor : Qt::ArrowCursor);
}

// A damaged project must not bring the program down from here.
void Scoreboard::Follow() {
  program_.door().Contain([this] { shown_ = keeper_.Now(); });
  view_->Show(shown_);
}

bool Scoreboard::event(QEvent* event) {
  const bool scheme = event->type() == QEvent::ApplicationPaletteChange;
  if (scheme && view_ != nullptr) view_->Show(shown_);
  return QWidget::event(event);
}

void Scoreboard::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  isFullScreen() ? SetFullScreen(false) : hide();
}

}  // namespace quorvane

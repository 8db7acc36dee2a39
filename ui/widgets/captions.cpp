#include "ui/widgets/captions.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "ui/widgets/look.h"

namespace quorvane {
namespace {

double LeastShare(const Place& place) {
  constexpr double kLeastPoints = 10;
  return std::min(1.0, kLeastPoints / place.points);
}

int LeastPixels(const QFont& font, double share) {
  return static_cast<int>(font.pixelSize() * share);
}

}  // namespace

QString WithMnemonic(QString caption, char mnemonic) {
  caption.replace(QLatin1Char('&'), QLatin1String("&&"));
  const qsizetype at = mnemonic == 0 ? -1 : caption.indexOf(QLatin1Char(mnemonic), 0, Qt::CaseInsensitive);
  if (at >= 0) caption.insert(at, QLatin1Char('&'));
  return caption;
}

CaptionLabel::CaptionLabel(const Place& place, QWidget* parent)
    : QLabel(parent), look_(place.look), leastShare_(LeastShare(place)) {
  setTextFormat(Qt::PlainText);
  // Roles that mean nothing to what lies in a frame, and inherits its palette.
  setBackgroundRole(QPalette::AlternateBase);
  setForegroundRole(QPalette::BrightText);
  if (Has(look_, Look::Focusable)) setFocusPolicy(Qt::TabFocus);
}

void CaptionLabel::SetColors(const QColor& back, const QColor& fore, bool painted) {
  painted_ = painted;
  QPalette colors = palette();
  colors.setColor(backgroundRole(), back);
  colors.setColor(foregroundRole(), fore);
  setPalette(colors);
  const bool lit = Has(look_, Look::Lamp) && painted;
  const bool edged = Has(look_, Look::Border | Look::Heavy);
  setAutoFillBackground(painted || edged);
  setFrameStyle(edged ? QFrame::Box | QFrame::Plain : QFrame::NoFrame);
  setLineWidth(Has(look_, Look::Heavy) || lit ? 3 : 1);
}

void CaptionLabel::SetOnClick(std::function<void()> onClick) {
  onClick_ = std::move(onClick);
  setFocusPolicy(Qt::TabFocus);
  setCursor(Qt::PointingHandCursor);
}

void CaptionLabel::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  const bool left = Has(look_, Look::Left);
  const int gap = margin() + (left ? 2 : 1);
  const QRect room = contentsRect().adjusted(gap, margin() / 2, -gap, 0);
  const int least = LeastPixels(font(), leastShare_);
  int flags = left ? Qt::AlignLeft : Qt::AlignHCenter;
  QFont fitted = font();
  QString shown = text();
  if (Has(look_, Look::Top)) {
    const bool columns = Has(look_, Look::Fixed);
    flags |= Qt::AlignTop | (columns ? 0 : Qt::TextWordWrap);
    fitted = FitParagraph(fitted, shown, room.size(), flags, columns ? 1 : least);
  } else if (Has(look_, Look::Words)) {
    flags |= Qt::AlignVCenter | Qt::TextDontClip;
    shown = MarkLines(room.width(), room.height());
  } else {
    flags |= Qt::AlignVCenter;
    if (Has(look_, Look::Lamp)) fitted.setBold(painted_);
    fitted = Has(look_, Look::Fixed) ? FitColumns(fitted, room.height())
                                     : FitFont(fitted, shown, room.width(), least);
    shown = ElideAtWord(shown, fitted, room.width());
  }
  QPainter painter(this);
  painter.setFont(fitted);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(room, flags, shown);
}

// What does not fit one line goes under it where there is room for two.
QString CaptionLabel::MarkLines(int width, int height) const {
  const QString first = ElideAtWord(text(), font(), width);
  if (first == text() || height < 2 * QFontMetrics(font()).ascent()) return first;
  return first + QLatin1Char('\n') + ElideAtWord(text().mid(first.size()).trimmed(), font(), width);
}

void CaptionLabel::mousePressEvent(QMouseEvent* event) {
  pressed_ = onClick_ != nullptr && event->button() == Qt::LeftButton;
  event->setAccepted(pressed_);
}

void CaptionLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (!pressed_ || event->button() != Qt::LeftButton) return event->ignore();
  pressed_ = false;
  if (rect().contains(event->position().toPoint())) onClick_();
}

void CaptionLabel::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool click = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
  if (!onClick_ || !click) return event->ignore();
  onClick_();
}

CaptionButton::CaptionButton(const Place& place, QWidget* parent)
    : QPushButton(parent), key_(QString::fromStdString(place.key)), leastShare_(LeastShare(place)) {
  setAutoDefault(true);  // Enter presses it, as the space bar does
  // A pop-up leaves the focus where it is.
  if (place.anchoring == Anchoring::Beside) setFocusPolicy(Qt::NoFocus);
}

void CaptionButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  painter.drawControl(QStyle::CE_PushButtonBevel, option);

  const int least = LeastPixels(font(), leastShare_);
  const QFont small = FontOfPixels(std::max(least, font().pixelSize() * 2 / 3), false);
  const int keyWidth = key_.isEmpty() ? 0 : QFontMetrics(small).horizontalAdvance(QLatin1Char(' ') + key_);
  const int room = width() - 10 - keyWidth;
  const QString bare = text().remove(QLatin1Char('&'));
  const QFont fitted = FitFont(font(), bare, room, least);
  const int captionWidth = std::min(room, QFontMetrics(fitted).horizontalAdvance(bare));
  const int left = (width() - captionWidth - keyWidth) / 2;

  painter.setFont(fitted);
  option.rect.setRect(left, 0, captionWidth + 2, height());
  painter.drawControl(QStyle::CE_PushButtonLabel, option);
  painter.setFont(small);
  painter.drawItemText({left + captionWidth, 0, keyWidth, height()}, Qt::AlignRight | Qt::AlignVCenter,
                       palette(), isEnabled(), key_, QPalette::ButtonText);
}

}  // namespace quorvane

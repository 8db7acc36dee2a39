#include "ui/widgets/form_view.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QResizeEvent>
#include <algorithm>

#include "ui/widgets/look.h"
#include "ui/window_place.h"
#include "ui/words.h"

namespace quorvane {

FormView::FormView(Form& form, FormDesign design, Door& door, QWidget* parent, const QString& spoken)
    : QWidget(parent),
      form_(form),
      design_(std::move(design)),
      door_(door),
      spoken_(spoken),
      designWidth_(design_.width) {
  setFocusPolicy(Qt::NoFocus);
  for (const Place& place : design_.places) {
    if (Control* control = form_.Find(place.name)) unseen_.push_back({control, &place});
  }
  MakeShown();
  for (const StaticText& text : design_.texts) AddText(text);
}

void FormView::MakeShown() {
  const auto shown = [](const Unseen& unseen) {
    const Control* control = unseen.control;
    while (control != nullptr && control->Visible()) control = control->Parent();
    return control == nullptr;
  };
  const auto next = [&] { return std::ranges::find_if(unseen_, shown); };
  for (auto found = next(); found != unseen_.end(); found = next()) Make(*found);
}

// Takes its place in the order of the Tab key, and under words and other forms, as if made with the form.
ControlView& FormView::Make(Unseen unseen) {
  Control& control = *unseen.control;
  const Place& place = *unseen.place;
  std::erase(unseen_, unseen);
  const ControlView* frame = Find(control.Parent());
  auto view = ControlView::Create({control, place, door_, frame == nullptr ? this : frame->Widget()});
  view->spokenPrefix = spoken_;
  if (const auto tip = design_.tips.find(place.name); tip != design_.tips.end()) {
    view->tip = tip->second;
  }
  view->leave = [this] { FocusHome(); };
  if (control.Kind() == ControlKind::Frame) view->Widget()->lower();
  if (place.look.testFlag(Look::Row)) row_.push_back(view.get());
  byControl_.insert(&control, view.get());
  const auto next =
      std::ranges::find_if(views_, [&](const auto& other) { return &other->Design() > &place; });
  if (next != views_.end() || around_ != nullptr || !panels_.empty()) {
    QWidget::setTabOrder(next == views_.begin() ? this : (*std::prev(next))->Widget(), view->Widget());
  }
  if (frame == nullptr && !texts_.empty()) view->Widget()->stackUnder(texts_.front().second);
  if (arranged_) Arrange(*view);
  return **views_.insert(next, std::move(view));
}

ControlView* FormView::Find(const Control* control) {
  if (ControlView* view = byControl_.value(control)) return view;
  const auto found = std::ranges::find(unseen_, control, &Unseen::control);
  if (found == unseen_.end()) return nullptr;
  ControlView& view = Make(*found);
  view.Apply();
  return &view;
}

void FormView::Changed(const Control& control, Property property) {
  if (ControlView* view = byControl_.value(&control)) view->Changed(property);
}

void FormView::AddText(const StaticText& text) {
  auto* label = new QLabel(Words::Of(text.text), this);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment((text.look.testFlag(Look::Left) ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter);
  if (QWidget* buddy = FindWidget(text.buddy)) label->setBuddy(buddy);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  texts_.emplace_back(&text, label);
}

QWidget* FormView::FindWidget(const std::string& name) {
  const ControlView* view = Find(form_.Find(name));
  return view == nullptr ? nullptr : view->Widget();
}

void FormView::Apply() {
  bool moved = false;
  bool rowChanged = false;
  MakeShown();
  for (const auto& view : views_) {
    if (!view->IsDirty()) continue;
    rowChanged = rowChanged || view->Design().look.testFlag(Look::Row);
    if (view->Apply() || view->Design().anchoring == Anchoring::Stack) moved = true;
  }
  if (rowChanged) FitRow();
  if (moved) PlaceAnchored();
}

void FormView::Embed(FormView& panel, const std::string& name) {
  panels_.emplace_back(&panel, Find(form_.Find(name))->Design().rect);
  panel.around_ = this;
}

void FormView::SetDesignWidth(int width) {
  designWidth_ = width;
  if (arranged_) Arrange();
}

void FormView::FocusHome() {
  if (QWidget* home = FindWidget(design_.home)) {
    home->setFocus();
  } else if (around_ != nullptr) {
    around_->FocusHome();
  } else if (QWidget* widget = focusWidget()) {
    widget->clearFocus();
  }
}

void FormView::FocusFirst() {
  for (const auto& view : views_) {
    const Control& control = view->Of();
    if (control.Kind() == ControlKind::Option && control.Value() != 0 && control.Visible()) {
      return view->Widget()->setFocus();
    }
  }
  FocusHome();
}

void FormView::resizeEvent(QResizeEvent* event) {
  Arrange();
  if (form_.Visible() && event->size() != event->oldSize()) {
    door_.Enter({.kind = EventKind::Resize, .target = form_.Name()});
  }
}

bool FormView::event(QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange) {  // another scheme
    for (const auto& view : views_) view->Recolor();
    Apply();
  }
  return QWidget::event(event);
}

void FormView::contextMenuEvent(QContextMenuEvent* event) {
  if (around_ == nullptr) return event->ignore();
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setFont(FontOfPixels(std::max(15, Letters(12, Look::Plain).pixelSize()), false));
  for (const Control& entry : form_.Controls()) {
    if (entry.Kind() != ControlKind::Menu) continue;
    QAction* action = menu->addAction(Words::Of(entry.Caption()));
    action->setEnabled(entry.Enabled());
    connect(action, &QAction::triggered, this, [this, &entry] {
      FinishTyping();
      door_.Enter({.kind = EventKind::Click, .target = entry.FullName()});
    });
  }
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  const QWidget* at = byKey && focusWidget() != nullptr ? focusWidget() : this;
  menu->popup(byKey ? at->mapToGlobal(QPoint(0, at->height())) : event->globalPos());
}

// Edges are scaled and not sizes, so that neighbours that touch in the design touch at every size. Always
// from the design: a form that is made small and large again looks as before.
QRect FormView::Scaled(const QRect& design) const {
  const auto scaled = [this](const QPoint& at) {
    return QPoint(qRound(1.0 * at.x() * width() / designWidth_),
                  qRound(1.0 * at.y() * height() / design_.height));
  };
  const QPoint beyond(1, 1);  // the last pixel
  return {scaled(design.topLeft()), scaled(design.bottomRight() + beyond) - beyond};
}

// The letters of a panel are those of the form around it, so that panels whose sizes differ by a rounded
// pixel look alike. A point is 96/72 of a designed pixel.
QFont FormView::Letters(double points, LookFlags look) const {
  if (around_ != nullptr) return around_->Letters(points, look);
  const double factor = std::min(1.0 * width() / designWidth_, 1.0 * height() / design_.height);
  return FontOfPixels(std::max(1.0, points * factor) * 96 / 72, look.testFlag(Look::Bold),
                      look.testFlag(Look::Fixed));
}

void FormView::Arrange(ControlView& view) {
  Put(view, RoomOf(view.Design()));
  view.Widget()->setFont(Letters(view.Design().points, view.Design().look));
}

void FormView::Arrange() {
  arranged_ = true;
  for (const auto& view : views_) Arrange(*view);
  for (const auto& [text, label] : texts_) {
    label->setGeometry(Scaled(text->rect));
    const QString bare = label->text().remove(QLatin1Char('&'));
    const QFont full = Letters(text->points, text->look);
    const bool oneLine = !bare.contains(QLatin1Char('\n'));
    const int least = Letters(std::min(text->points, 10.0), text->look).pixelSize();
    label->setFont(oneLine ? FitFont(full, bare, label->width() - 2, least) : full);
  }
  FitRow();
  PlaceAnchored();
  for (const auto& [panel, rect] : panels_) {
    panel->setGeometry(Scaled(rect));
    panel->Arrange();  // its letters may change although its size does not
  }
}

QRect FormView::RoomOf(const Place& place) const {
  const Control* other = form_.Find(place.over);
  if (other == nullptr || other->Visible()) return place.rect;
  return place.rect.united(std::ranges::find(design_.places, place.over, &Place::name)->rect);
}

// A rectangle of the form's design, for a widget that may lie in a frame.
void FormView::Put(ControlView& view, const QRect& at) {
  view.at = at;
  QRect scaled = Scaled(at);
  const ControlView* frame = Find(view.Of().Parent());
  if (frame != nullptr) scaled.translate(-Scaled(frame->at).topLeft());
  view.Widget()->setGeometry(scaled);
}

// The letters of the row are as large as its widest caption allows. Figures count as zeros, which are as
// wide: a time that runs is not measured at every tick.
void FormView::FitRow() {
  constexpr int kEdges = 4;
  if (row_.empty() || !arranged_) return;
  const Place& place = row_.front()->Design();
  const QFont full = Letters(place.points, place.look);
  if (fit_.full != full) fit_ = {.full = full};
  QString widest;
  int width = QWIDGETSIZE_MAX;
  for (const ControlView* view : row_) {
    if (!view->Of().Visible()) continue;
    const QString caption = WithZeros(Words::Of(view->Of().Caption()));
    if (!fit_.widths.contains(caption)) {
      fit_.widths[caption] = QFontMetrics(full).horizontalAdvance(caption);
    }
    if (widest.isEmpty() || fit_.widths[caption] > fit_.widths[widest]) widest = caption;
    width = std::min(width, view->Widget()->width() - kEdges);
  }
  if (fit_.widest != widest || fit_.width != width) {
    fit_.widest = widest;
    fit_.width = width;
    fit_.fitted = FitFont(full, widest, width, Letters(10, place.look).pixelSize());
  }
  for (const ControlView* view : row_) {
    if (view->Widget()->font() != fit_.fitted) view->Widget()->setFont(fit_.fitted);
  }
}

// What is shown on the form in a place of its own.
std::vector<QRect> FormView::Standing() const {
  std::vector<QRect> standing;
  for (const auto& view : views_) {
    const bool stands =
        view->Design().anchoring == Anchoring::None && view->Of().Kind() != ControlKind::Frame;
    if (stands && view->Of().Visible()) standing.push_back(view->at);
  }
  for (const auto& [text, label] : texts_) {
    if (!label->isHidden()) standing.push_back(text->rect);
  }
  return standing;
}

QRect FormView::ColumnUnder(const ControlView& cell) const {
  return {cell.at.left(), design_.stackTop, cell.at.width(), design_.stackBottom - design_.stackTop};
}

// Down to the next thing there. When too low for `wanted`, over the next column too where that is free.
QRect FormView::RoomUnder(const ControlView& cell, const Stacks& stacks, int wanted) const {
  const std::vector<QRect> standing = Standing();
  QRect room = ColumnUnder(cell);
  for (const QRect& rect : standing) {
    if (rect.top() > room.top() && rect.intersects(room)) room.setBottom(rect.top() - 3);
  }
  const QRect twice(room.topLeft(), QSize(2 * room.width(), room.height()));
  const auto inTheWay = [&](const QRect& rect) { return rect.intersects(twice.adjusted(0, 0, 0, 2)); };
  const auto hasMarks = [&](const auto& stack) {
    return stack.first != &cell && ColumnUnder(*stack.first).intersects(twice);
  };
  const bool free = std::ranges::none_of(standing, inTheWay) && std::ranges::none_of(stacks, hasMarks);
  return wanted > room.height() && free ? twice : room;
}

void FormView::PlaceStacks() {
  Stacks stacks;
  for (const auto& view : views_) {
    const Control& mark = view->Of();
    if (view->Design().anchoring != Anchoring::Stack || !mark.Visible() || mark.Anchor() == nullptr) continue;
    stacks[Find(mark.Anchor())].push_back(view.get());
  }
  for (const auto& [cell, marks] : stacks) {
    const auto tooWide = [room = cell->Widget()->width() - 4](const ControlView* mark) {
      const QFontMetrics metrics(mark->Widget()->font());
      return metrics.horizontalAdvance(Words::Of(mark->Of().Caption())) > room;
    };
    const int lines = std::any_of(marks.begin(), marks.end(), tooWide) ? 2 : 1;
    const int count = static_cast<int>(marks.size());
    const QRect room = RoomUnder(*cell, stacks, lines * count * kLeastMarkRow);
    const std::vector<QRect> cells = StackCells(count, room, lines);
    for (std::size_t i = 0; i < marks.size(); ++i) Put(*marks[i], cells[i]);
  }
}

void FormView::PlaceAnchored() {
  for (const auto& [text, label] : texts_) {
    const Control* instead = form_.Find(text->unless);
    label->setVisible(instead == nullptr || !instead->Visible());
  }
  PlaceStacks();
  for (const auto& view : views_) {
    const Anchoring anchoring = view->Design().anchoring;
    const Control* anchor = view->Of().Anchor();
    if (!view->Design().over.empty()) Put(*view, RoomOf(view->Design()));
    if (anchor == nullptr || anchoring == Anchoring::None || anchoring == Anchoring::Stack) continue;
    const QRect& by = Find(anchor)->at;
    const bool covers = anchoring == Anchoring::Cover;
    Put(*view, covers ? by : BesideMark(by, view->Design().rect.size(), {design_.width, design_.height}));
    view->Widget()->raise();
  }
}

std::vector<QRect> StackCells(int count, const QRect& room, int lines) {
  constexpr int kRow = 22;  // height of a mark that has room
  std::vector<QRect> cells;
  const int mostRows = std::max(1, room.height() / kLeastMarkRow);
  const int columns = (count + mostRows - 1) / mostRows;
  const int rows = (count + columns - 1) / columns;
  const int height = std::min(lines > 1 ? lines * kLeastMarkRow : kRow, room.height() / rows);
  for (int i = 0; i < count; ++i) {
    const int left = room.width() * (i / rows) / columns;
    const int right = room.width() * (i / rows + 1) / columns;
    cells.emplace_back(room.left() + left, room.top() + (i % rows) * height, right - left, height);
  }
  return cells;
}

QRect BesideMark(const QRect& mark, const QSize& popUp, const QSize& form) {
  QRect beside({mark.right() + 3, mark.top() + (mark.height() - popUp.height()) / 2}, popUp);
  if (beside.right() >= form.width()) beside.moveRight(mark.left() - 3);
  return MovedInto({{}, form}, beside);
}

}  // namespace quorvane

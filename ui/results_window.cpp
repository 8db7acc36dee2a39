#include "ui/results_window.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>
#include <QtConcurrent>
#include <array>
#include <utility>

#include "results/race_records.h"
#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {
namespace {

constexpr int kRefreshMs = 500;
constexpr int kTextPixels = 17;
constexpr int kColumnGap = 8;
constexpr QSize kResultsSize{1320, 660};
constexpr QSize kLeastResultsSize{560, 300};

std::string Formatted(const ContestRecord& contest, const QString& ending) {
  if (ending == QLatin1String("csv")) return ResultsCsv(contest, true);
  if (ending == QLatin1String("json")) return ResultsJson(contest);
  if (ending != QLatin1String("html") && ending != QLatin1String("htm")) return ResultsText(contest);
  const QString program = QApplication::applicationName() + ' ' + QApplication::applicationVersion();
  return ResultsHtml(contest, program.toStdString());
}

// Times stand under each other, small numbers in the middle, words at the left.
constexpr std::array kAlignments = {Qt::AlignHCenter, Qt::AlignHCenter, Qt::AlignHCenter, Qt::AlignLeft,
                                    Qt::AlignLeft,    Qt::AlignHCenter, Qt::AlignLeft,    Qt::AlignRight,
                                    Qt::AlignHCenter, Qt::AlignHCenter, Qt::AlignRight,   Qt::AlignLeft};
static_assert(kAlignments.size() == kResultsColumns.size());

}  // namespace

// The table of results for a view. Sorts as the table says.
class ResultsModel : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(const std::vector<ResultsRow>& rows) {
    rows_ = rows;
    sort(column_, direction_);
  }
  const ResultsRow& RowAt(int row) const { return shown_[static_cast<std::size_t>(row)]; }

  int rowCount(const QModelIndex& = {}) const override { return static_cast<int>(shown_.size()); }
  int columnCount(const QModelIndex& = {}) const override { return static_cast<int>(kResultsColumns.size()); }
  QVariant data(const QModelIndex& index, int role) const override {
    const ResultsRow& row = RowAt(index.row());
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return Words::Of(row.cells[column].text);
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignVCenter | kAlignments[column]);
    if (role != Qt::FontRole) return {};
    QFont font = FontOfPixels(kTextPixels, false);
    font.setStrikeOut(!row.stands);
    return font;
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return Words::Of(kResultsColumns[static_cast<std::size_t>(section)]);
  }
  void sort(int column, Qt::SortOrder direction) override {
    column_ = column;
    direction_ = direction;
    beginResetModel();
    shown_ = SortedRows(rows_, static_cast<std::size_t>(column), direction == Qt::DescendingOrder);
    endResetModel();
  }

 private:
  std::vector<ResultsRow> rows_;   // in the order of the races
  std::vector<ResultsRow> shown_;  // as sorted
  int column_ = 0;
  Qt::SortOrder direction_ = Qt::AscendingOrder;
};

ResultsWindow::ResultsWindow(Program& program, const ProgramWindows& windows)
    : program_(program),
      windows_(windows),
      place_(new WindowPlace(*this, program.door().System().Settings(), "Results", kLeastResultsSize)) {
  setWindowTitle(Words::Of("Results"));
  look_.setInterval(kRefreshMs);
  look_.callOnTimeout(this, &ResultsWindow::Look);
  QObject::connect(&reading_, &QFutureWatcherBase::finished, this, [this] {
    if (const auto content = reading_.result()) Take(*content);
  });
  program_.judge().mnuResults.onClick = [this] { Open(); };
}

void ResultsWindow::Fill() {
  model_ = new ResultsModel(this);
  summary_ = new QLabel(this);
  told_ = new QLabel(this);
  view_ = new QTableView(this);
  summary_->setFont(FontOfPixels(kTextPixels, true));
  told_->setFont(FontOfPixels(kTextPixels - 2, false));
  for (QLabel* line : {summary_, told_}) {
    line->setTextFormat(Qt::PlainText);
    line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  }
  view_->setModel(model_);
  view_->setSortingEnabled(true);
  view_->sortByColumn(0, Qt::AscendingOrder);
  view_->setSelectionBehavior(QAbstractItemView::SelectRows);
  view_->setAlternatingRowColors(true);
  view_->setWordWrap(false);
  view_->verticalHeader()->hide();
  view_->horizontalHeader()->setFont(FontOfPixels(kTextPixels, true));
  view_->horizontalHeader()->setStretchLastSection(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(view_, 1);
  layout->addWidget(NewButtons());
}

QWidget* ResultsWindow::NewButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(told_, 1);
  const auto add = [&](const char* text, const char* tip, const QKeySequence& key,
                       void (ResultsWindow::*action)()) {
    auto* button = new QPushButton(Words::Of(text), row);
    button->setFont(FontOfPixels(kTextPixels, true));
    button->setToolTip(Words::Of(tip));
    button->setMinimumHeight(36);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, action);
    new QShortcut(key, this, this, action);
  };
  add("&Copy", "Copy the chosen rows for a spreadsheet", QKeySequence::Copy, &ResultsWindow::Copy);
  add("&Save As...", "Write all races to a file", QKeySequence::Save, &ResultsWindow::SaveAs);
  new QShortcut(Qt::Key_Escape, this, this, &QWidget::hide);
  return row;
}

void ResultsWindow::Open() {
  if (view_ == nullptr) Fill();
  if (!isVisible()) {
    if (!std::exchange(placed_, true)) {
      toPlace_ = !place_->Restore(kResultsSize);
      if (toPlace_) place_->PutClearOf(windows_.ClockOnScreen(), kResultsSize);
    }
    told_->clear();
  }
  look_.start();
  Look();
  show();
  place_->BringForward();
}

// Beside the window's own work: a disk may take its time.
void ResultsWindow::Look() {
  if (!isVisible() && shown_.stamp.kind == FileStamp::Kind::File) return look_.stop();
  if (reading_.isRunning()) return;
  const std::string& file = program_.race().ProjectFile;
  const std::optional<FileStamp> seen = file == shown_.file ? std::optional(shown_.stamp) : std::nullopt;
  reading_.setFuture(QtConcurrent::run([file, seen]() -> std::optional<Content> {
    Content content{.file = file};
    SystemFiles().Look(file, content.stamp);
    if (content.stamp == seen) return std::nullopt;
    if (const std::error_code error = ReadProject(SystemFiles(), file, content.contest)) {
      content.problem = error.message();
    }
    content.rows = ResultsRows(content.contest);
    return content;
  }));
}

void ResultsWindow::Take(const Content& content) {
  shown_ = content;
  const bool first = model_->rowCount() == 0;
  model_->Show(content.rows);
  if (first) FitColumns();
  const QString name = QFileInfo(ToQString(shown_.file)).fileName();
  const QString event = ToQString(shown_.contest.eventName);
  QString text = event.isEmpty() ? name : event + "  (" + name + ")";
  QString trouble = ToQString(content.problem);
  if (trouble.isEmpty() && shown_.contest.races.empty()) trouble = Words::Of("no race has been flown");
  if (!trouble.isEmpty()) text += QStringLiteral(": ") + trouble;
  summary_->setText(text);
  summary_->setToolTip(ToQString(shown_.file));
}

void ResultsWindow::FitColumns() {
  view_->horizontalHeader()->setStretchLastSection(false);  // else the last one counts as wide as it was
  view_->resizeColumnsToContents();
  view_->resizeRowsToContents();
  int columns = 0;
  for (int i = 0; i < model_->columnCount(); ++i) {
    view_->setColumnWidth(i, view_->columnWidth(i) + kColumnGap);
    columns += view_->columnWidth(i);
  }
  view_->horizontalHeader()->setStretchLastSection(true);
  if (!std::exchange(toPlace_, false)) return;
  const QMargins margins = layout()->contentsMargins();
  const int around = view_->verticalScrollBar()->sizeHint().width() + 2 * view_->frameWidth();
  const int wide = columns + around + margins.left() + margins.right();
  place_->PutClearOf(windows_.ClockOnScreen(), {wide, kResultsSize.height()});
}

// The rows that are selected, or all, in the order in which they are shown.
void ResultsWindow::Copy() {
  const QItemSelectionModel& selection = *view_->selectionModel();
  std::vector<ResultsRow> rows;
  for (int row = 0; row < model_->rowCount(); ++row) {
    if (!selection.hasSelection() || selection.isRowSelected(row)) rows.push_back(model_->RowAt(row));
  }
  QApplication::clipboard()->setText(ToQString(CopyText(rows)));
  told_->setText(Words::Of(QStringLiteral("%1 rows copied").arg(rows.size())));
}

// Not modal to the program: the race goes on, and the console takes its keys.
void ResultsWindow::SaveAs() {
  auto* dialog = new QFileDialog(this, Words::Of("Save Results"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowModality(Qt::NonModal);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilters({Words::Of("Web page (*.html)"), Words::Of("Spreadsheet (*.csv)"),
                          Words::Of("Text (*.txt)"), Words::Of("JSON (*.json)")});
  const QFileInfo project(ToQString(shown_.file));
  dialog->setDirectory(project.absolutePath());
  const auto choose = [dialog, project](const QString& filter) {
    const QString ending = filter.section(QLatin1Char('.'), -1).chopped(1);
    dialog->setDefaultSuffix(ending);
    dialog->selectFile(project.completeBaseName() + QStringLiteral(" results.") + ending);
  };
  choose(dialog->selectedNameFilter());
  QObject::connect(dialog, &QFileDialog::filterSelected, dialog, choose);
  QObject::connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
    const auto reason = Save(path.toStdString());
    told_->setText(reason ? Words::Of("Not saved: " + *reason)
                          : Words::Of(QStringLiteral("Saved as %1").arg(path)));
    told_->setToolTip(told_->text());
  });
  FitFileDialog(*dialog);
  dialog->show();
}

std::optional<std::string> ResultsWindow::Save(const std::string& path) const {
  const QString ending = QFileInfo(ToQString(path)).suffix().toLower();
  return SaveResults(SystemFiles(), path, shown_.file, Formatted(shown_.contest, ending));
}

}  // namespace quorvane

#pragma once

#include <QAbstractTableModel>
#include <QFutureWatcher>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "console/program.h"
#include "results/results_formats.h"
#include "ui/program_windows.h"

class QLabel;
class QTableView;

namespace quorvane {

// The table of results for a view. Sorts as the table says.
class ResultsModel : public QAbstractTableModel {
 public:
  void Show(ResultsTable table);
  const ResultsTable& Table() const { return table_; }
  // The row of the table that stands in a row of the view.
  std::size_t RowAt(int row) const { return order_[static_cast<std::size_t>(row)]; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

 private:
  ResultsTable table_;
  std::vector<std::size_t> order_;
  int column_ = 0;
  Qt::SortOrder direction_ = Qt::AscendingOrder;
};

// The results of the open project, opened by "Results..." in the console's menu. Follows what is saved: the
// file is looked at twice a second while the window is shown and read by another thread, so that the console
// never waits for it.
class ResultsWindow : public QWidget {
 public:
  ResultsWindow(Program& program, const ProgramWindows& windows);
  ~ResultsWindow() override;

  // Brings it up to date and to the operator.
  void Open();
  void Copy();
  // In the format that the file's ending names: .csv, .json, .html; anything else is a text. Gives the reason
  // why not.
  std::optional<std::string> Save(const std::string& path) const;

  const ResultsModel& Model() const { return model_; }
  QTableView& View() { return *view_; }

 private:
  struct Content {
    std::string file = {};
    FileStamp stamp = {};
    bool changed = false;  // otherwise nothing of the rest
    ContestRecord contest = {};
    ResultsTable table = {};
    std::string problem = {};
  };

  QWidget* NewButtons();
  void Look();
  void Take(const Content& content);
  void FitColumns();
  void SaveAs();

  Program& program_;
  const ProgramWindows& windows_;
  WindowPlace* place_;
  ResultsModel model_;
  QLabel* summary_;
  QLabel* told_;  // what became of the last command
  QTableView* view_;
  QTimer look_;
  QFutureWatcher<Content> reading_;
  Content shown_;
  bool placed_ = false;
  bool toPlace_ = false;  // once the columns are there: as wide as they are
};

}  // namespace quorvane

#pragma once

#include <QFutureWatcher>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>

#include "console/program.h"
#include "results/results_formats.h"
#include "ui/program_windows.h"

class QLabel;
class QTableView;

namespace quorvane {

class ResultsModel;

// The results of the open project, opened by "Results..." in the console's menu. While it is shown another
// thread looks at the file twice a second and reads what was saved: the console never waits for it.
class ResultsWindow : public QWidget {
 public:
  ResultsWindow(Program& program, const ProgramWindows& windows);
  ~ResultsWindow() override { program_.judge().mnuResults.onClick = {}; }

  // Brings it up to date and to the operator.
  void Open();
  void Copy();
  // In the format of the file's ending: .csv, .json, .html, else a text. Gives the reason why not.
  std::optional<std::string> Save(const std::string& path) const;

  QTableView& View() { return *view_; }

 private:
  struct Content {
    std::string file = {};
    FileStamp stamp = {};
    ContestRecord contest = {};
    std::vector<ResultsRow> rows = {};
    std::string problem = {};
  };

  void Fill();
  QWidget* NewButtons();
  void Look();
  void Take(const Content& content);
  void FitColumns();
  void SaveAs();

  Program& program_;
  const ProgramWindows& windows_;
  WindowPlace* place_;
  // Null until it is first opened, which it is not in most sessions.
  ResultsModel* model_ = nullptr;
  QLabel* summary_ = nullptr;
  QLabel* told_ = nullptr;  // what became of the last command
  QTableView* view_ = nullptr;
  QTimer look_;
  QFutureWatcher<std::optional<Content>> reading_;  // nothing: it is as it was
  Content shown_;
  bool placed_ = false;
  bool toPlace_ = false;  // once the columns are there: as wide as they are
};

}  // namespace quorvane

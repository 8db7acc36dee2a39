#pragma once

#include <QDialog>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "console/first_start.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace quorvane {

// The one form of a start with nothing configured; its answers are prepared when it closes. Cancelled, it
// leaves all questions to the console and never comes again. Closed by its frame it has changed nothing.
class FirstStartForm : public QDialog {
 public:
  using Ports = std::vector<std::pair<int, QString>>;  // number and name

  // `folder`: where the project goes unless another place is chosen, with its last separator.
  FirstStartForm(SettingsStore& settings, const Ports& ports, std::string folder, const LocalDateTime& now);

  // The project that was prepared; empty: none.
  const std::string& Project() const { return project_; }
  // The operator wants none of it: the program is to end.
  bool ClosedByFrame() const { return closedByFrame_; }

  // The radios that can be chosen now; adapters come and go.
  void ShowPorts(const Ports& ports);

  std::function<void()> onManual;  // its page is asked for

  void accept() override;
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddRow(const QString& caption, QWidget* field, const QString& hint);
  void EventTyped();
  void FileChanged();
  void ShowFound(const FoundProject& found);
  void ChooseFile();
  FirstAnswers Answers() const;

  SettingsStore& settings_;
  const std::string folder_;
  const LocalDateTime now_;
  QLineEdit* event_;
  QSpinBox* heats_;
  QLineEdit* file_;
  QPushButton* choose_;
  QLabel* told_;  // of the file
  QComboBox* radio_;
  QPushButton* start_ = nullptr;
  bool fileChosen_ = false;  // by hand: it no longer follows the event's name
  bool closedByFrame_ = false;
  // As they were typed or chosen, while the fields show what is there.
  QString typedEvent_;
  int typedHeats_ = 4;
  int chosenPort_ = 0;
  std::string project_;
};

}  // namespace quorvane

#include "ui/session_recording.h"

#include <QLabel>
#include <cstdio>
#include <utility>

#include "base/text.h"
#include "files/output_guard.h"
#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {

SessionRecording::SessionRecording(Program& program, ProgramWindows& windows)
    : program_(program), windows_(windows) {}

void SessionRecording::AddNotice() {
  notice_ = new QLabel(&windows_.Console());
  notice_->setObjectName(QStringLiteral("recording"));
  notice_->setContentsMargins(10, 2, 10, 2);
  notice_->setAutoFillBackground(true);
  notice_->setFont(FontOfPixels(15, true));
  windows_.Console().Menu()->setCornerWidget(notice_);
}

void SessionRecording::Begin(SessionStart start, const std::string& journal) {
  start.start = program_.door().LocalStart();
  start.project = program_.judge().ProjectAtStart();
  given_ = wanted_ = !journal.empty();
  // The console of the replay must find the menu as this one does.
  if (given_) start.settings.push_back({"frmJudge", "RecordSession", "True"});
  recorder_.Begin(start);
  program_.door().SetJournal(&recorder_);
  begun_ = true;
  named_ = journal;
  if (given_) Start();
  windows_.AddFollower([this] { FollowMenu(); });
}

void SessionRecording::End() {
  if (!begun_) return;
  begun_ = false;
  program_.door().SetJournal(nullptr);
  recorder_.End(program_.door().System().ClockMs());
  if (!stopped_ && !recorder_.Problem().empty()) Complain();
}

// After every event.
void SessionRecording::FollowMenu() {
  if (!begun_) return;
  Control& menu = program_.judge().mnuRecordSession;
  if (std::exchange(given_, false)) menu.SetChecked(true);
  if (menu.Checked() && !wanted_) {
    if (program_.race().ProjectFile.empty()) return;  // its name is not known yet
    if (named_.empty()) {
      const std::string since = Replaced(MomentText(program_.door().LocalStart(), '-'), ":", "");
      named_ = program_.race().ProjectBaseName + "-" + since + ".journal";
    }
    Start();
  } else if (!menu.Checked() && wanted_) {
    recorder_.Stop();
    Show({}, false);
  }
  wanted_ = menu.Checked();
  if (!news_.empty()) {
    program_.door().Post([this, news = std::exchange(news_, {})] { program_.judge().ShowNotice(news); });
  }
  if (wanted_ && !stopped_ && !recorder_.Problem().empty()) {
    stopped_ = true;
    Show(Words::Of("Recording stopped: " + recorder_.Problem()), true);
    Complain();
    recorder_.Stop();
  }
}

void SessionRecording::Complain() const {
  std::fprintf(stderr, "quorvane: %s: %s\n", file_.c_str(), recorder_.Problem().c_str());
}

// A journal that stands there may be all that is left of a heat that was lost.
void SessionRecording::Start() {
  stopped_ = false;
  file_ = FreeJournalName(named_);
  recorder_.Record(PathOf(file_));
  Show(QStringLiteral("\u25cf ") + Words::Of("Recording"), false);
  if (file_ == named_) return;
  const auto name = [](const std::string& file) { return Utf8Of(PathOf(file).filename()); };
  news_ = "Recording into " + name(file_) + ", as " + name(named_) + " has a session already";
  std::fprintf(stderr, "quorvane: %s\n", news_.c_str());
}

void SessionRecording::Show(const QString& text, bool bad) {
  if (notice_ == nullptr) AddNotice();
  // White on red in every scheme, or else as the menu, in whose bar these roles are a button's.
  QPalette colors;
  if (bad) colors.setColor(notice_->backgroundRole(), QColor(0xB0, 0, 0));
  if (bad) colors.setColor(notice_->foregroundRole(), Qt::white);
  notice_->setPalette(colors);
  notice_->setText(text);
  notice_->setToolTip(ToQString(file_));
  notice_->setVisible(!text.isEmpty());
  notice_->adjustSize();
  windows_.Console().Menu()->adjustSize();
}

}  // namespace quorvane

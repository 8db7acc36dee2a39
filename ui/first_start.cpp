#include "ui/first_start.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include "ui/qt/qt_platform.h"
#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {
namespace {

constexpr int kText = 17;  // px
constexpr int kMostHeatsAsked = 99;
constexpr int kPracticeField = -2;  // in the list of ports

}  // namespace

FirstStartForm::FirstStartForm(SettingsStore& settings, const Ports& ports, std::string folder,
                               const LocalDateTime& now)
    : settings_(settings),
      folder_(std::move(folder)),
      now_(now),
      event_(new QLineEdit(this)),
      heats_(new QSpinBox(this)),
      file_(new QLineEdit(this)),
      choose_(new QPushButton(Words::Of("&Choose..."), this)),
      told_(new QLabel(this)),
      radio_(new QComboBox(this)) {
  setObjectName(QStringLiteral("frmFirstStart"));
  setWindowTitle(Words::Of("Quorvane First Start"));
  setFont(FontOfPixels(kText, false));
  auto* grid = new QGridLayout(this);
  auto* head =
      new QLabel(Words::Of("Four answers, and the first heat can be flown. All can be changed later."), this);
  head->setFont(FontOfPixels(kText, true));
  grid->setContentsMargins(20, 16, 20, 16);
  grid->addWidget(head, 0, 0, 1, 3);
  event_->setPlaceholderText(Words::Of("for example: Autumn Cup"));
  AddRow(Words::Of("&Event"), event_, Words::Of("Stands on every report."));
  heats_->setRange(kLeastHeats, kMostHeatsAsked);
  heats_->setValue(typedHeats_);
  AddRow(Words::Of("&Heats per round"), heats_,
         Words::Of(
             "How many heats until everybody has flown once. From 2: with 1 the program takes it as not told "
             "yet."));
  AddRow(Words::Of("&Project file"), file_, {});
  choose_->setToolTip(Words::Of("Another place, or a project that exists"));
  ShowPorts(ports);
  AddRow(Words::Of("&Radio"), radio_,
         Words::Of("Where the radio modem is plugged in. Practice needs none: the stations are simulated."));
  auto* buttons =
      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help, this);
  start_ = buttons->button(QDialogButtonBox::Ok);
  start_->setText(Words::Of("&Start"));
  buttons->button(QDialogButtonBox::Cancel)->setToolTip(Words::Of("The program asks one by one instead"));
  auto* manual = buttons->button(QDialogButtonBox::Help);
  manual->setText(Words::Of("&Manual (Ctrl+F1)"));
  manual->setToolTip(Words::Of("The first contest, step by step"));
  grid->addWidget(buttons, 20, 0, 1, 3);
  connect(buttons, &QDialogButtonBox::helpRequested, this, [this] {
    if (onManual) onManual();
  });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(event_, &QLineEdit::textChanged, this, [this] { EventTyped(); });
  connect(heats_, &QSpinBox::valueChanged, this, [this](int heats) { typedHeats_ = heats; });
  connect(radio_, &QComboBox::activated, this, [this] { chosenPort_ = radio_->currentData().toInt(); });
  connect(file_, &QLineEdit::textChanged, this, [this] { FileChanged(); });
  connect(file_, &QLineEdit::textEdited, this, [this] { fileChosen_ = true; });
  connect(choose_, &QPushButton::clicked, this, [this] { ChooseFile(); });
  EventTyped();
  told_->setObjectName(QStringLiteral("told"));
  choose_->setAutoDefault(false);
  start_->setDefault(true);
  event_->setFocus();
  RingFocus(*this);
}

// The hint stands below the field.
void FirstStartForm::AddRow(const QString& caption, QWidget* field, const QString& hint) {
  auto* grid = static_cast<QGridLayout*>(layout());
  const int row = grid->rowCount();
  auto* label = new QLabel(caption, this);
  label->setBuddy(field);
  label->setFont(FontOfPixels(kText, true));
  field->setAccessibleName(QString(caption).remove(QLatin1Char('&')));
  field->setMinimumHeight(34);
  grid->addWidget(label, row, 0);
  const bool file = field == file_;
  grid->addWidget(field, row, 1, 1, file ? 1 : 2);
  if (file) grid->addWidget(choose_, row, 2);
  QLabel* below = file ? told_ : new QLabel(hint, this);
  below->setWordWrap(true);
  below->setFont(FontOfPixels(kText - 3, false));
  below->setMinimumWidth(460);
  below->setMinimumHeight(file ? 40 : 24);
  below->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  field->setAccessibleDescription(hint);
  grid->addWidget(below, row + 1, 1, 1, 2);
}

// One that was chosen and is unplugged for a moment is chosen again when it comes back.
void FirstStartForm::ShowPorts(const Ports& ports) {
  radio_->clear();
  radio_->addItem(Words::Of("No radio, judged by hand"), 0);
  radio_->addItem(Words::Of("Practice field, simulated"), kPracticeField);
  for (const auto& [number, name] : ports) {
    radio_->addItem(QStringLiteral("COM%1: %2").arg(number).arg(name), number);
  }
  radio_->setCurrentIndex(std::max(0, radio_->findData(chosenPort_)));
}

void FirstStartForm::EventTyped() {
  typedEvent_ = event_->text();
  if (!fileChosen_) file_->setText(ToQString(FirstProject(folder_, typedEvent_.toStdString(), now_)));
  FileChanged();
}

// What the project says already is shown, not asked. While the file follows the event's name that stays open.
void FirstStartForm::ShowFound(const FoundProject& found) {
  const bool ask = found.title.empty() || !fileChosen_;
  const QSignalBlocker event(event_);
  const QSignalBlocker heats(heats_);
  event_->setEnabled(ask);
  const QString title = ask ? typedEvent_ : ToQString(found.title);
  if (event_->text() != title) event_->setText(title);
  heats_->setEnabled(found.heatsPerRound == 0);
  heats_->setMaximum(std::max(kMostHeatsAsked, found.heatsPerRound));
  heats_->setValue(found.heatsPerRound == 0 ? typedHeats_ : found.heatsPerRound);
}

void FirstStartForm::FileChanged() {
  file_->setToolTip(file_->text());  // a long path shows its end only
  const FoundProject found = LookForProject(file_->text().toStdString());
  const bool titled = !found.title.empty();
  ShowFound(found);
  QString told = Words::Of("A new file.");
  if (!found.trouble.empty()) {
    told = Words::Of(found.trouble);
  } else if (found.exists) {
    told = Words::Of("This project exists: it is opened as it is, and nothing in it is written over.");
    if (titled) told += QLatin1Char(' ') + Words::Of("Its event: " + found.title);
  }
  told_->setText(told);
  told_->setToolTip(file_->text());
  const bool named = titled || !event_->text().trimmed().isEmpty();
  start_->setEnabled(found.trouble.empty() && named);
  QStringList why;
  if (!named) why << Words::Of("Name the event first");
  if (!found.trouble.empty()) why << told;
  start_->setToolTip(why.isEmpty() ? told : why.join(QLatin1Char('\n')));
}

void FirstStartForm::ChooseFile() {
  const QFileInfo now(file_->text());
  const QDir folder = now.dir().exists() ? now.dir() : QDir::home();
  const DialogAnswer answer = ShowQtDialog({.kind = DialogKind::SaveFile,
                                            .title = "Project file",
                                            .text = {},
                                            .preset = now.fileName().toStdString(),
                                            .folder = folder.absolutePath().toStdString(),
                                            .defaultExtension = ".ini"},
                                           this);
  if (answer.word != DialogAnswer::Word::File) return;
  fileChosen_ = true;
  file_->setText(QString::fromStdString(answer.text));
}

FirstAnswers FirstStartForm::Answers() const {
  using Radio = FirstAnswers::Radio;
  const int port = radio_->currentData().toInt();
  const QString path = QDir::current().absoluteFilePath(file_->text());
  return {.eventName = event_->text().trimmed().toStdString(),
          .heatsPerRound = heats_->value(),
          .project = path.toStdString(),
          .radio = port > 0                 ? Radio::kPort
                   : port == kPracticeField ? Radio::kPractice
                                            : Radio::kNone,
          .port = port};
}

void FirstStartForm::accept() {
  if (!start_->isEnabled()) return;
  const FirstAnswers answers = Answers();
  const std::string trouble = PrepareFirstStart(answers, settings_);
  if (!trouble.empty()) return told_->setText(Words::Of(trouble));
  project_ = answers.project;
  QDialog::accept();
}

// As with any window that is closed: nothing is begun, and nothing was said for another day.
void FirstStartForm::closeEvent(QCloseEvent* event) {
  event->accept();
  if (!isVisible()) return;
  closedByFrame_ = true;
  QDialog::reject();
}

void FirstStartForm::reject() {
  DeclineFirstStart(settings_);
  QDialog::reject();
}

}  // namespace quorvane

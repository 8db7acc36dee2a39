#include "ui/view_menu.h"

#include <QAction>
#include <QActionGroup>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QMenu>
#include <array>
#include <functional>

#include "ui/widgets/look.h"
#include "ui/words.h"

namespace quorvane {
namespace {

constexpr const char* kSection = "View";
constexpr const char* kKey = "Scheme";

struct Entry {
  const char* name;  // in the settings store
  const char* text;
  const char* tip;
};
constexpr std::array kEntries = {
    Entry{"System", "&System", "The colours that the desktop asks for"},
    Entry{"Light", "&Light", "Dark letters on light windows"},
    Entry{"Dark", "&Dark", "Light letters on dark windows"},
    Entry{"Outdoor", "&Outdoor", "Black on white, thick lines and strong colours, for the sun"}};

unsigned NumberIn(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toUInt();
}

// Asks org.freedesktop.portal.Settings of the XDG Desktop Portal. Where there is none no answer comes.
void AskPortal(const char* key, QObject* asker, const std::function<void(unsigned)>& told) {
  if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusMessage question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  question << QStringLiteral("org.freedesktop.appearance") << QString::fromLatin1(key);
  auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), asker);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, asker, [answer, told] {
    const QDBusMessage reply = answer->reply();
    answer->deleteLater();
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
      told(NumberIn(reply.arguments().constFirst()));
    }
  });
}

}  // namespace

ViewMenu::ViewMenu(FormWindow& console, SettingsStore& settings)
    : QObject(&console),
      settings_(settings),
      menu_(new QMenu(Words::Of("Vie&w"), console.Menu())),
      chosen_(settings.GetSetting(kSection, kKey, kEntries.front().name)) {
  console.Menu()->insertMenu(console.Menu()->Find(console.Of().Find("mnuHelp")), menu_);
  menu_->addMenu(NewSchemes())->setStatusTip(Words::Of("The colours of all windows"));
  Dress();
  AskDesktop();
  // The operator may have been at the desktop's settings.
  connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive) AskDesktop();
  });
}

QMenu* ViewMenu::NewSchemes() {
  auto* schemes = new QMenu(Words::Of("&Scheme"), menu_);
  schemes->setToolTipsVisible(true);
  auto* group = new QActionGroup(schemes);
  for (const auto& [name, text, tip] : kEntries) {
    QAction* entry = schemes->addAction(Words::Of(text));
    entry->setObjectName(QString::fromLatin1(name));
    entry->setToolTip(Words::Of(tip));
    entry->setStatusTip(entry->toolTip());
    entry->setCheckable(true);
    entry->setChecked(chosen_ == name);
    group->addAction(entry);
    connect(entry, &QAction::triggered, this, [this, choice = name] {
      chosen_ = choice;
      settings_.SaveSetting(kSection, kKey, chosen_);
      Dress();
    });
  }
  if (group->checkedAction() == nullptr) group->actions().constFirst()->setChecked(true);
  for (QMenu* menu : {menu_, schemes}) menu->setAttribute(Qt::WA_WindowPropagation);  // the bar's letters
  return schemes;
}

void ViewMenu::AskDesktop() {
  const auto keep = [this](unsigned& kept) {
    return [this, &kept](unsigned told) {
      kept = told;
      Dress();
    };
  };
  AskPortal("color-scheme", this, keep(desktopColors_));
  AskPortal("contrast", this, keep(desktopContrast_));
}

void ViewMenu::Dress() {
  const bool dark = desktopColors_ == 1 || (desktopColors_ == 0 && ThemeIsDark());
  Scheme scheme = desktopContrast_ == 1 ? Scheme::Outdoor : dark ? Scheme::Dark : Scheme::Light;
  if (chosen_ == "Light") scheme = Scheme::Light;
  if (chosen_ == "Dark") scheme = Scheme::Dark;
  if (chosen_ == "Outdoor") scheme = Scheme::Outdoor;
  if (scheme != CurrentScheme()) DressApplication(scheme);
}

}  // namespace quorvane

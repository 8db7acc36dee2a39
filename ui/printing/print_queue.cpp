#include "ui/printing/print_queue.h"

#include <QLibrary>

namespace quorvane {
namespace {

// As <cups/cups.h> of CUPS 1.1 and later declares them: they are part of the library's fixed binary form.
struct Option {
  char* name;
  char* value;
};
struct Destination {
  char* name;
  char* instance;
  int isDefault;
  int optionCount;
  Option* options;
};
constexpr int kLastGoodStatus = 0x00FF;  // of the Internet Printing Protocol (RFC 8011, appendix B)

// Null where there is no such library. The version is the one that Qt itself prints with.
template <typename Function>
Function* FromCups(const char* name) {
  return reinterpret_cast<Function*>(QLibrary::resolve(QStringLiteral("cups"), 2, name));
}

}  // namespace

PrintQueue QueueWith(const std::function<QString(const char*)>& attribute) {
  const QString stopped = QStringLiteral("5");
  return {attribute("printer-is-accepting-jobs") == QLatin1String("false"),
          attribute("printer-state") == stopped};
}

PrintQueue AskPrintQueue(const QString& printer) {
  const auto getNamedDest =
      FromCups<Destination*(void* server, const char* name, const char* instance)>("cupsGetNamedDest");
  const auto getOption = FromCups<const char*(const char* name, int count, Option* options)>("cupsGetOption");
  const auto freeDests = FromCups<void(int count, Destination* destinations)>("cupsFreeDests");
  if (getNamedDest == nullptr || getOption == nullptr || freeDests == nullptr) return {};
  // A printer may carry a set of options behind its name, "Laser/draft"; the queue is the same.
  const QByteArray name = printer.section(QLatin1Char('/'), 0, 0).toLocal8Bit();
  Destination* destination = getNamedDest(nullptr, name.constData(), nullptr);
  if (destination == nullptr) return {};
  const PrintQueue queue = QueueWith([&](const char* attribute) {
    return QString::fromUtf8(getOption(attribute, destination->optionCount, destination->options));
  });
  freeDests(1, destination);
  return queue;
}

QString LastRefusal() {
  const auto lastError = FromCups<int()>("cupsLastError");
  const auto lastErrorString = FromCups<const char*()>("cupsLastErrorString");
  if (lastError == nullptr || lastErrorString == nullptr) return {};
  const int status = lastError();
  if (status >= 0 && status <= kLastGoodStatus) return {};
  return QString::fromUtf8(lastErrorString());
}

}  // namespace quorvane

#include "ui/words.h"

#include <QCoreApplication>
#include <QHash>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>
#include <vector>

#include "ui/widgets/look.h"
#include "ui/word_patterns.h"

// A library's resource is there only when somebody asks for it, which a namespace must not.
static void UseTranslations() {
  Q_INIT_RESOURCE(translations);
}

namespace quorvane {
namespace {

constexpr const char* kContext = "Quorvane";
constexpr qsizetype kMostKept = 4000;
constexpr int kMostTries = 20000;  // for one text: whatever it is, the window must not stand still for it

struct Told {
  QString text;
  bool known = false;
};

struct Pattern {
  std::vector<QString> between;  // what stands before, between and behind the places
  QString translation;
  const char* places;
  bool lines;  // has several; no other pattern goes over the end of a line

  char Place(std::size_t index) const {
    const std::size_t said = std::char_traits<char>::length(places);
    return index < said ? places[index] : 'n';
  }
};

struct Language {
  QTranslator words;
  QTranslator qt;  // the toolkit's own, for its boxes
  std::vector<Pattern> patterns;
  QHash<QString, Told> kept;
  QHash<QString, Told> parts;  // of the text that is looked up now
  int tries = 0;               // for it
  bool spoken = false;
};

Language& Spoken() {
  static Language language;
  return language;
}

Told TellPart(const QString& english);

bool IsNumber(QStringView text) {
  return std::all_of(text.begin(), text.end(),
                     [](QChar sign) { return !sign.isLetter() && sign != QLatin1Char('('); });
}

// Nothing to translate: a time, a count, a dash.
bool HasNoWord(QStringView text) {
  return std::none_of(text.begin(), text.end(), [](QChar sign) { return sign.isLetter(); });
}

// The same in every language: "P2", "C P1 6.50", "AMA 1324", "F12".
bool IsCode(const QString& text) {
  int letters = 0;
  for (const QChar sign : text) {
    letters = sign.isLetter() ? letters + 1 : 0;
    if (letters > 3 || sign.isLower()) return false;
  }
  return true;
}

// What stands in a place of that kind, in the operator's language; null where the pattern does not fit.
QString InPlace(char kind, const QString& text) {
  if (text.isEmpty() || (kind == 'n' && !IsNumber(text))) return {};
  if (kind == 'w' && text.endsWith(QLatin1Char('.'))) return {};  // belongs to the sentence
  if (kind == 'n' || kind == 't') return text;
  const Told told = TellPart(text);
  return kind == 'e' || told.known ? told.text : QString();
}

// What stands in the places from that one on, when `text` begins with the first of them.
bool Fill(const Pattern& pattern, std::size_t place, const QString& text, QStringList& filled) {
  const QString& behind = pattern.between[place + 1];
  const bool last = place + 2 == pattern.between.size();
  if (last && !text.endsWith(behind)) return false;
  qsizetype end = last ? text.size() - behind.size() : text.indexOf(behind, 1);
  for (; end > 0; end = last ? -1 : text.indexOf(behind, end + 1)) {
    if (++Spoken().tries > kMostTries) return false;
    if (pattern.Place(place) == 'n' && !IsNumber(text.left(end))) continue;
    if (!last && !Fill(pattern, place + 1, text.mid(end + behind.size()), filled)) continue;
    const QString part = InPlace(pattern.Place(place), text.left(end));
    if (!part.isNull()) {
      filled.prepend(part);
      return true;
    }
    filled.clear();
  }
  return false;
}

QString Filled(const QString& translation, const QStringList& parts) {
  QString text;
  for (qsizetype at = 0; at < translation.size(); ++at) {
    const int place = translation[at] == QLatin1Char('%') ? translation.mid(at + 1, 1).toInt() : 0;
    if (place < 1 || place > parts.size()) {
      text += translation[at];
      continue;
    }
    text += parts[place - 1];
    ++at;
  }
  return text;
}

Told ByPattern(const QString& english) {
  const bool lines = english.contains(QLatin1Char('\n'));
  for (const Pattern& pattern : Spoken().patterns) {
    if (pattern.lines != lines || !english.startsWith(pattern.between.front()) ||
        !english.endsWith(pattern.between.back())) {
      continue;
    }
    QStringList parts;
    if (Fill(pattern, 0, english.mid(pattern.between.front().size()), parts)) {
      return {Filled(pattern.translation, parts), true};
    }
  }
  return {english, false};
}

// Each part for itself, with what parts them.
Told InParts(const QString& english, const QString& mark) {
  Told all{{}, true};
  QStringList told;
  for (const QString& part : english.split(mark)) {
    const Told one = TellPart(part);
    told << one.text;
    all.known = all.known && one.known;
  }
  all.text = told.join(mark);
  return all;
}

Told Whole(const QString& english) {
  const QString text = Spoken().words.translate(kContext, english.toUtf8().constData());
  return text.isNull() ? Told{english, false} : Told{text, true};
}

Told LookUp(const QString& english) {
  if (Told told = Whole(english); told.known) return told;
  if (Told told = ByPattern(english); told.known) return told;
  for (const char* mark : {"\n", "\t", ". "}) {
    const QString parted = QString::fromLatin1(mark);
    if (english.contains(parted)) return InParts(english, parted);
  }
  if (!english.endsWith(QLatin1Char('.'))) return {english, IsCode(english)};
  Told told = TellPart(english.chopped(1));
  told.text += QLatin1Char('.');
  return told;
}

// Blanks around it stay.
Told TellPart(const QString& english) {
  if (HasNoWord(english)) return {english, true};
  const QHash<QString, Told>& seen = Spoken().parts;
  if (const auto found = seen.constFind(english); found != seen.constEnd()) return *found;
  const QString core = english.trimmed();
  Told told = LookUp(core);
  const qsizetype before = english.indexOf(core);
  told.text = english.left(before) + told.text + english.mid(before + core.size());
  Spoken().parts.insert(english, told);
  return told;
}

Told Tell(const QString& english) {
  if (HasNoWord(english)) return {english, true};
  QHash<QString, Told>& kept = Spoken().kept;
  if (const auto found = kept.constFind(english); found != kept.constEnd()) return *found;
  Spoken().parts.clear();
  Spoken().tries = 0;
  Told told = TellPart(english);
  if (kept.size() >= kMostKept) kept.clear();
  kept.insert(english, told);
  return told;
}

void ReadPatterns(Language& language) {
  language.patterns.clear();
  for (const WordPattern& source : kWordPatterns) {
    const QString translation = language.words.translate(kContext, source.text);
    if (translation.isNull()) continue;
    const QString text = QString::fromUtf8(source.text);
    Pattern pattern{{}, translation, source.places, text.contains(QLatin1Char('\n'))};
    const QStringList parts = text.split(QLatin1Char('%'));
    for (const QString& part : parts) pattern.between.push_back(part.mid(pattern.between.empty() ? 0 : 1));
    language.patterns.push_back(std::move(pattern));
  }
}

// Before the first letter that is the one.
QString Marked(QString caption, char letter) {
  const qsizetype at = letter == 0 ? -1 : caption.indexOf(QLatin1Char(letter), 0, Qt::CaseInsensitive);
  return at < 0 ? caption : caption.insert(at, QLatin1Char('&'));
}

}  // namespace

bool Words::Speak(const QString& language) {
  UseTranslations();
  Language& spoken = Spoken();
  QCoreApplication::removeTranslator(&spoken.qt);
  QCoreApplication::removeTranslator(&spoken.words);
  const QString code = language.section(QLatin1Char('_'), 0, 0).section(QLatin1Char('-'), 0, 0).toLower();
  spoken.kept.clear();
  spoken.patterns.clear();
  spoken.spoken = !code.isEmpty() && spoken.words.load(QStringLiteral(":/translations/quorvane_") + code);
  if (!spoken.spoken) return false;
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  // Ours is asked first: it has the words of the boxes for a computer without the toolkit's.
  if (spoken.qt.load(QStringLiteral("qtbase_") + code, folder))
    QCoreApplication::installTranslator(&spoken.qt);
  QCoreApplication::installTranslator(&spoken.words);
  ReadPatterns(spoken);
  return true;
}

QString Words::OfSystem() {
  const QStringList wanted = QLocale::system().uiLanguages();
  return wanted.isEmpty() ? QString() : wanted.front();
}

QString Words::Of(const QString& english) {
  return Spoken().spoken ? Tell(english).text : english;
}

QString Words::Of(const std::string& english) {
  return Of(ToQString(english));
}

QString Words::WithMnemonic(const std::string& english, char letter) {
  const QString caption = ToQString(english).replace(QLatin1Char('&'), QLatin1String("&&"));
  const QString marked = Marked(caption, letter);
  if (!Spoken().spoken || (marked != caption && Whole(marked).known)) return Of(marked);
  return Marked(Of(caption), letter);
}

bool Words::Know(const QString& english) {
  return Spoken().spoken && Tell(english).known;
}

QStringList Words::Unknown() {
  QStringList texts;
  for (const auto [english, told] : Spoken().kept.asKeyValueRange()) {
    if (!told.known) texts << english;
  }
  return texts;
}

}  // namespace quorvane

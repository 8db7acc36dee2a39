#pragma once

#include <QStringList>
#include <string>

namespace quorvane {

// The operator's texts in his language. The program speaks English, also into files and journals; what is
// shown goes through here and never comes back. A text is looked up whole, by the patterns of
// word_patterns.h, then by lines and sentences; what is unknown stands as it is. For the windows' thread.
class Words {
 public:
  // The language by its code, "de" or "de_AT", before any window is made. False: none of it, English stays.
  static bool Speak(const QString& language);
  // That of the user's desktop, as a code.
  static QString OfSystem();

  static QString Of(const QString& english);
  static QString Of(const std::string& english);  // as the race logic has it, see ToQString
  static QString Of(const char* english) { return Of(QString::fromUtf8(english)); }
  // A caption whose letter for Alt has an & before it; & of its own are doubled.
  static QString WithMnemonic(const std::string& english, char letter);

  // Whether all of the text is in the language, or has no word in it.
  static bool Know(const QString& english);
  // What was asked for lately, and is not.
  static QStringList Unknown();
};

}  // namespace quorvane

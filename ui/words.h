#pragma once

#include <QStringList>
#include <string>

namespace quorvane {

// The operator's texts in his language. The program itself speaks English, also into files and journals; what
// is shown goes through here, and nothing that was translated ever comes back. A text is looked up whole,
// then by the patterns of word_patterns.h, then line by line and sentence by sentence; what is still unknown
// stands as it is. One language for the whole program; of the thread of the windows.
class Words {
 public:
  // The language by its code, "de" or "de_AT": before any window is made. False: there are no words of it,
  // and the program speaks English.
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

#include <QSoundEffect>
#include <QUrl>

// A library by itself: the toolkit's sound brings two dozen others along, which need not be read before there
// is something to play. The sound belongs to the thread that calls this, and ends when it is deleted.
extern "C" QObject* QuorvanePlayWave(const QString& file) {
  auto* sound = new QSoundEffect;
  sound->setSource(QUrl::fromLocalFile(file));
  sound->play();
  return sound;
}

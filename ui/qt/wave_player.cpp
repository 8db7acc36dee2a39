#include "ui/qt/wave_player.h"

#include <QSoundEffect>
#include <QUrl>

namespace quorvane {

class WavePlayer::Speaker {
 public:
  void Play(const QString& path) {
    Stop();
    sound_ = std::make_unique<QSoundEffect>();
    sound_->setSource(QUrl::fromLocalFile(path));
    sound_->play();
  }
  void Stop() {
    if (sound_) sound_->stop();
    sound_.reset();
  }

 private:
  std::unique_ptr<QSoundEffect> sound_;
};

WavePlayer::WavePlayer() : speaker_(std::make_shared<Speaker>()) {}

// A sound belongs to the thread that made it. One that hangs is not waited for: nothing is lost.
WavePlayer::~WavePlayer() {
  Stop();
}

void WavePlayer::Play(const std::string& path) {
  played_ = true;
  thread_.Do([speaker = speaker_, file = QString::fromStdString(path)] { speaker->Play(file); });
}

void WavePlayer::Stop() {
  if (played_) thread_.Do([speaker = speaker_] { speaker->Stop(); });
}

}  // namespace quorvane

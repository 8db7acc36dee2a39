#include "ui/wave_player.h"

#include <QSoundEffect>
#include <QTimer>
#include <QUrl>

namespace quorvane {

class WavePlayer::Speaker : public QObject {
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

WavePlayer::WavePlayer() = default;

WavePlayer::~WavePlayer() {
  if (!thread_) return;
  speaker_->deleteLater();
  thread_->quit();
  thread_->wait();
}

void WavePlayer::Play(const std::string& path) {
  if (!thread_) {
    thread_ = std::make_unique<QThread>();
    speaker_ = new Speaker;
    speaker_->moveToThread(thread_.get());
    thread_->start();
  }
  QTimer::singleShot(0, speaker_,
                     [speaker = speaker_, file = QString::fromStdString(path)] { speaker->Play(file); });
}

void WavePlayer::Stop() {
  if (speaker_ != nullptr) QTimer::singleShot(0, speaker_, [speaker = speaker_] { speaker->Stop(); });
}

}  // namespace quorvane

#pragma once

#include <QThread>
#include <memory>
#include <string>

namespace quorvane {

// Plays one wave file at a time. Finding the sound device can take a while, so all of it happens on a thread
// of its own, which does not exist before the first sound. Silent where there is no sound device.
class WavePlayer {
 public:
  WavePlayer();
  ~WavePlayer();

  void Play(const std::string& path);
  void Stop();

 private:
  class Speaker;

  std::unique_ptr<QThread> thread_;
  Speaker* speaker_ = nullptr;  // lives on the thread
};

}  // namespace quorvane

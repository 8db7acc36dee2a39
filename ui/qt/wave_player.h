#pragma once

#include <memory>
#include <string>

#include "ui/work_thread.h"

namespace quorvane {

// Plays one wave file at a time. Finding the sound device can take a while, and a sound server may hang, so
// all of it happens on a thread of its own. Silent where there is no sound device.
class WavePlayer {
 public:
  WavePlayer();
  ~WavePlayer();

  void Play(const std::string& path);
  void Stop();

 private:
  class Speaker;

  std::shared_ptr<Speaker> speaker_;  // used on the thread only
  WorkThread thread_;
  bool played_ = false;
};

}  // namespace quorvane

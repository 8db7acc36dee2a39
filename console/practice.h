#pragma once

#include <string>
#include <vector>

namespace quorvane {

// What the crew wants to be trained in.
struct PracticeOptions {
  enum class Radio : unsigned char { kGood, kNoisy, kBad };
  int mode = 2;  // 1..6; 0: one after another
  Radio radio = Radio::kGood;
  bool silentJudge = false;      // judge 2, soon after the start signal
  bool starterRestarts = false;  // once, in the first heat
  bool lostTimers = false;       // for good, in the middle of the first heat

  bool operator==(const PracticeOptions&) const = default;
};

// The options with which the simulated field is started for that, but the link to its terminal.
std::vector<std::string> FieldArguments(const PracticeOptions& options);

// The simulated field as the console asks for it. Both calls return at once; an event at the door
// (EventKind::Field) tells at which serial port it answers, or why it does not. This one does nothing.
class PracticeField {
 public:
  virtual ~PracticeField() = default;
  // Anew when it runs already.
  virtual void Start(const PracticeOptions& /*options*/) {}
  virtual void Stop() {}
};

}  // namespace quorvane

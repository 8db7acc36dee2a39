#include "tools/field/options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

namespace quorvane::field {

const char* const kHelpText =
    R"(Usage: quorvane-field [OPTION...]
       quorvane-field --compare FLOWN SHOWN [--tolerance MS] [--lossy]

Plays the field stations of a pylon race (starter, timers, judges, pylon box,
display) on a pseudo-terminal, at the pace of a 9600-baud line. The console
opens the terminal as its serial port. The starter idles and polls are answered
until the terminal is opened; then the heats are flown. For each heat one line
of JSON goes to standard output: what was flown and what the console should show.

The heats
  --heats N        how many heats (default 1, or 6 with --mode all; 0: no end)
  --mode M         1 RaceHorse, 2 AMA 1324, 3 AMA 2413, 4 FAI 123, 5 FAI 231,
                   6 FAI 312, or "all": one after another (default 2)
  --seed S         number that the heats are drawn from; the same number gives
                   the same heats everywhere (default 1)
  --count on|off   the 60-second count before the start (default on); without
                   it the starter's clock begins at 60000
  --hold           the starter holds the count at 56000 for three seconds
  --quick          laps of about four seconds, so that a heat is soon over

Single stations (P1, P2, P3, ST, TM, PY or DS; each of these may come again)
  --silent ST@MS[-MS]
                   the station is off from the first to the second time, or for
                   good: it neither sends nor hears. Times count from the start
  --late ST=MS     it answers polls this much later
  --twice ST       it answers every poll twice

A console that controls the race
  --controlled     no starter and no timers: the stations follow the console,
                   and --heats counts the races that it runs. A race's line of
                   JSON tells what the stations saw of it, and a last line what
                   each of them heard
  --starter-at MS  starter and timers come on the air after all, and idle

The line (probabilities from 0 to 1, per frame)
  --noise P        random bytes before a frame
  --loss P         a frame is not sent
  --damage P       one byte of a frame is changed
  --split          frames arrive in pieces

The terminal
  --link PATH      a symbolic link to the terminal: a path that stays the same.
                   An old link is replaced, anything else in its place is not.
                   The link is removed at the end
  --delay MS       begin this long after the start, console or not
  --stay           after the last heat go on idling until ended by a signal

Without a terminal
  --fast           prints the whole course at once, in no real time: a line
                   {"ms":N,"rx":"55AA..."} for each piece on the air and each
                   heat's line when the heat is over
  --compare FLOWN SHOWN
                   compares what was flown with what a console showed, one JSON
                   line a heat in either file. Prints one line per difference
  --tolerance MS   times may differ by this much (default 60)
  --lossy          the line was bad: laps may be late but never early, and there
                   are never more than were flown

  --help           this text

Exit status: 0 done, or no difference; 1 differences, or no terminal; 2 a bad
command line, or a file that cannot be read.
)";

namespace {

constexpr int kMaxHeats = 100000;

template <typename T>
bool Whole(const std::string& text, T least, T most, T& result) {
  const char* end = text.data() + text.size();
  T value{};
  const auto [stop, fault] = std::from_chars(text.data(), end, value);
  if (fault != std::errc() || stop != end || value < least || value > most) return false;
  result = value;
  return true;
}

bool Probability(const std::string& text, double& result) {
  const char* end = text.data() + text.size();
  double value = 0;
  const auto [stop, fault] = std::from_chars(text.data(), end, value);
  if (fault != std::errc() || stop != end || !(value >= 0 && value <= 1)) return false;
  result = value;
  return true;
}

bool Ms(const std::string& text, std::int64_t& result) {
  return Whole<std::int64_t>(text, 0, 86'400'000, result);
}

bool Station(const std::string& code, std::uint8_t& address) {
  static const std::map<std::string, std::uint8_t> kStations = {
      {"P1", 0},       {"P2", 1},         {"P3", 2},       {"ST", kStarter},
      {"TM", kTimers}, {"PY", kPylonBox}, {"DS", kDisplay}};
  const auto found = kStations.find(code);
  if (found == kStations.end()) return false;
  address = found->second;
  return true;
}

class Parser {
 public:
  Parser(const std::vector<std::string>& arguments, std::string& error)
      : arguments_(arguments), error_(error) {}

  std::optional<CommandLine> Run() {
    while (next_ < arguments_.size()) {
      if (!Option(arguments_[next_++])) return std::nullopt;
    }
    if (line_.field.hold && !line_.field.count) {
      error_ = "--hold needs the count: it does not go with --count off";
      return std::nullopt;
    }
    if (line_.field.starter_at && !line_.field.controlled) {
      error_ = "--starter-at goes with --controlled only";
      return std::nullopt;
    }
    if (line_.task == Task::kFast && line_.field.controlled) {
      error_ = "--fast has no console to follow: it does not go with --controlled";
      return std::nullopt;
    }
    if (line_.task == Task::kFast && line_.field.heats == 0 && heats_given_) {
      error_ = "--fast needs an end: it does not go with --heats 0";
      return std::nullopt;
    }
    if (!heats_given_) line_.field.heats = line_.field.mode == 0 ? 6 : 1;
    return line_;
  }

 private:
  bool Option(const std::string& name) {
    if (Switch(name)) return true;
    if (name == "--compare") {
      line_.task = Task::kCompare;
      return Value(name, line_.flown) && Value(name, line_.shown);
    }
    using Setter = bool (Parser::*)(const std::string&);
    static const std::map<std::string, std::pair<Setter, const char*>> kOptions = {
        {"--heats", {&Parser::Heats, "a number from 0 to 100000"}},
        {"--mode", {&Parser::Mode, "1 to 6 or \"all\""}},
        {"--seed", {&Parser::Seed, "a number from 0 to 4294967295"}},
        {"--count", {&Parser::Count, "\"on\" or \"off\""}},
        {"--noise", {&Parser::Noise, "a probability from 0 to 1"}},
        {"--loss", {&Parser::Loss, "a probability from 0 to 1"}},
        {"--damage", {&Parser::Damage, "a probability from 0 to 1"}},
        {"--link", {&Parser::Link, "a path"}},
        {"--delay", {&Parser::Delay, "milliseconds from 0 to 86400000"}},
        {"--silent", {&Parser::Silent, "a station, \"@\" and one or two times, like DS@5000-9000"}},
        {"--late", {&Parser::Late, "a station, \"=\" and milliseconds, like P2=800"}},
        {"--twice", {&Parser::Twice, "a station: P1, P2, P3, ST, TM, PY or DS"}},
        {"--starter-at", {&Parser::StarterAt, "milliseconds from 0 to 86400000"}},
        {"--tolerance", {&Parser::Tolerance, "milliseconds from 0 to 100000"}},
    };
    const auto option = kOptions.find(name);
    if (option == kOptions.end()) {
      error_ = "unknown argument \"" + name + "\" (--help lists them all)";
      return false;
    }
    std::string value;
    if (!Value(name, value)) return false;
    if ((this->*option->second.first)(value)) return true;
    error_ = name + " takes " + option->second.second + ", not \"" + value + "\"";
    return false;
  }

  bool Switch(const std::string& name) {
    if (name == "--help") {
      line_.task = Task::kHelp;
    } else if (name == "--fast") {
      line_.task = Task::kFast;
    } else if (name == "--hold") {
      line_.field.hold = true;
    } else if (name == "--quick") {
      line_.field.quick = true;
    } else if (name == "--split") {
      line_.field.line.split = true;
    } else if (name == "--controlled") {
      line_.field.controlled = true;
    } else if (name == "--stay") {
      line_.stay = true;
    } else if (name == "--lossy") {
      line_.compare.lossy = true;
    } else {
      return false;
    }
    return true;
  }

  bool Value(const std::string& name, std::string& value) {
    if (next_ >= arguments_.size()) {
      error_ = name + " needs a value";
      return false;
    }
    value = arguments_[next_++];
    return true;
  }

  bool Heats(const std::string& value) {
    heats_given_ = true;
    return Whole(value, 0, kMaxHeats, line_.field.heats);
  }
  bool Mode(const std::string& value) {
    if (value != "all") return Whole(value, 1, 6, line_.field.mode);
    line_.field.mode = 0;
    return true;
  }
  bool Seed(const std::string& value) { return Whole<std::uint32_t>(value, 0, 0xFFFFFFFF, line_.field.seed); }
  bool Count(const std::string& value) {
    line_.field.count = value == "on";
    return value == "on" || value == "off";
  }
  bool Noise(const std::string& value) { return Probability(value, line_.field.line.noise); }
  bool Loss(const std::string& value) { return Probability(value, line_.field.line.loss); }
  bool Damage(const std::string& value) { return Probability(value, line_.field.line.damage); }
  bool Link(const std::string& value) {
    line_.link = value;
    return !value.empty();
  }
  bool Delay(const std::string& value) { return Ms(value, line_.delay.emplace()); }
  bool StarterAt(const std::string& value) { return Ms(value, line_.field.starter_at.emplace()); }
  bool Silent(const std::string& value) {
    Silence silence;
    if (value.size() < 4 || value[2] != '@' || !Station(value.substr(0, 2), silence.station)) return false;
    const std::size_t dash = std::min(value.find('-'), value.size());
    if (!Ms(value.substr(3, dash - 3), silence.from_ms)) return false;
    if (dash < value.size() && !Ms(value.substr(dash + 1), silence.to_ms)) return false;
    line_.field.silent.push_back(silence);
    return silence.from_ms < silence.to_ms;
  }
  bool Late(const std::string& value) {
    std::uint8_t station = 0;
    return value.size() > 3 && value[2] == '=' && Station(value.substr(0, 2), station) &&
           Ms(value.substr(3), line_.field.late[station]);
  }
  bool Twice(const std::string& value) {
    std::uint8_t station = 0;
    return Station(value, station) && (line_.field.twice[station] = true);
  }
  bool Tolerance(const std::string& value) { return Whole(value, 0, 100'000, line_.compare.tolerance); }

  const std::vector<std::string>& arguments_;
  std::string& error_;
  std::size_t next_ = 0;
  CommandLine line_;
  bool heats_given_ = false;
};

}  // namespace

std::optional<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments, std::string& error) {
  return Parser(arguments, error).Run();
}

}  // namespace quorvane::field

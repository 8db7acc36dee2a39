#include "programs/field_command.h"

#include <algorithm>
#include <map>

#include "programs/arguments.h"

namespace quorvane::field {
namespace {

constexpr std::int64_t kDay = 86'400'000;  // ms

const char* const kPurpose =
    R"(Plays the field stations of a pylon race (starter, timers, judges, pylon box, display) on a pseudo-terminal, at
the pace of a 9600-baud line. The console opens the terminal as its serial port. The starter idles and polls are
answered until the terminal is opened; then the heats are flown. For each heat one line of JSON goes to standard
output: what was flown and what the console should show.
)";

const char* const kExitStatus =
    R"(Exit status: 0 done, or no difference; 1 differences, or no terminal; 2 a bad command line, or a file that
cannot be read.)";

[[noreturn]] void Refuse(const std::string& value, const std::string& why) {
  throw CLI::ValidationError(value, why);
}

std::uint8_t StationOf(const std::string& code) {
  static const std::map<std::string, std::uint8_t> kStations = {
      {"P1", 0},       {"P2", 1},         {"P3", 2},       {"ST", kStarter},
      {"TM", kTimers}, {"PY", kPylonBox}, {"DS", kDisplay}};
  const auto found = kStations.find(code);
  if (found == kStations.end()) Refuse(code, "is no station: P1, P2, P3, ST, TM, PY or DS");
  return found->second;
}

std::int64_t Ms(const std::string& text) {
  std::int64_t ms = 0;
  if (!CLI::detail::lexical_cast(text, ms) || ms < 0 || ms > kDay) {
    Refuse(text, "is no time of 0 to 86400000 ms");
  }
  return ms;
}

// The help names a value in one word, not by its limits.
CLI::Validator UpTo(std::int64_t most) {
  return CLI::Range(std::int64_t{0}, most).description("");
}

// "DS@5000" or "DS@5000-9000".
void AddSilence(FieldOptions& field, const std::string& value) {
  const std::size_t at = value.find('@');
  const std::size_t dash = value.find('-');
  if (at == std::string::npos) Refuse(value, "is not ST@MS or ST@MS-MS");
  Silence silence;
  silence.station = StationOf(value.substr(0, at));
  silence.from_ms = Ms(value.substr(at + 1, std::min(dash, value.size()) - at - 1));
  if (dash < value.size()) silence.to_ms = Ms(value.substr(dash + 1));
  if (silence.from_ms >= silence.to_ms) Refuse(value, "ends before it begins");
  field.silent.push_back(silence);
}

// "P2=800".
void AddLateness(FieldOptions& field, const std::string& value) {
  const std::size_t equals = value.find('=');
  if (equals == std::string::npos) Refuse(value, "is not ST=MS");
  field.late[StationOf(value.substr(0, equals))] = Ms(value.substr(equals + 1));
}

CLI::Option* AddMs(Arguments& app, const std::string& name, auto& ms, const std::string& purpose) {
  return app.add_option(name, ms, purpose)->type_name("MS")->check(UpTo(kDay));
}

void AddHeats(Arguments& app, FieldOptions& field) {
  static const std::map<std::string, int> kModes = {{"all", 0}, {"1", 1}, {"2", 2}, {"3", 3},
                                                    {"4", 4},   {"5", 5}, {"6", 6}};
  app.option_defaults()->group("The heats");
  app.add_option("--heats", field.heats, "how many; 0: no end [1, or 6 with --mode all]")
      ->type_name("N")
      ->check(UpTo(100000));
  app.add_option("--mode", field.mode,
                 "1 RaceHorse, 2 AMA 1324, 3 AMA 2413, 4 FAI 123, 5 FAI 231, 6 FAI 312, or all, one after "
                 "another [2]")
      ->type_name("MODE")
      ->transform(CLI::CheckedTransformer(kModes).description(""));
  app.add_option("--seed", field.seed,
                 "what the heats are drawn from; the same number gives the same heats [1]")
      ->type_name("N");
  app.add_option("--count", field.count,
                 "the 60-second count; without it the starter's clock begins at 60000 [on]")
      ->type_name("on|off");
  app.add_flag("--hold", field.hold, "the starter holds the count at 56000 for three seconds");
  app.add_flag("--quick", field.quick, "laps of about four seconds");
  AddMs(app, "--pause", field.pause, "ms by which the starter idles longer between two heats [0]");
}

void AddStations(Arguments& app, FieldOptions& field) {
  app.option_defaults()->group(
      "Single stations (P1, P2, P3, ST, TM, PY or DS; each of these may come again)");
  app.AddRepeated("--silent", "ST@MS[-MS]",
                  "it is off from the first to the second time after the start, or for good",
                  [&](const std::string& value) { AddSilence(field, value); });
  app.AddRepeated("--late", "ST=MS", "it answers polls this much later",
                  [&](const std::string& value) { AddLateness(field, value); });
  app.AddRepeated("--twice", "ST", "it answers every poll twice",
                  [&](const std::string& value) { field.twice[StationOf(value)] = true; });

  AddMs(app, "--restart", field.restart,
        "race clock in ms at which the starter restarts in the first heat, having forgotten the race; "
        "the heat is flown again, and told once");

  app.option_defaults()->group("A console that controls the race");
  app.add_flag("--controlled", field.controlled,
               "no starter and no timers: the stations follow the console, --heats counts its races, and the "
               "JSON tells "
               "what the stations saw and heard of it")
      ->option_text("Excludes: --restart --fast")  // the library would tell them in any order
      ->excludes("--restart");
  AddMs(app, "--starter-at", field.starter_at,
        "ms after which starter and timers come on the air after all, and idle")
      ->needs("--controlled");
}

// The library's range lets "nan" pass.
CLI::Validator Probability() {
  return {[](std::string& text) {
            double value = 0;
            const bool good = CLI::detail::lexical_cast(text, value) && value >= 0 && value <= 1;
            return good ? std::string() : text + " is no probability from 0 to 1";
          },
          ""};
}

void AddLine(Arguments& app, LineOptions& line) {
  app.option_defaults()->group("The line (probabilities from 0 to 1, per frame)");
  app.add_option("--noise", line.noise, "random bytes before a frame")->type_name("P")->check(Probability());
  app.add_option("--loss", line.loss, "a frame is not sent")->type_name("P")->check(Probability());
  app.add_option("--damage", line.damage, "a byte of a frame is changed")
      ->type_name("P")
      ->check(Probability());
  app.add_flag("--split", line.split, "frames arrive in pieces");
}

void AddTasks(Arguments& app, CommandLine& line) {
  app.option_defaults()->group("The terminal");
  app.AddFile("--link", line.link, "a symbolic link to it; an old link is replaced, anything else is not");
  AddMs(app, "--delay", line.delay, "ms after which the heats begin, console or not");
  app.add_flag("--stay", line.stay, "after the last heat go on idling until ended by a signal");

  app.option_defaults()->group("Without a terminal");
  app.add_flag(
         "--fast", line.fast,
         "print the whole course at once: a line {\"ms\":N,\"rx\":\"55AA...\"} for each piece on the air")
      ->excludes("--controlled");
  app.add_option("--compare", line.compared,
                 "FLOWN and SHOWN: compare two such files, a line for each difference")
      ->expected(2)
      ->type_name("FILE")
      ->check(NamedFile());
  app.add_option("--tolerance", line.compare.tolerance, "ms by which times may differ [60]")
      ->type_name("MS")
      ->check(UpTo(100'000));
  app.add_flag("--lossy", line.compare.lossy,
               "a bad line: laps may be late or missing, but never early or too many");
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  Arguments app("quorvane-field", kPurpose);
  app.footer(kExitStatus);
  AddHeats(app, line.field);
  AddStations(app, line.field);
  AddLine(app, line.field.line);
  AddTasks(app, line);
  app.Read(arguments);
  if (line.field.hold && !line.field.count) {
    app.Refuse("--hold needs the count: it does not go with --count off");
  }
  const bool heatsGiven = app.count("--heats") > 0;
  if (line.fast && heatsGiven && line.field.heats == 0) {
    app.Refuse("--fast needs an end: it does not go with --heats 0");
  }
  if (!heatsGiven) line.field.heats = line.field.mode == 0 ? 6 : 1;
  return line;
}

}  // namespace quorvane::field

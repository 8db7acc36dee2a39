// Hands, stations and files act on the whole console, step by step; what each line of steps changes is
// compared with the script itself.

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <span>
#include <sstream>

#include "base/text.h"
#include "console/first_start.h"
#include "console/score.h"
#include "results/race_records.h"
#include "tests/support/console_rig.h"
#include "tests/support/script.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

class Script : public HeatPrinter, public PracticeField {
 public:
  Script(const std::string& name, bool loaded)
      : corrects_(name == "corrections" || name == "recovery"),
        practises_(name == "practice"),
        rig_(name == "radio" || practises_, SystemFiles(),
             corrects_ ? ConsoleRig::Way::AtOnce : ConsoleRig::Way::InMemory) {
    rig_.judge().SetPrinter(this);
    if (practises_) rig_.judge().SetPracticeField(this);
    rig_.platform.whileOpen = [this](const DialogBox&) { player_.BoxOpens(); };
    if (loaded) rig_.Load();
    Played("");
  }
  ~Script() override { rig_.judge().SetPracticeField(nullptr); }

  // What a line of steps has changed.
  std::string Played(const std::string& line) {
    player_.Line(line);
    const Look now = LookAround();
    const std::string told = Happened() + Changes(std::exchange(before_, now), now);
    return Replaced(told, rig_.folder / "", "DIR/");
  }

 private:
  // "+500" and "60000": the time, from now or from the beginning. "F1", "key=7": a key.
  // "starter:61000,cut1=1": a frame. "cmdStart", "txtHeat=2", "lane1.cmdLap": a control.
  void Do(const Step& step) {
    const std::string &all = step.all, &word = step.word, &value = step.value;
    const std::string &name = step.first, &text = step.second;  // names, for clang's lambdas take no bindings
    const std::string key = name.substr(name.find('/') + 1);
    const std::map<std::string, std::function<void()>> steps = {
        {"load", [&] { rig_.Load(); }},
        {"open", [&] { rig_.program.door().Enter({EventKind::Load}); }},
        {"first",
         [&] {
           PrepareFirstStart(
               {.eventName = value, .project = rig_.file, .radio = FirstAnswers::Radio::kPractice},
               rig_.platform.settings);
         }},
        {"startup", [&] { rig_.judge().SetStartupProject(rig_.folder / value); }},
        {"close", [&] { rig_.program.door().Enter({.kind = EventKind::Close, .target = "frmJudge"}); }},
        {"activate", [&] { rig_.program.door().Enter({.kind = EventKind::Activate, .target = value}); }},
        {"quit", [&] { rig_.program.door().Enter({EventKind::Quit}); }},
        {"key", [&] { rig_.Key(value); }},
        {"recent", [&] { rig_.Type("frmJudge.mnuOpenRecent", rig_.folder / value); }},
        {"logout", [&] { happened_ += rig_.judge().MaySessionEnd() ? "  may end\n" : "  goes on\n"; }},
        {"race", [&] { rig_.race().RaceNumber = std::stoi(value), rig_.judge().ShowCurrentRace(); }},
        {"mode", [&] { rig_.judge().ApplyRaceMode(std::stoi(value)); }},
        {"told", [&] { rig_.judge().ShowNotice(value); }},
        {"printed", [&] { rig_.judge().ShowDone(value); }},
        {"put", [&] { PutFile(rig_.folder / name, text); }},
        {"value", [&] { rig_.program.project().SetProjectValue(name.substr(0, name.find('/')), key, text); }},
        {"setting", [&] { rig_.platform.settings.SaveSetting(name.substr(0, name.find('/')), key, text); }},
        {"lap", [&] { Lane(name).DoLap(std::stoi(text), 4000); }},
        {"turn", [&] { Lane(name).DoTurn(4, std::stoi(text), 100); }},
        {"cut", [&] { Lane(name).DoCut("11", 1, std::stoi(text)); }},
        {"station", [&] { Lane(name).DoStationLap(ToByte(text), ToLong(rig_.platform.ClockMs()), 400); }},
        {"adjust", [&] { Lane(name).AdjustTime(std::stoi(text)); }},
        {"fly",
         [&] {
           player_.Line("1000 lane2.chkNovice txtComments=Gusts cmdStart 8000 F1 15000 F1 F2 F5 22000 F1 F2");
         }},
        {"amend",
         [&] { player_.Line("fly 70000 cmdSave cmdDecHeat mnuAmend lane1.mnuLog frmLog.cmdStrike"); }},
        {"crash", [&] { Crash(std::stoll(value)); }},
        {"copy", [&] { PutFile(rig_.folder / text, FileBytes(rig_.folder / name)); }},
        {"same",
         [&] {
           const bool same = FileBytes(rig_.folder / name) == FileBytes(rig_.folder / text);
           happened_ += same ? "  the same\n" : "  ANOTHER\n";
         }},
        {"choose", [&] { Choose(ControlName(name), std::stoi(text)); }},
        {"field", [&] { FieldIs(std::stoi(name), text); }},
        {"record", [&] { TellAmended(std::stoi(value)); }},
        {"colors", [&] { Each([](frmLane& lane) { lane.UpdateLaneColor(); }); }},
        {"cat", [&] { happened_ += "  " + Replaced(Kept(value), "\n", "\n  ") + "\n"; }},
        {"forget", [&] { rig_.platform.settings = {}; }},
        {"move", [&] { std::filesystem::rename(Folder(name), Folder(text)); }},
        {"heat", [&] { player_.Line("cmdStart +2300 10{ +3700 F1 +100 F2 +100 F3 +100 F4 } +17700"); }},
    };
    const auto found = steps.find(word);
    if (found != steps.end()) return found->second();
    if (IsAnswer(rig_.platform, step, rig_.folder / "")) return;
    if (all[0] == '+') return rig_.At(rig_.platform.ClockMs() + std::stoll(all));
    if (std::isdigit(all[0]) != 0) return rig_.At(std::stoll(all));
    if (all[0] == 'F') return rig_.Key(all);
    if (all.find(':') != std::string::npos) return Receive(all);
    const std::string control = ControlName(word);
    if (word == all) return rig_.Click(control);
    if (!word.starts_with("cbo")) return rig_.Type(control, value);
    Choose(control, std::stoi(value));
  }

  void Choose(const std::string& control, int number) {
    rig_.program.door().Enter({.kind = EventKind::Choose, .target = control, .number = number});
  }
  void Crash(std::int64_t ms) {
    rig_.Crash(ms);
    rig_.platform.ended = false;
    rig_.judge().SetPrinter(this);
  }
  static std::uint8_t ToByte(const std::string& text) { return static_cast<std::uint8_t>(std::stoi(text)); }

  void Start(const PracticeOptions& options) override {
    happened_ += fmt::format("  the field starts {}\n", fmt::join(FieldArguments(options), " "));
  }
  void Stop() override { happened_ += "  the field ends\n"; }
  // The simulated field is at this port, or nowhere.
  void FieldIs(int port, const std::string& trouble) {
    rig_.serial.ports = port != 0 ? std::set<int>{5, port} : std::set<int>{5};
    const std::vector<int> ports(rig_.serial.ports.begin(), rig_.serial.ports.end());
    rig_.program.door().Enter({.kind = EventKind::Ports, .numbers = ports});
    rig_.program.door().Enter({.kind = EventKind::Field, .text = trouble, .number = port});
  }
  void TellAmended(int number) {
    const RaceRecord race = ReadRace(OpenProject(rig_.program.project(), rig_.race()), number);
    for (const AmendedText& place : race.lanes[0].places)
      happened_ += "  was placed " + place.before + ", then " + place.after + "\n";
    for (const AmendedText& text : race.amendedComments)
      happened_ += "  was told " + text.before + ", then " + text.after + "\n";
  }

  void Each(const std::function<void(frmLane&)>& act) {
    for (int i = 0; i < 4; ++i) act(rig_.lane(i));
  }
  std::string Kept(const std::string& file) const {
    return Replaced(FileBytes(file.empty() ? rig_.file : rig_.folder / file), "\r", "\\r");
  }
  frmLane& Lane(const std::string& number) { return rig_.lane(std::stoi(number) - 1); }
  // The folder of the project, under this name beside it.
  std::string Folder(const std::string& suffix) { return rig_.folder.path().string() + suffix; }

  static std::string ControlName(const std::string& name) {
    if (name.starts_with("lane")) return "frmLane" + name.substr(4);
    if (name.starts_with("link.")) return "frmSerialPort." + name.substr(5);
    if (name.starts_with("frm")) return name;
    return "frmJudge." + name;
  }

  // "starter:61000,mode=5": who sends, its clock, the other bytes by name.
  void Receive(const std::string& told) {
    static const std::map<std::string, std::pair<int, int>> kSenders = {
        {"starter", {3, 6}}, {"idle", {3, 6}}, {"timers", {4, 3}}, {"judge", {0, 6}}, {"ack", {255, 4}}};
    static const std::map<std::string, std::size_t> kBytes = {
        {"run", 3},      {"to", 4},    {"from", 5},  {"cut1", 11}, {"cut2", 12}, {"cut3", 13}, {"cut4", 14},
        {"buttons", 18}, {"lit1", 24}, {"lit2", 25}, {"lit3", 26}, {"lit4", 27}, {"mode", 28}, {"delay", 33}};
    const std::vector<std::string> parts = Split(told.substr(told.find(':') + 1), ',');
    const auto& [from, to] = kSenders.at(told.substr(0, told.find(':')));
    Frame frame(from, to, std::stoi(parts[0]));
    frame.With(3, told[0] == 's' ? 1 : 0);
    for (std::size_t i = 1; i < parts.size(); ++i) {
      const std::string name = parts[i].substr(0, parts[i].find('='));
      const int value = std::stoi(parts[i].substr(name.size() + 1));
      if (name.starts_with("lap")) {
        frame.Lane(name[3] - '1', value, 100);
      } else {
        frame.With(kBytes.at(name), value);
      }
    }
    rig_.Receive(frame);
  }

  void PrintHeat(const RaceRecord& race) override {
    happened_ += "  prints race " + std::to_string(race.number) + ": " + race.lanes[0].placing +
                 (rig_.judge().cmdSave.Enabled() && race.hasRun ? "" : ", too late") + "\n";
  }

  // The boxes and frames since the last line.
  std::string Happened() {
    happened_ += BoxesTold(rig_.platform, asked_);
    for (const auto& f : std::exchange(rig_.serial.sent, {})) {
      if (f[5] == 254) continue;  // the console only asks a station how it is
      const auto four = [bytes = std::span(f)](std::size_t at) {
        return fmt::join(bytes.subspan(at, 4), ",");
      };
      happened_ += fmt::format("  sends {} to {}: {} {}, mode {}, cuts {}, lit {}, laps {}\n", f[5], f[4],
                               f[3] != 0 ? "runs" : "idles", (f[7] << 16) + (f[8] << 8) + f[9], f[28],
                               four(11), four(24), four(29));
    }
    return std::exchange(happened_, {});
  }

  Look LookAround() {
    Look look;
    for (const Form* form : rig_.program.door().AllForms().All()) LookAtForm(*form, look[Shown(*form)]);
    const RaceState& race = rig_.race();
    const std::pair<bool, const char*> states[] = {{race.RaceActive, " active"},
                                                   {race.RaceDone, " done"},
                                                   {race.RaceHolding, " holding"},
                                                   {race.IsFaiMode, " FAI"},
                                                   {race.ManualStart, " by hand"},
                                                   {race.RaceLoaded, " loaded"},
                                                   {race.ReflyMode, " refly"},
                                                   {race.Unsaved, " unsaved"},
                                                   {rig_.judge().Practising(), " practice"},
                                                   {rig_.platform.ended, " ended"}};
    for (const auto& [is, name] : states) look["race"]["state"] += is ? name : "";
    look["race"]["number"] = std::to_string(race.RaceNumber);
    look["race"]["last"] = std::to_string(race.LastRaceRun);
    look["race"]["heats"] = std::to_string(race.HeatsPerRound);
    look["race"]["mode"] = std::to_string(race.RaceMode);
    look["race"]["sound"] = rig_.platform.playing;
    look["race"]["errors"] = std::to_string(rig_.program.door().ErrorsContained());
    look["race"]["port"] = std::to_string(rig_.serial.CommPort()) + (rig_.serial.PortOpen() ? " open" : "");
    Each([&](frmLane& lane) {
      look["race"]["bases"] += std::to_string(lane.TimeBase()) + " ";
      LookAtLane(lane, look[Shown(lane)]);
    });
    for (const auto& [name, value] : rig_.platform.settings.All())
      look["settings"][name.first + "/" + name.second] = value;
    LookAtFiles(look);
    LookAtScore(look["score"]);
    return look;
  }

  // "laps|cuts|time|place" of each lane, "!" behind a place that is none.
  void LookAtScore(std::map<std::string, std::string>& look) {
    const Score score = keeper_.Now();
    const bool runs = std::isdigit(score.clock[0]) != 0;
    look["head"] = score.heat + ", " + score.event + ", " + score.mode + ", " +
                   (runs ? "runs" : score.clock) + (score.practice ? ", practice" : "");
    for (const Score::Lane& lane : score.lanes)
      look[lane.flies ? lane.name : "-" + lane.name] =
          lane.laps + "|" + lane.cuts + "|" + lane.time + "|" + lane.place + (lane.bad ? "!" : "");
  }

  static std::string Shown(const Form& form) {
    const std::string& name = form.Name();
    return name.starts_with("frmLane") ? "lane " + name.substr(7) : name;
  }

  // What an operator sees of it. What is hidden may be anything.
  static void LookAtForm(const Form& form, std::map<std::string, std::string>& look) {
    look["shown"] = form.Visible() ? form.Caption() : "";
    for (const Control& c : form.Controls()) {
      if (c.Kind() == ControlKind::Timer) {
        look[c.Name()] = c.Enabled() && c.Interval() > 0 ? std::to_string(c.Interval()) : "";
        continue;
      }
      std::string& told = look[c.Name()];
      if (!c.Visible()) continue;
      told = c.Caption() + (c.Has(Property::Text) ? c.Text() : "");
      for (const std::string& item : c.Items()) look[c.Name() + ".list"] += Replaced(item, "\t", " ") + "/";
      if (c.ListIndex() >= 0) told += "#" + std::to_string(c.ListIndex());
      if (c.Value() != 0) told += " x";
      told = Replaced(Replaced(told, "\r", "|"), "\n", "|");
      look[c.Name() + ".is"] = c.ForeColor().Name() + " on " + c.BackColor().Name();
      look[c.Name() + ".off"] = c.Enabled() ? "" : "yes";
      look[c.Name() + ".tip"] = c.ToolTip();
    }
  }

  static void LookAtLane(const frmLane& lane, std::map<std::string, std::string>& look) {
    look["laps"] = std::to_string(lane.Counts().laps) + "/" + std::to_string(lane.Counts().lapTarget);
    look["cuts"] = std::to_string(lane.Counts().cutCount);
    look["place"] = lane.Position();
    look["entries"] = std::to_string(lane.EventCount());
    for (int i = std::max(lane.EventCount() - 12, 0); i < lane.EventCount(); ++i) {
      const LaneEvent& event = lane.Events()[i];
      if (!event.Kind.empty())
        look["log"] += fmt::format("{} {} {}, ", event.Kind, event.SourceName, event.EventTime);
    }
    for (const Correction& c : lane.Events().Corrections()) look["noted"] += CorrectionText(c) + "  ";
  }

  void LookAtFiles(Look& look) {
    std::error_code away;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(rig_.folder / "", away)) {
      const std::string file = entry.path().string();
      look["files"][file] = file.ends_with(".csv") ? FileBytes(file).substr(0, 40) : "there";
    }
    std::istringstream project(FileBytes(rig_.race().ProjectFile));
    std::string section;
    bool flown = true;  // of a lane on which nothing happened only the place is told
    for (std::string line; std::getline(project, line);) {
      if (line.ends_with('\r')) line.pop_back();
      const std::string key = line.substr(0, line.find('='));
      if (line.starts_with('[')) section = line, flown = true;
      if (line == "NumEvents=0") flown = false;
      if (key == line || (key.starts_with("Event") && std::isdigit(key.back()) != 0)) continue;
      if (!flown && key != "Placing" && key != "Position") continue;
      look[section][key] = line.substr(key.size() + 1);
    }
  }

  const bool corrects_, practises_;  // what else is looked at
  ConsoleRig rig_;
  ScoreKeeper keeper_{rig_.program};
  Look before_;
  StepPlayer player_{[this](const Step& step) { Do(step); }};
  std::string happened_;
  std::string asked_;  // by the last box
};

// "#" begins a case on a new project, "##" one before the start of the program.
class ConsoleScripts : public testing::TestWithParam<const char*> {};

TEST_P(ConsoleScripts, DoWhatTheySay) {
  std::optional<Script> console;
  PlayScript(
      TestData() + "/console/" + GetParam() + ".txt",
      [&](const std::string& title) {
        console.reset();
        console.emplace(GetParam(), !title.starts_with("##"));
      },
      [&](const std::string& line) { return console->Played(line); });
}

INSTANTIATE_TEST_SUITE_P(All, ConsoleScripts,
                         testing::Values("clock", "corrections", "heats", "practice", "project", "radio",
                                         "recovery", "score"));

}  // namespace
}  // namespace quorvane

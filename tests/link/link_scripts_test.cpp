// The link between a port and a race, step by step; what each line of steps changes is compared with the
// script itself.

#include <optional>

#include "base/checked.h"
#include "base/text.h"
#include "tests/link/link_fixture.h"
#include "tests/support/naive_receiver.h"
#include "tests/support/script.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

class Script : public LinkRig {
 public:
  Script() {
    platform.whileOpen = [this](const DialogBox&) { player_.BoxOpens(); };
    EnterLoad();
    Played("");
  }

  std::string Played(const std::string& line) {
    std::string told;
    try {
      player_.Line(line);
    } catch (const RunTimeError& error) {
      told = std::string("  refused: ") + error.what() + "\n";
    }
    if (std::exchange(platform.repaints, 0) > 0) told += "  repaints\n";
    told += BoxesTold(platform, asked_);
    for (const Bytes& frame : std::exchange(serial.sent, {})) told += "  sends " + FrameText(frame) + "\n";
    if (!race.senders.empty()) told += "  hears " + std::exchange(race.senders, {}).substr(0, 60) + "\n";
    const Look now = LookAround();
    return told + Changes(std::exchange(before_, now), now);
  }

 private:
  // "+500" and "60000": the time, from now or from the beginning. "rx=1>254,volt=128": a frame that comes.
  void Do(const Step& step) {
    const std::string &all = step.all, &word = step.word, &value = step.value;
    const std::string &first = step.first,
                      &second = step.second;  // names, for clang's lambdas take no bindings
    std::vector<int> numbers;                 // "3,5"
    for (const std::string& part : Split(value, ',')) numbers.push_back(LeadingLong(part));
    const std::map<std::string, std::function<void()>> steps = {
        {"load", [&] { EnterLoad(); }},
        {"show", [&] { door.AllForms().Show(link); }},
        {"close", [&] { door.Enter({.kind = EventKind::Close, .target = "frmSerialPort"}); }},
        {"activate", [&] { Activate(); }},
        {"ports", [&] { Ports(numbers); }},
        {"has", [&] { serial.ports = std::set(numbers.begin(), numbers.end()); }},
        {"busy",
         [&] {
           serial.busy[std::stoi(first)] = {std::stoi(first.substr(2)), second};
         }},
        {"free", [&] { serial.busy.clear(); }},
        {"saved", [&] { platform.settings.SaveSetting("frmSerialPort", first, second); }},
        {"line", [&] { Line(std::stoi(value)); }},
        {"rx", [&] { Rx(FramesOf(value)); }},
        {"zeros", [&] { Rx(Bytes(std::stoul(value), 0)); }},
        {"nines", [&] { Rx(Bytes(std::stoul(value), 9)); }},
        {"send", [&] { link.SendMessage(std::stoi(second), std::stoi(first)); }},
        {"active", [&] { state.RaceActive = value == "1"; }},
        {"done", [&] { state.RaceDone = value == "1"; }},
        {"comm", [&] { state.CommActive = value == "1"; }},
        {"listen", [&] { link.chkListen.SetValue(std::stoi(value)); }},
        {"listening", [&] { link.chkListen.SetEnabled(value == "1"); }},
        {"flown",
         [&] {
           race.laps = {1, 2, 3, 10};
           race.lit = {0, 5, 255, 1};
           race.cuts = {{{1, 0, 0, 0}, {0, 2, 0, 0}, {1, 3, 0, 1}, {0, 0, -1, 0}}};
         }},
        {"unflown", [&] { race.laps = race.lit = {}, race.cuts = {}; }},
    };
    const auto found = steps.find(word);
    if (found != steps.end()) return found->second();
    if (IsAnswer(platform, step)) return;
    if (all[0] == '+') return RunFor(std::stoll(all));
    if (std::isdigit(all[0]) != 0) return RunUntil(std::stoll(all));
    Click(all);
  }

  // "1>254,lap=3&2>254,ecc=5": from and to, what differs from a quiet frame, a wrong check byte; the next
  // one.
  static Bytes FramesOf(const std::string& text) {
    Bytes bytes;
    for (const std::string& told : Split(text, '&')) {
      const std::vector<std::string> parts = Split(told, ',');
      field::Report report;
      int ecc = -1;
      for (std::size_t i = 1; i < parts.size(); ++i) {
        const int number = std::stoi(parts[i].substr(parts[i].find('=') + 1));
        if (parts[i].starts_with("lap")) report.lap[0] = static_cast<std::uint8_t>(number);
        if (parts[i].starts_with("volt")) report.voltage = static_cast<std::uint8_t>(number);
        if (parts[i].starts_with("temp")) report.temperature = static_cast<std::uint8_t>(number);
        if (parts[i].starts_with("clock")) report.clock = number;
        if (parts[i].starts_with("ecc")) ecc = number;
      }
      Bytes frame = Frame(std::stoi(parts[0].substr(parts[0].find('>') + 1)), std::stoi(parts[0]), report);
      if (ecc >= 0) frame[2] = static_cast<std::uint8_t>(ecc);
      bytes = bytes + frame;
    }
    return bytes;
  }

  static std::string FrameText(const Bytes& frame) {
    const std::string rest = HexText(std::span(frame).subspan(6));
    const std::string head = HexText(std::span(frame).first(4));
    return fmt::format("{} to {}: {} {}", frame[5], frame[4], head, Replaced(rest, "00000000", "."));
  }

  Look LookAround() {
    Look look;
    const auto yes = [](bool is) { return is ? std::string("yes") : ""; };
    look["race"] = {{"port", race.port},
                    {"open", yes(race.portOpen)},
                    {"active", yes(state.CommActive)},
                    {"serial", yes(serial.PortOpen())},
                    {"warning", race.warning},
                    {"lamps", std::string(race.readLit ? "R" : "") + (race.writeLit ? "T" : "")},
                    {"events", race.raceEvents == 0 ? "" : std::to_string(race.raceEvents)}};
    for (const auto& [name, value] : platform.settings.All()) look["settings"][name.second] = value;
    auto& form = look["form"];
    for (const Control* button : link.optPort) {
      if (!button->Visible() && button->Value() == 0) continue;
      form["ports"] += button->Value() == 0 ? button->Caption() + " " : "[" + button->Caption() + "] ";
    }
    for (const Control* c : {&link.lblMessage, &link.cmdMore, &link.fraMore, &link.lblMsg})
      form[c->Name()] = Replaced(c->Caption().substr(0, 120), "\r", " / ");
    for (const Control* c : {&link.fraMore, &link.cmdFreeze, &link.cmdStation})
      form[c->Name() + " shown"] = yes(c->Visible());
    form["station"] = link.cmdStation.Caption() + " " + link.cmdStation.Tag() +
                      (link.cmdStation.Anchor() == nullptr ? "" : " at " + link.cmdStation.Anchor()->Name());
    form["controls"] = yes(link.IsControllerMode());
    form["may listen"] = yes(link.chkListen.Enabled());
    form["indicators"] = yes(link.tmrIndicators.Enabled());
    form["more"] = link.fraMore.Caption().size() > 4100 ? "too long" : "";
    form["copied"] = Replaced(platform.copied, "\n", " / ");
    for (int i = 0; i < 8; ++i) LookAtStation(i, look[fmt::format("station {}", i)]);
    return look;
  }

  void LookAtStation(int i, std::map<std::string, std::string>& look) {
    const auto red = [](const Control& c) { return c.Caption() + (c.ForeColor() == kRed ? " red" : ""); };
    look = {{"name", red(link.lblStation[i])},
            {"age", red(link.lblAge[i])},
            {"heard", link.lblAge[i].Tag()},
            {"volt", red(link.lblVolt[i])},
            {"temp", link.lblTemp[i].Caption()},
            {"silent", link.lblSilent[i].Visible() ? "yes" : ""},
            {"frames", std::to_string(link.Counters().Of(i).frames)}};
  }

  StepPlayer player_{[this](const Step& step) { Do(step); }};
  Look before_;
  std::string asked_;
};

class LinkScripts : public testing::TestWithParam<const char*> {};

TEST_P(LinkScripts, DoWhatTheySay) {
  std::optional<Script> link;
  PlayScript(
      TestData() + "/link/" + GetParam() + ".txt", [&](const std::string&) { link.emplace(); },
      [&](const std::string& line) { return link->Played(line); });
}

INSTANTIATE_TEST_SUITE_P(All, LinkScripts, testing::Values("ports", "stations", "traffic"));

}  // namespace
}  // namespace quorvane

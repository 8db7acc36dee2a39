// What a replay leaves behind, as text.

#include <fmt/format.h>

#include <array>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "journal/journal_text.h"
#include "records/profile_file.h"
#include "replay/replay.h"

namespace quorvane {
namespace {

using Json = nlohmann::ordered_json;  // UTF-8, though journals and files may have any bytes

Json RaceJson(Program& program) {
  const RaceState& race = program.race();
  const frmJudge& judge = program.judge();
  return {{"RaceNumber", race.RaceNumber},
          {"LastRaceRun", race.LastRaceRun},
          {"HeatsPerRound", race.HeatsPerRound},
          {"NumberReflys", race.NumberReflys},
          {"RaceMode", race.RaceMode},
          {"IsFaiMode", race.IsFaiMode},
          {"RaceActive", race.RaceActive},
          {"RaceHolding", race.RaceHolding},
          {"ManualStart", race.ManualStart},
          {"RaceDone", race.RaceDone},
          {"StartInfoPending", race.StartInfoPending},
          {"ReflyMode", race.ReflyMode},
          {"RaceLoaded", race.RaceLoaded},
          {"RaceStartRef", race.RaceStartRef},
          {"CommActive", race.CommActive},
          {"LaneColorScheme", race.LaneColorScheme},
          {"ProjectFile", TextFromBytes(race.ProjectFile)},
          {"ProjectBaseName", TextFromBytes(race.ProjectBaseName)},
          {"ResultsFile", TextFromBytes(race.ResultsFile)},
          {"LaneStartOffset", race.LaneStartOffset},
          {"Heat", race.Heat()},
          {"Round", race.Round()},
          {"EventName", TextFromBytes(judge.EventName())}};
}

Json LaneJson(const frmLane& lane) {
  Json events = Json::array();
  for (int i = 0; i < lane.EventCount(); ++i) {
    const LaneEvent& event = lane.Events()[i];
    events.push_back(Json::array({event.Count, event.Source, TextFromBytes(event.Kind),
                                  TextFromBytes(event.SourceName), event.EventTime, event.FirstReported}));
  }
  return {{"TimeBase", lane.TimeBase()},
          {"LastLapTime", lane.LastLapTime()},
          {"FinalTime", lane.Counts().finalTime},
          {"InNoviceClick", lane.InNoviceClick()},
          {"EventCount", lane.EventCount()},
          {"Events", events},
          {"CutCount", lane.Counts().cutCount},
          {"Laps", lane.Counts().laps},
          {"LapTarget", lane.Counts().lapTarget},
          {"CutsBeforeFinish", lane.Counts().cutsBeforeFinish},
          {"NeedsCutDisplay", lane.NeedsCutDisplay()},
          {"PylonCuts", lane.Counts().pylonCuts},
          {"MissedPylon", lane.MissedPylon()},
          {"MissedPylonTimes", lane.MissedPylonTimes()},
          {"Turns", lane.Turns()},
          {"TurnTimerEnd", lane.TurnTimerEnd()}};
}

Json ControlJson(const Control& control) {
  Json items = Json::array();
  for (const std::string& item : control.Items()) items.push_back(TextFromBytes(item));
  // An option button is on or off; the value of a check box is a number.
  const Json value =
      control.Kind() == ControlKind::Option ? Json(control.Value() != 0) : Json(control.Value());
  Json json = Json::object();
  const auto show = [&](Property property, const char* name, const Json& shown) {
    if (control.Has(property)) json[name] = shown;
  };
  show(Property::Caption, "caption", TextFromBytes(control.Caption()));
  show(Property::Text, "text", TextFromBytes(control.Text()));
  show(Property::Value, "value", value);
  show(Property::Checked, "checked", control.Checked());
  show(Property::Enabled, "enabled", control.Enabled());
  show(Property::Visible, "visible", control.Visible());
  show(Property::BackColor, "backColor", control.BackColor().Name());
  show(Property::ForeColor, "foreColor", control.ForeColor().Name());
  show(Property::Tag, "tag", TextFromBytes(control.Tag()));
  show(Property::ListIndex, "listIndex", control.ListIndex());
  show(Property::Items, "items", items);
  return json;
}

// A line for each member, to be searched by line.
std::string Lines(const Json& object) {
  std::vector<std::string> lines;
  for (const auto& [name, value] : object.items()) {
    lines.push_back(fmt::format("{}: {}", Json(name).dump(), value.dump()));
  }
  return fmt::format("{{\n{}\n}}", fmt::join(lines, ",\n"));
}

}  // namespace

std::string StateJson(Replay& replay) {
  Program& program = replay.program();
  std::vector<std::string> lanes;
  for (int i = 0; i < 4; ++i) lanes.push_back(Lines(LaneJson(program.lane(i))));
  Json controls;
  for (const Form* form : program.door().AllForms().All()) {
    for (const Control& control : form->Controls()) controls[control.FullName()] = ControlJson(control);
  }
  return fmt::format("{{\n\"time\": {},\n\"race\": {},\n\"lanes\": [{}],\n\"controls\": {}\n}}\n",
                     replay.Now(), Lines(RaceJson(program)), fmt::join(lanes, ", "), Lines(controls));
}

std::string FrameRecords(const std::vector<Replay::Frame>& frames) {
  std::string records;
  for (const Replay::Frame& frame : frames) {
    records +=
        RecordText({.kind = JournalRecord::Kind::Sent, .ms = frame.ms, .event = {.bytes = frame.bytes}});
  }
  return records;
}

std::string DialogLines(const std::vector<VirtualPlatform::Shown>& shown) {
  static constexpr std::array kKinds = {"ok", "okcancel", "yesno", "yesnocancel", "input", "open", "save"};
  std::string lines;
  for (const auto& [ms, box, answer] : shown) {
    lines += Json{{"ms", ms},
                  {"kind", kKinds[static_cast<std::size_t>(box.kind)]},
                  {"title", TextFromBytes(box.title)},
                  {"text", TextFromBytes(box.text)},
                  {"answer", TextFromBytes(AnswerText(answer))}}
                 .dump() +
             "\n";
  }
  return lines;
}

std::string SettingsText(const MemorySettings& settings) {
  ProfileFile file;
  for (const auto& [name, value] : settings.All()) file.Write(name.first, name.second, value);
  std::string text = file.Serialize();
  std::erase(text, '\r');
  return text;
}

}  // namespace quorvane

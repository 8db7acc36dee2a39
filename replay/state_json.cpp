// The state of the whole program as one JSON object, for scripts that look at what a session led to.

#include <utility>

#include "base/text.h"
#include "records/profile_file.h"
#include "replay/outputs.h"

namespace quorvane {
namespace {

using Member = std::pair<std::string, std::string>;  // name, JSON of the value

// Texts may come from journals and files of any bytes; JSON is UTF-8.
std::string Text(const std::string& text) {
  return JsonString(TextFromBytes(text));
}

std::string Flag(bool value) {
  return value ? "true" : "false";
}

std::string Object(const std::vector<Member>& members, const std::string& between) {
  std::string json = "{" + between;
  const char* separator = "";
  for (const auto& [name, value] : members) {
    json += separator + Text(name) + ": " + value;
    separator = between.empty() ? ", " : ",\n";
  }
  return json + between + "}";
}

template <typename Range, typename ToJson>
std::string Array(const Range& range, ToJson toJson) {
  std::string json = "[";
  const char* separator = "";
  for (const auto& element : range) {
    json += separator + toJson(element);
    separator = ", ";
  }
  return json + "]";
}

std::string Number(std::int64_t value) {
  return std::to_string(value);
}

std::string RaceJson(Program& program) {
  const RaceState& race = program.race();
  const frmJudge& judge = program.judge();
  return Object({{"RaceNumber", Number(race.RaceNumber)},
                 {"LastRaceRun", Number(race.LastRaceRun)},
                 {"HeatsPerRound", Number(race.HeatsPerRound)},
                 {"NumberReflys", Number(race.NumberReflys)},
                 {"RaceMode", Number(race.RaceMode)},
                 {"IsFaiMode", Flag(race.IsFaiMode)},
                 {"RaceActive", Flag(race.RaceActive)},
                 {"RaceHolding", Flag(race.RaceHolding)},
                 {"ManualStart", Flag(race.ManualStart)},
                 {"RaceDone", Flag(race.RaceDone)},
                 {"StartInfoPending", Flag(race.StartInfoPending)},
                 {"ReflyMode", Flag(race.ReflyMode)},
                 {"RaceLoaded", Flag(race.RaceLoaded)},
                 {"RaceStartRef", Number(race.RaceStartRef)},
                 {"CommActive", Flag(race.CommActive)},
                 {"LaneColorScheme", Number(race.LaneColorScheme)},
                 {"ProjectFile", Text(race.ProjectFile)},
                 {"ProjectBaseName", Text(race.ProjectBaseName)},
                 {"ResultsFile", Text(race.ResultsFile)},
                 {"LaneStartOffset", Number(judge.LaneStartOffset())},
                 {"Heat", Number(judge.Heat())},
                 {"Round", Number(judge.Round())},
                 {"EventName", Text(judge.EventName())}},
                "\n");
}

std::string EventJson(const LaneEvent& event) {
  return "[" + Number(event.Count) + ", " + Number(event.Source) + ", " + Text(event.Kind) + ", " +
         Text(event.SourceName) + ", " + Number(event.EventTime) + ", " + Number(event.FirstReported) + "]";
}

std::string LaneJson(const frmLane& lane) {
  const auto number = [](std::int64_t value) { return Number(value); };
  std::vector<LaneEvent> events;
  for (int i = 0; i < lane.EventCount(); ++i) events.push_back(lane.Events()[i]);
  return Object({{"TimeBase", Number(lane.TimeBase())},
                 {"LastLapTime", Number(lane.LastLapTime())},
                 {"FinalTime", Number(lane.FinalTime())},
                 {"InNoviceClick", Flag(lane.InNoviceClick())},
                 {"EventCount", Number(lane.EventCount())},
                 {"Events", Array(events, EventJson)},
                 {"CutCount", Number(lane.CutCount())},
                 {"Laps", Number(lane.Laps())},
                 {"LapTarget", Number(lane.LapTarget())},
                 {"CutsBeforeFinish", Number(lane.CutsBeforeFinish())},
                 {"NeedsCutDisplay", Flag(lane.NeedsCutDisplay())},
                 {"PylonCuts", Array(lane.PylonCuts(), number)},
                 {"MissedPylon", Number(lane.MissedPylon())},
                 {"MissedPylonTimes", Array(lane.MissedPylonTimes(), number)},
                 {"Turns", Number(lane.Turns())},
                 {"TurnTimerEnd", Number(lane.TurnTimerEnd())}},
                "\n");
}

// An option button is on or off; the value of a check box is a number.
std::string ValueJson(const Control& control) {
  return control.Kind() == ControlKind::Option ? Flag(control.Value() != 0) : Number(control.Value());
}

std::string PropertyJson(const Control& control, Property property) {
  switch (property) {
    case Property::Caption:
      return Text(control.Caption());
    case Property::Text:
      return Text(control.Text());
    case Property::Value:
      return ValueJson(control);
    case Property::Checked:
      return Flag(control.Checked());
    case Property::Enabled:
      return Flag(control.Enabled());
    case Property::Visible:
      return Flag(control.Visible());
    case Property::BackColor:
      return Text(control.BackColor().Name());
    case Property::ForeColor:
      return Text(control.ForeColor().Name());
    case Property::Tag:
      return Text(control.Tag());
    case Property::ListIndex:
      return Number(control.ListIndex());
    case Property::Items:
      return Array(control.Items(), Text);
    default:
      return "null";
  }
}

std::string ControlJson(const Control& control) {
  std::vector<Member> members;
  for (const Property property : {Property::Caption, Property::Text, Property::Value, Property::Checked,
                                  Property::Enabled, Property::Visible, Property::BackColor,
                                  Property::ForeColor, Property::Tag, Property::ListIndex, Property::Items}) {
    if (!control.Has(property)) continue;
    members.emplace_back(PropertyName(property), PropertyJson(control, property));
  }
  return Object(members, "");
}

std::string ControlsJson(Program& program) {
  std::vector<Member> controls;
  for (const Form* form : program.door().AllForms().All()) {
    for (const Control& control : form->Controls()) {
      controls.emplace_back(control.FullName(), ControlJson(control));
    }
  }
  return Object(controls, "\n");
}

}  // namespace

std::string StateJson(Replay& replay) {
  Program& program = replay.program();
  std::vector<int> lanes = {0, 1, 2, 3};
  return Object({{"time", Number(replay.Now())},
                 {"race", RaceJson(program)},
                 {"lanes", Array(lanes, [&](int i) { return LaneJson(program.lane(i)); })},
                 {"controls", ControlsJson(program)}},
                "\n") +
         "\n";
}

}  // namespace quorvane

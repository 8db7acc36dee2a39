#include "console/race_on_console.h"

#include <algorithm>

#include "console/frm_judge.h"

namespace quorvane {
namespace {

// The race as it stands in the file when it is shown from there, otherwise one of this moment.
RaceRecord HeaderOnConsole(const frmJudge& judge, const RaceState& race, const ProjectSource& project,
                           const LocalDateTime& now) {
  const int number = std::max<int>(race.RaceNumber, 1);
  const int mode = std::clamp<int>(race.RaceMode, 1, 6);
  RaceRecord record;
  if (race.RaceLoaded) record = ReadStandingHeader(project, number);
  if (record.hasRun) {
    if (record.mode == 0) SetMode(record, mode);
    return record;
  }
  record = {};
  record.number = number;
  record.round = race.Round();
  record.heat = race.Heat();
  record.eventName = judge.EventName();
  record.projectFile = project.file;
  record.hasRun = !race.RaceLoaded;
  record.when = now;
  SetMode(record, mode);
  // The number that the save is going to give it.
  if (record.hasRun && race.ReflyMode) record.refly = ReflysCounted(project) + 1;
  return record;
}

}  // namespace

RaceRecord RecordOnConsole(const frmJudge& judge, const RaceState& race, const ProjectSource& project,
                           const LocalDateTime& now) {
  RaceRecord record = HeaderOnConsole(judge, race, project, now);
  // The novice boxes speak of the next race while an old one is shown.
  const bool shownFromFile = race.RaceLoaded && record.hasRun;
  record.comments = judge.txtComments.Text();
  // Nobody has said so yet: a score sheet leaves room for comments.
  if (!record.hasRun && record.comments == kDefaultComments) record.comments.clear();
  MarkLanes(record, project.laneColorScheme);
  for (int i = 0; i < 4; ++i) {
    const frmLane& panel = judge.Lane(i);
    LaneRecord& lane = record.lanes[static_cast<std::size_t>(i)];
    ReadLane(lane, panel.Events(), record.mode);
    if (!shownFromFile && panel.chkNovice.Value() != 0) lane.novice = true;
    // Before the finish the label shows other things than a place.
    if (!record.hasRun || judge.RaceBeingFlown()) continue;
    lane.placing = panel.Status();
    lane.position = panel.Position();
  }
  return record;
}

}  // namespace quorvane

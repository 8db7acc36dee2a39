#include "print/protest_sheet.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <tuple>

#include "base/text.h"
#include "records/race_story.h"
#include "tests/print/races.h"
#include "tests/print/told.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

// A lane's log in short: "L1@8 C0P2@12 T1@15 -C0P2@13", and the figures that follow from it.
LaneRecord LaneOf(const std::string& log, int target = 10, bool novice = false) {
  LaneRecord lane;
  lane.lapTarget = target;
  lane.novice = novice;
  for (std::string text : Split(log, ' ')) {
    const auto at = text.find('@');
    const auto count = text.find_first_of("0123456789");
    const std::string kind = text.substr(0, count);
    const std::int32_t time = LeadingLong(text.substr(at + 1)) * 1000;
    const std::string pylon = text.substr(count + 1, at - count - 1);
    const int laps = text[count] - '0';
    const char* by = kind == "L" ? "TM" : kind == "T" ? "PY" : "P2";
    lane.entries.push_back({kind, laps, by, pylon, time, kind == "-C" ? time - 1000 : 0});
    if (kind == "L") lane.laps.push_back({laps, time, novice && laps == 1});
    if (kind == "C") lane.cuts.push_back({pylon, time, laps});
    if (kind == "T") lane.turns.push_back(time);
  }
  return lane;
}

RaceRecord RaceOf(const LaneRecord& lane, bool othersTurn) {
  RaceRecord race = FlownRace();
  race.lanes[0] = lane;
  if (othersTurn) race.lanes[1].turns = {1000};
  return race;
}

TEST(RaceStory, DoubtsLapsWithoutTheirTurnAndTurnsWithoutTheirLap) {
  const struct {
    const char* log;
    const char* doubtful;  // the times of these rows
    int target = 10;
    bool novice = false;
    bool othersTurn = true;
  } cases[] = {{"T0@4 L1@8 T1@11 L2@15", ""},
               {"T0@4 L1@8 L2@15 T2@18 L3@22", "15"},
               {"T0@4 L1@8 T1@11 T1@18 L2@22", "11"},
               {"L1@8 L2@15", "8 15"},
               {"L1@8 L2@15", "", 10, false, false},
               {"T0@4 L1@8 T1@11", "11"},
               {"T0@4 C0P1@5 L1@8 -C1P1@9 T1@11 L2@15", ""},
               {"T0@4 L1@8 T1@11 L2@15 T2@18 L3@22", "", 2},
               {"L1@15 T1@12 L2@15", "", 10, true},
               {"T0@12 L1@15 L2@15 T2@18 L3@22", "", 10, true},
               {"", ""}};
  for (const auto& c : cases) {
    const LaneRecord lane = LaneOf(c.log, c.target, c.novice);
    std::string doubtful;
    for (const StoryRow& row : StoryOf(RaceOf(lane, c.othersTurn), lane)) {
      EXPECT_EQ(row.doubtful, row.remark.find("WITHOUT") != std::string::npos);
      if (row.doubtful) doubtful += (doubtful.empty() ? "" : " ") + row.time.substr(0, row.time.find('.'));
    }
    EXPECT_EQ(doubtful, c.doubtful) << c.log;
  }
}

RaceRecord ProtestedRace() {
  RaceRecord race = FlownRace();
  race.recovered = "4.00 s not judged";
  race.amendments = 1;
  race.radio = {3, {{"Judges 2", 40, 12345}, {"Timers", 900, 400}, {"Display", 0, 65000}}};
  for (LaneRecord& lane : race.lanes) {
    const LaneRecord frame = lane;
    lane = LaneOf("T0@4 C0P1@6 L1@8 -C1P2@10 T1@11 L2@15 L3@22 C30@25 T3@27 T3@30 L4@34 T4@37 L5@44", 5);
    std::tie(lane.lane, lane.name, lane.low, lane.placing, lane.final) =
        std::tie(frame.lane, frame.name, frame.low, frame.placing, frame.final);
  }
  LaneRecord& novice = race.lanes[1];
  novice = LaneOf("T0@10 L1@15 L2@15 T2@18 L3@22 T3@25", 3, true);
  novice.lane = 2;
  novice.placing = "DNF";
  novice.entries[1].by = novice.entries[2].by = "TM or hand";
  const EntryRecord lap = race.lanes[0].entries[2], cut = race.lanes[0].entries[1];
  race.lanes[0].corrections = {{50000, "struck", "TM", lap, {}},
                               {51000, "moved", "P1", cut, cut},
                               {0, "inserted", "hand", {}, lap},
                               {0, "struck", "hand", lap, {}, MomentOf(2026, 11, 21, 14, 5)}};
  race.lanes[0].places = {{MomentOf(2026, 11, 21, 14, 5), "First", "DNF"}};
  race.amendedComments = {{MomentOf(2026, 11, 21, 14, 5), "No comments", race.comments}};
  race.lanes[2] = LaneOf("");
  race.lanes[2].lane = 3;
  return race;
}

TEST(RadioRecord, IsReadFromAnyText) {
  const std::array<const char*, 3> cases[] = {
      {"3", "Judges 2;12345;40,Display;65000;0",
       "3 frames damaged; silent for more than 5 s: Judges 2 (12.3 s), Display (not heard in the race)"},
      {"1", ";;,Timers;4000;9", "1 frame damaged; silent for more than 5 s: no station"},
      {"1e99", "a;9e99;1,b;1", "999999999 frames damaged; silent for more than 5 s: a (1000000.0 s)"},
      {"-1", "none", ""}};
  for (const auto& c : cases) {
    const auto radio =
        ReadRadio([&](const std::string& key) { return std::string(c[key == "FramesDamaged" ? 0 : 1]); });
    EXPECT_EQ(radio ? RadioText(*radio) : "", c[2]);
  }
}

TEST(ProtestSheet, PagesAreAsTheyWere) {
  const Box a4{0, 0, 210, 297};
  RaceRecord longest = ProtestedRace();
  for (LaneRecord& lane : longest.lanes) {
    lane.corrections.assign(kMostCorrections, {1000, "moved " + std::string(99, 'x'), "somebody", {}, {}});
  }
  for (const auto& [name, race] :
       {std::pair("protest", ProtestedRace()), {"protest-blank", FlownRace(false)}}) {
    std::string told;
    for (int page = 1; page <= frmProtest::Pages(a4, race); ++page) {
      RecordingSurface surface(a4);
      frmProtest::PrintPage(surface, race, page, "Quorvane 0.1.0", MomentOf(2026, 11, 21, 0, 30, 0));
      told += fmt::format("page {}\n", page) + Told(surface);
    }
    ExpectGolden(TestData() + "/print/" + std::string(name) + ".page", told);
  }
  std::string breaks;  // the words on each page of sheets of every height
  for (int height = 270; height < 330; height += 3) {
    const Box paper{0, 0, 210, static_cast<double>(height)};
    breaks += std::to_string(height) + ":";
    for (int page = 1; page <= frmProtest::Pages(paper, ProtestedRace()); ++page) {
      RecordingSurface surface(paper);
      frmProtest::PrintPage(surface, ProtestedRace(), page, "", {});
      breaks += " " + std::to_string(surface.words.size());
    }
    breaks += "\n";
  }
  ExpectGolden(TestData() + "/print/protest-breaks.txt", breaks);
  for (const Box& paper : {a4, Box{0, 0, 215.9, 279.4}, Box{-300, 118, 4760, 6800}, Box{0, 0, 297, 210}}) {
    const int pages = frmProtest::Pages(paper, longest);
    EXPECT_GT(pages, 10);
    for (int page = 1; page <= pages; ++page) {
      RecordingSurface surface(paper, 0.9, 1.4);
      frmProtest::PrintPage(surface, longest, page, "Quorvane 0.1.0", {});
      ExpectTidy(surface);
      if (HasFatalFailure()) return;
    }
  }
  RecordingSurface nothing({0, 0, 0, 0});
  frmProtest::PrintPage(nothing, longest, frmProtest::Pages({}, longest), "", {});
  EXPECT_TRUE(nothing.words.empty());
}

}  // namespace
}  // namespace quorvane

#include "print/heat_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>

#include "tests/print/races.h"
#include "tests/print/recording_surface.h"

namespace quorvane {
namespace {

constexpr Box kA4{0, 0, 210, 297};
constexpr Box kLetter{0, 0, 215.9, 279.4};
const LocalDateTime kPrinted{2026, 11, 21, 0, 30, 0};

RecordingSurface Print(const RaceRecord& race, Box page = kA4, double characterWidth = 0.55,
                       double lineHeight = 1.2) {
  RecordingSurface surface(page, characterWidth, lineHeight);
  frmPrint(race, "Quorvane 0.1.0", kPrinted).PrintDocument(surface);
  return surface;
}

std::string Long(std::size_t length, const std::string& word) {
  std::string text;
  while (text.size() < length) text += word;
  return text;
}

RaceRecord ExtremeRace() {
  RaceRecord race = FlownRace();
  race.number = 32767;
  race.refly = 32767;
  race.reflownBy = 32767;
  race.round = -32768;
  race.heat = 32767;
  race.modeName = Long(300, "Mode ");
  race.eventName = Long(5000, "\xC3\x84rger\xC3\xBC");
  race.comments = Long(20000, "word \r\n\n") + Long(20000, "unbroken");
  race.projectFile = "/" + Long(3000, "folder") + ".ini";
  for (LaneRecord& lane : race.lanes) {
    lane = FlownLane(lane.lane, 11, 11);
    lane.name = Long(400, "Low High Green ");
    lane.novice = lane.lane % 2 == 0;
    lane.placing = Long(400, "Disqualified ");
    lane.final = 999999;
    for (LapRecord& lap : lane.laps) lap.time *= 20000;
    for (int i = 0; i < 90; ++i) lane.cuts.push_back({"MP3", 1000000000 + i, i});
  }
  return race;
}

struct Case {
  std::string name;
  RaceRecord race;
};

std::vector<Case> Cases() {
  std::vector<Case> cases = {{"flown", FlownRace()},
                             {"blank", UnflownRace(2)},
                             {"blank FAI", UnflownRace(5)},
                             {"extreme", ExtremeRace()},
                             {"nothing known", RaceRecord()}};
  RaceRecord mixed = FlownRace();
  mixed.refly = 1;
  mixed.lanes[0] = FlownLane(1, 11, 11);
  mixed.lanes[0].cuts = {{"P2", 34560, 4}};
  mixed.lanes[1] = NoviceLane(2);
  mixed.lanes[2] = FlownLane(3, 4);
  mixed.lanes[3] = FlownLane(4, 0);
  cases.push_back({"mixed", mixed});
  RaceRecord alone = FlownRace();
  for (int lane = 1; lane < 4; ++lane) alone.lanes[static_cast<std::size_t>(lane)].flies = false;
  cases.push_back({"one lane", alone});
  RaceRecord hostile = FlownRace();
  hostile.lanes[0].lapTarget = -5;
  hostile.lanes[1].lapTarget = 9999;
  hostile.lanes[2].laps = {{-3, 5, false, true},
                           {0, 5, false, false},
                           {11, std::numeric_limits<int>::min(), false, false},
                           {200, 7, false, true},
                           {10, std::numeric_limits<int>::max(), true, true}};
  hostile.eventName = "a\tb\r\nc";
  hostile.comments = std::string("\xFF\xFE\x80\x80", 4) + std::string(3, '\0') + "end";
  cases.push_back({"hostile", hostile});
  return cases;
}

bool Inside(const Box& inner, const Box& outer) {
  constexpr double kSlack = 1e-6;
  return inner.left >= outer.left - kSlack && inner.top >= outer.top - kSlack &&
         inner.Right() <= outer.Right() + kSlack && inner.Bottom() <= outer.Bottom() + kSlack;
}

bool Overlap(const Box& a, const Box& b) {
  constexpr double kSlack = 1e-6;
  return a.left < b.Right() - kSlack && b.left < a.Right() - kSlack && a.top < b.Bottom() - kSlack &&
         b.top < a.Bottom() - kSlack;
}

Box Around(const RecordingSurface::Stroke& line) {
  return {std::min(line.fromX, line.toX), std::min(line.fromY, line.toY), std::abs(line.toX - line.fromX),
          std::abs(line.toY - line.fromY)};
}

bool Crosses(const RecordingSurface::Stroke& line, const Box& box) {
  const Box around = Around(line);
  return around.left < box.Right() && box.left < around.Right() && around.top < box.Bottom() &&
         box.top < around.Bottom();
}

// The page's own margin is kept too: printers do not reach the edge.
void ExpectTidy(const RecordingSurface& surface, const std::string& what) {
  const Box page = surface.Page();
  const double margin = 0.03 * std::min(page.width, page.height);
  const Box printable{page.left + margin, page.top + margin, page.width - 2 * margin,
                      page.height - 2 * margin};
  for (const auto& line : surface.lines) ASSERT_TRUE(Inside(Around(line), printable)) << what;
  for (const auto& area : surface.areas) ASSERT_TRUE(Inside(area.box, printable)) << what;
  for (std::size_t i = 0; i < surface.words.size(); ++i) {
    const auto& word = surface.words[i];
    ASSERT_TRUE(Inside(word.ink, printable)) << what << ": " << word.text;
    for (std::size_t j = i + 1; j < surface.words.size(); ++j) {
      ASSERT_FALSE(Overlap(word.ink, surface.words[j].ink))
          << what << ": " << word.text << " / " << surface.words[j].text;
    }
    for (const auto& line : surface.lines) {
      ASSERT_FALSE(Crosses(line, word.ink)) << what << ": a line through " << word.text;
    }
  }
}

TEST(HeatReport, NothingLeavesThePageOrOverlapsWhateverTheRaceAndTheFont) {
  const std::vector<Box> pages = {kA4, kLetter, {-300, 118, 4760, 6800}, {0, 0, 297, 210}};
  for (const Case& example : Cases()) {
    for (const Box& page : pages) {
      for (const double characterWidth : {0.3, 0.55, 0.9}) {
        for (const double lineHeight : {1.0, 1.2, 1.4}) {
          ExpectTidy(Print(example.race, page, characterWidth, lineHeight),
                     example.name + " " + std::to_string(page.width) + " " + std::to_string(characterWidth) +
                         " " + std::to_string(lineHeight));
          if (HasFatalFailure()) return;
        }
      }
    }
  }
}

TEST(HeatReport, HeadAndFootNameTheRace) {
  struct {
    std::function<void(RaceRecord&)> change;
    std::vector<std::string> shown;
  } const cases[] = {
      {[](RaceRecord&) {},
       {"Fall Classic", "12", "3", "2", "AMA 1324", "21-Nov-2026", "2:05 PM", "Wind from the west.",
        "21-Nov-2026.ini", "Quorvane 0.1.0", "Printed 21-Nov-2026 12:30 AM"}},
      {[](RaceRecord& race) { race.refly = 2; }, {"12 REFLY"}},
      {[](RaceRecord& race) { race.reflownBy = 2; }, {"12 (reflown)"}},
      {[](RaceRecord& race) { race.refly = 1, race.reflownBy = 2; }, {"12 REFLY (reflown)"}},
      {[](RaceRecord& race) { race.eventName.clear(); }, {"Heat Report"}},
  };
  for (const auto& example : cases) {
    RaceRecord race = FlownRace();
    example.change(race);
    const RecordingSurface page = Print(race);
    for (const std::string& text : example.shown) EXPECT_NE(page.Find(text), nullptr) << text;
  }
}

TEST(HeatReport, ALaneShowsItsResultLapsSplitsAndCuts) {
  RaceRecord race = FlownRace();
  for (int lane = 1; lane < 4; ++lane) race.lanes[static_cast<std::size_t>(lane)].flies = false;
  race.lanes[0].laps[9].time = 75500;
  race.lanes[0].final = 75500;
  race.lanes[0].cuts = {{"P2", 34560, 4}, {"MP1", 80000, 10}};
  const RecordingSurface page = Print(race);
  for (const char* text : {"Lane 1", "Low Green", "First", "1:15.50", "P2 34.56", "MP1 80.00", "8.00",
                           "64.00", "75.50", "11.50", "Pilot", "Caller"}) {
    EXPECT_NE(page.Find(text), nullptr) << text;
  }
  EXPECT_EQ(page.Count("7.00"), 8) << "the splits of laps 2 to 9";
  EXPECT_TRUE(page.Find("75.50")->font.bold) << "the finishing lap";
  EXPECT_FALSE(page.Find("64.00")->font.bold);
  const bool shaded = std::any_of(page.areas.begin(), page.areas.end(), [&](const auto& area) {
    return area.fill && Inside(page.Find("75.50")->ink, area.box);
  });
  EXPECT_TRUE(shaded);
  EXPECT_EQ(page.areas[1].fill, Color::Rgb(0x60FF60)) << "the low half of the swatch";
  EXPECT_EQ(page.areas[0].fill, std::nullopt);
  EXPECT_EQ(page.Find("Lane 2"), nullptr);
  EXPECT_EQ(page.Find("11"), nullptr);
}

TEST(HeatReport, LapNumbersFollowTheTargetTheNoviceAndTheRules) {
  struct {
    const char* name;
    RaceRecord race;
    std::vector<std::pair<const char*, int>> counts;  // how often a number stands in the lap column
  } cases[] = {{"one lane owes a lap", FlownRace(), {{"11", 1}, {"10", 4}}},
               {"a novice flies nine", FlownRace(), {{"10", 3}, {"9", 4}, {"9 Laps", 1}}},
               {"blank sheet", UnflownRace(2), {{"11", 4}}},
               {"blank FAI sheet", UnflownRace(5), {{"11", 0}, {"10", 3}, {"Lane 4", 0}}}};
  cases[0].race.lanes[2] = FlownLane(3, 11, 11);
  cases[1].race.lanes[0] = NoviceLane(1);
  for (const auto& example : cases) {
    RaceRecord race = example.race;
    const RecordingSurface page = Print(race);
    for (const auto& [text, count] : example.counts)
      EXPECT_EQ(page.Count(text), count) << example.name << " " << text;
  }
}

TEST(HeatReport, ANovicesFirstFlownLapHasItsFullSplit) {
  RaceRecord race = FlownRace();
  for (int lane = 1; lane < 4; ++lane) race.lanes[static_cast<std::size_t>(lane)].flies = false;
  race.lanes[0] = NoviceLane(1);
  const RecordingSurface page = Print(race);
  EXPECT_EQ(page.Count("15.00"), 2) << "time and split of lap 1";
  EXPECT_EQ(page.Count("7.00"), 8);
}

TEST(HeatReport, ASplitWithoutTheLapBeforeStaysEmpty) {
  RaceRecord race = FlownRace();
  race.lanes[0].laps.erase(race.lanes[0].laps.begin() + 4);
  EXPECT_EQ(Print(race).Count("7.00"), 3 * 9 + 7);
}

TEST(HeatReport, ARaceNotYetRunLeavesItsPlacesRuled) {
  const RecordingSurface page = Print(UnflownRace());
  EXPECT_EQ(page.Find("21-Nov-2026"), nullptr);
  EXPECT_EQ(page.Find("nt"), nullptr);
  EXPECT_EQ(page.Find("0"), nullptr) << "no count of cuts";
  EXPECT_GT(page.lines.size(), Print(FlownRace()).lines.size());
  EXPECT_EQ(Print(FlownRace()).Count("Pilot"), 4);
}

TEST(HeatReport, TooMuchTextShrinksFirstAndIsThenCut) {
  RaceRecord race = FlownRace();
  race.eventName = Long(60, "Event ");
  const RecordingSurface shrunk = Print(race);
  EXPECT_LT(shrunk.words[0].font.size, Print(FlownRace()).words[0].font.size);
  EXPECT_THAT(shrunk.words[0].text, testing::Not(testing::HasSubstr("\xE2\x80\xA6")));
  const RecordingSurface cut = Print(ExtremeRace());
  EXPECT_THAT(cut.words[0].text, testing::EndsWith("\xE2\x80\xA6"));
  EXPECT_EQ(cut.Count("\xE2\x80\xA6"), 4) << "the cuts that find no room";
}

TEST(HeatReport, PositionsFollowThePagesWidth) {
  const RecordingSurface small = Print(FlownRace(), {0, 0, 210, 297});
  const RecordingSurface large = Print(FlownRace(), {-50, 70, 2100, 2970});
  ASSERT_EQ(small.words.size(), large.words.size());
  for (std::size_t i = 0; i < small.words.size(); ++i) {
    EXPECT_NEAR(small.words[i].ink.left * 10 - 50, large.words[i].ink.left, 1e-6);
    EXPECT_NEAR(small.words[i].ink.top * 10 + 70, large.words[i].ink.top, 1e-6);
  }
}

TEST(HeatReport, APageWithoutSizeStaysEmpty) {
  EXPECT_TRUE(Print(FlownRace(), {0, 0, 0, 0}).words.empty());
}

}  // namespace
}  // namespace quorvane

#include "print/heat_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>

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

std::map<std::string, RaceRecord> Examples() {
  std::map<std::string, RaceRecord> examples = {
      {"flown", FlownRace()},     {"blank", UnflownRace(2)},       {"blank FAI", UnflownRace(5)},
      {"extreme", ExtremeRace()}, {"nothing known", RaceRecord()}, {"one lane", OneLane(FlownLane(1, 10))}};
  RaceRecord& mixed = examples["mixed"] = FlownRace();
  mixed.refly = 1;
  mixed.lanes = {FlownLane(1, 11, 11), NoviceLane(2), FlownLane(3, 4), FlownLane(4, 0)};
  mixed.lanes[0].cuts = {{"P2", 34560, 4}};
  RaceRecord& hostile = examples["hostile"] = FlownRace();
  hostile.lanes[0].lapTarget = -5;
  hostile.lanes[1].lapTarget = 9999;
  hostile.lanes[2].laps = {{-3, 5, false, true},
                           {0, 5, false, false},
                           {11, std::numeric_limits<int>::min(), false, false},
                           {200, 7, false, true},
                           {10, std::numeric_limits<int>::max(), true, true}};
  hostile.eventName = "a\tb\r\nc";
  hostile.comments = std::string("\xFF\xFE\x80\x80", 4) + std::string(3, '\0') + "end";
  return examples;
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

// The page's own margin is kept too: printers do not reach the edge.
void ExpectTidy(const RecordingSurface& surface, const std::string& what) {
  const Box page = surface.Page();
  const double margin = 0.03 * std::min(page.width, page.height);
  const Box printable{page.left + margin, page.top + margin, page.width - 2 * margin,
                      page.height - 2 * margin};
  for (const auto& line : surface.lines) ASSERT_TRUE(Inside(Around(line), printable)) << what;
  for (const auto& area : surface.areas) ASSERT_TRUE(Inside(area.box, printable)) << what;
  for (const auto& word : surface.words) {
    ASSERT_TRUE(Inside(word.ink, printable)) << what << ": " << word.text;
    for (const auto& other : surface.words) {
      ASSERT_FALSE(&other != &word && Overlap(word.ink, other.ink))
          << what << ": " << word.text << " / " << other.text;
    }
    for (const auto& line : surface.lines) {
      ASSERT_FALSE(Overlap(Around(line), word.ink)) << what << ": a line through " << word.text;
    }
  }
}

TEST(HeatReport, NothingLeavesThePageOrOverlapsWhateverTheRaceAndTheFont) {
  for (const auto& [name, race] : Examples()) {
    for (const Box& page : {kA4, kLetter, Box{-300, 118, 4760, 6800}, Box{0, 0, 297, 210}}) {
      for (const double characterWidth : {0.3, 0.55, 0.9}) {
        for (const double lineHeight : {1.0, 1.2, 1.4}) {
          ExpectTidy(Print(race, page, characterWidth, lineHeight), name + " " + std::to_string(page.width) +
                                                                        " " + std::to_string(characterWidth) +
                                                                        " " + std::to_string(lineHeight));
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  }
}

// How often each text stands on the page.
TEST(HeatReport, ShowsWhatIsKnownOfTheRace) {
  RaceRecord refly = FlownRace(), noon = FlownRace(), reflown = FlownRace(), both = FlownRace(),
             more = FlownRace(), novice = FlownRace(), gap = FlownRace();
  refly.refly = reflown.reflownBy = both.refly = both.reflownBy = 2;
  more.lanes[2] = FlownLane(3, 11, 11);
  novice.lanes[0] = NoviceLane(1);
  gap.lanes[0].laps.erase(gap.lanes[0].laps.begin() + 4);
  gap.eventName.clear();
  noon.when.hour = 12;
  noon.when.minute = 10;
  const struct {
    const char* what;
    RaceRecord race;
    std::vector<std::pair<const char*, int>> counts;
  } cases[] = {
      {"refly", refly, {{"12 REFLY", 1}}},
      {"at noon", noon, {{"12:10 PM", 1}}},
      {"reflown", reflown, {{"12 (reflown)", 1}}},
      {"a refly that was reflown", both, {{"12 REFLY (reflown)", 1}}},
      {"no event, and no split without the lap before", gap, {{"Heat Report", 1}, {"7.00", 3 * 9 + 7}}},
      {"one lane owes a lap", more, {{"11", 1}, {"10", 4}}},
      {"a novice flies nine", novice, {{"10", 3}, {"9", 4}, {"9 Laps", 1}}},
      {"a novice's first flown lap has its full split", OneLane(NoviceLane(1)), {{"15.00", 2}, {"7.00", 8}}},
      {"not yet run", UnflownRace(2), {{"11", 4}, {"21-Nov-2026", 0}, {"nt", 0}, {"0", 0}}},
      {"not yet run, FAI", UnflownRace(5), {{"11", 0}, {"10", 3}, {"Lane 4", 0}}}};
  for (const auto& c : cases) {
    const RecordingSurface page = Print(c.race);
    for (const auto& [text, count] : c.counts) EXPECT_EQ(page.Count(text), count) << c.what << ": " << text;
  }
  const RecordingSurface flown = Print(FlownRace());
  for (const char* text :
       {"Fall Classic", "12", "3", "2", "AMA 1324", "21-Nov-2026", "2:05 PM", "Wind from the west.",
        "21-Nov-2026.ini", "Quorvane 0.1.0", "Printed 21-Nov-2026 12:30 AM"})
    EXPECT_NE(flown.Find(text), nullptr) << text;
  EXPECT_EQ(flown.Count("Pilot"), 4);
  EXPECT_LT(flown.lines.size(), Print(UnflownRace()).lines.size()) << "places to write on";
}

TEST(HeatReport, ALaneShowsItsResultLapsSplitsAndCuts) {
  RaceRecord race = OneLane(FlownLane(1, 10));
  race.lanes[0].laps[9].time = race.lanes[0].final = 75500;
  race.lanes[0].cuts = {{"P2", 34560, 4}, {"MP1", 80000, 10}};
  const RecordingSurface page = Print(race);
  for (const char* text : {"Lane 1", "Low Green", "First", "1:15.50", "P2 34.56", "MP1 80.00", "8.00",
                           "64.00", "75.50", "11.50", "Pilot", "Caller"}) {
    EXPECT_NE(page.Find(text), nullptr) << text;
  }
  EXPECT_EQ(page.Count("7.00"), 8) << "the splits of laps 2 to 9";
  EXPECT_TRUE(page.Find("75.50")->font.bold) << "the finishing lap";
  EXPECT_FALSE(page.Find("64.00")->font.bold);
  EXPECT_TRUE(std::any_of(page.areas.begin(), page.areas.end(), [&](const auto& area) {
    return area.fill && Inside(page.Find("75.50")->ink, area.box);
  })) << "and it is shaded";
  EXPECT_EQ(page.areas[1].fill, Color::Rgb(0x60FF60)) << "the low half of the swatch";
  EXPECT_EQ(page.areas[0].fill, std::nullopt);
  EXPECT_EQ(page.Find("Lane 2"), nullptr);
}

TEST(HeatReport, TooMuchTextIsCut) {
  const RecordingSurface cut = Print(ExtremeRace());
  EXPECT_THAT(cut.words[0].text, testing::EndsWith("\xE2\x80\xA6"));
  EXPECT_EQ(cut.Count("\xE2\x80\xA6"), 4) << "the cuts that find no room";
}

TEST(HeatReport, PositionsFollowThePagesWidth) {
  const Box small = Print(FlownRace()).words.back().ink;
  const Box large = Print(FlownRace(), {-50, 70, 2100, 2970}).words.back().ink;
  EXPECT_NEAR(small.left * 10 - 50, large.left, 1e-6);
  EXPECT_NEAR(small.top * 10 + 70, large.top, 1e-6);
  EXPECT_TRUE(Print(FlownRace(), {0, 0, 0, 0}).words.empty());
}

}  // namespace
}  // namespace quorvane

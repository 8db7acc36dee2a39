#include "print/heat_report.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>

#include "print/print_preview.h"
#include "tests/print/races.h"
#include "tests/print/told.h"
#include "tests/support/test_data.h"

namespace quorvane {
namespace {

constexpr Box kA4{0, 0, 210, 297};

RecordingSurface Print(const RaceRecord& race, Box page = kA4, double characterWidth = 0.55,
                       double lineHeight = 1.2) {
  RecordingSurface surface(page, characterWidth, lineHeight);
  frmPrint::PrintDocument(surface, race, "Quorvane 0.1.0", MomentOf(2026, 11, 21, 0, 30, 0));
  return surface;
}

std::string Long(std::size_t length, const std::string& word) {
  std::string text;
  while (text.size() < length) text += word;
  return text;
}

RaceRecord ExtremeRace() {
  RaceRecord race = FlownRace();
  race.number = race.refly = race.reflownBy = race.heat = 32767;
  race.round = -32768;
  race.modeName = Long(300, "Mode ");
  race.eventName = Long(5000, "\xC3\x84rger\xC3\xBC");
  race.comments = Long(20000, "word \r\n\n") + Long(20000, "unbroken");
  race.projectFile = "/" + Long(3000, "folder") + ".ini";
  for (LaneRecord& lane : race.lanes) {
    lane = FlownLane(lane.lane, 11, 11, lane.lane % 2 == 0);
    lane.name = Long(400, "Low High Green ");
    lane.placing = Long(400, "Disqualified ");
    lane.final = 999999;
    for (LapRecord& lap : lane.laps) lap.time *= 20000;
    for (int i = 0; i < 90; ++i) lane.cuts.push_back({"MP3", 1000000000 + i, i});
  }
  return race;
}

// Laps and texts that only a file edited by hand can bring.
RaceRecord HostileRace() {
  constexpr int kMost = std::numeric_limits<int>::max();
  RaceRecord race = FlownRace();
  race.lanes[0].lapTarget = -5;
  race.lanes[1].lapTarget = 9999;
  race.lanes[2].laps = {{-3, 5, false, true}, {0, 5}, {11, -kMost}, {200, 7, false, true}, {10, kMost, true}};
  race.lanes[3].laps.erase(race.lanes[3].laps.begin() + 4);  // no split without the lap before
  race.eventName = "a\tb\r\nc";
  race.comments = std::string("\xFF\xFE\x80\x80", 4) + std::string(3, '\0') + "end";
  return race;
}

std::map<std::string, RaceRecord> Examples() {
  std::map<std::string, RaceRecord> examples = {
      {"flown", FlownRace()},     {"blank", FlownRace(false)},     {"blank-fai", FlownRace(false, 5)},
      {"extreme", ExtremeRace()}, {"nothing-known", RaceRecord()}, {"mixed", FlownRace()},
      {"hostile", HostileRace()}};
  RaceRecord& mixed = examples["mixed"];
  mixed.refly = mixed.reflownBy = 1;
  mixed.eventName = mixed.comments = "";
  mixed.lanes = {FlownLane(1, 11, 11), FlownLane(2, 10, 10, true), FlownLane(3, 4), FlownLane(4, 0)};
  mixed.lanes[0].cuts = {{"P2", 34560, 4}, {"MP1", 80000, 10}};
  for (int i = 0; i < 12; ++i) mixed.lanes[2].cuts.push_back({"ME", 1000 * i, 1});
  mixed.lanes[3].flies = false;
  return examples;
}

TEST(HeatReport, PagesAreAsTheyWere) {
  for (const auto& [name, race] : Examples()) {
    ExpectGolden(TestData() + "/print/" + name + ".page", Told(Print(race)));
  }
  EXPECT_TRUE(Print(FlownRace(), {0, 0, 0, 0}).words.empty());
}

TEST(HeatReport, EveryCutIsListedWhereThereIsRoom) {
  for (const int cuts : {8, 10, 18, 19}) {
    RaceRecord race = FlownRace();
    for (int i = 0; i < cuts; ++i) race.lanes[0].cuts.push_back({"P1", 1000 * i, 1});
    const auto words = Print(race).words;
    EXPECT_EQ(std::ranges::count(words, "\xE2\x80\xA6", &RecordingSurface::Words::text), cuts > 18) << cuts;
  }
}

TEST(HeatReport, NothingLeavesThePageOrOverlapsWhateverTheRaceAndTheFont) {
  for (const auto& [name, race] : Examples()) {
    for (const Box& page : {kA4, Box{0, 0, 215.9, 279.4}, Box{-300, 118, 4760, 6800}, Box{0, 0, 297, 210}}) {
      for (const auto& [width, height] : {std::pair(0.3, 1.4), {0.3, 1.0}, {0.9, 1.0}, {0.9, 1.4}}) {
        SCOPED_TRACE(fmt::format("{} {} {} {}", name, page.width, width, height));
        ExpectTidy(Print(race, page, width, height));
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(PrintPreview, OpensAtFullSizeInFrontOfTheOperator) {
  const struct : EventClock {
    std::int64_t Now() const override { return 0; }
  } clock;
  Forms forms(clock);
  float shown = 0;
  PrintPreview preview(
      forms, [&](float scale) { shown = scale; }, [] {});
  preview.SetScale(3);
  EXPECT_EQ(shown, 0.375F);
  preview.Open();
  EXPECT_EQ(shown, 1.0F);
  EXPECT_EQ(forms.Active(), &preview);
}

}  // namespace
}  // namespace quorvane

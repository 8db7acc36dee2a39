// Hours of traffic: nothing is lost that comes again, nothing is counted wrong, nothing grows.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

#include "tests/support/field_link.h"
#include "tests/support/naive_receiver.h"

namespace quorvane {
namespace {

std::int64_t ResidentKb() {
  std::int64_t total = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE) / 1024;
}

class Soak {
 public:
  explicit Soak(const field::FieldOptions& options) : rig_(true), link_(rig_, options) {
    link_.onByte = [this](std::uint8_t byte) { Count(byte); };
    rig_.Load();
    rig_.Click("frmJudge.lblComm");
    link_.field.BeginHeats(0);
  }

  // Heat after heat, until the field has sent so many frames.
  void Run(std::int64_t frames) {
    while (link_.field.counters().sent < frames) {
      link_.RunUntil(rig_.platform.ClockMs() + 1000);
      for (const field::HeatResult& heat : link_.field.TakeResults()) Check(heat);
    }
    const std::int64_t end = rig_.platform.ClockMs() + 10000;
    while (bytes_ < link_.field.counters().Bytes() && rig_.platform.ClockMs() < end) link_.Step(end);
  }

  void CheckCounters(bool clean) {
    const LinkCounters& shown = rig_.program.link().Counters();
    const field::LineCounters& sent = link_.field.counters();
    EXPECT_EQ(shown.GoodFrames(), good_);
    EXPECT_EQ(shown.DamagedFrames(), damaged_);
    EXPECT_EQ(shown.FramesSent(), link_.field.Heard().polls);
    EXPECT_EQ(bytes_, sent.Bytes());
    const int buffered = plain_.Count();
    EXPECT_EQ(shown.GoodFrames() * 36 + shown.BytesSkipped(buffered) + std::max(buffered, 0), sent.Bytes());
    EXPECT_EQ(clean, shown.GoodFrames() == sent.sent);
    EXPECT_LE(shown.GoodFrames(), sent.Good());
    std::cout << "sent " << sent.sent << " (damaged " << sent.damaged << ", lost " << sent.lost << ", noise "
              << sent.noise << " bytes); heard good " << shown.GoodFrames() << ", damaged "
              << shown.DamagedFrames() << ", skipped " << shown.BytesSkipped(buffered) << " bytes; polls "
              << shown.FramesSent() << "\n"
              << heats_ << " heats, " << laps_ << " laps, the latest by " << latest_ << " ms\n";
  }

 private:
  void Count(std::uint8_t byte) {
    ++bytes_;
    plain_.Byte(byte);
    for (const std::string& found : plain_.TakeFound()) {
      good_ += found.starts_with("good");
      damaged_ += found.starts_with("damaged");
    }
  }

  // Every lap is reported until the next one, or for seconds after the last: none may be lost, none invented.
  void Check(const field::HeatResult& heat) {
    const field::ToldHeat kept = ToldByProject(rig_, static_cast<int>(heats_ % kHeatsADay) + 1);
    if (++heats_ % kHeatsADay == 0) TakeNewProject();
    for (const field::LaneResult& lane : heat.lanes) {
      SCOPED_TRACE("heat " + std::to_string(heat.heat) + " lane " + std::to_string(lane.lane));
      const field::ToldLane& told = kept.lanes.at(static_cast<std::size_t>(lane.lane - 1));
      ASSERT_EQ(told.laps.size(), lane.flown.size());
      for (std::size_t i = 0; i < told.laps.size(); ++i) {
        const int late = told.laps[i] - lane.flown[i];
        EXPECT_GE(late, -3);
        latest_ = std::max(latest_, late);
        ++laps_;
      }
      EXPECT_EQ(told.cuts.size(), lane.cuts.size());
    }
  }

  // A project grows with its races, and memory with the project.
  void TakeNewProject() {
    rig_.Answer(DialogAnswer::Word::File, rig_.folder / ("day" + std::to_string(heats_) + ".ini"));
    rig_.Answer(DialogAnswer::Word::Text, "4");
    rig_.Answer(DialogAnswer::Word::Text, "Cup");
    rig_.Click("frmJudge.mnuSelectFile");
    EXPECT_EQ(rig_.race().RaceNumber, 1);
  }

  static constexpr int kHeatsADay = 10;
  ConsoleRig rig_;
  FieldLink link_;
  NaiveReceiver plain_;
  std::int64_t bytes_ = 0, good_ = 0, damaged_ = 0, heats_ = 0, laps_ = 0;
  int latest_ = 0;
};

TEST(Soak, ABadLineLosesNoLapThatIsReportedAgain) {
  const std::int64_t frames = std::getenv("QUORVANE_LONG") != nullptr ? 120000 : 6000;
  Soak soak({.heats = 0,
             .mode = 0,
             .seed = 5,
             .quick = true,
             .line = {.noise = 0.04, .loss = 0.04, .damage = 0.04, .split = true}});
  soak.Run(frames / 4);
  const std::int64_t before = ResidentKb();
  soak.Run(frames);
  const std::int64_t after = ResidentKb();
  soak.CheckCounters(false);
  std::cout << "resident " << before << " KB, then " << after << " KB\n";
#ifndef __SANITIZE_ADDRESS__  // which keeps freed memory for a while
  EXPECT_LT(after - before, 512);
#endif
}

TEST(Soak, AGoodLineLosesNoFrame) {
  Soak soak({.heats = 0, .quick = true});
  soak.Run(1000);
  soak.CheckCounters(true);
}

}  // namespace
}  // namespace quorvane

#pragma once

#include <array>
#include <optional>
#include <string>
#include <tuple>

#include "base/color.h"

namespace quorvane {

class Program;

// What the public is shown of a race.
struct Score {
  struct Lane {
    bool flies = true;
    std::string name = {};  // "1"
    Color low = kButtonFace;
    Color high = kButtonFace;
    std::string laps = {}, cuts = {}, time = {}, place = {};
    bool bad = false;  // the place says that there is none
  };
  std::string heat = {};  // "Round 2  Heat 3"
  std::string event = {}, mode = {}, clock = {};
  Color clockBack = kWhite;
  std::array<Lane, 4> lanes = {};
  bool practice = false;  // nobody's result
};

struct RaceRecord;

// "1st lane 2 1:02.41, 2nd lane 1 1:04.00, lane 3 DNF": the lanes that flew, by place.
std::string ResultLine(const RaceRecord& race);

// The score of the race on the console, between two races that of the last one. The program must outlive it.
class ScoreKeeper {
 public:
  explicit ScoreKeeper(Program& program) : program_(program) {}

  Score Now();

 private:
  bool BetweenRaces() const;
  void ReadLastResult();

  Program& program_;
  std::optional<Score> result_;
  std::tuple<std::string, int, int, std::string> of_;  // project, race, number of reflys, amendments
};

}  // namespace quorvane

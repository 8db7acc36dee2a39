#include "field/compare.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quorvane::field {
namespace {

// Why the file cannot be read; empty when it can.
std::string Fault(const std::string& file) try {
  ReadHeats(file);
  return "";
} catch (const std::runtime_error& fault) {
  return fault.what();
}

std::string Differences(const std::string& flown, const std::string& shown, bool lossy = false) {
  std::string text;
  for (const std::string& line :
       CompareHeats(ReadHeats(flown), ReadHeats(shown), {.tolerance = 60, .lossy = lossy})) {
    text += line + "\n";
  }
  return text;
}

const char* const kFlown =
    R"({"heat":1,"lanes":[)"
    R"({"lane":1,"expected":[8000,16000],"cuts":[],"turns":[1,2],"final":16000,"place":"First"},)"
    R"({"lane":2,"expected":[8500],"cuts":[{"pylon":2,"time":9000}],"turns":[1],"final":1000000,"place":""}]})";
const std::string kShown =
    R"({"heat":1,"lanes":[)"
    R"({"lane":1,"laps":[7940,16060],"cuts":[],"turns":2,"final":16060,"place":"First"},)"
    R"({"lane":2,"laps":[8500],"cuts":[{"pylon":2}],"final":1000000,"place":"DNF"},)"
    R"({"lane":4,"laps":[],"cuts":[],"turns":0,"final":1000000,"place":"DNF"}]})";

TEST(FieldCompare, NamesEachDifference) {
  const struct {
    std::string what, becomes;  // in what is shown
    bool lossy;
    std::string differences;
  } cases[] = {
      {"heat", "heat", false, ""},
      {"7940", "7939", false, "heat 1 lane 1: lap 1 at 8000 flown, at 7939 shown\n"},
      {"7940", "7939", true, "heat 1 lane 1: lap 1 at 8000 flown, at 7939 shown\n"},
      {"16060]", "16061]", false, "heat 1 lane 1: lap 2 at 16000 flown, at 16061 shown\n"},
      {"16060]", "17000]", true, ""},
      {"16060]", "16060,17000]", true, "heat 1 lane 1: 2 laps flown, 3 shown\n"},
      {",16060]", "]", true, "heat 1 lane 1: 2 laps flown, 1 shown\n"},
      {"[8500]", "[]", true, ""},
      {"[8500]", "[]", false, "heat 1 lane 2: 1 laps flown, 0 shown\n"},
      {"\"final\":16060", "\"final\":1000000", true, "heat 1 lane 1: final 16000 flown, no result shown\n"},
      {"\"pylon\":2", "\"pylon\":4", false,
       "heat 1 lane 2: 1 cuts at pylon 2 flown, 0 shown\nheat 1 lane 2: 0 cuts at pylon 4 flown, 1 shown\n"},
      {"\"pylon\":2", "\"pylon\":2,\"time\":9999", false,
       "heat 1 lane 2: cut at pylon 2 at 9000 flown, at 9999 shown\n"},
      {"{\"pylon\":2}", "{\"pylon\":2},{\"pylon\":5}", false, "heat 1 lane 2: a cut at no pylon shown\n"},
      {"\"turns\":2", "\"turns\":3", true, "heat 1 lane 1: 2 turns flown, 3 shown\n"},
      {"\"turns\":2", "\"turns\":1", true, ""},
      {"First", "Second", false, "heat 1 lane 1: First flown, Second shown\n"},
      {"First", "Second", true, "heat 1 lane 1: Second shown, but its final is First\n"},
      {"\"lane\":2", "\"lane\":3", false,
       "heat 1 lane 2: flown, but not shown\nheat 1 lane 3: 0 laps flown, 1 shown\n"
       "heat 1 lane 3: 0 cuts at pylon 2 flown, 1 shown\n"},
      {"\"heat\":1", "\"heat\":2", false, "heat 1: heat 2 shown in its place\n"},
      {"{\"heat\":1", "{\"ms\":1}\r\n{\"heat\":1", false, ""},
      {"{\"heat\":1", "{\"none\":1", false, "1 heats flown, 0 shown\n"}};
  for (const auto& c : cases) {
    const std::string shown = std::string(kShown).replace(kShown.find(c.what), c.what.size(), c.becomes);
    EXPECT_EQ(Differences(kFlown, shown, c.lossy), c.differences) << c.becomes;
  }
}

TEST(FieldCompare, SaysWhyAFileCannotBeRead) {
  const std::pair<const char*, const char*> cases[] = {
      {"\n[]", "line 2: not a JSON object"},
      {"{\"heat\":1", "line 1: not a JSON object"},
      {"{\"heat\":1.5}", "line 1: \"heat\" is not a whole number"},
      {"{\"heat\":1}", "line 1: \"lanes\" is not an array"},
      {R"({"heat":1,"lanes":[{"lane":5}]})", "line 1: there is no lane 5"},
      {R"({"heat":1,"lanes":[{"lane":1,"laps":[1e99]}]})", "line 1: \"laps\" is not a whole number"},
      {R"({"heat":1,"lanes":[{"lane":1,"laps":[],"cuts":[{}]}]})",
       "line 1: \"pylon\" is not a whole number"}};
  for (const auto& [text, fault] : cases) EXPECT_EQ(Fault(text), fault) << text;
  for (std::size_t i = 0; i < kShown.size(); ++i) {  // whatever stands there: it is read or refused
    for (const char c : {'\0', '"', '\\', '{', ']', '9', '\xFF'}) {
      const std::string fault = Fault(std::string(kShown).replace(i, 1, 1, c));
      EXPECT_TRUE(fault.empty() || fault.starts_with("line 1: ")) << fault;
    }
  }
}

}  // namespace
}  // namespace quorvane::field

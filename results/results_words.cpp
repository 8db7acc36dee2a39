#include "results/results_words.h"

#include "base/time_text.h"
#include "records/project.h"

namespace quorvane {
namespace {

std::string TwoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

}  // namespace

std::string RaceTitle(const RaceRecord& race) {
  return "Race " + std::to_string(race.number) + (race.refly != 0 ? " REFLY" : "");
}

std::string RepeatedNote(const RaceRecord& race) {
  if (race.stands) return {};
  return race.reflownBy == 0 ? "does not count" : "reflown by Refly " + std::to_string(race.reflownBy);
}

std::string DateAndTime(const LocalDateTime& when) {
  return ProjectDate(when) + " " + TimeOfDay(when);
}

std::string IsoDate(const LocalDateTime& when, char separator) {
  std::string year = std::to_string(when.year);
  if (year.size() < 4) year.insert(0, 4 - year.size(), '0');
  return year + "-" + TwoDigits(when.month) + "-" + TwoDigits(when.day) + separator + TwoDigits(when.hour) +
         ":" + TwoDigits(when.minute) + ":" + TwoDigits(when.second);
}

std::string LaneTitle(int lane, std::string_view name) {
  const std::string marking = Trimmed(name);
  const std::string number = std::to_string(lane);
  return marking.empty() || marking == "Lane " + number ? number : number + " " + marking;
}

std::string LaneTitle(const LaneRecord& lane) {
  return LaneTitle(lane.lane, lane.name);
}

std::string MarkingOf(const LaneRecord& lane) {
  return Trimmed(lane.name);
}

std::string FinalText(const LaneRecord& lane) {
  return HasResult(lane) ? FormatMinutes(FormatSeconds(lane.final)) : std::string();
}

std::string BestText(const BestTime& best, bool tellLane) {
  const std::string time = FormatSeconds(best.time);
  std::string text = (best.lap == 0 ? FormatMinutes(time) : time) + " (race " + std::to_string(best.race);
  if (best.refly != 0) text += " REFLY";
  if (tellLane) text += ", lane " + std::to_string(best.lane);
  if (best.lap != 0) text += ", lap " + std::to_string(best.lap);
  return text + ")";
}

std::string CommentsOf(const RaceRecord& race) {
  return race.comments == "No comments" ? std::string() : race.comments;
}

std::string OneLine(std::string_view text) {
  std::string line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    // The control characters of U+0080..U+009F are the two bytes C2 80..C2 9F.
    const bool longControl =
        c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    if (longControl) ++i;
    line += c < 0x20 || c == 0x7F || longControl ? ' ' : text[i];
  }
  return line;
}

}  // namespace quorvane

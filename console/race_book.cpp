#include "console/race_book.h"

#include <algorithm>

#include "base/text.h"
#include "records/race_record.h"

namespace quorvane {

double RaceBook::Timestamp(const std::string& section) {
  return LeadingNumber(project_.GetProjectValue(section, "Timestamp", "0"));
}

std::string RaceBook::ShownSection() {
  std::string race = Section(race_.RaceNumber);
  try {
    const double id = LeadingNumber(project_.GetProjectValue(race, "ReflyID", "0"));
    return id == 0.0 ? race : "Refly" + std::to_string(RoundTo<std::int32_t>(id));
  } catch (const OverflowError&) {
    return race;  // no refly has such a number
  }
}

std::int16_t RaceBook::Number(const std::string& key, std::int16_t fallback) {
  try {
    return LeadingInteger(project_.GetProjectValue("Current", key, std::to_string(fallback)));
  } catch (const OverflowError&) {
    return fallback;
  }
}

// Stops at the last number there is, so that a file that claims them all still opens.
void RaceBook::SkipRacesRun() {
  while (race_.RaceNumber < kLastRace && HasTimestamp(race_.RaceNumber)) ++race_.RaceNumber;
}

void RaceBook::KeepPlace() {
  const Project::Group group(project_);
  Keep("Race", std::to_string(race_.RaceNumber));
  Keep("Heat", std::to_string(race_.Heat()));
  Keep("Round", std::to_string(race_.Round()));
}

// One more than the file counts. A file that counts wrong must not cost a refly that is recorded already.
std::int16_t RaceBook::NextRefly() {
  const std::int16_t counted = Number("NumberReflys", 0);
  std::int16_t number = counted == INT16_MAX ? std::int16_t{1} : AddInteger(counted, 1);
  while (Timestamp("Refly" + std::to_string(number)) != 0.0) number = AddInteger(number, 1);
  return number;
}

std::string RaceBook::TakeFreeNumber() {
  const int wanted = race_.RaceNumber;
  const std::string taken = "Race " + std::to_string(wanted) + " is in the project already: saved as ";
  for (int step = 0; step < kLastRace; ++step) {
    const std::int16_t race = ToInteger((wanted - 1 + step) % kLastRace + 1);
    if (HasTimestamp(race)) continue;
    if (race == wanted) return "";
    race_.RaceNumber = race_.LastRaceRun = race;
    return taken + std::to_string(race);
  }
  race_.ReflyMode = true;
  return taken + "its refly, because no other number is free";
}

std::string RaceBook::Write(const std::string& mode, const std::string& comments, const LocalDateTime& now) {
  const std::string race = std::to_string(race_.RaceNumber);
  std::string section = Section(race_.RaceNumber);
  if (race_.ReflyMode) {
    race_.NumberReflys = NextRefly();
    const std::string number = std::to_string(race_.NumberReflys);
    Keep("NumberReflys", number);
    project_.SetProjectValue(section, "ReflyID", number + " (index to refly entry for this race");
    section = "Refly" + number;
  }
  const std::string place = " (h=" + std::to_string(race_.Heat()) + ", r=" + std::to_string(race_.Round());
  project_.SetProjectValue(section, "Timestamp", TimestampText(now));
  project_.SetProjectValue(section, "CurrentRace", race + place + ")");
  project_.SetProjectValue(section, "RaceMode", std::to_string(race_.RaceMode) + ", " + mode);
  project_.SetProjectValue(section, "Comments", comments);
  return section;
}

}  // namespace quorvane

#include "records/kept_changes.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "base/text.h"
#include "records/race_record.h"

namespace quorvane {
namespace {

constexpr std::string_view kRace = "Race";
constexpr std::string_view kRefly = "Refly";

std::string SectionOf(std::string_view kind, int number) {
  return fmt::format("{}{}", kind, number);
}

std::string Stamp(const ProfileFile& file, const std::string& section) {
  const std::string stamp = file.Read(section, "Timestamp").value_or("");
  return LeadingNumber(stamp) != 0.0 ? stamp : "";
}

bool IsKey(const KeptChange& change, std::string_view key) {
  return EqualsIgnoringCase(change.key, key);
}

// A flight's number from the name of its section.
std::optional<int> NumberOf(std::string_view section, std::string_view kind) {
  if (section.size() <= kind.size() || !EqualsIgnoringCase(section.substr(0, kind.size()), kind)) return {};
  const std::string_view digits = section.substr(kind.size());
  if (digits.find_first_not_of("0123456789") != std::string_view::npos || digits.size() > 5) return {};
  return static_cast<int>(LeadingNumber(digits));
}

bool IsFree(const ProfileFile& file, const std::vector<KeptChange>& changes, const std::string& section) {
  return Stamp(file, section).empty() &&
         std::none_of(changes.begin(), changes.end(), [&](const KeptChange& change) {
           return IsKey(change, "Timestamp") && EqualsIgnoringCase(change.section, section);
         });
}

// The next free number, going on with 1 after the last; the number itself where there is none.
int NextFree(const ProfileFile& file, const std::vector<KeptChange>& changes, std::string_view kind,
             int number) {
  for (int step = 1; step < kLastRace; ++step) {
    const int next = (number - 1 + step) % kLastRace + 1;
    if (IsFree(file, changes, SectionOf(kind, next))) return next;
  }
  return number;
}

// The value that a key of "Current" is going to have.
std::string Current(const ProfileFile& file, const std::vector<KeptChange>& changes, std::string_view key) {
  std::string value = file.Read("Current", key).value_or("");
  for (const KeptChange& change : changes) {
    if (EqualsIgnoringCase(change.section, "Current") && IsKey(change, key)) value = change.value;
  }
  return value;
}

// The flight's own section and those of its lanes.
void Rename(std::vector<KeptChange>& changes, const std::string& from, const std::string& to) {
  const std::string lanes = from + "_";
  for (KeptChange& change : changes) {
    const std::string_view head = std::string_view(change.section).substr(0, lanes.size());
    if (EqualsIgnoringCase(change.section, from) || EqualsIgnoringCase(head, lanes)) {
      change.section = to + change.section.substr(from.size());
    }
  }
}

// What the changes say of the flight: a race's reflies and its own section name the race, a race its refly.
void Renumber(const ProfileFile& file, std::vector<KeptChange>& changes, std::string_view kind, int from,
              int to) {
  const int heats = std::max(1, static_cast<int>(LeadingNumber(Current(file, changes, "HeatsPerRound"))));
  for (KeptChange& change : changes) {
    const std::string_view text = change.value;
    if (LeadingNumber(text) != from) continue;
    if (kind == kRace && IsKey(change, "CurrentRace")) {
      change.value = fmt::format("{} (h={}, r={})", to, (to - 1) % heats + 1, (to - 1) / heats + 1);
    }
    if (kind == kRefly && IsKey(change, "ReflyID")) {
      change.value = fmt::format("{}{}", to, text.substr(std::min(text.find(' '), text.size())));
    }
  }
  if (kind == kRefly && LeadingNumber(Current(file, changes, "NumberReflys")) < to) {
    changes.push_back({"Current", "NumberReflys", std::to_string(to)});
  }
}

// A console that did not see the file has counted from nothing.
void KeepReflyCount(const ProfileFile& file, std::vector<KeptChange>& changes) {
  const std::string counted = file.Read("Current", "NumberReflys").value_or("");
  for (KeptChange& change : changes) {
    if (!EqualsIgnoringCase(change.section, "Current") || !IsKey(change, "NumberReflys")) continue;
    if (LeadingNumber(change.value) < LeadingNumber(counted)) change.value = counted;
  }
}

}  // namespace

bool SameContest(const ProfileFile& ours, const ProfileFile& file) {
  const std::string title = file.Read("Current", "Title").value_or("");
  if (!title.empty() && title == ours.Read("Current", "Title").value_or("")) return true;
  bool empty = title.empty();
  for (const std::string_view kind : {kRace, kRefly}) {
    for (int n = 1; n <= kLastRace; ++n) {
      const std::string section = SectionOf(kind, n);
      const std::string stamp = Stamp(file, section);
      if (stamp.empty()) continue;
      if (stamp == Stamp(ours, section)) return true;
      empty = false;
    }
  }
  return empty;
}

std::vector<std::string> MoveTakenRaces(const ProfileFile& file, std::vector<KeptChange>& changes) {
  std::vector<std::string> moved;
  const std::vector<KeptChange> before = changes;
  for (const KeptChange& change : before) {
    if (!IsKey(change, "Timestamp")) continue;
    const std::string there = Stamp(file, change.section);
    if (there.empty() || there == change.value) continue;
    for (const std::string_view kind : {kRace, kRefly}) {
      const std::optional<int> number = NumberOf(change.section, kind);
      if (!number) continue;
      const int to = NextFree(file, changes, kind, *number);
      Rename(changes, change.section, SectionOf(kind, to));
      Renumber(file, changes, kind, *number, to);
      moved.push_back(fmt::format("{} {} is in the project already: saved as {}", kind, *number, to));
    }
  }
  KeepReflyCount(file, changes);
  return moved;
}

}  // namespace quorvane

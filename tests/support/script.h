#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "base/text.h"
#include "replay/virtual_platform.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/test_data.h"

namespace quorvane {

// What is shown and kept, by group and name. A line is made of each group.
using Look = std::map<std::string, std::map<std::string, std::string>>;

// "lblLap(0).is" and "lblLap(1).is" are "lblLap(0,1).is".
inline std::string Joined(const std::string& names, const std::string& name) {
  const std::size_t open = name.find('('), close = name.find(')'), last = names.rfind('(');
  const bool row = open != std::string::npos && last != std::string::npos && last >= open &&
                   names.ends_with(name.substr(close)) &&
                   names.compare(last - open, open + 1, name, 0, open + 1) == 0 &&
                   (last == open || names[last - open - 1] == ',');
  if (!row) return names + "," + name;
  return names.substr(0, names.rfind(')')) + "," + name.substr(open + 1);
}

// What has changed of a group, names with the same text together.
inline std::string GroupChanges(const std::map<std::string, std::string>& before,
                                const std::map<std::string, std::string>& now) {
  std::vector<std::pair<std::string, std::string>> changes;  // names and their text
  const auto tell = [&](const std::string& name, const std::string& text) {
    const auto same = std::ranges::find(changes, text, &std::pair<std::string, std::string>::second);
    if (same == changes.end()) return changes.emplace_back(name, text), void();
    same->first = Joined(same->first, name);
  };
  for (const auto& [name, text] : now) {
    const auto was = before.find(name);
    if (was != before.end() ? was->second != text : !text.empty()) tell(name, text);
  }
  for (const auto& [name, text] : before) {
    if (!now.contains(name) && !text.empty()) tell(name, "gone");
  }
  std::string told;
  for (const auto& [names, text] : changes)
    told += " " + names + "=" + (text.find(' ') == std::string::npos ? text : "\"" + text + "\"");
  return told;
}

// Groups in succession with the same changes are told at once.
inline std::string Changes(const Look& before, const Look& now) {
  std::vector<std::pair<std::string, std::string>> lines;
  for (const auto& [group, parts] : now) {
    const auto old = before.find(group);
    const std::string changes =
        GroupChanges(old != before.end() ? old->second : decltype(old->second){}, parts);
    if (changes.empty()) continue;
    if (!lines.empty() && lines.back().second == changes) {
      lines.back().first += " and " + group;
    } else {
      lines.emplace_back(group, changes);
    }
  }
  std::string text;
  for (const auto& [groups, changes] : lines) text += "  " + groups + ":" + changes + "\n";
  return text;
}

inline constexpr std::array<std::string_view, 6> kAnswers = {"ok", "cancel", "yes", "no", "text", "file"};

// The boxes that were open since the last time; `last` is what the last of them asked.
inline std::string BoxesTold(VirtualPlatform& platform, std::string& last) {
  std::string told;
  for (const auto& [ms, box, answer] : std::exchange(platform.shown, {})) {
    const std::string asked = box.title + " | " + Replaced(box.text, "\r", " / ");
    told += "  asks " + (asked == std::exchange(last, asked) ? "again" : asked) +
            (box.preset.empty() ? "" : " | " + box.preset) +
            (box.usual == DialogAnswer::Word::No ? " | usually no" : "") +
            (box.byRadio ? " | by radio" : "") + " -> " +
            std::string(kAnswers.at(static_cast<std::size_t>(answer.word))) +
            (answer.text.empty() ? "" : " " + answer.text) + "\n";
  }
  return told;
}

// A step like "name=value", or "name=first|second". "~" is a blank and "^" ends a line of a text.
struct Step {
  explicit Step(const std::string& token) : all(Replaced(Replaced(token, "~", " "), "^", "\n")) {
    const auto cut = [](const std::string& text, char at) {
      const std::size_t found = std::min(text.find(at), text.size());
      return std::pair(text.substr(0, found), text.substr(std::min(found + 1, text.size())));
    };
    std::tie(word, value) = cut(all, '=');
    std::tie(first, second) = cut(value, '|');
  }
  std::string all, word, value, first, second;
};

// Whether the step is the answer to a box that is open or comes: "yes", "text=4", "file=a.ini".
inline bool IsAnswer(VirtualPlatform& platform, const Step& step, const std::string& folder = {}) {
  const auto word = std::ranges::find(kAnswers, step.word) - kAnswers.begin();
  if (word == std::ssize(kAnswers)) return false;
  platform.answers.push_back(
      {static_cast<DialogAnswer::Word>(word), (step.word == "file" ? folder : "") + step.value});
  return true;
}

// Plays lines of steps. "3{ a b }" plays the steps thrice, "box2{ a b };" while the second box from now is
// open.
class StepPlayer {
 public:
  explicit StepPlayer(std::function<void(const Step&)> act) : act_(std::move(act)) {}

  void Line(const std::string& line) {
    std::istringstream steps(line);
    Play({std::istream_iterator<std::string>(steps), {}});
  }
  void BoxOpens() {
    if (--boxes_ == 0) Play(std::exchange(behindBox_, {}));
  }

 private:
  using Tokens = std::vector<std::string>;

  void Play(const Tokens& tokens) {
    for (auto token = tokens.begin(); token != tokens.end(); ++token) {
      if (!token->ends_with('{')) {
        act_(Step(*token));
        continue;
      }
      const bool box = token->starts_with("box");
      const int number = std::stoi(token->substr(box ? 3 : 0));
      const auto end = std::find(token, tokens.end(), box ? "};" : "}");
      const Tokens inner(token + 1, end);
      if (box) boxes_ = number, behindBox_ = inner;
      for (int i = 0; !box && i < number; ++i) Play(inner);
      token = end;
    }
  }

  std::function<void(const Step&)> act_;
  Tokens behindBox_;
  int boxes_ = 0;
};

// In a script "#" begins a case, ">" a line of steps; the lines below it say what they have changed.
inline void PlayScript(const std::string& file, const std::function<void(const std::string&)>& begin,
                       const std::function<std::string(const std::string&)>& played) {
  std::istringstream script(FileBytes(file));
  std::string now;
  for (std::string line; std::getline(script, line);) {
    if (line.starts_with('#')) begin(line);
    if (line.starts_with('#') || line.empty()) now += line + "\n";
    if (line.starts_with("> ")) now += line + "\n" + played(line.substr(2));
  }
  ExpectGolden(file, now);
}

}  // namespace quorvane

#include "replay/virtual_platform.h"

#include <algorithm>
#include <array>

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

// By DialogKind: what a box answers that is closed without a choice, and the other answers that fit.
struct BoxRule {
  Word closed;
  std::array<Word, 2> fitting;
};
constexpr std::array<BoxRule, 7> kBoxRules = {{{Word::Ok, {Word::Ok, Word::Ok}},
                                               {Word::Cancel, {Word::Ok, Word::Ok}},
                                               {Word::No, {Word::Yes, Word::Yes}},
                                               {Word::Cancel, {Word::Yes, Word::No}},
                                               {Word::Cancel, {Word::Text, Word::Text}},
                                               {Word::Cancel, {Word::File, Word::File}},
                                               {Word::Cancel, {Word::File, Word::File}}}};

const BoxRule& RuleOf(const DialogBox& box) {
  return kBoxRules[static_cast<std::size_t>(box.kind)];
}

DialogAnswer Fitted(const DialogBox& box, const DialogAnswer& answer) {
  const bool asks = box.kind >= DialogKind::Input;
  if (asks && answer.word == Word::Ok) {
    return {box.kind == DialogKind::Input ? Word::Text : Word::File, box.preset};
  }
  if (std::ranges::count(RuleOf(box).fitting, answer.word) == 0) return {RuleOf(box).closed};
  return {answer.word, asks ? answer.text : ""};
}

}  // namespace

std::string MemorySettings::GetSetting(const std::string& section, const std::string& key,
                                       const std::string& fallback) const {
  const auto found = values_.find({section, key});
  return found == values_.end() ? fallback : found->second;
}

SerialError VirtualSerial::OpenDevice(int port) {
  if (!ports.contains(port)) return {kErrorNoSuchPort, "Invalid port number"};
  SerialError error = busy.contains(port) ? busy.at(port) : SerialError{};
  if (onOpened) onOpened(port, error);
  return error;
}

void VirtualSerial::WriteDevice(const std::vector<std::uint8_t>& bytes) {
  sent.push_back(bytes);
  if (onSent) onSent(bytes);
}

DialogAnswer VirtualPlatform::ShowDialog(const DialogBox& box) {
  const std::int64_t opened = ms_;
  if (whileOpen) whileOpen(box);
  DialogAnswer answer;
  if (answers.empty()) {
    answer = Dismiss(box);
  } else {
    dismissals_ = 0;
    answer = Fitted(box, answers.front());
    answers.pop_front();
  }
  shown.push_back({opened, box, answer});
  return answer;
}

DialogAnswer VirtualPlatform::Dismiss(const DialogBox& box) {
  // What an input box offers may differ from one time to the next.
  const bool again =
      box.kind == dismissed_.kind && box.title == dismissed_.title && box.text == dismissed_.text;
  if (!again) dismissals_ = 0;
  dismissed_ = box;
  if (++dismissals_ > mostDismissals && box.kind != DialogKind::Ok) throw NoWayOut{box};
  return {RuleOf(box).closed};
}

bool VirtualPlatform::FireTimerBefore(Door& door, std::int64_t ms) {
  TimerQueue& timers = door.AllForms().Timers();
  const auto due = timers.NextDue();
  if (!due || *due >= ms) return false;
  ms_ = std::max(*due, ms_);
  door.FireTimer(*timers.NextTimer());
  return true;
}

void VirtualPlatform::RunUntil(Door& door, std::int64_t ms) {
  while (FireTimerBefore(door, ms)) {
  }
  ms_ = std::max(ms, ms_);
}

}  // namespace quorvane

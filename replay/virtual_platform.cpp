#include "replay/virtual_platform.h"

#include <array>

namespace quorvane {
namespace {

using Word = DialogAnswer::Word;

constexpr unsigned Bit(Word word) {
  return 1U << static_cast<unsigned>(word);
}

// By DialogKind: the answers that fit, and what a box answers that is closed without a choice.
struct BoxRule {
  unsigned fitting;
  Word closed;
};
constexpr std::array<BoxRule, 7> kBoxRules = {{{Bit(Word::Ok), Word::Ok},
                                               {Bit(Word::Ok), Word::Cancel},
                                               {Bit(Word::Yes), Word::No},
                                               {Bit(Word::Yes) | Bit(Word::No), Word::Cancel},
                                               {Bit(Word::Text), Word::Cancel},
                                               {Bit(Word::File), Word::Cancel},
                                               {Bit(Word::File), Word::Cancel}}};

DialogAnswer Dismissed(DialogKind kind) {
  return {kBoxRules[static_cast<std::size_t>(kind)].closed};
}

DialogAnswer Fitted(const DialogBox& box, const DialogAnswer& answer) {
  const bool asks = box.kind >= DialogKind::Input;
  if (asks && answer.word == Word::Ok) {
    return {box.kind == DialogKind::Input ? Word::Text : Word::File, box.preset};
  }
  const bool fits = (kBoxRules[static_cast<std::size_t>(box.kind)].fitting & Bit(answer.word)) != 0;
  return fits ? DialogAnswer{answer.word, asks ? answer.text : ""} : Dismissed(box.kind);
}

}  // namespace

std::string MemorySettings::GetSetting(const std::string& section, const std::string& key,
                                       const std::string& fallback) const {
  const auto found = values_.find({section, key});
  return found == values_.end() ? fallback : found->second;
}

void MemorySettings::SaveSetting(const std::string& section, const std::string& key,
                                 const std::string& value) {
  values_[{section, key}] = value;
}

SerialError VirtualSerial::OpenDevice(int port) {
  if (!ports.contains(port)) return {kErrorNoSuchPort, "Invalid port number"};
  const auto found = busy.find(port);
  SerialError error = found == busy.end() ? SerialError{} : found->second;
  if (onOpened) onOpened(port, error);
  return error;
}

void VirtualSerial::WriteDevice(const std::vector<std::uint8_t>& bytes) {
  sent.push_back(bytes);
  if (onSent) onSent(bytes);
}

LocalDateTime VirtualPlatform::LocalNow() {
  return AddMilliseconds(start, ms_);
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
  return Dismissed(box.kind);
}

void VirtualPlatform::RunUntil(Door& door, std::int64_t ms) {
  while (door.AllForms().Timers().NextDue().value_or(ms) < ms) {
    const std::int64_t due = *door.AllForms().Timers().NextDue();
    if (due > ms_) ms_ = due;
    door.FireTimer(*door.AllForms().Timers().NextTimer());
  }
  if (ms > ms_) ms_ = ms;
}

}  // namespace quorvane

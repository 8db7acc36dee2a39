#include "replay/virtual_platform.h"

namespace quorvane {
namespace {

// What a box answers that is closed without a choice, and to an answer that does not fit it.
DialogAnswer Dismissed(DialogKind kind) {
  if (kind == DialogKind::Ok) return {DialogAnswer::Word::Ok, {}};
  if (kind == DialogKind::YesNo) return {DialogAnswer::Word::No, {}};
  return {DialogAnswer::Word::Cancel, {}};
}

DialogAnswer Fitted(const DialogBox& box, const DialogAnswer& answer) {
  using Word = DialogAnswer::Word;
  switch (box.kind) {
    case DialogKind::Ok:
      return {Word::Ok, {}};
    case DialogKind::OkCancel:
      return {answer.word == Word::Ok ? Word::Ok : Word::Cancel, {}};
    case DialogKind::YesNo:
      return {answer.word == Word::Yes ? Word::Yes : Word::No, {}};
    case DialogKind::YesNoCancel:
      if (answer.word == Word::Yes || answer.word == Word::No) return {answer.word, {}};
      return {Word::Cancel, {}};
    case DialogKind::Input:
      if (answer.word == Word::Ok) return {Word::Text, box.preset};
      return answer.word == Word::Text ? answer : Dismissed(box.kind);
    case DialogKind::OpenFile:
    case DialogKind::SaveFile:
      if (answer.word == Word::Ok) return {Word::File, box.preset};
      return answer.word == Word::File ? answer : Dismissed(box.kind);
  }
  return {};
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

SerialError VirtualSerial::OpenDevice(int port, const std::string& /*settings*/) {
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

#include "replay/outputs.h"

#include <algorithm>

#include "base/text.h"
#include "journal/journal_text.h"
#include "records/profile_file.h"

namespace quorvane {
namespace {

const char* KindName(DialogKind kind) {
  switch (kind) {
    case DialogKind::Ok:
      return "ok";
    case DialogKind::OkCancel:
      return "okcancel";
    case DialogKind::YesNo:
      return "yesno";
    case DialogKind::YesNoCancel:
      return "yesnocancel";
    case DialogKind::Input:
      return "input";
    case DialogKind::OpenFile:
      return "open";
    case DialogKind::SaveFile:
      return "save";
  }
  return "";
}

}  // namespace

std::string FrameRecords(const std::vector<Replay::Frame>& frames) {
  std::string records;
  for (const Replay::Frame& frame : frames) records += SentRecord(frame.ms, frame.bytes);
  return records;
}

std::string DialogLines(const std::vector<VirtualPlatform::Shown>& shown) {
  const auto text = [](const std::string& bytes) { return JsonString(TextFromBytes(bytes)); };
  std::string lines;
  for (const auto& [ms, box, answer] : shown) {
    lines += "{\"ms\": " + std::to_string(ms) + ", \"kind\": \"" + KindName(box.kind) +
             "\", \"title\": " + text(box.title) + ", \"text\": " + text(box.text) +
             ", \"answer\": " + text(AnswerWords(answer)) + "}\n";
  }
  return lines;
}

std::string SettingsText(const MemorySettings& settings) {
  ProfileFile file;
  for (const auto& [name, value] : settings.All()) file.Write(name.first, name.second, value);
  std::string text = file.Serialize();
  std::erase(text, '\r');
  return text;
}

}  // namespace quorvane

#include "replay/outputs.h"

#include <array>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "journal/journal_text.h"
#include "records/profile_file.h"

namespace quorvane {

std::string FrameRecords(const std::vector<Replay::Frame>& frames) {
  std::string records;
  for (const Replay::Frame& frame : frames) records += SentRecord(frame.ms, frame.bytes);
  return records;
}

std::string DialogLines(const std::vector<VirtualPlatform::Shown>& shown) {
  static constexpr std::array kKinds = {"ok", "okcancel", "yesno", "yesnocancel", "input", "open", "save"};
  std::string lines;
  for (const auto& [ms, box, answer] : shown) {
    lines += nlohmann::ordered_json{{"ms", ms},
                                    {"kind", kKinds[static_cast<std::size_t>(box.kind)]},
                                    {"title", TextFromBytes(box.title)},
                                    {"text", TextFromBytes(box.text)},
                                    {"answer", TextFromBytes(AnswerText(answer))}}
                 .dump() +
             "\n";
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

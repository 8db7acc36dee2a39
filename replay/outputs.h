#pragma once

#include <string>
#include <vector>

#include "replay/replay.h"

namespace quorvane {

// What a replay leaves behind, as text.

// One JSON object: `time`, `race`, `lanes`, `controls`.
std::string StateJson(Replay& replay);
// A tx record for each frame sent.
std::string FrameRecords(const std::vector<Replay::Frame>& frames);
// A line for each dialog box that was answered: `ms` at which it opened, `kind`, `title`, `text`, `answer`.
std::string DialogLines(const std::vector<VirtualPlatform::Shown>& shown);
// INI text, one section after the other in the order of their names.
std::string SettingsText(const MemorySettings& settings);

}  // namespace quorvane

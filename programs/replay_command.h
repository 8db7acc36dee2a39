#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "journal/journal_text.h"
#include "programs/arguments.h"

namespace quorvane {

// The command line of quorvane-replay.
struct ReplayCommand {
  std::string project = {};
  std::string settings = {};
  std::string state = {};
  std::string frames = {};
  std::string dialogs = {};
  bool verify = false;
  bool inPlace = false;
  std::string journal = {};
};

std::variant<ReplayCommand, Ending> ReadReplayCommand(const std::vector<std::string>& arguments);

// The text of a journal, from a regular file or, for "-", from standard input. What has no end (a device, a
// pipe with a name) is not waited for, and what is longer than any session is given up. False: `problem` says
// why.
bool ReadJournalText(const std::string& path, std::string& text, std::string& problem);

// Asked before anything is written: why one of the files that the command names must not be, as a line for
// the operator. Never written over are the journal, the files that it names (--project only if it exists, and
// not when the command says "in place"), one output by another, and what is no output of this kind.
std::optional<std::string> WhyNotRun(const ReplayCommand& command, const SessionJournal& journal);

}  // namespace quorvane

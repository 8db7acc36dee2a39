#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// Paths are UTF-8.

// The first line of every session journal, by which one is known.
inline constexpr std::string_view kJournalFirstLine = "quorvane-journal 1";

// What a path leads to, through symbolic links, told by the content and never by the name.
enum class FileKind : std::uint8_t {
  Missing,
  Empty,       // nothing but blanks and line ends
  Project,     // a section "Current", "Race<n>" or "Refly<n>", or one of their lanes
  Settings,    // a section of the settings store
  KeptRace,    // a section "Running" or "Unsaved": races that are not in their project yet
  Journal,     // begins as a session journal does
  Ini,         // begins with a section, but has none of the above
  Other,       // any other content
  NoFile,      // a folder, a device, a FIFO, a socket: is neither opened nor waited for
  Unreadable,  // cannot be looked at
};

FileKind KindOfFile(const std::string& path);
// The same of bytes that have been read already: never Missing, NoFile or Unreadable.
FileKind KindOfContent(std::string_view bytes);

// Asked before any file is written that somebody has named. Why `path` must not become a file of this kind
// (Other: a report, a table, a text), in words for whoever named it; nothing when it may.
//
// Never replaced are: what is no file or cannot be looked at; a project, settings store or journal by another
// kind, and the reverse (but settings may replace any INI file); a journal by any (see FreeJournalName); the
// files `inUse`, by whatever name or hard link.
std::optional<std::string> WhyNotWrite(const std::string& path, FileKind becomes,
                                       const std::vector<std::string>& inUse = {});

// Where a session that is to be recorded in `path` goes: there, or where a journal stands there already, to
// the first free one of "name-2.journal", "name-3.journal", ... Not whether that may be written.
std::string FreeJournalName(const std::string& path);

}  // namespace quorvane

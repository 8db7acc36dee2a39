#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text.h"

namespace quorvane {

// The content of an INI file, read and written as the profile calls of the Windows API do: letter case of
// names is ignored, the first of two equal sections or keys counts, `;` starts a comment line and `#` does
// not. By hand: libraries write such files anew, without comments, spacing, line ends and other code pages.
//
// Every byte that no write touches comes out of Serialize as it went in. A file is cut into sections when it
// is read, a section into lines when it is first asked for, so opening costs one pass over the bytes and a
// look-up two hashes. One object is for one thread, reads included. Nothing fails: any bytes are a file.
class ProfileFile {
 public:
  explicit ProfileFile(std::string bytes = {});

  // The value as UTF-8 text, without outer blanks and without one pair of matching quotes round it.
  std::optional<std::string> Read(std::string_view section, std::string_view key) const;

  // Sets a value; afterwards Read gives it back as it was, but for line breaks, which become blanks. Only the
  // value's own bytes change in a line that exists. Returns whether a byte of the file changed. A name that
  // no line can carry (a section with `]`; a key with `=`, or with `;` or `[` in front) is not written.
  bool Write(std::string_view section, std::string_view key, std::string_view value);

  // Of all sections, folded, in no order.
  std::vector<std::string> SectionNames() const;

  std::string Serialize() const;

 private:
  using Index = std::unordered_map<std::string, size_t>;

  struct Section {
    std::string_view text = {};           // as it was read, header included; unused once there are lines
    std::vector<std::string> lines = {};  // with their line ends; made when the section is first asked for
    Index keys = {};                      // folded name -> the first line of that key
    size_t last = 0;                      // lines up to the last key: a new one comes behind them
  };

  void CutIntoSections();
  void CutIntoLines(Section& section) const;
  Section* Find(const std::string& folded) const;
  Section& AddSection(std::string_view name);
  void AddKey(Section& section, std::string folded, std::string_view key, std::string_view value) const;
  std::string_view EndLine(std::string& line) const;

  std::shared_ptr<const std::string> source_;  // what the sections' views point into
  std::string_view mark_;                      // the byte order mark, if the file has one
  std::string_view line_end_ = "\r\n";         // that of the file's first line
  mutable std::vector<Section> sections_;      // the first is the text before any section
  Index index_;                                // folded name -> the first section of that name
};

}  // namespace quorvane

// SPDX-License-Identifier: GPL-3.0-or-later
// Text files of sections and keys ("[SECTION]", "KEY=value"), read and written as the platform's own profile
// calls do it (GetPrivateProfileStringA, GetPrivateProfileIntA, WritePrivateProfileStringA), but parsed once,
// changed in memory and written whole.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/file_system.h"

namespace vlt {

// The buffer of 255 characters that values are read through, less its closing NUL.
inline constexpr std::size_t kProfileValueChars = 254;

// A profile file in memory. Section and key names match without regard to the case of a to z; blanks and tabs
// around names and ahead of values do not belong to them, those behind a value do; of several sections or
// keys of one name the first counts. Everything that is not asked for or written stays byte for byte:
// comments (lines that begin with ";"), other lines, unknown keys, line ends, a UTF-8 byte-order mark, NUL
// bytes.
class ProfileFile {
 public:
  explicit ProfileFile(std::string_view content = {});

  // The value without one pair of enclosing single or double quotes (and what stands outside of them), at
  // most kProfileValueChars characters of it, NUL bytes included. An existing key with an empty value gives
  // "", a key or section that is not there gives `absent`.
  std::string GetString(std::string_view section, std::string_view key, std::string_view absent) const;

  // The key is there, whatever its value.
  bool Has(std::string_view section, std::string_view key) const;

  // LeadingInteger of the value; `absent` for a key that is not there or has an empty value.
  int GetInt(std::string_view section, std::string_view key, int absent) const;

  // Replaces the value, or adds the key behind the last line of its section that is not blank, or the section
  // at the end of the file. What would not come back as it was given is put in quotes (blanks at its ends,
  // enclosing quotes); line ends become blanks, and what follows a NUL is dropped. New lines end as the first
  // line of the file does, in a new file with CR LF.
  void SetString(std::string_view section, std::string_view key, std::string_view value);

  // The file's content.
  std::string Text() const;

 private:
  struct Section {
    std::vector<std::string> lines;  // with their line ends; the head is the first one
    std::string blanks;              // blank lines behind them
  };
  struct Place {
    std::size_t section;
    std::size_t line;
  };

  void Parse(std::string_view content);
  void AddLine(std::string_view line, bool& counts);
  bool AddHead(std::string_view line);
  const std::string* Find(std::string_view section, std::string_view key) const;
  std::size_t FindOrAddSection(std::string_view section);

  std::string mark_;  // the byte-order mark, or empty
  std::string line_end_;
  std::vector<Section> sections_;  // what stands ahead of the first head is the first one
  std::unordered_map<std::string, std::size_t> section_index_;
  std::unordered_map<std::string, Place> key_index_;
};

// Blanks, a sign, and the digits that follow, as a number; 0 without a digit. Numbers beyond 32 bits give the
// nearest int.
int LeadingInteger(std::string_view text);

// Reads a profile file of at most kMostSettingsBytes. After a failure `profile` is empty, so that every key
// has its default; kMissing is no fault of a settings file.
FileError ReadProfile(FileSystem& files, const std::string& path, ProfileFile& profile);

// Reads the file, or begins an empty one when it is missing, lets `change` write its keys, and replaces the
// file whole. A file that can't be read is not touched. `keep_backup` as in WriteWhole.
FileError ChangeProfile(FileSystem& files, const std::string& path, bool keep_backup,
                        const std::function<void(ProfileFile&)>& change);

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/profile_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "files/whole_file.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kQuotes = "\"'";

std::string Folded(std::string_view name) {
  std::string folded(Trim(name));
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return folded;
}

// A line end can stand in no name, so that no two pairs of names share an index entry.
std::string IndexKey(std::string_view section, std::string_view key) {
  return Folded(section) + '\n' + Folded(key);
}

std::string_view LineEnd(std::string_view line) {
  return line.substr(std::min(line.find_last_not_of("\r\n") + 1, line.size()));
}

std::string_view Content(std::string_view line) {
  line.remove_suffix(LineEnd(line).size());
  return Trim(line);
}

bool IsQuoted(std::string_view value) {
  return value.size() >= 2 && value.front() == value.back() &&
         kQuotes.find(value.front()) != std::string::npos;
}

std::string ForWriting(std::string_view value) {
  std::string text = CutAtNul(value);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  const bool as_it_is = Trim(text).size() == text.size() && !IsQuoted(text);
  return as_it_is ? text : '"' + text + '"';
}

}  // namespace

ProfileFile::ProfileFile(std::string_view content) : sections_(1) {
  if (content.starts_with(kByteOrderMark)) {
    mark_ = kByteOrderMark;
    content.remove_prefix(kByteOrderMark.size());
  }
  const std::size_t first_end = content.find('\n');
  const bool bare = first_end != std::string_view::npos && (first_end == 0 || content[first_end - 1] != '\r');
  line_end_ = bare ? "\n" : "\r\n";
  Parse(content);
}

void ProfileFile::Parse(std::string_view content) {
  bool counts = false;  // false within lines whose keys are not seen: ahead of all heads, a second section
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    const std::size_t size = end == std::string_view::npos ? content.size() : end + 1;
    AddLine(content.substr(0, size), counts);
    content.remove_prefix(size);
  }
}

void ProfileFile::AddLine(std::string_view line, bool& counts) {
  const std::string_view text = Content(line);
  if (text.empty()) {
    sections_.back().blanks += line;
    return;
  }
  if (text.front() == '[' && text.find(']') != std::string_view::npos) {
    counts = AddHead(line);
    return;
  }
  Section& section = sections_.back();
  if (!section.blanks.empty()) section.lines.push_back(std::exchange(section.blanks, {}));
  section.lines.emplace_back(line);
  const std::size_t equals = text.find('=');
  if (!counts || text.front() == ';' || equals == std::string_view::npos) return;
  const std::string_view head = Content(section.lines.front());
  key_index_.emplace(IndexKey(head.substr(1, head.find(']') - 1), text.substr(0, equals)),
                     Place{sections_.size() - 1, section.lines.size() - 1});
}

bool ProfileFile::AddHead(std::string_view line) {
  sections_.push_back({{std::string(line)}, {}});
  const std::string_view head = Content(line);
  return section_index_.emplace(Folded(head.substr(1, head.find(']') - 1)), sections_.size() - 1).second;
}

const std::string* ProfileFile::Find(std::string_view section, std::string_view key) const {
  const auto found = key_index_.find(IndexKey(section, key));
  return found == key_index_.end() ? nullptr : &sections_[found->second.section].lines[found->second.line];
}

std::string ProfileFile::GetString(std::string_view section, std::string_view key,
                                   std::string_view absent) const {
  const std::string* line = Find(section, key);
  if (line == nullptr) return std::string(absent);
  std::string_view value = std::string_view(*line).substr(line->find('=') + 1);
  value.remove_suffix(LineEnd(value).size());
  const std::string_view trimmed = Trim(value);
  if (IsQuoted(trimmed)) {
    value = trimmed.substr(1, trimmed.size() - 2);
  } else {
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
  }
  return std::string(FirstChars(value, kProfileValueChars));
}

bool ProfileFile::Has(std::string_view section, std::string_view key) const {
  return Find(section, key) != nullptr;
}

int ProfileFile::GetInt(std::string_view section, std::string_view key, int absent) const {
  const std::string value = GetString(section, key, "");
  return value.empty() ? absent : LeadingInteger(value);
}

std::size_t ProfileFile::FindOrAddSection(std::string_view section) {
  const auto [found, added] = section_index_.emplace(Folded(section), sections_.size());
  if (!added) return found->second;
  Section& last = sections_.back();
  std::string* tail = !last.blanks.empty() ? &last.blanks : last.lines.empty() ? nullptr : &last.lines.back();
  if (tail != nullptr && !tail->ends_with('\n')) *tail += line_end_;
  sections_.push_back({{'[' + std::string(section) + ']' + line_end_}, {}});
  return sections_.size() - 1;
}

void ProfileFile::SetString(std::string_view section, std::string_view key, std::string_view value) {
  const std::string text = ForWriting(value);
  const auto found = key_index_.find(IndexKey(section, key));
  if (found != key_index_.end()) {
    std::string& line = sections_[found->second.section].lines[found->second.line];
    line = line.substr(0, line.find('=') + 1) + text + std::string(LineEnd(line));
    return;
  }
  const std::size_t at = FindOrAddSection(section);
  std::vector<std::string>& lines = sections_[at].lines;
  if (!lines.back().ends_with('\n')) lines.back() += line_end_;
  lines.push_back(std::string(key) + '=' + text + line_end_);
  key_index_.emplace(IndexKey(section, key), Place{at, lines.size() - 1});
}

std::string ProfileFile::Text() const {
  std::string text = mark_;
  for (const Section& section : sections_) {
    for (const std::string& line : section.lines) text += line;
    text += section.blanks;
  }
  return text;
}

int LeadingInteger(std::string_view text) {
  text = Trim(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  std::int64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = std::min(number * 10 + (c - '0'), kMost + 1);
  }
  return static_cast<int>(negative ? -number : std::min(number, kMost));
}

FileError ReadProfile(FileSystem& files, const std::string& path, ProfileFile& profile) {
  std::string content;
  const FileError error = files.ReadAtMost(CleanPath(path), kMostSettingsBytes, content);
  profile = ProfileFile(error == FileError::kGood ? content : "");
  return error;
}

FileError ChangeProfile(FileSystem& files, const std::string& path, bool keep_backup,
                        const std::function<void(ProfileFile&)>& change) {
  ProfileFile profile;
  const FileError error = ReadProfile(files, path, profile);
  if (error != FileError::kGood && error != FileError::kMissing) return error.OnReading();
  change(profile);
  return WriteWhole(files, path, profile.Text(), keep_backup);
}

}  // namespace vlt

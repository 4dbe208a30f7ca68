// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/script.h"

#include <utility>

namespace vlt {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) { return kBlanks.find(c) != std::string_view::npos; }

// Takes the argument that begins with a quote off `text`. False when its end is missing or stuck to more.
bool TakeQuoted(std::string_view& text, Argument& argument) {
  argument.quoted = true;
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (text[at] != '"') {
      argument.text += text[at];
    } else if (at + 1 < text.size() && text[at + 1] == '"') {
      argument.text += text[at++];
    } else {
      text.remove_prefix(at + 1);
      return text.empty() || IsBlank(text.front());
    }
  }
  return false;
}

void TakePlain(std::string_view& text, Argument& argument) {
  const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
  argument.text = text.substr(0, end);
  text.remove_prefix(end);
}

}  // namespace

ScriptLine ParseScriptLine(std::string_view text, int number) {
  ScriptLine line;
  line.number = number;
  if (number == 1 && text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (text.ends_with('\r')) text.remove_suffix(1);
  for (;;) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (text.empty() || text.front() == '#') break;
    Argument argument;
    if (text.front() != '"') {
      TakePlain(text, argument);
    } else if (!TakeQuoted(text, argument)) {
      line.error = "a quoted text has no end, or something sticks to it";
      break;
    }
    line.arguments.push_back(std::move(argument));
  }
  if (line.arguments.empty()) return line;
  line.word = std::move(line.arguments.front().text);
  line.arguments.erase(line.arguments.begin());
  return line;
}

void ScriptReader::Add(std::string_view bytes) {
  if (dropping_) {
    const std::size_t end = bytes.find('\n');
    if (end == std::string_view::npos) return;
    bytes.remove_prefix(end + 1);
    dropping_ = false;
  }
  rest_.erase(0, std::exchange(at_, 0));
  rest_ += bytes;
}

std::optional<ScriptLine> ScriptReader::Next() {
  const std::string_view left = std::string_view(rest_).substr(at_);
  const std::size_t end = left.find('\n');
  const bool whole = end != std::string_view::npos;
  const std::string_view text = left.substr(0, end);
  if (text.size() > kMostLineBytes) {
    dropping_ = !whole;
    at_ = whole ? at_ + end + 1 : rest_.size();
    return TooLong();
  }
  if (!whole && (!ended_ || left.empty())) return std::nullopt;
  at_ = whole ? at_ + end + 1 : rest_.size();
  return ParseScriptLine(text, ++lines_);
}

ScriptLine ScriptReader::TooLong() {
  ScriptLine line;
  line.number = ++lines_;
  line.error = "the line is longer than " + std::to_string(kMostLineBytes >> 10) + " KB";
  return line;
}

}  // namespace vlt

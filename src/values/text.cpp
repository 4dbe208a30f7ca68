// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/text.h"

#include <algorithm>

#include "values/number_text.h"

namespace vlt {
namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Bytes of the character at the head of text (which is not empty): as many as its first byte announces and
// its continuation bytes allow.
std::size_t CharBytes(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t announced = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
  std::size_t bytes = 1;
  while (bytes < announced && bytes < text.size() && IsContinuation(text[bytes])) ++bytes;
  return bytes;
}

}  // namespace

std::string CutAtNul(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }

std::size_t CharCount(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    text.remove_prefix(CharBytes(text));
    ++count;
  }
  return count;
}

std::string_view FirstChars(std::string_view text, std::size_t count) {
  std::size_t bytes = 0;
  for (; count > 0 && bytes < text.size(); --count) bytes += CharBytes(text.substr(bytes));
  return text.substr(0, bytes);
}

std::string FolderOfPath(std::string_view path) {
  std::string text(Trim(path));
  if (text.find('.') == std::string::npos) text += text.find('/') == std::string::npos ? '\\' : '/';
  std::size_t end = text.find_last_of("\\/");
  if (end == std::string::npos) end = text.find(':');
  return end == std::string::npos ? std::string() : text.substr(0, end + 1);
}

std::string Joined(std::string_view text, std::string_view more) {
  std::string joined(text);
  if (!text.empty() && !more.empty()) joined += ' ';
  return joined.append(more);
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

}  // namespace vlt

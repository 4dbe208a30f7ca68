// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/json.h"

#include <charconv>

namespace vlt::test {
namespace {

struct Wrong {};

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  std::map<std::string, std::string> Object() {
    std::map<std::string, std::string> object;
    Take('{');
    do {
      const std::string key = String();
      Take(':');
      if (!object.emplace(key, Value()).second) throw Wrong();
    } while (TakeIf(','));
    Take('}');
    if (!text_.empty()) throw Wrong();
    return object;
  }

 private:
  void Take(char c) {
    if (!TakeIf(c)) throw Wrong();
  }
  bool TakeIf(char c) {
    if (text_.empty() || text_.front() != c) return false;
    text_.remove_prefix(1);
    return true;
  }
  char Next() {
    if (text_.empty()) throw Wrong();
    const char c = text_.front();
    text_.remove_prefix(1);
    return c;
  }

  std::string Value() {
    if (text_.starts_with('"')) return String();
    if (text_.starts_with("null")) {
      text_.remove_prefix(4);
      return "null";
    }
    if (!TakeIf('[')) return Number();
    std::string list;
    if (TakeIf(']')) return list;
    do {
      list += (list.empty() ? "" : "|") + String();
    } while (TakeIf(','));
    Take(']');
    return list;
  }

  std::string Number() {
    const std::size_t end = text_.find_first_not_of("-0123456789");
    const std::string digits(text_.substr(0, end));
    int number = 0;
    const auto [behind, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (fault != std::errc() || std::to_string(number) != digits) throw Wrong();
    text_.remove_prefix(digits.size());
    return digits;
  }

  std::string String() {
    std::string string;
    Take('"');
    for (char c = Next(); c != '"'; c = Next()) {
      if (static_cast<unsigned char>(c) < 0x20) throw Wrong();
      string += c == '\\' ? Escaped() : c;
    }
    return string;
  }

  char Escaped() {
    constexpr std::string_view kWritten = "\"\\/bfnrt";
    constexpr std::string_view kPlain = "\"\\/\b\f\n\r\t";
    const char c = Next();
    if (const std::size_t at = kWritten.find(c); at != std::string_view::npos) return kPlain[at];
    // Only control characters are written so.
    int code = -1;
    if (c != 'u' || text_.size() < 4) throw Wrong();
    const auto [behind, fault] = std::from_chars(text_.data(), text_.data() + 4, code, 16);
    if (fault != std::errc() || behind != text_.data() + 4 || code >= 0x20) throw Wrong();
    text_.remove_prefix(4);
    return static_cast<char>(code);
  }

  std::string_view text_;
};

}  // namespace

std::optional<std::map<std::string, std::string>> ParseJson(std::string_view line) {
  try {
    return Parser(line).Object();
  } catch (const Wrong&) {
    return std::nullopt;
  }
}

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/json.h"

#include <charconv>

namespace vlt::test {
namespace {

struct Wrong {};

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  JsonFields Object() {
    Take('{');
    do {
      const std::string key = String();
      for (const auto& field : fields_) {
        if (field.first == key) throw Wrong();
      }
      Take(':');
      Value(key);
    } while (TakeIf(','));
    Take('}');
    if (!text_.empty()) throw Wrong();
    return fields_;
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

  void Value(const std::string& key) {
    if (text_.starts_with('"')) {
      fields_.emplace_back(key, String());
    } else if (text_.starts_with("null")) {
      text_.remove_prefix(4);
      fields_.emplace_back(key, "");
    } else if (!TakeIf('[')) {
      fields_.emplace_back(key, Number());
    } else if (!TakeIf(']')) {
      do {
        fields_.emplace_back(key, String());
      } while (TakeIf(','));
      Take(']');
    }
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
  JsonFields fields_;
};

}  // namespace

std::optional<JsonFields> ParseJson(std::string_view line) {
  try {
    return Parser(line).Object();
  } catch (const Wrong&) {
    return std::nullopt;
  }
}

}  // namespace vlt::test

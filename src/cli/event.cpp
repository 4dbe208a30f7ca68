// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/event.h"

#include <algorithm>

#include "meter/catalogue.h"

namespace vlt {
namespace {

constexpr EventShape kShapes[] = {
    {"status", {"name", "text"}},
    {"message", {"text", "answer"}},
    {"file", {"kind", "path"}},
    {"show", {"name", "text", "state", "value?", "why", "origin", "told"}},
    {"refused", {"name", "reason"}},
    {"operation", {"name", "exchanges#", "failed#", "reason"}},
    {"frame", {"time", "way", "station#", "bytes", "meaning"}},
    {"value", {"name", "place", "value*", "unit", "register", "raw"}},
    {"unread", {"name", "place", "reason"}},
    {"sent", {"name", "place", "end", "value*", "holds*", "was*", "unit", "reason", "cut"}},
    {"kept", {"name", "place", "reason"}},
    {"parameter", {"name", "places", "title", "set", "entries..."}},
    {"progress", {"step#", "steps#", "text"}},
    {"identity",
     {"side", "title", "id_number", "specification", "type", "version", "date", "unit_system", "path_mode"}},
    {"snapshot", {"path", "parameters#", "unread#"}},
    {"row",
     {"name", "place", "state", "left*", "left_unit", "left_raw", "right*", "right_unit", "right_raw",
      "note"}},
    {"remark", {"side", "text"}},
    {"compared", {"all#", "equal#", "different#", "only_left#", "only_right#", "unread#", "text"}},
    {"differs", {"name", "place", "reason"}},
    {"restored", {"stored#", "refused#", "not_proven#", "not_sent#", "different#", "restore_point", "kept#"}},
    {"found", {"port", "speed#", "parity", "station#", "unit_system", "language"}},
    {"spacing", {"spacing#", "unit", "step#"}},
    {"finishing", {"text"}},
    {"trouble", {"script", "line#", "status#", "text"}},
};

struct Escape {
  char plain;
  const char* written;
};
constexpr Escape kFieldEscapes[] = {{'\t', "\\t"}, {'\n', "\\n"}, {'\r', "\\r"}, {'\\', "\\\\"}};
constexpr Escape kJsonEscapes[] = {{'\t', "\\t"}, {'\n', "\\n"}, {'\r', "\\r"}, {'\\', "\\\\"},
                                   {'"', "\\\""}, {'\b', "\\b"}, {'\f', "\\f"}};
constexpr unsigned char kFirstPrintable = 0x20;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

const Escape* FindEscape(std::span<const Escape> escapes, char c) {
  const auto found =
      std::find_if(escapes.begin(), escapes.end(), [&](const Escape& e) { return e.plain == c; });
  return found == escapes.end() ? nullptr : &*found;
}

// How lead bytes tell the length of a character, and which second byte keeps it from being written longer
// than it need be, a surrogate, or beyond U+10FFFF.
struct Lead {
  unsigned char first;
  unsigned char last;
  std::size_t length;
  unsigned char second_first;
  unsigned char second_last;
};
constexpr Lead kLeads[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF},
    {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF},
    {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

// Bytes of the character of more than one byte that `text` begins with; 0 when it begins with none.
std::size_t CharacterLength(std::string_view text) {
  const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  for (const Lead& lead : kLeads) {
    if (at(0) < lead.first || at(0) > lead.last) continue;
    if (text.size() < lead.length || at(1) < lead.second_first || at(1) > lead.second_last) return 0;
    for (std::size_t i = 2; i < lead.length; ++i) {
      if (at(i) < 0x80 || at(i) > 0xBF) return 0;
    }
    return lead.length;
  }
  return 0;
}

void AddControl(std::string& json, unsigned char c) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  json += "\\u00";
  json += kDigits[c >> 4U];
  json += kDigits[c & 0x0FU];
}

std::string JsonText(std::string_view text) {
  std::string json = "\"";
  while (!text.empty()) {
    std::size_t length = 1;
    const auto c = static_cast<unsigned char>(text.front());
    if (const Escape* escape = FindEscape(kJsonEscapes, text.front())) {
      json += escape->written;
    } else if (c < kFirstPrintable) {
      AddControl(json, c);
    } else if (c < 0x80) {
      json += text.front();
    } else if ((length = CharacterLength(text)) > 0) {
      json += text.substr(0, length);
    } else {
      json += kReplacement;
      length = 1;
    }
    text.remove_prefix(length);
  }
  return json + '"';
}

std::string JsonList(std::span<const std::string> texts) {
  std::string json;
  for (const std::string& text : texts) json += (json.empty() ? "" : ",") + JsonText(text);
  return '[' + json + ']';
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Whether JSON takes a text as a number as it stands. An exponent is none that is written here.
bool IsJsonNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const auto whole =
      static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin());
  if (whole == 0 || (whole > 1 && text.front() == '0')) return false;
  text.remove_prefix(whole);
  return text.empty() ||
         (text.size() > 1 && text.front() == '.' && std::all_of(text.begin() + 1, text.end(), IsDigit));
}

// What is shown in front of a number, or between its digits, is not part of it: "01", "1,234.50".
std::string JsonNumber(const std::string& text) {
  if (text.empty()) return "null";
  std::string digits = text;
  std::erase(digits, ',');
  while (digits.size() > 1 && digits[0] == '0' && IsDigit(digits[1])) digits.erase(0, 1);
  return IsJsonNumber(digits) ? digits : JsonText(text);
}

// Codes, characters and what is padded with zeros are texts.
bool IsNumber(const Parameter* row) {
  return row != nullptr && !row->IsCode() && row->show != Show::kPadded && row->show != Show::kCharacters;
}

// The parameter that an event tells of, by its field "name"; null for none.
const Parameter* ParameterOf(const EventFields& fields, std::span<const std::string_view> names) {
  const auto at = static_cast<std::size_t>(std::find(names.begin(), names.end(), "name") - names.begin());
  return at + 1 < fields.size() ? FindParameter(fields[at + 1]) : nullptr;
}

std::string JsonValue(char mark, const std::string& text, const Parameter* row) {
  const bool number = mark == '#' || (mark == '*' && IsNumber(row) && text.empty());
  if (number) return JsonNumber(text);
  const bool may = mark == '?' || (mark == '*' && IsNumber(row));
  return may && IsJsonNumber(text) ? text : JsonText(text);
}

}  // namespace

std::span<const EventShape> EventShapes() { return kShapes; }

std::span<const std::string_view> NamesOf(std::string_view event) {
  static constexpr std::string_view kAnyFields[] = {"fields..."};
  for (const EventShape& shape : kShapes) {
    if (shape.event == event) return shape.names;
  }
  return kAnyFields;
}

std::span<const std::string_view> GridRowNames() {
  static constexpr std::string_view kNames[] = {"name", "cells..."};
  return kNames;
}

std::string EscapedField(const std::string& field) {
  std::string text;
  for (const char c : field) {
    if (const Escape* escape = FindEscape(kFieldEscapes, c)) {
      text += escape->written;
    } else {
      text += c;
    }
  }
  return text;
}

std::string TabbedLine(const EventFields& fields) {
  std::string line;
  for (const std::string& field : fields) line += (line.empty() ? "" : "\t") + EscapedField(field);
  return line;
}

std::string JsonLine(const EventFields& fields, std::span<const std::string_view> names) {
  std::string json = "{\"event\":" + JsonText(fields.front());
  const Parameter* row = ParameterOf(fields, names);
  for (std::size_t i = 1; i < fields.size() && i <= names.size(); ++i) {
    std::string_view name = names[i - 1];
    if (name.empty()) break;
    const char mark = name.back();
    name = name.substr(0, name.find_first_of(kFieldMarks));
    json += ',' + JsonText(name) + ':';
    if (mark == '.') return json + JsonList(std::span(fields).subspan(i)) + '}';
    json += JsonValue(mark, fields[i], row);
  }
  return json + '}';
}

}  // namespace vlt

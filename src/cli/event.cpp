// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/event.h"

#include <algorithm>

namespace vlt {
namespace {

constexpr EventShape kShapes[] = {
    {"status", {"name", "text"}},
    {"message", {"text", "answer"}},
    {"file", {"kind", "path"}},
    {"show", {"name", "text", "state", "value", "why", "origin", "told"}},
    {"refused", {"name", "reason"}},
    {"operation", {"name", "exchanges#", "failed#", "reason"}},
    {"frame", {"time", "way", "station", "bytes", "meaning"}},
    {"value", {"name", "place", "value", "unit", "register", "raw"}},
    {"unread", {"name", "place", "reason"}},
    {"sent", {"name", "place", "end", "value", "holds", "was", "unit", "reason"}},
    {"kept", {}},
    {"parameter", {"name", "places", "title", "set", "entries..."}},
    {"progress", {"step#", "steps#", "text"}},
    {"identity",
     {"side", "title", "id_number", "specification", "type", "version", "date", "unit_system", "path_mode"}},
    {"snapshot", {"path", "parameters#", "unread#"}},
    {"row",
     {"name", "place", "state", "left", "left_unit", "left_raw", "right", "right_unit", "right_raw", "note"}},
    {"remark", {"side", "text"}},
    {"compared", {"all#", "equal#", "different#", "only_left#", "only_right#", "unread#", "text"}},
    {"differs", {"name", "place", "reason"}},
    {"restored", {"stored#", "refused#", "not_proven#", "not_sent#", "different#", "restore_point"}},
    {"found", {"port", "speed", "parity", "station", "unit_system", "language"}},
    {"spacing", {"spacing", "unit", "step"}},
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
constexpr std::string_view kListMark = "...";
constexpr char kNumberMark = '#';

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

std::string JsonNumber(const std::string& digits) { return digits.empty() ? "null" : digits; }

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
  for (std::size_t i = 1; i < fields.size() && i <= names.size(); ++i) {
    std::string_view name = names[i - 1];
    if (name.empty()) break;
    const bool is_list = name.ends_with(kListMark);
    const bool is_number = name.ends_with(kNumberMark);
    name.remove_suffix(is_list ? kListMark.size() : is_number ? 1 : 0);
    json += ',' + JsonText(name) + ':';
    if (is_list) return json + JsonList(std::span(fields).subspan(i)) + '}';
    json += is_number ? JsonNumber(fields[i]) : JsonText(fields[i]);
  }
  return json + '}';
}

}  // namespace vlt

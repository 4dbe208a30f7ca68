// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of output: with tabs, and as JSON.
#include "cli/event.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "tests/cli/session.h"

namespace vlt {
namespace {

using test::ReadFile;
using test::Session;

// A text of JSON as it was written.
std::string Plain(const std::string& text) {
  constexpr std::string_view kWritten = "\"\\bfnrt", kMeant = "\"\\\b\f\n\r\t";
  std::string plain;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] != '\\') {
      plain += text[i];
    } else if (text[++i] != 'u') {
      plain += kMeant[kWritten.find(text[i])];
    } else {
      plain += static_cast<char>(std::stoi(text.substr(i + 1, 4), nullptr, 16));
      i += 4;
    }
  }
  return plain;
}

// The texts of a line of JSON, read as strictly as its grammar asks, as far as the companion writes it: one
// flat object of texts, numbers, null, and lists of texts. None for any other line, or with a key twice.
EventFields TextsOf(const std::string& line) {
  static const std::string text = R"("(?:[^"\\\x01-\x1F]|\\["\\bfnrt]|\\u00[01][0-9a-f])*")";
  static const std::string list = R"(\[(?:)" + text + "(?:," + text + R"()*)?\])";
  static const std::string field =
      "\"[a-z_0-9]+\":(?:" + text + "|" + list + "|null|-?(?:0|[1-9][0-9]*)(?:\\.[0-9]+)?)";
  static const std::regex object(R"(\{)" + field + "(?:," + field + R"()*\})");
  static const std::regex part("(\"[a-z_0-9]+\"):|(" + text + ")|null|-?[0-9.]+");
  EventFields texts;
  std::set<std::string> keys;
  if (!std::regex_match(line, object)) return {};
  for (std::sregex_iterator at(line.begin(), line.end(), part), end; at != end; ++at) {
    if ((*at)[2].matched) texts.push_back(Plain(at->str()));
    if (!(*at)[1].matched && !(*at)[2].matched) texts.push_back(at->str() == "null" ? "" : at->str());
    if ((*at)[1].matched && !keys.insert(at->str()).second) return {};
  }
  return texts;
}

std::string Json(const EventFields& fields) { return JsonLine(fields, NamesOf(fields.front())); }

TEST(Event, JsonNamesTheFields) {
  const struct {
    EventFields fields;
    const char* json;
  } cases[] = {
      {{"status", "A.B", ""}, R"({"event":"status","name":"A.B","text":""})"},
      {{"operation", "A.B", "3", "0", ""},
       R"({"event":"operation","name":"A.B","exchanges":3,"failed":0,"reason":""})"},
      {{"trouble", "s", "", "1", "x"},
       R"({"event":"trouble","script":"s","line":null,"status":1,"text":"x"})"},
      {{"show", "A.B", "t"}, R"({"event":"show","name":"A.B","text":"t"})"},
      {{"show", "A.B", "7", "enabled", "-1"},
       R"({"event":"show","name":"A.B","text":"7","state":"enabled","value":-1})"},
      {{"show", "A.B", "", "hidden", "ticked"},
       R"({"event":"show","name":"A.B","text":"","state":"hidden","value":"ticked"})"},
      // A value is a number where its parameter is one.
      {{"value", "process.outer_diameter", "CH1", "60.50"},
       R"({"event":"value","name":"process.outer_diameter","place":"CH1","value":60.50})"},
      {{"value", "total.pulse_width", "CH1", "50.0"},
       R"({"event":"value","name":"total.pulse_width","place":"CH1","value":"50.0"})"},
      {{"value", "system.version", "", "1.10"},
       R"({"event":"value","name":"system.version","place":"","value":"1.10"})"},
      {{"value", "system.id_number", "", "1234"},
       R"({"event":"value","name":"system.id_number","place":"","value":"1234"})"},
      {{"sent", "process.outer_diameter", "CH1", "not_sent", "012", "", "-0.5"},
       R"({"event":"sent","name":"process.outer_diameter","place":"CH1","end":"not_sent","value":"012",)"
       R"("holds":null,"was":-0.5})"},
      {{"found", "COM1", "9600", "O", "01"},
       R"({"event":"found","port":"COM1","speed":9600,"parity":"O","station":1})"},
      {{"spacing", "1,234.50", "mm", ""}, R"({"event":"spacing","spacing":1234.50,"unit":"mm","step":null})"},
  };
  for (const auto& c : cases) EXPECT_EQ(Json(c.fields), c.json);
  EXPECT_EQ(JsonLine({"show", "G[0]", "a", "", "b"}, GridRowNames()),
            R"({"event":"show","name":"G[0]","cells":["a","","b"]})");
  EXPECT_EQ(Json({"other", "a", "b"}), R"({"event":"other","fields":["a","b"]})");
}

// What no JSON text may hold is written another way; what is no UTF-8 at all is replaced byte by byte.
TEST(Event, JsonTextsAreUtf8WithoutControlCharacters) {
  const std::string replaced = "\xEF\xBF\xBD";
  const struct {
    std::string text;
    std::string json;
  } cases[] = {
      {"a\tb\nc\rd\"e\\f\bg\fh", R"(a\tb\nc\rd\"e\\f\bg\fh)"},
      {std::string("\x01\x1F\0/", 4), R"(\u0001\u001f\u0000/)"},
      {"\x7F \xC2\xB0 \xE6\xB5\x81 \xF0\x9F\x98\x80", "\x7F \xC2\xB0 \xE6\xB5\x81 \xF0\x9F\x98\x80"},
      {"\xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBE\x8E \xF1\x80\x80\x80 \xF4\x8F\xBF\xBF",
       "\xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBE\x8E \xF1\x80\x80\x80 \xF4\x8F\xBF\xBF"},
      {"\xFF", replaced},
      {"a\x80z", "a" + replaced + "z"},
      {"\xC0\xAF", replaced + replaced},                 // longer than it need be
      {"\xED\xA0\x80", replaced + replaced + replaced},  // a surrogate
      {"\xF4\x90\x80\x80", replaced + replaced + replaced + replaced},
      {"\xE6\xB5", replaced + replaced},  // cut off
      {"\xE6\xB5z", replaced + replaced + "z"},
      {"\xE6\xB5\xC1", replaced + replaced + replaced},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Json({"status", "", c.text}), R"({"event":"status","name":"","text":")" + c.json + "\"}");
}

// Both forms of the same script say the same, line for line.
TEST(Event, JsonSaysWhatTheTabsSay) {
  const std::string script =
      "answer ok no\nfile\nstart\nopen Form10\ntick OUTER_DIAMETER\ntype OUTER_DIAMETERText \"a\tb\\c\"\"\"\n"
      "press ReadParameter\npress SetParameter\nform\nopen frmCalc\nform\nopen FrmCSet\nform\nclose FrmCSet\n"
      "close frmCalc\nget process.fluid\nset process.fluid 1 1\nspacing outer_diameter=60.5 "
      "wall_thickness=3.8 pipe_material=0 fluid=0 sensor_type=1\nscan\nnames unit\nkeep\nsnapshot /s\n"
      "set system.measurement_mode 2\nset process.fluid 2 2\nrestore /s\nline\nline frames 3\n"
      "set process.fluid 2 1\ncompare /s meter all";
  Session tabs;
  Session json;
  json.companion.WriteJson();
  EXPECT_EQ(tabs.Run(script), json.Run(script));
  EXPECT_EQ(tabs.trouble, json.trouble);
  ASSERT_EQ(tabs.output.size(), json.output.size());
  ASSERT_GT(tabs.output.size(), 100U);
  for (std::size_t i = 0; i < tabs.output.size(); ++i) {
    ASSERT_TRUE(json.output[i].starts_with("{\"event\":")) << json.output[i];
    std::string told = tabs.output[i];
    // A station as JSON writes a number.
    if (told.starts_with("found\t")) told = std::regex_replace(told, std::regex("\t0([0-9])\t"), "\t$1\t");
    EXPECT_EQ(TabbedLine(TextsOf(json.output[i])), told) << json.output[i];
  }
  const std::regex figures(R"(\{"event":"line","station":("all"|[0-9]+)(,"[a-z_0-9]+":(null|[0-9.]+))+\})");
  EXPECT_EQ(std::ranges::count_if(json.output, [&](const auto& l) { return std::regex_match(l, figures); }),
            3)
      << ::testing::PrintToString(json.output);
}

// The documentation's table of events is the table of their shapes.
TEST(Event, DocumentationListsEveryEvent) {
  const std::string text = ReadFile(std::string(DOCS) + "/companion.md");
  for (const EventShape& shape : EventShapes()) {
    std::string row = "| `" + std::string(shape.event) + "` | ";
    for (const std::string_view name : shape.names) {
      if (!name.empty())
        row += (row.ends_with("| ") ? "`" : ", `") + std::string(name.substr(0, name.find_first_of("#?*"))) +
               '`';
    }
    EXPECT_NE(text.find(row + " |"), std::string::npos) << row << " |";
  }
}

}  // namespace
}  // namespace vlt

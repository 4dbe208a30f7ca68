// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/told_lines.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace vlt::test {
namespace {

constexpr std::size_t kWidth = 120;
constexpr std::size_t kBrief = 40;  // texts that stand several in a line

// In a packed line: around its list, and where this may be broken.
constexpr char kList = '\x1e';
constexpr char kPart = '\x1f';

}  // namespace

Lines PartsOf(const std::string& text, char between) {
  Lines parts(1);
  for (const char c : text) {
    if (c == between) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

Lines Packed(const std::string& head, const Lines& parts, const char* between) {
  if (parts.empty()) return {};
  std::string line = head + kList + parts.front();
  for (std::size_t at = 1; at < parts.size(); ++at) line += kPart + (between + parts[at]);
  return {line + kList};
}

std::string Whole(std::string packed) {
  std::erase_if(packed, [](char c) { return c == kList || c == kPart; });
  return packed;
}

Lines Broken(const std::string& packed) {
  const Lines around = PartsOf(packed, kList);
  if (around.size() == 1) return around;
  Lines lines;
  for (const std::string& part : PartsOf(around[1], kPart)) {
    if (lines.empty()) {
      lines.push_back(around[0] + part);
    } else if (lines.back().size() + part.size() <= kWidth) {
      lines.back() += part;
    } else {
      lines.push_back(std::string(std::min<std::size_t>(around[0].size(), 4), ' ') +
                      part.substr(part.find(' ', 1) + 1));
    }
  }
  lines.back() += around[2];
  return lines;
}

Lines InOne(const std::string& head, const Lines& lines) {
  std::string one;
  for (const std::string& line : lines) one += (one.empty() ? "" : " / ") + line;
  return head.size() + one.size() <= kWidth ? Lines{one} : lines;
}

Lines ToldLists::Broken(const std::string& packed) {
  const Lines lines = test::Broken(packed);
  if (lines.size() == 1) return lines;
  const Lines around = PartsOf(packed, kList);
  const Lines parts = PartsOf(around[1], kPart);
  const std::string name = "[" + parts.front() + " +" + std::to_string(parts.size() - 1) + "]";
  const auto [told, is_new] = told_.try_emplace(name, around[1]);
  if (is_new || told->second != around[1]) return lines;
  return {around[0] + name + around[2]};
}

std::string Joined(const Lines& parts) {
  std::string joined;
  for (const std::string& part : parts) joined += (joined.empty() ? "" : ", ") + part;
  return joined;
}

namespace {

// "0,2..4".
std::string Runs(const std::set<int>& numbers) {
  std::string told;
  for (auto at = numbers.begin(); at != numbers.end();) {
    const int from = *at;
    int to = from;
    while (++at != numbers.end() && *at == to + 1) ++to;
    told += (told.empty() ? "" : ",") + std::to_string(from);
    if (to != from) told += ".." + std::to_string(to);
  }
  return told;
}

// What an element of an array is sorted by.
std::pair<std::string, int> InOrder(const std::string& name) {
  const std::size_t open = name.ends_with(')') ? name.rfind('(') : std::string::npos;
  return {name.substr(0, open), open == std::string::npos ? -1 : std::stoi(name.substr(open + 1))};
}

}  // namespace

Lines Gathered(const Lines& names) {
  Lines bases;
  std::map<std::string, std::set<int>> indexes;
  for (const std::string& name : names) {
    const auto [base, index] = InOrder(name);
    if (!indexes.contains(base)) bases.push_back(base);
    auto& found = indexes[base];
    if (index >= 0) found.insert(index);
  }
  for (std::string& base : bases) {
    if (!indexes[base].empty()) base += "(" + Runs(indexes[base]) + ")";
  }
  return bases;
}

namespace {

// Facets whose text says all, and what is said when it has gone.
const std::map<std::string, std::string> kFlags{
    {"state", "usable"},   {"ticked", "unticked"},   {"running", "stopped"},       {"usable", "not usable"},
    {"mark", "no mark"},   {"locked", "not locked"}, {"choice", "none of"},        {"origin", "no origin"},
    {"close", "closable"}, {"line", "line is free"}, {"pointer", "normal pointer"}};

}  // namespace

bool IsFlag(const std::string& facet) { return kFlags.contains(facet); }

std::string Saying(const std::string& facet, const std::string& text) {
  if (facet.empty() || facet == "row" || facet == "series" || facet == "hint") return text;
  if (const auto flag = kFlags.find(facet); flag != kFlags.end()) return text.empty() ? flag->second : text;
  return facet + " " + (text.empty() ? "gone" : text);
}

Lines ChangeLines(const Facets& changes) {
  Lines values, lines;
  std::map<std::string, Lines> flags, texts;
  for (const auto& [name, text] : changes) {
    const auto& [control, facet] = name;
    if (facet == "text") {
      values.push_back(control + " = " + text);
    } else if (facet == "choice" && !text.empty()) {
      flags["chosen"].push_back(text);
    } else if (control.empty()) {
      lines.push_back(Saying(facet, text));
    } else {
      (IsFlag(facet) ? flags : texts)[Saying(facet, text)].push_back(control);
    }
  }
  const auto add = [&](const Lines& more) { lines.insert(lines.end(), more.begin(), more.end()); };
  for (const auto& [saying, names] : flags) add(Packed(saying + ": ", Gathered(names), ", "));
  add(Packed("", values, "; "));
  Lines brief;
  for (const auto& [saying, names] : texts) {
    if (names.size() <= 4 && saying.size() <= kBrief) {
      brief.push_back(Joined(Gathered(names)) + ": " + saying);
      continue;
    }
    add(Packed("", Gathered(names), ", "));
    lines.back() += ": " + saying;
  }
  add(Packed("", brief, "; "));
  return lines;
}

Lines WholeLines(const Facets& shown) {
  std::vector<std::pair<std::string, Facets>> controls;
  for (const auto& [name, text] : shown) {
    if (controls.empty() || controls.back().first != name.first) controls.push_back({name.first, {}});
    controls.back().second[name] = text;
  }
  std::stable_sort(controls.begin(), controls.end(),
                   [](const auto& a, const auto& b) { return InOrder(a.first) < InOrder(b.first); });
  std::vector<std::pair<std::string, Lines>> told;  // what is said, of whom
  for (const auto& [control, facets] : controls) {
    std::string said;
    for (const auto& [name, text] : facets) said += (said.empty() ? "" : "; ") + Saying(name.second, text);
    const std::string array = control.substr(0, control.rfind('('));
    const auto same = std::find_if(told.begin(), told.end(), [&](const auto& other) {
      return other.first == said && other.second.front().starts_with(array + "(");
    });
    if (same != told.end()) {
      same->second.push_back(control);
    } else {
      told.push_back({said, {control}});
    }
  }
  Lines lines;
  for (const auto& [said, names] : told) {
    const std::string name = Gathered(names).front();
    lines.push_back(name + (name.empty() ? "" : ": ") + said);
  }
  return lines;
}

Lines BoxLines(const Lines& boxes) {
  static const std::regex kOfOne("(.+?)( :?[A-Z][a-z ][^]*)"), kBreak("\n");
  if (boxes.empty()) return {"! none"};
  std::vector<std::pair<std::string, Lines>> said;  // what, of whom
  for (const std::string& box : boxes) {
    std::smatch found;
    const bool of_one = std::regex_match(box, found, kOfOne);
    const std::string what = of_one ? found.str(2) : box;
    if (said.empty() || said.back().first != what) said.push_back({what, {}});
    said.back().second.push_back(of_one ? found.str(1) : "");
  }
  Lines lines;
  for (const auto& [what, whom] : said) {
    const bool of_one = !whom.front().empty();
    lines.push_back(of_one ? Packed("! ", whom, ", ").front() : "! ");
    lines.back() += std::regex_replace(what, kBreak, "\\n");
    if (!of_one && whom.size() > 1) lines.back() += " x" + std::to_string(whom.size());
  }
  return lines;
}

namespace {

// "03 01 48 00 01" as "03 0148+01", "10 00 5A 00 01 02 00 0B" as "10 005A=000B"; what is not so as it is.
std::string Short(const std::string& request) {
  static const std::regex kRead("(0[34]) (..) (..) 00 (..)"), kWrite("(06) (..) (..)((?: ..){2})"),
      kMany("(10) (..) (..) 00 (..) (..)((?: ..)+)");
  static const std::regex kSpace(" ");
  std::smatch found;
  if (std::regex_match(request, found, kRead)) return found.format("$1 $2$3+$4");
  if (std::regex_match(request, found, kWrite)) {
    return found.format("$1 $2$3=") + std::regex_replace(found.str(4), kSpace, "");
  }
  if (!std::regex_match(request, found, kMany)) return request;
  const std::size_t bytes = found.str(6).size() / 3;
  if (std::stoul(found.str(5), nullptr, 16) != bytes || std::stoul(found.str(4), nullptr, 16) * 2 != bytes) {
    return request;
  }
  return found.format("$1 $2$3=") + std::regex_replace(found.str(6), kSpace, "");
}

// How many reads from this one on are of neighbouring blocks: "04 00C0+40, 04 0140+40", ...
std::size_t Neighbours(const Lines& requests, std::size_t from) {
  static const std::regex kRead("0[34] ([0-9A-F]{4})\\+([0-9A-F]{2})");
  std::smatch block;
  unsigned long end = 0;
  for (std::size_t at = from; at < requests.size(); ++at) {
    const std::string read = Short(requests[at]);
    if (!std::regex_match(read, block, kRead)) return at - from;
    const unsigned long begin = std::stoul(block.str(1), nullptr, 16);
    if (at > from && (begin != end || read.substr(7) != Short(requests[from]).substr(7))) return at - from;
    end = begin + 2 * std::stoul(block.str(2), nullptr, 16);
  }
  return requests.size() - from;
}

}  // namespace

Lines RequestLines(const Lines& requests) {
  if (requests.empty()) return {"> none"};
  Lines told;
  for (std::size_t at = 0; at < requests.size();) {
    const std::size_t from = at;
    if (const std::size_t blocks = Neighbours(requests, from); blocks > 2) {
      at += blocks;
      told.push_back(Short(requests[from]).substr(0, 7) + ".." + Short(requests[at - 1]).substr(3));
      continue;
    }
    while (++at < requests.size() && requests[at] == requests[from]) continue;
    told.push_back(Short(requests[from]) + (at - from > 1 ? " x" + std::to_string(at - from) : ""));
  }
  return Packed("> ", told, ", ");
}

void ExpectFileTells(const std::string& path, const std::string& now) {
  if (std::getenv("VELTRANO3_RENEW") != nullptr) {
    std::ofstream(path, std::ios::binary) << now;
    FAIL() << path << " is written anew";
  }
  SCOPED_TRACE("If this is meant, look at what VELTRANO3_RENEW=1 makes of " + path);
  std::ifstream file(path, std::ios::binary);
  std::string line, told;
  std::istringstream lines(now);
  for (int number = 1; std::getline(file, told); ++number) {
    ASSERT_TRUE(std::getline(lines, line)) << "ends before line " << number << ": " << told;
    ASSERT_EQ(line, told) << "in line " << number;
  }
  EXPECT_FALSE(std::getline(lines, line)) << "goes on with " << line;
}

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "shown/told_window.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <regex>
#include <set>
#include <stdexcept>

#include "resources/string_table.h"
#include "support/told_lines.h"
#include "values/hex_digits.h"

namespace vlt::test {
namespace {

constexpr int kLanguages = 5000;  // the ids of one language lie so far from those of the other
// The register that a text tells, or the number that it ends in.
const std::regex kNumber("[0-9][0-9A-F]{3}|[0-9]+$");

// How much higher the registers of the one hint lie than those of the other; nothing when that is all that
// differs.
std::optional<unsigned> Higher(const std::string& hint, const std::string& other) {
  std::optional<unsigned> higher;
  std::sregex_iterator ours(hint.begin(), hint.end(), kNumber), theirs(other.begin(), other.end(), kNumber),
      end;
  for (; ours != end && theirs != end; ++ours, ++theirs) {
    const auto number = [](const std::sregex_iterator& at) { return std::stoul(at->str(), nullptr, 16); };
    const auto by = static_cast<unsigned>(number(ours) - number(theirs));
    if (higher.value_or(by) != by) return std::nullopt;
    higher = by;
  }
  const auto words = [](const std::string& text) { return std::regex_replace(text, kNumber, "#"); };
  return words(hint) == words(other) ? higher : std::nullopt;
}

// "~" for the name of the control that was worked; how many values have come to be sent.
Facets InBrief(const Facets& changes, const Facets& before, const std::string& own) {
  const std::string name = own.ends_with("Check") ? own.substr(0, own.size() - 5) : own;
  Facets brief;
  for (const auto& [changed, now] : changes) {
    auto facet = changed;
    std::string text = now;
    if (facet.second == "# in the title") {
      const auto was = before.find(facet);
      const int more = std::atoi(text.c_str()) - (was == before.end() ? 0 : std::stoi(was->second));
      text = (more < 0 ? "" : "+") + std::to_string(more);
    }
    if (!name.empty() && facet.first != name && facet.first.starts_with(name)) {
      facet.first = "~" + facet.first.substr(name.size());
    }
    brief[facet] = text;
  }
  return brief;
}

const std::pair<std::string, std::string> kStatus[] = {{"", "status"}, {"", "panel 2"}, {"", "panel 3"}};

}  // namespace

Outcome ToldWindow::Taken(const Outcome& outcome) {
  Outcome taken = outcome;
  Facets hints;
  std::erase_if(taken.shown, [&](const auto& facet) {
    if (facet.first.second == "hint") hints.insert(facet);
    return facet.first.second == "hint";
  });
  if (hints.empty()) return taken;
  auto set = std::find(hints_.begin(), hints_.end(), hints);
  if (set == hints_.end()) set = hints_.insert(set, hints);
  taken.shown[{"", "hints"}] = std::to_string(set - hints_.begin() + 1);
  return taken;
}

void ToldWindow::AddLine(const std::string& before, const std::string& line) {
  for (const std::string& part : lists_.Broken(line)) text_ += before + part + "\n";
}

void ToldWindow::Add(const std::string& step, const Lines& lines) {
  Lines broken;
  for (const std::string& line : lines) {
    for (const std::string& part : lists_.Broken(line)) broken.push_back(part);
  }
  broken = InOne(step + " - ", broken);
  text_ += step + (broken.size() == 1 ? " - " + broken.front() : "") + "\n";
  if (broken.size() == 1) return;
  for (const std::string& line : broken) text_ += "  " + line + "\n";
}

void ToldWindow::Opened(const std::string& of, const Outcome& outcome) {
  const Outcome opened = Taken(outcome);
  const bool first = first_opened_.shown.empty();
  Lines lines;
  if (opened.requests != first_opened_.requests) lines = RequestLines(opened.requests);
  const Lines shown =
      first ? WholeLines(opened.shown) : ChangeLines(Changes(first_opened_.shown, opened.shown));
  lines.insert(lines.end(), shown.begin(), shown.end());
  if (lines.empty()) return;
  Title("opened: " + of);
  for (const std::string& line : lines) AddLine("", line);
  if (first) first_opened_ = opened;
}

void ToldWindow::Part(const std::string& kind, const std::string& of, const Outcome& opening) {
  EndPart();
  kind_ = kind;
  title_ = kind + ": " + of;
  shown_ = {Taken(opening).shown};
  seen_.push_back({title_, "opening", shown_.front()});
  Title(title_);
}

void ToldWindow::EndPart() {
  const auto tell = [&](const std::string& what, const Lines& names) {
    for (const std::string& line : Packed(what + ": ", Gathered(names), ", ")) AddLine("", line);
  };
  for (const auto& [change, steps] : std::exchange(alike_, {})) {
    for (const std::string& line : Packed(change + " <- ", Gathered(steps), ", ")) AddLine("", line);
  }
  tell("nothing else", std::exchange(without_, {}));
  tell("back again", std::exchange(back_, {}));
  tell("as the last time", std::exchange(as_before_, {}));
  const std::vector<Done> done = std::exchange(done_, {});
  if (kind_.empty()) return;
  const auto [first, is_first] = firsts_.try_emplace(kind_, done);
  if (is_first) return;
  Lines not_done;
  for (const Done& step : first->second) {
    const auto is_it = [&](const Done& other) { return other.name == step.name; };
    if (std::none_of(done.begin(), done.end(), is_it)) not_done.push_back(step.name);
  }
  tell("not done", not_done);
}

void ToldWindow::Step(std::string name, const Outcome& outcome, const std::string& own) {
  Outcome taken = Taken(outcome);
  Facets changes = Changes(shown_.back(), taken.shown);
  std::erase_if(changes, [&](const auto& change) {
    const auto& [facet, text] = change;
    return !own.empty() && (facet.first == own || (facet.second == "choice" && text == own));
  });
  if (taken.shown.empty()) changes = {{{"", "window"}, "closed"}};
  changes = InBrief(changes, shown_.back(), own);
  Do({std::move(name), taken.boxes, taken.requests, changes}, taken.shown);
}

void ToldWindow::Anew(std::string name, const Outcome& outcome) {
  Outcome taken = Taken(outcome);
  Facets changes = Changes(shown_.front(), taken.shown);
  changes[{"", "against"}] = "how it opened";
  Do({std::move(name), taken.boxes, taken.requests, changes}, taken.shown);
}

void ToldWindow::Do(Done done, const Facets& shown) {
  const auto is_it = [&](const Done& other) { return other.name == done.name; };
  while (std::any_of(done_.begin(), done_.end(), is_it)) done.name += " again";
  done_.push_back(done);
  const Done told = NotSaidBefore(done, shown);
  const auto part = firsts_.find(kind_);
  const std::vector<Done>& steps = part == firsts_.end() ? std::vector<Done>{} : part->second;
  const auto first = std::find_if(steps.begin(), steps.end(), is_it);
  if (first != steps.end()) {
    if (*first != done) AddOrGather(done, LinesAgainst(*first, done));
  } else if (done.boxes.empty() && done.requests.empty() && !done.changes.empty() && shown_.size() > 1 &&
             shown_[shown_.size() - 2] == shown) {
    if (!done.name.ends_with(" on again")) back_.push_back(done.name);
  } else if (const Lines lines = LinesOf(told, shown); !lines.empty()) {
    AddOrGather(done, lines);
  } else {
    const bool does = !done.boxes.empty() || !done.requests.empty() || !done.changes.empty();
    (does ? as_before_ : without_).push_back(done.name);
  }
  shown_.push_back(shown);
  seen_.push_back({title_, done.name, shown});
}

// Without what its command has said the last time; "none" is something to say.
ToldWindow::Done ToldWindow::NotSaidBefore(const Done& done, const Facets& shown) {
  const std::size_t at = done.name.find(" at ");
  if (at == std::string::npos) return done;
  Said said{done.boxes, done.requests, {}};
  for (const auto& name : kStatus) {
    if (shown.contains(name)) said.status[name] = shown.at(name);
  }
  const auto [last, is_new] = said_.try_emplace(done.name.substr(0, at), said);
  if (is_new) return done;
  const Said before = std::exchange(last->second, said);
  Done told = done;
  for (const auto& name : kStatus) told.changes.erase(name);
  told.changes.merge(Changes(before.status, said.status));
  const auto forget = [](Lines& lines, const Lines& old) {
    if (lines == old) {
      lines.clear();
    } else if (lines.empty()) {
      lines = {"none"};
    }
  };
  forget(told.boxes, before.boxes);
  forget(told.requests, before.requests);
  return told;
}

// A step that has one thing to tell waits for others that have the same.
void ToldWindow::AddOrGather(const Done& done, const Lines& lines) {
  const bool one = lines.size() == 1 && done.boxes.empty() && done.requests.empty() &&
                   !lines.front().starts_with("as after") && done.name.find(" at ") == std::string::npos;
  if (!one) return Add(done.name, lines);
  const std::string change = test::Whole(lines.front());
  const auto is_it = [&](const auto& other) { return other.first == change; };
  auto found = std::find_if(alike_.begin(), alike_.end(), is_it);
  if (found == alike_.end()) found = alike_.insert(found, {change, {}});
  found->second.push_back(done.name);
}

std::string ToldWindow::SeenBefore(const Facets& shown) const {
  const Seen* found = nullptr;
  for (const Seen& seen : seen_) {
    if (seen.shown == shown && (found == nullptr || (seen.part == title_ && found->part != title_))) {
      found = &seen;
    }
  }
  if (found == nullptr) return {};
  return found->step + (found->part == title_ ? "" : " (" + found->part + ")");
}

Lines ToldWindow::LinesOf(const Done& done, const Facets& shown) {
  Lines lines;
  const auto add = [&](const Lines& more) { lines.insert(lines.end(), more.begin(), more.end()); };
  if (!done.boxes.empty()) add(BoxLines(done.boxes));
  if (!done.requests.empty()) add(RequestLines(done.requests));
  const Lines changed = ChangeLines(done.changes);
  const std::size_t length =
      std::accumulate(changed.begin(), changed.end(), std::size_t{},
                      [](std::size_t sum, const auto& line) { return sum + line.size(); });
  const std::string seen = changed.size() > 1 || length > 80 ? SeenBefore(shown) : "";
  add(seen.empty() ? changed : Lines{"as after " + seen});
  return lines;
}

Lines ToldWindow::LinesAgainst(const Done& first, const Done& done) {
  Lines lines;
  const auto add = [&](const Lines& more) { lines.insert(lines.end(), more.begin(), more.end()); };
  if (done.boxes != first.boxes) add(BoxLines(done.boxes));
  if (done.requests != first.requests) add(RequestLines(done.requests));
  Facets now = done.changes;
  std::map<std::string, Lines> only_there;
  for (const auto& [name, text] : first.changes) {
    const auto found = now.find(name);
    if (found == now.end()) {
      only_there[IsFlag(name.second) ? Saying(name.second, text) : name.second].push_back(name.first);
    } else if (found->second == text) {
      now.erase(found);
    }
  }
  add(ChangeLines(now));
  for (const auto& [what, names] : only_there) {
    const std::string head = "not " + what + (what.empty() ? "" : " ");
    add(names.front().empty() ? Lines{head} : Packed(head + "of ", Gathered(names), ", "));
  }
  return lines;
}

// Hints by letters for their words and by their registers: "A, B: a 018E, b 0190".
void ToldWindow::TellHints() {
  static const std::regex kLine(R"(\\n)");
  if (hints_.empty()) return;
  Lines words;
  const auto brief = [&](Facets hints) {
    for (auto& [name, text] : hints) {
      Lines told;
      for (std::sregex_token_iterator at(text.begin(), text.end(), kLine, -1), end; at != end; ++at) {
        const std::string line = *at;
        std::smatch number;
        if (!std::regex_search(line, number, kNumber)) {
          told.push_back(line);
          continue;
        }
        const std::string word = std::regex_replace(line, kNumber, "#");
        auto place = std::find(words.begin(), words.end(), word);
        if (place == words.end()) place = words.insert(place, word);
        told.push_back(static_cast<char>('a' + (place - words.begin())) + (" " + number.str()));
      }
      text = Joined(told);
    }
    return ChangeLines(hints);
  };
  Title("hints");
  Add("hints 1", brief(hints_.front()));
  for (std::size_t at = 1; at < hints_.size(); ++at) TellFurtherHints(at, brief);
  for (std::size_t at = 0; at < words.size(); ++at) {
    text_ += static_cast<char>('a' + at) + (": " + words[at]) + "\n";
  }
}

// By how much their registers are higher, where that is all.
void ToldWindow::TellFurtherHints(std::size_t at, const std::function<Lines(const Facets&)>& brief) {
  std::map<unsigned, Lines> by;
  Facets others = Changes(hints_.front(), hints_[at]);
  std::erase_if(others, [&](const auto& hint) {
    const auto first = hints_.front().find(hint.first);
    const auto higher = first == hints_.front().end() ? std::nullopt : Higher(hint.second, first->second);
    if (higher) by[*higher].push_back(hint.first.first);
    return higher.has_value();
  });
  Lines lines;
  for (const auto& [higher, names] : by) {
    const Lines told = Packed("higher by " + HexDigits(higher, 4) + "H: ", Gathered(names), ", ");
    lines.insert(lines.end(), told.begin(), told.end());
  }
  const Lines told = brief(others);
  lines.insert(lines.end(), told.begin(), told.end());
  Add("hints " + std::to_string(at + 1), lines);
}

std::string ToldWindow::Whole() {
  EndPart();
  kind_.clear();
  TellHints();
  return text_;
}

namespace {

// The texts in both languages, their numbers and breaks as they are told.
std::set<std::pair<std::string, std::string>> RowsOfTheTable() {
  std::set<std::pair<std::string, std::string>> rows;
  const auto text = [](int id) {
    return std::regex_replace(std::regex_replace(LookupText(id), std::regex("\n"), "\\n"), kNumber, "#");
  };
  for (int id = 0; id < kLanguages; ++id) {
    try {
      rows.insert({text(kLanguages + id), text(id)});
    } catch (const std::out_of_range&) {
      continue;
    }
  }
  return rows;
}

}  // namespace

void ToldWords::Add(const std::string& window, Facets ours, Facets theirs) {
  static const std::regex kBetween(R"( \| |\\n)"), kIndex("^[0-9]+ ");
  const auto parts = [&](const auto& facet) {
    const std::string text =
        facet.first.second == "text" ? std::regex_replace(facet.second, kIndex, "") : facet.second;
    return Lines{std::sregex_token_iterator(text.begin(), text.end(), kBetween, -1), {}};
  };
  const auto numbers = [](const std::string& text) {
    return Lines{std::sregex_token_iterator(text.begin(), text.end(), kNumber), {}};
  };
  for (const auto& facet : ours) {
    const auto found = theirs.find(facet.first);
    if (found == theirs.end() || IsFlag(facet.first.second)) continue;
    const Lines of_ours = parts(facet), of_theirs = parts(*found);
    if (of_ours.size() != of_theirs.size()) continue;
    for (std::size_t at = 0; at < of_ours.size(); ++at) {
      std::string our = of_ours[at], their = of_theirs[at];
      if (our.empty()) continue;
      if (numbers(our) == numbers(their)) {
        for (std::string* text : {&our, &their}) *text = std::regex_replace(*text, kNumber, "#");
      }
      words_[our][their].push_back(window + "." + facet.first.first);
    }
    found->second = facet.second;
  }
  for (const std::string& line : ChangeLines(Changes(ours, theirs))) others_ += window + ": " + line + "\n";
}

std::string ToldWords::Whole() const {
  const std::set<std::pair<std::string, std::string>> rows = RowsOfTheTable();
  std::string told;
  for (const auto& [ours, all] : words_) {
    for (const auto& [theirs, names] : all) {
      if (all.size() == 1 && (theirs == ours || rows.contains({ours, theirs}))) continue;
      told += ours + " -> " + theirs;
      if (all.size() > 1) told += "   at " + Joined(Gathered(names));
      told += "\n";
    }
  }
  return told + others_;
}

}  // namespace vlt::test

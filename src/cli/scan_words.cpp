// SPDX-License-Identifier: GPL-3.0-or-later
// Looking for meters on a port.
#include <charconv>
#include <optional>

#include "cli/key_values.h"
#include "cli/meter_words.h"
#include "cli/on_line.h"
#include "cli/trouble.h"
#include "files/settings_file.h"
#include "link/port.h"
#include "meter/meter_search.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_words.h"
#include "shell/cset_search.h"

namespace vlt {
namespace {

constexpr std::string_view kPort = "port";
constexpr std::string_view kStations = "stations";
constexpr std::string_view kKeys[] = {kPort, kStations};
constexpr const char* kPointToPoint = "RS232C";
constexpr int kLastStation = 31;

// A whole number that is all of `text`.
std::optional<int> WholeNumber(std::string_view text) {
  int number = 0;
  const auto [behind, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = fault == std::errc() && behind == text.data() + text.size();
  return whole ? std::optional(number) : std::nullopt;
}

// The whole numbers of "5" or "1-31", from `least` to `most`; none for any other text.
std::vector<int> Numbers(std::string_view text, int least, int most) {
  const std::size_t dash = text.find('-');
  const auto first = WholeNumber(text.substr(0, dash));
  const auto last = dash == std::string_view::npos ? first : WholeNumber(text.substr(dash + 1));
  std::vector<int> numbers;
  if (!first || !last || *first < least || *last > most) return numbers;
  for (int number = *first; number <= *last; ++number) numbers.push_back(number);
  return numbers;
}

}  // namespace

SearchPlan MeterWords::PlanOf(const Arguments& arguments) const {
  const KeyValues values = ReadKeyValues(app_, arguments, kKeys);
  const auto numbers = [&](std::string_view key, int least, int most) {
    const std::vector<int> found = Numbers(values.at(key), least, most);
    if (!found.empty()) return found;
    throw Trouble{
        ScriptStatus::kUnknown,
        Format(text::kNoNumberOf, {key, values.at(key), std::to_string(least), std::to_string(most)})};
  };
  SearchPlan plan;
  plan.port = values.contains(kPort) ? numbers(kPort, 1, kHighestPort).front() : PortNumber(app_);
  if (plan.port == 0) Fail(text::kPortNotChosen, {});
  plan.stop_bits = app_.state.StopBits;
  plan.tries = AllTries({app_.state.Speed, app_.state.Parity});
  plan.stations = values.contains(kStations) ? numbers(kStations, 0, kLastStation)
                                             : StationsToSearch(app_.state.TransMethod != kPointToPoint);
  plan.first_only = plan.stations == std::vector{0};
  return plan;
}

void MeterWords::Scan(const Arguments& arguments) {
  KnowSettings();
  const SearchPlan plan = PlanOf(arguments);
  const std::string port = "COM" + std::to_string(plan.port);
  const OnLine line(app_, lock_holder_, OnLine::Port::kAsItIs);
  LinkTry told;
  const auto step = [&](const SearchStep& next) {
    // Once for each speed and parity: a station alone takes too little time to be told of.
    if (!(next.link == told)) {
      told = next.link;
      desk_.tell({"progress", std::to_string(next.number), std::to_string(plan.Steps()),
                  port + " " + told.speed + "," + told.parity});
    }
    return !desk_.stop();
  };
  const auto found = [&](const FoundMeter& meter) {
    const auto texts = FoundMeterTexts(app_, meter);
    desk_.tell({"found", port, meter.link.speed, meter.link.parity, texts[2], texts[3], texts[4]});
  };
  const SearchResult result = SearchMeters(app_, plan, {.step = step, .found = found});
  if (result.end == SearchEnd::kFinished && result.found > 0) return;
  throw Trouble{ScriptStatus::kDiffers, SearchEndText(app_, plan.port, result)};
}

}  // namespace vlt

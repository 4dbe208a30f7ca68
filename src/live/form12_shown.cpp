// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/settings_file.h"
#include "live/form12.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr std::size_t kTimeOfDay = 11;  // in "2026/11/24 10:00:05"
constexpr const char* kUnknown = "-";

std::string Tenths(std::optional<std::int64_t> ms) {
  if (!ms) return kUnknown;
  const std::int64_t tenths = (*ms + 50) / 100;
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

}  // namespace

void Form12::ShowUnits(int at) {
  const Station& station = stations_[static_cast<std::size_t>(at)];
  for (int i = 0; i < kDisplays; ++i) {
    const StationDisplay& display = displays_[static_cast<std::size_t>(i)];
    ControlsOf(i)
        .unit(station.number - 1)
        .SetCaption(StationUnitCaption(station, display, app().state.Spoken()));
  }
}

void Form12::ShowValues() {
  for (int at = 0; at < static_cast<int>(stations_.size()); ++at) {
    for (int display = 0; display < kDisplays; ++display) ShowValue(at, display);
  }
}

// A station that does not answer is told by the words and by the colour of a field that holds something
// wrong.
void Form12::ShowValue(int at, int display) {
  const Station& station = stations_[static_cast<std::size_t>(at)];
  const StationDisplay& shown = displays_[static_cast<std::size_t>(display)];
  TextBox& box = ControlsOf(display).shown(station.number - 1);
  box.SetText(ShownStationValue(station, shown, app().state.Spoken()));
  box.SetMark(IsSilent(station, shown) ? FormatText(app().Text(text::kStationSilent), {station.failure})
                                       : "");
}

void Form12::ShowHealth(int at) {
  const Station& station = stations_[static_cast<std::size_t>(at)];
  Label& answered = lblAnswered(station.number - 1);
  if (station.answered) {
    const std::string time = DateTimeText(*station.answered);
    answered.SetCaption(time.substr(kTimeOfDay));
    answered.SetHint(time);
  } else {
    answered.SetCaption(kUnknown);
  }
  lblFailed(station.number - 1)
      .SetCaption(std::to_string(station.failed) + "/" + std::to_string(station.polls));
}

void Form12::ShowPace() {
  const std::string load = load_ ? GeneralText(RoundHalfEven(*load_ * 100)) : kUnknown;
  StatusBar2.SetPanel(
      2, FormatText(app().Text(text::kStationTiming), {Tenths(cycle_ms_), Tenths(pass_ms_), load}));
}

// The file's name, or what is wrong with it, or that there is none.
void Form12::ShowLog() {
  const std::string trouble = PvFileName.empty() ? app().Text(text::kNoLog) : log_.Trouble();
  StatusBar2.SetPanel(3, trouble.empty() ? LastComponent(PvFileName) : trouble);
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/proven_write.h"

#include <algorithm>
#include <utility>

#include "link/registers.h"
#include "meter/display_table.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"

namespace vlt {
namespace {

constexpr int kBacklightTimed = 1;  // of the backlight: it goes out after the lights-out time

// What goes to the meter in one frame.
struct Frame10H {
  int address = 0;
  std::vector<std::uint8_t> data;
};

RegisterSpan SpanOf(const ParameterPlace& place) {
  return {.function = place.row->function, .address = place.Address(), .count = place.row->Words()};
}

// Backlight and lights-out time go together, so that the meter never sees one without the other; without a
// time the backlight goes alone. False when the other one can't be read.
bool JoinBacklight(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                   Frame10H& frame) {
  const Parameter& backlight = DisplayRow("backlight");
  const Parameter& time = DisplayRow("lights_out_time");
  const bool is_time = place.row == &time;
  if (!is_time && CodeAt(backlight, raw, 0) != kBacklightTimed) return true;
  const auto other = ReadPlace(app, {is_time ? &backlight : &time, 0});
  if (other.empty()) return false;
  // A meter whose backlight stays on has no use for a time: it is kept for later, by itself.
  if (is_time && CodeAt(backlight, other, 0) != kBacklightTimed) return true;
  frame.address = backlight.address;
  frame.data = is_time ? other : std::vector(raw.begin(), raw.end());
  if (is_time) {
    frame.data.insert(frame.data.end(), raw.begin(), raw.end());
  } else {
    frame.data.insert(frame.data.end(), other.begin(), other.end());
  }
  return true;
}

WriteResult Send(App& app, const Parameter& row, const Frame10H& frame) {
  if (row.write == WriteWith::kSingle) {
    return WriteRegister(app, frame.address, (frame.data[0] << 8) | frame.data[1]);
  }
  return WriteRegisters(app, frame.address, frame.data);
}

std::string ReadBackText(App& app, const ParameterPlace& place, const SharedState& facts,
                         const std::vector<std::uint8_t>& came_back) {
  if (!came_back.empty()) {
    return FormatText(app.Text(text::kRegisterHolds), {ValueText(*place.row, facts, came_back)});
  }
  const std::string& error = app.state.LastErrorText;
  return FormatText(app.Text(text::kNotReadBack), {error.empty() ? app.Text(text::kOtherEcho) : error});
}

ProvenWrite NotSent(std::string reason) {
  ProvenWrite proven;
  proven.reason = std::move(reason);
  return proven;
}

ProvenWrite Judge(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                  const SharedState& facts, WriteResult result) {
  const std::string failure = WriteFailureText(app, result);
  const bool was_clean = app.state.LastErrorText.empty() && result == WriteResult::kProven;
  ProvenWrite proven;
  if (app.state.PortIsOpen) ReadRegistersProven(app, SpanOf(place), proven.came_back, was_clean);
  if (std::equal(raw.begin(), raw.end(), proven.came_back.begin(), proven.came_back.end())) {
    proven.end = WriteEnd::kStored;
    return proven;
  }
  proven.end = result == WriteResult::kRefused ? WriteEnd::kRefused : WriteEnd::kNotProven;
  proven.reason = failure;
  if (proven.end == WriteEnd::kRefused) return proven;
  if (!failure.empty()) proven.reason += "; ";
  proven.reason += ReadBackText(app, place, facts, proven.came_back);
  return proven;
}

}  // namespace

std::vector<std::uint8_t> ReadPlace(App& app, const ParameterPlace& place) {
  RegisterData data;
  ReadRegistersProven(app, SpanOf(place), data);
  return data;
}

ProvenWrite WriteProven(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw) {
  return WriteProven(app, place, raw, app.state);
}

ProvenWrite WriteProven(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                        const SharedState& facts) {
  const Parameter& row = *place.row;
  if (row.write == WriteWith::kNothing) return NotSent(app.Text(text::kMeterComputes));
  Frame10H frame{place.Address(), {raw.begin(), raw.end()}};
  const bool lights = &row == &DisplayRow("backlight") || &row == &DisplayRow("lights_out_time");
  if (lights && !JoinBacklight(app, place, raw, frame)) {
    return NotSent(FormatText(app.Text(text::kNotReadBack), {app.state.LastErrorText}));
  }
  if (!app.state.PortIsOpen) return NotSent(app.state.LastErrorText);
  ProvenWrite proven = Judge(app, place, raw, facts, Send(app, row, frame));
  // What a page has read of this meter may be old now.
  if (proven.end != WriteEnd::kRefused) app.origins.SettingsWereSent();
  return proven;
}

std::string WriteEndText(WriteEnd end, int lang_offset) {
  return LookupText(text::kWriteEnds + static_cast<int>(end) + lang_offset);
}

}  // namespace vlt

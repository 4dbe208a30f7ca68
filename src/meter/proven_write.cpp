// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/proven_write.h"

#include <algorithm>
#include <utility>

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
// time the backlight goes alone. Not ok when the other one can't be read.
ExchangeReport JoinBacklight(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                             Frame10H& frame) {
  const Parameter& backlight = DisplayRow("backlight");
  const Parameter& time = DisplayRow("lights_out_time");
  const bool is_time = place.row == &time;
  if (!is_time && CodeAt(backlight, raw, 0) != kBacklightTimed) return {.ok = true};
  std::vector<std::uint8_t> other;
  ExchangeReport exchange = ReadPlace(app, {is_time ? &backlight : &time, 0}, other);
  // A meter whose backlight stays on has no use for a time: it is kept for later, by itself.
  if (!exchange || (is_time && CodeAt(backlight, other, 0) != kBacklightTimed)) return exchange;
  frame.address = backlight.address;
  frame.data = is_time ? other : std::vector(raw.begin(), raw.end());
  if (is_time) {
    frame.data.insert(frame.data.end(), raw.begin(), raw.end());
  } else {
    frame.data.insert(frame.data.end(), other.begin(), other.end());
  }
  return exchange;
}

WriteReport Send(App& app, const Parameter& row, const Frame10H& frame) {
  if (row.write == WriteWith::kSingle) {
    return WriteRegister(app, frame.address, (frame.data[0] << 8) | frame.data[1]);
  }
  return WriteRegisters(app, frame.address, frame.data);
}

ProvenWrite NotSent(std::string reason) {
  ProvenWrite proven;
  proven.reason = std::move(reason);
  return proven;
}

ProvenWrite Judge(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                  const ToldFacts& facts, const WriteReport& write) {
  const bool was_clean = write.Proven() && write.exchange.Clean();
  ProvenWrite proven;
  // A port that went away has failed the write.
  std::string unread = write.exchange.text;
  if (app.state.PortIsOpen) {
    unread = ReadRegistersProven(app, SpanOf(place), proven.came_back, was_clean).text;
  }
  if (std::equal(raw.begin(), raw.end(), proven.came_back.begin(), proven.came_back.end())) {
    proven.end = WriteEnd::kStored;
    return proven;
  }
  proven.reason = WriteFailureText(app, write);
  proven.end = write.result == WriteResult::kRefused ? WriteEnd::kRefused : WriteEnd::kNotProven;
  if (proven.end == WriteEnd::kRefused) return proven;
  if (!write.Proven()) proven.reason += "; ";
  proven.reason += proven.came_back.empty() ? FormatText(app.Text(text::kNotReadBack), {unread})
                                            : FormatText(app.Text(text::kRegisterHolds),
                                                         {ValueText(*place.row, facts, proven.came_back)});
  return proven;
}

}  // namespace

ExchangeReport ReadPlace(App& app, const ParameterPlace& place, std::vector<std::uint8_t>& raw) {
  return ReadRegistersProven(app, SpanOf(place), raw);
}

ProvenWrite WriteProven(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw) {
  return WriteProven(app, place, raw, app.state);
}

ProvenWrite WriteProven(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                        const ToldFacts& facts) {
  const Parameter& row = *place.row;
  if (row.write == WriteWith::kNothing) return NotSent(app.Text(text::kMeterComputes));
  Frame10H frame{place.Address(), {raw.begin(), raw.end()}};
  const bool lights = &row == &DisplayRow("backlight") || &row == &DisplayRow("lights_out_time");
  if (lights) {
    const ExchangeReport exchange = JoinBacklight(app, place, raw, frame);
    if (!exchange) return NotSent(FormatText(app.Text(text::kNotReadBack), {exchange.text}));
  }
  // Who closed it has told the status line why.
  if (!app.state.PortIsOpen) return NotSent(app.state.LastErrorText);
  ProvenWrite proven = Judge(app, place, raw, facts, Send(app, row, frame));
  // What a page has read of this meter may be old now.
  if (proven.end != WriteEnd::kRefused) app.origins.SettingsWereSent();
  return proven;
}

std::string WriteEndText(WriteEnd end, Language language) {
  return LookupText(text::kWriteEnds + static_cast<int>(end), language);
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/wave_store.h"

#include <algorithm>

#include "files/csv_log.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kChannelNames[] = {182, 183};
constexpr const char* kFirstSample = "FIFO COUNTER[1]";
constexpr const char* kLineEnd = "\r\n";

std::string TwoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

// A cell that may hold commas.
std::string Quoted(const std::string& text) { return text.empty() ? text : "\"" + text + "\""; }

std::string StampOf(const LocalTime& time) {
  return std::to_string(time.year) + "/" + std::to_string(time.month) + "/" + std::to_string(time.day) + " " +
         std::to_string(time.hour) + ":" + TwoDigits(time.minute) + ":" + TwoDigits(time.second);
}

}  // namespace

void WaveStore::Clear() {
  WaveSamples.fill(0);
  WaveHistory.assign(kWaveSampleCount, {});
  WaveStamps.fill({});
  WaveIndex = 0;
  WaveSaved = false;
  WaveFirstStamp = {};
}

void WaveStore::Keep(const LocalTime& time) {
  const auto slot = static_cast<std::size_t>(WaveIndex);
  for (std::size_t i = 0; i < WaveSamples.size(); ++i) WaveHistory[i][slot] = WaveSamples[i];
  WaveStamps[slot] = time;
  if (WaveFirstStamp.year == 0) WaveFirstStamp = time;
  if (++WaveIndex >= kUsedSlots) WaveIndex = 0;
  WaveSaved = true;
}

std::optional<int> WaveStore::Earlier(int captures) const {
  if (captures < 0 || captures >= kUsedSlots) return std::nullopt;
  const int slot = (WaveIndex + 2 * kUsedSlots - 1 - captures) % kUsedSlots;
  if (WaveStamps[static_cast<std::size_t>(slot)].year == 0) return std::nullopt;
  return slot;
}

int WaveStore::StoredCount() const {
  const auto end = std::ranges::find(WaveStamps, 0, &LocalTime::year);
  return static_cast<int>(end - WaveStamps.begin());
}

std::string WaveStore::Csv(const App& app, const WaveOrder& order, const std::string& remark) const {
  const auto count = static_cast<std::size_t>(StoredCount());
  std::string text(kByteOrderMark);
  text += "<" + app.Text(text::kMeasurementResult) + ">,," + Quoted(remark) + kLineEnd;
  text += "<" + app.Text(kChannelNames[order.channel]) + ">,," + kLineEnd;
  text += app.Text(text::kMeasurementTime);
  for (std::size_t k = 0; k < count; ++k) text += "," + StampOf(WaveStamps[k]);
  text += kLineEnd + app.Text(text::kKind);
  for (std::size_t k = 0; k < count; ++k) text += "," + app.Text(order.kind->caption);
  text += kLineEnd;
  for (std::size_t i = 0; i < WaveHistory.size(); ++i) {
    text += i == 0 ? kFirstSample : "[" + std::to_string(i + 1) + "]";
    for (std::size_t k = 0; k < count; ++k) text += "," + std::to_string(WaveHistory[i][k]);
    text += kLineEnd;
  }
  return text;
}

}  // namespace vlt

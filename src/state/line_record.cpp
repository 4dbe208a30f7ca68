// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/line_record.h"

#include <algorithm>
#include <stdexcept>

#include "platform/port_settings.h"

namespace vlt {
namespace {

std::size_t Slot(std::int64_t ms) {
  return static_cast<std::size_t>(std::clamp<std::int64_t>(ms, 0, AnswerTimes::kLongestMs));
}

// A whole reply came, whatever it is worth.
bool IsAnswer(AttemptEnd end) { return end == AttemptEnd::kAnswered || end == AttemptEnd::kOtherEcho; }

// As it goes onto the line.
int StationByte(int station) { return station & 0xFF; }

// Station 0 is whoever is on the line.
AttemptEnd CountedEnd(const LineAttempt& attempt) {
  if (attempt.end != AttemptEnd::kAnswered || attempt.request.empty() || attempt.reply.empty()) {
    return attempt.end;
  }
  const bool foreign = attempt.request[0] != 0 && attempt.reply[0] != attempt.request[0];
  return foreign ? AttemptEnd::kOtherStation : attempt.end;
}

std::int64_t& EndedIn(LineTotals& totals, AttemptEnd end) {
  return totals.ends[static_cast<std::size_t>(end)];
}

}  // namespace

void AnswerTimes::Add(std::int64_t ms) {
  ++counts_[Slot(ms)];
  ++count_;
}

void AnswerTimes::Remove(std::int64_t ms) {
  if (counts_[Slot(ms)] == 0) return;
  --counts_[Slot(ms)];
  --count_;
}

void AnswerTimes::Add(const AnswerTimes& others) {
  for (std::size_t i = 0; i < counts_.size(); ++i) counts_[i] += others.counts_[i];
  count_ += others.count_;
}

int AnswerTimes::Percentile(int percent) const {
  const std::int64_t wanted = (count_ * percent + 99) / 100;
  std::int64_t seen = 0;
  for (std::size_t ms = 0; ms < counts_.size(); ++ms) {
    seen += counts_[ms];
    if (seen > 0 && seen >= wanted) return static_cast<int>(ms);
  }
  return -1;
}

void LineTotals::Add(const LineTotals& others) {
  exchanges += others.exchanges;
  repeats += others.repeats;
  failed += others.failed;
  for (std::size_t i = 0; i < kAttemptEnds; ++i) ends[i] += others.ends[i];
  sent_bytes += others.sent_bytes;
  received_bytes += others.received_bytes;
  carried_ms += others.carried_ms;
  answers.Add(others.answers);
}

LineRecord::LineRecord(Clock& clock) : clock_(clock), since_(clock.Now()) {}

void LineRecord::Add(const LineAttempt& attempt) {
  last_counted_ = CountedEnd(attempt);
  Count(attempt, last_counted_);
  Keep(attempt, last_counted_);
  ++attempts_;
  ++revision_;
  last_end_ = attempt.end;
  last_station_ = StationByte(attempt.station);
  last_took_ms_ = attempt.ended_ms - attempt.sent_ms;
  last_of_exchange_ = attempt.last;
}

void LineRecord::Count(const LineAttempt& attempt, AttemptEnd end) {
  if (stations_.empty()) first_ms_ = attempt.sent_ms;
  last_ms_ = attempt.ended_ms;
  LineTotals& totals = stations_[StationByte(attempt.station)];
  ++EndedIn(totals, end);
  if (attempt.number > 0) ++totals.repeats;
  if (attempt.last) ++totals.exchanges;
  if (attempt.last && attempt.end != AttemptEnd::kAnswered) ++totals.failed;
  totals.sent_bytes += static_cast<std::int64_t>(attempt.request.size());
  totals.received_bytes += static_cast<std::int64_t>(attempt.reply.size());
  if (speed_ > 0) {
    const auto bytes = static_cast<double>(attempt.request.size() + attempt.reply.size());
    totals.carried_ms += bytes * bits_per_byte_ * 1000 / speed_;
  }
  if (IsAnswer(end)) totals.answers.Add(attempt.ended_ms - attempt.sent_ms);
}

void LineRecord::Keep(const LineAttempt& attempt, AttemptEnd end) {
  const LocalTime wall = clock_.Now();
  const std::int64_t now = clock_.NowMs();
  const auto next = [&](std::int64_t at_ms, std::span<const std::uint8_t> bytes) -> LineFrame& {
    LineFrame& frame = NextFrame(attempt, bytes);
    frame.at_ms = at_ms;
    frame.time = MovedBy(wall, at_ms - now);
    return frame;
  };
  next(attempt.sent_ms, attempt.request).way = FrameWay::kSent;
  LineFrame& outcome = next(attempt.ended_ms, attempt.reply);
  outcome.way = attempt.reply.empty() ? FrameWay::kNothing : FrameWay::kReceived;
  outcome.end = end;
  outcome.took_ms = attempt.ended_ms - attempt.sent_ms;
}

// A place in the ring keeps the room that its bytes have had.
LineFrame& LineRecord::NextFrame(const LineAttempt& attempt, std::span<const std::uint8_t> bytes) {
  const auto at = static_cast<std::size_t>(frames_ever_++) % kFrames;
  if (at == frames_.size()) frames_.emplace_back();
  LineFrame& frame = frames_[at];
  frame.number = frames_ever_;
  frame.station = attempt.station;
  frame.attempt = attempt.number;
  frame.bytes.assign(bytes.begin(), bytes.end());
  frame.asked.fill(0);
  std::copy_n(attempt.request.begin(), std::min(attempt.request.size(), frame.asked.size()),
              frame.asked.begin());
  frame.end = AttemptEnd::kAnswered;
  frame.took_ms = 0;
  return frame;
}

void LineRecord::CorrectLast(AttemptEnd end) {
  if (stations_.empty() || end == last_end_) return;
  LineTotals& totals = stations_[last_station_];
  --EndedIn(totals, last_counted_);
  ++EndedIn(totals, end);
  if (last_of_exchange_ && last_end_ == AttemptEnd::kAnswered) ++totals.failed;
  if (!last_of_exchange_ && end == AttemptEnd::kPortFault) {
    // No repeat follows after all.
    last_of_exchange_ = true;
    ++totals.exchanges;
    ++totals.failed;
  }
  if (IsAnswer(last_counted_) && !IsAnswer(end)) totals.answers.Remove(last_took_ms_);
  last_end_ = last_counted_ = end;
  frames_[static_cast<std::size_t>(frames_ever_ - 1) % kFrames].end = end;
  ++revision_;
}

void LineRecord::Opened(std::string_view settings) {
  const auto parsed = ParsePortSettings(settings);
  if (!parsed) return;
  speed_ = parsed->speed;
  bits_per_byte_ = 1 + parsed->data_bits + (parsed->parity == PortParity::kNone ? 0 : 1) + parsed->stop_bits;
  ++revision_;
}

void LineRecord::Reset() {
  stations_.clear();
  first_ms_ = last_ms_ = 0;
  since_ = clock_.Now();
  ++revision_;
}

std::vector<int> LineRecord::Stations() const {
  std::vector<int> stations;
  for (const auto& [station, totals] : stations_) stations.push_back(station);
  return stations;
}

const LineTotals& LineRecord::Of(int station) const {
  static const LineTotals kNothing;
  const auto found = stations_.find(station);
  return found == stations_.end() ? kNothing : found->second;
}

LineTotals LineRecord::All() const {
  LineTotals all;
  for (const auto& [station, totals] : stations_) all.Add(totals);
  return all;
}

std::size_t LineRecord::FrameCount() const { return frames_.size(); }

const LineFrame& LineRecord::Frame(std::size_t index) const {
  if (index >= frames_.size()) throw std::out_of_range("line frame");
  const std::size_t oldest = frames_.size() < kFrames ? 0 : static_cast<std::size_t>(frames_ever_) % kFrames;
  return frames_[(oldest + index) % frames_.size()];
}

}  // namespace vlt

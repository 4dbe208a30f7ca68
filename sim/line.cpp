// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/line.h"

#include <algorithm>
#include <array>
#include <utility>

namespace sim {

namespace {

constexpr std::int64_t kBitsOfCharacter = 11;
constexpr std::int64_t kBitsOfLoaderCharacter = 10;
constexpr Micros kLoaderPatience = 30'000'000;  // of a loader that was woken
constexpr Micros kShortestSilence = 1'750;      // at speeds where 3.5 characters would be less
constexpr std::size_t kLongestFrame = 256;
constexpr std::array<std::uint8_t, 3> kNoise{0xFF, 0x00, 0xF7};

bool CheckFits(const Bytes& frame) {
  if (frame.size() < 4) return false;
  const std::uint16_t check = FrameCheck({frame.data(), frame.size() - 2});
  return frame[frame.size() - 2] == (check & 0xFF) && frame.back() == check >> 8;
}

// Length that the function of a request asks for; 0 while it can't be told.
std::size_t WholeLength(const Bytes& frame) {
  if (frame.size() < 2) return 0;
  if (frame[1] == 3 || frame[1] == 4 || frame[1] == 6) return 8;
  return frame[1] == 16 && frame.size() > 6 ? 9u + frame[6] : 0;
}

Bytes NoiseOf(int count) {
  Bytes noise;
  for (int i = 0; i < count; ++i) noise.push_back(kNoise[i % kNoise.size()]);
  return noise;
}

void Recheck(Bytes& frame) {
  frame.resize(frame.size() - 2);
  AppendCheck(frame);
}

}  // namespace

// An answer on its way into the line.
struct Line::Reply {
  Bytes bytes;
  Micros delay = 0;
  Micros pause = 0;  // before every byte
  std::optional<std::size_t> unplug_after;
  // Does to the answer what the fault says; faults that happen in the meter leave it as it is.
  void Spoil(const ArmedFault& fault);
};

void Line::Reply::Spoil(const ArmedFault& fault) {
  using Change = void (*)(Reply&, int);
  static constexpr std::pair<Fault, Change> kChanges[] = {
      {Fault::Late, [](Reply& reply, int ms) { reply.delay = ms * Micros{1000}; }},
      {Fault::OneByte, [](Reply& reply, int) { reply.bytes.resize(1); }},
      {Fault::Short,
       [](Reply& reply, int missing) {
         const auto left = static_cast<int>(reply.bytes.size()) - missing;
         reply.bytes.resize(std::clamp<int>(left, 2, static_cast<int>(reply.bytes.size())));
       }},
      {Fault::Crc, [](Reply& reply, int) { reply.bytes.back() ^= 0x55; }},
      {Fault::Function,
       [](Reply& reply, int code) {
         reply.bytes[1] = static_cast<std::uint8_t>(code);
         Recheck(reply.bytes);
       }},
      {Fault::Station,
       [](Reply& reply, int bits) {
         reply.bytes[0] = static_cast<std::uint8_t>(reply.bytes[0] % 247 + 1);
         reply.bytes[reply.bytes.size() - 3] ^= static_cast<std::uint8_t>(bits);
         Recheck(reply.bytes);
       }},
      {Fault::Noise,
       [](Reply& reply, int count) {
         const Bytes noise = NoiseOf(count);
         reply.bytes.insert(reply.bytes.begin(), noise.begin(), noise.end());
       }},
      {Fault::Extra,
       [](Reply& reply, int count) {
         const Bytes noise = NoiseOf(count);
         reply.bytes.insert(reply.bytes.end(), noise.begin(), noise.end());
       }},
      {Fault::Trickle, [](Reply& reply, int ms) { reply.pause = ms * Micros{1000}; }},
      {Fault::Unplug, [](Reply& reply, int through) { reply.unplug_after = through; }},
      {Fault::WrongEcho,
       [](Reply& reply, int) {
         if (reply.bytes.size() != 8 || (reply.bytes[1] != 6 && reply.bytes[1] != 16)) return;
         ++reply.bytes[5];
         Recheck(reply.bytes);
       }},
  };
  for (const auto& [kind, change] : kChanges) {
    if (kind == fault.fault) change(*this, fault.value);
  }
}

Line::Line(const LineConfig& config) : config_(config) {}

Meter& Line::AddStation(int number, const MeterConfig& config) {
  auto& meter = stations_[number];
  meter = std::make_unique<Meter>(config);
  return *meter;
}

Meter* Line::Station(int number) {
  const auto found = stations_.find(number);
  return found == stations_.end() ? nullptr : found->second.get();
}

std::vector<int> Line::Stations() const {
  std::vector<int> numbers;
  for (const auto& station : stations_) numbers.push_back(station.first);
  return numbers;
}

bool Line::Understands(int station) const {
  const auto found = hearings_.find(station);
  if (found == hearings_.end()) return true;
  const auto agree = [](auto one, auto other) { return one == 0 || other == 0 || one == other; };
  return agree(found->second.speed, master_.speed) && agree(found->second.parity, master_.parity);
}

// Rounded up, so that no byte is over before its last bit.
Micros Line::CharTime(std::size_t characters) const {
  if (!config_.paced) return 0;
  const int baud = loading_ ? kLoaderBaud : config_.baud;
  const auto bits =
      static_cast<std::int64_t>(characters) * (loading_ ? kBitsOfLoaderCharacter : kBitsOfCharacter);
  return (bits * 1'000'000 + baud - 1) / baud;
}

Micros Line::Silence() const {
  const Micros characters = (kBitsOfCharacter * 3'500'000 + config_.baud - 1) / config_.baud;
  return std::max(characters, kShortestSilence);
}

void Line::Receive(std::span<const std::uint8_t> bytes, Micros now) {
  Advance(now);
  if (unplugged_ && now >= *unplugged_) return;
  for (std::uint8_t byte : bytes) Accept(byte, now);
}

void Line::Transmit(std::span<const std::uint8_t> bytes, Micros now) {
  Advance(now);
  if (unplugged_ && now >= *unplugged_) return;
  const Micros start = outgoing_.empty() ? now : std::max(now, sender_free_);
  for (std::size_t i = 0; i < bytes.size(); ++i) outgoing_.push_back({start + CharTime(i + 1), bytes[i]});
  sender_free_ = start + CharTime(bytes.size());
  Advance(now);
}

std::size_t Line::Outgoing(Micros now) {
  Advance(now);
  return outgoing_.size();
}

void Line::DiscardOutgoing(Micros now) {
  Advance(now);
  outgoing_.clear();
}

Bytes Line::Take(Micros now) {
  Advance(now);
  const Micros until = unplugged_ ? std::min(now, *unplugged_) : now;
  Bytes bytes;
  while (!incoming_.empty() && incoming_.front().at <= until) {
    bytes.push_back(incoming_.front().byte);
    incoming_.pop_front();
  }
  return bytes;
}

std::optional<Micros> Line::NextEvent() const {
  std::optional<Micros> next;
  const auto consider = [&](Micros at) { next = next ? std::min(*next, at) : at; };
  const bool out = unplugged_ && *unplugged_ <= now_;
  if (unplugged_ && !out) consider(*unplugged_);
  if (!incoming_.empty() && (!unplugged_ || incoming_.front().at <= *unplugged_))
    consider(incoming_.front().at);
  if (out) return next;
  if (!outgoing_.empty()) consider(outgoing_.front().at);
  if (!frame_.empty()) consider(frame_last_ + Silence());
  return next;
}

bool Line::IsPlugged(Micros now) {
  Advance(now);
  return !unplugged_ || now < *unplugged_;
}

void Line::Unplug(Micros now) {
  if (IsPlugged(now)) unplugged_ = now;
}

void Line::Plug(Micros now) {
  cut_left_.reset();
  if (IsPlugged(now)) return;
  std::erase_if(incoming_, [&](const TimedByte& byte) { return byte.at > *unplugged_; });
  outgoing_.clear();
  frame_.clear();
  reply_free_ = now;
  unplugged_.reset();
}

bool Line::Passes() {
  if (IsCut()) return false;
  if (cut_left_) --*cut_left_;
  return true;
}

void Line::EnterLoader(Hold hold) {
  loading_ = hold == Hold::UntilTold ? Loading::UntilTold : Loading::UntilDownload;
  return_.reset();
  frame_.clear();
  loader_.Restart();
}

void Line::LeaveLoader() {
  loading_.reset();
  return_.reset();
  loader_.Restart();
}

void Line::EndLoading(Micros now) {
  if (!return_ || now < return_->at) return;
  const Return end = *return_;
  LeaveLoader();
  if (!end.restart) return;
  for (auto& station : stations_) station.second->Restart(end.at);
}

void Line::AcceptLoading(std::uint8_t byte, Micros at) {
  frame_last_ = at;
  const bool speed_fits = master_.speed == 0 || master_.speed == kLoaderBaud;
  if (!speed_fits || (master_.parity != 0 && master_.parity != 'N')) return;
  if (const auto frame = loader_.Collect(byte, at)) HandleLoading(*frame, at);
}

void Line::HandleLoading(const Bytes& frame, Micros at) {
  const Bytes condition{0, frame[1], 0, loader_.CodeOf(frame)};
  const auto fault = faults_.Strike(condition);
  const auto is = [&](Fault kind) { return fault && fault->fault == kind; };
  Note(LogEntry::Kind::Request, at, frame, fault ? std::string(InfoOf(fault->fault).name) : "boot loader");
  BootLoader::Answer answer;
  if (!is(Fault::Silence)) {
    answer =
        loader_.Serve(frame, {.refuse = is(Fault::LoaderError) || is(Fault::LoaderLongError),
                              .no_end_mark = is(Fault::LoaderLongError),
                              .no_line_end = is(Fault::LoaderNoLineEnd),
                              .no_flash = is(Fault::LoaderNoFlash),
                              .spoil = is(Fault::LoaderSpoil) ? std::optional(fault->value) : std::nullopt});
    Reply reply;
    reply.bytes = answer.bytes;
    if (fault && InfoOf(fault->fault).of_any_answer) reply.Spoil(*fault);
    reply.delay += answer.delay;
    Schedule(reply, at, "boot loader");
  }
  const bool ends = loading_ == Loading::Woken ? !loader_.IsBusy()
                                               : loading_ == Loading::UntilDownload && answer.ends_download;
  if (ends) return_ = Return{std::max(reply_free_, at), answer.ends_download};
}

void Line::Advance(Micros now) {
  now_ = std::max(now_, now);
  while (!outgoing_.empty() && outgoing_.front().at <= now) {
    const TimedByte next = outgoing_.front();
    if (unplugged_ && next.at > *unplugged_) break;
    outgoing_.pop_front();
    if (!frame_.empty() && next.at - frame_last_ > Silence()) EndOfSilence(frame_last_ + Silence());
    Accept(next.byte, next.at);
  }
  if (!frame_.empty() && now - frame_last_ >= Silence()) EndOfSilence(frame_last_ + Silence());
}

void Line::Accept(std::uint8_t byte, Micros at) {
  if (!Passes()) return;
  EndLoading(at);
  const Micros last = std::max(frame_last_, reply_free_);
  if (loading_ == Loading::Woken && at - last > kLoaderPatience) LeaveLoader();
  if (loading_) {
    AcceptLoading(byte, at);
    return;
  }
  frame_last_ = at;
  if (frame_.size() < kLongestFrame) frame_.push_back(byte);
  if (frame_.size() == WholeLength(frame_) && CheckFits(frame_)) Handle(at);
}

void Line::EndOfSilence(Micros at) {
  if (CheckFits(frame_)) {
    Handle(at);
    return;
  }
  if (wakeable_ && stations_.size() == 1 && BootLoader::IsOpenFrame(frame_)) {
    loading_ = Loading::Woken;
    loader_.Restart();
    for (std::uint8_t byte : std::exchange(frame_, {})) AcceptLoading(byte, at);
    return;
  }
  Note(LogEntry::Kind::Dropped, at, std::move(frame_), "no whole frame");
  frame_.clear();
}

void Line::Handle(Micros at) {
  const Bytes frame = std::exchange(frame_, {});
  const bool known = frame[0] == 0 || stations_.contains(frame[0]);
  const bool alone = stations_.size() == 1;
  const int asked = frame[0] == 0 && alone ? stations_.begin()->first : frame[0];
  if (!known || !Understands(asked)) {
    Note(LogEntry::Kind::Request, at, frame, known ? "other speed or parity" : "no such station");
    return;
  }
  const auto fault = faults_.Strike(frame);
  const std::string note = fault ? std::string(InfoOf(fault->fault).name) : "";
  Note(LogEntry::Kind::Request, at, frame, note);

  Reply reply;
  reply.bytes = Ask(frame, at, fault);
  if (reply.bytes.empty()) return;
  if (fault) reply.Spoil(*fault);
  Schedule(reply, at, note);
}

// The whole answer, or nothing: to all of several stations at once, from a meter that restarts, after a
// request that got lost. Station 0 is what a point-to-point line calls its only meter.
Bytes Line::Ask(const Bytes& frame, Micros at, const std::optional<ArmedFault>& fault) {
  const std::span<const std::uint8_t> request(frame.data() + 1, frame.size() - 3);
  Quirks quirks;
  if (fault) {
    if (fault->fault == Fault::Silence) return {};
    if (fault->fault == Fault::SlowStore) quirks.store_time = fault->value * Micros{1000};
    if (fault->fault == Fault::SlowCapture) quirks.capture_time = fault->value * Micros{1000};
    quirks.fail_capture = fault->fault == Fault::FailCapture;
    quirks.refuse_capture = fault->fault == Fault::RefuseCapture;
    quirks.stuck_capture = fault->fault == Fault::StuckCapture;
    quirks.ignore_write = fault->fault == Fault::IgnoreWrite;
  }
  const bool alone = stations_.size() == 1;
  if (frame[0] == 0 && !alone) {
    for (auto& [number, meter] : stations_) {
      if (Understands(number)) meter->Serve(request, at, quirks);
    }
    return {};
  }
  Bytes answer;
  if (fault && fault->fault == Fault::Exception) {
    answer = {static_cast<std::uint8_t>(frame[1] | 0x80), static_cast<std::uint8_t>(fault->value)};
  } else {
    Meter& meter = alone ? *stations_.begin()->second : *stations_.at(frame[0]);
    answer = meter.Serve(request, at, quirks);
  }
  if (answer.empty()) return {};
  answer.insert(answer.begin(), frame[0]);
  AppendCheck(answer);
  return answer;
}

void Line::Schedule(const Reply& reply, Micros at, const std::string& note) {
  const Micros start = std::max(at + config_.turnaround + reply.delay, reply_free_);
  const std::size_t count = std::min(reply.bytes.size(), reply.unplug_after.value_or(reply.bytes.size()));
  const auto end_of = [&](std::size_t bytes) {
    return start + static_cast<Micros>(bytes) * reply.pause + CharTime(bytes);
  };
  for (std::size_t i = 0; i < count && Passes(); ++i) incoming_.push_back({end_of(i + 1), reply.bytes[i]});
  reply_free_ = end_of(count);
  if (reply.unplug_after) unplugged_ = reply_free_;
  Note(LogEntry::Kind::Reply, start, {reply.bytes.begin(), reply.bytes.begin() + count}, note);
}

void Line::Note(LogEntry::Kind kind, Micros at, Bytes bytes, std::string note) {
  log_.push_back({kind, at, std::move(bytes), std::move(note)});
  if (sink_) sink_(log_.back());
  while (log_.size() > log_limit_) log_.pop_front();
}

}  // namespace sim

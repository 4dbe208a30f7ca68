// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/wave_capture.h"

#include <utility>

#include "link/modbus.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr const char* kNoResponse = "[NO RESPONSE ERROR]";
constexpr int kPollMs = 50;
constexpr int kMostPolls = 200;
constexpr std::size_t kSampleBytes = 4;

}  // namespace

WaveCapture::WaveCapture(App& app, std::function<bool()> goes_on, std::function<void(int block)> on_block)
    : app_(app), goes_on_(std::move(goes_on)), on_block_(std::move(on_block)) {}

WaveEnd WaveCapture::Fail(const std::string& why) {
  app_.state.LastErrorText = failure_ = why;
  return WaveEnd::kFailed;
}

WaveEnd WaveCapture::Capture(const WaveOrder& order, WaveSampleArray& samples) {
  failure_.clear();
  blocks_ = 0;
  trigger_level_ = 0;
  const std::function<WaveEnd()> steps[] = {
      [&] { return order.HasHead() ? ReadHead(order) : WaveEnd::kGood; },
      [&] { return Command(order); },
      [&] { return AwaitSamples(); },
      [&] { return ReadWaveBlocks(samples); },
  };
  for (const auto& step : steps) {
    if (!goes_on_()) return WaveEnd::kStopped;
    const WaveEnd end = step();
    if (end != WaveEnd::kGood) return end;
  }
  return WaveEnd::kGood;
}

WaveEnd WaveCapture::ReadHead(const WaveOrder& order) {
  RegisterData head;
  const ExchangeReport exchange = ReadRegisters(app_, SpanOf(kWaveHeadBlock, order.channel), head);
  if (!exchange) return Fail(exchange.text);
  const auto peak_at = static_cast<std::size_t>(order.kind->peak_byte);
  const double peak =
      order.kind->peak_wire == Wire::kInt32 ? BytesToInt32(head, peak_at) : BytesToUInt16(head, peak_at);
  const double percent = BytesToInt16(head, static_cast<std::size_t>(order.kind->trigger_byte)) / 100.0;
  trigger_level_ = percent / 100 * peak;
  return WaveEnd::kGood;
}

WaveEnd WaveCapture::Command(const WaveOrder& order) {
  int answer = 0;
  const ExchangeReport exchange = WriteCommand(app_, kWaveCommand.address, order.Code(), answer);
  if (!exchange) return Fail(exchange.text);
  capturing_ = answer == kWaveAccepted;
  if (!capturing_) return Fail(kNoResponse);
  on_block_(0);
  return WaveEnd::kGood;
}

WaveEnd WaveCapture::AwaitSamples() {
  for (int poll = 0; poll < kMostPolls; ++poll) {
    WaitMs(app_, kPollMs);
    if (!goes_on_()) return WaveEnd::kStopped;
    RegisterData state;
    const ExchangeReport exchange = ReadRegisters(app_, SpanOf(kWaveCommand, 0), state);
    if (!exchange) return Fail(exchange.text);
    const int status = BytesToInt16(state, 0);
    if (status == kWaveReady) return WaveEnd::kGood;
    if (status != kWaveFailed) continue;
    capturing_ = false;
    return Fail(kNoResponse);
  }
  return Fail(kNoResponse);
}

WaveEnd WaveCapture::ReadWaveBlocks(WaveSampleArray& samples) {
  RegisterSpan span = SpanOf(kWaveBlock, 0);
  const Target target = OwnStation(app_, kModeLongBlock);
  std::size_t sample = 0;
  for (int block = 0; block < kWaveBlocks; ++block) {
    app_.platform.events.GiveWay(app_.platform.clock.NowMs());
    if (!goes_on_()) return WaveEnd::kStopped;
    RegisterData data;
    const ExchangeReport exchange = ReadRegisters(app_, target, span, data);
    if (!exchange) {
      if (!ClearCaptureMode()) return WaveEnd::kFailed;
      failure_ = exchange.text;
      return WaveEnd::kAgain;
    }
    for (std::size_t at = 0; at < data.size(); at += kSampleBytes) samples[sample++] = BytesToInt32(data, at);
    span.address += 2 * span.count;
    on_block_(blocks_ = block + 1);
  }
  return WaveEnd::kGood;
}

bool WaveCapture::ClearCaptureMode() {
  const WriteReport report = WriteRegister(app_, kWaveCommand.address, kWaveEndCommand);
  if (!report.Proven()) Fail(WriteFailureText(app_, report));
  capturing_ = capturing_ && !report.Proven();
  return report.Proven();
}

}  // namespace vlt

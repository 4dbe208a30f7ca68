// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/soak/station_soak.h"

#include <algorithm>
#include <charconv>

#include "link/modbus.h"
#include "support/live_program.h"
#include "support/memory_file_system.h"
#include "values/codecs.h"

namespace vlt::test {
namespace {

constexpr int kByteUs = 1146;  // 11 bits at 9600 bit/s
constexpr int kTurnaroundMs = 5;
constexpr int kRequestMs = 10;
constexpr int kMeasured[] = {0x0000, 0x1388, 0x251C};
constexpr int kPulsesAt = 31;  // in an answer
constexpr int kStations = 31;

int ChannelOf(std::span<const std::uint8_t> request) {
  const int address = BytesToUInt16(request[2], request[3]);
  return static_cast<int>(std::ranges::find(kMeasured, address) - std::begin(kMeasured));
}

// Keeps no record: each is judged as it comes.
class JudgingFiles : public MemoryFileSystem {
 public:
  explicit JudgingFiles(FleetPort& fleet) : port(fleet) {}

  FileError Append(const std::string& path, std::string_view content) override {
    if (content.starts_with("\xEF\xBB\xBF")) {
      path_ = path;
      ++result.files;
      lines_ = static_cast<std::size_t>(std::ranges::count(content, '\n'));
      return FileError::kGood;
    }
    ++lines_;
    result.longest_file = std::max(result.longest_file, lines_);
    ++result.passes;
    content.remove_suffix(2);
    content.remove_prefix(std::min(content.find(','), content.size()));
    for (int station = 1; station <= kStations; ++station) {
      for (int display = 0; display < kDisplays; ++display) Judge(station, display, Cut(content));
    }
    if (!content.empty()) ++result.unreadable;
    return FileError::kGood;
  }
  bool Exists(const std::string& path) override { return path == path_; }

  FleetPort& port;
  Form12* page = nullptr;
  std::array<int, kDisplays> channels{};
  SoakResult result;

 private:
  static std::string_view Cut(std::string_view& line) {
    if (line.empty()) return {};
    line.remove_prefix(1);
    const std::string_view value = line.substr(0, line.find(','));
    line.remove_prefix(value.size());
    return value;
  }

  void Judge(int station, int display, std::string_view value) {
    const auto& boxes = display == 0 ? page->txtDisp1 : page->txtDisp2;
    const std::string& shown = boxes(station - 1).Text();
    if (value == "***") {
      ++result.missing;
      if (shown != "Communication Error") ++result.screen_differs;
      return;
    }
    if (shown != value) ++result.screen_differs;
    const int channel = channels.at(static_cast<std::size_t>(display));
    std::int32_t number = 0;
    const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
    if (read.ec != std::errc() || read.ptr != value.data() + value.size()) {
      ++result.unreadable;
    } else if (number / 10'000'000 != station) {
      ++result.foreign;
    } else if (number / 1'000'000 % 10 != channel) {
      ++result.swapped;
    } else if (number !=
               FleetPort::Counter(station, channel, port.polls[static_cast<std::size_t>(station)])) {
      ++result.stale;
    } else {
      ++result.good;
    }
  }

  std::string path_;
  std::size_t lines_ = 0;
};

}  // namespace

void FleetPort::DiscardInput() {
  incoming_.erase(incoming_.begin(), incoming_.upper_bound({time_.NowMs() * 1000, 0}));
}

int FleetPort::BytesIn() {
  const auto end = incoming_.upper_bound({time_.NowMs() * 1000, 0});
  return static_cast<int>(std::distance(incoming_.begin(), end));
}

std::uint8_t FleetPort::TakeByte() {
  const std::uint8_t byte = incoming_.begin()->byte;
  incoming_.erase(incoming_.begin());
  return byte;
}

std::vector<std::uint8_t> FleetPort::Answer(int station, std::span<const std::uint8_t> request) const {
  Frame reply = ReplyFor(request);
  reply[0] = static_cast<std::uint8_t>(station);
  reply[1] = request[1];
  reply[2] = static_cast<std::uint8_t>(reply.size() - 5);
  if (request[1] == 4) {
    const std::int64_t poll = polls[static_cast<std::size_t>(station)];
    std::ranges::copy(Int32ToBytes(Counter(station, ChannelOf(request), poll)), reply.begin() + kPulsesAt);
  }
  CalcCrc(reply, static_cast<int>(reply.size()) - 2, reply.back(), *(reply.end() - 2));
  return reply;
}

void FleetPort::Send(std::span<const std::uint8_t> bytes, int after_ms) {
  std::int64_t at = (time_.NowMs() + kRequestMs + kTurnaroundMs + after_ms) * 1000;
  for (const std::uint8_t byte : bytes) incoming_.insert({at += kByteUs, byte});
}

void FleetPort::SendBadly(std::vector<std::uint8_t> answer, std::span<const std::uint8_t> request) {
  ++faults;
  const auto last = static_cast<int>(answer.size()) - 1;
  switch (Random(0, 5)) {
    case 0:
      return Send(answer, Random(60, 1500));
    case 1:
      Send(answer, 0);
      return Send(answer, Random(0, 900));
    case 2:
      return Send(Answer(request[0] % kStations + 1, request), Random(0, 60));
    case 3:
      Send(Answer(request[0] % kStations + 1, request), Random(0, 1500));  // beside the right one
      return Send(answer, 0);
    case 4:
      return Send(std::span(answer).first(static_cast<std::size_t>(Random(1, last))), 0);
    default:
      break;
  }
  for (int n = Random(1, 4); n > 0; --n) {
    answer[static_cast<std::size_t>(Random(0, last))] ^= static_cast<std::uint8_t>(Random(1, 255));
  }
  if (Random(0, 1) == 0) answer.insert(answer.begin(), static_cast<std::uint8_t>(Random(0, 255)));
  Send(answer, 0);
}

void FleetPort::Write(std::span<const std::uint8_t> request) {
  if (!open_) throw PortFault(PortFaultCode::kNotOpen, "");
  const bool poll = request[1] == 4;
  if (poll && ChannelOf(request) == 0) ++polls[request[0]];
  std::vector<std::uint8_t> answer = Answer(request[0], request);
  const bool badly = poll && std::uniform_real_distribution(0.0, 1.0)(random_) < share_;
  if (badly) {
    SendBadly(std::move(answer), request);
  } else {
    Send(answer, 0);
  }
}

SoakResult SoakStations(const SoakPlan& plan) {
  VirtualTime time;
  FleetPort port(time, plan.fault_share);
  JudgingFiles files(port);
  LiveProgram program(time, port, files);
  auto& page = static_cast<Form12&>(program.app.windows.Load("Form12"));
  files.page = &page;
  files.channels = {0, plan.second_channel};
  page.Show();
  page.CH_Combo1.Choose(0);
  page.CH_Combo2.Choose(plan.second_channel);
  page.cmbDisp1.Choose(kPlusPulsesPlace);
  page.cmbDisp2.Choose(kPlusPulsesPlace);
  page.chkCheck.Tick();
  page.txtCycle.Type(std::to_string(plan.cycle_seconds));
  program.dialogs.SaveFile("/data/run");
  page.cmdStart.Press();
  const std::int64_t begun_ms = time.NowMs();
  for (std::int64_t pass = 0; pass < plan.passes && page.cmdStop.Enabled(); pass = files.result.passes) {
    time.RunFor(1000);
    if (plan.after_pass && files.result.passes != pass) plan.after_pass(files.result.passes);
  }
  files.result.elapsed_ms = time.NowMs() - begun_ms;
  page.cmdStop.Press();
  files.result.faults = port.faults;
  for (const std::int64_t polls : port.polls) files.result.polls += polls;
  return files.result;
}

}  // namespace vlt::test

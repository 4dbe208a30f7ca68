// SPDX-License-Identifier: GPL-3.0-or-later
// More than a day of measuring with faults sprinkled in: nothing lost, nothing double, no growth.
#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <algorithm>
#include <deque>
#include <utility>

#include "link/modbus.h"
#include "measure_fixture.h"
#include "support/live_program.h"
#include "values/codecs.h"

namespace vlt::test {
namespace {

constexpr std::int64_t kCycles = 100'000;
constexpr int kRecordsInFile = 31998;

// What goes wrong in a cycle, by its number.
enum class Trouble { kNone, kSilent, kBadCheck, kUnplugged, kDiskFull };

Trouble TroubleOf(std::int64_t cycle) {
  if (cycle % 9973 < 3 && cycle > 3) return Trouble::kDiskFull;
  if (cycle % 1009 == 17) return Trouble::kUnplugged;
  if (cycle % 97 == 5) return Trouble::kSilent;
  if (cycle % 101 == 7) return Trouble::kBadCheck;
  return Trouble::kNone;
}
int SilentChannel(std::int64_t cycle) { return static_cast<int>(cycle % kChannels); }

// A meter of two pipes whose pulse counters are the number of the cycle, at the other end of a port that
// answers at once.
class CountingPort : public SerialPort {
 public:
  void Open(int, const std::string&) override { open_ = true; }
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  void DiscardInput() override { reply_.clear(); }
  void DiscardOutput() override {}
  int BytesOut() override { return 0; }
  int BytesIn() override { return static_cast<int>(reply_.size()); }
  std::uint8_t TakeByte() override {
    const std::uint8_t byte = reply_.front();
    reply_.pop_front();
    return byte;
  }
  void SetRts(bool) override {}
  void SetDtr(bool) override {}

  void Write(std::span<const std::uint8_t> request) override {
    if (!open_) throw PortFault(PortFaultCode::kNotOpen, "");
    const int address = BytesToUInt16(request[2], request[3]);
    const int channel = static_cast<int>(std::ranges::find(kMeasuredAddress, address) - kMeasuredAddress);
    const bool measured = request[1] == 4;
    if (measured && channel == 0 && !std::exchange(in_cycle_, true)) ++cycle;
    if (channel != 0) in_cycle_ = false;
    Frame reply = ReplyFor(request);
    std::copy_n(request.begin(), 2, reply.begin());
    if (address == 0x03E8) reply[4] = 2;
    if (address == 0x0148) reply[4] = 81;
    if (measured) {
      std::ranges::copy(Int32ToBytes(static_cast<std::int32_t>(cycle)), reply.begin() + 31);
    }
    CalcCrc(reply, static_cast<int>(reply.size()) - 2, reply.back(), *(reply.end() - 2));
    reply_.assign(reply.begin(), reply.end());
    if (measured) Spoil(channel);
  }

  std::int64_t cycle = 0;

 private:
  void Spoil(int channel) {
    switch (TroubleOf(cycle)) {
      case Trouble::kSilent:
        if (channel == SilentChannel(cycle)) reply_.clear();
        break;
      case Trouble::kBadCheck:
        if (channel == 1) ++reply_.back();
        break;
      case Trouble::kUnplugged:
        if (channel != 1) break;
        throw PortFault(PortFaultCode::kRemoved, "");
      default:
        break;
    }
  }

  bool open_ = false;
  bool in_cycle_ = false;
  std::deque<std::uint8_t> reply_;
};

bool IsUnplugged(std::int64_t cycle) { return cycle > 0 && TroubleOf(cycle) == Trouble::kUnplugged; }

// What the record of a cycle must say behind its time, but for the times of a gap.
std::string ExpectedRecord(std::int64_t cycle) {
  const Trouble trouble = TroubleOf(cycle);
  std::string line;
  for (int ch = 0; ch < kChannels; ++ch) {
    const bool failed = (trouble == Trouble::kSilent && ch == SilentChannel(cycle)) ||
                        (trouble == Trouble::kBadCheck && ch == 1) ||
                        (trouble == Trouble::kUnplugged && ch >= 1);
    line += failed    ? "-,-,-,-,-,-,-,'-,"
            : ch == 2 ? ",0,0,0,0," + std::to_string(cycle) + ",0,'0000000000000000,"
                      : "0,0,0,0,0," + std::to_string(cycle) + ",0,'0000000000000000,";
  }
  if (trouble == Trouble::kSilent) line += "[NO RESPONSE ERROR]";
  if (trouble == Trouble::kBadCheck) line += "[CRC ERROR]";
  if (trouble == Trouble::kUnplugged)
    line += "CH2 [RECEIVE ERROR(5)] CH3 [RECEIVE ERROR(8)] COM1 was lost at  (ID No. 0000)";
  if (IsUnplugged(cycle - 1)) {
    line += (line.ends_with(']') ? " " : "") + std::string("COM1 was away from  to  (ID No. 0000)");
  }
  return line;
}

// A record without its own time and those of a gap.
std::string WithoutTimes(std::string record) {
  constexpr std::size_t kTime = 19;  // "2026/11/24 10:00:00"
  record.erase(0, kTime + 1);
  for (std::size_t at = record.find("2026/11/"); at != std::string::npos; at = record.find("2026/11/")) {
    record.erase(at, kTime);
  }
  return record;
}

// Looks at each record as it comes and keeps none of them.
class WatchedFiles : public MemoryFileSystem {
 public:
  FileError Append(const std::string& path, std::string_view content) override {
    if (content.starts_with("\xEF\xBB\xBF")) {
      EXPECT_EQ(in_file, paths.empty() ? 0 : kRecordsInFile) << path;
      paths.push_back(path);
      in_file = 0;
      return FileError::kGood;
    }
    EXPECT_EQ(path, paths.back());
    if (TroubleOf(port.cycle) == Trouble::kDiskFull) {
      ++lost;
      return FileError::kFull;
    }
    EXPECT_EQ(WithoutTimes(std::string(content)), ExpectedRecord(port.cycle) + "\r\n")
        << "cycle " << port.cycle;
    EXPECT_EQ(port.cycle, last_cycle + 1 + (lost - lost_before)) << "lost or double";
    EXPECT_LT(last_time, content.substr(0, 19));
    last_time = content.substr(0, 19);
    last_cycle = port.cycle;
    lost_before = lost;
    ++in_file;
    ++total;
    return FileError::kGood;
  }
  bool Exists(const std::string& path) override { return !paths.empty() && path == paths.back(); }

  explicit WatchedFiles(CountingPort& counting) : port(counting) {}
  CountingPort& port;
  std::vector<std::string> paths;
  std::string last_time;
  std::int64_t last_cycle = 0;
  std::int64_t lost = 0;
  std::int64_t lost_before = 0;
  std::int64_t total = 0;
  int in_file = 0;
};

std::size_t BytesInUse() {
#ifdef __GLIBC__
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

TEST(LongRun, LosesNothingAndDoesNotGrow) {
  VirtualTime time;
  CountingPort port;
  WatchedFiles files(port);
  LiveProgram program(time, port, files);
  auto& page = static_cast<Form9&>(program.app.windows.Load("Form9"));
  program.dialogs.SaveFile("/data/run");
  page.SaveCSV.Press();
  page.PointText.Type("1000");
  page.Start.Press();
  std::size_t bytes_early = 0;
  while (page.trend.TrendSampleNo < kCycles && !::testing::Test::HasFailure()) {
    time.RunFor(1000);
    if (bytes_early == 0 && page.trend.TrendSampleNo >= 2000) bytes_early = BytesInUse();
  }
  EXPECT_LT(BytesInUse(), bytes_early + 16 * 1024);
  page.Stop.Press();
  time.RunFor(2000);
  EXPECT_EQ(files.total + files.lost, port.cycle);
  EXPECT_GE(port.cycle, kCycles);
  EXPECT_EQ(files.lost, 3 * (kCycles / 9973));
  EXPECT_EQ(files.paths.size(), 4u);
  EXPECT_FALSE(program.app.state.UiLocked);
  EXPECT_EQ(page.Chart2D1.Shown().size(), static_cast<std::size_t>(page.Chart2D1.LastPoint()));
}

}  // namespace
}  // namespace vlt::test

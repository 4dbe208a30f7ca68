// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/modbus.h"

#include <algorithm>
#include <charconv>

#include "link/port_return.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr const char* kNoResponse = "[NO RESPONSE ERROR]";
constexpr int kHeadBytes = 2;         // station and function
constexpr int kDrainPollMs = 3;       // while the driver still holds bytes
constexpr int kFirstPollMs = 5;       // until something arrives
constexpr int kRestPollMs = 10;       // until the whole reply is there
constexpr int kStationsRestMs = 200;  // behind a good exchange with one of several stations
constexpr int kOwnStart = -1;         // the attempt counter starts at RetryNo

struct Pattern {
  int first_count;    // attempt counter at the start, or kOwnStart
  int first_wait_ms;  // from the end of the request
  int slow_wait_ms;   // the same at 9600 baud
  int poll_limit;
};

// A failed attempt adds 1 to the counter and the exchange ends when it exceeds RetryNo, so a counter that
// starts at 4 leaves one attempt unless RetryNo is 5.
constexpr Pattern kPatterns[] = {
    {0, 24, 24, 10},          // kModeOrdinary
    {kOwnStart, 24, 24, 10},  // kModeStore
    {0, 24, 480, 10},         // kModeLongBlock
    {4, 154, 154, 0},         // kModeStations
    {4, 154, 154, 2},         // kModeUnitQuery
};

const Pattern& PatternOf(int mode) {
  const bool known = mode >= 0 && mode < static_cast<int>(std::size(kPatterns));
  return kPatterns[known ? mode : kModeOrdinary];
}

struct Exchange {
  App& app;
  std::span<std::uint8_t> tx;
  std::span<std::uint8_t> rx;
  int mode;
  int first_wait_ms;
  int poll_limit;
  int count;

  SerialPort& Port() const { return app.platform.port; }
  void GiveWay() const { app.platform.events.GiveWay(app.platform.clock.NowMs()); }
};

Exchange Prepare(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx, int mode) {
  app.state.LastErrorText.clear();
  const int count = static_cast<int>(tx.size()) - 2;
  CalcCrc(tx, count, tx[tx.size() - 1], tx[tx.size() - 2]);
  const Pattern& pattern = PatternOf(mode);
  return {.app = app,
          .tx = tx,
          .rx = rx,
          .mode = mode,
          .first_wait_ms = app.state.Speed == "9600" ? pattern.slow_wait_ms : pattern.first_wait_ms,
          .poll_limit = pattern.poll_limit,
          .count = pattern.first_count == kOwnStart ? app.state.RetryNo : pattern.first_count};
}

void SendFrame(Exchange& x) {
  x.GiveWay();
  x.Port().DiscardInput();
  x.Port().DiscardOutput();
  x.Port().Write(x.tx);
  while (x.Port().BytesOut() > 0) {
    x.GiveWay();
    WaitMs(x.app, kDrainPollMs);
  }
}

void AwaitReply(Exchange& x) {
  WaitMs(x.app, x.first_wait_ms);
  for (int n = 0; x.Port().BytesIn() == 0 && n != x.poll_limit; ++n) {
    x.GiveWay();
    WaitMs(x.app, kFirstPollMs);
  }
  const int whole = static_cast<int>(x.rx.size());
  for (int n = 0; x.Port().BytesIn() < whole && n <= x.poll_limit; ++n) {
    x.GiveWay();
    WaitMs(x.app, kRestPollMs);
  }
}

const char* ExceptionText(int code) {
  static constexpr const char* kTexts[] = {"[FUNCTON CODE ERROR(01H)]", "[ADDRESS ERROR(02H)]",
                                           "[REGISTER COUNT ERROR(03H)]"};
  return code >= 1 && code <= 3 ? kTexts[code - 1] : "[UNKNOWN FUNCTION CODE ERROR]";
}

// Takes station and function. A lone byte fails without a text: the exchange finds one at its end.
bool CheckHead(Exchange& x) {
  if (x.Port().BytesIn() == 0) {
    x.app.state.LastErrorText = kNoResponse;
    return false;
  }
  if (x.Port().BytesIn() < kHeadBytes) return false;
  for (int i = 0; i < kHeadBytes; ++i) x.rx[static_cast<std::size_t>(i)] = x.Port().TakeByte();
  if (x.rx[1] == x.tx[1]) return true;
  int code = 0;
  if (x.Port().BytesIn() > 0) code = x.rx[2] = x.Port().TakeByte();
  x.app.state.LastErrorText = ExceptionText(code);
  return false;
}

// Takes the rest when all of it is there, and judges what rx holds then.
bool CheckBody(Exchange& x) {
  const auto body = x.rx.subspan(kHeadBytes);
  if (x.Port().BytesIn() >= static_cast<int>(body.size())) {
    std::generate(body.begin(), body.end(), [&] { return x.Port().TakeByte(); });
  }
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  CalcCrc(x.rx, static_cast<int>(x.rx.size()) - 2, high, low);
  if (low == x.rx[x.rx.size() - 2] && high == x.rx[x.rx.size() - 1]) return true;
  x.app.state.LastErrorText = "[CRC ERROR]";
  return false;
}

void FinishGood(Exchange& x) {
  WaitMs(x.app, x.app.state.CharGapMs);
  x.Port().DiscardInput();
  if (x.mode == kModeStations && x.count == PatternOf(x.mode).first_count) WaitMs(x.app, kStationsRestMs);
}

// True when no attempt is left.
bool FinishFailed(Exchange& x) {
  ++x.count;
  WaitMs(x.app, x.app.state.CharGapMs);
  if (x.count <= x.app.state.RetryNo) return false;
  x.Port().DiscardInput();
  if (x.app.state.LastErrorText.empty()) x.app.state.LastErrorText = "[APPLICATION ERROR]";
  return true;
}

bool Run(Exchange& x) {
  for (;;) {
    SendFrame(x);
    AwaitReply(x);
    if (CheckHead(x) && CheckBody(x)) {
      FinishGood(x);
      return true;
    }
    if (FinishFailed(x)) return false;
  }
}

// A device that went away is closed, so that the next OpenPort finds it once it is back.
void EndByFault(App& app, const PortFault& fault) {
  app.state.LastErrorText = "[RECEIVE ERROR(" + std::to_string(fault.Number()) + ")]";
  try {
    if (fault.Code() == PortFaultCode::kRemoved) {
      NoteLoss(app);
      app.state.PortIsOpen = false;
      app.platform.port.Close();
    } else {
      app.platform.port.DiscardInput();
    }
  } catch (const PortFault&) {
    // The first fault is the one that counts.
  }
}

void Count(App& app, bool good) {
  ++app.tally.exchanges;
  if (good) return;
  if (app.tally.first_failure.empty()) app.tally.first_failure = app.state.LastErrorText;
  ++app.tally.failed;
}

}  // namespace

bool SendReceive(App& app, std::span<std::uint8_t> tx, int txLast, std::span<std::uint8_t> rx, int rxLast,
                 int mode) {
  Exchange x = Prepare(app, tx.first(static_cast<std::size_t>(txLast) + 1),
                       rx.first(static_cast<std::size_t>(rxLast) + 1), mode);
  bool good = false;
  try {
    good = Run(x);
  } catch (const PortFault& fault) {
    EndByFault(app, fault);
  }
  Count(app, good);
  return good;
}

bool SendReceive(App& app, Frame& tx, Frame& rx, int mode) {
  return SendReceive(app, tx, static_cast<int>(tx.size()) - 1, rx, static_cast<int>(rx.size()) - 1, mode);
}

void CalcCrc(std::span<const std::uint8_t> frame, int count, std::uint8_t& crcHigh, std::uint8_t& crcLow) {
  unsigned crc = 0xFFFF;
  for (const std::uint8_t byte : frame.first(static_cast<std::size_t>(count))) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xA001 : crc >> 1;
  }
  crcHigh = static_cast<std::uint8_t>(crc >> 8);
  crcLow = static_cast<std::uint8_t>(crc & 0xFF);
}

void WaitMs(App& app, int ms) {
  const std::int64_t start = app.platform.clock.NowMs();
  do {
    app.platform.events.GiveWay(start + ms + 1);
  } while (app.platform.clock.NowMs() - start <= ms);
}

bool EchoWordEqual(std::span<const std::uint8_t> reply, int expected) {
  return EchoWordMatch(reply, expected, 0);
}

bool EchoWordMatch(std::span<const std::uint8_t> reply, int expected, int is_unsigned) {
  if (reply.size() < 6) return false;
  const int word = is_unsigned == 1 ? BytesToUInt16(reply[4], reply[5]) : BytesToInt16(reply[4], reply[5]);
  return word == expected;
}

bool IsFromStation(App& app, std::span<const std::uint8_t> reply, int station) {
  if (!reply.empty() && reply[0] == (station & 0xFF)) return true;
  app.state.LastErrorText = kNoResponse;
  return false;
}

int StationNumber(const App& app) {
  int number = 0;
  const std::string& text = app.state.StationNo;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

namespace {

std::uint8_t High(int value) { return static_cast<std::uint8_t>(value >> 8); }
std::uint8_t Low(int value) { return static_cast<std::uint8_t>(value); }

}  // namespace

Frame ReadRequest(int station, int function, int address, int count) {
  return {Low(station), Low(function), High(address), Low(address), High(count), Low(count), 0, 0};
}

Frame WriteRegisterRequest(int station, int address, int value) {
  return {Low(station), 0x06, High(address), Low(address), High(value), Low(value), 0, 0};
}

Frame WriteRegistersRequest(int station, int address, std::span<const std::uint8_t> data) {
  const int count = static_cast<int>(data.size()) / 2;
  Frame frame = {Low(station), 0x10, High(address), Low(address), High(count), Low(count), Low(count * 2)};
  frame.insert(frame.end(), data.begin(), data.end());
  frame.insert(frame.end(), 2, 0);
  return frame;
}

Frame ReplyFor(std::span<const std::uint8_t> request) {
  const bool read = request[1] == 0x03 || request[1] == 0x04;
  return Frame(read ? static_cast<std::size_t>(BytesToUInt16(request[4], request[5])) * 2 + 5 : 8);
}

}  // namespace vlt

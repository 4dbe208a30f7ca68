// SPDX-License-Identifier: GPL-3.0-or-later
// The serial port of the program with simulated meters behind it, in process. It lives on the clock and the
// event queue that it is given: on real time the bytes come as slowly as on a real line, on a test's virtual
// time they come at the same virtual moments.
//
// It keeps the manners of a real port: a line that is unplugged while it is open closes the port and gives
// PortFaultCode::kRemoved to every later operation until the port is opened again.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/event_queue.h"
#include "platform/serial_port.h"
#include "sim/line.h"

namespace sim {

// A line as something to plug into.
struct Socket {
  Line* line = nullptr;  // null: nothing is there, Open() fails with kMissing
  // Speed of the meters in bit/s; 0: they follow the port. Meters of another speed hear garbage and stay
  // silent.
  int speed = 0;
  char parity = 0;   // N, E, O likewise; 0: they follow the port
  std::string name;  // what faults call the device
};

// The device text of a simulated meter: "simulator", or "simulator" and the words of a scenario behind it.
bool IsSimulator(std::string_view device);

// Lines by device text. A line stays when its port is closed, as a meter keeps its power: who opens the same
// text again finds what was written there.
class LineShelf {
 public:
  // Throws PortFault(kSettings), naming the word that is wrong, when the scenario can't be built.
  Socket Find(const std::string& device, Micros now);

 private:
  std::map<std::string, std::unique_ptr<Line>, std::less<>> lines_;
};

class SimulatedPort : public vlt::SerialPort {
 public:
  using SocketOf = std::function<Socket(int number)>;

  // `socket_of` tells at each Open() what COM `number` leads to; it may throw PortFault. A line must live
  // until the port is closed.
  SimulatedPort(vlt::Clock& clock, vlt::EventQueue& events, SocketOf socket_of);
  ~SimulatedPort() override;
  SimulatedPort(const SimulatedPort&) = delete;
  SimulatedPort& operator=(const SimulatedPort&) = delete;

  void Open(int number, const std::string& settings) override;
  void Close() override;
  bool IsOpen() const override { return socket_.line != nullptr; }
  // Its name as faults call it; empty as well for a line that can't be built.
  std::string DeviceBehind(int number) override;

  void DiscardInput() override;
  void DiscardOutput() override;
  void Write(std::span<const std::uint8_t> bytes) override;
  int BytesOut() override;
  int BytesIn() override;
  std::uint8_t TakeByte() override;
  void SetRts(bool on) override;
  void SetDtr(bool on) override;

  // The line behind the open port, null when it is closed.
  Line* OpenLine() { return socket_.line; }

 private:
  Micros Now() { return clock_.NowMs() * 1000; }
  Line& Check();
  void Fetch();
  void Arm();
  void Disarm();

  vlt::Clock& clock_;
  vlt::EventQueue& events_;
  SocketOf socket_of_;
  Socket socket_;
  bool understood_ = true;
  bool removed_ = false;
  std::deque<std::uint8_t> arrived_;
  vlt::EventQueue::TimerId timer_ = 0;
};

}  // namespace sim

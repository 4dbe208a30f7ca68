// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/simulated_port.h"

#include <algorithm>
#include <utility>

#include "platform/port_settings.h"
#include "sim/scenario.h"

namespace sim {
namespace {

constexpr std::string_view kWord = "simulator";
constexpr std::string_view kParityLetters = "NEO";  // in the order of PortParity

std::string_view ScenarioWords(std::string_view device) { return device.substr(kWord.size()); }

}  // namespace

bool IsSimulator(std::string_view device) {
  return device.starts_with(kWord) && (device.size() == kWord.size() || device[kWord.size()] == ' ');
}

Socket LineShelf::Find(const std::string& device, Micros now) {
  auto found = lines_.find(device);
  if (found == lines_.end()) {
    const std::string_view words = ScenarioWords(device);
    Scenario scenario;
    std::unique_ptr<Line> line;
    std::string error = ApplyWords(scenario, words);
    if (error.empty()) line = Build(scenario, now, error);
    if (!line) throw vlt::PortFault(vlt::PortFaultCode::kSettings, device + " (" + error + ")");
    found = lines_.emplace(device, std::move(line)).first;
  }
  return {found->second.get(), 0, 0, device};
}

SimulatedPort::SimulatedPort(vlt::Clock& clock, vlt::EventQueue& events, SocketOf socket_of)
    : clock_(clock), events_(events), socket_of_(std::move(socket_of)) {}

SimulatedPort::~SimulatedPort() { Close(); }

void SimulatedPort::Open(int number, const std::string& settings) {
  Close();
  removed_ = false;
  const Socket socket = socket_of_(number);
  if (!socket.line || !socket.line->IsPlugged(Now()))
    throw vlt::PortFault(vlt::PortFaultCode::kMissing, socket.name);
  const auto parsed = vlt::ParsePortSettings(settings);
  if (!parsed) throw vlt::PortFault(vlt::PortFaultCode::kSettings, socket.name);
  const char parity = kParityLetters[static_cast<std::size_t>(parsed->parity)];
  understood_ = (socket.speed == 0 || socket.speed == parsed->speed) &&
                (socket.parity == 0 || socket.parity == parity) && parsed->data_bits == 8;
  socket.line->SetMaster({parsed->speed, parity});
  socket.line->config().baud = parsed->speed;
  socket_ = socket;
  Fetch();
  arrived_.clear();  // what the line carried while nobody listened is lost
}

std::string SimulatedPort::DeviceBehind(int number) {
  try {
    return socket_of_(number).name;
  } catch (const vlt::PortFault&) {
    return {};
  }
}

void SimulatedPort::Close() {
  Disarm();
  if (socket_.line) socket_.line->DiscardOutgoing(Now());
  socket_.line = nullptr;
  arrived_.clear();
}

// The line of an open port. Notices first that it was unplugged.
Line& SimulatedPort::Check() {
  if (socket_.line && !socket_.line->IsPlugged(Now())) {
    Close();
    removed_ = true;
  }
  if (removed_) throw vlt::PortFault(vlt::PortFaultCode::kRemoved, socket_.name);
  if (!socket_.line) throw vlt::PortFault(vlt::PortFaultCode::kNotOpen, "");
  return *socket_.line;
}

void SimulatedPort::Fetch() {
  const Bytes bytes = socket_.line->Take(Now());
  arrived_.insert(arrived_.end(), bytes.begin(), bytes.end());
}

void SimulatedPort::DiscardInput() {
  Check();
  Fetch();
  arrived_.clear();
}

void SimulatedPort::DiscardOutput() { Check().DiscardOutgoing(Now()); }

void SimulatedPort::Write(std::span<const std::uint8_t> bytes) {
  Bytes sent(bytes.begin(), bytes.end());
  if (!understood_)
    for (std::uint8_t& byte : sent) byte = static_cast<std::uint8_t>(~byte);
  Check().Transmit(sent, Now());
  Arm();
}

int SimulatedPort::BytesOut() { return static_cast<int>(Check().Outgoing(Now())); }

int SimulatedPort::BytesIn() {
  Check();
  Fetch();
  return static_cast<int>(arrived_.size());
}

std::uint8_t SimulatedPort::TakeByte() {
  if (BytesIn() == 0) throw vlt::PortFault(vlt::PortFaultCode::kRead, socket_.name);
  const std::uint8_t byte = arrived_.front();
  arrived_.pop_front();
  return byte;
}

void SimulatedPort::SetRts(bool /*on*/) { Check(); }

void SimulatedPort::SetDtr(bool /*on*/) { Check(); }

// Wakes the queue when the line does its next thing, so that who gives way sees it at that moment.
void SimulatedPort::Arm() {
  Disarm();
  const auto next = socket_.line->NextEvent();
  if (!next) return;
  const Micros wait = std::max<Micros>(*next - Now(), 0);
  timer_ = events_.StartTimer(static_cast<int>(std::max<Micros>((wait + 999) / 1000, 1)), [this] {
    Disarm();
    if (!IsOpen() || !socket_.line->IsPlugged(Now())) return;  // the next operation tells
    Fetch();
    Arm();
  });
}

void SimulatedPort::Disarm() {
  if (timer_ != 0) events_.StopTimer(timer_);
  timer_ = 0;
}

}  // namespace sim

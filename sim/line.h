// SPDX-License-Identifier: GPL-3.0-or-later
// A serial line with one or more simulated meters on it, as its master sees it: bytes go in at a moment,
// bytes come out when the line has carried them. No threads, no clock, no input or output of its own: the
// caller says what time it is, and moments must not go backwards.
//
// In process:                                  On a real port:
//   line.Transmit(request, now);                 line.Receive(bytes that arrived, now);
//   line.Outgoing(now)   still in the sender     write(line.Take(now));
//   line.Take(now)       what has come in        sleep until line.NextEvent() or new bytes
//   sleep until line.NextEvent()
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "sim/boot_loader.h"
#include "sim/faults.h"
#include "sim/meter.h"

namespace sim {

struct LineConfig {
  int baud = 9600;
  bool paced = true;          // false: bytes take no time on the line
  Micros turnaround = 5'000;  // from the last byte of a request to the start of the answer
};

// How a meter listens, or how the master speaks: speed in bit/s, 0 when it suits every other one; parity N, E
// or O, 0 likewise.
struct Hearing {
  int speed = 0;
  char parity = 0;
};

struct TimedByte {
  Micros at = 0;  // when its last bit is over
  std::uint8_t byte = 0;
};

struct LogEntry {
  enum class Kind { Request, Reply, Dropped };
  Kind kind = Kind::Request;
  Micros at = 0;  // a request's end, a reply's start
  Bytes bytes;
  std::string note;  // fault that struck, or why it was dropped; empty for an ordinary exchange
};

class Line {
 public:
  using LogSink = std::function<void(const LogEntry&)>;

  explicit Line(const LineConfig& config = {});

  // Puts a meter on the line; a number from 1 to 247 that is taken already is replaced.
  Meter& AddStation(int number, const MeterConfig& config);
  Meter* Station(int number);  // null when no meter has this number
  std::vector<int> Stations() const;

  // A meter of another speed or parity than the master hears garbage, and doesn't answer.
  void SetHearing(int station, const Hearing& hearing) { hearings_[station] = hearing; }
  void SetMaster(const Hearing& master) { master_ = master; }
  bool Understands(int station) const;

  // Bytes that reach the meters at `now`. A request ends when the length that its function asks for is there
  // and its check fits, or after 3.5 characters of silence; what is no whole frame by then is dropped without
  // an answer.
  void Receive(std::span<const std::uint8_t> bytes, Micros now);

  // Bytes that the master hands to its sender at `now`; they reach the meters at the pace of the line.
  void Transmit(std::span<const std::uint8_t> bytes, Micros now);
  std::size_t Outgoing(Micros now);  // of those, how many have not left yet
  void DiscardOutgoing(Micros now);

  // Bytes that have reached the master by `now` and were not taken before.
  Bytes Take(Micros now);

  // The next moment at which something happens without anybody's doing: a byte reaches the master, a byte has
  // left the sender, a silence ends a frame, the plug comes out. Nothing when the line is at rest.
  std::optional<Micros> NextEvent() const;

  // Replies that were written onto the line and not yet taken, in order, those of the future included.
  const std::deque<TimedByte>& Pending() const { return incoming_; }

  // The plug. While it is out nothing gets through in either direction and what was on its way is lost; bytes
  // that had arrived can still be taken.
  bool IsPlugged(Micros now);
  void Unplug(Micros now);
  void Plug(Micros now);

  // The cable breaks when `bytes` more have gone over it, in both directions together: what follows is lost,
  // and the port at the master's end stays. Plug() mends it.
  void CutAfter(std::size_t bytes) { cut_left_ = bytes; }
  bool IsCut() const { return cut_left_ == std::size_t{0}; }

  // The boot loader speaks in place of the meters, at its own speed and without parity. It is held there
  // until LeaveLoader(), or until the first download has ended; or it is woken by an open frame when the line
  // has one meter alone, and the meter comes back when nothing is open any more, or after half a minute of
  // silence. A download restarts the meter.
  enum class Hold { UntilTold, UntilDownload };
  void EnterLoader(Hold hold);
  void LeaveLoader();
  bool IsLoading() const { return loading_.has_value(); }
  void SetWakeable(bool wakeable) { wakeable_ = wakeable; }
  BootLoader& loader() { return loader_; }

  FaultBoard& faults() { return faults_; }
  LineConfig& config() { return config_; }

  // The last exchanges, oldest first. A sink gets each entry as it happens.
  const std::deque<LogEntry>& Log() const { return log_; }
  void ClearLog() { log_.clear(); }
  void SetLogLimit(std::size_t entries) { log_limit_ = entries; }
  void SetLogSink(LogSink sink) { sink_ = std::move(sink); }

 private:
  struct Reply;

  void Advance(Micros now);
  void Accept(std::uint8_t byte, Micros at);
  bool Passes();
  void AcceptLoading(std::uint8_t byte, Micros at);
  void HandleLoading(const Bytes& frame, Micros at);
  void EndLoading(Micros now);
  void EndOfSilence(Micros at);
  void Handle(Micros at);
  Bytes Ask(const Bytes& frame, Micros at, const std::optional<ArmedFault>& fault);
  void Schedule(const Reply& reply, Micros at, const std::string& note);
  void Note(LogEntry::Kind kind, Micros at, Bytes bytes, std::string note);
  Micros CharTime(std::size_t characters) const;
  Micros Silence() const;

  LineConfig config_;
  std::map<int, std::unique_ptr<Meter>> stations_;
  std::map<int, Hearing> hearings_;
  Hearing master_;
  FaultBoard faults_;

  std::deque<TimedByte> outgoing_;  // master to meters
  std::deque<TimedByte> incoming_;  // meters to master
  Micros sender_free_ = 0;          // when the master's sender has nothing left
  Micros reply_free_ = 0;           // when the last reply is over
  Bytes frame_;                     // request being received
  Micros frame_last_ = 0;           // its last byte
  Micros now_ = 0;                  // how far time was told
  std::optional<Micros> unplugged_;
  std::optional<std::size_t> cut_left_;  // 0: it is cut

  enum class Loading { UntilTold, UntilDownload, Woken };
  // Moment at which the boot loader gives the line back, and whether the meter starts anew then.
  struct Return {
    Micros at = 0;
    bool restart = false;
  };
  BootLoader loader_;
  std::optional<Loading> loading_;
  std::optional<Return> return_;
  bool wakeable_ = true;

  std::deque<LogEntry> log_;
  std::size_t log_limit_ = 10'000;
  LogSink sink_;
};

}  // namespace sim

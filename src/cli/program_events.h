// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's event queue, but for one thing: when the program ends, the process does not. The script that
// runs it has the last word, and looks here.
#pragma once

#include <utility>

#include "platform/event_queue.h"

namespace vlt {

class ProgramEvents : public EventQueue {
 public:
  explicit ProgramEvents(EventQueue& machine) : machine_(machine) {}

  void GiveWay(std::int64_t until_ms) override { machine_.GiveWay(until_ms); }
  void Sleep(int ms) override { machine_.Sleep(ms); }
  TimerId StartTimer(int interval_ms, std::function<void()> tick) override {
    return machine_.StartTimer(interval_ms, std::move(tick));
  }
  void StopTimer(TimerId id) override { machine_.StopTimer(id); }
  void Post(std::function<void()> task) override { machine_.Post(std::move(task)); }
  void EndProcess() override { ended_ = true; }

  // The program has ended.
  bool Ended() const { return ended_; }

 private:
  EventQueue& machine_;
  bool ended_ = false;
};

}  // namespace vlt

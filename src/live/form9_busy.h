// Guards the work of the measure page that exchanges with the meter.
#pragma once

#include "live/form9.h"

namespace vlt {

// While one lives, ticks are dropped and Stop and Unload wait; what they left is done at its end.
class Form9::Busy {
 public:
  explicit Busy(Form9& page) : page_(page) { page_.busy_ = true; }
  ~Busy() {
    page_.busy_ = false;
    if (page_.stop_pending_) page_.FinishStop();
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  Form9& page_;
};

}  // namespace vlt

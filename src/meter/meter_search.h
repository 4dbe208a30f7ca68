// SPDX-License-Identifier: GPL-3.0-or-later
// Looks for meters on a port: asks each station at each combination of speed and parity for its unit system,
// once, and goes on. It writes nothing to a meter. The interface must be locked. The port is closed and
// opened on the way; behind the search it is as it was before, with its old settings.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "state/app.h"

namespace vlt {

// How a meter may be reached, as the settings write it: "19200", "E".
struct LinkTry {
  std::string speed;
  std::string parity;
  bool operator==(const LinkTry&) const = default;
};

struct SearchPlan {
  int port = 0;                 // n of COMn
  std::string stop_bits = "1";  // receivers take one and two alike
  std::vector<LinkTry> tries;   // in this order
  std::vector<int>
      stations;             // asked at each of them; 0 is the meter at the other end of a point-to-point line
  bool first_only = false;  // one meter is all there can be
  int Steps() const { return static_cast<int>(tries.size() * stations.size()); }
};

// All combinations of the speeds and parities that a meter has, `first` in front.
std::vector<LinkTry> AllTries(const LinkTry& first);

struct FoundMeter {
  LinkTry link;
  int station = 0;
  int unit_system = 0;
  int language = 0;
};

// A question that is about to be asked.
struct SearchStep {
  int number = 0;  // counted from 1
  LinkTry link;
  int station = 0;
};

struct SearchObserver {
  std::function<bool(const SearchStep&)> step;  // false stops the search
  std::function<void(const FoundMeter&)> found;
};

enum class SearchEnd {
  kFinished,
  kStopped,
  kPortClosed,   // the port can't be opened: PortFaultReason says why
  kPortLost,     // it went away
  kOtherMaster,  // somebody speaks on the line without being asked; nothing was sent from then on
};

struct SearchResult {
  SearchEnd end = SearchEnd::kFinished;
  int found = 0;
  int odd = 0;             // questions that something answered which is no meter's reply, also when repeated
  std::string fault = {};  // of kPortLost
};

SearchResult SearchMeters(App& app, const SearchPlan& plan, const SearchObserver& observer);

}  // namespace vlt

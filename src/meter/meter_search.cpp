// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/meter_search.h"

#include <algorithm>

#include "link/modbus.h"
#include "link/port.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr const char* kSpeeds[] = {"9600", "19200", "38400"};
constexpr const char* kParities[] = {"O", "E", "N"};
constexpr int kUnitAndLanguage = 0x0100;
constexpr int kReadHolding = 3;
constexpr int kFirstWord = 3;  // in a reply
constexpr int kSecondWord = 5;

// A master that polls does so once a second at least.
constexpr int kListenMs = 1100;
constexpr int kListenStepMs = 100;
// What answers oddly every time (an adapter that echoes what is sent) is not listened to at each station.
constexpr int kMostListenings = 4;
constexpr int kAttempts = 3;  // of a question that is answered oddly

// Puts the port and the settings that a search bends back to what they were.
class KeepLink {
 public:
  explicit KeepLink(App& app)
      : app_(app),
        speed_(app.state.Speed),
        was_open_(app.platform.port.IsOpen()),
        port_(app.state.OpenedPort),
        settings_(app.state.OpenedSettings) {}
  ~KeepLink() {
    CloseIfOpen(app_);
    app_.state.Speed = speed_;
    if (!was_open_) return;
    const std::string reason = app_.state.PortFaultReason;
    bool open = false;
    OpenPort(app_, port_, settings_, open);
    if (!reason.empty()) app_.state.PortFaultReason = reason;  // of the search, told behind it
  }
  KeepLink(const KeepLink&) = delete;
  KeepLink& operator=(const KeepLink&) = delete;

  static void CloseIfOpen(App& app) {
    bool closed = false;
    if (app.platform.port.IsOpen()) ClosePort(app, closed);
  }

 private:
  App& app_;
  std::string speed_;
  bool was_open_;
  int port_;
  std::string settings_;
};

enum class Heard { kMeter, kNothing, kOdd, kPortLost };

class Search {
 public:
  Search(App& app, const SearchPlan& plan, const SearchObserver& observer)
      : app_(app), plan_(plan), observer_(observer) {}

  SearchResult Run() {
    const KeepLink keep(app_);
    for (const LinkTry& link : plan_.tries) {
      if (!RunAt(link)) break;
    }
    return result_;
  }

 private:
  // False ends the search, and so it does in all that RunAt calls.
  bool RunAt(const LinkTry& link) {
    KeepLink::CloseIfOpen(app_);
    app_.state.Speed = link.speed;
    bool open = false;
    OpenPort(app_, plan_.port, link.speed + ',' + link.parity + ",8," + plan_.stop_bits, open);
    if (!open) return PassOver();
    opened_once_ = true;
    return std::all_of(plan_.stations.begin(), plan_.stations.end(),
                       [&](int station) { return AskStation(link, station); });
  }

  // An adapter may lack a speed or a parity; one that can't be opened at all ends the search.
  bool PassOver() {
    step_ += static_cast<int>(plan_.stations.size());
    return opened_once_ || End(SearchEnd::kPortClosed);
  }

  bool AskStation(const LinkTry& link, int station) {
    ++step_;
    FoundMeter meter{.link = link, .station = station};
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
      if (!observer_.step({step_, link, station})) return End(SearchEnd::kStopped);
      switch (Ask(meter)) {
        case Heard::kMeter:
          ++result_.found;
          observer_.found(meter);
          return !plan_.first_only;
        case Heard::kNothing:
          return true;
        case Heard::kPortLost:
          return End(SearchEnd::kPortLost);
        case Heard::kOdd:
          if (IsOtherMasterThere(link, station)) return End(SearchEnd::kOtherMaster);
      }
    }
    ++result_.odd;
    return true;
  }

  Heard Ask(FoundMeter& meter) {
    Frame request = ReadRequest(meter.station, kReadHolding, kUnitAndLanguage, 2);
    Frame reply = ReplyFor(request);
    // One attempt whatever RetryNo says.
    const ExchangeReport exchange =
        Transact(app_, request, reply, {.mode = kModeStore, .signature_is_checked = true});
    if (exchange) {
      meter.unit_system = BytesToInt16(reply, kFirstWord);
      meter.language = BytesToInt16(reply, kSecondWord);
      return meter.station == 0 || reply[0] == meter.station ? Heard::kMeter : Heard::kOdd;
    }
    if (exchange.end == AttemptEnd::kPortFault) {
      result_.fault = exchange.text;
      return Heard::kPortLost;
    }
    return exchange.end == AttemptEnd::kSilence ? Heard::kNothing : Heard::kOdd;
  }

  // Says nothing for a while and listens. A stop that comes meanwhile is seen by the next question.
  bool IsOtherMasterThere(const LinkTry& link, int station) {
    if (++listenings_ > kMostListenings) return false;
    bool cleared = false;
    ClearInBuff(app_, cleared);
    for (int waited = 0; waited < kListenMs; waited += kListenStepMs) {
      WaitMs(app_, kListenStepMs);
      if (BytesIn() > 0) return true;
      if (!observer_.step({step_, link, station})) return false;
    }
    return false;
  }

  int BytesIn() const {
    try {
      return app_.platform.port.BytesIn();
    } catch (const PortFault&) {
      return 0;  // the next question tells
    }
  }

  bool End(SearchEnd end) {
    result_.end = end;
    return false;
  }

  App& app_;
  const SearchPlan& plan_;
  const SearchObserver& observer_;
  SearchResult result_;
  int step_ = 0;
  int listenings_ = 0;
  bool opened_once_ = false;
};

}  // namespace

std::vector<LinkTry> AllTries(const LinkTry& first) {
  std::vector<LinkTry> tries;
  for (const char* speed : kSpeeds) {
    for (const char* parity : kParities) tries.push_back({speed, parity});
  }
  const auto at = std::find(tries.begin(), tries.end(), first);
  if (at != tries.end()) std::rotate(tries.begin(), at, at + 1);
  return tries;
}

SearchResult SearchMeters(App& app, const SearchPlan& plan, const SearchObserver& observer) {
  return Search(app, plan, observer).Run();
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/modbus.h"

#include <charconv>

#include "link/event_exchange.h"
#include "link/exchange.h"
#include "link/port_return.h"
#include "state/line_record.h"

namespace vlt {
namespace {

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

bool Run(Exchange& x) { return x.app.state.EventTiming ? RunByEvents(x) : RunByPattern(x); }

ExchangeReport Transact(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx,
                        const ExchangeManner& manner) {
  Exchange x = PrepareExchange(app, tx, rx, manner);
  ExchangeReport report;
  try {
    report.answered = Run(x);
  } catch (const PortFault& fault) {
    x.Tell(AttemptEnd::kPortFault);
    EndByFault(app, fault);
  }
  Count(app, report.answered);
  report.clean = report.answered && x.attempt == 0;
  report.refused = !report.answered && x.attempt > 0 && x.refused == x.attempt;
  report.doubts = x.doubts;
  return report;
}

}  // namespace

bool SendReceive(App& app, std::span<std::uint8_t> tx, int txLast, std::span<std::uint8_t> rx, int rxLast,
                 int mode) {
  // Who asks several stations looks at the signatures.
  return Transact(app, tx.first(static_cast<std::size_t>(txLast) + 1),
                  rx.first(static_cast<std::size_t>(rxLast) + 1),
                  {.mode = mode, .signature_is_checked = mode == kModeStations})
      .answered;
}

bool SendReceive(App& app, Frame& tx, Frame& rx, int mode) {
  return SendReceive(app, tx, static_cast<int>(tx.size()) - 1, rx, static_cast<int>(rx.size()) - 1, mode);
}

ExchangeReport Transact(App& app, Frame& tx, Frame& rx, const ExchangeManner& manner) {
  return Transact(app, std::span(tx), std::span(rx), manner);
}

bool IsFromStation(App& app, std::span<const std::uint8_t> reply, int station) {
  if (!reply.empty() && reply[0] == (station & 0xFF)) return true;
  app.state.LastErrorText = kNoResponse;
  app.line->CorrectLast(AttemptEnd::kOtherStation);
  return false;
}

int StationNumber(const App& app) {
  int number = 0;
  const std::string& text = app.state.StationNo;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace vlt

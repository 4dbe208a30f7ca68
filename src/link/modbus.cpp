// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/modbus.h"

#include <charconv>
#include <utility>

#include "link/event_exchange.h"
#include "link/exchange.h"
#include "link/port_return.h"

namespace vlt {
namespace {

// A device that went away is closed, so that the next OpenPort finds it once it is back.
void EndByFault(Exchange& x, const PortFault& fault) {
  App& app = x.app;
  x.Tell(AttemptEnd::kPortFault);
  x.text = "[RECEIVE ERROR(" + std::to_string(fault.Number()) + ")]";
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

void Count(LineTally& tally, const ExchangeReport& report) {
  ++tally.exchanges;
  if (report.ok) return;
  if (tally.first_failure.empty()) tally.first_failure = report.text;
  ++tally.failed;
}

bool Run(Exchange& x) { return x.app.state.EventTiming ? RunByEvents(x) : RunByPattern(x); }

}  // namespace

ExchangeReport Transact(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx,
                        const ExchangeManner& manner) {
  Exchange x = PrepareExchange(app, tx, rx, manner);
  ExchangeReport report;
  try {
    report.ok = Run(x);
  } catch (const PortFault& fault) {
    EndByFault(x, fault);
  }
  report.attempts = x.requests;
  report.end = x.end;
  report.text = app.state.LastErrorText = std::move(x.text);
  report.refused = !report.ok && x.attempt > 0 && x.refused == x.attempt;
  report.doubts = x.doubts;
  Count(app.tally, report);
  return report;
}

bool SendReceive(App& app, std::span<std::uint8_t> tx, int txLast, std::span<std::uint8_t> rx, int rxLast,
                 int mode) {
  // Who asks several stations looks at the signatures.
  return Transact(app, tx.first(static_cast<std::size_t>(txLast) + 1),
                  rx.first(static_cast<std::size_t>(rxLast) + 1),
                  {.mode = mode, .signature_is_checked = mode == kModeStations})
      .ok;
}

bool SendReceive(App& app, Frame& tx, Frame& rx, int mode) {
  return SendReceive(app, tx, static_cast<int>(tx.size()) - 1, rx, static_cast<int>(rx.size()) - 1, mode);
}

int StationNumber(const App& app) {
  int number = 0;
  const std::string& text = app.state.StationNo;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace vlt

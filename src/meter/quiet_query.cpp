// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/quiet_query.h"

#include "link/operation.h"
#include "link/port.h"
#include "meter/device_queries.h"
#include "meter/facts.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

void AskOnFreeLine(App& app, Form& page, const std::function<void()>& ask) {
  const Operation operation(app, page, Operation::kUnnamed);
  if (OpenPort(app)) ask();
}

}  // namespace

void AskUnderLock(App& app, Form& page, const std::function<void()>& ask) {
  if (IsLineFree(app)) AskOnFreeLine(app, page, ask);
}

ChannelConfig AskChannelConfig(App& app, Form& page) {
  if (!IsLineFree(app)) return KnownChannelConfig(app.state);
  ChannelConfig config = ChannelConfig::kUnknown;
  AskOnFreeLine(app, page, [&] {
    config = AskChannelConfig(app);
    // A page shows units, too. A meter that has not answered is not asked again.
    if (config != ChannelConfig::kUnknown && !IsKnown(app, {Fact::kUnitSystem})) GetUnitFlag(app);
  });
  return config;
}

ChannelConfig AskChannelConfig(App& app) { return static_cast<ChannelConfig>(GetChannelConfig(app)); }

}  // namespace vlt

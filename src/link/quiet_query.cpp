// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/quiet_query.h"

#include "link/device_queries.h"
#include "link/operation.h"
#include "link/port.h"
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
  AskOnFreeLine(app, page, [&] { config = AskChannelConfig(app); });
  return config;
}

ChannelConfig AskChannelConfig(App& app) { return static_cast<ChannelConfig>(GetChannelConfig(app)); }

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/store.h"

#include "link/port.h"
#include "link/registers.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr int kIdle = 0;
constexpr int kRequest = 1;
constexpr int kRounds = 5;
constexpr int kStoreMs = 200;  // the meter needs a pause before it can be asked about the store

bool RequestStore(App& app) {
  for (int round = 0; round < kRounds; ++round) {
    if (!ReadSaveStatus(app)) continue;
    const bool written = WriteSaveRequest(app);
    app.platform.events.Sleep(kStoreMs);
    if (written) return true;
  }
  return false;
}

bool AwaitStore(App& app) {
  for (int round = 0; round < kRounds; ++round) {
    app.platform.events.GiveWay(app.platform.clock.NowMs());
    if (ReadSaveStatus(app)) return true;
  }
  return false;
}

}  // namespace

bool SaveToDevice(App& app) {
  return OpenPortOrTell(app, MessageIcon::kStop) && RequestStore(app) && AwaitStore(app);
}

bool ReadSaveStatus(App& app) {
  RegisterData data;
  return ReadRegisters(app, OwnStation(app, kModeStore), {.address = kStoreRegister, .count = 1}, data) &&
         BytesToInt16(data, 0) == kIdle;
}

bool WriteSaveRequest(App& app) {
  return OpenPortOrTell(app, MessageIcon::kNone) &&
         WriteRegister(app, OwnStation(app, kModeStore), kStoreRegister, kRequest).Proven();
}

}  // namespace vlt

#include "link/store.h"

#include "link/modbus.h"
#include "link/port.h"
#include "values/codecs.h"

namespace vlt {
namespace {

constexpr int kStoreRegister = 0x0150;
constexpr int kIdle = 0;
constexpr int kRequest = 1;
constexpr int kRounds = 5;
constexpr int kStoreMs = 200;  // the meter needs a pause before it can be asked about the store
constexpr int kCommunicationError = 3950;

bool OpenOrTell(App& app, MessageIcon icon) {
  if (OpenPort(app)) return true;
  app.Show(app.Text(kCommunicationError), icon);
  app.windows.SetMousePointer(kNormalPointer);
  app.Status(CommunicationErrorText(app));
  return false;
}

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
  return OpenOrTell(app, MessageIcon::kStop) && RequestStore(app) && AwaitStore(app);
}

bool ReadSaveStatus(App& app) {
  Frame request = ReadRequest(StationNumber(app), 3, kStoreRegister, 1);
  Frame reply = ReplyFor(request);
  return SendReceive(app, request, reply, kModeStore) && BytesToInt16(reply[3], reply[4]) == kIdle;
}

bool WriteSaveRequest(App& app) {
  if (!OpenOrTell(app, MessageIcon::kNone)) return false;
  Frame request = WriteRegisterRequest(StationNumber(app), kStoreRegister, kRequest);
  Frame reply = ReplyFor(request);
  return SendReceive(app, request, reply, kModeStore) && EchoWordEqual(reply, kRequest);
}

}  // namespace vlt

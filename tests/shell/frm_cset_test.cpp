// SPDX-License-Identifier: GPL-3.0-or-later
// The serial settings: their devices, and what the frame tells of the line.
#include "shell/frm_cset.h"

#include "files/settings_file.h"
#include "link/port.h"
#include "resources/text_ids.h"
#include "shell/cset_devices.h"
#include "shell/frame_facts.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

const std::string kEnglish = "VR=M627\r\nLANG_FLAG=1\r\n";

class SerialSettingsTest : public ShellTest {
 protected:
  FrmCSet& Open() {
    OpenMainWindow(kEnglish + "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\nTRANS_METHOD=RS485\r\n");
    ini_before = Ini();
    Choose("ComPort");
    return dynamic_cast<FrmCSet&>(*app->windows.Find("FrmCSet"));
  }
  CSetDevices& Devices() { return *app->windows.Find("FrmCSet")->Part<CSetDevices>(); }
  std::string Ini() { return platform->files.files[kIniPath]; }
  bool IniHas(const std::string& line) { return Ini().find(line + "\r\n") != std::string::npos; }

  std::string ini_before;
};

TEST_F(SerialSettingsTest, DevicesFollowPluggingAndCanBeAssigned) {
  const PortInfo first{"/dev/ttyUSB0", "USB UART", "Maker", "A1"};
  const PortInfo twin{"/dev/ttyUSB1", "USB UART", "Maker", ""};
  platform->process.ports = {first, twin};
  platform->sockets[3].name = "/dev/ttyUSB1";
  FrmCSet& dialog = Open();
  Grid& ports = Devices().grdPorts;
  ComboBox& devices = Devices().cmbDevices;
  const auto row = [&](int number) { return ports.Cell(number, 1) + "|" + ports.Cell(number, 2); };
  EXPECT_EQ(ports.Cell(1, 0), "COM1");
  EXPECT_EQ(row(1), "simulated meter|");
  EXPECT_EQ(row(3), "/dev/ttyUSB1|USB UART, Maker");
  EXPECT_EQ(row(4), "|not connected");
  EXPECT_EQ(ports.SelectedRow(), 1);
  EXPECT_EQ(devices.Items(), (Texts{"/dev/ttyUSB0: USB UART, Maker, S/N A1", "/dev/ttyUSB1: USB UART, Maker",
                                    "simulated meter", "the system's own port"}));
  ports.Choose(4);
  EXPECT_EQ(dialog.PortNo.Text(), "COM4");
  devices.Choose(1);
  // Unplugged and plugged again while the dialog is open; the choice stays on its device.
  platform->process.ports = {twin};
  platform->time.RunFor(1100);
  EXPECT_EQ(devices.Text(), "/dev/ttyUSB1: USB UART, Maker");
  platform->process.ports = {};
  platform->time.RunFor(1100);
  EXPECT_EQ(row(3), "/dev/ttyUSB1|not connected");
  EXPECT_EQ(devices.ListIndex(), -1);
  Devices().cmdAssign.Press();
  EXPECT_EQ(Ini(), ini_before) << "nothing is chosen";
  platform->process.ports = {first, twin};
  platform->time.RunFor(1100);
  devices.Choose(0);
  Devices().cmdAssign.Press();
  EXPECT_TRUE(IniHas("COM4=/dev/ttyUSB0"));
  EXPECT_EQ(GetPortDevice(*app, 4), "/dev/ttyUSB0");
  // A terminal without hardware is there when its file is, where somebody has assigned it.
  platform->files.files["/dev/pts/5"] = "";
  platform->sockets[5].name = platform->sockets[6].name = "/dev/pts/5";
  EXPECT_EQ(SetPortDevice(*app, 5, "/dev/pts/5"), FileError::kGood);
  EXPECT_EQ(SetPortDevice(*app, 7, "/dev/pts/7"), FileError::kGood);
  Devices().Form_Load();
  EXPECT_EQ(row(5), "/dev/pts/5|");
  EXPECT_EQ(row(6), "/dev/pts/5|not connected");
  EXPECT_EQ(row(7), "|not connected");
  dialog.PortNo.SetListIndex(-1);
  Devices().cmdAssign.Press();
  EXPECT_EQ(StatusText(), app->Text(text::kPortNotChosen));
  EXPECT_EQ(dialog.Focused(), &dialog.PortNo);
  dialog.PortNo.SetListIndex(3);
  platform->files.FailChange(1, FileError::kFull);
  Devices().cmdAssign.Press();
  EXPECT_NE(StatusText().find("the disk is full"), std::string::npos);
}

TEST_F(SerialSettingsTest, TheFrameNamesTheDeviceWhereThereIsRoom) {
  OpenMainWindow(kEnglish + "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n");
  FrameFacts& facts = *app->frame->Window().Part<FrameFacts>();
  const auto fact = [&](int number) { return facts.valFact(number).Caption(); };
  ASSERT_TRUE(OpenPort(*app));
  // The settings change; the open port does not by that.
  app->state.Speed = "38400";
  app->state.CommSettings = "38400,N,8,1";
  app->frame->ShowFacts();
  EXPECT_EQ(fact(0).substr(0, 34), "COM1: simulated meter, 9600,O,8,1,");
  bool closed = false;
  ClosePort(*app, closed);
  for (const auto& [port, device, shown] : {std::tuple("3", "/dev/serial/by-id/usb-A1", "usb-A1"),
                                            {"3", "/dev/twelve-and-6", "/dev/twelve-and-6"},
                                            {"3", "/dev/eighteen-long", "/dev/eighteen-long"},
                                            {"3", "/dev/nineteen-longs", "nineteen-longs"},
                                            {"3", "a-name-of-nineteen.", "a-name-of-ninetee…"}}) {
    app->state.PortNo = port;
    platform->sockets[3].name = device;
    app->frame->ShowFacts();
    EXPECT_EQ(facts.cmdLink.Caption(), "COM3\n" + std::string(shown) + "\n38400, NONE, 1\nStation 01");
    EXPECT_EQ(fact(0), "COM3: " + std::string(device) + ", 38400,N,8,1, Station 01 (not open)");
  }
  app->state.PortNo = "0";
  app->frame->ShowFacts();
  EXPECT_EQ(facts.cmdLink.Caption(), "Link\n-");
  EXPECT_EQ(fact(0), app->Text(text::kPortNotChosen));
  facts.cmdLink.Press();
  EXPECT_TRUE(IsShown("FrmCSet"));
}

}  // namespace
}  // namespace vlt::test

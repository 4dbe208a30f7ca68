// SPDX-License-Identifier: GPL-3.0-or-later
// The serial settings: fields, the proof of a link, what the file holds after each way out, devices, search.
#include "shell/frm_cset.h"

#include "files/settings_file.h"
#include "link/port.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell/cset_devices.h"
#include "shell/cset_search.h"
#include "shell/frame_facts.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

const std::string kEnglish = "VR=M627\r\nLANG_FLAG=1\r\n";
const std::string kJapanese = "VR=M627\r\n";

class SerialSettingsTest : public ShellTest {
 protected:
  FrmCSet& Open(const std::string& comm = "PORT=1\r\nSTATION_NO=01\r\nTRANS_METHOD=RS485\r\n",
                const std::string& system = kEnglish) {
    OpenMainWindow(system + "[COMM]\r\n" + comm);
    ini_before = Ini();
    Choose("ComPort");
    return Dialog();
  }
  FrmCSet& Dialog() { return dynamic_cast<FrmCSet&>(*app->windows.Find("FrmCSet")); }
  CSetDevices& Devices() { return *Dialog().Part<CSetDevices>(); }
  CSetSearch& Searching() { return *Dialog().Part<CSetSearch>(); }
  FrameFacts& Facts() { return *app->frame->Window().Part<FrameFacts>(); }
  std::string Ini() { return platform->files.files[kIniPath]; }
  bool IniHas(const std::string& line) { return Ini().find(line + "\r\n") != std::string::npos; }
  std::string Panel() { return Searching().stbSearch.Panel(1); }
  Texts FoundRow(int row) {
    Texts cells;
    for (int column = 0; column < Searching().grdFound.Columns(); ++column)
      cells.push_back(Searching().grdFound.Cell(row, column));
    return cells;
  }

  std::string ini_before;
};

TEST_F(SerialSettingsTest, ShowsTheSettingsInForce) {
  const struct {
    const char* comm;
    const std::string& system;
    Texts shown;  // port, method, station, speed, parity, stop bits, retries
    Texts boxes;
  } cases[] = {
      {"", kEnglish, {"", "RS232C", "00", "9600BPS", "ODD", "1", "3"}, {}},
      {"PORT=10\r\nSPEED=38400\r\nPARITY=E\r\nSTOP_BIT=2\r\nTRANS_METHOD=RS485\r\nSTATION_NO=7\r\nRETRY_NO="
       "0\r\n",
       kEnglish,
       {"COM10", "RS485", "07", "38400BPS", "EVEN", "2", "0"},
       {}},
      {"PORT=3\r\nSTATION_NO=05\r\nPARITY=N\r\n",
       kJapanese,
       {"COM3", "RS232C", "00", "9600BPS", "なし", "1", "3"},
       {}},
      {"PORT=2\r\nTRANS_METHOD=RS485\r\nSTATION_NO=40\r\n",
       kEnglish,
       {"COM2", "RS485", "01", "9600BPS", "ODD", "1", "3"},
       {}},
      {"PORT=-3\r\nSPEED=4800\r\nPARITY=M\r\nTRANS_METHOD=USB\r\nRETRY_NO=9\r\nSTOP_BIT=1.5\r\n",
       kEnglish,
       {"", "", "00", "", "", "", ""},
       {"error commport", "error TransMethod", "error com_Bour", "error com_Parity"}},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.comm);
    UseMeter({});
    for (std::size_t i = 0; i < given.boxes.size(); ++i) platform->dialogs.Answer(MessageAnswer::kOk);
    FrmCSet& dialog = Open(given.comm, given.system);
    EXPECT_EQ(
        (Texts{dialog.PortNo.Text(), dialog.TransMethod.Text(), dialog.StaitionNo.Text(), dialog.Speed.Text(),
               dialog.Parity.Text(), dialog.StopBit.Text(), dialog.RetryNo.Text()}),
        given.shown);
    EXPECT_EQ(platform->dialogs.TakeTexts(), given.boxes);
    EXPECT_EQ(dialog.StaitionNo.Enabled(), dialog.IsRs485() || !given.boxes.empty());
    EXPECT_EQ(dialog.Caption(), app->Text(670));
    EXPECT_EQ(dialog.lblRetryNo.Caption(), app->Text(1130));
    EXPECT_EQ(dialog.PortNo.Count(), 10);
    EXPECT_FALSE(platform->simulated.IsOpen());
  }
}

TEST_F(SerialSettingsTest, TheStationFollowsTheMethodAndItsLimits) {
  FrmCSet& dialog = Open();
  const struct {
    const char* typed;
    const char* left;
    const char* box;
  } cases[] = {{"7", "07", ""},
               {"31", "31", ""},
               {"0", "0", "The value is outside of range"},
               {"32", "32", "The value is outside of range"},
               {"x", "x", "Any data other than a number is not allowed"},
               {"1.", "01", ""},
               {"", "", ""}};
  for (const auto& given : cases) {
    SCOPED_TRACE(given.typed);
    const bool told = *given.box != '\0';
    if (told) platform->dialogs.Answer(MessageAnswer::kOk);
    const int focus = dialog.FocusCount();
    dialog.StaitionNo.Type(given.typed);
    dialog.StaitionNo.LoseFocus();
    EXPECT_EQ(dialog.StaitionNo.Text(), given.left);
    EXPECT_EQ(platform->dialogs.TakeTexts(), told ? Texts{given.box} : Texts{});
    EXPECT_EQ(dialog.FocusCount() > focus, told);
  }
  // A value that was never left is judged before anything changes.
  for (const char* wrong : {"", "99"}) {
    dialog.StaitionNo.Type(wrong);
    dialog.Command1.Press();
    EXPECT_EQ(dialog.StaitionNo.Mark(), "a station number is 01 to 31");
    EXPECT_EQ(StatusText(), "Station No.: a station number is 01 to 31");
    EXPECT_EQ(app->state.StationNo, "01");
    EXPECT_FALSE(platform->simulated.IsOpen());
  }
  dialog.StaitionNo.SetText("30");
  for (const char* up : {"31", "31"}) {
    dialog.StaitionNoUpDown.Up();
    EXPECT_EQ(dialog.StaitionNo.Text(), up);
  }
  dialog.StaitionNo.SetText("02");
  for (const char* down : {"01", "01"}) {
    dialog.StaitionNoUpDown.Down();
    EXPECT_EQ(dialog.StaitionNo.Text(), down);
  }
  dialog.TransMethod.Choose(0);
  EXPECT_EQ(dialog.StaitionNo.Text(), "00");
  EXPECT_FALSE(dialog.StaitionNo.Enabled() || dialog.StaitionNoUpDown.Up());
  dialog.TransMethod.Choose(1);
  EXPECT_EQ(dialog.StaitionNo.Text(), "01");
}

TEST_F(SerialSettingsTest, AGoodChangeIsProvedThenWritten) {
  UseMeter({.specification = 182, .unit_system = 1, .language = 1});
  platform->line.SetHearing(1, {38400, 'E'});
  FrmCSet& dialog = Open("PORT=4\r\nTRANS_METHOD=RS485\r\nSTATION_NO=05\r\nSPEED=9600\r\n");
  app->slots.At("RANGE", "FULL_SCALE1_Unit") = "kept";
  dialog.PortNo.Choose(0);
  dialog.TransMethod.Choose(0);
  dialog.Speed.Choose(2);
  dialog.Parity.Choose(1);
  dialog.RetryNo.Choose(0);
  bool locked = false;
  platform->time.After(230, [&] { locked = app->state.UiLocked && !dialog.HasCloseCommand(); });
  dialog.Command1.Press();
  EXPECT_TRUE(locked);
  EXPECT_EQ(app->windows.Find("FrmCSet"), nullptr);
  Texts requests = platform->TakeRequests();
  for (std::string& request : requests) request.resize(request.size() - 6);
  EXPECT_EQ(requests,
            (Texts{"00 03 01 00 00 02", "00 03 00 04 00 01", "00 03 00 40 00 01", "00 03 01 48 00 01",
                   "00 03 04 B6 00 01", "00 03 04 B8 00 01", "00 03 04 B4 00 01", "00 03 00 3E 00 01"}))
      << "heat too, whatever the model";
  EXPECT_EQ(app->state.SpecClass, 1);
  EXPECT_EQ(app->slots.At("RANGE", "FULL_SCALE1_Unit"), "");
  EXPECT_EQ(app->frame->Status().Panel(2), "JAPANESE");
  EXPECT_EQ(app->frame->Status().Panel(3), "ENGLISH");
  for (const char* line : {"PORT=1", "SETTINGS=38400,E,8,1", "SPEED=38400", "PARITY=E", "STOP_BIT=1",
                           "TRANS_METHOD=RS232C", "STATION_NO=00", "RETRY_NO=0"}) {
    EXPECT_TRUE(IniHas(line)) << line;
  }
  EXPECT_FALSE(On<PushButton>("MDIForm1", "Command14").Visible());
  EXPECT_FALSE(app->state.UiLocked);
  EXPECT_EQ(app->windows.MousePointer(), kNormalPointer);
  EXPECT_EQ(Facts().cmdLink.Caption(), "COM1\nsimulated meter\n38400, EVEN, 1\nStation 00");
  EXPECT_EQ(Facts().lblState.Caption(), "Identified at " + app->state.IdentifiedAt);
}

TEST_F(SerialSettingsTest, TheTimingIsKeptOnlyWhenTheLinkIsProved) {
  FrmCSet& dialog = Open();
  EXPECT_FALSE(dialog.chkTiming.Ticked());
  EXPECT_EQ(dialog.chkTiming.Caption(), "Event-driven timing");
  dialog.Command1.Press();
  EXPECT_EQ(Ini().find("TIMING"), std::string::npos) << "who does not use it has no key";

  Choose("ComPort");
  Dialog().chkTiming.Tick();
  Dialog().Command2.Press();
  EXPECT_FALSE(app->state.EventTiming);

  Choose("ComPort");
  Dialog().chkTiming.Tick();
  platform->Arm("silence*4");
  platform->dialogs.Answer(MessageAnswer::kOk);
  Dialog().Command1.Press();
  EXPECT_TRUE(app->state.EventTiming) << "in force in memory, as the other settings";
  EXPECT_EQ(Ini().find("TIMING"), std::string::npos);
  const std::int64_t start = platform->time.NowMs();
  Dialog().Command1.Press();
  EXPECT_TRUE(IniHas("TIMING=EVENT"));
  EXPECT_LT(platform->time.NowMs() - start, 200 + 8 * 30) << "eight exchanges behind the rest of the port";

  UseMeter({});
  EXPECT_TRUE(Open("PORT=1\r\nTIMING= EVENT\r\n").chkTiming.Ticked());
  Dialog().chkTiming.Untick();
  Dialog().Command1.Press();
  EXPECT_TRUE(IniHas("TIMING=PATTERN"));
  for (const char* other : {"TIMING=PATTERN\r\n", "TIMING=event\r\n", "TIMING=\r\n"}) {
    UseMeter({});
    EXPECT_FALSE(Open(std::string("PORT=1\r\n") + other).chkTiming.Ticked()) << other;
  }
}

TEST_F(SerialSettingsTest, AFailureKeepsTheDialogAndTheFile) {
  const struct {
    int port;  // of the list
    const char* fault;
    const char* status;
  } cases[] = {{4, "", "COM5"}, {0, "silence*ever", "[NO RESPONSE ERROR]"}, {-1, "", "No port is chosen"}};
  for (const auto& given : cases) {
    SCOPED_TRACE(given.status);
    UseMeter({});
    FrmCSet& dialog = Open("TRANS_METHOD=RS485\r\nSTATION_NO=01\r\n");
    if (*given.fault != '\0') platform->Arm(given.fault);
    platform->dialogs.Answer(MessageAnswer::kOk);
    dialog.PortNo.Choose(given.port);
    dialog.Speed.Choose(1);
    dialog.Command1.Press();
    EXPECT_EQ(platform->dialogs.TakeTexts(), Texts{"The error occurred at the time of communication"});
    EXPECT_EQ(platform->dialogs.messages[0].icon, MessageIcon::kStop);
    EXPECT_NE(StatusText().find(given.status), std::string::npos) << StatusText();
    EXPECT_TRUE(IsShown("FrmCSet") && dialog.Command1.Enabled() && !app->state.UiLocked);
    EXPECT_EQ(app->state.CommSettings, "19200,O,8,1");
    EXPECT_EQ(app->state.PortNo, std::to_string(given.port + 1));
    EXPECT_EQ(app->state.StationNo, given.port < 0 ? "00" : "01");
    EXPECT_EQ(Ini(), ini_before);
    // Without leaving the program: the same dialog proves the next try.
    platform->line.faults().Clear();
    dialog.PortNo.Choose(0);
    dialog.Command1.Press();
    EXPECT_EQ(app->windows.Find("FrmCSet"), nullptr);
    EXPECT_TRUE(IniHas("SPEED=19200"));
  }
}

TEST_F(SerialSettingsTest, AFileThatCanNotBeWrittenIsTold) {
  FrmCSet& dialog = Open();
  platform->files.FailChange(1, FileError::kNoPermission);
  dialog.Command1.Press();
  EXPECT_EQ(Ini(), ini_before);
  EXPECT_NE(StatusText().find("VLT.ini.tmp could not be written"), std::string::npos) << StatusText();
  EXPECT_FALSE(app->state.UiLocked);
}

TEST_F(SerialSettingsTest, CancelLeavesThePortAndTheSettings) {
  for (const bool by_button : {true, false}) {
    UseMeter({});
    FrmCSet& dialog = Open();
    ASSERT_TRUE(OpenPort(*app));
    dialog.PortNo.Choose(6);
    dialog.Speed.Choose(2);
    if (by_button) {
      dialog.Command2.Press();
    } else {
      app->windows.Unload("FrmCSet");
    }
    EXPECT_EQ(app->windows.Find("FrmCSet"), nullptr);
    EXPECT_TRUE(platform->simulated.IsOpen());
    EXPECT_EQ(app->state.PortNo + " " + app->state.CommSettings, "1 9600,O,8,1");
    EXPECT_EQ(Ini(), ini_before);
    EXPECT_EQ(platform->time.TimerCount(), 1) << "only the main window looks whether the port is there";
  }
}

TEST_F(SerialSettingsTest, ALiveRunKeepsTheLine) {
  OpenMainWindow(kEnglish + "[COMM]\r\nPORT=1\r\n");
  app->state.PvRunning = 1;
  Choose("ComPort");
  EXPECT_FALSE(Dialog().Command1.Enabled() || Searching().cmdSearch.Enabled());
  // The end of a cycle's lock gives all buttons back.
  Dialog().Command1.SetEnabled(true);
  Searching().cmdSearch.SetEnabled(true);
  Dialog().Command1.Press();
  Searching().cmdSearch.Press();
  EXPECT_EQ(StatusText(), app->Text(text::kMonitorRuns));
  EXPECT_TRUE(platform->TakeRequests().empty());
  app->state.PvRunning = 0;
  Choose("ComPort");
  EXPECT_TRUE(Dialog().Command1.Enabled());
}

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

TEST_F(SerialSettingsTest, ASearchFillsTheFieldsAndCommand1ProvesThem) {
  platform->line.AddStation(9, {.unit_system = 1, .language = 1});
  platform->line.AddStation(30, {});
  platform->line.SetHearing(1, {9600, 'N'});
  platform->line.SetHearing(9, {19200, 'E'});
  platform->line.SetHearing(30, {38400, 'O'});
  FrmCSet& dialog = Open("PORT=1\r\nTRANS_METHOD=RS485\r\nSTATION_NO=04\r\n");
  Texts panels;
  int progress = 0;
  platform->time.After(3000, [&] {
    panels = {Panel()};
    progress = Searching().pbSearch.Value();
    EXPECT_TRUE(Searching().cmdStop.Enabled());
    EXPECT_FALSE(dialog.Command1.Enabled() || dialog.Command2.Enabled());
  });
  Searching().cmdSearch.Press();
  EXPECT_EQ(panels, Texts{"Searching COM1: 9600 bps, ODD, station 14 (found: 0)"});
  EXPECT_EQ(progress, 14);
  EXPECT_EQ(Searching().pbSearch.Max(), 9 * 31);
  EXPECT_EQ(Panel(), FormatText(app->Text(text::kSearchFound), {"COM1", "3"}));
  ASSERT_EQ(Searching().grdFound.Rows(), 4);
  EXPECT_EQ(FoundRow(2), (Texts{"19200BPS", "EVEN", "09", "ENGLISH", "JAPANESE"}));
  EXPECT_FALSE(Searching().cmdStop.Enabled());
  EXPECT_TRUE(dialog.Command1.Enabled());
  EXPECT_EQ(Ini(), ini_before);
  EXPECT_EQ(app->state.CommSettings, "9600,O,8,1") << "nothing is in force by a search alone";
  dialog.PortNo.Choose(5);
  Searching().grdFound.Choose(2);
  EXPECT_EQ(dialog.PortNo.Text(), "COM1") << "where it was found";
  EXPECT_EQ((Texts{dialog.Speed.Text(), dialog.Parity.Text(), dialog.StaitionNo.Text()}),
            (Texts{"19200BPS", "EVEN", "09"}));
  dialog.Command1.Press();
  EXPECT_EQ(app->windows.Find("FrmCSet"), nullptr);
  EXPECT_TRUE(IniHas("SETTINGS=19200,E,8,1") && IniHas("STATION_NO=09"));
}

TEST_F(SerialSettingsTest, ASearchCanBeStoppedAndTellsWhyItEnded) {
  FrmCSet& dialog = Open();
  platform->line.SetHearing(1, {9600, 'O'});
  platform->time.After(2500, [&] { Searching().cmdStop.Press(); });
  Searching().cmdSearch.Press();
  EXPECT_EQ(Panel(), "Search stopped, found: 1");
  EXPECT_LT(platform->time.NowMs(), 4000);
  dialog.PortNo.Choose(7);
  Searching().cmdSearch.Press();
  EXPECT_EQ(Panel(), app->state.PortFaultReason);
  EXPECT_EQ(Searching().grdFound.Rows(), 1) << "the list is of this search";
  dialog.PortNo.Choose(0);
  platform->time.After(1000, [&] { platform->line.Unplug(platform->time.NowMs() * 1000); });
  Searching().cmdSearch.Press();
  EXPECT_EQ(Panel(), FormatText(app->Text(text::kSearchPortLost), {"COM1", "[RECEIVE ERROR(5)]", "1"}));
  platform->line.Plug(platform->time.NowMs() * 1000);
  dialog.TransMethod.Choose(0);
  platform->Arm("silence*ever");
  Searching().cmdSearch.Press();
  EXPECT_EQ(Panel(), FormatText(app->Text(text::kSearchNone), {"COM1", "0"}));
  platform->line.faults().Clear();
  Searching().cmdSearch.Press();
  Searching().grdFound.Choose(1);
  EXPECT_EQ(dialog.TransMethod.Text() + dialog.StaitionNo.Text(), "RS232C00");
  dialog.Command1.Press();
  EXPECT_EQ(app->windows.Find("FrmCSet"), nullptr);
}

TEST_F(SerialSettingsTest, TheFrameTellsTheLinkAndTheMeter) {
  UseMeter({.path_mode = 1, .unit_system = 1, .language = 2});
  OpenMainWindow(kEnglish + "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n");
  FrameFacts& facts = Facts();
  const auto fact = [&](int number) { return facts.valFact(number).Caption(); };
  EXPECT_EQ(facts.cmdLink.Caption(), "COM1\nsimulated meter\n9600, ODD, 1\nStation 01");
  EXPECT_EQ(fact(0), "COM1: simulated meter, 9600,O,8,1, Station 01 (not open)");
  EXPECT_EQ(facts.lblState.Caption(), app->Text(text::kNotIdentified));
  for (int unknown : {1, 2, 3, 4}) EXPECT_EQ(fact(unknown), "not known yet") << unknown;
  facts.cmdReadMeter.Press();
  EXPECT_EQ(fact(0), "COM1: simulated meter, 9600,O,8,1, Station 01");
  EXPECT_EQ(facts.lblState.Caption(), "Identified at " + app->state.IdentifiedAt);
  EXPECT_NE(fact(1), "not known yet");
  EXPECT_EQ(fact(2).size(), 4U);
  EXPECT_NE(fact(3).find("full model"), std::string::npos);
  EXPECT_EQ(fact(4), "2PATHS");
  EXPECT_EQ(fact(5).substr(0, 7), "ENGLISH");
  EXPECT_EQ(fact(6), "GERMAN");
  EXPECT_EQ(app->frame->Status().Panel(2), "GERMAN");
  // The settings change; the open port does not by that.
  app->state.Speed = "38400";
  app->state.CommSettings = "38400,N,8,1";
  app->frame->ShowFacts();
  EXPECT_EQ(fact(0).substr(0, 34), "COM1: simulated meter, 9600,O,8,1,");
  // A meter that is gone.
  platform->Arm("silence*ever");
  platform->dialogs.Answer(MessageAnswer::kOk);
  facts.cmdReadMeter.Press();
  EXPECT_EQ(facts.lblState.Caption(), app->Text(text::kNotIdentified));
  EXPECT_EQ(fact(1), "not known yet");
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

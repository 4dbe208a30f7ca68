// SPDX-License-Identifier: GPL-3.0-or-later
// The serial settings against meters on pseudo-terminals: what is proved, what the file holds behind it.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

#include "files/settings_file.h"
#include "host/host.h"
#include "meter_program.h"
#include "pty.h"
#include "shell/cset_search.h"
#include "shell/frm_cset.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"

namespace vlt {
namespace {

class SerialSettings : public ::testing::Test {
 protected:
  SerialSettings()
      : host(folder.path().toStdString(), [this](int number) { return GetPortDevice(app, number); }),
        machine(host.With(dialogs)),
        app(machine) {
    RegisterAllWindows(app);
  }

  // COM1 is the meter, COM2 a line where nobody answers, COM3 a device that is not there.
  void Start(const MeterProgram& meter) {
    QFile file(folder.filePath("VLT.ini"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[SYSTEM]\nVR=M627\nLANG_FLAG=1\n[COMM]\nPORT=3\nSPEED=9600\nPARITY=N\nRETRY_NO=0\n[PORTS]\n");
    file.write(QByteArray::fromStdString("COM1=" + meter.Port() + "\nCOM2=" + silent.Path() +
                                         "\nCOM3=/dev/not-there\n"));
    file.close();
    dialogs.answers = {MessageAnswer::kOk};
    ASSERT_EQ(StartUp(app), StartResult::kSplashRuns);
    const std::int64_t end = host.clock.NowMs() + 10000;
    while (!MainWindowShown() && host.clock.NowMs() < end) host.events.GiveWay(end);
    ASSERT_TRUE(MainWindowShown());
    EXPECT_EQ(dialogs.texts, std::vector<std::string>{"Set in the communication"});
    dialogs.texts.clear();
    before = Ini();
    static_cast<MDIForm1&>(app.frame->Window()).ComPort.Press();
    dialog = static_cast<FrmCSet*>(app.windows.Find("FrmCSet"));
    ASSERT_NE(dialog, nullptr);
  }
  bool MainWindowShown() const { return app.frame != nullptr && app.frame->Window().Visible(); }
  QByteArray Ini() {
    QFile file(folder.filePath("VLT.ini"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  bool DialogIsOpen() const { return app.windows.Find("FrmCSet") != nullptr; }

  QTemporaryDir folder;
  Pty silent;
  AnsweringDialogs dialogs;
  Host host;
  Platform machine;
  App app;
  QByteArray before;
  FrmCSet* dialog = nullptr;
};

const std::string kFailed = "The error occurred at the time of communication";

TEST_F(SerialSettings, FailuresThenAGoodChange) {
  const MeterProgram meter({"stations=7", "7:speed=19200", "unit=english"});
  Start(meter);
  for (const int list_index : {2, 1}) {  // not there, silent
    dialogs.texts.clear();
    dialog->PortNo.Choose(list_index);
    dialog->Command1.Press();
    EXPECT_EQ(dialogs.texts, std::vector<std::string>{kFailed});
    EXPECT_TRUE(DialogIsOpen());
    EXPECT_EQ(Ini(), before);
    EXPECT_EQ(app.state.PortNo, std::to_string(list_index + 1)) << "in force in memory";
  }
  EXPECT_TRUE(host.port.IsOpen());
  dialog->Command2.Press();
  EXPECT_FALSE(DialogIsOpen());
  EXPECT_TRUE(host.port.IsOpen()) << "Cancel leaves it as it was";
  EXPECT_EQ(Ini(), before);

  static_cast<MDIForm1&>(app.frame->Window()).ComPort.Press();
  dialog = static_cast<FrmCSet*>(app.windows.Find("FrmCSet"));
  dialog->PortNo.Choose(0);
  dialog->TransMethod.Choose(1);
  dialog->StaitionNo.Type("7");
  dialog->Speed.Choose(1);
  dialog->RetryNo.Choose(5);  // a loaded machine may let the meter wait
  dialog->Command1.Press();
  EXPECT_FALSE(DialogIsOpen());
  EXPECT_EQ(app.frame->Status().Panel(3), "ENGLISH");
  const QByteArray after = Ini();
  for (const char* line : {"PORT=1", "SETTINGS=19200,N,8,1", "TRANS_METHOD=RS485", "STATION_NO=07"}) {
    EXPECT_TRUE(after.contains(line)) << line << "\n" << after.toStdString();
  }
  EXPECT_TRUE(after.contains(("COM1=" + meter.Port()).c_str())) << "what is not of the link stays";
}

// A pseudo-terminal carries no parity, so each meter is heard at all three. The point-to-point search ends at
// the first.
TEST_F(SerialSettings, SearchFindsTheMeterOfAnotherSpeed) {
  const MeterProgram meter({"stations=3", "3:speed=38400"});
  Start(meter);
  dialog->PortNo.Choose(0);
  auto& search = *dialog->Part<CSetSearch>();
  search.cmdSearch.Press();
  ASSERT_EQ(search.grdFound.Rows(), 2) << search.stbSearch.Panel(1);
  search.grdFound.Choose(1);
  EXPECT_EQ(dialog->Speed.Text(), "38400BPS");
  dialog->RetryNo.Choose(5);
  dialog->Command1.Press();
  EXPECT_FALSE(DialogIsOpen());
  EXPECT_TRUE(Ini().contains("SPEED=38400"));
}

}  // namespace
}  // namespace vlt

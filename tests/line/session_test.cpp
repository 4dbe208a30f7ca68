// SPDX-License-Identifier: GPL-3.0-or-later
// A whole session with the simulated meter as a program of its own on a pseudo-terminal: every frame that the
// meter sees, byte for byte, from the splash to the store and the zero adjustment.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>

#include "files/settings_file.h"
#include "host/host.h"
#include "link/modbus.h"
#include "meter_program.h"
#include "pages/form10.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"

namespace vlt {
namespace {

// The host's clock, which stands while the meter owes a reply, and the port that knows of it. How late a
// loaded machine lets the meter's process run then changes nothing in what is sent: a request is not sent
// again because its reply was slow. A meter that stays silent for ten seconds counts as one that does not
// answer.
class PatientLine : public Clock, public EventQueue, public SerialPort {
 public:
  explicit PatientLine(Host& host) : host_(host) {}

  std::int64_t NowMs() override {
    const std::int64_t now = host_.clock.NowMs();
    if (owed_ > 0 && (host_.port.BytesIn() >= owed_ || now - asked_ > kPatienceMs)) GoOn(now);
    return (owed_ > 0 ? asked_ : now) - stood_;
  }
  LocalTime Now() override { return host_.clock.Now(); }

  void GiveWay(std::int64_t until_ms) override {
    const std::int64_t until = until_ms + stood_;
    host_.events.GiveWay(owed_ > 0 ? std::max(until, host_.clock.NowMs() + kLookMs) : until);
  }
  void Sleep(int ms) override { host_.events.Sleep(ms); }
  TimerId StartTimer(int interval_ms, std::function<void()> tick) override {
    return host_.events.StartTimer(interval_ms, std::move(tick));
  }
  void StopTimer(TimerId id) override { host_.events.StopTimer(id); }
  void Post(std::function<void()> task) override { host_.events.Post(std::move(task)); }
  void EndProcess() override { host_.events.EndProcess(); }

  void Open(int number, const std::string& settings) override { host_.port.Open(number, settings); }
  void Close() override {
    if (owed_ > 0) GoOn(host_.clock.NowMs());
    host_.port.Close();
  }
  bool IsOpen() const override { return host_.port.IsOpen(); }
  void DiscardInput() override { host_.port.DiscardInput(); }
  void DiscardOutput() override { host_.port.DiscardOutput(); }
  void Write(std::span<const std::uint8_t> bytes) override {
    host_.port.Write(bytes);
    asked_ = host_.clock.NowMs();
    owed_ = static_cast<int>(ReplyFor(bytes).size());
  }
  int BytesOut() override { return host_.port.BytesOut(); }
  int BytesIn() override {
    NowMs();
    return host_.port.BytesIn();
  }
  std::uint8_t TakeByte() override { return host_.port.TakeByte(); }
  void SetRts(bool on) override { host_.port.SetRts(on); }
  void SetDtr(bool on) override { host_.port.SetDtr(on); }

 private:
  static constexpr std::int64_t kPatienceMs = 10000;
  static constexpr std::int64_t kLookMs = 5;

  void GoOn(std::int64_t now) {
    stood_ += now - asked_;
    owed_ = 0;
  }

  Host& host_;
  std::int64_t asked_ = 0;  // by the host's clock, when the last request went out
  std::int64_t stood_ = 0;  // how long the clock has stood so far
  int owed_ = 0;            // bytes of the reply that is to come; 0 while none is
};

class Session : public ::testing::Test {
 protected:
  Session()
      : meter({"--log", folder.filePath("frames.log"), "speed=38400"}),
        host(folder.path().toStdString(), [this](int) { return meter.Port(); }),
        line(host),
        machine{line, line, line, dialogs, host.files, host.process, host.firmware},
        app(machine) {
    QFile ini(folder.filePath("VLT.ini"));
    EXPECT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[SYSTEM]\nVR=M627\nLANG_FLAG=1\n[COMM]\nPORT=1\nSPEED=38400\nPARITY=N\nSTATION_NO=01\n");
    ini.close();
    RegisterAllWindows(app);
  }

  // Lets events run until the condition holds; false when ten seconds pass first.
  bool Until(const std::function<bool()>& condition) {
    const std::int64_t end = host.clock.NowMs() + 10000;
    while (!condition() && host.clock.NowMs() < end) host.events.GiveWay(end);
    return condition();
  }

  // The requests since the last call, as the meter logged them.
  std::vector<std::string> Requests() {
    QFile log(folder.filePath("frames.log"));
    EXPECT_TRUE(log.open(QIODevice::ReadOnly));
    log.seek(read_);
    std::vector<std::string> requests;
    for (const QByteArray& entry : log.readAll().split('\n')) {
      const QList<QByteArray> columns = entry.split('\t');
      if (columns.size() >= 3 && columns[1] == "request") requests.push_back(columns[2].toStdString());
    }
    read_ = log.size();
    return requests;
  }

  QTemporaryDir folder;
  MeterProgram meter;
  AnsweringDialogs dialogs;
  Host host;
  PatientLine line;
  Platform machine;
  App app;

 private:
  qint64 read_ = 0;
};

using Frames = std::vector<std::string>;

TEST_F(Session, EveryFrameFromSplashToZeroAdjustment) {
  ASSERT_EQ(StartUp(app), StartResult::kSplashRuns);
  ASSERT_TRUE(Until([&] { return app.frame != nullptr && app.frame->Window().Visible(); }));
  EXPECT_EQ(Requests(), (Frames{
                            "01 03 01 00 00 02 C5 F7",  // unit system and language
                            "01 03 00 04 00 01 C5 CB",  // CH1 flow unit
                            "01 03 00 40 00 01 85 DE",  // CH1 total unit
                            "01 03 01 48 00 01 05 E0",  // model
                            "01 03 04 B6 00 01 64 DC",  // heat units
                            "01 03 04 B8 00 01 05 1F",  //
                            "01 03 04 B4 00 01 C5 1C",  //
                            "01 03 00 3E 00 01 E5 C6",  // operation mode
                        }));

  auto& main = static_cast<MDIForm1&>(app.frame->Window());
  main.Command1.Press();
  auto& page = static_cast<Form10&>(app.windows.Load("Form10"));
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(Requests(), (Frames{
                            "01 03 01 48 00 01 05 E0",  // opening the page: model, paths
                            "01 03 03 E8 00 01 04 7A",  //
                            "01 03 00 D0 00 12 C4 3E",  // process block
                            "01 03 01 00 00 01 85 F6",  // unit system
                            "01 04 00 80 00 03 B1 E3",  // sensor spacing
                        }));
  EXPECT_EQ(page.OUTER_DIAMETERText.unit->Caption(), "[mm]");
  EXPECT_FALSE(page.OUTER_DIAMETERText.Text().empty());

  page.PIPE_MATERIALCombo.Choose(12);
  page.KIND_OF_FLUIDCombo.Choose(17);
  page.LINING_MATERIALCombo.Choose(7);
  page.OUTER_DIAMETERText.Type("114.3");
  page.TRANS_FREQUENCYText.Type("3206");
  page.WALL_THICKNESSText.Type("4.5");
  page.LINING_S_VText.Type("2505");
  page.LINING_THICKNESSText.Type("1.15");
  page.FLUID_S_VText.Type("1483");
  page.VISCOSITYText.Type("1.0038");
  page.SENSOR_MOUNTCombo.Choose(1);
  page.SENSOR_TYPECombo.Choose(4);
  page.SetParameter.Press();
  EXPECT_EQ(Requests(), (Frames{
                            "01 10 00 D2 00 02 04 00 00 2C A6 E3 90",              // 114.3 mm
                            "01 10 00 D6 00 01 02 00 0C B5 A3",                    //
                            "01 10 00 D8 00 01 02 0C 86 30 2A",                    //
                            "01 10 00 DA 00 02 04 00 00 01 C2 FE 8D",              //
                            "01 10 00 DE 00 01 02 00 07 F5 2C",                    //
                            "01 10 00 E0 00 01 02 09 C9 76 36",                    //
                            "01 10 00 E2 00 02 04 00 00 00 73 3D DB",              // 1.15 mm
                            "01 10 00 E6 00 01 02 00 11 70 5A",                    //
                            "01 10 00 E8 00 01 02 05 CB F3 BF",                    //
                            "01 10 00 EA 00 04 08 3F F0 0F 90 96 BB 98 C8 68 DE",  //
                            "01 10 00 F2 00 01 02 00 01 72 82",                    //
                            "01 10 00 D0 00 01 02 00 04 B4 03",  // the sensor type goes last
                            "01 03 00 D0 00 12 C4 3E",           // process block
                            "01 03 01 00 00 01 85 F6",           // unit system
                            "01 04 00 80 00 03 B1 E3",           // sensor spacing
                        }));
  EXPECT_EQ(page.OUTER_DIAMETERText.Text(), "114.30");

  page.SaveParameter.Press();
  EXPECT_EQ(Requests(), (Frames{
                            "01 03 01 50 00 01 85 E7",  // idle?
                            "01 06 01 50 00 01 49 E7",  // store
                            "01 03 01 50 00 01 85 E7",  // done?
                        }));

  dialogs.answers = {MessageAnswer::kOk, MessageAnswer::kOk, MessageAnswer::kOk, MessageAnswer::kOk};
  page.CmdBtnAdjust.Press();
  page.CmdBtnClear.Press();
  EXPECT_EQ(Requests(), (Frames{
                            "01 06 01 40 00 01 48 22",  //
                            "01 06 01 40 00 00 89 E2",  //
                        }));
  EXPECT_EQ(dialogs.texts.back(), "ZERO ADJUSTMENT  A setup was completed");

  // The question about the settings; No is enough to close.
  dialogs.answers = {MessageAnswer::kNo};
  main.Command13.Press();
  EXPECT_EQ(dialogs.texts.back(), "Does it save the setting value of the loader?");
  EXPECT_FALSE(host.port.IsOpen());
  EXPECT_EQ(Requests(), Frames{});
}

}  // namespace
}  // namespace vlt

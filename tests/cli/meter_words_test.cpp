// SPDX-License-Identifier: GPL-3.0-or-later
// The words that need no window, on the simulated meter.
#include "cli/meter_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "meter/catalogue.h"
#include "tests/cli/session.h"

namespace vlt {
namespace {

using test::kIni;
using test::Session;

const std::string kPort1 = "COM1";

// One word and what comes of it.
struct WordCase {
  const char* line;
  int status;
  const char* told;     // a whole line of output; empty for none at all
  const char* trouble;  // what it begins with
  const char* fault = "";
};

void Check(const WordCase& c) {
  Session session;
  if (*c.fault != '\0') session.machine.Arm(c.fault);
  EXPECT_EQ(session.Run(c.line), c.status) << c.line << '\n' << session.trouble;
  if (*c.told == '\0') {
    EXPECT_TRUE(session.output.empty()) << c.line << '\n' << ::testing::PrintToString(session.output);
  } else {
    EXPECT_TRUE(session.Told(c.told)) << c.line << '\n' << ::testing::PrintToString(session.output);
  }
  EXPECT_TRUE(session.trouble.starts_with(c.trouble)) << session.trouble;
  EXPECT_EQ(session.trouble.empty(), c.status == 0) << session.trouble;
  EXPECT_FALSE(session.app.state.UiLocked);
  EXPECT_FALSE(session.machine.machine.port.IsOpen());
  EXPECT_EQ(session.machine.files.files["/app/VLT.ini"], kIni) << "nothing is saved";
}

std::ptrdiff_t Writes(Session& session) {
  const auto requests = session.machine.TakeRequests();
  return std::count_if(requests.begin(), requests.end(), [](const std::string& request) {
    return request.substr(3, 2) == "10" || request.substr(3, 2) == "06";
  });
}

TEST(MeterWords, GetTellsWhatTheMeterHolds) {
  const WordCase cases[] = {
      {"get process.outer_diameter 1", 0, "value\tprocess.outer_diameter\tCH1\t60.50\tmm\t3:00D2\t000017A2",
       ""},
      {"get process.outer_diameter ch2", 0, "value\tprocess.outer_diameter\tCH2\t60.50\tmm\t3:145A\t000017A2",
       ""},
      {"get process.pipe_material", 0, "value\tprocess.pipe_material\tCH2\tCARBON STEEL\t\t3:145E\t0000", ""},
      {"get range.full_scale_1 CH3", 0, "value\trange.full_scale_1\tCH3\t15\tm3/h\t3:1B60\t402E000000000000",
       ""},
      {"get status.flow_switch_high DO4", 0,
       "value\tstatus.flow_switch_high\tDO4\t12\tm3/h\t3:0416\t4028000000000000", ""},
      {"get system.type", 0, "value\tsystem.type\t\tTWO-CH\t\t4:0094\t54574F2D43482020", ""},
      // What can't be read is told with its reason.
      {"get process.outer_diameter CH1", 1, "unread\tprocess.outer_diameter\tCH1\t[NO RESPONSE ERROR]",
       "1: process.outer_diameter CH1: [NO RESPONSE ERROR]", "silence@00D2H*ever"},
      {"get range.full_scale_1 CH2", 1, "unread\trange.full_scale_1\tCH2\tits unit could not be read",
       "1: range.full_scale_1 CH2: its unit", "silence@138CH*ever"},
      {"get process.outer_diameter", 1, "", "1: the meter could not be read: [NO RESPONSE ERROR]",
       "silence*ever"},
      // Names.
      {"get process.outer_diametre", 2, "",
       "1: there is no parameter process.outer_diametre; near it: process.outer_diameter"},
      {"get fluid", 2, "", "1: there is no parameter fluid; near it: process.fluid"},
      {"get XYZZY", 2, "", "1: there is no parameter XYZZY"},
      {"get process.fluid CH3", 2, "", "1: process.fluid has no CH3; it has CH1, CH2"},
      {"get status.channel 5", 2, "", "1: status.channel has no 5; it has DO1, DO2, DO3, DO4"},
      {"get system.unit 1", 2, "", "1: a meter has system.unit once"},
  };
  for (const WordCase& c : cases) Check(c);
}

TEST(MeterWords, SetTellsWhatBecameOfAValue) {
  const WordCase cases[] = {
      {"set process.outer_diameter 114.3 1", 0,
       "sent\tprocess.outer_diameter\tCH1\tstored\t114.30\t114.30\t60.50\tmm\t", ""},
      {"set system.measurement_mode 2\nset process.pipe_material \"stainless steel\" CH2", 0,
       "sent\tprocess.pipe_material\tCH2\tstored\tSTAINLESS STEEL\tSTAINLESS STEEL\tCARBON STEEL\t\t", ""},
      {"set system.measurement_mode 2\nset process.pipe_material 1 CH2", 0,
       "sent\tprocess.pipe_material\tCH2\tstored\tSTAINLESS STEEL\tSTAINLESS STEEL\tCARBON STEEL\t\t", ""},
      // Where the entries are numbers, a number is an entry and no code.
      {"set total.pulse_width 50 1", 0, "sent\ttotal.pulse_width\tCH1\tstored\t50.0\t50.0\t50.0\tms\t", ""},
      {"set total.pulse_width 5 1", 0, "sent\ttotal.pulse_width\tCH1\tstored\t5.0\t5.0\t50.0\tms\t", ""},
      {"set details.send_count (4) 1", 0, "sent\tdetails.send_count\tCH1\tstored\t64\t64\t128\t\t", ""},
      // What the step of the register takes off is told.
      {"set process.outer_diameter 60.559 1", 0,
       "sent\tprocess.outer_diameter\tCH1\tstored\t60.55\t60.55\t60.50\tmm\t\t60.559 -> 60.55", ""},
      {"set range.burnout_timer 9.5 1", 0,
       "sent\trange.burnout_timer\tCH1\tstored\t9\t9\t10\tsec\t\t9.5 -> 9", ""},
      {"set process.viscosity 1.00381234567 1", 0,
       "sent\tprocess.viscosity\tCH1\tstored\t1.003812\t1.003812\t1.0038\tE-6m2/s\t", ""},
      {"set maintenance.ao1_adjustment_4ma 65535", 0,
       "sent\tmaintenance.ao1_adjustment_4ma\t\tstored\t65535\t65535\t819\t\t", ""},
      // What the meter does not do.
      {"set process.outer_diameter 114.3 1", 1,
       "sent\tprocess.outer_diameter\tCH1\tnot_proven\t114.30\t60.50\t60.50\tmm\tthe meter holds 60.50",
       "1: process.outer_diameter CH1: the meter holds 60.50", "ignore-write/10*ever"},
      {"set process.outer_diameter 114.3 1", 1,
       "sent\tprocess.outer_diameter\tCH1\trefused\t114.30\t60.50\t60.50\tmm\t[REGISTER COUNT ERROR(03H)]",
       "1: process.outer_diameter CH1: ", "exception=3/10*ever"},
  };
  for (const WordCase& c : cases) Check(c);
}

TEST(MeterWords, KeepIsConfirmedByTheMeter) {
  const WordCase cases[] = {
      {"keep", 0, "kept", ""},
      {"keep", 1, "", "1: Preservation was not completed", "slow-store*ever"},
      {"keep", 1, "", "1: Preservation was not completed [NO RESPONSE ERROR]", "silence@0150H*ever"},
  };
  for (const WordCase& c : cases) Check(c);
  Session session;
  EXPECT_EQ(session.Run("set process.fluid 3 1\nkeep\nset process.fluid 4 1"), 0) << session.trouble;
  session.machine.Meter().Restart(0);
  EXPECT_EQ(session.machine.Meter().holding().Word(0x00E6), 3) << "what was kept outlives the power";
}

// A value that can't be right goes nowhere.
TEST(MeterWords, SetSendsNothingThatARowRefuses) {
  const WordCase cases[] = {
      {"set process.outer_diameter abc 1", 1,
       "sent\tprocess.outer_diameter\tCH1\tnot_sent\tabc\t60.50\t60.50\tmm\tthis is no number",
       "1: process.outer_diameter CH1: this is no number"},
      {"set process.outer_diameter 1,5 1", 1,
       "sent\tprocess.outer_diameter\tCH1\tnot_sent\t1,5\t60.50\t60.50\tmm\ta comma is not taken: no "
       "grouping, "
       "and a point before the decimals",
       "1: process"},
      {"set process.pipe_sound_velocity 99999 1", 1,
       "sent\tprocess.pipe_sound_velocity\tCH1\tnot_sent\t99999\t3206\t3206\tm/s\tthe meter's register holds "
       "-32768 to 32767",
       "1: process.pipe_sound_velocity CH1: "},
      {"set process.outer_diameter 123456.78 1", 1,
       "sent\tprocess.outer_diameter\tCH1\tnot_sent\t123456.78\t60.50\t60.50\tmm\tit has more than 7 "
       "characters",
       "1: process.outer_diameter CH1: "},
      {"set system.unit GOLD", 1,
       "sent\tsystem.unit\t\tnot_sent\tGOLD\tMETRIC\tMETRIC\t\tthe entries are: METRIC, ENGLISH",
       "1: system.unit: the entries are"},
      {"set total.pulse_width 2 1", 1,
       "sent\ttotal.pulse_width\tCH1\tnot_sent\t2\t50.0\t50.0\tms\tthe entries are: 5.0, 10.0, 50.0, "
       "100.0, "
       "200.0, 500.0, 1000.0",
       "1: total.pulse_width CH1: the entries are"},
      {"set process.fluid 1e300 1", 1,
       "sent\tprocess.fluid\tCH1\tnot_sent\t1e300\tWATER\tWATER\t\tthe entries are: "
       "WATER, SEAWATER, DIST. WATER, AMMONIA, ALCOHOL, BENZENE, BROMIDE, ETHANOL, GLYCOL, KEROSENE, MILK, "
       "METHANOL, "
       "TOLUOL, LUBE OIL, FUEL OIL, PETROL, REFRIGERANT R410, FLUID S.V.",
       "1: process.fluid CH1: "},
      // Without what was there before nothing is sent.
      {"set process.outer_diameter 114.3 1", 1,
       "sent\tprocess.outer_diameter\tCH1\tnot_sent\t114.3\t\t\t\t[NO RESPONSE ERROR]",
       "1: process.outer_diameter CH1: [NO RESPONSE ERROR]", "silence@00D2H/03*ever"},
      {"set process.outer_diameter 114.3", 2, "",
       "1: there is more than one process.outer_diameter: say which"},
      {"set process.sensor_spacing 3 1", 1, "", "1: process.sensor_spacing: the meter works it out itself"},
      {"set system.specification 81", 1, "", "1: system.specification is not set by a word"},
      {"set process.outer_diametre 3 1", 2, "", "1: there is no parameter"},
  };
  for (const WordCase& c : cases) {
    Check(c);
    Session session;
    if (*c.fault != '\0') session.machine.Arm(c.fault);
    session.Run(c.line);
    EXPECT_EQ(Writes(session), 0) << c.line;
  }
}

// A code with a word goes to a meter that offers it as it is now.
TEST(MeterWords, SetTakesTheCodesThatTheMeterOffers) {
  const struct {
    const char* line;
    const char* reason;  // empty: it is stored
  } cases[] = {
      {"set system.ao1_source 2", ""},
      {"set system.ao1_source \"CH1:THERMAL FLOW\"",
       "this meter does not offer CH1:THERMAL FLOW in its mode"},
      {"set range.kind 1 CH3", ""},
      {"set range.kind VELOCITY CH3", "this meter does not offer VELOCITY in its mode"},
      {"set status.function 9 DO1", ""},
      {"set status.function 10 DO1", "this meter does not offer H:TOTAL PULSE(T) in its mode"},
      {"set display.item_2 7", "this meter does not offer H:TOTAL(THERMAL) in its mode"},
      {"set display.lights_out_time 99", ""},
      {"set display.lights_out_time 100", "the meter's register holds 0 to 99"},
  };
  for (const auto& c : cases) {
    Session session;
    const bool stored = *c.reason == '\0';
    EXPECT_EQ(session.Run(std::string("set system.measurement_mode 2\n") + c.line), stored ? 0 : 1) << c.line;
    EXPECT_EQ(session.trouble.empty(), stored) << c.line;
    EXPECT_TRUE(session.trouble.ends_with(c.reason)) << session.trouble;
    EXPECT_EQ(Writes(session), stored ? 2 : 1) << c.line;
  }
}

TEST(MeterWords, AValueFollowsTheMetersOwnUnits) {
  Session session({.unit_system = 1});
  session.machine.Arm("ignore-write@00DAH/10*ever");
  EXPECT_EQ(
      session.Run("set process.outer_diameter 4.5 1\nget process.outer_diameter 1\n"
                  "spacing outer_diameter=60.5 wall_thickness=3.8 pipe_material=0 fluid=0 sensor_type=0\n"
                  "set process.wall_thickness 0.2 1"),
      1);
  EXPECT_TRUE(session.ToldPart("value\tprocess.outer_diameter\tCH1\t4.5000\tinch\t3:00D2\t0000AFC8"))
      << ::testing::PrintToString(session.output);
  EXPECT_TRUE(session.ToldPart("\tmm\t")) << "what is not the meter's goes by the settings";
  EXPECT_TRUE(session.trouble.ends_with(": the meter holds 0.1496")) << session.trouble;
}

TEST(MeterWords, AMeterLacksWhatItsShapeHasNot) {
  Session session({.specification = 182});
  EXPECT_EQ(session.Run("get process.fluid\nset process.fluid 1\nget process.fluid 2"), 1);
  EXPECT_EQ(session.trouble, "3: this meter has no process.fluid CH2");
  EXPECT_EQ(std::count_if(session.output.begin(), session.output.end(),
                          [](const std::string& line) { return line.starts_with("value"); }),
            1);
  EXPECT_TRUE(session.ToldPart("sent\tprocess.fluid\tCH1\tstored")) << "there is only one";
}

// The settings, the port and the line are needed, and each that is not to be had is told.
TEST(MeterWords, WhatKeepsThemFromTheLine) {
  Session broken;
  broken.machine.files.files["/app/VLT.ini"] = "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=X\r\nLANG_FLAG=1\r\n";
  EXPECT_EQ(broken.Run("get system.unit"), 1);
  EXPECT_TRUE(broken.ToldPart("refused\tstart\t/app/VLT.ini: "));

  Session unplugged;
  unplugged.machine.sockets.clear();
  EXPECT_EQ(unplugged.Run("get system.unit"), 1);
  EXPECT_EQ(unplugged.trouble, "1: COM1 is not there: check that the adapter is plugged in");

  Session second;
  second.machine.process.only_instance = false;
  EXPECT_EQ(
      second.Run("spacing outer_diameter=60.5 wall_thickness=3.8 pipe_material=0 fluid=0 sensor_type=1\n"
                 "get system.unit"),
      1);
  EXPECT_EQ(second.trouble, "2: another instance of the program runs in this folder");

  Session measuring;
  EXPECT_EQ(measuring.Run("start\nopen Form9\nfile /data/run.csv\npress SaveCSV\npress Start\nwait 1500\n"
                          "get system.unit"),
            1);
  EXPECT_EQ(measuring.trouble, "7: the line is in use by other work of the program");

  Session ended;
  EXPECT_EQ(ended.Run("answer no\nstart\nclose\nget system.unit"), 1);
  EXPECT_EQ(ended.trouble, "4: the program has ended");
}

// Words with and without windows live beside each other.
TEST(MeterWords, TheyWorkBeforeAndBehindAStart) {
  Session session;
  EXPECT_EQ(
      session.Run("get process.fluid 1\nstart\nopen Form10\ntick OUTER_DIAMETER\n"
                  "set process.outer_diameter 88.9 1\npress ReadParameter\nexpect OUTER_DIAMETERText 88.90\n"
                  "expect ReadParameter enabled\nexpect StatusBar1[2] ENGLISH"),
      0)
      << session.trouble << ::testing::PrintToString(session.output);
}

// --- whole meters ------------------------------------------------------------------------------------------

TEST(MeterWords, ASnapshotIsComparedAndRestored) {
  Session session;
  const int status = session.Run(
      "set system.measurement_mode 2\nsnapshot /data/a.txt\ncompare meter /data/a.txt all\nset "
      "process.outer_diameter 114.3 1\n"
      "set range.damping 7 2\nsnapshot /data/b.txt\nrestore /data/a.txt\ncompare /data/a.txt meter\n"
      "compare /data/a.txt /data/b.txt");
  EXPECT_EQ(status, 1);
  EXPECT_TRUE(session.trouble.starts_with("9: All ")) << session.trouble;
  const auto told = [&](const std::string& line) {
    EXPECT_TRUE(session.ToldPart(line)) << line << '\n' << ::testing::PrintToString(session.output);
  };
  told("identity\tmeter\t\t0001\t0081\tTWO-CH\t");
  told("snapshot\t/data/a.txt\t");
  told("identity\tright\tSnapshot a.txt\t0001\t0081\tTWO-CH\t");
  told("No differences in ");
  told("sent\tprocess.outer_diameter\tCH1\tstored\t60.50\t60.50\t114.30\tmm\t");
  told("sent\trange.damping\tCH2\tstored\t5.0\t5.0\t7.0\tsec\t");
  told("restored\t2\t0\t0\t0\t0\t/home/operator/veltrano3/");
  told("row\tprocess.outer_diameter\tCH1\tdifferent\t60.50\tmm\t000017A2\t114.30\tmm\t00002CA6\t");
  EXPECT_EQ(std::count_if(
                session.output.begin(), session.output.end(),
                [](const std::string& line) { return line.starts_with("row\tprocess.fluid\tCH1\tequal"); }),
            1)
      << "equal rows are told when all are asked for";
  EXPECT_EQ(session.machine.Meter().holding().Long(0x00D2), 6050);
}

TEST(MeterWords, AComparisonHasThreeEnds) {
  const struct {
    const char* script;
    int status;
    const char* trouble;
    const char* fault = "";
  } cases[] = {
      {"snapshot /s\nsnapshot /s\ncompare /s /s all", 0, ""},
      {"snapshot /s\nset process.fluid 3 1\ncompare /s meter", 1, "3: All "},
      {"compare /s /t", 2, "1: /s could not be read: there is no such file"},
      {"compare /app/VLT.ini meter", 2, "1: /app/VLT.ini is neither a snapshot nor a parameter file"},
      {"compare meter fields", 2, "1: no page holds a value"},
      {"compare a b c", 2, "1: at the end only all may stand, not c"},
      {"compare meter meter", 2, "1: the meter could not be read: [NO RESPONSE ERROR]", "silence*ever"},
      // A part that is missing keeps a comparison from saying that nothing differs.
      {"snapshot /s\ncompare /s meter", 2, "2: All ", "silence@00D0H/03#2*ever"},
  };
  for (const auto& c : cases) {
    Session session;
    if (*c.fault != '\0') session.machine.Arm(c.fault);
    EXPECT_EQ(session.Run(c.script), c.status) << c.script << '\n' << session.trouble;
    EXPECT_TRUE(session.trouble.starts_with(c.trouble)) << session.trouble;
  }
}

// What the pages hold is a side, and so is the file that they write.
TEST(MeterWords, FieldsAndTheirFileAreSides) {
  const std::string page = "start\nopen Form10\ntick chkCheck\npress ReadParameter\n";
  Session same;
  EXPECT_EQ(same.Run(page + "file /data/pipe.ini\npress setParam\ncompare /data/pipe.ini fields\n"
                            "compare /data/pipe.ini meter"),
            2)
      << "a file has one channel of each page";
  EXPECT_TRUE(same.trouble.starts_with("8: All ")) << same.trouble;
  EXPECT_TRUE(same.ToldPart("compared\t")) << ::testing::PrintToString(same.output);
  EXPECT_FALSE(same.ToldPart("\tdifferent\t"));
  Session file;
  file.machine.files.files = same.machine.files.files;
  EXPECT_EQ(file.Run("restore /data/pipe.ini"), 1);
  EXPECT_TRUE(file.trouble.starts_with("1: /data/pipe.ini is no snapshot")) << file.trouble;
  Session session;
  EXPECT_EQ(session.Run("start\nopen Form10\ntick OUTER_DIAMETER\npress ReadParameter\n"
                        "type OUTER_DIAMETERText 77\ncompare fields meter"),
            1);
  EXPECT_TRUE(session.ToldPart("row\tprocess.outer_diameter\tCH1\tdifferent\t77"))
      << ::testing::PrintToString(session.output);
}

TEST(MeterWords, SnapshotLosesNoFile) {
  const struct {
    const char* script;
    const char* trouble;
    const char* fault = "";
    bool written = false;
  } cases[] = {
      {"snapshot /app/VLT.ini", "1: /app/VLT.ini is there and is no snapshot"},
      {"snapshot /s", "1: the meter could not be read: [NO RESPONSE ERROR]", "silence*ever"},
      {"snapshot /s", "1: 12 of 225 parameters could not be read", "silence@00D0H/03*ever", true},
  };
  for (const auto& c : cases) {
    Session session;
    if (*c.fault != '\0') session.machine.Arm(c.fault);
    EXPECT_EQ(session.Run(c.script), 1) << c.script;
    EXPECT_TRUE(session.trouble.starts_with(c.trouble)) << session.trouble;
    EXPECT_EQ(session.machine.files.files.contains("/s"), c.written);
    EXPECT_EQ(session.machine.files.files["/app/VLT.ini"], kIni);
  }
}

TEST(MeterWords, RestoreTellsWhatItCouldNotDo) {
  const std::string changed = "snapshot /s\nset process.outer_diameter 114.3 1\nset process.fluid 3 1\n";
  const struct {
    std::string script;
    const char* trouble;
    const char* told;
    const char* fault = "";
  } cases[] = {
      {"restore /none", "1: /none could not be read", ""},
      {"restore /app/VLT.ini", "1: /app/VLT.ini is neither", ""},
      {changed + "restore /s", "4: parameters that are not as the snapshot has them: 3",
       "sent\tprocess.outer_diameter\tCH1\tnot_proven\t60.50\t114.30\t114.30\tmm\t",
       "ignore-write@00D2H/10#2*ever"},
      {"restore /s another", "1: at the end only other may stand, not another", ""},
      {changed + "set system.id_number 9\nrestore /s",
       "5: the meter on the line is 0009 / 0081 / TWO-CH and not 0001", "restored\t0\t0\t0\t"},
  };
  for (const auto& c : cases) {
    Session session;
    if (*c.fault != '\0') session.machine.Arm(c.fault);
    EXPECT_NE(session.Run(c.script), 0) << c.script;
    EXPECT_TRUE(session.trouble.starts_with(c.trouble)) << session.trouble;
    EXPECT_TRUE(*c.told == '\0' || session.ToldPart(c.told)) << ::testing::PrintToString(session.output);
  }
}

// What belongs to the other meter is kept, with the reason, and nothing is missing from the success.
TEST(MeterWords, AnotherMeterIsRestoredButForItsOwn) {
  Session session;
  EXPECT_EQ(session.Run("snapshot /s\nset process.fluid 3 1\nset system.id_number 9\n"
                        "set maintenance.ao1_adjustment_4ma 820\nrestore /s other\nget process.fluid 1\n"
                        "get system.id_number"),
            0)
      << session.trouble;
  for (const char* told : {"kept\tsystem.id_number\t\tit is the meter's own and stays 0009",
                           "kept\tmaintenance.ao1_adjustment_4ma\t\tit is the meter's own and stays 820",
                           "value\tprocess.fluid\tCH1\tWATER\t\t3:00E6\t0000",
                           "value\tsystem.id_number\t\t0009\t\t3:0104\t0009"}) {
    EXPECT_TRUE(session.Told(told)) << told << ::testing::PrintToString(session.output);
  }
  EXPECT_TRUE(session.ToldPart("restored\t1\t0\t0\t0\t0\t/home/operator/veltrano3/restore/"));
  EXPECT_FALSE(session.ToldPart("differs\t"));
}

TEST(MeterWords, ARestoreWithNothingToSendMakesNoPoint) {
  Session session;
  EXPECT_EQ(session.Run("snapshot /s\nrestore /s"), 0) << session.trouble;
  EXPECT_TRUE(session.Told("restored\t0\t0\t0\t0\t0\t\t0")) << ::testing::PrintToString(session.output);
  EXPECT_EQ(session.machine.files.files.size(), 2u) << "the settings and the snapshot";
}

TEST(MeterWords, ALineThatNoSnapshotHasKeepsARestoreFromBeingWhole) {
  Session session;
  EXPECT_EQ(session.Run("snapshot /s"), 0) << session.trouble;
  Session restoring;
  restoring.machine.files.files["/s"] =
      session.machine.files.files["/s"] + "range.colour\tCH1\t3:7000\t0001\tred\t\n";
  EXPECT_EQ(restoring.Run("restore /s"), 1);
  EXPECT_TRUE(restoring.ToldPart("remark\tleft\t"));
  EXPECT_TRUE(restoring.trouble.starts_with("1: lines of /s that were not taken: 1")) << restoring.trouble;
  // An editor's mark in front of it is no fault.
  Session marked;
  marked.machine.files.files["/s"] = "\xEF\xBB\xBF" + session.machine.files.files["/s"];
  EXPECT_EQ(marked.Run("restore /s\ncompare /s meter\nsnapshot /s"), 0) << marked.trouble;
}

// A script that is stopped (by a signal) breaks long work off at its next exchange, and writes nothing.
TEST(MeterWords, AStoppedScriptBreaksOff) {
  for (const char* script : {"snapshot /s", "scan stations=1-31", "snapshot /s\nrestore /s"}) {
    Session session;
    session.machine.Arm("silence*ever");
    session.machine.time.After(500, [&] { session.companion.Stop(); });
    session.Run(script);
    const auto stopped_at = session.machine.time.NowMs();
    session.machine.time.GiveWay(stopped_at + 60'000);
    EXPECT_FALSE(session.app.state.UiLocked) << script;
    EXPECT_FALSE(session.machine.files.files.contains("/s"));
    EXPECT_FALSE(session.machine.machine.port.IsOpen());
  }
}

// Stopped at any moment: the row on the line is judged by what the meter holds, and those behind it are not
// sent.
TEST(MeterWords, AStoppedRestoreJudgesTheRowOnTheLine) {
  Session source;
  EXPECT_EQ(source.Run("snapshot /s"), 0);
  const auto change = [&](Session& session) {
    session.machine.files.files["/s"] = source.machine.files.files["/s"];
    session.machine.Meter().holding().PutLong(0x00D2, 11430);
    session.machine.Meter().holding().PutWord(0x00E6, 3);
    session.machine.Meter().holding().PutWord(0x001C, 77);
  };
  Session whole;
  change(whole);
  const std::int64_t begin = whole.machine.time.NowMs();
  EXPECT_EQ(whole.Run("restore /s"), 0) << whole.trouble;
  const std::int64_t length = whole.machine.time.NowMs() - begin;
  std::set<int> counts;
  for (std::int64_t at = length / 3; at < length; at += 83) {
    SCOPED_TRACE(at);
    Session session;
    change(session);
    session.machine.time.After(at, [&] { session.companion.Stop(); });
    session.Run("restore /s");
    EXPECT_FALSE(session.app.state.UiLocked || session.machine.machine.port.IsOpen());
    if (!session.ToldPart("sent\t")) continue;  // stopped while it was read
    auto& holding = session.machine.Meter().holding();
    const std::pair<const char*, bool> rows[] = {{"process.outer_diameter", holding.Long(0x00D2) == 6050},
                                                 {"process.fluid", holding.Word(0x00E6) == 0},
                                                 {"range.burnout_timer", holding.Word(0x001C) == 10}};
    int stored = 0;
    for (const auto& [name, restored] : rows) {
      stored += restored ? 1 : 0;
      EXPECT_TRUE(
          session.ToldPart(std::string("sent\t") + name + "\tCH1\t" + (restored ? "stored\t" : "not_sent\t")))
          << name << ::testing::PrintToString(session.output);
    }
    counts.insert(stored);
  }
  EXPECT_EQ(counts, (std::set{0, 1, 2, 3}));
}

// What was to be set is not sent once the script is to end, and what is on the line comes to its end.
TEST(MeterWords, AStoppedSetIsStoredOrNotSent) {
  Session whole;
  const std::int64_t begin = whole.machine.time.NowMs();
  EXPECT_EQ(whole.Run("set process.fluid 3 1"), 0);
  const std::int64_t length = whole.machine.time.NowMs() - begin;
  std::set<std::string> ends;
  for (std::int64_t at = 1; at < length; at += 17) {
    SCOPED_TRACE(at);
    Session session;
    session.machine.time.After(at, [&] { session.companion.Stop(); });
    session.Run("set process.fluid 3 1");
    const bool stored = session.machine.Meter().holding().Word(0x00E6) == 3;
    const std::string end = stored ? "stored" : "not_sent";
    EXPECT_TRUE(session.ToldPart("sent\tprocess.fluid\tCH1\t" + end + "\t"))
        << ::testing::PrintToString(session.output);
    EXPECT_EQ(Writes(session) > 0, stored);
    ends.insert(end);
  }
  EXPECT_EQ(ends.size(), 2u);
}

// A second signal does not wait for a line that may be dead.
TEST(MeterWords, BrokenOffItEndsAtOnce) {
  Session session;
  session.machine.Arm("silence*ever");
  bool waited = false;
  session.machine.time.After(500, [&] {
    session.companion.Stop();
    waited = !session.finished;
    session.companion.Break();
    EXPECT_TRUE(session.finished);
  });
  session.Run("snapshot /s");
  EXPECT_TRUE(waited);
}

// --- names, scan and spacing

TEST(MeterWords, NamesListsWhatMayBeRead) {
  const WordCase cases[] = {
      {"names wall", 0, "parameter\tprocess.wall_thickness\tCH1,CH2\tWALL THICKNESS\tyes", ""},
      {"names system.unit", 0, "parameter\tsystem.unit\t\tUNIT\tyes\tMETRIC\tENGLISH", ""},
      {"names \"sensor spacing\"", 0, "parameter\tprocess.sensor_spacing\tCH1,CH2\tSENSOR SPACING\tno", ""},
      {"names system.specification", 0, "parameter\tsystem.specification\t\tSPECIFICATION\tno", ""},
      {"names proces.fluid", 2, "", "1: there is no parameter proces.fluid; near it: process.fluid"},
  };
  for (const WordCase& c : cases) Check(c);
  Session all;
  EXPECT_EQ(all.Run("names"), 0);
  std::size_t rows = 0;
  for (const ParameterGroup& group : ParameterGroups()) rows += group.rows.size();
  EXPECT_EQ(all.output.size(), rows);
  EXPECT_TRUE(all.machine.TakeRequests().empty());
}

TEST(MeterWords, ScanFindsMeters) {
  const WordCase cases[] = {
      {"scan", 0, "found\tCOM1\t9600\tO\t00\tMETRIC\tENGLISH", ""},
      {"scan stations=1", 0, "found\tCOM1\t9600\tO\t01\tMETRIC\tENGLISH", ""},
      {"scan stations=2-3", 1, "progress\t1\t18\tCOM1 9600,O", "1: "},
      {"scan port=2", 1, "", "1: COM2 is not there"},
      {"scan port=0", 2, "", "1: port=0: a whole number from 1 to 10 is needed"},
      {"scan port=10", 1, "", "1: COM10 is not there"},
      {"scan port=11", 2, "", "1: port=11: a whole number from 1 to 10 is needed"},
      {"scan stations=31", 1, "progress\t1\t9\tCOM1 9600,O", "1: "},
      {"scan stations=5-2", 2, "", "1: stations=5-2: a whole number from 0 to 31 is needed"},
      {"scan stations=1-32", 2, "", "1: stations=1-32: "},
      {"scan station=1", 2, "", "1: there is no key station; near it: stations"},
      {"scan 7", 2, "", "1: 7 is not written KEY=VALUE"},
      {"scan port=1 port=1", 2, "", "1: port is given twice"},
  };
  for (const WordCase& c : cases) Check(c);
}

TEST(MeterWords, SpacingCalculatesAsItsWindowDoes) {
  const std::string pipe = "spacing outer_diameter=60.5 wall_thickness=3.8 ";
  const struct {
    std::string line;
    int status;
    const char* text;
  } cases[] = {
      {pipe + "pipe_material=0 fluid=0 sensor_type=0", 0, "\tmm\t"},
      {pipe + "\"pipe_material=carbon steel\" fluid=WATER sensor_type=3 \"sensor_mount=Z METHOD\"", 0, ""},
      {"spacing unit=ENGLISH outer_diameter=3.937 wall_thickness=0.1969 pipe_material=0 fluid=0 "
       "sensor_type=4",
       0, "spacing\t2.068\tinch\t"},
      {pipe + "pipe_material=0 fluid=0", 1, "SENSOR TYPE"},
      {"spacing wall_thickness=3.8 pipe_material=0 fluid=0 sensor_type=1", 1, "OUTER DIAMETER"},
      {pipe + "pipe_material=GOLD fluid=0 sensor_type=1", 1,
       "pipe_material: the entries are: CARBON STEEL, "},
      {pipe + "pipe_material=0 pipe_sound_velocity=3000 fluid=0 sensor_type=1", 1,
       "pipe_sound_velocity is that of pipe_material; for an own value write pipe_material=12"},
      {"spacing outer_diameter=5 wall_thickness=3.8 pipe_material=0 fluid=0 sensor_type=1", 1,
       "OUTER DIAMETER"},
      {pipe + "pipe_material=0 fluid=0 sensor_type=1 lining_thickness=2", 1,
       "lining_thickness needs lining_material or lining_sound_velocity beside it"},
      {pipe + "pipe_material=0 fluid=0 sensor_type=1 lining_thickness=2 lining_material=0", 1,
       "lining_thickness needs"},
      {pipe + "pipe_material=0 fluid=0 sensor_type=1 lining_thickness=0 lining_material=0", 0, "\tmm\t"},
      {"spacing outer_diamter=5", 2, "there is no key outer_diamter; near it: outer_diameter"},
      {"spacing x=5", 2, "there is no key x; the keys are unit, outer_diameter, "},
  };
  for (const auto& c : cases) {
    Session session;
    EXPECT_EQ(session.Run(c.line), c.status) << c.line << '\n' << session.trouble;
    const std::string& told = c.status == 0 ? session.output.back() : session.trouble;
    EXPECT_NE(told.find(c.text), std::string::npos) << told;
    EXPECT_TRUE(session.machine.TakeRequests().empty()) << "no meter is asked";
  }
  const std::pair<const char*, const char*> same[] = {
      {"pipe_material=2 fluid=1 sensor_type=1",
       "choose PIPE_MATERIALCombo 2\nchoose KIND_OF_FLUIDCombo 1\n"
       "choose SENSOR_TYPECombo 1\n"},
      {"pipe_sound_velocity=3300 fluid_sound_velocity=1400 sensor_type=0 sensor_mount=1",
       "choose PIPE_MATERIALCombo 12\ntype TRANS_FREQUENCYText 3300\nchoose KIND_OF_FLUIDCombo 17\n"
       "type FLUID_S_VText 1400\nchoose SENSOR_TYPECombo 0\nchoose SENSOR_MOUNTCombo 1\n"},
      {"pipe_material=0 fluid=0 sensor_type=2 lining_material=3 lining_thickness=2",
       "choose SENSOR_TYPECombo 2\nchoose LINING_MATERIALCombo 3\ntype LINING_THICKNESSText 2\n"},
      {"pipe_material=0 fluid=0 sensor_type=2 lining_sound_velocity=2000 lining_thickness=2",
       "choose SENSOR_TYPECombo 2\nchoose LINING_MATERIALCombo 7\ntype LINING_S_VText 2000\n"
       "type LINING_THICKNESSText 2\n"},
  };
  for (const auto& [keys, gestures] : same) {
    Session word;
    EXPECT_EQ(word.Run(pipe + keys), 0) << word.trouble;
    Session window;
    EXPECT_EQ(window.Run(std::string("start\nopen frmCalc\ntype OUTER_DIAMETERText 60.5\n"
                                     "type WALL_THICKNESSText 3.8\n") +
                         gestures + "press ExecuteCalc\n"),
              0)
        << window.trouble;
    const auto* calc = window.app.windows.Find("frmCalc");
    const auto text = [&](const char* name) { return static_cast<TextBox*>(calc->Find(name))->Text(); };
    EXPECT_EQ(word.output,
              std::vector{"spacing\t" + text("txtResult1Text") + "\tmm\t" + text("txtResult2Text")});
    EXPECT_FALSE(text("txtResult1Text").empty());
  }
}

}  // namespace
}  // namespace vlt

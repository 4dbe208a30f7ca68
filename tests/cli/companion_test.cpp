// SPDX-License-Identifier: GPL-3.0-or-later
// Scripts on the program's own windows, on virtual time.
#include "cli/companion.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/cli/session.h"
#include "window/chart.h"

namespace vlt {
namespace {

using test::kIni;
using test::ReadFile;
using test::Session;
using test::VirtualPlatform;

const std::string kOpenProcess = "start\nopen Form10\n";

TEST(Companion, StartShowsTheMainWindowAndTellsItsStatusBar) {
  Session session;
  EXPECT_EQ(session.Run("start\nshow StatusBar1\n"), 0) << session.trouble;
  const std::vector<std::string> told{
      "status\tMDIForm1.StatusBar1[2]\tENGLISH", "status\tMDIForm1.StatusBar1[3]\tMETRIC",
      "show\tMDIForm1.StatusBar1\t\tenabled\t", "show\tMDIForm1.StatusBar1[2]\tENGLISH",
      "show\tMDIForm1.StatusBar1[3]\tMETRIC"};
  EXPECT_EQ(session.output, told);
  EXPECT_FALSE(session.machine.machine.port.IsOpen()) << "the end of the script closes the port";
  EXPECT_EQ(session.machine.files.files["/app/VLT.ini"], kIni) << "and saves nothing";
}

TEST(Companion, ShowTellsWhyTheMeterHasNotTakenAValue) {
  Session session;
  EXPECT_EQ(session.Run(kOpenProcess + "tick OUTER_DIAMETER\ntype OUTER_DIAMETERText 1.2.3\n"
                                       "press SetParameter\nshow OUTER_DIAMETERText\n"),
            0)
      << session.trouble;
  EXPECT_TRUE(
      session.Told("show\tForm10.OUTER_DIAMETERText\t1.2.3\tenabled\t\tthis is no number"
                   "\ttyped\tTyped, not set"));
}

TEST(Companion, ScriptsAskWhereAValueComesFrom) {
  Session session;
  EXPECT_EQ(session.Run(kOpenProcess + "expect OUTER_DIAMETERText from none\nform Form10\n"), 0)
      << session.trouble;
  EXPECT_TRUE(session.Told("show\tForm10.OUTER_DIAMETERText\t\tdisabled\t")) << "nothing known, nothing told";
  Session reading;
  EXPECT_EQ(reading.Run(kOpenProcess +
                        "tick OUTER_DIAMETER\npress ReadParameter\nexpect OUTER_DIAMETERText from read\n"
                        "type OUTER_DIAMETERText 75.5\nawait 100 OUTER_DIAMETERText from typed\n"
                        "press SetParameter\nshow OUTER_DIAMETERText\n"
                        "expect OUTER_DIAMETERText from \"read\"\n"),
            2)
      << "a text in quotes is none of the words";
  EXPECT_TRUE(
      reading.ToldPart("show\tForm10.OUTER_DIAMETERText\t75.50\tenabled\t\t\tread\tRead from COM1-01 CH1"));
  Session wrong;
  EXPECT_EQ(wrong.Run(kOpenProcess + "expect OUTER_DIAMETERText from file\n"), 1);
  EXPECT_NE(wrong.trouble.find("Form10.OUTER_DIAMETERText is \"none\" and not \"file\""), std::string::npos)
      << wrong.trouble;
}

TEST(Companion, ARefusedStartNamesFileAndKey) {
  Session session;
  session.machine.files.files["/app/VLT.ini"] =
      "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=M627 \r\nLANG_FLAG=1\r\n";
  EXPECT_EQ(session.Run("answer ok\nstart\n"), 1);
  const std::string reason = "/app/VLT.ini: SYSTEM/VR is \"M627 \" and must be one of M627, T305, K410";
  EXPECT_TRUE(session.Told("message\tCan not start.\tok"));
  EXPECT_TRUE(session.Told("refused\tstart\t" + reason));
  EXPECT_EQ(session.trouble, "2: start: " + reason);
  Session unanswered;
  unanswered.machine.files.files = session.machine.files.files;
  EXPECT_EQ(unanswered.Run("start\n"), 3);
  EXPECT_TRUE(unanswered.Told("refused\tstart\t" + reason));
}

// A handler that ends as nobody foresaw is a box like any other; the files are as they were.
TEST(Companion, AnUnforeseenExceptionIsTold) {
  struct Broken : Form {
    explicit Broken(App& app) : Form(app.windows, "frmAbout", FormPlace::kWindow) {}
    void Form_Load() override { throw std::runtime_error("boom"); }
  };
  for (const bool answered : {true, false}) {
    Session session;
    session.app.windows.Register("frmAbout", [&] { return std::make_unique<Broken>(session.app); });
    EXPECT_EQ(session.Run(std::string("start\n") + (answered ? "answer ok\n" : "") + "press versionInfo\n"),
              answered ? 0 : 3);
    EXPECT_TRUE(session.ToldPart("message\tAn unexpected error occurred: boom\\n"));
    EXPECT_EQ(session.machine.files.files["/app/VLT.ini"], kIni);
  }
}

// A script is followed to its first trouble, which has a status, a line and a reason.
TEST(Companion, TroubleEndsTheScript) {
  const struct {
    const char* script;
    int status;
    const char* trouble;  // what it begins with
  } cases[] = {
      {"", 0, ""},
      {"# nothing\n\nquit\nnonsense", 0, ""},
      {"wait 10\nend\nnonsense", 0, ""},
      {"nonsense", 2, "1: there is no word nonsense"},
      {"\ntick", 2, "2: it is written: tick NAME"},
      {"start now", 2, "1: it is written: start "},
      {"type X \"a", 2, "1: a quoted text"},
      {"wait long", 2, "1: long is no whole number"},
      {"wait -1", 2, "1: -1 is no whole number"},
      {"answer ok maybe", 2, "1: there is no answer maybe"},
      {"press End", 1, "1: no window is open"},
      {"form", 1, "1: no window is open"},
      {"open Form10", 1, "1: the main window is not open"},
      {"form Form10", 1, "1: Form10 is not open"},
      {"show Form10.OUTER_DIAMETER", 1, "1: Form10 is not open"},
      {"show Form99.OUTER_DIAMETER", 2, "1: there is no window Form99"},
      {"start\nstart", 1, "2: the program can be started only once"},
      {"start\nopen MDIForm1", 2, "2: nothing in the main window opens MDIForm1"},
      {"start\npress OUTER_DIAMETER", 2, "2: there is no control OUTER_DIAMETER on MDIForm1"},
      {"start\nopen Form10\npress Form10.Label2(7)", 2, "3: there is no control Form10.Label2(7)"},
      {"start\nopen Form10\npress Label8(1)", 2, "3: Form10.Label8(1) is nothing to press"},
      {"start\nopen Form10\nchoose OUTER_DIAMETERText 1", 2, "3: Form10.OUTER_DIAMETERText is nothing to"},
      {"start\nopen Form10\nshow PIPE_MATERIALCombo[x]", 2, "3: no part is named"},
      {"start\nopen Form10\nshow PIPE_MATERIALCombo[13]", 2,
       "3: there is no part Form10.PIPE_MATERIALCombo["},
      {"start\nshow StatusBar1[4]", 2, "2: there is no part"},
      {"start\nexpect StatusBar1[0] X", 2, "2: there is no part"},
      {"start\nexpect StatusBar1[2] ENGLISH\nexpect StatusBar1[2] JAPANESE", 1,
       "3: MDIForm1.StatusBar1[2] is \"ENGLISH\" and not \"JAPANESE\""},
      {"start\nexpect StatusBar1[2] contains GLI\nexpect StatusBar1[2] ends ISH\n"
       "expect StatusBar1[2] ends GLI",
       1, "4: MDIForm1.StatusBar1[2] is \"ENGLISH\" and does not end with \"GLI\""},
      {"start\nawait 50 StatusBar1[2] JAPANESE", 1, "2: MDIForm1.StatusBar1[2] is \"ENGLISH\" and not"},
      {"start\nawait 50 NONE enabled", 2, "2: there is no control NONE"},
      {"await soon X enabled", 2, "1: soon is no whole number"},
      {"strict maybe", 2, "1: strict does not know maybe"},
      {"start\nexpect StatusBar1 like X", 2, "2: expect does not know like"},
      {"start\nclose", 3, "2: no answer was waiting for the box"},
      {"answer ok\nstart\nclose", 3, "3: the box \"Does it save"},
      {"answer no\nstart\nclose\nshow StatusBar1", 1, "4: the program has ended"},
  };
  for (const auto& c : cases) {
    Session session;
    EXPECT_EQ(session.Run(c.script), c.status) << c.script << "\n" << session.trouble;
    const std::string wanted = c.trouble;
    EXPECT_EQ(session.trouble.substr(0, wanted.size()), wanted) << c.script;
    EXPECT_EQ(session.trouble.empty(), wanted.empty()) << session.trouble;
  }
}

TEST(Companion, RefusesWhatAPersonCouldNotDo) {
  const struct {
    const char* line;
    const char* refused;
  } cases[] = {
      {"type OUTER_DIAMETERText 60", "Form10.OUTER_DIAMETERText\tdisabled"},
      {"choose PIPE_MATERIALCombo 1", "Form10.PIPE_MATERIALCombo\tdisabled"},
      {"tick OUTER_DIAMETER\ntype OUTER_DIAMETERText 12345678",
       "Form10.OUTER_DIAMETERText\ttakes no more than 7 characters"},
      {"tick PIPE_MATERIAL\nchoose PIPE_MATERIALCombo 999", "Form10.PIPE_MATERIALCombo\thas no entry 999"},
      {"tick PIPE_MATERIAL\nchoose PIPE_MATERIALCombo \"0\"", "Form10.PIPE_MATERIALCombo\thas no entry 0"},
      {"select SetParameter2 NONE", "Form10.SetParameter2\thas no tab NONE"},
      {"press Command14", "MDIForm1.Command14\thidden"},
      {"press MDIForm1.Command1\npress Form10.ReadParameter",
       "Form10.ReadParameter\tits window is not shown"},
      {"close Form5", nullptr},
  };
  for (const auto& c : cases) {
    Session session;
    EXPECT_EQ(session.Run(kOpenProcess + c.line), 1) << c.line;
    if (c.refused == nullptr) continue;
    EXPECT_EQ(session.output.back(), std::string("refused\t") + c.refused) << c.line;
  }
}

TEST(Companion, GesturesReachTheControls) {
  const struct {
    const char* line;
    const char* shown;
  } cases[] = {
      {"tick OUTER_DIAMETER\nexpect OUTER_DIAMETERText enabled\ntype OUTER_DIAMETERText \"60.5\"\n"
       "leave OUTER_DIAMETERText\nshow OUTER_DIAMETERText",
       "Form10.OUTER_DIAMETERText\t60.5\tenabled\t"},
      {"tick OUTER_DIAMETER\nuntick OUTER_DIAMETER\nshow OUTER_DIAMETER",
       "Form10.OUTER_DIAMETER\tOUTER DIAMETER\tenabled\tunticked"},
      {"tick PIPE_MATERIAL\nchoose PIPE_MATERIALCombo 1\nexpect PIPE_MATERIALCombo[0] \"CARBON STEEL\"\n"
       "show PIPE_MATERIALCombo",
       "Form10.PIPE_MATERIALCombo\tSTAINLESS STEEL\tenabled\t1"},
      {"tick PIPE_MATERIAL\nchoose PIPE_MATERIALCombo \"STAINLESS STEEL\"\nshow PIPE_MATERIALCombo[1]",
       "Form10.PIPE_MATERIALCombo[1]\tSTAINLESS STEEL"},
      {"choose ChannelSelect(0)\nshow ChannelSelect(0)", "Form10.ChannelSelect(0)\tCH1\tenabled\tticked"},
      {"open frmAbout\nshow lblTitle\nclose frmAbout\nshow chkCheck",
       "Form10.chkCheck\tall\tenabled\tunticked"},
  };
  for (const auto& c : cases) {
    Session session;
    const int status = session.Run(kOpenProcess + c.line);
    EXPECT_EQ(status, 0) << c.line << "\n" << session.trouble;
    EXPECT_TRUE(session.ToldPart("show\t" + std::string(c.shown))) << c.line;
  }
}

// A page's button hides it when it is shown; `open` brings it to the front whatever it was.
TEST(Companion, OpenBringsAPageToTheFront) {
  Session session;
  EXPECT_EQ(session.Run("start\nopen Form10\nopen Form10\ntick OUTER_DIAMETER\nopen Form5\nshow chkCheck\n"
                        "open Form10\nexpect OUTER_DIAMETER ticked\nshow chkCheck"),
            0)
      << session.trouble;
  EXPECT_TRUE(session.ToldPart("show\tForm5.chkCheck"));
  EXPECT_TRUE(session.ToldPart("show\tForm10.chkCheck"));
}

// A box nobody answers is closed, and the handler that has asked comes to its end before the script does.
TEST(Companion, AHandlerEndsBehindAnUnansweredBox) {
  Session session;
  session.machine.Arm("silence/10*ever");
  EXPECT_EQ(session.Run(kOpenProcess + "tick OUTER_DIAMETER\ntype OUTER_DIAMETERText 60\npress SetParameter"),
            3);
  EXPECT_TRUE(session.ToldPart(":Data has not been set up\\nDoes it continue?\tcancel"));
  EXPECT_TRUE(session.ToldPart("Setting of process setting was completed"));
  EXPECT_FALSE(session.app.state.UiLocked);
  EXPECT_EQ(session.trouble.find('\n'), std::string::npos);
}

TEST(Companion, AnswersWaitInOrderAndCanBeForgotten) {
  Session session;
  session.machine.Arm("silence*ever");
  EXPECT_EQ(session.Run("answer ok yes\nfile\nstart\nclose"), 0) << session.trouble;
  EXPECT_TRUE(session.Told("message\tSet in the communication\tok"));
  EXPECT_TRUE(session.Told("message\tDoes it save the setting value of the loader?\tyes"));
  EXPECT_TRUE(session.Told("file\tsave\t"));

  Session forgetful;
  EXPECT_EQ(forgetful.Run("start\nanswer no\nanswer\nclose"), 3);
}

TEST(Companion, FileDialogsAreAnswered) {
  Session session;
  EXPECT_EQ(session.Run("start\nopen Form10\ntick OUTER_DIAMETER\ntype OUTER_DIAMETERText 77\nfile "
                        "/data/pipe\npress setParam\n"
                        "file /data/pipe.ini\npress readparam\nopen Form10\nexpect OUTER_DIAMETERText 77"),
            0)
      << session.trouble;
  EXPECT_TRUE(session.Told("file\tsave\t/data/pipe.ini"));
  EXPECT_TRUE(session.Told("file\topen\t/data/pipe.ini"));
  EXPECT_NE(session.machine.files.files["/data/pipe.ini"].find("OUTER_DIAMETER_Data=77\r\n"),
            std::string::npos);

  const std::pair<const char*, int> refused[] = {{"start\nfile /data/none.ini\npress readparam", 1},
                                                 {"start\npress readparam", 3}};
  for (const auto& [script, status] : refused) {
    Session other;
    EXPECT_EQ(other.Run(script), status) << script;
  }
}

// The choice window waits inside the start; the script goes on all the same.
TEST(Companion, ChoosesTheProgramAtServiceLevel) {
  Session session;
  session.machine.files.files["/app/VLT.ini"] += "[SYSTEM]\r\n";
  std::string& ini = session.machine.files.files["/app/VLT.ini"];
  ini.replace(ini.find("VR="), 0, "USER_INFO=Service\r\n");
  EXPECT_EQ(session.Run("start\npress cmdLoader\nawait 60000 StatusBar1 enabled\nopen Form10"), 0)
      << session.trouble;
}

// `begin` lets the script look and press while the handler still waits for the meter.
TEST(Companion, BeginGoesOnWhileTheWorkRuns) {
  Session session;
  EXPECT_EQ(session.Run(kOpenProcess + "tick chkCheck\nbegin ReadParameter\nexpect SetParameter disabled\n"
                                       "wait 1\nexpect MDIForm1.ComPort disabled\nwait\n"
                                       "expect SetParameter enabled\nexpect OUTER_DIAMETERText 60.50"),
            0)
      << session.trouble;

  Session failing;
  EXPECT_EQ(failing.Run(kOpenProcess + "tick chkCheck\nbegin ReadParameter\npress SetParameter"), 1);
  EXPECT_TRUE(failing.Told("refused\tForm10.SetParameter\tdisabled"));
  EXPECT_FALSE(failing.machine.machine.port.IsOpen());
}

// A run of the firmware tool on two modules, begun by a script that ends while the first one is on its way. A
// meter that is asked to open wakes its boot loader.
struct FirmwareSession : Session {
  FirmwareSession() {
    auto& files = machine.files;
    files.folders.insert("/fw");
    files.files["/fw/KRT_CNTL.bin"] = "KRT_CNTL_KRT1SYS" + std::string(20'000, 'x');
    files.files["/fw/KRT_SPEED.bin"] = "KRT_SPED_KRT1SYS" + std::string(20'000, 'x');
    app.state.LangOffset = 5000;
    app.state.PortNo = "1";
    app.windows.Load("frmMaint_MAIN").Show();
  }
  std::string Journal() const {
    for (const auto& [path, content] : machine.files.files) {
      if (path.starts_with("/fw_journal_")) return content;
    }
    return "";
  }
  static std::string Begun(const std::string& press) {
    return "type txtDown /fw\ntick chkModule(0)\ntick chkModule(3)\n" + press +
           " cmdEXE\nawait 9000 frmMaint_Wait.lblMssg ends DOWNLOAD\n";
  }
};

TEST(Companion, TheModuleInHandIsFinishedBeforeTheEnd) {
  const struct {
    std::string script;
    int status;
    std::int64_t stop_ms = 0;  // a signal comes then
  } cases[] = {
      {FirmwareSession::Begun("begin") + "quit\n", 0},
      {FirmwareSession::Begun("begin"), 0},
      {FirmwareSession::Begun("begin") + "expect frmMaint_MAIN.txtDown /other\n", 1},
      {FirmwareSession::Begun("begin") + "nonsense\n", 2},
      {FirmwareSession::Begun("begin") + "wait 60000\n", 0, 10'000},
      {FirmwareSession::Begun("press"), 0, 10'000},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.script);
    FirmwareSession session;
    if (given.stop_ms > 0) session.machine.time.After(given.stop_ms, [&] { session.companion.Stop(); });
    EXPECT_EQ(session.Run(given.script), given.status) << session.trouble;
    const std::string journal = session.Journal();
    EXPECT_NE(journal.find(",close,good,"), std::string::npos) << journal;
    EXPECT_NE(journal.find(",result,SUCCESS,"), std::string::npos) << journal;
    EXPECT_EQ(journal.find(",open,"), journal.rfind(",open,")) << journal;
    EXPECT_TRUE(journal.ends_with(",run,ended,\r\n")) << journal;
    EXPECT_TRUE(session.Told("finishing\tSYSTEM EXECUTION MODULE"));
    EXPECT_TRUE(session.ToldPart("show\tfrmMaint_MAIN.txtDL_Result(0)\tSUCCESS\t"));
    EXPECT_TRUE(session.ToldPart("show\tfrmMaint_MAIN.lblNote\tTo be written: KRT_CNTL, KRT_SPEED\\n"));
    EXPECT_FALSE(session.machine.machine.port.IsOpen());
  }
}

// A box that no answer was waiting for ends the script, and the run behind the module that it came up in.
TEST(Companion, AFailedScriptWritesNoFurtherModule) {
  FirmwareSession session;
  session.machine.Arm("loader-error/42");
  EXPECT_EQ(session.Run(FirmwareSession::Begun("press")), 3);
  const std::string journal = session.Journal();
  EXPECT_NE(journal.find(",data,failed,"), std::string::npos) << journal;
  EXPECT_EQ(journal.find(",open,"), journal.rfind(",open,")) << journal;
  EXPECT_TRUE(journal.ends_with(",run,ended,\r\n")) << journal;
}

TEST(Companion, StartTellsThatTheProgramEnded) {
  Session second;
  second.machine.process.only_instance = false;
  EXPECT_EQ(second.Run("start\nopen Form10"), 1);
  EXPECT_EQ(second.trouble, "1: another instance of the program runs in this folder");
  EXPECT_TRUE(second.output.empty());
}

TEST(Companion, FieldsAreEscaped) {
  Session session;
  EXPECT_EQ(session.Run(kOpenProcess + "tick OUTER_DIAMETER\ntype OUTER_DIAMETERText \"a\tb\\c\"\n"
                                       "show OUTER_DIAMETERText"),
            0);
  EXPECT_EQ(session.output.back(),
            "show\tForm10.OUTER_DIAMETERText\ta\\tb\\\\c\tenabled\t"
            "\t\ttyped\tTyped, not set");
}

// Each kind of control tells what a person sees of it.
class Gallery : public Form {
 public:
  explicit Gallery(Windows& windows) : Form(windows, "Gallery", FormPlace::kWindow) {
    tabs.SetTabCaption(0, "one");
    tabs.SetTabCaption(1, "two");
    tabs.SetTabEnabled(1, false);
    bar.SetMax(10);
    bar.SetValue(3);
    grid.SetColumnWidth(1, 0);
    grid.SetTicked(1, RowTick::kSome);
    for (int row : {0, 1}) {
      for (int column : {0, 1, 2}) grid.SetCell(row, column, std::to_string(row) + std::to_string(column));
    }
    chart.Reset(5);
    chart.SetPoint(1, 0.5, -2);
    chart.SetPoint(3, 1.5, 7);
    chart.SetLastPoint(4);
    chart.SetYTitle("m/s");
    arrows.on_up = [this] { label.SetCaption("up"); };
    arrows.on_down = [this] { label.SetCaption("down"); };
    read_only.SetLocked(true);
  }
  TabControl tabs{*this, "tabs", 2};
  ProgressBar bar{*this, "bar"};
  Grid grid{*this, "grid", 2, 3};
  Chart chart{*this, "chart"};
  Picture picture{*this, "picture", "logo"};
  Timer timer{*this, "timer"};
  UpDown arrows{*this, "arrows"};
  Label label{*this, "label"};
  TextBox read_only{*this, "read_only"};
};

TEST(Companion, ShowsEveryKindOfControl) {
  Session session;
  session.app.windows.Register("Gallery", [&] { return std::make_unique<Gallery>(session.app.windows); });
  session.app.windows.Load("Gallery").Show();
  EXPECT_EQ(session.Run("up arrows\nexpect label up\ndown arrows\ntick grid[1]\nform\nexpect timer stopped\n"
                        "show grid[1,1]\nshow chart[2]\nshow chart[3]\nexpect tabs[1] two\nselect tabs one\n"
                        "type read_only X"),
            1);
  EXPECT_EQ(session.trouble, "12: Gallery.read_only: is read-only");
  const std::vector<std::string> told{"show\tGallery.tabs\tone\tenabled\t0",
                                      "show\tGallery.bar\t3/10\tenabled\t",
                                      "show\tGallery.grid\t\tenabled\t",
                                      "show\tGallery.grid[0]\t00\t\t02",
                                      "show\tGallery.grid[1]\t10\t\t12\tticked",
                                      "show\tGallery.chart\tm/s\tenabled\t3",
                                      "show\tGallery.picture\tlogo\tenabled\t",
                                      "show\tGallery.timer\t\tenabled\tstopped",
                                      "show\tGallery.arrows\t\tenabled\t",
                                      "show\tGallery.label\tdown\tenabled\t",
                                      "show\tGallery.read_only\t\tenabled\t",
                                      "show\tGallery.grid[1,1]\t11",
                                      "show\tGallery.chart[2]\t0 -",
                                      "show\tGallery.chart[3]\t1.5 7",
                                      "refused\tGallery.read_only\tis read-only"};
  EXPECT_EQ(session.output, told);

  for (const char* line : {"select tabs two", "select tabs 1", "select tabs 2"}) {
    Session other;
    other.app.windows.Register("Gallery", [&] { return std::make_unique<Gallery>(other.app.windows); });
    other.app.windows.Load("Gallery").Show();
    EXPECT_EQ(other.Run(line), 1) << line;
  }
}

// A run is watched while its cycles go on, and a stopped script leaves no cycle behind it.
TEST(Companion, WatchesARun) {
  Session session;
  EXPECT_EQ(session.Run("start\nopen Form9\nfile /data/run.csv\npress SaveCSV\npress Start\nwait 3500\n"
                        "expect Chart2D1[2] contains \" \"\nexpect CycleTimer running\npress Stop\n"
                        "await 5000 CycleTimer stopped"),
            0)
      << session.trouble;
  const auto& files = session.machine.files.files;
  EXPECT_EQ(std::count_if(files.begin(), files.end(),
                          [](const auto& file) { return file.first.starts_with("/data/run_"); }),
            1);

  Session stopped;
  stopped.machine.time.After(4000, [&] { stopped.companion.Stop(); });
  EXPECT_EQ(
      stopped.Run("start\nopen Form9\nfile /data/run.csv\npress SaveCSV\npress Start\nwait 600000\nnonsense"),
      0)
      << stopped.trouble;
  EXPECT_LT(stopped.machine.time.NowMs(), 6000);
  EXPECT_FALSE(stopped.machine.machine.port.IsOpen());
}

constexpr const char* kReadProcess = "start\nopen Form10\ntick chkCheck\npress ReadParameter\n";

// A failed exchange shows in the line of its operation, also when a later good one has cleared the page's
// words for it; behind `strict` it ends the script.
TEST(Companion, OperationsTellWhatFailedOnTheLine) {
  const struct {
    const char* fault;
    std::string script;
    int status;
    const char* told;
  } cases[] = {
      {"", std::string("strict\n") + kReadProcess, 0, "operation\tForm10.ReadParameter\t3\t0\t"},
      {"silence@0100H/03#2*4", kReadProcess + std::string("expect StatusBar1 ends \"completed \""), 0,
       "operation\tForm10.ReadParameter\t3\t1\t[NO RESPONSE ERROR]"},
      {"silence@0100H/03#2*4", std::string("strict\n") + kReadProcess + "nonsense", 1,
       "operation\tForm10.ReadParameter\t3\t1\t[NO RESPONSE ERROR]"},
      {"silence@0100H/03#2*4", std::string("strict\nstrict off\n") + kReadProcess, 0,
       "operation\tForm10.ReadParameter\t3\t1\t[NO RESPONSE ERROR]"},
      // A write that the meter repeats and does not do.
      {"ignore-write@00D2H/10*ever",
       "strict\nstart\nopen Form10\ntick OUTER_DIAMETER\ntype OUTER_DIAMETERText 114.3\npress "
       "SetParameter\nnonsense",
       1, "operation\tForm10.SetParameter\t4\t1\tOUTER DIAMETER: 114.30 was sent, the meter holds 60.50"},
      {"silence@0150H*ever", "strict\nanswer ok\nstart\nopen Form10\npress SaveParameter", 1,
       "operation\tForm10.SaveParameter\t5\t5\t[NO RESPONSE ERROR]"},
  };
  for (const auto& c : cases) {
    Session session;
    if (*c.fault != '\0') session.machine.Arm(c.fault);
    EXPECT_EQ(session.Run(c.script), c.status) << c.script << "\n" << session.trouble;
    EXPECT_TRUE(session.Told(c.told)) << c.fault << "\n"
                                      << c.script << ::testing::PrintToString(session.output);
    EXPECT_TRUE(session.ToldPart("was completed")) << "the handler comes to its end";
  }
}

// What a word has done to the pages is seen by the next one.
TEST(Companion, ShowsWhatFollowsFromAWordAtOnce) {
  Session session;
  EXPECT_EQ(session.Run("start\nopen Form10\ntick OUTER_DIAMETER\npress ReadParameter\n"
                        "set process.fluid 3 1\nshow OUTER_DIAMETERText\n"
                        "expect OUTER_DIAMETERText from outdated"),
            0)
      << session.trouble;
  EXPECT_TRUE(session.ToldPart("show\tForm10.OUTER_DIAMETERText\t60.50\tenabled\t\t\toutdated\t"));
}

// The script ends while a window sends: by `quit`, a trouble, or its last line. The row on the line is
// judged, the others are not sent.
TEST(Companion, AnEndStopsASendingBehindTheRowOnTheLine) {
  const std::string send =
      "snapshot /s.txt\nset process.outer_diameter 114.3 1\nset process.fluid 3 1\nset range.damping 7 1\n"
      "start\nopen frmCompare\nchoose cmbSide(0) 1\nfile /s.txt\npress cmdSide(0)\nchoose cmbSide(1) "
      "0\npress cmdSide(1)\n"
      "press cmdTickDifferent\nanswer ok\nbegin cmdSend\nawait 60000 frmCompare.optFilter(5) enabled\n";
  for (const auto& [end, status] :
       {std::pair{"quit", 0}, {"expect frmCompare.cmdSend enabled", 1}, {"", 0}}) {
    SCOPED_TRACE(end);
    Session session;
    EXPECT_EQ(session.Run(send + end), status) << session.trouble;
    const auto& holding = session.machine.Meter().holding();
    EXPECT_EQ(holding.Long(0x00D2), 6050);
    EXPECT_EQ(holding.Word(0x00E6), 0) << "this row was on the line";
    EXPECT_EQ(holding.Word(0x0000), 70) << "and this one was not sent";
    EXPECT_TRUE(session.ToldPart("the sending was stopped. Stored 2, refused 0, not proven 0, not sent 1"))
        << ::testing::PrintToString(session.output);
    EXPECT_FALSE(session.machine.machine.port.IsOpen());
  }
}

// What the line did, as a program reads it: the figures and frames, and the files of the window.
TEST(Companion, TheLineIsToldAndSaved) {
  Session session;
  session.machine.Arm("silence@00D0H/03*1");
  EXPECT_EQ(
      session.Run("start\nline reset\nopen Form10\nwait\nline reset\ntick chkCheck\npress ReadParameter\n"
                  "line\nline frames 3\nline csv /data/line.csv\nline save /data/frames.txt\n"),
      0)
      << session.trouble;
  EXPECT_TRUE(session.ToldPart("line\tall\t3\t1\t0\t1\t0\t")) << ::testing::PrintToString(session.output);
  EXPECT_TRUE(session.ToldPart("line\t1\t3\t1\t0\t1\t0\t"));
  const auto frames = std::count_if(session.output.begin(), session.output.end(),
                                    [](const std::string& line) { return line.starts_with("frame\t"); });
  EXPECT_EQ(frames, 3);
  EXPECT_TRUE(session.ToldPart("\treceived\t1\t01 03 "));
  EXPECT_TRUE(session.machine.files.files["/data/line.csv"].find("\r\nAll,3,1,0,1,0,") != std::string::npos);
  EXPECT_TRUE(session.machine.files.files["/data/frames.txt"].find("No reply within") != std::string::npos);

  const struct {
    const char* line;
    int status;
    const char* trouble;
  } wrong[] = {{"line frames many", 2, "many is no whole number"},
               {"line csv", 2, "it is written: line ["},
               {"line reset now", 2, "it is written: line ["},
               {"line wave", 2, "line does not know wave"},
               {"line csv /app/VLT.ini", 1, "line: /app/VLT.ini holds the program's settings"}};
  for (const auto& c : wrong) {
    Session refused;
    EXPECT_EQ(refused.Run(std::string("start\n") + c.line), c.status) << c.line;
    EXPECT_NE(refused.trouble.find(c.trouble), std::string::npos) << refused.trouble;
  }
}

TEST(Companion, AnOperationWithoutAPortIsAFailure) {
  Session session;
  session.machine.sockets.clear();
  EXPECT_EQ(session.Run("answer ok ok ok\nstart\nopen Form10\ntick chkCheck\nstrict\npress ReadParameter"),
            1);
  EXPECT_TRUE(
      session.ToldPart("operation\tForm10.ReadParameter\t0\t0\tThe error occurred at the time of "
                       "communication"))
      << ::testing::PrintToString(session.output);
}

// What outlives the companion tells it nothing any more, and a line that was about to run does not.
TEST(Companion, ItsObserversEndWithIt) {
  VirtualPlatform machine;
  machine.files.files["/app/VLT.ini"] = kIni;
  ProgramEvents events{machine.time};
  ScriptDialogs dialogs{machine.files};
  Platform platform{machine.time,  events,          machine.machine.port, dialogs,
                    machine.files, machine.process, machine.firmware};
  App app{platform};
  RegisterAllWindows(app);
  int told = 0;
  {
    Companion companion(app, dialogs, events, {[&](const std::string&) { ++told; }, {}, {}});
    app.windows.Load("MDIForm1");
    app.Status("one");
    companion.Add({.number = 1, .word = "form", .arguments = {}, .error = {}});
  }
  EXPECT_EQ(told, 1);
  app.Status("two");
  EXPECT_FALSE(app.on_operation);
  machine.time.GiveWay(machine.time.NowMs() + 100);
  EXPECT_EQ(told, 1);
}

// The documentation's table is the table of the words.
TEST(Companion, DocumentationListsEveryWord) {
  const std::string text = ReadFile(std::string(DOCS) + "/companion.md");
  std::string table;
  for (const Companion::Word& word : Companion::Words()) {
    const std::string written = *word.arguments != '\0' ? std::string(" ") + word.arguments : "";
    table += std::string("| `") + word.name + written + "` | " + word.help + " |\n";
  }
  EXPECT_NE(text.find("| --- | --- |\n" + table + "\n"), std::string::npos) << "the table must be:\n"
                                                                            << table;
}

struct Sample {
  const char* name;
  const char* told;  // the part of a line that shows it did its work
};

class SampleTest : public ::testing::TestWithParam<Sample> {};

TEST_P(SampleTest, RunsToItsEnd) {
  Session session;
  const std::string script = ReadFile(std::string(DOCS) + "/samples/" + GetParam().name);
  ASSERT_FALSE(script.empty());
  EXPECT_EQ(session.Run(script), 0) << session.trouble;
  EXPECT_TRUE(session.ToldPart(GetParam().told));
}

INSTANTIATE_TEST_SUITE_P(Companion, SampleTest,
                         ::testing::Values(Sample{"commission-pipe.vlt", "Preservation was completed"},
                                           Sample{"read-display.vlt", "Form5.Selection1Combo\tFLOW RATE"},
                                           Sample{"report-all.vlt", "report.csv\t"},
                                           Sample{"prove-settings.vlt", "kept"},
                                           Sample{"measure-run.vlt", "Form9.Chart2D1\t"}));

// The commissioned pipe is in the meter. One that acknowledges a value and does not take it, or does not
// answer the look at it, is not told to keep anything.
TEST(Companion, CommissioningSeesWhatTheMeterHolds) {
  Session good;
  EXPECT_EQ(good.Run(ReadFile(std::string(DOCS) + "/samples/commission-pipe.vlt")), 0) << good.trouble;
  EXPECT_EQ(good.machine.Meter().holding().Long(0x00D2), 11430);
  for (const char* fault :
       {"ignore-write/10*ever", "silence@00D0H/03*ever", "silence@00D0H/03#2*ever", "silence@0100H/03#2*4"}) {
    Session session;
    session.machine.Arm(fault);
    EXPECT_EQ(session.Run(ReadFile(std::string(DOCS) + "/samples/commission-pipe.vlt")), 1) << fault;
    EXPECT_FALSE(session.ToldPart("Preservation")) << fault;
  }
}

}  // namespace
}  // namespace vlt

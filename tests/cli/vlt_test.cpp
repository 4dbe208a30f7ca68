// SPDX-License-Identifier: GPL-3.0-or-later
// The companion as a program: standard input, options, signals.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace vlt {
namespace {

// A program folder of its own, in which vlt works.
class VltTest : public ::testing::Test {
 protected:
  VltTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vlt-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    std::filesystem::copy_file(INI_PATH, folder_ + "/VLT.ini");
  }
  ~VltTest() override { std::filesystem::remove_all(folder_); }

  // Runs a shell line in which $VLT is the program on this folder; both outputs come back together.
  int Run(const std::string& line) {
    const std::string command =
        "cd '" + folder_ + "'; VLT=\"" VLT_PATH " --dir " + folder_ + "\"; exec 2>&1; " + line;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> bytes{};
    output_.clear();
    while (const std::size_t count = fread(bytes.data(), 1, bytes.size(), pipe))
      output_.append(bytes.data(), count);
    const int status = pclose(pipe);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  bool Told(const std::string& part) const { return output_.find(part) != std::string::npos; }

  std::string folder_;
  std::string output_;
};

// Each line is followed as soon as it is there: the answer to the first one is read before the next is said.
TEST_F(VltTest, StandardInputIsFollowedLineByLine) {
  EXPECT_EQ(
      Run("mkfifo in out; $VLT <in >out & exec 3>in 4<out; echo start >&3; read -r a <&4; read -r b <&4;"
          "echo \"expect StatusBar1[2] NONE\" >&3; read -r c <&4; wait $!; s=$?; echo \"$a/$b/$c\"; exit $s"),
      1)
      << output_;
  EXPECT_TRUE(Told("StatusBar1[2]\tENGLISH/status\tMDIForm1.StatusBar1[3]\tMETRIC/"));
  EXPECT_TRUE(Told("vlt: line:2: MDIForm1.StatusBar1[2] is \"ENGLISH\" and not \"NONE\""));
}

// What can't be right in a file is said before anything is done.
TEST_F(VltTest, StatusAndMessagesWithoutAStart) {
  const struct {
    const char* line;
    int status;
    const char* told;
  } cases[] = {
      {"$VLT --help", 0, "\n  tick NAME                  tick a check box"},
      {"$VLT --version", 0, "vlt "},
      {"$VLT --nonsense", 2, "there is no option --nonsense"},
      {"$VLT --dir", 2, "nothing stands behind --dir"},
      {"$VLT a b", 2, "more than one script"},
      {"$VLT missing.vlt", 2, "missing.vlt: the script cannot be read"},
      {"$VLT .", 2, ".: the script cannot be read: it is a folder"},
      {"mkfifo p; $VLT p", 2, "p: the script cannot be read: it is a pipe"},
      {"$VLT /dev/zero", 2, "/dev/zero: the script cannot be read: it is a device"},
      {"truncate -s 1048577 big; $VLT big", 2, "big: the script cannot be read: it is larger than 1 MB"},
      {"head -c 70000 /dev/zero | tr '\\0' x | $VLT", 2, "line:1: the line is longer than 64 KB"},
      {"printf 'start\\nnonsense\\ntick\\n' >s; $VLT s", 2,
       "s:2: there is no word nonsense\nvlt: s:3: it is"},
      {"$VLT </dev/null", 0, ""},
      {"printf 'wait 1' | $VLT -", 0, ""},
      {"printf 'show X' | $VLT", 1, "line:1: no window is open"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.line), c.status) << c.line << "\n" << output_;
    EXPECT_TRUE(Told(c.told)) << c.line << "\n" << output_;
    EXPECT_FALSE(Told("status\t")) << c.line;
  }
}

// One word on the command line is done, told and ended; what is behind it is its own, also with a dash in
// front.
TEST_F(VltTest, OneWordIsDoneAndEnds) {
  const struct {
    const char* line;
    int status;
    const char* told;
  } cases[] = {
      {"$VLT get process.outer_diameter 1", 0,
       "value\tprocess.outer_diameter\tCH1\t60.50\tmm\t3:00D2\t000017A2\n"},
      {"$VLT --json get process.outer_diameter 1", 0,
       "{\"event\":\"value\",\"name\":\"process.outer_diameter\",\"place\":\"CH1\",\"value\":60.50,"
       "\"unit\":"
       "\"mm\",\"register\":\"3:00D2\",\"raw\":\"000017A2\"}\n"},
      {"$VLT set process.pipe_material 'STAINLESS STEEL' 1", 0, "\tstored\tSTAINLESS STEEL\t"},
      {"$VLT set range.full_scale_2 -5 1", 0, "\tstored\t-5\t"},
      {"$VLT set process.pipe_material GOLD 1", 1, "vlt: set: process.pipe_material CH1: the entries are: "},
      {"$VLT get", 2, "vlt: get: it is written: get NAME [CH]"},
      {"$VLT get process.fluids", 2,
       "vlt: get: there is no parameter process.fluids; near it: process.fluid"},
      {"$VLT --json get process.fluids 2>/dev/null", 2,
       "{\"event\":\"trouble\",\"script\":\"get\",\"line\":null,\"status\":2,\"text\":\"there is no "
       "parameter "},
      {"echo nonsense >s; $VLT --json s 2>/dev/null", 2, "\"script\":\"s\",\"line\":1,\"status\":2,"},
      {"$VLT --json missing.vlt 2>/dev/null", 2,
       "\"text\":\"the script cannot be read: there is no such file\"}"},
      {"$VLT compare a.txt b.txt", 2, "vlt: compare: a.txt could not be read: there is no such file"},
      {"$VLT spacing outer_diameter=60.5 wall_thickness=3.8 pipe_material=0 fluid=0 sensor_type=1", 0,
       "spacing\t"},
      {"echo 'get system.unit' >get; $VLT ./get", 0, "value\tsystem.unit\t"},
      {"rm VLT.ini; $VLT get system.unit", 1, "refused\tstart\t"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.line), c.status) << c.line << "\n" << output_;
    EXPECT_TRUE(Told(c.told)) << c.line << "\n" << output_;
    EXPECT_FALSE(Told("status\t")) << c.line;
  }
}

// The sample for a shell: the meter as it was left, and one that another hand has changed.
TEST_F(VltTest, TheShellSampleTellsByItsStatus) {
  const std::string check = "VLT=" VLT_PATH " " DOCS "/samples/check-meter.sh . ref.txt d.json";
  EXPECT_EQ(Run("sed -i s/=9600/=38400/ VLT.ini; " + check), 0) << output_;
  EXPECT_TRUE(Told("as it was left"));
  EXPECT_EQ(Run("sed -i '/^process.fluid\tCH1/s/0000\tWATER/0003\tAMMONIA/' ref.txt; " + check), 1)
      << output_;
  EXPECT_TRUE(Told("different: 1 parameters, see d.json"));
  EXPECT_EQ(Run("echo nonsense >ref.txt; " + check), 2) << output_;
  EXPECT_TRUE(Told("could not tell: {"));
}

// A signal ends the wait at once, and the process says by which.
TEST_F(VltTest, ASignalEndsItCleanly) {
  for (const auto& [signal, number] : {std::pair("TERM", 15), std::pair("HUP", 1), std::pair("PIPE", 13)}) {
    EXPECT_EQ(Run(std::string("rm -f out; mkfifo out; printf 'start\\nform MDIForm1\\nwait 60000\\n' >s;"
                              "$VLT s >out & exec 4<out; read -r a <&4; kill -") +
                  signal + " $!; cat <&4 >/dev/null; wait $!"),
              128 + number)
        << output_;
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/veltrano3.lock")) << signal;
  }
}

// Also in the middle of a restore: the row on the line is judged, and those behind it are not sent.
TEST_F(VltTest, ASignalEndsARestoreBehindTheRowOnTheLine) {
  const std::string prepare =
      "sed -i 's/=simulator/=simulator fault=late=200\\/10*ever/' VLT.ini; $VLT snapshot ref.txt >/dev/null;"
      "sed -i '/burnout_timer/s/000A\t10\t/000B\t11\t/' ref.txt; mkfifo out";
  EXPECT_EQ(Run(prepare), 0) << output_;
  const std::string restore =
      "$VLT restore ref.txt >out & exec 4<out; while read -r l <&4; do case \"$l\" in "
      "'progress\t1\t6\t'*) break;; esac; done; kill -SIGNAL $!; cat <&4; wait $!";
  for (const auto& [name, number] : {std::pair{"INT", 2}, {"HUP", 1}}) {
    std::string line = restore;
    line.replace(line.find("SIGNAL"), 6, name);
    EXPECT_EQ(Run(line), 128 + number) << output_;
    EXPECT_TRUE(Told("\tCH1\tstored\t11\t11\t10\t")) << output_;
    EXPECT_TRUE(Told("\tnot_sent\t\t\t10\t")) << output_;
    EXPECT_FALSE(Told("\tnot_proven\t")) << output_;
    EXPECT_TRUE(Told("vlt: restore: the sending was stopped")) << output_;
  }
}

// The splash waits inside its handler for a choice that nobody makes any more.
TEST_F(VltTest, AWaitForAPersonDoesNotHoldTheEndUp) {
  EXPECT_EQ(
      Run("sed -i 's/^VR=/USER_INFO=Service\\r\\n&/' VLT.ini; printf 'start\\nshow cmdLoader\\n' | $VLT"), 0);
  EXPECT_TRUE(Told("show\tfrmMssg.cmdLoader\tLoader\tenabled")) << output_;
}

}  // namespace
}  // namespace vlt

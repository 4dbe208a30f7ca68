// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware tool, with a boot loader of the tour's own on a pseudo-terminal.
#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <cstdlib>

#include "desktop/qt_text.h"
#include "files/settings_file.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr int kPort = 9;
constexpr int kNormalEnd = 4370;

// Answers every frame that ends in a line end with a line, or refuses the data frames.
class BootLoader {
 public:
  BootLoader() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0)
      throw Trouble("no pseudo-terminal");
    path = ::ptsname(master_);
    notifier_ = std::make_unique<QSocketNotifier>(master_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { Hear(); });
  }
  ~BootLoader() {
    notifier_.reset();
    ::close(master_);
  }
  BootLoader(const BootLoader&) = delete;
  BootLoader& operator=(const BootLoader&) = delete;

  std::string path;
  bool refuses_data = false;

 private:
  void Hear() {
    std::array<char, 4096> piece{};
    const ssize_t got = ::read(master_, piece.data(), piece.size());
    if (got > 0) heard_.append(piece.data(), static_cast<std::size_t>(got));
    if (!heard_.ends_with("Ed\r\n")) return;
    const std::string line = refuses_data && heard_.at(1) == 'B'
                                 ? "\x02\x45"
                                   "FLASH ERASE ERROR AT 00030000\x0C\r\n"
                                 : std::string("\x02") + heard_.at(1) + "_OK\r\n";
    heard_.clear();
    if (::write(master_, line.data(), line.size()) < 0) std::abort();
  }

  int master_;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::string heard_;
};

void WriteModule(const QDir& folder, const char* name, const QByteArray& content) {
  QFile file(folder.filePath(name));
  if (!file.open(QIODevice::WriteOnly)) throw Trouble("the module can't be written");
  file.write(content);
}

// One good module, none for the boot, one with the text of another and an empty one.
std::string ModuleFolder(Tour& tour) {
  const QDir program(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  program.mkpath("modules");
  const QDir folder(program.filePath("modules"));
  WriteModule(folder, "KRT_CNTL.bin", "KRT_CNTL_KRT1SYS" + QByteArray(20000, 'x'));
  WriteModule(folder, "KRT_UPSYS.bin", "KRT_CNTL_KRT1SYS" + QByteArray(200, 'x'));
  WriteModule(folder, "KRT_SPEED.bin", "");
  return FromQt(folder.path());
}

void ChoosePort(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Menu("frmMaint_MAIN", "MENU_COMM");
  hands.Choose("frmMaint_COMM", "cmbComm", kPort - 1);
  tour.Picture("frmMaint_COMM", "firmware_port");
  hands.Click("frmMaint_COMM", "cmdOK");
  tour.Picture("frmMaint_MAIN", "firmware_before");
}

void Download(Tour& tour, const std::string& folder) {
  Hands& hands = tour.Operator();
  hands.Click("frmMaint_MAIN", "cmdEXE");  // answered by the first laid box
  tour.Expect("refusal without a folder", hands.Text("frmMaint_MAIN", "txtDL_Result(0)"), "");
  hands.Type("frmMaint_MAIN", "txtDown", folder);
  hands.Tick("frmMaint_MAIN", "chkModule(0)");
  hands.Tick("frmMaint_MAIN", "chkModule(1)");
  tour.Meanwhile().When(
      [&] {
        return tour.IsShown("frmMaint_Wait") && hands.Text("frmMaint_Wait", "lblMssg").ends_with("DOWNLOAD");
      },
      [&] {
        tour.Picture("frmMaint_Wait", "firmware_wait");
        tour.Picture("frmMaint_MAIN", "firmware_busy");
        // A close command comes to nothing now.
        hands.Window("frmMaint_MAIN").close();
      });
  hands.Click("frmMaint_MAIN", "cmdEXE");
  tour.Expect("result", hands.Text("frmMaint_MAIN", "txtDL_Result(0)"), "SUCCESS");
  tour.Expect("result without a file", hands.Text("frmMaint_MAIN", "txtDL_Result(1)"), "No File");
  tour.Picture("frmMaint_MAIN", "firmware_download");
}

// The window stays as large as it was, whatever it has to tell.
void DownloadWhatFails(Tour& tour) {
  Hands& hands = tour.Operator();
  const QSize before = hands.Window("frmMaint_MAIN").size();
  hands.Tick("frmMaint_MAIN", "chkModule(2)");
  hands.Tick("frmMaint_MAIN", "chkModule(3)");
  tour.Boxes().Lay("KRT_ERROR : FLASH ERASE ERROR AT 00030000", true);
  tour.Boxes().Lay("FILE ERROR : Error of identification code", true);
  tour.Boxes().Lay("FILE ERROR : KRT_SPEED.bin", true);
  tour.Boxes().Lay("Processing has been completed.", true);
  hands.Click("frmMaint_MAIN", "cmdEXE");
  tour.Expect("result of a refused module", hands.Text("frmMaint_MAIN", "txtDL_Result(0)"), "NG");
  tour.Picture("frmMaint_MAIN", "firmware_failed");
  const QSize after = hands.Window("frmMaint_MAIN").size();
  if (after != before || after.width() > 1280 || after.height() > 800) throw Trouble("the window has grown");
}

void WorkTheTool(Tour& tour, BootLoader& loader) {
  const std::string folder = ModuleFolder(tour);
  ChoosePort(tour);
  Download(tour, folder);
  loader.refuses_data = true;
  DownloadWhatFails(tour);
  tour.Operator().SelectTab("frmMaint_MAIN", "SSTab1", 1);
  tour.Picture("frmMaint_MAIN", "firmware_upload");
  tour.Boxes().Lay(tour.Text(kNormalEnd), true);
  tour.Operator().Click("frmMaint_MAIN", "cmdQuit");
}

// The start waits inside its handlers until the tool is closed, so the tool is worked from events of its own.
// What goes wrong there closes it.
std::string WorkAsEvent(Tour& tour, BootLoader& loader) {
  std::string trouble;
  tour.Meanwhile().When([&] { return tour.IsShown("frmMssg"); },
                        [&] { QTimer::singleShot(0, [&] { tour.Operator().Click("frmMssg", "cmdDown"); }); });
  tour.Meanwhile().When([&] { return tour.IsShown("frmMaint_MAIN"); },
                        [&] {
                          QTimer::singleShot(0, [&] {
                            try {
                              WorkTheTool(tour, loader);
                            } catch (const std::exception& wrong) {
                              trouble = wrong.what();
                              tour.Running().Logic().windows.Unload("frmMaint_MAIN");
                            }
                          });
                        });
  tour.Boxes().Lay("Please enter the folder", true);
  tour.Boxes().Lay("Processing has been completed.", true);
  if (!tour.Running().Start()) throw Trouble("the program does not start");
  tour.ExpectSoon("the program's end", [&] { return tour.Running().IsEnding(); });
  return trouble;
}

void FirmwareTool(Tour& tour) {
  BootLoader loader;
  SetPortDevice(tour.Running().Logic(), kPort, loader.path);
  const std::string trouble = WorkAsEvent(tour, loader);
  if (!trouble.empty()) throw Trouble(trouble);
}

constexpr Step kFirmwareSteps[] = {{"firmware tool downloads a module, and the program ends", FirmwareTool}};

}  // namespace

std::span<const Step> FirmwareSteps() { return kFirmwareSteps; }

}  // namespace vlt::test

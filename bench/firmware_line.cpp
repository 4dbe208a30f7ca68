// SPDX-License-Identifier: GPL-3.0-or-later
// All four modules to the simulated meter's boot loader on a pseudo-terminal, read back and compared, and the
// version read: the firmware tool at its own pace, which is why it is no test. Ends with 0 when all went
// well.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdio>
#include <random>

#include "bench/machine.h"
#include "firmware/frm_maint_main.h"
#include "host/host.h"
#include "shell/start.h"

namespace {

class Consent : public vlt::bench::NoDialogs {
 public:
  vlt::MessageAnswer Ask(const vlt::Message& message) override {
    std::printf("box: %s\n", message.text.c_str());
    return vlt::MessageAnswer::kOk;
  }
};

struct Module {
  const char* stem;
  const char* id;
  int position;
  int size;
};

// Sizes odd and even; random bytes round the identification.
constexpr Module kModules[] = {{"KRT_CNTL", "KRT_CNTL_KRT1SYS", 0, 5001},
                               {"KRT_BOOT", "KRT_BOOT_KRT1SYS", 1280, 4096},
                               {"KRT_UPSYS", "KRTUPSYS_KRT1SYS", 0, 3000},
                               {"KRT_SPEED", "KRT_SPED_KRT1SYS", 0, 2222}};

void WriteModules(const QString& folder) {
  std::mt19937 random(1);
  for (const Module& module : kModules) {
    QByteArray bytes;
    for (int i = 0; i < module.size; ++i) bytes.append(static_cast<char>(random() % 64));
    bytes.replace(module.position, 16, module.id);
    QFile file(folder + "/" + module.stem + ".bin");
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
  }
}

bool Tell(const char* what, const std::string& text, const std::string& wanted) {
  std::printf("%s: %s\n", what, text.c_str());
  return text == wanted;
}

bool Work(vlt::frmMaint_MAIN& tool, const std::string& folder) {
  bool good = true;
  tool.txtDown.Type(folder);
  tool.chkModule.ForEach([](vlt::CheckBox& box) { box.SetValue(1); });
  tool.cmdEXE.Press();
  for (int i = 0; i < 4; ++i) good = Tell("download", tool.txtDL_Result(i).Text(), "SUCCESS") && good;
  tool.SSTab1.Select(1);
  tool.txtUp.Type(folder);
  tool.optSEL_UP(1).Choose();
  tool.chkModule_up.ForEach([](vlt::CheckBox& box) { box.SetValue(1); });
  tool.cmdEXE.Press();
  for (int i = 0; i < 4; ++i) good = Tell("verification", tool.txtResult(i).Text(), "SUCCESS") && good;
  tool.optSEL_UP(0).Choose();
  tool.cmdEXE.Press();
  std::printf("version: %s\n", tool.txtVer.Text().c_str());
  return good && !tool.txtVer.Text().empty() && tool.txtVer.Text() != "Error";
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QTemporaryDir folder;
  WriteModules(folder.path());
  const vlt::bench::MeterProcess meter({});
  const std::string& device = meter.Device();
  if (device.empty()) return 2;
  vlt::Host host(folder.path().toStdString(), [&](int /*number*/) { return device; });
  Consent dialogs;
  vlt::Platform machine = host.With(dialogs);
  vlt::App app(machine);
  vlt::RegisterAllWindows(app);
  app.state.LangOffset = 5000;
  app.state.PortNo = "1";
  auto& tool = static_cast<vlt::frmMaint_MAIN&>(app.windows.Load("frmMaint_MAIN"));
  tool.Show();
  const bool good = Work(tool, folder.path().toStdString());
  return good ? 0 : 1;
}

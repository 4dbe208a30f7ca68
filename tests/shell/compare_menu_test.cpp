// SPDX-License-Identifier: GPL-3.0-or-later
// The file menu's items that compare, keep and restore settings.
#include "compare/compare_menu.h"

#include "compare/compare.h"
#include "compare/frm_compare.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare_window.h"
#include "shell/shell_fixture.h"

namespace vlt::test {
namespace {

class CompareMenuTest : public ShellTest {
 protected:
  CompareMenuTest() {
    RegisterCompareWindows(*app);
    menu = OpenMainWindow("VR=M627\r\nLANG_FLAG=1\r\n[COMM]\r\nPORT=1\r\nSPEED=9600\r\nPARITY=O\r\n")
               .Part<CompareMenu>();
    platform->dialogs.TakeTexts();
  }
  frmCompare* Window() { return static_cast<frmCompare*>(app->windows.Find("frmCompare")); }
  Texts Said() { return platform->dialogs.TakeTexts(); }

  CompareMenu* menu = nullptr;
};

TEST_F(CompareMenuTest, LiesInTheFileMenuAndOpensTheWindow) {
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->mnuCompare.Parent(), &MainWindow(*app).Parameter);
  EXPECT_EQ(menu->mnuCompare.Caption(), "Compare...");
  EXPECT_TRUE(menu->mnuCompare.Press());
  ASSERT_NE(Window(), nullptr);
  EXPECT_TRUE(Window()->Visible());
}

TEST_F(CompareMenuTest, ASnapshotAsksForItsFileFirst) {
  platform->dialogs.SaveFile(std::nullopt);
  menu->mnuSnapshot.Press();
  EXPECT_EQ(Window(), nullptr) << "nothing happens when it is cancelled";
  app->state.PvRunning = 1;
  menu->mnuSnapshot.Press();
  EXPECT_TRUE(MainWindow(*app).StatusBar1.Panel(1).ends_with(app->Text(text::kMonitorRuns)));
  app->state.PvRunning = 0;
  platform->dialogs.SaveFile("/home/operator/full.txt");
  menu->mnuSnapshot.Press();
  ASSERT_NE(Window(), nullptr);
  EXPECT_TRUE(LooksLikeSnapshot(platform->files.files["/home/operator/full.txt"]));
  EXPECT_TRUE(Window()->stbCompare.Panel(1).starts_with("Saved full.txt: ")) << Window()->stbCompare.Panel(1);
  EXPECT_TRUE(MainWindow(*app).StatusBar1.Panel(1).ends_with(Window()->stbCompare.Panel(1)));
}

TEST_F(CompareMenuTest, RestoringBeginsWithTheNewestPoint) {
  platform->dialogs.Answer(MessageAnswer::kOk);
  menu->mnuRestore.Press();
  EXPECT_EQ(Said(), Texts{app->Text(text::kNoRestorePoints)});
  EXPECT_EQ(Window(), nullptr);
  platform->dialogs.SaveFile("/home/operator/full.txt");
  menu->mnuSnapshot.Press();
  platform->files.folders.insert("/home/operator/veltrano3/restore");
  platform->files.files["/home/operator/veltrano3/restore/20261124100000_00_0001.txt"] =
      platform->files.files["/home/operator/full.txt"];
  app->windows.Unload("frmCompare");
  menu->mnuRestore.Press();
  ASSERT_NE(Window(), nullptr);
  EXPECT_EQ(Window()->cmbSide(0).Text(), "Restore point 2026/11/24 10:00:00 ID 0001");
  EXPECT_EQ(Window()->cmbSide(1).Text(), "This meter");
  EXPECT_EQ(Window()->Focused(), &Window()->cmdSide(1)) << "what is still to be done";
}

}  // namespace
}  // namespace vlt::test

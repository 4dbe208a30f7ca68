// SPDX-License-Identifier: GPL-3.0-or-later
// All parameter pages filled, saved through the menu, and opened again by a program that was started anew.
#include <gtest/gtest.h>

#include "pages/parameter_page.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

constexpr const char* kFile = "/data/pipe 7.ini";
constexpr const char* kPages[] = {"Form10", "Form2", "Form3", "Form4", "Form5", "Form6", "Form11"};

// What a person sees of every control: text, selection, caption of units.
using Picture = std::map<std::string, std::string>;

class RoundTripTest : public ::testing::Test {
 protected:
  struct Program {
    explicit Program(const std::map<std::string, std::string>& files) : app(platform.machine) {
      platform.files.files = files;
      RegisterAllWindows(app);
      EXPECT_EQ(StartUp(app), StartResult::kSplashRuns);
      platform.time.RunFor(5000);
      main = &static_cast<MDIForm1&>(app.frame->Window());
    }
    VirtualPlatform platform;
    App app;
    MDIForm1* main = nullptr;
  };

  static PageForm& Open(Program& program, const std::string& name) {
    for (const MDIForm1::PageButton& row : MDIForm1::PageButtons()) {
      if (row.page == name) (program.main->*row.button).Press();
    }
    Form* page = program.app.windows.Find(name);
    EXPECT_TRUE(page != nullptr && page->Visible()) << name;
    return static_cast<PageForm&>(*page);
  }

  static std::vector<Field> FieldsOf(Form& page) {
    std::vector<Field> fields;
    for (const auto& column : dynamic_cast<ParameterPage&>(page).Columns()) {
      fields.insert(fields.end(), column->Fields().begin(), column->Fields().end());
    }
    return fields;
  }

  // Every entry takes a value of its own: numbers that differ, the last entry of a list, the second option.
  static void Fill(Form& page) {
    int number = 10;
    for (const Field& field : FieldsOf(page)) {
      ++number;
      if (field.text != nullptr) {
        const bool padded = field.parameter->show == Show::kPadded;
        field.text->SetText(padded ? "00" + std::to_string(number) : std::to_string(number) + ".5");
      } else if (field.list != nullptr) {
        field.list->SetListIndex(field.list->Count() - 1);
      } else {
        field.Select(1);
      }
    }
  }

  static void Look(Form& page, Picture& picture) {
    for (const Field& field : FieldsOf(page)) {
      const std::string name = page.Name() + "." + field.Entry().FullName();
      picture[name] = field.text != nullptr ? field.text->Text() : std::to_string(field.Selected());
      if (field.unit != nullptr) picture[page.Name() + "." + field.unit->FullName()] = field.unit->Caption();
    }
  }

  std::map<std::string, std::string> files_{{kIniPath,
                                             "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=M627\r\nLANG_FLAG=1\r\n["
                                             "COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n"}};
};

TEST_F(RoundTripTest, EveryControlComesBackAfterARestart) {
  Picture filled;
  {
    Program program(files_);
    for (const char* name : kPages) {
      PageForm& page = Open(program, name);
      Fill(page);
      Look(page, filled);
    }
    program.platform.dialogs.SaveFile(kFile);
    program.main->setParam.Press();
    files_ = program.platform.files.files;
    ASSERT_TRUE(files_.contains(kFile));
  }
  Program program(files_);
  Picture empty;
  for (const char* name : kPages) Look(Open(program, name), empty);
  EXPECT_EQ(empty["Form10.OUTER_DIAMETERText"], "") << "a restart alone brings nothing back";
  program.platform.TakeRequests();

  program.platform.dialogs.OpenFile(kFile);
  program.main->readparam.Press();
  EXPECT_TRUE(program.platform.TakeRequests().empty()) << "opening a file sends nothing";
  Picture opened;
  for (const char* name : kPages) Look(Open(program, name), opened);
  for (const std::string& request : program.platform.TakeRequests()) {
    EXPECT_EQ(request.substr(3, 2), "03") << "a loaded value reaches the meter only by Setting";
  }
  // The second thermal full scale is not kept; the file holds the first one in its place.
  filled["Form2.CALORIE_FULL_SCALE2Text"] = filled["Form2.CALORIE_FULL_SCALE1Text"];
  EXPECT_EQ(opened, filled);
}

TEST_F(RoundTripTest, WhateverAFileHoldsNothingBreaksAndNothingIsSent) {
  for (const std::string& value : {std::string("99"), std::string("-5"), std::string("1e9"),
                                   std::string("\"\""), std::string("no number"), std::string(300, '7'),
                                   std::string("a\0b", 3), std::string("\xEF\xBB\xBF\xFF\xFE")}) {
    SCOPED_TRACE(value);
    std::string file;
    std::string section;
    for (const SlotRow& row : SlotRows()) {
      if (section != row.section) file.append("[").append(section = row.section).append("]\n");
      file.append(row.key).append("=").append(value).append("\n");
    }
    file += "[SYSTEM]\nUNIT_FLAG=7\nUSER_INFO=";
    file += value;
    files_[kFile] = file;
    // And the unit codes of an earlier session.
    auto files = files_;
    files[kIniPath] +=
        "[RANGE]\r\nRANGE_KIND_Data1=99\r\nRANGE_UNIT_Data1=99\r\nRANGE_UNIT_Data2=-7\r\n[TOTAL]\r\n"
        "TOTAL_UNIT_Data1=99\r\n[TEMPERATURE]\r\nTEMPERATURE_UNIT_Data=99\r\nRANGE_UNIT_Data=-7\r\n";
    Program program(files);
    program.platform.dialogs.OpenFile(kFile);
    program.main->readparam.Press();
    for (const char* name : kPages) {
      for (const Field& field : FieldsOf(Open(program, name))) {
        if (field.list == nullptr) continue;
        EXPECT_LT(field.list->ListIndex(), field.list->Count()) << field.list->FullName();
      }
    }
    for (const std::string& request : program.platform.TakeRequests()) {
      EXPECT_TRUE(request.substr(3, 2) == "03" || request.substr(3, 2) == "04") << request;
    }
  }
}

}  // namespace
}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// The walks through the windows: what they ask, send, show and keep.
#include <gtest/gtest.h>

#include "support/walk.h"

namespace vlt::test {
namespace {

class Walks : public testing::TestWithParam<const char*> {};

TEST_P(Walks, GoAsTheirFileTells) { ExpectWalk(std::string(TEST_DATA) + "/../walks/" + GetParam() + ".txt"); }

INSTANTIATE_TEST_SUITE_P(All, Walks,
                         testing::Values("form2", "form3", "form4", "form5", "form10", "heat", "form11",
                                         "form6", "form7", "guard", "origins", "calc", "link", "compare",
                                         "measure", "ras", "report", "stations", "transit", "program"),
                         [](const auto& walk) { return std::string(walk.param); });

}  // namespace
}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the logic include.
#pragma once

#include <gtest/gtest.h>

#include "std.h"

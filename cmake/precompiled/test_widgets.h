// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the desktop and its tour include. Qt Test and GoogleTest are not among it: each gives its
// macros to its own users alone.
#pragma once

#include "widgets.h"

// SPDX-License-Identifier: GPL-3.0-or-later
// The one place where numbers become texts and texts numbers. "." is the decimal sign under every locale. A
// number that is not finite reads "NaN", "INF" or "-INF"; minus zero reads as zero.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/noise.h"

namespace vlt {

// Without the blanks and tabs at both ends.
std::string_view Trim(std::string_view text);

// A double with at most 15 significant digits, a single with at most 7, no trailing zeros. Plain decimal text
// from 1E-9 up to below 1E15, outside of that "1.5E+20", "2E-10".
std::string GeneralText(double value);
std::string SingleText(float value);

// A double with at most 15 significant digits and no trailing zeros in plain decimal text, whatever its size:
// what an entry shows, and takes back.
std::string PlainText(double value);

// A typed number: sign in front, digits, one point, blanks around it, an exponent. A comma is in no number:
// it groups thousands for one person and begins the decimals for another ("1,234"). Nothing for all other
// texts ("", "+", "1.2.3", "nan", "inf") and for numbers that a double can't hold.
std::optional<double> ParseNumber(std::string_view text);
// The same for what only a whole number can say: the index of a list, a count. "12.0" is one; nothing for
// "12.5", "1e-5" and for what an int can't hold.
std::optional<int> ParseWhole(std::string_view text);
bool IsWhole(double number);

// The formats "0", "0.0", "0.00" and so on: a fixed number of decimals (0 or more), at least one integer
// digit, half of the last place away from zero, judged on the 15-digit text.
std::string FixedText(double value, int decimals);

// The formats "#,##0.00" and the like: as FixedText, with a comma between groups of three integer digits.
std::string GroupedText(double value, int decimals);

// The format "0000": at least width digits, a minus in front of them.
std::string ZeroPadded(int value, int width);

// Characters of the integer part of value as decimal text, its minus sign counted: 0.5 gives 1, -12.7
// gives 3.
int IntDigitCount(double value);

// The display rule of the floating fields: with n characters in the integer part, value is cut to
// significant - n decimals and shown as plain decimal text.
std::string DigitsText(double value, int significant);

// To the nearest integer, halves to the even one.
double RoundHalfEven(double value);

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/number_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <locale>

namespace vlt {
namespace {

TEST(GeneralText, ShowsFifteenDigitsWithoutExponentWherePeopleRead) {
  struct Case {
    double value;
    const char* text;
  };
  const Case cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {60.5, "60.5"},
      {-100, "-100"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {0.00001, "0.00001"},
      {1e-9, "0.000000001"},
      {2e-10, "2E-10"},
      {1.25e-300, "1.25E-300"},
      {123456789012345, "123456789012345"},
      {999999999999999.9, "1E+15"},
      {-1.5e20, "-1.5E+20"},
      {HUGE_VAL, "INF"},
      {-HUGE_VAL, "-INF"},
  };
  for (const Case& c : cases) EXPECT_EQ(GeneralText(c.value), c.text);
  EXPECT_EQ(GeneralText(std::nan("")), "NaN");
}

TEST(SingleText, ShowsSevenDigits) {
  EXPECT_EQ(SingleText(1.1F), "1.1");
  EXPECT_EQ(SingleText(0.1F + 0.2F), "0.3");
  EXPECT_EQ(SingleText(123456.789F), "123456.8");
  EXPECT_EQ(SingleText(12345678.0F), "12345680");
  EXPECT_EQ(SingleText(-std::numeric_limits<float>::infinity()), "-INF");
}

TEST(ParseNumber, TakesNumbersAsTheyAreTyped) {
  struct Case {
    const char* text;
    double value;
  };
  const Case cases[] = {
      {"12", 12}, {"+1.5", 1.5}, {"-0.25", -0.25}, {" 60.50 ", 60.5},  {"007", 7},
      {"5.", 5},  {"-.5", -0.5}, {"1E+20", 1e20},  {"2.5e-3", 0.0025}, {"1480.9", 1480.9},
  };
  for (const Case& c : cases) EXPECT_EQ(ParseNumber(c.text), c.value) << c.text;
}

TEST(ParseNumber, RejectsWhatOnlyLooksLikeOne) {
  for (const char* text :
       {"",     " ",        "+",        "-",        ".",          "+.",      "+,",  "1.2.3", "1,2",
        "12,5", "1234,567", "1,234,56", "1,,234",   "1,234,",     "1.234,5", "+-1", "--1",   "1-",
        "1 2",  "0x10",     "1,234",    "1,234.5",  "12,345,678", "&H10",    "1e",  "1e999", "nan",
        "NaN",  "inf",      "-inf",     "infinity", "12mm",       "１２"}) {
    EXPECT_EQ(ParseNumber(text), std::nullopt) << '"' << text << '"';
  }
}

TEST(ParseWhole, CutsNoDecimalsOff) {
  const std::pair<const char*, std::optional<int>> cases[] = {
      {"12", 12},
      {" -1 ", -1},
      {"12.0", 12},
      {"2147483647", 2147483647},
      {"12.5", std::nullopt},
      {"1e-5", std::nullopt},
      {"2147483648", std::nullopt},
      {"1,000", std::nullopt},
      {"x", std::nullopt},
  };
  for (const auto& [text, number] : cases) EXPECT_EQ(ParseWhole(text), number) << text;
}

TEST(FixedText, RoundsTheDecimalTextHalfAwayFromZero) {
  struct Case {
    double value;
    int decimals;
    const char* text;
  };
  const Case cases[] = {
      {60.5, 2, "60.50"},
      {1.005, 2, "1.01"},
      {2.675, 2, "2.68"},
      {-2.675, 2, "-2.68"},
      {0.004, 2, "0.00"},
      {-0.004, 2, "0.00"},
      {0.005, 2, "0.01"},
      {0.0049999, 2, "0.00"},
      {999.995, 2, "1000.00"},
      {0.5, 0, "1"},
      {0.4, 0, "0"},
      {9.5, 0, "10"},
      {0, 3, "0.000"},
      {1e-20, 4, "0.0000"},
      {0.0001, 4, "0.0001"},
      {123456, 1, "123456.0"},
      {1e16, 1, "10000000000000000.0"},
      {-HUGE_VAL, 2, "-INF"},
  };
  for (const Case& c : cases) EXPECT_EQ(FixedText(c.value, c.decimals), c.text);
  EXPECT_EQ(GroupedText(1234567.891, 2), "1,234,567.89");
  EXPECT_EQ(GroupedText(-999.999, 2), "-1,000.00");
  EXPECT_EQ(GroupedText(123, 3), "123.000");
}

TEST(DigitsText, SharesItsDigitsBetweenBothSidesOfThePoint) {
  EXPECT_EQ(IntDigitCount(0.5), 1);
  EXPECT_EQ(IntDigitCount(-0.5), 1);
  EXPECT_EQ(IntDigitCount(99.99), 2);
  EXPECT_EQ(IntDigitCount(-12.7), 3);
  EXPECT_EQ(DigitsText(1.0038, 7), "1.0038");
  EXPECT_EQ(DigitsText(1.23456789, 7), "1.234567");
  EXPECT_EQ(DigitsText(0.00000123, 7), "0.000001");
  EXPECT_EQ(DigitsText(-12.3456789, 8), "-12.34567");
  EXPECT_EQ(DigitsText(12345678.9, 8), "12345678");
  EXPECT_EQ(DigitsText(1234567899, 8), "1234567800");
}

TEST(SmallFormats, PadTrimAndRound) {
  EXPECT_EQ(ZeroPadded(7, 4), "0007");
  EXPECT_EQ(ZeroPadded(-12, 4), "-0012");
  EXPECT_EQ(ZeroPadded(123456, 4), "123456");
  EXPECT_EQ(ZeroPadded(std::numeric_limits<int>::min(), 4), "-2147483648");
  EXPECT_EQ(Trim(" \t a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(3.5), 4);
  EXPECT_EQ(RoundHalfEven(73.5), 74);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
  EXPECT_EQ(RoundHalfEven(2.51), 3);
}

// Decimal comma and grouping point, as on a German machine.
struct CommaPunctuation : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(Locale, ChangesNothing) {
  const std::locale former = std::locale::global(std::locale(std::locale(), new CommaPunctuation));
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  }
  EXPECT_EQ(GeneralText(1234.5), "1234.5");
  EXPECT_EQ(FixedText(1234.5, 2), "1234.50");
  EXPECT_EQ(GroupedText(1234.5, 2), "1,234.50");
  EXPECT_EQ(ZeroPadded(1234, 4), "1234");
  EXPECT_EQ(ParseNumber("1234.5"), 1234.5);
  EXPECT_EQ(ParseNumber("1234,5"), std::nullopt);
  std::locale::global(former);
  std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace vlt

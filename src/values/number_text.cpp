// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <system_error>

#include "values/codecs.h"

namespace vlt {
namespace {

constexpr int kSingleDigits = 7;
// Decimal exponents between which a number is written without an exponent.
constexpr int kPlainLowest = -9;
constexpr int kPlainHighest = 14;

// A number as its significant digits; the decimal point stands behind the first `point` of them.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

// The scientific form always looks like "-d.ddde-xx" (or "de-xx" with one digit).
Decimal ToDecimal(double value, int significant) {
  std::array<char, 64> buffer{};
  const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                  std::chars_format::scientific, significant - 1);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(done.ptr - buffer.data()));
  const std::size_t e = text.find('e');
  Decimal result;
  for (const char c : text.substr(0, e)) {
    if (c == '-') result.negative = true;
    if (c >= '0' && c <= '9') result.digits += c;
  }
  result.point = std::atoi(std::string(text.substr(e + 1)).c_str()) + 1;
  return result;
}

std::string_view NotFiniteText(double value) {
  if (std::isnan(value)) return "NaN";
  return value > 0 ? "INF" : "-INF";
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string Positional(const Decimal& number) {
  const int count = static_cast<int>(number.digits.size());
  std::string text = number.digits;
  if (number.point <= 0) {
    return "0." + std::string(static_cast<std::size_t>(-number.point), '0') + text;
  }
  if (number.point >= count) {
    return text + std::string(static_cast<std::size_t>(number.point - count), '0');
  }
  return text.insert(static_cast<std::size_t>(number.point), 1, '.');
}

std::string WithExponent(const Decimal& number) {
  std::string text = number.digits;
  if (text.size() > 1) text.insert(1, 1, '.');
  const int exponent = number.point - 1;
  return text + (exponent < 0 ? "E-" : "E+") + ZeroPadded(std::abs(exponent), 2);
}

// Without trailing zeros; value is neither zero nor infinite.
Decimal Shortest(double value, int significant) {
  Decimal number = ToDecimal(value, significant);
  number.digits.erase(number.digits.find_last_not_of('0') + 1);
  return number;
}

std::string General(double value, int significant) {
  if (!std::isfinite(value)) return std::string(NotFiniteText(value));
  if (value == 0) return "0";
  const Decimal number = Shortest(value, significant);
  const int exponent = number.point - 1;
  const bool plain = exponent >= kPlainLowest && exponent <= kPlainHighest;
  return (number.negative ? "-" : "") + (plain ? Positional(number) : WithExponent(number));
}

// Rounds half up to `keep` digits; a carry out of the first digit moves the point.
void RoundDigits(Decimal& number, int keep) {
  std::string& digits = number.digits;
  if (keep >= static_cast<int>(digits.size())) return;
  const bool up = keep >= 0 && digits[static_cast<std::size_t>(keep)] >= '5';
  digits.erase(static_cast<std::size_t>(keep > 0 ? keep : 0));
  if (!up) return;
  std::size_t i = digits.size();
  while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
  if (i > 0) {
    ++digits[i - 1];
  } else {
    digits.insert(0, 1, '1');
    ++number.point;
  }
}

// Integer digits with a comma between groups of three, or as they are.
std::string Grouped(const std::string& digits) {
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

std::string Fixed(double value, int decimals, bool grouped) {
  if (!std::isfinite(value)) return std::string(NotFiniteText(value));
  Decimal number = ToDecimal(value, kDoubleDigits);
  RoundDigits(number, number.point + decimals);
  const bool zero = number.digits.find_first_not_of('0') == std::string::npos;
  if (zero) number = Decimal{};
  std::string digits = number.digits;
  int point = number.point;
  if (point < 1) {
    digits.insert(0, static_cast<std::size_t>(1 - point), '0');
    point = 1;
  }
  digits.resize(static_cast<std::size_t>(point) + static_cast<std::size_t>(decimals), '0');
  const std::string integer = digits.substr(0, static_cast<std::size_t>(point));
  const std::string fraction = digits.substr(static_cast<std::size_t>(point));
  return (number.negative ? "-" : "") + (grouped ? Grouped(integer) : integer) +
         (fraction.empty() ? "" : "." + fraction);
}

}  // namespace

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string GeneralText(double value) { return General(value, kDoubleDigits); }

std::string PlainText(double value) {
  if (!std::isfinite(value)) return std::string(NotFiniteText(value));
  if (value == 0) return "0";
  const Decimal number = Shortest(value, kDoubleDigits);
  return (number.negative ? "-" : "") + Positional(number);
}

std::string SingleText(float value) { return General(value, kSingleDigits); }

std::optional<double> ParseNumber(std::string_view text) {
  text = Trim(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  // Keeps a second sign and the words nan and inf away from the conversion, which would take them.
  if (text.empty() || !(IsDigit(text.front()) || text.front() == '.')) return std::nullopt;
  double value = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return negative ? -value : value;
}

std::optional<int> ParseWhole(std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  const bool fits = number && *number >= std::numeric_limits<int>::min() &&
                    *number <= std::numeric_limits<int>::max() && IsWhole(*number);
  return fits ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

bool IsWhole(double number) { return number == std::trunc(number); }

std::string FixedText(double value, int decimals) { return Fixed(value, decimals, false); }

std::string GroupedText(double value, int decimals) { return Fixed(value, decimals, true); }

std::string ZeroPadded(int value, int width) {
  std::string digits = std::to_string(value < 0 ? -static_cast<long long>(value) : value);
  if (static_cast<int>(digits.size()) < width) {
    digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
  }
  return (value < 0 ? "-" : "") + digits;
}

int IntDigitCount(double value) { return static_cast<int>(GeneralText(std::trunc(value)).size()); }

std::string DigitsText(double value, int significant) {
  return PlainText(CutDigits(value, significant - IntDigitCount(value)));
}

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0);
  return up ? below + 1 : below;
}

}  // namespace vlt

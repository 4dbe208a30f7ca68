// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts of snapshots, comparison and proven writes: the blocks 1550 to 1558 and 1751 to 1819.
#pragma once

namespace vlt::text {

// Names of parameters whose captions are not their own.
inline constexpr int kMeterType = 1751;
inline constexpr int kAoCheck = 1752;
inline constexpr int kAt4mA = 1753;
inline constexpr int kAt20mA = 1754;
inline constexpr int kSwitchedOn = 1755;
inline constexpr int kSwitchedOff = 1756;
inline constexpr int kSecondPath = 1757;

// Why a text is no value. %1 the entries, or the greatest number of characters.
inline constexpr int kNoSuchCode = 1758;
inline constexpr int kTooLong = 1759;

// Why a parameter of a snapshot is not known.
inline constexpr int kReadingStopped = 1760;
inline constexpr int kNotAskedFor = 1761;
inline constexpr int kUnitUnread = 1762;

// What is wrong with a line of a snapshot file. kAtLine: %1 its number, %2 one of the reasons behind it.
// kHeadMissing: %1 the name of the line.
inline constexpr int kAtLine = 1763;
inline constexpr int kUnknownParameter = 1764;
inline constexpr int kBadLine = 1765;
inline constexpr int kParameterTwice = 1766;
inline constexpr int kTextContradicts = 1767;
inline constexpr int kOtherRegister = 1768;
inline constexpr int kNotInThisShape = 1769;
inline constexpr int kHeadMissing = 1770;
inline constexpr int kHeadContradicts = 1771;
inline constexpr int kRowMissing = 1772;  // %1 the row: it is not in the file

// How a write ended, in the order of WriteEnd.
inline constexpr int kWriteEnds = 1773;  // to 1776

// Why a write is not proven. %1 the value, or why it could not be read.
inline constexpr int kRegisterHolds = 1777;
inline constexpr int kNotReadBack = 1778;
inline constexpr int kMeterComputes = 1779;

// What a page tells of a write that the meter has confirmed and not done. %1 the value that was sent, %2 the
// one that was read back. kAndMore: %1 the first of several, %2 how many more.
inline constexpr int kSentButHolds = 1550;
inline constexpr int kAndMore = 1551;

// The states of compared rows, in the order of RowState.
inline constexpr int kRowStateNames = 1780;  // to 1784

// What is told of a compared row. %1 why a side's value is not known.
inline constexpr int kShownAlike = 1785;
inline constexpr int kUnitsDiffer = 1786;
inline constexpr int kLeftUnknown = 1787;
inline constexpr int kRightUnknown = 1788;

// How many, as part of other texts. %1 the number, of more than one.
inline constexpr int kOneRow = 1555;
inline constexpr int kManyRows = 1556;
inline constexpr int kOneParameter = 1557;
inline constexpr int kManyParameters = 1558;

// Beside a comparison. kNoDifferences: %1 how many parameters (CountText). kCounts: %1 all, %2 to %6 those of
// each state in the order of RowState.
inline constexpr int kNoDifferences = 1789;
inline constexpr int kCounts = 1790;

// The sides, in the order of SideKind. %1 the file's name.
inline constexpr int kSideTitles = 1791;  // to 1794

// Why a row is not sent.
inline constexpr int kClearsMemory = 1795;
inline constexpr int kClearsTotals = 1796;
inline constexpr int kStartsTest = 1797;
inline constexpr int kMeterHasNot = 1798;
inline constexpr int kNotExact = 1799;      // %1 the value and its unit, %2 the meter's unit
inline constexpr int kCodeNotThere = 1800;  // %1 the entry
inline constexpr int kNoValue = 1801;
inline constexpr int kNotRestorable = 1802;
inline constexpr int kOtherUnits = 1803;   // its unit is not known
inline constexpr int kStaysItsOwn = 1552;  // %1 the value

// Why a sending has ended. kNoPoint: %1 why the file could not be written.
inline constexpr int kSendingStopped = 1804;
inline constexpr int kPortWasLost = 1805;
inline constexpr int kMeterNotRead = 1806;
inline constexpr int kNoPoint = 1807;
inline constexpr int kIsOtherMeter = 1808;  // %1 who answers, %2 who was expected

// Columns and lines of the exported comparison.
inline constexpr int kGroupColumn = 1809;
inline constexpr int kPlaceColumn = 1810;
inline constexpr int kParameterColumn = 1811;
inline constexpr int kLeftColumn = 1812;
inline constexpr int kRightColumn = 1813;
inline constexpr int kStateColumn = 1814;
inline constexpr int kNoteColumn = 1815;
inline constexpr int kComparisonTitle = 1816;
inline constexpr int kIdentityLine = 1817;  // %1 ID number, %2 specification, %3 type, %4 version, %5 unit
                                            // system, %6 path mode, %7 date
inline constexpr int kPageOf = 1818;        // %1 the page, %2 of how many
inline constexpr int kUnitColumn = 1819;

}  // namespace vlt::text

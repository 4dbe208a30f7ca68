// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts of the comparison's window: the block 1820 to 1889.
#pragma once

namespace vlt::text {

// Its title, and the menu items that lead to it.
inline constexpr int kCompareTitle = 1820;
inline constexpr int kCompareMenu = 1821;
inline constexpr int kSnapshotMenu = 1822;
inline constexpr int kRestoreMenu = 1823;

// What a side can be, in the order of the list. kPointEntry: %1 its date, %2 the meter's ID number.
inline constexpr int kSideEntries = 1824;  // to 1827
inline constexpr int kPointEntry = 1828;
inline constexpr int kLeftSide = 1829;
inline constexpr int kRightSide = 1830;

// The button that takes in a side, and what stands beneath a side before.
inline constexpr int kTakeMeter = 1831;
inline constexpr int kTakeFile = 1832;
inline constexpr int kTakeFields = 1833;
inline constexpr int kMeterNotTaken = 1834;
inline constexpr int kFileNotTaken = 1835;
inline constexpr int kFieldsNotTaken = 1836;
inline constexpr int kIdentity = 1838;       // %1 ID number, %2 specification, %3 type, %4 version
inline constexpr int kIdentityModes = 1839;  // %1 unit system, %2 path mode, %3 date
inline constexpr int kSwapSides = 1840;

// Which rows are listed, in the order of RowFilter. %1 how many.
inline constexpr int kFilters = 1841;  // to 1846
inline constexpr int kBothSidesFirst = 1847;

// The list. kGroupLine: %1 the page and channel, %2 how many rows, %3 how many of them differ. kRemarksOf: %1
// the side, %2 how many. kRowFacts: %1 the row, %2 its name, %3 its register.
inline constexpr int kResultColumn = 1848;
inline constexpr int kGroupLine = 1849;
inline constexpr int kRemarksOf = 1850;
inline constexpr int kRowFacts = 1851;
inline constexpr int kTwoSentences = 1852;
inline constexpr int kConvertedValue = 1853;  // %1 the value as the meter will hold it
inline constexpr int kChosenByHand = 1854;

// Choosing. kRowsChosen: %1 how many; kRowsHidden: %2 how many of them the list does not show.
inline constexpr int kTickDifferent = 1855;
inline constexpr int kTickNone = 1856;
inline constexpr int kRowsChosen = 1857;
inline constexpr int kRowsHidden = 1858;

// Sending and restoring. kSendQuestion: %1 how many, %2 the meter. kRestoreQuestion: %1 the meter, %2 the
// source.
inline constexpr int kSaveInMeter = 1837;
inline constexpr int kSendRows = 1859;
inline constexpr int kRestoreAll = 1860;
inline constexpr int kSendQuestion = 1861;
inline constexpr int kRestoreQuestion = 1862;
inline constexpr int kTargetFirst = 1863;
inline constexpr int kNoRowTicked = 1864;
inline constexpr int kRestoreSource = 1865;
inline constexpr int kRestoreOther = 1866;  // %1 the meter of the source, %2 the meter

// While it works and afterwards. kProgress: %1 one of the two above it, %2 at what, %3 the step, %4 of how
// many. kSendCounts: %1 stored, %2 refused, %3 not proven, %4 not sent. kPointTold: %1 the file.
inline constexpr int kReadingSide = 1867;
inline constexpr int kSendingRows = 1868;
inline constexpr int kProgress = 1869;
inline constexpr int kSendCounts = 1870;
inline constexpr int kPointTold = 1871;
inline constexpr int kSaveAfterwards = 1872;
inline constexpr int kRestoredEqual = 1873;
inline constexpr int kRestoredLeft = 1874;  // %1 how many rows
inline constexpr int kRestoredUnproven = 1875;
inline constexpr int kNotReadSince = 1876;
inline constexpr int kStaysWhileBusy = 1877;

// Reading and files. kSideTaken: %1 the side, %2 how many rows (CountText); kSideUnread: %3 how many of them
// are not known. kNoSuchFile: %1 the file's name.
inline constexpr int kSideTaken = 1878;
inline constexpr int kSideUnread = 1879;
inline constexpr int kReadingEnded = 1880;
inline constexpr int kNeitherFile = 1881;
inline constexpr int kSnapshotKind = 1882;
inline constexpr int kSnapshotSaved = 1883;    // %1 the file, %2 how many rows
inline constexpr int kSnapshotPartial = 1884;  // %1 the file, %2 how many rows, %3 how many are not known
inline constexpr int kNoSnapshot = 1885;       // %1 why
inline constexpr int kNoRestorePoints = 1886;
inline constexpr int kSaveSnapshot = 1887;
inline constexpr int kSavePdf = 1888;
inline constexpr int kOpenTitle = 1889;

}  // namespace vlt::text

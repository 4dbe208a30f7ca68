// Names of the texts that have no id of old. They live in the block 3200 to 3389; new ones go behind their
// group. Where a text has placeholders, the comment tells what FormatText is to be given.
#pragma once

namespace vlt::text {

// Why a port could not be opened or was lost. %1 the port ("COM3"), %2 its device ("/dev/ttyUSB0"), %3 the
// settings ("9600,O,8,1") or the system's own words.
inline constexpr int kPortMissing = 3200;
inline constexpr int kPortBusy = 3201;
inline constexpr int kPortNotAllowed = 3202;
inline constexpr int kPortRemoved = 3203;
inline constexpr int kPortBadSettings = 3204;
inline constexpr int kPortNotChosen = 3205;
inline constexpr int kPortNotSerial = 3206;
inline constexpr int kPortFault = 3207;

// What this version does not have. %1 the caption of the button or menu that opens it.
inline constexpr int kPageMissing = 3211;

// Files. %1 the file's name, %2 one of the reasons below.
inline constexpr int kFileNotRead = 3220;
inline constexpr int kFileNotWritten = 3221;
inline constexpr int kFileOpened = 3222;
inline constexpr int kFileSaved = 3223;
inline constexpr int kFileKept = 3224;

// Reasons, in the middle of a sentence. kFileFault: %1 the system's number or words.
inline constexpr int kFileMissing = 3225;
inline constexpr int kFileIsFolder = 3226;
inline constexpr int kFileNotAllowed = 3227;
inline constexpr int kFileDiskFull = 3228;
inline constexpr int kFileReadOnly = 3229;
inline constexpr int kFileFolderMissing = 3230;
inline constexpr int kFileFault = 3231;

// %1 how many, %2 the file's name, %3 the reason.
inline constexpr int kRecordsLost = 3232;

// More reasons.
inline constexpr int kFileTooLarge = 3233;
inline constexpr int kFileOtherFault = 3234;

// The chart's menu.
inline constexpr int kChartFollow = 3240;
inline constexpr int kChartExport = 3241;
inline constexpr int kChartZoom = 3242;
inline constexpr int kChartPicture = 3243;

// Tooltips of the parameters. %1 the address in hexadecimal digits, %2 one of the value types below it.
inline constexpr int kTipRegister = 3250;
inline constexpr int kTypeInt16 = 3251;
inline constexpr int kTypeUInt16 = 3252;
inline constexpr int kTypeInt32 = 3253;
inline constexpr int kTypeDouble = 3254;
inline constexpr int kTypeSingle = 3255;

// Group captions.
inline constexpr int kGroupPipe = 3260;
inline constexpr int kGroupLining = 3261;
inline constexpr int kGroupFluid = 3262;
inline constexpr int kGroupSensor = 3263;

// Buttons and options.
inline constexpr int kYes = 3270;
inline constexpr int kNo = 3271;
inline constexpr int kOk = 3272;
inline constexpr int kCancel = 3273;
inline constexpr int kClose = 3274;
inline constexpr int kOn = 3275;

// Window words.
inline constexpr int kValues = 3280;
inline constexpr int kChart = 3281;
inline constexpr int kSelectAll = 3282;
inline constexpr int kDevice = 3283;
inline constexpr int kAdapter = 3284;
inline constexpr int kNotConnected = 3285;
inline constexpr int kSimulatedMeter = 3286;
inline constexpr int kAssignPort = 3287;

// The firmware tool. Captions.
inline constexpr int kFwDownloadTab = 3840;
inline constexpr int kFwUploadTab = 3841;
inline constexpr int kFwFolder = 3842;
inline constexpr int kFwBrowse = 3843;
inline constexpr int kFwExecute = 3844;
inline constexpr int kFwPort = 3845;

// A run of it. kFwImage: %1 bytes, %2 the first digits of the checksum; kFwElapsed: %1 elapsed, %2 expected
// ("4:16"); kFwToWrite and kFwToCompare: %1 the modules; kFwJournal: %1 the file; kFwNoJournal: %1 the
// reason.
inline constexpr int kFwImage = 3846;
inline constexpr int kFwElapsed = 3847;
inline constexpr int kFwToWrite = 3848;
inline constexpr int kFwToCompare = 3849;
inline constexpr int kFwWillStop = 3850;
inline constexpr int kFwCancelled = 3851;
inline constexpr int kFwNotNow = 3852;
inline constexpr int kFwJournal = 3853;
inline constexpr int kFwNoJournal = 3854;

// What went wrong in it and what to do next. %1 the module or its file, %2 the port's or the device's words,
// the index of a byte, bytes received; %3 bytes asked for. kFwTooLong: %1 bytes.
inline constexpr int kFwNextPort = 3855;
inline constexpr int kFwNextSilence = 3856;
inline constexpr int kFwNextBroken = 3857;
inline constexpr int kFwNextLost = 3858;
inline constexpr int kFwNextDevice = 3859;
inline constexpr int kFwNextChanged = 3860;
inline constexpr int kFwIncomplete = 3861;
inline constexpr int kFwOtherModule = 3862;
inline constexpr int kFwEmptyFile = 3863;
inline constexpr int kFwTooLong = 3864;
inline constexpr int kFwShortImage = 3865;
inline constexpr int kFwDiffers = 3866;

}  // namespace vlt::text

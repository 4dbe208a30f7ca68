// Names of the texts that have no id of old. They live in the block 3200 to 3389; new ones go behind their
// group. Where a text has placeholders, the comment tells what FormatText is to be given.
#pragma once

namespace vlt::text {

// Texts of old that several folders need.
inline constexpr int kCommunicationError = 3950;
inline constexpr int kNotANumber = 3920;
inline constexpr int kChooseChannel = 3931;
inline constexpr int kNotSaved = 3960;
inline constexpr int kSaveStarted = 4030;
inline constexpr int kSaveCompleted = 4040;
inline constexpr int kContinueQuestion = 4170;
inline constexpr int kErrorOccurred = 4965;

// Why a write is not proven: the reply repeats something else than what was sent.
inline constexpr int kOtherEcho = 3208;

// Why a port could not be opened or was lost. %1 the port ("COM3"), %2 its device ("/dev/ttyUSB0"), %3 the
// settings ("9600,O,8,1"), the group of users that may open the device, the number of the port that the
// settings name, or that of the fault.
inline constexpr int kPortMissing = 3200;
inline constexpr int kPortBusy = 3201;
inline constexpr int kPortNotInGroup = 3202;
inline constexpr int kPortRemoved = 3203;
inline constexpr int kPortBadSettings = 3204;
inline constexpr int kPortNotChosen = 3205;
inline constexpr int kPortNotSerial = 3206;
inline constexpr int kPortFault = 3207;
inline constexpr int kPortNotAllowed = 3212;
inline constexpr int kPortBeyond = 3213;

// Why the program does not start. %1 the settings file, %2 the section and key, %3 the value, %4 the values
// that it may have.
inline constexpr int kStartBadKey = 3214;
inline constexpr int kStartBadModel = 3215;

// A handler came to an unforeseen end. %1 the system's words.
inline constexpr int kHandlerFault = 3216;

// What this version does not have. %1 the caption of the button or menu that opens it.
inline constexpr int kFirmwareToolMissing = 3210;
inline constexpr int kPageMissing = 3211;

// Files. %1 the file's name, %2 one of the reasons below.
inline constexpr int kFileNotRead = 3220;
inline constexpr int kFileNotWritten = 3221;
inline constexpr int kFileOpened = 3222;  // %2 how many keys were taken, %3 of how many
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

// A parameter file whose values were not all taken. %1 to %3 as for kFileOpened, %4 the keys.
inline constexpr int kFileOpenedBut = 3235;
// A box at the end of the program. %1 the file's name, %2 the reason.
inline constexpr int kEndWithoutFile = 3236;

// The chart's menu.
inline constexpr int kChartFollow = 3240;
inline constexpr int kChartExport = 3241;
inline constexpr int kChartZoom = 3242;
inline constexpr int kChartPicture = 3243;

// A handler broke off by a fault of the program. %1 what it says of itself.

// Tooltips of the parameters. %1 the address in hexadecimal digits, %2 one of the value types below it.
inline constexpr int kTipRegister = 3250;
inline constexpr int kTypeInt16 = 3251;
inline constexpr int kTypeUInt16 = 3252;
inline constexpr int kTypeInt32 = 3253;
inline constexpr int kTypeDouble = 3254;
inline constexpr int kTypeSingle = 3255;
inline constexpr int kTypeCharacters = 3256;

// Why a typed value can't be sent. kDoesNotFit: %1 the least, %2 the greatest value.
inline constexpr int kNoNumber = 3257;
inline constexpr int kDoesNotFit = 3258;

// Group captions.
inline constexpr int kGroupPipe = 3260;
inline constexpr int kGroupLining = 3261;
inline constexpr int kGroupFluid = 3262;
inline constexpr int kGroupSensor = 3263;

// Transit time: a tab and two groups. Energy mode: a group.
inline constexpr int kWaveform = 3315;
inline constexpr int kGroupSending = 3316;
inline constexpr int kGroupReceiving = 3317;
inline constexpr int kGroupHeatUnits = 3318;

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

// A run of live values. Behind it a blank and why the last exchange failed.
inline constexpr int kChannelsUnknown = 3300;

// Condition and waves of a path.
inline constexpr int kNanosecond = 3370;
inline constexpr int kWaveAwaited = 3371;
// %1 the block that has come, %2 how many there are.
inline constexpr int kWaveBlock = 3372;
// %1 the number of captures, %2 seconds.
inline constexpr int kWaveTook = 3373;
// %1 the block that has failed, %2 why.
inline constexpr int kWaveRepeated = 3374;
inline constexpr int kWaveTrail = 3375;
inline constexpr int kWaveCapture = 3376;
inline constexpr int kWaveTime = 3377;
inline constexpr int kWaveAmplitude = 3378;
// %1 the value, %2 its sample.
inline constexpr int kWavePeak = 3379;

}  // namespace vlt::text

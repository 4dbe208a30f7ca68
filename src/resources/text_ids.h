// SPDX-License-Identifier: GPL-3.0-or-later
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

// The read-out of all settings. kReadAllProgress: %1 the number of the reader, %2 of how many, %3 what it
// reads.
inline constexpr int kReadAllProgress = 3310;
inline constexpr int kStop = 3301;
inline constexpr int kReadAllStopped = 3302;
inline constexpr int kNoReportName = 3303;
inline constexpr int kNothingRead = 3309;

// Labels of its report.
inline constexpr int kReportSpan = 3304;
inline constexpr int kReportHeating = 3305;
inline constexpr int kReportCooling = 3306;
inline constexpr int kReportSupply = 3307;
inline constexpr int kReportReturn = 3308;

// Serial settings. %1 what the settings hold.
inline constexpr int kNotOffered = 3335;
inline constexpr int kMonitorRuns = 3336;
inline constexpr int kLinkProved = 3337;
inline constexpr int kSerialNumber = 3338;  // %1 as the adapter tells it
inline constexpr int kStandardDevice = 3339;

// The search for meters. %1 the port, %2 how many were found.
inline constexpr int kSearch = 3340;
inline constexpr int kSearchRuns = 3341;  // %2 speed, %3 parity, %4 station, %5 how many were found
inline constexpr int kSearchFound = 3342;
inline constexpr int kSearchNone = 3343;
inline constexpr int kSearchStopped = 3344;  // %1 how many
inline constexpr int kOtherMaster = 3345;
inline constexpr int kSearchPortLost = 3346;  // %2 the fault, %3 how many
inline constexpr int kSearchOdd = 3347;       // %1 how often

// The frame: link in force, meter, first steps. %1 station, date and time.
inline constexpr int kLink = 3348;
inline constexpr int kLinkStation = 3349;
inline constexpr int kLinkClosed = 3350;
inline constexpr int kMeter = 3351;
inline constexpr int kIdentifiedAt = 3352;
inline constexpr int kNotIdentified = 3353;
inline constexpr int kNotKnown = 3354;
inline constexpr int kIdNumber = 3355;
inline constexpr int kFullModel = 3356;
inline constexpr int kSingleModel = 3357;
inline constexpr int kReadMeter = 3358;
inline constexpr int kFirstSteps = 3359;  // a title, and below it the steps
// Maintenance. kTestState: %1 the meters ("COM1-02"), %2 the page, %3 the button that ends the state.
inline constexpr int kTestState = 3325;
inline constexpr int kTestNeedsValue = 3326;
inline constexpr int kMilliampere = 3327;
// Several stations in turn. kStationTiming: %1 seconds from pass to pass, %2 seconds of a pass, %3 per cent.
// kStationSilent: %1 why the last exchange failed.
inline constexpr int kDisplayNotUsed = 3360;
inline constexpr int kLastAnswer = 3361;
inline constexpr int kFailedPolls = 3362;
inline constexpr int kStationTiming = 3363;
inline constexpr int kPassTooLong = 3364;
inline constexpr int kStartCancelled = 3365;
inline constexpr int kStationSilent = 3366;
inline constexpr int kNoLog = 3367;
inline constexpr int kUnitUnknown = 3368;
// Sensor spacing calculator: its controls.
inline constexpr int kCalcTake = 3800;
inline constexpr int kCalcPrint = 3801;
inline constexpr int kCalcSave = 3802;
inline constexpr int kCalcOutdated = 3803;

// Its drawing.
inline constexpr int kInnerDiameter = 3805;
inline constexpr int kWedge = 3806;
inline constexpr int kScaleStep = 3807;
inline constexpr int kToScale = 3808;
inline constexpr int kSensorsEnlarged = 3809;
inline constexpr int kSensorsTouch = 3810;
inline constexpr int kSoundPath = 3831;
inline constexpr int kSpacingMeaning = 3833;

// Why there is nothing to draw or to calculate. %1 the field's caption, %2 what it holds.
inline constexpr int kFieldMissing = 3811;
inline constexpr int kNoBore = 3812;
inline constexpr int kFieldNotANumber = 3813;
inline constexpr int kNothingChosen = 3814;
inline constexpr int kTotalReflection = 3815;
inline constexpr int kTooLarge = 3816;

// The process page holds no values.
inline constexpr int kProcessEmpty = 3817;

// Printing. %1 the title of what is printed, or the file's name.
inline constexpr int kSheetPrinted = 3819;
inline constexpr int kNoPrinter = 3820;
inline constexpr int kPrintFailed = 3821;
inline constexpr int kPrintingMissing = 3822;
inline constexpr int kSheetSuffix = 3823;
inline constexpr int kPdfFile = 3824;
inline constexpr int kSheetNotMade = 3832;

// Words of the printed sheet.
inline constexpr int kSheetInputs = 3825;
inline constexpr int kSheetRange = 3826;
inline constexpr int kSheetNotes = 3827;
inline constexpr int kSheetPoint = 3828;
inline constexpr int kSheetFitter = 3829;
inline constexpr int kSheetDate = 3830;
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

// What went wrong in it. %1 the module or its file, %2 the port's or the device's words, the index of a byte,
// bytes received; %3 bytes asked for. kFwTooLong: %1 bytes. What to do then: text_ids_firmware.h.
inline constexpr int kFwPortRefused = 3855;
inline constexpr int kFwSilent = 3856;
inline constexpr int kFwBreaksOff = 3857;
inline constexpr int kFwLineLost = 3858;
inline constexpr int kFwRefused = 3859;
inline constexpr int kFwChanged = 3860;
inline constexpr int kFwOtherModule = 3862;
inline constexpr int kFwEmptyFile = 3863;
inline constexpr int kFwTooLong = 3864;
inline constexpr int kFwShortImage = 3865;
inline constexpr int kFwDiffers = 3866;
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

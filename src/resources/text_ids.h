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
inline constexpr int kFirmwareToolMissing = 3210;
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

// Values of the process page. kProcessTaken: %1 the channel, %2 how many.
inline constexpr int kProcessEmpty = 3817;
inline constexpr int kProcessTaken = 3818;

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

}  // namespace vlt::text

#include <bitset>

#include "link/port.h"
#include "live/form9.h"
#include "values/code_tables.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kInputRegisters = 4;
constexpr std::size_t kReplyHead = 3;
constexpr int kShownDecimals = 3;
constexpr int kNoAlarm = 4880;
constexpr int kFailed = -7000;
constexpr unsigned kLineColour = 0xFF0000;  // blue
constexpr const char* kNoValue = "-";

// Rows of the measured fields that the trend can draw.
constexpr int kVelocityRow = 0;
constexpr int kFlowRow = 1;
constexpr int kPercentRow = 2;
constexpr int kQuantityRows[] = {kFlowRow, kVelocityRow, kPercentRow};
constexpr int kQuantityRowsWithoutVelocity[] = {kFlowRow, kPercentRow, kPercentRow};

// clang-format off
constexpr MeasureField kMeasured[] = {
    {0, MeasureType::kSingle, &Form9::txtRyusoku, 2180, [](Form9& f, int ch) -> Label& { return f.lblRyusokuUnit(ch); }},
    {2, MeasureType::kSingle, &Form9::txtRyuryo, 2220, [](Form9& f, int ch) -> Label& { return f.lblRyuryoUnit(ch); }},
    {4, MeasureType::kSingle, &Form9::txtRyuryoPer, 2221, [](Form9& f, int ch) -> Label& { return f.lblRyuryoPerUnit(ch); }},
    {6, MeasureType::kDouble, &Form9::txtPlusSekisan, 2360, [](Form9& f, int ch) -> Label& { return f.lblSekisanUnit(2 * ch); }},
    {10, MeasureType::kDouble, &Form9::txtMinusSekisan, 2370, [](Form9& f, int ch) -> Label& { return f.lblSekisanUnit(2 * ch + 1); }},
    {14, MeasureType::kPulses, &Form9::txtPlusSekisanPulse, 2380, [](Form9& f, int ch) -> Label& { return f.lblPulseUnit(2 * ch); }},
    {16, MeasureType::kPulses, &Form9::txtMinusSekisanPulse, 2390, [](Form9& f, int ch) -> Label& { return f.lblPulseUnit(2 * ch + 1); }},
    {18, MeasureType::kBits, &Form9::txtRAS, 1965},
};
constexpr MeasureField kHeat[] = {
    {2, MeasureType::kSingle, &Form9::txtThermalFlowPer, 2392, [](Form9& f, int) -> Label& { return f.lblHPerUnit; }},
    {0, MeasureType::kSingle, &Form9::txtThermalFlow, 2391, [](Form9& f, int) -> Label& { return f.lblHRyuryoUnit; }},
    {24, MeasureType::kDouble, &Form9::txtTempDifference, 2393, [](Form9& f, int) -> Label& { return f.lbldegreeCUnit(2); }},
    {4, MeasureType::kDouble, &Form9::txtHTotal, 2394, [](Form9& f, int) -> Label& { return f.lblHSekisanUnit(0); }},
    {12, MeasureType::kPulses, &Form9::txtHTotalPulse, 2395, [](Form9& f, int) -> Label& { return f.lblHPulseUnit(0); }},
    {8, MeasureType::kDouble, &Form9::txtCTotal, 2396, [](Form9& f, int) -> Label& { return f.lblHSekisanUnit(1); }},
    {14, MeasureType::kPulses, &Form9::txtCTotalPulse, 2397, [](Form9& f, int) -> Label& { return f.lblHPulseUnit(1); }},
    {16, MeasureType::kDouble, &Form9::txtSupplyTemp, 2398, [](Form9& f, int) -> Label& { return f.lbldegreeCUnit(0); }},
    {20, MeasureType::kDouble, &Form9::txtReturnTemp, 2399, [](Form9& f, int) -> Label& { return f.lbldegreeCUnit(1); }},
};
// clang-format on
static_assert(std::size(kMeasured) == kPlainFields && std::size(kMeasured) + std::size(kHeat) == kAllFields);

constexpr MeasureBlock kMeasuredBlock{{0x0000, 0x1388, 0x251C}, 19, 0, kMeasured};
constexpr MeasureBlock kHeatBlock{{0x10C0, 0x2448, 0x2648}, 28, kPlainFields, kHeat};

std::string FieldText(MeasureType type, const Frame& reply, std::size_t start) {
  switch (type) {
    case MeasureType::kSingle:
      return SingleText(static_cast<float>(CutDigits(BytesToSingle(reply, start), kShownDecimals)));
    case MeasureType::kDouble:
      return GeneralText(CutDigits(BytesToDouble(reply, start), kShownDecimals));
    case MeasureType::kPulses:
      return std::to_string(BytesToInt32(reply, start));
    case MeasureType::kBits:
      break;
  }
  return std::bitset<16>(static_cast<unsigned>(BytesToUInt16(reply, start))).to_string();
}

}  // namespace

const MeasureBlock& MeasuredBlock() { return kMeasuredBlock; }
const MeasureBlock& HeatBlock() { return kHeatBlock; }

int Form9::PlottedField() const {
  const auto quantity = static_cast<std::size_t>(std::clamp(Flow_Combo.ListIndex(), 0, 2));
  return HasNoVelocity(ChosenChannel()) ? kQuantityRowsWithoutVelocity[quantity] : kQuantityRows[quantity];
}

int Form9::ReadMeasuredValues() {
  // A port that went away is tried again each cycle: a meter that is plugged in again goes on being measured.
  if (!app().platform.port.IsOpen()) OpenPort(app());
  TrendValue.reset();
  bool good = true;
  for (int ch = 0; ch < ChannelCount(); ++ch) good = ReadChannel(ch) && good;
  AppendMeasureRecord(MeasureFilePath, app().platform.clock.Now(),
                      std::span(texts_).first(static_cast<std::size_t>(ChannelCount())),
                      app().state.LastErrorText);
  return good ? 0 : kFailed;
}

bool Form9::ReadChannel(int ch) {
  if (ReadBlock(MeasuredBlock(), ch) && (!heat_ || ReadBlock(HeatBlock(), ch))) return true;
  FailChannel(ch);
  return false;
}

bool Form9::ReadBlock(const MeasureBlock& block, int ch) {
  Frame request = ReadRequest(StationNumber(app()), kInputRegisters,
                              block.address.at(static_cast<std::size_t>(ch)), block.words);
  Frame reply = ReplyFor(request);
  if (!SendReceive(app(), request, reply)) return false;
  for (std::size_t row = 0; row < block.fields.size(); ++row) ShowField(block, row, ch, reply);
  return true;
}

void Form9::ShowField(const MeasureBlock& block, std::size_t row, int ch, const Frame& reply) {
  const MeasureField& field = block.fields[row];
  const std::size_t start = kReplyHead + 2 * static_cast<std::size_t>(field.offset);
  const bool measured = &block == &MeasuredBlock();
  if (measured && CH_Combo.ListIndex() == ch && PlottedField() == static_cast<int>(row)) {
    TrendValue = BytesToSingle(reply, start);
    Chart2D1.SetColour(kLineColour);
  }
  std::string& text = texts_[static_cast<std::size_t>(ch)][static_cast<std::size_t>(block.place) + row];
  text = FieldText(field.type, reply, start);
  if (field.type == MeasureType::kBits) {
    ShowRas(ch, text);
    return;
  }
  if (measured && row == kVelocityRow) {
    const bool there = !HasNoVelocity(ch);
    txtRyusoku(ch).SetEnabled(there);
    lblRyusokuUnit(ch).SetEnabled(there);
    if (!there) {
      text.clear();
      lblRyusokuUnit(ch).SetCaption("");
    }
  }
  (this->*field.box)(ch).SetText(text);
}

// Of several alarms the one of the highest bit is told.
void Form9::ShowRas(int ch, const std::string& bits) {
  const std::size_t alarm = bits.find('1');
  txtRAS(ch).SetText(alarm == std::string::npos ? app().Text(kNoAlarm)
                                                : AlarmRows(app().state.LangOffset)[alarm]);
}

// What a silent channel showed before is not taken for its present state.
void Form9::FailChannel(int ch) {
  texts_[static_cast<std::size_t>(ch)].fill(kNoValue);
  for (const auto fields : {MeasuredFields(), HeatFields()}) {
    for (const MeasureField& field : fields) {
      TextBox& box = (this->*field.box)(ch);
      if (box.Enabled()) box.SetText(kNoValue);
    }
  }
}

void Form9::EmptyBoxes() {
  for (const auto fields : {MeasuredFields(), HeatFields()}) {
    for (const MeasureField& field : fields)
      (this->*field.box).ForEach([](TextBox& box) { box.SetText(""); });
  }
}

}  // namespace vlt

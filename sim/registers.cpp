// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/registers.h"

#include <array>
#include <span>

namespace sim {

namespace {

struct Field {
  std::uint32_t address;
  Width width;
  double factory;
  double low;
  double high;
};

constexpr Field Code(std::uint32_t address, int factory, int last) {
  return {address, Width::Word, static_cast<double>(factory), 0, static_cast<double>(last)};
}
constexpr Field Number(std::uint32_t address, int factory, int low = -32768, int high = 32767) {
  return {address, Width::Word, static_cast<double>(factory), static_cast<double>(low),
          static_cast<double>(high)};
}
constexpr Field Length(std::uint32_t address, int factory) {
  return {address, Width::Long, static_cast<double>(factory), 0, 2147483647};
}
constexpr Field Real(std::uint32_t address, double factory) {
  return {address, Width::Double, factory, -std::numeric_limits<double>::max(),
          std::numeric_limits<double>::max()};
}

// Of a channel: its own address is that of CH1.
constexpr Field kRange[] = {
    Code(0x0002, 1, 1),    // kind: flow rate
    Code(0x0004, 8, 17),   // unit: m3/h
    Code(0x0006, 0, 3),    // type: single
    Real(0x0008, 15),      // full scale 1
    Real(0x0010, 15),      // full scale 2
    Number(0x0018, 1000),  // hysteresis 10.00 %
    Code(0x001A, 1, 4),    // burnout: hold
    Number(0x001C, 10),    // burnout timer
    Number(0x001E, -20),   // output limit low
    Number(0x0020, 120),   // output limit high
    Number(0x0022, 0),     // rate limit timer
    Real(0x0024, 0),       // rate limit
};
constexpr Field kRangeMeasured[] = {
    Number(0x0000, 50),     // damping 5.0 s
    Real(0x002C, 0.15),     // low flow cut
    Real(0x0034, 0),        // calibration zero
    Number(0x003C, 10000),  // calibration span 100.00 %
};
constexpr Field kTotal[] = {
    Code(0x0040, 2, 8),  // unit: m3
    Code(0x0042, 0, 2),  // mode: start
    Real(0x0044, 0.01),  // volume of a pulse
    Real(0x004C, 0),     // preset
    Code(0x0054, 2, 6),  // pulse width 50 ms
    Code(0x0056, 0, 1),  // burnout: hold
    Number(0x0058, 10),  // burnout timer
};
constexpr Field kProcess[] = {
    Code(0x00D0, 3, 11),      // sensor type
    Length(0x00D2, 6050),     // outer diameter 60.50 mm
    Code(0x00D6, 0, 12),      // pipe material: carbon steel
    Number(0x00D8, 3206, 0),  // sound velocity of the pipe
    Length(0x00DA, 380),      // wall 3.80 mm
    Code(0x00DE, 0, 7),       // no lining
    Number(0x00E0, 2000, 0),  // sound velocity of the lining
    Length(0x00E2, 200),      // lining 2.00 mm
    Code(0x00E6, 0, 17),      // water
    Number(0x00E8, 1482, 0),  // sound velocity of the fluid
    Real(0x00EA, 1.0038),     // viscosity
    Code(0x00F2, 0, 3),       // mounting: V
    Code(0x0140, 0, 1),       // zero adjustment, a command
};

// Of a digital output: distances from its first register.
constexpr Field kOutput[] = {
    Code(0x00, 0, 18),  // function
    Code(0x02, 0, 2),   // alarm kind
    Code(0x04, 0, 1),   // flow switch direction
    Real(0x06, 12),     // flow switch high
    Real(0x0E, 3),      // flow switch low
    Real(0x16, 100),    // total switch
    Code(0x1E, 0, 1),   // contact action
};
constexpr std::uint32_t kOutputs[] = {0x005A, 0x007A, 0x009A, 0x0410};
constexpr Field kThermalSwitch[] = {
    Code(0x00, 0, 1),  // direction
    Real(0x02, 300),   // thermal flow high
    Real(0x0A, 50),    // thermal flow low
    Real(0x12, 1000),  // thermal total
};
constexpr std::uint32_t kThermalSwitches[] = {0x0430, 0x044A, 0x0464, 0x047E};

// Of a channel's transit-time details: distances from 018EH and 148EH.
constexpr Field kDetails[] = {
    Code(0x00, 5, 8),    // transmission count
    Number(0x02, 0),     // trigger control: auto
    Number(0x04, 50),    // trigger level %
    Number(0x06, 0),     // window control: auto
    Number(0x08, 70),    // up open time us
    Number(0x0A, 70),    // down open time us
    Number(0x0C, 80),    // saturation level
    Code(0x0E, 0, 2),    // measuring method
    Number(0x10, 25),    // signal balance
    Code(0x12, 1, 7),    // transmission pattern
    Number(0x14, 0),     // AGC control: auto
    Number(0x16, 5500),  // up AGC 55.00 %
    Number(0x18, 5500),  // down AGC 55.00 %
    Code(0x1A, 2, 3),    // signal peak
    Number(0x1C, 2),     // transmission wait ms
};
constexpr std::uint32_t kDetailsChannel1 = 0x018E;
constexpr std::uint32_t kDetailsChannel2 = 0x148E;

constexpr Field kCommon[] = {
    Code(0x003E, 0, 1),          // operation mode: normal
    Code(0x00C0, 1, 15),         // display row 1: flow rate
    Code(0x00C2, 3, 6),          // its decimal point
    Code(0x00C4, 3, 15),         // display row 2: + total
    Code(0x00C6, 3, 6),          // its decimal point
    Code(0x00C8, 0, 1),          // backlight: on
    Number(0x00CA, 5, 0, 99),    // lights-out minutes
    Code(0x0100, 0, 1),          // unit system: metric
    Code(0x0102, 0, 4),          // language: English
    Number(0x0104, 1, 0, 9999),  // ID number
    Number(0x0142, 819),         // AO1 at 4 mA
    Number(0x0144, 4095),        // AO1 at 20 mA
    Number(0x0146, 0),           // reserve
    Number(0x0148, kFullSpecification, 0, 9999),
    Code(0x0150, 0, 1),           // store
    Number(0x0152, 0, 100, 100),  // memory initialisation, a command
    Number(0x0154, 0),            // AO check %
    Number(0x0156, 0),            // total pulse check
    Code(0x0158, 0, 1),           // DO check
    Number(0x015A, 0),            // reserve
    Code(0x015C, 0, 1),           // test mode
    Number(0x015E, 0),            // test input %
    Number(0x0160, 0),            // test tracking time s
    Number(0x0162, 0),            // reserve
    Number(0x0164, 0),            // reserve
    Code(0x0166, 0, 0),           // test state; takes only its end
    Code(0x0168, 0, 10),          // capture command and status
};
// What only the model with two channels has.
constexpr Field kTwoChannels[] = {
    Number(0x014A, 819),   // AO2 at 4 mA
    Number(0x014C, 4095),  // AO2 at 20 mA
    Number(0x0176, 0),     // DO2 frequency check
    Code(0x03E8, 0, 2),    // path mode
    Code(0x03EA, 0, 3),    // calculation of CH3
    Code(0x03EC, 0, 5),    // AO1 source
    Code(0x03EE, 1, 5),    // AO2 source
    Real(0x03F0, 600),     // thermal full scale 1
    Real(0x03F8, 600),     // thermal full scale 2
    Real(0x0400, 1),       // heat of a pulse
    Real(0x0408, 0),       // heat preset
    Code(0x04A8, 0, 2),    // channel of DO1
    Code(0x04AA, 0, 2),    // DO2
    Code(0x04AC, 1, 2),    // DO3
    Code(0x04AE, 1, 2),    // DO4
    Code(0x04B0, 0, 2),    // channel of display row 1
    Code(0x04B2, 0, 2),    // row 2
    Code(0x04B4, 0, 2),    // temperature: degC
    Code(0x04B6, 0, 6),    // thermal flow: MJ/h
    Code(0x04B8, 0, 6),    // heat total: MJ
    Code(0x04BA, 1, 1),    // heat mode: used
    Code(0x04BC, 1, 2),    // operation: heating
    Code(0x04BE, 0, 1),    // supply temperature: measured
    Code(0x04C0, 0, 1),    // return temperature: measured
    Code(0x04C2, 1, 1),    // Pt100
    Real(0x04C4, 4.186),   // cooling coefficient, MJ/(m3 K)
    Real(0x04CC, 4.186),   // heating coefficient
    Real(0x04D4, 20),      // change-over temperature
    Real(0x04DC, 1),       // its hysteresis
    Real(0x04E4, 45),      // set supply temperature
    Real(0x04EC, 35),      // set return temperature
    Real(0x04F4, 0),       // supply calibration zero
    Real(0x04FC, 100),     // span %
    Real(0x0504, 0),       // return calibration zero
    Real(0x050C, 100),     // span %
    Number(0x0514, 5),     // supply damping s
    Number(0x0516, 5),     // return damping s
};

std::uint32_t SizeOf(Width width) {
  static constexpr std::uint32_t kSizes[] = {2, 4, 8};
  return kSizes[static_cast<int>(width)];
}

void Add(Holding& holding, std::span<const Field> fields, std::uint32_t distance) {
  for (const Field& field : fields) {
    const std::uint32_t address = field.address + distance;
    holding.memory.Map(address, SizeOf(field.width));
    if (field.width == Width::Word) holding.memory.PutWord(address, static_cast<int>(field.factory));
    if (field.width == Width::Long) holding.memory.PutLong(address, static_cast<int>(field.factory));
    if (field.width == Width::Double) holding.memory.PutDouble(address, field.factory);
    holding.limits[address] = {field.width, field.low, field.high};
  }
}

void AddChannel2(Holding& holding) {
  Add(holding, kRange, kChannel2);
  Add(holding, kRangeMeasured, kChannel2);
  holding.memory.Map(kChannel2 + 0x3E, 2);  // where CH1 has the operation mode: a block read passes over it
  Add(holding, kTotal, kChannel2);
  Add(holding, kProcess, kChannel2);
  Add(holding, kDetails, kDetailsChannel2);
}

// A block that answers at a second address, `size` bytes of it.
struct Alias {
  std::uint32_t at;
  std::uint32_t size;
  std::uint32_t block;
};

constexpr Alias kHoldingAliases[] = {
    {0x0114, 2, 0x019C},   // measuring method of CH1
    {0x1300, 64, 0x1388},  // range of CH2
    {0x14D0, 36, 0x1458},  // process of CH2
};
constexpr Alias kInputAliases[] = {
    {0x1480, 6, 0x1408},  // sensor spacing of CH2
};

std::uint32_t Resolve(std::span<const Alias> aliases, std::uint32_t address) {
  for (const Alias& alias : aliases) {
    if (address >= alias.at && address < alias.at + alias.size) return address - alias.at + alias.block;
  }
  return address;
}

}  // namespace

bool IsSingleChannel(int specification) {
  const int distance = specification - 81;
  return distance > 100 && distance % 100 != 0;
}

Holding FactoryHolding(int specification) {
  const bool single = IsSingleChannel(specification);
  Holding holding;
  Add(holding, kRange, 0);
  Add(holding, kRangeMeasured, 0);
  Add(holding, kTotal, 0);
  Add(holding, kProcess, 0);
  Add(holding, kDetails, kDetailsChannel1);
  Add(holding, kCommon, 0);
  for (int i = 0; i < (single ? 2 : 4); ++i) Add(holding, kOutput, kOutputs[i]);
  holding.limits[kOutputs[1]].high = 19;  // DO2 alone has the reserve function
  if (!single) {
    AddChannel2(holding);
    Add(holding, kRange, kChannel3);
    Add(holding, kTotal, kChannel3);
    Add(holding, kTwoChannels, 0);
    for (std::uint32_t base : kThermalSwitches) Add(holding, kThermalSwitch, base);
  }
  holding.memory.PutWord(0x0148, specification);
  return holding;
}

std::uint32_t ResolveHolding(std::uint32_t address) { return Resolve(kHoldingAliases, address); }
std::uint32_t ResolveInput(std::uint32_t address) { return Resolve(kInputAliases, address); }

}  // namespace sim

// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the serial settings that looks for meters on the chosen port: at each speed and parity, on
// RS232C the one meter there, on RS485 stations 1 to 31. A meter that was found fills the fields; Command1
// proves them as ever.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "meter/meter_search.h"
#include "shell/frm_cset.h"
#include "state/app.h"

namespace vlt {

// The stations that a search asks: on RS485 1 to 31, else the one meter at the other end.
std::vector<int> StationsToSearch(bool rs485);
// How a search on COM`port` ended, in the language in force.
std::string SearchEndText(const App& app, int port, const SearchResult& result);
// What is told of a meter that was found: speed, parity, station, unit system, display language.
inline constexpr std::size_t kFoundTexts = 5;
std::array<std::string, kFoundTexts> FoundMeterTexts(const App& app, const FoundMeter& meter);

class CSetSearch : public FormPart {
 public:
  CSetSearch(App& app, FrmCSet& dialog);

  void FrmInit() override;
  void Form_Load() override;
  void Form_Activate() override;
  const Control* StopButton() const override { return &cmdStop; }

  void cmdSearch_Click();
  void cmdStop_Click();
  void grdFound_Click();

  PushButton cmdSearch;
  PushButton cmdStop;
  ProgressBar pbSearch;
  StatusBar stbSearch;  // what the search does, or how it ended
  Grid grdFound;        // a row a meter

 private:
  SearchPlan Plan() const;
  bool Tell(const SearchPlan& plan, const SearchStep& step);
  void Add(const FoundMeter& meter);

  App& app_;
  FrmCSet& dialog_;
  std::vector<FoundMeter> found_;
  int searched_port_ = 0;  // where they were found
  bool stop_ = false;
};

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// The other pages: opened, read with everything ticked, and hidden again.
#include <string>

#include "tour/tour.h"

namespace vlt::test {
namespace {

struct Page {
  const char* button;
  const char* form;
  const char* read;
  int read_completed;  // text id
};

void Visit(Tour& tour, const Page& page) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", page.button);
  tour.ExpectSoon("the page's buttons", [&] { return hands.Enabled(page.form, page.read); });
  tour.Picture("MDIForm1", page.form);
  if (tour.Running().Logic().windows.Find(page.form)->Find("chkCheck") != nullptr) {
    hands.Tick(page.form, "chkCheck");
  }
  hands.Click(page.form, page.read);
  tour.ExpectStatus(page.read_completed);
  tour.Picture("MDIForm1", std::string(page.form) + "_read");
  hands.Click("MDIForm1", page.button);
}

void Range(Tour& tour) { Visit(tour, {"Command2", "Form2", "ReadParameter", 4022}); }
void Total(Tour& tour) { Visit(tour, {"Command3", "Form3", "ReadParameter", 4023}); }
void Status(Tour& tour) { Visit(tour, {"Command5", "Form4", "ReadParameter", 4024}); }
void Display(Tour& tour) { Visit(tour, {"Command4", "Form5", "ReadParameter", 4025}); }

// Read, then the test mode is begun and ended: while it is on the frame says so, on other pages as well.
void Maintenance(Tour& tour) {
  Hands& hands = tour.Operator();
  Visit(tour, {"Command11", "Form7", "ReadParameter", 4026});
  hands.Click("MDIForm1", "Command11");
  hands.Tick("Form7", "chkCheck", false);
  hands.Tick("Form7", "TEST_MODECheck");
  hands.Type("Form7", "INPUT_DATAText", "50");
  hands.Type("Form7", "TRACKING_TIMEText", "5");
  hands.Click("Form7", "SetParameter");
  tour.ExpectStatus(4006);
  tour.Picture("MDIForm1", "Form7_test");
  hands.Click("MDIForm1", "Command10");
  tour.ExpectSoon("the bar of the test state",
                  [&] { return hands.Widget("MDIForm1", "lblTestState").isVisible(); });
  tour.Picture("MDIForm1", "Form8_test");
  hands.Click("MDIForm1", "Command10");
  hands.Click("Form7", "ReleaseParameter");
  tour.ExpectStatus(1212);
  tour.ExpectSoon("no bar", [&] { return !hands.Widget("MDIForm1", "lblTestState").isVisible(); });
  hands.Click("MDIForm1", "Command11");
}

void Ras(Tour& tour) { Visit(tour, {"Command10", "Form8", "RASReadParameter", 4028}); }

constexpr Step kPageSteps[] = {
    {"range is read", Range},
    {"total is read", Total},
    {"status is read", Status},
    {"display is read", Display},
    {"maintenance is read and tests", Maintenance},
    {"RAS is read", Ras},
};

}  // namespace

std::span<const Step> PageSteps() { return kPageSteps; }

}  // namespace vlt::test

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
void Ras(Tour& tour) { Visit(tour, {"Command10", "Form8", "RASReadParameter", 4028}); }

constexpr Step kSteps[] = {
    {"range is read", Range},     {"total is read", Total}, {"status is read", Status},
    {"display is read", Display}, {"RAS is read", Ras},
};

}  // namespace

std::span<const Step> PageSteps() { return kSteps; }

}  // namespace vlt::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/pages.h"

#include <memory>

#include "pages/form10.h"
#include "pages/form11.h"
#include "pages/form2.h"
#include "pages/form3.h"
#include "pages/form4.h"
#include "pages/form5.h"
#include "pages/form6.h"
#include "pages/form7.h"

namespace vlt {
namespace {

template <class Page>
void Register(App& app, const char* name) {
  app.windows.Register(name, [&app] { return std::make_unique<Page>(app); });
}

}  // namespace

void RegisterPages(App& app) {
  Register<Form10>(app, "Form10");
  Register<Form11>(app, "Form11");
  Register<Form2>(app, "Form2");
  Register<Form3>(app, "Form3");
  Register<Form4>(app, "Form4");
  Register<Form5>(app, "Form5");
  Register<Form6>(app, "Form6");
  Register<Form7>(app, "Form7");
}

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/pages.h"

#include "pages/form10.h"
#include "pages/form11.h"
#include "pages/form2.h"
#include "pages/form3.h"
#include "pages/form4.h"
#include "pages/form5.h"
#include "pages/form6.h"
#include "pages/form7.h"
#include "state/register_window.h"

namespace vlt {

void RegisterPages(App& app) {
  RegisterWindow<Form10>(app, "Form10");
  RegisterWindow<Form11>(app, "Form11");
  RegisterWindow<Form2>(app, "Form2");
  RegisterWindow<Form3>(app, "Form3");
  RegisterWindow<Form4>(app, "Form4");
  RegisterWindow<Form5>(app, "Form5");
  RegisterWindow<Form6>(app, "Form6");
  RegisterWindow<Form7>(app, "Form7");
}

}  // namespace vlt

#include "pages/pages.h"

#include <memory>

#include "pages/form10.h"

namespace vlt {
namespace {

template <class Page>
void Register(App& app, const char* name) {
  app.windows.Register(name, [&app] { return std::make_unique<Page>(app); });
}

}  // namespace

void RegisterPages(App& app) { Register<Form10>(app, "Form10"); }

}  // namespace vlt

// SPDX-License-Identifier: GPL-3.0-or-later
// Charts: the plot, and over it the reading at the mouse and what a person can do with the view.
#include <QAction>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/binding_kinds.h"
#include "desktop/chart_plot.h"
#include "desktop/qt_text.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/whole_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"
#include "window/chart.h"

namespace vlt {
namespace {

class ChartBinding : public Binding {
 public:
  ChartBinding(Chart& chart, BindContext& context, QWidget* parent)
      : Binding(chart, context, new QWidget(parent)), chart_(chart) {
    auto* flow = new QVBoxLayout(Widget());
    flow->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QHBoxLayout;
    flow->addLayout(bar);
    plot_ = new ChartPlot(Widget());
    plot_->setObjectName("plot");
    flow->addWidget(plot_, 1);
    reading_ = new QLabel(Widget());
    reading_->setObjectName("reading");
    bar->addWidget(reading_, 1);
    zoom_ = AddTool(bar, text::kChartZoom, "zoom");
    follow_ = AddTool(bar, text::kChartFollow, "follow");
    export_ = AddTool(bar, text::kChartExport, "export");
    Connect();
  }

 private:
  // The same action on a button and in the menu of the plot.
  QAction* AddTool(QHBoxLayout* bar, int text_id, const char* name) {
    auto* action = new QAction(Context().text ? Context().text(text_id) : QString(), Widget());
    auto* button = new QToolButton(Widget());
    button->setObjectName(name);
    button->setDefaultAction(action);
    bar->addWidget(button);
    plot_->addAction(action);
    return action;
  }

  void Connect() {
    plot_->setContextMenuPolicy(Qt::ActionsContextMenu);
    zoom_->setCheckable(true);
    follow_->setCheckable(true);
    follow_->setChecked(true);
    QObject::connect(zoom_, &QAction::toggled, this, [this](bool on) { plot_->SetZoomMode(on); });
    QObject::connect(follow_, &QAction::triggered, this, [this] {
      plot_->Follow();
      follow_->setChecked(true);
    });
    QObject::connect(export_, &QAction::triggered, this, [this] { Export(); });
    plot_->on_following_changed = [this] { follow_->setChecked(plot_->Following()); };
    plot_->on_shown = [this] { MarkForRefresh(); };
    plot_->on_reading = [this](const std::optional<ChartPlot::Reading>& reading) { Tell(reading); };
  }

  void Tell(const std::optional<ChartPlot::Reading>& reading) {
    if (!reading) {
      reading_->clear();
      return;
    }
    std::string text = "x " + WithUnit(GeneralText(reading->x), chart_.X().title);
    for (const auto& [series, y] : reading->lines) {
      const bool alone = reading->lines.size() == 1;
      text += "    " + (alone ? "y" : chart_.SeriesName(series)) + " ";
      text += y ? WithUnit(chart_.ValueText(*y, series), chart_.Y().title) : "-";
    }
    reading_->setText(ToQt(text));
  }

  // The unit of an axis is what its title has in brackets, or all of the title.
  static std::string WithUnit(const std::string& number, const std::string& title) {
    const std::size_t bracket = title.rfind('[');
    const std::string unit = bracket == std::string::npos ? title : title.substr(bracket);
    return unit.empty() ? number : number + " " + unit;
  }

  // New points on a chart that nobody sees wait for on_shown; what else changes is seen.
  bool IsSeen() override {
    const bool only_points = told_ != chart_.Revision();
    told_ = chart_.Revision();
    return !only_points || plot_->isVisible();
  }

  // Nothing is drawn twice, and nothing that nobody sees.
  void PushState() override {
    if (!plot_->isVisible() || drawn_ == chart_.Revision()) return;
    drawn_ = chart_.Revision();
    plot_->Draw(chart_);
  }

  void Export() {
    if (Detached()) return;
    Platform& machine = chart_.Owner().Machine();
    const QByteArray bytes = plot_->Png();
    Gesture([&] {
      const auto path =
          machine.dialogs.AskSaveFile({.title = FromQt(Context().text(text::kChartExport)),
                                       .filter = FromQt(Context().text(text::kChartPicture)) + "|*.png",
                                       .folder = {},
                                       .name = {},
                                       .ask_before_overwrite = true});
      if (!path) return;
      const FileError error = WriteWhole(machine.files, *path,
                                         {bytes.constData(), static_cast<std::size_t>(bytes.size())}, false);
      if (error != FileError::kGood) TellNotWritten(machine, *path, error);
    });
  }

  void TellNotWritten(Platform& machine, const std::string& path, const FileError& error) {
    const auto words = [this](int id) { return FromQt(Context().text(id)); };
    machine.dialogs.Ask({.text = FormatText(words(text::kFileNotWritten),
                                            {LastComponent(path), words(NotWrittenReason(error))}),
                         .title = kProductTitle,
                         .icon = MessageIcon::kStop});
  }

  Chart& chart_;
  ChartPlot* plot_ = nullptr;
  QLabel* reading_ = nullptr;
  QAction* zoom_ = nullptr;
  QAction* follow_ = nullptr;
  QAction* export_ = nullptr;
  std::optional<std::uint64_t> drawn_;
  std::uint64_t told_ = 0;
};

}  // namespace

std::unique_ptr<Binding> BindChart(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<ChartBinding>(static_cast<Chart&>(control), context, parent);
}

}  // namespace vlt

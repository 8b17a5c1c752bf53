#include "ui/panels/LayoutPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <cmath>
#include <limits>

#include "app/VXLController.h"
#include "app/constantsliders.h"
#include "ui/multilevelstart.h"
#include "ui/panels/SliderField.h"

namespace ui {
namespace {

using app::LayoutConstant;

struct ConstantRow {
  LayoutConstant constant;
  const char* label;
  const char* name;
};

constexpr std::array<ConstantRow, 5> kConstants = {{
    {LayoutConstant::Attraction, "Attraction:", "attractionConstant"},
    {LayoutConstant::Repulsive, "Repulsion:", "repulsiveConstant"},
    {LayoutConstant::Viscosity, "Viscosity:", "viscosityConstant"},
    {LayoutConstant::Gravitational, "Gravitation:", "gravitationalConstant"},
    {LayoutConstant::PreferredDistance, "Distance:", "preferredDistance"},
}};

SliderField::Mapping constantMapping(LayoutConstant constant) {
  return {
      [constant](double c) {
        const double s = app::sliderPositionForConstant(constant, c);
        // A constant the slider cannot show (0 or less on a log slider) sits
        // at the slider's lower end.
        return std::isfinite(s) ? static_cast<int>(std::lround(s))
                                : std::numeric_limits<int>::min();
      },
      [constant](int s) { return app::constantForSliderPosition(constant, s); },
      &app::constantFieldText,
  };
}

}  // namespace

LayoutPanel::LayoutPanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), controller_(std::move(controller)) {
  new QFormLayout(this);
  addConstants();
  addRunControls();
  addBoxControls();
  addRepulsionControls();
}

void LayoutPanel::addConstants() {
  auto* form = static_cast<QFormLayout*>(layout());
  for (std::size_t k = 0; k < kConstants.size(); ++k) {
    const ConstantRow& row = kConstants[k];
    const app::SliderRange range = app::sliderRange(row.constant);
    auto* control = new SliderField(row.name, range.minimum, range.maximum,
                                    constantMapping(row.constant), this);
    connect(control, &SliderField::valueChosen, this, [this, constant = row.constant](float v) {
      app::setLayoutConstant(*controller_, constant, v);
    });
    form->addRow(row.label, control);
    constants_[k] = control;
  }
}

void LayoutPanel::addRunControls() {
  auto* form = static_cast<QFormLayout*>(layout());
  iterations_ = new QSpinBox(this);
  iterations_->setObjectName("iterations");
  iterations_->setRange(0, 100000);
  iterations_->setKeyboardTracking(false);
  connect(iterations_, &QSpinBox::valueChanged, this,
          [this](int steps) { controller_->setIterations(static_cast<std::uint64_t>(steps)); });
  form->addRow("Steps per frame:", iterations_);

  weightAsDistance_ = new QCheckBox("Weight as distance", this);
  weightAsDistance_->setObjectName("weightAsDistance");
  connect(weightAsDistance_, &QCheckBox::toggled, this,
          [this](bool on) { controller_->setWeightAsDistance(on); });
  form->addRow(weightAsDistance_);

  startPause_ = new QPushButton(this);
  startPause_->setObjectName("startPause");
  startPause_->setCheckable(true);
  connect(startPause_, &QPushButton::clicked, this, [this] {
    VXLNetworkView& view = *controller_->networkView();
    if (view.fAnimate()) {
      view.pause();
    } else {
      view.start();
    }
    showRunning();
  });
  form->addRow(startPause_);
}

void LayoutPanel::addBoxControls() {
  auto* form = static_cast<QFormLayout*>(layout());
  auto* sizes = new QHBoxLayout;
  const char* names[] = {"sizeX", "sizeY", "sizeZ"};
  for (std::size_t a = 0; a < 3; ++a) {
    auto* size = new QDoubleSpinBox(this);
    size->setObjectName(names[a]);
    size->setRange(0, 1e6);
    size->setDecimals(1);
    size->setValue(30);
    sizes->addWidget(size);
    boxSize_[a] = size;
  }
  form->addRow("Box X, Y, Z:", sizes);

  auto* randomize = new QPushButton("Randomize", this);
  randomize->setObjectName("randomize");
  auto* recentre = new QPushButton("Recentre", this);
  recentre->setObjectName("recentre");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(randomize);
  buttons->addWidget(recentre);
  form->addRow(buttons);

  const auto box = [this] {
    return std::array<float, 3>{static_cast<float>(boxSize_[0]->value()),
                                static_cast<float>(boxSize_[1]->value()),
                                static_cast<float>(boxSize_[2]->value())};
  };
  connect(randomize, &QPushButton::clicked, this, [this, box] {
    const auto [x, y, z] = box();
    controller_->randomizePositionsWithSizeX(x, y, z);
  });
  connect(recentre, &QPushButton::clicked, this, [this, box] {
    const auto [x, y, z] = box();
    controller_->resetCenter(x, y, z);
  });
}

// Repulsion method: the combo box's rows, in this order.
namespace {
enum RepulsionRow { kAutomatic, kExact, kApproximate };
}  // namespace

void LayoutPanel::addRepulsionControls() {
  auto* form = static_cast<QFormLayout*>(layout());
  repulsionMethod_ = new QComboBox(this);
  repulsionMethod_->setObjectName("repulsionMethod");
  repulsionMethod_->addItems({tr("Automatic"), tr("Exact"), tr("Approximate")});
  repulsionMethod_->setToolTip(
      tr("Automatic: exact below 20,000 vertices in the layout, approximate (\u03b8 0.8) above"));
  theta_ = new QDoubleSpinBox(this);
  theta_->setObjectName("barnesHutTheta");
  theta_->setRange(0.05, 2.0);
  theta_->setSingleStep(0.1);
  theta_->setDecimals(2);
  theta_->setValue(0.8);
  theta_->setPrefix(QStringLiteral("\u03b8 "));
  theta_->setKeyboardTracking(false);
  auto* row = new QHBoxLayout;
  row->addWidget(repulsionMethod_, 1);
  row->addWidget(theta_);
  form->addRow(tr("Repulsion method:"), row);
  repulsionStatus_ = new QLabel(this);
  repulsionStatus_->setObjectName("repulsionStatus");
  form->addRow(repulsionStatus_);

  const auto apply = [this] {
    switch (repulsionMethod_->currentIndex()) {
      case kAutomatic:
        controller_->setAutomaticRepulsion(true);
        break;
      case kExact:
        controller_->setBarnesHutTheta(0.0f);
        break;
      default:
        controller_->setBarnesHutTheta(static_cast<float>(theta_->value()));
        break;
    }
    showRepulsion();
  };
  connect(repulsionMethod_, &QComboBox::currentIndexChanged, this, apply);
  connect(theta_, &QDoubleSpinBox::valueChanged, this, [this, apply] {
    const QSignalBlocker block(repulsionMethod_);
    repulsionMethod_->setCurrentIndex(kApproximate);
    apply();
  });

  auto* multilevel = new QPushButton(tr("Multilevel Start"), this);
  multilevel->setObjectName("multilevelStart");
  multilevel->setToolTip(tr("Lay the network out on coarser versions of itself first"));
  connect(multilevel, &QPushButton::clicked, this,
          [this] { runMultilevelStart(window(), *controller_); });
  form->addRow(multilevel);
}

void LayoutPanel::showRepulsion() {
  const QSignalBlocker blockMethod(repulsionMethod_);
  const QSignalBlocker blockTheta(theta_);
  const float theta = controller_->barnesHutTheta();
  if (controller_->automaticRepulsion()) {
    repulsionMethod_->setCurrentIndex(kAutomatic);
  } else if (theta > 0.0f) {
    repulsionMethod_->setCurrentIndex(kApproximate);
    theta_->setValue(theta);
  } else {
    repulsionMethod_->setCurrentIndex(kExact);
  }
  repulsionStatus_->setText(QString::fromStdString(controller_->repulsionStatus()));
}

void LayoutPanel::refresh() {
  for (std::size_t k = 0; k < kConstants.size(); ++k) {
    constants_[k]->display(app::layoutConstant(*controller_, kConstants[k].constant));
  }
  {
    const QSignalBlocker block(iterations_);
    const auto steps = controller_->iterations();
    iterations_->setValue(steps > 100000u ? 100000 : static_cast<int>(steps));
  }
  {
    const QSignalBlocker block(weightAsDistance_);
    weightAsDistance_->setChecked(controller_->weightAsDistance());
  }
  showRepulsion();
  showRunning();
}

void LayoutPanel::showRunning() {
  const bool running = controller_->networkView()->fAnimate();
  const QSignalBlocker block(startPause_);
  startPause_->setChecked(running);
  startPause_->setText(running ? "Pause" : "Start");
}

}  // namespace ui

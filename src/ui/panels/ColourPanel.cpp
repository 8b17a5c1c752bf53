#include "ui/panels/ColourPanel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "app/VXLController.h"
#include "app/colourselectors.h"
#include "colour/hexcolour.h"
#include "quillo/log.h"
#include "ui/panels/SliderField.h"

namespace ui {
namespace {

using C = VXLController;

// The power slider covers coefficients 0.1 to 10 in tenths.
constexpr int kPowerSteps = 100;

SliderField::Mapping powerMapping() {
  return {
      [](double p) { return static_cast<int>(std::lround(p * 10.0)); },
      [](int step) { return static_cast<float>(step) / 10.0f; },
      [](double p) {
        char text[32];
        std::snprintf(text, sizeof text, "%g", p);
        return std::string(text);
      },
  };
}

QStringList qtTitles(const std::vector<std::string>& titles) {
  QStringList list;
  for (const std::string& title : titles) list << QString::fromStdString(title);
  return list;
}

// Shows `titles` (refilled only when they changed) with `selected` chosen.
void showTitles(QComboBox* box, const std::vector<std::string>& titles,
                const std::string& selected) {
  const QSignalBlocker block(box);
  const QStringList wanted = qtTitles(titles);
  QStringList shown;
  for (int i = 0; i < box->count(); ++i) shown << box->itemText(i);
  if (shown != wanted) {
    box->clear();
    box->addItems(wanted);
  }
  box->setCurrentText(QString::fromStdString(selected));
}

QColor qtColour(const colour::Rgba& c) {
  return QColor::fromRgbF(c.r, c.g, c.b);
}

colour::Rgba rgba(const QColor& c) {
  const QColor rgb = c.toRgb();
  return {rgb.redF(), rgb.greenF(), rgb.blueF(), 1.0f};
}

// The field's leading integer, 0 when there is none.
std::int64_t fieldInteger(const QLineEdit* field) {
  return std::strtoll(field->text().toUtf8().constData(), nullptr, 10);
}

QRadioButton* radio(const char* text, const char* name, QButtonGroup* group, int id,
                    QWidget* parent) {
  auto* button = new QRadioButton(text, parent);
  button->setObjectName(name);
  group->addButton(button, id);
  return button;
}

QWidget* row(std::initializer_list<QWidget*> widgets, QWidget* parent) {
  auto* holder = new QWidget(parent);
  auto* layout = new QHBoxLayout(holder);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* widget : widgets) layout->addWidget(widget);
  layout->addStretch(1);
  return holder;
}

}  // namespace

ColourPanel::ColourPanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent), controller_(std::move(controller)) {
  new QFormLayout(this);
  addScalarControls();
  addCategoryControls();
  // An unreachable colour file is reported in a message box over the window.
  controller_->setAlertHandler([this](const std::string& message) {
    QMessageBox::warning(window(), tr("Colour file"), QString::fromStdString(message));
  });
}

ColourPanel::~ColourPanel() {
  // The controller outlives its window: scripts keep alerting through the log.
  controller_->setAlertHandler(nullptr);
}

void ColourPanel::addScalarControls() {
  auto* form = static_cast<QFormLayout*>(layout());
  const auto comboBox = [this](const char* name) {
    auto* box = new QComboBox(this);
    box->setObjectName(name);
    return box;
  };

  property_ = comboBox("colorSelector");
  connect(property_, &QComboBox::activated, this, [this](int index) {
    controller_->selectColorProperty(property_->itemText(index).toStdString());
  });
  form->addRow(tr("Property:"), property_);

  function_ = comboBox("colorFunctionSelector");
  function_->addItems(qtTitles(C::colorFunctionTitles()));
  connect(function_, &QComboBox::activated, this, [this](int index) {
    controller_->selectColorFunction(function_->itemText(index).toStdString());
  });
  form->addRow(tr("Function:"), function_);

  power_ = new SliderField("colorPower", 1, kPowerSteps, powerMapping(), this);
  connect(power_, &SliderField::valueChosen, this,
          [this](float value) { controller_->setPowerCoefficient(value); });
  form->addRow(tr("Power:"), power_);

  map_ = comboBox("colorMapSelector");
  map_->addItems(qtTitles(C::colorMapTitles()));
  connect(map_, &QComboBox::activated, this, [this](int index) {
    const std::string title = map_->itemText(index).toStdString();
    quillo::logLine("OI: " + title);
    controller_->selectColorMap(title);
  });
  form->addRow(tr("Map:"), map_);

  invert_ = new QCheckBox(tr("Invert"), this);
  invert_->setObjectName("colorInvertColorMapCheck");
  connect(invert_, &QCheckBox::toggled, this,
          [this](bool on) { controller_->setInvertColorMap(on); });

  for (int i = 0; i < 3; ++i) {
    auto* well = new QToolButton(this);
    well->setObjectName(QString("colorGradient%1").arg(i));
    well->setIconSize(QSize(28, 14));
    connect(well, &QToolButton::clicked, this, [this, i] { chooseCustomColour(i); });
    wells_[static_cast<std::size_t>(i)] = well;
  }
  form->addRow(tr("Colours:"), row({wells_[0], wells_[1], wells_[2], invert_}, this));
}

void ColourPanel::addCategoryControls() {
  auto* form = static_cast<QFormLayout*>(layout());
  sortProperty_ = new QComboBox(this);
  sortProperty_->setObjectName("sortPropertySelector");
  connect(sortProperty_, &QComboBox::activated, this, [this](int index) {
    controller_->changeSortProperty(sortProperty_->itemText(index).toStdString());
  });
  form->addRow(tr("Sort by:"), sortProperty_);

  // The buttons for "ascending" and "average" carry the non-zero ids.
  sortOrder_ = new QButtonGroup(this);
  auto* ascending = radio("Ascending", "ascendingSortButton", sortOrder_, 1, this);
  auto* descending = radio("Descending", "descendingSortButton", sortOrder_, 0, this);
  connect(sortOrder_, &QButtonGroup::idClicked, this, [this](int id) {
    controller_->changeSortOrder(id != 0 ? C::SortOrder::Ascending : C::SortOrder::Descending);
  });
  form->addRow(tr("Order:"), row({ascending, descending}, this));
  sortMode_ = new QButtonGroup(this);
  auto* average = radio("Average", "averageSortModelButton", sortMode_, 1, this);
  auto* total = radio("Total", "totalSumSortModelButton", sortMode_, 0, this);
  connect(sortMode_, &QButtonGroup::idClicked, this, [this](int id) {
    controller_->changeSortModel(id != 0 ? C::SortMode::Average : C::SortMode::TotalSum);
  });
  form->addRow(tr("Measure:"), row({average, total}, this));

  limit_ = new QCheckBox(tr("Limit"), this);
  limit_->setObjectName("propertyColorLimitCheck");
  limitField_ = new QLineEdit(this);
  limitField_->setObjectName("propertyColorLimitField");
  limitField_->setMaximumWidth(50);
  limitSlider_ = new QSlider(Qt::Horizontal, this);
  limitSlider_->setObjectName("propertyColorLimitSlider");
  limitSlider_->setRange(0, kLimitSliderMaximum);
  hide_ = new QCheckBox(tr("Hide the others"), this);
  hide_->setObjectName("propertyHideNonIndexedCheck");
  connect(limit_, &QCheckBox::toggled, this, [this] { changeColorProperties(LimitSender::Other); });
  connect(hide_, &QCheckBox::toggled, this, [this] { changeColorProperties(LimitSender::Other); });
  connect(limitSlider_, &QSlider::valueChanged, this,
          [this] { changeColorProperties(LimitSender::Other); });
  connect(limitField_, &QLineEdit::editingFinished, this, [this] {
    if (!limitField_->isModified()) return;
    limitField_->setModified(false);
    changeColorProperties(LimitSender::Field);
  });
  form->addRow(row({limit_, limitField_}, this));
  form->addRow(limitSlider_);
  form->addRow(hide_);

  open_ = new QPushButton(tr("Open colour file..."), this);
  open_->setObjectName("colorsOpenButton");
  connect(open_, &QPushButton::clicked, this, &ColourPanel::openColourFile);
  form->addRow(open_);
}

void ColourPanel::changeColorProperties(LimitSender sender) {
  {
    const QSignalBlocker sliderBlock(limitSlider_);
    if (sender == LimitSender::Field) {
      limitSlider_->setValue(static_cast<int>(fieldInteger(limitField_)));
    } else {
      limitField_->setText(QString::number(limitSlider_->value()));
    }
  }
  controller_->changeColorProperties(limit_->isChecked() ? C::LimitSwitch::On : C::LimitSwitch::Off,
                                     fieldInteger(limitField_),
                                     hide_->isChecked() ? C::HideSwitch::On : C::HideSwitch::Off);
}

void ColourPanel::chooseCustomColour(int well) {
  const colour::Rgba held = well == 0   ? controller_->colorCustom0()
                            : well == 1 ? controller_->colorCustom1()
                                        : controller_->colorCustom2();
  auto* dialog = new QColorDialog(qtColour(held), this);
  dialog->setObjectName("customColourDialog");
  dialog->setWindowModality(Qt::WindowModal);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QColorDialog::colorSelected, this, [this, well](const QColor& chosen) {
    colour::Rgba colours[3] = {controller_->colorCustom0(), controller_->colorCustom1(),
                               controller_->colorCustom2()};
    colours[well] = rgba(chosen);
    controller_->colorGradientChanged(colours[0], colours[1], colours[2]);
  });
  dialog->open();
}

void ColourPanel::openColourFile() {
  const std::filesystem::path folder = controller_->currentFolder();
  auto* dialog =
      new QFileDialog(window(), tr("Open colour file"),
                      folder.empty() ? QDir::homePath() : QString::fromStdString(folder.string()));
  dialog->setObjectName("colourFileDialog");
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  dialog->setWindowModality(Qt::WindowModal);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) {
    const std::filesystem::path path = file.toStdString();
    if (!controller_->openColorsFromURL(path)) {
      quillo::logLine("Failed opening file: " + path.string());
    }
  });
  dialog->open();
}

void ColourPanel::refresh() {
  const C& c = *controller_;
  showTitles(property_, c.colorPropertyTitles(), c.selectedColorProperty());
  showTitles(function_, C::colorFunctionTitles(), c.selectedColorFunction());
  showTitles(map_, C::colorMapTitles(), c.selectedColorMap());

  const bool power = c.selectedColorFunction() == "Power";
  power_->setSliderEnabled(power);
  power_->field()->setEnabled(power);
  power_->display(c.powerCoefficient());
  {
    const QSignalBlocker block(invert_);
    invert_->setChecked(c.invertColorMap());
  }
  const int used = app::customColoursUsed(c.selectedColorMap());
  const colour::Rgba customs[3] = {c.colorCustom0(), c.colorCustom1(), c.colorCustom2()};
  for (int i = 0; i < 3; ++i) {
    QToolButton* well = wells_[static_cast<std::size_t>(i)];
    QPixmap swatch(well->iconSize());
    swatch.fill(qtColour(customs[i]));
    well->setIcon(QIcon(swatch));
    well->setToolTip(QString::fromStdString(colour::hexadecimalValue(customs[i])));
    well->setEnabled(i < used);
  }

  showTitles(sortProperty_, c.sortPropertyTitles(), c.sortPropertyTitle());
  sortOrder_->button(c.isSortAscending() ? 1 : 0)->setChecked(true);
  sortMode_->button(c.isSortModeAverage() ? 1 : 0)->setChecked(true);

  const std::int64_t limit = c.indexedColorLimit();
  const bool on = limit > 0;
  const QSignalBlocker checkBlock(limit_), hideBlock(hide_), sliderBlock(limitSlider_);
  limit_->setChecked(on);
  hide_->setChecked(c.hideNonIndexItems());
  // While the limit is off the field keeps the value it will be switched on
  // with; the controller's remembered limit shows when it has one.
  if (limit != 0) {
    const std::int64_t shown = limit < 0 ? -limit : limit;
    limitField_->setText(QString::number(shown));
    limitSlider_->setValue(static_cast<int>(std::min<std::int64_t>(shown, kLimitSliderMaximum)));
  }
  for (QWidget* control : {static_cast<QWidget*>(limitField_), static_cast<QWidget*>(limitSlider_),
                           static_cast<QWidget*>(hide_)}) {
    control->setEnabled(on);
  }
}

}  // namespace ui

#include "ui/panels/GeneratorPanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "app/VXLController.h"

namespace ui {
namespace {

template <class W>
W* named(W* widget, const char* name) {
  widget->setObjectName(name);
  return widget;
}

}  // namespace

GeneratorPanel::GeneratorPanel(std::shared_ptr<VXLController> controller, QWidget* parent)
    : QWidget(parent),
      controller_(std::move(controller)),
      type_(named(new QComboBox(this), "generatorType")),
      verticesLabel_(named(new QLabel(this), "verticesLabel")),
      degreeLabel_(named(new QLabel(this), "degreeLabel")),
      weightedLabel_(named(new QLabel("Weighted:", this), "weightedLabel")),
      directedLabel_(named(new QLabel("Directed:", this), "directedLabel")),
      vertices_(named(new QLineEdit(this), "verticesField")),
      degree_(named(new QLineEdit(this), "degreeField")),
      weighted_(named(new QCheckBox(this), "weightedCheck")),
      directed_(named(new QCheckBox(this), "directedCheck")) {
  type_->addItem("Random", 0);
  type_->addItem("Barabasi", 1);
  auto* generate = named(new QPushButton("Generate", this), "generate");

  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel("Type:", this), 0, 0);
  grid->addWidget(type_, 0, 1);
  grid->addWidget(verticesLabel_, 1, 0);
  grid->addWidget(vertices_, 1, 1);
  grid->addWidget(degreeLabel_, 2, 0);
  grid->addWidget(degree_, 2, 1);
  grid->addWidget(weightedLabel_, 3, 0);
  grid->addWidget(weighted_, 3, 1);
  grid->addWidget(directedLabel_, 4, 0);
  grid->addWidget(directed_, 4, 1);
  grid->addWidget(generate, 5, 0, 1, 2);

  // The controller reads the fields as typed when it generates.
  connect(type_, &QComboBox::activated, this, [this](int index) {
    controller_->generateNetworkChangeType(type_->itemData(index).toInt());
  });
  connect(vertices_, &QLineEdit::textEdited, this, [this](const QString& text) {
    controller_->generator().verticesText = text.toStdString();
  });
  connect(degree_, &QLineEdit::textEdited, this, [this](const QString& text) {
    controller_->generator().degreeText = text.toStdString();
  });
  connect(generate, &QPushButton::clicked, this, [this] { controller_->generateNetwork(); });
}

void GeneratorPanel::refresh() {
  const VXLController::Generator& g = controller_->generator();
  const QSignalBlocker blockType(type_);
  const int index = type_->findData(g.typeTag);
  if (index >= 0) type_->setCurrentIndex(index);
  verticesLabel_->setText(QString::fromStdString(g.verticesLabel));
  degreeLabel_->setText(QString::fromStdString(g.degreeLabel));
  verticesLabel_->setVisible(g.parameterLabelsVisible);
  degreeLabel_->setVisible(g.parameterLabelsVisible);
  for (QWidget* extra :
       std::initializer_list<QWidget*>{weightedLabel_, directedLabel_, weighted_, directed_}) {
    extra->setVisible(g.extraControlsVisible);
  }
  // A field being typed in keeps its text (the controller already has it).
  for (auto [field, text] : {std::pair{vertices_, &g.verticesText}, {degree_, &g.degreeText}}) {
    const QString shown = QString::fromStdString(*text);
    if (field->text() != shown) {
      const QSignalBlocker block(field);
      field->setText(shown);
    }
  }
}

}  // namespace ui

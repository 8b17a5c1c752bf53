#include "ui/PathControl.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayoutItem>
#include <QToolButton>

namespace ui {

QStringList pathComponents(const QString& path) {
  QStringList paths;
  if (path.isEmpty()) return paths;
  const QString clean = QDir::cleanPath(path);
  paths << QStringLiteral("/");
  QString prefix;
  for (const QString& part : clean.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
    prefix += QLatin1Char('/') + part;
    paths << prefix;
  }
  return paths;
}

PathControl::PathControl(QWidget* parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
  row_->setContentsMargins(0, 0, 0, 0);
  row_->setSpacing(2);
  row_->addStretch(1);
}

void PathControl::setPath(const QString& path) {
  path_ = path;
  componentPaths_ = pathComponents(path);
  while (row_->count() > 1) {
    QLayoutItem* item = row_->takeAt(0);
    delete item->widget();
    delete item;
  }
  int position = 0;
  for (int i = 0; i < componentPaths_.size(); ++i) {
    const QString& component = componentPaths_[i];
    if (i > 1) row_->insertWidget(position++, new QLabel(QStringLiteral("\u203A"), this));
    auto* button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setText(i == 0 ? component : component.section(QLatin1Char('/'), -1));
    button->setToolTip(component);
    connect(button, &QToolButton::clicked, this, [this, i] { clickComponent(i); });
    row_->insertWidget(position++, button);
  }
}

void PathControl::clickComponent(int index) {
  if (index < 0 || index >= componentPaths_.size()) return;
  clickedPath_ = componentPaths_[index];
  emit componentClicked();
}

}  // namespace ui

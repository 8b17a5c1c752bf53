#include "ui/panels/CollapsibleSection.h"

#include <QToolButton>
#include <QVBoxLayout>

namespace ui {

CollapsibleSection::CollapsibleSection(const QString& title, QWidget* body, QWidget* parent)
    : QWidget(parent), header_(new QToolButton(this)), body_(body) {
  header_->setText(title);
  header_->setCheckable(true);
  header_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  header_->setAutoRaise(true);
  QFont bold = header_->font();
  bold.setBold(true);
  header_->setFont(bold);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  column->addWidget(header_);
  column->addWidget(body_);
  connect(header_, &QToolButton::toggled, this, &CollapsibleSection::setOpen);
  setOpen(true);
}

void CollapsibleSection::setOpen(bool open) {
  header_->setChecked(open);
  header_->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
  body_->setVisible(open);
}

bool CollapsibleSection::isOpen() const {
  return header_->isChecked();
}

}  // namespace ui

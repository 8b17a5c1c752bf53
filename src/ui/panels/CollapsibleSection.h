#pragma once
// A titled section of the side panel whose body folds away under its title.
#include <QWidget>

class QToolButton;

namespace ui {

class CollapsibleSection : public QWidget {
  Q_OBJECT

 public:
  // Takes `body` as its own; the section starts open.
  CollapsibleSection(const QString& title, QWidget* body, QWidget* parent = nullptr);

  void setOpen(bool open);
  bool isOpen() const;

 private:
  QToolButton* header_;
  QWidget* body_;
};

}  // namespace ui

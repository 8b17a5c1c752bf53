#pragma once
// A file's location as a row of buttons, one per path component ("/",
// then each folder, then the file). Clicking one remembers its path as the
// clicked component and tells whoever listens.
#include <QString>
#include <QStringList>
#include <QWidget>

class QHBoxLayout;

namespace ui {

class PathControl : public QWidget {
  Q_OBJECT

 public:
  explicit PathControl(QWidget* parent = nullptr);

  // Shows an absolute path; an empty one shows nothing.
  void setPath(const QString& path);
  const QString& path() const { return path_; }
  // The path up to and including each shown component, from the root on.
  const QStringList& componentPaths() const { return componentPaths_; }
  // The component clicked last (empty before any click).
  const QString& clickedPath() const { return clickedPath_; }
  // Clicks the component at `index` as the user would.
  void clickComponent(int index);

 signals:
  void componentClicked();

 private:
  QHBoxLayout* row_ = nullptr;
  QString path_;
  QStringList componentPaths_;
  QString clickedPath_;
};

// The paths of an absolute path's components: "/a/b.py" gives "/", "/a"
// and "/a/b.py".
QStringList pathComponents(const QString& path);

}  // namespace ui

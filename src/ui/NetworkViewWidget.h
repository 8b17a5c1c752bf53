#pragma once
// The window's host of the network view: a QOpenGLWidget that asks for the
// view's GL format, presents the view's frames in paintGL (a slow frame is
// drawn over several paints while the window keeps answering), runs the
// 60 Hz tick and turns
// Qt's mouse, wheel and key events into the view's calls in backing pixels.
// The layout is paused when the widget is made; a new context, size or
// screen reaches the view's update.
#include <QOpenGLWidget>
#include <QTimer>
#include <array>
#include <cstdint>
#include <memory>

#include "render/VXLNetworkView.h"

class QAction;

namespace ui {

class NetworkViewWidget : public QOpenGLWidget {
  Q_OBJECT

 public:
  // Hosts `view`, or a new view when none is given.
  explicit NetworkViewWidget(std::shared_ptr<VXLNetworkView> view = nullptr,
                             QWidget* parent = nullptr);
  ~NetworkViewWidget() override;

  VXLNetworkView& view() { return *view_; }
  const std::shared_ptr<VXLNetworkView>& sharedView() const { return view_; }

  // Start/Pause: checkable, checked while the layout runs, on the Space key
  // while the widget (or the window holding the action) has focus.
  QAction* startPauseAction() const { return startPause_; }

  // The widget's size in device pixels (what the view draws into).
  QSize pixelSize() const;

 public slots:
  void start();
  void pause();
  void toggleStartPause();

 signals:
  void runningChanged(bool running);

 protected:
  void initializeGL() override;
  void paintGL() override;
  // Tells the view of the change (its update); drawRect sizes the viewport
  // and camera at the next frame.
  void resizeGL(int width, int height) override;

  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void tick();
  void showRunning();
  // A widget position in the view's backing pixels.
  std::array<double, 2> backing(QPointF position) const;
  // A pick of the vertex under a point, in this widget's context.
  std::uint64_t pick(double x, double y);

  std::shared_ptr<VXLNetworkView> view_;
  QMetaObject::Connection contextEnds_;
  QTimer timer_;
  QAction* startPause_ = nullptr;
};

}  // namespace ui

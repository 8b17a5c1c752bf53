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
#include <optional>
#include <vector>

#include "render/VXLNetworkView.h"

class QAction;
class QRubberBand;

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

  // How many frames paintGL has drawn (an idle window draws none).
  std::uint64_t paintCount() const { return paints_; }

 public slots:
  void start();
  void pause();
  void toggleStartPause();

 signals:
  void runningChanged(bool running);
  // Shift+drag drew a box: the shown vertices inside it.
  void boxSelected(const std::vector<std::uint64_t>& vertices);
  // A click changed the view's selection; `before` is what was selected.
  void selectionClicked(const std::vector<std::uint64_t>& before);

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

  // Wheel steps and drag points that arrived since the last frame, applied
  // together at the next paint (or before a press or release).
  struct PendingInput {
    double wheelX = 0, wheelY = 0;
    Modifiers wheelModifiers;
    bool wheel = false;
    std::optional<std::array<double, 2>> dragTo;
  };
  void applyPendingInput();
  // Asks for a frame when the view changed since the last one, or a frame
  // is still being drawn in pieces, or the picture moves by itself.
  void requestFrameIfChanged();
  // The view's mouseUp, telling selectionClicked when it changed the selection.
  void releaseInView(double x, double y);

  std::shared_ptr<VXLNetworkView> view_;
  PendingInput pending_;
  // The Shift+drag box, from its press point (widget coordinates).
  QRubberBand* band_ = nullptr;
  std::optional<QPoint> bandStart_;
  std::uint64_t paintedChange_ = ~std::uint64_t{0};
  std::uint64_t paints_ = 0;
  QMetaObject::Connection contextEnds_;
  QTimer timer_;
  QAction* startPause_ = nullptr;
};

}  // namespace ui

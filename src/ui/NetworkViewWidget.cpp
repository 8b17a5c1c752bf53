#include "ui/NetworkViewWidget.h"

#include <QAction>
#include <QApplication>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QRubberBand>
#include <QWheelEvent>
#include <chrono>
#include <utility>

#include "ui/glformat.h"
#include "ui/viewinput.h"

namespace ui {

namespace {

// 1/60 s, as close as the timer's whole milliseconds allow.
constexpr std::chrono::milliseconds kTickInterval{1000 / 60};
// The square around a click searched for a vertex, in backing pixels.
constexpr double kPickRegion = 3.0;

}  // namespace

NetworkViewWidget::NetworkViewWidget(std::shared_ptr<VXLNetworkView> view, QWidget* parent)
    : QOpenGLWidget(parent), view_(view ? std::move(view) : std::make_shared<VXLNetworkView>()) {
  setFormat(viewSurfaceFormat());
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);  // the view hears moves without a button held
  view_->setPicker([this](double x, double y) { return pick(x, y); });
  // An export started outside a frame (a menu, a script) draws with this
  // widget's context, where the view's display lists live.
  view_->setContextHost({[this] {
                           makeCurrent();
                           return context() != nullptr;
                         },
                         [this] { doneCurrent(); }});

  startPause_ = new QAction(tr("Start/Pause"), this);
  startPause_->setCheckable(true);
  startPause_->setShortcut(Qt::Key_Space);
  startPause_->setShortcutContext(Qt::WindowShortcut);
  addAction(startPause_);
  // triggered (not toggled): the check mark follows the view, not the click.
  connect(startPause_, &QAction::triggered, this, [this] { toggleStartPause(); });

  timer_.setTimerType(Qt::PreciseTimer);
  timer_.setInterval(kTickInterval);
  connect(&timer_, &QTimer::timeout, this, &NetworkViewWidget::tick);
  timer_.start();
  // A new window opens with its layout paused: making the tick clears the
  // running state, and the controller's reset to defaults (run before the
  // window is made) leaves it alone. Start/Pause (Space) starts it.
  view_->pause();
  showRunning();
}

NetworkViewWidget::~NetworkViewWidget() {
  // The view may outlive the widget; its picks must not reach this context.
  // (Its GL objects die with the context; its last owner stops the layout.)
  view_->setPicker(nullptr);
  view_->setContextHost({});
  disconnect(contextEnds_);
  if (context()) {
    makeCurrent();
    view_->releasePresentation();
    doneCurrent();
  }
}

QSize NetworkViewWidget::pixelSize() const {
  return toDevicePixels(size(), devicePixelRatioF());
}

void NetworkViewWidget::start() {
  view_->start();
  showRunning();
}

void NetworkViewWidget::pause() {
  view_->pause();
  showRunning();
}

void NetworkViewWidget::toggleStartPause() {
  view_->toggleStartPause();
  showRunning();
}

void NetworkViewWidget::showRunning() {
  const bool running = view_->fAnimate();
  startPause_->setChecked(running);
  emit runningChanged(running);
}

void NetworkViewWidget::initializeGL() {
  view_->initCommands();
  // The context goes when the widget moves to another window: the view's
  // framebuffers go with it (a new context calls initializeGL again).
  disconnect(contextEnds_);
  contextEnds_ = connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] {
    makeCurrent();
    view_->releasePresentation();
    doneCurrent();
  });
  // A window shows the text overlays (message, vertex details, camera when
  // asked for); off-screen snapshots show the scene alone.
  view_->setFInfo(true);
  // A new context (the first, or another window's): the message, the
  // information text and the capability report follow it.
  view_->update();
}

void NetworkViewWidget::resizeGL(int /*width*/, int /*height*/) {
  // The size or the screen changed. drawRect sizes the viewport and camera
  // at the next frame; the view's update refreshes its texts.
  view_->update();
}

void NetworkViewWidget::paintGL() {
  // Qt has bound the widget's framebuffer; the view shows its frame there.
  // A frame still in the making goes on at the next paint, which the tick
  // asks for.
  applyPendingInput();
  paintedChange_ = view_->changeCount();
  ++paints_;
  const QSize pixels = pixelSize();
  view_->presentFrame(pixels.width(), pixels.height());
}

void NetworkViewWidget::applyPendingInput() {
  PendingInput input = std::exchange(pending_, PendingInput{});
  if (input.dragTo) view_->mouseDragged((*input.dragTo)[0], (*input.dragTo)[1]);
  if (input.wheel) view_->scrollWheel(input.wheelX, input.wheelY, 0.0, input.wheelModifiers);
}

void NetworkViewWidget::requestFrameIfChanged() {
  if (view_->changeCount() != paintedChange_ || view_->framePending() || view_->shader() ||
      view_->overlaysFading()) {
    update();
  }
}

void NetworkViewWidget::tick() {
  // The view's tick does a frame's preparation and starts a layout batch;
  // the frame itself is drawn once, in the paintGL that update() schedules
  // (updates coalesce, so a slow frame is skipped rather than queued).
  view_->animationTimer();
  requestFrameIfChanged();
}

std::array<double, 2> NetworkViewWidget::backing(QPointF position) const {
  const BackingPoint p = toBackingPixels(position, devicePixelRatioF(), pixelSize().height());
  return {p.x, p.y};
}

std::uint64_t NetworkViewWidget::pick(double x, double y) {
  // Picking draws in selection mode, which needs this widget's context.
  makeCurrent();
  const std::uint64_t picked = view_->pickAt(x, y, kPickRegion, kPickRegion);
  doneCurrent();
  return picked;
}

void NetworkViewWidget::mousePressEvent(QMouseEvent* event) {
  applyPendingInput();
  if (event->button() == Qt::LeftButton && event->modifiers() == Qt::ShiftModifier) {
    // A box or, without moving, a Shift+click (decided at the release).
    bandStart_ = event->position().toPoint();
    return;
  }
  const auto [x, y] = backing(event->position());
  switch (event->button()) {
    case Qt::LeftButton:
      view_->mouseDown(x, y, toViewModifiers(event->modifiers()));
      break;
    case Qt::RightButton:
      view_->rightMouseDown(x, y);
      break;
    default:
      view_->otherMouseDown(x, y);
      break;
  }
  update();
}

void NetworkViewWidget::mouseMoveEvent(QMouseEvent* event) {
  const auto [x, y] = backing(event->position());
  if (bandStart_) {
    if (!band_) band_ = new QRubberBand(QRubberBand::Rectangle, this);
    band_->setGeometry(QRect(*bandStart_, event->position().toPoint()).normalized());
    band_->show();
    return;
  }
  if (event->buttons() == Qt::NoButton) {
    view_->mouseMoved(x, y);
    return;
  }
  // Only the last point of a drag matters: the drag is applied at the paint.
  pending_.dragTo = std::array<double, 2>{x, y};
  update();
}

void NetworkViewWidget::mouseReleaseEvent(QMouseEvent* event) {
  applyPendingInput();
  const auto [x, y] = backing(event->position());
  if (bandStart_) {
    const QPoint start = *bandStart_;
    bandStart_.reset();
    if (band_) band_->hide();
    if ((event->position().toPoint() - start).manhattanLength() <
        QApplication::startDragDistance()) {
      view_->mouseDown(x, y, Modifier::Shift);  // a Shift+click toggles the vertex
      releaseInView(x, y);
    } else {
      const auto [x0, y0] = backing(QPointF(start));
      emit boxSelected(view_->verticesInRectangle(x0, y0, x, y));
    }
    update();
    return;
  }
  if (event->button() == Qt::LeftButton) {
    releaseInView(x, y);
  } else {
    view_->mouseUp(x, y);
  }
  update();
}

void NetworkViewWidget::wheelEvent(QWheelEvent* event) {
  const WheelSteps steps = toWheelSteps(event->angleDelta());
  const Modifiers modifiers = toViewModifiers(event->modifiers());
  // Steps add up until the next paint; a change of modifier applies them first.
  if (pending_.wheel && pending_.wheelModifiers.bits != modifiers.bits) applyPendingInput();
  pending_.wheel = true;
  pending_.wheelModifiers = modifiers;
  pending_.wheelX += steps.dx;
  pending_.wheelY += steps.dy;
  event->accept();
  update();
}

void NetworkViewWidget::releaseInView(double x, double y) {
  const std::uint64_t changes = view_->selectionChangeCount();
  const std::vector<std::uint64_t> before = view_->selectedIndices();
  view_->mouseUp(x, y);
  if (view_->selectionChangeCount() != changes) emit selectionClicked(before);
}

void NetworkViewWidget::enterEvent(QEnterEvent* event) {
  const auto [x, y] = backing(event->position());
  view_->mouseEntered(x, y);
}

void NetworkViewWidget::leaveEvent(QEvent* /*event*/) {
  view_->mouseExited();
}

void NetworkViewWidget::keyPressEvent(QKeyEvent* event) {
  // Space reaches the Start/Pause action before it gets here.
  const char32_t character = firstCharacter(event->text());
  if (character == 0) {
    QOpenGLWidget::keyPressEvent(event);
    return;
  }
  view_->keyDown(character);
  update();
}

}  // namespace ui

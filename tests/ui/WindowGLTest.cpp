// The real document window under a display: picture, layout, input, counts.
#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <vector>

#include "application.h"
#include "render/scenecolours.h"
#include "ui/DocumentWindow.h"
#include "ui/NetworkViewWidget.h"

namespace {

using uitest::processEventsUntil;

std::vector<Vec3d> positionsOf(const VXLNetworkView& view) {
  const auto positions = view.positions();
  std::vector<Vec3d> out;
  for (std::uint64_t i = 0; i < positions->count(); ++i) out.push_back(positions->vectorAtIndex(i));
  return out;
}

// How many vertices moved by more than a small distance.
std::size_t movedCount(const std::vector<Vec3d>& before, const std::vector<Vec3d>& after) {
  std::size_t moved = 0;
  for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
    const double d = std::hypot(after[i][0] - before[i][0], after[i][1] - before[i][1],
                                after[i][2] - before[i][2]);
    if (d > 1e-3) ++moved;
  }
  return moved;
}

// The share of pixels off the white background, and the share of those in
// the default vertex colour's family: its channels in the same order and
// with the same spread, however lit.
std::pair<double, double> census(const QImage& image) {
  constexpr scene::Rgb c = scene::kDefaultVertexColour;
  std::size_t drawn = 0, family = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb p = image.pixel(x, y);
      const double r = qRed(p), g = qGreen(p), b = qBlue(p);
      if (r == 255 && g == 255 && b == 255) continue;
      ++drawn;
      const double where = (g - b) / (r - b);  // where green sits between blue and red
      if (r > g && g > b && r - b >= 30 && std::abs(where - (c.g - c.b) / (c.r - c.b)) < 0.2) {
        ++family;
      }
    }
  }
  const double total = static_cast<double>(image.width() * image.height());
  return {static_cast<double>(drawn) / total,
          drawn > 0 ? static_cast<double>(family) / static_cast<double>(drawn) : 0.0};
}

class Window : public ::testing::Test {
 protected:
  void SetUp() override {
    uitest::ensureApplication();
    network_ = QLONetwork::initRandomNetworkWithNumberOfVertices(600, 4.0);
    document_ = std::make_shared<QLOComplexNetwork>();
    uitest::documents().addDocument(document_);
    window_ = std::make_unique<ui::DocumentWindow>(document_, uitest::documents());
    window_->controller().setNetwork(network_);
    // Uncoloured, so that the frame shows the default vertex colour.
    window_->controller().selectColorProperty("None");
    window_->setSidePanelShown(false);
    window_->resize(640, 480);
    window_->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }
  void TearDown() override {
    window_.reset();
    document_.reset();
  }

  ui::NetworkViewWidget& widget() { return *window_->networkView(); }
  VXLNetworkView& view() { return widget().view(); }

  std::shared_ptr<QLONetwork> network_;
  QLOComplexNetwork::Ptr document_;
  std::unique_ptr<ui::DocumentWindow> window_;
};

TEST_F(Window, ShowsTheNetworkPausedLaysItOutOnceStartedAndSpaceOrTheMenuPause) {
  EXPECT_FALSE(view().fAnimate()) << "a new window opens with its layout paused";
  ASSERT_TRUE(processEventsUntil([&] { return view().camera().viewWidth > 0; }));
  const QImage first = widget().grabFramebuffer();
  const std::vector<Vec3d> start = positionsOf(view());

  // Started, the layout runs for a while (the timer starts its batches).
  QTest::keyClick(&widget(), Qt::Key_Space);
  EXPECT_TRUE(view().fAnimate());
  QTest::qWait(1000);
  EXPECT_TRUE(processEventsUntil(
      [&] { return movedCount(start, positionsOf(view())) > start.size() / 2; }));
  const QImage shot = widget().grabFramebuffer();

  // The frame fills the widget's backing pixels and the camera knows it.
  EXPECT_EQ(shot.size(), widget().pixelSize());
  EXPECT_EQ(view().camera().viewHeight, widget().pixelSize().height());
  const auto [drawn, family] = census(shot);
  EXPECT_GT(drawn, 0.05) << "too little is drawn";
  EXPECT_GT(family, 0.6) << "the drawing is not in the vertex colours";
  EXPECT_NE(first, shot) << "the picture did not follow the layout";

  // Space and the menu item each toggle, and the item follows.
  QAction* menuItem =
      uitest::findAction(uitest::findMenu(window_->menuBar(), "View"), "Start/Pause");
  ASSERT_TRUE(menuItem);
  EXPECT_TRUE(menuItem->isChecked());
  QTest::keyClick(&widget(), Qt::Key_Space);
  EXPECT_FALSE(view().fAnimate());
  EXPECT_FALSE(menuItem->isChecked());
  menuItem->trigger();
  EXPECT_TRUE(view().fAnimate());
  QTest::keyClick(&widget(), Qt::Key_Space);
  EXPECT_FALSE(view().fAnimate());

  // Paused, the ticks go on drawing but start no layout steps.
  view().waitForBatch();
  const std::vector<Vec3d> paused = positionsOf(view());
  QTest::qWait(300);
  EXPECT_EQ(movedCount(paused, positionsOf(view())), 0u);
}

TEST(ViewHost, AnotherWindowsContextRefreshesTheViewsTexts) {
  uitest::ensureApplication();
  QWidget first, second;
  auto* host = new ui::NetworkViewWidget(nullptr, &first);
  first.resize(200, 150);
  host->resize(200, 150);
  first.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&first));
  ASSERT_TRUE(processEventsUntil([&] { return !host->view().messageString().empty(); }));
  const std::string before = host->view().messageString();
  QTest::qWait(250);  // the message names the time in tenths of a second

  // Moved into another window, the widget gets a new context.
  host->setParent(&second);
  second.resize(200, 150);
  host->show();
  second.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&second));
  EXPECT_TRUE(processEventsUntil([&] { return host->view().messageString() != before; })) << before;
  EXPECT_NE(host->view().capabilitiesText(), "");
}

TEST_F(Window, MouseAndWheelReachTheView) {
  widget().pause();
  ASSERT_TRUE(processEventsUntil([&] { return view().camera().viewWidth > 0; }));
  const QPoint centre = widget().rect().center();

  // Each button (and Control with the left) starts its drag; a release ends it.
  struct Press {
    Qt::MouseButton button;
    Qt::KeyboardModifier modifier;
    VXLNetworkView::Drag drag;
  };
  for (const Press& p : {Press{Qt::LeftButton, Qt::NoModifier, VXLNetworkView::Drag::Trackball},
                         Press{Qt::MiddleButton, Qt::NoModifier, VXLNetworkView::Drag::Dolly},
                         Press{Qt::LeftButton, Qt::ControlModifier, VXLNetworkView::Drag::Pan}}) {
    QTest::mousePress(&widget(), p.button, p.modifier, centre);
    EXPECT_EQ(view().drag(), p.drag) << p.button;
    QTest::mouseRelease(&widget(), p.button, p.modifier, centre);
    EXPECT_EQ(view().drag(), VXLNetworkView::Drag::None) << p.button;
  }

  // The wheel moves the camera: queued steps add up and apply at one frame.
  const VXLCamera camera = view().camera();
  const std::uint64_t paints = widget().paintCount();
  for (int i = 0; i < 3; ++i) {
    QWheelEvent wheel(QPointF(centre), widget().mapToGlobal(QPointF(centre)), QPoint(),
                      QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget(), &wheel);
  }
  EXPECT_EQ(view().camera().position, camera.position) << "applied before the frame";
  ASSERT_TRUE(processEventsUntil([&] { return widget().paintCount() > paints; }));
  EXPECT_LT(view().camera().position[2], camera.position[2]);
}

TEST_F(Window, FitFramesTheNetworkAndAnIdleWindowDrawsNothing) {
  widget().pause();
  ASSERT_TRUE(processEventsUntil([&] { return view().camera().viewWidth > 0; }));
  // A new network is framed once installed: its centre is the rotation centre.
  EXPECT_TRUE(processEventsUntil([&] { return view().camera().rotationCenter != Vec3d{0, 0, 0}; }));

  // Zoomed far out, View > Fit All brings the network back into the frame.
  VXLCamera far = view().camera();
  far.position[2] *= 50;
  view().setCamera(far);
  QAction* fit = window_->findChild<QAction*>(QStringLiteral("fitAllAction"));
  ASSERT_TRUE(fit);
  fit->trigger();
  EXPECT_LT(view().camera().position[2], far.position[2] / 10);

  // Paused with nothing changing, no frame is drawn; a change draws one.
  // Once the resize message has faded and the last frame is whole (a loaded
  // machine draws it in pieces over several paints), nothing is drawn.
  QTest::qWait(3500);
  ASSERT_TRUE(processEventsUntil([&] {
    QTest::qWait(50);
    return !view().framePending() && !view().overlaysFading();
  }));
  const std::uint64_t idle = widget().paintCount();
  QTest::qWait(500);
  EXPECT_EQ(widget().paintCount(), idle);
  view().selectAll();
  EXPECT_TRUE(processEventsUntil([&] { return widget().paintCount() > idle; }));
}

TEST_F(Window, CountsAndClicksFollowTheNetwork) {
  widget().pause();
  EXPECT_TRUE(window_->countsText().startsWith(QStringLiteral("600 vertices, ")));

  // One vertex with a loop at the origin, framed: it covers the middle of
  // the window, and a click in an empty corner clears.
  NetworkData data;
  data.verticesCount = 1;
  data.from = {0};
  data.to = {0};
  auto loop = QLONetwork::make(std::move(data));
  ASSERT_TRUE(loop);
  window_->controller().setNetwork(loop);
  EXPECT_EQ(window_->countsText(), QStringLiteral("1 vertex, 1 edge"));
  auto origin = QLOVector3dArray::initWithSize(1, Precision::Float);
  origin->setVector({0, 0, 0}, 0);
  view().setPositions(origin);
  ASSERT_TRUE(processEventsUntil([&] { return view().camera().viewWidth > 0; }));
  widget().grabFramebuffer();       // a frame with this network
  ASSERT_TRUE(view().zoomToFit());  // the camera looks at the lone vertex
  QTest::mouseClick(&widget(), Qt::LeftButton, Qt::NoModifier, widget().rect().center());
  EXPECT_EQ(view().selectedIndices(), std::vector<std::uint64_t>{0});
  // The click shows the vertex's details, drawn in the bottom right corner.
  EXPECT_EQ(view().vertexInfoString().rfind("Name: 0 (0)\nDegree: 2.00", 0), 0u)
      << view().vertexInfoString();
  const QImage shown = widget().grabFramebuffer();
  const QRect corner(shown.width() - 60, shown.height() - 30, 50, 20);
  const int marked = uitest::countPixels(
      shown, [&](QRgb p) { return p != shown.pixel(2, 2); }, corner);
  EXPECT_GT(marked, 100);
  QTest::mouseClick(&widget(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
  EXPECT_TRUE(view().selectedIndices().empty());
  // Clicks are undoable selections.
  QAction* undo = window_->findChild<QAction*>(QStringLiteral("undoAction"));
  ASSERT_TRUE(undo);
  undo->trigger();
  EXPECT_EQ(view().selectedIndices(), std::vector<std::uint64_t>{0});
  undo->trigger();
  EXPECT_TRUE(view().selectedIndices().empty());
}

}  // namespace

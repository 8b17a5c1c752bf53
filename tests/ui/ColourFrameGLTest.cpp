// A frame of a network coloured through its controller: the vertices are
// drawn in the colours stored as the network's "Color", and the continuous
// legend sits at the bottom left.
#include <gtest/gtest.h>

#include <QImage>
#include <string>

#include "app/VXLController.h"
#include "application.h"
#include "ui/snapshot.h"

namespace {

constexpr int kSize = 300;

bool reddish(QRgb p) {
  return qRed(p) > 140 && qGreen(p) < 90 && qBlue(p) < 90;
}
bool bluish(QRgb p) {
  return qBlue(p) > 140 && qRed(p) < 90 && qGreen(p) < 90;
}

// Pixels passing `test` within [x0, x1) x [y0, y1), y from the top.
template <class Test>
int count(const QImage& image, Test test, int x0, int y0, int x1, int y1) {
  return uitest::countPixels(image, test, QRect(QPoint(x0, y0), QPoint(x1 - 1, y1 - 1)));
}

TEST(ColourFrame, VerticesShowTheStoredColoursAndTheLegendSitsBottomLeft) {
  uitest::ensureApplication();
  NetworkData data;
  data.verticesCount = 2;
  data.properties = {{"score", QLONumberArray::initWithFloats(std::vector<float>{0, 1})}};
  const auto controller = VXLController::init();
  controller->setNetwork(QLONetwork::make(std::move(data)));
  // Vertex 0 at the centre, vertex 1 above it; red for the low score, blue
  // for the high one.
  auto positions = QLOVector3dArray::initWithSize(2, Precision::Float);
  positions->setVector({0, 6, 0}, 1);
  controller->setPositions(positions);
  controller->colorGradientChanged({1, 0, 0, 1}, {0, 0, 1, 1}, {0, 1, 0, 1});
  controller->selectColorFunction("Linear");
  controller->selectColorMap("Custom 2");
  controller->selectColorProperty("score");

  const auto stored =
      std::get<std::shared_ptr<QLOVector3dArray>>(controller->network()->propertyForKey("Color"));
  EXPECT_EQ(stored->vectorAtIndex(0), (std::array<double, 3>{1, 0, 0}));
  EXPECT_EQ(stored->vectorAtIndex(1), (std::array<double, 3>{0, 0, 1}));

  // Overlays on, without the network summary that would cover the centre.
  VXLNetworkView& view = *controller->networkView();
  view.setFInfo(true);
  view.setGeneralInfo(false);
  VXLCamera camera = view.camera();
  camera.position = {0, 0, 20};
  camera.direction = {-0.0, -0.0, -20};
  view.setCamera(camera);
  view.setWorldRotation({});
  std::string error;
  const QImage image = ui::renderSnapshot(view, QSize(kSize, kSize), error);
  ASSERT_FALSE(image.isNull()) << error;
  image.save(QStringLiteral(PLEXVIEW_TEST_OUTPUT "/colour-frame.png"));

  const int c = kSize / 2;
  // The vertices: red at the centre, blue above it, in the middle column.
  EXPECT_GT(count(image, reddish, c - 5, c - 5, c + 5, c + 5), 4);
  EXPECT_GT(count(image, bluish, c - 5, 0, c + 5, c - 10), 4);
  // The legend's bar runs from red (bottom) to blue (top) in the bottom
  // left quarter; nothing coloured in the bottom right one.
  const int redLegend = count(image, reddish, 0, c, c - 10, kSize);
  const int blueLegend = count(image, bluish, 0, c, c - 10, kSize);
  EXPECT_GT(redLegend, 20);
  EXPECT_GT(blueLegend, 20);
  EXPECT_EQ(count(image, reddish, c + 10, c + 10, kSize, kSize), 0);
  EXPECT_EQ(count(image, bluish, c + 10, c + 10, kSize, kSize), 0);
}

}  // namespace

// Qt's positions turned into the view's backing pixels from the bottom left.
#include <gtest/gtest.h>

#include "ui/viewinput.h"

namespace {

TEST(ViewInput, PositionsBecomeBackingPixelsFromTheBottomLeft) {
  struct Case {
    QPointF logical;
    double ratio;
    int heightPx;
    ui::BackingPoint expected;
  };
  const Case cases[] = {
      {{10, 479}, 1.0, 480, {10, 1}},     // the bottom row
      {{100, 50}, 2.0, 600, {200, 500}},  // a ratio scales both before flipping
  };
  for (const Case& c : cases) {
    const ui::BackingPoint got = ui::toBackingPixels(c.logical, c.ratio, c.heightPx);
    EXPECT_DOUBLE_EQ(got.x, c.expected.x) << c.logical.x() << " at ratio " << c.ratio;
    EXPECT_DOUBLE_EQ(got.y, c.expected.y) << c.logical.y() << " at ratio " << c.ratio;
  }
  EXPECT_EQ(ui::toDevicePixels(QSize(101, 33), 1.5), QSize(152, 50));  // rounded like Qt
}

}  // namespace

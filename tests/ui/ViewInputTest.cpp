// Qt's event values turned into the view's: backing pixels from the bottom
// left, modifiers, wheel steps, the first character of a key.
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

TEST(ViewInput, ModifiersKeepShiftControlAndAltAsOption) {
  struct Case {
    Qt::KeyboardModifiers qt;
    bool shift, control, option;
  };
  const Case cases[] = {
      {Qt::AltModifier, false, false, true},
      {Qt::MetaModifier | Qt::KeypadModifier, false, false, false},
      {Qt::ControlModifier | Qt::MetaModifier | Qt::ShiftModifier, true, true, false},
  };
  for (const Case& c : cases) {
    const Modifiers got = ui::toViewModifiers(c.qt);
    EXPECT_EQ(got.has(Modifier::Shift), c.shift) << c.qt.toInt();
    EXPECT_EQ(got.has(Modifier::Control), c.control) << c.qt.toInt();
    EXPECT_EQ(got.has(Modifier::Option), c.option) << c.qt.toInt();
  }
}

TEST(ViewInput, WheelNotchesAreStepsAndAKeyIsItsFirstCharacter) {
  EXPECT_EQ(ui::toWheelSteps(QPoint(0, 120)), (ui::WheelSteps{0, 1}));
  EXPECT_EQ(ui::toWheelSteps(QPoint(60, 0)), (ui::WheelSteps{0.5, 0}));  // a fine wheel
  EXPECT_EQ(ui::firstCharacter(QString()), U'\0');  // arrows and other keys that type nothing
  EXPECT_EQ(ui::firstCharacter(QString::fromUcs4(U"\U0001F600x")), U'\U0001F600');
}

}  // namespace

#pragma once
// Wheel events over a panel's inputs (spin boxes, sliders, combo boxes) act
// on the input only when it has the keyboard focus; otherwise they go on to
// the panel, which scrolls. A wheel passing over a form should not change it.
class QWidget;

namespace ui {

// Guards every input below `root` (and any added later is not guarded: call
// it again after building). Inputs take the focus by click or Tab only.
void guardWheelOnInputs(QWidget* root);

}  // namespace ui

#pragma once
// Typesetting needs a QGuiApplication. Headless test programs make one on
// the off-screen platform (no display needed), once, whichever test asks first.
#include <QGuiApplication>

namespace testing_support {

inline void ensureGuiApplication() {
  if (QCoreApplication::instance()) return;
  static int argc = 3;
  static char name[] = "plexview_tests", option[] = "-platform", platform[] = "offscreen";
  static char* argv[] = {name, option, platform, nullptr};
  new QGuiApplication(argc, argv);  // lives as long as the program
}

}  // namespace testing_support

#pragma once
// What the window tests share: one QApplication for the whole program, and
// a wait that processes events until a condition holds.
#include <QApplication>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <chrono>

namespace uitest {

inline void ensureApplication() {
  static int argc = 1;
  static char name[] = "ui_gl_tests";
  static char* argv[] = {name, nullptr};
  static QApplication* application = new QApplication(argc, argv);
  (void)application;
}

// Processes events until `done()` holds, giving up after `limit` (a bound on
// a hang, not a speed requirement); answers done().
template <typename Done>
bool processEventsUntil(Done done, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
  QElapsedTimer clock;
  clock.start();
  while (!done() && clock.elapsed() < limit.count()) QTest::qWait(20);
  return done();
}

}  // namespace uitest

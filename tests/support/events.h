#pragma once
// Processes events until `done()` holds, giving up after 20 s (a bound on a
// hang, not a speed requirement); answers done().
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace testing_support {

template <typename Done>
bool processEventsUntil(Done done) {
  QElapsedTimer clock;
  clock.start();
  while (!done() && clock.elapsed() < 20000) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QThread::msleep(2);
  }
  return done();
}

}  // namespace testing_support

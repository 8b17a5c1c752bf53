#include "render/overlaypainting.h"

#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <mutex>

#include "quillo/log.h"

namespace overlay {

bool haveGuiApplication() {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return true;
  static std::once_flag once;
  std::call_once(
      once, [] { quillo::logLine("text overlays and legends need a QGuiApplication: not drawn"); });
  return false;
}

QImage blankImage(double width, double height) {
  const int w = std::max(1, static_cast<int>(std::ceil(width)));
  const int h = std::max(1, static_cast<int>(std::ceil(height)));
  QImage image(w, h, QImage::Format_RGBA8888_Premultiplied);
  image.fill(Qt::transparent);
  return image;
}

QLinearGradient diagonalGradient(const QRectF& box) {
  const QPointF centre = box.center();
  const double reach = (box.width() + box.height()) / 4;
  return QLinearGradient(centre + QPointF(-reach, reach), centre + QPointF(reach, -reach));
}

}  // namespace overlay

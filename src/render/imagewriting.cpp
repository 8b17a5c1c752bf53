#include "render/imagewriting.h"

#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>

#include "render/gifwriter.h"

QImage finishedImage(const QImage& bottomUp, Backdrop backdrop) {
  QImage picture = bottomUp.mirrored(false, true);
  if (backdrop == Backdrop::Transparent) return picture;
  picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
  painter.fillRect(picture.rect(), Qt::black);
  painter.end();
  return picture.convertToFormat(QImage::Format_RGB32);
}

namespace {

const char* qtFormat(ExportFormat format) {
  switch (format) {
    case ExportFormat::Tiff:
      return "tiff";
    case ExportFormat::Bmp:
      return "bmp";
    case ExportFormat::Jpeg:
      return "jpeg";
    default:
      return "png";
  }
}

}  // namespace

bool writeImageFile(const QImage& image, ExportFormat format, const std::filesystem::path& path,
                    std::string& error) {
  const std::string what =
      path.string() + ": could not write the " + std::string(formatName(format)) + " image: ";
  QSaveFile file(QString::fromStdString(path.string()));
  if (!file.open(QIODevice::WriteOnly)) {
    error = what + file.errorString().toStdString();
    return false;
  }
  std::string reason;
  bool encoded = false;
  if (format == ExportFormat::Gif) {
    encoded = encodeGif(image, file, reason);
  } else {
    QImageWriter writer(&file, qtFormat(format));
    encoded = writer.write(image);
    if (!encoded) reason = writer.errorString().toStdString();
  }
  if (!encoded) {
    file.cancelWriting();
    error = what + reason;
    return false;
  }
  if (!file.commit()) {
    error = what + file.errorString().toStdString();
    return false;
  }
  return true;
}

// The view's image and vector export: the format by extension, the frame on
// screen or an off-screen pass in tiles for raster pictures, and gl2ps pages
// recorded until one fits for vector documents.
#include <GL/gl.h>
#include <unistd.h>

#include <QImage>
#include <QSaveFile>
#include <cstdio>
#include <functional>
#include <mutex>

#include "quillo/log.h"
#include "render/VXLNetworkView.h"
#include "render/exportcontext.h"
#include "render/imagetiles.h"
#include "render/imagewriting.h"
#include "render/scenecolours.h"
#include "render/vectorexport.h"

namespace {

std::string sizeText(int width, int height) {
  return std::to_string(width) + " x " + std::to_string(height);
}

scene::Rgba backgroundColour(bool black, Backdrop backdrop) {
  scene::Rgba c = scene::clearColour(black ? scene::Background::Black : scene::Background::White);
  if (backdrop == Backdrop::Transparent) c.a = 0;
  return c;
}

void clearTo(const scene::Rgba& c) {
  glDepthMask(GL_TRUE);
  glClearColor(c.r, c.g, c.b, c.a);
}

}  // namespace

void VXLNetworkView::setContextHost(ContextHost host) {
  std::lock_guard lock(lock_);
  contextHost_ = std::move(host);
}

void VXLNetworkView::inExportContext(ExportReport& report,
                                     const std::function<void(export_gl::ViewContext&)>& body) {
  ContextHost host;
  {
    std::lock_guard lock(lock_);
    host = contextHost_;
  }
  export_gl::ViewContext context({host.makeCurrent, host.doneCurrent});
  const VXLCamera own = camera();
  if (report.width == 0 && report.height == 0) {
    report.width = own.viewWidth;
    report.height = own.viewHeight;
  }
  if (!context.valid()) {
    report.error = context.error();
  } else if (report.width <= 0 || report.height <= 0) {
    report.error = "the picture's size must be positive, not " +
                   sizeText(report.width, report.height) +
                   (own.viewWidth <= 0 ? " (the view has not been drawn yet)" : "");
  } else {
    body(context);
  }
}

ExportReport VXLNetworkView::exportImageToFile(const std::filesystem::path& path, int width,
                                               int height, float lineWidth) {
  const ExportTarget target = chooseExportFormat(path);
  ExportReport report;
  report.format = target.format;
  report.path = target.path;
  report.width = width;
  report.height = height;
  inExportContext(report, [&](export_gl::ViewContext& context) {
    if (isVectorFormat(target.format)) {
      exportVector(report, lineWidth);
      return;
    }
    const QImage picture = exportPicture(report, lineWidth, context);
    if (picture.isNull()) return;
    report.written = writeImageFile(picture, report.format, report.path, report.error);
  });
  if (!report.written) {
    if (report.error.rfind(report.path.string(), 0) != 0) {
      report.error = report.path.string() + ": " + report.error;
    }
    quillo::logLine(report.error);
  }
  return report;
}

QImage VXLNetworkView::renderImage(int width, int height, float lineWidth, std::string& error) {
  ExportReport report;
  report.width = width;
  report.height = height;
  QImage picture;
  inExportContext(report, [&](export_gl::ViewContext& context) {
    picture = exportPicture(report, lineWidth, context);
  });
  if (picture.isNull()) error = report.error;
  return picture;
}

VXLNetworkView::ExportPass VXLNetworkView::beginExportPass(int width, int height) {
  ExportPass pass;
  {
    std::lock_guard lock(lock_);
    pass.camera = camera_;
    pass.worldRotation = worldRotation_;
  }
  initCommands();
  {
    std::lock_guard lock(lock_);
    camera_ = pass.camera;
    worldRotation_ = pass.worldRotation;
  }
  resizeCommands(width, height);
  {
    std::lock_guard lock(lock_);
    fitLegendsHeight();
    useLegendStyle(exportLegendStyle());
  }
  updateModelView();
  return pass;
}

void VXLNetworkView::endExportPass(const ExportPass& pass) {
  {
    std::lock_guard lock(lock_);
    camera_ = pass.camera;
    worldRotation_ = pass.worldRotation;
    fitLegendsHeight();
    useLegendStyle(legendStyle());
  }
  updateInfoString();  // it gave the picture's size
  // The view's own context may have seen another projection, or a pending
  // reload may have been spent on the export's: reload at the next frame.
  projectionStale_.store(true);
}

QImage VXLNetworkView::exportPicture(ExportReport& report, float lineWidth,
                                     export_gl::ViewContext& context) {
  const VXLCamera own = camera();
  const bool ownSize = report.width == own.viewWidth && report.height == own.viewHeight;
  QImage rows;
  if (ownSize && context.showsFrame() && !showsPartialFrame()) {
    // The frame on screen, blending trail, overlays and line width included.
    std::lock_guard guard(contextLock_);
    rows = export_gl::readBoundFrame(report.width, report.height);
    if (rows.isNull()) report.error = "not enough memory for the picture";
  } else {
    {
      export_gl::OffscreenContext offscreen;
      if (offscreen.create(context.context())) {
        rows = drawExportTiles(report, lineWidth);
      } else {
        // No off-screen context: the view's own context draws the picture,
        // into framebuffer objects of its own, and its viewport is put back
        // for the frames on screen.
        context.makeCurrent();
        std::lock_guard guard(contextLock_);
        GLint viewport[4] = {0, 0, 0, 0};
        glGetIntegerv(GL_VIEWPORT, viewport);
        rows = drawExportTiles(report, lineWidth);
        glViewport(viewport[0], viewport[1], viewport[2], viewport[3]);
        report.ownContext = true;
      }
    }
    context.makeCurrent();
  }
  if (rows.isNull()) return rows;
  const Backdrop backdrop = transparentBackground() ? Backdrop::Transparent : Backdrop::OverBlack;
  return finishedImage(rows, backdrop);
}

QImage VXLNetworkView::drawExportTiles(ExportReport& report, float lineWidth) {
  std::lock_guard guard(contextLock_);
  const int W = report.width, H = report.height;
  const int side = export_gl::maxTileSide();
  const std::vector<ImageTile> tiles = imageTiles(W, H, side);
  report.tiles = static_cast<int>(tiles.size());
  QImage rows(W, H, QImage::Format_RGBA8888);
  if (rows.isNull()) {
    report.error = "not enough memory for a picture of " + sizeText(W, H);
    return {};
  }
  export_gl::TileTarget target(std::min(side, W), std::min(side, H));
  if (!target.valid()) {
    report.error = "no off-screen framebuffer of " + sizeText(std::min(side, W), std::min(side, H));
    return {};
  }
  target.bind();
  const ExportPass pass = beginExportPass(W, H);
  glEnable(GL_BLEND);
  const Matrix4 projection =
      camera::frustumMatrix(camera::frustum(camera(), nearClipDistance(), farClipDistance()));
  Matrix4 modelView{};
  glGetDoublev(GL_MODELVIEW_MATRIX, modelView.data());
  const Backdrop backdrop = transparentBackground() ? Backdrop::Transparent : Backdrop::OverBlack;
  const scene::Rgba background = backgroundColour(blackBackground(), backdrop);
  const float ownLineWidth = this->lineWidth();
  setLineWidth(lineWidth);
  for (const ImageTile& tile : tiles) {
    target.bind();
    glViewport(0, 0, tile.width, tile.height);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(camera::multiply(tileWindow(tile, W, H), projection).data());
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(modelView.data());
    clearTo(background);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawCommands();
    // The overlays are placed over the whole picture, and each tile shows
    // its part of them through the same window as the scene: no viewport
    // larger than a tile is needed, however large the picture.
    // Without the texts a picture still shows the legend the window would.
    drawInfo(W, H, tileWindow(tile, W, H), fInfo() ? OverlaySet::All : OverlaySet::LegendOnly);
    glFlush();
    const auto offset = 4 * (static_cast<qsizetype>(tile.y) * W + tile.x);
    target.read(tile.width, tile.height, rows.bits() + offset, W);
  }
  setLineWidth(ownLineWidth);
  reportGlError();
  target.release();
  endExportPass(pass);
  return rows;
}

void VXLNetworkView::exportVector(ExportReport& report, float lineWidth) {
  const std::string name = report.path.string();
  QSaveFile file(QString::fromStdString(name));
  if (!file.open(QIODevice::WriteOnly)) {
    report.error = file.errorString().toStdString();
    return;
  }
  // gl2ps writes to a stdio stream: one of its own on the temporary file.
  std::FILE* stream = nullptr;
  if (const int fd = ::dup(file.handle()); fd >= 0) {
    stream = ::fdopen(fd, "wb");
    if (!stream) ::close(fd);
  }
  if (!stream) {
    report.error = "the temporary file could not be opened for writing";
    file.cancelWriting();
    return;
  }
  quillo::logLine("Writing " + name + "... ");
  const std::string title = report.path.filename().string();
  const VXLCamera own = camera();
  const ExportPass pass = ExportPass{own, worldRotation()};
  const scene::Rgba background = backgroundColour(blackBackground(), Backdrop::OverBlack);
  std::int64_t bufferSize = vector_export::kBufferStep;
  vector_export::PageEnd end = vector_export::PageEnd::Overflow;
  while (end == vector_export::PageEnd::Overflow) {
    std::unique_lock guard(contextLock_);
    beginExportPass(report.width, report.height);
    clearTo(background);
    if (!vector_export::beginPage(title, report.format, bufferSize, stream)) {
      end = vector_export::PageEnd::Failed;
      break;
    }
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    const float ownLineWidth = this->lineWidth();
    setLineWidth(lineWidth);
    drawCommands();
    setLineWidth(ownLineWidth);
    recordLabels(report.width, report.height);
    recordLegend(report.width, report.height);
    if (report.format == ExportFormat::Ps) {
      guard.unlock();
      end = vector_export::endPage();
    } else {
      end = vector_export::endPage();
      guard.unlock();
    }
    ++report.rounds;
    report.bufferSize = bufferSize;
    bufferSize += vector_export::kBufferStep;
    if (end == vector_export::PageEnd::Overflow) {
      // Nothing of an overflowed page is kept.
      std::fflush(stream);
      std::rewind(stream);
      if (::ftruncate(::fileno(stream), 0) != 0) end = vector_export::PageEnd::Failed;
    }
  }
  {
    std::lock_guard guard(contextLock_);
    endExportPass(pass);
    if (own.viewWidth > 0 && own.viewHeight > 0) resizeCommands(own.viewWidth, own.viewHeight);
  }
  const bool closed = std::fclose(stream) == 0;
  if (end != vector_export::PageEnd::Written) {
    report.error = "gl2ps could not record the page";
  } else if (!closed) {
    report.error = "the document could not be written out";
  }
  if (!report.error.empty()) {
    file.cancelWriting();
    return;
  }
  if (!file.commit()) {
    report.error = file.errorString().toStdString();
    return;
  }
  report.written = true;
  quillo::logLine("Done!");
}

#pragma once
// What the export tests share: a view with two coloured vertices joined by
// an edge, drawn once at the fixture's size, a scratch folder for the files,
// and where a world point lands in a picture of another size.
#include <QColor>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <filesystem>
#include <string>

#include "../colour/scratch.h"
#include "offscreen_gl.h"
#include "render/exportcontext.h"

namespace gltest {

inline QString q(const std::filesystem::path& path) {
  return QString::fromStdString(path.string());
}
inline QImage load(const std::filesystem::path& path) {
  return QImage(q(path));
}
// The file's bytes, empty when it cannot be read.
inline std::string bytesOf(const std::filesystem::path& path) {
  QFile file(q(path));
  return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

// How often `what` occurs in the text.
inline int count(const std::string& text, const std::string& what) {
  int n = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

// A command line tool's exit code and its output, both channels merged.
struct ToolRun {
  int exitCode = -1;  // -1 when the tool did not run to its end
  std::string output;
};
inline ToolRun run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  const bool ran = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
  return {ran ? process.exitCode() : -1,
          process.readAll().toStdString() + (ran ? "" : process.errorString().toStdString())};
}

inline constexpr Vec3d kUpperLeft{-12, 8, 0};
inline constexpr Vec3d kLowerRight{12, -8, 0};

// Whether one channel clearly dominates: 0 red, 1 green, 2 blue.
inline bool dominant(const QColor& c, int channel, int margin = 60) {
  const int v[3] = {c.red(), c.green(), c.blue()};
  for (int i = 0; i < 3; ++i) {
    if (i != channel && v[channel] < v[i] + margin) return false;
  }
  return true;
}

class ExportFixture : public OffscreenGL {
 protected:
  void SetUp() override {
    OffscreenGL::SetUp();
    install(view, network(2, {{0, 1}}), {kUpperLeft, kLowerRight});
    view.setColors(vectors({{1, 0, 0}, {0, 0, 1}}));
    aim(view, 40);
    frame(view);
  }
  void TearDown() override {
    export_gl::setMaxTileSide(0);
    export_gl::setOffscreenContexts(export_gl::OffscreenContexts::Allowed);
    OffscreenGL::TearDown();
  }
  ExportReport save(const std::string& name, int width, int height, float lineWidth = 1.5f) {
    return view.exportImageToFile(folder.path() / name, width, height, lineWidth);
  }
  // The colour of the picture's pixel a world point lands on.
  QColor colourAt(const QImage& picture, const Vec3d& p) const {
    const auto w = project(view, p, picture.width(), picture.height());
    return picture.pixelColor(static_cast<int>(std::floor(w[0])),
                              picture.height() - 1 - static_cast<int>(std::floor(w[1])));
  }

  VXLNetworkView view;
  ScratchFolder folder;
};

}  // namespace gltest

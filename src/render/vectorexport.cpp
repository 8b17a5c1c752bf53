#include "render/vectorexport.h"

#include <GL/gl.h>
#include <gl2ps.h>

#include <QString>
#include <cmath>

#include "plexora/graphml_escape.h"
#include "render/imagerects.h"

namespace vector_export {
namespace {

// gl2ps keeps one recording context per process; the exports run on the
// main thread.
bool gRecording = false;
ExportFormat gFormat = ExportFormat::Pdf;

constexpr const char* kProducer = "Plexview";

}  // namespace

int gl2psFormat(ExportFormat format) {
  switch (format) {
    case ExportFormat::Svg:
      return GL2PS_SVG;
    case ExportFormat::Eps:
      return GL2PS_EPS;
    case ExportFormat::Ps:
      return GL2PS_PS;
    default:
      return GL2PS_PDF;
  }
}

bool beginPage(const std::string& title, ExportFormat format, std::int64_t bufferSize,
               std::FILE* stream) {
  const GLint options = GL2PS_DRAW_BACKGROUND | GL2PS_OCCLUSION_CULL | GL2PS_USE_CURRENT_VIEWPORT;
  const GLint state = gl2psBeginPage(title.c_str(), kProducer, nullptr, gl2psFormat(format),
                                     GL2PS_SIMPLE_SORT, options, GL_RGBA, 0, nullptr, 0, 0, 0,
                                     static_cast<GLint>(bufferSize), stream, title.c_str());
  gRecording = state == GL2PS_SUCCESS;
  gFormat = format;
  return gRecording;
}

PageEnd endPage() {
  gRecording = false;
  switch (gl2psEndPage()) {
    case GL2PS_SUCCESS:
    case GL2PS_NO_FEEDBACK:  // an empty scene: the page has its background alone
      return PageEnd::Written;
    case GL2PS_OVERFLOW:
      return PageEnd::Overflow;
    default:
      return PageEnd::Failed;
  }
}

bool recording() {
  return gRecording;
}

void beginBlendMarker() {
  if (gRecording) gl2psEnable(GL2PS_BLEND);
}

void lineWidthMarker(float width) {
  if (gRecording) gl2psLineWidth(width);
}

PixelCoordinates::PixelCoordinates(double width, double height) {
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glLoadIdentity();
  glOrtho(0, width, 0, height, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
}

PixelCoordinates::~PixelCoordinates() {
  glPopMatrix();
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
}

void image(const ImagePlace& place, int width, int height, const float* rgb) {
  if (!gRecording) return;
  if (gFormat != ExportFormat::Svg) {
    glRasterPos3d(place.x, place.y, place.depth);
    gl2psDrawPixels(width, height, 0, 0, GL_RGB, GL_FLOAT, rgb);
    return;
  }
  glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glDisable(GL_CULL_FACE);
  glBegin(GL_QUADS);
  for (const image_rects::Rect& r : image_rects::rectangles(width, height, rgb, place.background)) {
    glColor3f(r.rgb[0], r.rgb[1], r.rgb[2]);
    const double x0 = place.x + r.x0, x1 = place.x + r.x1;
    const double y0 = place.y + r.y0, y1 = place.y + r.y1;
    glVertex3d(x0, y0, place.depth);
    glVertex3d(x1, y0, place.depth);
    glVertex3d(x1, y1, place.depth);
    glVertex3d(x0, y1, place.depth);
  }
  glEnd();
  glPopAttrib();
}

void text(const std::string& text, double pointSize, const float (&rgba)[4]) {
  if (!gRecording) return;
  GL2PSrgba colour = {rgba[0], rgba[1], rgba[2], rgba[3]};
  const std::string safe = documentText(text, gFormat);
  gl2psTextOptColor(safe.c_str(), "Helvetica", static_cast<GLshort>(std::lround(pointSize)),
                    GL2PS_TEXT_CL, 0.0f, colour);
}

std::string documentText(const std::string& text, ExportFormat format) {
  std::string out;
  if (format == ExportFormat::Svg) {
    // As element content of an XML document: markup characters escaped,
    // bytes that are not UTF-8 replaced.
    plexora::graphml::appendEscaped(out, text, plexora::graphml::XmlPlace::Content);
    return out;
  }
  // Decomposed, an accented letter is its base letter and combining marks.
  const QString decomposed = QString::fromStdString(text).normalized(QString::NormalizationForm_KD);
  for (const QChar c : decomposed) {
    if (c.category() == QChar::Mark_NonSpacing) continue;
    if (c.isLowSurrogate()) continue;  // its high half already gave a "?"
    const char16_t u = c.unicode();
    if (u >= 0x80 || u < 0x20) {
      out += '?';
      continue;
    }
    const char a = static_cast<char>(u);
    if (a == '(' || a == ')' || a == '\\') out += '\\';
    out += a;
  }
  return out;
}

}  // namespace vector_export

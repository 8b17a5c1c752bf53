// Rectangle textures for the overlays: loading a QImage and drawing it.
#include "render/overlaytexture.h"

#include <GL/gl.h>

#include <QImage>

namespace overlay {

bool glContextCurrent() {
  return glGetString(GL_VERSION) != nullptr;
}

void uploadRectangleTexture(unsigned int& name, TextSize& definedSize, const QImage& image) {
  const TextSize size{static_cast<double>(image.width()), static_cast<double>(image.height())};
  glPushAttrib(GL_TEXTURE_BIT);
  glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);  // QImage rows are 4-byte aligned
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
  glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
  glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
  if (name == 0) glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_RECTANGLE, name);
  const GLenum format = image.hasAlphaChannel() ? GL_RGBA : GL_RGB;
  if (size == definedSize) {
    glTexSubImage2D(GL_TEXTURE_RECTANGLE, 0, 0, 0, image.width(), image.height(), format,
                    GL_UNSIGNED_BYTE, image.constBits());
  } else {
    glTexImage2D(GL_TEXTURE_RECTANGLE, 0, GL_RGBA, image.width(), image.height(), 0, format,
                 GL_UNSIGNED_BYTE, image.constBits());
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_RECTANGLE, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    definedSize = size;
  }
  glPopClientAttrib();
  glPopAttrib();
}

void drawRectangleTexture(unsigned int name, TextSize texSize, const TextBounds& bounds) {
  glPushAttrib(GL_ENABLE_BIT | GL_TEXTURE_BIT | GL_COLOR_BUFFER_BIT);
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LIGHTING);
  glDisable(GL_CULL_FACE);
  glDisable(GL_TEXTURE_2D);
  glEnable(GL_BLEND);
  glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);  // the images are premultiplied
  glEnable(GL_TEXTURE_RECTANGLE);
  glBindTexture(GL_TEXTURE_RECTANGLE, name);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  const double tw = texSize.width, th = texSize.height;
  const double x = bounds.x, y = bounds.y, w = bounds.width, h = bounds.height;
  glBegin(GL_QUADS);
  glTexCoord2d(0, 0);
  glVertex2d(x, y);
  glTexCoord2d(0, th);
  glVertex2d(x, y + h);
  glTexCoord2d(tw, th);
  glVertex2d(x + w, y + h);
  glTexCoord2d(tw, 0);
  glVertex2d(x + w, y);
  glEnd();
  glPopAttrib();
}

void deleteRectangleTexture(unsigned int& name) {
  if (name != 0) glDeleteTextures(1, &name);
  name = 0;
}

}  // namespace overlay

#pragma once
// A text drawn over the GL scene: typeset once with QPainter into a
// premultiplied RGBA image (with an optional rounded, shaded box and a
// border), uploaded as a rectangle texture and drawn as one quad until the
// text or its look changes. Typesetting looks fonts up, which needs a
// QGuiApplication; without one nothing is drawn.
#include <QImage>
#include <string>

#include "render/overlaytexture.h"
#include "render/scenecolours.h"

// The typeface of a text, requested by name (fontconfig substitutes).
struct TextAttributes {
  std::string family = "Helvetica";
  double pointSize = 10.0;
  bool operator==(const TextAttributes&) const = default;
};

enum class Antialias { Off, On };

class GLString {
 public:
  static constexpr scene::Rgba kWhite{1, 1, 1, 1};
  static constexpr scene::Rgba kNoColour{1, 1, 1, 0};  // alpha 0: not drawn

  explicit GLString(std::string text, TextAttributes attributes = {},
                    scene::Rgba textColor = kWhite, scene::Rgba boxColor = kNoColour,
                    scene::Rgba borderColor = kNoColour);

  // Every setter marks the texture for remaking; a new text or new margins
  // also let a dynamic frame follow the text again.
  void setString(std::string text);
  void setString(std::string text, TextAttributes attributes);
  void setTextColor(scene::Rgba colour);
  void setBoxColor(scene::Rgba colour);
  void setBorderColor(scene::Rgba colour);
  void setMargins(double width, double height);
  void setAntialias(Antialias antialias);
  void useStaticFrame(TextSize size);
  void useDynamicFrame();

  const std::string& string() const { return text_; }
  const TextAttributes& attributes() const { return attributes_; }
  scene::Rgba textColor() const { return textColor_; }
  scene::Rgba boxColor() const { return boxColor_; }
  scene::Rgba borderColor() const { return borderColor_; }
  TextSize marginSize() const { return marginSize_; }
  Antialias antialias() const { return antialias_; }
  bool staticFrame() const { return staticFrame_; }
  // (0, 0) until the next image is made, unless the frame is static.
  TextSize frameSize() const { return frameSize_; }
  bool requiresUpdate() const { return requiresUpdate_; }
  unsigned int texName() const { return texName_; }
  TextSize texSize() const { return texSize_; }

  // Settles the frame (text size + 2 x margins, unless static or already
  // set) and typesets into an image of that size. Null without a
  // QGuiApplication.
  QImage makeImage();

  // GL: a compatibility context must be current. Makes the image and loads
  // it into this object's rectangle texture (in place when the size is
  // unchanged).
  void genTexture();
  // Draws the texture over `bounds` (remaking it first when required):
  // depth test off, premultiplied blending, the current colour modulating.
  void drawWithBounds(const TextBounds& bounds);
  void drawAtPoint(double x, double y);
  // Deletes the texture; the context that made it must be current.
  void deleteTexture();

 private:
  std::string text_;
  TextAttributes attributes_;
  scene::Rgba textColor_, boxColor_, borderColor_;
  bool staticFrame_ = false;
  Antialias antialias_ = Antialias::On;
  TextSize marginSize_{4.0, 2.0};
  TextSize frameSize_{0, 0};
  float cRadius_ = 4.0f;
  bool requiresUpdate_ = true;
  unsigned int texName_ = 0;
  TextSize texSize_{0, 0};
  TextSize uploadedSize_{0, 0};  // the size of the texture's image
};

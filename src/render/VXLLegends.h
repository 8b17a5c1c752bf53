#pragma once
// The legend drawn over the scene: coloured boxes with a label each, or a
// continuous colour bar with labelled rows. It is painted once into an image,
// kept in a GL rectangle texture and drawn as one quad; any property change
// marks it for painting again before the next draw.
//
// Threads: setters, the default colour sets, genTexture and the draw calls
// take the legend's own lock; GL calls need the context current on the
// calling thread.
#include <QImage>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "colour/rgba.h"
#include "render/legendimage.h"
#include "render/overlaytexture.h"
#include "render/scenecolours.h"

class QOpenGLContext;

enum class LegendKind { Categorical, Continuous };

class VXLLegends {
 public:
  // `withTextColor` holds the entry colours (stored in `colors`). Dark
  // defaults on a black background, light ones otherwise; height 1.
  static std::shared_ptr<VXLLegends> initWithTitle(std::string title,
                                                   std::vector<std::string> labels,
                                                   std::vector<colour::Rgba> withTextColor,
                                                   LegendKind kind, scene::Background background);
  VXLLegends(std::string title, std::vector<std::string> labels, std::vector<colour::Rgba> colors,
             LegendKind kind, scene::Background background);
  VXLLegends(const VXLLegends&) = delete;
  VXLLegends& operator=(const VXLLegends&) = delete;

  // Every setter marks the image for painting again; new labels, margins or
  // height also drop the cached frame size. A new title keeps it: the title
  // is drawn within the old frame until something else drops it.
  std::vector<std::string> labels() const;
  void setLabels(std::vector<std::string> labels);
  std::vector<colour::Rgba> colors() const;
  void setColors(std::vector<colour::Rgba> colors);
  std::string title() const;
  void setTitle(std::string title);
  colour::Rgba textColor() const;
  void setTextColor(colour::Rgba colour);
  colour::Rgba backgroundColor() const;
  void setBackgroundColor(colour::Rgba colour);
  colour::Rgba borderColor() const;
  void setBorderColor(colour::Rgba colour);
  bool continuous() const;
  void setContinuous(bool continuous);
  bool hasBackground() const { return hasBackground_.load(); }
  void setHasBackground(bool value);  // stored only; the background follows its colour's alpha
  double height() const;
  void setHeight(double height);
  TextSize marginSize() const;  // in units of height
  void setMarginSize(TextSize size);
  float boxRadius() const;
  void setBoxRadius(float radius);
  float internalBoxRadius() const;
  void setInternalBoxRadius(float radius);
  bool requiresUpdate() const { return requiresUpdate_.load(); }
  void setRequiresUpdate(bool value);
  // The title and bar ticks drawn in the Readable style (the Rows style
  // draws `title` and `labels`).
  void setReadable(std::string title, std::vector<colour::BarTick> ticks);
  std::string readableTitle() const;
  LegendStyle style() const;
  void setStyle(LegendStyle style);  // a new style is measured and painted afresh
  unsigned int texName() const;
  TextSize texSize() const;  // of the last image painted

  // Text white, border white at 0.9, background grey 0.3 at 0.5.
  void useDarkBackgroundDefaults();
  // Text black, border black at 0.9, background white at 0.5.
  void useLightBackgroundDefaults();

  // The image size, measured again when the cached one is 0 x 0.
  TextSize frameSize();
  // Paints the image of frameSize (no GL; null without a QGuiApplication);
  // with `texts` given they are listed there instead of painted.
  QImage makeImage(std::vector<legend::PlacedText>* texts = nullptr);
  // Paints the image, records texSize, and loads it into the rectangle
  // texture of the current context (a new size defines it afresh, the same
  // size replaces the pixels); without a context it says so in the log and
  // loads nothing. The image is then up to date either way.
  void genTexture();
  // Draws the texture over `bounds` (painting it first when required);
  // nothing while there is no texture.
  void drawWithBounds(const TextBounds& bounds);
  void drawAtPoint(double x, double y);
  // Deletes the texture in the current context; a later draw paints and
  // loads it again.
  void deleteTexture();

 private:
  enum class FrameRule { Keep, Drop };
  template <class T>
  T read(const T& field) const {
    std::lock_guard lock(lock_);
    return field;
  }
  template <class T>
  void write(T& field, T value, FrameRule rule = FrameRule::Keep) {
    std::lock_guard lock(lock_);
    field = std::move(value);
    if (rule == FrameRule::Drop) frameSize_ = {0, 0};
    requiresUpdate_ = true;
  }

  mutable std::recursive_mutex lock_;
  QOpenGLContext* cgl_ctx_ = nullptr;  // current at the last load
  unsigned int texName_ = 0;
  TextSize texSize_{0, 0};
  TextSize definedSize_{0, 0};  // the size of the texture's image
  LegendLook drawnLook() const;

  LegendLook look_;
  LegendStyle style_ = LegendStyle::Rows;
  std::string readableTitle_;
  std::vector<colour::BarTick> readableTicks_;
  std::atomic<bool> hasBackground_{true};
  TextSize frameSize_{0, 0};
  std::atomic<bool> requiresUpdate_{true};
};

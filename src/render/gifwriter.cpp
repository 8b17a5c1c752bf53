#include "render/gifwriter.h"

#include <gif_lib.h>

#include <QIODevice>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kPaletteSize = 256;
constexpr GifByteType kTransparentIndex = kPaletteSize - 1;
constexpr int kMaxSide = 65535;  // sizes are 16-bit fields

int writeToDevice(GifFileType* gif, const GifByteType* data, int length) {
  auto* device = static_cast<QIODevice*>(gif->UserData);
  return static_cast<int>(device->write(reinterpret_cast<const char*>(data), length));
}

std::string gifError(int code) {
  const char* text = GifErrorString(code);
  return text ? text : "unknown giflib error";
}

struct MapDeleter {
  void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};

}  // namespace

bool encodeGif(const QImage& source, QIODevice& device, std::string& error) {
  const QImage image = source.convertToFormat(QImage::Format_RGBA8888);
  if (image.isNull()) {
    error = "no picture to encode";
    return false;
  }
  const int width = image.width(), height = image.height();
  if (width > kMaxSide || height > kMaxSide) {
    error = "a GIF picture has at most " + std::to_string(kMaxSide) + " pixels a side";
    return false;
  }
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  std::vector<GifByteType> red(count), green(count), blue(count), indices(count);
  std::vector<bool> clear(count);
  bool anyClear = false;
  for (int y = 0; y < height; ++y) {
    const uchar* row = image.constScanLine(y);
    for (int x = 0; x < width; ++x) {
      const std::size_t i = static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x);
      red[i] = row[4 * x];
      green[i] = row[4 * x + 1];
      blue[i] = row[4 * x + 2];
      clear[i] = row[4 * x + 3] == 0;
      anyClear = anyClear || clear[i];
    }
  }
  // One index is kept back for the transparent pixels when there are any.
  int colours = anyClear ? kPaletteSize - 1 : kPaletteSize;
  std::vector<GifColorType> palette(kPaletteSize, GifColorType{0, 0, 0});
  if (GifQuantizeBuffer(static_cast<unsigned>(width), static_cast<unsigned>(height), &colours,
                        red.data(), green.data(), blue.data(), indices.data(),
                        palette.data()) == GIF_ERROR) {
    error = "the colours could not be reduced to a GIF palette";
    return false;
  }
  if (anyClear) {
    for (std::size_t i = 0; i < count; ++i) {
      if (clear[i]) indices[i] = kTransparentIndex;
    }
  }
  std::unique_ptr<ColorMapObject, MapDeleter> map(GifMakeMapObject(kPaletteSize, palette.data()));
  int code = 0;
  GifFileType* gif = EGifOpen(&device, writeToDevice, &code);
  if (!gif || !map) {
    error = gif ? "out of memory" : gifError(code);
    return false;
  }
  EGifSetGifVersion(gif, true);
  bool ok = EGifPutScreenDesc(gif, width, height, 8, 0, map.get()) == GIF_OK;
  if (ok && anyClear) {
    GraphicsControlBlock control{};
    control.DisposalMode = DISPOSAL_UNSPECIFIED;
    control.UserInputFlag = false;
    control.DelayTime = 0;
    control.TransparentColor = kTransparentIndex;
    GifByteType extension[4];
    const std::size_t length = EGifGCBToExtension(&control, extension);
    ok = EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(length), extension) ==
         GIF_OK;
  }
  ok = ok && EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) == GIF_OK;
  for (int y = 0; ok && y < height; ++y) {
    ok = EGifPutLine(gif, indices.data() + static_cast<std::size_t>(y) * width, width) == GIF_OK;
  }
  if (!ok) error = gifError(gif->Error);
  if (EGifCloseFile(gif, &code) != GIF_OK && ok) {
    error = gifError(code);
    ok = false;
  }
  return ok;
}

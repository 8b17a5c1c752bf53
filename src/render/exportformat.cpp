#include "render/exportformat.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace {

struct Extension {
  std::string_view name;
  ExportFormat format;
};

// In the order the extensions are tried.
constexpr std::array kExtensions{
    Extension{"tif", ExportFormat::Tiff}, Extension{"tiff", ExportFormat::Tiff},
    Extension{"bmp", ExportFormat::Bmp},  Extension{"gif", ExportFormat::Gif},
    Extension{"jpg", ExportFormat::Jpeg}, Extension{"jpeg", ExportFormat::Jpeg},
    Extension{"png", ExportFormat::Png},  Extension{"pdf", ExportFormat::Pdf},
    Extension{"svg", ExportFormat::Svg},  Extension{"eps", ExportFormat::Eps},
    Extension{"ps", ExportFormat::Ps},
};

std::string lowerAscii(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  });
  return text;
}

}  // namespace

ExportTarget chooseExportFormat(const std::filesystem::path& path) {
  std::string extension = path.extension().string();
  if (!extension.empty()) extension = lowerAscii(extension.substr(1));
  for (const Extension& known : kExtensions) {
    if (extension == known.name) return {known.format, path};
  }
  std::filesystem::path png = path;
  png += ".png";
  return {ExportFormat::Png, std::move(png)};
}

bool isVectorFormat(ExportFormat format) {
  switch (format) {
    case ExportFormat::Pdf:
    case ExportFormat::Svg:
    case ExportFormat::Eps:
    case ExportFormat::Ps:
      return true;
    default:
      return false;
  }
}

std::string_view formatName(ExportFormat format) {
  switch (format) {
    case ExportFormat::Tiff:
      return "TIFF";
    case ExportFormat::Bmp:
      return "BMP";
    case ExportFormat::Gif:
      return "GIF";
    case ExportFormat::Jpeg:
      return "JPEG";
    case ExportFormat::Png:
      return "PNG";
    case ExportFormat::Pdf:
      return "PDF";
    case ExportFormat::Svg:
      return "SVG";
    case ExportFormat::Eps:
      return "EPS";
    case ExportFormat::Ps:
      return "PostScript";
  }
  return "PNG";
}

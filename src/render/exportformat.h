#pragma once
// Which file format an exported picture is written in, chosen by the file
// name's extension, and the name actually written.
#include <filesystem>
#include <string_view>

enum class ExportFormat { Tiff, Bmp, Gif, Jpeg, Png, Pdf, Svg, Eps, Ps };

struct ExportTarget {
  ExportFormat format = ExportFormat::Png;
  // The path given, or with ".png" appended when its extension names no
  // format ("net.txt" -> "net.txt.png", "net" -> "net.png").
  std::filesystem::path path;
};

// Compares the extension without regard to case, in this order: "tif" or
// "tiff", "bmp", "gif", "jpg" or "jpeg", "png", then the vector formats
// "pdf", "svg", "eps" and "ps"; anything else is PNG.
ExportTarget chooseExportFormat(const std::filesystem::path& path);

// PDF, SVG, EPS and PostScript are recorded as vector graphics.
bool isVectorFormat(ExportFormat format);

// The short name used in messages ("TIFF", "PNG", ...).
std::string_view formatName(ExportFormat format);

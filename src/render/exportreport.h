#pragma once
// What an image or vector export did.
#include <cstdint>
#include <filesystem>
#include <string>

#include "render/exportformat.h"

struct ExportReport {
  bool written = false;
  ExportFormat format = ExportFormat::Png;
  std::filesystem::path path;  // the file written, or that would have been
  int width = 0, height = 0;   // the picture's size in pixels
  std::string error;           // why nothing was written
  // Raster: tiles drawn off screen (0 when the frame on screen was read),
  // and whether the view's own context drew them (no off-screen context
  // could be made).
  int tiles = 0;
  bool ownContext = false;
  // Vector: pages recorded until one fitted gl2ps's buffer, and its size.
  int rounds = 0;
  std::int64_t bufferSize = 0;
};

#pragma once
// Which vertex labels a picture shows and where: nearest vertices first,
// each label beside its vertex, none overlapping one placed before it.
// Plain arithmetic over projected points, no GL and no fonts (the caller
// measures the texts).
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

enum class LabelMode { None, Selected, All };

// "none", "selected", "all"; nothing for any other text.
std::optional<LabelMode> labelModeFromName(std::string_view name);
const char* labelModeName(LabelMode mode);

// A vertex seen through the camera: its centre in pixels over the picture
// (origin top left, y downwards), its distance from the eye (not positive:
// behind the eye or outside the depth range) and the radius it is drawn with
// in pixels.
struct ScreenPoint {
  double x = 0, y = 0;
  double depth = 0;
  double radius = 0;
};

// A label's box in the picture's pixels (origin top left).
struct PlacedLabel {
  std::uint64_t vertex = 0;
  double x = 0, y = 0, width = 0, height = 0;
  bool operator==(const PlacedLabel&) const = default;
};

struct LabelRequest {
  std::span<const ScreenPoint> points;     // one per vertex
  std::span<const std::uint8_t> shown;     // empty: every vertex is shown
  std::span<const std::uint8_t> selected;  // empty: none is selected
  LabelMode mode = LabelMode::None;
  double width = 0, height = 0;  // the picture
  double labelHeight = 0;        // every label's box is this high
  std::size_t maxLabels = 1000;
  double gap = 3;  // pixels between a vertex and its label, and kept around a label
};

// The labels to draw, in placing order: selected vertices first (in All
// mode), then the nearest. A vertex is skipped when it is not shown, behind
// the eye, off the picture, has an empty text or its label's box (grown by
// `gap`) overlaps one already placed. `text` gives a vertex's text, `width`
// the width of its box in pixels (asked only of labels that may fit).
std::vector<PlacedLabel> placeLabels(const LabelRequest& request,
                                     const std::function<std::string(std::uint64_t)>& text,
                                     const std::function<double(const std::string&)>& width);

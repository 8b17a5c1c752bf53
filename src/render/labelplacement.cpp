#include "render/labelplacement.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kModeNames[] = {"none", "selected", "all"};

// The boxes placed so far, filed by the cells of a coarse grid they touch,
// so that a new box is tested against its neighbours only.
class Occupancy {
 public:
  Occupancy(double width, double height, double gap)
      : gap_(gap), cell_(std::max(32.0, std::max(width, height) / 256.0)) {
    columns_ = cellsAcross(width);
    rows_ = cellsAcross(height);
    cells_.resize(columns_ * rows_);
  }

  bool overlaps(const PlacedLabel& box) const {
    bool hit = false;
    forCells(box, [&](std::size_t cell) {
      for (const std::size_t i : cells_[cell]) hit = hit || touching(placed_[i], box);
    });
    return hit;
  }
  // Whether a point lies within a placed box: its label would overlap it.
  bool covers(double x, double y) const { return overlaps(PlacedLabel{0, x, y, 0, 0}); }
  void add(const PlacedLabel& box) {
    forCells(box, [&](std::size_t cell) { cells_[cell].push_back(placed_.size()); });
    placed_.push_back(box);
  }
  std::vector<PlacedLabel> take() { return std::move(placed_); }
  std::size_t size() const { return placed_.size(); }

 private:
  std::size_t cellsAcross(double extent) const {
    return static_cast<std::size_t>(std::max(1.0, std::ceil(extent / cell_)));
  }
  std::size_t cellOf(double p, std::size_t count) const {
    const double c = std::floor(p / cell_);
    return static_cast<std::size_t>(std::clamp(c, 0.0, static_cast<double>(count - 1)));
  }
  template <class F>
  void forCells(const PlacedLabel& b, F f) const {
    const std::size_t c0 = cellOf(b.x - gap_, columns_),
                      c1 = cellOf(b.x + b.width + gap_, columns_);
    const std::size_t r0 = cellOf(b.y - gap_, rows_), r1 = cellOf(b.y + b.height + gap_, rows_);
    for (std::size_t r = r0; r <= r1; ++r) {
      for (std::size_t c = c0; c <= c1; ++c) f(r * columns_ + c);
    }
  }
  bool touching(const PlacedLabel& a, const PlacedLabel& b) const {
    return a.x < b.x + b.width + gap_ && b.x < a.x + a.width + gap_ &&
           a.y < b.y + b.height + gap_ && b.y < a.y + a.height + gap_;
  }

  double gap_, cell_;
  std::size_t columns_ = 1, rows_ = 1;
  std::vector<std::vector<std::size_t>> cells_;
  std::vector<PlacedLabel> placed_;
};

}  // namespace

std::optional<LabelMode> labelModeFromName(std::string_view name) {
  for (const LabelMode mode : {LabelMode::None, LabelMode::Selected, LabelMode::All}) {
    if (name == kModeNames[static_cast<int>(mode)]) return mode;
  }
  return std::nullopt;
}

const char* labelModeName(LabelMode mode) {
  return kModeNames[static_cast<int>(mode)];
}

std::vector<PlacedLabel> placeLabels(const LabelRequest& request,
                                     const std::function<std::string(std::uint64_t)>& text,
                                     const std::function<double(const std::string&)>& width) {
  if (request.mode == LabelMode::None || request.maxLabels == 0) return {};
  const auto isSelected = [&](std::uint64_t v) {
    return v < request.selected.size() && request.selected[v] != 0;
  };
  struct Candidate {
    bool other;  // not selected: placed after the selected ones
    double depth;
    std::uint64_t vertex;
    bool operator<(const Candidate& c) const {
      if (other != c.other) return !other;
      if (depth != c.depth) return depth < c.depth;
      return vertex < c.vertex;
    }
  };
  std::vector<Candidate> candidates;
  for (std::uint64_t v = 0; v < request.points.size(); ++v) {
    if (!request.shown.empty() && (v >= request.shown.size() || !request.shown[v])) continue;
    const bool selected = isSelected(v);
    if (request.mode == LabelMode::Selected && !selected) continue;
    const ScreenPoint& p = request.points[v];
    if (!(p.depth > 0)) continue;
    if (!(p.x >= 0 && p.x < request.width && p.y >= 0 && p.y < request.height)) continue;
    candidates.push_back({!selected, p.depth, v});
  }

  // Sorted a chunk at a time, each twice the one before: a dense picture
  // fills up long before the farthest vertices are reached, and those are
  // then never sorted.
  Occupancy occupancy(request.width, request.height, request.gap);
  std::size_t chunk = std::max<std::size_t>(256, 4 * request.maxLabels);
  // Measuring texts is the costly part: a picture that stays full is given
  // up on after this many measured.
  const std::size_t maxTries = 20 * request.maxLabels;
  std::size_t tries = 0;
  for (auto begin = candidates.begin(); begin != candidates.end();) {
    const auto end = candidates.end() - begin > static_cast<std::ptrdiff_t>(chunk)
                         ? begin + static_cast<std::ptrdiff_t>(chunk)
                         : candidates.end();
    std::nth_element(begin, end - 1, candidates.end());
    std::sort(begin, end);
    for (auto c = begin; c != end; ++c) {
      if (occupancy.size() >= request.maxLabels || tries >= maxTries) return occupancy.take();
      const ScreenPoint& p = request.points[c->vertex];
      // The box's left edge alone overlapping rules the label out unmeasured.
      PlacedLabel box{c->vertex, p.x + p.radius + request.gap, p.y - request.labelHeight / 2, 0,
                      request.labelHeight};
      if (occupancy.overlaps(box)) continue;
      ++tries;
      const std::string label = text(c->vertex);
      if (label.empty()) continue;
      box.width = width(label);
      if (!occupancy.overlaps(box)) occupancy.add(box);
    }
    begin = end;
    chunk *= 2;
  }
  return occupancy.take();
}

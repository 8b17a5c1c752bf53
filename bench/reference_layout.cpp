// The plain reference layout step (see reference_layout.h).
#include "reference_layout.h"

#include <cmath>

namespace reference {
namespace {

bool takesPart(const Settings& settings, std::uint64_t v) {
  if (settings.filter == nullptr) return true;
  const float value = settings.filter[v];
  return settings.minFilter <= value && value <= settings.maxFilter;
}

void addPairsAndGravity(const Settings& settings, std::uint64_t count, const std::vector<float>& p,
                        std::vector<double>& forces) {
  const float s = settings.softening;
  const float g = settings.gravitational * std::sqrt(static_cast<float>(count));
  for (std::uint64_t i = 0; i < count; ++i) {
    if (!takesPart(settings, i)) continue;
    for (std::uint64_t j = 0; j < i; ++j) {
      if (!takesPart(settings, j)) continue;
      float d[3];
      for (int a = 0; a < 3; ++a) d[a] = p[3 * i + a] - p[3 * j + a];
      const float r2 = d[0] * d[0] + d[1] * d[1] + d[2] * d[2] + s;
      const float k = -settings.repulsive / r2;
      for (int a = 0; a < 3; ++a) {
        const float f = d[a] * k / std::sqrt(r2);
        forces[3 * i + a] -= f;
        forces[3 * j + a] += f;
      }
    }
    const float c2 =
        p[3 * i] * p[3 * i] + p[3 * i + 1] * p[3 * i + 1] + p[3 * i + 2] * p[3 * i + 2] + s;
    for (int a = 0; a < 3; ++a) forces[3 * i + a] -= g * p[3 * i + a] / std::sqrt(c2);
  }
}

void addEdges(const Settings& settings, const Network& network, const std::vector<float>& p,
              std::vector<double>& forces) {
  for (std::uint64_t e = 0; e < network.edgesCount; ++e) {
    const std::uint64_t a = network.from[e];
    const std::uint64_t b = network.to[e];
    if (a == b || !takesPart(settings, a) || !takesPart(settings, b)) continue;
    const float w = network.weights != nullptr ? network.weights[e] : 1.0f;
    if (settings.mode == layout::LayoutMode::WeightAsDistance && !(w > 0)) continue;
    float d[3];
    for (int k = 0; k < 3; ++k) d[k] = p[3 * a + k] - p[3 * b + k];
    const float r2 = d[0] * d[0] + d[1] * d[1] + d[2] * d[2] + settings.softening;
    const float r = std::sqrt(r2);
    const float L = settings.preferredDistance;
    float x = r - L;
    if (settings.mode == layout::LayoutMode::EdgeWeighted) x = r * w - L;
    if (settings.mode == layout::LayoutMode::WeightAsDistance) x = (r - L * w) / w;
    const float m = settings.attraction * x * std::fabs(x);
    for (int k = 0; k < 3; ++k) {
      const float f = d[k] * m / std::sqrt(r2);
      forces[3 * a + k] -= f;
      forces[3 * b + k] += f;
    }
  }
}

void integrate(const Settings& settings, std::uint64_t count, const std::vector<double>& forces,
               std::vector<float>& p, std::vector<float>& v) {
  const bool plain = settings.mode == layout::LayoutMode::Plain;
  const float L = settings.preferredDistance;
  for (std::uint64_t i = 0; i < count; ++i) {
    float f[3];
    for (int a = 0; a < 3; ++a) f[a] = static_cast<float>(forces[3 * i + a]);
    const float fsq = f[0] * f[0] + f[1] * f[1] + f[2] * f[2];
    if (fsq > 400) {
      const float scale = (plain ? 10.0f : 15.0f) / std::sqrt(fsq);
      for (float& c : f) c *= scale;
    } else if (std::isnan(fsq)) {
      for (int a = 0; a < 3; ++a) (plain ? f[a] : v[3 * i + a]) = 0;
    }
    for (int a = 0; a < 3; ++a) {
      v[3 * i + a] += f[a];
      v[3 * i + a] -= v[3 * i + a] * settings.viscosity;
    }
    const float q = v[3 * i] * v[3 * i] + v[3 * i + 1] * v[3 * i + 1] + v[3 * i + 2] * v[3 * i + 2];
    const float limit = plain ? L * L + 100 : 100;
    if (q > limit) {
      const float scale = (plain ? 5.0f : 7.5f) / std::sqrt(q);
      for (int a = 0; a < 3; ++a) v[3 * i + a] *= scale;
    } else if (std::isnan(q)) {
      for (int a = 0; a < 3; ++a) v[3 * i + a] = 0;
    }
    for (int a = 0; a < 3; ++a) p[3 * i + a] += v[3 * i + a];
  }
}

void recentre(std::uint64_t count, std::vector<float>& p) {
  if (count == 0) return;
  for (int a = 0; a < 3; ++a) {
    double mean = 0;
    for (std::uint64_t i = 0; i < count; ++i)
      mean += p[3 * i + a] * (1.0 / static_cast<double>(count));
    for (std::uint64_t i = 0; i < count; ++i)
      p[3 * i + a] = static_cast<float>(p[3 * i + a] - mean);
  }
}

}  // namespace

void step(const Settings& settings, const Network& network, std::vector<float>& positions,
          std::vector<float>& speeds) {
  const std::uint64_t count = network.verticesCount;
  const std::vector<float> snapshot = positions;
  std::vector<double> forces(3 * count, 0.0);
  addPairsAndGravity(settings, count, snapshot, forces);
  if (settings.mode == layout::LayoutMode::Plain || network.weights != nullptr) {
    addEdges(settings, network, snapshot, forces);
  }
  integrate(settings, count, forces, positions, speeds);
  recentre(count, positions);
}

}  // namespace reference

// Integration, re-centring and the whole layout step (see step.h).
#include "layout/step.h"

#include <cmath>
#include <cstdint>

namespace layout {
namespace {

struct Vector {
  float x, y, z;
};

float squaredLength(Vector v) {
  return v.x * v.x + v.y * v.y + v.z * v.z;
}

Vector scaled(Vector v, float factor) {
  return {v.x * factor, v.y * factor, v.z * factor};
}

// The clamps of a mode: the largest force and speed before they are scaled
// back, and the length they are scaled to.
struct Clamps {
  float forceLimitSquared;
  float forceLength;
  float speedLimitSquared;
  float speedLength;
};

Clamps clampsOf(LayoutMode mode, float preferredDistance) {
  if (mode == LayoutMode::Plain) {
    return {400.0f, 10.0f, preferredDistance * preferredDistance + 100.0f, 5.0f};
  }
  return {400.0f, 15.0f, 100.0f, 7.5f};
}

}  // namespace

void integrate(const StepSettings& settings, float preferredDistance,
               const ForceAccumulator& forces, std::uint64_t verticesCount, Planes positions,
               Planes speeds) {
  const Clamps clamps = clampsOf(settings.mode, preferredDistance);
  const bool plain = settings.mode == LayoutMode::Plain;
  const float eta = settings.viscosity;
  for (std::uint64_t i = 0; i < verticesCount; ++i) {
    Vector force{static_cast<float>(forces.x[i]), static_cast<float>(forces.y[i]),
                 static_cast<float>(forces.z[i])};
    Vector speed{speeds.x[i], speeds.y[i], speeds.z[i]};

    const float forceSquared = squaredLength(force);
    if (forceSquared > clamps.forceLimitSquared) {
      force = scaled(force, clamps.forceLength / std::sqrt(forceSquared));
    } else if (std::isnan(forceSquared)) {
      // Plain mode drops the force; the weighted modes stop the vertex instead
      // (the NaN force then makes a NaN speed, which the speed rule zeroes).
      if (plain) {
        force = {0.0f, 0.0f, 0.0f};
      } else {
        speed = {0.0f, 0.0f, 0.0f};
      }
    }

    speed = {speed.x + force.x, speed.y + force.y, speed.z + force.z};
    speed = {speed.x - speed.x * eta, speed.y - speed.y * eta, speed.z - speed.z * eta};

    const float speedSquared = squaredLength(speed);
    if (speedSquared > clamps.speedLimitSquared) {
      speed = scaled(speed, clamps.speedLength / std::sqrt(speedSquared));
    } else if (std::isnan(speedSquared)) {
      speed = {0.0f, 0.0f, 0.0f};
    }

    speeds.x[i] = speed.x;
    speeds.y[i] = speed.y;
    speeds.z[i] = speed.z;
    positions.x[i] += speed.x;
    positions.y[i] += speed.y;
    positions.z[i] += speed.z;
  }
}

void recentre(std::uint64_t verticesCount, Planes positions) {
  if (verticesCount == 0) return;
  const double share = 1.0 / static_cast<double>(verticesCount);
  for (float* plane : {positions.x, positions.y, positions.z}) {
    double mean = 0.0;
    for (std::uint64_t i = 0; i < verticesCount; ++i) mean += static_cast<double>(plane[i]) * share;
    for (std::uint64_t i = 0; i < verticesCount; ++i) {
      plane[i] = static_cast<float>(static_cast<double>(plane[i]) - mean);
    }
  }
}

void step(const StepSettings& settings, const PassInputs& inputs, Planes positions, Planes speeds) {
  StepWorkspace workspace;
  step(settings, inputs, positions, speeds, workspace);
}

void step(const StepSettings& settings, const PassInputs& inputs, Planes positions, Planes speeds,
          StepWorkspace& workspace) {
  ForceAccumulator forces(inputs.verticesCount);
  if (settings.barnesHutTheta > 0.0f) {
    barnesHutRepulsionPass(inputs, settings.barnesHutTheta, forces, workspace.barnesHut);
    workspace.incidence.update(inputs.verticesCount, inputs.edgesCount, inputs.from, inputs.to);
    attractionPassByVertex(settings.mode, inputs, workspace.incidence, forces);
  } else {
    repulsionPass(inputs, forces);
    attractionPass(settings.mode, inputs, forces);
  }
  integrate(settings, inputs.preferredDistance, forces, inputs.verticesCount, positions, speeds);
  recentre(inputs.verticesCount, positions);
}

}  // namespace layout

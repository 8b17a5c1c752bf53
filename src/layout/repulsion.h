#pragma once
// Which repulsion a step uses: the all-pairs pass (theta 0) or the octree
// approximation with an opening angle theta. Automatic choice: all pairs
// below 20,000 participating vertices, theta 0.8 from there on.
#include <cstdint>
#include <string>

#include "layout/kernels.h"

namespace layout {

enum class RepulsionChoice { Automatic, Fixed };

inline constexpr std::uint64_t kApproximateFromVertices = 20000;
inline constexpr float kAutomaticTheta = 0.8f;

// The vertices that take part in the forces (all of them without filter).
std::uint64_t participantCount(const PassInputs& in);

// The theta a step uses: `theta` when the choice is fixed, else the automatic
// one for `participants` vertices. Negative or NaN thetas mean all pairs.
float repulsionTheta(RepulsionChoice choice, float theta, std::uint64_t participants);

// "Repulsion: exact" or "Repulsion: Barnes–Hut θ = 0.8".
std::string repulsionDescription(float theta);

}  // namespace layout

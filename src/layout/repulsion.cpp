// The choice of repulsion and its description (see repulsion.h).
#include "layout/repulsion.h"

#include <cstdio>

namespace layout {

std::uint64_t participantCount(const PassInputs& in) {
  if (in.filter == nullptr) return in.verticesCount;
  std::uint64_t count = 0;
  for (std::uint64_t v = 0; v < in.verticesCount; ++v) {
    count += participates(in.filter[v], in.minFilter, in.maxFilter) ? 1 : 0;
  }
  return count;
}

float repulsionTheta(RepulsionChoice choice, float theta, std::uint64_t participants) {
  if (choice == RepulsionChoice::Automatic) {
    return participants >= kApproximateFromVertices ? kAutomaticTheta : 0.0f;
  }
  return theta > 0.0f ? theta : 0.0f;
}

std::string repulsionDescription(float theta) {
  if (!(theta > 0.0f)) return "Repulsion: exact";
  char text[64];
  std::snprintf(text, sizeof text, "Repulsion: Barnes\u2013Hut \u03b8 = %g",
                static_cast<double>(theta));
  return text;
}

}  // namespace layout

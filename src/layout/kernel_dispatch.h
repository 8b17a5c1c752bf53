#pragma once
// The repulsion pass is compiled twice: for the baseline x86-64 instruction
// set and for AVX2 with FMA. repulsionPass picks the best one the processor
// has; tests run both.
#include <vector>

#include "layout/kernels.h"

namespace layout::detail {

enum class InstructionSet { Baseline, Avx2Fma };

// The instruction sets this processor can run, Baseline first.
std::vector<InstructionSet> supportedInstructionSets();

void repulsionPassWith(InstructionSet set, const PassInputs& in, ForceAccumulator& out);

}  // namespace layout::detail

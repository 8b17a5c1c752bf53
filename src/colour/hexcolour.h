#pragma once
// Colours written as text: "#rrggbb".
#include <string>
#include <string_view>

#include "colour/rgba.h"

namespace colour {

// An optional leading "#", then a hexadecimal number (leading blanks and a
// "0x" are allowed; scanning stops at the first other character; text that
// does not start with a digit reads as 0; a number too large for 32 bits reads
// as 0xFFFFFFFF). Red, green and blue are its bits 16-23, 8-15 and 0-7, so
// higher bits are dropped. Alpha is 1.
Rgba colorFromHexadecimalValue(std::string_view text);

// "#rrggbb" in lower case; alpha is ignored. Components outside [0, 1] are
// clamped (NaN as 0) so that each always takes two digits.
std::string hexadecimalValue(const Rgba& colour);

}  // namespace colour

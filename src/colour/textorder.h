#pragma once
// The order in which category names are sorted: text with its digit runs
// compared as numbers, so "2" < "10" and "item2" < "item10".
#include <string_view>

namespace colour {

// Negative, zero or positive as a sorts before, with or after b. Runs of
// decimal digits compare by numeric value; everything else compares byte by
// byte (code-point order for UTF-8), case-sensitively, and a text sorts before
// any longer text it begins. Texts equal under these rules but spelt
// differently ("7" and "007") are told apart byte by byte, so only identical
// texts compare equal.
int compareNumerically(std::string_view a, std::string_view b);

}  // namespace colour

// Texts written into vector documents: gl2ps copies them as they stand, so
// markup and string delimiters must be escaped for each format.
#include <gtest/gtest.h>

#include "render/vectorexport.h"

namespace {

TEST(VectorText, EscapedForEachFormat) {
  struct Case {
    const char* text;
    ExportFormat format;
    const char* written;
  };
  const Case cases[] = {
      {"a<b & c>d", ExportFormat::Svg, "a&lt;b &amp; c&gt;d"},
      {"Zoë (x)", ExportFormat::Svg, "Zoë (x)"},
      {"bad \xff byte", ExportFormat::Svg, "bad \uFFFD byte"},
      {"f(a\\b)", ExportFormat::Pdf, "f\\(a\\\\b\\)"},
      {"Zoë, Ångström", ExportFormat::Eps, "Zoe, Angstrom"},
      {"π ≈ 3\n", ExportFormat::Ps, "? ? 3?"},
      {"€😀x", ExportFormat::Pdf, "??x"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(vector_export::documentText(c.text, c.format), c.written) << c.text;
  }
}

}  // namespace

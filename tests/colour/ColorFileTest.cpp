// Colour files: the kind read from the first line, categories one a line,
// decoding, and what a failed read reports.
#include <gtest/gtest.h>

#include "colour/colorfile.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"
#include "scratch.h"

using namespace colour;

TEST(ColorFileKind, DecidedByTheNumbersOpeningTheFirstLine) {
  struct Case {
    const char* text;
    ColorFileKind kind;
  };
  const Case cases[] = {
      {"0.2 0.4 0.6\n0 0 0\n", ColorFileKind::Colors},
      {"\t-1e3  +2. .5", ColorFileKind::Colors},
      {"1-2 3", ColorFileKind::Colors},  // a sign starts the next number
      {"7\n8\n", ColorFileKind::Numbers},
      {"2e", ColorFileKind::Numbers},  // an exponent needs digits
      {"1 2\n3 4 5\n", ColorFileKind::Categories},
      {"\n7\n", ColorFileKind::Categories},  // the first line is empty
      {"e5", ColorFileKind::Categories},
      {"1\r2 3 4", ColorFileKind::Numbers},  // a CR ends the first line
  };
  for (const Case& c : cases) {
    EXPECT_EQ(classifyColorFile(c.text), c.kind) << '"' << c.text << '"';
  }
}

TEST(CategoryLines, LeadingBlanksDroppedEmptyLinesSkipped) {
  EXPECT_EQ(categoryLines("  a\n\n\tb c  \r\n\r\n \t \nlast"), (TextList{"a", "b c  ", "last"}));
  EXPECT_EQ(categoryLines("x\ry\r\n"), (TextList{"x", "y"}));
  EXPECT_TRUE(categoryLines("").empty());
}

TEST(ColorFile, EachKindReadsIntoItsPropertyType) {
  const auto colours = colorFileFromText("0.2 0.4 0.6\n1 0 0.5\n", "/d/rgb.txt");
  ASSERT_EQ(colours.status, ColorFile::Status::Read);
  EXPECT_EQ(colours.name, "rgb");
  const auto& vectors = std::get<std::shared_ptr<QLOVector3dArray>>(colours.value);
  EXPECT_EQ(vectors->precision(), Precision::Float);
  ASSERT_EQ(vectors->count(), 2u);
  EXPECT_EQ(vectors->vectorAtIndex(0)[1], double{0.4f});

  const auto numbers = colorFileFromText("   3.5\n\n-2\n", "/d/score.values.txt");
  ASSERT_EQ(numbers.status, ColorFile::Status::Read);
  EXPECT_EQ(numbers.name, "score.values");
  const auto& array = std::get<std::shared_ptr<QLONumberArray>>(numbers.value);
  EXPECT_EQ(array->numberArrayType(), NumberType::Float);
  ASSERT_EQ(array->count(), 2u);
  EXPECT_EQ(array->doubleValueAtIndex(1), -2.0);

  const auto texts = colorFileFromText("1 2\n\n  group B\n", "groups");
  ASSERT_EQ(texts.status, ColorFile::Status::Read);
  EXPECT_EQ(*std::get<std::shared_ptr<TextList>>(texts.value), (TextList{"1 2", "group B"}));
}

TEST(ColorFile, NumberAndColourFilesTheReadersRefuseAreUnreadable) {
  const auto numbers = colorFileFromText("7\n8\nnine\n", "/d/n.txt");
  EXPECT_EQ(numbers.status, ColorFile::Status::Unreadable);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(numbers.value));
  EXPECT_EQ(numbers.error.file, "/d/n.txt");
  EXPECT_EQ(numbers.error.line, 3u);

  const auto colours = colorFileFromText("1 1 1\n0.5 0.5\n", "/d/c.txt");
  EXPECT_EQ(colours.status, ColorFile::Status::Unreadable);
  EXPECT_EQ(colours.error.line, 2u);
}

TEST(ColorFile, UnreachableFilesSayWhy) {
  ScratchFolder folder;
  const auto result = readColorFile(folder.path() / "missing.txt");
  EXPECT_EQ(result.status, ColorFile::Status::Unreachable);
  EXPECT_NE(result.error.describe().find("missing.txt"), std::string::npos);
  EXPECT_NE(result.error.message.find("No such file"), std::string::npos) << result.error.message;
  EXPECT_EQ(readColorFile(folder.path()).status, ColorFile::Status::Unreachable);
}

TEST(ColorFile, TextIsDecodedBeforeItIsClassified) {
  ScratchFolder folder;
  // UTF-16 little-endian with a byte-order mark: "7\r\n8\r\n".
  const char utf16[] = {'\xff', '\xfe', '7', 0, '\r', 0, '\n', 0, '8', 0, '\r', 0, '\n', 0};
  const auto numbers =
      readColorFile(folder.write("u16.txt", std::string_view(utf16, sizeof utf16)));
  ASSERT_EQ(numbers.status, ColorFile::Status::Read) << numbers.error.describe();
  EXPECT_EQ(std::get<std::shared_ptr<QLONumberArray>>(numbers.value)->count(), 2u);

  // A UTF-8 mark is dropped; Latin-1 text (not valid UTF-8) becomes UTF-8.
  EXPECT_EQ(decodeText("\xef\xbb\xbf"
                       "caf\xc3\xa9"),
            "caf\xc3\xa9");
  EXPECT_EQ(decodeText("caf\xe9\rna\xefve"), "caf\xc3\xa9\nna\xc3\xafve");
  const auto texts = readColorFile(folder.write("names.txt", "Gen\xe8ve\r\rZ\xfcrich\r"));
  EXPECT_EQ(texts.name, "names");
  EXPECT_EQ(*std::get<std::shared_ptr<TextList>>(texts.value),
            (TextList{"Gen\xc3\xa8ve", "Z\xc3\xbcrich"}));

  // Old Mac line breaks reach the number reader as separate lines.
  const auto oldMac = readColorFile(folder.write("mac.txt", "1 0 0\r0 1 0\r"));
  ASSERT_EQ(oldMac.status, ColorFile::Status::Read) << oldMac.error.describe();
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(oldMac.value)->count(), 2u);
}

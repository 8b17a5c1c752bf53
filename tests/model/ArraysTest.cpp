// Numeric arrays: conversions, masks, planar layout and exact text forms.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

#include "../support/scratch.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"
#include "quillo/numbertext.h"

namespace fs = std::filesystem;

namespace {

// Awkward float values: subnormals, extremes, values without a short decimal.
std::vector<float> awkwardFloats() {
  std::vector<float> values = {0.0f,
                               -0.0f,
                               0.1f,
                               1.0f / 3.0f,
                               -2.5e-38f,
                               std::numeric_limits<float>::denorm_min(),
                               std::numeric_limits<float>::min(),
                               std::numeric_limits<float>::max(),
                               -std::numeric_limits<float>::max(),
                               16777217.0f,
                               std::numeric_limits<float>::infinity(),
                               -std::numeric_limits<float>::infinity()};
  std::mt19937 engine(7);
  for (int i = 0; i < 2000; ++i) {
    auto bits = static_cast<std::uint32_t>(engine());
    float f = std::bit_cast<float>(bits);
    if (std::isfinite(f)) values.push_back(f);
  }
  return values;
}

}  // namespace

TEST(NumberText, ShortestFormsReadBackExactly) {
  for (float f : awkwardFloats()) {
    auto text = quillo::numberText(f);
    auto back = quillo::parseFloat(text);
    ASSERT_TRUE(back) << text;
    EXPECT_EQ(std::bit_cast<std::uint32_t>(*back), std::bit_cast<std::uint32_t>(f)) << text;
  }
  EXPECT_EQ(quillo::numberText(0.1f), "0.1");
  EXPECT_EQ(quillo::numberText(std::nan("")), "nan");
}

TEST(NumberText, ParsingAcceptsAndRejects) {
  EXPECT_EQ(quillo::parseDouble("+1.5"), 1.5);
  EXPECT_EQ(quillo::parseDouble("-Infinity"), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(*quillo::parseDouble("NaN")));
  for (const char* bad : {"", "+", "1.5x", " 1", "1e999", "0x10"}) {
    EXPECT_FALSE(quillo::parseDouble(bad)) << bad;
  }
  EXPECT_EQ(quillo::parseUInt64("18446744073709551615"), UINT64_MAX);
  EXPECT_FALSE(quillo::parseUInt64("18446744073709551616"));
  EXPECT_FALSE(quillo::parseUInt64("-1"));
  EXPECT_EQ(quillo::parseInt64("-42"), -42);
}

TEST(NumberArray, ConversionsBetweenTypes) {
  auto floats = QLONumberArray::initWithFloats(std::vector<float>{0.0f, 2.5f, -1.0f, NAN});
  auto bools = QLONumberArray::initWithNumberArray(*floats, {0, 4}, NumberType::Bool);
  ASSERT_TRUE(bools);
  EXPECT_EQ(bools->numberArrayType(), NumberType::Bool);
  const auto* bytes = bools->data<std::uint8_t>();
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(bytes[3], 1);  // NaN is not zero

  auto ints = QLONumberArray::initWithNumberArray(*floats, {1, 3}, NumberType::Int32);
  ASSERT_EQ(ints->count(), 3u);
  EXPECT_EQ(ints->data<std::int32_t>()[0], 2);
  EXPECT_EQ(ints->data<std::int32_t>()[2], 0);  // NaN becomes 0

  auto huge = QLONumberArray::initWithDoubles(std::vector<double>{1e300, -1e300});
  auto clamped = QLONumberArray::initWithNumberArray(*huge, {0, 2}, NumberType::Int32);
  EXPECT_EQ(clamped->data<std::int32_t>()[0], INT32_MAX);
  EXPECT_EQ(clamped->data<std::int32_t>()[1], INT32_MIN);

  EXPECT_FALSE(QLONumberArray::initWithNumberArray(*floats, {3, 2}, NumberType::Float));
  EXPECT_FALSE(QLONumberArray::initWithNumberArray(*floats, {UINT64_MAX, 2}, NumberType::Float));
}

TEST(NumberArray, FileRoundTripIsExactForEveryType) {
  auto values = awkwardFloats();
  auto floats = QLONumberArray::initWithFloats(values);
  const ScratchFolder folder;
  const fs::path file = folder.path() / "floats.txt";
  ASSERT_TRUE(floats->writeToFile(file, WriteMode::Atomic));
  auto back = QLONumberArray::initWithContentsOfURL(file, NumberType::Float);
  ASSERT_TRUE(back);
  ASSERT_EQ(back->count(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(back->data<float>()[i]),
              std::bit_cast<std::uint32_t>(values[i]));
  }

  auto longs = QLONumberArray::initWithCount(2, NumberType::Int64);
  longs->data<std::int64_t>()[0] = INT64_MIN;
  longs->data<std::int64_t>()[1] = (std::int64_t{1} << 53) + 1;  // not exact as a double
  ASSERT_TRUE(longs->writeToFile(file, WriteMode::Direct));
  std::ifstream in(file);
  std::string first;
  in >> first;
  EXPECT_EQ(first, "-9223372036854775808");
  auto longsBack = QLONumberArray::initWithContentsOfURL(file, NumberType::Int64);
  ASSERT_TRUE(longsBack);
  EXPECT_EQ(longsBack->data<std::int64_t>()[0], INT64_MIN);
  EXPECT_EQ(longsBack->data<std::int64_t>()[1], (std::int64_t{1} << 53) + 1);
  auto narrowed = QLONumberArray::initWithContentsOfURL(file, NumberType::Int32);
  EXPECT_EQ(narrowed->data<std::int32_t>()[0], INT32_MIN);  // clamped, not wrapped
}

TEST(Vector3dArray, PlanesAreAlignedAndIndependent) {
  auto array = QLOVector3dArray::initWithSize(5, Precision::Float);
  ASSERT_TRUE(array);
  for (float* plane : {array->pointerForX(), array->pointerForY(), array->pointerForZ()}) {
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(plane) % 64, 0u);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(plane[i], 0.0f);
  }
  array->pointerForY()[4] = 7.0f;
  EXPECT_EQ(array->vectorAtIndex(4)[1], 7.0);
  EXPECT_EQ(array->doublePointerForX(), nullptr);
}

TEST(Vector3dArray, CopiesConvertPrecisionAndDoNotShare) {
  auto doubles = QLOVector3dArray::initWithSize(3, Precision::Double);
  doubles->setVector({0.1, 1e300, -2.0}, 1);
  auto floats = QLOVector3dArray::initWithVector3dArray(*doubles, Precision::Float);
  ASSERT_TRUE(floats);
  EXPECT_EQ(floats->precision(), Precision::Float);
  EXPECT_EQ(floats->pointerForX()[1], 0.1f);
  EXPECT_TRUE(std::isinf(floats->pointerForY()[1]));
  EXPECT_EQ(doubles->doublePointerForX()[1], 0.1);  // source untouched

  auto copy = QLOVector3dArray::initWithVector3dArray(*floats, Precision::Float);
  copy->pointerForZ()[1] = 5.0f;
  EXPECT_EQ(floats->pointerForZ()[1], -2.0f);
  auto x = QLONumberArray::floatArrayWithScalar(1.0f, 2);
  auto y = QLONumberArray::floatArrayWithScalar(2.0f, 2);
  auto z3 = QLONumberArray::floatArrayWithScalar(3.0f, 3);
  EXPECT_FALSE(QLOVector3dArray::initWithX(*x, *y, *z3, Precision::Float));
  auto z = QLONumberArray::floatArrayWithScalar(3.0f, 2);
  auto built = QLOVector3dArray::initWithX(*x, *y, *z, Precision::Float);
  ASSERT_TRUE(built);
  EXPECT_EQ(built->vectorAtIndex(1), (std::array<double, 3>{1, 2, 3}));
}

TEST(Vector3dArray, FileRoundTripIsExact) {
  auto array = QLOVector3dArray::initWithSize(2, Precision::Float);
  array->setVector({0.1, -0.0, 3.0e38}, 0);
  array->setVector({1.0 / 3.0, 1e-45, -16777217.0}, 1);
  const ScratchFolder folder;
  const fs::path file = folder.path() / "positions.txt";
  ASSERT_TRUE(array->writeToURL(file, WriteMode::Atomic));
  auto back = QLOVector3dArray::initWithContentsOfURL(file, Precision::Float);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->text(), array->text());
  EXPECT_TRUE(std::signbit(back->pointerForY()[0]));
}

TEST(ArrayReaders, TolerateLayoutAndNameTheLineOfAFault) {
  ReadError error;
  auto ok = QLONumberArray::initWithText("1\r\n\n  2.5\t\n-3\n", NumberType::Float, "f", &error);
  ASSERT_TRUE(ok);
  EXPECT_EQ(ok->count(), 3u);
  EXPECT_EQ(ok->data<float>()[2], -3.0f);
  EXPECT_TRUE(QLOVector3dArray::initWithText("1 2 3\n\n4\t5 6\r\n", Precision::Float, "p", &error));

  enum class Reader { Numbers, Vectors };
  struct Case {
    Reader reader;
    std::string text;
    std::uint64_t line;
    std::string reason;
  };
  // NaN and infinities are values of a number property, but positions and
  // colours must be finite (the layout would keep a NaN for ever). A finite
  // value a float cannot hold is an error, not an infinity.
  const Reader N = Reader::Numbers, V = Reader::Vectors;
  for (const Case& c : std::vector<Case>{
           {N, "1\n2\nx\n", 3, "'x' is not a number"},
           {N, "1 2\n", 1, "found 2"},
           {N, "nan\n-inf\n1e39\n", 3, "'1e39' is out of range for a 32-bit float"},
           {V, "1 2 3\n1 2\n", 2, "found 2 fields"},
           {V, "1 2 z\n", 1, "'z' is not a number"},
           {V, "1 2 3\nnan 0 0\n", 2, "'nan' is not a finite number"},
           {V, "0 0 1e39\n", 1, "'1e39' is out of range for a 32-bit float"},
       }) {
    SCOPED_TRACE(c.text);
    error = {};
    EXPECT_FALSE(
        c.reader == N
            ? bool(QLONumberArray::initWithText(c.text, NumberType::Float, "in.txt", &error))
            : bool(QLOVector3dArray::initWithText(c.text, Precision::Float, "in.txt", &error)));
    EXPECT_EQ(error.file, "in.txt");
    EXPECT_EQ(error.line, c.line);
    EXPECT_NE(error.message.find(c.reason), std::string::npos) << error.message;
  }
  error = {};
  EXPECT_FALSE(
      QLONumberArray::initWithContentsOfURL("/nonexistent/x.txt", NumberType::Float, &error));
  EXPECT_NE(error.describe().find("/nonexistent/x.txt"), std::string::npos);
}

TEST(FileWrites, AtomicWriteNeverLeavesTemporaryFilesOrTruncatesTarget) {
  const ScratchFolder folder;
  const fs::path& dir = folder.path();
  const fs::path target = folder.write("keep.txt", "good\n");
  auto array = QLONumberArray::floatArrayWithScalar(1.0f, 2);
  std::string why;
  EXPECT_FALSE(array->writeToFile(dir / "missing" / "x.txt", WriteMode::Atomic, &why));
  EXPECT_NE(why.find("missing"), std::string::npos);
  ASSERT_TRUE(array->writeToFile(target, WriteMode::Atomic));
  int files = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(dir)) ++files;
  EXPECT_EQ(files, 1);
  std::ifstream in(target);
  std::string line;
  std::getline(in, line);
  EXPECT_EQ(line, "1");
}

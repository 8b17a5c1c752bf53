// GraphML: exact round trips of our own documents, documents as other tools
// write them, every way a read can fail, and the file-level read and write.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"

namespace {

namespace fs = std::filesystem;

using NumberPtr = std::shared_ptr<QLONumberArray>;
using VectorPtr = std::shared_ptr<QLOVector3dArray>;
using TextPtr = std::shared_ptr<TextList>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

template <class T>
NumberPtr numbers(NumberType type, const std::vector<T>& values) {
  auto array = QLONumberArray::initWithCount(values.size(), type);
  std::memcpy(array->QLO_dataPointer(), values.data(), values.size() * sizeof(T));
  return array;
}

VectorPtr vectors(Precision precision, const std::vector<std::array<double, 3>>& values) {
  auto array = QLOVector3dArray::initWithSize(values.size(), precision);
  for (std::size_t i = 0; i < values.size(); ++i) array->setVector(values[i], i);
  return array;
}

TextPtr texts(TextList values) {
  return std::make_shared<TextList>(std::move(values));
}

QLONetwork::Ptr makeNetwork(NetworkData data) {
  std::string why;
  auto network = QLONetwork::make(std::move(data), &why);
  EXPECT_TRUE(network) << why;
  return network;
}

const fs::path kData = fs::path(PLEXVIEW_TEST_DATA) / "graphml";

// The bytes of a document in the test data's graphml folder.
std::string fixture(const std::string& name) {
  std::string text;
  ReadError error;
  EXPECT_TRUE(quillo::readWholeFile(kData / name, text, &error)) << error.describe();
  return text;
}

QLONetwork::Ptr read(const std::string& text) {
  ReadError error;
  auto network = plexora::readGraphml(text, "test.graphml", &error);
  EXPECT_TRUE(network) << error.describe();
  return network;
}

template <class T>
std::vector<T> valuesOf(const PropertyValue& value) {
  const auto* array = std::get_if<NumberPtr>(&value);
  if (!array || !*array) {
    ADD_FAILURE() << "not a number property";
    return {};
  }
  const QLONumberArray& numbers = **array;
  EXPECT_EQ(numberTypeSize(numbers.numberArrayType()), sizeof(T));
  return std::vector<T>(numbers.data<T>(), numbers.data<T>() + numbers.count());
}

TextList textsOf(const PropertyValue& value) {
  const auto* list = std::get_if<TextPtr>(&value);
  if (!list || !*list) {
    ADD_FAILURE() << "not a text property";
    return {};
  }
  return **list;
}

std::vector<std::array<double, 3>> vectorsOf(const PropertyValue& value) {
  const auto* array = std::get_if<VectorPtr>(&value);
  if (!array || !*array) {
    ADD_FAILURE() << "not a vector property";
    return {};
  }
  std::vector<std::array<double, 3>> all;
  for (std::uint64_t i = 0; i < (*array)->count(); ++i) all.push_back((*array)->vectorAtIndex(i));
  return all;
}

Precision precisionOf(const PropertyValue& value) {
  return std::get<VectorPtr>(value)->precision();
}

bool sameBits(const void* a, const void* b, std::size_t bytes) {
  return bytes == 0 || std::memcmp(a, b, bytes) == 0;
}

// Everything a network holds, compared bit for bit.
void expectIdentical(const QLONetwork& expected, const QLONetwork& actual) {
  ASSERT_EQ(expected.countVertices(), actual.countVertices());
  ASSERT_EQ(expected.countEdges(), actual.countEdges());
  EXPECT_EQ(expected.isDirected(), actual.isDirected());
  EXPECT_EQ(expected.isEdgeWeighted(), actual.isEdgeWeighted());
  EXPECT_EQ(expected.isVertexWeighted(), actual.isVertexWeighted());
  const std::size_t E = expected.countEdges();
  EXPECT_TRUE(sameBits(expected.edgeFromList, actual.edgeFromList, E * sizeof(std::uint64_t)));
  EXPECT_TRUE(sameBits(expected.edgeToList, actual.edgeToList, E * sizeof(std::uint64_t)));
  EXPECT_TRUE(sameBits(expected.edgesWeights, actual.edgesWeights, E * sizeof(float)));

  const PropertyTable want = expected.propertiesOfVertices();
  const PropertyTable got = actual.propertiesOfVertices();
  ASSERT_EQ(want.size(), got.size());
  for (std::size_t i = 0; i < want.size(); ++i) {
    SCOPED_TRACE(want[i].first);
    EXPECT_EQ(want[i].first, got[i].first);
    ASSERT_EQ(want[i].second.index(), got[i].second.index());
    if (auto* a = std::get_if<NumberPtr>(&want[i].second)) {
      const QLONumberArray& b = *std::get<NumberPtr>(got[i].second);
      ASSERT_EQ((*a)->numberArrayType(), b.numberArrayType());
      EXPECT_TRUE(sameBits((*a)->QLO_dataPointer(), b.QLO_dataPointer(),
                           (*a)->count() * numberTypeSize(b.numberArrayType())));
    } else if (auto* v = std::get_if<VectorPtr>(&want[i].second)) {
      QLOVector3dArray& w = **v;
      QLOVector3dArray& g = *std::get<VectorPtr>(got[i].second);
      ASSERT_EQ(w.precision(), g.precision());
      const std::size_t n = w.count();
      if (w.precision() == Precision::Float) {
        EXPECT_TRUE(sameBits(w.pointerForX(), g.pointerForX(), n * sizeof(float)));
        EXPECT_TRUE(sameBits(w.pointerForY(), g.pointerForY(), n * sizeof(float)));
        EXPECT_TRUE(sameBits(w.pointerForZ(), g.pointerForZ(), n * sizeof(float)));
      } else {
        EXPECT_TRUE(sameBits(w.doublePointerForX(), g.doublePointerForX(), n * sizeof(double)));
        EXPECT_TRUE(sameBits(w.doublePointerForY(), g.doublePointerForY(), n * sizeof(double)));
        EXPECT_TRUE(sameBits(w.doublePointerForZ(), g.doublePointerForZ(), n * sizeof(double)));
      }
    } else {
      EXPECT_EQ(textsOf(want[i].second), textsOf(got[i].second));
    }
  }
}

// Writes, reads back, checks the copy is identical and that writing the copy
// gives the same text.
QLONetwork::Ptr roundTrip(const QLONetwork& network) {
  const std::string text = plexora::graphmlText(network);
  auto copy = read(text);
  if (!copy) return nullptr;
  expectIdentical(network, *copy);
  EXPECT_EQ(text, plexora::graphmlText(*copy));
  return copy;
}

void expectRoundTrip(NetworkData data) {
  auto network = makeNetwork(std::move(data));
  ASSERT_TRUE(network);
  roundTrip(*network);
}

NetworkData threeVertices() {
  NetworkData data;
  data.verticesCount = 3;
  data.from = {0, 1, 2};
  data.to = {1, 2, 0};
  return data;
}

// ---------------------------------------------------------------------------
// Our own documents

TEST(GraphmlRoundTrip, NumberPropertiesKeepTheirTypeAndEveryBit) {
  NetworkData data = threeVertices();
  const float fmin = std::numeric_limits<float>::denorm_min();
  data.properties = {
      {"flag", numbers<std::uint8_t>(NumberType::Bool, {1, 0, 1})},
      {"small", numbers<std::int32_t>(NumberType::Int32, {INT32_MIN, -1, INT32_MAX})},
      {"big", numbers<std::int64_t>(NumberType::Int64, {INT64_MIN, 0, INT64_MAX})},
      {"single", numbers<float>(NumberType::Float, {0.1f, -0.0f, fmin})},
      {"singleSpecial",
       numbers<float>(NumberType::Float, {std::numeric_limits<float>::quiet_NaN(),
                                          std::numeric_limits<float>::infinity(),
                                          -std::numeric_limits<float>::infinity()})},
      {"double", numbers<double>(NumberType::Double, {0.1, -0.0, 1e-310})},
      {"doubleSpecial", numbers<double>(NumberType::Double, {kNaN, -kInf, 1.7976931348623157e308})},
  };
  expectRoundTrip(std::move(data));
}

TEST(GraphmlRoundTrip, TextsSurviveMarkupWhiteSpaceAndNonAscii) {
  NetworkData data;
  data.verticesCount = 10;
  data.properties = {{"Name", texts({"a<b&c\"d'e>", "", " ", "  padded  ", "cr\rlf\r\n",
                                     "two\nlines", "tab\there", "é中😀", "]]> end", "&amp;"})}};
  expectRoundTrip(std::move(data));
}

TEST(GraphmlRoundTrip, NamesNeedingEscapesAndSpacesRoundTrip) {
  NetworkData data = threeVertices();
  data.properties = {
      {"a\"b<c>&d e", numbers<double>(NumberType::Double, {1, 2, 3})},
      {"my vector x", vectors(Precision::Float, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}})},
      {"tab\tand\nline", texts({"x", "y", "z"})},
  };
  expectRoundTrip(std::move(data));
}

TEST(GraphmlRoundTrip, VectorsAtBothPrecisionsBesideAUserNumberCalledX) {
  NetworkData data = threeVertices();
  data.properties = {
      {"x", numbers<double>(NumberType::Double, {10, 20, 30})},
      {"Position", vectors(Precision::Float, {{0.1, -0.0, 3}, {kNaN, kInf, -kInf}, {1e30, 2, 3}})},
      {"Color", vectors(Precision::Double, {{0.1, 0.2, 0.3}, {1, 0, 0}, {0.5, 0.25, 1e-300}})},
      {"Velocity", vectors(Precision::Float, {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}})},
      {"r", texts({"red", "green", "blue"})},
  };
  auto network = makeNetwork(std::move(data));
  ASSERT_TRUE(network);
  auto copy = roundTrip(*network);
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->keysForPropertiesOfVertices(),
            (std::vector<std::string>{"x", "Position", "Color", "Velocity", "r"}));

  // Other tools find the layout and colours under the usual key names.
  const std::string text = plexora::graphmlText(*network);
  for (const char* key :
       {"attr.name=\"x\" attr.type=\"float\"", "attr.name=\"z\" attr.type=\"float\"",
        "attr.name=\"r\" attr.type=\"double\"", "attr.name=\"b\" attr.type=\"double\"",
        "attr.name=\"Velocity.y\" attr.type=\"float\""}) {
    EXPECT_NE(text.find(key), std::string::npos) << key;
  }
}

TEST(GraphmlRoundTrip, EveryCombinationOfFlags) {
  for (int flags = 0; flags < 8; ++flags) {
    SCOPED_TRACE(flags);
    NetworkData data = threeVertices();
    data.directed = (flags & 1) != 0;
    data.edgeWeighted = (flags & 2) != 0;
    data.vertexWeighted = (flags & 4) != 0;
    if (data.edgeWeighted) data.weights = {0.5f, 2.0f, -3.25f};
    expectRoundTrip(std::move(data));
  }
}

TEST(GraphmlRoundTrip, EdgeCasesOfShape) {
  NetworkData withoutEdges;
  withoutEdges.verticesCount = 4;
  withoutEdges.edgeWeighted = true;
  withoutEdges.properties = {{"Name", texts({"a", "b", "c", "d"})}};
  NetworkData loops;
  loops.verticesCount = 2;
  loops.from = {1, 0, 1, 1, 0};
  loops.to = {1, 1, 0, 1, 1};
  loops.edgeWeighted = true;
  loops.weights = {1, 2, 3, 4, 5};
  std::pair<const char*, NetworkData> shapes[] = {
      {"empty network", NetworkData{}},
      {"weighted network without edges", std::move(withoutEdges)},
      {"self-loops and parallel edges in their order", std::move(loops)},
  };
  for (auto& [what, data] : shapes) {
    SCOPED_TRACE(what);
    expectRoundTrip(std::move(data));
  }
  {
    SCOPED_TRACE("network without vertices holding a property without an array");
    NetworkData data;
    data.properties = {{"nothing", NumberPtr()}};
    auto network = makeNetwork(std::move(data));
    ASSERT_TRUE(network);
    auto copy = read(plexora::graphmlText(*network));
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->keysForPropertiesOfVertices().empty());
  }
}

TEST(GraphmlRoundTrip, UnweightedNetworksWriteNoWeights) {
  NetworkData data = threeVertices();
  auto network = makeNetwork(std::move(data));
  ASSERT_TRUE(network);
  const std::string text = plexora::graphmlText(*network);
  EXPECT_EQ(text.find("attr.name=\"weight\""), std::string::npos);
  EXPECT_EQ(text.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", 0), 0u);
  EXPECT_NE(text.find("xmlns=\"http://graphml.graphdrawing.org/xmlns\""), std::string::npos);
}

TEST(GraphmlRoundTrip, CharactersXmlCannotCarryBecomeReplacementCharacters) {
  NetworkData data;
  data.verticesCount = 7;
  data.properties = {
      {"Name", texts({std::string("a\x01z", 3), "bad \xff byte", "cut \xe2\x82", "\xef\xbf\xbe",
                      "overlong \xe0\x80\xaf", "surrogate \xed\xa0\x80", "\xf4\x90\x80\x80"})},
      {std::string("key\x02", 4), numbers<float>(NumberType::Float, {1, 2, 3, 4, 5, 6, 7})},
  };
  auto network = makeNetwork(std::move(data));
  ASSERT_TRUE(network);
  auto copy = read(plexora::graphmlText(*network));
  ASSERT_TRUE(copy);
  EXPECT_EQ(textsOf(copy->propertyForKey("Name")),
            (TextList{"a\xEF\xBF\xBDz", "bad \xEF\xBF\xBD byte", "cut \xEF\xBF\xBD\xEF\xBF\xBD",
                      "\xEF\xBF\xBD", "overlong \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
                      "surrogate \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
                      "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}));
  EXPECT_EQ(copy->keysForPropertiesOfVertices()[1], "key\xEF\xBF\xBD");
}

// ---------------------------------------------------------------------------
// Documents written by other tools

TEST(GraphmlForeign, IgraphStyleNamesWeightsAndGraphAttributes) {
  auto network = read(fixture("names-weights-and-graph-attributes.graphml"));
  ASSERT_TRUE(network);
  EXPECT_FALSE(network->isDirected());
  EXPECT_TRUE(network->isEdgeWeighted());
  EXPECT_FALSE(network->isVertexWeighted());
  EXPECT_EQ(network->keysForPropertiesOfVertices(), (std::vector<std::string>{"Name", "score"}));
  EXPECT_EQ(textsOf(network->propertyForKey("Name")), (TextList{"alpha", "beta", "gamma"}));
  const auto score = valuesOf<double>(network->propertyForKey("score"));
  ASSERT_EQ(score.size(), 3u);
  EXPECT_EQ(score[0], 0.5);
  EXPECT_TRUE(std::isnan(score[1]));
  EXPECT_EQ(score[2], -1e300);
  ASSERT_EQ(network->countEdges(), 2u);
  EXPECT_EQ(network->edgeFromList[1], 2u);
  EXPECT_EQ(network->edgeToList[1], 1u);
  EXPECT_EQ(network->edgesWeights[0], 2.5f);
  EXPECT_EQ(network->edgesWeights[1], 1e-3f);
}

// networkx declares an attribute whose values mix integers and floats under
// two keys of the same name, one "long" and one "double".
TEST(GraphmlForeign, OneAttributeDeclaredUnderSeveralKeysIsOneProperty) {
  auto network = read(fixture("attribute-under-several-keys.graphml"));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->keysForPropertiesOfVertices(), (std::vector<std::string>{"Name", "size"}));
  const auto size = valuesOf<double>(network->propertyForKey("size"));
  ASSERT_EQ(size.size(), 3u);
  EXPECT_EQ(size[0], 3.0);
  EXPECT_EQ(size[1], 0.25);
  EXPECT_TRUE(std::isnan(size[2]));
  ASSERT_EQ(network->countEdges(), 3u);
  EXPECT_EQ(network->edgesWeights[0], 2.0f);
  EXPECT_EQ(network->edgesWeights[1], 0.5f);
  EXPECT_EQ(network->edgesWeights[2], 1.0f);
}

TEST(GraphmlForeign, WordIdsNameTheVerticesAndMissingDataTakesDefaults) {
  auto network = read(fixture("word-ids-and-defaults.graphml"));
  ASSERT_TRUE(network);
  EXPECT_TRUE(network->isDirected());
  EXPECT_FALSE(network->isEdgeWeighted());
  EXPECT_EQ(network->keysForPropertiesOfVertices(),
            (std::vector<std::string>{"Name", "note", "temp", "size", "count", "flag", "plain",
                                      "ratio"}));
  EXPECT_EQ(textsOf(network->propertyForKey("Name")), (TextList{"alice", "bob", "carol"}));
  EXPECT_EQ(textsOf(network->propertyForKey("note")), (TextList{"none", "hi", "none"}));
  const auto temp = valuesOf<double>(network->propertyForKey("temp"));
  ASSERT_EQ(temp.size(), 3u);
  EXPECT_TRUE(std::isnan(temp[0]));
  EXPECT_EQ(temp[1], 1.5);
  EXPECT_TRUE(std::isnan(temp[2]));
  EXPECT_EQ(valuesOf<std::int64_t>(network->propertyForKey("size")),
            (std::vector<std::int64_t>{7, -3, 7}));
  EXPECT_EQ(valuesOf<std::int32_t>(network->propertyForKey("count")),
            (std::vector<std::int32_t>{3, 0, 0}));
  EXPECT_EQ(valuesOf<std::uint8_t>(network->propertyForKey("flag")),
            (std::vector<std::uint8_t>{1, 0, 0}));
  EXPECT_EQ(textsOf(network->propertyForKey("plain")), (TextList{"free text", "", ""}));
  EXPECT_EQ(valuesOf<float>(network->propertyForKey("ratio")),
            (std::vector<float>{0.25f, 2.0f, 0.25f}));
  ASSERT_EQ(network->countEdges(), 3u);
  EXPECT_EQ(std::vector<std::uint64_t>(network->edgeFromList, network->edgeFromList + 3),
            (std::vector<std::uint64_t>{0, 2, 0}));
  EXPECT_EQ(std::vector<std::uint64_t>(network->edgeToList, network->edgeToList + 3),
            (std::vector<std::uint64_t>{1, 2, 1}));
}

TEST(GraphmlForeign, LabelsIntegerColoursAndFlatCoordinates) {
  auto network = read(fixture("labels-integer-colours-flat-coordinates.graphml"));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->keysForPropertiesOfVertices(),
            (std::vector<std::string>{"Name", "Color", "Position", "size"}));
  EXPECT_EQ(textsOf(network->propertyForKey("Name")), (TextList{"Paris", "Lyon"}));
  const PropertyValue color = network->propertyForKey("Color");
  EXPECT_EQ(precisionOf(color), Precision::Float);
  const auto colors = vectorsOf(color);
  ASSERT_EQ(colors.size(), 2u);
  EXPECT_EQ(colors[0][0], 1.0);
  EXPECT_EQ(colors[0][2], static_cast<double>(static_cast<float>(51.0 / 255.0)));
  EXPECT_EQ(colors[1][1], static_cast<double>(static_cast<float>(128.0 / 255.0)));
  EXPECT_EQ(colors[1][2], static_cast<double>(static_cast<float>(1.0 / 255.0)));
  EXPECT_EQ(vectorsOf(network->propertyForKey("Position")),
            (std::vector<std::array<double, 3>>{{-12.5, 40.25, 0}, {3, -0.5, 0}}));
  EXPECT_TRUE(network->isEdgeWeighted());
  EXPECT_EQ(network->edgesWeights[0], 1.5f);
  EXPECT_EQ(network->edgesWeights[1], 4.0f);  // the key's default
}

TEST(GraphmlForeign, ColourScaleFollowsTheValues) {
  auto document = [](const char* type, const char* red) {
    std::string text = R"(<graphml><key id="r" for="node" attr.name="r" attr.type=")";
    text += type;
    text += R"("/><key id="g" for="node" attr.name="g" attr.type="double"/>
<key id="b" for="node" attr.name="b" attr.type="double"/>
<graph><node id="a"><data key="r">)";
    text += red;
    text += R"(</data><data key="g">0.5</data><data key="b">0</data></node></graph></graphml>)";
    return text;
  };
  auto unit = read(document("double", "1"));
  ASSERT_TRUE(unit);
  EXPECT_EQ(vectorsOf(unit->propertyForKey("Color"))[0], (std::array<double, 3>{1, 0.5, 0}));
  EXPECT_EQ(precisionOf(unit->propertyForKey("Color")), Precision::Double);

  auto bytes = read(document("double", "255"));
  ASSERT_TRUE(bytes);
  EXPECT_EQ(vectorsOf(bytes->propertyForKey("Color"))[0],
            (std::array<double, 3>{1, 0.5 / 255.0, 0}));

  auto integers = read(document("long", "1"));
  ASSERT_TRUE(integers);
  EXPECT_EQ(vectorsOf(integers->propertyForKey("Color"))[0][0], 1.0 / 255.0);
}

TEST(GraphmlForeign, NamePreferenceAndWhatStaysAPlainProperty) {
  auto keysOf = [](const std::string& nodeKeys) {
    std::string text = "<graphml>" + nodeKeys;
    text += R"(<graph><node id="first"/><node id="second"/></graph></graphml>)";
    auto network = read(text);
    return network ? network->keysForPropertiesOfVertices() : std::vector<std::string>{};
  };
  using Names = std::vector<std::string>;
  // The first string key among Name, name and label becomes "Name".
  EXPECT_EQ(keysOf(R"(<key id="a" for="node" attr.name="label"/>
                      <key id="b" for="node" attr.name="name" attr.type="string"/>)"),
            (Names{"label", "Name"}));
  EXPECT_EQ(keysOf(R"(<key id="a" for="node" attr.name="name" attr.type="string"/>
                      <key id="b" for="node" attr.name="Name" attr.type="string"/>)"),
            (Names{"name", "Name"}));
  // A numeric name is no label: the ids name the vertices instead.
  EXPECT_EQ(keysOf(R"(<key id="a" for="all" attr.name="name" attr.type="int"/>)"),
            (Names{"Name", "name"}));
  // Only x alone, or r and g without b, stay plain numbers; a text x too.
  EXPECT_EQ(keysOf(R"(<key id="a" for="node" attr.name="x" attr.type="double"/>
                      <key id="b" for="node" attr.name="r" attr.type="int"/>
                      <key id="c" for="node" attr.name="g" attr.type="int"/>)"),
            (Names{"Name", "x", "r", "g"}));
  EXPECT_EQ(keysOf(R"(<key id="a" for="node" attr.name="x" attr.type="string"/>
                      <key id="b" for="node" attr.name="y" attr.type="double"/>)"),
            (Names{"Name", "x", "y"}));
  // Keys for edges or graphs, and keys without a name, are no vertex properties.
  EXPECT_EQ(keysOf(R"(<key id="a" for="edge" attr.name="kind" attr.type="string"/>
                      <key id="b" for="graph" attr.name="title" attr.type="string"/>
                      <key id="c" for="node" yfiles.type="nodegraphics"/>)"),
            (Names{"Name"}));
}

TEST(GraphmlForeign, ConstructsWeDoNotModelAreSkipped) {
  auto network = read(fixture("unmodelled-constructs.graphml"));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->countVertices(), 2u);
  EXPECT_TRUE(network->isDirected());  // no edgedefault
  EXPECT_EQ(network->keysForPropertiesOfVertices(), (std::vector<std::string>{"k"}));
  EXPECT_EQ(valuesOf<std::int32_t>(network->propertyForKey("k")),
            (std::vector<std::int32_t>{0, 42}));
  ASSERT_EQ(network->countEdges(), 2u);
  EXPECT_EQ(network->edgeFromList[0], 1u);
  EXPECT_EQ(network->edgesWeights[0], 3.0f);
  EXPECT_EQ(network->edgesWeights[1], 1.0f);
}

TEST(GraphmlForeign, TextFormsOfValues) {
  auto network = read(fixture("text-forms-bom-crlf.graphml"));
  ASSERT_TRUE(network);
  EXPECT_FALSE(network->isDirected());
  EXPECT_EQ(textsOf(network->propertyForKey("t")), (TextList{"<raw> & more", "line\nbreak ©"}));
  EXPECT_EQ(valuesOf<std::uint8_t>(network->propertyForKey("f")),
            (std::vector<std::uint8_t>{1, 0}));
}

TEST(GraphmlForeign, Latin1DocumentsReadAsUtf8) {
  auto network = read(
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
      "<graphml><key id=\"l\" for=\"node\" attr.name=\"label\" attr.type=\"string\"/>"
      "<graph><node id=\"a\"><data key=\"l\">caf\xE9</data></node></graph></graphml>\n");
  ASSERT_TRUE(network);
  EXPECT_EQ(textsOf(network->propertyForKey("Name")), (TextList{"caf\xC3\xA9"}));
}

TEST(GraphmlForeign, OurMarkedKeysAreNotRenamedInOurDocuments) {
  // A document of ours: x without a marker is a plain property even though a
  // y key exists, and the label key keeps its name.
  auto network = read(fixture("marked-keys-of-ours.graphml"));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->keysForPropertiesOfVertices(),
            (std::vector<std::string>{"x", "y", "label", "Where"}));
  EXPECT_EQ(vectorsOf(network->propertyForKey("Where"))[0], (std::array<double, 3>{0, 3, 0}));
  EXPECT_EQ(textsOf(network->propertyForKey("label")), (TextList{""}));
}

// ---------------------------------------------------------------------------
// Failures

struct Failure {
  const char* what;
  std::string text;
  std::uint64_t line;
  const char* message;  // a part of the message
};

std::string withKeys(const std::string& keys, const std::string& graph) {
  return "<graphml>\n" + keys + "\n<graph>\n" + graph + "\n</graph>\n</graphml>\n";
}

TEST(GraphmlErrors, EveryFailureNamesTheLine) {
  const std::string intKey = R"(<key id="k" for="node" attr.name="k" attr.type="int"/>)";
  const std::vector<Failure> failures = {
      {"empty input", "", 1, "not a well-formed XML document"},
      {"unclosed element", "<graphml>\n<graph>\n<node id=\"a\">\n</graph>\n", 4,
       "not a well-formed XML document"},
      {"other root", "<?xml version=\"1.0\"?>\n\n<gexf/>\n", 3, "<gexf>"},
      {"no graph", "<graphml>\n<key id=\"k\"/>\n</graphml>", 1, "no <graph>"},
      {"bad int", withKeys(intKey, "<node id=\"a\">\n<data key=\"k\">1.5</data></node>"), 5,
       "'1.5' of key 'k' is not a valid int"},
      {"int out of range",
       withKeys(intKey, "<node id=\"a\"><data key=\"k\">2147483648</data></node>"), 4,
       "not a valid int"},
      {"bad long",
       withKeys(R"(<key id="k" for="node" attr.name="k" attr.type="long"/>)",
                "<node id=\"a\"><data key=\"k\">9223372036854775808</data></node>"),
       4, "not a valid long"},
      {"bad float",
       withKeys(R"(<key id="k" for="node" attr.name="k" attr.type="float"/>)",
                "<node id=\"a\"/>\n<node id=\"b\"><data key=\"k\">1e39</data></node>"),
       5, "not a valid float"},
      {"bad double",
       withKeys(R"(<key id="k" for="all" attr.name="k" attr.type="double"/>)",
                "<node id=\"a\"><data key=\"k\">1,5</data></node>"),
       4, "'1,5'"},
      {"bad boolean",
       withKeys(R"(<key id="k" for="node" attr.name="k" attr.type="boolean"/>)",
                "<node id=\"a\"><data key=\"k\">yes</data></node>"),
       4, "not a valid boolean"},
      {"bad default",
       withKeys(
           "<key id=\"k\" for=\"node\" attr.name=\"k\" attr.type=\"int\">\n<default>x</default>"
           "</key>",
           "<node id=\"a\"/>"),
       3, "'x' of key 'k'"},
      {"bad weight",
       withKeys(R"(<key id="w" for="edge" attr.name="weight" attr.type="double"/>)",
                "<node id=\"a\"/>\n<edge source=\"a\" target=\"a\"><data key=\"w\">heavy</data>"
                "</edge>"),
       5, "'heavy' of key 'weight'"},
      {"bad flag",
       withKeys(R"(<key id="e" for="graph" attr.name="edgeWeighted" attr.type="boolean"/>)",
                "<data key=\"e\">maybe</data>"),
       4, "not a valid boolean"},
      {"unknown node, ids n0 n1",
       withKeys("", "<node id=\"n0\"/><node id=\"n1\"/>\n<edge source=\"n0\" target=\"n2\"/>"), 5,
       "unknown node 'n2'"},
      {"unknown node, padded id",
       withKeys("", "<node id=\"n0\"/><node id=\"n1\"/>\n<edge source=\"n01\" target=\"n0\"/>"), 5,
       "unknown node 'n01'"},
      {"unknown node, word ids",
       withKeys("", "<node id=\"a\"/>\n<node id=\"b\"/>\n<edge source=\"b\" target=\"c\"/>"), 6,
       "unknown node 'c'"},
      {"edge without target", withKeys("", "<node id=\"a\"/>\n<edge source=\"a\"/>"), 5,
       "no target"},
      {"duplicate id", withKeys("", "<node id=\"a\"/>\n<node id=\"b\"/>\n<node id=\"a\"/>"), 6,
       "duplicate node id 'a'"},
      {"duplicate canonical id", withKeys("", "<node id=\"n0\"/>\n<node id=\"n0\"/>"), 5,
       "duplicate node id 'n0'"},
      {"node without id", withKeys("", "<node id=\"a\"/>\n<node/>"), 5, "no id"},
      {"CR line ends",
       "<graphml>\r<graph>\r\n<node id=\"a\"/>\r<edge source=\"a\" "
       "target=\"b\"/>\r</graph></graphml>",
       4, "unknown node 'b'"},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.what);
    ReadError error;
    error.line = 999;
    EXPECT_EQ(plexora::readGraphml(failure.text, "bad.graphml", &error), nullptr);
    EXPECT_EQ(error.file, "bad.graphml");
    EXPECT_EQ(error.line, failure.line) << error.message;
    EXPECT_NE(error.message.find(failure.message), std::string::npos) << error.message;
  }
}

TEST(GraphmlErrors, LimitsOnSize) {
  const std::uint64_t saved = plexora::maxReadVertices();
  plexora::setMaxReadVertices(2);
  ReadError error;
  EXPECT_EQ(plexora::readGraphml(withKeys("", "<node id=\"a\"/><node id=\"b\"/>\n<node id=\"c\"/>"),
                                 "big.graphml", &error),
            nullptr);
  EXPECT_EQ(error.line, 5u);
  EXPECT_NE(error.message.find("more than 2 vertices"), std::string::npos) << error.message;
  plexora::setMaxReadVertices(saved);

  // Many keys with defaults times many nodes would need far more memory than
  // the document's size justifies.
  std::string keys;
  for (int k = 0; k < 20000; ++k) {
    keys += "<key id=\"k" + std::to_string(k) + "\" for=\"node\" attr.name=\"p" +
            std::to_string(k) + "\"><default>x</default></key>\n";
  }
  std::string nodes;
  for (int v = 0; v < 20000; ++v) nodes += "<node id=\"n" + std::to_string(v) + "\"/>";
  EXPECT_EQ(plexora::readGraphml(withKeys(keys, nodes), "huge.graphml", &error), nullptr);
  EXPECT_NE(error.message.find("memory"), std::string::npos) << error.message;
}

// ---------------------------------------------------------------------------
// Files

class GraphmlFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() /
              ("graphml-test-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
               "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::vector<std::string> filesInFolder() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  fs::path folder_;
};

TEST_F(GraphmlFiles, SampleFileOpens) {
  ReadError error;
  auto network = QLONetwork::initWithContentsOfURL(kData / "friends.graphml", &error);
  ASSERT_TRUE(network) << error.describe();
  EXPECT_EQ(network->countVertices(), 5u);
  EXPECT_EQ(network->countEdges(), 6u);
  EXPECT_FALSE(network->isDirected());
  EXPECT_TRUE(network->isEdgeWeighted());
  EXPECT_EQ(network->vertexName(4), "Eve");
  EXPECT_EQ(precisionOf(network->propertyForKey("Position")), Precision::Double);
}

TEST_F(GraphmlFiles, AtomicWriteReplacesTheFileAndLeavesNothingElse) {
  NetworkData data = threeVertices();
  data.edgeWeighted = true;
  data.weights = {1.5f, 2.5f, 3.5f};
  data.properties = {{"Name", texts({"a", "b", "c"})}};
  auto network = makeNetwork(std::move(data));
  ASSERT_TRUE(network);
  const fs::path file = folder_ / "network.graphml";
  {
    std::ofstream old(file);
    old << "previous contents";
  }
  std::string why;
  ASSERT_TRUE(network->writeToURL(file, WriteMode::Atomic, &why)) << why;
  EXPECT_EQ(filesInFolder(), std::vector<std::string>{"network.graphml"});

  ReadError error;
  auto copy = QLONetwork::initWithContentsOfURL(file, &error);
  ASSERT_TRUE(copy) << error.describe();
  expectIdentical(*network, *copy);

  ASSERT_TRUE(network->writeToURL(folder_ / "direct.graphml", WriteMode::Direct, &why)) << why;
  auto direct = QLONetwork::initWithContentsOfURL(folder_ / "direct.graphml", &error);
  ASSERT_TRUE(direct) << error.describe();
  expectIdentical(*network, *direct);
}

TEST_F(GraphmlFiles, FailuresReportTheFile) {
  auto network = makeNetwork(threeVertices());
  ASSERT_TRUE(network);
  const fs::path missing = folder_ / "no-such-folder" / "network.graphml";
  for (WriteMode mode : {WriteMode::Atomic, WriteMode::Direct}) {
    std::string why;
    EXPECT_FALSE(network->writeToURL(missing, mode, &why));
    EXPECT_NE(why.find("network.graphml"), std::string::npos) << why;
  }
  EXPECT_TRUE(filesInFolder().empty());

  ReadError error;
  EXPECT_EQ(QLONetwork::initWithContentsOfURL(missing, &error), nullptr);
  EXPECT_EQ(error.file, missing.string());
  EXPECT_FALSE(error.message.empty());

  const fs::path broken = folder_ / "broken.graphml";
  {
    std::ofstream out(broken);
    out << "<graphml>\n<graph>\n<edge source=\"x\" target=\"y\"/>\n</graph>\n</graphml>\n";
  }
  EXPECT_EQ(QLONetwork::initWithContentsOfURL(broken, &error), nullptr);
  EXPECT_EQ(error.file, broken.string());
  EXPECT_EQ(error.line, 3u);
}

}  // namespace

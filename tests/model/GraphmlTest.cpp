// GraphML: exact round trips of our own documents, documents as other tools
// write them, every way a read can fail, and the file-level read and write.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "../support/files.h"
#include "../support/networks.h"
#include "../support/scratch.h"
#include "network_description.h"
#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace {

namespace fs = std::filesystem;

using NumberPtr = std::shared_ptr<QLONumberArray>;
using TextPtr = std::shared_ptr<TextList>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr float kFloatInf = std::numeric_limits<float>::infinity();

const fs::path kData = fs::path(PLEXVIEW_TEST_DATA) / "graphml";

template <class T>
NumberPtr numbers(NumberType type, const std::vector<T>& values) {
  auto array = QLONumberArray::initWithCount(values.size(), type);
  std::memcpy(array->QLO_dataPointer(), values.data(), values.size() * sizeof(T));
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

// A triangle 0->1->2->0 holding `properties`.
NetworkData threeVertices(PropertyTable properties = {}) {
  NetworkData data;
  data.verticesCount = 3;
  data.from = {0, 1, 2};
  data.to = {1, 2, 0};
  data.properties = std::move(properties);
  return data;
}

std::string fixture(const std::string& name) {
  return testing_support::contentsOf(kData / name);
}

QLONetwork::Ptr read(const std::string& text) {
  ReadError error;
  auto network = plexora::readGraphml(text, "test.graphml", &error);
  EXPECT_TRUE(network) << error.describe();
  return network;
}

using testing_support::describe;
using testing_support::vectorArray;

// ---------------------------------------------------------------------------
// Our own documents

TEST(GraphmlRoundTrip, EveryPropertyTypeFlagAndShapeReadsBackExactly) {
  const float fmin = std::numeric_limits<float>::denorm_min();
  const float fnan = std::numeric_limits<float>::quiet_NaN();
  std::vector<std::pair<std::string, NetworkData>> cases;
  cases.reserve(16);
  cases.emplace_back(
      "number types and their extremes",
      threeVertices({
          {"flag", numbers<std::uint8_t>(NumberType::Bool, {1, 0, 1})},
          {"small", numbers<std::int32_t>(NumberType::Int32, {INT32_MIN, -1, INT32_MAX})},
          {"big", numbers<std::int64_t>(NumberType::Int64, {INT64_MIN, 0, INT64_MAX})},
          {"single", numbers<float>(NumberType::Float, {0.1f, -0.0f, fmin})},
          {"singleNanInf", numbers<float>(NumberType::Float, {fnan, kFloatInf, -kFloatInf})},
          {"double", numbers<double>(NumberType::Double, {0.1, -0.0, 1e-310})},
          {"doubleNanInfMax",
           numbers<double>(NumberType::Double, {kNaN, -kInf, 1.7976931348623157e308})},
      }));
  NetworkData markup;
  markup.verticesCount = 10;
  markup.properties = {{"Name", texts({"a<b&c\"d'e>", "", " ", "  padded  ", "cr\rlf\r\n",
                                       "two\nlines", "tab\there", "é中😀", "]]> end", "&amp;"})}};
  cases.emplace_back("texts with markup, white space and non-ASCII", std::move(markup));
  cases.emplace_back(
      "vectors at both precisions beside user keys called x and r, names needing escapes",
      threeVertices({
          {"x", numbers<double>(NumberType::Double, {10, 20, 30})},
          {"Position", vectorArray({{0.1, -0.0, 3}, {kNaN, kInf, -kInf}, {1e30, 2, 3}})},
          {"Color",
           vectorArray({{0.1, 0.2, 0.3}, {1, 0, 0}, {0.5, 0.25, 1e-300}}, Precision::Double)},
          {"my vector x", vectorArray({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}})},
          {"r", texts({"red", "green", "blue"})},
          {"a\"b<c>&d e", numbers<double>(NumberType::Double, {1, 2, 3})},
          {"tab\tand\nline", texts({"x", "y", "z"})},
      }));
  for (int flags : {0, 3, 5, 6}) {
    NetworkData data = threeVertices();
    data.directed = (flags & 1) != 0;
    data.edgeWeighted = (flags & 2) != 0;
    data.vertexWeighted = (flags & 4) != 0;
    if (data.edgeWeighted) data.weights = {0.5f, 2.0f, -3.25f};
    cases.emplace_back("flags " + std::to_string(flags), std::move(data));
  }
  cases.emplace_back("empty network", NetworkData{});
  NetworkData loops;
  loops.verticesCount = 2;
  loops.from = {1, 0, 1, 1, 0};
  loops.to = {1, 1, 0, 1, 1};
  loops.edgeWeighted = true;
  loops.weights = {1, 2, 3, 4, 5};
  cases.emplace_back("self-loops and parallel edges in their order", std::move(loops));

  for (auto& [what, data] : cases) {
    SCOPED_TRACE(what);
    auto network = makeNetwork(std::move(data));
    ASSERT_TRUE(network);
    const std::string text = plexora::graphmlText(*network);
    auto copy = read(text);
    ASSERT_TRUE(copy);
    EXPECT_EQ(describe(*copy), describe(*network));
    EXPECT_EQ(plexora::graphmlText(*copy), text);
  }
}

TEST(GraphmlWriting, KeysOtherToolsLookForAndCharactersXmlCannotCarry) {
  NetworkData data;
  data.verticesCount = 7;
  data.properties = {
      {"Name", texts({std::string("a\x01z", 3), "bad \xff byte", "cut \xe2\x82", "\xef\xbf\xbe",
                      "overlong \xe0\x80\xaf", "surrogate \xed\xa0\x80", "\xf4\x90\x80\x80"})},
      {std::string("key\x02", 4), numbers<float>(NumberType::Float, {1, 2, 3, 4, 5, 6, 7})},
      {"Position", QLOVector3dArray::initWithSize(7, Precision::Float)},
      {"Color", QLOVector3dArray::initWithSize(7, Precision::Double)},
      {"Velocity", QLOVector3dArray::initWithSize(7, Precision::Float)},
  };
  auto network = makeNetwork(std::move(data));
  ASSERT_TRUE(network);
  const std::string text = plexora::graphmlText(*network);
  EXPECT_EQ(text.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"?>", 0), 0u);
  for (const char* part :
       {"xmlns=\"http://graphml.graphdrawing.org/xmlns\"", "attr.name=\"x\" attr.type=\"float\"",
        "attr.name=\"z\" attr.type=\"float\"", "attr.name=\"r\" attr.type=\"double\"",
        "attr.name=\"b\" attr.type=\"double\"", "attr.name=\"Velocity.y\" attr.type=\"float\""}) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
  }
  // An unweighted network has no weight key.
  EXPECT_EQ(text.find("attr.name=\"weight\""), std::string::npos);
  auto copy = read(text);
  ASSERT_TRUE(copy);
  EXPECT_EQ(*std::get<TextPtr>(copy->propertyForKey("Name")),
            (TextList{"a\xEF\xBF\xBDz", "bad \xEF\xBF\xBD byte", "cut \xEF\xBF\xBD\xEF\xBF\xBD",
                      "\xEF\xBF\xBD", "overlong \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
                      "surrogate \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
                      "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}));
  EXPECT_EQ(copy->keysForPropertiesOfVertices()[1], "key\xEF\xBF\xBD");

  // A property without an array (possible only without vertices) is not written.
  NetworkData hollow;
  hollow.properties = {{"nothing", NumberPtr()}};
  auto empty = makeNetwork(std::move(hollow));
  ASSERT_TRUE(empty);
  auto emptyCopy = read(plexora::graphmlText(*empty));
  ASSERT_TRUE(emptyCopy);
  EXPECT_TRUE(emptyCopy->keysForPropertiesOfVertices().empty());
}

// ---------------------------------------------------------------------------
// Documents written by other tools

TEST(GraphmlForeign, DocumentsReadAsDescribed) {
  // A document whose nodes "first" and "second" have these keys and no data.
  auto withNodeKeys = [](const std::string& keys) {
    return "<graphml>" + keys + R"(<graph><node id="first"/><node id="second"/></graph></graphml>)";
  };
  // One node whose colour keys r, g and b, all of `type`, hold `red`, 0 and 1.
  auto colour = [](const std::string& type, const std::string& red) {
    std::string text = "<graphml>";
    for (const std::string key : {"r", "g", "b"}) {
      text += R"(<key for="node" id=")" + key + R"(" attr.name=")" + key + R"(" attr.type=")" +
              type + R"("/>)";
    }
    return text + R"(<graph><node id="a"><data key="r">)" + red +
           R"(</data><data key="g">0</data><data key="b">1</data></node></graph></graphml>)";
  };
  const std::pair<std::string, std::string> cases[] = {
      {fixture("attribute-under-several-keys.graphml"),
       "3 directed weighted | 0-1:2 1-2:0.5 2-0:1 | Name=\"a\"\"b\"\"c\" | "
       "size:double=3,0.25,nan,"},
      {fixture("word-ids-and-defaults.graphml"),
       "3 directed | 0-1 2-2 0-1 | Name=\"alice\"\"bob\"\"carol\" | note=\"none\"\"hi\"\"none\" | "
       "temp:double=nan,1.5,nan, | size:long=7,-3,7, | count:int=3,0,0, | flag:bool=1,0,0, | "
       "plain=\"free text\"\"\"\"\" | ratio:float=0.25,2,0.25,"},
      {fixture("labels-integer-colours-flat-coordinates.graphml"),
       "2 undirected weighted | 0-1:1.5 1-1:4 | Name=\"Paris\"\"Lyon\" | "
       "Color:float3=1 0 0.2,0 0.5019608 0.003921569, | Position:float3=-12.5 40.25 0,3 -0.5 0, | "
       "size:float=10,4.5,"},
      {fixture("unmodelled-constructs.graphml"), "2 directed weighted | 1-0:3 0-1:1 | k:int=0,42,"},
      {fixture("text-forms-bom-crlf.graphml"),
       "2 undirected | | t=\"<raw> & more\"\"line\nbreak ©\" | f:bool=1,0,"},
      {fixture("marked-keys-of-ours.graphml"),
       "1 undirected | | x:double=1, | y:double=2, | label=\"\" | Where:double3=0 3 0,"},
      {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
       "<graphml><key id=\"l\" for=\"node\" attr.name=\"label\" attr.type=\"string\"/>"
       "<graph><node id=\"a\"><data key=\"l\">caf\xE9</data></node></graph></graphml>\n",
       "1 directed | | Name=\"caf\xC3\xA9\""},
      // Colours are divided by 255 when a key is an integer or a value is above 1.
      {colour("double", "255"),
       "1 directed | | Name=\"a\" | Color:double3=1 0 0.00392156862745098,"},
      // The first string key among Name, name and label becomes "Name"; a
      // numeric one is no label, so the ids name the vertices.
      {withNodeKeys(R"(<key id="a" for="node" attr.name="label"/>
                       <key id="b" for="node" attr.name="name" attr.type="string"/>)"),
       "2 directed | | label=\"\"\"\" | Name=\"\"\"\""},
      {withNodeKeys(R"(<key id="a" attr.name="name" attr.type="int"/>)"),
       "2 directed | | Name=\"first\"\"second\" | name:int=0,0,"},
      // A text x, or r and g without b, give no vector; keys for edges or
      // graphs, and keys without a name, are no vertex properties; a key
      // without "for" is for everything.
      {withNodeKeys(R"(<key id="a" for="node" attr.name="x" attr.type="string"/>
                       <key id="b" for="node" attr.name="y" attr.type="float"/>
                       <key id="c" for="node" attr.name="r" attr.type="int"/>
                       <key id="d" for="node" attr.name="g" attr.type="int"/>
                       <key id="e" for="edge" attr.name="kind" attr.type="string"/>
                       <key id="f" for="graph" attr.name="title" attr.type="string"/>
                       <key id="g" for="node" yfiles.type="nodegraphics"/>
                       <key id="w" attr.name="weight" attr.type="double"/>)"),
       "2 directed weighted | | Name=\"first\"\"second\" | x=\"\"\"\" | y:float=nan,nan, | "
       "r:int=0,0, | g:int=0,0, | weight:double=nan,nan,"},
      // graph-tool's vector keys: three numbers make a vector, a 2-D or 3-D
      // "_pos" the layout; other counts stay text. Failing "weight", a numeric
      // edge key "value" holds the weights.
      {R"(<graphml><key id="p" for="node" attr.name="_pos" attr.type="vector_double"/>
<key id="c" for="node" attr.name="c" attr.type="vector_float"/>
<key id="q" for="node" attr.name="q" attr.type="vector_int"/>
<key id="v" for="edge" attr.name="value" attr.type="int"/>
<graph edgedefault="undirected"><node id="n0"><data key="p">1, 2</data><data key="c">1 2 3</data>
<data key="q">1, 2, 3, 4</data></node><node id="n1"><data key="p">-0.5,4</data></node>
<edge source="n0" target="n1"><data key="v">3</data></edge></graph></graphml>)",
       "2 undirected weighted | 0-1:3 | Position:double3=1 2 0,-0.5 4 0, | "
       "c:float3=1 2 3,0 0 0, | q=\"1, 2, 3, 4\"\"\""},
      // Gephi's x and y; a node without them sits at the origin.
      {R"(<graphml><key id="x" for="node" attr.name="x" attr.type="float"/>
<key id="y" for="node" attr.name="y" attr.type="float"/><graph><node id="n0">
<data key="x">1.5</data><data key="y">-2</data></node><node id="n1"/></graph></graphml>)",
       "2 directed | | Position:float3=1.5 -2 0,0 0 0,"},
      // A flag without data takes its key's default.
      {R"(<graphml><key id="e" for="graph" attr.name="edgeWeighted" attr.type="boolean">
<default>true</default></key><graph><node id="n0"/></graph></graphml>)",
       "1 directed weighted |"},
  };
  for (const auto& [document, expected] : cases) {
    SCOPED_TRACE(expected);
    auto network = read(document);
    ASSERT_TRUE(network);
    EXPECT_EQ(describe(*network), expected);
    // Written back with what it held beyond the network, it reads the same,
    // and writing it again gives the same text.
    const std::string written = plexora::graphmlText(*network);
    auto back = read(written);
    ASSERT_TRUE(back);
    EXPECT_EQ(describe(*back), expected);
    EXPECT_EQ(plexora::graphmlText(*back), written);
  }
}

TEST(GraphmlForeign, WhatTheModelDoesNotHoldIsWrittenBackAndFollowsTheComponent) {
  auto network = read(fixture("other-tools-extras.graphml"));
  ASSERT_TRUE(network);
  EXPECT_FALSE(network->isPlexviewDocument());
  // "loner" has no edge: the component drops it and everything kept for it.
  const std::string text = plexora::graphmlText(*network->largestConnectedSubNetwork());
  for (const char* part :
       {"plexview:document=\"1\"", "xmlns:y=\"http://www.yworks.com/xml/graphml\"",
        "<desc>Three friends</desc>", "<desc>who knows whom</desc>", "id=\"friends\"",
        "attr.name=\"label\" attr.type=\"string\" plexview:property=\"Name\"",
        "attr.type=\"vector_float\"", "attr.type=\"complex128\"", "yfiles.type=\"nodegraphics\"",
        "<data key=\"d1\">2024</data>", "<node id=\"ann\">",
        "<data key=\"d3\">0.5, 1.25, -3</data>",
        "<y:ShapeNode><y:Fill color=\"#FF0000\"/></y:ShapeNode>",
        "<edge source=\"bob\" target=\"cy\" id=\"e1\"><data key=\"d6\">0.75</data><data "
        "key=\"d5\">7</data></edge>"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(text.find("loner"), std::string::npos);
  EXPECT_EQ(text.find("parse.nodes"), std::string::npos) << "the counts no longer hold";

  auto back = read(text);
  ASSERT_TRUE(back);
  EXPECT_TRUE(back->isPlexviewDocument());
  EXPECT_EQ(describe(*back), describe(*network->largestConnectedSubNetwork()));
  EXPECT_EQ(plexora::graphmlText(*back), text);
}

// ---------------------------------------------------------------------------
// Failures

std::string withKeys(const std::string& keys, const std::string& graph) {
  return "<graphml>\n" + keys + "\n<graph>\n" + graph + "\n</graph>\n</graphml>\n";
}

std::string keyOfType(const std::string& type, const std::string& domain = "node") {
  return R"(<key id="k" for=")" + domain + R"(" attr.name="k" attr.type=")" + type + R"("/>)";
}

// A node "a" on line 4 whose key "k" of `type` holds `value`.
std::string nodeValue(const std::string& type, const std::string& value,
                      const std::string& domain = "node") {
  return withKeys(keyOfType(type, domain),
                  "<node id=\"a\"><data key=\"k\">" + value + "</data></node>");
}

TEST(GraphmlErrors, EveryFailureNamesTheLine) {
  struct Failure {
    std::string text;
    std::uint64_t line;
    const char* message;  // a part of the message
  };
  const Failure failures[] = {
      {"<graphml>\n<graph>\n<node id=\"a\">\n</graph>\n", 4, "not a well-formed XML document"},
      {"<?xml version=\"1.0\"?>\n\n<gexf/>\n", 3, "<gexf>"},
      {"<graphml>\n<key id=\"k\"/>\n</graphml>", 1, "no <graph>"},
      {withKeys(keyOfType("int"), "<node id=\"a\">\n<data key=\"k\">2147483648</data></node>"), 5,
       "the value '2147483648' of key 'k' is not a valid int"},
      {nodeValue("double", "1,5", "all"), 4, "'1,5'"},
      {withKeys("<key id=\"k\" for=\"node\" attr.name=\"k\" attr.type=\"int\">\n"
                "<default>x</default></key>",
                "<node id=\"a\"/>"),
       3, "'x' of key 'k'"},
      {withKeys(R"(<key id="w" for="edge" attr.name="weight" attr.type="double"/>)",
                "<node id=\"a\"/>\n<edge source=\"a\" target=\"a\"><data key=\"w\">heavy</data>"
                "</edge>"),
       5, "'heavy' of key 'weight'"},
      {withKeys("", "<node id=\"n0\"/><node id=\"n1\"/>\n<edge source=\"n01\" target=\"n0\"/>"), 5,
       "unknown node 'n01'"},
      {withKeys("", "<node id=\"a\"/>\n<edge source=\"a\"/>"), 5, "no target"},
      {withKeys("", "<node id=\"a\"/>\n<node/>"), 5, "no id"},
      {withKeys("", "<node id=\"n0\"/>\n<node id=\"b\"/>\n<node id=\"n0\"/>"), 6,
       "duplicate node id 'n0'"},
      {withKeys(R"(<key id="x" for="node" attr.name="x" attr.type="double"/>
<key id="y" for="node" attr.name="y" attr.type="double"/>)",
                "<node id=\"a\">\n<data key=\"x\">1</data><data key=\"y\">nan</data></node>"),
       6, "coordinate 'nan' of key 'y' is not finite"},
      {withKeys(R"(<key id="p" for="node" attr.name="pos" attr.type="vector_float"/>)",
                "<node id=\"a\"/>\n<node id=\"b\"><data key=\"p\">1, inf</data></node>"),
       5, "position '1, inf' of key 'pos' is not finite"},
      {"<graphml>\r<graph>\r\n<node id=\"a\"/>\r<edge source=\"a\" "
       "target=\"b\"/>\r</graph></graphml>",
       4, "unknown node 'b'"},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.message);
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

TEST(GraphmlFiles, ReadWriteAndFailuresNamingTheFile) {
  ReadError error;
  auto sample = QLONetwork::initWithContentsOfURL(
      kData / "names-weights-and-graph-attributes.graphml", &error);
  ASSERT_TRUE(sample) << error.describe();
  EXPECT_EQ(describe(*sample),
            "3 undirected weighted | 0-1:2.5 2-1:0.001 | Name=\"alpha\"\"beta\"\"gamma\" | "
            "score:double=0.5,nan,-1e+300,");

  const ScratchFolder scratch;
  const fs::path& folder = scratch.path();
  std::string why;
  ASSERT_TRUE(sample->writeToURL(folder / "out.graphml", WriteMode::Atomic, &why)) << why;
  auto copy = QLONetwork::initWithContentsOfURL(folder / "out.graphml", &error);
  ASSERT_TRUE(copy) << error.describe();
  EXPECT_EQ(describe(*copy), describe(*sample));

  const fs::path missing = folder / "no-such-folder" / "network.graphml";
  EXPECT_FALSE(sample->writeToURL(missing, WriteMode::Direct, &why));
  EXPECT_NE(why.find("network.graphml"), std::string::npos) << why;
  EXPECT_EQ(QLONetwork::initWithContentsOfURL(missing, &error), nullptr);
  EXPECT_EQ(error.file, missing.string());
  std::ofstream(folder / "broken.graphml")
      << "<graphml>\n<graph>\n<edge source=\"x\" target=\"y\"/>\n</graph>\n</graphml>\n";
  EXPECT_EQ(QLONetwork::initWithContentsOfURL(folder / "broken.graphml", &error), nullptr);
  EXPECT_EQ(error.file, (folder / "broken.graphml").string());
  EXPECT_EQ(error.line, 3u);
}

}  // namespace

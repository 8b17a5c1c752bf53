// Reading and writing Pajek text, and the plain edge list.
#include <gtest/gtest.h>
#include <unistd.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "quillo/fileio.h"

namespace {

using Edge = std::pair<std::uint64_t, std::uint64_t>;

const std::filesystem::path kData = std::filesystem::path(PLEXVIEW_TEST_DATA) / "pajek";

// The bytes of a document in the test data's pajek folder.
std::string fixture(const std::string& name) {
  std::string text;
  ReadError error;
  EXPECT_TRUE(quillo::readWholeFile(kData / name, text, &error)) << error.describe();
  return text;
}

QLONetwork::Ptr readText(std::string_view text) {
  ReadError error;
  auto network = plexora::readPajek(text, "test.net", &error);
  EXPECT_TRUE(network) << error.describe();
  return network;
}

std::vector<Edge> edgesOf(const QLONetwork& network) {
  std::vector<Edge> edges;
  for (std::uint64_t k = 0; k < network.edgesCount; ++k) {
    edges.emplace_back(network.edgeFromList[k], network.edgeToList[k]);
  }
  return edges;
}

std::vector<float> weightsOf(const QLONetwork& network) {
  return {network.edgesWeights, network.edgesWeights + network.edgesCount};
}

TextList textsOf(const QLONetwork& network, const std::string& name) {
  PropertyValue value = network.propertyForKey(name);
  auto* texts = std::get_if<std::shared_ptr<TextList>>(&value);
  return texts ? **texts : TextList{};
}

std::vector<std::array<double, 3>> positionsOf(const QLONetwork& network) {
  std::vector<std::array<double, 3>> out;
  PropertyValue value = network.propertyForKey("Position");
  for (std::uint64_t v = 0; v < propertyCount(value); ++v) {
    out.push_back(std::get<std::array<double, 3>>(propertyEntry(value, v)));
  }
  return out;
}

// ---------------------------------------------------------------------------
// Sections

TEST(PajekSections, EveryEdgeSectionAddsItsEdgesInFileOrder) {
  auto network = readText(fixture("all-edge-sections.net"));
  ASSERT_TRUE(network);
  EXPECT_EQ(edgesOf(*network),
            (std::vector<Edge>{{0, 1}, {2, 0}, {2, 1}, {2, 3}, {3, 3}, {1, 2}, {1, 3}, {0, 2}}));
  EXPECT_TRUE(network->isDirected());
  EXPECT_FALSE(network->isEdgeWeighted());
  EXPECT_EQ(network->verticesCount, 4u);
}

TEST(PajekSections, HeaderTextAfterTheKeywordIsIgnored) {
  // Two-mode counts, relation numbers and names do not change what is read.
  auto network = readText(fixture("header-text.net"));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->verticesCount, 5u);
  EXPECT_EQ(edgesOf(*network), (std::vector<Edge>{{0, 4}, {1, 2}}));
}

TEST(PajekSections, MatrixEntriesAreCountedAcrossWrappedRows) {
  auto network = readText("*Vertices 3\n*Matrix\n0 2 0\n0 0\n1.5\n1 0 0\n*Edges\n1 1\n");
  ASSERT_TRUE(network);
  EXPECT_EQ(edgesOf(*network), (std::vector<Edge>{{0, 1}, {1, 2}, {2, 0}, {0, 0}}));
  EXPECT_EQ(weightsOf(*network), (std::vector<float>{2.0f, 1.5f, 1.0f, 1.0f}));
  EXPECT_TRUE(network->isDirected());
  EXPECT_TRUE(network->isEdgeWeighted());
}

TEST(PajekSections, UnknownSectionsAndLaterNetworksAreSkipped) {
  auto network = readText(
      "*Vertices 2\n*Partition p\n5 6 7\nnot a number\n*Vector\n0.5\n*Edges\n1 2\n"
      "*Project\n*Vertices 9\n1 \"x\"\n*Arcs\n1 9\n");
  ASSERT_TRUE(network);
  EXPECT_EQ(network->verticesCount, 2u);
  EXPECT_EQ(edgesOf(*network), (std::vector<Edge>{{0, 1}}));
  EXPECT_FALSE(network->isDirected());

  auto first = readText("*Network a\n*Edges\n1 2\n*Network b\n*Arcs\n1 7\n");
  ASSERT_TRUE(first);
  EXPECT_EQ(first->verticesCount, 2u);
  EXPECT_FALSE(first->isDirected());

  // A partition's own *Vertices line does not declare the network's vertices.
  auto partitioned = readText("*Network a\n*Edges\n1 2\n*Partition p\n*Vertices 3\n1\n2\n1\n");
  ASSERT_TRUE(partitioned);
  EXPECT_EQ(partitioned->verticesCount, 2u);
  EXPECT_TRUE(partitioned->keysForPropertiesOfVertices().empty());
}

TEST(PajekSections, VertexCountComesFromEdgesWhenNotDeclared) {
  auto network = readText("*Arcs\n3 7\n2 1\n");
  ASSERT_TRUE(network);
  EXPECT_EQ(network->verticesCount, 7u);
  EXPECT_TRUE(network->keysForPropertiesOfVertices().empty());

  // Edges before *Vertices are checked against the count when it arrives.
  auto later = readText("*Edges\n1 3\n*Vertices 4\n4 \"d\"\n");
  ASSERT_TRUE(later);
  EXPECT_EQ(later->verticesCount, 4u);
  EXPECT_EQ(textsOf(*later, "Name"), (TextList{"", "", "", "d"}));

  auto empty = readText("");
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->verticesCount, 0u);
}

// ---------------------------------------------------------------------------
// Vertex lines

TEST(PajekVertices, LabelsQuotedEmptyBareSparseAndRepeated) {
  auto network = readText(fixture("labels-quoted-bare-sparse-repeated.net"));
  ASSERT_TRUE(network);
  EXPECT_EQ(textsOf(*network, "Name"),
            (TextList{"two words", "", "second", "bare", "", "open quote runs on"}));
  EXPECT_EQ(network->keysForPropertiesOfVertices(), (std::vector<std::string>{"Name"}));
}

TEST(PajekVertices, LabelsThatAreNotUtf8AreReadAsLatin1) {
  auto network = readText(
      "*Vertices 4\n1 \"Fran\xe7ois\"\n2 \"Zo\xc3\xab\"\n3 \"\xc3\x28\"\n4 \"\xed\xa0\x80\"\n");
  ASSERT_TRUE(network);
  EXPECT_EQ(textsOf(*network, "Name"),
            (TextList{"Fran\xc3\xa7ois", "Zo\xc3\xab", "\xc3\x83(", "\xc3\xad\xc2\xa0\xc2\x80"}));
}

TEST(PajekVertices, CoordinatesBecomePositionWhenTheyCarryALayout) {
  auto network =
      readText("*Vertices 4\n1 a 0.5 -2\n2 b 1 2 3 box\n4 d 7 8 9\n4 \"d again\" 0.25 0.75\n");
  ASSERT_TRUE(network);
  PropertyValue position = network->propertyForKey("Position");
  auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&position);
  ASSERT_TRUE(vectors);
  EXPECT_EQ((*vectors)->precision(), Precision::Float);
  EXPECT_EQ(positionsOf(*network), (std::vector<std::array<double, 3>>{
                                       {0.5, -2, 0}, {1, 2, 3}, {0, 0, 0}, {0.25, 0.75, 0}}));

  // One number is not a position, and identical coordinates carry no layout.
  for (const char* text : {"*Vertices 2\n1 a 0.0 0.0 ellipse\n2 b 0.0 0.0 ellipse\n",
                           "*Vertices 2\n1 a 3 4\n", "*Vertices 2\n1 a 3 box\n2 b 5\n"}) {
    auto flat = readText(text);
    ASSERT_TRUE(flat);
    EXPECT_EQ(propertyCount(flat->propertyForKey("Position")), 0u) << text;
  }
}

TEST(PajekVertices, AttributesBecomePropertiesInOrderOfAppearance) {
  auto network = readText(fixture("vertex-attributes.net"));
  ASSERT_TRUE(network);
  EXPECT_EQ(
      network->keysForPropertiesOfVertices(),
      (std::vector<std::string>{"Name", "Position", "ic", "x_fact", "shape", "lc", "s_size"}));
  // The second line for vertex 3 replaced everything the first one gave it.
  EXPECT_EQ(positionsOf(*network),
            (std::vector<std::array<double, 3>>{{0, 0, 0}, {0, 0, 0}, {1, 1, 0}}));
  EXPECT_TRUE(std::isnan(std::get<double>(propertyEntry(network->propertyForKey("s_size"), 2))));
  EXPECT_EQ(textsOf(*network, "ic"), (TextList{"Red", "", ""}));
  EXPECT_EQ(textsOf(*network, "lc"), (TextList{"", "Blue", ""}));
  EXPECT_EQ(textsOf(*network, "shape"), (TextList{"box", "diamond", ""}));
  PropertyValue factors = network->propertyForKey("x_fact");
  auto* numbers = std::get_if<std::shared_ptr<QLONumberArray>>(&factors);
  ASSERT_TRUE(numbers);
  EXPECT_EQ((*numbers)->numberArrayType(), NumberType::Double);
  EXPECT_EQ((*numbers)->doubleValueAtIndex(0), 2.5);
  EXPECT_EQ((*numbers)->doubleValueAtIndex(1), 4.0);
  EXPECT_TRUE(std::isnan((*numbers)->doubleValueAtIndex(2)));
}

// ---------------------------------------------------------------------------
// Text forms: every variant reads to the same network as the plain one.

TEST(PajekTextForms, LineEndsTabsCommentsAndByteOrderMark) {
  const std::string plain = "*Vertices 3\n1 \"a b\" 1 2\n2 c\n*Arcs\n1 2 0.5\n3 1\n";
  auto reference = readText(plain);
  ASSERT_TRUE(reference);
  const std::vector<std::string> variants = {
      "*Vertices 3\r\n1 \"a b\" 1 2\r\n2 c\r\n*Arcs\r\n1 2 0.5\r\n3 1\r\n",
      "*Vertices 3\r1 \"a b\" 1 2\r2 c\r*Arcs\r1 2 0.5\r3 1",
      "\xEF\xBB\xBF*Vertices 3\n1 \"a b\" 1 2\n2 c\n*Arcs\n1 2 0.5\n3 1\n",
      "% header\n\n*Vertices\t3\n\t1\t\"a b\"\t1\t2\n  2   c  \n%  1 3\n*Arcs\n\n1\t2\t0.5\n  3 1",
  };
  for (const std::string& text : variants) {
    auto network = readText(text);
    ASSERT_TRUE(network) << text;
    EXPECT_EQ(edgesOf(*network), edgesOf(*reference)) << text;
    EXPECT_EQ(weightsOf(*network), weightsOf(*reference)) << text;
    EXPECT_EQ(textsOf(*network, "Name"), textsOf(*reference, "Name")) << text;
    EXPECT_EQ(positionsOf(*network), positionsOf(*reference)) << text;
  }
}

// ---------------------------------------------------------------------------
// Flags

TEST(PajekFlags, DirectionAndWeightsFollowWhatTheSectionsContributed) {
  struct Case {
    const char* text;
    bool directed;
    bool weighted;
    std::vector<float> weights;
  };
  const Case cases[] = {
      {"*Edges\n1 2 3.5\n2 3\n", false, true, {3.5f, 1.0f}},
      {"*Arcs\n1 2\n", true, false, {1.0f}},
      {"*Arcs\n*Edges\n1 2\n", false, false, {1.0f}},
      {"*Arcs\n1 2 heavy\n2 1 c Red\n", true, false, {1.0f, 1.0f}},
      {"*Edges\n1 2 1\n", false, true, {1.0f}},
      {"*Arcslist\n1 2\n*Edges\n1 2 0.5\n", true, true, {1.0f, 0.5f}},
      {"*Vertices 2\n*Matrix\n0 0\n0 0\n*Edges\n1 2\n", false, false, {1.0f}},
      {"*Vertices 2\n*Matrix\n0 1\n0 0\n", true, true, {1.0f}},
      {"*Edges\n1 2 1e39\n1 2 -1e39\n1 2 1e999\n",
       false,
       true,
       {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(), 1.0f}},
  };
  for (const Case& c : cases) {
    auto network = readText(c.text);
    ASSERT_TRUE(network) << c.text;
    EXPECT_EQ(network->isDirected(), c.directed) << c.text;
    EXPECT_EQ(network->isEdgeWeighted(), c.weighted) << c.text;
    EXPECT_FALSE(network->isVertexWeighted()) << c.text;
    EXPECT_EQ(weightsOf(*network), c.weights) << c.text;
  }
}

// ---------------------------------------------------------------------------
// Malformed input

TEST(PajekErrors, EachFaultNamesItsLine) {
  struct Case {
    std::string text;
    std::uint64_t line;
    std::string message;  // a part of the expected message
  };
  const std::vector<Case> cases = {
      {"*Vertices 10\n1 a\n12 b\n", 3, "vertex 12 is outside 1..10"},
      {"*Vertices 3\n0 a\n", 2, "vertex 0 is outside 1..3"},
      {"*Vertices 3\nx a\n", 2, "'x' is not a vertex number"},
      {"*Vertices 3\n*Arcs\n1 -2\n", 3, "'-2' is not a vertex number"},
      {"*Vertices 3\n*Edges\n1 2\n2 4 1.0\n", 4, "vertex 4 is outside 1..3"},
      {"*Edges\n1 99999999999999999999\n", 2, "vertex 99999999999999999999 is outside"},
      {"*Edges\n0 1\n", 2, "vertex 0 is outside"},
      {"*Arcs\n1\n", 2, "needs two vertex numbers"},
      {"*Arcslist\n1 2 three\n", 2, "'three' is not a vertex number"},
      {"% c\n*Vertices 99999999999999999999\n", 2, "vertex count 99999999999999999999"},
      {"*Vertices 300000000\n", 1, "is above the limit of"},
      {"*Vertices\n", 1, "needs the number of vertices"},
      {"*Vertices many\n", 1, "'many' is not a vertex count"},
      {"*Matrix\n0 1\n", 1, "*Matrix needs a *Vertices line"},
      {"*Vertices 3\n%\n*Matrix\n0 1 0\n0 0\n*Edges\n", 3, "the matrix ends after 5 numbers"},
      {"*Vertices 2\n*Matrix\n0 1\n0 0\n1\n", 5, "more than 2 rows"},
      {"*Vertices 2\n*Matrix\n0 1\n0 x\n", 4, "'x' is not a number"},
      {"1 2\n*Edges\n", 1, "is not in a section"},
      {"*Network n\n1 2\n", 2, "is not in a section"},
      {"*Edges\n1 2\n1 9\n1 12\n1 12\n*Vertices 10\n", 4, "vertex 12 is outside 1..10"},
      // A huge declared matrix must fail on its few entries, not allocate.
      {"*Vertices 200000000\n*Matrix\n1 0 0\n", 2, "the matrix ends after 3 numbers"},
  };
  for (const Case& c : cases) {
    ReadError error;
    EXPECT_FALSE(plexora::readPajek(c.text, "bad.net", &error)) << c.text;
    EXPECT_EQ(error.file, "bad.net") << c.text;
    EXPECT_EQ(error.line, c.line) << c.text << "\n" << error.message;
    EXPECT_NE(error.message.find(c.message), std::string::npos) << c.text << "\n" << error.message;
  }
}

TEST(PajekErrors, UndeclaredVertexNumbersStopAtTheLimit) {
  const std::uint64_t saved = plexora::maxReadVertices();
  plexora::setMaxReadVertices(100);
  ReadError error;
  EXPECT_TRUE(plexora::readPajek("*Edges\n1 100\n", "t.net", &error));
  EXPECT_FALSE(plexora::readPajek("*Edges\n1 100\n101 1\n", "t.net", &error));
  EXPECT_EQ(error.line, 3u);
  EXPECT_FALSE(plexora::readPajek("*Vertices 101\n", "t.net", &error));
  EXPECT_EQ(error.line, 1u);
  plexora::setMaxReadVertices(saved);
}

// ---------------------------------------------------------------------------
// Writing and reading back

QLONetwork::Ptr makeNetwork(std::uint64_t vertices, std::vector<Edge> edges,
                            std::vector<float> weights, bool directed, PropertyTable properties) {
  NetworkData data;
  data.verticesCount = vertices;
  for (const auto& [a, b] : edges) {
    data.from.push_back(a);
    data.to.push_back(b);
  }
  data.edgeWeighted = !weights.empty();
  data.weights = std::move(weights);
  data.directed = directed;
  data.properties = std::move(properties);
  std::string why;
  auto network = QLONetwork::make(std::move(data), &why);
  EXPECT_TRUE(network) << why;
  return network;
}

void expectSameNetwork(const QLONetwork& written, const QLONetwork& read) {
  EXPECT_EQ(read.verticesCount, written.verticesCount);
  EXPECT_EQ(edgesOf(read), edgesOf(written));
  EXPECT_EQ(read.isDirected(), written.isDirected());
  EXPECT_EQ(read.isEdgeWeighted(), written.isEdgeWeighted());
  for (std::uint64_t k = 0; k < written.edgesCount && k < read.edgesCount; ++k) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(read.edgesWeights[k]),
              std::bit_cast<std::uint32_t>(written.edgesWeights[k]))
        << "edge " << k << ": " << written.edgesWeights[k];
  }
  for (std::uint64_t v = 0; v < written.verticesCount; ++v) {
    EXPECT_EQ(read.vertexName(v), written.vertexName(v));
  }
}

TEST(PajekRoundTrip, WeightsLabelsAndPositionsReadBackExactly) {
  const float tiny = std::numeric_limits<float>::denorm_min();
  auto labels = std::make_shared<TextList>(
      TextList{"two words", "Zo\xc3\xab M\xc3\xbcller \xe6\x97\xa5\xe6\x9c\xac", "",
               "%not a comment", "*Arcs", "  padded  "});
  auto positions = QLOVector3dArray::initWithSize(6, Precision::Float);
  for (std::uint64_t v = 0; v < 6; ++v) {
    positions->setVector({0.1 * static_cast<double>(v), -1e-30, 3.0e38}, v);
  }
  for (bool directed : {true, false}) {
    auto network = makeNetwork(
        6, {{0, 1}, {1, 2}, {2, 2}, {5, 0}, {3, 4}, {4, 3}, {0, 1}},
        {0.1f, 1e-30f, tiny, -0.0f, 16777217.0f, std::numeric_limits<float>::max(), 1.0f / 3.0f},
        directed, {{"Name", labels}, {"Position", positions}});
    ASSERT_TRUE(network);
    auto back = readText(plexora::pajekText(*network));
    ASSERT_TRUE(back);
    expectSameNetwork(*network, *back);
    EXPECT_EQ(positionsOf(*back), positionsOf(*network));
  }
}

TEST(PajekRoundTrip, NetworksWithoutNamesOrWeightsKeepTheirShape) {
  auto plain = makeNetwork(4, {{3, 0}, {1, 2}}, {}, false, {});
  ASSERT_TRUE(plain);
  const std::string text = plexora::pajekText(*plain);
  EXPECT_EQ(text, "*Vertices 4\n1 \"0\"\n2 \"1\"\n3 \"2\"\n4 \"3\"\n*Edges\n4 1\n2 3\n");
  auto back = readText(text);
  ASSERT_TRUE(back);
  expectSameNetwork(*plain, *back);

  auto empty = makeNetwork(0, {}, {}, true, {});
  ASSERT_TRUE(empty);
  auto emptyBack = readText(plexora::pajekText(*empty));
  ASSERT_TRUE(emptyBack);
  EXPECT_EQ(emptyBack->verticesCount, 0u);
  EXPECT_EQ(emptyBack->edgesCount, 0u);
}

TEST(PajekRoundTrip, QuotesAndLineBreaksInLabelsAreReplaced) {
  auto labels = std::make_shared<TextList>(TextList{"say \"hi\"\tthere\r\nnow", "plain"});
  auto network = makeNetwork(2, {{0, 1}}, {2.5f}, true, {{"Name", labels}});
  ASSERT_TRUE(network);
  const std::string text = plexora::pajekText(*network);
  EXPECT_EQ(text, "*Vertices 2\n1 \"say 'hi' there  now\"\n2 \"plain\"\n*Arcs\n1 2 2.5\n");
  auto back = readText(text);
  ASSERT_TRUE(back);
  EXPECT_EQ(textsOf(*back, "Name"), (TextList{"say 'hi' there  now", "plain"}));
}

// ---------------------------------------------------------------------------
// Edge list

TEST(EdgeList, OneLinePerEdgeFromZeroWithWeightsOnlyWhenWeighted) {
  auto weighted = makeNetwork(3, {{2, 0}, {1, 1}}, {0.1f, 1e-30f}, true, {});
  ASSERT_TRUE(weighted);
  EXPECT_EQ(plexora::edgesText(*weighted), "2 0 0.1\n1 1 1e-30\n");
  auto plain = makeNetwork(3, {{2, 0}, {0, 1}}, {}, false, {});
  ASSERT_TRUE(plain);
  EXPECT_EQ(plexora::edgesText(*plain), "2 0\n0 1\n");
}

// ---------------------------------------------------------------------------
// Files

TEST(PajekFiles, SampleFilesRead) {
  ReadError error;
  auto mixed = QLONetwork::initWithContentsOfPajekURL(kData / "mixed.net", &error);
  ASSERT_TRUE(mixed) << error.describe();
  EXPECT_EQ(mixed->verticesCount, 5u);
  EXPECT_EQ(edgesOf(*mixed), (std::vector<Edge>{{0, 1}, {1, 2}, {2, 3}, {3, 4}, {4, 0}, {4, 1}}));
  EXPECT_EQ(weightsOf(*mixed), (std::vector<float>{1.5f, 1, 2, 0.25f, 1, 1}));
  EXPECT_TRUE(mixed->isDirected());
  EXPECT_EQ(textsOf(*mixed, "Name"), (TextList{"Ann Lee", "Bob", "", "", "Eve"}));
  EXPECT_EQ(textsOf(*mixed, "shape"), (TextList{"ellipse", "box", "", "", ""}));

  auto project = QLONetwork::initWithContentsOfPajekURL(kData / "project.paj", &error);
  ASSERT_TRUE(project) << error.describe();
  EXPECT_EQ(project->verticesCount, 3u);
  EXPECT_EQ(edgesOf(*project), (std::vector<Edge>{{0, 1}, {1, 2}}));

  auto encodings = QLONetwork::initWithContentsOfPajekURL(kData / "encodings.net", &error);
  ASSERT_TRUE(encodings) << error.describe();
  EXPECT_EQ(textsOf(*encodings, "Name"), (TextList{"Fran\xc3\xa7ois", "Zo\xc3\xab"}));

  auto matrix = QLONetwork::initWithContentsOfPajekURL(kData / "matrix.net", &error);
  ASSERT_TRUE(matrix) << error.describe();
  EXPECT_EQ(edgesOf(*matrix), (std::vector<Edge>{{0, 1}, {1, 2}, {2, 0}}));
}

TEST(PajekFiles, MissingFileNamesTheFile) {
  ReadError error;
  const auto missing = kData / "no-such-file.net";
  EXPECT_FALSE(QLONetwork::initWithContentsOfPajekURL(missing, &error));
  EXPECT_EQ(error.file, missing.string());
  EXPECT_NE(error.describe().find("no-such-file.net"), std::string::npos);
}

TEST(PajekFiles, WrittenFilesReadBack) {
  std::string folderName = "plexview-pajek-";
  folderName += std::to_string(::getpid());
  const auto folder = std::filesystem::temp_directory_path() / folderName;
  std::filesystem::create_directories(folder);
  auto labels = std::make_shared<TextList>(TextList{"a", "b c", "d"});
  auto network = makeNetwork(3, {{0, 2}, {2, 1}}, {0.5f, 7.0f}, false, {{"Name", labels}});
  ASSERT_TRUE(network);
  std::string why;
  ASSERT_TRUE(network->writeToPajekURL(folder / "out.net", WriteMode::Atomic, &why)) << why;
  ReadError error;
  auto back = QLONetwork::initWithContentsOfPajekURL(folder / "out.net", &error);
  ASSERT_TRUE(back) << error.describe();
  expectSameNetwork(*network, *back);

  ASSERT_TRUE(network->writeToEdgesURL(folder / "out.txt", WriteMode::Direct, &why)) << why;
  std::string text;
  ASSERT_TRUE(quillo::readWholeFile(folder / "out.txt", text, nullptr));
  EXPECT_EQ(text, plexora::edgesText(*network));

  EXPECT_FALSE(network->writeToPajekURL(folder / "missing" / "x.net", WriteMode::Atomic, &why));
  EXPECT_NE(why.find("x.net"), std::string::npos);
  std::filesystem::remove_all(folder);
}

}  // namespace

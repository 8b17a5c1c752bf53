// Reading and writing Pajek text, and the plain edge list.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
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

const std::filesystem::path kData = std::filesystem::path(PLEXVIEW_TEST_DATA) / "pajek";

std::string fixture(const std::string& name) {
  return testing_support::contentsOf(kData / name);
}

QLONetwork::Ptr readText(std::string_view text) {
  ReadError error;
  auto network = plexora::readPajek(text, "test.net", &error);
  EXPECT_TRUE(network) << error.describe();
  return network;
}

using testing_support::describe;
using testing_support::Directed;
using testing_support::makeNetwork;
using namespace std::string_literals;

// ---------------------------------------------------------------------------
// Reading

TEST(PajekReading, DocumentsReadAsDescribed) {
  const std::pair<std::string, std::string> cases[] = {
      // Every edge section, its keyword in any case, adds edges in file order.
      {fixture("all-edge-sections.net"), "4 directed | 0-1 2-0 2-1 2-3 3-3 1-2 1-3 0-2"},
      // Two-mode counts, relation numbers and names after a keyword change nothing.
      {fixture("header-text.net"), "5 directed | 0-4 1-2"},
      // Matrix rows may wrap; each entry that is not zero is a weighted arc.
      {"*Vertices 3\n*Matrix\n0 2 0\n0 0\n1.5\n1 0 0\n*Edges\n1 1\n",
       "3 directed weighted | 0-1:2 1-2:1.5 2-0:1 0-0:1"},
      // Unknown sections and project data are skipped; the first network ends
      // at a second *Vertices or *Network, and a partition's *Vertices is its own.
      {"*Vertices 2\n*Partition p\n5 6 7\nnot a number\n*Vector\n0.5\n*Edges\n1 2\n"
       "*Project\n*Vertices 9\n1 \"x\"\n*Arcs\n1 9\n",
       "2 undirected | 0-1"},
      {"*Network a\n*Edges\n1 2\n*Network b\n*Arcs\n1 7\n", "2 undirected | 0-1"},
      // Without *Vertices the largest vertex number is the count; edges before
      // *Vertices are checked when it comes.
      {"*Arcs\n3 7\n2 1\n", "7 directed | 2-6 1-0"},
      {"*Edges\n1 3\n*Vertices 4\n4 \"d\"\n", "4 undirected | 0-2 | Name=\"\"\"\"\"\"\"d\""},
      {fixture("labels-quoted-bare-sparse-repeated.net"),
       "6 undirected | | Name=\"two words\"\"\"\"second\"\"bare\"\"\"\"open quote runs on\""},
      // Text that is not UTF-8 is read as Latin-1, in labels and colours.
      {"*Vertices 4\n1 \"Fran\xe7ois\" ic Gr\xfcn\n2 \"Zo\xc3\xab\"\n3 \"\xc3\x28\"\n4 "
       "\"\xed\xa0\x80\"\n",
       "4 undirected | | "
       "Name=\"Fran\xc3\xa7ois\"\"Zo\xc3\xab\"\"\xc3\x83(\"\"\xc3\xad\xc2\xa0\xc2\x80\" | "
       "ic=\"Gr\xc3\xbcn\"\"\"\"\"\"\""},
      // Two or three numbers after the label place a vertex; one number does
      // not, and identical coordinates carry no layout.
      {"*Vertices 4\n1 a 0.5 -2\n2 b 1 2 3 box\n4 d 7 8 9\n4 \"d again\" 0.25 0.75\n",
       "4 undirected | | Name=\"a\"\"b\"\"\"\"d again\" | "
       "Position:float3=0.5 -2 0,1 2 3,0 0 0,0.25 0.75 0, | shape=\"\"\"box\"\"\"\"\""},
      {"*Vertices 2\n1 a 0.0 0.0 ellipse\n2 b 0.0 0.0 ellipse\n",
       "2 undirected | | Name=\"a\"\"b\" | shape=\"ellipse\"\"ellipse\""},
      // Attributes in order of first use; a later line for a vertex replaces
      // what an earlier one gave it.
      {fixture("vertex-attributes.net"),
       "3 undirected | | Name=\"a\"\"b\"\"c\" | Position:float3=0 0 0,0 0 0,1 1 0, | "
       "ic=\"Red\"\"\"\"\" | x_fact:double=2.5,4,nan, | shape=\"box\"\"diamond\"\"\" | "
       "lc=\"\"\"Blue\"\"\" | s_size:double=nan,nan,nan,"},
      // Directed when an arc section added an edge; weighted when a line gave
      // a numeric weight (missing or other weights are 1) or a matrix an arc.
      {"*Edges\n1 2 3.5\n2 3\n", "3 undirected weighted | 0-1:3.5 1-2:1"},
      {"*Arcslist\n1 2\n*Edges\n1 2 0.5\n", "2 directed weighted | 0-1:1 0-1:0.5"},
      {"*Edges\n1 2 3.4028235e38\n1 2 1e-50\n1 2 heavy\n",
       "2 undirected weighted | 0-1:3.4028235e+38 0-1:0 0-1:1"},
  };
  for (const auto& [text, expected] : cases) {
    auto network = readText(text);
    ASSERT_TRUE(network) << text;
    EXPECT_EQ(describe(*network), expected) << text;
  }
}

TEST(PajekReading, LineEndsTabsCommentsAndByteOrderMarkReadAlike) {
  for (const char* text : {
           "\xEF\xBB\xBF*Vertices 3\r\n1 \"a b\" 1 2\r\n2 c 3 4\r\n*Arcs\r\n1 2 0.5\r\n3 1\r\n",
           "*Vertices 3\r1 \"a b\" 1 2\r2 c 3 4\r*Arcs\r1 2 0.5\r3 1",
           "% header\n\n*Vertices\t3\n\t1\t\"a b\"\t1\t2\n  2   c 3 4 \n%  1 "
           "3\n*Arcs\n\n1\t2\t0.5\n  3 1",
       }) {
    auto network = readText(text);
    ASSERT_TRUE(network) << text;
    EXPECT_EQ(describe(*network),
              "3 directed weighted | 0-1:0.5 2-0:1 | Name=\"a b\"\"c\"\"\" | "
              "Position:float3=1 2 0,3 4 0,0 0 0,")
        << text;
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
      {"*Vertices 3\n0 a\n", 2, "vertex 0 is outside 1..3"},
      {"*Vertices 3\n*Edges\n1 2\n2 4 1.0\n", 4, "vertex 4 is outside 1..3"},
      {"*Arcs\n1\n", 2, "needs two vertex numbers"},
      {"*Arcslist\n1 2 three\n", 2, "'three' is not a vertex number"},
      {"*Vertices 300000000\n", 1, "is above the limit of"},
      // Few bytes cannot declare many vertices, nor make labels for all of them.
      {"*Vertices 268435456\n1 a\n", 1,
       "declares 268435456 vertices, but a file of this size may declare at most 10000384"},
      {"*Vertices 10000000\n1 a\n", 1, "the labels and attributes of 10000000 vertices need 305"},
      {"*Edges\n1 10000300\n", 2, "vertex 10000300 is outside 1..10000288"},
      {"% c\n*Vertices 99999999999999999999\n", 2, "vertex count 99999999999999999999"},
      {"*Matrix\n0 1\n", 1, "*Matrix needs a *Vertices line"},
      {"*Vertices 3\n%\n*Matrix\n0 1 0\n0 0\n*Edges\n", 3, "the matrix ends after 5 numbers"},
      {"*Vertices 2\n*Matrix\n0 1\n0 0\n1\n", 5, "more than 2 rows"},
      {"title\n1 2\n", 1, "no section header"},
      {"*Vert 2\n1 a\n", 1, "*Vert is not a section header; is it *Vertices cut short?"},
      {"*\n", 1, "needs a name"},
      // Numbers the layout cannot use are refused, with what the file said.
      {"*Edges\n1 2 nan\n", 2, "weight 'nan' is not a finite number"},
      {"*Vertices 2\n1 a 0 -inf\n", 2, "coordinate '-inf' is not a finite number"},
      // Control bytes and bytes that are not UTF-8 are shown, not cut off.
      {"*Edges\n1 2\n1\0x 2\n"s, 3, "'1\\x00x' is not a vertex number"},
      {"*Edges\n1 2\xaf\n", 2, "'2\\xAF' is not a vertex number"},
      {"\xff\xfe\0\0*"s, 0, "UTF-32"},
      {"*Edges\n1 2\n1 9\n1 11\n1 11\n*Vertices 10\n", 4, "vertex 11 is outside 1..10"},
      // A huge declared matrix must fail on its few entries, not allocate.
      {"*Vertices 5000000\n*Matrix\n1 0 0\n", 2, "the matrix ends after 3 numbers"},
  };
  for (const Case& c : cases) {
    ReadError error;
    EXPECT_FALSE(plexora::readPajek(c.text, "bad.net", &error)) << c.text;
    EXPECT_EQ(error.file, "bad.net") << c.text;
    EXPECT_EQ(error.line, c.line) << c.text << "\n" << error.message;
    EXPECT_NE(error.message.find(c.message), std::string::npos) << c.text << "\n" << error.message;
  }
}

TEST(PajekReading, NetworkNameIsTheTitleAndWrittenBack) {
  for (const auto& [text, title] : std::vector<std::pair<std::string, std::string>>{
           {"A title line\n*Network  \"Karate club\"  \n*Edges\n1 2\n", "Karate club"},
           {"*network Caf\xe9\r\n*Edges\n1 2\n", "Caf\xc3\xa9"},
           {"*Edges\n1 2\n*Network later\n", ""},
       }) {
    auto network = readText(text);
    ASSERT_TRUE(network);
    EXPECT_EQ(network->title(), title);
    auto back = readText(plexora::pajekText(*network));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->title(), title);
    EXPECT_EQ(network->largestConnectedSubNetwork()->title(), title);
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

// At the real limits (not lowered ones) a few bytes read into little memory:
// the largest count a file may declare costs nothing without labels, labels
// for every vertex are laid out only within the budget, and beyond it the file
// is refused before anything large is allocated.
TEST(PajekLimits, MemoryStaysProportionalToTheFile) {
  auto declaring = [](std::uint64_t count, const std::string& rest) {
    return "*Vertices " + std::to_string(count) + "\n" + rest;
  };
  const std::string edge = "*Edges\n1 2\n";
  std::uint64_t most = plexora::kFreeVertices;
  while (plexora::vertexLimitForText(declaring(most, edge).size()) != most) {
    most = plexora::vertexLimitForText(declaring(most, edge).size());
  }
  auto network = readText(declaring(most, edge));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->countVertices(), most);
  network.reset();

  ReadError error;
  EXPECT_FALSE(plexora::readPajek(declaring(most + 1, edge), "big.net", &error));
  EXPECT_FALSE(plexora::readPajek(declaring(most, "1 a\n" + edge), "big.net", &error));
  // A label for vertex 1 lays out "Name" for all: one string per vertex.
  std::uint64_t labelled = plexora::kFreePropertyBytes / sizeof(std::string);
  while (plexora::propertyBudgetForText(declaring(labelled + 1, "1 a\n").size()) /
             sizeof(std::string) >
         labelled) {
    ++labelled;
  }
  EXPECT_FALSE(plexora::readPajek(declaring(labelled + 1, "1 a\n"), "big.net", &error));
  EXPECT_EQ(error.line, 1u);
  network = readText(declaring(labelled, "1 a\n"));
  ASSERT_TRUE(network);
  EXPECT_EQ(network->vertexName(0), "a");
  network.reset();

  struct rusage usage {};
  ::getrusage(RUSAGE_SELF, &usage);
  EXPECT_LT(usage.ru_maxrss, 1024 * 1024) << "peak kilobytes";
}

// ---------------------------------------------------------------------------
// Writing

TEST(PajekWriting, ExactTextOfPajekAndEdgeLists) {
  struct Case {
    QLONetwork::Ptr network;
    const char* pajek;
    const char* edges;
  };
  const auto labels = std::make_shared<TextList>(TextList{"say \"hi\"\tthere\r\nnow", "plain"});
  const Case cases[] = {
      // Without "Name" the labels are the numbers from 0.
      {makeNetwork(4, {{3, 0}, {1, 2}}),
       "*Vertices 4\n1 \"0\"\n2 \"1\"\n3 \"2\"\n4 \"3\"\n*Edges\n4 1\n2 3\n", "3 0\n1 2\n"},
      {makeNetwork(2, {{0, 1}, {1, 1}}, {2.5f, 1e-30f}, Directed::Yes, {{"Name", labels}}),
       "*Vertices 2\n1 \"say 'hi' there  now\"\n2 \"plain\"\n*Arcs\n1 2 2.5\n2 2 1e-30\n",
       "0 1 2.5\n1 1 1e-30\n"},
      {makeNetwork(0, {}, {}, Directed::Yes), "*Vertices 0\n*Arcs\n", ""},
  };
  for (const Case& c : cases) {
    ASSERT_TRUE(c.network);
    EXPECT_EQ(plexora::pajekText(*c.network), c.pajek);
    EXPECT_EQ(plexora::edgesText(*c.network), c.edges);
  }
}

TEST(PajekWriting, WeightsLabelsAndPositionsReadBackExactly) {
  const float tiny = std::numeric_limits<float>::denorm_min();
  auto labels = std::make_shared<TextList>(
      TextList{"two words", "Zo\xc3\xab M\xc3\xbcller \xe6\x97\xa5\xe6\x9c\xac", "",
               "%not a comment", "*Arcs", "  padded  "});
  auto positions = QLOVector3dArray::initWithSize(6, Precision::Float);
  for (std::uint64_t v = 0; v < 6; ++v) {
    positions->setVector({0.1 * static_cast<double>(v), -1e-30, 3.0e38}, v);
  }
  for (const Directed directed : {Directed::Yes, Directed::No}) {
    auto network = makeNetwork(
        6, {{0, 1}, {1, 2}, {2, 2}, {5, 0}, {3, 4}, {4, 3}, {0, 1}},
        {0.1f, 1e-30f, tiny, -0.0f, 16777217.0f, std::numeric_limits<float>::max(), 1.0f / 3.0f},
        directed, {{"Name", labels}, {"Position", positions}});
    ASSERT_TRUE(network);
    auto back = readText(plexora::pajekText(*network));
    ASSERT_TRUE(back);
    EXPECT_EQ(describe(*back), describe(*network));
  }
}

// ---------------------------------------------------------------------------
// Files

TEST(PajekFiles, ReadWriteAndMissingFiles) {
  ReadError error;
  auto mixed = QLONetwork::initWithContentsOfPajekURL(kData / "mixed.net", &error);
  ASSERT_TRUE(mixed) << error.describe();
  EXPECT_EQ(describe(*mixed),
            "5 directed weighted | 0-1:1.5 1-2:1 2-3:2 3-4:0.25 4-0:1 4-1:1 | "
            "Name=\"Ann Lee\"\"Bob\"\"\"\"\"\"Eve\" | "
            "Position:float3=0.1 0.2 0.3,0.5 0.25 0,1 1 0,0 0 0,0 0 0, | "
            "shape=\"ellipse\"\"box\"\"\"\"\"\"\" | ic=\"Red\"\"\"\"\"\"\"\"\" | "
            "x_fact:double=2,nan,nan,nan,nan,");
  const auto missing = kData / "no-such-file.net";
  EXPECT_FALSE(QLONetwork::initWithContentsOfPajekURL(missing, &error));
  EXPECT_EQ(error.file, missing.string());

  const ScratchFolder scratch;
  const auto& folder = scratch.path();
  auto labels = std::make_shared<TextList>(TextList{"a", "b c", "d"});
  auto network = makeNetwork(3, {{0, 2}, {2, 1}}, {0.5f, 7.0f}, Directed::No, {{"Name", labels}});
  ASSERT_TRUE(network);
  std::string why;
  ASSERT_TRUE(network->writeToPajekURL(folder / "out.net", WriteMode::Atomic, &why)) << why;
  auto back = QLONetwork::initWithContentsOfPajekURL(folder / "out.net", &error);
  ASSERT_TRUE(back) << error.describe();
  EXPECT_EQ(describe(*back), describe(*network));
  ASSERT_TRUE(network->writeToEdgesURL(folder / "out.txt", WriteMode::Direct, &why)) << why;
  std::string text;
  ASSERT_TRUE(quillo::readWholeFile(folder / "out.txt", text, nullptr));
  EXPECT_EQ(text, plexora::edgesText(*network));
  EXPECT_FALSE(network->writeToPajekURL(folder / "missing" / "x.net", WriteMode::Atomic, &why));
  EXPECT_NE(why.find("x.net"), std::string::npos);
}

}  // namespace

// GML, GEXF and edge-list reading, the GEXF and GML writers, and choosing a
// reader by file name and content.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/networks.h"
#include "network_description.h"
#include "plexora/QLONetwork.h"
#include "plexora/formats.h"

namespace {

using plexora::NetworkFormat;
using testing_support::describe;
using Reader = QLONetwork::Ptr (*)(std::string_view, const std::string&, ReadError*);

struct ReadCase {
  const char* what;
  Reader read;
  const char* text;
  const char* expected;  // describe() of the network
};

const char* kGexfHead =
    "<?xml version='1.0'?><gexf xmlns='http://gexf.net/1.3' "
    "xmlns:viz='http://gexf.net/1.3/viz' version='1.3'>";

TEST(ForeignFormats, ReadsWhatOtherToolsWrite) {
  const std::string gexfAttributes =
      std::string(kGexfHead) +
      "<graph defaultedgetype='directed'><attributes class='node'>"
      "<attribute id='0' title='age' type='integer'><default>7</default></attribute>"
      "<attribute id='1' title='ok' type='boolean'/>"
      "<attribute id='2' title='city' type='string'/>"
      "<attribute id='3' title='when' type='date'/></attributes>\n"
      "<nodes><node id='a' label='A'><attvalues><attvalue for='0' value='3'/>"
      "<attvalue for='1' value='true'/><attvalue for='2' value='X'/>"
      "<attvalue for='3' value='2020'/></attvalues>"
      "<viz:position x='1' y='2' z='3'/><viz:color r='255' g='0' b='51'/></node>"
      "<node id='b'><attvalues><attvalue id='1' value='false'/></attvalues></node></nodes>"
      "<edges><edge source='a' target='b' weight='2.5'/><edge source='b' target='b'/>"
      "<edge source='a' target='b'/></edges></graph></gexf>";
  const std::vector<ReadCase> cases = {
      {"gml as networkx writes it", plexora::readGml,
       "graph [\n  directed 1\n  node [\n    id 0\n    label \"a&#233;&#34;\"\n    size 2.5\n"
       "    kind \"x\"\n    graphics [ x 1.0 y -2 z 0.5 ]\n  ]\n"
       "  node [\n    id 7\n    label \"b\"\n    kind \"y\"\n    nested [ a 1 ]\n  ]\n"
       "  edge [\n    source 7\n    target 0\n    weight 3\n  ]\n"
       "  edge [ source 0 target 0 ]\n  edge [ source 7 target 0 value 2 ]\n]\n",
       "2 directed weighted | 1-0:3 0-0:1 1-0:2 | Name=\"aé\"\"\"b\" | Position:float3=1 -2 "
       "0.5,0 0 0, | size:double=2.5,nan, | kind=\"x\"\"y\""},
      {"gml as igraph writes it, mixed attribute becomes text", plexora::readGml,
       "Creator \"igraph\"\nVersion 1\ngraph\n[\n  directed 0\n  node\n  [\n    id 0\n"
       "    v 1\n  ]\n  node\n  [\n    id 1\n    v \"s\"\n  ]\n  edge\n  [\n    source 0\n"
       "    target 1\n  ]\n]\n",
       "2 undirected | 0-1 | v=\"1\"\"s\""},
      {"gexf with attributes, defaults, viz and weights", plexora::readGexf, gexfAttributes.c_str(),
       "2 directed weighted | 0-1:2.5 1-1:1 0-1:1 | Name=\"A\"\"b\" | Position:float3=1 2 3,0 0 0, "
       "| Color:float3=1 0 0.2,0 0 0, | age:double=3,7, | ok:double=1,0, | city=\"X\"\"\" | "
       "when=\"2020\"\"\""},
      {"csv with header, quotes and comments", plexora::readEdgeList,
       "# comment\nSource,Target,Weight\n\"a,1\",b,2\n% other comment\nb,\"say \"\"hi\"\"\",0.5\n"
       "b,b,1\n",
       "3 undirected weighted | 0-1:2 1-2:0.5 1-1:1 | Name=\"a,1\"\"b\"\"say \"hi\"\""},
      {"whitespace list without weights", plexora::readEdgeList, "1 2\n2   3\n\n3\t1 x\n",
       "3 undirected | 0-1 1-2 2-0 | Name=\"1\"\"2\"\"3\""},
      {"numeric names: leading zeros and large numbers are names of their own",
       plexora::readEdgeList, "7,07\n07,123456789\n0,7\n",
       "4 undirected | 0-1 1-2 3-0 | Name=\"7\"\"07\"\"123456789\"\"0\""},
      {"tsv with weight column by name", plexora::readEdgeList, "weight\tsource\ttarget\n4\tp\tq\n",
       "2 undirected weighted | 0-1:4 | Name=\"p\"\"q\""},
      {"semicolon list, quoted line break, CRLF", plexora::readEdgeList, "a;\"x\r\ny\"\r\nc;a\r\n",
       "3 undirected | 0-1 2-0 | Name=\"a\"\"x\r\ny\"\"c\""},
  };
  for (const ReadCase& c : cases) {
    ReadError error;
    const auto network = c.read(c.text, "in", &error);
    ASSERT_TRUE(network) << c.what << ": " << error.describe();
    EXPECT_EQ(describe(*network), c.expected) << c.what;
  }
}

struct ErrorCase {
  Reader read;
  const char* text;
  std::uint64_t line;
  const char* message;
};

TEST(ForeignFormats, RefusesBrokenFilesNamingTheLine) {
  const std::string gexfNan = std::string(kGexfHead) +
                              "<graph><nodes>\n<node id='a'><viz:position x='nan' y='0'/>"
                              "</node></nodes></graph></gexf>";
  const std::string gexfEdge = std::string(kGexfHead) +
                               "<graph><nodes><node id='a'/></nodes>\n<edges>\n"
                               "<edge source='a' target='q'/></edges></graph></gexf>";
  const std::string gexfValue = std::string(kGexfHead) +
                                "<graph><attributes class='node'><attribute id='0' title='n' "
                                "type='float'/></attributes>\n<nodes><node id='a'><attvalues>"
                                "<attvalue for='0' value='many'/></attvalues></node></nodes>"
                                "</graph></gexf>";
  const std::vector<ErrorCase> cases = {
      {plexora::readGml, "graph [\n node [ id 0 ]\n edge [ source 0 target 3 ]\n]", 3,
       "names node 3"},
      {plexora::readGml, "graph [\n node [ id 0\n graphics [ x inf y 0 ] ]\n]", 3,
       "not a finite number"},
      {plexora::readGml, "graph [\n node [ id 0 ]\n node [ id 0 ]\n]", 3, "appears twice"},
      {plexora::readGml, "graph [\n node [ label \"x\" ]\n]", 2, "has no id"},
      {plexora::readGml, "graph [\n node [ id 0 ]\n", 1, "not closed"},
      {plexora::readGml, "graph [\n size abc\n]", 2, "neither a number nor a string"},
      {plexora::readGml, "node [ id 0 ]", 0, "no \"graph [\" list"},
      // A quoted piece of a file that is no UTF-8 stays valid text.
      {plexora::readGml, "graph [\n \xF0 node\n]", 2, "'node' of '\\xF0'"},
      {plexora::readGexf, gexfNan.c_str(), 2, "not a finite number"},
      {plexora::readGexf, gexfEdge.c_str(), 3, "names node 'q'"},
      {plexora::readGexf, gexfValue.c_str(), 2, "is not a number"},
      {plexora::readEdgeList, "a,b\nc\n", 2, "needs a source and a target"},
      {plexora::readEdgeList, "a,b,1\nc,d,heavy\n", 2, "weight 'heavy' is not a number"},
      {plexora::readEdgeList, "a,b\n\"c,d\n", 2, "quoted field is not closed"},
  };
  for (const ErrorCase& c : cases) {
    ReadError error;
    EXPECT_FALSE(c.read(c.text, "bad.file", &error)) << c.text;
    EXPECT_EQ(error.file, "bad.file");
    EXPECT_EQ(error.line, c.line) << c.text << " -> " << error.describe();
    EXPECT_NE(error.message.find(c.message), std::string::npos) << error.describe();
  }
}

QLONetwork::Ptr sample() {
  const double sizes[3] = {1.0, 0.1, 7.0};
  return testing_support::makeNetwork(
      3, {{0, 1}, {1, 2}, {2, 2}, {0, 1}}, {1.5f, 1e-45f, -2.0f, 3.0f},
      testing_support::Directed::Yes,
      {{"Name", std::make_shared<TextList>(TextList{"<a & \"b\">", "é", "c"})},
       {"Position", testing_support::vectorArray({{0, 0, 0}, {1.0, 2.5, -3.0}, {0, 0, 0}})},
       {"Color", testing_support::vectorArray({{1.0, 0.2, 0.0}, {0, 0, 0}, {0, 0, 0}})},
       {"size", QLONumberArray::initWithDoubles(sizes)},
       {"kind", std::make_shared<TextList>(TextList{"x", "", "z"})}});
}

TEST(ForeignFormats, WrittenFilesReadBackTheSame) {
  const auto network = sample();
  ASSERT_TRUE(network);
  ReadError error;
  const auto gexf = plexora::readGexf(plexora::gexfText(*network), "out.gexf", &error);
  ASSERT_TRUE(gexf) << error.describe();
  EXPECT_EQ(describe(*gexf), describe(*network));
  // GML has no colours; the rest comes back.
  const auto gml = plexora::readGml(plexora::gmlText(*network), "out.gml", &error);
  ASSERT_TRUE(gml) << error.describe();
  EXPECT_EQ(describe(*gml),
            "3 directed weighted | 0-1:1.5 1-2:1e-45 2-2:-2 0-1:3 | Name=\"<a & \"b\">\"\"é\"\"c\" "
            "| Position:float3=0 0 0,1 2.5 -3,0 0 0, | size:double=1,0.1,7, | kind=\"x\"\"\"\"z\"");
  // A layout handed to the writer replaces "Position" in the file only.
  auto layout = QLOVector3dArray::initWithSize(3, Precision::Float);
  layout->setVector({9.0, 9.0, 9.0}, 2);
  const std::string text = plexora::gexfText(*network, layout);
  EXPECT_NE(text.find("<viz:position x=\"9\" y=\"9\" z=\"9\"/>"), std::string::npos);
  EXPECT_NE(text.find("<viz:color r=\"255\" g=\"51\" b=\"0\"/>"), std::string::npos);
  EXPECT_NE(plexora::gmlText(*network).find("multigraph 1"), std::string::npos);
}

TEST(ForeignFormats, ChoosesTheReaderByNameThenContent) {
  const struct {
    const char* name;
    const char* text;
    NetworkFormat format;
  } cases[] = {
      {"a.GEXF", "", NetworkFormat::Gexf},
      {"a.tsv", "<graphml>", NetworkFormat::EdgeList},
      {"data", "\xEF\xBB\xBF  <?xml?>\n<gexf version='1.2'>", NetworkFormat::Gexf},
      {"data", "<?xml?><graphml>", NetworkFormat::Graphml},
      {"data", "# made by hand\nCreator \"x\"\ngraph\n[", NetworkFormat::Gml},
      {"data.gz", "*Vertices 3", NetworkFormat::Pajek},
      {"data", "graph,node\n", NetworkFormat::EdgeList},
      {"data", "1 2\n", NetworkFormat::EdgeList},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(plexora::networkFormatOf(c.name, c.text), c.format) << c.name << ": " << c.text;
  }
}

}  // namespace

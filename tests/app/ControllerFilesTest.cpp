// The controller's file commands without a window: positions files in and
// out, Pajek and edge-list export, the panels they ask for and what a failure
// reports.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <deque>
#include <fstream>
#include <optional>
#include <sstream>

#include "../colour/scratch.h"
#include "app/QLOComplexNetwork.h"
#include "app/VXLController.h"

namespace {

namespace fs = std::filesystem;
using Request = VXLController::FilePanelRequest;

std::string contentsOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

// Five named vertices; edge k joins k and (2k + 1) mod 5, weighted k + 0.25
// when the network is weighted.
QLONetwork::Ptr fiveVertices(bool directed, bool weighted) {
  NetworkData data;
  data.verticesCount = 5;
  for (std::uint64_t k = 0; k < 5; ++k) {
    data.from.push_back(k);
    data.to.push_back((2 * k + 1) % 5);
    if (weighted) data.weights.push_back(static_cast<float>(k) + 0.25f);
  }
  data.directed = directed;
  data.edgeWeighted = weighted;
  auto network = QLONetwork::make(std::move(data));
  auto names = std::make_shared<TextList>(TextList{"ann", "bo b", "", "d\u00e9", "e"});
  EXPECT_TRUE(network && network->setPropertiesOfVertices(names, "Name"));
  return network;
}

// Floats whose shortest text is long or unusual: each must come back bit for bit.
std::vector<float> awkwardFloats(std::size_t n) {
  const float pool[] = {0.1f, -1.0f / 3.0f, 1e-38f, 1.4e-45f, -3.4028235e38f, 16777217.0f, -0.0f};
  std::vector<float> values(n);
  for (std::size_t i = 0; i < n; ++i) values[i] = pool[i % std::size(pool)] / float(i + 1);
  return values;
}

struct Edge {
  std::uint64_t from, to;
  float weight;
  bool operator==(const Edge&) const = default;
};
std::vector<Edge> edgesOf(const QLONetwork& network) {
  std::vector<Edge> edges;
  for (std::uint64_t k = 0; k < network.countEdges(); ++k) {
    edges.push_back({network.edgeFromList[k], network.edgeToList[k], network.edgesWeights[k]});
  }
  return edges;
}

std::vector<std::uint32_t> bitsOf(const std::vector<float>& values) {
  std::vector<std::uint32_t> bits(values.size());
  std::memcpy(bits.data(), values.data(), values.size() * sizeof(float));
  return bits;
}

// A controller showing a network, with a panel answering from a queue (and
// recording what it was asked) and an alert that records.
struct ControllerFiles : ::testing::Test {
  VXLController::Ptr controller = VXLController::init();
  ScratchFolder folder;
  std::vector<Request> requests;
  std::deque<std::optional<fs::path>> answers;
  std::vector<std::string> alerts;

  void SetUp() override {
    controller->setNetwork(fiveVertices(false, true));
    controller->setFilePanel(
        [this](const Request& request, VXLController::FilePanelCompletion done) {
          requests.push_back(request);
          ASSERT_FALSE(answers.empty());
          const auto answer = answers.front();
          answers.pop_front();
          done(answer);
        });
    controller->setFileAlert([this](const std::string& message, const std::string& detail) {
      alerts.push_back(message + "\n" + detail);
    });
  }

  void placeAwkwardly() {
    auto positions = QLOVector3dArray::initWithSize(5, Precision::Float);
    const auto x = awkwardFloats(5), y = awkwardFloats(10), z = awkwardFloats(15);
    positions->copyPlanesFrom(x.data(), y.data() + 5, z.data() + 10);
    controller->setPositions(positions);
  }
  std::vector<std::uint32_t> shownBits() const {
    std::vector<float> all;
    for (const auto& plane : {controller->positions()->xfv(), controller->positions()->yfv(),
                              controller->positions()->zfv()}) {
      all.insert(all.end(), plane.begin(), plane.end());
    }
    return bitsOf(all);
  }
  QLOVector3dArray::Ptr storedPosition() const {
    const PropertyValue value = controller->network()->propertyForKey("Position");
    const auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&value);
    return vectors ? *vectors : nullptr;
  }
};

TEST(ProposedFileName, TheExtensionIsPutOnOnce) {
  const struct {
    const char* display;
    const char* extension;
    const char* proposed;
  } rows[] = {
      {"karate", "net", "karate.net"},
      {"karate.net", "net", "karate.net"},
      {"karate.graphml", "net", "karate.net"},
      {"karate.NET", "net", "karate.net"},
      {"Random Network", "edges", "Random Network.edges"},
      {"a.b.edges", "edges", "a.b.edges"},
      {"a.b", "edges", "a.edges"},
      {"v1.2 network", "net", "v1.2 network.net"},
      {".net", "net", ".net"},
      {".hidden", "net", ".hidden.net"},
      {"trailing.", "net", "trailing..net"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(VXLController::proposedFileName(row.display, row.extension), row.proposed)
        << row.display;
  }
}

TEST_F(ControllerFiles, PositionsExportedThenMovedAreRestoredExactlyWithTheirProperty) {
  placeAwkwardly();
  const auto exported = shownBits();
  const fs::path file = folder.path() / "layout.txt";
  answers.push_back(file);
  controller->exportNodesPositions();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].mode, Request::Mode::Save);
  EXPECT_TRUE(requests[0].folder.empty()) << "a window without a document starts anywhere";
  EXPECT_TRUE(requests[0].extension.empty() && requests[0].proposedName.empty());
  ASSERT_TRUE(fs::exists(file));

  controller->networkView()->randomizePositionsWithSizeX(30, 30, 30);
  ASSERT_NE(shownBits(), exported);
  answers.push_back(file);
  controller->openPositionsFromPanel();
  EXPECT_EQ(requests.back().mode, Request::Mode::Open);
  EXPECT_EQ(shownBits(), exported);
  EXPECT_EQ(storedPosition(), controller->positions());
  EXPECT_TRUE(alerts.empty());
}

TEST_F(ControllerFiles, CancelledPanelsWriteAndLogNothing) {
  placeAwkwardly();
  const auto before = shownBits();
  void (VXLController::*commands[])() = {
      &VXLController::exportNodesPositions, &VXLController::openPositionsFromPanel,
      &VXLController::exportNetworkToPajekFormat, &VXLController::exportNetworkToEdges};
  testing::internal::CaptureStderr();
  for (auto command : commands) {
    answers.push_back(std::nullopt);
    ((*controller).*command)();
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(requests.size(), std::size(commands));
  EXPECT_TRUE(fs::is_empty(folder.path()));
  EXPECT_EQ(shownBits(), before);
  EXPECT_TRUE(alerts.empty());
}

TEST_F(ControllerFiles, BadPositionsFilesKeepTheLayout) {
  placeAwkwardly();
  const auto before = shownBits();
  const struct {
    const char* name;
    const char* text;  // null: the file is not there
    bool alerted;
    std::uint64_t line;
    const char* reason;
  } rows[] = {
      {"missing.txt", nullptr, true, 0, "No such file"},
      {"short.txt", "1 2 3\n4 5\n", false, 2, "expected three numbers"},
      {"word.txt", "1 2 3\n4 5 x\n", false, 2, "not a number"},
      {"four.txt", "1 2 3\n1 2 3\n1 2 3\n1 2 3\n", false, 0, "holds 4 positions"},
      {"empty.txt", "", false, 0, "holds 0 positions"},
  };
  for (const auto& row : rows) {
    alerts.clear();
    const fs::path file = row.text ? folder.write(row.name, row.text) : folder.path() / row.name;
    ReadError reason;
    EXPECT_FALSE(controller->openPositionsFromURL(file, &reason)) << row.name;
    EXPECT_EQ(alerts.size(), row.alerted ? 1u : 0u) << row.name;
    if (row.alerted && !alerts.empty()) {
      EXPECT_NE(alerts[0].find(file.string()), std::string::npos) << alerts[0];
    }
    EXPECT_EQ(reason.line, row.line) << row.name;
    EXPECT_NE(reason.message.find(row.reason), std::string::npos) << reason.message;
    EXPECT_EQ(shownBits(), before) << row.name;
  }

  // Through the panel, the failure is logged under the name chosen.
  const fs::path bad = folder.path() / "short.txt";
  answers.push_back(bad);
  testing::internal::CaptureStderr();
  controller->openPositionsFromPanel();
  const std::string log = testing::internal::GetCapturedStderr();
  EXPECT_NE(log.find("Failed opening file: " + bad.string() + "\n"), std::string::npos) << log;
  EXPECT_NE(log.find("line 2"), std::string::npos) << log;
}

TEST_F(ControllerFiles, AFailedWriteIsShownAndLeavesTheEarlierFile) {
  const fs::path file = folder.write("kept.net", "earlier contents\n");
  const fs::path blocked = folder.path() / "a-folder";
  fs::create_directory(blocked);
  answers.push_back(blocked);  // a folder cannot be replaced by a file
  controller->exportNetworkToPajekFormat();
  ASSERT_EQ(alerts.size(), 1u);
  EXPECT_NE(alerts[0].find("\u201Ca-folder\u201D could not be written"), std::string::npos);
  EXPECT_TRUE(fs::is_directory(blocked));

  std::string reason;
  EXPECT_FALSE(controller->exportNodesPositions(folder.path() / "none" / "p.txt", &reason));
  EXPECT_NE(reason.find("none"), std::string::npos) << reason;
  EXPECT_EQ(contentsOf(file), "earlier contents\n");

  const auto bare = VXLController::init();  // no network, no positions
  EXPECT_FALSE(bare->exportNetworkToEdges(file, &reason));
  EXPECT_FALSE(bare->exportNodesPositions(file, &reason));
  EXPECT_EQ(contentsOf(file), "earlier contents\n");
}

TEST_F(ControllerFiles, PajekExportReadsBackTheSameNetworkAndLayout) {
  for (bool directed : {false, true}) {
    for (bool weighted : {false, true}) {
      SCOPED_TRACE(std::to_string(directed) + std::to_string(weighted));
      const auto network = fiveVertices(directed, weighted);
      controller->setNetwork(network);
      placeAwkwardly();
      controller->networkView()->randomizePositionsWithSizeX(10, 10, 10);
      const fs::path file = folder.path() / "out.net";
      std::string reason;
      ASSERT_TRUE(controller->exportNetworkToPajekFormat(file, &reason)) << reason;
      const auto back = QLONetwork::initWithContentsOfPajekURL(file);
      ASSERT_TRUE(back);
      EXPECT_EQ(back->countVertices(), 5u);
      EXPECT_EQ(back->isDirected(), directed);
      EXPECT_EQ(back->isEdgeWeighted(), weighted);
      EXPECT_EQ(edgesOf(*back), edgesOf(*network));  // unweighted: every weight 1 both sides
      for (std::uint64_t v = 0; v < 5; ++v) {
        EXPECT_EQ(back->vertexName(v), network->vertexName(v));
      }
      // The coordinates written are the layout shown at the time.
      const PropertyValue read = back->propertyForKey("Position");
      const auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&read);
      ASSERT_TRUE(vectors);
      EXPECT_EQ((*vectors)->xfv(), controller->positions()->xfv());
    }
  }
}

TEST_F(ControllerFiles, EdgeListHasOneLinePerEdge) {
  const fs::path file = folder.path() / "out.edges";
  answers.push_back(file);
  controller->exportNetworkToEdges();
  EXPECT_EQ(requests.back().extension, "edges");
  std::istringstream lines(contentsOf(file));
  const auto network = controller->network();
  std::vector<Edge> read;
  Edge edge{};
  while (lines >> edge.from >> edge.to >> edge.weight) read.push_back(edge);
  EXPECT_TRUE(lines.eof());
  EXPECT_EQ(read, edgesOf(*network));
}

TEST_F(ControllerFiles, TheDocumentGivesTheFolderAndTheProposedNames) {
  QLOComplexNetwork document;
  document.setNetworkController(controller.get());
  controller->setDocument(&document);
  EXPECT_TRUE(controller->currentFolder().empty());  // untitled
  EXPECT_TRUE(controller->currentFile().empty());

  const fs::path file = folder.path() / "club.graphml";
  document.setFileURL(file);
  EXPECT_EQ(controller->currentFile(), file);
  EXPECT_EQ(controller->currentFolder(), folder.path());
  answers.push_back(std::nullopt);
  answers.push_back(std::nullopt);
  EXPECT_TRUE(document.exportNetworkToPajekFormat().done);
  EXPECT_TRUE(document.exportNetworkToEdgesFormat().done);
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].folder, folder.path());
  EXPECT_EQ(requests[0].proposedName, "club.net");
  EXPECT_EQ(requests[0].extension, "net");
  EXPECT_EQ(requests[1].proposedName, "club.edges");

  // A Pajek file opened is untitled under its stem.
  document.setFileURL({});
  document.setDisplayName("karate");
  answers.push_back(std::nullopt);
  document.exportNetworkToPajekFormat();
  EXPECT_TRUE(requests.back().folder.empty());
  EXPECT_EQ(requests.back().proposedName, "karate.net");
  controller->setDocument(nullptr);
  document.setNetworkController(nullptr);
  EXPECT_FALSE(document.exportNetworkToPajekFormat().done);
}

}  // namespace

// The controller's file commands without a window: panels, positions, failures.
#include <gtest/gtest.h>

#include <deque>
#include <optional>

#include "../colour/scratch.h"
#include "app/QLOComplexNetwork.h"
#include "app/VXLController.h"

namespace {

namespace fs = std::filesystem;
using Request = VXLController::FilePanelRequest;

// A controller showing a five-vertex ring, with a panel answering from a
// queue (and recording what it was asked) and an alert that records.
struct ControllerFiles : ::testing::Test {
  VXLController::Ptr controller = VXLController::init();
  ScratchFolder folder;
  std::vector<Request> requests;
  std::deque<std::optional<fs::path>> answers;
  std::vector<std::string> alerts;

  void SetUp() override {
    NetworkData ring;
    ring.verticesCount = 5;
    ring.from = {0, 1, 2, 3, 4};
    ring.to = {1, 2, 3, 4, 0};
    controller->setNetwork(QLONetwork::make(std::move(ring)));
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

  // The shown layout, plane after plane.
  std::vector<float> shown() const {
    const auto& p = *controller->positions();
    std::vector<float> all = p.xfv(), y = p.yfv(), z = p.zfv();
    all.insert(all.end(), y.begin(), y.end());
    all.insert(all.end(), z.begin(), z.end());
    return all;
  }
  void move() { controller->networkView()->randomizePositionsWithSizeX(30, 30, 30); }
};

TEST(ProposedFileName, TheExtensionIsPutOnOnce) {
  const struct {
    const char* display;
    const char* extension;
    const char* proposed;
  } rows[] = {
      {"karate.net", "net", "karate.net"},
      {"v1.2 network", "net", "v1.2 network.net"},
      {".hidden", "net", ".hidden.net"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(VXLController::proposedFileName(row.display, row.extension), row.proposed)
        << row.display;
  }
}

TEST_F(ControllerFiles, PositionsExportedThenMovedAreRestoredWithTheirProperty) {
  const auto exported = shown();
  const fs::path file = folder.path() / "layout.txt";
  answers = {file, file};
  controller->exportNodesPositions();
  move();
  ASSERT_NE(shown(), exported);
  controller->openPositionsFromPanel();
  EXPECT_EQ(shown(), exported);
  const PropertyValue stored = controller->network()->propertyForKey("Position");
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(stored), controller->positions());
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].mode, Request::Mode::Save);
  EXPECT_EQ(requests[1].mode, Request::Mode::Open);
}

TEST_F(ControllerFiles, ExportsLeaveTheNetworkAsItWas) {
  // A script stored a "Position" of its own, which is not the layout shown.
  const auto network = controller->network();
  const auto stored = QLOVector3dArray::initWithSize(5, Precision::Float);
  ASSERT_TRUE(network->setPropertiesOfVertices(stored, "Position"));
  const std::vector<std::string> keys = network->keysForPropertiesOfVertices();
  using Export = bool (VXLController::*)(const fs::path&, std::string*);
  const std::pair<const char*, Export> exports[] = {
      {"ring.net", &VXLController::exportNetworkToPajekFormat},
      {"ring.edges", &VXLController::exportNetworkToEdges},
      {"ring.gexf", &VXLController::exportNetworkToGexf},
      {"ring.gml", &VXLController::exportNetworkToGml},
      {"layout.txt", &VXLController::exportNodesPositions},
  };
  for (const auto& [name, write] : exports) {
    std::string error;
    ASSERT_TRUE(((*controller).*write)(folder.path() / name, &error)) << name << ": " << error;
  }
  ASSERT_TRUE(controller->exportWebToFile(folder.path() / "web"));
  EXPECT_EQ(network->keysForPropertiesOfVertices(), keys);
  EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(network->propertyForKey("Position")),
            stored);
  // The Pajek, GEXF and GML files still hold the layout as shown.
  for (const char* name : {"ring.net", "ring.gexf", "ring.gml"}) {
    const auto back = QLONetwork::initWithContentsOfURL(folder.path() / name);
    ASSERT_TRUE(back) << name;
    const PropertyValue written = back->propertyForKey("Position");
    ASSERT_TRUE(std::holds_alternative<std::shared_ptr<QLOVector3dArray>>(written)) << name;
    EXPECT_EQ(std::get<std::shared_ptr<QLOVector3dArray>>(written)->xfv(),
              controller->positions()->xfv())
        << name;
  }
}

TEST_F(ControllerFiles, CancelledPanelsWriteAndLogNothing) {
  const auto before = shown();
  testing::internal::CaptureStderr();
  for (auto command :
       {&VXLController::exportNodesPositions, &VXLController::openPositionsFromPanel,
        &VXLController::exportNetworkToPajekFormat, &VXLController::exportNetworkToEdges,
        &VXLController::exportNetworkToGexf, &VXLController::exportNetworkToGml}) {
    answers.push_back(std::nullopt);
    ((*controller).*command)();
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(requests.size(), 6u);
  EXPECT_TRUE(fs::is_empty(folder.path()));
  EXPECT_EQ(shown(), before);
}

TEST_F(ControllerFiles, BadPositionsFilesKeepTheLayout) {
  const auto before = shown();
  const struct {
    const char* name;
    const char* text;  // null: the file is not there, which alone raises an alert
    std::uint64_t line;
    const char* reason;
  } rows[] = {
      {"missing.txt", nullptr, 0, "No such file"},
      {"four.txt", "1 2 3\n1 2 3\n1 2 3\n1 2 3\n", 0, "holds 4 positions"},
  };
  for (const auto& row : rows) {
    alerts.clear();
    const fs::path file = row.text ? folder.write(row.name, row.text) : folder.path() / row.name;
    ReadError reason;
    EXPECT_FALSE(controller->openPositionsFromURL(file, &reason)) << row.name;
    EXPECT_EQ(alerts.size(), row.text ? 0u : 1u) << row.name;
    EXPECT_EQ(reason.line, row.line) << row.name;
    EXPECT_NE(reason.message.find(row.reason), std::string::npos) << reason.message;
    EXPECT_EQ(shown(), before) << row.name;
  }
  // Through the panel the failure is shown naming the file.
  answers.push_back(folder.path() / "four.txt");
  alerts.clear();
  controller->openPositionsFromPanel();
  ASSERT_EQ(alerts.size(), 1u);
  EXPECT_NE(alerts[0].find("four.txt"), std::string::npos) << alerts[0];
  EXPECT_EQ(shown(), before);
}

TEST_F(ControllerFiles, AFailedWriteIsShownAndLeavesTheEarlierFile) {
  const fs::path kept = folder.write("kept.net", "earlier\n");
  fs::create_directory(folder.path() / "a-folder");
  answers.push_back(folder.path() / "a-folder");  // a folder is not replaced by a file
  controller->exportNetworkToPajekFormat();
  ASSERT_EQ(alerts.size(), 1u);
  EXPECT_NE(alerts[0].find("\u201Ca-folder\u201D could not be written"), std::string::npos);

  const auto bare = VXLController::init();  // no network, no positions
  EXPECT_FALSE(bare->exportNetworkToPajekFormat(kept));
  EXPECT_FALSE(bare->exportNodesPositions(kept));
  EXPECT_EQ(fs::file_size(kept), 8u);
}

TEST_F(ControllerFiles, TheDocumentGivesTheFolderAndTheProposedNames) {
  QLOComplexNetwork document;
  document.setNetworkController(controller.get());
  controller->setDocument(&document);
  document.setFileURL(folder.path() / "club.graphml");
  EXPECT_EQ(controller->currentFolder(), folder.path());
  answers = {std::nullopt, std::nullopt, std::nullopt};
  document.exportNetworkToPajekFormat();
  document.exportNetworkToEdgesFormat();
  // A Pajek file opened is untitled under its stem.
  document.setFileURL({});
  document.setDisplayName("karate");
  document.exportNetworkToPajekFormat();
  ASSERT_EQ(requests.size(), 3u);
  EXPECT_EQ(requests[0].folder, folder.path());
  EXPECT_EQ(requests[0].proposedName, "club.net");
  EXPECT_EQ(requests[1].proposedName, "club.edges");
  EXPECT_TRUE(requests[2].folder.empty());
  EXPECT_EQ(requests[2].proposedName, "karate.net");
  controller->setDocument(nullptr);
  document.setNetworkController(nullptr);
}

}  // namespace

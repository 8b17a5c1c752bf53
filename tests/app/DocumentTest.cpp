// Documents without widgets; windows, the open panel and alerts are fakes.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdlib>

#include <QCoreApplication>
#include <QSettings>
#include <QStandardPaths>
#include <deque>
#include <filesystem>
#include <set>

#include "../colour/scratch.h"
#include "../support/events.h"
#include "../support/files.h"
#include "../support/networks.h"
#include "app/QLOComplexNetwork.h"
#include "app/QLODocumentController.h"
#include "app/doctypes.h"
#include "app/recovery.h"

namespace {

namespace fs = std::filesystem;
using Display = QLODocumentController::Display;
using Panel = VXLController::Panel;
using testing_support::contentsOf;
using testing_support::vectorsOf;

const fs::path kData = fs::path(PLEXVIEW_TEST_DATA) / "documents";
const fs::path kNative = kData / "two-parts.graphml";  // components of 4 and 2 vertices
const fs::path kPajek = kData / "two-parts.net";       // components of 3 and 2 vertices
const fs::path kBroken = kData / "broken.net";
// Written by another tool: ids, edge attributes, graph data, a vector type.
const fs::path kForeign = fs::path(PLEXVIEW_TEST_DATA) / "graphml" / "other-tools-extras.graphml";

using testing_support::processEventsUntil;

// "<graphml/>" compressed with gzip.
const std::string kGzipGraphml(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\xb3\x49\x2f\x4a\x2c\xc8\xc8\xcd\xd1\xb7"
    "\x03\x00\x00\x3e\x6f\x93\x0a\x00\x00\x00",
    30);

TEST(DocumentTypes, ByExtensionElseByFirstCharacter) {
  const ScratchFolder scratch;
  const fs::path& folder = scratch.path();
  const std::string native(app::kComplexNetworkType), pajek(app::kPajekNetworkType);
  const std::string gexf(app::kGexfNetworkType);
  const std::string edges(app::kEdgeListType);
  struct Case {
    const char* name;
    std::string contents;
    std::string type;
  };
  const Case cases[] = {
      // One file of each type; how a format is told is the model's rule.
      {"a.graphml", "*Vertices 1\n", native},
      {"b.PAJ", "<graphml/>", pajek},
      {"plain.gz", "<gexf version=\"1.3\">", gexf},
      {"empty", "", edges},
      // Compressed: the extension under ".gz", else the inflated content.
      {"c.net.gz", kGzipGraphml, pajek},
      {"d.gz", kGzipGraphml, native},
  };
  for (const Case& c : cases) {
    scratch.write(c.name, c.contents);
    ReadError error;
    const auto type = app::typeOfFile(folder / c.name, error);
    ASSERT_TRUE(type) << c.name << ": " << error.describe();
    EXPECT_EQ(*type, c.type) << c.name;
  }
  ReadError error;
  EXPECT_FALSE(app::typeOfFile(folder / "missing.net", error));
  EXPECT_EQ(error.file, (folder / "missing.net").string());
  EXPECT_FALSE(error.message.empty());
  // A FIFO is refused at once, never opened (which would wait for a writer).
  ASSERT_EQ(::mkfifo((folder / "pipe.net").c_str(), 0600), 0);
  EXPECT_FALSE(app::typeOfFile(folder / "pipe.net", error));
  EXPECT_NE(error.message.find("pipe"), std::string::npos) << error.message;
}

// A window without widgets: what the document window does with the
// controller and the document, in the same order.
struct FakeWindow {
  QLOComplexNetwork::Ptr document;
  VXLController::Ptr controller;
  Display display;
};

class Documents : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    static int argc = 1;
    static char name[] = "app_tests";
    static char* argv[] = {name, nullptr};
    static auto* application = new QCoreApplication(argc, argv);
    (void)application;
    QCoreApplication::setApplicationName(QStringLiteral("plexview-document-tests"));
    QStandardPaths::setTestModeEnabled(true);
    folder_ = fs::temp_directory_path() / ("plexview-documents-" + std::to_string(getpid()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString((folder_ / "settings").string()));
    // The first document controller made is the shared one: one for all.
    static QLODocumentController controller;
    documents_ = &controller;
  }

  void SetUp() override {
    fs::create_directories(folder_);
    QLODocumentController& d = documents();
    ASSERT_EQ(QLODocumentController::sharedDocumentController(), &d);
    d.setWindowFactory([this](const QLOComplexNetwork::Ptr& document, Display display) {
      auto controller = VXLController::init();
      controller->generator().verticesText = "60";  // a small start-up network
      controller->setDocument(document.get());
      document->setNetworkController(controller.get());
      controller->setRefreshListener(
          [raw = document.get()](Panel panel) { raw->controllerDidRefresh(panel); });
      controller->awakeFromNib();
      document->windowControllerDidLoadNib();
      windows_.push_back({document, controller, display});
    });
    d.setAlert([this](const std::string& message, const std::string& detail) {
      alerts_.push_back(message + "\n" + detail);
    });
    d.setOpenPanel([this](const std::vector<std::string>& types, bool checkboxOn,
                          std::function<void(const QLODocumentController::OpenPanelResult&)> done) {
      panelTypes_ = types;
      panelCheckboxShown_ = checkboxOn;
      ASSERT_FALSE(panelAnswers_.empty());
      const auto answer = panelAnswers_.front();
      panelAnswers_.pop_front();
      done(answer);
    });
    d.clearRecentDocuments();
    startUp_ = d.newDocument();
  }

  void TearDown() override {
    for (const auto& document : std::vector(documents().documents())) document->close();
    for (const FakeWindow& window : windows_) window.controller->setRefreshListener(nullptr);
    fs::remove_all(folder_);
  }

  static QLODocumentController& documents() { return *documents_; }
  VXLController& controllerOf(const QLOComplexNetwork::Ptr& document) {
    for (const FakeWindow& window : windows_) {
      if (window.document == document) return *window.controller;
    }
    ADD_FAILURE() << "no window for the document";
    return *windows_.front().controller;
  }
  QLOComplexNetwork::Ptr open(const fs::path& file) {
    DocumentError error;
    return documents().openDocumentWithContentsOfURL(file, Display::Show, &error);
  }
  void chooseInPanel(int result, bool checkboxOn, std::vector<fs::path> files = {}) {
    panelAnswers_.push_back({result, checkboxOn, std::move(files)});
  }
  // A copy of a test file under another name in the scratch folder.
  fs::path copyAs(const fs::path& from, const std::string& name) {
    fs::copy_file(from, folder_ / name, fs::copy_options::overwrite_existing);
    return folder_ / name;
  }

  static inline QLODocumentController* documents_ = nullptr;
  static inline fs::path folder_;
  std::vector<FakeWindow> windows_;
  std::vector<std::string> alerts_;
  std::deque<QLODocumentController::OpenPanelResult> panelAnswers_;
  std::vector<std::string> panelTypes_;
  bool panelCheckboxShown_ = false;
  QLOComplexNetwork::Ptr startUp_;
};

TEST_F(Documents, TheUntouchedStartUpWindowTakesTheFirstFileAndOthersGetNewOnes) {
  ASSERT_EQ(windows_.size(), 1u);
  EXPECT_TRUE(startUp_->isDefaultNetwork());
  EXPECT_EQ(controllerOf(startUp_).network()->countVertices(), 60u);

  // A Pajek file is read into an untitled native document named after it.
  const auto pajek = open(kPajek);
  EXPECT_EQ(pajek, startUp_) << "the untouched start-up window is reused";
  EXPECT_TRUE(pajek->fileURL().empty());
  EXPECT_EQ(pajek->displayName(), "two-parts");
  EXPECT_EQ(pajek->fileType(), app::kComplexNetworkType);
  EXPECT_EQ(controllerOf(pajek).network()->countVertices(), 5u);

  const auto native = open(kNative);
  ASSERT_TRUE(native);
  EXPECT_NE(native, pajek);
  ASSERT_EQ(windows_.size(), 2u);
  EXPECT_EQ(native->fileURL(), kNative);
  EXPECT_EQ(controllerOf(native).network()->countVertices(), 6u);
  EXPECT_FALSE(native->isDocumentEdited()) << "a file just opened is as saved";
  EXPECT_EQ(documents().currentDocument(), native);
  EXPECT_EQ(documents().recentDocumentURLs(), (std::vector<fs::path>{kNative, kPajek}));

  // The same document again, under another spelling of its path, is not
  // read a second time (two windows would autosave over each other): its
  // window comes to the front.
  const QLOComplexNetwork* presented = nullptr;
  documents().setWindowPresenter([&](const QLOComplexNetwork& d) { presented = &d; });
  documents().setCurrentDocument(pajek.get());
  const fs::path again = kNative.parent_path() / "." / kNative.filename();
  EXPECT_EQ(open(again), native);
  QLOComplexNetwork::Ptr inBackground;
  documents().openDocumentInBackground(again, Display::Show,
                                       [&](const QLOComplexNetwork::Ptr& d) { inBackground = d; });
  EXPECT_EQ(inBackground, native);
  EXPECT_EQ(windows_.size(), 2u);
  EXPECT_EQ(presented, native.get());
  EXPECT_EQ(documents().currentDocument(), native);
  documents().setWindowPresenter({});
}

TEST_F(Documents, TheMajorComponentChoiceShowsTheComponentAndMovesTheLocation) {
  chooseInPanel(QLODocumentController::kOK, true);
  documents().beginOpenPanel({}, {});
  ASSERT_TRUE(documents().isMajorComponentOnlySelected());

  const fs::path net = copyAs(kNative, "net.xml");
  struct Case {
    fs::path file;
    std::uint64_t vertices;
    fs::path location;
  };
  const Case cases[] = {
      {net, 4, folder_ / "net-major.xml"},
      {kPajek, 3, {}},
  };
  for (const Case& c : cases) {
    const auto document = open(c.file);
    ASSERT_TRUE(document) << c.file;
    EXPECT_EQ(controllerOf(document).network()->countVertices(), c.vertices) << c.file;
    EXPECT_EQ(document->fileURL(), c.location) << c.file;
  }
  EXPECT_FALSE(fs::exists(folder_ / "net-major.xml")) << "moving the location writes nothing";
}

TEST_F(Documents, CancellingThePanelKeepsTheChoiceAndNewResetsIt) {
  struct Step {
    int result;
    bool checkboxOn;
    bool choiceAfter;
  };
  const Step steps[] = {
      {QLODocumentController::kOK, true, true},
      {0, false, true},
      {QLODocumentController::kOK, false, false},
  };
  bool shown = false;
  for (const Step& s : steps) {
    chooseInPanel(s.result, s.checkboxOn);
    documents().beginOpenPanel({"t"}, {});
    EXPECT_EQ(panelCheckboxShown_, shown) << "the check box shows the choice in force";
    EXPECT_EQ(documents().isMajorComponentOnlySelected(), s.choiceAfter);
    shown = s.choiceAfter;
  }
  chooseInPanel(QLODocumentController::kOK, true);
  documents().beginOpenPanel({"t"}, {});
  documents().newDocument();
  EXPECT_FALSE(documents().isMajorComponentOnlySelected());
}

TEST_F(Documents, OpeningSeveralFilesReadsInTheBackgroundOneWindowEach) {
  chooseInPanel(QLODocumentController::kOK, false, {kNative, kPajek, kNative});
  documents().openDocument();
  EXPECT_EQ(panelTypes_, (std::vector<std::string>{
                             std::string(app::kComplexNetworkType),
                             std::string(app::kPajekNetworkType), std::string(app::kGmlNetworkType),
                             std::string(app::kGexfNetworkType), std::string(app::kEdgeListType)}));
  ASSERT_TRUE(processEventsUntil([] { return documents().pendingOpens() == 0; }));
  // Only the first goes into the start-up window, even though it was still
  // untouched when the others were asked for.
  ASSERT_EQ(windows_.size(), 3u);
  EXPECT_EQ(startUp_->fileURL(), kNative);
  std::multiset<std::uint64_t> counts;
  for (const FakeWindow& w : windows_) counts.insert(w.controller->network()->countVertices());
  EXPECT_EQ(counts, (std::multiset<std::uint64_t>{5, 6, 6}));
}

TEST_F(Documents, AFileThatFailsRaisesAnAlertNamingItAndChangesNothing) {
  // A second window that has a file: with it in front, opens make new windows.
  documents().newDocument();
  const auto opened = open(kPajek);
  ASSERT_TRUE(opened && opened != startUp_);
  ReadError direct;
  EXPECT_FALSE(QLONetwork::initWithContentsOfPajekURL(kBroken, &direct));
  for (const bool background : {false, true}) {
    for (const auto& front : {startUp_, opened}) {
      SCOPED_TRACE(std::string(background ? "background" : "") +
                   (front == startUp_ ? " start-up" : " new window"));
      alerts_.clear();
      documents().setCurrentDocument(front.get());
      const auto shown = controllerOf(front).network();
      const std::size_t windows = windows_.size();
      const auto recent = documents().recentDocumentURLs();
      QLOComplexNetwork::Ptr result = startUp_;
      if (background) {
        bool done = false;
        documents().openDocumentInBackground(kBroken, Display::Show, [&](const auto& document) {
          result = document;
          done = true;
        });
        ASSERT_TRUE(processEventsUntil([&] { return done; }));
      } else {
        DocumentError error;
        result = documents().openDocumentWithContentsOfURL(kBroken, Display::Show, &error);
        EXPECT_EQ(error.code, -4);
      }
      EXPECT_FALSE(result);
      ASSERT_EQ(alerts_.size(), 1u);
      EXPECT_NE(alerts_[0].find("broken.net"), std::string::npos) << alerts_[0];
      EXPECT_NE(alerts_[0].find(direct.message), std::string::npos) << alerts_[0];
      EXPECT_EQ(windows_.size(), windows);
      EXPECT_EQ(documents().currentDocument(), front);
      EXPECT_EQ(documents().recentDocumentURLs(), recent);
      EXPECT_EQ(controllerOf(front).network(), shown);
    }
  }
}

TEST(DocumentReading, AnErrorIsReportedOnlyToCallersThatAskForOne) {
  struct Case {
    fs::path file;
    std::string_view type;
    bool askForError;
    bool answer;
  };
  const Case cases[] = {
      {kPajek, app::kPajekNetworkType, true, true},
      {kBroken, app::kPajekNetworkType, true, false},
      {kBroken, app::kPajekNetworkType, false, true},
      {kBroken, app::kGexfNetworkType, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file.filename().string() + " as " + std::string(c.type));
    QLOComplexNetwork document;
    DocumentError error;
    EXPECT_EQ(document.readFromURL(c.file, c.type, c.askForError ? &error : nullptr), c.answer);
    EXPECT_EQ(document.networkToBeOppened() != nullptr, c.answer && c.askForError);
    EXPECT_EQ(error.code, c.askForError && !c.answer ? -4 : 0);
  }
}

TEST_F(Documents, SavingKeepsTheLayoutAndAFailureKeepsTheLocation) {
  const auto document = open(kPajek);
  VXLController& controller = controllerOf(document);
  controller.networkView()->prepareFrame();
  controller.networkView()->iterateBy(5);
  const auto laidOut = vectorsOf(*controller.positions());

  const fs::path file = folder_ / "saved.graphml";
  std::string error;
  ASSERT_TRUE(document->saveToURL(file, &error)) << error;
  EXPECT_EQ(document->displayName(), "saved.graphml");
  const auto saved = QLONetwork::initWithContentsOfURL(file);
  ASSERT_TRUE(saved);
  const PropertyValue stored = saved->propertyForKey("Position");
  const auto* positions = std::get_if<std::shared_ptr<QLOVector3dArray>>(&stored);
  ASSERT_TRUE(positions);
  EXPECT_EQ(vectorsOf(**positions), laidOut);

  // A failed save (the atomic write itself is the model's) names the file
  // and keeps the location.
  EXPECT_FALSE(document->saveToURL(folder_ / "none" / "x.graphml", &error));
  EXPECT_NE(error.find("x.graphml"), std::string::npos) << error;
  EXPECT_EQ(document->fileURL(), file);
}

TEST_F(Documents, EditsAreSettingsNetworksAndTheLayoutButNotTheUntouchedStartUp) {
  int notices = 0;
  startUp_->setStateListener([&] { ++notices; });
  startUp_->noteLayoutRan();
  controllerOf(startUp_).generateNetworkChangeType(1);
  EXPECT_FALSE(startUp_->isDocumentEdited()) << "moving or choosing a type is no edit";
  controllerOf(startUp_).setShowEdges(false);
  EXPECT_TRUE(startUp_->isDocumentEdited());
  EXPECT_EQ(notices, 1);

  // Edits of an opened document, one at a time, each undone by a save.
  const auto document = open(kNative);
  VXLController& c = controllerOf(document);
  const std::pair<const char*, std::function<void()>> edits[] = {
      {"a setting", [&] { c.setRepulsiveConstant(3.0f); }},
      {"a generated network", [&] { c.generateNetwork(); }},
      {"the layout", [&] { document->noteLayoutRan(); }},
  };
  for (const auto& [what, edit] : edits) {
    EXPECT_FALSE(document->isDocumentEdited()) << what;
    edit();
    EXPECT_TRUE(document->isDocumentEdited()) << what;
    std::string error;
    ASSERT_TRUE(document->saveToURL(folder_ / "edits.graphml", &error)) << error;
  }
}

TEST_F(Documents, AutosaveWritesInPlaceOnlyOverOurOwnDocuments) {
  ASSERT_TRUE(startUp_->autosave());
  EXPECT_TRUE(startUp_->autosavedContentsFileURL().empty()) << "untouched: nothing to write";

  // Untitled and edited: a file in the recovery folder that reads back,
  // still edited, that this running program holds, gone on a clean close.
  controllerOf(startUp_).setShowNodes(false);
  std::string error;
  ASSERT_TRUE(startUp_->autosave(&error)) << error;
  const fs::path untitled = startUp_->autosavedContentsFileURL();
  EXPECT_EQ(untitled.parent_path(), QLOComplexNetwork::autosaveFolder());
  const auto back = QLONetwork::initWithContentsOfURL(untitled);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->countVertices(), 60u);
  EXPECT_TRUE(startUp_->isDocumentEdited());
  EXPECT_TRUE(documents().recoverableDocuments().empty()) << "held by a running program";
  startUp_->close();
  EXPECT_FALSE(fs::exists(untitled));

  // Another tool's file opens untitled under its name and, laid out and
  // autosaved on the timer, stays byte for byte as it was.
  const fs::path foreign = copyAs(kForeign, "friends.graphml");
  const std::string original = contentsOf(foreign);
  const auto copy = open(foreign);
  ASSERT_TRUE(copy);
  EXPECT_TRUE(copy->fileURL().empty());
  EXPECT_EQ(copy->displayName(), "friends");
  copy->setAutosaveInterval(std::chrono::milliseconds(20));
  copy->noteLayoutRan();
  ASSERT_TRUE(processEventsUntil([&] { return !copy->autosavedContentsFileURL().empty(); }));
  EXPECT_EQ(contentsOf(foreign), original);
  EXPECT_TRUE(copy->isDocumentEdited());

  // Our own document, on the timer: in place, and then no longer edited.
  const fs::path file = copyAs(kNative, "autosaved.graphml");
  const auto document = open(file);
  EXPECT_EQ(document->fileURL(), file);
  document->setAutosaveInterval(std::chrono::milliseconds(20));
  document->noteLayoutRan();
  const std::string ours = contentsOf(file);
  ASSERT_TRUE(processEventsUntil([&] { return !document->isDocumentEdited(); }));
  EXPECT_NE(contentsOf(file), ours);
  EXPECT_TRUE(document->autosavedContentsFileURL().empty());

  // Our own document compressed: untitled as well, so that a save never
  // writes plain text under the compressed name.
  const fs::path plain = copyAs(kNative, "packed.graphml");
  ASSERT_EQ(std::system(("gzip -f '" + plain.string() + "'").c_str()), 0);
  const auto packed = open(fs::path(plain.string() + ".gz"));
  ASSERT_TRUE(packed);
  EXPECT_TRUE(packed->fileURL().empty());
  EXPECT_EQ(packed->displayName(), "packed");
}

TEST_F(Documents, AutosavesLeftByACrashAreOfferedBackAndReopenUntitled) {
  // What a program that died left: an autosave and its name, and no lock.
  const fs::path left = QLOComplexNetwork::autosaveFolder() / "left-behind.graphml";
  fs::create_directories(left.parent_path());
  fs::copy_file(kNative, left, fs::copy_options::overwrite_existing);
  app::writeRecoveryName(left, "My network");

  std::vector<std::string> offered;
  documents().setRecoveryPanel([&](const auto& found, std::function<void(bool)> answer) {
    for (const auto& item : found) offered.push_back(item.displayName);
    answer(false);
  });
  EXPECT_EQ(documents().offerRecovery(), 1u);
  EXPECT_EQ(offered, std::vector<std::string>{"My network"});
  EXPECT_TRUE(fs::exists(left)) << "declining keeps the autosave for the next start";

  documents().setRecoveryPanel([](const auto&, std::function<void(bool)> answer) { answer(true); });
  const std::size_t windows = windows_.size();
  EXPECT_EQ(documents().offerRecovery(), 1u);
  ASSERT_EQ(windows_.size(), windows + 1);
  const auto recovered = windows_.back().document;
  EXPECT_EQ(controllerOf(recovered).network()->countVertices(), 6u);
  EXPECT_TRUE(recovered->fileURL().empty());
  EXPECT_EQ(recovered->displayName(), "My network");
  EXPECT_TRUE(recovered->isDocumentEdited());
  EXPECT_EQ(recovered->autosavedContentsFileURL(), left);
  EXPECT_TRUE(documents().recoverableDocuments().empty()) << "now held by this program";
  documents().setRecoveryPanel(nullptr);

  // Saving it puts the recovered autosave away.
  std::string error;
  ASSERT_TRUE(recovered->saveToURL(folder_ / "recovered.graphml", &error)) << error;
  EXPECT_FALSE(fs::exists(left));
}

TEST_F(Documents, ClosingHandsTheFrontToAnotherDocumentOnce) {
  const auto second = open(kPajek);  // the start-up window takes it
  const auto third = open(kNative);
  ASSERT_EQ(documents().currentDocument(), third);
  third->close();
  third->close();
  EXPECT_EQ(documents().documents(), std::vector<QLOComplexNetwork::Ptr>{second});
  EXPECT_EQ(documents().currentDocument(), second);
  EXPECT_TRUE(controllerOf(third).isClean());
}

TEST_F(Documents, RecentFilesAreTheTenNewestWithoutRepeats) {
  for (int i = 0; i < 12; ++i) documents().noteNewRecentDocumentURL(folder_ / std::to_string(i));
  documents().noteNewRecentDocumentURL(folder_ / "5");
  std::vector<fs::path> expected{folder_ / "5"};
  for (int i = 11; i >= 2; --i) {
    if (i != 5) expected.push_back(folder_ / std::to_string(i));
  }
  EXPECT_EQ(documents().recentDocumentURLs(), expected);
}

}  // namespace

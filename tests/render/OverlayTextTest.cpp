// The text overlays without GL: GLString's frame and setter rules, the
// typeset image (box, border, text colour), the vertex details, camera,
// information and message texts, the fade, and the capability text layout.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <functional>
#include <regex>
#include <sstream>

#include "render/GLString.h"
#include "render/VXLNetworkView.h"
#include "render/capabilities.h"

namespace {

// Typesetting needs a QGuiApplication; the off-screen platform needs no
// display.
void ensureApplication() {
  static int argc = 3;
  static char name[] = "layout_tests", option[] = "-platform", platform[] = "offscreen";
  static char* argv[] = {name, option, platform, nullptr};
  static QGuiApplication* application = new QGuiApplication(argc, argv);
  (void)application;
}

class GLStringImage : public ::testing::Test {
 protected:
  void SetUp() override { ensureApplication(); }
};

TEST_F(GLStringImage, FrameIsTheTextSizePlusTwiceTheMargins) {
  GLString empty("");
  const QImage image = empty.makeImage();
  EXPECT_EQ(empty.frameSize(), (TextSize{8, 4}));
  EXPECT_EQ(image.size(), QSize(8, 4));

  GLString shortText("Hi"), longText("Hi there, longer"), twoLines("Hi\nHi");
  shortText.makeImage();
  longText.makeImage();
  twoLines.makeImage();
  EXPECT_GT(shortText.frameSize().width, 8);
  EXPECT_GT(shortText.frameSize().height, 4);
  EXPECT_GT(longText.frameSize().width, shortText.frameSize().width);
  EXPECT_EQ(longText.frameSize().height, shortText.frameSize().height);
  EXPECT_GT(twoLines.frameSize().height, shortText.frameSize().height + 5);

  // New margins let the frame follow again, grown by twice the difference.
  const TextSize before = shortText.frameSize();
  shortText.setMargins(10, 5);
  EXPECT_EQ(shortText.frameSize(), (TextSize{0, 0}));
  shortText.makeImage();
  EXPECT_EQ(shortText.frameSize(), (TextSize{before.width + 12, before.height + 6}));
}

TEST_F(GLStringImage, StaticFrameStaysUntilMadeDynamic) {
  GLString text("Hi");
  text.useStaticFrame({50, 20});
  text.setString("A much longer text than fifty pixels");
  text.setMargins(1, 1);
  EXPECT_EQ(text.makeImage().size(), QSize(50, 20));
  EXPECT_EQ(text.frameSize(), (TextSize{50, 20}));
  text.useDynamicFrame();
  EXPECT_FALSE(text.staticFrame());
  EXPECT_EQ(text.frameSize(), (TextSize{0, 0}));
  text.makeImage();
  EXPECT_GT(text.frameSize().width, 50);
}

TEST_F(GLStringImage, EverySetterRequiresAnUpdateOnlyTextAndMarginsResetTheFrame) {
  struct Case {
    const char* name;
    std::function<void(GLString&)> change;
    bool resetsFrame;
  };
  const std::vector<Case> cases = {
      {"setString", [](GLString& s) { s.setString("other"); }, true},
      {"setString with attributes",
       [](GLString& s) {
         s.setString("Hello", {"Monaco", 9});
       },
       true},
      {"setMargins", [](GLString& s) { s.setMargins(1, 1); }, true},
      {"setTextColor",
       [](GLString& s) {
         s.setTextColor({1, 0, 0, 1});
       },
       false},
      {"setBoxColor",
       [](GLString& s) {
         s.setBoxColor({1, 0, 0, 1});
       },
       false},
      {"setBorderColor",
       [](GLString& s) {
         s.setBorderColor({1, 0, 0, 1});
       },
       false},
      {"setAntialias", [](GLString& s) { s.setAntialias(Antialias::Off); }, false},
  };
  for (const Case& c : cases) {
    GLString text("Hello");
    text.genTexture();  // no GL context: typesets, loads nothing
    ASSERT_FALSE(text.requiresUpdate()) << c.name;
    EXPECT_EQ(text.texName(), 0u);
    const TextSize frame = text.frameSize();
    ASSERT_GT(frame.width, 0) << c.name;
    c.change(text);
    EXPECT_TRUE(text.requiresUpdate()) << c.name;
    const TextSize expected = c.resetsFrame ? TextSize{0, 0} : frame;
    EXPECT_EQ(text.frameSize(), expected) << c.name;
  }
}

struct Coverage {
  int boxPixels = 0;     // inner pixels with any alpha
  int borderPixels = 0;  // pixels on the outermost ring with any alpha
  bool premultiplied = true;
};

// A text of one blank so no glyph covers the box's inside.
Coverage coverage(scene::Rgba box, scene::Rgba border) {
  GLString text(" ", {}, GLString::kWhite, box, border);
  text.setMargins(20, 10);
  const QImage image = text.makeImage();
  Coverage c;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb p = image.pixel(x, y);
      if (qRed(p) > qAlpha(p) || qGreen(p) > qAlpha(p) || qBlue(p) > qAlpha(p)) {
        c.premultiplied = false;
      }
      if (qAlpha(p) == 0) continue;
      const bool edge = x == 0 || y == 0 || x == image.width() - 1 || y == image.height() - 1;
      const bool inner = x > 4 && y > 4 && x < image.width() - 5 && y < image.height() - 5;
      c.borderPixels += edge;
      c.boxPixels += inner;
    }
  }
  return c;
}

TEST_F(GLStringImage, BoxAndBorderAreDrawnOnlyWhenTheirAlphaIsNotZero) {
  const scene::Rgba grey{0.5f, 0.5f, 0.5f, 0.5f}, none{1, 1, 1, 0};
  const Coverage nothing = coverage(none, none);
  EXPECT_EQ(nothing.boxPixels, 0);
  EXPECT_EQ(nothing.borderPixels, 0);
  const Coverage boxOnly = coverage(grey, none);
  EXPECT_GT(boxOnly.boxPixels, 100);
  const Coverage borderOnly = coverage(none, grey);
  EXPECT_EQ(borderOnly.boxPixels, 0);
  EXPECT_GT(borderOnly.borderPixels, 20);
  EXPECT_TRUE(boxOnly.premultiplied);
  EXPECT_TRUE(borderOnly.premultiplied);
}

TEST_F(GLStringImage, BoxGradientRunsFromHalfAlphaAtLowerLeftToFullAtUpperRight) {
  GLString text(" ", {}, GLString::kWhite, {0, 0, 1, 0.8f}, GLString::kNoColour);
  text.setMargins(30, 30);
  const QImage image = text.makeImage();
  const QRgb lowerLeft = image.pixel(8, image.height() - 9);
  const QRgb upperRight = image.pixel(image.width() - 9, 8);
  EXPECT_NEAR(qAlpha(lowerLeft), 0.4 * 255, 20);
  EXPECT_NEAR(qAlpha(upperRight), 0.8 * 255, 20);
  EXPECT_EQ(qRed(upperRight), 0);
  EXPECT_NEAR(qBlue(upperRight), qAlpha(upperRight), 1);
}

TEST_F(GLStringImage, TextIsDrawnInTheTextColourInsideTheMargins) {
  GLString text("MMMM", {}, {1, 0, 0, 1});
  const QImage image = text.makeImage();
  int red = 0, other = 0, inMargin = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb p = image.pixel(x, y);
      if (qAlpha(p) == 0) continue;
      (qGreen(p) == 0 && qBlue(p) == 0 && qRed(p) > 0 ? red : other)++;
      if (x < 3 || x >= image.width() - 3) ++inMargin;
    }
  }
  EXPECT_GT(red, 20);
  EXPECT_EQ(other, 0);
  EXPECT_EQ(inMargin, 0);
}

std::shared_ptr<QLONetwork> detailsNetwork() {
  NetworkData data;
  data.verticesCount = 3;
  data.from = {0, 1};
  data.to = {1, 2};
  auto texts = [](std::vector<std::string> values) {
    return std::make_shared<TextList>(std::move(values));
  };
  auto numbers = [](std::vector<double> values) { return QLONumberArray::initWithDoubles(values); };
  auto vectors = QLOVector3dArray::initWithSize(3, Precision::Double);
  vectors->setVector({1, 2, 3}, 1);
  data.properties = {
      {"Name", texts({"alpha", "beta", "gamma"})},
      {"b_score", numbers({0, 0.123456, 0})},
      {"Zeta", numbers({0, 12345, 0})},
      {"a_label", texts({"", "one\ntwo", ""})},
      {"Position", vectors},
      {"Color", vectors},
      {"vec", vectors},
      {"k", texts({"", std::string(30, 'x'), std::string(31, 'y')})},
  };
  return QLONetwork::make(std::move(data));
}

TEST(VertexDetails, KeysInOrderSkippingNamePositionColourWithNumbersAndTextsFormatted) {
  const auto network = detailsNetwork();
  ASSERT_TRUE(network);
  // "k: " + 30 characters is 34 with the line break: kept whole.
  EXPECT_EQ(VXLNetworkView::vertexDetailsText(network->vertexAtIndex(1)),
            "Name: beta (1)\nDegree: 2.00\nZeta: 1.2e+04\na_label: one|two\nb_score: 0.12\nk: " +
                std::string(30, 'x') + "\nvec: (1, 2, 3)");
  // One more character: cut to 30 (the line break counts) and "...".
  EXPECT_EQ(VXLNetworkView::vertexDetailsText(network->vertexAtIndex(2)),
            "Name: gamma (2)\nDegree: 1.00\nZeta: 0\na_label: \nb_score: 0\nk: " +
                std::string(26, 'y') + "...\nvec: (0, 0, 0)");
}

TEST(VertexDetails, SelectingAVertexShowsItsDetails) {
  VXLNetworkView view;
  view.setNetwork(detailsNetwork());
  EXPECT_EQ(view.vertexInfoString(), "");
  view.selectVertexWithIndex(0);
  EXPECT_EQ(view.vertexInfoString(),
            VXLNetworkView::vertexDetailsText(view.network()->vertexAtIndex(0)));
  EXPECT_EQ(view.vertexInfoString().rfind("Name: alpha (0)\nDegree: 1.00", 0), 0u);
  view.selectVertexWithIndex(7);  // out of range: the details stay
  EXPECT_EQ(view.vertexInfoString().rfind("Name: alpha", 0), 0u);
}

TEST(CameraText, KeptOnlyForAnUnchangedCameraAndAnAllZeroWorldRotation) {
  const VXLCamera camera;
  const Rotation zero{0, 0, 0, 0};
  EXPECT_FALSE(VXLNetworkView::cameraTextCurrent(std::nullopt, camera, zero));
  EXPECT_TRUE(VXLNetworkView::cameraTextCurrent(camera, camera, zero));
  for (const Rotation r :
       {Rotation{1, 0, 0, 0}, Rotation{0, 1, 0, 0}, Rotation{0, 0, 1, 0}, Rotation{0, 0, 0, 1}}) {
    EXPECT_FALSE(VXLNetworkView::cameraTextCurrent(camera, camera, r));
  }
  const std::vector<std::function<void(VXLCamera&)>> changes = {
      [](VXLCamera& c) { c.position[2] = 10; }, [](VXLCamera& c) { c.direction[0] = 1; },
      [](VXLCamera& c) { c.up[2] = 1; },        [](VXLCamera& c) { c.rotationCenter[1] = 1; },
      [](VXLCamera& c) { c.aperture = 30; },    [](VXLCamera& c) { c.viewWidth = 5; },
      [](VXLCamera& c) { c.viewHeight = 5; },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    VXLCamera changed = camera;
    changes[i](changed);
    EXPECT_FALSE(VXLNetworkView::cameraTextCurrent(camera, changed, zero)) << "change " << i;
  }
}

TEST(CameraText, FollowsTheCameraAndWorldRotation) {
  VXLNetworkView view;
  VXLCamera camera = view.camera();
  camera.position = {0, 0, 42.25};
  camera.aperture = 30;
  view.setCamera(camera);
  view.setWorldRotation({90, 0, 1, 0.5f});
  view.updateCameraString();
  EXPECT_EQ(view.cameraString(),
            "Camera distance 42.2 rotated to (90.0, 0.0, 1.0, 0.5) with 30.0 aperture");
  camera.position[2] = 7;
  view.setCamera(camera);
  view.setWorldRotation({});
  view.updateCameraString();
  EXPECT_EQ(view.cameraString(),
            "Camera distance 7.0 rotated to (0.0, 0.0, 0.0, 0.0) with 30.0 aperture");
}

TEST(ViewTexts, InformationAndMessageTexts) {
  VXLNetworkView view;
  EXPECT_EQ(view.messageString(), "No messages...");
  view.setNetworkName("karate club");
  EXPECT_EQ(view.networkName(), "karate club");
  EXPECT_EQ(view.infoString(), "(0 x 0) \nkarate club");
  view.update();
  EXPECT_TRUE(std::regex_match(view.messageString(), std::regex(R"(update at \d+\.\d secs)")))
      << view.messageString();
  EXPECT_EQ(view.errorString(), "");
}

TEST(ViewTexts, MessagesFadeFromPointThreeToNothingOverThreeSeconds) {
  struct Case {
    double now, setAt;
    std::optional<float> intensity;
  };
  for (const Case& c : {Case{5, 5, 0.3f}, Case{6, 5, 0.2f}, Case{7.5, 5, 0.05f},
                        Case{8, 5, std::nullopt}, Case{20, 5, std::nullopt}}) {
    const auto got = VXLNetworkView::fadeIntensity(c.now, c.setAt);
    ASSERT_EQ(got.has_value(), c.intensity.has_value()) << c.now;
    if (got) {
      EXPECT_NEAR(*got, *c.intensity, 1e-6) << c.now;
    }
  }
}

TEST(Capabilities, TextListsTheItemsAndEveryExtensionWithinTheLineWidth) {
  capabilities::GlCapabilities caps;
  caps.renderer = "Test Renderer";
  caps.version = "2.1 Test";
  caps.maxTextureSize = 8192;
  caps.maxViewportWidth = 1024;
  caps.maxViewportHeight = 768;
  for (int i = 0; i < 23; ++i) caps.extensions.push_back("GL_TEST_extension_" + std::to_string(i));
  caps.extensions.push_back("GL_" + std::string(70, 'z'));  // longer than the width
  const std::string text = capabilities::capabilitiesText(caps, 60);
  EXPECT_NE(text.find("Renderer: Test Renderer\n"), std::string::npos);
  EXPECT_NE(text.find("Max texture size: 8192\n"), std::string::npos);
  EXPECT_NE(text.find("Max viewport: 1024 x 768\n"), std::string::npos);
  EXPECT_NE(text.find("Extensions (24):"), std::string::npos);
  std::istringstream lines(text.substr(text.find("Extensions")));
  std::vector<std::string> seen;
  std::string line;
  std::getline(lines, line);
  int extensionLines = 0;
  while (std::getline(lines, line)) {
    ++extensionLines;
    std::istringstream names(line);
    for (std::string name; names >> name;) seen.push_back(name);
    if (line.find("zzz") == std::string::npos) {
      EXPECT_LE(line.size(), 60u) << line;
    }
  }
  EXPECT_EQ(seen, caps.extensions);
  EXPECT_GT(extensionLines, 5);  // several to a line, not one per line
  EXPECT_LT(extensionLines, 23);
}

}  // namespace

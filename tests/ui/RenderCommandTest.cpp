// `plexview --render FILE -o OUT` run as a separate process: the picture
// of the requested size, its colouring by a property, the progress line,
// and the failures (bad file, bad option, missing -o, unknown property, a
// format this build cannot write).
#include <gtest/gtest.h>

#include <QColor>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <filesystem>
#include <fstream>
#include <set>

namespace {

namespace fs = std::filesystem;
const fs::path kOutput = PLEXVIEW_TEST_OUTPUT;

struct RenderRun {
  int exitCode = -1;
  QString out, err;
};

enum class Display { Inherited, None };

RenderRun render(const QStringList& arguments, Display display = Display::Inherited) {
  QProcess process;
  if (display == Display::None) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      environment.remove(QLatin1String(name));
    }
    process.setProcessEnvironment(environment);
  }
  process.start(QStringLiteral(PLEXVIEW_PROGRAM), arguments);
  RenderRun run;
  if (!process.waitForFinished(120000)) return run;
  run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
  run.err = QString::fromLocal8Bit(process.readAllStandardError());
  return run;
}

QString output(const char* name) {
  const fs::path path = kOutput / name;
  fs::remove(path);
  return QString::fromStdString(path.string());
}

// Two groups of twelve: a ring each, joined by one edge; the groups are
// told apart by the text property "team" and by the number property "rank".
QString groupsFile() {
  const fs::path file = kOutput / "render-groups.graphml";
  std::ofstream out(file);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n"
         "<key id=\"team\" for=\"node\" attr.name=\"team\" attr.type=\"string\"/>\n"
         "<key id=\"rank\" for=\"node\" attr.name=\"rank\" attr.type=\"double\"/>\n"
         "<graph edgedefault=\"undirected\">\n";
  constexpr int kGroup = 12;
  for (int i = 0; i < 2 * kGroup; ++i) {
    out << "<node id=\"n" << i << "\"><data key=\"team\">" << (i < kGroup ? "north" : "south")
        << "</data><data key=\"rank\">" << i << "</data></node>\n";
  }
  for (int g = 0; g < 2; ++g) {
    for (int i = 0; i < kGroup; ++i) {
      out << "<edge source=\"n" << g * kGroup + i << "\" target=\"n"
          << g * kGroup + (i + 1) % kGroup << "\"/>\n";
    }
  }
  out << "<edge source=\"n0\" target=\"n" << kGroup << "\"/>\n</graph>\n</graphml>\n";
  return QString::fromStdString(file.string());
}

// The hues (in 30-degree buckets) of the clearly coloured pixels.
std::set<int> hueBuckets(const QImage& image) {
  std::set<int> buckets;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, y);
      if (colour.hsvSaturation() > 120 && colour.value() > 80) {
        buckets.insert(colour.hsvHue() / 30);
      }
    }
  }
  return buckets;
}

TEST(RenderCommand, WritesThePictureOfTheRequestedSizeColouredByTheProperty) {
  const QString network = groupsFile();
  struct Case {
    QStringList extra;
    std::size_t minimumHues;
  };
  // Without a property the picture is coloured by degree, as a window is;
  // by a property the two groups (and the ranks' gradient) show several
  // hues, each in a picture of its own.
  QImage byDegree;
  const Case cases[] = {
      {{}, 1},
      {{"--color-by", "team"}, 2},
      {{"--color-by", "rank"}, 3},
      {{"--color-by", "Node Degree"}, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.extra.join(' ').toStdString());
    const QString png = output("render-test.png");
    const RenderRun run = render(
        QStringList{"--render", network, "-o", png, "--size", "240x180", "--iterations", "60"}
        << c.extra);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(png)) << run.out.toStdString();
    EXPECT_TRUE(
        run.err.contains(QStringLiteral("laying out render-groups.graphml: 60 of 60 steps")))
        << run.err.toStdString();
    const QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(240, 180));
    EXPECT_GE(hueBuckets(image).size(), c.minimumHues);
    if (c.extra.isEmpty()) {
      byDegree = image;
    } else if (c.extra.last() != QStringLiteral("Node Degree")) {
      EXPECT_NE(image, byDegree);
    }
  }
}

TEST(RenderCommand, FailuresExitNonZeroWithAMessageAndNoPicture) {
  const QString network = groupsFile();
  const QString png = output("render-never.png");
  struct Case {
    QStringList args;
    int exitCode;
    QString errorMentions;
  };
  const Case cases[] = {
      {{"--render", "/nonexistent-folder/missing.net", "-o", png}, 1, "missing.net"},
      {{"--render", network, "-o", png, "--frobnicate"}, 2, "--frobnicate"},
      {{"--render", network}, 2, "-o"},
      {{"--render", network, "-o", png, "--size", "0x9"}, 2, "0x9"},
      {{"--render", network, "-o", png, "--color-by", "height"}, 1, "Node Degree, "},
      {{"--render", network, "-o", "/nonexistent-folder/out.png", "--iterations", "0"},
       1,
       "/nonexistent-folder/out.png"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args.join(' ').toStdString());
    const RenderRun run = render(c.args);
    EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(c.errorMentions)) << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(png));
  }
}

// Without a display the program runs itself under a virtual one.
TEST(RenderCommand, WithoutADisplayItLendsItselfOne) {
  const QString png = output("render-headless.png");
  const RenderRun run = render(
      {"--render", groupsFile(), "-o", png, "--size", "64x48", "--iterations", "3"}, Display::None);
  ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
  EXPECT_EQ(QImage(png).size(), QSize(64, 48));
}

// PDF and SVG go through the view's image export; a build without it says
// so before laying anything out.
TEST(RenderCommand, VectorFormatsAreWritten) {
  const QString network = groupsFile();
  for (const char* name : {"render-test.pdf", "render-test.svg"}) {
    SCOPED_TRACE(name);
    const QString file = output(name);
    const RenderRun run = render({"--render", network, "-o", file, "--iterations", "5"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray head = written.read(256);
    EXPECT_TRUE(head.startsWith("%PDF") || head.contains("<svg")) << head.toStdString();
  }
}

}  // namespace

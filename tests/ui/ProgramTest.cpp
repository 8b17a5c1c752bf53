// Which reader opens a file, and `plexview --snapshot` and `plexview --render
// FILE -o OUT` run as separate processes (pictures, colouring, failures).
#include <gtest/gtest.h>

#include <QColor>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <filesystem>
#include <fstream>
#include <set>

#include "app/networkfile.h"

namespace {

namespace fs = std::filesystem;
const fs::path kData = PLEXVIEW_TEST_DATA;
const fs::path kOutput = PLEXVIEW_TEST_OUTPUT;

// Copies a file under another name in the output folder.
fs::path copyAs(const fs::path& from, const std::string& name) {
  const fs::path to = kOutput / name;
  fs::copy_file(from, to, fs::copy_options::overwrite_existing);
  return to;
}

TEST(NetworkFile, TheReaderFollowsTheNameThenTheContentAndFailuresSayWhy) {
  const fs::path pajek = kData / "pajek" / "mixed.net";
  const fs::path graphml = kData / "graphml" / "names-weights-and-graph-attributes.graphml";
  ReadError direct;
  const auto pajekNetwork = QLONetwork::initWithContentsOfPajekURL(pajek, &direct);
  const auto graphmlNetwork = QLONetwork::initWithContentsOfURL(graphml, &direct);
  ASSERT_TRUE(pajekNetwork && graphmlNetwork) << direct.describe();
  // Different counts, so a file read by the wrong reader (or not at all) shows.
  ASSERT_NE(pajekNetwork->countEdges(), graphmlNetwork->countEdges());

  // A known extension picks the reader (so the wrong one fails); without
  // one the content decides.
  struct Case {
    fs::path file;
    const QLONetwork* same;  // null: the read fails
  };
  const Case cases[] = {
      {copyAs(graphml, "graphml.NET"), nullptr},
      {copyAs(pajek, "pajek.graphml"), nullptr},
      {copyAs(pajek, "pajek-without-extension"), pajekNetwork.get()},
      {copyAs(graphml, "graphml.txt"), graphmlNetwork.get()},
  };
  for (const Case& c : cases) {
    ReadError error;
    const auto network = app::openNetworkFile(c.file, error);
    ASSERT_EQ(network != nullptr, c.same != nullptr) << c.file << ": " << error.describe();
    if (!c.same) continue;
    EXPECT_EQ(network->countVertices(), c.same->countVertices()) << c.file;
    EXPECT_EQ(network->countEdges(), c.same->countEdges()) << c.file;
  }

  // Unreadable files: the error names the file and gives a reason.
  const fs::path garbage = kOutput / "garbage.net";
  std::ofstream(garbage) << "*Vertices 3\n1 \"a\"\n*Edges\n1 7\n";  // vertex 7 does not exist
  for (const fs::path& file : {kOutput / "missing.net", kOutput / "missing.graphml", garbage}) {
    ReadError error;
    EXPECT_FALSE(app::openNetworkFile(file, error)) << file;
    EXPECT_NE(error.describe().find(file.filename().string()), std::string::npos)
        << error.describe();
    EXPECT_FALSE(error.message.empty()) << file;
  }
}

struct ProgramRun {
  int exitCode = -1;
  QString out, err;
};

enum class Display { Inherited, None };

ProgramRun runProgram(const QStringList& arguments, Display display = Display::Inherited) {
  QProcess process;
  if (display == Display::None) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      environment.remove(QLatin1String(name));
    }
    process.setProcessEnvironment(environment);
  }
  process.start(QStringLiteral(PLEXVIEW_PROGRAM), arguments);
  ProgramRun run;
  if (!process.waitForFinished(120000)) return run;
  run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
  run.err = QString::fromLocal8Bit(process.readAllStandardError());
  return run;
}

QString outputFile(const char* name) {
  const fs::path path = kOutput / name;
  fs::remove(path);
  return QString::fromStdString(path.string());
}

// Two rings of twelve joined by one edge, told apart by the text property
// "team" and by the number property "rank".
QString groupsFile() {
  const fs::path file = kOutput / "render-groups.graphml";
  std::ofstream out(file);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n"
         "<key id=\"team\" for=\"node\" attr.name=\"team\" attr.type=\"string\"/>\n"
         "<key id=\"rank\" for=\"node\" attr.name=\"rank\" attr.type=\"double\"/>\n"
         "<graph edgedefault=\"undirected\">\n";
  for (int i = 0; i < 24; ++i) {
    out << "<node id=\"n" << i << "\"><data key=\"team\">" << (i < 12 ? "north" : "south")
        << "</data><data key=\"rank\">" << i << "</data></node>\n";
  }
  for (int i = 0; i < 24; ++i) {
    out << "<edge source=\"n" << i << "\" target=\"n" << i / 12 * 12 + (i + 1) % 12 << "\"/>\n";
  }
  out << "<edge source=\"n0\" target=\"n12\"/>\n</graph>\n</graphml>\n";
  return QString::fromStdString(file.string());
}

TEST(Snapshot, WritesOneFrameOfTheRequestedSize) {
  struct Case {
    QStringList extra;
    QSize size;
  };
  const Case cases[] = {
      {{"--size", "320x200", QString::fromStdString((kData / "pajek" / "mixed.net").string())},
       {320, 200}},
      {{"--steps", "3", "--size", "97x61"}, {97, 61}},  // odd sizes; a generated network
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.extra.join(' ').toStdString());
    const QString png = outputFile("snapshot-test.png");
    const ProgramRun run = runProgram(QStringList{"--snapshot", png} << c.extra);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(png)) << run.out.toStdString();
    const QImage image(png);
    EXPECT_EQ(image.size(), c.size);
    // A small layout covers little of the frame: count samples off the
    // background and a few shades rather than many colours.
    std::set<QRgb> colours;
    int drawn = 0;
    for (int y = 0; y < image.height(); y += 3) {
      for (int x = 0; x < image.width(); x += 3) {
        colours.insert(image.pixel(x, y));
        drawn += image.pixel(x, y) != image.pixel(0, 0);
      }
    }
    EXPECT_GE(drawn, 10);
    EXPECT_GE(colours.size(), 4u);
  }
}

// The hues (in 30-degree buckets) of the clearly coloured pixels.
std::set<int> hueBuckets(const QImage& image) {
  std::set<int> buckets;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, y);
      if (colour.hsvSaturation() > 120 && colour.value() > 80) buckets.insert(colour.hsvHue() / 30);
    }
  }
  return buckets;
}

// Without a property the picture is coloured by degree, as a window is; by
// a property the groups (and the ranks' gradient) show several hues.
TEST(RenderCommand, WritesThePictureOfTheRequestedSizeColouredByTheProperty) {
  const QString network = groupsFile();
  const std::pair<QStringList, std::size_t> cases[] = {
      {{}, 1},
      {{"--color-by", "team"}, 2},
      {{"--color-by", "rank"}, 3},
      {{"--color-by", "Node Degree"}, 2},
  };
  QImage byDegree;
  for (const auto& [extra, minimumHues] : cases) {
    SCOPED_TRACE(extra.join(' ').toStdString());
    const QString png = outputFile("render-test.png");
    const ProgramRun run = runProgram(
        QStringList{"--render", network, "-o", png, "--size", "240x180", "--iterations", "60"}
        << extra);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(png)) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains("laying out render-groups.graphml: 60 of 60 steps"))
        << run.err.toStdString();
    const QImage image(png);
    EXPECT_EQ(image.size(), QSize(240, 180));
    EXPECT_GE(hueBuckets(image).size(), minimumHues);
    if (extra.isEmpty()) {
      byDegree = image;
    } else if (extra.last() != QStringLiteral("Node Degree")) {
      EXPECT_NE(image, byDegree);
    }
  }
}

TEST(RenderCommand, VectorFormatsAndARunWithoutADisplay) {
  const QString network = groupsFile();
  for (const char* name : {"render-test.pdf", "render-test.svg"}) {
    SCOPED_TRACE(name);
    const QString file = outputFile(name);
    const ProgramRun run = runProgram({"--render", network, "-o", file, "--iterations", "5"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    const QByteArray head = written.read(256);
    EXPECT_TRUE(head.startsWith("%PDF") || head.contains("<svg")) << head.toStdString();
  }
  // Without a display the program runs itself under a virtual one.
  const QString png = outputFile("render-headless.png");
  const ProgramRun run = runProgram(
      {"--render", network, "-o", png, "--size", "64x48", "--iterations", "3"}, Display::None);
  ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
  EXPECT_EQ(QImage(png).size(), QSize(64, 48));
}

TEST(Program, FailuresExitNonZeroWithAMessageAndNoFile) {
  const QString network = groupsFile();
  const QString png = outputFile("never-written.png");
  const QString unwritable = QStringLiteral("/nonexistent-folder/out.png");
  struct Case {
    QStringList args;
    int exitCode;
    QString errorMentions;
  };
  const Case cases[] = {
      {{"--snapshot", png, "/nonexistent-folder/missing.net"}, 1, "missing.net"},
      {{"--snapshot", png, "--frobnicate"}, 2, "--frobnicate"},
      {{"--snapshot", unwritable, "--steps", "0", "--size", "8x8"}, 1, unwritable},
      {{"--render", "/nonexistent-folder/missing.net", "-o", png}, 1, "missing.net"},
      {{"--render", network, "-o", png, "--frobnicate"}, 2, "--frobnicate"},
      {{"--render", network}, 2, "-o"},
      {{"--render", network, "-o", png, "--size", "0x9"}, 2, "0x9"},
      {{"--render", network, "-o", png, "--color-by", "height"}, 1, "Node Degree, "},
      {{"--render", network, "-o", unwritable, "--iterations", "0"}, 1, unwritable},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args.join(' ').toStdString());
    const ProgramRun run = runProgram(c.args);
    EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(c.errorMentions)) << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(png));
  }
}

}  // namespace

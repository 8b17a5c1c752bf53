// `plexview --snapshot` and `plexview --render FILE -o OUT` run as separate
// processes (pictures, colouring, failures).
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
const fs::path kData = PLEXVIEW_TEST_DATA;
const fs::path kOutput = PLEXVIEW_TEST_OUTPUT;

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

// Two rings of twelve joined by one edge, told apart by the text property "team".
QString groupsFile() {
  const fs::path file = kOutput / "render-groups.graphml";
  std::ofstream out(file);
  out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n"
         "<key id=\"team\" for=\"node\" attr.name=\"team\" attr.type=\"string\"/>\n"
         "<graph edgedefault=\"undirected\">\n";
  for (int i = 0; i < 24; ++i) {
    out << "<node id=\"n" << i << "\"><data key=\"team\">" << (i < 12 ? "north" : "south")
        << "</data></node>\n";
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
    int drawn = 0;  // pixels off the background (a small network may be drawn small)
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) drawn += image.pixel(x, y) != image.pixel(0, 0);
    }
    EXPECT_GE(drawn, 10);
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
    const QImage image(png);
    EXPECT_EQ(image.size(), QSize(240, 180));
    EXPECT_GE(hueBuckets(image).size(), minimumHues);
    if (extra.isEmpty()) {
      byDegree = image;
    } else {
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
  // A hostile file: the failure names the file, the line and the reason in
  // printable text (the readers' reasons are checked by the model tests).
  std::ofstream(kOutput / "bytes.net", std::ios::binary) << "*Edges\n1 2\xaf\n";
  const QString bytes = QString::fromStdString((kOutput / "bytes.net").string());
  struct Case {
    QStringList args;
    int exitCode;
    QString errorMentions;
  };
  const Case cases[] = {
      {{"--snapshot", png, "/nonexistent-folder/missing.net"}, 1, "missing.net"},
      {{"--snapshot", unwritable, "--steps", "0", "--size", "8x8"}, 1, unwritable},
      {{"--render", "/nonexistent-folder/missing.net", "-o", png}, 1, "missing.net"},
      {{"--render", network, "-o", png, "--size", "0x9"}, 2, "0x9"},
      {{"--render", network, "-o", png, "--color-by", "height"}, 1, "Node Degree, "},
      {{"--render", network, "-o", unwritable, "--iterations", "0"}, 1, unwritable},
      {{"--render", bytes, "-o", png}, 1, "bytes.net, line 2: '2\\xAF' is not a vertex number"},
      {{"--render", "/dev/zero", "-o", png}, 1, "/dev/zero: is a device"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args.join(' ').toStdString());
    const ProgramRun run = runProgram(c.args);
    EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
    EXPECT_EQ(run.err.count(c.errorMentions), 1) << run.err.toStdString();  // said once
    EXPECT_FALSE(QFileInfo::exists(png));
  }
}

}  // namespace

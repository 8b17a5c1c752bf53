// The plexview program before any window: its command line, which reader
// opens a file, and `plexview --snapshot` run as a separate process.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <filesystem>
#include <fstream>
#include <set>

#include "app/networkfile.h"
#include "app/options.h"

namespace {

namespace fs = std::filesystem;
const fs::path kData = PLEXVIEW_TEST_DATA;
const fs::path kOutput = PLEXVIEW_TEST_OUTPUT;

TEST(ProgramOptions, AcceptedCommandLines) {
  using enum app::RunMode;
  const app::Options defaults;
  const std::uint64_t S = defaults.steps;
  const int W = defaults.width, H = defaults.height;
  struct Case {
    std::vector<std::string> args;
    app::RunMode mode;
    std::vector<fs::path> files;
    std::string snapshot;
    std::uint64_t steps;
    int width, height;
  };
  const Case cases[] = {
      {{}, Window, {}, "", S, W, H},
      {{"a.net"}, Window, {"a.net"}, "", S, W, H},
      {{"a.net", "b.graphml", "a.net"}, Window, {"a.net", "b.graphml", "a.net"}, "", S, W, H},
      {{"b", "--snapshot", "o", "--steps", "0", "--size", "7X9"}, Snapshot, {"b"}, "o", 0, 7, 9},
      {{"--", "-dash.net"}, Window, {"-dash.net"}, "", S, W, H},
      {{"--snapshot", "o.png", "-"}, Snapshot, {"-"}, "o.png", S, W, H},
      {{"x.net", "--help"}, Help, {"x.net"}, "", S, W, H},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.args));
    const app::ParsedOptions parsed = app::parseOptions(c.args);
    ASSERT_TRUE(parsed.options) << parsed.error;
    const app::Options& o = *parsed.options;
    EXPECT_EQ(o.mode, c.mode);
    EXPECT_EQ(o.files, c.files);
    EXPECT_EQ(o.snapshot, fs::path(c.snapshot));
    EXPECT_EQ(o.steps, c.steps);
    EXPECT_EQ(o.width, c.width);
    EXPECT_EQ(o.height, c.height);
  }
}

TEST(ProgramOptions, RefusedCommandLinesSayWhy) {
  struct Case {
    std::vector<std::string> args;
    std::string reasonMentions;
  };
  const Case cases[] = {
      {{"--bogus"}, "--bogus"},
      {{"--snapshot"}, "--snapshot"},
      {{"--snapshot", ""}, "--snapshot"},
      {{"--snapshot", "o.png", "--steps", "12x"}, "12x"},
      {{"--snapshot", "o.png", "--size", "0x10"}, "0x10"},
      {{"--snapshot", "o.png", "--size", "640"}, "640"},
      {{"--snapshot", "o.png", "--size", "20000x10"}, "20000x10"},
      {{"--steps", "10"}, "--snapshot"},
      {{"--size", "10x10", "a.net"}, "--snapshot"},
      {{"--snapshot", "o.png", "a.net", "b.net"}, "b.net"},
  };
  for (const Case& c : cases) {
    const app::ParsedOptions parsed = app::parseOptions(c.args);
    EXPECT_FALSE(parsed.options) << ::testing::PrintToString(c.args);
    EXPECT_NE(parsed.error.find(c.reasonMentions), std::string::npos) << parsed.error;
  }
}

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

  // A known extension picks the reader whatever the content (so the wrong
  // reader fails); without one the content decides.
  struct Case {
    fs::path file;
    const QLONetwork* same;  // null: the read fails
  };
  const Case cases[] = {
      {copyAs(graphml, "graphml.NET"), nullptr},
      {copyAs(graphml, "graphml.paj"), nullptr},
      {copyAs(pajek, "pajek.xml"), nullptr},
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

ProgramRun runProgram(const QStringList& arguments) {
  QProcess process;
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
    const QString png = outputFile("snapshot-test.png");
    const ProgramRun run = runProgram(QStringList{"--snapshot", png} << c.extra);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(png)) << run.out.toStdString();
    const QImage image(png);
    ASSERT_FALSE(image.isNull()) << png.toStdString();
    EXPECT_EQ(image.size(), c.size);
    // Something shaded is drawn on the background: a few five-vertex layouts
    // cover little of the frame, so count samples off the background rather
    // than demanding many distinct colours.
    const QRgb background = image.pixel(0, 0);
    std::set<QRgb> colours;
    int drawn = 0;
    for (int y = 0; y < image.height(); y += 3) {
      for (int x = 0; x < image.width(); x += 3) {
        colours.insert(image.pixel(x, y));
        if (image.pixel(x, y) != background) ++drawn;
      }
    }
    EXPECT_GE(drawn, 10) << c.extra.join(' ').toStdString();
    EXPECT_GE(colours.size(), 4u) << c.extra.join(' ').toStdString();
  }
}

TEST(Snapshot, FailuresExitNonZeroWithAMessageAndNoFile) {
  struct Case {
    QStringList args;
    int exitCode;
    QString errorMentions;
  };
  const QString png = outputFile("never-written.png");
  const QString unwritable = QStringLiteral("/nonexistent-folder/out.png");
  const Case cases[] = {
      {{"--snapshot", png, "/nonexistent-folder/missing.net"}, 1, "missing.net"},
      {{"--snapshot", png, "--frobnicate"}, 2, "--frobnicate"},
      {{"--snapshot", unwritable, "--steps", "0", "--size", "8x8"}, 1, unwritable},
  };
  for (const Case& c : cases) {
    const ProgramRun run = runProgram(c.args);
    EXPECT_EQ(run.exitCode, c.exitCode) << c.args.join(' ').toStdString();
    EXPECT_TRUE(run.err.contains(c.errorMentions)) << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(png)) << c.args.join(' ').toStdString();
  }
}

}  // namespace

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
  struct Case {
    std::vector<std::string> args;
    app::RunMode mode;
    std::string file, snapshot;
    std::uint64_t steps;
    int width, height;
  };
  const app::Options defaults;
  const Case cases[] = {
      {{}, app::RunMode::Window, "", "", defaults.steps, defaults.width, defaults.height},
      {{"a.net"},
       app::RunMode::Window,
       "a.net",
       "",
       defaults.steps,
       defaults.width,
       defaults.height},
      {{"--snapshot", "o.png"},
       app::RunMode::Snapshot,
       "",
       "o.png",
       defaults.steps,
       defaults.width,
       defaults.height},
      {{"--snapshot", "o.png", "--steps", "0", "--size", "320x200", "g.graphml"},
       app::RunMode::Snapshot,
       "g.graphml",
       "o.png",
       0,
       320,
       200},
      {{"b.paj", "--size", "7X9", "--snapshot", "o.png", "--steps", "12"},
       app::RunMode::Snapshot,
       "b.paj",
       "o.png",
       12,
       7,
       9},
      {{"--", "-dash.net"},
       app::RunMode::Window,
       "-dash.net",
       "",
       defaults.steps,
       defaults.width,
       defaults.height},
      {{"--snapshot", "o.png", "-"},
       app::RunMode::Snapshot,
       "-",
       "o.png",
       defaults.steps,
       defaults.width,
       defaults.height},
      {{"x.net", "--help"},
       app::RunMode::Help,
       "x.net",
       "",
       defaults.steps,
       defaults.width,
       defaults.height},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.args));
    const app::ParsedOptions parsed = app::parseOptions(c.args);
    ASSERT_TRUE(parsed.options) << parsed.error;
    EXPECT_EQ(parsed.options->mode, c.mode);
    EXPECT_EQ(parsed.options->file, fs::path(c.file));
    EXPECT_EQ(parsed.options->snapshot, fs::path(c.snapshot));
    if (c.mode == app::RunMode::Help) continue;
    EXPECT_EQ(parsed.options->steps, c.steps);
    EXPECT_EQ(parsed.options->width, c.width);
    EXPECT_EQ(parsed.options->height, c.height);
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
      {{"--snapshot", "o.png", "--steps"}, "--steps"},
      {{"--snapshot", "o.png", "--steps", "-3"}, "-3"},
      {{"--snapshot", "o.png", "--steps", "12x"}, "12x"},
      {{"--snapshot", "o.png", "--size", "0x10"}, "0x10"},
      {{"--snapshot", "o.png", "--size", "640"}, "640"},
      {{"--snapshot", "o.png", "--size", "20000x10"}, "20000x10"},
      {{"--snapshot", "o.png", "--size", "x480"}, "x480"},
      {{"--steps", "10"}, "--snapshot"},
      {{"--size", "10x10", "a.net"}, "--snapshot"},
      {{"a.net", "b.net"}, "b.net"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.args));
    const app::ParsedOptions parsed = app::parseOptions(c.args);
    EXPECT_FALSE(parsed.options);
    EXPECT_NE(parsed.error.find(c.reasonMentions), std::string::npos) << parsed.error;
  }
}

// Copies a file under another name in the output folder.
fs::path copyAs(const fs::path& from, const std::string& name) {
  const fs::path to = kOutput / name;
  fs::copy_file(from, to, fs::copy_options::overwrite_existing);
  return to;
}

TEST(NetworkFile, TheReaderFollowsTheNameThenTheContent) {
  const fs::path pajek = kData / "pajek" / "mixed.net";
  const fs::path graphml = kData / "graphml" / "names-weights-and-graph-attributes.graphml";
  ReadError direct;
  const auto pajekNetwork = QLONetwork::initWithContentsOfPajekURL(pajek, &direct);
  const auto graphmlNetwork = QLONetwork::initWithContentsOfURL(graphml, &direct);
  ASSERT_TRUE(pajekNetwork && graphmlNetwork) << direct.describe();
  // Different counts, so a file read by the wrong reader (or not at all) shows.
  ASSERT_NE(pajekNetwork->countEdges(), graphmlNetwork->countEdges());

  struct Case {
    fs::path file;
    const QLONetwork* same;
  };
  const Case cases[] = {
      {pajek, pajekNetwork.get()},
      {copyAs(pajek, "upper.NET"), pajekNetwork.get()},
      {copyAs(pajek, "pajek.paj"), pajekNetwork.get()},
      {copyAs(pajek, "pajek-without-extension"), pajekNetwork.get()},
      {graphml, graphmlNetwork.get()},
      {copyAs(graphml, "graphml.xml"), graphmlNetwork.get()},
      {copyAs(graphml, "graphml.txt"), graphmlNetwork.get()},
  };
  for (const Case& c : cases) {
    ReadError error;
    const auto network = app::openNetworkFile(c.file, error);
    ASSERT_TRUE(network) << c.file << ": " << error.describe();
    EXPECT_EQ(network->countVertices(), c.same->countVertices()) << c.file;
    EXPECT_EQ(network->countEdges(), c.same->countEdges()) << c.file;
  }
}

TEST(NetworkFile, UnreadableFilesGiveTheirNameAndReason) {
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
  const fs::path garbage = kOutput / "garbage-for-snapshot.net";
  std::ofstream(garbage) << "*Vertices two\n";
  struct Case {
    QStringList args;
    int exitCode;
    QString errorMentions;
  };
  const QString png = outputFile("never-written.png");
  const Case cases[] = {
      {{"--snapshot", png, QString::fromStdString((kOutput / "missing.net").string())},
       1,
       "missing.net"},
      {{"--snapshot", png, QString::fromStdString(garbage.string())},
       1,
       "garbage-for-snapshot.net"},
      {{"--snapshot", png, "--frobnicate"}, 2, "--frobnicate"},
      {{"--snapshot", png, "--size", "wide"}, 2, "wide"},
      {{"--snapshot", "/nonexistent-folder/out.png", "--steps", "0", "--size", "8x8"},
       1,
       "/nonexistent-folder/out.png"},
  };
  for (const Case& c : cases) {
    const ProgramRun run = runProgram(c.args);
    EXPECT_EQ(run.exitCode, c.exitCode) << c.args.join(' ').toStdString();
    EXPECT_TRUE(run.err.contains(c.errorMentions)) << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(png)) << c.args.join(' ').toStdString();
  }
}

}  // namespace

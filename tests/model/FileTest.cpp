// The file layer every reader goes through: what it refuses (and why), gzip
// contents, and error descriptions that are always printable UTF-8.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zlib.h>

#include <filesystem>
#include <string>

#include "../support/files.h"
#include "../support/scratch.h"
#include "plexora/QLONetwork.h"
#include "quillo/QLONumberArray.h"
#include "quillo/fileio.h"
#include "quillo/utf8.h"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class FileLayer : public testing::Test {
 protected:
  fs::path write(const std::string& name, const std::string& bytes) {
    return scratch_.write(name, bytes);
  }
  fs::path writeGzip(const std::string& name, const std::string& text) {
    const fs::path file = folder_ / name;
    gzFile out = gzopen(file.c_str(), "wb");
    EXPECT_TRUE(out);
    gzwrite(out, text.data(), static_cast<unsigned>(text.size()));
    gzclose(out);
    return file;
  }
  static std::string bytesOf(const fs::path& file) { return testing_support::contentsOf(file); }

  const ScratchFolder scratch_;
  const fs::path& folder_ = scratch_.path();
};

TEST_F(FileLayer, OnlyRegularFilesAreRead) {
  ASSERT_EQ(::mkfifo((folder_ / "pipe.net").c_str(), 0600), 0);
  struct Case {
    fs::path file;
    const char* reason;
  };
  const Case cases[] = {
      {folder_ / "pipe.net", "is a pipe (FIFO), not a regular file"},  // would block in open()
      {"/dev/zero", "is a device, not a regular file"},                // would never end
      {folder_, "is a folder"},
      {folder_ / "absent.net", "No such file"},
  };
  for (const Case& c : cases) {
    std::string text;
    ReadError error;
    EXPECT_FALSE(quillo::readWholeFile(c.file, text, &error)) << c.file;
    EXPECT_EQ(error.file, c.file.string());
    EXPECT_NE(error.message.find(c.reason), std::string::npos) << error.message;
    EXPECT_FALSE(quillo::readFileStart(c.file, 16, text, &error)) << c.file;
  }
}

TEST_F(FileLayer, AFileWhoseSizeChangesWhileReadIsRefused) {
  // Files under /proc report no size but have contents: the size at opening
  // and the bytes read disagree, as for a file cut short by another program.
  std::string text;
  ReadError error;
  EXPECT_FALSE(quillo::readWholeFile("/proc/self/status", text, &error));
  EXPECT_NE(error.message.find("changed while it was read"), std::string::npos) << error.message;
}

TEST_F(FileLayer, GzipContentsReadLikeThePlainText) {
  const std::string pajek = "*Vertices 3\n1 \"a\"\n*Arcs\n1 2 0.5\n3 1\n";
  writeGzip("a.net.gz", pajek);
  ReadError error;
  auto network = QLONetwork::initWithContentsOfPajekURL(folder_ / "a.net.gz", &error);
  ASSERT_TRUE(network) << error.describe();
  EXPECT_EQ(network->countEdges(), 2u);
  auto numbers = QLONumberArray::initWithContentsOfURL(writeGzip("n.txt.gz", "1\n2.5\n"),
                                                       NumberType::Float, &error);
  ASSERT_TRUE(numbers) << error.describe();
  EXPECT_EQ(numbers->count(), 2u);

  // Members joined one after another (cat a.gz b.gz) form one text.
  const std::string first = bytesOf(writeGzip("1.gz", "*Edges\n1 2\n"));
  const std::string second = bytesOf(writeGzip("2.gz", "2 3\n"));
  std::string text;
  ASSERT_TRUE(quillo::readWholeFile(write("both.gz", first + second), text, &error));
  EXPECT_EQ(text, "*Edges\n1 2\n2 3\n");
  ASSERT_TRUE(quillo::readFileStart(folder_ / "both.gz", 4, text, &error));
  EXPECT_EQ(text, "*Edg");

  EXPECT_EQ(quillo::withoutCompressionSuffix("a/b.net.GZ"), fs::path("a/b.net"));
  EXPECT_EQ(quillo::withoutCompressionSuffix("a/b.net"), fs::path("a/b.net"));
}

TEST_F(FileLayer, DamagedOrOversizedGzipIsRefused) {
  const std::string packed = bytesOf(writeGzip("p.gz", std::string(100000, '1') + "\n"));
  struct Case {
    std::string bytes;
    const char* reason;
  };
  const Case cases[] = {
      {packed.substr(0, packed.size() / 2), "ends early"},
      {packed + "junk", "followed by 4 bytes that are not gzip"},
      {packed.substr(0, 10) + std::string(40, 'x'), "damaged"},
      {"\x1f\x8b"s, "ends early"},
  };
  for (const Case& c : cases) {
    std::string text;
    ReadError error;
    EXPECT_FALSE(quillo::readWholeFile(write("bad.gz", c.bytes), text, &error));
    EXPECT_NE(error.message.find(c.reason), std::string::npos) << error.message;
  }
  const std::size_t saved = quillo::maxDecompressedBytes();
  quillo::setMaxDecompressedBytes(50000);
  std::string text;
  ReadError error;
  EXPECT_FALSE(quillo::readWholeFile(folder_ / "p.gz", text, &error));
  EXPECT_NE(error.message.find("inflates to more than 50000 bytes"), std::string::npos)
      << error.message;
  quillo::setMaxDecompressedBytes(saved);
}

TEST_F(FileLayer, AtomicSaveKeepsModeAndLinksAndClearsLeftovers) {
  const fs::path target = write("private.txt", "old\n");
  fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
  write(".private.txt.plexview-save-123", "left by a killed save");
  write(".other.txt.plexview-save-123", "another file's");
  fs::create_symlink("private.txt", folder_ / "link.txt");
  std::string why;
  ASSERT_TRUE(quillo::writeWholeFile(folder_ / "link.txt", "new\n", WriteMode::Atomic, &why))
      << why;
  EXPECT_TRUE(fs::is_symlink(folder_ / "link.txt"));
  EXPECT_EQ(bytesOf(target), "new\n");
  EXPECT_EQ(fs::status(target).permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_FALSE(fs::exists(folder_ / ".private.txt.plexview-save-123"));
  EXPECT_TRUE(fs::exists(folder_ / ".other.txt.plexview-save-123"));
}

TEST(ReadErrorText, IsPrintableUtf8WhateverTheFileHeld) {
  const ReadError error{"na\xffme.net", 3, "'1\0x\x1b\xc3\xa9\xed\xa0\x80' is not a number"s};
  const std::string text = error.describe();
  EXPECT_EQ(text, "na\\xFFme.net, line 3: '1\\x00x\\x1B\xc3\xa9\\xED\\xA0\\x80' is not a number");
  EXPECT_TRUE(quillo::isValidUtf8(text));
  EXPECT_EQ(ReadError{}.describe(), "input: could not be read");
  EXPECT_EQ(quillo::printable("\xc3\xa9tude", 2), "\xc3\xa9t...");
}

TEST(Utf16Text, ConvertsWithAByteOrderMark) {
  struct Case {
    std::string bytes;
    std::string text;
  };
  const Case cases[] = {
      {"\xff\xfe*\0E\0\x3d\xd8\x00\xde\0\xd8"s, "*E\xf0\x9f\x98\x80\xef\xbf\xbd"},
      {"\xfe\xff\0*\0E\0"s, "*E\xef\xbf\xbd"},  // an odd last byte
      {"\xef\xbb\xbf*E"s, "*E"},
      {"*E"s, "*E"},
  };
  for (const Case& c : cases) {
    std::string storage, why;
    std::string_view text;
    ASSERT_TRUE(quillo::textAsUtf8(c.bytes, storage, text, why));
    EXPECT_EQ(text, c.text);
  }
}

}  // namespace

#include "quillo/fileio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>

#include "quillo/gzip.h"

namespace quillo {
namespace {

std::string systemReason() {
  return std::strerror(errno);
}

bool writeAll(int fd, std::string_view contents) {
  const char* data = contents.data();
  std::size_t left = contents.size();
  while (left > 0) {
    ssize_t written = ::write(fd, data, left);
    if (written < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    data += written;
    left -= static_cast<std::size_t>(written);
  }
  return true;
}

std::string kindOf(mode_t mode) {
  if (S_ISDIR(mode)) return "is a folder, not a file";
  if (S_ISFIFO(mode)) return "is a pipe (FIFO), not a regular file; only regular files are read";
  if (S_ISSOCK(mode)) return "is a socket, not a regular file; only regular files are read";
  if (S_ISCHR(mode) || S_ISBLK(mode)) {
    return "is a device, not a regular file; only regular files are read";
  }
  return "is not a regular file; only regular files are read";
}

// Temporary files of an atomic save of `target` are named ".NAME.plexview-save-"
// and a number, hidden beside it; one a killed save left behind is removed
// by the next save of the same file.
std::string temporaryPrefix(const std::filesystem::path& target) {
  std::string prefix(1, '.');
  prefix.append(target.filename().string());
  prefix.append(".plexview-save-");
  return prefix;
}

void removeStaleTemporaries(const std::filesystem::path& target) {
  const std::string prefix = temporaryPrefix(target);
  std::error_code failed;
  const std::filesystem::path folder =
      target.parent_path().empty() ? std::filesystem::path(".") : target.parent_path();
  for (std::filesystem::directory_iterator it(folder, failed), end; !failed && it != end;
       it.increment(failed)) {
    const std::string name = it->path().filename().string();
    if (name.starts_with(prefix) &&
        name.find_first_not_of("0123456789", prefix.size()) == std::string::npos) {
      ::unlink(it->path().c_str());
    }
  }
}

void setError(std::string* error, const std::filesystem::path& file, const std::string& reason) {
  if (error) *error = file.string() + ": " + reason;
}

// Opens a regular file for reading. Anything else is refused before it is
// opened: a FIFO would block in open() and a device such as /dev/zero never
// ends. The descriptor is checked again after opening in case the name was
// swapped in between.
int openRegularFile(const std::filesystem::path& file, struct stat& info, std::string& why) {
  if (::stat(file.c_str(), &info) != 0) {
    why = systemReason();
    return -1;
  }
  if (!S_ISREG(info.st_mode)) {
    why = kindOf(info.st_mode);
    return -1;
  }
  int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd < 0) {
    why = systemReason();
    return -1;
  }
  struct stat opened {};
  if (::fstat(fd, &opened) != 0 || !S_ISREG(opened.st_mode) || opened.st_ino != info.st_ino ||
      opened.st_dev != info.st_dev) {
    why = "the file was replaced while it was opened";
    ::close(fd);
    return -1;
  }
  info = opened;
  return fd;
}

// Reads up to `limit` bytes (or to the end) into `out`.
bool readUpTo(int fd, std::size_t limit, std::string& out, std::string& why) {
  out.clear();
  char buffer[1 << 16];
  while (out.size() < limit) {
    const std::size_t wanted = std::min(sizeof buffer, limit - out.size());
    const ssize_t got = ::read(fd, buffer, wanted);
    if (got < 0) {
      if (errno == EINTR) continue;
      why = systemReason();
      return false;
    }
    if (got == 0) break;
    out.append(buffer, static_cast<std::size_t>(got));
  }
  return true;
}

std::size_t gDecompressedLimit = std::size_t{2} << 30;

}  // namespace

std::size_t maxDecompressedBytes() {
  return gDecompressedLimit;
}
void setMaxDecompressedBytes(std::size_t limit) {
  gDecompressedLimit = limit;
}

bool readWholeFile(const std::filesystem::path& file, std::string& out, ReadError* error) {
  auto fail = [&](const std::string& reason) {
    if (error) *error = ReadError{file.string(), 0, reason};
    return false;
  };
  struct stat info {};
  std::string why;
  const int fd = openRegularFile(file, info, why);
  if (fd < 0) return fail(why);
  const auto size = static_cast<std::size_t>(info.st_size);
  std::string bytes;
  bytes.reserve(size);
  // One byte more than the size at opening tells a file that grew.
  bool ok = readUpTo(fd, size + 1, bytes, why);
  // A file rewritten in place to the same size shows in its times.
  struct stat after {};
  const bool rewritten =
      ok && ::fstat(fd, &after) == 0 &&
      (after.st_size != info.st_size || after.st_mtim.tv_sec != info.st_mtim.tv_sec ||
       after.st_mtim.tv_nsec != info.st_mtim.tv_nsec);
  ::close(fd);
  if (!ok) return fail(why);
  if (bytes.size() != size || rewritten) {
    return fail("the file changed while it was read (" + std::to_string(size) +
                " bytes when opened, " +
                (bytes.size() < size   ? std::to_string(bytes.size()) + " bytes read"
                 : bytes.size() > size ? std::string("more when read")
                                       : std::to_string(after.st_size) + " bytes after") +
                "); nothing was read");
  }
  if (!isGzip(bytes)) {
    out = std::move(bytes);
    return true;
  }
  if (!gunzip(bytes, gDecompressedLimit, AtLimit::Refuse, out, why)) return fail(why);
  return true;
}

bool readFileStart(const std::filesystem::path& file, std::size_t count, std::string& out,
                   ReadError* error) {
  auto fail = [&](const std::string& reason) {
    if (error) *error = ReadError{file.string(), 0, reason};
    return false;
  };
  struct stat info {};
  std::string why;
  const int fd = openRegularFile(file, info, why);
  if (fd < 0) return fail(why);
  std::string bytes;
  // Compressed data of this size inflates to at least `count` bytes unless
  // the whole file is shorter.
  const bool ok = readUpTo(fd, count + 64 * 1024, bytes, why);
  ::close(fd);
  if (!ok) return fail(why);
  if (!isGzip(bytes)) {
    out = bytes.substr(0, count);
    return true;
  }
  // A short read ends the gzip data early; what was inflated is still the start.
  gunzip(bytes, count, AtLimit::Stop, out, why);
  return true;
}

std::filesystem::path withoutCompressionSuffix(const std::filesystem::path& file) {
  std::string extension = file.extension().string();
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return extension == ".gz" ? file.parent_path() / file.stem() : file;
}

bool writeWholeFile(const std::filesystem::path& file, std::string_view contents, WriteMode mode,
                    std::string* error) {
  if (mode == WriteMode::Direct) {
    int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) {
      setError(error, file, systemReason());
      return false;
    }
    bool ok = writeAll(fd, contents);
    std::string reason = ok ? std::string() : systemReason();
    if (::close(fd) != 0 && ok) {
      ok = false;
      reason = systemReason();
    }
    if (!ok) setError(error, file, reason);
    return ok;
  }

  // A link is kept: the file it points to is replaced.
  std::error_code failed;
  std::filesystem::path target = file;
  if (std::filesystem::is_symlink(file, failed)) {
    target = std::filesystem::weakly_canonical(file, failed);
    if (failed) {
      setError(error, file, failed.message());
      return false;
    }
  }
  removeStaleTemporaries(target);
  // The temporary name carries a random suffix so two writers never collide.
  std::random_device device;
  const std::filesystem::path temporary =
      target.parent_path() / (temporaryPrefix(target) + std::to_string(device() % 1000000000u));
  int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    setError(error, file, systemReason());
    return false;
  }
  // The replacement keeps the permissions of the file it replaces (a private
  // 0600 file stays private).
  struct stat old {};
  if (::stat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode)) {
    ::fchmod(fd, old.st_mode & 07777);
  }
  bool ok = writeAll(fd, contents) && ::fsync(fd) == 0;
  std::string reason = ok ? std::string() : systemReason();
  if (::close(fd) != 0 && ok) {
    ok = false;
    reason = systemReason();
  }
  if (ok && std::rename(temporary.c_str(), target.c_str()) != 0) {
    ok = false;
    reason = systemReason();
  }
  if (!ok) {
    ::unlink(temporary.c_str());
    setError(error, file, reason);
  }
  return ok;
}

}  // namespace quillo

#include "quillo/fileio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>

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

void setError(std::string* error, const std::filesystem::path& file, const std::string& reason) {
  if (error) *error = file.string() + ": " + reason;
}

}  // namespace

bool readWholeFile(const std::filesystem::path& file, std::string& out, ReadError* error) {
  auto fail = [&](const std::string& reason) {
    if (error) *error = ReadError{file.string(), 0, reason};
    return false;
  };
  int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return fail(systemReason());
  struct stat info {};
  if (::fstat(fd, &info) != 0 || S_ISDIR(info.st_mode)) {
    std::string reason = S_ISDIR(info.st_mode) ? "is a folder, not a file" : systemReason();
    ::close(fd);
    return fail(reason);
  }
  out.clear();
  if (info.st_size > 0) out.reserve(static_cast<std::size_t>(info.st_size));
  char buffer[1 << 16];
  while (true) {
    ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got < 0) {
      if (errno == EINTR) continue;
      std::string reason = systemReason();
      ::close(fd);
      return fail(reason);
    }
    if (got == 0) break;
    out.append(buffer, static_cast<std::size_t>(got));
  }
  ::close(fd);
  return true;
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

  // The temporary name carries a random suffix so two writers never collide.
  std::random_device device;
  std::filesystem::path temporary = file;
  temporary += ".tmp-" + std::to_string(device());
  int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    setError(error, file, systemReason());
    return false;
  }
  bool ok = writeAll(fd, contents) && ::fsync(fd) == 0;
  std::string reason = ok ? std::string() : systemReason();
  if (::close(fd) != 0 && ok) {
    ok = false;
    reason = systemReason();
  }
  if (ok && std::rename(temporary.c_str(), file.c_str()) != 0) {
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

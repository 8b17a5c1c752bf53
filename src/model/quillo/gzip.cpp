#include "quillo/gzip.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quillo {
namespace {

std::string sizeText(std::size_t bytes) {
  if (bytes >= (std::size_t{1} << 20) && bytes % (std::size_t{1} << 20) == 0) {
    return std::to_string(bytes >> 20) + " MiB";
  }
  return std::to_string(bytes) + " bytes";
}

// One inflate stream over the data, freed however the function is left.
class Inflater {
 public:
  Inflater() { ok_ = inflateInit2(&stream_, 16 + MAX_WBITS) == Z_OK; }  // gzip wrapper only
  ~Inflater() {
    if (ok_) inflateEnd(&stream_);
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  bool ok() const { return ok_; }
  z_stream& stream() { return stream_; }

 private:
  z_stream stream_{};
  bool ok_ = false;
};

}  // namespace

bool isGzip(std::string_view bytes) {
  return bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0x1F &&
         static_cast<unsigned char>(bytes[1]) == 0x8B;
}

bool gunzip(std::string_view data, std::size_t limit, AtLimit atLimit, std::string& out,
            std::string& why) {
  out.clear();
  Inflater inflater;
  if (!inflater.ok()) {
    why = "not enough memory to inflate the gzip data";
    return false;
  }
  z_stream& stream = inflater.stream();
  constexpr std::size_t kChunk = std::numeric_limits<uInt>::max();
  std::size_t used = 0;  // bytes of `data` handed to zlib so far
  auto feed = [&] {
    const std::size_t n = std::min(kChunk, data.size() - used);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data() + used));
    stream.avail_in = static_cast<uInt>(n);
    used += n;
  };
  feed();
  // The output grows geometrically from a guess of four times the input, and
  // never beyond the limit plus one byte (which tells an overflow).
  std::size_t filled = 0;
  while (true) {
    if (filled == out.size()) {
      if (out.size() > limit) break;
      const std::size_t wanted = std::max<std::size_t>(out.size() * 2, data.size() * 4 + 4096);
      out.resize(std::min(wanted, limit + 1));
    }
    const std::size_t room = std::min(kChunk, out.size() - filled);
    stream.next_out = reinterpret_cast<Bytef*>(out.data() + filled);
    stream.avail_out = static_cast<uInt>(room);
    const int status = inflate(&stream, Z_NO_FLUSH);
    filled += room - stream.avail_out;
    if (stream.avail_in == 0 && used < data.size()) feed();
    if (status == Z_STREAM_END) {
      // Concatenated members (as `cat a.gz b.gz` gives) form one text; bytes
      // after the last member that are not gzip are refused.
      const std::size_t rest = stream.avail_in + (data.size() - used);
      if (rest == 0) break;
      if (!isGzip(data.substr(data.size() - rest))) {
        why = "the gzip data is followed by " + std::to_string(rest) + " bytes that are not gzip";
        return false;
      }
      inflateReset(&stream);
      continue;
    }
    if (status == Z_BUF_ERROR && stream.avail_in == 0 && used == data.size() &&
        filled < out.size()) {
      why = "the gzip data ends early (the file is truncated)";
      return false;
    }
    if (status != Z_OK && status != Z_BUF_ERROR) {
      why =
          std::string("the gzip data is damaged: ") + (stream.msg ? stream.msg : "inflate failed");
      return false;
    }
  }
  if (filled > limit) {
    if (atLimit == AtLimit::Refuse) {
      why = "the gzip data inflates to more than " + sizeText(limit) +
            ", the most a compressed file may hold";
      return false;
    }
    filled = limit;
  }
  out.resize(filled);
  return true;
}

}  // namespace quillo

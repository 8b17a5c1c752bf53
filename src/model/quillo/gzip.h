#pragma once
// gzip-compressed file contents, inflated with zlib.
#include <cstddef>
#include <string>
#include <string_view>

namespace quillo {

// True when the bytes begin with the gzip magic number.
bool isGzip(std::string_view bytes);

// What to do when the inflated text reaches the limit.
enum class AtLimit { Refuse, Stop };

// Inflates every gzip member of `data` into `out`, at most `limit` bytes.
// Answers false with a reason in `why` for data that is not well-formed gzip,
// that ends early, or (with AtLimit::Refuse) that inflates past the limit.
bool gunzip(std::string_view data, std::size_t limit, AtLimit atLimit, std::string& out,
            std::string& why);

}  // namespace quillo

#pragma once
// UTF-8 checks and conversions shared by the readers, and the printable form
// of file text quoted in error messages.
#include <cstddef>
#include <string>
#include <string_view>

namespace quillo {

// Well-formed UTF-8: no stray continuation bytes, overlong forms, surrogates
// or code points beyond U+10FFFF.
bool isValidUtf8(std::string_view text);

// `text` with each byte that is not part of well-formed UTF-8 replaced by
// U+FFFD (text that is already UTF-8 comes back unchanged).
std::string validUtf8(std::string_view text);

// `text` with every byte that is not part of well-formed UTF-8, and every
// control character (below U+0020, and DEL), written as \xNN. The result is
// valid UTF-8 and shows a NUL byte instead of ending at it. When `limit` is
// given, at most that many characters of `text` are kept and "..." marks the
// cut.
std::string printable(std::string_view text, std::size_t limit = std::string_view::npos);

// How the bytes of a text file are encoded, judged by a byte-order mark.
enum class TextEncoding { Utf8, Utf16LittleEndian, Utf16BigEndian, Utf32 };
TextEncoding encodingOfText(std::string_view bytes);

// The bytes as UTF-8 text: a UTF-8 byte-order mark is dropped, UTF-16 with
// a byte-order mark is converted (an unpaired surrogate becomes U+FFFD).
// Answers false with a reason in `why` for UTF-32, which no reader takes.
// `storage` holds converted text; the answer views either it or `bytes`.
bool textAsUtf8(std::string_view bytes, std::string& storage, std::string_view& text,
                std::string& why);

}  // namespace quillo

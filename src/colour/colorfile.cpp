#include "colour/colorfile.h"

#include <QByteArray>
#include <QString>
#include <QStringConverter>
#include <QStringDecoder>
#include <memory>
#include <system_error>

#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"
#include "quillo/fileio.h"

namespace colour {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Scans a decimal number at `i` (sign, digits, point, fraction, exponent);
// moves `i` past it and answers true, or leaves `i` and answers false.
bool scanNumber(std::string_view text, std::size_t& i) {
  std::size_t at = i;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  std::size_t digits = 0;
  while (at < text.size() && isDigit(text[at])) ++at, ++digits;
  if (at < text.size() && text[at] == '.') {
    ++at;
    while (at < text.size() && isDigit(text[at])) ++at, ++digits;
  }
  if (digits == 0) return false;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t exponent = at + 1;
    if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-')) ++exponent;
    if (exponent < text.size() && isDigit(text[exponent])) {
      while (exponent < text.size() && isDigit(text[exponent])) ++exponent;
      at = exponent;
    }
  }
  i = at;
  return true;
}

// How many numbers (up to three) open the first line.
int leadingNumbers(std::string_view text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  std::size_t i = 0;
  int found = 0;
  while (found < 3) {
    while (i < line.size() && isBlank(line[i])) ++i;
    if (!scanNumber(line, i)) break;
    ++found;
  }
  return found;
}

std::string utf8(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

std::string unifiedLineBreaks(std::string text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      out.push_back(text[i]);
    } else {
      out.push_back('\n');
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    }
  }
  return out;
}

}  // namespace

ColorFileKind classifyColorFile(std::string_view text) {
  switch (leadingNumbers(text)) {
    case 3:
      return ColorFileKind::Colors;
    case 1:
      return ColorFileKind::Numbers;
    default:
      return ColorFileKind::Categories;
  }
}

TextList categoryLines(std::string_view text) {
  TextList lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) end = text.size();
    std::size_t first = start;
    while (first < end && isBlank(text[first])) ++first;
    if (first < end) lines.emplace_back(text.substr(first, end - first));
    if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n') ++end;
    start = end + 1;
  }
  return lines;
}

std::string decodeText(std::string_view bytes) {
  const QByteArrayView data(bytes.data(), static_cast<qsizetype>(bytes.size()));
  std::string text;
  if (const auto encoding = QStringConverter::encodingForData(data)) {
    QStringDecoder decoder(*encoding);  // drops the byte-order mark
    text = utf8(decoder.decode(data));
  } else {
    QStringDecoder strict(QStringConverter::Utf8);
    const QString decoded = strict.decode(data);
    text = strict.hasError() ? utf8(QString::fromLatin1(data)) : std::string(bytes);
  }
  return unifiedLineBreaks(std::move(text));
}

ColorFile colorFileFromText(std::string_view text, const std::filesystem::path& file) {
  ColorFile result;
  result.name = file.stem().string();
  const std::string where = file.string();
  switch (classifyColorFile(text)) {
    case ColorFileKind::Colors:
      if (auto colours =
              QLOVector3dArray::initWithText(text, Precision::Float, where, &result.error)) {
        result.value = std::move(colours);
      }
      break;
    case ColorFileKind::Numbers:
      if (auto numbers =
              QLONumberArray::initWithText(text, NumberType::Float, where, &result.error)) {
        result.value = std::move(numbers);
      }
      break;
    case ColorFileKind::Categories:
      result.value = std::make_shared<TextList>(categoryLines(text));
      break;
  }
  if (std::holds_alternative<std::monostate>(result.value)) {
    result.status = ColorFile::Status::Unreadable;
  }
  return result;
}

ColorFile readColorFile(const std::filesystem::path& file) {
  std::error_code failed;
  std::filesystem::path standard = std::filesystem::weakly_canonical(file, failed);
  if (failed) standard = file.lexically_normal();
  std::string bytes;
  ReadError error;
  if (!quillo::readWholeFile(standard, bytes, &error)) {
    ColorFile result;
    result.status = ColorFile::Status::Unreachable;
    result.name = standard.stem().string();
    result.error = std::move(error);
    return result;
  }
  return colorFileFromText(decodeText(bytes), standard);
}

}  // namespace colour

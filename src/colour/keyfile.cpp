#include "colour/keyfile.h"

#include <QByteArray>
#include <QXmlStreamReader>
#include <system_error>

#include "quillo/ReadError.h"
#include "quillo/fileio.h"
#include "quillo/log.h"

namespace colour {
namespace {

std::string text(QStringView view) {
  return view.toString().toStdString();
}

// Reads the <dict> the reader stands on, up to its end tag.
void readDictionary(QXmlStreamReader& xml, CategoryKeys& keys) {
  while (xml.readNextStartElement()) {
    if (xml.name() != QLatin1String("key")) {
      xml.raiseError(QStringLiteral("expected <key>, found <%1>").arg(xml.name()));
      return;
    }
    const std::string key = xml.readElementText().toStdString();
    if (!xml.readNextStartElement()) {
      if (!xml.hasError()) xml.raiseError(QStringLiteral("<key> without a value"));
      return;
    }
    if (xml.name() == QLatin1String("string")) {
      keys[key] = xml.readElementText().toStdString();
    } else {
      xml.skipCurrentElement();  // numbers, dates, nested containers: not colour keys
    }
  }
}

CategoryKeys parse(const std::string& content, const std::filesystem::path& file) {
  CategoryKeys keys;
  QXmlStreamReader xml(
      QByteArray::fromRawData(content.data(), static_cast<qsizetype>(content.size())));
  if (xml.readNextStartElement()) {
    if (xml.name() == QLatin1String("plist")) xml.readNextStartElement();
    if (!xml.hasError() && xml.isStartElement() && xml.name() == QLatin1String("dict")) {
      readDictionary(xml, keys);
    } else if (!xml.hasError()) {
      xml.raiseError(QStringLiteral("expected a <dict>, found <%1>").arg(xml.name()));
    }
  } else if (!xml.hasError()) {
    xml.raiseError(QStringLiteral("no property list"));
  }
  if (xml.hasError()) {
    quillo::logLine(ReadError{file.string(), static_cast<std::uint64_t>(xml.lineNumber()),
                              text(xml.errorString()) + "; the key file is ignored"}
                        .describe());
    return {};
  }
  return keys;
}

}  // namespace

std::filesystem::path keyFileForNetworkFile(const std::filesystem::path& networkFile) {
  return std::filesystem::path(networkFile).replace_extension("keys");
}

CategoryKeys readKeyFile(const std::filesystem::path& file) {
  std::error_code failed;
  if (!std::filesystem::exists(file, failed)) return {};
  std::string content;
  ReadError error;
  if (!quillo::readWholeFile(file, content, &error)) {
    quillo::logLine(error.describe());
    return {};
  }
  return parse(content, file);
}

CategoryKeys categoryKeysForNetworkFile(const std::filesystem::path& networkFile) {
  if (networkFile.empty()) return {};
  const std::filesystem::path keyFile = keyFileForNetworkFile(networkFile);
  quillo::logLine("FILE::" + keyFile.string());
  return readKeyFile(keyFile);
}

}  // namespace colour

#include "io/webbundle.h"

#include <system_error>

#include "io/webtexts.h"
#include "quillo/fileio.h"

namespace io {
namespace {

namespace fs = std::filesystem;

// Writes the files of one bundle, collecting the failures.
class BundleWriter {
 public:
  explicit BundleWriter(fs::path folder) : folder_(std::move(folder)) {}

  void text(const std::string& name, const std::string& contents) {
    record(quillo::writeWholeFile(folder_ / name, contents, WriteMode::Atomic, &reason_));
  }
  template <class Array>
  void array(const std::string& name, const Array* values) {
    if (values) record(values->writeToFile(folder_ / name, WriteMode::Atomic, &reason_));
  }
  std::vector<std::string> failures() && { return std::move(failures_); }

 private:
  void record(bool written) {
    if (!written) failures_.push_back(reason_);
  }

  fs::path folder_;
  std::string reason_;
  std::vector<std::string> failures_;
};

}  // namespace

std::vector<std::string> writeWebBundle(const fs::path& folder, const WebBundleSource& source) {
  if (!source.network) return {folder.string() + ": there is no network to export"};
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) return {folder.string() + ": " + error.message()};

  const QLONetwork& network = *source.network;
  const std::string degree(kDegreeStem);
  BundleWriter out(folder);
  out.text("edges.dat", edgesText(network));
  out.array("positions.dat", source.positions.get());
  out.array(degree + ".property", network.calcDegrees().get());
  if (network.isEdgeWeighted()) {
    out.array("Node_Strength.property", network.calcStrengths().get());
  }
  // The degree's colours under function 1, unless a choice of the degree
  // replaces them below.
  bool degreeChosen = false;
  for (const WebColourChoice& choice : source.choices) degreeChosen |= isDegreeName(choice.name);
  if (!degreeChosen) {
    out.array(degree + ".colors", source.colours(std::string(kDegreeName), 1).get());
  }
  out.text("names.dat", namesText(network));

  std::vector<WebIndexEntry> index{{degree, std::string(kDegreeName)}};
  for (const WebColourChoice& choice : source.choices) {
    const auto colours = source.colours(choice.name, choice.function);
    if (isDegreeName(choice.name)) {
      if (colours) out.array(degree + ".colors", colours.get());
      continue;
    }
    const std::string stem = webStem(choice.name);
    const std::string values =
        propertyText(network.propertyForKey(choice.name), network.countVertices());
    if (!values.empty()) out.text(stem + ".property", values);
    // A name without colours ("None") writes no file but keeps its entry in
    // the index, so the viewer offers it as the choice of no colouring.
    if (colours) out.array(stem + ".colors", colours.get());
    index.push_back({stem, choice.name});
  }
  out.text("properties.json", propertiesJsonText(index));
  return std::move(out).failures();
}

}  // namespace io

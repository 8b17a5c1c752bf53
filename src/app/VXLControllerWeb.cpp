// The web bundle export and the 3D export sheet's entry point.
#include "app/VXLController.h"
#include "io/webbundle.h"

bool VXLController::exportWebToFile(const std::filesystem::path& folder, std::string* error) const {
  io::WebBundleSource source;
  source.network = view_->network();
  source.positions = view_->positions();
  const auto& functions = export3D_.colorsFunctionsDictionary();
  for (const std::string& name : export3D_.selectedKeysForColors()) {
    // A name without a code (or before the table's first reload) is linear.
    std::int64_t code = 0;
    if (functions) {
      const auto found = functions->find(name);
      if (found != functions->end()) code = found->second;
    }
    source.choices.push_back({name, code});
  }
  source.colours = [this](const std::string& name, std::int64_t code) {
    return colorsForProperty(name, VXLExport3DTableController::colorFunctionForCode(code));
  };

  const std::vector<std::string> failures = io::writeWebBundle(folder, source);
  if (failures.empty()) return true;
  if (error) {
    error->clear();
    for (const std::string& failure : failures) *error += (error->empty() ? "" : "\n") + failure;
  }
  return false;
}

bool VXLController::exportTo3D() {
  export3D_.reloadTable();
  if (!export3DSheet_) return false;
  export3DSheet_();
  return true;
}

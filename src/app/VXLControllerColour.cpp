// The controller's colouring: the transform and map settings, the colour
// properties it offers, and the pipeline that turns the selected property
// into the view's colours, the legend and the network's "Color".
#include <cstdio>
#include <type_traits>
#include <variant>

#include "app/QLOComplexNetwork.h"
#include "app/VXLController.h"
#include "colour/legendscale.h"
#include "colour/legendticks.h"
#include "colour/scalarcolours.h"
#include "quillo/log.h"
#include "render/VXLLegends.h"

namespace {

template <class... F>
struct Overloaded : F... {
  using F::operator()...;
};

// colorCustom0, 1 or 2 of const or mutable settings.
template <class Maps>
auto& customField(Maps& maps, int index) {
  return index == 0 ? maps.colorCustom0 : index == 1 ? maps.colorCustom1 : maps.colorCustom2;
}

// The values of a categorical property; an absent property has none.
const TextList& categoryValues(const std::shared_ptr<TextList>& values) {
  return *values;
}
const TextList& categoryValues(std::monostate) {
  static const TextList none;
  return none;
}

// Exactly `count` single-precision colours from a colour property (which
// holds at least that many).
std::shared_ptr<QLOVector3dArray> floatColours(const QLOVector3dArray& property,
                                               std::uint64_t count) {
  auto copy = QLOVector3dArray::initWithVector3dArray(property, Precision::Float);
  if (copy->count() == count) return copy;
  auto exact = QLOVector3dArray::initWithSize(count, Precision::Float);
  exact->copyPlanesFrom(copy->pointerForX(), copy->pointerForY(), copy->pointerForZ());
  return exact;
}

std::vector<float> floatValues(const QLONumberArray& property, std::uint64_t count) {
  std::vector<float> values(count);
  property.getFloatValues(values.data(), count);
  return values;
}

}  // namespace

// --- Functions, maps and their parameters ---

void VXLController::buildColorLists() {
  setSelectedColorFunction(std::string(colour::kDefaultColorFunction));
  setSelectedColorMap(std::string(colour::kDefaultColorMap));
}

const std::vector<std::string>& VXLController::colorFunctionTitles() {
  return colour::colorFunctionNames();
}

const std::vector<std::string>& VXLController::colorMapTitles() {
  return colour::colorMapNames();
}

void VXLController::selectColorFunction(const std::string& name) {
  recordUndo(UndoKind::Colour);
  setSelectedColorFunction(name);
  updateTopColorsInterface();
}

void VXLController::selectColorMap(const std::string& name) {
  recordUndo(UndoKind::Colour);
  setSelectedColorMap(name);
  updateTopColorsInterface();
}

float VXLController::powerCoefficient() const {
  std::lock_guard lock(colourLock_);
  return colour_.transform.powerCoefficient;
}

void VXLController::setPowerCoefficient(float value) {
  std::lock_guard lock(colourLock_);
  const float held = colour_.transform.powerCoefficient;
  if (!(value < held) && !(value > held)) return;
  recordUndo(UndoKind::ColourPower);
  colour_.transform.powerCoefficient = value;
  updateTopColorsInterface();
}

bool VXLController::invertColorMap() const {
  std::lock_guard lock(colourLock_);
  return colour_.maps.invertColorMap == colour::Inversion::On;
}

void VXLController::setInvertColorMap(bool on) {
  std::lock_guard lock(colourLock_);
  const auto inversion = on ? colour::Inversion::On : colour::Inversion::Off;
  if (colour_.maps.invertColorMap == inversion) return;
  recordUndo(UndoKind::Colour);
  colour_.maps.invertColorMap = inversion;
  updateTopColorsInterface();
}

colour::Rgba VXLController::customColour(int index) const {
  std::lock_guard lock(colourLock_);
  return customField(colour_.maps, index);
}

void VXLController::setCustomColour(int index, colour::Rgba c) {
  std::lock_guard lock(colourLock_);
  colour::Rgba& field = customField(colour_.maps, index);
  if (field == c) return;
  recordUndo(UndoKind::Colour);
  field = c;
  updateTopColorsInterface();
}

void VXLController::colorGradientChanged(colour::Rgba c0, colour::Rgba c1, colour::Rgba c2) {
  std::lock_guard lock(colourLock_);
  recordUndo(UndoKind::Colour);
  colour_.maps.colorCustom0 = c0;
  colour_.maps.colorCustom1 = c1;
  colour_.maps.colorCustom2 = c2;
  updateTopColorsInterface();
}

void VXLController::updateTopColorsInterface() {
  refresh(Panel::Colour);
  updateCurrentColor();
}

// --- Colour properties ---

void VXLController::storeColorProperty(const PropertyValue& property, const std::string& name) {
  const auto network = view_->network();
  if (!network || propertyCount(property) < network->countVertices()) return;
  const std::string kept = app::colorPropertyName(name, network->keysForPropertiesOfVertices());
  for (auto& [key, value] : colours_) {
    if (key == kept) {
      value = property;
      return;
    }
  }
  colours_.emplace_back(kept, property);
}

void VXLController::addColorProperty(const PropertyValue& property, const std::string& name) {
  const auto network = view_->network();
  if (!network || propertyCount(property) < network->countVertices()) return;
  storeColorProperty(property, name);
  updateColorInterface();
}

void VXLController::removeColorPropertyWithName(const std::string& name) {
  std::erase_if(colours_, [&](const auto& entry) { return entry.first == name; });
}

PropertyValue VXLController::colorPropertyWithName(const std::string& name) const {
  if (app::isNoColourTitle(name)) return {};
  if (const auto network = view_->network()) {
    PropertyValue own = network->propertyForKey(name);
    if (!std::holds_alternative<std::monostate>(own)) return own;
  }
  for (const auto& [key, value] : colours_) {
    if (key == name) return value;
  }
  return {};
}

std::vector<std::string> VXLController::colorPropertyKeys() const {
  const auto network = view_->network();
  return app::colorPropertyKeys(
      network ? network->keysForPropertiesOfVertices() : std::vector<std::string>{},
      colorPropertyNames());
}

void VXLController::rebuildColourSelectors() {
  const auto network = view_->network();
  app::ColourState& s = colour_;
  if (network) {
    s.propertyTitles = app::colorSelectorTitles(colorPropertyKeys());
    s.propertyTitle = app::offeredTitle(s.propertyTitles, s.propertyTitle, app::kNoColourTitle);
  } else {
    s.propertyTitles = {app::kNoColourTitle};
    s.propertyTitle = app::kNoColourTitle;
  }
  s.sortTitles = app::sortPropertyTitles(network.get());
  s.sortTitle = app::offeredTitle(s.sortTitles, s.sortTitle, app::kDefaultSortTitle);
}

void VXLController::selectColorProperty(const std::string& name) {
  recordUndo(UndoKind::Colour);
  colour_.propertyTitle = app::offeredTitle(colour_.propertyTitles, name, colour_.propertyTitle);
  refresh(Panel::Colour);
  updateCurrentColor();
}

void VXLController::updateColorInterface() {
  rebuildColourSelectors();
  refresh(Panel::Nodes);  // the vertices table
  updateTopColorsInterface();
}

// --- Recolouring ---

void VXLController::showColours(std::shared_ptr<QLOVector3dArray> colours) {
  view_->setColors(std::move(colours));
  // The network's "Color" always mirrors what the view shows.
  if (const auto network = view_->network()) {
    network->setPropertiesOfVertices(view_->colors(), "Color");
  }
}

void VXLController::shareColourMap() {
  const colour::ScalarColourSettings settings = scalarColourSettings(colour_.selectedColorFunction);
  view_->setEdgeColorMap(settings.map, settings.colours);
}

void VXLController::updateCurrentColor() {
  shareColourMap();  // edges coloured by weight use the vertices' map
  const auto network = view_->network();
  if (!network || app::isNoColourTitle(colour_.propertyTitle)) {
    view_->setColors(nullptr);
    view_->setAlphaChannel(nullptr);
    view_->setLegends(nullptr);
    view_->setHideSpecialVertices(false);
    return;
  }
  const PropertyValue property = colorPropertyWithName(colour_.propertyTitle);
  std::visit(Overloaded{
                 [this](const std::shared_ptr<QLOVector3dArray>& p) { colourByColours(*p); },
                 [this](const std::shared_ptr<QLONumberArray>& p) { colourByNumbers(*p); },
                 [this](const auto& other) { colourByCategories(categoryValues(other)); },
             },
             property);
}

void VXLController::colourByColours(const QLOVector3dArray& property) {
  showColours(floatColours(property, view_->network()->countVertices()));
  view_->setLegends(nullptr);
  view_->setHideSpecialVertices(false);
}

void VXLController::colourByNumbers(const QLONumberArray& property) {
  const std::uint64_t n = view_->network()->countVertices();
  const std::vector<float> values = floatValues(property, n);
  const colour::ScalarColourSettings settings = scalarColourSettings(colour_.selectedColorFunction);
  const colour::ScalarLimits limits = colour::resolveLimits(values.data(), n, settings.transform);
  colour::LegendScale scale =
      colour::legendScale(limits, settings.function, settings.transform.powerCoefficient,
                          settings.map, settings.colours);
  auto legend = VXLLegends::initWithTitle("", std::move(scale.labels), std::move(scale.colors),
                                          LegendKind::Continuous, background());
  legend->setReadable(
      colour_.propertyTitle,
      colour::legendBarTicks(limits, settings.function, settings.transform.powerCoefficient));
  view_->setLegends(std::move(legend));
  showColours(colour::colorsForScalarValues(values.data(), n, settings));
  view_->setHideSpecialVertices(false);
}

colour::ScalarColourSettings VXLController::scalarColourSettings(
    const std::string& function) const {
  std::lock_guard lock(colourLock_);
  colour::ScalarColourSettings settings;
  settings.function = colour::colorFunctionNamed(function);
  settings.map = colour::colorMapNamed(colour_.selectedColorMap);
  settings.transform = colour_.transform;
  settings.colours = colour_.maps;
  return settings;
}

scene::Background VXLController::background() const {
  return view_->blackBackground() ? scene::Background::Black : scene::Background::White;
}

std::shared_ptr<QLOVector3dArray> VXLController::colorsForProperty(
    const std::string& name, const std::string& function) const {
  const auto network = view_->network();
  if (!network || app::isNoColourTitle(name)) return nullptr;
  const std::uint64_t n = network->countVertices();
  const PropertyValue property = colorPropertyWithName(name);
  return std::visit(
      Overloaded{
          [n](const std::shared_ptr<QLOVector3dArray>& p) { return floatColours(*p, n); },
          [&](const std::shared_ptr<QLONumberArray>& p) {
            const std::vector<float> values = floatValues(*p, n);
            return colour::colorsForScalarValues(values.data(), n, scalarColourSettings(function));
          },
          [this](const auto& other) { return categoryColours(categoryValues(other)); },
      },
      property);
}

// --- Categorical options ---

void VXLController::changeSortProperty(const std::string& title) {
  recordUndo(UndoKind::Colour);
  colour_.sortTitle = app::offeredTitle(colour_.sortTitles, title, colour_.sortTitle);
  refresh(Panel::Colour);
  updateCurrentColor();
}

void VXLController::changeSortOrder(SortOrder order) {
  recordUndo(UndoKind::Colour);
  colour_.isSortAscending = order == SortOrder::Ascending;
  refresh(Panel::Colour);
  updateCurrentColor();
}

void VXLController::changeSortModel(SortMode mode) {
  recordUndo(UndoKind::Colour);
  colour_.isSortModeAverage = mode == SortMode::Average;
  refresh(Panel::Colour);
  updateCurrentColor();
}

void VXLController::changeColorProperties(LimitSwitch limit, std::int64_t fieldValue,
                                          HideSwitch hide) {
  recordUndo(UndoKind::Colour);
  char line[96];
  std::snprintf(line, sizeof line, "SIM? %d newvalue:%lld", limit == LimitSwitch::On ? 1 : 0,
                static_cast<long long>(fieldValue));
  quillo::logLine(line);
  std::int64_t& stored = colour_.indexedColorLimit;
  if (limit == LimitSwitch::Off) {
    stored = stored < 0 ? stored : -stored;
  } else {
    stored = fieldValue < 1 ? 8 : fieldValue;
  }
  colour_.hideNonIndexItems = hide == HideSwitch::On;
  refresh(Panel::Colour);
  updateCurrentColor();
}

std::filesystem::path VXLController::currentFile() const {
  return document_ ? document_->fileURL() : std::filesystem::path();
}

std::filesystem::path VXLController::currentFolder() const {
  const std::filesystem::path file = currentFile();
  return file.empty() ? file : file.parent_path();
}

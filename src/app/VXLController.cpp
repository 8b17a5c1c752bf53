#include "app/VXLController.h"

#include <cmath>

#include <QUuid>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <variant>
#include <vector>

#include "app/controller_registry.h"
#include "app/filterselector.h"
#include "app/networkfile.h"
#include "filter/filtering.h"
#include "quillo/log.h"

namespace {

// The text of a number the way the generator's fields start out.
std::string fieldText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

}  // namespace

VXLController::VXLController(Token, std::shared_ptr<VXLNetworkView> view)
    : view_(view ? std::move(view) : std::make_shared<VXLNetworkView>()) {
  generator_.verticesText = fieldText(static_cast<double>(app::kGeneratedVertices));
  generator_.degreeText = fieldText(app::kGeneratedDegree);
}

VXLController::Ptr VXLController::init(std::shared_ptr<VXLNetworkView> view) {
  auto controller = std::make_shared<VXLController>(Token{}, std::move(view));
  controller->view_->setController(controller.get());
  controller->uuid_ = UUIDString();
  app::registerController(controller->uuid_, controller);
  return controller;
}

void VXLController::setNetworkName(const std::string& name) {
  networkName_ = name;
  view_->setNetworkName(name);
}

VXLController::Ptr VXLController::sharedController() {
  return app::lastController();
}

VXLController::Ptr VXLController::controllerWithUUID(const std::string& uuid) {
  return app::registeredController(uuid);
}

std::string VXLController::UUIDString() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
}

void VXLController::refresh(Panel panel) {
  if (panel == Panel::Properties) updateFilterSelector();
  if (listener_) listener_(panel);
}

void VXLController::refreshAfterInstall() {
  for (Panel panel :
       {Panel::NetworkInfo, Panel::Nodes, Panel::Colour, Panel::NodesSelected, Panel::Properties}) {
    if (panel == Panel::Colour) {
      updateColorInterface();
    } else {
      refresh(panel);
    }
  }
}

void VXLController::setBlackBackground(bool v) {
  view_->setBlackBackground(v);
  // The legend takes its look from the background.
  updateCurrentColor();
  refresh(Panel::Properties);
}

void VXLController::resetToDefaults() {
  buildColorLists();
  colour_.transform.powerCoefficient = 2.0f;
  resetMinColorScalarValue();
  resetMaxColorScalarValue();

  VXLNetworkView& view = *view_;
  view.setAttractionConstant(0.001f);
  view.setRepulsiveConstant(10.0f);
  view.setViscosityConstant(0.05f);
  view.setGravitationalConstant(0.001f);
  view.setPreferredDistance(0.0f);
  view.setShowNodes(true);
  view.setShowEdges(true);
  view.setBlendLines(false);
  view.setEdgesDepthTest(false);
  view.setVerticesDepthTest(true);
  view.setEdgesIntensity(0.6f);
  view.setVerticesIntensity(1.0f);
  view.setShowLegends(true);
  view.setLimitNodes(true);
  view.setLimitEdges(true);
  view.setSimpleShapes(false);
  view.setBlackBackground(false);
  view.setShader(false);
  view.setEdgeColorMode(edge_style::ColourMode::Endpoints);
  view.setEdgeColor(edge_style::ColourSettings{}.single);
  view.setEdgeWidthByWeight(false);
  view.setGeneralInfo(true);
  view.setCameraInfo(false);
  view.setWeightAsDistance(false);
  view.setVertexInfo(true);
  view.setIterations(1);
  view.setBarnesHutTheta(0.8f);  // turns the automatic choice off, so:
  view.setAutomaticRepulsion(true);

  colour_.isSortAscending = false;
  colour_.isSortModeAverage = false;

  generateNetwork();

  if (const auto network = view.network()) {
    const auto degrees = network->calcDegrees();
    std::vector<float> values(degrees->count());
    degrees->getFloatValues(values.data());
    const auto [largestDegree, smallestDegree] = filter::maxMinOfValues(values);
    const auto [largestWeight, smallestWeight] = view.maxMinWeight();
    setWeightMaxThreshold(static_cast<float>(largestWeight));
    setWeightMinThreshold(static_cast<float>(smallestWeight));
    view.setMinFilterProperty(smallestDegree);
    view.setMaxFilterProperty(largestDegree);
  }

  refreshAfterInstall();
  resetMinColorScalarValue();
  resetMaxColorScalarValue();
  clearUndoHistory();  // the defaults are where the history starts
}

void VXLController::cleanup() {
  if (isClean_) return;
  isClean_ = true;
  // The view is about to be removed: stop its batch before the window goes.
  view_->pause();
  view_->waitForBatch();
}

void VXLController::setPositions(const std::shared_ptr<QLOVector3dArray>& positions) {
  if (!positions) return;
  recordUndo(UndoKind::Positions);
  if (positions->precision() != Precision::Float) {
    view_->setPositions(QLOVector3dArray::initWithVector3dArray(*positions, Precision::Float));
  } else {
    view_->setPositions(positions);
  }
  const auto network = view_->network();
  const auto shown = view_->positions();
  if (network && shown) network->setPropertiesOfVertices(shown, "Position");
}

void VXLController::setNetwork(const std::shared_ptr<QLONetwork>& network) {
  install(network, Install::Whole);
}

void VXLController::setMajorConnectedNetwork(const std::shared_ptr<QLONetwork>& network) {
  install(network, Install::MajorComponent);
}

void VXLController::placeNonFiniteAtOrigin(QLOVector3dArray& positions) {
  // The layout never takes a coordinate that is not a finite number: each
  // such coordinate (a saved document may hold one) becomes 0, and the user
  // is told how many vertices were moved.
  std::uint64_t moved = 0;
  for (std::uint64_t v = 0; v < positions.count(); ++v) {
    auto value = positions.vectorAtIndex(v);
    if (std::isfinite(value[0]) && std::isfinite(value[1]) && std::isfinite(value[2])) continue;
    for (double& component : value) component = std::isfinite(component) ? component : 0.0;
    positions.setVector(value, v);
    ++moved;
  }
  if (moved == 0) return;
  const std::string message =
      std::to_string(moved) +
      " vertices had a \"Position\" coordinate that is not a finite number; "
      "each such coordinate was set to 0.";
  quillo::logLine(message);
  if (alert_) alert_(message);
}

void VXLController::installPositions(QLONetwork& network, Install mode) {
  const PropertyValue position = network.propertyForKey("Position");
  if (mode == Install::Whole && !std::holds_alternative<std::monostate>(position)) {
    quillo::logLine(propertyClassName(position));
  }
  if (const auto* vectors = std::get_if<std::shared_ptr<QLOVector3dArray>>(&position)) {
    const auto copy = QLOVector3dArray::initWithVector3dArray(**vectors, Precision::Float);
    placeNonFiniteAtOrigin(*copy);
    view_->setPositions(copy);
    network.setPropertiesOfVertices(copy, "Position");
  } else {
    view_->randomizePositionsWithSizeX(30, 30, 30);
  }
}

// Installing whole and as the major component differ on purpose: the
// component is what the view shows and what the measures are taken from,
// but direction and weights are asked of the network given, and the
// in-measures are offered for a component only when that network is
// directed.
void VXLController::install(const std::shared_ptr<QLONetwork>& given, Install mode) {
  if (!given) return;
  const bool whole = mode == Install::Whole;
  view_->setNetwork(whole ? given : given->largestConnectedSubNetwork());
  const auto shown = view_->network();
  if (!shown) return;
  installPositions(*shown, mode);

  // The built-in colour properties are stored directly: the colour
  // interface is refreshed once, with the panels, instead of once for each.
  colours_.clear();
  const PropertyValue colour = shown->propertyForKey("Color");
  if (!std::holds_alternative<std::monostate>(colour)) storeColorProperty(colour, "Color");
  storeColorProperty(shown->calcDegrees(), "Node Degree");
  if (whole || given->isDirected()) storeColorProperty(shown->calcInDegrees(), "Node InDegree");
  if (given->isEdgeWeighted()) {
    storeColorProperty(shown->calcStrengths(), "Node Strength");
    if (whole || given->isDirected()) {
      storeColorProperty(shown->calcInStrengths(), "Node InStrength");
    }
  }

  refreshAfterInstall();
  selectColorProperty("Node Degree");
  view_->updateInfoString();
  // The history's states belong to the network replaced; the new one's
  // installation is where its history starts.
  clearUndoHistory();
}

std::vector<std::string> VXLController::colorPropertyNames() const {
  std::vector<std::string> names;
  names.reserve(colours_.size());
  for (const auto& [name, value] : colours_) names.push_back(name);
  return names;
}

void VXLController::generateNetworkChangeType(int tag) {
  if (tag != 0 && tag != 1) return;
  generator_.typeTag = tag;
  generator_.verticesLabel = "Vertices:";
  generator_.degreeLabel = tag == 0 ? "Degree:" : "A.Degree:";
  generator_.parameterLabelsVisible = true;
  generator_.extraControlsVisible = false;
  refresh(Panel::Generator);
}

void VXLController::generateNetwork() {
  // The fields are read the way a text field answers a number: the leading
  // number, 0 when there is none. A negative count makes no vertices.
  const long n = std::max(0L, std::strtol(generator_.verticesText.c_str(), nullptr, 10));
  const double k = std::strtod(generator_.degreeText.c_str(), nullptr);
  const auto vertices = static_cast<std::uint64_t>(n);
  std::shared_ptr<QLONetwork> made;
  const char* format = nullptr;
  if (generator_.typeTag == 0) {
    made = QLONetwork::initRandomNetworkWithNumberOfVertices(vertices, k);
    format = "Random(%ld,%0.3g)";
  } else if (generator_.typeTag == 1) {
    const auto degree = k > 0 ? static_cast<std::uint64_t>(k) : std::uint64_t{0};
    made = QLONetwork::initBarabasiNetworkWitNumberOfVertices(vertices, degree);
    format = "Barabasi(%ld,%0.3g)";
  }
  if (!made) return;

  // The average degree is that of the network shown until now: the new one is
  // not installed yet, so a window's first network is named with degree 0.
  const auto previous = view_->network();
  const float edges = previous ? static_cast<float>(previous->countEdges()) : 0.0f;
  const float averageDegree = 2.0f * edges / static_cast<float>(n);
  char name[96];
  std::snprintf(name, sizeof name, format, n, static_cast<double>(averageDegree));
  setNetworkName(name);
  setNetwork(made);
}

void VXLController::selectFilterProperty(const std::string& name) {
  recordUndo(UndoKind::FilterProperty);
  const auto network = view_->network();
  filter_.titles = app::filterPropertyTitles(network.get());
  filter_.selected = app::selectedFilterTitle(filter_.titles, name, filter_.selected);
  view_->setShouldUpdateFilterProperty(true);
  // The view takes the values and resets its range to them now, not at the
  // next frame, which would undo a range set before it is drawn.
  updateFilterSelector();
  view_->prepareFrame();
  refresh(Panel::Properties);
}

void VXLController::updateFilterSelector() {
  const auto network = view_->network();
  filter_.titles = app::filterPropertyTitles(network.get());
  filter_.selected = app::selectedFilterTitle(filter_.titles, filter_.selected, "");
  const std::string& title = filter_.selected;

  const bool builtIn = title == "Node Degree" || title == "Node InDegree" ||
                       title == "Node Strength" || title == "Node InStrength";
  const bool kept =
      builtIn && network && filter_.rangeTitle == title && filter_.rangeNetwork.lock() == network;
  if (!network) {
    filter_.range = {};
  } else if (!kept) {
    const auto [largest, smallest] = filter::getMaxMinValuesForPropertyOfNetwork(*network, title);
    filter_.range = {smallest, largest};
  }
  filter_.rangeNetwork = network;
  filter_.rangeTitle = builtIn ? title : std::string();
  view_->setFilterPropertyName(title);

  const auto [largestWeight, smallestWeight] = view_->maxMinWeight();
  filter_.weights = {smallestWeight, largestWeight};
}

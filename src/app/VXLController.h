#pragma once
// The controller of one window: it holds the window's network view, forwards
// every setting to it, applies the defaults a new window starts with,
// installs networks (read, generated or scripted) and keeps the colour
// properties offered for colouring. Every controller is entered in the
// process-wide registry (controller_registry.h) when it is made.
//
// The controller knows no widgets: where a panel is to be refreshed it tells
// its refresh listener which one, so the window's side panel (or a test) can
// follow. The filter selector's state is kept here as plain values.
#include <cfloat>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/VXLExport3DTableController.h"
#include "app/colourstate.h"
#include "colour/categorycolours.h"
#include "colour/scalarcolours.h"
#include "plexora/PropertyValue.h"
#include "plexora/QLONetwork.h"
#include "render/VXLNetworkView.h"
#include "render/scenecolours.h"

class QLOComplexNetwork;

class VXLController {
 public:
  using Ptr = std::shared_ptr<VXLController>;

  // The panels a change refreshes.
  enum class Panel { NetworkInfo, Nodes, Colour, NodesSelected, Properties, Generator };
  using RefreshListener = std::function<void(Panel)>;

  // The network generator's controls as plain values: the selected type
  // (tag 0 random, 1 Barabasi), the two parameter fields as typed, and the
  // labels and visibility the panel shows.
  struct Generator {
    int typeTag = 0;
    std::string verticesText;
    std::string degreeText;
    std::string verticesLabel = "Vertices:";
    std::string degreeLabel = "Degree:";
    bool parameterLabelsVisible = true;
    bool extraControlsVisible = false;  // the third and fourth labels, both checkboxes
  };

  // Colour properties by name, in the order they were added.
  using ColourProperties = std::vector<std::pair<std::string, PropertyValue>>;

  static constexpr float kUnsetBound = FLT_MAX;

  // Makes a controller for `view` (a new view when null), records it as the
  // last controller and registers it under a fresh UUID.
  static Ptr init(std::shared_ptr<VXLNetworkView> view = nullptr);
  static Ptr sharedController();  // the last controller made; null before the first
  static Ptr controllerWithUUID(const std::string& uuid);  // null when unknown
  static std::string UUIDString();  // a fresh UUID, 36 characters (8-4-4-4-12 hex)

  VXLController(const VXLController&) = delete;
  VXLController& operator=(const VXLController&) = delete;

  // The window's interface has loaded: apply the defaults.
  void awakeFromNib() { resetToDefaults(); }
  void resetToDefaults();
  // The first call marks the controller clean and stops the view's batch.
  void cleanup();
  bool isClean() const { return isClean_; }

  const std::shared_ptr<VXLNetworkView>& networkView() const { return view_; }
  // The window's document (not owned); null for a controller without a window.
  QLOComplexNetwork* currentDocument() const { return document_; }
  void setDocument(QLOComplexNetwork* document) { document_ = document; }
  void setRefreshListener(RefreshListener listener) { listener_ = std::move(listener); }

  const std::string& uuid() const { return uuid_; }
  void setUuid(const std::string& uuid) { uuid_ = uuid; }
  // The network's name, shown in the network info panel and (through the
  // view) in the general information overlay.
  const std::string& networkName() const { return networkName_; }
  void setNetworkName(const std::string& name);

  // --- Networks and positions ---
  std::shared_ptr<QLONetwork> network() const { return view_->network(); }
  std::shared_ptr<QLOVector3dArray> positions() const { return view_->positions(); }
  // Gives the view the positions (a float copy when needed) and stores what
  // the view holds as the network's "Position".
  void setPositions(const std::shared_ptr<QLOVector3dArray>& positions);
  void setNetwork(const std::shared_ptr<QLONetwork>& network);
  // Installs the network's largest connected component.
  void setMajorConnectedNetwork(const std::shared_ptr<QLONetwork>& network);
  void replaceNetworkWith(const std::shared_ptr<QLONetwork>& network) { setNetwork(network); }
  const ColourProperties& colorsDictionary() const { return colours_; }
  std::vector<std::string> colorPropertyNames() const;

  // --- Network generator ---
  const Generator& generator() const { return generator_; }
  Generator& generator() { return generator_; }
  // The type selector changed: relabels the parameters (tags 0 and 1 only).
  void generateNetworkChangeType(int tag);
  // Makes a network of the selected type from the parameter fields, names it
  // and installs it.
  void generateNetwork();

  // --- Settings: each getter reads the view; each setter writes the view
  // and refreshes the properties panel ---
  float attractionConstant() const { return view_->attractionConstant(); }
  void setAttractionConstant(float v) { forward(&VXLNetworkView::setAttractionConstant, v); }
  float repulsiveConstant() const { return view_->repulsiveConstant(); }
  void setRepulsiveConstant(float v) { forward(&VXLNetworkView::setRepulsiveConstant, v); }
  float viscosityConstant() const { return view_->viscosityConstant(); }
  void setViscosityConstant(float v) { forward(&VXLNetworkView::setViscosityConstant, v); }
  float gravitationalConstant() const { return view_->gravitationalConstant(); }
  void setGravitationalConstant(float v) { forward(&VXLNetworkView::setGravitationalConstant, v); }
  float preferredDistance() const { return view_->preferredDistance(); }
  void setPreferredDistance(float v) { forward(&VXLNetworkView::setPreferredDistance, v); }
  bool showNodes() const { return view_->showNodes(); }
  void setShowNodes(bool v) { forward(&VXLNetworkView::setShowNodes, v); }
  bool showEdges() const { return view_->showEdges(); }
  void setShowEdges(bool v) { forward(&VXLNetworkView::setShowEdges, v); }
  bool blendLines() const { return view_->blendLines(); }
  void setBlendLines(bool v) { forward(&VXLNetworkView::setBlendLines, v); }
  bool edgesDepthTest() const { return view_->edgesDepthTest(); }
  void setEdgesDepthTest(bool v) { forward(&VXLNetworkView::setEdgesDepthTest, v); }
  bool verticesDepthTest() const { return view_->verticesDepthTest(); }
  void setVerticesDepthTest(bool v) { forward(&VXLNetworkView::setVerticesDepthTest, v); }
  float edgesIntensity() const { return view_->edgesIntensity(); }
  void setEdgesIntensity(float v) { forward(&VXLNetworkView::setEdgesIntensity, v); }
  float verticesIntensity() const { return view_->verticesIntensity(); }
  void setVerticesIntensity(float v) { forward(&VXLNetworkView::setVerticesIntensity, v); }
  LabelMode showLabels() const { return view_->showLabels(); }
  void setShowLabels(LabelMode v) { forward(&VXLNetworkView::setShowLabels, v); }
  bool showLegends() const { return view_->showLegends(); }
  void setShowLegends(bool v) { forward(&VXLNetworkView::setShowLegends, v); }
  bool limitNodes() const { return view_->limitNodes(); }
  void setLimitNodes(bool v) { forward(&VXLNetworkView::setLimitNodes, v); }
  bool limitEdges() const { return view_->limitEdges(); }
  void setLimitEdges(bool v) { forward(&VXLNetworkView::setLimitEdges, v); }
  bool simpleShapes() const { return view_->simpleShapes(); }
  void setSimpleShapes(bool v) { forward(&VXLNetworkView::setSimpleShapes, v); }
  bool blackBackground() const { return view_->blackBackground(); }
  void setBlackBackground(bool v);
  bool shader() const { return view_->shader(); }
  void setShader(bool v) { forward(&VXLNetworkView::setShader, v); }
  bool generalInfo() const { return view_->generalInfo(); }
  void setGeneralInfo(bool v) { forward(&VXLNetworkView::setGeneralInfo, v); }
  // The getter reads the view, but the setter only keeps the controller's
  // own copy: the view's camera overlay is left as it is.
  bool cameraInfo() const { return view_->cameraInfo(); }
  void setCameraInfo(bool v) { cameraInfo_ = v; }
  bool weightAsDistance() const { return view_->weightAsDistance(); }
  void setWeightAsDistance(bool v) { forward(&VXLNetworkView::setWeightAsDistance, v); }
  bool vertexInfo() const { return view_->vertexInfo(); }
  void setVertexInfo(bool v) { forward(&VXLNetworkView::setVertexInfo, v); }
  std::uint64_t iterations() const { return view_->iterations(); }
  void setIterations(std::uint64_t v) { forward(&VXLNetworkView::setIterations, v); }
  float weightMaxThreshold() const { return view_->weightMaxThreshold(); }
  void setWeightMaxThreshold(float v) {
    recordUndo(UndoKind::Thresholds);
    forward(&VXLNetworkView::setWeightMaxThreshold, v);
  }
  float weightMinThreshold() const { return view_->weightMinThreshold(); }
  void setWeightMinThreshold(float v) {
    recordUndo(UndoKind::Thresholds);
    forward(&VXLNetworkView::setWeightMinThreshold, v);
  }
  float minFilterProperty() const { return view_->minFilterProperty(); }
  void setMinFilterProperty(float v) {
    recordUndo(UndoKind::FilterRange);
    forward(&VXLNetworkView::setMinFilterProperty, v);
  }
  float maxFilterProperty() const { return view_->maxFilterProperty(); }
  void setMaxFilterProperty(float v) {
    recordUndo(UndoKind::FilterRange);
    forward(&VXLNetworkView::setMaxFilterProperty, v);
  }
  float nearClipDistance() const { return view_->nearClipDistance(); }
  void setNearClipDistance(float v) { forward(&VXLNetworkView::setNearClipDistance, v); }
  float farClipDistance() const { return view_->farClipDistance(); }
  void setFarClipDistance(float v) { forward(&VXLNetworkView::setFarClipDistance, v); }
  float viewLineWidth() const { return view_->lineWidth(); }
  void setViewLineWidth(float v) { forward(&VXLNetworkView::setLineWidth, v); }
  // Edge style: colour mode, the single colour, widths by weight, arrows.
  edge_style::ColourMode edgeColorMode() const { return view_->edgeColorMode(); }
  void setEdgeColorMode(edge_style::ColourMode v) { forward(&VXLNetworkView::setEdgeColorMode, v); }
  scene::Rgb edgeColor() const { return view_->edgeColor(); }
  void setEdgeColor(scene::Rgb v) { forward(&VXLNetworkView::setEdgeColor, v); }
  bool edgeWidthByWeight() const { return view_->edgeWidthByWeight(); }
  void setEdgeWidthByWeight(bool v) { forward(&VXLNetworkView::setEdgeWidthByWeight, v); }
  bool showArrows() const { return view_->showArrows(); }
  void setShowArrows(bool v) { forward(&VXLNetworkView::setShowArrows, v); }
  float viewLegendSize() const { return view_->legendsHeight(); }
  void setViewLegendSize(float v) { forward(&VXLNetworkView::setLegendsHeight, v); }

  // --- Vertex sizes by property: forwarded to the view ---
  std::string sizeProperty() const { return view_->sizeProperty(); }
  void setSizeProperty(const std::string& name) {
    view_->setSizeProperty(name);
    refresh(Panel::Properties);
  }
  vertex_sizes::Transform sizeTransform() const { return view_->sizeTransform(); }
  void setSizeTransform(vertex_sizes::Transform v) {
    forward(&VXLNetworkView::setSizeTransform, v);
  }
  vertex_sizes::Range sizeRange() const { return view_->sizeRange(); }
  // Throws std::invalid_argument for a range the view refuses.
  void setSizeRange(const vertex_sizes::Range& range) {
    view_->setSizeRange(range);
    refresh(Panel::Properties);
  }

  // --- Repulsion and the multilevel start: forwarded to the view ---
  float barnesHutTheta() const { return view_->barnesHutTheta(); }
  void setBarnesHutTheta(float v) { forward(&VXLNetworkView::setBarnesHutTheta, v); }
  bool automaticRepulsion() const { return view_->automaticRepulsion(); }
  void setAutomaticRepulsion(bool v) { forward(&VXLNetworkView::setAutomaticRepulsion, v); }
  std::string repulsionStatus() const { return view_->repulsionStatus(); }
  // On the calling thread; see VXLNetworkView::multilevelStart.
  bool multilevelStart(const std::function<bool(double)>& progress = {}) {
    return view_->multilevelStart(progress);
  }

  // --- Selection: forwarded to the view ---
  std::shared_ptr<VXLSelectionHandler> selectionHandler() const {
    return view_->selectionhandler();
  }
  void setSelectionHandler(std::shared_ptr<VXLSelectionHandler> handler) {
    view_->setSelectionhandler(std::move(handler));
  }
  void resetSelection() {
    recordUndo(UndoKind::Selection);
    view_->resetSelection();
  }
  void selectVertexWithIndex(std::uint64_t i) {
    recordUndo(UndoKind::Selection);
    view_->selectVertexWithIndex(i);
  }
  void addToSelectionVertexWithIndex(std::uint64_t i) {
    recordUndo(UndoKind::Selection);
    view_->addToSelectionVertexWithIndex(i);
  }
  void removeFromSelectionVertexWithIndex(std::uint64_t i) {
    recordUndo(UndoKind::Selection);
    view_->removeFromSelectionVertexWithIndex(i);
  }
  void toggleSelectionOfVertexWithIndex(std::uint64_t i) {
    recordUndo(UndoKind::Selection);
    view_->toggleSelectionOfVertexWithIndex(i);
  }
  std::vector<QLOVertex> selectedVertices() const { return view_->selectedVertices(); }
  void setSelectedVertices(const std::vector<std::uint64_t>& indices) {
    recordUndo(UndoKind::Selection);
    view_->setSelectedVertices(indices);
  }
  std::shared_ptr<QLONumberArray> hiddenVertices() const { return view_->hiddenVertices(); }
  void setHiddenVertices(std::shared_ptr<QLONumberArray> mask) {
    view_->setHiddenVertices(std::move(mask));
  }

  // --- Vertex-object selection and placement: forwarded to the view ---
  void selectVertex(const QLOVertex& v) { view_->selectVertex(v); }
  void addToSelectionVertex(const QLOVertex& v) { view_->addToSelectionVertex(v); }
  void removeFromSelectionVertex(const QLOVertex& v) { view_->removeFromSelectionVertex(v); }
  void toggleSelectionOfVertex(const QLOVertex& v) { view_->toggleSelectionOfVertex(v); }
  // A random layout in the box -X..X, -Y..Y, -Z..Z, and the current layout
  // recentred and rescaled into the box; both are stored as the network's
  // "Position". Nothing without a network.
  void randomizePositionsWithSizeX(float sizeX, float sizeY, float sizeZ) {
    recordUndo(UndoKind::Positions);
    view_->randomizePositionsWithSizeX(sizeX, sizeY, sizeZ);
  }
  void resetCenter(float sizeX, float sizeY, float sizeZ) {
    recordUndo(UndoKind::Positions);
    view_->resetCenter(sizeX, sizeY, sizeZ);
  }

  // --- Undo and redo (VXLControllerUndo.cpp) ---
  // Colouring (property, function, map, power, inversion, custom colours),
  // the filter property and range, the weight thresholds, the selection made
  // through the controller, and positions replaced by randomize, recentre or
  // import can be undone; each step restores exactly the state before it.
  // Quick changes of one slider make one step. Installing a network clears
  // the history.
  enum class UndoKind {
    Colour,
    ColourPower,
    FilterProperty,
    FilterRange,
    Thresholds,
    Selection,
    Positions
  };
  bool canUndo() const;
  bool canRedo() const;
  void undo();
  void redo();
  // Records the state before a change of `kind`; the window's selection
  // tools, which change the view directly, call it first.
  void recordUndo(UndoKind kind);

  // --- Filter property selector and the bounds of the filter sliders ---
  // Every properties refresh rebuilds the titles offered for the network,
  // keeps the selected title when still offered ("Node Degree" otherwise),
  // takes the bounds of its values and sends its name to the view.
  struct Bounds {
    double lower = 0, upper = 0;
  };
  const std::vector<std::string>& filterPropertyTitles() const { return filter_.titles; }
  // The selected title.
  const std::string& filterPropertyName() const { return filter_.selected; }
  // Selects the title when the network offers it (else the selection stays),
  // makes the view take the name even when unchanged (so its range resets to
  // the values at the next frame) and refreshes the panel.
  void selectFilterProperty(const std::string& name);
  void changeFilterProperty() { refresh(Panel::Properties); }
  // (smallest, largest) value of the selected property: the range sliders'
  // bounds. The largest starts at 0, so it is never negative.
  Bounds filterRangeBounds() const { return filter_.range; }
  // (smallest, largest) edge weight: the threshold sliders' bounds.
  Bounds weightThresholdBounds() const { return filter_.weights; }

  // ============ Colouring (VXLControllerColour.cpp, VXLControllerCategories.cpp) =====  // The
  // vertices are coloured by one property: a colour array as it stands, a number array through a
  // transform and a colour map (with a continuous legend), anything else by category. Every change
  // of a colour setting recolours at once; the colours shown are stored in the network as "Color".
  // Main thread only; the power coefficient, custom colours and inversion are read and written
  // under the controller's own lock.
  enum class LimitSwitch { Off, On };
  using HideSwitch = colour::HideOthers;
  using SortOrder = colour::SortOrder;
  using SortMode = colour::SortMode;
  // Shows an alert's text to the user (the window uses a message box).
  using AlertHandler = std::function<void(const std::string& message)>;

  // Selects "Exponential" and "Jet" without recolouring.
  void buildColorLists();
  static const std::vector<std::string>& colorFunctionTitles();
  static const std::vector<std::string>& colorMapTitles();
  // Names are kept as given; one that names no function colours linearly,
  // one that names no map colours black.
  const std::string& selectedColorFunction() const { return colour_.selectedColorFunction; }
  void setSelectedColorFunction(const std::string& name) { colour_.selectedColorFunction = name; }
  void selectColorFunction(const std::string& name);  // then updateTopColorsInterface
  const std::string& selectedColorMap() const { return colour_.selectedColorMap; }
  void setSelectedColorMap(const std::string& name) { colour_.selectedColorMap = name; }
  void selectColorMap(const std::string& name);  // then updateTopColorsInterface
  // These setters do nothing when given the value held; otherwise they store
  // it and call updateTopColorsInterface.
  float powerCoefficient() const;
  void setPowerCoefficient(float value);
  bool invertColorMap() const;
  void setInvertColorMap(bool on);
  colour::Rgba colorCustom0() const { return customColour(0); }
  void setColorCustom0(colour::Rgba c) { setCustomColour(0, c); }
  colour::Rgba colorCustom1() const { return customColour(1); }
  void setColorCustom1(colour::Rgba c) { setCustomColour(1, c); }
  colour::Rgba colorCustom2() const { return customColour(2); }
  void setColorCustom2(colour::Rgba c) { setCustomColour(2, c); }
  // The three wells' colours at once, with one recolouring.
  void colorGradientChanged(colour::Rgba c0, colour::Rgba c1, colour::Rgba c2);
  // Limits of the scalar range (kUnsetBound: from the data); they take effect
  // at the next recolouring.
  float minColorScalarValue() const { return colour_.transform.minColorScalarValue; }
  void setMinColorScalarValue(float v) { colour_.transform.minColorScalarValue = v; }
  float maxColorScalarValue() const { return colour_.transform.maxColorScalarValue; }
  void setMaxColorScalarValue(float v) { colour_.transform.maxColorScalarValue = v; }
  void resetMinColorScalarValue() { setMinColorScalarValue(kUnsetBound); }
  void resetMaxColorScalarValue() { setMaxColorScalarValue(kUnsetBound); }
  // Refreshes the colour panel, then recolours.
  void updateTopColorsInterface();

  // Colour properties kept by the controller. Nothing without a network or
  // for a property with fewer entries than vertices; a name the network
  // already uses (but "Color") gets "-2" appended. Refreshes the colour
  // interface.
  void addColorProperty(const PropertyValue& property, const std::string& name);
  void removeColorPropertyWithName(const std::string& name);  // no refresh
  // None for "None" (any case); the network's own property wins.
  PropertyValue colorPropertyWithName(const std::string& name) const;
  // Sorted; never "Position", "Name" or "Color"; "None" included.
  std::vector<std::string> colorPropertyKeys() const;
  // The property pop-up: "None", then the keys; and its selected title.
  const std::vector<std::string>& colorPropertyTitles() const { return colour_.propertyTitles; }
  const std::string& selectedColorProperty() const { return colour_.propertyTitle; }
  // Selects the title when offered (else the selection stays), then recolours.
  void selectColorProperty(const std::string& name);
  // Refills the property and sort pop-ups (keeping their selections when
  // still offered), reloads the vertices table, refreshes and recolours.
  void updateColorInterface();
  // Colours the vertices by the selected property and installs the legend.
  void updateCurrentColor();
  // The colours a property would give, using `function` instead of the
  // selected one, without touching the view, legend or network. Null for
  // "None" and without a network.
  std::shared_ptr<QLOVector3dArray> colorsForProperty(const std::string& name,
                                                      const std::string& function) const;

  // Categorical colouring: the limit, hiding and order (plain accessors).
  std::int64_t indexedColorLimit() const { return colour_.indexedColorLimit; }
  void setIndexedColorLimit(std::int64_t limit) { colour_.indexedColorLimit = limit; }
  bool hideNonIndexItems() const { return colour_.hideNonIndexItems; }
  void setHideNonIndexItems(bool hide) { colour_.hideNonIndexItems = hide; }
  bool isSortAscending() const { return colour_.isSortAscending; }
  bool isSortModeAverage() const { return colour_.isSortModeAverage; }
  const std::vector<std::string>& sortPropertyTitles() const { return colour_.sortTitles; }
  const std::string& sortPropertyTitle() const { return colour_.sortTitle; }
  // The sort pop-up and radio groups: each stores its choice and recolours.
  void changeSortProperty(const std::string& title);
  void changeSortOrder(SortOrder order);
  void changeSortModel(SortMode mode);
  // Kept for scripts; they do nothing.
  void selectSortProperty(const std::string& /*title*/) {}
  void setSortOrderAscending(SortOrder /*order*/) {}
  // The limit check box, its field's value and the hide check box: on, the
  // limit becomes the field's value (8 below 1); off, the limit is kept
  // negated. Then recolours.
  void changeColorProperties(LimitSwitch limit, std::int64_t fieldValue, HideSwitch hide);

  // Reads a colour file (colours, numbers or categories, by its first line),
  // adds it as a colour property named after the file and selects it. False
  // when the file cannot be read; an unreachable file is also reported
  // through the alert handler (or the log without one).
  bool openColorsFromURL(const std::filesystem::path& file);
  void setAlertHandler(AlertHandler handler) { alert_ = std::move(handler); }
  // The file the window's document was read from or saved to (empty while
  // untitled or without a document): the file dialogs start in its folder
  // and the category key file is looked up beside it.
  std::filesystem::path currentFile() const;
  std::filesystem::path currentFolder() const;
  // ===================== end of colouring =====================

  // ============ Web bundle and 3D export (VXLControllerWeb.cpp) ============
  // The 3D export sheet's tables: the colour properties offered for a web
  // bundle, each with a transform function code, and which were picked.
  VXLExport3DTableController& export3DTableController() { return export3D_; }
  const VXLExport3DTableController& export3DTableController() const { return export3D_; }
  // Writes the web bundle of the shown network into `folder` (made when
  // missing): edges, layout, names, degrees (and strengths), and the colour
  // properties picked in the export table, each coloured with its function.
  // Every file is replaced atomically. False when some file could not be
  // written, with one line per such file in `error` (which may be null).
  bool exportWebToFile(const std::filesystem::path& folder, std::string* error = nullptr) const;
  // Shows the 3D export sheet; the window sets it.
  using Export3DSheetHandler = std::function<void()>;
  void setExport3DSheetHandler(Export3DSheetHandler handler) {
    export3DSheet_ = std::move(handler);
  }
  // Reloads the export table (every offered property picked, all with code
  // 1) and has the sheet shown. False when no window shows it.
  bool exportTo3D();
  // Shows the image export sheet (pictures and vector documents); the
  // window sets it. exportToPDF has it shown; false when no window shows it.
  void setExportImageSheetHandler(std::function<void()> handler) {
    exportImageSheet_ = std::move(handler);
  }
  bool exportToPDF() {
    if (!exportImageSheet_) return false;
    exportImageSheet_();
    return true;
  }
  // ================= end of web bundle and 3D export =================
  // --- Files: positions files, Pajek and edge-list export
  // (VXLControllerFiles.cpp) ---
  // The window runs the panels and shows the alerts; the controller asks for
  // them through these functions and works without them (no panel: nothing
  // happens; no alert: the message is logged).
  struct FilePanelRequest {
    enum class Mode { Save, Open };
    Mode mode = Mode::Save;
    std::string title;
    std::filesystem::path folder;  // where the panel starts; empty: its own choice
    std::string proposedName;      // the name filled in (save only); empty: none
    std::string extension;         // the only type allowed (no dot); empty: any file
    std::string typeName;          // how the panel names that type
  };
  // Called with the chosen file, or with nothing when the panel was cancelled.
  using FilePanelCompletion = std::function<void(const std::optional<std::filesystem::path>&)>;
  using FilePanel = std::function<void(const FilePanelRequest&, FilePanelCompletion)>;
  using FileAlert = std::function<void(const std::string& message, const std::string& detail)>;
  void setFilePanel(FilePanel panel) { filePanel_ = std::move(panel); }
  void setFileAlert(FileAlert alert) { fileAlert_ = std::move(alert); }

  // `displayName` without its extension, a full stop and `extension`: a name
  // already ending in that extension keeps it once.
  static std::string proposedFileName(const std::string& displayName, const std::string& extension);

  // Menu commands: each runs its panel and acts when a file is chosen; a
  // failed write is shown in an alert, a cancelled panel changes nothing.
  void exportNodesPositions();
  void openPositionsFromPanel();
  void exportNetworkToPajekFormat();
  void exportNetworkToEdges();
  void exportNetworkToGexf();
  void exportNetworkToGml();

  // Writes the view's positions, one "X Y Z" line per vertex that reads back
  // to the same floats. False with the reason in `error` on failure; the file
  // is written atomically, so a failure leaves an earlier file as it was.
  bool exportNodesPositions(const std::filesystem::path& path, std::string* error = nullptr);
  // Reads a positions file into the view and the network's "Position". A
  // file that cannot be reached raises an alert; a file that cannot be read,
  // is malformed or holds another count of positions than the network has
  // vertices answers false with the reason in `error`. The layout is kept on
  // every failure.
  bool openPositionsFromURL(const std::filesystem::path& path, ReadError* error = nullptr);
  // Write the shown network (its "Position" updated from the layout first)
  // as Pajek or as an edge list, atomically; false with the reason in `error`.
  bool exportNetworkToPajekFormat(const std::filesystem::path& path, std::string* error = nullptr);
  bool exportNetworkToEdges(const std::filesystem::path& path, std::string* error = nullptr);
  // GEXF 1.3 with the layout as viz positions and the shown colours as viz
  // colours, and GML with the layout as graphics; the network is left as it is.
  bool exportNetworkToGexf(const std::filesystem::path& path, std::string* error = nullptr);
  bool exportNetworkToGml(const std::filesystem::path& path, std::string* error = nullptr);
  // --- End of files ---

 private:
  struct Token {};  // keeps construction to init()

 public:
  VXLController(Token, std::shared_ptr<VXLNetworkView> view);

 private:
  enum class Install { Whole, MajorComponent };
  void install(const std::shared_ptr<QLONetwork>& network, Install mode);
  void placeNonFiniteAtOrigin(QLOVector3dArray& positions);
  void installPositions(QLONetwork& network, Install mode);
  void refresh(Panel panel);
  void refreshAfterInstall();
  void updateFilterSelector();
  // Colouring helpers (VXLControllerColour.cpp).
  void storeColorProperty(const PropertyValue& property, const std::string& name);
  void rebuildColourSelectors();
  void showColours(std::shared_ptr<QLOVector3dArray> colours);
  void colourByColours(const QLOVector3dArray& property);
  void colourByNumbers(const QLONumberArray& property);
  // Hands the selected colour map to the view for edges coloured by weight.
  void shareColourMap();
  void colourByCategories(const TextList& values);
  std::shared_ptr<QLOVector3dArray> categoryColours(const TextList& values) const;
  colour::ScalarColourSettings scalarColourSettings(const std::string& function) const;
  colour::CategorySort categorySort() const;
  colour::CategorySources categorySources() const;
  scene::Background background() const;
  colour::Rgba customColour(int index) const;
  void setCustomColour(int index, colour::Rgba c);
  // Files: the save panel of a request, then `write` with the file chosen;
  // a failure goes to the alert.
  using FileWriter = std::function<bool(const std::filesystem::path&, std::string*)>;
  void runSavePanel(const FilePanelRequest& request, const FileWriter& write);
  void showFileAlert(const std::string& message, const std::string& detail) const;
  template <class T>
  void forward(void (VXLNetworkView::*set)(T), T value) {
    (view_.get()->*set)(value);
    refresh(Panel::Properties);
  }

  std::shared_ptr<VXLNetworkView> view_;
  QLOComplexNetwork* document_ = nullptr;
  RefreshListener listener_;
  std::string uuid_;
  std::string networkName_;
  ColourProperties colours_;
  Generator generator_;
  struct FilterSelector {
    std::vector<std::string> titles{"Node Degree"};
    std::string selected = "Node Degree";
    Bounds range, weights{0, 1};
    // The bounds of a built-in measure depend only on the network's edges,
    // which never change: they are kept until the network or title changes.
    std::weak_ptr<const QLONetwork> rangeNetwork;
    std::string rangeTitle;
  } filter_;
  bool isClean_ = false;
  bool cameraInfo_ = false;
  // Colouring state.
  app::ColourState colour_;
  mutable std::recursive_mutex colourLock_;
  AlertHandler alert_;
  // Web bundle and 3D export.
  VXLExport3DTableController export3D_{this};
  Export3DSheetHandler export3DSheet_;
  std::function<void()> exportImageSheet_;
  FilePanel filePanel_;
  FileAlert fileAlert_;
  // Undo history (VXLControllerUndo.cpp).
  struct UndoHistory;
  std::shared_ptr<UndoHistory> undo_;
  bool restoring_ = false;  // an undo or redo is putting a state back
  void clearUndoHistory();
};

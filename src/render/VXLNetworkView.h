#pragma once
// The network view: it owns the layout state (network, positions, speeds,
// forces, constants, filter state, thresholded weights), drives the
// simulation and draws the scene. Only the drawing methods (initCommands,
// resizeCommands, drawRect, drawCommands, updateProjection) touch GL, into
// whatever context the caller made current; everything else runs headless.
//
// Threads: the main thread calls every method; a batch of steps runs on a
// thread of its own (started by animationTimer while the layout runs), and
// the force passes run on oneTBB's workers. Shared objects are swapped under
// the view's recursive lock; plain settings are relaxed atomics; position and
// speed elements are written by the batch as relaxed atomics.
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "plexora/QLONetwork.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"
#include "render/VXLCamera.h"
#include "render/edgestyle.h"
#include "render/exportreport.h"
#include "render/labelplacement.h"
#include "render/legendstyle.h"
#include "render/renderer.h"
#include "render/vertexsizes.h"

class GLString;
class VXLLegends;
class Renderers;
class QImage;
namespace export_gl {
class ViewContext;
}
namespace layout {
struct StepWorkspace;
}

// Interaction types: the keyboard modifiers held at a mouse event, and the
// handler told when a vertex's details are shown.
enum class Modifier : unsigned { Shift = 1, Control = 2, Option = 4 };
struct Modifiers {
  unsigned bits = 0;
  constexpr Modifiers() = default;
  constexpr Modifiers(Modifier m) : bits(static_cast<unsigned>(m)) {}
  constexpr bool has(Modifier m) const { return (bits & static_cast<unsigned>(m)) != 0; }
};
constexpr Modifiers operator|(Modifiers a, Modifiers b) {
  Modifiers both;
  both.bits = a.bits | b.bits;
  return both;
}
constexpr Modifiers operator|(Modifier a, Modifier b) {
  return Modifiers(a) | Modifiers(b);
}

class VXLController;
// Does nothing: replace it by a subclass (from C++ or a script) to react when
// the view shows a vertex's details (a selection of one vertex or a click).
class VXLSelectionHandler {
 public:
  virtual ~VXLSelectionHandler() = default;
  virtual void handleSelectionWithController(VXLController* /*controller*/,
                                             std::uint64_t /*vertexIndex*/) {}
};

class VXLNetworkView {
 public:
  using FloatsPtr = std::shared_ptr<const std::vector<float>>;

  // The constants start at the defaults the controller's reset applies
  // (A 0.001, R 10, viscosity 0.05, G 0.001, L 0, s 1, one step per batch),
  // so a view used without a controller lays out sensibly.
  VXLNetworkView();
  // Stops a running batch and waits for it.
  ~VXLNetworkView();
  VXLNetworkView(const VXLNetworkView&) = delete;
  VXLNetworkView& operator=(const VXLNetworkView&) = delete;

  // --- Layout state (under the view's lock) ---
  std::shared_ptr<QLONetwork> network() const;
  // Installs a network (nothing if it is the one held) and a fresh random
  // layout in the -30..30 cube.
  void setNetwork(std::shared_ptr<QLONetwork> network);
  std::shared_ptr<QLOVector3dArray> positions() const;
  // Installs positions (a float copy when given another precision; nothing if
  // given the array held) and zeroes speeds and forces.
  void setPositions(std::shared_ptr<QLOVector3dArray> positions);
  std::shared_ptr<QLOVector3dArray> speeds() const;
  void setSpeeds(std::shared_ptr<QLOVector3dArray> speeds);
  std::shared_ptr<QLOVector3dArray> forces() const;
  void setForces(std::shared_ptr<QLOVector3dArray> forces);
  void resetSpeeds();
  void resetForces();
  void resetPositions();

  // Box layout and recentre-and-rescale; both also store the new layout in
  // the network's "Position" property. Nothing without a network.
  void randomizePositionsWithSizeX(float sizeX, float sizeY, float sizeZ);
  void resetCenter(float sizeX, float sizeY, float sizeZ);

  // --- Simulation constants and run state (plain settings) ---
  float attractionConstant() const { return attraction_.load(kRelaxed); }
  void setAttractionConstant(float value) { attraction_.store(value, kRelaxed); }
  float repulsiveConstant() const { return repulsive_.load(kRelaxed); }
  void setRepulsiveConstant(float value) { repulsive_.store(value, kRelaxed); }
  float viscosityConstant() const { return viscosity_.load(kRelaxed); }
  void setViscosityConstant(float value) { viscosity_.store(value, kRelaxed); }
  float gravitationalConstant() const { return gravitational_.load(kRelaxed); }
  void setGravitationalConstant(float value) { gravitational_.store(value, kRelaxed); }
  float softeningConstant() const { return softening_.load(kRelaxed); }
  void setSofteningConstant(float value) { softening_.store(value, kRelaxed); }
  float preferredDistance() const { return preferredDistance_.load(kRelaxed); }
  void setPreferredDistance(float value) { preferredDistance_.store(value, kRelaxed); }
  bool weightAsDistance() const { return weightAsDistance_.load(kRelaxed); }
  void setWeightAsDistance(bool value) { weightAsDistance_.store(value, kRelaxed); }
  std::uint64_t iterations() const { return iterations_.load(kRelaxed); }
  void setIterations(std::uint64_t value) { iterations_.store(value, kRelaxed); }
  std::uint64_t hierLevels() const { return hierLevels_.load(kRelaxed); }
  void setHierLevels(std::uint64_t value) { hierLevels_.store(value, kRelaxed); }
  bool iterating() const { return iterating_.load(); }
  // Clearing it stops the running batch before its next step.
  void setIterating(bool value) { iterating_.store(value); }
  bool fAnimate() const { return animate_.load(); }
  double time() const { return time_.load(kRelaxed); }

  // --- Repulsion: all pairs or the octree approximation ---
  // Automatic (the default) uses all pairs below 20,000 participating
  // vertices and theta 0.8 from there on. Setting theta turns automatic off;
  // theta 0 means all pairs.
  float barnesHutTheta() const { return theta_.load(kRelaxed); }
  void setBarnesHutTheta(float theta);
  bool automaticRepulsion() const { return automaticRepulsion_.load(kRelaxed); }
  void setAutomaticRepulsion(bool on) { automaticRepulsion_.store(on, kRelaxed); }
  // The theta the next step uses (0: all pairs), and as text, e.g.
  // "Repulsion: Barnes–Hut θ = 0.8".
  float repulsionThetaInUse() const;
  std::string repulsionStatus() const;

  // --- Multilevel start ---
  // Lays the network out on ever coarser versions of itself (see
  // layout/multilevel.h) with the current constants, on the calling thread,
  // and installs the result as the positions (speeds zeroed). `progress` is
  // told the fraction done after every step and may answer false to stop,
  // leaving the positions as they were. Answers whether positions were placed.
  bool multilevelStart(const std::function<bool(double)>& progress = {});

  // --- Stepping ---
  // Runs up to n steps on the calling thread (stopping early when iterating
  // is cleared); waits first for a batch running on the background thread.
  void iterateBy(std::uint64_t n);
  void iterate() { iterateBy(1); }
  void iterateByNumber(std::uint64_t n) { iterateBy(n); }
  // The 60 Hz tick: records the time, does a frame, and starts a batch of
  // `iterations` steps on a new thread when the layout runs, iterations is not
  // 0 and no batch is running.
  void animationTimer();
  // What a frame does before it draws: refills the filter cache when the
  // network or the filter property changed. Headless callers call it (or
  // animationTimer) before stepping.
  void prepareFrame();
  void start();
  void pause();
  void toggleStartPause();
  // Waits until the background batch, if any, has ended.
  void waitForBatch();

  // --- Filter and edge-weight thresholds ---
  float weightMaxThreshold() const;
  void setWeightMaxThreshold(float value);
  float weightMinThreshold() const;
  void setWeightMinThreshold(float value);
  void _updateWeightThresholdData();
  // (largest, smallest) edge weight; (1, 0) without weights or edges.
  std::pair<double, double> maxMinWeight() const;
  // The thresholded weights (null until a threshold is set on an
  // edge-weighted network) and their count.
  FloatsPtr weightThresholdData() const;
  std::uint64_t weightThresholdCount() const;

  std::string filterPropertyName() const;
  void setFilterPropertyName(const std::string& name);
  float maxFilterProperty() const { return maxFilter_.load(kRelaxed); }
  void setMaxFilterProperty(float value) {
    maxFilter_.store(value, kRelaxed);
    noteChange();
  }
  float minFilterProperty() const { return minFilter_.load(kRelaxed); }
  void setMinFilterProperty(float value) {
    minFilter_.store(value, kRelaxed);
    noteChange();
  }
  bool shouldUpdateFilterProperty() const { return shouldUpdateFilter_.load(kRelaxed); }
  void setShouldUpdateFilterProperty(bool value) { shouldUpdateFilter_.store(value, kRelaxed); }
  // The filter cache: one value per vertex (null before the first frame).
  FloatsPtr filterProperty() const;

  std::shared_ptr<QLONumberArray> hiddenVertices() const;
  void setHiddenVertices(std::shared_ptr<QLONumberArray> mask);
  std::shared_ptr<QLONumberArray> alphaChannel() const;
  void setAlphaChannel(std::shared_ptr<QLONumberArray> alpha);
  bool hideSpecialVertices() const { return hideSpecialVertices_.load(kRelaxed); }
  void setHideSpecialVertices(bool value) {
    hideSpecialVertices_.store(value, kRelaxed);
    noteChange();
  }

  // --- Vertex sizes by property (VXLNetworkViewSizes.cpp, under the lock) ---
  // The property ("None": every vertex at the standard size, the default; a
  // built-in measure such as "Node Degree" or a number property) whose values,
  // transformed, set each vertex's size within the range (multiples of the
  // standard size; vertex_sizes::sizesOf). A name the network lacks draws the
  // standard size. Setting the name again reads the values again.
  std::string sizeProperty() const;
  void setSizeProperty(const std::string& name);
  vertex_sizes::Transform sizeTransform() const;
  void setSizeTransform(vertex_sizes::Transform transform);
  vertex_sizes::Range sizeRange() const;
  // Throws std::invalid_argument for a range vertex_sizes::validRange refuses.
  void setSizeRange(const vertex_sizes::Range& range);
  // Each vertex's size as a multiple of the standard one, as the next frame
  // draws it; null when every vertex has the standard size.
  FloatsPtr vertexSizes();

  // --- Colours and selection (under the view's lock) ---
  // Per-vertex colours, kept at float precision; an array shorter than the
  // vertex count is ignored when drawing (the default colour is used).
  std::shared_ptr<QLOVector3dArray> colors() const;
  void setColors(std::shared_ptr<QLOVector3dArray> colors);
  // One byte per vertex, non-zero = selected. A frame replaces a missing mask
  // or one of the wrong count by an all-zero mask.
  std::shared_ptr<QLONumberArray> selectedNodesIndexes() const;
  // Selects exactly the given vertices (indices past the end are ignored).
  void setSelectedVertices(const std::vector<std::uint64_t>& indices);
  void resetSelection();

  // --- Selection operations (under the view's lock) ---
  // Each first replaces a missing mask or one of the wrong count by an
  // all-zero mask, then ignores an index not below the vertex count. A mask
  // someone else holds (a frame being drawn) is copied before it changes.
  // Clears the selection, then selects the vertex alone and shows its details
  // (an index out of range only clears).
  void selectVertexWithIndex(std::uint64_t index);
  void addToSelectionVertexWithIndex(std::uint64_t index);
  void removeFromSelectionVertexWithIndex(std::uint64_t index);
  void toggleSelectionOfVertexWithIndex(std::uint64_t index);
  void selectVertex(const QLOVertex& vertex) { selectVertexWithIndex(vertex.identification()); }
  void addToSelectionVertex(const QLOVertex& v) {
    addToSelectionVertexWithIndex(v.identification());
  }
  void removeFromSelectionVertex(const QLOVertex& v) {
    removeFromSelectionVertexWithIndex(v.identification());
  }
  void toggleSelectionOfVertex(const QLOVertex& v) {
    toggleSelectionOfVertexWithIndex(v.identification());
  }
  // Selects the vertices whose entry in `mask` is non-zero (entries past the
  // vertex count are ignored, missing ones count as zero).
  void setSelectedNodesIndexes(const QLONumberArray& mask);
  // The selected vertices in increasing order.
  std::vector<std::uint64_t> selectedIndices() const;
  // The listing kept from the first design: the vertices of a mask that is out
  // of step with the network, and nothing while the mask matches the vertex
  // count (an inverted test, kept as it has always behaved).
  std::vector<QLOVertex> selectedVertices() const;
  std::shared_ptr<VXLSelectionHandler> selectionhandler() const;
  void setSelectionhandler(std::shared_ptr<VXLSelectionHandler> handler);
  // The controller the handler is given (not owned; null without a window).
  VXLController* controller() const;
  void setController(VXLController* controller);
  // Records the vertex whose details are shown and tells the handler.
  void updateVertexInfoWithVertex(std::uint64_t index);
  std::optional<std::uint64_t> vertexInfoIndex() const;

  // --- Drawing options (take effect at the next frame) ---
  bool showNodes() const { return options_.showNodes.load(kRelaxed); }
  void setShowNodes(bool value) {
    options_.showNodes.store(value, kRelaxed);
    noteChange();
  }
  bool showEdges() const { return options_.showEdges.load(kRelaxed); }
  void setShowEdges(bool value) {
    options_.showEdges.store(value, kRelaxed);
    noteChange();
  }
  bool simpleShapes() const { return options_.simpleShapes.load(kRelaxed); }
  void setSimpleShapes(bool value) {
    options_.simpleShapes.store(value, kRelaxed);
    noteChange();
  }
  bool blendLines() const { return options_.blendLines.load(kRelaxed); }
  void setBlendLines(bool value) {
    options_.blendLines.store(value, kRelaxed);
    noteChange();
  }
  bool edgesDepthTest() const { return options_.edgesDepthTest.load(kRelaxed); }
  void setEdgesDepthTest(bool value) {
    options_.edgesDepthTest.store(value, kRelaxed);
    noteChange();
  }
  bool verticesDepthTest() const { return options_.verticesDepthTest.load(kRelaxed); }
  void setVerticesDepthTest(bool value) {
    options_.verticesDepthTest.store(value, kRelaxed);
    noteChange();
  }
  float edgesIntensity() const { return options_.edgesIntensity.load(kRelaxed); }
  void setEdgesIntensity(float value) {
    options_.edgesIntensity.store(value, kRelaxed);
    noteChange();
  }
  // Stored only; the passes do not read it.
  float verticesIntensity() const { return options_.verticesIntensity.load(kRelaxed); }
  void setVerticesIntensity(float value) {
    options_.verticesIntensity.store(value, kRelaxed);
    noteChange();
  }
  bool showLegends() const { return options_.showLegends.load(kRelaxed); }
  void setShowLegends(bool value) {
    options_.showLegends.store(value, kRelaxed);
    noteChange();
  }
  // Apply the filter range to vertices, to edges (both ends must pass).
  bool limitNodes() const { return options_.limitNodes.load(kRelaxed); }
  void setLimitNodes(bool value) {
    options_.limitNodes.store(value, kRelaxed);
    noteChange();
  }
  bool limitEdges() const { return options_.limitEdges.load(kRelaxed); }
  void setLimitEdges(bool value) {
    options_.limitEdges.store(value, kRelaxed);
    noteChange();
  }
  bool blackBackground() const { return options_.blackBackground.load(kRelaxed); }
  void setBlackBackground(bool value);  // logs the choice
  bool transparentBackground() const { return options_.transparentBackground.load(kRelaxed); }
  void setTransparentBackground(bool value);  // logs the black-background flag
  // The frame-blending pass (a fading trail) and the new frame's weight in it.
  bool shader() const { return options_.shader.load(kRelaxed); }
  void setShader(bool value) {
    options_.shader.store(value, kRelaxed);
    noteChange();
  }
  float motionBlurFactor() const { return options_.motionBlurFactor.load(kRelaxed); }
  void setMotionBlurFactor(float value) {
    options_.motionBlurFactor.store(value, kRelaxed);
    noteChange();
  }
  float lineWidth() const { return options_.lineWidth.load(kRelaxed); }
  void setLineWidth(float value) {
    options_.lineWidth.store(value, kRelaxed);
    noteChange();
  }
  // --- Edge style (VXLNetworkViewEdgeStyle.cpp; takes effect at the next frame) ---
  // Edge colours by endpoint (the default), by weight through the colour map
  // below, or one colour. Weight on a network without weights draws the
  // endpoints' colours (and logs it).
  using EdgeColourMode = edge_style::ColourMode;
  EdgeColourMode edgeColorMode() const;
  void setEdgeColorMode(EdgeColourMode mode);
  scene::Rgb edgeColor() const;  // the single colour, grey at first
  void setEdgeColor(scene::Rgb colour);
  // The map weights are coloured through: the vertices' map, handed over by
  // the controller whenever it recolours (Jet until then).
  std::optional<colour::ColorMap> edgeColorMap() const;
  void setEdgeColorMap(std::optional<colour::ColorMap> map,
                       const colour::ColorMapSettings& settings);
  // Widths from the line width (lightest) to 4x it (heaviest); nothing
  // changes on a network without weights.
  bool edgeWidthByWeight() const;
  void setEdgeWidthByWeight(bool on);
  // Arrow heads at the target ends, drawn only on directed networks; set to
  // whether the network is directed each time one is installed.
  bool showArrows() const { return options_.showArrows.load(kRelaxed); }
  void setShowArrows(bool on) {
    options_.showArrows.store(on, kRelaxed);
    noteChange();
  }

  // Multiplies every position when drawing.
  float scale() const { return options_.scale.load(kRelaxed); }
  void setScale(float value) {
    options_.scale.store(value, kRelaxed);
    noteChange();
  }

  // --- Vertex labels (VXLNetworkViewLabels.cpp) ---
  // Which vertices have their label drawn beside them (None by default), in
  // the window and in exported pictures and documents. Where labels would
  // overlap, the nearer vertex keeps its label (a selected one first).
  LabelMode showLabels() const { return options_.labels.load(kRelaxed); }
  void setShowLabels(LabelMode mode) {
    options_.labels.store(mode, kRelaxed);
    noteChange();
  }
  // The vertex property the labels show; empty (the default) means "Name".
  // A network without the property shows its "Name", else vertex numbers.
  std::string labelProperty() const;
  void setLabelProperty(const std::string& name);
  // The labels a width x height picture of the view as it is now shows:
  // their boxes (pixels, origin top left) and texts, in placing order. Each
  // box clears its vertex as drawn at its size (vertexSizes).
  struct Labels {
    std::vector<PlacedLabel> placed;
    std::vector<std::string> texts;
    double pixelSize = 0;  // the text size (labels::pixelSizeFor the height)
  };
  Labels placedLabels(double width, double height);

  // --- Camera ---
  VXLCamera camera() const;
  void setCamera(const VXLCamera& camera);
  Rotation worldRotation() const;
  void setWorldRotation(const Rotation& rotation);
  Rotation objectRotation() const;
  void setObjectRotation(const Rotation& rotation);
  float nearClipDistance() const { return options_.nearClip.load(kRelaxed); }
  void setNearClipDistance(float value) {
    options_.nearClip.store(value, kRelaxed);
    noteChange();
  }
  float farClipDistance() const { return options_.farClip.load(kRelaxed); }
  void setFarClipDistance(float value) {
    options_.farClip.store(value, kRelaxed);
    noteChange();
  }

  // --- Drawing (GL: a current compatibility context is required) ---
  // Once per context: fixed state, the vertex shapes, the blending program;
  // resets the camera.
  void initCommands();
  // Viewport, camera size and projection for a surface of this many pixels.
  void resizeCommands(int width, int height);
  // Load the camera's frustum into the projection matrix, its view and the
  // world and object rotations into the model-view matrix.
  void updateProjection();
  void updateModelView();
  // One frame into a surface of this size: background, camera, scene, the
  // blending pass when on, then a check for a GL error.
  void drawRect(int width, int height);
  // The vertex and edge passes (also used by picking and the exports).
  void drawCommands();
  // A window's frame, drawn so that a slow scene never holds the window up:
  // the scene goes off screen in pieces of about `budget` per call, the last
  // complete frame is shown in the framebuffer bound on entry, and the
  // overlays over it are always current. A quick scene is drawn and shown in
  // one call. Falls back to drawRect when no off-screen framebuffer can be had.
  void presentFrame(int width, int height,
                    std::chrono::milliseconds budget = std::chrono::milliseconds(25));
  // Whether a frame is being drawn in pieces (the next call goes on with it).
  bool framePending() const;
  // Whether presentFrame shows a frame still being drawn (a network just
  // installed, a camera being dragged) rather than the last whole one.
  bool showsPartialFrame() const;
  // The network of the last whole frame presentFrame showed (null before).
  std::shared_ptr<QLONetwork> presentedNetwork() const;
  // Deletes presentFrame's framebuffers: the context that made them is about
  // to be destroyed (and current) or is gone.
  void releasePresentation();
  // Frames drawn while it is set are for GL's selection mode (a caller's
  // glRenderMode(GL_SELECT)): vertices load their index as their name instead
  // of a colour, and no edges are drawn. pickAt does not draw.
  bool selectionMode() const { return selectionMode_; }
  void setSelectionMode(bool value) { selectionMode_ = value; }

  // --- Picking (no GL) ---
  // Coordinates are backing pixels with GL's origin, the lower left corner; a
  // Qt mouse position p maps to (p.x() * ratio, height - p.y() * ratio) with
  // the widget's devicePixelRatio and height in backing pixels.
  static constexpr std::uint64_t kNoVertex = ~std::uint64_t{0};
  // The vertex drawn nearest the viewer within a dx by dy pixel region
  // centred on (x, y), by rays cast against the vertices' shapes on the CPU
  // (pickray.h, no GL); kNoVertex (not below any vertex count) when no vertex
  // is there.
  std::uint64_t pickAt(double x, double y, double dx, double dy);

  // --- Renderer choice (renderer.h) ---
  // Frames drawn into pixels (window, raster exports) use the shader renderer
  // unless the fixed-function one is preferred (PLEXVIEW_GL=legacy at start)
  // or the context cannot run GLSL 3.30; vector exports and selection-mode
  // frames always use the fixed-function one.
  RenderPath preferredRenderPath() const;
  void setPreferredRenderPath(RenderPath path);
  // The path of the last frame drawn into pixels (the preferred one before).
  RenderPath renderPath() const;
  // GL: bytes the current context's shader renderer holds in buffers for the
  // vertices and for the edges of the last frame ({0, 0} without one).
  std::array<std::uint64_t, 2> rendererBufferBytes();

  // --- Mouse and keyboard (plain values; positions as for picking) ---
  // A press: Control makes it a pan, Option a dolly, else a trackball drag.
  void mouseDown(double x, double y, Modifiers modifiers);
  void rightMouseDown(double x, double y);  // pan
  void otherMouseDown(double x, double y);  // dolly
  void mouseDragged(double x, double y);    // any button
  // Ends the drag; a release with no movement after a plain press is a click:
  // it selects the vertex under the point (Shift toggles it) or clears.
  void mouseUp(double x, double y);
  // Dolly by the wheel, or with Shift change the aperture.
  void scrollWheel(double dx, double dy, double dz, Modifiers modifiers);
  void mouseMoved(double x, double y);
  void mouseEntered(double x, double y) { mouseMoved(x, y); }
  void mouseExited();
  // Space starts or pauses the layout; other keys (0 for none) do nothing.
  void keyDown(char32_t firstCharacter);
  void viewFromTop();
  void viewFromLeft();
  void viewFromFront();
  // Slider actions; each answers the text its field shows ("%.1fx").
  std::string updateScale(double sliderValue);
  std::string updateNear(double sliderValue);
  std::string updateFar(double sliderValue);
  // One step of the automatic spin, t seconds long.
  void updateObjectRotationForTimeDelta(double t);
  // What a click calls to find the vertex under (x, y); pickAt with a 3 by 3
  // region when unset. A window sets one that makes its context current.
  using Picker = std::function<std::uint64_t(double x, double y)>;
  void setPicker(Picker picker);
  enum class Drag { None, Trackball, Pan, Dolly };
  Drag drag() const;
  // The rotation of the trackball drag in progress (angle 0 when none).
  Rotation trackBallRotation() const;
  // The last hover point, and whether the mouse hovers with no drag.
  std::array<double, 2> overPosition() const;
  bool overVertex() const;

  // --- Framing and selection tools (VXLNetworkViewFraming.cpp) ---
  // Moves the camera along its viewing direction so that every shown vertex
  // (not hidden, within the filter when it limits vertices) fits the view
  // with a small margin; the rotation centre becomes their centre. Answers
  // false, changing nothing, when no vertex is shown.
  bool zoomToFit();
  // The same for a picture of width x height pixels: a view without a window
  // (a script's, a render's) has no size of its own to fit.
  bool zoomToFit(int width, int height);
  // The same for the selected shown vertices.
  bool frameSelection();
  // The shown vertices, in increasing order.
  std::vector<std::uint64_t> shownVertices() const;
  // A network just installed is framed at the next tick, and again once its
  // layout has taken kSettleSteps steps.
  static constexpr std::uint64_t kSettleSteps = 200;
  // Vertices whose "Name" or other text property contains `text`, ignoring
  // case, in increasing order (nothing for empty text).
  std::vector<std::uint64_t> findVertices(const std::string& text) const;
  void selectAll();
  void invertSelection();
  // Adds every vertex joined by an edge (either direction) to a selected one.
  void selectNeighbours();
  // The shown vertices whose centres project inside the rectangle between
  // two points in backing pixels (GL's origin, lower left).
  std::vector<std::uint64_t> verticesInRectangle(double x0, double y0, double x1, double y1) const;
  // A counter bumped by everything that changes the picture; a window draws
  // only when it moved since its last frame.
  std::uint64_t changeCount() const { return changes_.load(kRelaxed); }
  void noteChange() { changes_.fetch_add(1, kRelaxed); }
  // A counter bumped by every change of the selection.
  std::uint64_t selectionChangeCount() const { return selectionChanges_.load(kRelaxed); }
  // Whether a message or an error is still fading (the texts change with
  // time, so frames are needed while nothing else changes).
  bool overlaysFading() const;

  // --- Text overlays (VXLNetworkViewOverlays.cpp) ---
  // Camera line, general information, vertex details, message, GL error and
  // capability report, drawn over the scene by drawInfo. The texts are kept
  // under the lock; their textures are made and drawn by drawing code only.
  static constexpr double gMsgPresistance = 3.0;  // seconds a message or an error shows
  // The intensity of a text set `setAt` seconds after start, `now` seconds
  // after start: 0.3 fading to nothing over gMsgPresistance, then none.
  static std::optional<float> fadeIntensity(double now, double setAt);
  // The camera text may be kept only when the camera equals the saved copy
  // and all four worldRotation components are 0 (rare: it is nearly always
  // rebuilt).
  static bool cameraTextCurrent(const std::optional<VXLCamera>& saved, const VXLCamera& camera,
                                const Rotation& worldRotation);
  static std::string cameraText(const VXLCamera& camera, const Rotation& worldRotation);
  // Name, degree and the properties (but Name, Position, Color) by key.
  static std::string vertexDetailsText(const QLOVertex& vertex);
  std::string networkName() const;
  void setNetworkName(const std::string& name);  // rebuilds the information text
  void updateCameraString();                     // after each projection or model-view load
  void updateInfoString();
  // The surface changed: shows "update at ..." and refreshes the information
  // text and the capability report.
  void update();
  std::string cameraString() const;
  std::string infoString() const;
  std::string vertexInfoString() const;
  std::string messageString() const;
  std::string errorString() const;
  // The capability report of the current GL context (read again whenever one
  // is current), else the last one read; empty if none was ever read.
  std::string capabilitiesText();
  bool cameraInfo() const { return overlays_.cameraInfo.load(kRelaxed); }
  void setCameraInfo(bool value) {
    overlays_.cameraInfo.store(value, kRelaxed);
    noteChange();
  }
  bool generalInfo() const { return overlays_.generalInfo.load(kRelaxed); }
  void setGeneralInfo(bool value) {
    overlays_.generalInfo.store(value, kRelaxed);
    noteChange();
  }
  bool vertexInfo() const { return overlays_.vertexInfo.load(kRelaxed); }
  void setVertexInfo(bool value) {
    overlays_.vertexInfo.store(value, kRelaxed);
    noteChange();
  }
  bool fDrawCaps() const { return overlays_.drawCaps.load(kRelaxed); }
  void setFDrawCaps(bool value) {
    overlays_.drawCaps.store(value, kRelaxed);
    noteChange();
  }
  // Whether drawRect draws the texts at all: off until the hosting window
  // turns it on, so headless frames show the scene alone.
  bool fInfo() const { return overlays_.info.load(kRelaxed); }
  void setFInfo(bool value) {
    overlays_.info.store(value, kRelaxed);
    noteChange();
  }
  // The legend drawn at the bottom left while showLegends is on (under the
  // lock). Its height is legendsHeight x the view's height / 460, set when
  // either is installed and on every resize.
  std::shared_ptr<VXLLegends> legends() const;
  void setLegends(std::shared_ptr<VXLLegends> legends);
  float legendsHeight() const { return overlays_.legendsHeight.load(kRelaxed); }
  void setLegendsHeight(float value);
  // GL: draws the vertex labels and the enabled texts in pixel coordinates
  // over the viewport.
  void drawInfo();
  // The same over a width x height picture drawn in tiles: `window` maps the
  // whole picture's clip volume onto the tile's viewport (tileWindow).
  enum class OverlaySet { All, LegendOnly };
  void drawInfo(double width, double height, const Matrix4& window,
                OverlaySet set = OverlaySet::All);
  // How the legend labels itself in the window (Rows: as its colouring
  // gave it, the default) and in exported pictures and documents (Readable:
  // its title and round ticks, the default).
  LegendStyle legendStyle() const;
  void setLegendStyle(LegendStyle style);
  LegendStyle exportLegendStyle() const;
  void setExportLegendStyle(LegendStyle style);

  // --- Image and vector export (VXLNetworkViewExport.cpp) ---
  // Writes the view to `path` as a picture of width x height pixels ((0, 0):
  // the view's size in backing pixels) with edges lineWidth pixels wide, in
  // the format the extension names (chooseExportFormat). A raster picture is
  // drawn again off screen (in tiles when larger than GL allows), with the
  // overlays when fInfo is on and a transparent background when
  // transparentBackground is; at the view's own size the frame on screen is
  // read instead. A vector document records the scene alone through gl2ps,
  // on an opaque background. The file is replaced only once it is complete.
  // The view's context is the one current on entry, else the context
  // host's, else a process-wide off-screen one. Main thread; needs a
  // QGuiApplication.
  ExportReport exportImageToFile(const std::filesystem::path& path, int width, int height,
                                 float lineWidth);
  // The picture a raster export writes (top row first), or a null image
  // with the reason in `error`.
  QImage renderImage(int width, int height, float lineWidth, std::string& error);
  // How an export started outside a frame (a script, a menu) makes the
  // view's own context current and lets it go; a window sets one and clears
  // it before it goes.
  struct ContextHost {
    std::function<bool()> makeCurrent;
    std::function<void()> doneCurrent;
  };
  void setContextHost(ContextHost host);

 private:
  struct ExportPass {
    VXLCamera camera;
    Rotation worldRotation;
  };
  ContextHost contextHost_;  // under lock_
  // Sets up a pass drawing the scene as it is now into a width x height
  // picture (initCommands alone would reset the camera); the end puts the
  // camera, the legend's height and the projection back.
  ExportPass beginExportPass(int width, int height);
  void endExportPass(const ExportPass& pass);
  // Runs `body` with the view's context current and report's size settled
  // ((0, 0): the view's), or puts the reason it cannot into report.error.
  void inExportContext(ExportReport& report,
                       const std::function<void(export_gl::ViewContext&)>& body);
  QImage exportPicture(ExportReport& report, float lineWidth, export_gl::ViewContext& context);
  QImage drawExportTiles(ExportReport& report, float lineWidth);
  void exportVector(ExportReport& report, float lineWidth);

 private:
  struct Overlays {
    std::string cameraText, infoText, detailsText, errorText, networkName,
        capabilities;                            // under lock_
    std::string messageText = "No messages...";  // under lock_
    double msgTime = 0;                          // under lock_
    std::optional<double> errorTime;             // under lock_
    std::optional<VXLCamera> savedCamera;        // under lock_
    std::atomic<bool> cameraInfo{false}, generalInfo{false}, vertexInfo{true};
    std::atomic<bool> drawCaps{false}, info{false};  // a window turns info on
    std::atomic<float> legendsHeight{1.0f};
    std::shared_ptr<VXLLegends> legends;  // under lock_
    // Replaced legends whose textures the next drawInfo deletes (under lock_).
    std::vector<std::shared_ptr<VXLLegends>> retiredLegends;
    // Textures, made on first draw (drawing only); shared_ptr keeps the
    // view's destructor free of GLString's definition.
    std::shared_ptr<GLString> camTex, infoTex, vertexTex, msgTex, errTex, capsTex;
  } overlays_;
  double secondsSinceStart() const;
  void fitLegendsHeight();                 // lock_ held
  void useLegendStyle(LegendStyle style);  // on the installed legend; lock_ held
  // While a gl2ps page records: the legend as an image with its texts kept
  // as text, placed as drawInfo places it on a width x height picture.
  void recordLegend(double width, double height);
  // The labels over the part of a width x height picture that `window`
  // shows, in drawInfo's pixel coordinates (GL); and as text into a gl2ps
  // page of that size.
  void drawLabels(double width, double height, const Matrix4& window);
  void recordLabels(double width, double height);

 private:
  static constexpr auto kRelaxed = std::memory_order_relaxed;
  struct Frame;
  // A frame's own copies of positions and colours (the layout thread keeps
  // writing the originals).
  struct FrameCopies {
    std::vector<float> positions, colours;
  };
  struct Presenter;
  enum class BatchStart { MarkIterating, AlreadyMarked };

  void runBatch(std::uint64_t steps, BatchStart start);
  void stopBatchThread();
  void storePositionInNetwork(const std::shared_ptr<QLOVector3dArray>& positions);

  mutable std::recursive_mutex lock_;
  std::shared_ptr<QLONetwork> network_;
  std::shared_ptr<QLOVector3dArray> positions_;
  std::shared_ptr<QLOVector3dArray> speeds_;
  std::shared_ptr<QLOVector3dArray> forces_;

  std::atomic<float> attraction_{0.001f};
  std::atomic<float> repulsive_{10.0f};
  std::atomic<float> viscosity_{0.05f};
  std::atomic<float> gravitational_{0.001f};
  std::atomic<float> softening_{1.0f};
  std::atomic<float> preferredDistance_{0.0f};
  std::atomic<bool> weightAsDistance_{false};
  std::atomic<std::uint64_t> iterations_{1};
  std::atomic<std::uint64_t> hierLevels_{0};
  std::atomic<bool> iterating_{false};
  std::atomic<bool> animate_{false};
  std::atomic<double> time_{0.0};
  std::atomic<float> theta_{0.8f};
  std::atomic<bool> automaticRepulsion_{true};

  // Filter state.
  float weightMaxThreshold_ = 1.0f;                      // under lock_
  float weightMinThreshold_ = 0.0f;                      // under lock_
  FloatsPtr weightThresholdData_;                        // under lock_
  std::string filterPropertyName_ = "Node Degree";       // under lock_
  std::weak_ptr<QLONetwork> lastFilterPropertyNetwork_;  // under lock_
  FloatsPtr filterProperty_;                             // under lock_
  std::atomic<float> maxFilter_{0.0f};
  std::atomic<float> minFilter_{0.0f};
  std::atomic<bool> shouldUpdateFilter_{false};
  std::shared_ptr<QLONumberArray> hiddenVertices_;  // under lock_
  std::shared_ptr<QLONumberArray> alphaChannel_;    // under lock_
  std::atomic<bool> hideSpecialVertices_{false};
  // Vertex sizes (under lock_): the settings, and the sizes made from them
  // for `network`, made again when stale or for another network; `version`
  // counts the changes of `sizes`.
  struct VertexSizing {
    std::string property{vertex_sizes::kNoProperty};
    vertex_sizes::Transform transform = vertex_sizes::Transform::Linear;
    vertex_sizes::Range range;
    FloatsPtr sizes;
    std::weak_ptr<QLONetwork> network;
    bool stale = false;
    std::uint64_t version = 0;
  } sizing_;
  void refreshSizes();                                // lock_ held
  std::shared_ptr<QLOVector3dArray> colors_;          // under lock_
  std::shared_ptr<QLONumberArray> selectedVertices_;  // under lock_

  // Drawing options, at the defaults the controller's reset applies.
  struct DrawingOptions {
    std::atomic<bool> showNodes{true};
    std::atomic<bool> showEdges{true};
    std::atomic<bool> simpleShapes{false};
    std::atomic<bool> blendLines{false};
    std::atomic<bool> edgesDepthTest{false};
    std::atomic<bool> verticesDepthTest{true};
    std::atomic<float> edgesIntensity{0.6f};
    std::atomic<float> verticesIntensity{1.0f};
    std::atomic<bool> showLegends{true};
    std::atomic<LegendStyle> legendStyle{LegendStyle::Rows};
    std::atomic<LegendStyle> exportLegendStyle{LegendStyle::Readable};
    std::atomic<bool> limitNodes{true};
    std::atomic<bool> limitEdges{true};
    std::atomic<bool> blackBackground{false};
    std::atomic<bool> transparentBackground{false};
    std::atomic<bool> shader{false};
    std::atomic<float> motionBlurFactor{0.2f};
    std::atomic<float> lineWidth{1.5f};
    std::atomic<float> scale{1.0f};
    std::atomic<float> nearClip{1.0f};
    std::atomic<float> farClip{2000.0f};
    std::atomic<LabelMode> labels{LabelMode::None};
    std::atomic<bool> showArrows{false};
  } options_;
  std::string labelProperty_;  // under lock_
  // Edge style settings and the arrays made from them for the network held
  // (null: made again by the next frame). Under lock_.
  edge_style::ColourSettings edgeColouring_;
  bool edgeWidthByWeight_ = false;
  std::shared_ptr<const edge_style::EdgeArrays> edgeArrays_;
  std::uint64_t edgeArraysSerial_ = 0;
  // Puts the edge style into a frame taken of network_ (lock_ held).
  void styleEdges(Frame& frame);

  VXLCamera camera_;         // under lock_
  Rotation worldRotation_;   // under lock_
  Rotation objectRotation_;  // under lock_
  Vec3d origin_{0, 0, 0};    // the centre a camera reset looks at
  // Error reports give the seconds since the view was made.
  std::chrono::steady_clock::time_point startTime_ = std::chrono::steady_clock::now();
  std::recursive_mutex contextLock_;  // a frame, a pick and an export never interleave

  // GL objects of the context the view draws into (drawing methods only).
  struct GlObjects {
    unsigned int iTexture = 0, nextTex = 0, prevTex = 0;
    int textureWidth = 0, textureHeight = 0;  // powers of two
    unsigned int programObject = 0, fragmentShader = 0;
    int nextTexUnit = -1, prevTexUnit = -1;
    int firstTimeTex = 1;  // 1 until the first blended frame
  } gl_;
  bool selectionMode_ = false;
  // Per-frame copies of positions and colours, reused between frames (and
  // between picks).
  FrameCopies frameCopies_, pickCopies_;
  // The window's frames drawn piece by piece (presentFrame); made on first use.
  std::unique_ptr<Presenter> presenter_;

  // Selection, picking and interaction state (under lock_).
  std::shared_ptr<VXLSelectionHandler> selectionHandler_;
  VXLController* controller_ = nullptr;
  std::optional<std::uint64_t> vertexInfoIndex_;
  struct Navigation {
    Drag drag = Drag::None;
    camera::Trackball trackball;
    Rotation trackBallRotation;  // angle 0: none
    std::array<int, 2> dollyPanStart{0, 0};
    bool shiftModifier = false;  // at the last plain press
    bool otherButton = false;    // the last press was not a plain press
    std::array<double, 2> overPosition{0, 0};
    bool overVertex = false;
    camera::Spin spin;
    Picker picker;
  } navigation_;
  // Set when navigation changed the projection; the next frame reloads it.
  std::atomic<bool> projectionStale_{false};
  // A valid mask no one else holds, ready to change (lock_ held).
  QLONumberArray& writableSelection();
  // The part of a frame's model-view that navigation owns: reloads a stale
  // projection, restarts the spin's per-frame angles, and answers the
  // trackball rotation in progress.
  std::optional<Rotation> navigationForFrame();
  std::optional<Rotation> dragRotation() const;
  void foldTrackballRotation();  // lock_ held
  void startPanOrDolly(Drag drag, double x, double y);
  void clickedVertex(std::uint64_t picked);

  Frame takeFrame(FrameCopies& copies);
  // Clears colour and depth of the bound framebuffer to the background.
  void clearToBackground();
  void resizeGL(int width, int height);

  // Scene renderers (renderers.h): the fixed-function one and a shader one
  // per context; frameSerial_ numbers the frames taken (drawing only).
  std::unique_ptr<Renderers> renderers_;
  std::uint64_t frameSerial_ = 0;
  // The renderer a frame is drawn with in the current context.
  SceneRenderer& rendererFor(const Frame& frame);
  // The projection and model-view a frame drawn now would use.
  std::array<Matrix4, 2> cameraMatrices() const;
  void startPresentedFrame(int width, int height);
  bool drawPresentedPieces(std::chrono::steady_clock::time_point deadline);
  void finishPresentedFrame();
  void createBlendingProgram();
  void makeBlendingTextures(int width, int height);
  void blendFrame();
  void reportGlError();

  // Framing (VXLNetworkViewFraming.cpp).
  enum class AutoFit { Done, AtNextTick, AfterSettling };
  std::atomic<AutoFit> autoFit_{AutoFit::Done};
  std::atomic<std::uint64_t> stepsSinceInstall_{0};
  std::atomic<std::uint64_t> changes_{0};
  std::atomic<std::uint64_t> selectionChanges_{0};
  // Frames `vertices` as seen in a picture of `width` x `height` (0 x 0:
  // the view's own size).
  bool frameVertices(const std::vector<std::uint64_t>& vertices, int width = 0, int height = 0);
  // The scaled positions of `vertices` (lock_ held).
  std::vector<Vec3d> scaledPositions(const std::vector<std::uint64_t>& vertices) const;
  void autoFitTick();

  // One batch at a time: the background thread or a synchronous iterateBy.
  std::mutex batchMutex_;
  // The approximate step's buffers, for the network they were made for (held
  // so that its edge arrays stay valid). Under batchMutex_.
  std::shared_ptr<layout::StepWorkspace> stepWorkspace_;
  std::shared_ptr<QLONetwork> stepWorkspaceNetwork_;
  std::thread batchThread_;  // touched by the main thread only
};

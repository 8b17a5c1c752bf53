// The simulation driver: batches of steps, the timer tick, start and pause.
#include <chrono>

#include "layout/repulsion.h"
#include "layout/step.h"
#include "render/VXLNetworkView.h"

namespace {

double wallClockSeconds() {
  using namespace std::chrono;
  return duration<double>(system_clock::now().time_since_epoch()).count();
}

}  // namespace

void VXLNetworkView::iterateBy(std::uint64_t n) {
  runBatch(n, BatchStart::MarkIterating);
}

void VXLNetworkView::runBatch(std::uint64_t steps, BatchStart start) {
  std::lock_guard batch(batchMutex_);
  if (start == BatchStart::MarkIterating) iterating_.store(true);

  // Constants are read once: changes take effect with the next batch.
  layout::PassInputs inputs;
  inputs.attraction = attraction_.load(kRelaxed);
  inputs.repulsive = repulsive_.load(kRelaxed);
  inputs.gravitational = gravitational_.load(kRelaxed);
  inputs.preferredDistance = preferredDistance_.load(kRelaxed);
  inputs.softening = softening_.load(kRelaxed);
  layout::StepSettings settings;
  settings.viscosity = viscosity_.load(kRelaxed);

  // The batch keeps its own references: replacing any of these from the main
  // thread while it runs is safe, the batch finishes on the old ones.
  std::shared_ptr<QLONetwork> network;
  std::shared_ptr<QLOVector3dArray> positions;
  std::shared_ptr<QLOVector3dArray> speeds;
  FloatsPtr thresholded;
  {
    std::lock_guard lock(lock_);
    network = network_;
    positions = positions_;
    speeds = speeds_;
    if (network && network->isEdgeWeighted() && weightThresholdData_ &&
        weightThresholdData_->size() == network->countEdges()) {
      thresholded = weightThresholdData_;
    }
  }
  const std::uint64_t V = network ? network->countVertices() : 0;
  if (!network || !positions || !speeds || positions->count() != V || speeds->count() != V) {
    iterating_.store(false);
    return;
  }
  inputs.verticesCount = V;
  inputs.edgesCount = network->countEdges();
  inputs.from = network->edgeFromList;
  inputs.to = network->edgeToList;
  settings.mode = layout::LayoutMode::Plain;
  if (network->isEdgeWeighted()) {
    inputs.weights = thresholded ? thresholded->data() : network->edgesWeights;
    settings.mode = weightAsDistance_.load(kRelaxed) ? layout::LayoutMode::WeightAsDistance
                                                     : layout::LayoutMode::EdgeWeighted;
  }

  // The passes read a private snapshot; integration works on private copies
  // that are then written back element by element (as relaxed atomics, since
  // the main thread may be reading the shown arrays).
  std::vector<float> snapshot(3 * V), position(3 * V), speed(3 * V);
  const layout::Planes snap{snapshot.data(), snapshot.data() + V, snapshot.data() + 2 * V};
  const layout::Planes pos{position.data(), position.data() + V, position.data() + 2 * V};
  const layout::Planes spd{speed.data(), speed.data() + V, speed.data() + 2 * V};
  inputs.x = snap.x;
  inputs.y = snap.y;
  inputs.z = snap.z;
  const auto choice = automaticRepulsion_.load(kRelaxed) ? layout::RepulsionChoice::Automatic
                                                         : layout::RepulsionChoice::Fixed;
  const float theta = theta_.load(kRelaxed);
  if (stepWorkspaceNetwork_ != network || !stepWorkspace_) {
    stepWorkspace_ = std::make_shared<layout::StepWorkspace>();
    stepWorkspaceNetwork_ = network;
  }

  for (std::uint64_t s = 0; s < steps && iterating_.load(); ++s) {
    FloatsPtr filter;
    {
      std::lock_guard lock(lock_);
      filter = filterProperty_;
    }
    inputs.filter = filter && filter->size() == V ? filter->data() : nullptr;
    inputs.minFilter = minFilter_.load(kRelaxed);
    inputs.maxFilter = maxFilter_.load(kRelaxed);

    positions->copyPlanesTo(snap.x, snap.y, snap.z);
    std::copy(snapshot.begin(), snapshot.end(), position.begin());
    speeds->copyPlanesTo(spd.x, spd.y, spd.z);
    settings.barnesHutTheta =
        layout::repulsionTheta(choice, theta, layout::participantCount(inputs));
    layout::step(settings, inputs, pos, spd, *stepWorkspace_);
    positions->copyPlanesFrom(pos.x, pos.y, pos.z);
    speeds->copyPlanesFrom(spd.x, spd.y, spd.z);
    stepsSinceInstall_.fetch_add(1, kRelaxed);
    noteChange();
  }
  iterating_.store(false);
}

void VXLNetworkView::animationTimer() {
  time_.store(wallClockSeconds(), kRelaxed);
  prepareFrame();  // drawing comes here with the render step
  autoFitTick();
  if (!animate_.load() || iterations_.load(kRelaxed) == 0 || iterating_.load()) return;
  if (batchThread_.joinable()) batchThread_.join();  // it has ended: iterating is false
  // Marked here rather than by the batch itself, so a pause between this tick
  // and the thread's first step still stops it.
  iterating_.store(true);
  const std::uint64_t steps = iterations_.load(kRelaxed);
  batchThread_ = std::thread([this, steps] { runBatch(steps, BatchStart::AlreadyMarked); });
}

void VXLNetworkView::start() {
  std::lock_guard lock(lock_);
  animate_.store(true);
}

void VXLNetworkView::pause() {
  std::lock_guard lock(lock_);
  animate_.store(false);
  iterating_.store(false);
}

void VXLNetworkView::toggleStartPause() {
  std::lock_guard lock(lock_);
  animate_.store(!animate_.load());
  iterating_.store(false);
}

void VXLNetworkView::waitForBatch() {
  if (batchThread_.joinable()) batchThread_.join();
}

void VXLNetworkView::stopBatchThread() {
  iterating_.store(false);
  waitForBatch();
}

#pragma once
// The network view: it owns the layout state (network, positions, speeds,
// forces, constants, filter state, thresholded weights) and drives the
// simulation. Drawing is added by the render step; until then a frame does
// only its non-drawing work (prepareFrame), so the view also runs headless.
//
// Threads: the main thread calls every method; a batch of steps runs on a
// thread of its own (started by animationTimer while the layout runs), and
// the force passes run on oneTBB's workers. Shared objects are swapped under
// the view's recursive lock; plain settings are relaxed atomics; position and
// speed elements are written by the batch as relaxed atomics.
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "plexora/QLONetwork.h"
#include "quillo/QLONumberArray.h"
#include "quillo/QLOVector3dArray.h"

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
  void setMaxFilterProperty(float value) { maxFilter_.store(value, kRelaxed); }
  float minFilterProperty() const { return minFilter_.load(kRelaxed); }
  void setMinFilterProperty(float value) { minFilter_.store(value, kRelaxed); }
  bool shouldUpdateFilterProperty() const { return shouldUpdateFilter_.load(kRelaxed); }
  void setShouldUpdateFilterProperty(bool value) { shouldUpdateFilter_.store(value, kRelaxed); }
  // The filter cache: one value per vertex (null before the first frame).
  FloatsPtr filterProperty() const;

  std::shared_ptr<QLONumberArray> hiddenVertices() const;
  void setHiddenVertices(std::shared_ptr<QLONumberArray> mask);
  std::shared_ptr<QLONumberArray> alphaChannel() const;
  void setAlphaChannel(std::shared_ptr<QLONumberArray> alpha);
  bool hideSpecialVertices() const { return hideSpecialVertices_.load(kRelaxed); }
  void setHideSpecialVertices(bool value) { hideSpecialVertices_.store(value, kRelaxed); }

 private:
  static constexpr auto kRelaxed = std::memory_order_relaxed;
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

  // One batch at a time: the background thread or a synchronous iterateBy.
  std::mutex batchMutex_;
  std::thread batchThread_;  // touched by the main thread only
};

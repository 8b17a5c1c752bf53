// Undo and redo of the controller's settings: a state is everything an
// undoable change can touch, captured before the change and put back whole.
#include <mutex>

#include "app/VXLController.h"
#include "app/undostack.h"

namespace {

// A copy of the shown positions (the layout thread may be writing them).
std::shared_ptr<QLOVector3dArray> copyOf(const QLOVector3dArray& positions) {
  const std::uint64_t n = positions.count();
  std::vector<float> xyz(3 * n);
  positions.copyPlanesTo(xyz.data(), xyz.data() + n, xyz.data() + 2 * n);
  auto copy = QLOVector3dArray::initWithSize(n, Precision::Float);
  copy->copyPlanesFrom(xyz.data(), xyz.data() + n, xyz.data() + 2 * n);
  return copy;
}

app::UndoMerge mergeFor(VXLController::UndoKind kind) {
  using Kind = VXLController::UndoKind;
  const bool slider =
      kind == Kind::ColourPower || kind == Kind::FilterRange || kind == Kind::Thresholds;
  return slider ? app::UndoMerge::WithSameKind : app::UndoMerge::Separate;
}

}  // namespace

struct VXLController::UndoHistory {
  struct State {
    app::ColourState colour;
    // Colour arrays, masks and legends are replaced, never changed: holding
    // them keeps them as they were.
    std::shared_ptr<QLOVector3dArray> colours;
    std::shared_ptr<QLONumberArray> hidden;
    std::shared_ptr<VXLLegends> legends;
    std::string filterTitle;
    float minFilter = 0, maxFilter = 0, minWeight = 0, maxWeight = 0;
    std::vector<std::uint64_t> selection;
    // Only for changes that replace the positions.
    std::shared_ptr<QLOVector3dArray> positions;
  };
  app::UndoStack<State> stack;

  static State capture(const VXLController& c, bool withPositions) {
    State state;
    {
      std::lock_guard lock(c.colourLock_);
      state.colour = c.colour_;
    }
    const VXLNetworkView& view = *c.view_;
    state.colours = view.colors();
    state.hidden = view.hiddenVertices();
    state.legends = view.legends();
    state.filterTitle = c.filter_.selected;
    state.minFilter = view.minFilterProperty();
    state.maxFilter = view.maxFilterProperty();
    state.minWeight = view.weightMinThreshold();
    state.maxWeight = view.weightMaxThreshold();
    state.selection = view.selectedIndices();
    if (withPositions) {
      if (const auto positions = view.positions()) state.positions = copyOf(*positions);
    }
    return state;
  }

  static void restore(VXLController& c, const State& state) {
    c.restoring_ = true;
    VXLNetworkView& view = *c.view_;
    const auto network = view.network();
    {
      std::lock_guard lock(c.colourLock_);
      c.colour_ = state.colour;
    }
    c.shareColourMap();
    view.setColors(state.colours);
    if (network && state.colours) network->setPropertiesOfVertices(state.colours, "Color");
    view.setHiddenVertices(state.hidden);
    view.setLegends(state.legends);
    if (state.filterTitle != c.filter_.selected) {
      c.filter_.selected = state.filterTitle;
      c.updateFilterSelector();
      view.prepareFrame();  // the new property's values, before the range is put back
    }
    view.setMinFilterProperty(state.minFilter);
    view.setMaxFilterProperty(state.maxFilter);
    view.setWeightMinThreshold(state.minWeight);
    view.setWeightMaxThreshold(state.maxWeight);
    view.setSelectedVertices(state.selection);
    if (state.positions) {
      view.setPositions(copyOf(*state.positions));
      if (network) network->setPropertiesOfVertices(view.positions(), "Position");
    }
    c.refresh(Panel::Colour);
    c.refresh(Panel::Properties);
    c.refresh(Panel::NodesSelected);
    c.restoring_ = false;
  }
};

void VXLController::recordUndo(UndoKind kind) {
  if (restoring_ || !view_->network()) return;
  if (!undo_) undo_ = std::make_shared<UndoHistory>();
  undo_->stack.record(UndoHistory::capture(*this, kind == UndoKind::Positions),
                      static_cast<int>(kind), mergeFor(kind));
}

bool VXLController::canUndo() const {
  return undo_ && undo_->stack.canUndo();
}

bool VXLController::canRedo() const {
  return undo_ && undo_->stack.canRedo();
}

void VXLController::clearUndoHistory() {
  if (undo_) undo_->stack.clear();
}

void VXLController::undo() {
  if (!canUndo()) return;
  // The state being left keeps the positions when the one restored has them.
  const auto left = [this](const UndoHistory::State& target) {
    return UndoHistory::capture(*this, target.positions != nullptr);
  };
  if (auto state = undo_->stack.undo(left)) UndoHistory::restore(*this, *state);
}

void VXLController::redo() {
  if (!canRedo()) return;
  const auto left = [this](const UndoHistory::State& target) {
    return UndoHistory::capture(*this, target.positions != nullptr);
  };
  if (auto state = undo_->stack.redo(left)) UndoHistory::restore(*this, *state);
}

// The undo history on plain integers: order, redo, merging of quick changes
// of one kind, the bound, and a new change dropping the redo history; the
// controller's steps putting back colours, selection, filter, thresholds and
// positions.
#include <gtest/gtest.h>

#include "../support/networks.h"
#include "app/VXLController.h"
#include "app/undostack.h"

namespace {

using Stack = app::UndoStack<int>;
using app::UndoMerge;
using namespace std::chrono_literals;

// Undoes or redoes on `value` as the controller does.
bool undo(Stack& stack, int& value) {
  auto state = stack.undo([&](const int&) { return value; });
  if (state) value = *state;
  return state.has_value();
}
bool redo(Stack& stack, int& value) {
  auto state = stack.redo([&](const int&) { return value; });
  if (state) value = *state;
  return state.has_value();
}

}  // namespace

TEST(UndoStack, UndoRedoAndMerging) {
  Stack stack;
  int value = 0;
  const auto t0 = Stack::Clock::now();
  stack.record(value, 1, UndoMerge::Separate, t0);
  value = 10;  // A
  stack.record(value, 2, UndoMerge::Separate, t0);
  value = 20;  // B
  ASSERT_TRUE(undo(stack, value));
  EXPECT_EQ(value, 10);
  ASSERT_TRUE(undo(stack, value));
  EXPECT_EQ(value, 0);
  EXPECT_FALSE(undo(stack, value));
  ASSERT_TRUE(redo(stack, value));
  EXPECT_EQ(value, 10);
  // A new change forgets what could be redone.
  stack.record(value, 3, UndoMerge::Separate, t0);
  value = 30;
  EXPECT_FALSE(stack.canRedo());

  // A drag: quick changes of one kind make one step; a pause or another
  // kind starts a new one.
  stack.clear();
  value = 0;
  for (int i = 1; i <= 5; ++i) {
    stack.record(value, 7, UndoMerge::WithSameKind, t0 + i * 100ms);
    value = i;
  }
  stack.record(value, 7, UndoMerge::WithSameKind, t0 + 2s);
  value = 99;
  ASSERT_TRUE(undo(stack, value));
  EXPECT_EQ(value, 5);
  ASSERT_TRUE(undo(stack, value));
  EXPECT_EQ(value, 0);
  EXPECT_FALSE(stack.canUndo());
}

TEST(UndoStack, KeepsOnlyTheNewestSteps) {
  Stack stack(3);
  int value = 0;
  for (int i = 1; i <= 5; ++i) {
    stack.record(value, 0, UndoMerge::Separate);
    value = i;
  }
  int undone = 0;
  while (undo(stack, value)) ++undone;
  EXPECT_EQ(undone, 3);
  EXPECT_EQ(value, 2);
}

TEST(ControllerUndo, EachStepPutsBackExactlyWhatWasThere) {
  auto controller = VXLController::init();
  controller->setNetwork(testing_support::chain({1, 2, 3, 4, 5}));  // edge-weighted
  VXLNetworkView& view = *controller->networkView();
  view.prepareFrame();
  EXPECT_FALSE(controller->canUndo()) << "installing starts a fresh history";
  const auto vectors = [&] { return testing_support::vectorsOf(*view.positions()); };
  const auto startPositions = vectors();
  const auto startColours = view.colors();
  const float startMax = view.maxFilterProperty();
  const float startWeight = view.weightMinThreshold();

  controller->selectColorMap("Gray");
  const auto grey = view.colors();
  controller->setSelectedVertices({1, 3});
  controller->setMaxFilterProperty(1);
  controller->setWeightMinThreshold(2);
  controller->randomizePositionsWithSizeX(3, 3, 3);
  const auto randomized = vectors();
  ASSERT_NE(randomized, startPositions);

  controller->undo();
  EXPECT_EQ(vectors(), startPositions);
  EXPECT_EQ(view.weightMinThreshold(), 2.0f) << "one step at a time";
  controller->undo();
  EXPECT_EQ(view.weightMinThreshold(), startWeight);
  controller->undo();
  EXPECT_EQ(view.maxFilterProperty(), startMax);
  controller->undo();
  EXPECT_TRUE(view.selectedIndices().empty());
  controller->undo();
  EXPECT_EQ(view.colors(), startColours);
  EXPECT_NE(controller->selectedColorMap(), "Gray");
  EXPECT_FALSE(controller->canUndo());

  // Redo walks forward again, positions included.
  for (int i = 0; i < 5; ++i) controller->redo();
  EXPECT_EQ(controller->selectedColorMap(), "Gray");
  EXPECT_EQ(view.colors(), grey);
  EXPECT_EQ(view.selectedIndices(), (std::vector<std::uint64_t>{1, 3}));
  EXPECT_EQ(vectors(), randomized);
  EXPECT_FALSE(controller->canRedo());
}

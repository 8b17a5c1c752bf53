#pragma once
// A bounded undo and redo history of states. Each entry is the state before
// a change; undo hands back the entry to restore and keeps the state being
// left for redo. Changes of one kind that follow each other closely (a
// slider being dragged) may share one entry. Plain C++, any copyable state.
#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <utility>

namespace app {

enum class UndoMerge { Separate, WithSameKind };

template <class State>
class UndoStack {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kMergeWindow{400};

  explicit UndoStack(std::size_t limit = 64) : limit_(limit) {}

  // Records the state before a change of `kind`. With WithSameKind, a change
  // of the kind recorded last, within the merge window of it, adds nothing
  // (the earlier state is the one to go back to). Clears the redo history.
  void record(State before, int kind, UndoMerge merge, Clock::time_point now = Clock::now()) {
    redo_.clear();
    const bool joins = merge == UndoMerge::WithSameKind && !undo_.empty() &&
                       undo_.back().kind == kind && now - undo_.back().at < kMergeWindow;
    if (joins) {
      undo_.back().at = now;
      return;
    }
    undo_.push_back({std::move(before), kind, now});
    if (undo_.size() > limit_) undo_.pop_front();
  }
  bool canUndo() const { return !undo_.empty(); }
  bool canRedo() const { return !redo_.empty(); }
  // The state to go back to (the caller restores it), or nothing. `current`
  // makes the state being left, which redo brings back; it is given the
  // state to restore so it can capture what that state replaces.
  template <class Capture>
  std::optional<State> undo(Capture current) {
    return move(undo_, redo_, current);
  }
  template <class Capture>
  std::optional<State> redo(Capture current) {
    return move(redo_, undo_, current);
  }
  void clear() {
    undo_.clear();
    redo_.clear();
  }

 private:
  struct Entry {
    State state;
    int kind;
    Clock::time_point at;
  };
  template <class Capture>
  std::optional<State> move(std::deque<Entry>& from, std::deque<Entry>& to, Capture& current) {
    if (from.empty()) return std::nullopt;
    Entry entry = std::move(from.back());
    from.pop_back();
    // Never merged with: a change after an undo starts a step of its own.
    to.push_back({current(entry.state), entry.kind, Clock::time_point{}});
    return std::move(entry.state);
  }

  std::size_t limit_;
  std::deque<Entry> undo_, redo_;
};

}  // namespace app

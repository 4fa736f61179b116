#include "components.h"

#include <algorithm>
#include <limits>

namespace filtermath {
namespace {

// Tarjan's algorithm: a depth-first search in which each state learns the
// earliest one that it can get back to. One that gets back no further than to
// itself closes a component, whose states are then on top of the stack.
class Search {
 public:
  Search(const double *matrix, int32_t n, Scratch *memory)
      : matrix_(matrix),
        n_(n),
        marks_(at(n), memory),
        found_{List<int32_t>(memory), List<int32_t>(memory)} {
    found_.states.reserve(at(n));
    found_.begins.reserve(at(n) + 1);
    found_.begins.push_back(0);
    for (int32_t state = 0; state < n; ++state)
      if (marks_[at(state)].entered == 0) visit(state);
  }

  Components take() { return std::move(found_); }

 private:
  static std::size_t at(int32_t state) { return static_cast<std::size_t>(state); }

  struct Mark {
    int32_t entered = 0;   // when the state was; 0: not yet
    int32_t earliest = 0;  // when the earliest was that it gets back to
    int32_t below = 0;     // the state under it on the stack
  };

  void visit(int32_t state) {
    Mark &mark = marks_[at(state)];
    mark.entered = mark.earliest = ++clock_;
    mark.below = top_;
    top_ = state;
    const double *row = matrix_ + at(state) * at(n_);
    for (int32_t next = 0; next < n_; ++next) {
      if (row[next] == 0.0) continue;
      if (marks_[at(next)].entered == 0) visit(next);
      mark.earliest = std::min(mark.earliest, marks_[at(next)].earliest);
    }
    if (mark.earliest == mark.entered) close(state);
  }

  void close(int32_t first) {
    int32_t state = -1;
    do {
      state = top_;
      top_ = marks_[at(state)].below;
      marks_[at(state)].earliest = closed;
      found_.states.push_back(state);
    } while (state != first);
    std::sort(found_.states.begin() + found_.begins.back(), found_.states.end());
    found_.begins.push_back(static_cast<int32_t>(found_.states.size()));
  }

  static constexpr int32_t closed = std::numeric_limits<int32_t>::max();

  const double *matrix_;
  int32_t n_;
  int32_t clock_ = 0;
  List<Mark> marks_;
  int32_t top_ = 0;  // of the stack of states that belong to no component yet
  Components found_;
};

}  // namespace

Components components(const double *matrix, int32_t n, Scratch *memory) {
  return Search(matrix, n, memory).take();
}

}  // namespace filtermath

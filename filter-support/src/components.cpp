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
  Search(const double *matrix, int32_t n)
      : matrix_(matrix), n_(n), entered_(at(n), 0), earliest_(at(n), 0) {
    open_.reserve(at(n));
    found_.states.reserve(at(n));
    found_.begins.reserve(at(n) + 2);
    found_.begins.push_back(0);
    for (int32_t state = 0; state < n; ++state)
      if (entered_[at(state)] == 0) visit(state);
  }

  Components take() { return std::move(found_); }

 private:
  static std::size_t at(int32_t state) { return static_cast<std::size_t>(state); }

  void visit(int32_t state) {
    entered_[at(state)] = earliest_[at(state)] = ++clock_;
    open_.push_back(state);
    const double *row = matrix_ + at(state) * at(n_);
    for (int32_t next = 0; next < n_; ++next) {
      if (row[next] == 0.0) continue;
      if (entered_[at(next)] == 0) visit(next);
      earliest_[at(state)] = std::min(earliest_[at(state)], earliest_[at(next)]);
    }
    if (earliest_[at(state)] == entered_[at(state)]) close(state);
  }

  void close(int32_t first) {
    int32_t state = -1;
    do {
      state = open_.back();
      open_.pop_back();
      earliest_[at(state)] = closed;
      found_.states.push_back(state);
    } while (state != first);
    std::sort(found_.states.begin() + found_.begins.back(), found_.states.end());
    found_.begins.push_back(static_cast<int32_t>(found_.states.size()));
  }

  static constexpr int32_t closed = std::numeric_limits<int32_t>::max();

  const double *matrix_;
  int32_t n_;
  int32_t clock_ = 0;
  std::vector<int32_t> entered_;   // when each was; 0: not yet
  std::vector<int32_t> earliest_;  // when the earliest was that it gets back to
  std::vector<int32_t> open_;
  Components found_;
};

}  // namespace

Components components(const double *matrix, int32_t n) { return Search(matrix, n).take(); }

}  // namespace filtermath

// When memory runs out inside an operation on matrices, its destination stays as it
// was: shape, storage and elements. Each allocation of each operation fails once.
//
// This program is a host of its own, whose memory calls can be made to fail, and so
// can the operators and malloc, which the C++ library and Eigen ask. It is apart from
// the other tests, which a memory checker is to see with the allocator as it is.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include "filtermath/known_symbol.h"
#include "runtime/blocks.h"
#include "runtime/symbols.h"
#include "support.h"

namespace {

// How many allocations succeed before one fails; below 0, all.
long allocations_left = -1;
long blocks_alive = 0;

bool fails() { return allocations_left >= 0 && allocations_left-- == 0; }

}  // namespace

// The sanitizers have a malloc of their own, which must stay.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *malloc(std::size_t size) { return fails() ? nullptr : __libc_malloc(size); }
static void *unlimited_malloc(std::size_t size) { return __libc_malloc(size); }
constexpr bool sees_malloc = true;
#else
static void *unlimited_malloc(std::size_t size) { return std::malloc(size); }
constexpr bool sees_malloc = false;
#endif

void *operator new(std::size_t size) {
  void *memory = fails() ? nullptr : unlimited_malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept {
  return unlimited_malloc(size != 0 ? size : 1);
}
// Which the lists of large models ask.
void *operator new(std::size_t size, std::align_val_t alignment) {
  const auto unit = static_cast<std::size_t>(alignment);
  void *memory = fails() ? nullptr : std::aligned_alloc(unit, (size + unit - 1) / unit * unit);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }

void *sysmem_newptrclear(t_long size) {
  if (fails()) return nullptr;
  void *block = runtime::new_block(size, true);
  if (block != nullptr) ++blocks_alive;
  return block;
}
void *sysmem_newptr(t_long size) { return sysmem_newptrclear(size); }
void *sysmem_resizeptrclear(void *block, t_long size) {
  return fails() ? nullptr : runtime::resize_block(block, size);
}
void sysmem_freeptr(void *block) {
  if (block != nullptr) --blocks_alive;
  runtime::free_block(block);
}
t_symbol *gensym(const char *text) { return fails() ? nullptr : runtime::intern(text); }

namespace {

using namespace support;
using Values = std::vector<double>;

struct State {
  explicit State(const _matrix64 *matrix)
      : cols(matrix->cols),
        rows(matrix->rows),
        capacity(matrix->capacity),
        data(matrix->data),
        elements(stored(matrix)) {}

  int32_t cols;
  int32_t rows;
  int32_t capacity;
  const double *data;
  Values elements;
};

void expect_the_same(const State &x, const State &y) {
  EXPECT_EQ(x.cols, y.cols);
  EXPECT_EQ(x.rows, y.rows);
  EXPECT_EQ(x.capacity, y.capacity);
  EXPECT_EQ(x.data, y.data);
  EXPECT_EQ(x.elements, y.elements);
}

// Runs an operation with memory for no allocation, for one, and so on until it is
// enough. @return how many it takes
template <typename Operation>
long exhaust(const Matrix &destination, Operation operation) {
  const State before(destination.get());
  const long alive = blocks_alive;
  for (long successes = 0;; ++successes) {
    bool raised = false;
    allocations_left = successes;
    try {
      operation(destination.get());
    } catch (const std::bad_alloc &) {
      raised = true;
    }
    const bool enough = allocations_left >= 0;
    allocations_left = -1;
    EXPECT_NE(raised, enough) << "a failure is raised, and nothing else is";
    if (enough) return successes;
    expect_the_same(State(destination.get()), before);
    EXPECT_EQ(blocks_alive, alive) << "nothing leaks";
    if (testing::Test::HasFailure()) return successes;
  }
}

// n x n. Its states form a ring, a single component, or else pairs, each driven by
// those before it.
Matrix square(int32_t n, bool ring) {
  Matrix m = shaped(n, n);
  for (int32_t row = 0; row < n; ++row) {
    for (int32_t column = 0; column <= (row | 1) && column < n; ++column)
      matrix64_set(m.get(), column, row, 0.125 * static_cast<double>(row - column));
    matrix64_set(m.get(), row, row, 4.0 + row);
  }
  if (ring) matrix64_set(m.get(), n - 1, 0, 0.5);
  return m;
}

Matrix oblong(int32_t cols, int32_t rows) {
  Matrix m = shaped(cols, rows);
  for (int32_t i = 0; i < cols * rows; ++i) m->data[i] = 1.0 + i;
  return m;
}

// Runs an operation into a destination that is to be reshaped, and into one that has
// its shape already, and then has it right.
template <typename Operation>
void expect_all_or_nothing(const char *name, Operation operation) {
  SCOPED_TRACE(name);
  const Matrix expected(matrix64_new());
  operation(expected.get());

  const Matrix other = matrix({{7.0, 8.0, 9.0}});
  EXPECT_GT(exhaust(other, operation), 0) << "it allocates";
  EXPECT_EQ(stored(other.get()), stored(expected.get()));

  const Matrix same = shaped(expected->cols, expected->rows);
  std::fill_n(same->data, same->capacity, 5.0);
  exhaust(same, operation);
  EXPECT_EQ(stored(same.get()), stored(expected.get()));
}

TEST(ExhaustedMemory, LeavesAMatrixAsItWasWhenReshaped) {
  expect_all_or_nothing("resize", [](_matrix64 *m) {
    matrix64_resize(m, 20, 30);
    std::fill_n(m->data, 600, 1.0);
  });
  expect_all_or_nothing("identity", [](_matrix64 *m) { matrix64_identity(m, 30); });
}

TEST(ExhaustedMemory, LeavesTheDestinationOfEachElementwiseOperation) {
  const Matrix a = oblong(30, 20);
  const Matrix b = oblong(30, 20);
  expect_all_or_nothing("copy", [&](_matrix64 *m) { matrix64_copy(m, a.get()); });
  expect_all_or_nothing("transpose", [&](_matrix64 *m) { matrix64_transpose(a.get(), m); });
  expect_all_or_nothing("scale", [&](_matrix64 *m) { matrix64_scale(m, a.get(), 3.0); });
  expect_all_or_nothing("add", [&](_matrix64 *m) { matrix64_add(m, a.get(), b.get()); });
  expect_all_or_nothing("subtract", [&](_matrix64 *m) { matrix64_subtract(m, a.get(), b.get()); });
}

TEST(ExhaustedMemory, LeavesTheDestinationOfAProduct) {
  const Matrix a = oblong(30, 20);
  const Matrix b = oblong(20, 30);
  const Matrix infinite = oblong(20, 30);
  infinite->data[0] = infinity;
  for (const bool checked : {true, false}) {
    expect_all_or_nothing("multiply",
                          [&](_matrix64 *m) { matrix64_multiply(m, a.get(), b.get(), checked); });
    expect_all_or_nothing("multiply what is not finite", [&](_matrix64 *m) {
      matrix64_multiply(m, a.get(), infinite.get(), checked);
    });
  }
  expect_all_or_nothing("multiply by columns",
                        [&](_matrix64 *m) { matrix64_multiply_correctly(m, a.get(), b.get()); });
}

TEST(ExhaustedMemory, LeavesTheDestinationOfAnInverse) {
  for (const int32_t n : {1, 2, 3, 4, 5, 8, 40}) {
    for (const bool ring : {true, false}) {
      SCOPED_TRACE(std::to_string(n) + (ring ? " states in a ring" : " states in pairs"));
      const Matrix a = square(n, ring);
      expect_all_or_nothing("inverse", [&](_matrix64 *m) { matrix64_inverse(m, a.get()); });

      const Matrix expected(matrix64_new());
      matrix64_inverse(expected.get(), a.get());
      const long allocations = exhaust(a, [](_matrix64 *m) { matrix64_inverse(m, m); });
      EXPECT_TRUE(n <= 4 || allocations > 0 || !sees_malloc) << "only small ones need no memory";
      EXPECT_EQ(stored(a.get()), stored(expected.get())) << "in place";
    }
  }
}

TEST(ExhaustedMemory, LeavesTheDestinationOfAQuotient) {
  for (const bool ring : {true, false}) {
    const Matrix a = square(20, ring);
    const Matrix tall = oblong(20, 20);
    const Matrix row = oblong(20, 1);
    for (const bool checked : {true, false})
      expect_all_or_nothing("divide left", [&](_matrix64 *m) {
        matrix64_divide_left(m, a.get(), tall.get(), checked);
      });
    expect_all_or_nothing("divide right",
                          [&](_matrix64 *m) { matrix64_divide_right(m, row.get(), a.get()); });
  }
}

TEST(ExhaustedMemory, LeavesTheCoefficientsOfACharacteristicPolynomial) {
  for (const bool ring : {true, false}) {
    const Matrix a = square(12, ring);
    expect_all_or_nothing("polynomial", [&](_matrix64 *m) { filtermath_poly(a.get(), m); });
  }
}

// How many allocations the bilinear transform of a lowpass takes. Each of them fails once.
long discretised(int order) {
  const Model analog = realised(chebyshev2(order, 96.0));
  const Model expected = copy(analog.get());
  filtermath_bilinear(expected.get(), 2.0);
  for (long successes = 0;; ++successes) {
    const Model ss = copy(analog.get());
    const long alive = blocks_alive;
    bool raised = false;
    allocations_left = successes;
    try {
      filtermath_bilinear(ss.get(), 2.0);
    } catch (const std::bad_alloc &) {
      raised = true;
    }
    const bool enough = allocations_left >= 0;
    allocations_left = -1;
    EXPECT_NE(raised, enough) << "a failure is raised, and nothing else is";
    EXPECT_EQ(blocks_alive, alive) << "nothing leaks";
    if (enough) {
      EXPECT_EQ(stored(ss->a), stored(expected->a));
    }
    if (enough || testing::Test::HasFailure()) return successes;
  }
}

TEST(ExhaustedMemory, IsRaisedByATransformationOfManySections) {
  EXPECT_EQ(discretised(5), 0) << "a filter of usual order needs none";
  EXPECT_GT(discretised(60), 2);
}

TEST(ExhaustedMemory, LeavesASymbolToBeAskedForAgain) {
  allocations_left = 0;
  EXPECT_THROW(filtermath::required_symbol<"lowpass">(), std::bad_alloc);
  allocations_left = 0;
  EXPECT_EQ(filtermath::known_symbol<"lowpass">(), nullptr);
  EXPECT_STREQ(filtermath::required_symbol<"lowpass">()->name, "lowpass");
  allocations_left = 0;
  EXPECT_NE(filtermath::known_symbol<"lowpass">(), nullptr) << "it needs no more memory";
  allocations_left = -1;
  EXPECT_EQ(filtermath::known_symbol<"lowpass">(), gensym("lowpass"));
}

TEST(Memory, OfAModelIsReleasedWithIt) {
  const long alive = blocks_alive;
  model({{1.0, 2.0}, {3.0, 4.0}}, {5.0, 6.0}, {7.0, 8.0}, 9.0).reset();
  EXPECT_EQ(blocks_alive, alive);
}

}  // namespace

// Every operation on operands of every small shape, also without columns or rows,
// against the plain loops that it stands for. Under the sanitizers this is also
// where a read or a write beside the elements shows.

#include <gtest/gtest.h>

#include <string>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

constexpr int32_t largest = 4;

struct Shape {
  int32_t cols;
  int32_t rows;
};

std::vector<Shape> shapes() {
  std::vector<Shape> all;
  for (int32_t cols = 0; cols <= largest; ++cols)
    for (int32_t rows = 0; rows <= largest; ++rows) all.push_back({cols, rows});
  return all;
}

std::size_t size(Shape shape) { return static_cast<std::size_t>(shape.cols * shape.rows); }

// Small whole numbers, all different and none 0, so that sums are exact and no element
// can pass for another. A heavy diagonal keeps squares far from singular.
Matrix operand(Shape shape, double first) {
  Matrix m = shaped(shape.cols, shape.rows);
  for (std::size_t i = 0; i < size(shape); ++i) m->data[i] = first + static_cast<double>(i);
  for (int32_t i = 0; i < std::min(shape.cols, shape.rows); ++i)
    matrix64_set(m.get(), i, i, matrix64_get(m.get(), i, i) + 1000.0);
  return m;
}

// What an operation may find in its destination: nothing yet, or other elements.
std::vector<Matrix> destinations() {
  std::vector<Matrix> all;
  all.emplace_back(matrix64_new());
  all.push_back(matrix({{7.0, 8.0, 9.0}}));
  return all;
}

// What an operation is to leave: a status, a shape and the elements.
struct Outcome {
  int status;
  Shape shape;
  Values elements;
};

// Runs an operation into every destination. One that is refused leaves it as it was.
template <typename Operation>
void expect(const Outcome &expected, Operation operation) {
  for (const Matrix &result : destinations()) {
    const Shape before{result->cols, result->rows};
    const Values held = stored(result.get());
    const bool refused = expected.status == -1;
    ASSERT_EQ(operation(result.get()), expected.status);
    ASSERT_EQ(result->cols, refused ? before.cols : expected.shape.cols);
    ASSERT_EQ(result->rows, refused ? before.rows : expected.shape.rows);
    ASSERT_EQ(result->capacity, result->cols * result->rows);
    ASSERT_EQ(stored(result.get()), refused ? held : expected.elements);
  }
}

Outcome refusal() { return {-1, {}, {}}; }

Outcome product(const Matrix &a, const Matrix &b, bool checked) {
  if (a->cols != b->rows) return refusal();
  Outcome outcome{0, {b->cols, a->rows}, Values(size({b->cols, a->rows}))};
  for (int32_t i = 0; i < a->rows; ++i)
    for (int32_t j = 0; j < b->cols; ++j)
      for (int32_t k = 0; k < a->cols; ++k) {
        const auto place = static_cast<std::size_t>(i * (checked ? b->cols : a->rows) + j);
        if (place < outcome.elements.size())
          outcome.elements[place] += matrix64_get(b.get(), j, k) * matrix64_get(a.get(), k, i);
      }
  return outcome;
}

Outcome product_by_columns(const Matrix &a, const Matrix &b) {
  if (a->rows != b->cols) return refusal();
  Outcome outcome{0, {a->cols, b->rows}, Values(size({a->cols, b->rows}))};
  for (int32_t i = 0; i < a->cols; ++i)
    for (int32_t j = 0; j < b->rows; ++j)
      for (int32_t k = 0; k < a->rows; ++k)
        outcome.elements[static_cast<std::size_t>(i * b->rows + j)] +=
            matrix64_get(b.get(), k, j) * matrix64_get(a.get(), i, k);
  return outcome;
}

Matrix inverse(const Matrix &m) {
  Matrix result(matrix64_new());
  EXPECT_EQ(matrix64_inverse(result.get(), m.get()), 0);
  return result;
}

Shape shape_of(const Matrix &m) { return {m->cols, m->rows}; }

bool square(const Matrix &m) { return m->cols == m->rows; }

std::string to_text(Shape a, Shape b) {
  const auto shape = [](Shape s) {
    return std::to_string(s.cols) + " x " + std::to_string(s.rows);
  };
  return shape(a) + " and " + shape(b);
}

// Checks two operands of each pair of shapes, up to the first fault.
template <typename Check>
void on_each_pair(Check check) {
  for (const Shape x : shapes()) {
    for (const Shape y : shapes()) {
      SCOPED_TRACE(to_text(x, y));
      check(operand(x, 1.0), operand(y, 101.0));
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(Matrix64OfAnyShape, IsMultiplied) {
  on_each_pair([](const Matrix &a, const Matrix &b) {
    for (const bool checked : {true, false})
      expect(product(a, b, checked), [&](_matrix64 *result) {
        return matrix64_multiply(result, a.get(), b.get(), checked);
      });
    expect(product_by_columns(a, b), [&](_matrix64 *result) {
      return matrix64_multiply_correctly(result, a.get(), b.get());
    });
  });
}

TEST(Matrix64OfAnyShape, IsDivided) {
  on_each_pair([](const Matrix &a, const Matrix &b) {
    for (const bool checked : {true, false})
      expect(square(a) ? product(inverse(a), b, checked) : refusal(), [&](_matrix64 *result) {
        return matrix64_divide_left(result, a.get(), b.get(), checked);
      });
    expect(square(b) ? product(a, inverse(b), false) : refusal(),
           [&](_matrix64 *result) { return matrix64_divide_right(result, a.get(), b.get()); });
  });
}

TEST(Matrix64OfAnyShape, IsAddedAndSubtracted) {
  on_each_pair([](const Matrix &a, const Matrix &b) {
    const bool fits = a->cols == b->cols && a->rows == b->rows;
    Outcome sum{0, shape_of(a), stored(a.get())};
    Outcome difference = sum;
    for (std::size_t i = 0; fits && i < sum.elements.size(); ++i) {
      sum.elements[i] += b->data[i];
      difference.elements[i] -= b->data[i];
    }
    expect(fits ? sum : refusal(),
           [&](_matrix64 *result) { return matrix64_add(result, a.get(), b.get()); });
    expect(fits ? difference : refusal(),
           [&](_matrix64 *result) { return matrix64_subtract(result, a.get(), b.get()); });
  });
}

TEST(Matrix64OfAnyShape, IsInverted) {
  for (const Shape x : shapes()) {
    SCOPED_TRACE(to_text(x, x));
    const Matrix a = operand(x, 1.0);
    const auto invert = [&](_matrix64 *result) { return matrix64_inverse(result, a.get()); };
    if (!square(a)) {
      expect(refusal(), invert);
      continue;
    }
    const Matrix inverted = inverse(a);
    expect({0, x, stored(inverted.get())}, invert);
    const Outcome identity = product(inverted, a, true);
    for (std::size_t i = 0; i < size(x); ++i)
      ASSERT_NEAR(identity.elements[i], i % static_cast<std::size_t>(x.cols + 1) == 0, 1e-14);
  }
}

TEST(Matrix64OfAnyShape, IsTransposed) {
  for (const Shape x : shapes()) {
    SCOPED_TRACE(to_text(x, x));
    const Matrix a = operand(x, 1.0);
    Outcome outcome{0, {x.rows, x.cols}, Values(size(x))};
    for (int32_t r = 0; r < x.cols; ++r)
      for (int32_t c = 0; c < x.rows; ++c) {
        const auto place = static_cast<std::size_t>(r * x.cols + c);
        outcome.elements[static_cast<std::size_t>(c * x.cols + r)] =
            place < size(x) ? a->data[place] : 0.0;
      }
    expect(outcome, [&](_matrix64 *result) {
      matrix64_transpose(a.get(), result);
      return 0;
    });
  }
}

TEST(Matrix64OfAnyShape, IsScaledCopiedAndCleared) {
  for (const Shape x : shapes()) {
    SCOPED_TRACE(to_text(x, x));
    const Matrix a = operand(x, 1.0);
    Outcome outcome{0, x, stored(a.get())};
    expect(outcome, [&](_matrix64 *result) {
      matrix64_copy(result, a.get());
      return 0;
    });
    for (double &element : outcome.elements) element *= -0.5;
    outcome.status = x.cols * x.rows;
    expect(outcome, [&](_matrix64 *result) { return matrix64_scale(result, a.get(), -0.5); });
    outcome.elements.assign(size(x), 0.0);
    outcome.status = 0;
    expect(outcome, [&](_matrix64 *result) {
      matrix64_copy(result, a.get());
      matrix64_clear(result);
      return 0;
    });
  }
}

TEST(Matrix64OfAnyShape, BecomesAnyOther) {
  for (const Shape x : shapes()) {
    for (const Shape y : shapes()) {
      SCOPED_TRACE(to_text(x, y));
      const Matrix a = operand(x, 1.0);
      Values elements = stored(a.get());
      elements.resize(size(y), 0.0);
      matrix64_resize(a.get(), y.cols, y.rows);
      ASSERT_EQ(a->cols, y.cols);
      ASSERT_EQ(a->rows, y.rows);
      ASSERT_EQ(stored(a.get()), elements);
    }
  }
}

// A record that was never reshaped has no storage at all, as the first operand either.
TEST(Matrix64OfAnyShape, NeedsNoStorageToBeEmpty) {
  const Matrix none(matrix64_new());
  const Matrix column = shaped(0, 3);
  const Outcome empty{0, {0, 0}, {}};
  for (const bool checked : {true, false}) {
    expect(empty, [&](_matrix64 *result) {
      return matrix64_multiply(result, none.get(), none.get(), checked);
    });
    expect(empty, [&](_matrix64 *result) {
      return matrix64_divide_left(result, none.get(), none.get(), checked);
    });
    expect(refusal(), [&](_matrix64 *result) {
      return matrix64_multiply(result, none.get(), column.get(), checked);
    });
  }
  expect(empty, [&](_matrix64 *result) {
    return matrix64_multiply_correctly(result, none.get(), none.get());
  });
  expect(empty,
         [&](_matrix64 *result) { return matrix64_divide_right(result, none.get(), none.get()); });
  expect(empty, [&](_matrix64 *result) { return matrix64_add(result, none.get(), none.get()); });
  expect(empty,
         [&](_matrix64 *result) { return matrix64_subtract(result, none.get(), none.get()); });
  expect(empty, [&](_matrix64 *result) { return matrix64_scale(result, none.get(), 2.0); });
  expect(empty, [&](_matrix64 *result) {
    matrix64_copy(result, none.get());
    matrix64_transpose(none.get(), result);
    matrix64_clear(result);
    return 0;
  });
}

}  // namespace

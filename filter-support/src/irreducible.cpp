// Inverses and eigenvalues by the irreducible form of a matrix: permuted so that
// its strongly connected components are blocks on the diagonal with zeros on one
// side of them.
//
// The models of a cascade have blocks of one or two states, or of up to four once
// a band transformation has tied each state to a second one, and neither the
// transformations nor the bilinear transform change that. Their eigenvalues are
// those of the blocks. Asked of the whole matrix, which is far from normal, a QR
// iteration would move them by a root of the rounding, and an LU decomposition
// with pivoting would smear rounding into the zeros first.

#include "irreducible.h"

#include <Eigen/Dense>
#include <algorithm>
#include <limits>

#include "components.h"
#include "roots.h"
#include "scratch.h"

namespace filtermath {
namespace {

using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
using Index = Eigen::Index;
using States = Eigen::Map<const Eigen::Matrix<int32_t, Eigen::Dynamic, 1>>;

// Up to this size a block needs no memory of its own.
constexpr int usual_states = 4;
template <int Order>
using Usual =
    Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Order, usual_states, usual_states>;
using UsualBlock = Usual<Eigen::ColMajor>;
using UsualRowMajor = Usual<Eigen::RowMajor>;

Eigen::Map<const RowMajor> mapped(const _matrix64 *matrix) {
  return {matrix->data, matrix->rows, matrix->cols};
}

// The matrix with its components as blocks on the diagonal.
RowMajor reordered(const Eigen::Map<const RowMajor> &matrix, const Components &parts) {
  const States order(parts.states.data(), matrix.rows());
  return matrix(order, order);
}

// The solver leaves its result unwritten when it gives up, so that its verdict
// has to be asked for before the result is read.
template <typename Matrix>
bool append_eigenvalues(const Matrix &matrix, t_complex64list &values) {
  if (matrix.size() == 1) {
    values.emplace_back(matrix(0, 0));
    return true;
  }
  const Eigen::EigenSolver<Matrix> solver(matrix, false);
  if (solver.info() != Eigen::Success) return false;
  values.insert(values.end(), solver.eigenvalues().begin(), solver.eigenvalues().end());
  return true;
}

bool append_block_eigenvalues(const Eigen::Map<const RowMajor> &matrix, t_complex64list &values) {
  if (!matrix.allFinite()) return false;
  Scratch scratch;
  const Components parts = components(matrix.data(), static_cast<int32_t>(matrix.rows()), &scratch);
  for (std::size_t k = 0; k + 1 < parts.begins.size(); ++k) {
    const States states(parts.states.data() + parts.begins[k],
                        parts.begins[k + 1] - parts.begins[k]);
    const bool found = states.size() <= usual_states
                           ? append_eigenvalues(UsualBlock(matrix(states, states)), values)
                           : append_eigenvalues(Eigen::MatrixXd(matrix(states, states)), values);
    if (!found) return false;
  }
  return true;
}

// Block substitution, the components being in order from `begin` on: a row of the
// matrix has elements in its own block B and in columns of earlier ones, whose rows
// X of the inverse are known by then. Its own are B^-1 (I - sum of a X).
template <typename Block>
void invert_block(const RowMajor &matrix, Index begin, Index size, RowMajor &result) {
  const Block inverse = Block(matrix.block(begin, begin, size, size)).inverse();
  auto before = result.block(begin, 0, size, begin);
  for (Index row = 0; row < size; ++row)
    for (Index column = 0; column < begin; ++column)
      if (const double a = matrix(begin + row, column); a != 0.0)
        before.row(row) -= a * result.row(column).head(begin);
  for (Index column = 0; column < begin; ++column)
    before.col(column) = (inverse.lazyProduct(before.col(column))).eval();
  result.block(begin, begin, size, size) = inverse;
}

// Made aside, since Eigen allocates on the way.
template <typename Block, typename Result>
void store_inverse(_matrix64 *dst, const Eigen::Map<const RowMajor> &matrix) {
  const Result inverse = Block(matrix).inverse();
  matrix64_resize(dst, static_cast<int32_t>(inverse.cols()), static_cast<int32_t>(inverse.rows()));
  Eigen::Map<RowMajor>(dst->data, inverse.rows(), inverse.cols()) = inverse;
}

void store_whole_inverse(_matrix64 *dst, const Eigen::Map<const RowMajor> &matrix) {
  if (matrix.rows() <= usual_states)
    store_inverse<UsualBlock, UsualRowMajor>(dst, matrix);
  else
    store_inverse<Eigen::MatrixXd, RowMajor>(dst, matrix);
}

// A matrix without zeros is a single component; to see that takes no memory.
bool is_full(const Eigen::Map<const RowMajor> &matrix) { return (matrix.array() != 0.0).all(); }

}  // namespace

void inverse(_matrix64 *dst, const _matrix64 *src) {
  const int32_t n = src->cols;
  if (is_full(mapped(src))) return store_whole_inverse(dst, mapped(src));
  Scratch scratch;
  const Components parts = components(src->data, n, &scratch);
  if (parts.begins.size() == 2) return store_whole_inverse(dst, mapped(src));
  const RowMajor blocks = reordered(mapped(src), parts);
  RowMajor result = RowMajor::Zero(n, n);
  for (std::size_t k = 0; k + 1 < parts.begins.size(); ++k) {
    const Index begin = parts.begins[k];
    const Index size = parts.begins[k + 1] - begin;
    if (size <= usual_states)
      invert_block<UsualBlock>(blocks, begin, size, result);
    else
      invert_block<Eigen::MatrixXd>(blocks, begin, size, result);
  }
  const States order(parts.states.data(), n);
  matrix64_resize(dst, n, n);
  Eigen::Map<RowMajor>(dst->data, n, n)(order, order) = result;
}

t_complex64list eigenvalues(const _matrix64 *matrix) {
  t_complex64list values;
  values.reserve(static_cast<std::size_t>(matrix->rows));
  if (append_block_eigenvalues(mapped(matrix), values))
    return in_expanding_order(std::move(values));
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  return t_complex64list(static_cast<std::size_t>(matrix->rows), {nan, nan});
}

}  // namespace filtermath

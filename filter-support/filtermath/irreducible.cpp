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

#include <Eigen/Dense>
#include <algorithm>
#include <limits>

#include "internal.h"

namespace filtermath {
namespace {

using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
using Index = Eigen::Index;
using States = Eigen::Map<const Eigen::Matrix<int32_t, Eigen::Dynamic, 1>>;

States states_of(const Components &parts, std::size_t k) {
  return {parts.states.data() + parts.begins[k], parts.begins[k + 1] - parts.begins[k]};
}

// The solver leaves its result unwritten when it gives up, so that its verdict
// has to be asked for before the result is read.
bool append_eigenvalues(const Eigen::MatrixXd &matrix, t_complex64list &values) {
  if (matrix.size() == 1) {
    values.emplace_back(matrix(0, 0));
    return true;
  }
  const Eigen::EigenSolver<Eigen::MatrixXd> solver(matrix, false);
  if (solver.info() != Eigen::Success) return false;
  values.insert(values.end(), solver.eigenvalues().begin(), solver.eigenvalues().end());
  return true;
}

bool append_block_eigenvalues(const RowMajor &matrix, t_complex64list &values) {
  if (!matrix.allFinite()) return false;
  const Components parts = components(matrix.data(), static_cast<int32_t>(matrix.rows()));
  for (std::size_t k = 0; k + 1 < parts.begins.size(); ++k) {
    const States states = states_of(parts, k);
    if (!append_eigenvalues(matrix(states, states), values)) return false;
  }
  return true;
}

t_complex64list eigenvalues(const RowMajor &matrix) {
  t_complex64list values;
  if (append_block_eigenvalues(matrix, values)) return in_expanding_order(std::move(values));
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  return t_complex64list(static_cast<std::size_t>(matrix.rows()), {nan, nan});
}

Eigen::Map<const RowMajor> mapped(const _matrix64 *matrix) {
  return {matrix->data, matrix->rows, matrix->cols};
}

}  // namespace

// Block substitution: with the components in order, a row of the matrix has
// elements in its own block B and in columns of earlier ones, whose rows X of the
// inverse are known by then. Its own are B^-1 (I - sum of a X).
void inverse(const double *src, double *dst, int32_t n) {
  const RowMajor matrix = Eigen::Map<const RowMajor>(src, n, n);
  const Components parts = components(src, n);
  if (parts.begins.size() == 2) {
    Eigen::Map<RowMajor>(dst, n, n) = Eigen::MatrixXd(matrix).inverse();
    return;
  }
  RowMajor result = RowMajor::Zero(n, n);
  for (std::size_t k = 0; k + 1 < parts.begins.size(); ++k) {
    const States states = states_of(parts, k);
    const Eigen::MatrixXd block_inverse = Eigen::MatrixXd(matrix(states, states)).inverse();
    RowMajor known = RowMajor::Zero(states.size(), n);
    for (Index row = 0; row < states.size(); ++row)
      for (Index column = 0; column < n; ++column)
        if (const double a = matrix(states[row], column);
            a != 0.0 && !std::binary_search(states.begin(), states.end(), column))
          known.row(row) -= a * result.row(column);
    result(states, Eigen::all) = block_inverse * known;
    result(states, states) = block_inverse;
  }
  Eigen::Map<RowMajor>(dst, n, n) = result;
}

t_complex64list eigenvalues(const _matrix64 *matrix) {
  return eigenvalues(RowMajor(mapped(matrix)));
}

}  // namespace filtermath

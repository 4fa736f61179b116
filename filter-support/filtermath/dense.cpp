// Dense linear algebra. Matrices are small, so they are copied into Eigen's
// own rather than shared with it.

#include <Eigen/Dense>
#include <limits>

#include "internal.h"

namespace filtermath {
namespace {

using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

Eigen::MatrixXd to_eigen(const _matrix64 *matrix) {
  return Eigen::Map<const RowMajor>(matrix->data, matrix->rows, matrix->cols);
}

// The solver leaves its result unwritten when it gives up, so that its verdict
// has to be asked for before the result is read.
t_complex64list eigenvalues(const Eigen::MatrixXd &matrix) {
  if (matrix.size() == 0) return {};
  if (matrix.allFinite()) {
    const Eigen::EigenSolver<Eigen::MatrixXd> solver(matrix, false);
    if (solver.info() == Eigen::Success)
      return {solver.eigenvalues().begin(), solver.eigenvalues().end()};
  }
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  return t_complex64list(static_cast<std::size_t>(matrix.rows()), {nan, nan});
}

}  // namespace

void inverse(const double *src, double *dst, int32_t n) {
  const Eigen::MatrixXd matrix = Eigen::Map<const RowMajor>(src, n, n);
  Eigen::Map<RowMajor>(dst, n, n) = matrix.inverse();
}

t_complex64list eigenvalues(const _matrix64 *matrix) { return eigenvalues(to_eigen(matrix)); }

t_complex64list pencil_eigenvalues(const _matrix64 *af, const _matrix64 *bf) {
  if (af->cols == 0) return {};
  return eigenvalues(to_eigen(bf).inverse() * to_eigen(af));
}

}  // namespace filtermath

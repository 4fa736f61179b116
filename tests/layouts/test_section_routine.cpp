#include "section_routine.h"

#include <gmock/gmock.h>

#include <cmath>
#include <complex>
#include <numbers>

using analysis::Structure;
using layouts::coefficient_rows;
using layouts::ExportedFilter;
using layouts::section_routine;

namespace {

using Complex = std::complex<double>;

// One section with poles near z = 1, and one with poles near z = -1.
const analysis::Sections sections{{0.5, -0.9, 0.5, -1.9, 0.95}, {0.3, 0.2, 0.1, 1.8, 0.9}};

ExportedFilter filter_in(Structure structure) {
  ExportedFilter filter;
  filter.sections = sections;
  filter.structure = structure;
  if (structure == Structure::state_variable)
    filter.forms = analysis::state_variables(sections).value();
  return filter;
}

}  // namespace

TEST(SectionRoutine, HasARowForEachSectionAndANameForEachColumn) {
  for (const Structure structure :
       {Structure::direct_1, Structure::direct_2_transposed, Structure::state_variable}) {
    const auto rows = coefficient_rows(filter_in(structure));
    ASSERT_EQ(rows.size(), sections.size());
    for (const auto &row : rows)
      EXPECT_EQ(row.size(), section_routine(structure).coefficients.size());
  }
}

TEST(SectionRoutine, DirectFormsHoldTheSection) {
  EXPECT_EQ(coefficient_rows(filter_in(Structure::direct_1))[0],
            (std::vector{0.5, -0.9, 0.5, -1.9, 0.95}));
  EXPECT_EQ(coefficient_rows(filter_in(Structure::direct_1)),
            coefficient_rows(filter_in(Structure::direct_2_transposed)));
}

// The equation that the comment gives for state-variable sections.
TEST(SectionRoutine, StateVariableCoefficientsFitTheirEquation) {
  const auto rows = coefficient_rows(filter_in(Structure::state_variable));
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const double g = rows[i][0], r = rows[i][1], h = rows[i][2], high = rows[i][3],
                 band = rows[i][4], low = rows[i][5], turn = rows[i][6];
    EXPECT_EQ(turn, i == 0 ? 1.0 : -1.0);
    EXPECT_NEAR(h, 1 / (1 + r * g), 1e-15);
    const analysis::Section &b = sections[i];
    for (const double w : {0.01, 0.3, 0.77}) {
      const Complex d = std::polar(1.0, -std::numbers::pi * w);
      const Complex s = (1.0 - turn * d) / (1.0 + turn * d);
      const Complex expected = (b.b0 + b.b1 * d + b.b2 * d * d) / (1.0 + b.a1 * d + b.a2 * d * d);
      const Complex found =
          (high * s * s + band * g * s + low * g * g) / (s * s + (r - g) * g * s + g * g);
      EXPECT_NEAR(std::abs(found - expected), 0.0, 1e-12) << i << ' ' << w;
    }
  }
}

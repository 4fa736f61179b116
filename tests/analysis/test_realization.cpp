// Which structure a filter is run in.
#include "analysis/realization.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "analysis/arrangement.h"
#include "analysis/noise.h"
#include "data.h"

namespace {

using namespace analysis;

constexpr double infinity = std::numeric_limits<double>::infinity();

// A butterworth lowpass of order 2 at 48 kHz.
struct Lowpass {
  Roots roots;
  Sections sections;
};

Lowpass lowpass(double hz) {
  const double t = std::tan(std::numbers::pi * hz / 48000);
  const Complex s = t * std::polar(1.0, 3 * std::numbers::pi / 4);
  const Complex pole = (1.0 + s) / (1.0 - s);
  const double gain = std::norm(1.0 - pole) / 4;
  return {{{-1.0, -1.0}, {pole, std::conj(pole)}, gain},
          {{gain, 2 * gain, gain, -2 * pole.real(), std::norm(pole)}}};
}

ChosenRealization chosen(const Lowpass &filter, Arithmetic arithmetic) {
  return chosen_realization(filter.sections, filter.roots, arithmetic);
}

TEST(StructureForFloats, IsStateVariableWhereThatIsClearlyQuieter) {
  EXPECT_EQ(structure_for_floats(-100, -106), Structure::state_variable);
  EXPECT_EQ(structure_for_floats(-100, -105.9), Structure::direct_2_transposed);
  EXPECT_EQ(structure_for_floats(-100, -90), Structure::direct_2_transposed);
  EXPECT_EQ(structure_for_floats(infinity, -90), Structure::state_variable);
  EXPECT_EQ(structure_for_floats(-90, infinity), Structure::direct_2_transposed);
  EXPECT_EQ(structure_for_floats(infinity, infinity), Structure::direct_2_transposed);
}

TEST(ChosenRealization, InFloatsDependsOnTheCutoff) {
  const ChosenRealization low = chosen(lowpass(30), Arithmetic::floats);
  EXPECT_EQ(low.taken.structure, Structure::state_variable);
  EXPECT_EQ(low.taken.forms.size(), 1U);
  EXPECT_EQ(low.taken.noise_db, low.state_variable_db);
  EXPECT_LT(low.taken.noise_db, low.direct_db - 40);
  const ChosenRealization high = chosen(lowpass(15000), Arithmetic::floats);
  EXPECT_EQ(high.taken.structure, Structure::direct_2_transposed);
  EXPECT_TRUE(high.taken.forms.empty());
  EXPECT_EQ(high.taken.noise_db, high.direct_db);
  EXPECT_GT(high.state_variable_db, high.direct_db - worth_state_variable_db);
}

TEST(ChosenRealization, InDoublesIsTheDirectForm) {
  for (const double hz : {30.0, 15000.0}) {
    const ChosenRealization found = chosen(lowpass(hz), Arithmetic::doubles);
    EXPECT_EQ(found.taken.structure, Structure::direct_2_transposed);
    EXPECT_FALSE(found.state_variable_db);
  }
}

TEST(ChosenRealization, OfAFilterThatCannotRunIsTheDirectForm) {
  const ChosenRealization found =
      chosen_realization({{1, 0, 0, -2.5, 1}}, {}, Arithmetic::floats);  // poles at 2 and 0.5
  EXPECT_EQ(found.taken.structure, Structure::direct_2_transposed);
  EXPECT_EQ(found.taken.noise_db, infinity);
}

// The arrangement is that of the structure which runs, and so is the noise.
TEST(ChosenRealization, IsArrangedForItsStructure) {
  std::size_t direct = 0, state_variable = 0;
  for (const data::Case &one : data::cases()) {
    if (one.order > 20) continue;
    const ChosenRealization found = chosen_realization(one.sections, one.roots, Arithmetic::floats);
    const Structure structure = found.taken.structure;
    const Sections expected = arranged(one.sections, structure);
    ASSERT_EQ(found.taken.sections.size(), expected.size()) << one.name;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      EXPECT_EQ(found.taken.sections[i].a1, expected[i].a1) << one.name;
      EXPECT_EQ(found.taken.sections[i].b1, expected[i].b1) << one.name;
    }
    EXPECT_NEAR(found.taken.noise_db, noise(expected, structure, Arithmetic::floats).worst_db(),
                0.5)
        << one.name;
    ++(structure == Structure::state_variable ? state_variable : direct);
  }
  EXPECT_GT(direct, 0U);
  EXPECT_GE(state_variable, 5U);
}

TEST(Realization, IsNoneWhereASectionHasNoStateVariableForm) {
  const Sections outside{{1, 0, 0, -2.5, 1}};
  EXPECT_FALSE(realization(outside, {}, Structure::state_variable, Arithmetic::doubles));
  EXPECT_TRUE(realization(outside, {}, Structure::direct_1, Arithmetic::doubles));
}

}  // namespace

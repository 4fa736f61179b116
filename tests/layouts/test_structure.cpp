// Which structure a file is written in, and what its comment says of that.

#include "structure.h"

#include <gmock/gmock.h>

#include <numbers>

#include "designer/refusal.h"

using analysis::Structure;
using layouts::Arrangement;
using layouts::in_structure;
using layouts::Request;
using layouts::ScaledFilter;
using layouts::target_named;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// A butterworth lowpass of order 2 at 48 kHz.
ScaledFilter lowpass(double hz) {
  const double t = std::tan(std::numbers::pi * hz / 48000);
  const analysis::Complex s = t * std::polar(1.0, 3 * std::numbers::pi / 4);
  const analysis::Complex pole = (1.0 + s) / (1.0 - s);
  const double gain = std::norm(1.0 - pole) / 4;
  return {{{gain, 2 * gain, gain, -2 * pole.real(), std::norm(pole)}},
          {{-1.0, -1.0}, {pole, std::conj(pole)}, gain}};
}

Request with(std::optional<Structure> structure, Arrangement arrangement = Arrangement::quiet) {
  Request request;
  request.structure = structure;
  request.arrangement = arrangement;
  return request;
}

Structure taken(double hz, const char *target, const Request &request) {
  return in_structure(lowpass(hz), target_named(target), request).realization.structure;
}

std::string sentence(double hz, const char *target, const Request &request) {
  return in_structure(lowpass(hz), target_named(target), request).sentences.back();
}

}  // namespace

TEST(InStructure, FloatsTakeStateVariableSectionsWhereTheyAreClearlyQuieter) {
  EXPECT_EQ(taken(30, "c-float", {}), Structure::state_variable);
  EXPECT_EQ(taken(15000, "c-float", {}), Structure::direct_2_transposed);
  EXPECT_EQ(taken(30, "cpp-float", {}), Structure::state_variable);
  EXPECT_EQ(taken(30, "c", {}), Structure::direct_2_transposed);
}

TEST(InStructure, TheCommentSaysWhichAndWhy) {
  EXPECT_EQ(
      sentence(30, "c-float", {}),
      "Structure: state-variable sections, since direct form II transposed would make 56 dB more "
      "noise (--structure takes another).");
  EXPECT_THAT(sentence(15000, "c-float", {}),
              HasSubstr("Structure: direct form II transposed, as state-variable sections would"));
  EXPECT_EQ(sentence(30, "c", {}),
            "Structure: direct form II transposed (--structure takes another).");
  EXPECT_EQ(sentence(30, "c", with(Structure::direct_1)),
            "Structure: direct form I (--structure).");
}

TEST(InStructure, WhatIsAskedForIsTaken) {
  for (const Structure structure :
       {Structure::direct_1, Structure::direct_2_transposed, Structure::state_variable})
    for (const char *target : {"c", "c-float", "cpp", "cpp-float"})
      for (const Arrangement arrangement : {Arrangement::quiet, Arrangement::published})
        EXPECT_EQ(taken(30, target, with(structure, arrangement)), structure) << target;
}

TEST(InStructure, PublishedSectionsKeepTheirCoefficients) {
  EXPECT_EQ(taken(30, "c-float", with(std::nullopt, Arrangement::published)),
            Structure::direct_2_transposed);
}

// Their own, whatever would be quieter.
TEST(InStructure, OtherProgramsHaveOne) {
  EXPECT_EQ(taken(30, "cmsis", {}), Structure::direct_1);
  EXPECT_EQ(taken(30, "supercollider", {}), Structure::direct_2_transposed);
  EXPECT_THAT(in_structure(lowpass(30), target_named("cmsis"), {}).sentences,
              ElementsAre(HasSubstr("Sections: arranged")));
}

TEST(InStructure, RefusesStateVariableSectionsOfRealPolesOutside) {
  const ScaledFilter filter{{{1, 0, 0, -2.5, 1}}, {}};  // at 2 and 0.5
  EXPECT_NO_THROW(in_structure(filter, target_named("c-float"), {}));
  try {
    in_structure(filter, target_named("c-float"), with(Structure::state_variable));
    FAIL();
  } catch (const designer::Refusal &refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("a real pole of it is not inside the unit circle"));
  }
}

namespace {

std::string way(const ScaledFilter &filter, const char *target, const Request &request) {
  return layouts::way_to_less_noise(filter, target_named(target), request);
}

// A resonance that floats do not hold in any structure: half a turn from z = 1 and -1.
ScaledFilter resonance() {
  const double radius = 1 - 1e-7;
  return {{{1, 0, 0, 0, radius * radius}, {1, 0, 0, 0.001, radius * radius}}, {}};
}

}  // namespace

TEST(WayToLessNoise, IsOneThatLeadsThere) {
  const ScaledFilter low = lowpass(3);
  EXPECT_THAT(way(low, "cmsis", {}), HasSubstr("or c-float, where it runs in state-variable"));
  EXPECT_EQ(way(low, "c-float", with(Structure::direct_1)), "leave out --structure");
  EXPECT_EQ(way(low, "c-float", with(std::nullopt, Arrangement::published)),
            "leave out --as-published");
  EXPECT_EQ(way(low, "c-float", with(Structure::direct_1, Arrangement::published)),
            "leave out --structure and --as-published");
  EXPECT_EQ(way(lowpass(15000), "cmsis", with(std::nullopt, Arrangement::published)),
            "leave out --as-published");
  EXPECT_EQ(way(resonance(), "c-float", {}),
            "take a target with doubles, such as c, or several filters of a lower order in a row");
  EXPECT_EQ(way(resonance(), "cmsis", {}), way(resonance(), "c-float", {}));
}

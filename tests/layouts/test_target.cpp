#include "layouts/target.h"

#include <gmock/gmock.h>

#include <set>

#include "designer/refusal.h"
#include "layouts/exported_filter.h"

using layouts::Arithmetic;
using layouts::Target;
using testing::HasSubstr;

TEST(Targets, AreFoundByNamesOfTheirOwn) {
  std::set<std::string> names;
  for (const Target &target : layouts::targets()) {
    EXPECT_TRUE(names.insert(target.name).second) << target.name;
    EXPECT_EQ(&layouts::target_named(target.name), &target);
    EXPECT_STRNE(target.summary, "") << target.name;
  }
}

TEST(Targets, AnotherNameIsRefusedWithTheList) {
  for (const char *name : {"", "C", "maxima", "c_float"}) {
    try {
      layouts::target_named(name);
      FAIL() << name;
    } catch (const designer::Refusal &refusal) {
      EXPECT_THAT(refusal.what(), HasSubstr("--for cannot be '" + std::string(name) + "'"));
      for (const Target &target : layouts::targets())
        EXPECT_THAT(refusal.what(), HasSubstr(target.name));
    }
  }
}

bool holds_integers(const Target &target) {
  return target.arithmetic == Arithmetic::fixed_32 || target.arithmetic == Arithmetic::fixed_16;
}

// One third takes all digits there are. A float's value has 9 of them.
TEST(Targets, WriteTheDigitsOfTheirArithmetic) {
  const double third = static_cast<double>(1.0F / 3.0F);
  layouts::ExportedFilter filter;
  filter.title = "a filter";
  filter.identifier = "veltane_filter";
  filter.sections = {{third, 0.5, 0.0, 0.25, 0.0}};
  for (const Target &target : layouts::targets()) {
    if (holds_integers(target)) continue;
    const std::string file = target.write(filter);
    EXPECT_THAT(file, HasSubstr("0.3333333")) << target.name;
    EXPECT_EQ(file.find("0.33333334326744080") != std::string::npos ||
                  file.find("0.3333333432674408") != std::string::npos,
              target.arithmetic != Arithmetic::floats)
        << target.name;
  }
}

TEST(Targets, WriteNoNegativeZero) {
  layouts::ExportedFilter filter;
  filter.identifier = "veltane_filter";
  filter.sections = {{1.0, 0.5, 0.0, 0.25, 0.0}};
  for (const Target &target : layouts::targets())
    EXPECT_THAT(target.write(filter), testing::Not(HasSubstr("-0.0"))) << target.name;
}

// The file says which sign the terms have, and the terms have it.
TEST(Targets, IntegersStandForTheirCoefficientsInTheOrderOfTheLibrary) {
  layouts::ExportedFilter filter;
  filter.identifier = "veltane_filter";
  filter.sections = {{1.0, 0.5, 0.0, 1.5, -0.125}, {0.75, -0.25, 0.0625, -0.5, 0.25}};
  filter.shift = 3;
  const std::string q31 = layouts::target_named("cmsis-q31").write(filter);
  EXPECT_THAT(q31, HasSubstr("    1073741824, 536870912, 0, -1610612736, 134217728,\n"
                             "    805306368, -268435456, 67108864, 536870912, -268435456};"));
  const std::string q15 = layouts::target_named("cmsis-q15").write(filter);
  EXPECT_THAT(q15, HasSubstr("    16384, 0, 8192, 0, -24576, 2048,\n"
                             "    12288, 0, -4096, 1024, 8192, -4096};"));
  for (const std::string &file : {q31, q15}) {
    EXPECT_THAT(file, HasSubstr("_STAGES 2\n"));
    EXPECT_THAT(file, HasSubstr("_POSTSHIFT 1\n")) << "for the 1.5";
    EXPECT_THAT(file, HasSubstr("_OUTPUT_SHIFT 3\n"));
  }
}

TEST(Targets, FeedbackHasTheSignThatTheFileSays) {
  layouts::ExportedFilter filter;
  filter.identifier = "veltane_filter";
  filter.sections = {{1.0, 0.5, 0.0, 0.25, -0.125}};
  for (const Target &target : layouts::targets()) {
    const std::string file = target.write(filter);
    const bool added = file.find("The feedback terms are added") != std::string::npos;
    if (holds_integers(target)) {
      EXPECT_TRUE(added) << target.name;
      continue;
    }
    EXPECT_EQ(file.find("-0.25") != std::string::npos, added) << target.name;
    EXPECT_EQ(file.find("-0.125") != std::string::npos, !added) << target.name;
    EXPECT_EQ(file.find("subtracted") != std::string::npos, !added) << target.name;
  }
}

namespace {

// Poles at radius 0.5: lists hold it well.
layouts::ExportedFilter of_poles(std::size_t count) {
  layouts::ExportedFilter filter;
  filter.identifier = "veltane_filter";
  for (std::size_t i = 0; i + 1 < count; i += 2)
    filter.sections.push_back({0.25, 0.5, 0.25, 0.0, 0.25});
  if (count % 2 == 1) filter.sections.push_back({0.5, 0.5, 0.0, 0.5, 0.0});
  return filter;
}

// How one node refuses four poles at the same place on the real axis, at a distance from the unit
// circle; empty where it does not.
std::string refusal_at(double distance) {
  layouts::ExportedFilter filter;
  filter.identifier = "veltane_filter";
  const double pole = 1.0 - distance;
  filter.sections.assign(2, {distance, 0.0, 0.0, -2.0 * pole, pole * pole});
  try {
    layouts::target_named("webaudio").write(filter);
  } catch (const designer::Refusal &refusal) {
    return refusal.what();
  }
  return "";
}

}  // namespace

TEST(WebAudio, OneNodeTakesNineteenPolesAndAChainAny) {
  const Target &node = layouts::target_named("webaudio");
  EXPECT_NO_THROW(node.write(of_poles(19)));
  EXPECT_THROW(node.write(of_poles(20)), designer::Refusal);
  EXPECT_NO_THROW(layouts::target_named("webaudio-sections").write(of_poles(200)));
}

// The rounding of the lists, 1e-16, moves the level at DC by some 1e-16 / distance^4, and the poles
// by its fourth root.
TEST(WebAudio, RefusesListsThatRoundingSpoils) {
  EXPECT_EQ(refusal_at(1e-2), "");
  EXPECT_THAT(refusal_at(3e-4), HasSubstr("would miss the response by "));
  EXPECT_THAT(refusal_at(1e-5), HasSubstr("would make this filter unstable"));
  for (const double distance : {3e-4, 1e-5})
    EXPECT_THAT(refusal_at(distance), HasSubstr("--for webaudio-sections writes a chain"));
}

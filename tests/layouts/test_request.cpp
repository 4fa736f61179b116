#include "layouts/request.h"

#include <gmock/gmock.h>

#include "designer/refusal.h"

using layouts::identifier_for;

TEST(IdentifierFor, KeepsLettersAndDigitsWithSingleUnderscores) {
  EXPECT_EQ(identifier_for("2nd-low__pass!"), "veltane_2nd_low_pass");
  EXPECT_EQ(identifier_for("_band"), "veltane_band");
  EXPECT_EQ(identifier_for("int"), "veltane_int") << "not a word of a language";
}

TEST(IdentifierFor, TakesLettersOfAsciiOnly) {
  EXPECT_EQ(identifier_for("caf\u00e9 1"), "veltane_caf_1");
  EXPECT_EQ(identifier_for("\xe9\xff"), "veltane_filter");
}

TEST(IdentifierFor, HasANameForFilesWithoutOne) {
  EXPECT_EQ(identifier_for(""), "veltane_filter");
  EXPECT_EQ(identifier_for("--"), "veltane_filter");
}

TEST(StructureWords, MeanOneStructureEach) {
  using analysis::Structure;
  EXPECT_EQ(layouts::structure_named("direct-1"), Structure::direct_1);
  EXPECT_EQ(layouts::structure_named("direct-2-transposed"), Structure::direct_2_transposed);
  EXPECT_EQ(layouts::structure_named("state-variable"), Structure::state_variable);
  EXPECT_EQ(layouts::structure_named("direct-2"), std::nullopt);
  for (const std::string_view word : layouts::structure_words)
    EXPECT_EQ(layouts::word_for(layouts::structure_named(word).value()), word);
}

TEST(Check, ArrangesSectionsOnly) {
  layouts::Request request;
  request.arrangement = layouts::Arrangement::published_spread;
  for (const layouts::Target &target : layouts::targets()) {
    if (target.form == layouts::Form::sections)
      EXPECT_NO_THROW(layouts::check(request, target)) << target.name;
    else
      EXPECT_THROW(layouts::check(request, target), designer::Refusal) << target.name;
  }
}

TEST(Check, NamesATargetThatHasSections) {
  layouts::Request request;
  request.arrangement = layouts::Arrangement::published_spread;
  try {
    layouts::check(request, layouts::target_named("webaudio"));
    FAIL() << "lists have no sections";
  } catch (const designer::Refusal &refusal) {
    EXPECT_THAT(refusal.what(), testing::HasSubstr("--for webaudio-sections has them"));
    EXPECT_EQ(layouts::target_named("webaudio-sections").form, layouts::Form::sections);
  }
}

TEST(Check, TheStructureIsForFilesThatFilterThemselves) {
  layouts::Request request;
  request.structure = analysis::Structure::direct_1;
  int selectable = 0;
  for (const layouts::Target &target : layouts::targets()) {
    if (!target.structure) {
      EXPECT_NO_THROW(layouts::check(request, target)) << target.name;
      ++selectable;
      continue;
    }
    try {
      layouts::check(request, target);
      FAIL() << target.name;
    } catch (const designer::Refusal &refusal) {
      EXPECT_THAT(refusal.what(),
                  testing::HasSubstr("has its own; these leave one: c, c-float, cpp, cpp-float"));
    }
  }
  EXPECT_EQ(selectable, 4);
}

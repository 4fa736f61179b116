// Boxes behind a designer.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../designer_with_module.h"
#include "designer/refusal.h"
#include "designer/title.h"

using designer::Design;
using designer::Settings;
using designer::Values;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Design designed(const Settings &settings) { return tests::designer_with_module().design(settings); }

std::string refusal(const Settings &settings) {
  try {
    designed(settings);
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return "";
}

Values word(const char *text) { return {std::string(text)}; }

}  // namespace

TEST(Designer, DesignsWhatANewBoxHas) {
  const Design design = designed({});
  EXPECT_THAT(design.remarks, IsEmpty());
  EXPECT_EQ(design.samplerate, 48000.0);
  EXPECT_EQ(design.settings.size(), tests::designer_with_module().attributes().size());
  EXPECT_EQ(design.dictionary.front().first, "schema");
  EXPECT_EQ(designer::title(design),
            "chebyshev-2 lowpass of order 5, cutoff 3000 Hz, attenuation 96 dB, at 48000 Hz");
}

TEST(Designer, TellsWhatItChangedOfSettings) {
  EXPECT_THAT(designed({{"order", {t_long{500}}}}).remarks,
              ElementsAre("order takes whole numbers from 2 to 200: 200 is used, not 500"));
  EXPECT_THAT(designed({{"frequency", {100.0, 200.0}}}).remarks,
              ElementsAre("a lowpass has one cutoff: 200 is not used"));
}

TEST(Designer, RefusesWhatDoesNotFit) {
  EXPECT_THAT(refusal({{"topology", word("elliptic")}}),
              HasSubstr("it is one of butterworth, chebyshev-1, chebyshev-2"));
  EXPECT_THAT(refusal({{"order", word("four")}}), HasSubstr("not 'four'"));
  EXPECT_THAT(refusal({{"tf_output", word("maybe")}}), HasSubstr("on or off"));
  EXPECT_THAT(refusal({{"order", {}}}), HasSubstr("takes one value, and 0 were given"));
  EXPECT_THAT(refusal({{"nothing", word("x")}}), HasSubstr("there is no setting 'nothing'"));
  EXPECT_THAT(refusal({{"response", word("bandstop")}, {"frequency", {100.0}}}),
              HasSubstr("a bandstop has two cutoffs"));
  EXPECT_EQ(refusal({{"order", word("4")}}), "") << "the next design is not harmed";
}

TEST(Designer, AcceptsSettingsWithoutDesigning) {
  const Design design = tests::designer_with_module().accepted({{"order", {t_long{1}}}});
  EXPECT_EQ(design.settings.number("order"), 2.0);
  EXPECT_THAT(design.dictionary, IsEmpty());
  EXPECT_EQ(design.remarks.size(), 1U);
}

TEST(Designer, KnowsRangesAndFreshSettings) {
  const designer::Range order = tests::designer_with_module().range("order");
  EXPECT_EQ(order.lowest, 2.0);
  EXPECT_EQ(order.highest, 200.0);
  EXPECT_THROW(tests::designer_with_module().range("topology"), std::runtime_error);
  EXPECT_EQ(tests::designer_with_module().fresh().text("topology"), "chebyshev-2");
}

TEST(Title, SaysWhatMadeTheFilter) {
  EXPECT_EQ(designer::title(designed({{"topology", word("chebyshev-1")},
                                      {"response", word("bandpass")},
                                      {"order", {t_long{3}}},
                                      {"units", word("normalized")},
                                      {"frequency", {0.25, 0.5}},
                                      {"samplerate", {t_long{8000}}}})),
            "chebyshev-1 bandpass of order 3, cutoffs 0.25 and 0.5 of Nyquist, ripple 0.5 dB, at "
            "8000 Hz");
}

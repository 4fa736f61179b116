#include "integer_filter.h"

#include <gmock/gmock.h>

#include <cmath>

#include "analysis/impulse_norms.h"
#include "analysis/response.h"
#include "designer/refusal.h"

using layouts::Arrangement;
using layouts::IntegerFilter;
using layouts::Noisy;
using layouts::Request;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

// A band of two resonances whose first half is 40 dB too loud, as a published cascade may have it.
const analysis::Sections band{{10.0, 0.0, -10.0, -1.8, 0.9}, {0.0005, 0.0, -0.0005, -1.6, 0.9}};

IntegerFilter made(const char *target, Arrangement arrangement = Arrangement::quiet,
                   const analysis::Sections &sections = band, Noisy noisy = Noisy::refused) {
  Request request;
  request.arrangement = arrangement;
  request.noisy = noisy;
  return layouts::integer_filter(sections, layouts::target_named(target), request, 48000.0);
}

std::string refusal_of(const char *target, const analysis::Sections &sections,
                       Arrangement arrangement = Arrangement::quiet, Noisy noisy = Noisy::refused) {
  try {
    made(target, arrangement, sections, noisy);
  } catch (const designer::Refusal &refusal) {
    return refusal.what();
  }
  return "";
}

// With poles at 1 minus a distance, and 0 dB at DC.
analysis::Sections lowpass(double distance) {
  const double pole = 1 - distance, gain = distance * distance / 4;
  return {{gain, 2 * gain, gain, -2 * pole, pole * pole}};
}

}  // namespace

TEST(IntegerFilter, ConcernsTheTargetsWhoseSignalsAreIntegers) {
  for (const layouts::Target &target : layouts::targets()) {
    const std::string name = target.name;
    EXPECT_EQ(layouts::has_integer_signals(target),
              name == "sox" || name == "cmsis-q31" || name == "cmsis-q15")
        << name;
  }
}

TEST(IntegerFilter, NothingClipsBetweenTheSectionsInAnyOrder) {
  for (const Arrangement arrangement : {Arrangement::quiet, Arrangement::published}) {
    const IntegerFilter filter = made("sox", arrangement);
    EXPECT_LE(analysis::norms_from_input(filter.sections)[0].l1, 1.0);
    for (const double w : {0.05, 0.11, 0.4})
      EXPECT_NEAR(analysis::level_db(filter.sections, w), analysis::level_db(band, w), 1e-9);
    EXPECT_EQ(filter.shift, 0);
    EXPECT_THAT(filter.sentences, Contains(HasSubstr("Clipping: none between the sections")));
  }
}

TEST(IntegerFilter, KeepsThePublishedOrderIfAsked) {
  for (const char *target : {"sox", "cmsis-q31", "cmsis-q15"}) {
    const IntegerFilter filter = made(target, Arrangement::published);
    EXPECT_NEAR(filter.sections[0].a1, band[0].a1, 1e-4) << target;
    EXPECT_NEAR(filter.sections[1].a1, band[1].a1, 1e-4) << target;
    EXPECT_THAT(filter.sentences[0], HasSubstr("(--as-published)")) << target;
    EXPECT_THAT(made(target).sentences[0], HasSubstr("arranged for the least rounding noise"));
  }
}

TEST(IntegerFilter, SaysHowFarTheOutputExceedsFullScale) {
  // The impulse response of two samples of 1.
  EXPECT_THAT(made("sox", Arrangement::quiet, {{1, 1, 0, 0, 0}}).sentences,
              Contains(HasSubstr("exceed full scale by 6.0 dB and clips there, unless the input is "
                                 "multiplied by 0.5 or less")));
  EXPECT_THAT(made("sox", Arrangement::quiet, {{0.5, 0.5, 0, 0, 0}}).sentences,
              Contains(HasSubstr("none of the output either")));
}

TEST(IntegerFilter, FixedPointIsScaledByAPowerOfTwo) {
  const IntegerFilter filter = made("cmsis-q31", Arrangement::quiet, {{1, 1, 0, 0, 0}});
  EXPECT_EQ(filter.shift, 2) << "a half would leave no room for roundings";
  EXPECT_NEAR(filter.sections[0].b0, 0.25, 1e-8);
  EXPECT_THAT(filter.sentences,
              Contains(HasSubstr("12.04 dB below this level; arm_shift_q31(output, 2, output, "
                                 "count) undoes that")));
  EXPECT_EQ(made("cmsis-q31", Arrangement::quiet, {{0.4, 0.4, 0, 0, 0}}).shift, 0);
}

TEST(IntegerFilter, FixedPointSaysOneSentenceOfEachKind) {
  for (const char *target : {"cmsis-q31", "cmsis-q15"})
    for (const char *beginning :
         {"Sections: ", "Scaling: ", "Coefficients: ", "Rounding: ", "Limit cycles: "})
      EXPECT_THAT(made(target).sentences, Contains(StartsWith(beginning)).Times(1)) << target;
}

TEST(IntegerFilter, RefusesNoiseAndWritesItIfTold) {
  const auto quiet = lowpass(0.3), noisy = lowpass(0.02);
  EXPECT_EQ(refusal_of("cmsis-q15", quiet), "");
  EXPECT_THAT(refusal_of("cmsis-q15", noisy),
              HasSubstr("and 40 dB are the limit; --for cmsis-q31"));
  EXPECT_EQ(refusal_of("cmsis-q15", noisy, Arrangement::quiet, Noisy::written), "");
  EXPECT_EQ(refusal_of("cmsis-q31", noisy), "");
  EXPECT_THAT(refusal_of("cmsis-q31", lowpass(1e-3)),
              HasSubstr("and 60 dB are the limit; a target with doubles"));
}

TEST(IntegerFilter, RefusesWhatIsUnstableInAnyCase) {
  for (const Noisy noisy : {Noisy::refused, Noisy::written}) {
    EXPECT_THAT(refusal_of("cmsis-q15", lowpass(1e-3), Arrangement::quiet, noisy),
                HasSubstr("rounds coefficients to 16 bits, in which this filter is unstable"));
    EXPECT_THAT(refusal_of("cmsis-q31", lowpass(1e-5), Arrangement::quiet, noisy),
                HasSubstr("rounds coefficients to 32 bits, in which this filter is unstable"));
    const analysis::Sections rounding_only{{1e-4, 2e-4, 1e-4, -1.999711183, 0.99980001}};
    EXPECT_THAT(refusal_of("cmsis-q15", rounding_only, Arrangement::quiet, noisy),
                HasSubstr("no scaling of this filter"));
  }
}

// A wide band whose first sections leave nothing of what the last ones are for.
TEST(IntegerFilter, RefusesPublishedSectionsThatLoseTheSignal) {
  const analysis::Section low{0.1, 0, -0.1, -1.99, 0.9901}, high{0.5, 0, -0.5, 1.5, 0.6};
  const analysis::Sections lost{low, low, low, low, low, high, high, high, high, high};
  EXPECT_EQ(refusal_of("sox", lost), "");
  EXPECT_THAT(refusal_of("sox", lost, Arrangement::published),
              HasSubstr("without --as-published it makes less (--anyway writes it)"));
  EXPECT_EQ(refusal_of("sox", lost, Arrangement::published, Noisy::written), "");
}

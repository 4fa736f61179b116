// What a design publishes.

#include <fmt/format.h>

#include "box_test.h"
#include "published_filter.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST_F(BoxTest, TheThreeSwitchesDecideTheKeys) {
  for (int switches = 0; switches < 8; ++switches) {
    const int zpk = switches & 1;
    const int sos = (switches >> 1) & 1;
    const int tf = (switches >> 2) & 1;
    std::vector<std::string> expected{"schema", "response", "topology", "ripple"};
    if (tf != 0) expected.insert(expected.end(), {"denominator", "numerator"});
    if (zpk != 0) expected.insert(expected.end(), {"zeroes", "poles", "gain"});
    if (sos != 0) expected.emplace_back("cascade");
    const Box box = make(fmt::format("zpk_output: {} sos_output: {} tf_output: {}", zpk, sos, tf));
    inspector.start_trace();
    host.send(box, "bang");
    std::vector<std::string> appended;
    for (const patchbay::Call &call : inspector.stop_trace())
      if (call.operation.starts_with("dictionary_append")) appended.push_back(call.arguments.at(0));
    EXPECT_THAT(appended, ElementsAreArray(expected)) << zpk << sos << tf;
    EXPECT_THAT(keys(published(box)), ElementsAreArray(expected)) << zpk << sos << tf;
  }
}

TEST_F(BoxTest, AnythingButZeroSwitchesOn) {
  const auto off = keys(designed("zpk_output: 0 sos_output: 0 tf_output: 0"));
  EXPECT_THAT(off, ElementsAre("schema", "response", "topology", "ripple"));
  for (const t_long on : {t_long{2}, t_long{-1}, t_long{1} << 40}) {
    EXPECT_EQ(keys(designed(fmt::format("zpk_output: {0} sos_output: {0} tf_output: {0}", on))),
              keys(designed("zpk_output: 1 sos_output: 1 tf_output: 1")))
        << on;
    EXPECT_EQ(keys(designed(fmt::format("zpk_output: 0 sos_output: {} tf_output: 0", on))),
              keys(designed("zpk_output: 0 sos_output: 1 tf_output: 0")))
        << on;
  }
}

TEST_F(BoxTest, TheDefaultDesignHasTheseKeys) {
  EXPECT_THAT(keys(designed("")), ElementsAre("schema", "response", "topology", "ripple", "zeroes",
                                              "poles", "gain", "cascade"));
}

TEST_F(BoxTest, IsDesignedInThisOrder) {
  const Box box = make("name: here tf_output: 1");
  inspector.start_trace();
  host.send(box, "bang");
  std::vector<std::string> calls = texts(inspector.stop_trace());
  std::erase_if(calls, [](const std::string &call) {
    return call.starts_with("sysmem_") || call.starts_with("atom_");
  });
  EXPECT_THAT(
      calls,
      ElementsAre(
          "object_attr_setdouble_array(frequency, 1)", "object_method_imp(getname)",
          "dictionary_clear()", "dictionary_appendsym(schema, veltane)",
          "dictionary_appendsym(response, lowpass)", "dictionary_appendsym(topology, chebyshev-2)",
          "dictionary_appendfloat(ripple, 0)", "atomarray_new(0)", "atomarray_new(0)",
          "object_method_imp(setatoms64)", "dictionary_appendatomarray(denominator)",
          "object_method_imp(setatoms64)", "dictionary_appendatomarray(numerator)",
          "atomarray_new(0)", "atomarray_new(0)", "object_method_imp(setatoms64)",
          "dictionary_appendatomarray(zeroes)", "object_method_imp(setatoms64)",
          "dictionary_appendatomarray(poles)", testing::StartsWith("dictionary_appendfloat(gain, "),
          "atomarray_new(0)", "object_method_imp(setatoms64)",
          "dictionary_appendatomarray(cascade)", "outlet_anything(dictionary, 1)"));
}

// Each list goes through a block of atoms of its own, which is gone before the list
// is in the dictionary.
TEST_F(BoxTest, EachListIsPublishedInTheseSteps) {
  const Box box = make("name: here tf_output: 1");
  inspector.start_trace();
  host.send(box, "bang");
  const std::vector<std::string> calls = texts(inspector.stop_trace());
  const auto filter = published(box);
  for (const std::string key : {"denominator", "numerator", "zeroes", "poles", "cascade"}) {
    std::vector<std::string> steps;
    const std::vector<double> values = numbers(filter, key);
    steps.push_back(fmt::format("sysmem_newptr({})", values.size() * sizeof(t_atom)));
    for (const double value : values) steps.push_back(fmt::format("atom_setfloat({})", value));
    steps.insert(steps.end(), {"object_method_imp(setatoms64)", "sysmem_freeptr()",
                               "dictionary_appendatomarray(" + key + ")"});
    const auto end = std::find(calls.begin(), calls.end(), steps.back());
    ASSERT_GE(static_cast<std::size_t>(end - calls.begin()), steps.size()) << key;
    ASSERT_NE(end, calls.end()) << key;
    EXPECT_THAT(std::vector<std::string>(end + 1 - static_cast<long>(steps.size()), end + 1),
                ElementsAreArray(steps))
        << key;
  }
}

TEST_F(BoxTest, AnEmptyListIsPublishedInTheSameSteps) {
  const Box box = make("name: here zpk_output: 0");
  inspector.start_trace();
  host.send(box, "bang");
  const std::vector<std::string> calls = texts(inspector.stop_trace());
  const auto end = std::find(calls.begin(), calls.end(), "dictionary_appendatomarray(cascade)");
  ASSERT_GE(end - calls.begin(), 4);
  EXPECT_THAT(std::vector<std::string>(end - 4, end),
              ElementsAre("atomarray_new(0)", "sysmem_newptr(0)", "object_method_imp(setatoms64)",
                          "sysmem_freeptr()"));
}

TEST_F(BoxTest, TheNameIsSentAfterAllKeysAreWritten) {
  const Box box = make("name: here tf_output: 1");
  std::vector<std::string> seen;
  host.listen(box, 0, [&](const std::string &, const Values &) { seen = keys(published(box)); });
  host.send(box, "bang");
  EXPECT_THAT(sent, ElementsAre("dictionary here"));
  EXPECT_EQ(seen.size(), 10U);
}

TEST_F(BoxTest, WithEverythingOffTheNameIsSentAllTheSame) {
  designed("name: here zpk_output: 0 sos_output: 0");
  EXPECT_THAT(sent, ElementsAre("dictionary here"));
}

TEST_F(BoxTest, DesigningAgainReplacesEverything) {
  const Box box = make("tf_output: 1");
  host.send(box, "bang");
  host.set(box, "tf_output", {t_long{0}});
  host.send(box, "bang");
  EXPECT_EQ(keys(published(box)).size(), 8U);
}

TEST_F(BoxTest, RippleIsThatOfChebyshevOneAndZeroForOthers) {
  const auto ripple = [&](const std::string &topology) {
    return entry<double>(designed("passband_ripple: 1.5 topology: " + topology), "ripple");
  };
  EXPECT_EQ(ripple("chebyshev-1"), 1.5);
  EXPECT_EQ(ripple("chebyshev-2"), 0.0);
  EXPECT_EQ(ripple("butterworth"), 0.0);
}

TEST_F(BoxTest, WithoutRootsTheCascadeIsEmpty) {
  const auto dictionary = designed("zpk_output: 0 topology: butterworth");
  EXPECT_THAT(entry<Values>(dictionary, "cascade"), IsEmpty());
}

TEST_F(BoxTest, AnUnknownFamilyIsAButterworthUnderItsOwnName) {
  for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
    const auto settings = [&](const char *topology) {
      return fmt::format("order: 5 response: {} frequency: 3000 9000 tf_output: 1 topology: {}",
                         response, topology);
    };
    const auto unknown = designed(settings("elliptic"));
    const auto butterworth = designed(settings("butterworth"));
    EXPECT_EQ(entry<std::string>(unknown, "topology"), "elliptic");
    for (const char *key : {"denominator", "numerator", "poles"})
      EXPECT_EQ(numbers(unknown, key), numbers(butterworth, key)) << key << ' ' << response;
    const Complex z = on_circle(0.3);
    EXPECT_NEAR(std::abs(cascade_response(numbers(unknown, "cascade"), z) -
                         cascade_response(numbers(butterworth, "cascade"), z)),
                0.0, 1e-12)
        << response;
  }
}

TEST_F(BoxTest, AnUnknownResponseIsALowpassUnderItsOwnName) {
  const auto unknown = designed("response: allpass");
  const auto lowpass = designed("response: lowpass");
  EXPECT_EQ(entry<std::string>(unknown, "response"), "allpass");
  EXPECT_EQ(numbers(unknown, "poles"), numbers(lowpass, "poles"));
  EXPECT_EQ(numbers(unknown, "cascade"), numbers(lowpass, "cascade"));
}

TEST_F(BoxTest, LowpassAndHighpassUseTheFirstCutoffOnly) {
  for (const std::string response : {"lowpass", "highpass"})
    EXPECT_EQ(numbers(designed("response: " + response + " frequency: 3000 9000"), "poles"),
              numbers(designed("response: " + response + " frequency: 3000 5000"), "poles"))
        << response;
}

TEST_F(BoxTest, BandResponsesUseBothCutoffs) {
  for (const std::string response : {"bandpass", "bandstop"})
    EXPECT_NE(numbers(designed("response: " + response + " frequency: 3000 9000"), "poles"),
              numbers(designed("response: " + response + " frequency: 3000 5000"), "poles"))
        << response;
}

// A bandwidth below 0 turns time around: each pole lies where its inverse would.
TEST_F(BoxTest, ReversedEdgesMirrorThePolesInTheUnitCircle) {
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string response : {"bandpass", "bandstop"}) {
      const auto poles = [&](const std::string &edges) {
        return roots_of(numbers(
            designed(fmt::format("order: 3 stopband_attenuation: 40 topology: {} response: {} "
                                 "frequency: {}",
                                 topology, response, edges)),
            "poles"));
      };
      const std::vector<Complex> right = poles("3000 9000");
      ASSERT_EQ(right.size(), 6U);
      for (const Complex &pole : poles("9000 3000")) {
        EXPECT_GT(std::abs(pole), 1.0);
        const bool mirrored = std::any_of(right.begin(), right.end(), [&](const Complex &other) {
          return std::abs(1.0 / pole - other) < 1e-9;
        });
        EXPECT_TRUE(mirrored) << topology << ' ' << response << ' ' << pole;
      }
    }
}

TEST_F(BoxTest, ABandHasTwiceThePoles) {
  EXPECT_EQ(numbers(designed("order: 6"), "poles").size(), 2U * 6U);
  EXPECT_EQ(numbers(designed("order: 6 response: bandpass"), "poles").size(), 2U * 12U);
}

TEST_F(BoxTest, TheListenerMayFreeTheBox) {
  const Box box = host.make("veltane");
  host.listen(box, 0, [&](const std::string &, const Values &) { host.free(box); });
  host.send(box, "bang");
  EXPECT_THAT(host.boxes(), IsEmpty());
}

// --- what the filters do

TEST_F(BoxTest, AButterworthIsThreeDecibelsDownAtItsCutoffs) {
  const double three = -10.0 * std::log10(2.0);
  for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
    const auto filter = designed(
        fmt::format("topology: butterworth order: 4 response: {} frequency: 3000 9000", response));
    const auto cascade = numbers(filter, "cascade");
    EXPECT_NEAR(decibels(cascade_response(cascade, on_circle(3000 / 24000.0))), three, 1e-9)
        << response;
    if (std::string(response).starts_with("band")) {
      EXPECT_NEAR(decibels(cascade_response(cascade, on_circle(9000 / 24000.0))), three, 1e-9)
          << response;
    }
  }
}

TEST_F(BoxTest, AChebyshevOneTouchesItsRippleAndDoesNotExceedIt) {
  const auto cascade = numbers(
      designed("topology: chebyshev-1 order: 6 passband_ripple: 1 frequency: 6000"), "cascade");
  double lowest = 0.0;
  double highest = -1000.0;
  for (int i = 0; i <= 10000; ++i) {
    const double level = decibels(cascade_response(cascade, on_circle(0.25 * i / 10000)));
    lowest = std::min(lowest, level);
    highest = std::max(highest, level);
  }
  EXPECT_NEAR(lowest, -1.0, 1e-6);
  EXPECT_NEAR(highest, 0.0, 1e-6);
}

TEST_F(BoxTest, AChebyshevTwoTouchesItsAttenuationAndDoesNotExceedIt) {
  const auto cascade =
      numbers(designed("order: 6 stopband_attenuation: 60 frequency: 6000"), "cascade");
  double highest = -1000.0;
  for (int i = 0; i <= 10000; ++i)
    highest =
        std::max(highest, decibels(cascade_response(cascade, on_circle(0.25 + 0.75 * i / 10000))));
  EXPECT_NEAR(highest, -60.0, 1e-6);
  EXPECT_NEAR(decibels(cascade_response(cascade, 1.0)), 0.0, 1e-9);
}

TEST_F(BoxTest, TheZerosOfAChebyshevTwoLieOnTheUnitCircle) {
  for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"})
    for (int order : {2, 3, 4, 5, 8}) {
      const auto filter =
          designed(fmt::format("order: {} response: {} frequency: 3000 9000", order, response));
      for (const Complex &zero : roots_of(numbers(filter, "zeroes")))
        EXPECT_NEAR(std::abs(zero), 1.0, 1e-8) << response << ' ' << order;
    }
}

TEST_F(BoxTest, TheThreePublishedFormsAgree) {
  for (const char *topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const char *response : {"lowpass", "highpass", "bandstop"})
      for (int order : {2, 3, 4, 5, 6}) {
        const std::string settings = fmt::format(
            "topology: {} response: {} order: {} frequency: 4000 9000 tf_output: 1 "
            "stopband_attenuation: 50",
            topology, response, order);
        const auto filter = designed(settings);
        for (const double w : {0.03, 0.1, 0.3, 0.6, 0.9}) {
          const Complex z = on_circle(w);
          const Complex zpk =
              zpk_response(roots_of(numbers(filter, "zeroes")), roots_of(numbers(filter, "poles")),
                           entry<double>(filter, "gain"), z);
          EXPECT_LT(std::abs(zpk - cascade_response(numbers(filter, "cascade"), z)), 1e-9)
              << settings;
          EXPECT_LT(std::abs(zpk - transfer_response(numbers(filter, "numerator"),
                                                     numbers(filter, "denominator"), z)),
                    1e-7)
              << settings;
        }
      }
}

// The same comparison notices a filter that is not the same.
TEST_F(BoxTest, DifferentFiltersDoNotAgree) {
  const auto one = numbers(designed("frequency: 4000"), "cascade");
  const auto other = numbers(designed("frequency: 4001"), "cascade");
  EXPECT_GT(
      std::abs(cascade_response(one, on_circle(0.1)) - cascade_response(other, on_circle(0.1))),
      1e-9);
}

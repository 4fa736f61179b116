// Settings that lead a straightforward computation into an endless loop, into
// memory that nobody wrote, or out of range. None may hang, crash or leak, and
// each test has a watchdog.

#include <pthread.h>

#include <cmath>
#include <limits>

#include "box_test.h"
#include "watchdog.h"

using testing::ElementsAre;

namespace {

class HazardTest : public BoxTest {
 protected:
  // Bangs, and returns the published filter, which is complete whatever the
  // numbers in it.
  patchbay::Dictionary banged(Box box) {
    host.send(box, "bang");
    const auto filter = published(box);
    EXPECT_THAT(keys(filter), ElementsAre("schema", "response", "topology", "ripple", "zeroes",
                                          "poles", "gain", "cascade"));
    return filter;
  }

  // Designs on through the task too, as the host would.
  void settle() {
    while (host.run_deferred() > 0) {
    }
  }

  const double nan = std::nan("");
};

std::vector<double> all_numbers(const patchbay::Dictionary &filter) {
  std::vector<double> all;
  for (const char *key : {"zeroes", "poles", "cascade"}) {
    const auto list = numbers(filter, key);
    all.insert(all.end(), list.begin(), list.end());
  }
  all.push_back(entry<double>(filter, "gain"));
  return all;
}

}  // namespace

// A default box has cutoffs in Hz; read as fractions of Nyquist both are at the
// upper end, the band has no width, and the feed-through of the model is 0.
TEST_F(HazardTest, ADefaultBoxTurnedIntoANormalizedBandpass) {
  const tests::Watchdog watchdog("a band without width");
  const Box box = make();
  host.set(box, "units", {std::string("normalized")});
  host.set(box, "response", {std::string("bandpass")});
  settle();
  EXPECT_EQ(numbers(banged(box), "poles").size(), 2U * 10U);
}

TEST_F(HazardTest, ABandWithoutWidthInEveryFamilyAndOrder) {
  const tests::Watchdog watchdog("a band without width", 60);
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string response : {"bandpass", "bandstop"})
      for (t_long order = 2; order <= 12; ++order) {
        const Box box = make("units: normalized topology: " + topology + " response: " + response +
                             " frequency: 0.3 0.3 order: " + std::to_string(order));
        EXPECT_EQ(numbers(banged(box), "poles").size(), static_cast<std::size_t>(4 * order));
        host.free(box);
      }
}

TEST_F(HazardTest, ACutoffThatIsNotANumber) {
  const tests::Watchdog watchdog("a NaN cutoff", 60);
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
      const Box box = make("units: normalized topology: " + topology + " response: " + response);
      host.set(box, "frequency", {nan, nan});
      const auto filter = banged(box);
      for (const double value : numbers(filter, "poles"))
        EXPECT_TRUE(std::isnan(value)) << "never a number that nobody computed";
      host.free(box);
    }
}

TEST_F(HazardTest, ACutoffInHertzThatIsNotANumberIsTheLowest) {
  const Box box = make();
  host.set(box, "frequency", {nan});
  for (const double value : all_numbers(banged(box))) EXPECT_TRUE(std::isfinite(value));
}

TEST_F(HazardTest, RippleAndAttenuationThatAreNotNumbers) {
  const tests::Watchdog watchdog("a NaN ripple");
  const Box box = make();
  host.set(box, "stopband_attenuation", {nan});
  banged(box);
  host.set(box, "topology", {std::string("chebyshev-1")});
  host.set(box, "passband_ripple", {nan});
  banged(box);
}

// The feed-through of so deep a stopband drops below the tolerance here and there.
TEST_F(HazardTest, AttenuationsUpToTheLimitAtManyCutoffs) {
  const tests::Watchdog watchdog("a deep stopband", 100);
  const Box box = make("units: normalized");
  for (const double attenuation : {200.0, 225.0, 230.0, 235.0, 240.0})
    for (const std::string response : {"lowpass", "highpass", "bandpass", "bandstop"})
      for (const t_long order : {2, 3, 4, 5, 6, 9, 12})
        for (int i = 1; i < 20; ++i) {
          host.set(box, "response", {response});
          host.set(box, "order", {order});
          host.set(box, "stopband_attenuation", {attenuation});
          host.set(box, "frequency", {i / 20.0, std::min(i / 20.0 + 0.11, 0.999)});
          host.send(box, "bang");
        }
  EXPECT_EQ(sent.size(), 5U * 4U * 7U * 19U);
}

TEST_F(HazardTest, ReversedBandEdges) {
  const tests::Watchdog watchdog("reversed edges");
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string response : {"bandpass", "bandstop"})
      banged(make("topology: " + topology + " response: " + response + " frequency: 9000 3000"));
}

TEST_F(HazardTest, CutoffsAtBothEndsOfTheScale) {
  const tests::Watchdog watchdog("cutoffs at the ends", 60);
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string response : {"lowpass", "highpass", "bandpass", "bandstop"})
      for (const std::string order : {"2", "5", "20"})
        for (const std::string cutoffs : {"0.0001 0.0001", "0.0001 0.9999", "0.9999 0.9999"})
          banged(make("units: normalized topology: " + topology + " response: " + response +
                      " order: " + order + " frequency: " + cutoffs));
}

// The eigenvalue iteration gives up on the pencil of these.
TEST_F(HazardTest, TheWidestBandstopsHaveTheirZerosOnTheCircle) {
  for (const std::string order : {"20", "38", "62"}) {
    const std::vector<double> zeros = numbers(
        banged(
            make("units: normalized response: bandstop frequency: 0.0001 0.9999 order: " + order)),
        "zeroes");
    for (std::size_t i = 0; i < zeros.size(); i += 2)
      EXPECT_NEAR(std::hypot(zeros[i], zeros[i + 1]), 1.0, 1e-9) << order;
  }
}

TEST_F(HazardTest, InfiniteCutoffs) {
  const tests::Watchdog watchdog("infinite cutoffs");
  const double infinity = std::numeric_limits<double>::infinity();
  const Box box = make();
  host.set(box, "frequency", {infinity});
  for (const double value : all_numbers(banged(box))) EXPECT_TRUE(std::isfinite(value));
  host.set(box, "frequency", {-infinity});
  for (const double value : all_numbers(banged(box))) EXPECT_TRUE(std::isfinite(value));
}

TEST_F(HazardTest, TheHighestOrders) {
  const tests::Watchdog watchdog("order 200", 100);
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string response : {"lowpass", "bandstop"}) {
      const auto filter =
          banged(make("order: 200 topology: " + topology + " response: " + response));
      EXPECT_EQ(numbers(filter, "poles").size(), response == "lowpass" ? 400U : 800U);
    }
}

// A host may run its modules on a small stack.
TEST(HazardOnASmallStack, TheHighestOrders) {
  const tests::Watchdog watchdog("order 200 on a small stack", 100);
  pthread_attr_t small;
  ASSERT_EQ(pthread_attr_init(&small), 0);
  // 64-bit ARM takes no less than the second.
  ASSERT_TRUE(pthread_attr_setstacksize(&small, std::size_t{64} * 1024) == 0 ||
              pthread_attr_setstacksize(&small, std::size_t{128} * 1024) == 0);
  pthread_t thread{};
  std::size_t poles = 0;
  const auto run = [](void *result) -> void * {
    std::ostringstream printed;
    patchbay::Host host(printed);
    host.load(VELTANE_MODULE);
    for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
      for (const std::string order : {"40", "200"}) {
        const Box box =
            host.make("veltane name: here tf_output: 1 response: bandstop topology: " + topology +
                      " order: " + order);
        host.send(box, "bang");
        *static_cast<std::size_t *>(result) +=
            numbers(host.dictionary("here").value(), "poles").size();
        host.free(box);
      }
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &small, run, &poles), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&small);
  EXPECT_EQ(poles, 3U * 4U * (40U + 200U));
}

TEST_F(HazardTest, EveryOutputOfAFilterThatCannotBe) {
  const tests::Watchdog watchdog("all outputs of a band without width");
  const Box box = make("units: normalized response: bandpass tf_output: 1 frequency: 0.5 0.5");
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"}) {
    host.set(box, "topology", {topology});
    host.send(box, "bang");
    EXPECT_EQ(numbers(published(box), "denominator").size(), 11U);
    EXPECT_EQ(numbers(published(box), "numerator").size(), 11U);
  }
}

// Chains of designs that a design starts, through outlets, come to an end.
TEST_F(HazardTest, ADesignThatBangsAnotherBox) {
  const tests::Watchdog watchdog("boxes that bang each other");
  const Box first = make();
  const Box second = make();
  host.listen(first, 0, [&](const std::string &, const Values &) { host.send(second, "bang"); });
  host.send(first, "bang");
  EXPECT_EQ(sent.size(), 2U);
  host.set(first, "order", {t_long{6}});
  EXPECT_EQ(host.run_deferred(), 1U);
}

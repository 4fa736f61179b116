// What a change of an attribute leads to.

#include <cmath>
#include <limits>

#include "box_test.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double pi = 3.14159265358979323846;

class ChangesTest : public BoxTest {
 protected:
  // The normalised cutoff that a Butterworth lowpass of order 2 was designed
  // for, from the poles alone: the sections of its denominator fix the analog
  // cutoff, and that the digital one.
  double designed_cutoff(Box box) {
    host.send(box, "bang");
    const std::vector<double> cascade = numbers(published(box), "cascade");
    const double a1 = cascade.at(3);
    const double a2 = cascade.at(4);
    // |analog pole|^2 = (1 + a1 + a2) / (1 - a1 + a2) = tan(pi w / 2)^2
    return std::atan(std::sqrt((1 + a1 + a2) / (1 - a1 + a2))) * 2 / pi;
  }

  Box butterworth(const std::string &settings = "") {
    return make("topology: butterworth order: 2 " + settings);
  }
};

}  // namespace

TEST_F(ChangesTest, HertzAreFractionsOfHalfTheSampleRate) {
  const Box box = butterworth("frequency: 6000");
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
  host.set(box, "frequency", {30000.0});
  EXPECT_NEAR(designed_cutoff(box), 0.9999, 1e-10);
  host.set(box, "frequency", {0.0});
  EXPECT_NEAR(designed_cutoff(box), 0.0001, 1e-10);
  host.set(box, "frequency", {-5.0});
  EXPECT_NEAR(designed_cutoff(box), 0.0001, 1e-10);
}

TEST_F(ChangesTest, NormalizedCutoffsAreClamped) {
  const Box box = butterworth("units: normalized frequency: 0.25");
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
  host.set(box, "frequency", {1.5});
  EXPECT_NEAR(designed_cutoff(box), 0.9999, 1e-10);
}

TEST_F(ChangesTest, UnknownUnitsCountAsNormalized) {
  EXPECT_NEAR(designed_cutoff(butterworth("units: octaves frequency: 0.25")), 0.25, 1e-12);
}

TEST_F(ChangesTest, UnitsReinterpretTheSameNumbers) {
  const Box box = butterworth("frequency: 6000");
  host.set(box, "units", {std::string("normalized")});
  EXPECT_EQ(host.get(box, "frequency"), Values{6000.0});
  EXPECT_NEAR(designed_cutoff(box), 0.9999, 1e-10);
}

TEST_F(ChangesTest, RadiansArePostedAndTheOldCutoffsStay) {
  const Box box = butterworth("frequency: 6000");
  host.set(box, "units", {std::string("radians")});
  const std::string apology = "oops -- haven't implemented support for radians yet";
  EXPECT_THAT(posted(), ElementsAre(apology));
  EXPECT_EQ(host.run_deferred(), 1U) << "the design is scheduled all the same";
  EXPECT_THAT(posted(), ElementsAre(apology, apology)) << "one for each design";
  host.set(box, "frequency", {100.0});
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
}

TEST_F(ChangesTest, ASampleRateOfItsOwnReplacesThatOfTheAudio) {
  const Box box = butterworth("frequency: 6000");
  host.set(box, "samplerate", {t_long{96000}});
  EXPECT_NEAR(designed_cutoff(box), 0.125, 1e-12);
  host.set(box, "samplerate", {t_long{0}});
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
}

TEST_F(ChangesTest, AudioSwitchedOnIsFollowedAtTheNextDesign) {
  const Box box = butterworth("frequency: 6000");
  host.audio_on(24000.0);
  EXPECT_EQ(host.run_deferred(), 0U) << "audio alone schedules nothing";
  EXPECT_NEAR(designed_cutoff(box), 0.5, 1e-12);
}

TEST_F(ChangesTest, AudioIsIgnoredWhenASampleRateIsSet) {
  const Box box = butterworth("frequency: 6000 samplerate: 48000");
  host.audio_on(24000.0);
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
}

// 1 Hz is a rate; below it the audio is followed.
TEST_F(ChangesTest, TheLowestSampleRateOfItsOwnIsOne) {
  const Box box = butterworth("samplerate: 1 frequency: 0.125");
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
  host.audio_on(24000.0);
  EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12);
  for (const t_long follows : {0, -1, -48000}) {
    host.set(box, "samplerate", {follows});
    host.set(box, "frequency", {6000.0});
    EXPECT_NEAR(designed_cutoff(box), 0.5, 1e-12) << follows;
    host.audio_on(48000.0);
    EXPECT_NEAR(designed_cutoff(box), 0.25, 1e-12) << follows;
    host.audio_on(24000.0);
  }
}

TEST_F(ChangesTest, RatesAreCutOffTowardsZero) {
  for (const auto &[rate, whole] : {std::pair(44100.7, 44100.0), std::pair(-44100.7, -44100.0)}) {
    host.audio_off();
    host.set_samplerate(rate);
    const Box made = butterworth();
    EXPECT_EQ(host.get(made, "frequency"), Values{whole * 0.0625});

    host.set(made, "frequency", {whole * 0.1});
    EXPECT_NEAR(designed_cutoff(made), 0.2, 1e-12) << rate;

    host.set_samplerate(96000.0);
    const Box told = butterworth();
    host.audio_on(rate);  // by "dsp64"
    host.set(told, "frequency", {whole * 0.1});
    EXPECT_NEAR(designed_cutoff(told), 0.2, 1e-12) << rate;

    host.set(told, "samplerate", {t_long{0}});  // by a notice
    EXPECT_NEAR(designed_cutoff(told), 0.2, 1e-12) << rate;
  }
}

TEST_F(ChangesTest, AtNoSampleRateCutoffsGoToTheEnds) {
  host.set_samplerate(0.0);
  const Box box = butterworth("frequency: 1000");
  EXPECT_NEAR(designed_cutoff(box), 0.9999, 1e-10);
  host.set(box, "frequency", {0.0});
  EXPECT_NEAR(designed_cutoff(box), 0.0001, 1e-10);
}

TEST_F(ChangesTest, NoSampleRateIsTooOddToSurvive) {
  for (const double rate :
       {std::nan(""), 1e300, -1e300, -48000.0, 1e19, std::numeric_limits<double>::infinity()}) {
    host.set_samplerate(rate);
    const Box box = butterworth("frequency: 1000");
    host.audio_on(rate);
    const double cutoff = designed_cutoff(box);
    EXPECT_GE(cutoff, 0.0001 - 1e-10) << rate;
    EXPECT_LE(cutoff, 0.9999 + 1e-10) << rate;
    host.free(box);
  }
}

// --- the count of cutoffs

TEST_F(ChangesTest, TheResponseSetsHowManyCutoffsCount) {
  const Box box = make();
  host.set(box, "response", {std::string("bandpass")});
  EXPECT_EQ(host.get(box, "frequency"), (Values{3000.0, 21000.0}));
  host.set(box, "response", {std::string("lowpass")});
  EXPECT_EQ(host.get(box, "frequency"), Values{3000.0});
  host.set(box, "response", {std::string("bandstop")});
  EXPECT_EQ(host.get(box, "frequency").size(), 2U);
  host.set(box, "response", {std::string("highpass")});
  EXPECT_EQ(host.get(box, "frequency").size(), 1U);
}

TEST_F(ChangesTest, TheResponseSetsTheCountDuringADesignToo) {
  const Box box = host.make("veltane");
  std::vector<std::size_t> counts;
  host.listen(box, 0, [&](const std::string &, const Values &) {
    for (const char *response : {"bandpass", "highpass", "bandstop"}) {
      host.set(box, "response", {std::string(response)});
      counts.push_back(host.get(box, "frequency").size());
    }
  });
  host.send(box, "bang");
  EXPECT_THAT(counts, ElementsAre(2, 1, 2));
  EXPECT_EQ(host.run_deferred(), 0U);
}

// --- which settings are in use

TEST_F(ChangesTest, TheFamilyDecidesWhichLevelIsInUse) {
  const Box box = make();
  const auto in_use = [&](const char *topology) {
    host.set(box, "topology", {std::string(topology)});
    return std::pair(!host.disabled(box, "passband_ripple"),
                     !host.disabled(box, "stopband_attenuation"));
  };
  EXPECT_EQ(in_use("butterworth"), std::pair(false, false));
  EXPECT_EQ(in_use("chebyshev-1"), std::pair(true, false));
  EXPECT_EQ(in_use("chebyshev-2"), std::pair(false, true));
  EXPECT_EQ(in_use("elliptic"), std::pair(false, false));
}

// --- scheduling

TEST_F(ChangesTest, EveryAttributeButTheNameSchedulesADesign) {
  const Box box = make();
  for (const auto &attribute : host.attributes("veltane")) {
    host.set(box, attribute.name, host.get(box, attribute.name));
    EXPECT_EQ(host.run_deferred(), attribute.name == "name" ? 0U : 1U) << attribute.name;
  }
  host.set(box, "name", {std::string("another")});
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(ChangesTest, ABurstOfChangesIsOneDesign) {
  const Box box = make();
  for (t_long order = 2; order <= 60; ++order) host.set(box, "order", {order});
  host.set(box, "response", {std::string("bandpass")});
  EXPECT_THAT(sent, IsEmpty()) << "no design runs inside a notification";
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_EQ(sent.size(), 1U);
  EXPECT_EQ(host.run_deferred(), 0U);
}

// The detour over the cutoffs is the one that schedules, and that complains.
TEST_F(ChangesTest, AChangeOfResponseSchedulesOnceAndComplainsOnce) {
  const Box box = make("units: radians");
  const std::size_t before = posted().size();
  for (const char *response : {"bandpass", "highpass"}) {
    const std::size_t posts = posted().size();
    inspector.start_trace();
    host.set(box, "response", {std::string(response)});
    const std::vector<std::string> calls = texts(inspector.stop_trace());
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "qelem_set()"), 1) << response;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "qelem_unset()"), 1) << response;
    EXPECT_EQ(posted().size(), posts + 1) << response;
  }
  EXPECT_EQ(before, 1U) << "one for the units themselves";
  EXPECT_EQ(host.run_deferred(), 1U);
}

TEST_F(ChangesTest, ADesignSchedulesNoFurtherDesign) {
  const Box box = make();
  host.send(box, "bang");
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(ChangesTest, WhileABoxDesignsNoOtherSchedules) {
  const Box designing = make();
  const Box other = make();
  host.listen(designing, 0,
              [&](const std::string &, const Values &) { host.set(other, "order", {t_long{7}}); });
  host.send(designing, "bang");
  EXPECT_EQ(host.run_deferred(), 0U);
  host.set(other, "order", {t_long{8}});
  EXPECT_EQ(host.run_deferred(), 1U) << "afterwards it does again";
}

// A design started by another one's announcement does not end the outer one.
TEST_F(ChangesTest, NestedDesignsCountAsOne) {
  const Box outer = host.make("veltane");
  const Box inner = host.make("veltane");
  host.listen(outer, 0, [&](const std::string &, const Values &) {
    host.send(inner, "bang");
    host.set(outer, "order", {t_long{7}});
  });
  host.send(outer, "bang");
  EXPECT_EQ(host.run_deferred(), 0U);
  host.set(inner, "order", {t_long{8}});
  EXPECT_EQ(host.run_deferred(), 1U) << "afterwards changes schedule designs again";
}

TEST_F(ChangesTest, AChangedBoxGoesToTheEndOfTheQueue) {
  const Box first = make("name: first");
  const Box second = make("name: second");
  host.set(first, "order", {t_long{6}});
  host.set(second, "order", {t_long{6}});
  host.set(first, "order", {t_long{7}});
  host.run_deferred();
  EXPECT_THAT(sent, ElementsAre("dictionary second", "dictionary first"));
}

// Both cutoffs are kept current, also while only one counts.
TEST_F(ChangesTest, TheSecondCutoffFollowsTheSampleRateToo) {
  const auto poles = [&](const std::string &settings) {
    const Box box = make(settings);
    host.set(box, "samplerate", {t_long{96000}});
    host.set(box, "units", {std::string("radians")});  // freezes what is normalised
    host.set(box, "response", {std::string("bandpass")});
    host.send(box, "bang");
    return numbers(published(box), "poles");
  };
  EXPECT_EQ(
      poles("frequency: 3000"),
      numbers(designed("response: bandpass units: normalized frequency: 0.0625 0.4375"), "poles"));
}

TEST_F(ChangesTest, ANewBoxIsNormalizedBeforeAnyNotice) {
  EXPECT_EQ(
      numbers(designed("units: radians response: bandpass"), "poles"),
      numbers(designed("units: normalized response: bandpass frequency: 0.125 0.875"), "poles"));
}

TEST_F(ChangesTest, AnAudioRateThatIsNoNumberIsZeroHertz) {
  host.set_samplerate(std::nan(""));
  EXPECT_EQ(host.get(make(), "frequency"), Values{0.0});
  host.set_samplerate(-1e300);
  EXPECT_EQ(host.get(make(), "frequency"), Values{-9223372036854775808.0 * 0.0625});
}

TEST_F(ChangesTest, OtherNoticesAreNoChanges) {
  const Box box = make();
  host.notify(box, "editor_closed");
  host.notify(box, "free");
  EXPECT_EQ(host.run_deferred(), 0U);
}

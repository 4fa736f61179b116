// What `veltane estimate` promises, measured on the filters that its commands make.

#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "../../cascade_response.h"
#include "../run_command.h"

using Json = nlohmann::ordered_json;
using testing::AllOf;
using testing::HasSubstr;

namespace {

using Edges = std::vector<double>;

struct Demand {
  Edges pass, stop;
  double ripple, attenuation;
  double samplerate;

  std::string options() const {
    std::string text = "--passband";
    for (const double edge : pass) text += ' ' + std::to_string(edge);
    text += " --stopband";
    for (const double edge : stop) text += ' ' + std::to_string(edge);
    return text + " --ripple " + std::to_string(ripple) + " --attenuation " +
           std::to_string(attenuation) + " --samplerate " + std::to_string(samplerate);
  }

  // Whether a frequency is in the passband; whether it is in the stopband.
  bool passes(double hz) const {
    if (pass.size() == 1) return pass[0] < stop[0] ? hz <= pass[0] : hz >= pass[0];
    return (hz >= pass[0] && hz <= pass[1]) == (stop[0] < pass[0]) || hz == pass[0] ||
           hz == pass[1];
  }
  bool stops(double hz) const {
    if (pass.size() == 1) return pass[0] < stop[0] ? hz >= stop[0] : hz <= stop[0];
    return (hz >= stop[0] && hz <= stop[1]) == (pass[0] < stop[0]) || hz == stop[0] ||
           hz == stop[1];
  }
};

void PrintTo(const Demand &demand, std::ostream *out) { *out << demand.options(); }

Json estimated(const std::string &arguments) {
  const Outcome outcome = veltane("estimate --format json " + arguments);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return Json::parse(outcome.out);
}

// The words behind "veltane" as typed.
std::string typed(const Json &command) {
  std::string text;
  for (std::size_t i = 1; i < command.size(); ++i) text += command[i].get<std::string>() + ' ';
  return text;
}

struct Reached {
  double ripple = -1e9, attenuation = 1e9;
};

// Over many frequencies and all edges.
Reached measured(const std::string &design, const Demand &demand) {
  const Outcome outcome = veltane(design + "--format json");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "") << "nothing is clipped";
  const auto cascade = Json::parse(outcome.out)["dictionary"]["cascade"].get<std::vector<double>>();
  Edges at = demand.pass;
  at.insert(at.end(), demand.stop.begin(), demand.stop.end());
  constexpr int steps = 20000;
  for (int i = 0; i <= steps; ++i) at.push_back(demand.samplerate / 2 * i / steps);
  Reached reached;
  for (const double hz : at) {
    const double loss = -cascade_level_db(cascade, hz, demand.samplerate);
    if (demand.passes(hz)) reached.ripple = std::max(reached.ripple, loss);
    if (demand.stops(hz)) reached.attenuation = std::min(reached.attenuation, loss);
  }
  return reached;
}

class Estimate : public testing::TestWithParam<Demand> {};

// Cutoffs are printed with ten digits.
constexpr double tolerance_db = 1e-5;

}  // namespace

TEST_P(Estimate, TheCommandsMakeFiltersThatMeetIt) {
  const Json document = estimated(GetParam().options());
  int possible = 0;
  for (const Json &family : document["families"]) {
    if (!family["possible"].get<bool>()) continue;
    ++possible;
    const Reached reached = measured(typed(family.at("design")), GetParam());
    EXPECT_LE(reached.ripple, GetParam().ripple + tolerance_db) << family["family"];
    EXPECT_GE(reached.attenuation, GetParam().attenuation - tolerance_db) << family["family"];
    // The grid may miss the very extremes.
    EXPECT_NEAR(reached.ripple, family.at("ripple").get<double>(), 0.01);
    EXPECT_NEAR(reached.attenuation, family.at("attenuation").get<double>(), 0.2);
  }
  EXPECT_EQ(possible, 3);
}

TEST_P(Estimate, OneOrderLessDoesNot) {
  const Json document = estimated(GetParam().options());
  for (const Json &family : document["families"]) {
    if (family["family"] == "butterworth" || family.at("order").get<int>() <= 2) continue;
    Json words = family.at("design");
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
      if (words[i] == "--order") words[i + 1] = std::to_string(family.at("order").get<int>() - 1);
    const Reached reached = measured(typed(words), GetParam());
    EXPECT_TRUE(reached.ripple > GetParam().ripple + tolerance_db ||
                reached.attenuation < GetParam().attenuation - tolerance_db)
        << family["family"];
  }
}

INSTANTIATE_TEST_SUITE_P(
    Demands, Estimate,
    testing::Values(Demand{{1000}, {1500}, 1, 60, 48000}, Demand{{1500}, {1000}, 1, 60, 48000},
                    Demand{{20000}, {21000}, 0.1, 100, 44100}, Demand{{40}, {20}, 3, 80, 96000},
                    Demand{{300, 3400}, {200, 4000}, 0.5, 40, 48000},
                    Demand{{300, 3400}, {100, 3600}, 0.5, 40, 8000},
                    Demand{{200, 4000}, {300, 3400}, 0.5, 40, 48000},
                    Demand{{45, 70}, {50, 60}, 1, 30, 48000}, Demand{{1000}, {4000}, 2, 5, 48000}));

// Of a Butterworth lowpass whose passband ends as demanded: (10^(r/10) - 1) (ws / wp)^(2n).
TEST(EstimateOrder, OfAButterworthIsTheLeast) {
  const Json butterworth =
      estimated("--passband 1000 --stopband 1500 --ripple 1 --attenuation 60")["families"][0];
  const double ratio =
      std::tan(std::numbers::pi * 1500 / 48000) / std::tan(std::numbers::pi * 1000 / 48000);
  const auto attenuation = [&](int order) {
    return 10 * std::log10(1 + (std::pow(10, 0.1) - 1) * std::pow(ratio, 2 * order));
  };
  const int order = butterworth.at("order");
  EXPECT_GE(attenuation(order), 60);
  EXPECT_LT(attenuation(order - 1), 60);
  EXPECT_NEAR(butterworth.at("attenuation").get<double>(), attenuation(order), 1e-6);
}

TEST(EstimateUnits, FractionsGiveTheSameAsHertz) {
  const Json hertz = estimated("--passband 6000 --stopband 9000 --ripple 1 --attenuation 60");
  const Json fractions =
      estimated("--passband 0.25 --stopband 0.375 --ripple 1 --attenuation 60 --units normalized");
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(fractions["families"][i].at("order"), hertz["families"][i].at("order"));
    EXPECT_NEAR(fractions["families"][i].at("cutoffs")[0].get<double>() * 24000,
                hertz["families"][i].at("cutoffs")[0].get<double>(), 1e-6);
    EXPECT_THAT(typed(fractions["families"][i].at("design")), HasSubstr("--units normalized"));
  }
}

TEST(EstimateText, HasALineForEachFamilyAndTheCommands) {
  const Outcome outcome =
      veltane("estimate --passband 1000 --stopband 1500 --ripple 1 --attenuation 60");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(
      outcome.out.starts_with("lowpass at 48000 Hz: loses at most 1 dB up to 1000 Hz, and "
                              "at least 60 dB from 1500 Hz on\n"));
  const Json estimate = estimated("--passband 1000 --stopband 1500 --ripple 1 --attenuation 60");
  for (const Json &family : estimate.at("families"))
    EXPECT_THAT(
        outcome.out,
        HasSubstr("\nveltane " +
                  typed(family.at("design")).erase(typed(family.at("design")).size() - 1) + '\n'));
}

TEST(EstimateText, TheEdgeThatIsHeldHasNoMargin) {
  const Json estimate = estimated("--passband 1k --stopband 1.5kHz --ripple 1dB --attenuation 60");
  for (const Json &family : estimate.at("families")) {
    const bool at_passband = family.at("holds") == "passband";
    const double ripple = family.at("ripple"), attenuation = family.at("attenuation");
    EXPECT_NEAR(at_passband ? ripple : attenuation, at_passband ? 1.0 : 60.0, 1e-4) << family;
    EXPECT_GT(at_passband ? attenuation - 60.0 : 1.0 - ripple, 0.1) << family;
  }
}

TEST(EstimateText, OneFamilyAloneIsNotRecommended) {
  const std::string demand = " --passband 300,3400 --stopband 200,4000 --ripple 1 --attenuation 40";
  const Outcome all = veltane("estimate" + demand + " --fs 44.1k");
  EXPECT_THAT(all.out, HasSubstr("Recommended: chebyshev-2 (fewest poles, least noise)"));
  EXPECT_THAT(
      veltane("estimate --passband 0.06 --stopband 0.03 --ripple 0.5 --attenuation 18 --fs 1k").out,
      AllOf(HasSubstr("butterworth  not possible: order 5 meets it with a cutoff of "),
            HasSubstr("Recommended: chebyshev-1 (the only one possible)")));
  const Outcome one = veltane("estimate --topology Cheby1" + demand);
  EXPECT_EQ(one.status, 0);
  EXPECT_THAT(one.out, testing::Not(HasSubstr("Recommended: ")));
  EXPECT_THAT(one.out, testing::Not(HasSubstr("butterworth")));
  const Json families = estimated("--topology cheby1" + demand).at("families");
  ASSERT_EQ(families.size(), 1U);
  EXPECT_EQ(families[0].at("family"), "chebyshev-1");
  EXPECT_THAT(veltane("estimate --topology chebishev1" + demand).err,
              HasSubstr("did you mean chebyshev-1?"));
}

TEST(EstimateImpossible, OrdersAboveTheHighestAreNamed) {
  const std::string narrow = "estimate --passband 1000 --stopband 1001 --ripple 1 --attenuation 60";
  const Outcome some = veltane(narrow);
  EXPECT_EQ(some.status, 0) << "two families can do it";
  EXPECT_THAT(some.out,
              HasSubstr("butterworth  not possible: it takes order 7566; the highest is 200"));
  EXPECT_THAT(some.out, testing::Not(HasSubstr("--topology butterworth")));
  const Outcome none =
      veltane("estimate --passband 1000 --stopband 1000.001 --ripple 1 --attenuation 60");
  EXPECT_EQ(none.status, 1);
  EXPECT_THAT(none.out, testing::Not(HasSubstr("veltane design")));
}

TEST(EstimateImpossible, LevelsAndGainsThatAFamilyCannotHaveAreNamed) {
  EXPECT_THAT(
      veltane("estimate --passband 1000 --stopband 2000 --ripple 0.05 --attenuation 250").out,
      testing::AllOf(HasSubstr("chebyshev-1  not possible: its ripple is 0.1 dB or more"),
                     HasSubstr("chebyshev-2  not possible: its attenuation is 240 dB or")));
  EXPECT_THAT(veltane("estimate --passband 20 --stopband 22 --ripple 1 --attenuation 100").out,
              HasSubstr("its gain is too small for a double"));
}

TEST(EstimateLimits, HaveTwoSides) {
  const std::string edges = "estimate --passband 1000 --stopband 2000 ";
  const auto estimate = [&](const char *levels) { return veltane(edges + levels); };
  EXPECT_EQ(estimate("--ripple 1e-6 --attenuation 60").status, 0);
  for (const char *ripple : {"9e-7", "1e-9", "0"}) {
    const Outcome outcome =
        estimate((std::string("--ripple ") + ripple + " --attenuation 60").c_str());
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("the loss in the passband must be at least 1e-06 dB"));
  }
  EXPECT_EQ(estimate("--ripple 1 --attenuation 1000").status, 0);
  EXPECT_EQ(estimate("--ripple 1 --attenuation 1000.1").status, 2);
  EXPECT_EQ(estimate("--ripple 1 --attenuation 1.001").status, 0);
  EXPECT_EQ(estimate("--ripple 1 --attenuation 1").status, 2);
  const std::string family = "chebyshev-1  not possible: its ripple";
  EXPECT_THAT(estimate("--ripple 0.0999 --attenuation 60").out, HasSubstr(family));
  EXPECT_THAT(estimate("--ripple 0.1 --attenuation 60").out, testing::Not(HasSubstr(family)));
  const std::string other = "chebyshev-2  not possible: its attenuation";
  EXPECT_THAT(estimate("--ripple 1 --attenuation 240.1").out, HasSubstr(other));
  EXPECT_THAT(estimate("--ripple 1 --attenuation 240").out, testing::Not(HasSubstr(other)));
}

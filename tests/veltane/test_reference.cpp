// Published filters against zeros, poles and gain in closed form, computed in 50
// digits by tests/reference.

#include <fmt/format.h>

#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>

#include "box_test.h"
#include "published_filter.h"

namespace {

using Json = nlohmann::json;

// Of a half-band band filter of odd order, two poles of a Butterworth coincide at
// 0. A double pole is the root of a difference that should be 0, so rounding
// moves it by the root of itself.
constexpr double double_pole_tolerance = 1e-7;

struct Reference {
  std::string name;
  std::string settings;
  std::vector<Complex> zeros;
  std::vector<Complex> poles;
  double gain;
  bool double_pole;
  int order;
  std::vector<double> fixed;  // b1 / b0 and b2 / b0 of every section, where the
                              // response alone decides them
};

// The zeros of an all-pole design lie at -1, at 1, or at both.
std::vector<double> fixed_numerator(const std::string &family, const std::string &response) {
  if (family == "chebyshev-2" || response == "bandstop") return {};
  if (response == "bandpass") return {0.0, -1.0};
  return {response == "highpass" ? -2.0 : 2.0, 1.0};
}

std::vector<Complex> complex_list(const Json &list) {
  std::vector<Complex> roots;
  for (const Json &root : list) roots.emplace_back(root[0].get<double>(), root[1].get<double>());
  return roots;
}

std::vector<Reference> read_references() {
  std::ifstream file(VELTANE_REFERENCE);
  const Json document = Json::parse(file);
  std::vector<Reference> references;
  for (const Json &record : document.at("records")) {
    Reference reference;
    const auto family = record.at("family").get<std::string>();
    const auto response = record.at("response").get<std::string>();
    reference.order = record.at("order").get<int>();
    reference.name = fmt::format("{} {} {} {}", family, response, reference.order,
                                 record.at("setting").get<std::string>());
    std::string cutoffs;
    for (const Json &cutoff : record.at("cutoffs"))
      cutoffs += fmt::format(" {}", cutoff.get<double>());
    reference.settings = fmt::format(
        "topology: {} response: {} order: {} units: normalized frequency:{} passband_ripple: {} "
        "stopband_attenuation: {}",
        family, response, reference.order, cutoffs, record.at("ripple").get<double>(),
        record.at("attenuation").get<double>());
    reference.zeros = complex_list(record.at("zeros"));
    reference.poles = complex_list(record.at("poles"));
    reference.gain = record.at("gain").get<double>();
    reference.double_pole =
        std::count(reference.poles.begin(), reference.poles.end(), Complex(0.0, 0.0)) > 1;
    reference.fixed = fixed_numerator(family, response);
    references.push_back(reference);
  }
  return references;
}

// The largest distance between two lists of as many roots, each paired with the
// nearest that is left.
double distance(const std::vector<Complex> &found, std::vector<Complex> expected) {
  double largest = found.size() == expected.size() ? 0.0 : std::numeric_limits<double>::infinity();
  for (const Complex &root : found) {
    if (expected.empty()) break;
    const auto nearest =
        std::min_element(expected.begin(), expected.end(), [&](const Complex &a, const Complex &b) {
          return std::abs(a - root) < std::abs(b - root);
        });
    // Written so that a NaN is never within a tolerance.
    const double to_nearest = std::abs(*nearest - root);
    if (!(to_nearest <= largest)) largest = to_nearest;
    expected.erase(nearest);
  }
  return largest;
}

class ReferenceTest : public BoxTest {
 protected:
  static const std::vector<Reference> &references() {
    static const std::vector<Reference> all = read_references();
    return all;
  }
};

}  // namespace

TEST_F(ReferenceTest, CoversEveryFamilyResponseOrderAndSetting) {
  EXPECT_EQ(references().size(), 3U * 4U * 6U * 3U);
}

TEST_F(ReferenceTest, ZerosPolesAndGainAreRight) {
  for (const Reference &reference : references()) {
    const auto filter = designed(reference.settings);
    const double tolerance = reference.order <= 5 ? 1e-10 : 1e-5;
    EXPECT_LE(distance(roots_of(numbers(filter, "zeroes")), reference.zeros), tolerance)
        << reference.name;
    EXPECT_LE(distance(roots_of(numbers(filter, "poles")), reference.poles),
              reference.double_pole ? double_pole_tolerance : tolerance)
        << reference.name;
    EXPECT_NEAR(entry<double>(filter, "gain") / reference.gain, 1.0, tolerance) << reference.name;
  }
}

TEST_F(ReferenceTest, TheCascadeHasTheRightResponse) {
  for (const Reference &reference : references()) {
    const auto cascade = numbers(designed(reference.settings), "cascade");
    for (int i = 1; i < 200; ++i) {
      const Complex z = on_circle(i / 200.0);
      const double expected =
          decibels(zpk_response(reference.zeros, reference.poles, reference.gain, z));
      // Beside a zero on the circle the level falls without bound.
      if (expected < -150.0) continue;
      EXPECT_NEAR(decibels(cascade_response(cascade, z)), expected, 1e-4)
          << reference.name << " at " << i / 200.0;
    }
  }
}

TEST_F(ReferenceTest, SectionsAreCountedOrderedAndLaidOutAsPromised) {
  for (const Reference &reference : references()) {
    const auto cascade = numbers(designed(reference.settings), "cascade");
    const std::size_t poles = reference.poles.size();
    ASSERT_EQ(cascade.size(), 5 * (poles / 2 + poles % 2)) << reference.name;

    // The denominators that the conjugate pairs must have, nearest to the circle
    // first; pairs at the same distance may come in either order.
    std::vector<Complex> upper;
    for (const Complex &pole : reference.poles)
      if (pole.imag() > 0.0) upper.push_back(pole);
    double last = -1.0;
    std::size_t pairs = 0;
    for (std::size_t k = 0; k < poles / 2; ++k) {
      const double *section = &cascade[5 * k];
      const double a1 = section[3];
      const double a2 = section[4];
      const bool is_pair = a1 * a1 < 4 * a2;
      if (is_pair && !reference.double_pole) {
        const auto partner = std::find_if(upper.begin(), upper.end(), [&](const Complex &pole) {
          return std::abs(a1 + 2 * pole.real()) < 1e-9 && std::abs(a2 - std::norm(pole)) < 1e-9;
        });
        ASSERT_NE(partner, upper.end()) << reference.name << ": section " << k;
        const double from_circle = 1.0 - std::abs(*partner);
        EXPECT_GE(from_circle, last - 1e-9) << reference.name << ": section " << k;
        last = from_circle;
        upper.erase(partner);
        ++pairs;
      }
      // All but the first section begin with 1, and the first has all the gain.
      EXPECT_NEAR(section[0] / (k == 0 ? reference.gain : 1.0), 1.0, k == 0 ? 1e-5 : 0.0)
          << reference.name << ": section " << k;
      if (reference.fixed.empty()) continue;
      EXPECT_EQ(section[1], reference.fixed[0] * section[0]) << reference.name;
      EXPECT_EQ(section[2], reference.fixed[1] * section[0]) << reference.name;
    }
    EXPECT_TRUE(reference.double_pole || upper.empty()) << reference.name << ": a pair is missing";
    EXPECT_TRUE(reference.double_pole || pairs > 0) << reference.name;
    if (poles % 2 == 1) {
      const double *section = &cascade[cascade.size() - 5];
      EXPECT_EQ(section[0], 1.0) << reference.name << ": no gain in the first-order section";
      EXPECT_EQ(section[2], 0.0) << reference.name << ": b2";
      EXPECT_EQ(section[4], 0.0) << reference.name << ": a2";
    }
  }
}

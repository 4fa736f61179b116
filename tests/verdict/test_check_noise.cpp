// What is left of a signal that runs through the sections, and whether the verdict says so.

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "analysis/arrangement.h"
#include "analysis/realization.h"
#include "analysis/run.h"
#include "check_test.h"
#include "checks.h"

using testing::HasSubstr;
using namespace verdict;

namespace {

using analysis::Sections;
using Samples = std::vector<double>;

// The largest error of a run over the wanted output's largest value, for noise that fills the range.
template <class T, class Run>
double error_of(const Sections &sections, const Run &run) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<float> even(-1.0F, 1.0F);
  std::vector<T> signal(20000);
  for (T &sample : signal) sample = static_cast<T>(even(random));
  const std::vector<long double> exact(signal.begin(), signal.end());
  const std::vector<long double> wanted = analysis::run_direct_2_transposed(
      analysis::arranged(sections, analysis::Structure::direct_2_transposed), exact);
  const std::vector<T> got = run(signal);
  long double peak = 0.0L, error = 0.0L;
  for (std::size_t i = 0; i < got.size(); ++i) {
    peak = std::max(peak, std::fabs(wanted[i]));
    const long double here = std::fabs(static_cast<long double>(got[i]) - wanted[i]);
    if (!(here <= error)) error = here;
  }
  return static_cast<double>(error / peak);
}

template <class T>
double published_error(const Sections &sections) {
  return error_of<T>(sections, [&](const std::vector<T> &signal) {
    return analysis::run_direct_2_transposed(sections, signal);
  });
}

// As 'veltane export --for c-float' writes it.
double exported_float_error(const Forms &forms) {
  const analysis::Realization exported =
      analysis::chosen_realization(forms.sections, forms.roots, analysis::Arithmetic::floats).taken;
  return error_of<float>(forms.sections, [&](const std::vector<float> &signal) {
    return exported.structure == analysis::Structure::state_variable
               ? analysis::run_state_variable(exported.forms, signal)
               : analysis::run_direct_2_transposed(exported.sections, signal);
  });
}

// As it is written for programs that have direct forms only.
double direct_float_error(const Sections &sections) {
  const Sections arranged = analysis::arranged(sections, analysis::Structure::direct_1);
  return std::max(error_of<float>(sections,
                                  [&](const std::vector<float> &signal) {
                                    return analysis::run_direct_1(arranged, signal);
                                  }),
                  error_of<float>(sections, [&](const std::vector<float> &signal) {
                    return analysis::run_direct_2_transposed(arranged, signal);
                  }));
}

designer::Settings band(const char *family, const char *response, t_long order, double low,
                        double high, t_long rate) {
  return {{"topology", {std::string(family)}},
          {"response", {std::string(response)}},
          {"order", {order}},
          {"frequency", {low, high}},
          {"samplerate", {rate}}};
}

}  // namespace

TEST(CheckNoise, OfAPlainFilterIsFarBelowTheSignal) {
  const Verdict verdict = checked({});
  EXPECT_THAT(fact(verdict, "noise"), HasSubstr("dB below the output's peak"));
  EXPECT_LT(measured(verdict, "noise_db"), -250);
}

TEST(CheckNoise, AFilterThatIsGarbageInDoublesIsAProblem) {
  const FilterUnderTest filter = designed(band("butterworth", "bandpass", 48, 20, 450, 2000));
  const Verdict verdict = judge(filter);
  EXPECT_GT(published_error<double>(filter.forms.sections), 1.0);
  EXPECT_THAT(problem(verdict, "noise"), HasSubstr("as published"));
  EXPECT_THAT(problem(verdict, "noise"), HasSubstr("as 'veltane export' arranges them"));
  EXPECT_LT(measured(verdict, "noise_exported_db"), -200);
}

TEST(CheckNoise, FloatsAreSafeAsTheyAreExported) {
  const FilterUnderTest filter = designed(band("butterworth", "bandpass", 8, 20, 20000, 48000));
  const Verdict verdict = judge(filter);
  EXPECT_GT(published_error<float>(filter.forms.sections), 1.0);
  EXPECT_THAT(fact(verdict, "float"), HasSubstr("writes it: in state-variable sections"));
  EXPECT_THAT(fact(verdict, "float"), HasSubstr("not safe as published"));
  EXPECT_LT(exported_float_error(filter.forms), 1e-5);
  EXPECT_THAT(note(verdict, "float"), HasSubstr("not safe in programs that have direct forms"));
  EXPECT_GT(direct_float_error(filter.forms.sections), 1e-4);
}

// Direct forms are not told apart where they do as well, in the order in which they are exported.
TEST(CheckNoise, DirectFormsInFloatsAreSafeInAnotherOrderWhereThatIsEnough) {
  const FilterUnderTest filter = designed(band("butterworth", "bandpass", 12, 1000, 20000, 48000));
  const Verdict verdict = judge(filter);
  EXPECT_THAT(fact(verdict, "float"), HasSubstr("not safe as published"));
  EXPECT_EQ(note(verdict, "float"), "");
  EXPECT_GT(published_error<float>(filter.forms.sections), 0.001);
  EXPECT_LT(direct_float_error(filter.forms.sections), 0.001);
  EXPECT_LT(measured(verdict, "float_noise_direct_db"), -60);
}

// Whatever is called safe must be: an error of less than a hundredth of the peak, when it runs.
TEST(CheckNoise, NothingIsCalledSafeThatIsNot) {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> family(0, 2), order(2, 12), kind(0, 1);
  std::uniform_real_distribution<double> octave(0.0, 11.0);
  int safe = 0, safe_in_direct_forms = 0, unsafe_in_direct_forms = 0;
  for (int i = 0; i < 200; ++i) {
    double low = 10.0 * std::exp2(octave(random)), high = 10.0 * std::exp2(octave(random));
    if (low > high) std::swap(low, high);
    if (high < 1.05 * low) continue;
    const char *families[] = {"butterworth", "chebyshev-1", "chebyshev-2"};
    const char *responses[] = {"bandpass", "bandstop"};
    const FilterUnderTest filter =
        designed(band(families[family(random)], responses[kind(random)], order(random), low,
                      std::min(high, 23000.0), 48000));
    const Verdict verdict = judge(filter);
    const Sections &sections = filter.forms.sections;
    if (!verdict.findings.measured.contains("float_safe")) continue;
    if (verdict.findings.measured["float_safe"].get<bool>()) {
      ++safe;
      EXPECT_LT(exported_float_error(filter.forms), 1e-3) << verdict.title;
    }
    if (note(verdict, "float").find("direct forms only") == std::string::npos) {
      ++safe_in_direct_forms;
      EXPECT_LT(direct_float_error(sections), 0.01) << verdict.title;
    } else {
      ++unsafe_in_direct_forms;
    }
    if (fact(verdict, "float").find("not safe as published") == std::string::npos) {
      EXPECT_LT(published_error<float>(sections), 0.01) << verdict.title;
    }
    if (problem(verdict, "noise").empty() && verdict.findings.measured.contains("noise_db")) {
      EXPECT_LT(published_error<double>(sections), 1e-3) << verdict.title;
    }
  }
  EXPECT_GT(safe, 100);
  EXPECT_GT(safe_in_direct_forms, 40);
  EXPECT_GT(unsafe_in_direct_forms, 40);
}

// Runs cascades on signals, in doubles and in floats and in each structure, and writes how far
// the output is from that in a wider arithmetic.
//
//   bench-running CASCADES
//
// CASCADES is a JSON lines file of {"name", "published", "scipy", "zeros", "poles", "gain"}: sections
// of b0 b1 b2 a1 a2 each in one list, roots as pairs of numbers; "scipy" may be null. For each line one is written: the errors relative to the
// output's peak, by sections, structure and arithmetic. One that is not finite is null.

#include <algorithm>
#include <cmath>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <numbers>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "analysis/arrangement.h"
#include "analysis/extremes.h"
#include "analysis/realization.h"
#include "analysis/run.h"

namespace {

using namespace analysis;
using nlohmann::json;

// Rounding errors have grown as far as they do after some times of what the slowest pole takes.
constexpr double times_of_slowest_pole = 8;
constexpr double fewest_samples = 2000;
constexpr double most_samples = 24000;

// What judges is judged itself for one filter in so many, over the first samples.
constexpr std::size_t judged_filters = 20;
constexpr std::size_t judged_samples = 8000;

using Signal = std::vector<float>;
using Reference = std::vector<long double>;

/** As many samples as the slowest pole needs. */
std::size_t length_for(const Sections &filter) {
  double outermost = 0;
  for (const Section &section : filter)
    outermost = std::max(outermost, std::abs(quadratic_roots(section.a1, section.a2).front()));
  const double wanted = times_of_slowest_pole / std::max(1 - outermost, 1e-9);
  return static_cast<std::size_t>(std::clamp(wanted, fewest_samples, most_samples));
}

Signal white_noise(std::size_t length) {
  std::mt19937 generator(1);
  std::uniform_real_distribution<float> uniform(-1.0F, 1.0F);
  Signal signal(length);
  for (float &sample : signal) sample = uniform(generator);
  return signal;
}

/** A sine where the filter is loudest, which is where what is rounded is largest. */
Signal loudest_sine(const Sections &filter, std::size_t length) {
  const double angle = std::numbers::pi * extremes(filter, {{0.0, 1.0}}).highest.w;
  Signal signal(length);
  // Not from 0: at half the sample rate that is silence.
  for (std::size_t n = 0; n < length; ++n)
    signal[n] = static_cast<float>(std::sin(angle * static_cast<double>(n) + 0.7));
  return signal;
}

template <class T>
std::optional<std::vector<T>> run(const Sections &filter, Structure structure,
                                  const Signal &signal) {
  std::vector<T> samples(signal.begin(), signal.end());
  switch (structure) {
    case Structure::direct_1: return run_direct_1<T>(filter, std::move(samples));
    case Structure::direct_2_transposed:
      return run_direct_2_transposed<T>(filter, std::move(samples));
    case Structure::state_variable: break;
  }
  const auto forms = state_variables(filter);
  if (!forms) return std::nullopt;
  return run_state_variable<T>(*forms, std::move(samples));
}

/** The largest difference, relative to the reference's peak; NaN or infinite if the output is. */
template <class Expected, class T>
double error(const std::vector<Expected> &expected, const std::vector<T> &found) {
  Expected peak(0), worst(0);
  for (std::size_t n = 0; n < found.size(); ++n) {
    const Expected magnitude = expected[n] < 0 ? -expected[n] : expected[n];
    if (magnitude > peak) peak = magnitude;
    const Expected difference = static_cast<Expected>(found[n]) - expected[n];
    const Expected distance = difference < 0 ? -difference : difference;
    if (!(distance <= worst)) worst = distance;
  }
  return static_cast<double>(worst / peak);
}

/** Sections that are run, with the signals and what should come out. */
struct Task {
  Sections sections;
  std::vector<Signal> signals;
  std::vector<Reference> references;
};

// The reference has the sections in the quietest order, in which their coefficients are the same to
// the bit, and eleven bits more than a double.
std::vector<Reference> references(const Sections &sections, const std::vector<Signal> &signals) {
  const Sections quiet = arranged(sections, Structure::direct_2_transposed);
  std::vector<Reference> outputs;
  for (const Signal &signal : signals)
    outputs.push_back(*run<long double>(quiet, Structure::direct_2_transposed, signal));
  return outputs;
}

/** @param run  makes of a signal what comes out, or none */
template <class Run>
json worst_error(const Task &task, Run run) {
  double worst = 0;
  for (std::size_t i = 0; i < task.signals.size(); ++i) {
    const auto output = run(task.signals[i]);
    const double found = output ? error(task.references[i], *output) : NAN;
    if (!(found <= worst)) worst = found;
  }
  return worst;  // null in JSON where it is not finite
}

template <class T>
json errors_in(const Sections &sections, Structure structure, const Task &task) {
  return worst_error(task,
                     [&](const Signal &signal) { return run<T>(sections, structure, signal); });
}

/** As a file for a program with this arithmetic has it. */
template <class T>
json errors_exported(const Task &task, const Roots &roots, Arithmetic arithmetic) {
  const Realization made = chosen_realization(task.sections, roots, arithmetic).taken;
  return worst_error(task, [&](const Signal &signal) -> std::optional<std::vector<T>> {
    if (made.structure != Structure::state_variable)
      return run<T>(made.sections, made.structure, signal);
    return run_state_variable<T>(made.forms, std::vector<T>(signal.begin(), signal.end()));
  });
}

constexpr std::pair<const char *, Structure> structures[] = {
    {"direct form II transposed", Structure::direct_2_transposed},
    {"direct form I", Structure::direct_1},
    {"state variable", Structure::state_variable}};

template <class Arrange>
json errors(const Task &task, Arrange arrange) {
  json found;
  for (const auto &[name, structure] : structures) {
    const Sections sections = arrange(task.sections, structure);
    found[name] = {{"doubles", errors_in<double>(sections, structure, task)},
                   {"floats", errors_in<float>(sections, structure, task)}};
  }
  return found;
}

/** CPU time, the least of three. */
double microseconds_to_arrange(const Sections &sections) {
  double least = INFINITY;
  for (int i = 0; i < 3; ++i) {
    const std::clock_t start = std::clock();
    const Sections found = arranged(sections, Structure::state_variable);
    const double taken = 1e6 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    if (found.size() == sections.size()) least = std::min(least, taken);
  }
  return least;
}

/** How far the reference is from the same in 113 bits. */
double reference_error(const Task &task) {
  __extension__ using Quadruple = __float128;
  const Sections quiet = arranged(task.sections, Structure::direct_2_transposed);
  double worst = 0;
  for (std::size_t i = 0; i < task.signals.size(); ++i) {
    const Signal &whole = task.signals[i];
    const std::size_t length = std::min(judged_samples, whole.size());
    const auto expected = run_direct_2_transposed<Quadruple>(
        quiet, std::vector<Quadruple>(whole.begin(), whole.begin() + static_cast<long>(length)));
    Reference first(task.references[i].begin(),
                    task.references[i].begin() + static_cast<long>(length));
    worst = std::max(worst, error(expected, first));
  }
  return worst;
}

Sections as_given(const Sections &sections, Structure) { return sections; }

json measured(const json &line, bool judge) {
  Task task{sections_from_list(line.at("published").get<std::vector<double>>()), {}, {}};
  const std::size_t length = length_for(task.sections);
  task.signals = {white_noise(length),
                  loudest_sine(arranged(task.sections, Structure::direct_2_transposed), length)};
  task.references = references(task.sections, task.signals);

  json result{{"name", line.at("name")},
              {"samples", length},
              {"microseconds", microseconds_to_arrange(task.sections)},
              {"published", errors(task, as_given)},
              {"arranged", errors(task, arranged)}};
  const Roots roots{roots_from_list(line.at("zeros").get<std::vector<double>>()),
                    roots_from_list(line.at("poles").get<std::vector<double>>()),
                    line.at("gain").get<double>()};
  result["exported"]["as exported"] = {
      {"doubles", errors_exported<double>(task, roots, Arithmetic::doubles)},
      {"floats", errors_exported<float>(task, roots, Arithmetic::floats)}};
  if (judge) result["reference"] = reference_error(task);
  if (!line.at("scipy").is_null()) {
    // Their last digits are others: SciPy's arithmetic is judged, not how it rounds its results.
    task.sections = sections_from_list(line.at("scipy").get<std::vector<double>>());
    task.references = references(task.sections, task.signals);
    result["scipy"] = errors(task, as_given);
  }
  return result;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    if (argc != 2) throw std::invalid_argument("one file of cascades is wanted");
    std::ifstream file(argv[1]);
    if (!file) throw std::runtime_error(std::string("cannot read ") + argv[1]);
    std::size_t number = 0;
    for (std::string line; std::getline(file, line); ++number)
      std::cout << measured(json::parse(line), number % judged_filters == 0).dump() << '\n';
  } catch (const std::exception &failure) {
    std::cerr << "bench-running: " << failure.what() << '\n';
    return 3;
  }
  return 0;
}

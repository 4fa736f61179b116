// Designs every family and response at every order and at cutoffs from one end of
// the scale to the other, through the real module, and looks at what it published:
// all poles inside the unit circle, all numbers finite, each section's poles a
// pair.

#include <CLI/CLI.hpp>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include <fmt/format.h>

#include "patchbay/host.h"

namespace {

using Cutoffs = std::vector<double>;

constexpr double off_circle = 1e-6;  // of 1 - |z|^2, for zeros on the circle

const std::vector<std::string> families = {"butterworth", "chebyshev-1", "chebyshev-2"};
const std::vector<std::string> responses = {"lowpass", "highpass", "bandpass", "bandstop"};

// From the lowest cutoff that the box uses to the highest.
const std::vector<double> edges = {0.0001, 0.001, 0.01, 0.1,   0.25,  0.5,
                                   0.75,   0.9,   0.99, 0.999, 0.9999};

const std::vector<Cutoffs> bands = {
    {0.0001, 0.0002}, {0.0001, 0.001}, {0.0001, 0.5}, {0.0001, 0.9999}, {0.001, 0.0011},
    {0.001, 0.01},    {0.01, 0.02},    {0.01, 0.99},  {0.1, 0.101},     {0.1, 0.2},
    {0.1, 0.9},       {0.25, 0.75},    {0.3, 0.3001}, {0.3, 0.32},      {0.5, 0.51},
    {0.5, 0.9999},    {0.7, 0.71},     {0.9, 0.91},   {0.99, 0.999},    {0.9998, 0.9999}};

// The same for a whole run.
struct Levels {
  double ripple = 0.5;
  double attenuation = 96.0;
};

struct Setting {
  std::string family;
  std::string response;
  int order;
  Cutoffs cutoffs;
};

struct Tally {
  std::size_t designs = 0;
  std::size_t problems = 0;
  double margin = std::numeric_limits<double>::infinity();
  double slowest = 0.0;
  std::string closest_setting;
  std::string slowest_setting;
};

std::string text(const Setting &setting) {
  return fmt::format("{} {} of order {} at {}", setting.family, setting.response, setting.order,
                     fmt::join(setting.cutoffs, ", "));
}

std::vector<Setting> every_setting() {
  std::vector<Setting> settings;
  for (const std::string &family : families)
    for (const std::string &response : responses)
      for (int order = 2; order <= 200; ++order) {
        if (response.starts_with("band")) {
          for (const Cutoffs &band : bands) settings.push_back({family, response, order, band});
        } else {
          for (const double edge : edges) settings.push_back({family, response, order, {edge}});
        }
      }
  return settings;
}

// Low orders are more often asked for, and cheaper: of two drawn, the lower.
std::vector<Setting> sample(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
  std::vector<Setting> settings;
  while (settings.size() < count) {
    Setting setting{families[below(3)], responses[below(4)], 0, {}};
    setting.order = 2 + static_cast<int>(std::min(below(199), below(199)));
    if (setting.response.starts_with("band"))
      setting.cutoffs = bands[below(bands.size())];
    else
      setting.cutoffs = {edges[below(edges.size())]};
    settings.push_back(setting);
  }
  return settings;
}

std::vector<double> numbers(const patchbay::Dictionary &dictionary, const std::string &wanted) {
  std::vector<double> list;
  for (const auto &[key, entry] : dictionary)
    if (key == wanted)
      for (const patchbay::Value &value : std::get<patchbay::Values>(entry))
        list.push_back(std::get<double>(value));
  return list;
}

// How far inside the circle a point lies: 1 - |z|^2, without the cancellation
// that forming |z| would bring.
double inside(double real, double imag) { return (1.0 - real) * (1.0 + real) - imag * imag; }

// What is wrong with a published filter; empty when nothing is.
std::string verdict(const Setting &setting, const patchbay::Dictionary &dictionary,
                    double &margin) {
  const std::vector<double> poles = numbers(dictionary, "poles");
  const std::vector<double> cascade = numbers(dictionary, "cascade");
  const std::size_t expected = setting.response.starts_with("band")
                                   ? 2U * static_cast<std::size_t>(setting.order)
                                   : static_cast<std::size_t>(setting.order);
  if (poles.size() != 2 * expected) return "the number of poles is wrong";
  for (const char *key : {"zeroes", "poles", "cascade"})
    for (const double value : numbers(dictionary, key))
      if (!std::isfinite(value)) return fmt::format("'{}' is not finite", key);
  for (std::size_t i = 0; i < poles.size(); i += 2)
    margin = std::min(margin, inside(poles[i], poles[i + 1]));
  if (margin <= 0.0) return "a pole is not inside the unit circle";
  if (setting.family == "chebyshev-2") {
    const std::vector<double> zeros = numbers(dictionary, "zeroes");
    for (std::size_t i = 0; i < zeros.size(); i += 2)
      if (std::abs(inside(zeros[i], zeros[i + 1])) > off_circle)
        return fmt::format("a zero is off the unit circle by {:.2g}",
                           std::abs(inside(zeros[i], zeros[i + 1])));
  }
  for (std::size_t i = 0; i < cascade.size(); i += 5)
    if (!(std::abs(cascade[i + 4]) < 1.0 && std::abs(cascade[i + 3]) < 1.0 + cascade[i + 4]))
      return fmt::format("section {} is not stable", i / 5);
  return "";
}

void run(patchbay::Host &host, const Setting &setting, const Levels &levels, double limit,
         Tally &tally) {
  const patchbay::Box box = host.make(fmt::format(
      "veltane name: soak units: normalized topology: {} response: {} order: {} frequency: {} "
      "passband_ripple: {} stopband_attenuation: {}",
      setting.family, setting.response, setting.order, fmt::join(setting.cutoffs, " "),
      levels.ripple, levels.attenuation));
  const auto start = std::chrono::steady_clock::now();
  host.send(box, "bang");
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  double margin = std::numeric_limits<double>::infinity();
  std::string problem = verdict(setting, host.dictionary("soak").value(), margin);
  if (problem.empty() && took.count() > limit) problem = "it is slow";
  host.free(box);

  ++tally.designs;
  if (margin < tally.margin) {
    tally.margin = margin;
    tally.closest_setting = text(setting);
  }
  if (took.count() > tally.slowest) {
    tally.slowest = took.count();
    tally.slowest_setting = text(setting);
  }
  if (!problem.empty()) {
    ++tally.problems;
    fmt::print("{}: {}\n", text(setting), problem);
  }
}

}  // namespace

int main(int argc, char **argv) {
  CLI::App app("Designs at every order and cutoff, and looks for filters that are not stable.");
  std::string module;
  std::size_t count = 0;
  unsigned seed = 1;
  app.add_option("--module", module, "the module to load")->required();
  app.add_option("--sample", count, "how many designs to draw; without it, all are made");
  app.add_option("--seed", seed, "of the draw");
  double limit = std::numeric_limits<double>::infinity();
  app.add_option("--seconds", limit, "a design that takes longer is a problem");
  Levels levels;
  app.add_option("--ripple", levels.ripple, "of chebyshev-1, in dB")->capture_default_str();
  app.add_option("--attenuation", levels.attenuation, "of chebyshev-2, in dB")
      ->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  std::ostringstream ignored;
  patchbay::Host host(ignored);
  host.load(module);
  Tally tally;
  const std::vector<Setting> settings = count == 0 ? every_setting() : sample(count, seed);
  for (const Setting &setting : settings) run(host, setting, levels, limit, tally);
  for (const std::string &problem : host.close()) {
    ++tally.problems;
    fmt::print("{}\n", problem);
  }
  if (count != 0) fmt::print("seed {}\n", seed);
  fmt::print("{} designs, {} problems\n", tally.designs, tally.problems);
  fmt::print("closest to the circle: 1 - |p|^2 = {:.3g}, {}\n", tally.margin,
             tally.closest_setting);
  fmt::print("slowest: {:.3f} s, {}\n", tally.slowest, tally.slowest_setting);
  return tally.problems == 0 ? 0 : 1;
}

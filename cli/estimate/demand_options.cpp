#include "estimate/demand_options.h"

#include <cmath>
#include <string>

#include <fmt/format.h>

#include "analysis/estimate.h"
#include "designer/refusal.h"

namespace cli {
namespace {

// Beyond these the formulas' powers of ten leave the doubles.
constexpr double least_ripple = 1e-6;
constexpr double most_attenuation = 1000.0;
constexpr double most_samplerate = 1e9;

double number(const Option &option, const std::string &text) {
  const std::optional<double> value = designer::number_in(text);
  if (!value || !std::isfinite(*value))
    throw designer::Refusal(fmt::format("{} takes a number, not '{}'", option.name(), text));
  return *value;
}

[[noreturn]] void refuse_missing(const Option &option, const char *what) {
  throw designer::Refusal(
      fmt::format("veltane estimate needs {}, {}; --help shows an example", option.name(), what));
}

std::vector<double> edges_in(const Arguments &arguments, const Option &option) {
  if (!arguments.given(option)) refuse_missing(option, "one edge or two");
  std::vector<double> edges;
  for (const std::string &text : arguments.values(option)) edges.push_back(number(option, text));
  return edges;
}

double level_in(const Arguments &arguments, const Option &option) {
  const auto text = arguments.value(option);
  if (!text) refuse_missing(option, "in dB");
  return number(option, *text);
}

std::string joined(const std::vector<double> &edges) {
  return edges.size() == 1 ? fmt::format("{}", edges[0]) : fmt::format("{} {}", edges[0], edges[1]);
}

void check_edges(const Option &option, const std::vector<double> &edges,
                 const designer::RatedDemand &rated) {
  const std::string_view name = option.name();
  const double nyquist = rated.nyquist();
  const char *unit = rated.units == designer::Units::hertz ? " Hz" : "";
  for (const double edge : edges)
    if (!(edge > 0 && edge < nyquist))
      throw designer::Refusal(
          fmt::format("{} {}: edges lie above 0 and below the Nyquist frequency, {}{}", name, edge,
                      nyquist, unit));
  if (edges.size() == 2 && edges[0] >= edges[1])
    throw designer::Refusal(fmt::format(
        "{} {}: {}; the lower one comes first", name, joined(edges),
        edges[0] == edges[1] ? "the edges are equal" : "the edges are in reverse order"));
}

void check_room(const std::vector<double> &pass, const std::vector<double> &stop) {
  if (pass.size() != stop.size())
    throw designer::Refusal(
        fmt::format("--passband has {} and --stopband {}; lowpass and highpass have one edge each, "
                    "bandpass and bandstop two each",
                    pass.size() == 1 ? "one edge" : "two edges", stop.size()));
  for (const double edge : pass)
    for (const double other : stop)
      if (edge == other)
        throw designer::Refusal(
            fmt::format("passband and stopband both have an edge at {}; a filter needs "
                        "room between them",
                        edge));
  if (pass.size() == 1) return;
  const bool passes_within = stop[0] < pass[0] && pass[1] < stop[1];
  const bool stops_within = pass[0] < stop[0] && stop[1] < pass[1];
  if (!passes_within && !stops_within)
    throw designer::Refusal(
        fmt::format("--passband {} and --stopband {} cross; for a bandpass the "
                    "passband's edges lie between the stopband's, for a bandstop the "
                    "other way round",
                    joined(pass), joined(stop)));
}

void check_levels(double ripple, double attenuation) {
  if (!(ripple >= least_ripple))
    throw designer::Refusal(fmt::format(
        "--ripple {}: the loss in the passband must be at least {} dB", ripple, least_ripple));
  if (!(attenuation > ripple))
    throw designer::Refusal(
        fmt::format("--attenuation {} and --ripple {}: the stopband must lose more than the "
                    "passband",
                    attenuation, ripple));
  if (attenuation > most_attenuation)
    throw designer::Refusal(
        fmt::format("--attenuation {}: at most {} dB", attenuation, most_attenuation));
}

double samplerate_in(const Arguments &arguments) {
  const std::string text = arguments.value(samplerate_option).value_or("48000");
  const double samplerate = number(samplerate_option, text);
  if (!(samplerate >= 1 && samplerate <= most_samplerate && samplerate == std::floor(samplerate)))
    throw designer::Refusal(fmt::format(
        "--samplerate takes a whole number of Hz from 1 to {}, not {}", most_samplerate, text));
  return samplerate;
}

}  // namespace

std::vector<designer::Family> families_in(const Arguments &arguments) {
  if (const auto one = designer::family_named(arguments.choice(family_option))) return {*one};
  return {designer::all_families.begin(), designer::all_families.end()};
}

TypedDemand demand_in(const Arguments &arguments) {
  TypedDemand typed{};
  designer::RatedDemand &rated = typed.rated;
  rated.units = designer::units_named(arguments.choice(units_option)).value();
  rated.samplerate = samplerate_in(arguments);
  typed.passband = edges_in(arguments, passband_option);
  typed.stopband = edges_in(arguments, stopband_option);
  rated.demand.ripple = level_in(arguments, ripple_option);
  rated.demand.attenuation = level_in(arguments, attenuation_option);
  check_edges(passband_option, typed.passband, rated);
  check_edges(stopband_option, typed.stopband, rated);
  check_room(typed.passband, typed.stopband);
  check_levels(rated.demand.ripple, rated.demand.attenuation);
  rated = designer::rated(
      {typed.passband, typed.stopband, rated.demand.ripple, rated.demand.attenuation},
      rated.samplerate, rated.units);
  return typed;
}

}  // namespace cli

#include "requirements.h"

#include <cmath>
#include <stdexcept>

#include <fmt/format.h>

#include "patchbay/value.h"

namespace cli {
namespace {

// Beyond these the formulas' powers of ten leave the doubles.
constexpr double least_ripple = 1e-6;
constexpr double most_attenuation = 1000.0;
constexpr double most_samplerate = 1e9;

double number(const std::string &name, const std::string &text) {
  patchbay::Values read;
  try {
    read = patchbay::parse_line(text);
  } catch (const std::exception &) {
    read.clear();  // a quote that is not closed is no number either
  }
  double value = std::nan("");
  if (read.size() == 1) {
    if (const auto *integer = std::get_if<t_long>(&read[0]))
      value = static_cast<double>(*integer);
    else if (const auto *real = std::get_if<double>(&read[0]))
      value = *real;
  }
  if (!std::isfinite(value)) throw Refusal(fmt::format("{} takes a number, not '{}'", name, text));
  return value;
}

std::vector<double> required(const Option &option, const std::string &name,
                             const std::string &what) {
  if (!option.given())
    throw Refusal(
        fmt::format("veltane estimate needs {}, {}; --help shows an example", name, what));
  std::vector<double> values;
  for (const std::string &text : option.values()) values.push_back(number(name, text));
  return values;
}

std::string joined(const std::vector<double> &edges) {
  return edges.size() == 1 ? fmt::format("{}", edges[0]) : fmt::format("{} {}", edges[0], edges[1]);
}

void check_edges(const std::string &name, const std::vector<double> &edges, double nyquist,
                 const std::string &nyquist_text) {
  for (const double edge : edges)
    if (!(edge > 0 && edge < nyquist))
      throw Refusal(fmt::format("{} {}: edges lie above 0 and below the Nyquist frequency, {}",
                                name, edge, nyquist_text));
  if (edges.size() == 2 && edges[0] >= edges[1])
    throw Refusal(fmt::format(
        "{} {}: {}, and the lower one comes first", name, joined(edges),
        edges[0] == edges[1] ? "the edges are equal" : "the edges are in reverse order"));
}

void check_room(const std::vector<double> &pass, const std::vector<double> &stop) {
  if (pass.size() != stop.size())
    throw Refusal(
        fmt::format("--passband has {} and --stopband {}; lowpass and highpass have one edge each, "
                    "bandpass and bandstop two each",
                    pass.size() == 1 ? "one edge" : "two edges", stop.size()));
  for (const double edge : pass)
    for (const double other : stop)
      if (edge == other)
        throw Refusal(
            fmt::format("passband and stopband both have an edge at {}; a filter needs "
                        "room between them",
                        edge));
  if (pass.size() == 1) return;
  const bool passes_within = stop[0] < pass[0] && pass[1] < stop[1];
  const bool stops_within = pass[0] < stop[0] && stop[1] < pass[1];
  if (!passes_within && !stops_within)
    throw Refusal(
        fmt::format("--passband {} and --stopband {} cross; for a bandpass the "
                    "passband's edges lie between the stopband's, for a bandstop the "
                    "other way round",
                    joined(pass), joined(stop)));
}

void check_levels(double ripple, double attenuation) {
  if (!(ripple >= least_ripple))
    throw Refusal(fmt::format("--ripple {}: the passband loses more than 0 dB, {} dB or more",
                              ripple, least_ripple));
  if (!(attenuation > ripple))
    throw Refusal(
        fmt::format("--attenuation {} and --ripple {}: the stopband loses more than the "
                    "passband",
                    attenuation, ripple));
  if (attenuation > most_attenuation)
    throw Refusal(fmt::format("--attenuation {}: at most {} dB", attenuation, most_attenuation));
}

double one(const Option &option, const std::string &name, const std::string &what) {
  option.value();  // refuses more than one
  return required(option, name, what).front();
}

}  // namespace

RequirementsOptions::RequirementsOptions(Options &options)
    : passband_(options.add("--passband", "NUMBER [NUMBER]",
                            "Edge of the passband in --units; two for a band response", 2)),
      stopband_(options.add("--stopband", "NUMBER [NUMBER]",
                            "Edge of the stopband in --units; as many. Which response is meant "
                            "follows from the edges",
                            2)),
      ripple_(options.add("--ripple", "NUMBER", "The most that the passband may lose, in dB")),
      attenuation_(
          options.add("--attenuation", "NUMBER", "The least that the stopband must lose, in dB")),
      samplerate_(options.add("--samplerate", "NUMBER", "The sample rate, whole Hz [48000]")),
      units_(options.add("--units", "WORD",
                         "hertz, normalized (fractions of the Nyquist frequency) [hertz]")) {}

Requirements RequirementsOptions::requirements() const {
  Requirements out{};
  out.hertz = units_.choice({"hertz", "normalized"}, "hertz") == "hertz";
  const std::string samplerate = samplerate_.value().value_or("48000");
  out.samplerate = number("--samplerate", samplerate);
  if (!(out.samplerate >= 1 && out.samplerate <= most_samplerate &&
        out.samplerate == std::floor(out.samplerate)))
    throw Refusal(fmt::format("--samplerate is a whole number of Hz from 1 to {}, not {}",
                              most_samplerate, samplerate));
  const double nyquist = out.hertz ? out.samplerate / 2 : 1.0;
  out.unit = 1 / nyquist;

  const std::vector<double> pass = required(passband_, "--passband", "one edge or two");
  const std::vector<double> stop = required(stopband_, "--stopband", "one edge or two");
  out.demand.ripple = one(ripple_, "--ripple", "in dB");
  out.demand.attenuation = one(attenuation_, "--attenuation", "in dB");
  const std::string nyquist_text = out.hertz ? fmt::format("{} Hz", nyquist) : "1";
  check_edges("--passband", pass, nyquist, nyquist_text);
  check_edges("--stopband", stop, nyquist, nyquist_text);
  check_room(pass, stop);
  check_levels(out.demand.ripple, out.demand.attenuation);
  out.passband = pass;
  out.stopband = stop;
  for (const double edge : pass) out.demand.passband.push_back(edge / nyquist);
  for (const double edge : stop) out.demand.stopband.push_back(edge / nyquist);
  try {
    out.band = analysis::demanded_band(out.demand);
  } catch (const std::invalid_argument &error) {
    throw Refusal(error.what());
  }
  return out;
}

std::string to_sentence(const Requirements &requirements) {
  const std::vector<double> &pass = requirements.passband, &stop = requirements.stopband;
  const char *unit = requirements.hertz ? " Hz" : "";
  const auto edge = [&](double typed) { return fmt::format("{}{}", typed, unit); };
  using analysis::Band;
  std::string where_passed, where_stopped;
  switch (requirements.band) {
    case Band::lowpass:
      where_passed = "up to " + edge(pass[0]);
      where_stopped = "from " + edge(stop[0]) + " on";
      break;
    case Band::highpass:
      where_passed = "from " + edge(pass[0]) + " on";
      where_stopped = "up to " + edge(stop[0]);
      break;
    case Band::bandpass:
      where_passed = "from " + edge(pass[0]) + " to " + edge(pass[1]);
      where_stopped = "up to " + edge(stop[0]) + " and from " + edge(stop[1]) + " on";
      break;
    case Band::bandstop:
      where_passed = "up to " + edge(pass[0]) + " and from " + edge(pass[1]) + " on";
      where_stopped = "from " + edge(stop[0]) + " to " + edge(stop[1]);
      break;
  }
  return fmt::format("loses at most {} dB {}, and at least {} dB {}", requirements.demand.ripple,
                     where_passed, requirements.demand.attenuation, where_stopped);
}

}  // namespace cli

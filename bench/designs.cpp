#include "designs.h"

#include <cmath>
#include <complex>
#include <fstream>
#include <numbers>
#include <stdexcept>

#include <nlohmann/json.hpp>

namespace bench {

Designs read_designs(const std::string &file) {
  std::ifstream stream(file);
  if (!stream) throw std::runtime_error("cannot read '" + file + "', which designs.py writes");
  const auto json = nlohmann::json::parse(stream);
  Designs designs{
      json.at("passband_ripple"), json.at("stopband_attenuation"), json.at("changes_in_burst"), {}};
  for (const auto &entry : json.at("designs"))
    designs.list.push_back({entry.at("name"), entry.at("family"), entry.at("response"),
                            entry.at("order"), entry.at("cutoffs"), entry.at("levels_at")});
  return designs;
}

double level(const std::vector<Section> &cascade, double frequency) {
  const std::complex<double> z1 = std::polar(1.0, -std::numbers::pi * frequency);
  double decibels = 0.0;  // a sum: the product of many sections may underflow
  for (const Section &s : cascade)
    decibels +=
        20.0 *
        std::log10(std::abs((s.b0 + z1 * (s.b1 + z1 * s.b2)) / (s.a0 + z1 * (s.a1 + z1 * s.a2))));
  return decibels;
}

}  // namespace bench

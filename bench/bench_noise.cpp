// Reads sections as JSON, a filter a line, and writes the noise predicted and measured in each
// structure and arithmetic, a filter a line.
//
//   bench-noise           results for each line
//   bench-noise --check   how far the reference is from one in twice as many digits
#include <iostream>
#include <string>

#include <nlohmann/json.hpp>

#include "measured_noise.h"

namespace {

using namespace analysis;
using nlohmann::json;

__extension__ using Quad = __float128;

json pair(const measured::Pair &level) {
  // Strings where JSON has no number.
  const auto number = [](double value) {
    return std::isfinite(value) ? json(value) : json(std::to_string(value));
  };
  return {number(level.predicted), number(level.actual), measured::difference(level)};
}

json measured_record(const Sections &filter, unsigned seed) {
  json records = json::array();
  for (const measured::Combination &one : measured::combinations) {
    try {
      const measured::Comparison found = measured::compare(filter, one, seed);
      records.push_back(
          {{"name", one.name}, {"white", pair(found.white)}, {"sine", pair(found.sine)}});
    } catch (const std::invalid_argument &) {
      records.push_back({{"name", one.name}});  // coefficients beyond fixed point
    }
  }
  return records;
}

// The error of the reference, as the noise is given.
json reference_record(const Sections &filter, unsigned seed) {
  const measured::Length length = measured::length(filter);
  const auto white = measured::white_noise(length.whole, seed);
  const auto wanted = measured::reference<Quad>(filter, white);
  const auto wide = measured::reference<long double>(filter, white);
  double error = 0, power = 0;
  for (std::size_t i = length.settling; i < white.size(); ++i) {
    const auto off = static_cast<double>(wide[i] - wanted[i]);
    error += off * off;
    power += static_cast<double>(wanted[i] * wanted[i]);
  }
  return measured::decibels(error / (16 * power));
}

}  // namespace

int main(int argc, char **argv) {
  const bool check = argc > 1 && std::string(argv[1]) == "--check";
  unsigned seed = 0;
  for (std::string line; std::getline(std::cin, line);) {
    const Sections filter = sections_from_list(json::parse(line).get<std::vector<double>>());
    ++seed;
    std::cout << (check ? reference_record(filter, seed) : measured_record(filter, seed)) << '\n'
              << std::flush;
  }
  return 0;
}

// The numbers that make_data.py wrote.
#ifndef TESTS_ANALYSIS_DATA_H
#define TESTS_ANALYSIS_DATA_H

#include <cmath>
#include <fstream>
#include <limits>
#include <map>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "analysis/filter.h"

namespace data {

using analysis::Band;
using analysis::Roots;
using analysis::Sections;
using analysis::Transfer;
using nlohmann::json;

inline const json &all() {
  static const json read = [] {
    std::ifstream file(ANALYSIS_DATA);
    return json::parse(file);
  }();
  return read;
}

inline Band band_of(const json &record) {
  static const std::map<std::string, Band> bands{{"lowpass", Band::lowpass},
                                                 {"highpass", Band::highpass},
                                                 {"bandpass", Band::bandpass},
                                                 {"bandstop", Band::bandstop}};
  return bands.at(record.at("band").get<std::string>());
}

/** One filter, and what is known of it. Frequencies are in `at`. */
struct Case {
  std::string name;
  std::string family;
  Band band;
  int order;
  std::vector<double> cutoffs;
  double ripple, attenuation;
  double lift; /**< dB by which all levels are higher than the family's: a gain left out */
  Roots roots;
  Sections sections;
  Transfer transfer; /**< empty for high orders */
  std::vector<double> at;
  json record;

  /** A column of the record; null is NaN. */
  std::vector<double> column(const std::string &key) const {
    std::vector<double> values;
    for (const json &value : record.at(key))
      values.push_back(value.is_null() ? std::numeric_limits<double>::quiet_NaN()
                                       : value.get<double>());
    return values;
  }

  double number(const std::string &key) const { return record.at(key).get<double>(); }
};

inline const std::vector<Case> &cases() {
  static const std::vector<Case> read = [] {
    std::vector<Case> found;
    for (const json &record : all().at("cases")) {
      Case one;
      one.family = record.at("family").get<std::string>();
      one.band = band_of(record);
      one.order = record.at("order").get<int>();
      one.name = one.family + " " + record.at("band").get<std::string>() + " of order " +
                 std::to_string(one.order);
      one.cutoffs = record.at("cutoffs").get<std::vector<double>>();
      one.ripple = record.at("ripple").get<double>();
      one.lift = record.at("lift").get<double>();
      one.attenuation = record.at("attenuation").get<double>();
      one.roots = {analysis::roots_from_list(record.at("zeros").get<std::vector<double>>()),
                   analysis::roots_from_list(record.at("poles").get<std::vector<double>>()),
                   record.at("gain").get<double>()};
      one.sections = analysis::sections_from_list(record.at("sections").get<std::vector<double>>());
      if (record.contains("numerator"))
        one.transfer = {record.at("numerator").get<std::vector<double>>(),
                        record.at("denominator").get<std::vector<double>>()};
      one.at = record.at("at").get<std::vector<double>>();
      one.record = record;
      found.push_back(one);
    }
    return found;
  }();
  return read;
}

inline const Case &named(const std::string &name) {
  for (const Case &one : cases())
    if (one.name == name) return one;
  throw std::out_of_range(name);
}

}  // namespace data

#endif

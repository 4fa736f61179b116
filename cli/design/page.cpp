#include "design/page.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "designer/title.h"

namespace cli {
namespace {

using designer::Values;

constexpr char section_equation[] =
    "H(z) = product of (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)";
constexpr char transfer_equation[] = "H(z) = sum of numerator[k] z^-k / sum of denominator[k] z^-k";
constexpr int key_width = 13;

double number(const designer::Value &value) { return designer::number_in(value).value(); }

using Row = std::vector<std::string>;

// Lines of cells, each column as wide as its widest cell.
std::vector<std::string> aligned(const std::vector<Row> &rows) {
  std::vector<std::size_t> widths;
  for (const Row &row : rows)
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (i == widths.size()) widths.push_back(0);
      widths[i] = std::max(widths[i], row[i].size());
    }
  std::vector<std::string> lines;
  for (const Row &row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i)
      line += fmt::format("{}{:>{}}", i == 0 ? "" : "  ", row[i], widths[i]);
    lines.push_back(line);
  }
  return lines;
}

std::string imaginary(double imag) {
  return fmt::format("{} {}i", std::signbit(imag) ? '-' : '+', std::abs(imag));
}

std::vector<std::string> complex_lines(const Values &values) {
  std::vector<Row> reals;
  for (std::size_t i = 0; i + 1 < values.size(); i += 2)
    reals.push_back({fmt::format("{}", number(values[i]))});
  std::vector<std::string> lines = aligned(reals);
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (const double imag = number(values[2 * i + 1]); imag != 0.0)
      lines[i] += ' ' + imaginary(imag);
  return lines;
}

std::vector<std::string> section_lines(const Values &values) {
  std::vector<Row> rows{{"b0", "b1", "b2", "a1", "a2"}};
  for (std::size_t i = 0; i + 4 < values.size(); i += 5) {
    Row &row = rows.emplace_back();
    for (std::size_t k = i; k < i + 5; ++k) row.push_back(fmt::format("{}", number(values[k])));
  }
  std::vector<std::string> lines = aligned(rows);
  lines.insert(lines.begin(), section_equation);
  return lines;
}

// The coefficient of z^-k, after its power.
std::vector<std::string> coefficient_lines(const Values &values) {
  std::vector<Row> rows;
  for (std::size_t k = 0; k < values.size(); ++k)
    rows.push_back({fmt::format("z^-{}", k), fmt::format("{}", number(values[k]))});
  return aligned(rows);
}

std::vector<std::string> lines_of(const std::string &key, const patchbay::Entry &entry) {
  if (const auto *text = std::get_if<std::string>(&entry)) return {*text};
  if (const auto *single = std::get_if<double>(&entry)) return {fmt::format("{}", *single)};
  const auto &values = std::get<Values>(entry);
  if (values.empty()) return {"none"};
  if (key == "zeroes" || key == "poles") return complex_lines(values);
  if (key == "cascade") return section_lines(values);
  std::vector<std::string> lines = coefficient_lines(values);
  if (key == "denominator") lines.insert(lines.begin(), transfer_equation);
  return lines;
}

}  // namespace

std::string design_page(const designer::Design &design) {
  std::string page = designer::title(design) + "\n\n";
  for (const auto &[key, entry] : design.dictionary) {
    std::string label = key;
    for (const std::string &line : lines_of(key, entry)) {
      page += fmt::format("{:<{}}{}\n", label, key_width, line);
      label.clear();
    }
  }
  return page;
}

}  // namespace cli

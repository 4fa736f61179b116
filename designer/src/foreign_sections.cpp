#include "designer/foreign_sections.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <iterator>
#include <sstream>
#include <string_view>
#include <vector>

#include <fast_float/fast_float.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "designer/refusal.h"
#include "json_document.h"

namespace designer {
namespace {

// The words or numbers of a section, as they stand in the file.
using Row = std::vector<std::string>;

const Row five_columns{"b0", "b1", "b2", "a1", "a2"};
const Row six_columns{"b0", "b1", "b2", "a0", "a1", "a2"};

std::string without_comments(const std::string &text) {
  std::string rest;
  bool comment = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n')
      comment = false;
    else if (text[i] == '#' || text[i] == '%' || text.compare(i, 2, "//") == 0)
      comment = true;
    if (!comment) rest += text[i];
  }
  return rest;
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Gathers rows from single characters.
class Rows {
 public:
  void add(char c) { word_ += c; }

  void end_word() {
    if (!word_.empty()) row_.push_back(std::move(word_));
    word_.clear();
  }

  void end_row() {
    end_word();
    if (!row_.empty()) rows_.push_back(std::move(row_));
    row_.clear();
  }

  std::vector<Row> take() {
    end_row();
    return std::move(rows_);
  }

 private:
  std::string word_;
  Row row_;
  std::vector<Row> rows_;
};

std::string trimmed(std::string text) {
  while (!text.empty() && is_blank(text.back())) text.pop_back();
  const auto begin = std::find_if_not(text.begin(), text.end(), is_blank);
  text.erase(text.begin(), begin);
  return text;
}

std::string unquoted(const std::string &cell) {
  const bool quoted = cell.size() > 1 && cell.front() == '"' && cell.back() == '"';
  return quoted ? cell.substr(1, cell.size() - 2) : cell;
}

// Every separator ends a cell, so that an empty one keeps its place; blanks alone may be many.
Row cells_of(const std::string &line) {
  for (const char separator : {';', ',', '\t'}) {
    if (line.find(separator) == std::string::npos) continue;
    Row cells;
    std::istringstream rest(line + separator);
    for (std::string cell; std::getline(rest, cell, separator);)
      cells.push_back(unquoted(trimmed(cell)));
    return cells;
  }
  std::istringstream words(line);
  return {std::istream_iterator<std::string>(words), {}};
}

std::vector<Row> rows_of_lines(const std::string &text) {
  std::vector<Row> rows;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    if (std::string filled = trimmed(line); !filled.empty()) rows.push_back(cells_of(filled));
  return rows;
}

bool has_lists_in_a_list(const std::string &text) {
  for (bool open = false; const char c : text) {
    if (c == '[' && open) return true;
    if (c == '[' || c == ']') open = c == '[';
  }
  return false;
}

// A list of lists has a row in each of the inner ones, which may go over several lines; in one list
// alone a semicolon or a new line begins a row. What is around the brackets belongs to the language.
std::vector<Row> rows_of_matrix(const std::string &text, const std::string &what) {
  const bool nested = has_lists_in_a_list(text);
  Rows rows;
  int depth = 0, lists = 0;
  for (const char c : text) {
    if (c == '[' || c == ']') {
      rows.end_row();
      depth += c == '[' ? 1 : -1;
      if (depth < 0 || depth > 2) break;
      if (depth == 1 && c == '[' && ++lists > 1)
        throw Refusal(
            fmt::format("{} holds several lists, as a transfer function does; sections are one "
                        "list with a row each",
                        what));
    } else if (depth == 0) {
      continue;
    } else if (c == ';' || (c == '\n' && !nested)) {
      rows.end_row();
    } else if (is_blank(c) || c == '\n' || c == ',') {
      rows.end_word();
    } else {
      rows.add(c);
    }
  }
  if (depth != 0)
    throw Refusal(fmt::format(
        "{} has brackets that do not match: a list of sections is [[...], [...]]", what));
  return rows.take();
}

bool is_name(const std::string &word) {
  return !word.empty() && std::isalpha(static_cast<unsigned char>(word.front())) != 0 &&
         word != "nan" && word != "inf";
}

// Columns may have names, and then their order is known.
void drop_names(std::vector<Row> &rows, const std::string &what) {
  if (rows.empty() || !std::any_of(rows.front().begin(), rows.front().end(), is_name)) return;
  Row names = rows.front();
  for (std::string &name : names)
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (names != five_columns && names != six_columns)
    throw Refusal(fmt::format("the columns of {} are {}; sections are {} or {}", what,
                              fmt::join(rows.front(), ","), fmt::join(five_columns, ","),
                              fmt::join(six_columns, ",")));
  rows.erase(rows.begin());
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].size() != names.size())
      throw Refusal(fmt::format("section {} of {} has {} numbers under {} names", i + 1, what,
                                rows[i].size(), names.size()));
}

double number_of(const std::string &word, std::size_t row, const std::string &what) {
  if (word.empty()) throw Refusal(fmt::format("section {} of {} has an empty column", row, what));
  if (word.find(',') != std::string::npos)
    throw Refusal(
        fmt::format("section {} of {} has '{}', with a decimal comma; numbers have "
                    "decimal points here",
                    row, what, word));
  const char *begin = word.data() + (word.starts_with('+') ? 1 : 0);
  const char *end = word.data() + word.size();
  double number = 0.0;
  const auto [stop, error] = fast_float::from_chars(begin, end, number);
  if (error != std::errc() || stop != end || !std::isfinite(number))
    throw Refusal(
        fmt::format("section {} of {} has '{}', which is not a finite number", row, what, word));
  return number;
}

analysis::Section section_of(const std::vector<double> &c, std::size_t row,
                             const std::string &what) {
  if (c.size() == five_columns.size()) return {c[0], c[1], c[2], c[3], c[4]};
  const double a0 = c[3];
  if (a0 == 0.0) throw Refusal(fmt::format("section {} of {} has an a0 of 0", row, what));
  const analysis::Section s{c[0] / a0, c[1] / a0, c[2] / a0, c[4] / a0, c[5] / a0};
  for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2})
    if (!std::isfinite(value))
      throw Refusal(fmt::format("section {} of {} overflows when it is divided by its a0, {:g}",
                                row, what, a0));
  return s;
}

analysis::Sections sections_of(const std::vector<Row> &rows, const std::string &what) {
  if (rows.empty()) throw Refusal(fmt::format("{} holds no sections", what));
  if (rows.size() > most_foreign_sections)
    throw Refusal(fmt::format("{} has {} rows; up to {} sections are taken", what, rows.size(),
                              most_foreign_sections));
  analysis::Sections sections;
  for (const Row &row : rows) {
    const std::size_t number = sections.size() + 1;
    std::vector<double> coefficients;
    for (const std::string &word : row) coefficients.push_back(number_of(word, number, what));
    if (row.size() != rows.front().size() ||
        (row.size() != five_columns.size() && row.size() != six_columns.size()))
      throw Refusal(fmt::format(
          "section {} of {} has {} numbers; all have 5 (b0 b1 b2 a1 a2) or all have 6 (b0 b1 b2 a0 "
          "a1 a2)",
          number, what, row.size()));
    sections.push_back(section_of(coefficients, number, what));
  }
  return sections;
}

ForeignSections in_json(const std::string &text, const std::string &what) {
  const Json document = parse_document(text, what);
  const auto found = document.find("sections");
  if (found == document.end() || !found->is_array())
    throw Refusal(fmt::format(
        "{} has no list of \"sections\"; a saved design is named without --sections", what));
  std::vector<Row> rows;
  for (const Json &list : *found) {
    Row &row = rows.emplace_back();
    if (list.is_array())
      for (const Json &number : list) row.push_back(number.dump());
  }
  ForeignSections read{sections_of(rows, what), std::nullopt};
  const auto rate = document.find("samplerate");
  if (rate != document.end() && rate->is_number() && rate->get<double>() > 0.0)
    read.samplerate = rate->get<double>();
  return read;
}

}  // namespace

ForeignSections parse_foreign_sections(const std::string &file, const std::string &what) {
  // Spreadsheets write a mark of the byte order in front.
  const std::string text = file.starts_with("\xef\xbb\xbf") ? file.substr(3) : file;
  if (text.find('\0') != std::string::npos)
    throw Refusal(fmt::format("{} is not text, or not in UTF-8", what));
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin != std::string::npos && text[begin] == '{') return in_json(text, what);
  const std::string plain = without_comments(text);
  std::vector<Row> rows = plain.find_first_of("[]") == std::string::npos
                              ? rows_of_lines(plain)
                              : rows_of_matrix(plain, what);
  drop_names(rows, what);
  return {sections_of(rows, what), std::nullopt};
}

}  // namespace designer

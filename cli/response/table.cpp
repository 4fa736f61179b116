#include "response/table.h"

#include <algorithm>

#include <fmt/format.h>

#include "text/json.h"

namespace cli {

std::string table_page(const Table &table) {
  std::string page = table.title + "\n\n";
  std::vector<std::vector<std::string>> cells;
  for (const Column &column : table.columns) {
    std::vector<std::string> &list = cells.emplace_back(std::vector{column.head});
    for (const double value : column.values) list.push_back(fmt::format("{:.8g}", value));
  }
  for (std::size_t row = 0; row < cells.front().size(); ++row) {
    for (const std::vector<std::string> &list : cells) {
      const auto widest = std::max_element(
          list.begin(), list.end(),
          [](const std::string &a, const std::string &b) { return a.size() < b.size(); });
      page +=
          fmt::format("{}{:>{}}", &list == &cells.front() ? "" : "  ", list[row], widest->size());
    }
    page += '\n';
  }
  return page;
}

std::string table_csv(const Table &table) {
  std::string text;
  for (const Column &column : table.columns) text += (text.empty() ? "" : ",") + column.key;
  text += '\n';
  for (std::size_t row = 0; row < table.columns.front().values.size(); ++row) {
    for (const Column &column : table.columns)
      text += fmt::format("{}{}", &column == &table.columns.front() ? "" : ",", column.values[row]);
    text += '\n';
  }
  return text;
}

std::string table_json(const Table &table, const Words &command) {
  text::JsonWriter writer(text::JsonLayout::page);
  writer.begin_object();
  writer.key("veltane");
  writer.text(VELTANE_VERSION);
  writer.key("command");
  writer.texts(command);
  writer.key("samplerate");
  writer.number(table.samplerate);
  for (const Column &column : table.columns) {
    writer.key(column.key);
    writer.begin_list();
    for (const double value : column.values) writer.number(value);
    writer.end_list();
  }
  writer.end_object();
  return writer.take() + '\n';
}

}  // namespace cli

#include "layouts/document.h"

#include <cstdint>
#include <variant>

#include "text/json.h"

namespace layouts {
namespace {

using text::JsonLayout;
using text::JsonWriter;

void write(JsonWriter &writer, std::int64_t integer) { writer.integer(integer); }
void write(JsonWriter &writer, double number) { writer.number(number); }
void write(JsonWriter &writer, const std::string &word) { writer.text(word); }

void write(JsonWriter &writer, const designer::Value &value) {
  std::visit([&](const auto &held) { write(writer, held); }, value);
}

void write(JsonWriter &writer, const designer::Values &values) {
  writer.begin_list();
  for (const designer::Value &value : values) write(writer, value);
  writer.end_list();
}

void write(JsonWriter &writer, const patchbay::Entry &entry) {
  std::visit([&](const auto &held) { write(writer, held); }, entry);
}

void write(JsonWriter &writer, const designer::Settings &settings) {
  writer.begin_object();
  for (const auto &[name, values] : settings) {
    writer.key(name);
    // There may be two cutoffs, so that they are always a list.
    if (name == "frequency" || values.size() != 1)
      write(writer, values);
    else
      write(writer, values.front());
  }
  writer.end_object();
}

// What all documents of a design have.
void write_design(JsonWriter &writer, const designer::Design &design) {
  writer.key("settings");
  write(writer, design.settings);
  writer.key("dictionary");
  writer.begin_object();
  for (const auto &[key, entry] : design.dictionary) {
    writer.key(key);
    write(writer, entry);
  }
  writer.end_object();
}

}  // namespace

std::string design_document(const designer::Design &design,
                            const std::vector<std::string> &command) {
  JsonWriter writer(JsonLayout::page);
  writer.begin_object();
  writer.key("veltane");
  writer.text(VELTANE_VERSION);
  writer.key("command");
  writer.texts(command);
  write_design(writer, design);
  writer.end_object();
  return writer.take() + '\n';
}

std::string design_line(std::size_t number, const designer::Design &design) {
  JsonWriter writer(JsonLayout::line);
  writer.begin_object();
  writer.key("line");
  writer.integer(static_cast<std::int64_t>(number));
  writer.key("veltane");
  writer.text(VELTANE_VERSION);
  write_design(writer, design);
  if (!design.remarks.empty()) {
    writer.key("remarks");
    writer.texts(design.remarks);
  }
  writer.end_object();
  return writer.take();
}

std::string settings_line(const designer::Settings &settings) {
  JsonWriter writer(JsonLayout::line);
  write(writer, settings);
  return writer.take();
}

std::string error_line(std::size_t number, const std::string &sentence) {
  JsonWriter writer(JsonLayout::line);
  writer.begin_object();
  writer.key("line");
  writer.integer(static_cast<std::int64_t>(number));
  writer.key("error");
  writer.text(sentence);
  writer.end_object();
  return writer.take();
}

}  // namespace layouts

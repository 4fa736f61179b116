#include "text/json.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include <fmt/format.h>

#include "text/numbers.h"
#include "text/printable.h"

namespace text {
namespace {

// Neither escaped nor part of what `printable` changes.
bool is_plain(char c) { return c >= 0x20 && c < 0x7f && c != '"' && c != '\\' && c != '>'; }

std::string as_code(const Hidden &hidden) {
  return fmt::format("\\u{:04x}", static_cast<std::uint32_t>(hidden.character.value()));
}

void append_string(std::string &out, std::string_view value) {
  if (std::all_of(value.begin(), value.end(), is_plain)) {
    out += '"';
    out += value;
    out += '"';
    return;
  }
  out += with_hidden(Json(value).dump(-1, ' ', false, Json::error_handler_t::replace), as_code);
}

}  // namespace

void JsonWriter::new_line() {
  if (layout_ == JsonLayout::line) return;
  out_ += '\n';
  out_.append(2 * objects_, ' ');
}

void JsonWriter::separate() {
  if (std::exchange(after_key_, false) || levels_.empty()) return;
  if (!std::exchange(levels_.back().empty, false))
    out_ += levels_.back().object && layout_ == JsonLayout::page ? "," : ", ";
}

void JsonWriter::begin(char bracket, Level level) {
  separate();
  out_ += bracket;
  levels_.push_back(level);
  objects_ += level.object ? 1 : 0;
}

void JsonWriter::end(char bracket) {
  if (levels_.back().object) {
    --objects_;
    new_line();
  }
  levels_.pop_back();
  out_ += bracket;
}

void JsonWriter::begin_object() { begin('{', {true, true}); }
void JsonWriter::end_object() { end('}'); }
void JsonWriter::begin_list() { begin('[', {false, true}); }
void JsonWriter::end_list() { end(']'); }

void JsonWriter::key(std::string_view name) {
  separate();
  new_line();
  append_string(out_, name);
  out_ += ": ";
  after_key_ = true;
}

void JsonWriter::number(double value) {
  separate();
  if (std::isfinite(value))
    append_finite(value);
  else
    out_ += "null";
}

void JsonWriter::append_finite(double value) {
  const double magnitude = std::abs(value);
  constexpr std::uint64_t odd = 0x9E3779B97F4A7C15U;  // spreads the bits: Knuth, volume 3, 6.4
  Written &last = written_[(std::bit_cast<std::uint64_t>(magnitude) * odd) >> 59U];
  if (std::signbit(value)) out_ += '-';
  if (last.magnitude != magnitude) {
    const std::size_t start = out_.size();
    append_double(out_, magnitude);
    last.magnitude = magnitude;
    last.length =
        static_cast<std::uint8_t>(out_.copy(last.characters.data(), last.characters.size(), start));
    return;
  }
  out_.append(last.characters.data(), last.length);
}

void JsonWriter::integer(std::int64_t value) {
  separate();
  out_ += fmt::format_int(value).c_str();
}

void JsonWriter::text(std::string_view value) {
  separate();
  append_string(out_, value);
}

void JsonWriter::texts(const std::vector<std::string> &values) {
  begin_list();
  for (const std::string &value : values) text(value);
  end_list();
}

void JsonWriter::value(const Json &tree) {
  if (tree.is_object()) {
    begin_object();
    for (const auto &[name, member] : tree.items()) {
      key(name);
      value(member);
    }
    end_object();
  } else if (tree.is_array()) {
    begin_list();
    for (const Json &item : tree) value(item);
    end_list();
  } else if (tree.is_number_float()) {
    number(tree.get<double>());
  } else if (tree.is_string()) {
    text(tree.get_ref<const std::string &>());
  } else {
    separate();
    out_ += tree.dump();
  }
}

std::string JsonWriter::take() {
  levels_.clear();
  objects_ = 0;
  after_key_ = false;
  return std::exchange(out_, {});
}

std::string json_page(const Json &document) {
  JsonWriter writer(JsonLayout::page);
  writer.value(document);
  return writer.take() + '\n';
}

std::string json_string(std::string_view value) {
  std::string out;
  append_string(out, value);
  return out;
}

}  // namespace text

#include "text/json.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include <fmt/format.h>

#include "text/printable.h"

namespace text {
namespace {

// What is neither escaped nor part of what `printable` changes.
constexpr auto plain = [] {
  std::array<bool, 256> table{};
  for (std::size_t c = 0x20; c < 0x7f; ++c) table[c] = c != '"' && c != '\\' && c != '>';
  return table;
}();

bool is_plain(char c) { return plain[static_cast<unsigned char>(c)]; }

std::string as_code(const Hidden &hidden) {
  return fmt::format("\\u{:04x}", static_cast<std::uint32_t>(hidden.character.value()));
}

}  // namespace

void JsonWriter::grow(std::size_t count) {
  constexpr std::size_t first = 2048;  // a filter of usual order fits
  out_.resize(std::max({first, end_ + count, 2 * out_.size()}));
}

void JsonWriter::append(std::string_view characters) {
  end_ += characters.copy(room(characters.size()), characters.size());
}

void JsonWriter::append_string(std::string_view value) {
  if (!std::all_of(value.begin(), value.end(), is_plain))
    return append(
        with_hidden(Json(value).dump(-1, ' ', false, Json::error_handler_t::replace), as_code));
  char *at = room(value.size() + 2);
  *at++ = '"';
  at += value.copy(at, value.size());
  *at = '"';
  end_ += value.size() + 2;
}

void JsonWriter::new_line() {
  if (layout_ == JsonLayout::line) return;
  append('\n');
  append(std::string(2 * objects_, ' '));
}

void JsonWriter::separate() {
  if (std::exchange(after_key_, false) || levels_.empty()) return;
  if (std::exchange(levels_.back().empty, false)) return;
  append(',');
  if (!levels_.back().object || layout_ == JsonLayout::line) append(' ');
}

void JsonWriter::begin(char bracket, Level level) {
  separate();
  append(bracket);
  levels_.push_back(level);
  objects_ += level.object ? 1 : 0;
}

void JsonWriter::end(char bracket) {
  if (levels_.back().object) {
    --objects_;
    new_line();
  }
  levels_.pop_back();
  append(bracket);
}

void JsonWriter::begin_object() { begin('{', {true, true}); }
void JsonWriter::end_object() { end('}'); }
void JsonWriter::begin_list() { begin('[', {false, true}); }
void JsonWriter::end_list() { end(']'); }

void JsonWriter::key(std::string_view name) {
  separate();
  new_line();
  append_string(name);
  append(':');
  append(' ');
  after_key_ = true;
}

void JsonWriter::number(double value) {
  separate();
  if (std::isfinite(value))
    append_finite(value);
  else
    append("null");
}

void JsonWriter::append_finite(double value) {
  const double magnitude = std::abs(value);
  constexpr std::uint64_t odd = 0x9E3779B97F4A7C15U;  // spreads the bits: Knuth, volume 3, 6.4
  std::uint64_t bits;
  std::memcpy(&bits, &magnitude, sizeof bits);  // std::bit_cast is missing from older libraries
  Written &last = written_[static_cast<std::size_t>((bits * odd) >> 59U)];
  if (last.magnitude != magnitude) {
    last.magnitude = magnitude;
    char *const begin = last.characters.data();
    last.length = static_cast<std::uint8_t>(write_double(begin, magnitude) - begin);
  }
  if (std::signbit(value)) append('-');
  // All of them, since a number of characters that is known is copied at once.
  std::copy(last.characters.begin(), last.characters.end(), room(last.characters.size()));
  end_ += last.length;
}

void JsonWriter::integer(std::int64_t value) {
  separate();
  const fmt::format_int digits(value);
  append({digits.data(), digits.size()});
}

void JsonWriter::text(std::string_view value) {
  separate();
  append_string(value);
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
    append(tree.dump());
  }
}

std::string JsonWriter::take() {
  levels_.clear();
  objects_ = 0;
  after_key_ = false;
  out_.resize(std::exchange(end_, 0));
  return std::exchange(out_, {});
}

std::string json_page(const Json &document) {
  JsonWriter writer(JsonLayout::page);
  writer.value(document);
  return writer.take() + '\n';
}

std::string json_string(std::string_view value) {
  JsonWriter writer(JsonLayout::line);
  writer.text(value);
  return writer.take();
}

}  // namespace text

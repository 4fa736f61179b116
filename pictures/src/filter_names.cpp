#include "pictures/filter_names.h"

#include <fmt/format.h>

#include "text/printable.h"

namespace pictures {
namespace {

// Half of what there is room for, in bytes.
constexpr std::size_t half_file_name = 14, half_key_name = 68, half_title = 55;

std::string brief(const std::string &text, std::size_t half) {
  return text::shortened(text::printable(text), half, half, "\u2026");
}

}  // namespace

std::string saved_filter_name(const std::string &file_name, const std::string &title) {
  return fmt::format("{}: {}", brief(file_name, half_file_name), title);
}

std::string numbered_name(std::size_t number, const std::string &name) {
  return fmt::format("{}  {}", number, brief(name, half_key_name));
}

std::string figure_title(const std::string &text) { return brief(text, half_title); }

}  // namespace pictures

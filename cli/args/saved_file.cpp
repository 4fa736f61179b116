#include "args/saved_file.h"

#include <utility>

#include <fmt/format.h>

#include "args/settings_options.h"
#include "base/input_file.h"
#include "base/messages.h"
#include "designer/refusal.h"

namespace cli {

std::string in_quotes(const std::string &file) { return '\'' + file + '\''; }

designer::SavedDesign read_saved_design(const std::string &file) {
  const std::string text = read_input(file);
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  // Rows of numbers, with or without names.
  if (begin != std::string::npos && text[begin] != '{' &&
      text.find_first_not_of("0123456789+-.,;eE \t\r\nabAB\"") == std::string::npos)
    throw designer::Refusal(
        fmt::format("{} is not a saved design; sections of another program go with --sections",
                    in_quotes(file)));
  return designer::parse_saved_design(text, in_quotes(file));
}

designer::SavedDesign read_operand(const Arguments &arguments, const std::string &file) {
  if (!requested_settings(arguments).empty())
    throw designer::Refusal(
        fmt::format("the coefficients in '{}' are taken as they are; settings go with --from {}, "
                    "which designs anew",
                    file, file));
  designer::SavedDesign design = read_saved_design(file);
  if (design.dictionary.empty())
    throw designer::Refusal(
        fmt::format("{} has settings but no \"dictionary\" with coefficients; --from {} designs "
                    "with its settings",
                    in_quotes(file), file));
  return design;
}

OpenedFilter opened_filter(designer::Designer &designer, const designer::SavedDesign &saved,
                           const std::string &file) {
  const std::string what = in_quotes(file);
  designer::Design design = designer::opened(designer, saved, what);
  for (const std::string &remark : design.remarks) warn(fmt::format("{}: {}", what, remark));
  designer::PublishedFilter filter = designer::filter_in_file(design, what);
  return {std::move(design), std::move(filter)};
}

}  // namespace cli

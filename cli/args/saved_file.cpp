#include "args/saved_file.h"

#include "base/input_file.h"

namespace cli {

std::string in_quotes(const std::string &file) { return '\'' + file + '\''; }

designer::SavedDesign read_saved_design(const std::string &file) {
  return designer::parse_saved_design(read_input(file), in_quotes(file));
}

}  // namespace cli

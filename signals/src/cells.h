// Lines of text as the cells of a table.
#ifndef SIGNALS_CELLS_H
#define SIGNALS_CELLS_H

#include <optional>
#include <string_view>
#include <vector>

namespace signals {

/** @return what stands between the cells of a line: a tab, a semicolon, a comma, or, without any
 *          of them, a space, which stands for any number of blanks. */
char delimiter_of(std::string_view line);

/** @return the cells of a line, as views of it, without blanks around them; a delimiter in double
 *          quotes separates nothing. */
std::vector<std::string_view> cells_of(std::string_view line, char delimiter);

/** @return a cell without double quotes around it. */
std::string_view unquoted(std::string_view cell);

/** @return the number that a cell is, which may be NaN or infinite; none for any other text. */
std::optional<double> number_in(std::string_view cell);

/** @return whether a cell is a number with a decimal comma: "1,5". */
bool has_decimal_comma(std::string_view cell);

}  // namespace signals

#endif

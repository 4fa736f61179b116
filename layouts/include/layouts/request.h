// What is asked of an exported file besides its target.
#ifndef LAYOUTS_REQUEST_H
#define LAYOUTS_REQUEST_H

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/structure.h"
#include "layouts/target.h"

namespace layouts {

enum class Level {
  as_designed,
  normalised /**< 0 dB where the lowpass prototype has DC, or the bottom of the ripple there, so
                  that its top is 0 dB */
};

/** The order of the sections, and where in them the gain is. For targets with sections only. */
enum class Arrangement {
  quiet,           /**< for the least rounding noise, see `analysis::arranged` */
  published,       /**< as they were published, with the gain in the first one */
  published_spread /**< in that order, the gain spread by powers of two, so that the signal is near
                        its full level between all sections */
};

/** What becomes of a filter that makes more noise in floats than is any use. */
enum class Noisy { refused, written };

/** Whose sections they are. */
enum class Source {
  module,
  elsewhere /**< nothing but the sections is known: their level stays, and they are arranged */
};

struct Request {
  std::string identifier; /**< what the filter is called in the file: ASCII letters, digits
                                         and single underscores; see `identifier_for` */
  std::vector<std::string> command; /**< the words that make the file again, the program's name
                                         included */
  Level level = Level::as_designed;
  Arrangement arrangement = Arrangement::quiet;
  Noisy noisy = Noisy::refused;
  Source source = Source::module;
  std::optional<analysis::Structure> structure =
      std::nullopt; /**< for targets that have none of their own: by default the one that
                       `analysis::chosen_realization` takes, and direct form II transposed for
                       published sections, whose coefficients are to be seen in the file */
};

/** The words for structures, as people choose them. */
inline constexpr std::array<std::string_view, 3> structure_words{"direct-2-transposed", "direct-1",
                                                                 "state-variable"};

/** @return the one of these words that means it. */
std::string_view word_for(analysis::Structure structure);

/** @return what a word of these means; none for any other. */
std::optional<analysis::Structure> structure_named(std::string_view word);

/** @param stem  the name of a file without folder and ending; empty if there is no file
 *  @return a name that is not a reserved word in any language: "veltane_" and the stem's ASCII
 *          letters and digits, with one underscore for anything between them; veltane_filter if it
 *          has none. */
std::string identifier_for(std::string_view stem);

/** Raises Refusal if the target cannot do what is asked, whatever the filter. It costs nothing, and
 *  can be called before the filter is designed. */
void check(const Request &request, const Target &target);

}  // namespace layouts

#endif

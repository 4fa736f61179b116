// The programs and languages that a filter can be written for.
#ifndef LAYOUTS_TARGET_H
#define LAYOUTS_TARGET_H

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "analysis/structure.h"

namespace layouts {

struct ExportedFilter;

/** What a target holds coefficients in, and computes with. */
enum class Arithmetic {
  doubles,
  floats,
  integers_between, /**< doubles within a section, and integers of 32 bits from one to the next, which
                         clip */
  fixed_32,         /**< fixed point, see `analysis::fixed_cascade` */
  fixed_16
};

/** What a target takes of a filter. */
enum class Form {
  sections, /**< one by one */
  lists     /**< the two polynomials of the whole */
};

/** A target is one file in src/targets and one line in src/targets.inc. */
struct Target {
  const char *name;
  const char *summary; /**< one line, for a list of targets */
  Arithmetic arithmetic;
  Form form;

  /** @return the whole file. Raises designer::Refusal when this layout cannot hold the filter. */
  std::string (*write)(const ExportedFilter &filter);

  /** The structure in which sections are run there; none if the file itself runs them, in any. */
  std::optional<analysis::Structure> structure = analysis::Structure::direct_2_transposed;
};

/** @return all targets, in the order in which help lists them. */
std::span<const Target> targets();

/** Raises designer::Refusal, which lists the targets, if no target has this name. */
const Target &target_named(std::string_view name);

}  // namespace layouts

#endif

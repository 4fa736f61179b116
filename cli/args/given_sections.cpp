#include "args/given_sections.h"

#include <cmath>

#include <fmt/format.h>

#include "args/saved_file.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "base/input_file.h"
#include "designer/command_words.h"
#include "designer/foreign_sections.h"
#include "designer/limits.h"
#include "designer/refusal.h"
#include "text/quantities.h"

namespace cli {
namespace {

// None where it is left open, by 0 as well.
std::optional<double> samplerate_in(const designer::Settings &settings) {
  const designer::Values *values = settings.find("samplerate");
  if (values == nullptr) return std::nullopt;
  const auto rate = values->size() == 1 ? designer::number_in(values->front()) : std::nullopt;
  if (!rate || !std::isfinite(*rate) || *rate < 0.0)
    throw designer::Refusal("--samplerate takes one number above 0, in Hz");
  return *rate == 0.0 ? std::nullopt : rate;
}

void check_alone(const Arguments &arguments, const designer::Settings &settings) {
  if (arguments.given(from_option))
    throw designer::Refusal("--sections and --from exclude each other: each of them is a filter");
  for (const designer::Setting &setting : settings)
    if (setting.name != "samplerate")
      throw designer::Refusal(fmt::format(
          "--sections takes the filter as it is, so {} would change nothing; --samplerate alone "
          "goes beside it",
          designer::option_for(setting.name)));
}

}  // namespace

std::optional<GivenSections> given_sections(const Arguments &arguments) {
  const auto file = arguments.value(sections_option);
  if (!file) return std::nullopt;
  const designer::Settings settings = typed_settings(arguments);
  check_alone(arguments, settings);
  const std::optional<double> asked = samplerate_in(settings);
  designer::ForeignSections read =
      designer::parse_foreign_sections(read_input(*file), in_quotes(*file));
  const std::optional<double> known = asked ? asked : read.samplerate;
  GivenSections given;
  given.filter.samplerate = known.value_or(designer::audio_samplerate);
  given.filter.samplerate_assumed = !known;
  given.filter.sections = std::move(read.sections);
  given.title =
      fmt::format("{} of {}, at {} Hz", text::counted(given.filter.sections.size(), "section"),
                  in_quotes(*file), given.filter.samplerate);
  return given;
}

}  // namespace cli

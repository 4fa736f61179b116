// `veltane export`: one filter in another program's layout.

#include <algorithm>
#include <cctype>
#include <filesystem>

#include <fmt/format.h>

#include "analysis/cascade_gain.h"
#include "export/export.h"
#include "export/gain.h"
#include "export/precision.h"
#include "options.h"
#include "output.h"
#include "settings_options.h"
#include "subcommands.h"
#include "title.h"

namespace cli {
namespace {

std::string description() {
  std::string text =
      "Designs one filter and writes its second-order sections in the layout of another program.\n"
      "A comment in the file holds the equation, the sign of the feedback terms, the sample rate\n"
      "and the command that makes it again. Numbers have 17 significant digits, those of\n"
      "targets with floats have 9.\n\nTargets:\n";
  for (const Target &target : targets())
    text += fmt::format("  {:<19}{}\n", target.name, target.summary);
  return text;
}

// What the file calls the filter: the file's own name, with a prefix that keeps it
// from being a word of some language.
std::string identifier_for(const std::optional<std::string> &file) {
  const std::string stem =
      file && *file != "-" ? std::filesystem::path(*file).stem().string() : "filter";
  std::string name = "veltane_";
  for (const char c : stem)
    if (std::isalnum(static_cast<unsigned char>(c)) != 0)
      name += c;
    else if (name.back() != '_')
      name += '_';
  while (name.back() == '_') name.pop_back();
  return name == "veltane" ? "veltane_filter" : name;
}

// Sections come from published roots; the transfer function is not needed.
Settings with_sections_published(Settings settings) {
  std::erase_if(settings, [](const auto &setting) {
    return setting.first == "zpk_output" || setting.first == "sos_output";
  });
  for (const char *name : {"zpk_output", "sos_output"})
    settings.emplace_back(name, patchbay::Values{std::string("on")});
  return settings;
}

analysis::Sections sections_of(const Published &filter) {
  analysis::Sections sections;
  for (const auto &[b0, b1, b2, a1, a2] : filter.sections) sections.push_back({b0, b1, b2, a1, a2});
  return sections;
}

double ripple_of(const Design &design) {
  for (const auto &[key, entry] : design.dictionary)
    if (key == "ripple")
      if (const auto *ripple = std::get_if<double>(&entry)) return *ripple;
  throw std::runtime_error("the design is not as the module publishes one: it has no ripple");
}

std::string set_level(Export &filter, const Published &published, double ripple_db) {
  const Reference reference = reference_of(published, ripple_db);
  const double factor = normalise(filter.sections, reference);
  const std::string why = reference.db < 0.0 ? ", the bottom of the ripple, whose top is 0 dB" : "";
  return fmt::format("Level: multiplied by {:.17g}, which makes it {:g} dB {}{} (--normalise).",
                     factor, reference.db + 0.0, reference.place, why);
}

void scale(Export &filter, const Published &published, const Design &design, bool normalised,
           bool spread, bool cascade) {
  if (normalised)
    filter.gain.push_back(set_level(filter, published, ripple_of(design)));
  else
    filter.gain.emplace_back("Level: as designed (--normalise is off).");
  if (!cascade) return;
  if (spread) {
    filter.sections = analysis::with_gain_spread(filter.sections);
    filter.gain.emplace_back(
        "Gain: spread by powers of two, so that what each section but the last hands on peaks "
        "between -3.01 and +3.01 dB (--spread-gain).");
  } else {
    filter.gain.emplace_back("Gain: all of it in the first section (--spread-gain is off).");
  }
}

}  // namespace

int export_command(const Invocation &invocation) {
  patchbay::Host host;
  load_module(host, invocation.module);
  Options options("veltane export", description(),
                  {"veltane export --for scipy --topology butterworth --order 4 --frequency 1000",
                   "veltane export --for c --response bandpass --frequency 300 3400 "
                   "--spread-gain -o band.h"});
  const Option &target_name = options.add("--for", "TARGET", "One of the targets above");
  const Option &output = options.add(
      "-o,--output", "FILE",
      "Write it to a file, whole or not at all; its name is what the filter is called in it");
  const Option &normalised = options.add_switch(
      "--normalise",
      "Scale the filter to 0 dB at DC (highpass: at the Nyquist frequency; bandpass: at the "
      "centre of the band); a chebyshev-1 of even order to minus its ripple there, so that the "
      "ripple's top is 0 dB [off]");
  const Option &spread = options.add_switch(
      "--spread-gain",
      "Distribute the gain over the sections, so that the signal is near its full level from "
      "each section to the next [off]");
  const SettingsOptions settings(options, host);
  options.parse(invocation.rest);

  if (!target_name.given()) throw Refusal("veltane export needs --for TARGET; --help lists them");
  const Target &target = target_named(*target_name.value());
  const auto file = output.value();
  if (spread.given() && !target.cascade)
    throw Refusal(fmt::format(
        "--spread-gain needs sections, which --for {} has not; --for {}-sections has them",
        target.name, target.name));

  const Design design = run_design(host, with_sections_published(settings.settings()));
  for (const std::string &remark : design.remarks) say(remark);
  const Published filter = published(design);
  Export result{title(design),      design.samplerate, invocation, identifier_for(file), {}, {},
                sections_of(filter)};
  check_sections(result.sections);
  scale(result, filter, design, normalised.given(), spread.given(), target.cascade);
  check_cascade(result.sections, target.floats, result.remarks);
  if (target.floats)
    result.sections = in_floats(result.sections, target.name, design.samplerate, result.remarks);
  for (const std::string &remark : result.remarks) say(remark);
  write_output(file, target.write(result));
  return 0;
}

}  // namespace cli

// `veltane check`: whether a filter is what its settings ask for, in plain words.

#include <fmt/format.h>

#include "options.h"
#include "output.h"
#include "saved.h"
#include "settings_options.h"
#include "subcommands.h"
#include "subject.h"
#include "title.h"

namespace cli {
namespace {

// The file whose coefficients are to be checked, if the first word is one.
std::optional<std::string> take_file(Words &words) {
  if (words.empty() || (words.front().starts_with("-") && words.front() != "-"))
    return std::nullopt;
  std::string file = words.front();
  words.erase(words.begin());
  return file;
}

Settings with_all_forms(Settings settings) {
  for (const char *name : {"zpk_output", "sos_output", "tf_output"}) {
    std::erase_if(settings, [&](const auto &setting) { return setting.first == name; });
    settings.emplace_back(name, patchbay::Values{std::string("on")});
  }
  return settings;
}

// What is missing comes from a design with the same settings.
Published completed(Published published, const Published &all) {
  if (!published.gain) {
    published.gain = all.gain;
    published.zeros = all.zeros;
    published.poles = all.poles;
  }
  if (published.sections.empty()) published.sections = all.sections;
  if (published.denominator.empty() || published.numerator.empty()) {
    published.denominator = all.denominator;
    published.numerator = all.numerator;
  }
  return published;
}

analysis::Transfer transfer_of(const Published &published) {
  analysis::Transfer transfer{published.numerator, published.denominator};
  const std::size_t size = std::max(transfer.numerator.size(), transfer.denominator.size());
  transfer.numerator.resize(size);
  transfer.denominator.resize(size);
  return transfer;
}

Published read(const Design &design, const std::optional<std::string> &file) {
  try {
    return published(design);
  } catch (const std::runtime_error &error) {
    if (!file) throw;
    throw Refusal(fmt::format("'{}' cannot be checked: {}", *file, error.what()));
  }
}

Subject subject_of(patchbay::Host &host, const SettingsOptions &options,
                   const std::optional<std::string> &file) {
  Subject subject;
  subject.requested = options.settings();
  subject.saved = file.has_value();
  if (file) {
    if (!subject.requested.empty())
      throw Refusal(
          fmt::format("the coefficients in '{}' are checked as they are; settings go "
                      "with --from {}, which designs anew",
                      *file, *file));
    const Design saved = read_saved(*file);
    if (saved.dictionary.empty())
      throw Refusal(
          fmt::format("'{}' has no \"dictionary\" to check; 'veltane check --from {}' "
                      "checks a new design with its settings",
                      *file, *file));
    subject.requested = saved.settings;
    subject.design = saved_filter(host, *file, saved);
  } else {
    subject.design = run_design(host, subject.requested);
  }
  for (const auto &[name, values] : subject.requested)
    if (options.typed(name)) subject.typed.insert(name);
  subject.published = read(subject.design, file);
  subject.whole =
      completed(subject.published, published(run_design(host, with_all_forms(subject.requested))));
  subject.band = band_of(subject.whole.response);
  subject.sections = sections_of(subject.whole);
  subject.roots = roots_of(subject.whole);
  subject.transfer = transfer_of(subject.whole);
  return subject;
}

Verdict verdict_on(const Subject &subject) {
  Verdict verdict;
  verdict.title = title(subject.design);
  check_settings(subject, verdict);
  if (!check_health(subject, verdict) || subject.has_no_band()) return verdict;
  check_levels(subject, verdict);
  check_forms(subject, verdict);
  check_rounding(subject, verdict);
  return verdict;
}

}  // namespace

int check_command(const Invocation &invocation) {
  patchbay::Host host;
  load_module(host, invocation.module);
  Options options(
      "veltane check",
      "Checks one filter: what its settings mean, whether it is stable and reaches the levels\n"
      "asked for, and which of its forms can be trusted. The exit status is 0 when it is sound\n"
      "and 1 when it has a problem; each problem says what to change.\n"
      "'veltane check FILE.json [OPTIONS]' checks the coefficients of a saved design as they\n"
      "are; otherwise the settings say which filter is designed and checked.",
      {"veltane check --topology butterworth --order 4 --frequency 1000",
       "veltane check --response bandpass --frequency 300 3400 --tf-output on --format json"});
  const Option &format = options.add("--format", "WORD", "How to print it: text, json [text]");
  const Option &output =
      options.add("-o,--output", "FILE", "Write it to a file, whole or not at all");
  const SettingsOptions settings(options, host);
  Words words = invocation.rest;
  const auto checked = take_file(words);
  options.parse(words);

  const bool json = format.choice({"text", "json"}, "text") == "json";
  const auto file = output.value();
  const Verdict verdict = verdict_on(subject_of(host, settings, checked));
  write_output(file, json ? to_json(verdict, spoken(invocation)) : to_text_page(verdict));
  return verdict.problems() == 0 ? 0 : 1;
}

}  // namespace cli

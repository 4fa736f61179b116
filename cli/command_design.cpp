// `veltane design`: one filter, as a page or as JSON.

#include "batch.h"
#include "options.h"
#include "output.h"
#include "present.h"
#include "settings_options.h"
#include "subcommands.h"

namespace cli {

int design_command(const Invocation &invocation) {
  patchbay::Host host;
  load_module(host, invocation.module);
  Options options(
      "veltane design",
      "Designs one filter: makes a box of the class veltane with these settings, bangs it, and\n"
      "prints the dictionary that it publishes. What is not given stays as a new box has it,\n"
      "which is what stands in brackets.",
      {"veltane design --topology butterworth --order 4 --frequency 1000",
       "veltane design --response bandpass --frequency 300 3400 --format json -o band.json",
       "veltane design --from band.json --order 8",
       "echo '{\"order\": 4}' | veltane design --batch -"});
  const Option &format = options.add("--format", "WORD", "How to print it: text, json [text]");
  const Option &output =
      options.add("-o,--output", "FILE", "Write it to a file, whole or not at all");
  const Option &batch = options.add(
      "--batch", "FILE", "Design one filter for each line of settings, such as {\"order\": 4}");
  const SettingsOptions settings(options, host);
  options.append_help(
      "--batch reads a JSON object a line; - is standard input. It writes one JSON result a line\n"
      "in the same order, using all processors. Settings beside it hold for the lines without\n"
      "their own. A line that is wrong becomes {\"line\": N, \"error\": \"...\"}; the others go "
      "on.\n"
      "\n"
      "The exit status is 0 when it is done, 1 when lines of a batch had errors, 2 when the\n"
      "request was wrong, 3 when something else failed.\n");
  options.parse(invocation.rest);

  const bool json = format.choice({"text", "json"}, "text") == "json";
  const auto file = output.value();
  if (const auto lines = batch.value()) {
    if (format.given() && !json)
      throw Refusal("--batch writes JSON: leave --format out, or give json");
    if (*lines == "-" && settings.reads_standard_input())
      throw Refusal("--batch - and --from - both read standard input: give one of them a file");
    return run_batch(host, settings.settings(), *lines, file);
  }
  const Design design = run_design(host, settings.settings());
  for (const std::string &remark : design.remarks) say(remark);
  write_output(file, json ? to_json(design, spoken(invocation)) : to_text_page(design));
  return 0;
}

}  // namespace cli

// `veltane design`: one filter, as a page or as JSON.

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
       "veltane design --response bandpass --frequency 300 3400 --format json -o band.json"});
  const Option &format = options.add("--format", "WORD", "How to print it: text, json [text]");
  const Option &output =
      options.add("-o,--output", "FILE", "Write it to a file, whole or not at all");
  const SettingsOptions settings(options, host);
  options.parse(invocation.rest);

  const bool json = format.choice({"text", "json"}, "text") == "json";
  const auto file = output.value();
  const Design design = run_design(host, settings.settings());
  for (const std::string &remark : design.remarks) say(remark);
  write_output(file, json ? to_json(design, spoken(invocation)) : to_text_page(design));
  return 0;
}

}  // namespace cli

// A filter in the layout of another program.

#include <fmt/format.h>

#include "designer/command_words.h"
#include "designer/refusal.h"
#include "filter.h"
#include "layouts/export_command.h"
#include "layouts/layout.h"
#include "process_designer.h"

namespace python {
namespace {

layouts::Request request_for(const layouts::Target &target, const ExportWishes &wishes) {
  layouts::Request request{.identifier = layouts::identifier_for(wishes.name.value_or("")),
                           .command = {}};
  if (wishes.normalise) request.level = layouts::Level::normalised;
  // The gain of arranged sections is spread anyway.
  if (wishes.spread_gain && (wishes.as_published || target.form == layouts::Form::lists))
    request.arrangement = layouts::Arrangement::published_spread;
  else if (wishes.as_published)
    request.arrangement = layouts::Arrangement::published;
  if (wishes.anyway) request.noisy = layouts::Noisy::written;
  if (wishes.structure) {
    request.structure = layouts::structure_named(*wishes.structure);
    if (!request.structure)
      throw designer::Refusal(fmt::format("structure cannot be '{}'; it is one of {}",
                                          *wishes.structure,
                                          fmt::join(layouts::structure_words, ", ")));
  }
  return request;
}

}  // namespace

Exported exported(const Filter &filter, const std::string &target_name,
                  const ExportWishes &wishes) {
  designer::Designer &designer = process_designer();
  const layouts::Target &target = layouts::target_named(target_name);
  layouts::Request request = request_for(target, wishes);
  layouts::check(request, target);
  request.command = layouts::export_command(
      target,
      designer::command_words(designer.attributes(), filter.design().settings, designer.fresh()),
      request);
  layouts::File file = layouts::write(filter.design(), target, request);
  return {std::move(file.text), std::move(file.remarks)};
}

}  // namespace python

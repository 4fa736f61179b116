// A filter in the layout of another program, with the bytes that the command writes.

#include "layouts/layout.h"
#include "layouts/export_command.h"
#include "session/answers.h"
#include "session/request.h"

namespace page {

Answer layout(designer::Designer &designer, const Request &request) {
  const layouts::Target &target = layouts::target_named(text_in(request, "target"));
  layouts::Request wanted{.identifier = layouts::identifier_for(""), .command = {}};
  if (flag_in(request, "normalise")) wanted.level = layouts::Level::normalised;
  if (flag_in(request, "as_published")) wanted.arrangement = layouts::Arrangement::published;
  if (flag_in(request, "anyway")) wanted.noisy = layouts::Noisy::written;
  layouts::check(wanted, target);
  const designer::Settings settings = settings_at_audio_rate(designer, request, "settings");
  wanted.command = layouts::export_command(target, setting_words(designer, settings), wanted);
  const designer::Design design = designer.design(layouts::with_sections(settings));
  const layouts::File file = layouts::write(design, target, wanted);
  std::vector<std::string> remarks = design.remarks;
  remarks.insert(remarks.end(), file.remarks.begin(), file.remarks.end());
  Answer answer;
  answer.document = {{"text", file.text}, {"remarks", remarks}, {"command", wanted.command}};
  return answer;
}

}  // namespace page

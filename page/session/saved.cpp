// Designs that were saved, and saving them.

#include <fmt/format.h>

#include "designer/saved_design.h"
#include "layouts/document.h"
#include "session/answers.h"
#include "session/json.h"
#include "session/request.h"
#include "text/printable.h"

namespace page {

Answer open(designer::Designer &designer, const Request &request) {
  const std::string what = fmt::format("'{}'", text::printable(text_in(request, "name")));
  const designer::SavedDesign saved = designer::parse_saved_design(text_in(request, "text"), what);
  const designer::Design accepted = designer.accepted(saved.settings);
  Answer answer;
  answer.document = {{"settings", json(accepted.settings)}, {"remarks", accepted.remarks}};
  return answer;
}

Answer document(designer::Designer &designer, const Request &request) {
  const designer::Settings settings = settings_at_audio_rate(designer, request, "settings");
  std::vector<std::string> command{"veltane", "design", "--format", "json"};
  for (std::string &word : setting_words(designer, settings)) command.push_back(std::move(word));
  Answer answer;
  answer.document["text"] = layouts::design_document(designer.design(settings), command);
  return answer;
}

}  // namespace page

// A design with what is seen of it: what a page asks for when a dial turns.

#include <chrono>

#include "designer/refusal.h"
#include "designer/title.h"
#include "session/answers.h"
#include "session/json.h"
#include "session/panels.h"
#include "session/request.h"

namespace page {
namespace {

using text::Json;

Json design_of(designer::Designer &designer, const designer::Design &design, const Request &request,
               const char *member) {
  std::vector<std::string> command{"veltane", "design"};
  for (std::string &word :
       setting_words(designer, settings_at_audio_rate(designer, request, member)))
    command.push_back(std::move(word));
  return {{"title", designer::title(design)},
          {"settings", json(design.settings)},
          {"samplerate", design.samplerate},
          {"remarks", design.remarks},
          {"out_of_use", designer.out_of_use(settings_in(designer, request, member))},
          {"dictionary", json(design.dictionary)},
          {"command", command}};
}

double microseconds_since(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
      .count();
}

}  // namespace

Answer live(designer::Designer &designer, const Request &request) {
  const auto start = std::chrono::steady_clock::now();
  const std::vector<std::string> names = texts_in(request, "panels");
  Answer answer;
  std::vector<designer::Design> designs;
  for (const char *member : {"settings", "other"}) {
    if (!designs.empty() && !has(request, member)) continue;
    designs.push_back(design_in(designer, request, member));
    answer.document[designs.size() == 1 ? "design" : "other"] =
        design_of(designer, designs.back(), request, member);
  }
  answer.document["undrawable"] = "";
  answer.document["panels"] = Json::object();
  try {
    answer.document["panels"] = panels(designs, names, request, answer);
  } catch (const designer::Refusal &refusal) {
    answer.document["undrawable"] = refusal.what();
  }
  answer.document["microseconds"] = microseconds_since(start);
  return answer;
}

}  // namespace page

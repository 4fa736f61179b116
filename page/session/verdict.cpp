// The verdict on a filter, in the words of the terminal.

#include "verdict/verdict.h"
#include "session/answers.h"
#include "session/json.h"
#include "session/request.h"
#include "verdict/lower_order.h"

namespace page {
namespace {

// As a box holds them, which is how a page compares settings.
text::Json json(designer::Designer &designer, const std::vector<designer::Settings> &remedies) {
  text::Json list = text::Json::array();
  for (const designer::Settings &remedy : remedies) {
    const designer::Settings held = designer.accepted(remedy).settings;
    text::Json object = text::Json::object();
    for (const auto &[name, values] : remedy) object[name] = page::json(*held.find(name));
    list.push_back(std::move(object));
  }
  return list;
}

text::Json json(designer::Designer &designer, const verdict::Finding &finding) {
  constexpr const char *weights[] = {"fact", "note", "problem"};
  return {{"about", finding.about},
          {"weight", weights[static_cast<std::size_t>(finding.weight)]},
          {"text", finding.text},
          {"change", finding.change.words},
          {"remedies", json(designer, finding.change.remedies)},
          {"lower_order", finding.change.lower_order}};
}

}  // namespace

Answer verdict_on(designer::Designer &designer, const Request &request) {
  const designer::Settings wanted = settings_at_audio_rate(designer, request, "settings");
  std::set<std::string> typed;
  for (const auto &[name, values] : wanted) typed.insert(name);
  const verdict::Verdict verdict = verdict::judge(verdict::new_filter(designer, wanted, typed));
  Answer answer;
  text::Json findings = text::Json::array();
  for (const verdict::Finding &finding : verdict.findings.list)
    findings.push_back(json(designer, finding));
  answer.document = {{"title", verdict.title},
                     {"problems", verdict.problems()},
                     {"findings", findings},
                     {"measured", verdict.findings.measured}};
  return answer;
}

Answer lower_order(designer::Designer &designer, const Request &request) {
  const auto order =
      verdict::lower_order(designer, settings_at_audio_rate(designer, request, "settings"));
  Answer answer;
  answer.document["order"] = order ? text::Json(*order) : text::Json(nullptr);
  return answer;
}

}  // namespace page

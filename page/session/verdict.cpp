// The verdict on a filter, in the words of the terminal.

#include "verdict/verdict.h"
#include "session/answers.h"
#include "session/json.h"
#include "session/request.h"

namespace page {
namespace {

text::Json json(const verdict::Finding &finding) {
  constexpr const char *weights[] = {"fact", "note", "problem"};
  return {{"about", finding.about},
          {"weight", weights[static_cast<std::size_t>(finding.weight)]},
          {"text", finding.text},
          {"change", finding.change.words}};
}

}  // namespace

Answer verdict_on(designer::Designer &designer, const Request &request) {
  const designer::Settings wanted = settings_at_audio_rate(request, "settings");
  std::set<std::string> typed;
  for (const auto &[name, values] : wanted) typed.insert(name);
  const verdict::Verdict verdict = verdict::judge(verdict::new_filter(designer, wanted, typed));
  Answer answer;
  text::Json findings = text::Json::array();
  for (const verdict::Finding &finding : verdict.findings.list) findings.push_back(json(finding));
  answer.document = {{"title", verdict.title},
                     {"problems", verdict.problems()},
                     {"findings", findings},
                     {"measured", verdict.findings.measured}};
  return answer;
}

}  // namespace page

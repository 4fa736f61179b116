#include "verdict.h"

#include <algorithm>

#include <fmt/format.h>

namespace cli {
namespace {

constexpr std::size_t about_width = 19;

const char *word(Weight weight) {
  return weight == Weight::problem ? "problem" : weight == Weight::note ? "note" : "fact";
}

std::string counted(std::size_t problems) {
  if (problems == 0) return "sound";
  return problems == 1 ? "1 problem" : fmt::format("{} problems", problems);
}

std::string paragraph(const Finding &finding) {
  std::string text =
      fmt::format("{}: {}: {}\n", finding.weight == Weight::problem ? "PROBLEM" : "note",
                  finding.about, finding.text);
  if (!finding.change.empty()) text += fmt::format("  change: {}\n", finding.change);
  return text;
}

}  // namespace

void Verdict::fact(const std::string &about, const std::string &text) {
  findings.push_back({about, Weight::fact, text, ""});
}

void Verdict::note(const std::string &about, const std::string &text, const std::string &change) {
  findings.push_back({about, Weight::note, text, change});
}

void Verdict::problem(const std::string &about, const std::string &text,
                      const std::string &change) {
  findings.push_back({about, Weight::problem, text, change});
}

std::size_t Verdict::problems() const {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(),
                    [](const Finding &finding) { return finding.weight == Weight::problem; }));
}

std::string to_text_page(const Verdict &verdict) {
  std::string page = fmt::format("{}: {}\n\n", counted(verdict.problems()), verdict.title);
  for (const Weight weight : {Weight::problem, Weight::note}) {
    const std::size_t before = page.size();
    for (const Finding &finding : verdict.findings)
      if (finding.weight == weight) page += paragraph(finding);
    if (page.size() > before) page += '\n';
  }
  for (const Finding &finding : verdict.findings)
    if (finding.weight == Weight::fact)
      page += fmt::format("{:<{}}{}\n", finding.about, about_width, finding.text);
  return page;
}

std::string to_json(const Verdict &verdict, const std::vector<std::string> &command) {
  Json findings = Json::array();
  for (const Finding &finding : verdict.findings)
    findings.push_back({{"about", finding.about},
                        {"weight", word(finding.weight)},
                        {"text", finding.text},
                        {"change", finding.change}});
  const Json document = {
      {"veltane", VELTANE_VERSION}, {"command", command},   {"sound", verdict.problems() == 0},
      {"title", verdict.title},     {"findings", findings}, {"measured", verdict.measured}};
  return json_page(document);
}

}  // namespace cli

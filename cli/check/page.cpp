#include "check/page.h"

#include <fmt/format.h>

#include "text/json.h"
#include "text/quantities.h"

namespace cli {
namespace {

using text::Json;
using verdict::Finding;
using verdict::Weight;

constexpr std::size_t about_width = 19;

const char *word(Weight weight) {
  return weight == Weight::problem ? "problem" : weight == Weight::note ? "note" : "fact";
}

std::string outcome(std::size_t problems, Colour colour) {
  return problems == 0 ? "sound" : alarming(text::counted(problems, "problem"), colour);
}

std::string paragraph(const Finding &finding, Colour colour) {
  std::string text = fmt::format(
      "{}: {}: {}\n", finding.weight == Weight::problem ? alarming("PROBLEM", colour) : "note",
      finding.about, finding.text);
  if (!finding.change.words.empty()) text += fmt::format("  change: {}\n", finding.change.words);
  return text;
}

}  // namespace

std::string check_page(const verdict::Verdict &verdict, Colour colour) {
  std::string page = fmt::format("{}: {}\n\n", outcome(verdict.problems(), colour), verdict.title);
  for (const Weight weight : {Weight::problem, Weight::note}) {
    const std::size_t before = page.size();
    for (const Finding &finding : verdict.findings.list)
      if (finding.weight == weight) page += paragraph(finding, colour);
    if (page.size() > before) page += '\n';
  }
  for (const Finding &finding : verdict.findings.list)
    if (finding.weight == Weight::fact)
      page += fmt::format("{:<{}}{}\n", finding.about, about_width, finding.text);
  return page;
}

std::string check_document(const verdict::Verdict &verdict, const Words &command) {
  Json findings = Json::array();
  for (const Finding &finding : verdict.findings.list)
    findings.push_back({{"about", finding.about},
                        {"weight", word(finding.weight)},
                        {"text", finding.text},
                        {"change", finding.change.words}});
  return text::json_page({{"veltane", VELTANE_VERSION},
                          {"command", command},
                          {"sound", verdict.problems() == 0},
                          {"title", verdict.title},
                          {"findings", findings},
                          {"measured", verdict.findings.measured}});
}

}  // namespace cli

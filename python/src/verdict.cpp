// The verdict on a filter, in the words of the command.

#include "verdict/verdict.h"

#include <set>

#include "filter.h"
#include "process_designer.h"

namespace python {
namespace {

py::tuple tuple_of(designer::Designer &designer, const verdict::Finding &finding) {
  constexpr const char *weights[] = {"fact", "note", "problem"};
  py::list remedies;
  for (const designer::Settings &remedy : finding.change.remedies) {
    // As a box holds them, with numbers for what the words have as texts.
    const designer::Settings held = designer.accepted(remedy).settings;
    designer::Settings changed;
    for (const auto &[name, values] : remedy) changed.set(name, *held.find(name));
    remedies.append(settings_dict(changed));
  }
  return py::make_tuple(finding.about, weights[static_cast<std::size_t>(finding.weight)],
                        finding.text, finding.change.words, py::tuple(remedies));
}

}  // namespace

py::tuple verdict_on(const Filter &filter) {
  designer::Designer &designer = process_designer();
  std::set<std::string> typed;
  for (const auto &[name, values] : filter.requested()) typed.insert(name);
  const verdict::Verdict verdict =
      verdict::judge(verdict::new_filter(designer, filter.requested(), typed));
  py::list findings;
  for (const verdict::Finding &finding : verdict.findings.list)
    findings.append(tuple_of(designer, finding));
  return py::make_tuple(verdict.title, findings, from_json(verdict.findings.measured));
}

}  // namespace python

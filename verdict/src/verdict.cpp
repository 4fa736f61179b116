#include "verdict/verdict.h"

#include <algorithm>

#include "checks.h"
#include "health.h"

namespace verdict {
namespace {

struct Check {
  Findings (*findings)(const FilterUnderTest &filter);
  Of of;
  When when;

  bool is_for(const FilterUnderTest &filter) const {
    return of == Of::all || (of == Of::foreign) == (filter.origin == Origin::foreign);
  }
};

constexpr Check checks[] = {
#define VERDICT_CHECK(name, of, when) {check_##name, Of::of, When::when},
#include "checks.inc"
#undef VERDICT_CHECK
};

}  // namespace

Change Change::to_lower_order(std::string words) {
  Change change(std::move(words));
  change.lower_order = true;
  return change;
}

void Findings::fact(const std::string &about, const std::string &text) {
  list.push_back({about, Weight::fact, text, {}});
}

void Findings::note(const std::string &about, const std::string &text, const Change &change) {
  list.push_back({about, Weight::note, text, change});
}

void Findings::problem(const std::string &about, const std::string &text, const Change &change) {
  list.push_back({about, Weight::problem, text, change});
}

Findings &Findings::operator+=(const Findings &others) {
  list.insert(list.end(), others.list.begin(), others.list.end());
  measured.update(others.measured);
  return *this;
}

std::size_t Verdict::problems() const {
  return static_cast<std::size_t>(
      std::count_if(findings.list.begin(), findings.list.end(),
                    [](const Finding &finding) { return finding.weight == Weight::problem; }));
}

Verdict judge(const FilterUnderTest &filter) {
  Verdict verdict{filter.title, {}};
  const bool levels = has_levels(filter);
  for (const Check &check : checks)
    if (check.is_for(filter) && (check.when == When::always || levels))
      verdict.findings += check.findings(filter);
  return verdict;
}

}  // namespace verdict

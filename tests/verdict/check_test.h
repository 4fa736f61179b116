// Filters to check, and what was said of them.
#ifndef TESTS_VERDICT_CHECK_TEST_H
#define TESTS_VERDICT_CHECK_TEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "designer/designer.h"
#include "verdict/filter_under_test.h"
#include "verdict/verdict.h"

namespace verdict {

/** @return the only designer of the test program. */
inline designer::Designer &designer_with_module() {
  static designer::Designer designer{VELTANE_MODULE};
  return designer;
}

/** @return a design with these settings, all of them typed. */
inline FilterUnderTest designed(const designer::Settings &settings) {
  std::set<std::string> names;
  for (const designer::Setting &setting : settings) names.insert(setting.name);
  return new_filter(designer_with_module(), settings, names);
}

/** @return the verdict on a design with these settings. */
inline Verdict checked(const designer::Settings &settings) { return judge(designed(settings)); }

/** @return the verdict on sections of which nothing else is known, at 48000 Hz. */
inline Verdict checked_sections(const analysis::Sections &sections) {
  designer::FilterForms forms{};
  forms.samplerate = 48000.0;
  forms.sections = sections;
  return judge(foreign_filter("sections", forms));
}

/** @return all about something of this weight, with what to change; empty where nothing was said. */
inline std::string said(const Findings &findings, const std::string &about, Weight weight) {
  std::string text;
  for (const Finding &finding : findings.list)
    if (finding.about == about && finding.weight == weight)
      text += finding.text + '\n' + finding.change.words;
  return text;
}

inline std::string fact(const Verdict &verdict, const std::string &about) {
  return said(verdict.findings, about, Weight::fact);
}
inline std::string note(const Verdict &verdict, const std::string &about) {
  return said(verdict.findings, about, Weight::note);
}
inline std::string problem(const Verdict &verdict, const std::string &about) {
  return said(verdict.findings, about, Weight::problem);
}

/** @return what the problems are about. */
inline std::set<std::string> problems(const Verdict &verdict) {
  std::set<std::string> abouts;
  for (const Finding &finding : verdict.findings.list)
    if (finding.weight == Weight::problem) abouts.insert(finding.about);
  return abouts;
}

inline double measured(const Verdict &verdict, const char *key) {
  return verdict.findings.measured.at(key).get<double>();
}

}  // namespace verdict

#endif

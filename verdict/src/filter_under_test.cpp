#include "verdict/filter_under_test.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "designer/title.h"

namespace verdict {
namespace {

using designer::Design;
using designer::Designer;
using designer::PublishedFilter;
using designer::Settings;

bool has_transfer(const PublishedFilter &filter) {
  return !filter.transfer.numerator.empty() && !filter.transfer.denominator.empty();
}

Settings with_all_forms(Settings settings) {
  for (const char *name : {"zpk_output", "sos_output", "tf_output"})
    settings.set(name, {std::string("on")});
  return settings;
}

analysis::Transfer of_one_length(analysis::Transfer transfer) {
  const std::size_t size = std::max(transfer.numerator.size(), transfer.denominator.size());
  transfer.numerator.resize(size);
  transfer.denominator.resize(size);
  return transfer;
}

// @param all  a design with the same settings and all forms
Forms completed(const PublishedFilter &filter, const PublishedFilter &all) {
  return {filter.roots ? *filter.roots : all.roots.value(),
          filter.sections.empty() ? all.sections : filter.sections,
          of_one_length(has_transfer(filter) ? filter.transfer : all.transfer)};
}

FilterUnderTest filter_under_test(Designer &designer, const Design &design,
                                  PublishedFilter published, const Settings &requested) {
  FilterUnderTest filter{};
  filter.title = designer::title(design);
  filter.forms =
      completed(published, designer::published_filter(designer.design(with_all_forms(requested))));
  filter.published = std::move(published);
  filter.requested = requested;
  filter.used = design.settings;
  return filter;
}

}  // namespace

bool FilterUnderTest::publishes_transfer() const { return has_transfer(published); }

FilterUnderTest new_filter(Designer &designer, const Settings &requested,
                           const std::set<std::string> &typed) {
  const Design design = designer.design(requested);
  FilterUnderTest filter =
      filter_under_test(designer, design, designer::published_filter(design), requested);
  filter.typed = typed;
  filter.origin = Origin::designed;
  return filter;
}

FilterUnderTest saved_filter(Designer &designer, const designer::SavedDesign &saved,
                             const std::string &what) {
  if (saved.dictionary.empty()) throw designer::Refusal(what + " has no \"dictionary\" to check");
  const Design design = designer::opened(designer, saved, what);
  FilterUnderTest filter =
      filter_under_test(designer, design, designer::filter_in_file(design, what), saved.settings);
  filter.origin = Origin::saved;
  return filter;
}

FilterUnderTest foreign_filter(const std::string &title, const designer::FilterForms &sections) {
  FilterUnderTest filter{};
  filter.title = title;
  static_cast<designer::FilterForms &>(filter.published) = sections;
  filter.forms = {analysis::roots_of(sections.sections), sections.sections, {}};
  filter.origin = Origin::foreign;
  return filter;
}

}  // namespace verdict

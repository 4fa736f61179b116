// Filters to check, from settings and from saved designs.

#include "check_test.h"
#include "designer/refusal.h"

using designer::Refusal;
using designer::SavedDesign;
using designer::Settings;
using designer::Values;
using testing::Contains;
using testing::HasSubstr;
using testing::IsSupersetOf;
using namespace verdict;

namespace {

// A design as a file holds it, some of it changed.
class Saved {
 public:
  explicit Saved(const Settings &settings)
      : design_{settings, designer_with_module().design(settings).dictionary} {}

  Saved &set(const std::string &key, const patchbay::Entry &entry) {
    entry_of(key) = entry;
    return *this;
  }
  Saved &set(const std::string &key, std::size_t place, double value) {
    list(key).at(place) = value;
    return *this;
  }
  Saved &resize(const std::string &key, std::size_t size) {
    list(key).resize(size);
    return *this;
  }
  double at(const std::string &key, std::size_t place) {
    return std::get<double>(list(key).at(place));
  }
  Saved &erase(const std::string &key) {
    std::erase_if(design_.dictionary, [&](const auto &entry) { return entry.first == key; });
    return *this;
  }
  Saved &empty() {
    design_.dictionary.clear();
    return *this;
  }

  FilterUnderTest filter() const {
    return saved_filter(designer_with_module(), design_, "'saved.json'");
  }

 private:
  patchbay::Entry &entry_of(const std::string &key) {
    for (auto &[name, entry] : design_.dictionary)
      if (name == key) return entry;
    throw std::out_of_range(key);
  }
  Values &list(const std::string &key) { return std::get<Values>(entry_of(key)); }

  SavedDesign design_;
};

const Settings lowpass{
    {"topology", {"butterworth"}}, {"order", {4}}, {"frequency", {1000}}, {"tf_output", {"on"}}};

std::set<std::string> problems_of(const Saved &saved) { return problems(judge(saved.filter())); }

std::string refusal_of(const Saved &saved) {
  try {
    saved.filter();
  } catch (const Refusal &refusal) {
    return refusal.what();
  }
  return "";
}

}  // namespace

TEST(NewFilter, FormsThatAreNotPublishedComeFromADesignThatPublishesAll) {
  const FilterUnderTest all = designed({{"tf_output", {"on"}}});
  const FilterUnderTest none = designed({{"zpk_output", {"off"}}, {"sos_output", {"off"}}});
  EXPECT_FALSE(none.published.roots);
  EXPECT_TRUE(none.published.sections.empty());
  EXPECT_FALSE(none.publishes_transfer());
  EXPECT_TRUE(all.publishes_transfer());
  EXPECT_EQ(none.forms.roots.poles, all.forms.roots.poles);
  EXPECT_EQ(none.forms.roots.gain, all.forms.roots.gain);
  EXPECT_EQ(none.forms.sections.size(), all.published.sections.size());
  EXPECT_EQ(none.forms.transfer.denominator, all.published.transfer.denominator);
}

TEST(NewFilter, KeepsWhatWasAskedForBesideWhatIsUsed) {
  const FilterUnderTest filter = designed({{"order", {500}}});
  EXPECT_EQ(filter.requested.number("order"), 500);
  EXPECT_EQ(filter.used.number("order"), 200);
  EXPECT_EQ(filter.typed, std::set<std::string>{"order"});
  EXPECT_EQ(filter.origin, Origin::designed);
  EXPECT_THAT(filter.title, HasSubstr("chebyshev-2 lowpass of order 200"));
}

TEST(SavedFilter, IsAsSoundAsTheNewOne) {
  const Settings settings{{"order", {6}},
                          {"response", {"bandpass"}},
                          {"frequency", {300, 3400}},
                          {"tf_output", {"on"}},
                          {"passband_ripple", {3}}};
  const Verdict saved = judge(Saved(settings).filter());
  const Verdict fresh = checked(settings);
  EXPECT_EQ(saved.findings.measured, fresh.findings.measured);
  EXPECT_EQ(saved.title, fresh.title);
  EXPECT_EQ(note(saved, "passband_ripple"), "") << "nobody typed it";
}

TEST(SavedFilter, ChangedCoefficientsAreFound) {
  ASSERT_EQ(problems_of(Saved(lowpass)), std::set<std::string>{});
  Saved shifted(lowpass);
  shifted.set("cascade", 3, shifted.at("cascade", 3) + 1e-4);
  EXPECT_THAT(problems_of(shifted), IsSupersetOf({"sections", "forms"}));
  EXPECT_THAT(problem(judge(shifted.filter()), "forms"), HasSubstr("design it again"));
  EXPECT_THAT(problems_of(Saved(lowpass).set("cascade", 4, 1.25)), Contains("stability"));
  EXPECT_THAT(problems_of(Saved(lowpass).set("gain", std::nan(""))), Contains("numbers"));
  EXPECT_THAT(problems_of(Saved(lowpass).resize("cascade", 5)),
              IsSupersetOf({"sections", "levels", "forms"}));
  EXPECT_EQ(problems_of(Saved(lowpass).set("numerator", 0, 1.0)),
            std::set<std::string>{"transfer function"});
}

TEST(SavedFilter, FormsThatItDoesNotHaveAreDesigned) {
  const FilterUnderTest whole = Saved(lowpass).filter();
  const FilterUnderTest filter = Saved(lowpass).erase("gain").erase("numerator").filter();
  EXPECT_FALSE(filter.published.roots);
  EXPECT_FALSE(filter.publishes_transfer()) << "a denominator alone";
  EXPECT_EQ(filter.forms.roots.gain, whole.forms.roots.gain);
  EXPECT_EQ(filter.forms.transfer.numerator, whole.forms.transfer.numerator);
}

TEST(SavedFilter, ATransferFunctionOfUnequalLengthsIsFilledUp) {
  const analysis::Transfer transfer = Saved(lowpass).resize("numerator", 2).filter().forms.transfer;
  ASSERT_EQ(transfer.numerator.size(), transfer.denominator.size());
  EXPECT_EQ(transfer.numerator[2], 0.0);
}

TEST(SavedFilter, WhatCannotBeCheckedIsRefused) {
  EXPECT_EQ(refusal_of(Saved(lowpass)), "");
  EXPECT_EQ(refusal_of(Saved(lowpass).empty()), "'saved.json' has no \"dictionary\" to check");
  EXPECT_THAT(refusal_of(Saved(lowpass).set("topology", "chebyshev-1")),
              HasSubstr("coefficients of a chebyshev-1"));
  const std::string cut = refusal_of(Saved(lowpass).resize("cascade", 9));
  EXPECT_THAT(cut, testing::StartsWith("'saved.json': "));
  EXPECT_THAT(cut, HasSubstr("'cascade' has 9 numbers"));
}

// What `veltane export` writes, whatever the target. That the target's own program
// reads it so is checked by tests/layouts/check_target.py.

#include <cmath>
#include <complex>
#include <fstream>
#include <nlohmann/json.hpp>
#include <numbers>
#include <set>
#include <sstream>
#include <vector>

#include "../run_command.h"
#include "layouts/target.h"
#include "text/numbers.h"

using Json = nlohmann::ordered_json;
using testing::HasSubstr;
using testing::Not;

namespace {

using Rows = std::vector<std::vector<double>>;

Json exported(const std::string &arguments) {
  const Outcome outcome = veltane("export " + arguments + " --for json");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return Json::parse(outcome.out);
}

Rows sections(const std::string &arguments) {
  return exported(arguments + " --as-published")["sections"].get<Rows>();
}

Rows published(const std::string &arguments) {
  const Outcome outcome = veltane("design --format json " + arguments);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const auto flat = Json::parse(outcome.out)["dictionary"]["cascade"].get<std::vector<double>>();
  Rows rows;
  for (std::size_t i = 0; i < flat.size(); i += 5)
    rows.emplace_back(flat.begin() + static_cast<std::ptrdiff_t>(i),
                      flat.begin() + static_cast<std::ptrdiff_t>(i) + 5);
  return rows;
}

double magnitude(const std::vector<double> &s, double w) {
  const std::complex<double> d = std::polar(1.0, -std::numbers::pi * w);
  return std::abs((s[0] + d * (s[1] + d * s[2])) / (1.0 + d * (s[3] + d * s[4])));
}

double level_db(const Rows &rows, double w) {
  double db = 0.0;
  for (const auto &row : rows) db += 20.0 * std::log10(magnitude(row, w));
  return db;
}

// The highest level of the first `count` sections, over a fine grid and the angles of
// the poles.
double peak_db(const Rows &rows, std::size_t count) {
  const Rows first(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(count));
  std::vector<double> places;
  for (int i = 1; i < 4000; ++i) places.push_back(i / 4000.0);
  for (const auto &row : first)
    if (row[4] > 0.0 && std::abs(row[3]) < 2.0 * std::sqrt(row[4]))
      places.push_back(std::acos(-row[3] / (2.0 * std::sqrt(row[4]))) / std::numbers::pi);
  double highest = -INFINITY;
  for (const double w : places) highest = std::max(highest, level_db(first, w));
  return highest;
}

}  // namespace

TEST(ExportCommand, SectionsAreThePublishedOnesToTheLastBit) {
  const std::string settings = "--topology chebyshev-1 --response bandpass --frequency 300 3400";
  EXPECT_EQ(sections(settings), published(settings));
}

TEST(ExportCommand, OutputsThatWereSwitchedOffAreNoObstacle) {
  EXPECT_EQ(sections("--zpk-output off --sos-output off"), published(""));
}

TEST(ExportCommand, EveryFileSaysWhatItHolds) {
  for (const layouts::Target &target : layouts::targets()) {
    const Outcome outcome =
        veltane(std::string("export --topology butterworth --for ") + target.name);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("butterworth lowpass of order 5, cutoff 3000 Hz, at 48000"))
        << target.name;
    EXPECT_THAT(outcome.out, HasSubstr("y[n] = ")) << target.name;
    EXPECT_THAT(outcome.out, HasSubstr("Level: as designed")) << target.name;
    const bool added = outcome.out.find("The feedback terms are added") != std::string::npos;
    const std::string name = target.name;
    EXPECT_EQ(added, name.starts_with("cmsis") || name == "supercollider") << name;
    if (outcome.out.find("Structure: state-variable sections") != std::string::npos) {
      EXPECT_THAT(outcome.out, HasSubstr("hp = h (x[n] - r s1 - s2)")) << target.name;
    } else if (!added) {
      EXPECT_THAT(outcome.out, HasSubstr("subtracted")) << target.name;
    }
  }
}

TEST(ExportCommand, TheLineInTheCommentMakesTheFileAgain) {
  const tests::TemporaryFolder folder;
  const auto file = folder / "again.py";
  const std::string arguments =
      "export --for scipy --topology butterworth --name 'a b' -o " + file.string();
  ASSERT_EQ(veltane(arguments).status, 0);
  const std::string text = read_file(file);
  const std::string mark = "# Made by: veltane ";
  const std::size_t at = text.find(mark);
  ASSERT_NE(at, std::string::npos);
  std::filesystem::remove(file);
  const std::size_t begin = at + mark.size();
  ASSERT_EQ(veltane(text.substr(begin, text.find('\n', at) - begin)).status, 0);
  EXPECT_EQ(read_file(file), text);
}

TEST(ExportCommand, DoublesReadBackAndFloatsHaveNineDigits) {
  const std::string twice = veltane("export --for c --as-published --topology butterworth").out;
  const std::string once =
      veltane("export --for c-float --as-published --topology butterworth").out;
  const Rows rows = published("--topology butterworth");
  for (const auto &row : rows)
    for (const double value : row) {
      EXPECT_THAT(twice, HasSubstr(text::double_text(value)));
      EXPECT_EQ(std::stod(text::double_text(value)), value);
      const auto rounded = static_cast<float>(value);
      EXPECT_THAT(once, HasSubstr(text::float_text(static_cast<double>(rounded)) + "f"));
      EXPECT_EQ(std::stof(text::float_text(static_cast<double>(rounded))), rounded);
    }
}

TEST(ExportCommand, TheFileGivesTheFilterItsName) {
  const tests::TemporaryFolder folder;
  const auto file = folder / "2nd-low__pass!.h";
  ASSERT_EQ(veltane("export --for c -o '" + file.string() + "'").status, 0);
  EXPECT_THAT(read_file(file), HasSubstr("veltane_2nd_low_pass_coefficients"));
  EXPECT_THAT(veltane("export --for c").out, HasSubstr("veltane_filter_coefficients"));
}

TEST(ExportCommand, SpreadGainKeepsEverySignalNearItsFullLevel) {
  const std::string settings = "--topology butterworth --order 60 --frequency 500 ";
  const Rows plain = sections(settings);
  const Rows spread = sections(settings + "--spread-gain");
  ASSERT_EQ(spread.size(), 30U);
  EXPECT_LT(peak_db(plain, 1), -1000.0) << "the gain is all in the first section";
  for (std::size_t count = 1; count <= spread.size(); ++count)
    EXPECT_NEAR(peak_db(spread, count), 0.0, 3.02) << count << " sections";
}

TEST(ExportCommand, SpreadGainRoundsNothingAndKeepsTheWhole) {
  const std::string settings = "--topology chebyshev-1 --order 13 --frequency 200 ";
  const Rows plain = sections(settings);
  const Rows spread = sections(settings + "--spread-gain");
  ASSERT_EQ(plain.size(), spread.size());
  int exponents = 0;
  for (std::size_t i = 0; i < plain.size(); ++i) {
    int exponent = 0;
    EXPECT_EQ(std::frexp(spread[i][0] / plain[i][0], &exponent), 0.5) << "a power of two";
    exponents += exponent - 1;
    for (std::size_t k = 0; k < 3; ++k)
      EXPECT_EQ(spread[i][k], std::ldexp(plain[i][k], exponent - 1));
    for (std::size_t k = 3; k < 5; ++k) EXPECT_EQ(spread[i][k], plain[i][k]);
  }
  EXPECT_EQ(exponents, 0);
}

// The same filter: its sections in another order, powers of two between their gains.
TEST(ExportCommand, ArrangesTheSectionsForTheLeastNoise) {
  const std::string settings =
      "--topology butterworth --response bandpass --order 12 --frequency 20 20000";
  const Rows given = sections(settings);
  const Rows arranged = exported(settings)["sections"].get<Rows>();
  ASSERT_EQ(arranged.size(), given.size());
  EXPECT_NE(arranged, given);
  std::set<std::pair<double, double>> before, after;
  for (const auto &row : given) before.insert({row[3], row[4]});
  for (const auto &row : arranged) after.insert({row[3], row[4]});
  EXPECT_EQ(after, before) << "the poles are not touched";
  for (const double w : {0.0005, 0.01, 0.3, 0.8, 0.95})
    EXPECT_NEAR(level_db(arranged, w), level_db(given, w), 1e-9) << w;
  EXPECT_GT(peak_db(given, 6), 60.0);
  for (std::size_t count = 1; count <= arranged.size(); ++count)
    EXPECT_NEAR(peak_db(arranged, count), 0.0, 4.1) << count << " sections";
}

namespace {

const std::string wide_band =
    " --topology butterworth --response bandpass --order 8 --frequency 20 20000 ";

}  // namespace

TEST(ExportCommand, WritesANoisyFilterIfToldTo) {
  EXPECT_EQ(veltane("export --for cmsis" + wide_band).status, 2);
  const Outcome written = veltane("export --for cmsis --anyway" + wide_band);
  EXPECT_EQ(written.status, 0);
  EXPECT_THAT(written.out, HasSubstr("Rounding: noise 47 dB below the output's peak in floats, "
                                     "direct form I."));
}

TEST(ExportCommand, FloatsThatChooseTheirStructureAreQuiet) {
  for (const char *target : {"c-float", "cpp-float"}) {
    const Outcome outcome = veltane(std::string("export --for ") + target + wide_band);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out,
                HasSubstr("Structure: state-variable sections, since direct form II transposed "
                          "would make 71 dB more noise (--structure takes another)."));
    EXPECT_THAT(outcome.out, HasSubstr("Rounding: noise 118 dB below the output's peak in floats, "
                                       "state-variable sections."));
    EXPECT_THAT(outcome.out, HasSubstr("g, r, h, high, band, low, turn"));
  }
}

TEST(ExportCommand, TheStructureIsTheOneAskedFor) {
  const struct {
    const char *word, *name, *columns;
  } structures[] = {
      {"direct-2-transposed", "direct form II transposed", "b0, b1, b2, a1, a2"},
      {"direct-1", "direct form I", "b0, b1, b2, a1, a2"},
      {"state-variable", "state-variable sections", "g, r, h, high, band, low, turn"}};
  for (const char *target : {"c", "c-float", "cpp", "cpp-float"})
    for (const auto &[word, name, columns] : structures) {
      const std::string text =
          veltane(std::string("export --for ") + target + " --structure " + word).out;
      EXPECT_THAT(text, HasSubstr(std::string("Structure: ") + name + " (--structure).")) << target;
      EXPECT_THAT(text, HasSubstr(std::string("Of each section: ") + columns)) << target;
    }
}

TEST(ExportCommand, NormalisedLevelsAreThoseAskedFor) {
  EXPECT_NEAR(level_db(sections("--normalise --topology butterworth --order 7"), 0.0), 0.0, 1e-9);
  EXPECT_NEAR(level_db(sections("--normalise --response highpass"), 1.0), 0.0, 1e-9);
  const std::string chebyshev = "--normalise --topology chebyshev-1 --passband-ripple 2 ";
  EXPECT_NEAR(level_db(sections(chebyshev + "--order 5"), 0.0), 0.0, 1e-9);
  EXPECT_NEAR(level_db(sections(chebyshev + "--order 6"), 0.0), -2.0, 1e-9)
      << "an even order begins at the bottom of its ripple";
  EXPECT_NEAR(peak_db(sections(chebyshev + "--order 6"), 3), 0.0, 1e-3) << "the ripple's top";
  const double low = std::tan(std::numbers::pi * 300 / 48000);
  const double high = std::tan(std::numbers::pi * 3400 / 48000);
  const double centre = std::atan(std::sqrt(low * high)) * 2 / std::numbers::pi;
  EXPECT_NEAR(
      level_db(sections("--normalise --response bandpass --frequency 300 3400 --order 4"), centre),
      0.0, 1e-9);
  EXPECT_NEAR(
      level_db(sections("--normalise --response bandstop --frequency 300 3400 --order 4"), 0.0),
      0.0, 1e-9);
}

TEST(ExportCommand, TheCommentSaysHowItWasScaled) {
  const std::string off = veltane("export --for csv").out;
  EXPECT_THAT(off, HasSubstr("--normalise is off"));
  EXPECT_THAT(off, HasSubstr("Sections: arranged for the least rounding noise"));
  EXPECT_THAT(off, HasSubstr("Rounding: noise "));
  EXPECT_THAT(veltane("export --for csv --as-published").out, HasSubstr("--spread-gain is off"));
  const std::string on =
      veltane(
          "export --for csv --normalise --as-published --spread-gain --topology chebyshev-1 "
          "--order 4")
          .out;
  EXPECT_THAT(on, HasSubstr("makes it -0.5 dB at DC, the bottom of the ripple"));
  EXPECT_THAT(on, HasSubstr("the gain spread by powers of two"));
}

TEST(ExportCommand, SayWhatRoundingToFloatsChanges) {
  const std::string settings =
      "--topology butterworth --response bandpass --order 2 --frequency 40 60 ";
  const Outcome floats = veltane("export --for cmsis --anyway " + settings);
  EXPECT_EQ(floats.status, 0);
  EXPECT_THAT(floats.err, HasSubstr("rounding to floats changes the level by up to "));
  EXPECT_THAT(floats.out, HasSubstr("// Note: rounding to floats changes the level by up to "));
  const Outcome doubles = veltane("export --for c " + settings);
  EXPECT_EQ(doubles.err, "");
  EXPECT_THAT(doubles.out, Not(HasSubstr("Note:")));
}

TEST(ExportCommand, WarnsWhereTheFirstSectionLeavesLittleOfTheSignal) {
  const std::string settings =
      "export --for cmsis --anyway --topology butterworth --order 24 --frequency 900";
  EXPECT_THAT(veltane(settings + " --as-published").err,
              HasSubstr("the output of section 1 peaks at"));
  EXPECT_THAT(veltane(settings).err, Not(HasSubstr("peaks at")));
}

TEST(ExportCommand, AnIirFilterNodeTakesNineteenPolesAndAChainAny) {
  const std::string settings = " --topology butterworth --frequency 12000 --order ";
  EXPECT_EQ(veltane("export --for webaudio" + settings + "19").status, 0);
  EXPECT_EQ(veltane("export --for webaudio" + settings + "20").status, 2);
  EXPECT_EQ(veltane("export --for webaudio-sections" + settings + "200").status, 0);
}

TEST(ExportHelp, NamesEveryTargetAndItsExamplesWork) {
  const std::string help = veltane("export --help").out;
  for (const layouts::Target &target : layouts::targets())
    EXPECT_THAT(help, HasSubstr(target.name));
  std::istringstream examples(help.substr(help.find("Examples:")));
  const tests::TemporaryFolder folder;
  int count = 0;
  for (std::string line; std::getline(examples, line);) {
    if (!line.starts_with("  veltane ")) continue;
    ++count;
    const Outcome outcome =
        run("cd " + folder.path().string() + " && " VELTANE_COMMAND + line.substr(9));
    EXPECT_EQ(outcome.status, 0) << line << outcome.err;
  }
  EXPECT_EQ(count, 2);
  EXPECT_TRUE(std::filesystem::exists(folder / "band.h"));
}

namespace {

struct RefusedExport {
  const char *arguments;
  const char *says;
};

void PrintTo(const RefusedExport &refused, std::ostream *out) {
  *out << '\'' << refused.arguments << '\'';
}

class ExportRefusals : public testing::TestWithParam<RefusedExport> {};

}  // namespace

TEST_P(ExportRefusals, GetOneSentenceAndStatusTwo) {
  const Outcome outcome = veltane(std::string("export ") + GetParam().arguments);
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr(GetParam().says));
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

INSTANTIATE_TEST_SUITE_P(
    Command, ExportRefusals,
    testing::Values(
        RefusedExport{"", "needs --for TARGET"},
        RefusedExport{"--for", "--for takes one value, and 0 were given"},
        RefusedExport{"--for c --for cpp", "--for takes one value, and 2 were given"},
        RefusedExport{"--for maxima", "--for cannot be 'maxima'; it is one of scipy, octave,"},
        RefusedExport{"--for D", "--for cannot be 'D'"},
        RefusedExport{"--for c --normalise=no", "--normalise takes no value"},
        RefusedExport{"--for c --order five", "'order' takes an integer, not 'five'"},
        RefusedExport{"--for c --response bandpass --frequency 300", "a bandpass has two cutoffs"},
        RefusedExport{"--for c -o /nowhere/filter.h", "no folder '/nowhere'"},
        RefusedExport{"--for c --from /nowhere.json", "'/nowhere.json' cannot be read"},
        RefusedExport{"--for webaudio --order 20",
                      "takes 20 coefficients a list, and this filter with its 20 poles has 21; "
                      "--for webaudio-sections writes a chain"},
        RefusedExport{"--for webaudio --topology butterworth --order 10 --frequency 100",
                      "--for webaudio-sections writes a chain"},
        RefusedExport{"--for webaudio --spread-gain", "--for webaudio-sections has them"},
        RefusedExport{
            "--for cmsis --as-published --topology butterworth --order 60 --frequency 500",
            "leaving out --as-published"},
        RefusedExport{"--for cmsis --topology butterworth --response bandpass --order 8 "
                      "--frequency 20 20000",
                      "makes noise 47 dB below the output's peak in direct form I; take a target "
                      "with doubles, such as c, or c-float, where it runs in state-variable"},
        RefusedExport{"--for c-float --structure direct-2-transposed --topology butterworth "
                      "--response bandpass --order 8 --frequency 20 20000",
                      "makes noise 48 dB below the output's peak in direct form II transposed; "
                      "leave out --structure"},
        RefusedExport{"--for cmsis --structure direct-1",
                      "--for cmsis leaves no choice of --structure"},
        RefusedExport{"--for webaudio --structure direct-1",
                      "--for webaudio leaves no choice of --structure"},
        RefusedExport{"--for c --structure ladder",
                      "--structure is direct-2-transposed, direct-1 or state-variable"},
        RefusedExport{
            "--for c --structure state-variable --topology butterworth --response bandpass "
            "--frequency 20000 20",
            "state-variable sections cannot be made of this filter"},
        RefusedExport{"--for cmsis --topology chebyshev-1 --passband-ripple 20 --order 40 "
                      "--frequency 20",
                      "holds floats, in which this filter is unstable"},
        RefusedExport{"--for c --topology butterworth --order 200 --frequency 20",
                      "the gain of this filter is too small for a double"}));

TEST(ExportCommand, TakesTheCoefficientsOfASavedDesign) {
  const tests::TemporaryFolder folder;
  const std::string file = (folder / "saved.json").string();
  ASSERT_EQ(veltane("design --order 3 --format json -o " + file).status, 0);
  EXPECT_EQ(exported(file)["sections"], exported("--order 3")["sections"]);
  std::string edited = read_file(file);
  const Rows before = published("--order 3");
  const std::string number = text::double_text(before[0][0]);
  edited.replace(edited.find(number, edited.find("cascade")), number.size(), "0.25");
  std::ofstream(file) << edited;
  EXPECT_NE(exported(file)["sections"], exported("--order 3")["sections"]) << "as they are";
  const Outcome both = veltane("export " + file + " --for json --order 4");
  EXPECT_EQ(both.status, 2);
  EXPECT_THAT(both.err, HasSubstr("settings go with --from"));
}

// What `veltane` refuses: one sentence on standard error, nothing on standard
// output, and the status tells.

#include <cstdio>

#include "in_process.h"
#include "run_command.h"

using testing::HasSubstr;
using tests::Refused;

class Refusals : public testing::TestWithParam<Refused> {};

TEST_P(Refusals, AreOneSentence) { tests::expect_refusal(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Command, Refusals,
    testing::Values(
        Refused{"", "needs a subcommand"},
        Refused{"desing", "unknown subcommand 'desing'; did you mean design?"},
        Refused{"filter", "it is one of design, check, plot, export, response, apply, estimate"},
        Refused{"--nope", "'--nope'"},
        Refused{"design --ordr 5", "unknown option '--ordr'; did you mean --order?"},
        Refused{"design --nonsense", "veltane design --help lists the options"},
        Refused{"design extra", "unexpected 'extra'"}, Refused{"design -x", "'-x'"},
        Refused{"design --order", "--order takes one value, and 0 were given"},
        Refused{"design --order=", "--order takes one value"},
        Refused{"design --order 3 --order 4", "--order takes one value, and 2 were given"},
        Refused{"design --frequency 1 2 3", "--frequency takes one or two values"},
        Refused{"design --order five", "'order' takes an integer, not 'five'"},
        Refused{"design --order nan", "'order' takes an integer, not 'nan'"},
        Refused{"design --order 5x", "not '5x'"},
        Refused{"design --order 4Hz", "'order' takes an integer, not '4Hz'"},
        Refused{"design --frequency 3,4kHz", "write 3.4kHz for one number, or 3 4kHz for two"},
        Refused{"design --frequency inf", "'frequency' takes a number, not 'inf'"},
        Refused{"design --frequency 1e999", "'frequency' takes a number"},
        Refused{"design --frequency ''", "--frequency takes one or two values"},
        Refused{"design --topology elliptic", "butterworth, chebyshev-1, chebyshev-2"},
        Refused{"design --response allpass", "lowpass, highpass, bandpass, bandstop"},
        Refused{"design --topology buterworth", "did you mean butterworth?"},
        Refused{"design --s 3", "unknown option"},
        Refused{"design --units khz", "hertz, normalized, radians"},
        Refused{"design --tf-output maybe", "on or off"},
        Refused{"design --response bandpass --frequency 3000", "a bandpass has two cutoffs"},
        Refused{"design --format", "--format takes one value, and 0 were given"},
        Refused{"design --name --module", "--module takes one value, and 0 were given"},
        Refused{"design --module a --module b", "--module takes one value, and 2 were given"},
        Refused{"design --format xml", "--format is text or json"},
        Refused{"design --module /nowhere/veltane.so", "no module file '/nowhere/veltane.so'"},
        Refused{"design --module /etc/passwd", "cannot be loaded"},
        Refused{"design --module " LIBRARY_FOLDER "/libpatchbay.so", "ext_main"}));

TEST(Refusal, IsOnStandardErrorWithStatusTwo) {
  const Outcome outcome = veltane("design --order five");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "veltane: 'order' takes an integer, not 'five'\n");
}

TEST(RefusalsOfTheSystem, AFullDiskIsStatusThree) {
  const Outcome outcome = run(std::string(VELTANE_COMMAND) + " design >/dev/full");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: cannot write to standard output\n");
}

TEST(RefusalsOfTheSystem, AMissingModuleIsNamed) {
  const tests::TemporaryFolder folder;
  const auto copy = folder / "veltane";
  std::filesystem::copy_file(VELTANE_COMMAND, copy);
  const Outcome outcome = run("LD_LIBRARY_PATH=" LIBRARY_FOLDER " " + copy.string() + " design");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("the veltane module is missing"));
}

TEST(Version, IsPrinted) {
  const Outcome outcome = veltane("--version");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, testing::MatchesRegex("veltane [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

// What shells complete.

#include "../run_command.h"
#include "../scratch_folder.h"

using testing::HasSubstr;

namespace {

class Completion : public ScratchFolder {
 protected:
  // What bash offers for the last of these words.
  std::string offered(const std::string &words) const {
    const std::string script = write(
        "complete.bash", "source <(" VELTANE_COMMAND " --completion bash)\nCOMP_WORDS=(" + words +
                             ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_veltane\n"
                             "echo \"${COMPREPLY[*]}\"\n");
    const Outcome outcome = run("bash " + script);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  }
};

}  // namespace

TEST_F(Completion, OffersSubcommandsOptionsAndChoices) {
  EXPECT_EQ(offered("veltane de"), "design\n");
  EXPECT_EQ(offered("veltane --comp"), "--completion\n");
  EXPECT_EQ(offered("veltane --completion ''"), "bash zsh fish\n");
  EXPECT_EQ(offered("veltane design --stop"), "--stopband-attenuation\n");
  EXPECT_EQ(offered("veltane design --topology chebyshev-"), "chebyshev-1 chebyshev-2\n");
  EXPECT_EQ(offered("veltane check --format ''"), "text json\n");
  EXPECT_EQ(offered("veltane export --spread"), "--spread-gain\n");
}

TEST_F(Completion, LeavesFilesToTheShell) {
  EXPECT_EQ(offered("veltane design -o a"), "\n");
  EXPECT_EQ(offered("veltane design --from a"), "\n");
}

// What zsh is offered for the last of these words; its own functions print what they are given.
TEST_F(Completion, OffersTheSameInZsh) {
  const auto given = [&](const std::string &words) {
    const std::string script = write(
        "complete.zsh",
        "compdef() { }\n_describe() { print -l -- ${(P)4} }\n_arguments() { print -rl -- $@ }\n"
        "source <(" VELTANE_COMMAND " --completion zsh)\nwords=(" +
            words + ")\nCURRENT=$#words\n_veltane\n");
    const Outcome outcome = run("zsh -f " + script);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  };
  EXPECT_THAT(given("veltane de"), HasSubstr("design:Designs one filter"));
  const std::string options = given("veltane design --or");
  EXPECT_THAT(options, HasSubstr("(--order)--order[Order\\: 2 to 200 \\[5\\]]:NUMBER: "));
  EXPECT_THAT(options, HasSubstr("(-o --output)-o["));
  EXPECT_THAT(options, HasSubstr(":FILE:_files"));
  EXPECT_THAT(options, HasSubstr(":WORD:(butterworth chebyshev-1 chebyshev-2)"));
  EXPECT_THAT(given("veltane --comp"), HasSubstr(":SHELL:(bash zsh fish)"));
}

TEST(CompletionOfOtherShells, NamesTheSameOptions) {
  const std::string fish = veltane("--completion fish").out;
  EXPECT_THAT(fish, HasSubstr("-n '__fish_seen_subcommand_from design' -l topology -x -a "
                              "'butterworth chebyshev-1 chebyshev-2'"));
  EXPECT_THAT(veltane("--completion powershell").err,
              HasSubstr("--completion is bash, zsh or fish"));
}

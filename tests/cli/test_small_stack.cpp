// The command on a stack of 64 kB, which shells and containers may set.

#include "run_command.h"
#include "scratch_folder.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr char stack[] = "512";  // red zones around what is there make frames some times larger
#else
constexpr char stack[] = "64";
#endif

Outcome on_a_small_stack(const std::string &arguments) {
  return run("( ulimit -s " + std::string(stack) + "; exec " + std::string(VELTANE_COMMAND) + ' ' +
             arguments + " )");
}

class SmallStack : public ScratchFolder {};

}  // namespace

TEST_F(SmallStack, EverySubcommandRuns) {
  for (const char *arguments :
       {"--help", "check --frequency 3000", "export --for csv --frequency 3000",
        "estimate --passband 300 3400 --stopband 200 4000 --ripple 0.5 --attenuation 40"}) {
    const Outcome outcome = on_a_small_stack(arguments);
    EXPECT_EQ(outcome.status, 0) << arguments << '\n' << outcome.err;
    EXPECT_NE(outcome.out, "") << arguments;
  }
}

TEST_F(SmallStack, APictureIsDrawn) {
  const Outcome outcome = on_a_small_stack("plot --frequency 3000 -o " + path("a.svg"));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(read_file(path("a.svg")), testing::HasSubstr("</svg>"));
}

TEST_F(SmallStack, TheHighestOrdersAreDesigned) {
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string order : {"40", "100", "200"}) {
      const Outcome outcome = on_a_small_stack(
          "design --response bandstop --frequency 3000 9000 --tf-output 1 "
          "--topology " +
          topology + " --order " + order);
      EXPECT_EQ(outcome.status, 0) << topology << ' ' << order << '\n' << outcome.err;
    }
}

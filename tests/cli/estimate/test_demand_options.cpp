// Demands as they are typed.

#include "../in_process.h"
#include "args/command_line.h"
#include "args/subcommands.h"
#include "estimate/demand_options.h"

using tests::Refused;

namespace {

cli::TypedDemand demand(const std::string &options) {
  const auto arguments =
      cli::parse(cli::command_line(cli::estimate_subcommand), tests::split(options));
  return cli::demand_in(arguments.value());
}

class BadDemands : public testing::TestWithParam<Refused> {};

}  // namespace

TEST(DemandOptions, GiveEdgesAsTypedAndAsFractions) {
  const cli::TypedDemand typed = demand(
      "--passband 300 3400 --stopband 200 3900 --ripple 0.5 --attenuation 40 --samplerate 8000");
  EXPECT_EQ(typed.rated.response, designer::Response::bandpass);
  EXPECT_EQ(typed.rated.samplerate, 8000.0);
  EXPECT_THAT(typed.passband, testing::ElementsAre(300.0, 3400.0));
  EXPECT_THAT(typed.rated.demand.passband, testing::ElementsAre(0.075, 0.85));
  EXPECT_THAT(typed.rated.demand.stopband, testing::ElementsAre(0.05, 0.975));
}

TEST(DemandOptions, TakeFractionsAsTheyAre) {
  const cli::TypedDemand typed =
      demand("--passband 0.5 --stopband 0.25 --ripple 1 --attenuation 40 --units normalized");
  EXPECT_EQ(typed.rated.response, designer::Response::highpass);
  EXPECT_EQ(typed.rated.units, designer::Units::normalized);
  EXPECT_THAT(typed.rated.demand.passband, testing::ElementsAre(0.5));
  EXPECT_EQ(typed.rated.samplerate, 48000.0);
}

TEST_P(BadDemands, AreRefusedInOneSentence) { tests::expect_refusal(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Estimate, BadDemands,
    testing::Values(
        Refused{"estimate", "needs --passband"},
        Refused{"estimate --passband 1000", "needs --stopband"},
        Refused{"estimate --passband 1 --stopband 2", "needs --ripple"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 1", "needs --attenuation"},
        Refused{"estimate --passband 9 --stopband 9 --ripple 1 --attenuation 60",
                "both have an edge at 9"},
        Refused{"estimate --passband 1 9 --stopband 2 9 --ripple 1 --attenuation 60",
                "an edge at 9"},
        Refused{"estimate --passband 9 --stopband 24000 --ripple 1 --attenuation 60",
                "--stopband 24000: edges lie above 0 and below the Nyquist frequency, 24000 Hz"},
        Refused{"estimate --passband 0 --stopband 9 --ripple 1 --attenuation 60",
                "--passband 0: edges"},
        Refused{"estimate --passband -9 --stopband 9 --ripple 1 --attenuation 60",
                "--passband -9: edges"},
        Refused{"estimate --passband 9 --stopband 10 --ripple 1 --attenuation 6 --units normalized",
                "below the Nyquist frequency, 1"},
        Refused{"estimate --passband 9 5 --stopband 2 20 --ripple 1 --attenuation 60",
                "reverse order"},
        Refused{"estimate --passband 9 9 --stopband 2 20 --ripple 1 --attenuation 60", "are equal"},
        Refused{"estimate --passband 1 5 --stopband 3 9 --ripple 1 --attenuation 60", "cross"},
        Refused{"estimate --passband 1 2 --stopband 3 9 --ripple 1 --attenuation 60", "cross"},
        Refused{"estimate --passband 1 2 --stopband 3 --ripple 1 --attenuation 60",
                "one edge each"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 60 --attenuation 60",
                "must lose more than"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 0 --attenuation 60", "--ripple 0"},
        Refused{"estimate --passband 1 --stopband 2 --ripple -1 --attenuation 60", "--ripple -1"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 1 --attenuation 1e4",
                "at most 1000 dB"},
        Refused{"estimate --passband x --stopband 2 --ripple 1 --attenuation 60",
                "--passband takes a number, not 'x'"},
        Refused{"estimate --passband nan --stopband 2 --ripple 1 --attenuation 60", "not 'nan'"},
        Refused{"estimate --passband 1 2 3 --stopband 2 --ripple 1 --attenuation 60",
                "one or two values"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 1 2 --attenuation 60",
                "--ripple takes one"},
        Refused{"estimate --passband 1 --stopband 2 --ripple '\"' --attenuation 60",
                "takes a number"},
        Refused{
            "estimate --passband 1 --stopband 2 --ripple 1 --attenuation 60 --samplerate 44100.5",
            "whole number of Hz"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 1 --attenuation 60 --samplerate 0",
                "whole number of Hz from 1 to"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 1 --attenuation 60 --units radians",
                "hertz or normalized"},
        Refused{"estimate --passband 1 --stopband 2 --ripple 1 --attenuation 60 --order 4",
                "--order"}));

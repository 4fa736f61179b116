// --sections: filters of other programs, checked, run and looked at.

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "../in_process.h"
#include "../run_command.h"
#include "../scratch_folder.h"

using testing::HasSubstr;
using testing::StartsWith;
using tests::Refused;

namespace {

// Rows of this project's own, whose path leads through another language's notation.
class GivenSections : public ScratchFolder {
 protected:
  std::string exported(const std::string &target) const {
    const std::string file = path("sos." + target);
    const Outcome made = veltane("export --topology butterworth --order 6 --frequency 1000 --for " +
                                 target + " -o " + file);
    EXPECT_EQ(made.status, 0) << made.err;
    return file;
  }
};

}  // namespace

TEST_F(GivenSections, WhatIsExportedAsAMatrixReadsBackAsTheSameFilter) {
  const std::string options = " --format csv --from 10 --to 20000 --points 40";
  const Outcome designed =
      veltane("response --topology butterworth --order 6 --frequency 1000" + options);
  for (const char *target : {"scipy", "octave", "csv", "json"}) {
    const Outcome given = veltane("response --sections " + exported(target) + options);
    EXPECT_EQ(given.err, "");
    std::istringstream one(given.out), other(designed.out);
    std::string a, b;
    while (std::getline(one, a) && std::getline(other, b)) {
      double f = 0.0, level = 0.0, g = 0.0, asked = 0.0;
      if (std::sscanf(a.c_str(), "%lf,%lf", &f, &level) != 2) continue;
      ASSERT_EQ(std::sscanf(b.c_str(), "%lf,%lf", &g, &asked), 2);
      EXPECT_NEAR(level, asked, 1e-9) << target << " at " << f;
    }
    EXPECT_TRUE(one.eof());
  }
}

TEST_F(GivenSections, LeaveArrangedInAnyLayout) {
  write("reversed.txt", "1 2 1 1 -1.9 0.95\n0.001 0.002 0.001 1 -1.5 0.6\n");
  const std::string sections = "export --sections " + path("reversed.txt") + " --fs 8k --for ";
  const Outcome file = veltane(sections + "CSV -o " + path("new.csv"));
  EXPECT_EQ(file.status, 0) << file.err;
  const std::string csv = read_file(path("new.csv"));
  EXPECT_THAT(csv, StartsWith("# 2 sections of '" + path("reversed.txt") + "', at 8000 Hz"));
  EXPECT_THAT(csv, HasSubstr("# Level: as given.\n"));
  EXPECT_THAT(csv, testing::Not(HasSubstr("module")));
  const std::string numbers = " --format csv --linear --points 20";
  EXPECT_EQ(veltane("response --sections " + path("new.csv") + numbers).out,
            veltane("response --sections " + path("reversed.txt") + numbers).out);
  for (const char *target : {"c", "c-float", "cmsis", "cmsis-q31", "sox"})
    EXPECT_THAT(veltane(sections + target).out, HasSubstr("Level: as given.")) << target;
  for (const char *option : {"--normalise", "--as-published", "--as-published --spread-gain"})
    EXPECT_THAT(veltane(sections + "c " + option).err, HasSubstr("are for designs")) << option;
}

TEST_F(GivenSections, AreCheckedForWhatTheyAre) {
  const Outcome found = veltane("check --samplerate 44.1k --sections " + exported("csv"));
  EXPECT_EQ(found.status, 0);
  EXPECT_THAT(found.out, StartsWith("sound: 3 sections of '" + path("sos.csv") +
                                    "', at 44100 Hz\n\norder              6 poles, in 3 sections"));
  EXPECT_THAT(found.out, HasSubstr("-3 dB              at 918.75 Hz\n"));
}

TEST_F(GivenSections, KnowTheirRateFromJson) {
  EXPECT_THAT(veltane("check --sections " + exported("json")).out,
              HasSubstr("sample rate        48000 Hz\n"));
  EXPECT_THAT(veltane("check --sections " + exported("csv")).out,
              HasSubstr("48000 Hz, assumed: --samplerate sets another"));
}

TEST_F(GivenSections, AreRefusedInASentenceWhereTheyCannotBe) {
  write("good.txt", "1 2 1 1 -1.5 0.75\n");
  write("bad.txt", "1 2 1\n");
  const std::string good = " --sections " + path("good.txt");
  const auto refused = [](const std::string &arguments, const char *says) {
    tests::expect_refusal({arguments.c_str(), says});
  };
  for (const char *subcommand : {"check", "response"}) {
    const std::string name = subcommand;
    refused(name + " --sections " + path("bad.txt"), "has 3 numbers");
    refused(name + " --sections " + path("none.txt"), "cannot be read");
    refused(name + good + " --order 4", "so --order would change nothing");
    refused(name + good + " --samplerate -1", "--samplerate takes one number above 0");
    refused(name + good + " --samplerate '\"'", "--samplerate takes one number above 0");
    refused(name + good + " --from " + path("good.txt"), "exclude each other");
  }
  refused("check " + path("good.txt") + good, "exclude each other");
  refused("export " + path("good.txt") + good + " --for c", "exclude each other");
}

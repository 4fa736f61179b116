// Designs that start from saved ones.

#include <nlohmann/json.hpp>

#include "../run_command.h"
#include "../scratch_folder.h"

namespace {

class Saved : public ScratchFolder {
 protected:
  // Runs the command with the options and saves what it designs.
  void save(const std::string &options) const {
    const Outcome outcome =
        veltane("design --format json " + options + " -o " + path("saved.json"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
  }
};

nlohmann::json dictionary(const std::string &text) {
  return nlohmann::json::parse(text)["dictionary"];
}

}  // namespace

TEST_F(Saved, ADesignFromItIsTheSame) {
  const char *options[] = {
      "--order 7 --topology butterworth --frequency 1234.5",
      "--response bandstop --frequency 300 3400.25 --order 6 --tf-output on",
      "--topology chebyshev-1 --passband-ripple 0.3 --samplerate 44100 --response highpass",
      "--units normalized --frequency 0.1 --zpk-output off --sos-output on"};
  for (const char *option : options) {
    save(option);
    const Outcome again = veltane("design --format json --from " + path("saved.json"));
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.err, "");
    EXPECT_EQ(dictionary(again.out), dictionary(read_file(path("saved.json")))) << option;
  }
}

TEST_F(Saved, WhatIsGivenBesideItWins) {
  save("--order 7 --topology butterworth --frequency 1000");
  EXPECT_EQ(dictionary(veltane("design --format json --order 3 --from " + path("saved.json")).out),
            dictionary(veltane("design --format json --topology butterworth --frequency 1000 "
                               "--order 3")
                           .out));
}

TEST_F(Saved, ItComesFromStandardInputAsWell) {
  const Outcome outcome =
      run(VELTANE_COMMAND " design --order 3 --format json | " VELTANE_COMMAND " design --from -");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, veltane("design --order 3").out);
}

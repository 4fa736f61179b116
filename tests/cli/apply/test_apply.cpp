// `veltane apply`: signals through filters, as a user hears and sees them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <numbers>
#include <numeric>

#include "../run_command.h"
#include "../scratch_folder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr int rate = 48000;

struct Sound {
  std::vector<double> samples;  // of one channel
  int samplerate, format;
};

// The level of a sine of this frequency in a signal, in dB of full scale, from a whole number of
// its periods after what the filter needs to settle.
double level_at(double frequency, const std::vector<double> &signal) {
  const std::size_t begin = signal.size() / 2;
  double re = 0.0, im = 0.0;
  for (std::size_t i = begin; i < signal.size(); ++i) {
    const double angle = 2.0 * std::numbers::pi * frequency / rate * static_cast<double>(i);
    re += signal[i] * std::cos(angle);
    im += signal[i] * std::sin(angle);
  }
  return 20.0 * std::log10(2.0 * std::hypot(re, im) / static_cast<double>(signal.size() - begin));
}

class Apply : public ScratchFolder {
 protected:
  // Sines of these frequencies and amplitudes in one channel each; whole periods in a second.
  std::string sines(const std::string &name, int format,
                    const std::vector<std::vector<std::pair<double, double>>> &channels,
                    int seconds = 2) const {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = static_cast<int>(channels.size());
    info.format = format;
    SNDFILE *file = sf_open(path(name).c_str(), SFM_WRITE, &info);
    std::vector<double> frames;
    for (int i = 0; i < seconds * rate; ++i)
      for (const auto &channel : channels) {
        double sum = 0.0;
        for (const auto &[frequency, amplitude] : channel)
          sum += amplitude * std::sin(2.0 * std::numbers::pi * frequency / rate * i);
        frames.push_back(sum);
      }
    sf_writef_double(file, frames.data(), seconds * rate);
    sf_close(file);
    return path(name);
  }

  Sound sound(const std::string &name, int channel = 0) const {
    SF_INFO info{};
    SNDFILE *file = sf_open(path(name).c_str(), SFM_READ, &info);
    if (file == nullptr) {
      ADD_FAILURE() << name << " cannot be read";
      return {};
    }
    std::vector<double> frames(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_double(file, frames.data(), info.frames);
    sf_close(file);
    Sound sound{{}, info.samplerate, info.format};
    for (auto i = static_cast<std::size_t>(channel); i < frames.size();
         i += static_cast<std::size_t>(info.channels))
      sound.samples.push_back(frames[i]);
    return sound;
  }

  std::string in(const std::string &arguments) const {
    return "cd " + path("") + " && " VELTANE_COMMAND " apply " + arguments;
  }
};

constexpr int wav_16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
constexpr int wav_float = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

// A notch around the mains, three octaves of nothing beside it.
constexpr char notch[] =
    "--topology butterworth --response bandstop --order 2 --frequency 45 55.5 ";

}  // namespace

TEST_F(Apply, TakesTheHumAndLeavesTheMusic) {
  sines("hum.wav", wav_float, {{{50, 0.25}, {1000, 0.25}}});
  const Outcome outcome = run(in(std::string(notch) + "hum.wav -o clean.wav"));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const std::vector<double> before = sound("hum.wav").samples, after = sound("clean.wav").samples;
  ASSERT_EQ(after.size(), before.size());
  EXPECT_NEAR(level_at(50, before), -12.04, 0.01);
  EXPECT_LT(level_at(50, after), -12.04 - 60.0);
  EXPECT_NEAR(level_at(1000, after), level_at(1000, before), 0.01);
}

TEST_F(Apply, EachChannelIsFilteredByItself) {
  sines("three.wav", wav_float, {{{100, 0.5}}, {{10000, 0.5}}, {{100, 0.25}}});
  EXPECT_EQ(run(in("--topology butterworth --frequency 1000 three.wav -o low.wav")).status, 0);
  EXPECT_NEAR(level_at(100, sound("low.wav", 0).samples), -6.02, 0.01);
  EXPECT_LT(level_at(10000, sound("low.wav", 1).samples), -100.0);
  EXPECT_NEAR(level_at(100, sound("low.wav", 2).samples), -12.04, 0.01);
}

TEST_F(Apply, ZeroPhaseDoublesTheAttenuationAndDelaysNothing) {
  sines("tone.wav", wav_float, {{{1000, 0.5}}});
  EXPECT_EQ(run(in("--topology butterworth --order 2 --frequency 1000 tone.wav --zero-phase "
                   "-o both.wav"))
                .status,
            0);
  const std::vector<double> before = sound("tone.wav").samples, after = sound("both.wav").samples;
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t i = rate / 2; i < rate; ++i) ASSERT_NEAR(after[i], before[i] / 2.0, 1e-6) << i;
}

TEST_F(Apply, TheFormatFollowsTheNameOrTheInput) {
  sines("in.wav", wav_16, {{{100, 0.5}}});
  const auto format_of = [&](const std::string &name, const std::string &options = "") {
    const Outcome outcome = run(in("in.wav " + options + " -o " + name));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return sound(name).format & ~SF_FORMAT_ENDMASK;
  };
  EXPECT_EQ(format_of("out.wav"), wav_16);
  EXPECT_EQ(format_of("out"), wav_16);
  EXPECT_EQ(format_of("out.FLAC"), SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
  EXPECT_EQ(format_of("out.aiff", "--bits 24"), SF_FORMAT_AIFF | SF_FORMAT_PCM_24);
  EXPECT_EQ(format_of("out.ogg"), SF_FORMAT_OGG | SF_FORMAT_VORBIS);
  EXPECT_EQ(format_of("out.wav", "--bits float"), wav_float);
}

TEST_F(Apply, ClippingIsCountedAndSaid) {
  sines("fits.wav", wav_16, {{{100, 0.7}}, {{100, 0.7}}}, 1);
  const Outcome fits = run(in("--topology butterworth --frequency 10000 fits.wav -o out.wav"));
  EXPECT_EQ(fits.status, 0);
  EXPECT_EQ(fits.err, "");
  sines("over.wav", wav_float, {{{1000, 1.25}}}, 1);
  const Outcome over =
      run(in("--topology butterworth --frequency 10000 over.wav --bits 16 "
             "-o out.wav"));
  EXPECT_EQ(over.status, 0);
  EXPECT_THAT(over.err, testing::MatchesRegex(
                            "veltane: [0-9]+ of 48000 samples were clipped, as the output peaks "
                            "1\\.[0-9]+ dB above full scale; --bits float keeps them\n"));
  EXPECT_EQ(run(in("--topology butterworth --frequency 10000 over.wav -o out.wav")).err, "");
}

TEST_F(Apply, TheTailRingsOut) {
  sines("short.wav", wav_float, {{{1000, 0.5}}}, 1);
  const std::string narrow =
      "--topology butterworth --response bandpass --order 2 --frequency 995 1005 ";
  EXPECT_EQ(run(in(narrow + "short.wav -o without.wav")).status, 0);
  EXPECT_EQ(run(in(narrow + "short.wav --tail -o with.wav")).status, 0);
  const std::vector<double> with = sound("with.wav").samples;
  std::vector<double> begin(with.begin(), with.begin() + rate);
  EXPECT_EQ(begin, sound("without.wav").samples);
  ASSERT_GT(with.size(), rate + 1000U);
  EXPECT_GT(std::abs(*std::max_element(with.begin() + rate, with.end())), 0.1) << "it still sounds";
  const double peak = *std::max_element(with.begin(), with.end());
  for (auto sample = with.end() - 20; sample != with.end(); ++sample)
    EXPECT_LT(std::abs(*sample), 2e-6 * peak);
}

TEST_F(Apply, PipesAreReadAndWritten) {
  sines("in.wav", wav_16, {{{100, 0.5}}, {{200, 0.5}}});
  sines("in.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, {{{100, 0.5}}, {{200, 0.5}}});
  ASSERT_EQ(run(in("in.wav -o out.wav")).status, 0);
  const std::string expected = read_file(path("out.wav"));
  EXPECT_EQ(run("cat " + path("in.wav") + " | " VELTANE_COMMAND " apply - -o " + path("a.wav")).err,
            "");
  EXPECT_EQ(read_file(path("a.wav")), expected);
  EXPECT_EQ(
      run("cat " + path("in.flac") + " | " VELTANE_COMMAND " apply - -o " + path("b.wav")).err, "")
      << "FLAC does not come through a pipe as it is read";
  EXPECT_EQ(read_file(path("b.wav")), expected);
  EXPECT_EQ(run(in("in.wav | cat")).out, expected);
  EXPECT_EQ(run(in("- <in.wav")).out, expected);
  EXPECT_EQ(run(in("in.wav -o out.au")).status, 0);
  EXPECT_EQ(run(in("out.au -o - | " VELTANE_COMMAND " apply - -o c.wav")).status, 0);
  EXPECT_EQ(sound("c.wav").samples.size(), 2U * rate);
}

TEST_F(Apply, AReaderThatGoesAwayIsNoFailure) {
  write("numbers.csv", "1\n2\n3\n");
  EXPECT_EQ(run("yes 1 | head -200000 | " VELTANE_COMMAND
                " apply --samplerate 100 --frequency 10 - | head -1")
                .err,
            "");
  sines("in.au", SF_FORMAT_AU | SF_FORMAT_PCM_16, {{{100, 0.5}}}, 5);
  EXPECT_EQ(run(in("in.au | head -c 100 >/dev/null")).err, "");
}

TEST_F(Apply, ColumnsKeepWhatIsAroundThem) {
  write("in.csv", "# heart\ntime,volts,note\n0.0,1.0,a\n0.1,1.0,b\n");
  const Outcome outcome =
      run(in("in.csv --column volts --units normalized --frequency 0.5 "
             "--topology butterworth --order 2"));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  // b0, and b0 + b1 - a1 b0, of 0.29289321881345248 (1 + z^-1)^2 / (1 + 0.17157287525380993 z^-2).
  EXPECT_THAT(outcome.out,
              testing::MatchesRegex("# heart\ntime,volts,note\n0.0,0.29289321881345[0-9]*,a\n"
                                    "0.1,0.8786796564403[0-9]*,b\n"));
}

TEST_F(Apply, ColumnsBecomeSoundAndSoundColumns) {
  write("in.txt", "0.5\n0.25\n-0.5\n");
  const std::string all = "--topology butterworth --order 2 --units normalized --frequency 0.9999 ";
  EXPECT_EQ(run(in(all + "--samplerate 8000 in.txt -o out.wav")).status, 0);
  EXPECT_EQ(sound("out.wav").samplerate, 8000);
  EXPECT_EQ(sound("out.wav").format & SF_FORMAT_SUBMASK, SF_FORMAT_FLOAT);
  EXPECT_EQ(run(in(all + "out.wav -o back.csv")).status, 0);
  const std::string back = read_file(path("back.csv"));
  EXPECT_EQ(std::count(back.begin(), back.end(), '\n'), 3) << back;
}

TEST_F(Apply, ASilentFileIsSaid) {
  sines("silent.wav", wav_16, {{{100, 0.0}}}, 1);
  const Outcome outcome = run(in("silent.wav -o out.wav"));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "veltane: 'silent.wav' is silent: all of its samples are 0\n");
  EXPECT_THAT(sound("out.wav").samples, testing::Each(0.0));
}

TEST_F(Apply, TheOutputMayBeTheInput) {
  sines("it.wav", wav_16, {{{100, 0.5}}}, 1);
  ASSERT_EQ(run(in("it.wav -o other.wav")).status, 0);
  ASSERT_EQ(run(in("it.wav -o it.wav")).status, 0);
  EXPECT_EQ(read_file(path("it.wav")), read_file(path("other.wav")));
}

TEST_F(Apply, AnInterruptedOneLeavesNothing) {
  const Outcome outcome =
      run("cd " + path("") +
          " && mkfifo pipe && echo old >out.csv && { " VELTANE_COMMAND
          " apply --samplerate 100 --frequency 10 - -o out.csv <pipe & } && exec 3>pipe && "
          "for i in $(seq 5000); do echo $i; done >&3 && sleep 0.5 && kill -TERM $! && wait $!; "
          "echo $?");
  EXPECT_EQ(read_file(path("out.csv")), "old\n");
  EXPECT_THAT(names(), ElementsAre("out.csv", "pipe"));
}

TEST_F(Apply, AFailureLeavesTheOldFile) {
  const std::string whole = read_file(sines("in.wav", wav_16, {{{100, 0.5}}}));
  write("cut.wav", whole.substr(0, whole.size() / 2));
  write("out.wav", "old");
  for (const char *arguments :
       {"cut.wav -o out.wav", "- -o out.wav <cut.wav", "in.wav -o out.wav --zero-phase --tail"}) {
    const Outcome outcome = run(in(arguments));
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(read_file(path("out.wav")), "old") << arguments;
  }
  const Outcome piped =
      run("cat " + path("cut.wav") + " | " VELTANE_COMMAND " apply - -o " + path("out.wav"));
  EXPECT_EQ(piped.err, "veltane: standard input ends early: it has 47989 of 96000 samples\n");
  EXPECT_EQ(read_file(path("out.wav")), "old");
  EXPECT_THAT(names(), ElementsAre("cut.wav", "in.wav", "out.wav"));
}

TEST_F(Apply, AFullDiskIsStatusThree) {
  sines("in.wav", wav_16, {{{100, 0.5}}}, 1);
  const Outcome outcome = run("ulimit -f 8; " + in("in.wav -o out.wav"));
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("'out.wav' cannot be written: File too large"));
  EXPECT_THAT(names(), ElementsAre("in.wav"));
}

TEST_F(Apply, ATerminalIsToldHowFarItIs) {
  const auto script = write("slow", "{ seq 200; sleep 0.4; seq 200; } | " VELTANE_COMMAND
                                    " apply --samplerate 100 --frequency 10 - -o " +
                                        path("out"));
  const Outcome outcome = run("script -qec 'sh " + script + "' /dev/null");
  EXPECT_THAT(outcome.out,
              testing::MatchesRegex("\r[24] seconds of signal, [0-9]+ a second +(\r.*)?\r?\n"));
  EXPECT_EQ(run("sh " + script).err, "") << "no progress is shown without a terminal";
}

TEST_F(Apply, ASavedDesignIsDesignedForTheFile) {
  sines("in.wav", wav_16, {{{100, 0.5}}}, 1);
  ASSERT_EQ(
      veltane("design --topology butterworth --order 3 --format json -o " + path("a.json")).status,
      0);
  ASSERT_EQ(run(in("--from a.json in.wav -o a.wav")).status, 0);
  ASSERT_EQ(run(in("--topology butterworth --order 3 in.wav -o b.wav")).status, 0);
  EXPECT_EQ(read_file(path("a.wav")), read_file(path("b.wav")));
}

TEST_F(Apply, ASavedDesignBeforeTheSignalIsTakenAsItIs) {
  sines("in.wav", wav_16, {{{100, 0.5}, {5000, 0.4}}}, 1);
  ASSERT_EQ(
      veltane("design --topology butterworth --order 3 --format json -o " + path("a.json")).status,
      0);
  ASSERT_EQ(run(in("--topology butterworth --order 3 in.wav -o designed.wav")).status, 0);
  ASSERT_EQ(run(in("a.json in.wav -o opened.wav")).status, 0);
  EXPECT_EQ(read_file(path("opened.wav")), read_file(path("designed.wav")));

  ASSERT_EQ(veltane("export " + path("a.json") + " --for scipy -o " + path("a.py")).status, 0);
  ASSERT_EQ(run(in("--sections a.py in.wav -o given.wav")).status, 0);
  EXPECT_EQ(read_file(path("given.wav")), read_file(path("designed.wav")));
}

TEST_F(Apply, SectionsRunOverColumnsAtAnyRate) {
  write("mean.txt", "b0,b1,b2,a1,a2\n0.5,0.5,0,0,0\n");
  write("in.csv", "1\n3\n5\n");
  EXPECT_EQ(run(in("--sections mean.txt in.csv")).out, "0.5\n2\n4\n");
}

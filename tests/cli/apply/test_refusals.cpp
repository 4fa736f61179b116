// What `veltane apply` refuses.

#include <gtest/gtest.h>

#include <fstream>

#include "../in_process.h"
#include "../scratch_folder.h"

using tests::Refused;

namespace {

// In a folder with some files, in which the command runs.
class RefusedFiles : public ScratchFolder, public testing::WithParamInterface<Refused> {
 protected:
  void SetUp() override {
    before_ = std::filesystem::current_path();
    std::filesystem::current_path(path(""));
    write("two.csv", "time,volts\n0,1\n1,2\n2,3\n");
    write("one.txt", "1\n2\n3\n");
    write("mean.txt", "0.5 0.5 0 0 0\n");
    write("wild.txt", "1 0 0 -2 1.5\n");
    write("saved.json", R"({"settings": {"topology": "butterworth", "order": 2},
                           "dictionary": {"topology": "butterworth", "response": "lowpass",
                                          "cascade": [1, 2, 1, -1.5, 0.75]}})");
    write("comma.txt", "a;b\n1,5;2\n");
    write("words.txt", "this is\nno signal\n");
    write("noise.bin", std::string("\1\2\3\0\4\5", 6) + std::string(5000, '\x90'));
    write("empty.wav", "");
    write("header.wav", "RIFF\x24\x10");
    std::filesystem::create_directory("folder");
    write("rate.wav", std::string("RIFF\x2c\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0\x80\x3e\0\0"
                                  "\2\0\x10\0data\x8\0\0\0\0\1\0\2\0\3\0\4",
                                  52));
  }
  void TearDown() override { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_;
};

}  // namespace

TEST_P(RefusedFiles, AreOneSentence) {
  const auto before = names();
  tests::expect_refusal(GetParam());
  EXPECT_EQ(names(), before) << "nothing is left behind";
}

INSTANTIATE_TEST_SUITE_P(
    Apply, RefusedFiles,
    testing::Values(
        Refused{"apply", "needs the name of a file to filter, or - for standard input"},
        Refused{"apply saved.json one.txt two.csv", "unexpected 'two.csv' beside 'one.txt'"},
        Refused{"apply one.txt two.csv --column 1", "'one.txt' is not"},
        Refused{"apply saved.json rate.wav -o x.wav",
                "'rate.wav' has a sample rate of 8000 Hz, and 'saved.json' holds coefficients for "
                "48000 Hz; --from saved.json designs its filter anew"},
        Refused{"apply saved.json rate.wav --order 4 -o x.wav", "are taken as they are"},
        Refused{"apply saved.json rate.wav --sections mean.txt -o x.wav", "exclude each other"},
        Refused{"apply rate.wav --sections mean.txt --samplerate 44.1k -o x.wav",
                "has a sample rate of 8000 Hz, and the sections are for 44100 Hz"},
        Refused{"apply rate.wav --sections wild.txt -o x.wav", "not stable"},
        Refused{"apply - --sections -", "both read standard input"},
        Refused{"apply - --from -", "both read standard input"},
        Refused{"apply none.wav -o x.wav", "'none.wav' cannot be read: No such file"},
        Refused{"apply folder -o x.wav", "'folder' cannot be read: Is a directory"},
        Refused{"apply empty.wav -o x.wav", "'empty.wav' is empty"},
        Refused{"apply header.wav -o x.wav", "'header.wav' is"},
        Refused{"apply noise.bin -o x.wav",
                "'noise.bin' is neither a sound file of a known format nor columns of numbers"},
        Refused{"apply words.txt --samplerate 100 --frequency 9 -o x", "'words.txt' has 2 columns"},
        Refused{"apply rate.wav --samplerate 48000 -o x.wav",
                "'rate.wav' has a sample rate of 8000 Hz, and the settings say 48000 Hz"},
        Refused{"apply rate.wav --column 1 -o x.wav", "--column is for columns of numbers"},
        Refused{"apply rate.wav -o x.mp3", "files that end in .mp3 are not written"},
        Refused{"apply rate.wav -o x.flac --bits double", "FLAC does not hold --bits double"},
        Refused{"apply rate.wav -o x.wav --bits 12", "--bits is 8, 16, 24, 32, float or double"},
        Refused{"apply rate.wav -o nowhere/x.wav", "there is no folder 'nowhere'"},
        Refused{"apply rate.wav -o x.wav --sos-output off", "publish no sections"},
        Refused{"apply rate.wav -o x.wav --zpk-output off", "publish no sections"},
        Refused{"apply rate.wav -o x.wav --response bandpass --frequency 2000 1000", "not stable"},
        Refused{"apply rate.wav -o x.wav --zero-phase --frequency 900",
                "a signal of 4 samples is too short"},
        Refused{"apply rate.wav -o x.wav --zero-phase --tail", "exclude each other"},
        Refused{"apply one.txt", "which have no sample rate: give --samplerate"},
        Refused{"apply one.txt --samplerate 100 --frequency 9 --bits 16",
                "--bits is for sound files"},
        Refused{"apply one.txt --samplerate 31.25 --frequency 9", "31.25"},
        Refused{"apply one.txt --samplerate x --frequency 9", "'samplerate' takes"},
        Refused{"apply two.csv --samplerate 100 --frequency 9",
                "has 2 columns (time, volts); --column says which"},
        Refused{"apply two.csv --samplerate 100 --frequency 9 --column x", "no column 'x'"},
        Refused{"apply two.csv --samplerate 100 --frequency 9 --column volts --tail",
                "for which its other columns have no values"},
        Refused{"apply comma.txt --samplerate 100 --frequency 9 --column a", "a decimal comma"}));

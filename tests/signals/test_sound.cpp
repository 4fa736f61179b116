// Sound files, written and read again.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <limits>

#include "files.h"
#include "signal.h"
#include "signals/sound_reader.h"
#include "signals/sound_writer.h"

using signals::SoundFormat;
using signals::SoundReader;
using signals::SoundWriter;
using testing::HasSubstr;

namespace {

constexpr SoundFormat wav_16{SF_FORMAT_WAV, SF_FORMAT_PCM_16};
constexpr SoundFormat wav_float{SF_FORMAT_WAV, SF_FORMAT_FLOAT};

std::uint64_t write(const tests::TemporaryFile &file, SoundFormat format, std::size_t channels,
                    const std::vector<double> &frames,
                    const std::vector<signals::SoundText> &texts = {}) {
  SoundWriter writer(file.descriptor(), "'it'", format, channels, 48000, texts);
  EXPECT_TRUE(writer.write(frames));
  writer.finish();
  file.rewind();
  return writer.clipped();
}

std::vector<double> read(const tests::TemporaryFile &file) {
  file.rewind();
  SoundReader reader(file.descriptor(), "'it'");
  std::vector<double> all, block(100 * reader.channels());
  for (std::size_t count = reader.read(block); count > 0; count = reader.read(block))
    all.insert(all.end(), block.begin(),
               block.begin() + static_cast<std::ptrdiff_t>(count * reader.channels()));
  return all;
}

std::vector<double> written_and_read(SoundFormat format, const std::vector<double> &samples) {
  const tests::TemporaryFile file;
  write(file, format, 1, samples);
  return read(file);
}

std::string refused(const std::string &bytes) {
  const tests::TemporaryFile file(bytes);
  return tests::refusal([&] { read(file); });
}

std::string file_of(SoundFormat format, std::size_t samples) {
  const tests::TemporaryFile file;
  write(file, format, 1, tests::noise(samples));
  return file.bytes();
}

}  // namespace

// Every value of an integer, and the ends of those with more bits.
TEST(Sound, IntegersComeOutAsTheyWentIn) {
  std::vector<double> all;
  for (int i = -32768; i < 32768; ++i) all.push_back(i / 32768.0);
  for (const int container : {SF_FORMAT_WAV, SF_FORMAT_FLAC, SF_FORMAT_AIFF, SF_FORMAT_AU})
    EXPECT_EQ(written_and_read({container, SF_FORMAT_PCM_16}, all), all) << container;
  std::vector<double> few;
  for (int i = -128; i < 128; ++i) few.push_back(i / 128.0);
  EXPECT_EQ(written_and_read({SF_FORMAT_WAV, SF_FORMAT_PCM_U8}, few), few);
  for (const int bits : {24, 32}) {
    const double step = std::ldexp(1.0, 1 - bits);
    const std::vector<double> ends{-1.0, step - 1.0, -step, 0.0, step, 1.0 - step, 0.5 + step};
    const SoundFormat format{SF_FORMAT_WAV, bits == 24 ? SF_FORMAT_PCM_24 : SF_FORMAT_PCM_32};
    EXPECT_EQ(written_and_read(format, ends), ends) << bits;
  }
}

TEST(Sound, SamplesBetweenGoToTheNearest) {
  const double step = 1.0 / 32768.0;
  EXPECT_EQ(written_and_read(wav_16, {0.4 * step, 0.6 * step, -0.6 * step, 1.5 * step, 2.5 * step}),
            (std::vector<double>{0.0, step, -step, 2.0 * step, 2.0 * step}));
}

TEST(Sound, DoublesComeOutAsTheyWentIn) {
  const std::vector<double> samples{0.1, -3.0, 1e-300, 7.5};
  EXPECT_EQ(written_and_read({SF_FORMAT_WAV, SF_FORMAT_DOUBLE}, samples), samples);
}

TEST(Sound, ClippedSamplesAreCounted) {
  const double step = 1.0 / 32768.0;
  const std::vector<double> samples{0.0, 1.0, 1.0 + 0.4 * step, 1.1, -1.0, -1.0 - 0.6 * step, -2.0};
  const tests::TemporaryFile integers, floats, lossy;
  EXPECT_EQ(write(integers, wav_16, 1, samples), 3U) << "full scale, rounded, is not clipped";
  EXPECT_EQ(read(integers),
            (std::vector<double>{0.0, 1.0 - step, 1.0 - step, 1.0 - step, -1.0, -1.0, -1.0}));
  EXPECT_EQ(write(floats, wav_float, 1, samples), 0U);
  EXPECT_EQ(read(floats)[3], static_cast<double>(1.1F));
  EXPECT_EQ(write(lossy, {SF_FORMAT_OGG, SF_FORMAT_VORBIS}, 1, samples), 4U);
}

TEST(Sound, WhatIsTooLargeForADoubleIsNotWritten) {
  const tests::TemporaryFile file;
  SoundWriter writer(file.descriptor(), "'it'", wav_float, 1, 48000, {});
  EXPECT_THROW(writer.write(std::vector<double>{std::numeric_limits<double>::infinity()}),
               std::runtime_error);
}

TEST(Sound, ChannelsRateAndTextsAreKept) {
  const tests::TemporaryFile file;
  const std::vector<double> frames{0.25, -0.25, 0.5, 0.5, -0.5, 0.0};
  write(file, {SF_FORMAT_FLAC, SF_FORMAT_PCM_24}, 3, frames,
        {{SF_STR_TITLE, "Hum"}, {SF_STR_ARTIST, "Mains"}});
  SoundReader reader(file.descriptor(), "'it'");
  EXPECT_EQ(reader.channels(), 3U);
  EXPECT_EQ(reader.samplerate(), 48000.0);
  EXPECT_EQ(reader.frames(), 2U);
  ASSERT_EQ(reader.texts().size(), 2U);
  EXPECT_EQ(reader.texts()[0].text, "Hum");
  EXPECT_EQ(reader.texts()[1].text, "Mains");
  EXPECT_EQ(read(file), frames);
}

TEST(Sound, TheSameSignalGivesTheSameFile) {
  EXPECT_EQ(file_of(wav_float, 1000), file_of(wav_float, 1000));
}

TEST(Sound, CutOffFilesAreRefused) {
  for (const int container : {SF_FORMAT_WAV, SF_FORMAT_AIFF, SF_FORMAT_AU}) {
    const std::string whole = file_of({container, SF_FORMAT_PCM_16}, 20000);
    EXPECT_EQ(refused(whole), "") << container;
    EXPECT_THAT(refused(whole.substr(0, whole.size() / 2)), HasSubstr("'it' ends early"))
        << container;
  }
  for (const SoundFormat format : {SoundFormat{SF_FORMAT_FLAC, SF_FORMAT_PCM_16},
                                   SoundFormat{SF_FORMAT_OGG, SF_FORMAT_VORBIS}}) {
    const std::string whole = file_of(format, 50000);
    EXPECT_EQ(refused(whole), "");
    EXPECT_NE(refused(whole.substr(0, whole.size() / 2)), "") << format.container;
    EXPECT_NE(refused(whole.substr(0, whole.size() - 100)), "") << format.container;
  }
}

// What programs write that do not know the length yet.
TEST(Sound, AnUnknownLengthIsNoDamage) {
  std::string whole = file_of(wav_16, 1000);
  const std::size_t data = whole.find("data");
  whole.replace(4, 4, "\xFF\xFF\xFF\xFF");
  whole.replace(data + 4, 4, "\xFF\xFF\xFF\xFF");
  const tests::TemporaryFile file(whole);
  EXPECT_EQ(read(file).size(), 1000U);
}

TEST(Sound, OthersAreRefused) {
  EXPECT_THAT(refused("hello"), HasSubstr("'it' is neither a sound file of a known format"));
  EXPECT_THAT(refused(file_of(wav_16, 1000).substr(0, 30)), HasSubstr("'it' is damaged"));
  const tests::TemporaryFile empty;
  SoundWriter(empty.descriptor(), "'it'", wav_16, 1, 48000, {}).finish();
  EXPECT_EQ(refused(empty.bytes()), "'it' is empty: it has no samples");
}

TEST(Sound, SamplesThatAreNotFiniteAreRefused) {
  std::string bytes = file_of(wav_float, 48000 + 100);
  bytes.replace(bytes.size() - 400, 4, std::string("\0\0\xC0\x7F", 4));
  EXPECT_EQ(refused(bytes), "'it' has a sample that is not finite, in channel 1 after 1 s");
}

TEST(SoundFormat, FollowsTheExtensionAndTheInput) {
  const auto of = [](std::string_view extension, SoundFormat input,
                     std::optional<std::string_view> bits = std::nullopt) {
    const SoundFormat format = signals::output_format(extension, input, bits, 2, 48000);
    return signals::container_name(format) + ", " + signals::encoding_name(format);
  };
  const SoundFormat flac_24{SF_FORMAT_FLAC, SF_FORMAT_PCM_24};
  const SoundFormat vorbis{SF_FORMAT_OGG, SF_FORMAT_VORBIS};
  EXPECT_EQ(of("", wav_16), "WAV, 16-bit integers");
  EXPECT_EQ(of("WAV", flac_24), "WAV, 24-bit integers");
  EXPECT_EQ(of("flac", wav_float), "FLAC, 24-bit integers");
  EXPECT_EQ(of("flac", {SF_FORMAT_WAV, SF_FORMAT_PCM_U8}), "FLAC, 8-bit integers");
  EXPECT_EQ(of("ogg", wav_16), "Ogg, Vorbis");
  EXPECT_EQ(of("wav", vorbis), "WAV, 16-bit integers");
  EXPECT_EQ(of("aiff", vorbis, "float"), "AIFF, 32-bit floats");
  EXPECT_EQ(of("", wav_16, "24"), "WAV, 24-bit integers");
  EXPECT_EQ(of("wav", {SF_FORMAT_WAVEX, SF_FORMAT_PCM_16}), "WAV, 16-bit integers");
  EXPECT_EQ(of("unknown", wav_16), "WAV, 16-bit integers");
  const SoundFormat of_columns = signals::output_format("wav", std::nullopt, std::nullopt, 2, 100);
  EXPECT_EQ(signals::encoding_name(of_columns), "32-bit floats");
}

TEST(SoundFormat, WhatAContainerDoesNotHoldIsRefused) {
  const auto refused_format = [](std::string_view extension, std::optional<std::string_view> bits,
                                 std::size_t channels) {
    return tests::refusal(
        [&] { signals::output_format(extension, wav_16, bits, channels, 48000); });
  };
  EXPECT_EQ(refused_format("flac", "float", 1),
            "FLAC does not hold --bits float; it holds 8, 16, 24");
  EXPECT_EQ(refused_format("ogg", "16", 1), "Ogg takes no --bits");
  EXPECT_EQ(refused_format("flac", std::nullopt, 9), "FLAC does not hold 9 channels at 48000 Hz");
}

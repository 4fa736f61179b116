// `veltane plot`: whole pictures, and what becomes of a wrong request.

#include <array>
#include <cstdint>
#include <cstdio>
#include <regex>

#include "../run_command.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

namespace fs = std::filesystem;

class PlotCommand : public testing::Test {
 protected:
  std::string path(const std::string &name) const { return (folder_ / name).string(); }

  // @param before  what precedes the command, such as variables
  Outcome plot(const std::string &arguments, const std::string &before = "") const {
    return run("cd " + folder_.path().string() + " && " + before + " " VELTANE_COMMAND " plot " +
               arguments);
  }

  std::string drawn(const std::string &file, const std::string &arguments) const {
    const Outcome outcome = plot(arguments + " -o " + file);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
    return read_file(path(file));
  }

  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder_.path()))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }

  void save(const std::string &file, const std::string &arguments) const {
    const Outcome outcome = veltane("design --format json " + arguments + " >" + path(file));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }

  void write(const std::string &file, const std::string &text) const {
    std::ofstream(path(file)) << text;
  }

  // Puts a program called gnuplot into a folder of its own.
  std::string with_gnuplot(const std::string &lines) const {
    fs::create_directory(path("bin"));
    write("bin/gnuplot", "#!/bin/sh\n" + lines + "\n");
    fs::permissions(path("bin/gnuplot"), fs::perms::owner_all);
    return "PATH=" + path("bin") + ":$PATH";
  }

 private:
  tests::TemporaryFolder folder_;
};

std::uint32_t number_at(const std::string &bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = at; i < at + 4; ++i)
    number = number << 8U | static_cast<unsigned char>(bytes.at(i));
  return number;
}

// The kinds of the chunks, from the first to the last byte of the file.
std::vector<std::string> chunks(const std::string &png) {
  std::vector<std::string> kinds;
  for (std::size_t at = 8; at < png.size(); at += 12 + number_at(png, at))
    kinds.push_back(png.substr(at + 4, 4));
  return kinds;
}

bool xml_is_well_formed(const std::string &file) {
  return run("/usr/bin/python3 -c 'import sys, xml.dom.minidom; "
             "xml.dom.minidom.parse(sys.argv[1])' " +
             file)
             .status == 0;
}

}  // namespace

TEST_F(PlotCommand, AnSvgIsWholeAndSaysWhatItIs) {
  const std::string svg = drawn("a.svg", "--topology butterworth --order 4 --frequency 1000");
  EXPECT_TRUE(xml_is_well_formed(path("a.svg")));
  EXPECT_THAT(svg, HasSubstr("width=\"1000\""));
  EXPECT_THAT(svg,
              HasSubstr("<title>butterworth lowpass of order 4, cutoff 1000 Hz, at 48000 Hz<"));
  EXPECT_THAT(svg, HasSubstr("<desc>veltane plot --topology butterworth --order 4 --frequency 1000 "
                             "-o a.svg</desc>"));
  for (const char *part : {"Passband enlarged", "Phase", "Group delay", "Zeros and poles",
                           "cutoff 1000 Hz", "\u22123 dB at 1000 Hz", "frequency in Hz", ">20k<"})
    EXPECT_THAT(svg, HasSubstr(part));
  EXPECT_THAT(files(), ElementsAre("a.svg"));
}

TEST_F(PlotCommand, APngIsWholeAndOfTheWidthAskedFor) {
  for (const int width : {1000, 500}) {
    const std::string png = drawn("a.png", "--width " + std::to_string(width));
    ASSERT_GT(png.size(), 10000U);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(number_at(png, 16), static_cast<std::uint32_t>(width));
    EXPECT_NEAR(number_at(png, 20), 1.478 * width, 1.0);
    const std::vector<std::string> kinds = chunks(png);
    EXPECT_EQ(kinds.front(), "IHDR");
    EXPECT_EQ(kinds.back(), "IEND");
    EXPECT_THAT(png, HasSubstr("veltane plot --width"));
  }
}

// zlib's own code is the judge.
TEST_F(PlotCommand, ThePngsChunksCarryRightChecksums) {
  drawn("a.png", "");
  const Outcome outcome =
      run("/usr/bin/python3 -c 'import sys, zlib, struct\n"
          "data = open(sys.argv[1], \"rb\").read(); at = 8\n"
          "while at < len(data):\n"
          "  size, = struct.unpack(\">I\", data[at:at + 4])\n"
          "  code, = struct.unpack(\">I\", data[at + 8 + size:at + 12 + size])\n"
          "  assert code == zlib.crc32(data[at + 4:at + 8 + size]), at\n"
          "  at += 12 + size\n' " +
          path("a.png"));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(PlotCommand, AnSvgKeepsItsLayoutAtAnyWidth) {
  const std::string wide = drawn("a.svg", "--width 2000");
  EXPECT_THAT(wide, HasSubstr("width=\"2000\""));
  EXPECT_THAT(wide, HasSubstr("viewBox=\"0 0 1000 1478\""));
}

// As wide as asked for at 96 pixels to the inch, and the same whenever it is made.
TEST_F(PlotCommand, APdfIsWholeAndReproducible) {
  const std::string pdf = drawn("a.pdf", "--width 500 --title abc");
  EXPECT_TRUE(pdf.starts_with("%PDF-"));
  EXPECT_TRUE(pdf.ends_with("\n%%EOF\n"));
  EXPECT_THAT(pdf, HasSubstr("/MediaBox [ 0 0 375 "));
  EXPECT_THAT(pdf, HasSubstr("/Title <feff006100620063>"));
  EXPECT_THAT(pdf, HasSubstr("/Subject <feff00760065006c00740061006e0065"));
  EXPECT_THAT(pdf, Not(HasSubstr("CreationDate")));
  // Times have seconds.
  run("sleep 1.1");
  EXPECT_EQ(drawn("a.pdf", "--width 500 --title abc"), pdf);
}

TEST_F(PlotCommand, TheEndingMayBeInCapitals) {
  EXPECT_EQ(drawn("A.PNG", "").substr(1, 3), "PNG");
  EXPECT_TRUE(drawn("A.SVG", "").starts_with("<?xml"));
}

TEST_F(PlotCommand, DrawsEveryFamilyAndResponse) {
  for (const std::string topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const std::string shape :
         {"lowpass --frequency 20", "highpass --frequency 20000", "bandpass --frequency 20 21",
          "bandstop --frequency 20 20000"}) {
      const std::string svg =
          drawn("a.svg", "--order 3 --topology " + topology + " --response " + shape);
      EXPECT_TRUE(svg.ends_with("</svg>\n\n")) << topology << ' ' << shape;
    }
}

// From the bottom to the top of the panels of level, passband, phase and delay, at the same
// places in the last three. The ends of these lines lie a rounding outside some panels.
TEST_F(PlotCommand, CutoffsAreLinesAcrossEveryPanel) {
  const std::string svg =
      drawn("a.svg", "--topology butterworth --response bandpass --frequency 20 21 --order 5");
  const std::regex line(
      "stroke='rgb\\( 96,  96,  96\\)'[^/]*d='M([0-9.]+),([0-9.]+) L([0-9.]+),([0-9.]+) ");
  std::vector<std::string> places;
  for (std::sregex_iterator found(svg.begin(), svg.end(), line), end; found != end; ++found) {
    if ((*found)[2] == (*found)[4]) continue;  // the sample in the key
    EXPECT_EQ((*found)[1], (*found)[3]);
    EXPECT_GT(std::stod((*found)[2]) - std::stod((*found)[4]), 200.0);
    places.push_back((*found)[1]);
  }
  ASSERT_EQ(places.size(), 8U);
  for (const std::size_t panel : {4U, 6U}) {
    EXPECT_EQ(places[panel], places[2]);
    EXPECT_EQ(places[panel + 1], places[3]);
  }
}

TEST_F(PlotCommand, MultipleZerosAreCounted) {
  const std::string svg = drawn("a.svg", "--topology butterworth --order 137");
  EXPECT_THAT(svg, HasSubstr(">137<"));
}

TEST_F(PlotCommand, ComparesSavedDesigns) {
  save("one.json", "--topology butterworth --order 3");
  save("two.json", "--topology chebyshev-1 --order 4 --samplerate 44100");
  const std::string both = drawn("a.svg", "--compare one.json two.json");
  EXPECT_THAT(both, HasSubstr("2 filters"));
  EXPECT_THAT(both, HasSubstr("1  one.json: butterworth lowpass of order 3"));
  EXPECT_THAT(both, HasSubstr("2  two.json: chebyshev-1 lowpass of order 4"));
  EXPECT_THAT(both, HasSubstr("at 44100 Hz"));
  const std::string all = drawn("b.svg", "--order 6 --compare one.json two.json");
  EXPECT_THAT(all, HasSubstr("1  chebyshev-2 lowpass of order 6"));
  EXPECT_THAT(all, HasSubstr("3  two.json"));
}

TEST_F(PlotCommand, ComparedFiltersHaveTheNamesThatTheyAreGiven) {
  save("one.json", "--order 3");
  const std::string svg =
      drawn("a.svg", "--order 6 --compare one.json --names 'the steep one' flat --title both");
  EXPECT_THAT(svg, HasSubstr(">1  the steep one<"));
  EXPECT_THAT(svg, HasSubstr(">2  flat<"));
  EXPECT_THAT(svg, Not(HasSubstr("one.json:")));
  EXPECT_THAT(drawn("b.svg", "--names 'only one'"), HasSubstr("<title>only one</title>"));
}

TEST_F(PlotCommand, LinearAxesMayBeginWithNothing) {
  const std::string svg = drawn("a.svg", "--linear --range 0 6000");
  for (const char *label : {">1k<", ">3k<", ">6k<"}) EXPECT_THAT(svg, HasSubstr(label));
  EXPECT_THAT(drawn("b.svg", "--linear"), HasSubstr(">14k<"));
}

TEST_F(PlotCommand, ResponsesOverTimeAreDrawn) {
  const std::string svg = drawn("a.svg", "--topology butterworth --order 2");
  for (const char *part : {">Impulse response<", ">Step response<", "time in \u00b5s", "amplitude"})
    EXPECT_THAT(svg, HasSubstr(part));
}

TEST_F(PlotCommand, DrawsTheFilterThatWasSavedAndNotItsSettings) {
  save("a.json", "--topology butterworth --order 3");
  std::string text = read_file(path("a.json"));
  text.replace(text.find("\"poles\": ["), std::string("\"poles\": [").size(),
               "\"poles\": [0.1, 0.0, ");
  write("b.json", text);
  EXPECT_NE(drawn("a.svg", "--compare a.json").substr(1000),
            drawn("b.svg", "--compare b.json").substr(1000));
}

TEST_F(PlotCommand, SixFiltersAreDrawnAndSevenRefused) {
  save("a.json", "");
  drawn("a.svg", "--compare a.json a.json a.json a.json a.json a.json");
  const Outcome outcome =
      plot("--order 3 --compare a.json a.json a.json a.json a.json a.json -o b.svg");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "veltane: a picture takes up to 6 filters, and 7 were given\n");
}

TEST_F(PlotCommand, NamesAndTitlesAreTextAndNothingElse) {
  const std::string name = "x'; system \"touch stolen\"; `touch stolen` {a}_b@c <&>.json";
  save("x.json", "");
  fs::rename(path("x.json"), path(name));
  const std::string svg = drawn(
      "a.svg", R"(--compare x*.json x*.json --title "'; system 'touch stolen' #\"\`touch stolen\`
<&> \$HOME %s {x}_y^z \\n")");
  EXPECT_TRUE(xml_is_well_formed(path("a.svg")));
  EXPECT_THAT(svg, HasSubstr("'; system 'touch stolen' #\"`touch stolen`\\x0a&lt;&amp;> $HOME %s "
                             "{x}_y^z \\n</text>"));
  EXPECT_FALSE(fs::exists(path("stolen")));
}

TEST_F(PlotCommand, LongNamesAreShortened) {
  save("x.json", "");
  const std::string name = std::string(100, 'a') + "\u00e9" + std::string(100, 'b') + ".json";
  fs::rename(path("x.json"), path(name));
  EXPECT_THAT(drawn("a.svg", "--compare " + name + " " + name),
              HasSubstr("1  aaaaaaaaaaaaaa\u2026bbbbbbbbb.json: chebyshev-2"));
}

TEST_F(PlotCommand, ALongTitleEndsWithinThePicture) {
  const std::string svg = drawn("a.svg", "--title \"$(head -c 100000 /dev/zero | tr '\\0' W)\"");
  const std::string shown = std::string(55, 'W') + "\u2026" + std::string(55, 'W');
  EXPECT_THAT(svg, HasSubstr("<text>" + shown + "</text>"));
}

TEST_F(PlotCommand, RangeAndFloorAreThoseAskedFor) {
  const std::string svg = drawn("a.svg", "--range 0.03 7 --floor -37 --frequency 3");
  EXPECT_THAT(svg, HasSubstr(">0.05<"));
  EXPECT_THAT(svg, HasSubstr(">\u221235<"));
  EXPECT_THAT(svg, Not(HasSubstr(">\u221240<")));
}

// The level's and the delay's, which has the numbers for the phase as well.
TEST_F(PlotCommand, EveryPanelOverFrequencyFollowsTheRange) {
  const std::string svg = drawn("a.svg", "--range 7000 23000 --frequency 3000");
  std::size_t count = 0;
  for (std::size_t at = svg.find(">20k<"); at != std::string::npos; at = svg.find(">20k<", at + 1))
    ++count;
  EXPECT_EQ(count, 2U);
}

TEST_F(PlotCommand, ASavedDesignIsDrawnAsItIs) {
  save("saved.json", "--topology butterworth --order 4 --frequency 1000");
  EXPECT_THAT(drawn("a.svg", "saved.json"), HasSubstr("butterworth lowpass of order 4"));
  const Outcome both = plot("saved.json --order 8 -o b.svg");
  EXPECT_EQ(both.status, 2);
  EXPECT_THAT(both.err, HasSubstr("settings go with --from saved.json"));
}

TEST_F(PlotCommand, TellsOfSilentAndUnstableFilters) {
  const Outcome silent = plot("--topology butterworth --order 200 --frequency 20 -o a.svg");
  EXPECT_EQ(silent.status, 0);
  EXPECT_THAT(silent.err, HasSubstr("the filter is silent: its gain is too small"));
  EXPECT_THAT(read_file(path("a.svg")), HasSubstr("the filter is silent"));
  const Outcome unstable = plot("--response bandpass --frequency 3000 1000 -o b.svg");
  EXPECT_EQ(unstable.status, 0);
  EXPECT_THAT(unstable.err,
              HasSubstr("the filter is unstable: 10 of its poles lie outside the unit circle"));
  EXPECT_THAT(read_file(path("b.svg")), HasSubstr("the filter is unstable"));
}

TEST_F(PlotCommand, WithoutSectionsThereIsNothingToRun) {
  const std::string svg = drawn("a.svg", "--topology butterworth --order 2 --sos-output off");
  EXPECT_THAT(svg, HasSubstr(">Impulse response: none without sections<"));
  EXPECT_THAT(svg, HasSubstr(">Step response: none without sections<"));
  EXPECT_THAT(svg, Not(HasSubstr("time in")));
}

TEST_F(PlotCommand, WithoutGnuplotSaysWhatToInstall) {
  const Outcome outcome = plot("-o a.svg", "PATH=/nowhere");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err,
            "veltane: gnuplot draws the pictures and is not installed; on Debian, install the "
            "package gnuplot-nox\n");
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PlotCommand, AGnuplotThatFailsLeavesWhatWasThere) {
  for (const char *lines : {"echo '\"-\" line 3: all is lost' >&2; exit 1",
                            "echo '<svg>'; echo 'all is lost' >&2", "kill -9 $$"}) {
    write("a.svg", "before");
    const Outcome outcome = plot("-o a.svg", with_gnuplot(lines));
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("gnuplot could not draw it: "));
    EXPECT_EQ(read_file(path("a.svg")), "before");
    EXPECT_THAT(files(), ElementsAre("a.svg", "bin"));
  }
}

TEST_F(PlotCommand, TheUsersOwnStartUpFileChangesNothing) {
  write(".gnuplot", "set term dumb; exit status 1\n");
  EXPECT_EQ(plot("-o a.svg", "HOME=.").status, 0);
}

TEST_F(PlotCommand, AFullDiskIsStatusThree) {
  fs::create_symlink("/dev/full", path("full.svg"));
  const Outcome outcome = plot("-o full.svg");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("'full.svg' cannot be written"));
}

TEST_F(PlotCommand, WrongRequestsGetOneSentenceAndNoPicture) {
  save("good.json", "");
  save("rootless.json", "--zpk-output off");
  write("broken.json", "{");
  write("settings.json", R"({"settings": {"order": 4}})");
  write("strange.json",
        R"({"settings": {"units": "hertz", "frequency": [3000]}, "dictionary":)"
        R"( {"topology": "chebyshev-2", "response": "sideways", "poles": [0.5, 0]}})");
  write("odd.json", R"({"settings": {"units": "hertz", "frequency": [3000]}, "dictionary":)"
                    R"( {"topology": "chebyshev-2", "response": "lowpass", "poles": [0.5]}})");
  write("endless.json",
        R"({"settings": {"units": "hertz", "frequency": [3000]}, "dictionary":)"
        R"( {"topology": "chebyshev-2", "response": "lowpass", "gain": null, "poles": [0.5, 0]}})");
  write("circle.json",
        R"({"settings": {"units": "hertz", "frequency": [3000]}, "dictionary":)"
        R"( {"topology": "chebyshev-2", "response": "lowpass", "gain": 1, "poles": [1, 0]}})");
  const auto before = files();
  const std::vector<std::array<const char *, 2>> cases{
      {"", "plot needs --output with a file whose name ends in .svg, .png or .pdf"},
      {"-o a.gif", "ends in .svg, .png or .pdf, not 'a.gif'"},
      {"-o svg", "not 'svg'"},
      {"-o -", "not '-'"},
      {"-o nowhere/a.svg", "there is no folder 'nowhere'"},
      {"-o a.svg b.svg", "'b.svg' cannot be read: No such file or directory"},
      {"-o a.svg --width 499", "--width takes whole numbers of pixels from 500 to 4000, not '499'"},
      {"-o a.svg --width 1000.5", "not '1000.5'"},
      {"-o a.svg --width wide", "--width takes numbers, not 'wide'"},
      {"-o a.svg --range 20", "--range takes two frequencies in Hz"},
      {"-o a.svg --range 200 20", "the lower one first, not '200' and '20'"},
      {"-o a.svg --range 0 20", "above 0"},
      {"-o a.svg --range 20 inf", "--range takes numbers, not 'inf'"},
      {"-o a.svg --linear --range -1 20", "two frequencies in Hz, the lower one first"},
      {"-o a.svg --names one two", "--names takes a name for each filter, 1 in all, not 2"},
      {"-o a.svg --compare good.json good.json --names one", "2 in all, not 1"},
      {"-o a.svg --names", "--names takes at least one value"},
      {"-o a.svg --floor 0", "below the peak"},
      {"-o a.svg --floor -1e9", "from -100000"},
      {"-o a.svg --order five", "'order' takes an integer"},
      {"-o a.svg --zpk-output off", "design it with --zpk-output on"},
      {"-o a.svg --response bandpass --frequency 3000 3000", "not finite"},
      {"-o a.svg --response bandstop --frequency 3000 3000 --topology butterworth",
       "has a pole on the unit circle"},
      {"-o a.svg --compare", "--compare takes at least one value"},
      {"-o a.svg --compare missing.json", "'missing.json' cannot be read"},
      {"-o a.svg --compare broken.json", "'broken.json' is not JSON"},
      {"-o a.svg --compare settings.json", "'settings.json' has settings but no filter"},
      {"-o a.svg --compare rootless.json", "'rootless.json' has neither zeros and poles nor"},
      {"-o a.svg --compare strange.json",
       "settings for a lowpass and the coefficients of a sideways"},
      {"-o a.svg --compare odd.json", "'odd.json': "},
      {"-o a.svg --compare endless.json", "'endless.json' has numbers that are not finite"},
      {"-o a.svg --compare circle.json", "'circle.json' has a pole on the unit circle"}};
  for (const auto &[arguments, says] : cases) {
    const Outcome outcome = plot(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_THAT(outcome.err, HasSubstr(says)) << arguments;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  }
  EXPECT_EQ(files(), before);
}

// No box has a ripple of 0, nor an axis without a length.
TEST_F(PlotCommand, SavedSettingsAreClippedBeforeTheyAreDrawn) {
  save("a.json", "--topology chebyshev-1");
  std::string text = read_file(path("a.json"));
  const std::string ripple = "\"passband_ripple\": ";
  text.replace(text.find(ripple) + ripple.size(), std::string("0.5").size(), "0.0");
  write("b.json", text);
  const Outcome outcome = plot("--compare b.json -o a.svg");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(
      outcome.err,
      "veltane: 'b.json': passband_ripple takes numbers from 0.1 to 48: 0.1 is used, not 0\n");
  EXPECT_THAT(read_file(path("a.svg")), HasSubstr("ripple asked for: 0.1 dB"));
}

TEST_F(PlotCommand, TheExamplesInTheHelpWork) {
  const std::string help = plot("--help").out;
  std::istringstream lines(help.substr(help.find("Examples:\n")));
  std::string line;
  int count = 0;
  while (std::getline(lines, line)) {
    if (!line.starts_with("  veltane")) continue;
    ++count;
    const Outcome outcome =
        run("veltane() { " VELTANE_COMMAND " \"$@\"; }; cd " + path(".") + " && " + line);
    EXPECT_EQ(outcome.status, 0) << line << '\n' << outcome.err;
  }
  EXPECT_EQ(count, 2);
  EXPECT_THAT(files(), ElementsAre("both.png", "five.json", "lowpass.svg"));
}

TEST_F(PlotCommand, SectionsOfAnotherProgramAreDrawn) {
  write("sos.csv", "0.25,0.5,0.25,0,0\n");
  const std::string svg = drawn("a.svg", "--sections sos.csv --samplerate 8k");
  EXPECT_THAT(svg, HasSubstr("1 section of 'sos.csv', at 8000 Hz"));
  EXPECT_THAT(svg, Not(HasSubstr("cutoff")));
  save("saved.json", "--topology butterworth");
  const std::string both = drawn("b.svg", "--sections sos.csv --compare saved.json");
  EXPECT_THAT(both, HasSubstr("2 filters"));
  EXPECT_THAT(plot("saved.json --sections sos.csv -o c.svg").err, HasSubstr("exclude each other"));
  EXPECT_THAT(plot("--sections sos.csv --order 3 -o c.svg").err,
              HasSubstr("so --order would change nothing"));
}

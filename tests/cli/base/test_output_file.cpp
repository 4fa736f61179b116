// Files are written whole or not at all.

#include <fcntl.h>
#include <sys/stat.h>

#include "../run_command.h"
#include "../scratch_folder.h"
#include "base/output_file.h"
#include "base/words.h"
#include "designer/refusal.h"
#include "text/shell.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Output : public ScratchFolder {
 protected:
  mode_t mode(const std::string &name) const {
    struct stat status {};
    EXPECT_EQ(stat(path(name).c_str(), &status), 0);
    return status.st_mode & 07777U;
  }
};

}  // namespace

TEST_F(Output, AFileHoldsWhatWouldBePrinted) {
  const Outcome outcome = veltane("design --order 3 -o " + path("filter.txt"));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(read_file(path("filter.txt")), veltane("design --order 3").out);
  EXPECT_THAT(names(), ElementsAre("filter.txt"));
}

TEST_F(Output, ADashIsStandardOutput) {
  EXPECT_EQ(veltane("design -o -").out, veltane("design").out);
}

TEST_F(Output, TheOldFileStaysUntilTheNewOneIsComplete) {
  write("old", "old");
  {
    cli::OutputFile file(path("old"));
    file.write("new");
    EXPECT_EQ(read_file(path("old")), "old");
    file.finish();
    EXPECT_EQ(read_file(path("old")), "new");
  }
  EXPECT_EQ(read_file(path("old")), "new");
  EXPECT_THAT(names(), ElementsAre("old"));
}

TEST_F(Output, WhatIsNotFinishedLeavesNothing) {
  write("old", "old");
  {
    cli::OutputFile over(path("old"));
    cli::OutputFile beside(path("beside"));
    over.write("new");
    beside.write("new");
  }
  EXPECT_EQ(read_file(path("old")), "old");
  EXPECT_THAT(names(), ElementsAre("old"));
}

TEST_F(Output, AFileThatMayNotGrowKeepsTheOldOne) {
  write("old", "old");
  const Outcome outcome =
      run("ulimit -f 1; " VELTANE_COMMAND " design --order 200 -o " + path("old"));
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: '" + path("old") + "' cannot be written: File too large\n");
  EXPECT_EQ(read_file(path("old")), "old");
  EXPECT_THAT(names(), ElementsAre("old"));
}

TEST_F(Output, ABatchThatMayNotGrowLeavesNoFile) {
  const Outcome outcome =
      run("yes '{\"order\": 20}' | head -3000 | (ulimit -f 1000; " VELTANE_COMMAND
          " design --batch - -o " +
          path("new") + ")");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("cannot be written: File too large"));
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Output, ABatchThatIsKilledLeavesTheOldFile) {
  write("old", "old");
  const Outcome outcome = run("mkfifo " + path("lines") + "; " VELTANE_COMMAND " design --batch " +
                              path("lines") + " -o " + path("old") + " & exec 9>" + path("lines") +
                              "; yes '{}' | head -1000 >&9; sleep 0.3; kill -KILL $!; wait $!");
  EXPECT_EQ(outcome.status, 128 + 9);
  EXPECT_EQ(read_file(path("old")), "old");
  // Not every file system has files without names.
  const int nameless = open(path(".").c_str(), O_TMPFILE | O_WRONLY, 0600);
  if (nameless < 0) GTEST_SKIP() << "the temporary folder has no files without names";
  close(nameless);
  EXPECT_THAT(names(), ElementsAre("lines", "old"));
}

TEST_F(Output, AFolderIsRefused) {
  const Outcome outcome = veltane("design -o " + path("."));
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("is a folder; -o takes the name of a file"));
}

TEST_F(Output, AFolderThatIsNotThereIsNamed) {
  const Outcome outcome = veltane("design -o " + path("nowhere/filter.txt"));
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("there is no folder '" + path("nowhere") + "'"));
}

TEST_F(Output, AFolderThatCannotBeWrittenToIsStatusThree) {
  const Outcome outcome = veltane("design -o /proc/self/filter.txt");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("'/proc/self/filter.txt' cannot be written: "));
}

TEST_F(Output, AFullDeviceIsStatusThreeAndStaysADevice) {
  const Outcome outcome = veltane("design -o /dev/full");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: '/dev/full' cannot be written: No space left on device\n");
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(Output, ALinkStaysAndItsFileChanges) {
  write("file", "old");
  std::filesystem::create_symlink("file", path("link"));
  EXPECT_EQ(veltane("design -o " + path("link")).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
  EXPECT_EQ(read_file(path("file")), veltane("design").out);
}

TEST_F(Output, KeepsTheModeOfTheOldFileAndGivesANewOneTheUsual) {
  write("old", "old");
  std::filesystem::permissions(path("old"), std::filesystem::perms{0640});
  run("umask 027; " VELTANE_COMMAND " design -o " + path("old") +
      "; " VELTANE_COMMAND " design -o " + path("new"));
  EXPECT_EQ(mode("old"), 0640U);
  EXPECT_EQ(mode("new"), 0640U);
  run("umask 022; " VELTANE_COMMAND " design -o " + path("newer"));
  EXPECT_EQ(mode("newer"), 0644U);
}

TEST(CommandLine, IsOneLineThatAShellReadsBackToTheSameWords) {
  const cli::Words words{"veltane", "design", "--name",      "it's",   "a b",
                         "",        "x\ny",   "back\\slash", "\x7f'\\"};
  const std::string line = text::shell_line(words);
  EXPECT_EQ(line.find('\n'), std::string::npos);
  std::string expected = words.front();
  for (std::size_t i = 1; i < words.size(); ++i) expected += '|' + words[i];
  // bash knows the form with control characters.
  const std::string script = "veltane() { printf veltane; printf '|%s' \"$@\"; }; " + line;
  const tests::TemporaryFolder folder;
  const auto file = folder / "script";
  std::ofstream(file) << script;
  EXPECT_EQ(run("bash " + file.string()).out, expected);
}

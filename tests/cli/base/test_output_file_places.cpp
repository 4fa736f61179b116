// Where a file is written to that is more than a plain file in a folder.

#include <grp.h>
#include <sys/stat.h>

#include <array>
#include <functional>

#include "../run_command.h"
#include "../scratch_folder.h"
#include "base/output_file.h"
#include "designer/refusal.h"
#include "os/descriptor.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr uid_t nobody = 65534;

class OutputPlaces : public ScratchFolder {
 protected:
  struct stat status(const std::string &name) const {
    struct stat found {};
    EXPECT_EQ(stat(path(name).c_str(), &found), 0) << name;
    return found;
  }

  void set_mode(const std::string &name, mode_t mode) const {
    EXPECT_EQ(chmod(path(name).c_str(), mode), 0) << name;
  }

  void give(const std::string &name, uid_t to) const {
    EXPECT_EQ(chown(path(name).c_str(), to, to), 0) << name;
  }
};

void write_file(const std::string &path, const std::string &text) {
  cli::OutputFile file(path);
  file.write(text);
  file.finish();
}

// Does it as one for whom permissions count. @return what it raised; "" for nothing
std::string as_nobody(const std::function<void()> &work) {
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe(ends.data()), 0);
  const pid_t child = fork();
  if (child == 0) {
    std::string said;
    if (getuid() == 0 && (setgroups(0, nullptr) != 0 || setresgid(nobody, nobody, nobody) != 0 ||
                          setresuid(nobody, nobody, nobody) != 0))
      said = "this process cannot become nobody";
    try {
      if (said.empty()) work();
    } catch (const std::exception &error) {
      said = error.what();
    }
    os::write_all(ends[1], said);
    _exit(0);
  }
  close(ends[1]);
  std::string said;
  std::array<char, 1000> block{};
  for (ssize_t count = 0; (count = read(ends[0], block.data(), block.size())) > 0;)
    said.append(block.data(), static_cast<std::size_t>(count));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  return said;
}

}  // namespace

TEST_F(OutputPlaces, ADescriptorIsWrittenToWhereItStands) {
  const std::string text = veltane("design").out;
  std::filesystem::create_symlink("/dev/stdout", path("link"));
  for (const std::string &name :
       {std::string("/dev/stdout"), std::string("/proc/self/fd/1"), std::string("/dev/fd/1"),
        std::string("/proc/thread-self/fd/1"), path("link")}) {
    write("log", "before\n");
    const Outcome outcome = veltane("design -o " + name + " >> " + path("log"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(read_file(path("log")), "before\n" + text) << name;
  }
  write("log", "before\n");
  EXPECT_EQ(veltane("design -o /dev/fd/9 9>> " + path("log")).status, 0);
  EXPECT_EQ(read_file(path("log")), "before\n" + text);
  EXPECT_THAT(names(), ElementsAre("link", "log"));
}

TEST_F(OutputPlaces, ADescriptorThatIsNotOpenIsStatusThree) {
  const Outcome outcome = veltane("design -o /dev/fd/77");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: '/dev/fd/77' cannot be written: Bad file descriptor\n");
}

TEST_F(OutputPlaces, AnotherProcessKeepsWhatItHasWritten) {
  write("log", "before\n");
  const Outcome outcome =
      run("sh -c 'exec >>" + path("log") + "; " VELTANE_COMMAND " design -o /proc/$$/fd/1; true'");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(read_file(path("log")), "before\n" + veltane("design").out);
}

TEST_F(OutputPlaces, APipeWithANameStaysOne) {
  const Outcome outcome = run("mkfifo " + path("pipe") + "; cat " + path("pipe") + " & " +
                              VELTANE_COMMAND " design -o " + path("pipe") + "; wait");
  EXPECT_EQ(outcome.out, veltane("design").out);
  EXPECT_TRUE(S_ISFIFO(status("pipe").st_mode));
}

TEST_F(OutputPlaces, HardLinksStayLinksToOneFile) {
  write("one", std::string(100000, 'x'));
  std::filesystem::create_hard_link(path("one"), path("other"));
  EXPECT_EQ(veltane("design -o " + path("one")).status, 0);
  EXPECT_EQ(status("one").st_nlink, 2U);
  EXPECT_EQ(read_file(path("other")), veltane("design").out);
  EXPECT_THAT(names(), ElementsAre("one", "other"));
}

TEST_F(OutputPlaces, AHardLinkKeepsItsTextUntilTheNewOneIsCompleteAndFits) {
  write("one", "old");
  std::filesystem::create_hard_link(path("one"), path("other"));
  {
    cli::OutputFile file(path("one"));
    file.write("new");
  }
  EXPECT_EQ(read_file(path("other")), "old");
  const Outcome outcome =
      run("ulimit -f 1; " VELTANE_COMMAND " design --order 200 -o " + path("one"));
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("cannot be written: File too large"));
  EXPECT_EQ(read_file(path("other")), "old");
}

TEST_F(OutputPlaces, ALinkThatLeadsNowhereStaysAndItsFileIsMade) {
  std::filesystem::create_directory(path("folder"));
  std::filesystem::create_symlink("folder/second", path("first"));
  std::filesystem::create_symlink("../file", path("folder/second"));
  EXPECT_EQ(veltane("design -o " + path("first")).status, 0);
  EXPECT_THAT(names(), ElementsAre("file", "first", "folder"));
  EXPECT_TRUE(std::filesystem::is_symlink(path("first")));
  EXPECT_TRUE(std::filesystem::is_symlink(path("folder/second")));
  EXPECT_EQ(read_file(path("file")), veltane("design").out);
}

TEST_F(OutputPlaces, ALinkIntoAFolderThatIsNotThereNamesTheFolder) {
  std::filesystem::create_symlink("nowhere/file", path("link"));
  const Outcome outcome = veltane("design -o " + path("link"));
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("there is no folder '" + path("nowhere") + "'"));
}

TEST_F(OutputPlaces, LinksInACircleAreStatusThree) {
  std::filesystem::create_symlink("two", path("one"));
  std::filesystem::create_symlink("one", path("two"));
  const Outcome outcome = veltane("design -o " + path("one"));
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("Too many levels of symbolic links"));
  EXPECT_THAT(names(), ElementsAre("one", "two"));
}

TEST_F(OutputPlaces, ANameOfNoFileIsRefused) {
  const Outcome outcome = veltane("design -o " + path("new/"));
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "veltane: '" + path("new/") + "' is not the name of a file\n");
  EXPECT_THROW(cli::OutputFile(""), designer::Refusal);
}

TEST_F(OutputPlaces, TheOwnerStays) {
  if (getuid() != 0) GTEST_SKIP() << "only root can give files away";
  write("old", "old");
  give("old", nobody);
  set_mode("old", 04751);
  const ino_t before = status("old").st_ino;
  write_file(path("old"), "new");
  EXPECT_EQ(status("old").st_uid, nobody);
  EXPECT_EQ(status("old").st_gid, nobody);
  EXPECT_EQ(status("old").st_mode & 07777U, 04751U);
  EXPECT_NE(status("old").st_ino, before) << "it was replaced";
}

TEST_F(OutputPlaces, WhoeverCannotKeepTheOwnerWritesIntoTheFile) {
  if (getuid() != 0) GTEST_SKIP() << "only root has files that others may write to";
  set_mode(".", 0777);
  write("old", "a longer text than the new one");
  set_mode("old", 06777);
  const ino_t before = status("old").st_ino;
  EXPECT_EQ(as_nobody([&] { write_file(path("old"), "new"); }), "");
  EXPECT_EQ(read_file(path("old")), "new");
  EXPECT_EQ(status("old").st_uid, 0U);
  EXPECT_EQ(status("old").st_ino, before);
  EXPECT_EQ(status("old").st_mode & 07777U, 0777U) << "another's set-id bits are dropped";
}

TEST_F(OutputPlaces, AFileInAFolderThatNothingCanBeMadeIn) {
  std::filesystem::create_directory(path("folder"));
  write("folder/old", "old");
  if (getuid() == 0) give("folder/old", nobody);
  set_mode("folder", 0555);
  set_mode(".", 0755);
  EXPECT_EQ(as_nobody([&] { write_file(path("folder/old"), "new"); }), "");
  EXPECT_EQ(read_file(path("folder/old")), "new");
  EXPECT_EQ(as_nobody([&] { write_file(path("folder/new"), "new"); }),
            "'" + path("folder/new") + "' cannot be written: Permission denied");
  set_mode("folder", 0755);
}

TEST_F(OutputPlaces, AFileThatMayNotBeWrittenToStays) {
  write("old", "old");
  if (getuid() == 0) give("old", nobody);
  set_mode("old", 0444);
  set_mode(".", 0777);
  EXPECT_EQ(as_nobody([&] { write_file(path("old"), "new"); }),
            "'" + path("old") + "' cannot be written: Permission denied");
  EXPECT_EQ(read_file(path("old")), "old");
}

TEST_F(OutputPlaces, AFolderThatMayNotBeLookedIntoIsNotSaidToBeMissing) {
  std::filesystem::create_directories(path("closed/folder"));
  set_mode("closed", 0600);
  set_mode(".", 0755);
  EXPECT_EQ(as_nobody([&] { write_file(path("closed/folder/new"), "new"); }),
            "'" + path("closed/folder/new") + "' cannot be written: Permission denied");
  set_mode("closed", 0700);
}

TEST_F(OutputPlaces, AFileThatSomethingIsMountedOn) {
  write("old", "old");
  write("mounted", "a longer text than the new one");
  const std::string mount = "unshare -m sh -c 'mount --bind " + path("mounted") + ' ' + path("old");
  if (run(mount + "'").status != 0) GTEST_SKIP() << "nothing can be mounted here";
  const Outcome outcome = run(mount + " && " VELTANE_COMMAND " design -o " + path("old") + "'");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(read_file(path("mounted")), veltane("design").out);
  EXPECT_EQ(read_file(path("old")), "old");
  EXPECT_THAT(names(), ElementsAre("mounted", "old"));
}

TEST_F(OutputPlaces, AReaderThatHasSeenEnoughIsNoFailure) {
  const std::string status = "; echo $? >" + path("status") + "; } | ";
  for (const std::string &line :
       {"{ sleep 0.2; " VELTANE_COMMAND " design --order 200 --format json" + status + "true",
        "{ sleep 0.2; " VELTANE_COMMAND " design -o /dev/stdout" + status + "true",
        "{ yes '{}' | " VELTANE_COMMAND " design --batch -" + status + "head -1 >/dev/null",
        "{ yes '{}' | " VELTANE_COMMAND " design --batch - -o /dev/stdout" + status +
            "head -1 >/dev/null"}) {
    EXPECT_EQ(run(line).err, "") << line;
    EXPECT_EQ(read_file(path("status")), "0\n") << line;
  }
}

TEST_F(OutputPlaces, StandardOutputThatIsFullIsStatusThree) {
  const Outcome outcome = veltane("design >/dev/full");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: cannot write to standard output\n");
}

TEST_F(OutputPlaces, StandardInputIsReadForOneThingOnly) {
  const Outcome outcome = run("echo '{}' | " VELTANE_COMMAND " design --batch - --from -");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err,
            "veltane: --batch - and --from - both read standard input: give one of them a file\n");
}

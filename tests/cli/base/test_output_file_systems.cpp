// Writing on systems that have less: no files without names, no /proc, no modes; and what a
// signal leaves behind there.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <csignal>
#include <cstdarg>
#include <functional>

#include "../run_command.h"
#include "../scratch_folder.h"
#include "base/output_file.h"
#include "os/temporary.h"

using testing::ElementsAre;

namespace {

// What the system cannot do: the error, or 0 when it can.
struct Lacks {
  int nameless = 0;
  int link = 0;
  int modes = 0;
  int sync = 0;
  int room = 0;
};
Lacks lacks;

int folders_synced = 0;
int files_synced = 0;

bool fails(int error) {
  errno = error;
  return error != 0;
}

}  // namespace

// These stand before the C library's for the whole test program.
extern "C" {

int open(const char *path, int flags, ...) {
  std::va_list list;
  va_start(list, flags);
  const auto mode = va_arg(list, mode_t);
  va_end(list);
  if ((flags & O_TMPFILE) == O_TMPFILE && fails(lacks.nameless)) return -1;
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int linkat(int from, const char *old, int to, const char *path, int flags) noexcept {
  if (fails(lacks.link)) return -1;
  return static_cast<int>(syscall(SYS_linkat, from, old, to, path, flags));
}

int fchmod(int descriptor, mode_t mode) noexcept {
  if (fails(lacks.modes)) return -1;
  return static_cast<int>(syscall(SYS_fchmod, descriptor, mode));
}

int posix_fallocate(int, off_t, off_t) { return lacks.room; }

int fsync(int descriptor) {
  struct stat status {};
  fstat(descriptor, &status);
  ++(S_ISDIR(status.st_mode) ? folders_synced : files_synced);
  if (fails(lacks.sync)) return -1;
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

}  // extern "C"

namespace {

class OutputSystems : public ScratchFolder {
 protected:
  ~OutputSystems() override { lacks = {}; }

  void write_file(const std::string &name) const {
    cli::OutputFile file(path(name));
    file.write("new");
    file.finish();
  }

  // Whether a new file and one in another's place come out on a system that lacks this.
  void try_both(const Lacks &what) const {
    write("old", "old");
    std::filesystem::permissions(path("old"), std::filesystem::perms{0640});
    lacks = what;
    write_file("old");
    write_file("new");
    lacks = {};
    EXPECT_EQ(read_file(path("old")), "new");
    EXPECT_EQ(read_file(path("new")), "new");
    EXPECT_THAT(names(), ElementsAre("new", "old"));
  }

  mode_t mode(const std::string &name) const {
    struct stat found {};
    EXPECT_EQ(stat(path(name).c_str(), &found), 0);
    return found.st_mode & 07777U;
  }

  // @return the signal that ended a process which does this
  static int ending(const std::function<void()> &work) {
    const pid_t child = fork();
    if (child == 0) {
      work();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  }
};

}  // namespace

TEST_F(OutputSystems, WithoutFilesWithoutNames) {
  try_both({.nameless = EOPNOTSUPP});
  EXPECT_EQ(mode("old"), 0640U);
}

TEST_F(OutputSystems, WithoutNamesForFilesWithoutOne) {
  try_both({.link = ENOENT});
  EXPECT_EQ(mode("old"), 0640U);
}

TEST_F(OutputSystems, WithoutModes) {
  try_both({.modes = EPERM});
  try_both({.nameless = EISDIR, .modes = ENOTSUP});
}

TEST_F(OutputSystems, WithoutAnythingToWaitFor) { try_both({.sync = EINVAL}); }

TEST_F(OutputSystems, ADiskThatDoesNotTakeItKeepsTheOldFile) {
  write("old", "old");
  lacks.sync = EIO;
  EXPECT_THROW(write_file("old"), std::runtime_error);
  EXPECT_EQ(read_file(path("old")), "old");
  EXPECT_THAT(names(), ElementsAre("old"));
}

TEST_F(OutputSystems, AFileThatStaysTheSameOneKeepsItsTextWhereThereIsNoRoom) {
  write("one", "ol");
  std::filesystem::create_hard_link(path("one"), path("other"));
  lacks.room = ENOSPC;
  EXPECT_THROW(write_file("one"), std::runtime_error);
  EXPECT_EQ(read_file(path("one")), "ol");
  lacks.room = 0;
  write_file("one");
  EXPECT_EQ(read_file(path("other")), "new");
}

TEST_F(OutputSystems, TheFolderIsOnTheDiskAsWell) {
  folders_synced = files_synced = 0;
  write_file("new");
  EXPECT_EQ(files_synced, 1);
  EXPECT_EQ(folders_synced, 1);
}

TEST_F(OutputSystems, ASignalThatEndsTheProgramRemovesTheFile) {
  lacks.nameless = EOPNOTSUPP;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    write("old", "old");
    const int ended_by = ending([&] {
      cli::OutputFile file(path("old"));
      cli::OutputFile other(path("other"));
      file.write("new");
      if (names().size() == 3) raise(signal);
    });
    EXPECT_EQ(ended_by, signal);
    EXPECT_THAT(names(), ElementsAre("old"));
    EXPECT_EQ(read_file(path("old")), "old");
  }
}

TEST_F(OutputSystems, ASignalThatIsIgnoredStaysSo) {
  lacks.nameless = EOPNOTSUPP;
  EXPECT_EQ(ending([&] {
              signal(SIGHUP, SIG_IGN);
              cli::OutputFile file(path("new"));
              file.write("new");
              raise(SIGHUP);
              file.finish();
            }),
            0);
  EXPECT_EQ(read_file(path("new")), "new");
}

TEST_F(OutputSystems, ACopyOfTheProcessRemovesNothingThatIsNotItsOwn) {
  lacks.nameless = EOPNOTSUPP;
  EXPECT_EQ(ending([&] {
              cli::OutputFile file(path("new"));
              file.write("new");
              EXPECT_EQ(ending([] { raise(SIGTERM); }), SIGTERM);
              file.finish();
            }),
            0);
  EXPECT_EQ(read_file(path("new")), "new");
}

TEST_F(OutputSystems, AFinishedFileOutlivesASignal) {
  for (const int nameless : {0, EOPNOTSUPP}) {
    lacks.nameless = nameless;
    EXPECT_EQ(ending([&] {
                write_file("new");
                raise(SIGTERM);
              }),
              SIGTERM);
    EXPECT_THAT(names(), ElementsAre("new"));
    std::filesystem::remove(path("new"));
  }
}

TEST_F(OutputSystems, TemporaryFilesAreInTheFolderThatTmpdirNames) {
  const auto folder_of_one = [] {
    const int file = os::open_temporary();
    EXPECT_GE(file, 0);
    const auto name = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file));
    close(file);
    return name.parent_path().string();
  };
  const char *const set = std::getenv("TMPDIR");
  const std::string before = set == nullptr ? "" : set;
  const std::string folder = std::filesystem::canonical(path(".")).string();
  setenv("TMPDIR", folder.c_str(), 1);
  EXPECT_EQ(folder_of_one(), folder);
  lacks.nameless = EOPNOTSUPP;
  EXPECT_EQ(folder_of_one(), folder);
  EXPECT_TRUE(names().empty());
  setenv("TMPDIR", path("nowhere").c_str(), 1);
  EXPECT_EQ(folder_of_one(), "/tmp");
  before.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", before.c_str(), 1);
}

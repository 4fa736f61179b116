// gnuplot as a process: what it may take, and that nothing of it goes on.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "../temporary_folder.h"
#include "designed.h"
#include "gnuplot/picture.h"
#include "gnuplot/process.h"

namespace {

// A picture that counts as one.
constexpr char svg[] = "echo '<svg></svg>'\n";

class GnuplotProcess : public testing::Test {
 protected:
  GnuplotProcess() : path_(std::getenv("PATH")) {
    std::filesystem::create_directory(path("bin"));
    setenv("PATH", (path("bin") + ':' + path_).c_str(), 1);
  }
  ~GnuplotProcess() override { setenv("PATH", path_.c_str(), 1); }

  std::string path(const std::string &name) const { return (folder_ / name).string(); }

  // Puts a program called gnuplot before the real one.
  void use(const std::string &lines) const {
    std::ofstream(path("bin/gnuplot")) << "#!/bin/sh\n" + lines;
    std::filesystem::permissions(path("bin/gnuplot"), std::filesystem::perms::owner_all);
  }

  static std::string failure(const gnuplot::Limits &limits = {}) {
    try {
      gnuplot::run("", limits);
      return "";
    } catch (const std::runtime_error &error) {
      return error.what();
    }
  }

 private:
  tests::TemporaryFolder folder_;
  std::string path_;
};

std::string read_file(const std::string &name) {
  std::ostringstream text;
  text << std::ifstream(name, std::ios::binary).rdbuf();
  return text.str();
}

}  // namespace

TEST_F(GnuplotProcess, IsInAGroupOfItsOwn) {
  use("read -r pid name state parent group rest </proc/$$/stat; [ $pid = $group ] || exit 1\n" +
      std::string(svg));
  EXPECT_EQ(failure(), "");
}

TEST_F(GnuplotProcess, HasLimits) {
  use("{ ulimit -t; ulimit -v; ulimit -f; ulimit -c; ulimit -Hc; } >" + path("limits") + '\n' +
      std::string(svg));
  EXPECT_EQ(failure({.seconds = 7, .memory = 512U << 20U, .output = 1U << 20U}), "");
  EXPECT_EQ(read_file(path("limits")), "7\n524288\n2048\n0\n0\n");
}

TEST_F(GnuplotProcess, WithItsUsualLimitsDrawsTheLargestPicture) {
  const std::vector<pictures::DrawnFilter> filters(
      pictures::most_filters, tests::drawn("butterworth", "lowpass", 200, {1000}));
  const std::string picture =
      gnuplot::picture(figure_of(filters), {gnuplot::Format::png, 4000}, "made by a test");
  EXPECT_TRUE(picture.starts_with("\x89PNG"));
  EXPECT_THAT(picture, testing::HasSubstr("made by a test"));
}

TEST_F(GnuplotProcess, ThatTakesTooLongIsEndedWithAllThatItStarted) {
  ASSERT_EQ(mkfifo(path("alive").c_str(), 0600), 0);
  // Both hold the pipe, which ends with the last of them.
  use("exec 9>" + path("alive") + "; echo started >&9; sleep 1000 & sleep 1000\n");
  const pid_t reader = fork();
  if (reader == 0) _exit(read_file(path("alive")) == "started\n" ? 0 : 1);
  EXPECT_EQ(failure({.seconds = 1}), "gnuplot was stopped: a picture may take at most 1 s");
  int status = -1;
  waitpid(reader, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST_F(GnuplotProcess, ThatComputesForTooLongIsEnded) {
  use("kill -XCPU $$\n");
  EXPECT_EQ(failure({.seconds = 5}), "gnuplot was stopped: a picture may take at most 5 s");
}

TEST_F(GnuplotProcess, ThatWritesTooMuchIsEnded) {
  use("exec head -c 3000000 /dev/zero\n");
  EXPECT_EQ(failure({.output = 1000000}),
            "gnuplot was stopped: a picture may take at most 1000000 bytes");
}

TEST_F(GnuplotProcess, ThatFailsIsQuoted) {
  use("echo 'first' >&2; echo '  the reason  ' >&2; exit 1\n");
  EXPECT_EQ(failure(), "gnuplot could not draw it: the reason");
  use("exit 1\n");
  EXPECT_EQ(failure(), "gnuplot could not draw it: it gives no reason");
}

TEST_F(GnuplotProcess, WhosePictureHasNoEndHasFailed) {
  use("echo '<svg>'; echo 'line 3: what is this' >&2\n");
  EXPECT_EQ(failure(), "gnuplot could not draw it: line 3: what is this");
}

TEST_F(GnuplotProcess, ThatIsMissingSaysWhatToInstall) {
  setenv("PATH", path("bin").c_str(), 1);
  EXPECT_EQ(failure(),
            "gnuplot draws the pictures and is not installed; on Debian, install the package "
            "gnuplot-nox");
}

// gnuplot as a process: what it may take, and that nothing of it outlives the command.

#include <csignal>

#include "plot/gnuplot.h"
#include "run_command.h"
#include "scratch_folder.h"

namespace {

// A picture that counts as one.
constexpr char svg[] = "echo '<svg></svg>'\n";

class Gnuplot : public ScratchFolder {
 protected:
  Gnuplot() : path_(std::getenv("PATH")) {
    std::filesystem::create_directory(path("bin"));
    setenv("PATH", (path("bin") + ':' + path_).c_str(), 1);
  }
  ~Gnuplot() override { setenv("PATH", path_.c_str(), 1); }

  // Puts a program called gnuplot before the real one.
  void use(const std::string &lines) const {
    write("bin/gnuplot", "#!/bin/sh\n" + lines);
    std::filesystem::permissions(path("bin/gnuplot"), std::filesystem::perms::owner_all);
  }

  static std::string failure(const cli::plot::Limits &limits = {}) {
    try {
      cli::plot::draw("", limits);
      return "";
    } catch (const std::runtime_error &error) {
      return error.what();
    }
  }

 private:
  std::string path_;
};

}  // namespace

TEST_F(Gnuplot, IsInAGroupOfItsOwn) {
  use("read -r pid name state parent group rest </proc/$$/stat; [ $pid = $group ] || exit 1\n" +
      std::string(svg));
  EXPECT_EQ(failure(), "");
}

TEST_F(Gnuplot, HasLimits) {
  use("{ ulimit -t; ulimit -v; ulimit -f; ulimit -c; ulimit -Hc; } >" + path("limits") + '\n' +
      std::string(svg));
  EXPECT_EQ(failure({.seconds = 7, .memory = 512U << 20U, .output = 1U << 20U}), "");
  EXPECT_EQ(read_file(path("limits")), "7\n524288\n2048\n0\n0\n");
}

TEST_F(Gnuplot, WithItsUsualLimitsDrawsTheLargestPicture) {
  std::string compared = "plot --order 200";
  for (int i = 1; i <= 5; ++i) {
    const std::string file = path("design" + std::to_string(i));
    veltane("design --format json --order 200 -o " + file);
    compared += (i == 1 ? " --compare " : " ") + file;
  }
  const Outcome outcome = veltane(compared + " --width 4000 -o " + path("picture.png"));
  EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(Gnuplot, ThatTakesTooLongIsEndedWithAllThatItStarted) {
  ASSERT_EQ(mkfifo(path("alive").c_str(), 0600), 0);
  // Both hold the pipe, which ends with the last of them.
  use("exec 9>" + path("alive") + "; echo started >&9; sleep 1000 & sleep 1000\n");
  const pid_t reader = fork();
  if (reader == 0) _exit(run("cat " + path("alive")).out == "started\n" ? 0 : 1);
  EXPECT_EQ(failure({.seconds = 1}), "gnuplot was ended: a picture may take 1 s");
  int status = -1;
  waitpid(reader, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST_F(Gnuplot, ThatComputesForTooLongIsEnded) {
  use("kill -XCPU $$\n");
  EXPECT_EQ(failure({.seconds = 5}), "gnuplot was ended: a picture may take 5 s");
}

TEST_F(Gnuplot, ThatWritesTooMuchIsEnded) {
  use("exec head -c 3000000 /dev/zero\n");
  EXPECT_EQ(failure({.output = 1000000}), "gnuplot was ended: a picture may take 1000000 bytes");
}

TEST_F(Gnuplot, EndsWithTheCommandHoweverThatEnds) {
  for (const char *signal : {"KILL", "TERM", "INT"}) {
    // Job control keeps INT from being ignored in the background.
    use("exec 9>" + path("alive") + "; echo $PPID >&9; exec sleep 1000\n");
    const Outcome outcome =
        run("rm -f " + path("alive") + "; mkfifo " + path("alive") + "; bash -c 'set -m; " +
            VELTANE_COMMAND " plot -o " + path("a.svg") + " & { read -r parent; kill -" + signal +
            " $parent; cat; } <" + path("alive") + "; wait $!' 2>/dev/null; ls -A " + path("."));
    EXPECT_EQ(outcome.out, "alive\nbin\n") << signal;
  }
}

TEST_F(Gnuplot, RunsWhereTheCommandHasNoStreams) {
  use("cat >/dev/null\n" + std::string(svg));
  EXPECT_EQ(run(VELTANE_COMMAND " plot -o " + path("a.svg") + " <&- >&- 2>&-").status, 0);
  EXPECT_EQ(read_file(path("a.svg")), "<svg></svg>\n");
}

// gnuplot beside the command: nothing of it outlives that.

#include "../run_command.h"
#include "../scratch_folder.h"

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

 private:
  std::string path_;
};

}  // namespace

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

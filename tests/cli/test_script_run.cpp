// script/run, in a checkout whose build is replaced: which folder is whose.

#include "run_command.h"
#include "scratch_folder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class ScriptRun : public ScratchFolder {
 protected:
  ScriptRun() {
    namespace fs = std::filesystem;
    for (const char *folder : {"a checkout/script", "a checkout/build/release/bin", "bin", "mine"})
      fs::create_directories(path(folder));
    fs::copy_file(SCRIPT_RUN, path("a checkout/script/run"));
    write("a checkout/script/setup", "#!/bin/sh\n");
    write("bin/cmake", "#!/bin/sh\npwd >>\"" + path("built in") + "\"\n");
    fs::create_symlink(VELTANE_COMMAND, path("a checkout/build/release/bin/veltane"));
    for (const char *program : {"a checkout/script/setup", "bin/cmake"})
      fs::permissions(path(program), fs::perms::owner_all);
  }

  // @param line  with $run for the script
  Outcome in_my_folder(const std::string &line) const {
    return run("cd " + path("mine") + "; PATH=" + path("bin") + ":$PATH; run='" +
               path("a checkout/script/run") + "'; " + line);
  }

  void expect_built_in_the_checkout() const {
    const std::string folder = std::filesystem::canonical(path("a checkout")).string() + '\n';
    EXPECT_EQ(read_file(path("built in")), folder + folder);
    std::filesystem::remove(path("built in"));
  }
};

}  // namespace

TEST_F(ScriptRun, FilesAreThoseOfTheUsersFolder) {
  write("mine/settings.json", R"({"settings": {"order": 3}})");
  write("mine/lines", "{\"order\": 3}\n");
  const std::string text = veltane("design --order 3").out;
  EXPECT_EQ(in_my_folder("\"$run\" design --from settings.json -o out.txt").err, "");
  EXPECT_EQ(read_file(path("mine/out.txt")), text);
  const Outcome batch = in_my_folder("\"$run\" design --batch lines");
  EXPECT_EQ(batch.status, 0) << batch.err;
  EXPECT_THAT(batch.out, HasSubstr("\"order\": 3,"));
}

TEST_F(ScriptRun, BuildsItsOwnCheckoutHoweverItIsCalled) {
  const std::string text = veltane("design").out;
  EXPECT_EQ(in_my_folder("\"$run\"").out, text);
  expect_built_in_the_checkout();
  std::filesystem::create_directory(path("elsewhere"));
  std::filesystem::create_symlink("../a checkout/script/run", path("elsewhere/my run"));
  EXPECT_EQ(in_my_folder("'../elsewhere/my run'").out, text);
  expect_built_in_the_checkout();
  EXPECT_EQ(in_my_folder("cd '../a checkout'; export CDPATH=" + path(".") + ":" +
                         path("a checkout") + "; bash script/run")
                .out,
            text);
  expect_built_in_the_checkout();
}

TEST_F(ScriptRun, TheStatusIsThatOfTheCommand) {
  EXPECT_EQ(in_my_folder("\"$run\" design --order five").status, 2);
  write("bin/cmake", "#!/bin/sh\necho 'no compiler'; exit 1\n");
  const Outcome outcome = in_my_folder("\"$run\"");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "no compiler\nscript/run: the build failed; see above\n");
}

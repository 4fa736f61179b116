// Where `veltane page` finds the page, and what it writes, with a small page in its place.

#include <filesystem>

#include "../run_command.h"
#include "../scratch_folder.h"

using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

constexpr char page[] = "<!doctype html>\n<title>caf\u00e9</title>\n";

// A program in a folder of its own, and another in which it is run.
class Page : public ScratchFolder {
 protected:
  void SetUp() override {
    fs::create_directories(tree() / "bin");
    fs::create_directory(tree() / "lib");
    fs::create_directory(path("here"));
    fs::copy_file(VELTANE_COMMAND, tree() / "bin/veltane");
    fs::create_directory_symlink(LIBRARY_FOLDER, tree() / "lib/veltane");
  }

  // The build tree of a source folder.
  fs::path tree() const { return path("source/build/dev"); }

  void install(const fs::path &file, const std::string &text = page) const {
    fs::create_directories(file.parent_path());
    write(file.lexically_relative(path("")).string(), text);
  }

  Outcome run_page(const std::string &arguments) const {
    return run("cd " + path("here") + " && " + (tree() / "bin/veltane").string() + " page " +
               arguments);
  }

  std::string written(const std::string &name) const { return read_file(path("here/" + name)); }
};

}  // namespace

TEST_F(Page, IsWrittenWhereItIsAskedFor) {
  install(tree() / "share/veltane/veltane.html");
  const Outcome plain = run_page("");
  EXPECT_EQ(plain.status, 0) << plain.err;
  EXPECT_EQ(plain.out, "'veltane.html' is written; any browser opens it: xdg-open veltane.html\n");
  EXPECT_EQ(plain.err, "");
  EXPECT_EQ(written("veltane.html"), page);

  const Outcome named = run_page("-o 'my filters.html'");
  EXPECT_THAT(named.out, HasSubstr("xdg-open 'my filters.html'\n"));
  EXPECT_EQ(written("my filters.html"), page);
}

TEST_F(Page, GoesToStandardOutputAlone) {
  install(tree() / "share/veltane/veltane.html");
  for (const char *output : {"-o -", "-o /dev/stdout", "--output=-"}) {
    const Outcome outcome = run_page(output);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, page) << output;
  }
  EXPECT_TRUE(fs::is_empty(path("here")));
}

TEST_F(Page, TakesThePlaceOfAnother) {
  install(tree() / "share/veltane/veltane.html");
  write("here/veltane.html", std::string(5000, 'x'));
  EXPECT_EQ(run_page("").status, 0);
  EXPECT_EQ(written("veltane.html"), page);
}

TEST_F(Page, IsFoundThroughLinksToTheProgram) {
  install(tree() / "share/veltane/veltane.html");
  fs::create_symlink(tree() / "bin/veltane", path("first"));
  fs::create_symlink("first", path("second"));
  EXPECT_EQ(run(path("second") + " page -o -").out, page);
}

TEST_F(Page, IsFoundBesideABuildTree) {
  install(path("source/build/page/veltane.html"));
  const Outcome installed = run_page("-o -");
  EXPECT_EQ(installed.status, 3) << "it may be anybody's page";
  write("source/build/dev/CMakeCache.txt", "");
  EXPECT_EQ(run_page("-o -").out, page);
  install(tree() / "share/veltane/veltane.html", "its own");
  EXPECT_EQ(run_page("-o -").out, "its own");
}

TEST_F(Page, MayBeMissing) {
  const Outcome outcome = run_page("");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "veltane: the page is missing: script/page builds it, and '" +
                             (fs::canonical(tree()) / "share/veltane/veltane.html").string() +
                             "' is where an installation has it\n");
  EXPECT_TRUE(fs::is_empty(path("here")));
}

TEST_F(Page, IsNotWrittenWhereNothingCanBe) {
  install(tree() / "share/veltane/veltane.html");
  EXPECT_EQ(run_page("-o nowhere/page.html").status, 2);
  const Outcome full = run_page("-o /dev/full");
  EXPECT_EQ(full.status, 3);
  EXPECT_THAT(full.err, HasSubstr("'/dev/full' cannot be written"));
}

TEST_F(Page, TakesNothingElse) {
  install(tree() / "share/veltane/veltane.html");
  for (const char *arguments : {"--order 4", "filter.json", "--module x.so", "-o"}) {
    const Outcome outcome = run_page(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_TRUE(fs::is_empty(path("here"))) << arguments;
  }
}

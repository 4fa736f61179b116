// What becomes of the command when memory runs out, and what it says then. Refusing each of
// its allocations in turn is left to tests/soak.

#include <new>

#include "base/out_of_memory.h"
#include "base/output_file.h"
#include "design/workers.h"
#include "os/leftovers.h"
#include "run_command.h"
#include "scratch_folder.h"

using testing::ExitedWithCode;
using testing::HasSubstr;

namespace {

using Unfinished = ScratchFolder;

// What the command says of a box that publishes nothing and posts a text.
Outcome design_that_posts(const std::string &text) {
  return veltane("design --module " SILENT_MODULE " --units '" + text + "'");
}

// Works through lines. @return the numbers of those whose results arrived
std::vector<std::string> worked(const cli::Workers::Work &work, bool &had_no_memory) {
  std::vector<std::string> results;
  cli::Workers workers(2, work, [](const cli::Line &line, const std::string &how) {
    return cli::Result{cli::Outcome::failed, std::to_string(line.number) + " " + how};
  });
  std::vector<cli::Line> lines(10);
  for (std::size_t i = 0; i < lines.size(); ++i) lines[i].number = i + 1;
  workers.start(lines);
  try {
    while (!workers.idle()) {
      std::vector<pollfd> waiting = workers.waiting();
      poll(waiting.data(), waiting.size(), -1);
      workers.collect([&](const cli::Result &result) { results.push_back(result.text); });
    }
  } catch (const std::bad_alloc &) {
    had_no_memory = true;
  }
  return results;
}

}  // namespace

TEST(Memory, ThatRunsOutEndsTheCommandWithOneSentence) {
  EXPECT_EXIT(cli::end_without_memory(), ExitedWithCode(3), "^veltane: out of memory\n$");
}

TEST(Memory, OfTheDesignIsNoFaultOfTheRequest) {
  const Outcome outcome = design_that_posts("no filter today: out of memory; nothing is new");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: out of memory\n");
}

TEST(Memory, IsNotBlamedForAnotherReason) {
  const Outcome outcome = design_that_posts("the moon is full");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: the moon is full\n");
}

TEST(Memory, IsNotBlamedWhereThereIsNoReason) {
  const Outcome outcome = design_that_posts("nothing");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.err, "veltane: the box published no filter\n");
}

TEST(Memory, OfADesignEndsABatch) {
  const std::string batch = " | " VELTANE_COMMAND " design --batch - --module " SILENT_MODULE;
  const Outcome exhausted = run("echo '{\"units\": \"out of memory\"}'" + batch);
  EXPECT_EQ(exhausted.status, 3);
  EXPECT_EQ(exhausted.err, "veltane: out of memory\n");
  EXPECT_EQ(exhausted.out, "");
  const Outcome other = run("echo '{\"units\": \"the moon is full\"}'" + batch);
  EXPECT_EQ(other.status, 1);
  EXPECT_EQ(other.out, "{\"line\": 1, \"error\": \"the moon is full\"}\n");
}

TEST(Memory, ThatAWorkerDoesNotHaveIsToldByItsParent) {
  bool had_no_memory = false;
  worked(
      [](const cli::Line &line) {
        if (line.number == 7) throw std::bad_alloc();
        return cli::Result{cli::Outcome::designed, std::to_string(line.number)};
      },
      had_no_memory);
  EXPECT_TRUE(had_no_memory);
}

TEST(Memory, IsNotBlamedForAWorkersOtherEnds) {
  for (const int status : {1, 2, 4}) {
    bool had_no_memory = false;
    const auto results = worked(
        [&](const cli::Line &line) {
          if (line.number == 7) _exit(status);
          return cli::Result{cli::Outcome::designed, std::to_string(line.number)};
        },
        had_no_memory);
    EXPECT_FALSE(had_no_memory);
    ASSERT_EQ(results.size(), 10U);
    EXPECT_EQ(results[6], "7 status " + std::to_string(status));
  }
}

// The sanitizers need more address space than anybody grants.
#ifndef __SANITIZE_ADDRESS__
TEST(Memory, ForTheModuleIsNoFaultOfTheRequest) {
  // From where the dynamic loader fails to where all works, in steps of a third of the module.
  const Outcome outcome =
      run("for kib in $(seq 4000 100 14000); do"
          " (ulimit -v $kib && exec " VELTANE_COMMAND
          " design) >/dev/null 2>&1;"
          " echo $?; done | sort | uniq");
  EXPECT_EQ(outcome.out, "0\n127\n3\n");
}
#endif

TEST_F(Unfinished, FilesGoWithoutMemory) {
  std::string file = write("unfinished", "half of");
  EXPECT_EXIT(
      {
        os::Leftover leftover;
        leftover.take(std::move(file));
        cli::end_without_memory();
      },
      ExitedWithCode(3), "out of memory");
  EXPECT_THAT(names(), testing::IsEmpty());
}

TEST_F(Unfinished, FilesThatHaveTheirPlaceStay) {
  std::string file = write("finished", "whole");
  EXPECT_EXIT(
      {
        os::Leftover leftover;
        leftover.take(std::move(file));
        leftover.release();
        cli::end_without_memory();
      },
      ExitedWithCode(3), "out of memory");
  EXPECT_THAT(names(), testing::ElementsAre("finished"));
}

TEST_F(Unfinished, AnOutputThatIsWrittenStays) {
  const std::string file = path("output");
  EXPECT_EXIT(
      {
        cli::write_output(file, "whole");
        // The name that it had before is free for others.
        write(".veltane-" + std::to_string(getpid()) + "-0", "another's");
        cli::end_without_memory();
      },
      ExitedWithCode(3), "out of memory");
  EXPECT_THAT(names(), testing::ElementsAre(testing::StartsWith(".veltane-"), "output"));
  EXPECT_EQ(read_file(file), "whole");
}

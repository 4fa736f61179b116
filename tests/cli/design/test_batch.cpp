// Many designs in one go.

#include <poll.h>
#include <signal.h>

#include <array>
#include <nlohmann/json.hpp>
#include <sstream>

#include "../run_command.h"
#include "../scratch_folder.h"
#include "base/output_file.h"
#include "design/workers.h"
#include "os/descriptor.h"

using Json = nlohmann::ordered_json;
using testing::HasSubstr;
using testing::MatchesRegex;

namespace {

class Batch : public ScratchFolder {
 protected:
  // Runs a batch over the lines. @return its results
  std::vector<Json> results(const std::string &lines, const std::string &options = "",
                            int status = 0) const {
    const Outcome outcome = veltane("design --batch " + write("lines", lines) + ' ' + options);
    EXPECT_EQ(outcome.status, status) << outcome.err;
    return parsed(outcome.out);
  }

  static std::vector<Json> parsed(const std::string &text) {
    std::vector<Json> list;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) list.push_back(Json::parse(line));
    return list;
  }
};

std::vector<cli::Line> numbered(std::size_t first, std::size_t count) {
  std::vector<cli::Line> lines(count);
  for (std::size_t i = 0; i < count; ++i) lines[i].number = first + i;
  return lines;
}

// Works through lines 1 to `count`. @return the results, '!' before those that failed
std::vector<std::string> worked(std::size_t processes, std::size_t count,
                                const cli::Workers::Work &work) {
  std::vector<std::string> results;
  cli::Workers workers(processes, work, [](const cli::Line &line, const std::string &how) {
    return cli::Result{cli::Outcome::failed, std::to_string(line.number) + " " + how};
  });
  std::size_t next = 1;
  while (next <= count || !workers.idle()) {
    while (next <= count && workers.room() > 0) {
      const std::size_t size = std::min(workers.room(), count + 1 - next);
      workers.start(numbered(next, size));
      next += size;
    }
    std::vector<pollfd> waiting = workers.waiting();
    poll(waiting.data(), waiting.size(), -1);
    workers.collect([&](const cli::Result &result) {
      results.push_back((result.outcome == cli::Outcome::designed ? "" : "!") + result.text);
    });
  }
  return results;
}

}  // namespace

TEST_F(Batch, EachResultIsTheDesignOfItsOwn) {
  const auto lines = results(
      "{\"order\": 4, \"topology\": \"butterworth\"}\n"
      "{\"response\": \"bandpass\", \"frequency\": [300, 3400], \"tf-output\": \"on\"}\n"
      "{\"units\": \"normalized\", \"frequency\": 0.3, \"zpk_output\": false}\n"
      "{}\n");
  const char *options[] = {"--order 4 --topology butterworth --name u1",
                           "--response bandpass --frequency 300 3400 --tf-output on --name u2",
                           "--units normalized --frequency 0.3 --zpk-output off --name u3",
                           "--name u4"};
  ASSERT_EQ(lines.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) {
    const Json single = Json::parse(veltane(std::string("design --format json ") + options[i]).out);
    EXPECT_EQ(lines[i]["line"], i + 1);
    EXPECT_EQ(lines[i]["veltane"], single["veltane"]);
    EXPECT_EQ(lines[i]["settings"], single["settings"]);
    EXPECT_EQ(lines[i]["dictionary"], single["dictionary"]);
  }
}

TEST_F(Batch, ResultsComeInTheOrderOfTheLines) {
  std::string lines;
  for (int i = 0; i < 3000; ++i)
    lines += "{\"order\": " + std::to_string(i % 50 == 0 ? 100 : 2 + i % 7) +
             ", \"frequency\": " + std::to_string(100 + i) + "}\n";
  const auto all = results(lines);
  ASSERT_EQ(all.size(), 3000U);
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i]["line"], i + 1);
    EXPECT_EQ(all[i]["settings"]["frequency"][0], 100.0 + static_cast<double>(i));
  }
}

TEST_F(Batch, ALineThatIsWrongDoesNotStopTheOthers) {
  const Outcome outcome =
      run("printf '{\"order\": 3}\\n\\n{\"order\": \"five\"}\\n[1]\\n"
          "{\"ordr\": 3}\\n{\"order\": 4}' | " VELTANE_COMMAND " design --batch -");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "veltane: 4 of 6 lines failed; see their results\n");
  const auto lines = parsed(outcome.out);
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines[0]["settings"]["order"], 3);
  EXPECT_THAT(lines[1].dump(), HasSubstr("the line is not JSON"));
  EXPECT_EQ(lines[2], Json({{"line", 3}, {"error", "'order' takes an integer, not 'five'"}}));
  EXPECT_THAT(lines[3].dump(), HasSubstr("the line is not an object of settings"));
  EXPECT_EQ(lines[4], Json({{"line", 5}, {"error", "there is no setting 'ordr'"}}));
  EXPECT_EQ(lines[5]["settings"]["order"], 4);
}

TEST_F(Batch, TellsWhatWasClippedInTheResult) {
  const auto lines = results("{\"order\": 500}\n{\"order\": 5}\n");
  EXPECT_EQ(lines[0]["remarks"],
            Json({"order takes whole numbers from 2 to 200: 200 is used, not 500"}));
  EXPECT_FALSE(lines[1].contains("remarks"));
}

TEST_F(Batch, SettingsBesideItHoldForLinesWithoutTheirOwn) {
  const auto lines = results("{\"order\": 3}\n{}\n", "--order 9 --topology butterworth");
  EXPECT_EQ(lines[0]["settings"]["order"], 3);
  EXPECT_EQ(lines[1]["settings"]["order"], 9);
  EXPECT_EQ(lines[0]["settings"]["topology"], "butterworth");
}

TEST_F(Batch, PartsOfAFileGiveTheResultsOfTheWhole) {
  const std::string first = "{\"order\": 3}\n{\"order\": \"five\"}\n";
  const std::string second = "{}\n{\"name\": \"mine\"}\n{\"ordr\": 3}\n";
  const Outcome whole = veltane("design --batch " + write("lines", first + second));
  const Outcome begin = veltane("design --batch " + write("1", first) + " --first-line 1");
  const Outcome rest = veltane("design --batch " + write("2", second) + " --first-line 3");
  EXPECT_EQ(begin.out + rest.out, whole.out);
  EXPECT_EQ(parsed(rest.out)[0]["settings"]["name"], "u3");
  EXPECT_EQ(rest.err, "veltane: 1 of 3 lines failed; see its result\n");
}

TEST_F(Batch, CountsTheLinesOfABatchOnly) {
  const Outcome outcome = veltane("design --first-line 3");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "veltane: --first-line counts the lines of --batch: give that as well\n");
}

TEST_F(Batch, TheFirstLineHasAWholeNumber) {
  const auto batch = "design --batch " + write("lines", "{}") + " --first-line ";
  for (const char *bad :
       {"0", "-1", "1.5", "2x", "x", "1000000000000001", "99999999999999999999999"}) {
    const Outcome outcome = veltane(batch + bad);
    EXPECT_EQ(outcome.status, 2) << bad;
    EXPECT_THAT(outcome.err,
                HasSubstr("--first-line takes a whole number from 1 to 1000000000000000, not '"))
        << bad;
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_EQ(parsed(veltane(batch + "1000000000000000").out)[0]["line"], 1000000000000000);
}

TEST_F(Batch, AnEmptyFileHasNoResults) { EXPECT_TRUE(results("").empty()); }

TEST_F(Batch, ALineThatIsTooLongIsOneErrorAndTheNextIsRead) {
  const auto lines =
      results("{\"name\": \"" + std::string(2000000, 'x') + "\"}\n{\"order\": 3}\n", "", 1);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0]["error"], "the line is longer than 1048576 bytes");
  EXPECT_EQ(lines[1]["settings"]["order"], 3);
}

TEST_F(Batch, AResultIsASavedDesign) {
  const auto lines = results("{\"order\": 3}\n");
  const auto file = write("saved.json", lines[0].dump());
  EXPECT_EQ(veltane("design --from " + file).out, veltane("design --order 3").out);
}

TEST_F(Batch, ResultsArriveWhileTheInputIsOpen) {
  const Outcome outcome =
      run("{ echo '{}'; for i in $(seq 100); do [ -s " + path("out") +
          " ] && break; sleep 0.05; "
          "done; wc -l <" +
          path("out") + " >&2; } | " VELTANE_COMMAND " design --batch - >" + path("out"));
  EXPECT_EQ(outcome.err, "1\n") << "the input was open until there was a result";
}

TEST_F(Batch, ATerminalIsToldHowFarItIs) {
  const auto file = write("slow", "{ echo '{}'; sleep 0.4; echo '{}'; } | " VELTANE_COMMAND
                                  " design --batch - -o " +
                                      path("out"));
  const Outcome outcome = run("script -qec 'sh " + file + "' /dev/null");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, MatchesRegex("\r[12] lines, [0-9]+ a second +(\r.*)?\r?\n"));
  EXPECT_EQ(run("sh " + file).err, "") << "no progress is shown without a terminal";
}

TEST_F(Batch, PrintsJsonOnly) {
  const Outcome outcome = veltane("design --format text --batch " + write("lines", "{}"));
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "veltane: --batch writes JSON: omit --format, or give json\n");
}

TEST(Workers, AProcessThatEndsCostsItsLineOnly) {
  const auto results = worked(2, 200, [](const cli::Line &line) {
    if (line.number == 7 || line.number == 8) raise(SIGKILL);
    if (line.number == 150) _exit(5);
    return cli::Result{cli::Outcome::designed, std::to_string(line.number)};
  });
  ASSERT_EQ(results.size(), 200U);
  for (std::size_t i = 1; i <= 200; ++i) {
    if (i == 7 || i == 8)
      EXPECT_EQ(results[i - 1], "!" + std::to_string(i) + " signal 9, Killed");
    else if (i == 150)
      EXPECT_EQ(results[i - 1], "!150 status 5");
    else
      EXPECT_EQ(results[i - 1], std::to_string(i));
  }
}

TEST(Workers, LargeResultsOfManyProcessesStayInOrder) {
  const auto results = worked(4, 300, [](const cli::Line &line) {
    return cli::Result{
        line.number % 3 != 0 ? cli::Outcome::designed : cli::Outcome::failed,
        std::string(line.number % 2 == 0 ? 300000 : 10, 'x') + std::to_string(line.number)};
  });
  ASSERT_EQ(results.size(), 300U);
  for (std::size_t i = 1; i <= 300; ++i) {
    EXPECT_TRUE(results[i - 1].ends_with('x' + std::to_string(i)));
    EXPECT_EQ(results[i - 1].front() == '!', i % 3 == 0);
  }
}

TEST(Workers, ThatAreGivenUpEnd) {
  {
    cli::Workers workers(
        2,
        [](const cli::Line &) {
          for (;;) pause();
          return cli::Result{};
        },
        [](const cli::Line &, const std::string &) { return cli::Result{}; });
    workers.start(numbered(1, 5));
  }
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
  EXPECT_EQ(errno, ECHILD);
}

TEST(Workers, EndWithTheCommandHoweverThatEnds) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const pid_t command = fork();
  if (command == 0) {
    cli::Workers workers(
        1,
        [&](const cli::Line &) {
          os::write_all(ends[1], "x");
          for (;;) pause();
          return cli::Result{};
        },
        [](const cli::Line &, const std::string &) { return cli::Result{}; });
    workers.start(numbered(1, 1));
    for (;;) pause();
  }
  close(ends[1]);
  char seen = 0;
  EXPECT_EQ(read(ends[0], &seen, 1), 1);
  kill(command, SIGKILL);
  waitpid(command, nullptr, 0);
  // The end of the pipe is that of its last holder.
  pollfd pipe_end{ends[0], POLLIN, 0};
  EXPECT_EQ(poll(&pipe_end, 1, 60000), 1);
  EXPECT_EQ(pipe_end.revents & POLLIN, 0);
  EXPECT_NE(pipe_end.revents & POLLHUP, 0);
  close(ends[0]);
}

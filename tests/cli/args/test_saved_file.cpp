// Saved designs as the filter of a subcommand.

#include "../run_command.h"
#include "../scratch_folder.h"

namespace {

class SavedFile : public ScratchFolder {
 protected:
  // A design whose file was changed by hand.
  void save_changed(const std::string &name, const std::string &old, const std::string &by) const {
    std::string text = veltane("design --order 6 --format json").out;
    const std::size_t at = text.find(old);
    ASSERT_NE(at, std::string::npos);
    write(name, text.replace(at, old.size(), by));
  }

  Outcome run_here(const std::string &arguments) const {
    return run("cd " + path("") + " && " + VELTANE_COMMAND + ' ' + arguments);
  }
};

constexpr const char *readers[] = {"response odd.json --at 100", "plot odd.json -o odd.svg",
                                   "plot --compare odd.json -o odd.svg",
                                   "apply odd.json signal.csv"};

}  // namespace

TEST_F(SavedFile, EverySubcommandSaysWhatBecameOfItsSettings) {
  save_changed("odd.json", "\"order\": 6", "\"order\": 600");
  write("signal.csv", "1\n0\n0\n");
  for (const char *reader : readers) {
    const Outcome outcome = run_here(reader);
    EXPECT_EQ(outcome.status, 0) << reader;
    EXPECT_EQ(
        outcome.err,
        "veltane: 'odd.json': order takes whole numbers from 2 to 200: 200 is used, not 600\n")
        << reader;
  }
}

TEST_F(SavedFile, EverySubcommandRefusesOneThatIsNoFilter) {
  save_changed("odd.json", "\"cascade\": [", "\"cascade\": [1.0, ");
  write("signal.csv", "1\n0\n0\n");
  for (const char *reader : readers) {
    const Outcome outcome = run_here(reader);
    EXPECT_EQ(outcome.status, 2) << reader << outcome.out;
    EXPECT_THAT(outcome.err, testing::StartsWith("veltane: 'odd.json'")) << reader;
  }
}

// Audio: who hears of it, and when.

#include "host_test.h"

namespace tests {
namespace {

class Audio : public HostTest {
 protected:
  void SetUp() override { host.load(module("meter")); }
};

TEST_F(Audio, IsToldToSignalBoxesWhenItIsSwitchedOn) {
  const Box first = host.make("meter");
  const Box second = host.make("meter");
  EXPECT_EQ(host.get(first, "times"), Values{0});
  host.audio_on();
  for (const Box box : {first, second}) {
    EXPECT_EQ(host.get(box, "times"), Values{1});
    EXPECT_EQ(host.get(box, "samplerate"), Values{48000.0});
    EXPECT_GT(std::get<t_long>(host.get(box, "vector").at(0)), 0);
  }
}

TEST_F(Audio, RunsAtTheRateThatIsAskedFor) {
  const Box box = host.make("meter");
  host.audio_on(44100.5);
  EXPECT_EQ(host.get(box, "samplerate"), Values{44100.5});
  EXPECT_EQ(sys_getsr(), 44100.5F);
  host.audio_on(96000);
  EXPECT_EQ(host.get(box, "samplerate"), Values{96000.0});
  EXPECT_EQ(host.get(box, "times"), Values{2});
}

TEST_F(Audio, IsToldToBoxesThatAreMadeLater) {
  host.audio_on(44100);
  const Box box = host.make("meter");
  EXPECT_EQ(host.get(box, "times"), Values{1});
  EXPECT_EQ(host.get(box, "samplerate"), Values{44100.0});
}

TEST_F(Audio, IsToldToInstancesThatModulesMake) {
  host.audio_on(44100);
  void *made = object_new_typed(gensym("box"), gensym("meter"), 0, nullptr);
  EXPECT_EQ(host.get(static_cast<Box>(made), "times"), Values{1});
  object_free(made);
}

TEST_F(Audio, IsNotToldToBoxesThatTakeNoSignals) {
  const Box before = host.make("deaf");
  host.audio_on();
  const Box after = host.make("deaf");
  EXPECT_EQ(host.get(before, "times"), Values{0});
  EXPECT_EQ(host.get(after, "times"), Values{0});
}

TEST_F(Audio, IsSwitchedOff) {
  host.audio_on();
  host.audio_off();
  EXPECT_EQ(host.get(host.make("meter"), "times"), Values{0});
}

TEST_F(Audio, HasARateBeforeItIsOn) {
  EXPECT_EQ(sys_getsr(), 48000.0F);
  const Box box = host.make("meter");
  host.set_samplerate(22050);
  EXPECT_EQ(sys_getsr(), 22050.0F);
  EXPECT_EQ(host.get(box, "times"), Values{0}) << "nothing is sent";
}

TEST_F(Audio, IsNotToldToABoxThatWasFreedMeanwhile) {
  const Box first = host.make("meter");
  const Box second = host.make("meter");
  host.listen(first, 0, [&](const std::string &, const Values &) { host.free(second); });
  host.audio_on();
  EXPECT_THAT(host.boxes(), ElementsAre(first));
  EXPECT_THAT(inspector.violations(), IsEmpty());
}

TEST_F(Audio, GivesSignalBoxesTheMessageSignal) {
  const Box box = host.make("meter");
  EXPECT_THAT(refusal([&] { host.send(box, "signal"); }), HasSubstr("only the host"));
  EXPECT_THAT(refusal([&] { host.send(host.make("deaf"), "signal"); }),
              HasSubstr("does not understand 'signal'"));
}

TEST_F(Audio, MayMakeABoxFreeItself) {
  const Watchdog watchdog("closing after a box freed itself while it was made", 10);
  host.load(module("bad_constructors"));
  host.audio_on();
  EXPECT_THAT(refusal([&] { host.make("frees_itself_from_dsp64"); }),
              HasSubstr("could not make a box"));
  EXPECT_THAT(host.boxes(), IsEmpty());
  EXPECT_THAT(host.close(), IsEmpty());
}

}  // namespace
}  // namespace tests

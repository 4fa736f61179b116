// The life of a box: how it is built, named, looked at and freed.

#include "box_test.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(BoxTest, IsBuiltInThisOrder) {
  inspector.start_trace();
  host.make("veltane");
  const std::vector<std::string> calls = texts(inspector.stop_trace());
  const std::string name = host.dictionary_names().at(0);
  EXPECT_THAT(calls, ElementsAre("object_alloc()", "sys_getsr()", "qelem_new()",
                                 "object_attr_setdisabled(passband_ripple, 1)", "dictionary_new()",
                                 "outlet_new(dictionary)", "object_attach_byptr_register(box)",
                                 "attr_args_process(0)", "symbol_unique()",
                                 "object_attr_setsym(name, " + name + ")", "atom_getsym()",
                                 "dictobj_register(" + name + ")", "object_method_imp(getname)"));
}

TEST_F(BoxTest, StartsWithTheseSettings) {
  const Box box = make();
  EXPECT_EQ(text(box, "topology"), "chebyshev-2");
  EXPECT_EQ(text(box, "response"), "lowpass");
  EXPECT_EQ(number(box, "order"), 5);
  EXPECT_EQ(text(box, "units"), "hertz");
  EXPECT_EQ(host.get(box, "frequency"), Values{48000 * 0.0625});
  EXPECT_EQ(number(box, "samplerate"), 0);
  EXPECT_EQ(number(box, "passband_ripple"), 0.5);
  EXPECT_EQ(number(box, "stopband_attenuation"), 96.0);
  EXPECT_EQ(number(box, "zpk_output"), 1);
  EXPECT_EQ(number(box, "sos_output"), 1);
  EXPECT_EQ(number(box, "tf_output"), 0);
  EXPECT_TRUE(host.disabled(box, "passband_ripple"));
  EXPECT_FALSE(host.disabled(box, "stopband_attenuation"));
}

TEST_F(BoxTest, PublishesNothingBeforeTheFirstDesign) {
  const Box box = make();
  EXPECT_THAT(host.dictionary_names(), ElementsAre(text(box, "name")));
  EXPECT_THAT(published(box), IsEmpty());
  EXPECT_EQ(host.run_deferred(), 0U);
  EXPECT_THAT(sent, IsEmpty());
}

TEST_F(BoxTest, TakesItsCutoffsFromTheAudioRate) {
  host.set_samplerate(44100.7);
  EXPECT_EQ(host.get(make(), "frequency"), Values{44100 * 0.0625});
}

TEST_F(BoxTest, TwoBoxesHaveDifferentNames) {
  EXPECT_NE(text(make(), "name"), text(make(), "name"));
}

TEST_F(BoxTest, ArgumentsAreSettings) {
  const Box box = make("order: 4 response: bandpass frequency: 300 3400 name: voice");
  EXPECT_EQ(number(box, "order"), 4);
  EXPECT_EQ(host.get(box, "frequency"), (Values{300.0, 3400.0}));
  EXPECT_THAT(host.dictionary_names(), ElementsAre("voice"));
  EXPECT_EQ(host.run_deferred(), 0U) << "building a box schedules no design";
}

TEST_F(BoxTest, ClipsOrderRippleAndAttenuation) {
  const Box box = make();
  const auto stored = [&](const char *attribute, patchbay::Value value) {
    host.set(box, attribute, {value});
    return number(box, attribute);
  };
  EXPECT_EQ(stored("order", t_long{1}), 2);
  EXPECT_EQ(stored("order", t_long{500}), 200);
  EXPECT_EQ(stored("order", t_long{64}), 64);
  EXPECT_EQ(stored("passband_ripple", 0.01), 0.1);
  EXPECT_EQ(stored("passband_ripple", 50.0), 48.0);
  EXPECT_EQ(stored("stopband_attenuation", 300.0), 240.0);
  EXPECT_EQ(stored("stopband_attenuation", 1.0), 6.0);
}

// --- names

TEST_F(BoxTest, SettingTheSameNameChangesNothing) {
  const Box box = make("name: here");
  host.send(box, "bang");
  inspector.start_trace();
  host.set(box, "name", {std::string("here")});
  EXPECT_THAT(texts(inspector.stop_trace()),
              ElementsAre("atom_getsym()", "object_method_imp(getname)"));
  EXPECT_THAT(published(box), testing::Not(IsEmpty()));
}

TEST_F(BoxTest, RenamingMovesTheDictionary) {
  const Box box = make("name: here");
  host.send(box, "bang");
  host.set(box, "name", {std::string("there")});
  EXPECT_THAT(host.dictionary_names(), ElementsAre("there"));
  EXPECT_THAT(published(box), testing::Not(IsEmpty()));
}

TEST_F(BoxTest, ATakenNameIsReplacedAndTheBoxKnows) {
  make("name: taken");
  const Box second = make("name: taken");
  EXPECT_NE(text(second, "name"), "taken");
  host.send(second, "bang");
  EXPECT_THAT(sent, ElementsAre("dictionary " + text(second, "name")));
  EXPECT_THAT(published(second), testing::Not(IsEmpty()));
}

TEST_F(BoxTest, AFailedRegistrationIsPosted) {
  const Box box = make("name: here");
  inspector.fail("dictobj_register");
  host.set(box, "name", {std::string("there")});
  EXPECT_THAT(posted(), ElementsAre("could not create dictionary named there"));
  EXPECT_EQ(host.posts().at(0).box, box);
  EXPECT_EQ(text(box, "name"), "there");
}

TEST_F(BoxTest, WithoutADictionaryTheSameNameIsPostedAgain) {
  const Box box = make("name: here");
  inspector.fail("dictobj_register");
  host.set(box, "name", {std::string("there")});
  host.set(box, "name", {std::string("there")});
  EXPECT_THAT(posted(), ElementsAre("could not create dictionary named there",
                                    "could not create dictionary named there"));
}

TEST_F(BoxTest, WithoutADictionaryBangDesignsNothingAndSaysSo) {
  const Box box = make("name: here");
  inspector.fail("dictobj_register");
  host.set(box, "name", {std::string("there")});
  host.send(box, "bang");
  EXPECT_EQ(posted().back(), "there is no dictionary to publish a filter in");
  EXPECT_THAT(sent, IsEmpty());
}

// The user asked for this name, and would not look under another.
TEST_F(BoxTest, ANameThatFailsWhileTheBoxIsMadeIsNotReplaced) {
  inspector.fail("dictobj_register");
  inspector.start_trace();
  const Box box = make("name: wanted");
  const std::vector<std::string> calls = texts(inspector.stop_trace());
  EXPECT_THAT(calls, testing::Not(testing::Contains("symbol_unique()")));
  EXPECT_THAT(calls, testing::Contains("dictobj_register(wanted)").Times(1));
  EXPECT_EQ(text(box, "name"), "wanted");
  EXPECT_THAT(posted(), ElementsAre("could not create dictionary named wanted"));
  EXPECT_THAT(host.dictionary_names(), IsEmpty());
}

TEST_F(BoxTest, AFreeNameBringsADictionaryBack) {
  const Box box = make("name: here");
  inspector.fail("dictobj_register");
  host.set(box, "name", {std::string("there")});
  host.set(box, "name", {std::string("elsewhere")});
  host.send(box, "bang");
  EXPECT_THAT(sent, ElementsAre("dictionary elsewhere"));
  EXPECT_THAT(published(box), testing::Not(IsEmpty()));
}

// --- gestures

TEST_F(BoxTest, ADoubleClickShowsTheDictionary) {
  const Box box = make("name: shown");
  host.send(box, "bang");
  host.double_click(box);
  EXPECT_THAT(printed.str(), testing::HasSubstr("schema : veltane"));
  EXPECT_THAT(printed.str(), testing::HasSubstr("gain : "));
}

TEST_F(BoxTest, ASecondDoubleClickFreesTheFirstViewer) {
  const Box box = make();
  host.double_click(box);
  const std::size_t with_one = inspector.leaks().size();
  host.double_click(box);
  EXPECT_EQ(inspector.leaks().size(), with_one);
}

TEST_F(BoxTest, ADoubleClickThatFailsKeepsTheEarlierViewer) {
  const Box box = make();
  host.double_click(box);
  const std::vector<std::string> with_one = inspector.leaks();
  inspector.fail("object_new_typed");
  inspector.start_trace();
  host.double_click(box);
  EXPECT_THAT(texts(inspector.stop_trace()),
              ElementsAre(testing::StartsWith("atom_setsym("), "object_new_typed(box, dict)"));
  EXPECT_EQ(inspector.leaks(), with_one);
  inspector.start_trace();
  host.free(box);
  EXPECT_THAT(texts(inspector.stop_trace()),
              ElementsAre("qelem_free()", "object_free()", "object_free()"));
}

TEST_F(BoxTest, ADoubleClickWithoutADictionaryOpensNothing) {
  const Box box = make("name: here");
  inspector.fail("dictobj_register");
  host.set(box, "name", {std::string("there")});
  inspector.start_trace();
  host.double_click(box);
  EXPECT_THAT(texts(inspector.stop_trace()), IsEmpty());
  EXPECT_EQ(printed.str(), "");
}

TEST_F(BoxTest, AClosedViewerIsNoReasonToDesign) {
  const Box box = make();
  host.double_click(box);
  host.notify(box, "editor_closed");
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(BoxTest, AssistExplainsInletAndOutlet) {
  const Box box = make();
  EXPECT_EQ(host.assist(box, ASSIST_INLET, 0), "bang generates filter responses");
  EXPECT_EQ(host.assist(box, ASSIST_OUTLET, 0), "filter coefficients");
  EXPECT_EQ(host.assist(box, ASSIST_OUTLET, 1), "");
}

TEST_F(BoxTest, AssistTakesEveryInletForTheFirstAndAllElseForOutlets) {
  const Box box = make();
  EXPECT_EQ(host.assist(box, ASSIST_INLET, 1), "bang generates filter responses");
  EXPECT_EQ(host.assist(box, ASSIST_INLET, -1), "bang generates filter responses");
  for (const t_long io : {-1, 0, 3}) {
    EXPECT_EQ(host.assist(box, io, 0), "filter coefficients") << io;
    EXPECT_EQ(host.assist(box, io, 1), "") << io;
    EXPECT_EQ(host.assist(box, io, -1), "") << io;
  }
}

TEST_F(BoxTest, IsFreedInThisOrder) {
  const Box box = make();
  host.double_click(box);
  inspector.start_trace();
  host.free(box);
  EXPECT_THAT(texts(inspector.stop_trace()),
              ElementsAre("qelem_free()", "object_free()", "object_free()"));
  EXPECT_THAT(inspector.leaks(), IsEmpty());
  EXPECT_THAT(host.dictionary_names(), IsEmpty());
}

TEST_F(BoxTest, AFreedBoxDesignsNoMore) {
  const Box box = make();
  host.set(box, "order", {t_long{8}});
  host.free(box);
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(BoxTest, WithoutMemoryThereIsNoBox) {
  inspector.start_trace();
  inspector.fail("object_alloc");
  EXPECT_THROW(host.make("veltane"), patchbay::Error);
  EXPECT_THAT(texts(inspector.stop_trace()), ElementsAre("object_alloc()"));
}

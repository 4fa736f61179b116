// Notices: what clients hear of the instances they are attached to.

#include "host_test.h"

namespace tests {
namespace {

class Notices : public HostTest {
 protected:
  // Attaches under a namespace and writes down what the client reports.
  Box client_of(Box sender, const std::string &arguments = "") {
    const Box client = observer(arguments);
    EXPECT_EQ(object_attach_byptr_register(client, sender, gensym("watched")), RESULT_OK);
    listen(client);
    return client;
  }

  const std::string begin = "begin watched attr_modified ";
  const std::string end = "end watched attr_modified ";
};

TEST_F(Notices, ComeAfterEachChange) {
  const Box box = counter();
  client_of(box);
  host.set(box, "gain", {3});
  host.send(box, "step", {4});
  EXPECT_THAT(heard, ElementsAre(begin + "gain", end + "gain", begin + "step", end + "step"));
}

TEST_F(Notices, ComeAfterChangesByModules) {
  const Box box = counter();
  client_of(box);
  const double value = 2.0;
  object_attr_setdouble_array(box, gensym("limits"), 1, &value);
  object_attr_setsym(box, gensym("unit"), gensym("Hz"));
  const t_atom arguments[] = {atom("total:"), atom(t_long{1})};
  attr_args_process(box, 2, arguments);
  EXPECT_THAT(heard, ElementsAre(begin + "limits", end + "limits", begin + "unit", end + "unit",
                                 begin + "total", end + "total"));
}

TEST_F(Notices, ComeWhenTheValueIsThere) {
  const Box box = counter();
  const Box client = observer();
  object_attach_byptr_register(client, box, gensym("watched"));
  Values seen;
  host.listen(client, 0, [&](const std::string &message, const Values &) {
    if (message == "begin") seen = host.get(box, "even");
  });
  host.set(box, "even", {7});
  EXPECT_EQ(seen, Values{6});
}

TEST_F(Notices, DoNotComeWhenNothingWasSet) {
  const Box box = counter();
  client_of(box);
  EXPECT_THAT(refusal([&] { host.set(box, "total", {"many"}); }), HasSubstr("many"));
  object_attr_setsym(box, gensym("colour"), gensym("red"));
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Notices, GoToAnInstanceThatIsItsOwnClient) {
  const Box box = counter();
  listen(box, 2);
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, ElementsAre("attr_modified box gain itself"));
}

TEST_F(Notices, GoToEachClientOnceInTheOrderOfAttaching) {
  const Box box = counter();
  const Box first = client_of(box);
  client_of(box);
  EXPECT_EQ(object_attach_byptr_register(first, box, gensym("again")), RESULT_OK);
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, ElementsAre(begin + "gain", end + "gain", begin + "gain", end + "gain"));
}

TEST_F(Notices, AreOnlyForTheClientsOfTheSender) {
  const Box box = counter();
  client_of(box);
  host.set(counter(), "gain", {3});
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Notices, AreDeliveredAtOnceWhenNested) {
  const Box box = counter();
  client_of(box, "answers: 2");
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, ElementsAre(begin + "gain", begin + "step", begin + "step", end + "step",
                                 end + "step", end + "gain"));
  EXPECT_EQ(host.get(box, "step"), Values{1}) << "the innermost answer comes last";
}

TEST_F(Notices, EndWithTheClient) {
  const Box box = counter();
  const Box client = client_of(box);
  host.free(client);
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, IsEmpty());
}

// A new instance may lie where a freed client lay; it never attached.
TEST_F(Notices, DoNotComeToWhoeverTakesThePlaceOfAClient) {
  const Box box = counter();
  std::vector<Box> clients;
  for (int i = 0; i < 20; ++i) clients.push_back(client_of(box));
  const std::vector<Box> places = clients;
  for (const Box client : clients) host.free(client);
  bool taken = false;
  for (int i = 0; i < 20; ++i) {
    const Box newcomer = observer();
    listen(newcomer);
    taken = taken || std::find(places.begin(), places.end(), newcomer) != places.end();
  }
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, IsEmpty());
  if (!taken) GTEST_SKIP() << "the allocator holds freed memory back";
}

TEST_F(Notices, EndWithTheSender) {
  const Box box = counter();
  const Box client = client_of(box);
  host.free(box);
  host.set(counter(), "gain", {3});  // perhaps in the same place
  EXPECT_THAT(heard, IsEmpty());
  EXPECT_THAT(host.boxes(), testing::Contains(client));
}

TEST_F(Notices, EndWithTheSenderForClientsThatHaveNotHeardYet) {
  const Box box = counter();
  const Box first = observer();
  object_attach_byptr_register(first, box, gensym("watched"));
  client_of(box);
  host.listen(first, 0, [&](const std::string &message, const Values &) {
    if (message != "begin") return;
    host.free(box);
    for (int i = 0; i < 5000; ++i) sysmem_freeptr(sysmem_newptr(8));
  });
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Notices, DoNotReachAClientThatAnotherHasFreed) {
  const Box box = counter();
  const Box first = observer();
  object_attach_byptr_register(first, box, gensym("watched"));
  const Box second = client_of(box);
  host.listen(first, 0, [&](const std::string &message, const Values &) {
    if (message == "begin") host.free(second);
  });
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, IsEmpty());
}

// Something else may lie where the freed client lay.
TEST_F(Notices, DoNotReachWhatTookThePlaceOfAFreedClient) {
  const Box box = counter();
  const Box first = observer();
  object_attach_byptr_register(first, box, gensym("watched"));
  const Box second = client_of(box);
  std::vector<void *> blocks;
  const void *place = second;
  host.listen(first, 0, [&](const std::string &message, const Values &) {
    if (message != "begin") return;
    host.free(second);
    for (int i = 0; i < 16; ++i) blocks.push_back(sysmem_newptr(32));  // the client's size
  });
  host.set(box, "gain", {3});
  EXPECT_THAT(heard, IsEmpty());
  const bool taken = std::find(blocks.begin(), blocks.end(), place) != blocks.end();
  for (void *block : blocks) sysmem_freeptr(block);
  if (!taken) GTEST_SKIP() << "the allocator holds freed memory back";
}

TEST_F(Notices, OfOtherThingsCarryNoData) {
  const Box box = counter();
  client_of(box);
  host.notify(box, "editor_closed");
  EXPECT_THAT(heard, ElementsAre("begin watched editor_closed nothing",
                                 "end watched editor_closed nothing"));
}

TEST_F(Notices, NeedAClientThatUnderstandsThem) {
  const Box box = counter();
  const Box viewer = host.make("dict x");
  EXPECT_EQ(object_attach_byptr_register(viewer, box, gensym("watched")), RESULT_FAILED);
  EXPECT_EQ(object_attach_byptr_register(box, viewer, gensym("watched")), RESULT_OK);
  listen(box, 2);
  host.notify(viewer, "editor_closed");
  EXPECT_THAT(heard, ElementsAre("editor_closed watched nothing another"));
}

TEST_F(Notices, ThatNestWithoutEndAreCut) {
  const Watchdog watchdog("an endless nesting of notices");
  const Box box = make("answers_every_notice");
  object_attach_byptr_register(box, box, gensym("watched"));
  host.set(box, "step", {1});
  expect_problems(ElementsAre(HasSubstr("notices were nested")));
}

// With two clients the calls double at every level, so a limit of the depth
// alone would not end them.
TEST_F(Notices, ThatNestWithoutEndBetweenSeveralClientsAreCut) {
  const Watchdog watchdog("an endless nesting of notices between two clients", 10);
  const Box box = make("answers_every_notice");
  const Box other = make("answers_every_notice");
  object_attach_byptr_register(box, box, gensym("watched"));
  object_attach_byptr_register(other, box, gensym("watched"));
  host.set(box, "step", {1});
  expect_problems(testing::Contains(HasSubstr("notices were nested")));
}

TEST_F(Notices, NestAfreshAfterACut) {
  const Box box = make("answers_every_notice");
  object_attach_byptr_register(box, box, gensym("watched"));
  host.set(box, "step", {1});
  host.free(box);
  const Box patient = counter();
  client_of(patient, "answers: 1");
  host.set(patient, "gain", {3});
  EXPECT_THAT(heard, SizeIs(4));
  expect_problems(ElementsAre(HasSubstr("notices were nested")));
}

}  // namespace
}  // namespace tests

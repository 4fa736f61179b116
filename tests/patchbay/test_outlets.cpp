// Outlets: what listeners hear, and what they may do.

#include <stdexcept>

#include "host_test.h"

namespace tests {
namespace {

class Outlets : public HostTest {
 protected:
  Box box = counter();
};

TEST_F(Outlets, AreCountedFromTheLeft) {
  // The box made "totals" last, so it lies left of "done" and "notices".
  host.listen(box, 0, [&](const std::string &m, const Values &) { heard.push_back("0 " + m); });
  host.listen(box, 1, [&](const std::string &m, const Values &) { heard.push_back("1 " + m); });
  host.listen(box, 2, [&](const std::string &m, const Values &) { heard.push_back("2 " + m); });
  host.send(box, "bang");
  host.send(box, "later");
  host.run_deferred();
  host.set(box, "gain", {1});
  EXPECT_THAT(heard, ElementsAre("0 total", "1 done", "2 attr_modified"));
}

TEST_F(Outlets, MustBeThereToListenTo) {
  EXPECT_THAT(refusal([&] { listen(box, 3); }),
              AllOf(HasSubstr("'counter'"), HasSubstr("no outlet 3"), HasSubstr("has 3")));
}

TEST_F(Outlets, DeliverToAllListenersInOrder) {
  host.listen(box, 0, [&](const std::string &, const Values &) { heard.push_back("first"); });
  host.listen(box, 0, [&](const std::string &, const Values &) { heard.push_back("second"); });
  host.send(box, "bang");
  EXPECT_THAT(heard, ElementsAre("first", "second"));
}

TEST_F(Outlets, DeliverBeforeTheSenderGoesOn) {
  Values seen;
  host.listen(box, 0, [&](const std::string &, const Values &) { seen = host.get(box, "total"); });
  host.send(box, "add", {5});
  EXPECT_EQ(seen, Values{0}) << "the box adds after it has sent";
  EXPECT_EQ(host.get(box, "total"), Values{5});
}

TEST_F(Outlets, OfOneTypeSendNothingElse) {
  t_outlet *typed = outlet_new(box, "float");
  listen(box, 0);
  const t_atom value = atom(0.5);
  EXPECT_EQ(outlet_anything(typed, gensym("list"), 1, &value), RESULT_FAILED);
  EXPECT_EQ(outlet_anything(typed, gensym("float"), 1, &value), RESULT_OK);
  EXPECT_THAT(heard, ElementsAre("float 0.5"));
  expect_problems(
      ElementsAre(AllOf(HasSubstr("outlet_anything"), HasSubstr("'list'"), HasSubstr("'float'"))));
}

TEST_F(Outlets, CountAnAtomOfNothingAsNoText) {
  t_outlet *outlet = outlet_new(box, nullptr);
  Values arrived;
  host.listen(box, 0, [&](const std::string &, const Values &values) { arrived = values; });
  const t_atom nothing{};
  EXPECT_EQ(outlet_anything(outlet, gensym("list"), 1, &nothing), RESULT_OK);
  EXPECT_EQ(arrived, Values{""});
}

TEST_F(Outlets, LetAListenerFreeTheBox) {
  host.listen(box, 0, [&](const std::string &, const Values &) { host.free(box); });
  host.send(box, "bang");
  EXPECT_THAT(host.boxes(), IsEmpty());
}

// The box is gone when its setter returns, and a program may do a lot before.
TEST_F(Outlets, LetAListenerFreeTheBoxWhileAnAttributeIsSet) {
  host.listen(box, 0, [&](const std::string &, const Values &) {
    host.free(box);
    for (int i = 0; i < 5000; ++i) sysmem_freeptr(sysmem_newptr(8));
  });
  host.set(box, "even", {4});
  EXPECT_THAT(host.boxes(), IsEmpty());
}

// The arguments behind the one that brought the end find no box any more.
TEST_F(Outlets, LetAListenerFreeTheBoxWhileItsArgumentsAreSet) {
  host.listen(box, 0, [&](const std::string &, const Values &) { host.free(box); });
  const t_atom arguments[] = {atom("even:"),   atom(t_long{4}), atom("total:"),
                              atom(t_long{5}), atom("colour:"), atom("red")};
  attr_args_process(box, 6, arguments);
  EXPECT_THAT(host.boxes(), IsEmpty());
  EXPECT_THAT(host.posts(), IsEmpty()) << "there is no box to post against";
}

TEST_F(Outlets, LetAListenerFreeTheBoxWhileAnInstanceIsSentAMessage) {
  host.listen(box, 0, [&](const std::string &, const Values &) {
    host.free(box);
    for (int i = 0; i < 5000; ++i) sysmem_freeptr(sysmem_newptr(8));
  });
  const Box before = box;
  EXPECT_EQ(object_method_imp(box, gensym("bang")), before);
  EXPECT_THAT(host.boxes(), IsEmpty());
}

TEST_F(Outlets, LetAListenerAddAListener) {
  host.listen(box, 0, [&](const std::string &, const Values &) { listen(box); });
  host.send(box, "bang");
  EXPECT_THAT(heard, IsEmpty());
  host.send(box, "bang");
  EXPECT_THAT(heard, ElementsAre("total 2"));
}

TEST_F(Outlets, LetAListenerSendToTheBox) {
  host.listen(box, 0, [&](const std::string &, const Values &values) {
    if (values != Values{3}) host.send(box, "bang");
  });
  host.send(box, "bang");
  EXPECT_EQ(host.get(box, "total"), Values{3});
}

TEST_F(Outlets, KeepTheExceptionOfAListenerFromTheBox) {
  host.listen(box, 0, [](const std::string &, const Values &) {
    throw std::runtime_error("a listener's own");
  });
  EXPECT_EQ(outlet_anything(nullptr, gensym("list"), 0, nullptr), RESULT_FAILED);
  host.send(box, "add", {5});
  EXPECT_EQ(host.get(box, "total"), Values{5}) << "the box went on";
  expect_problems(ElementsAre(HasSubstr("a listener")));
}

// Not all that is thrown is a std::exception.
TEST_F(Outlets, KeepAnythingThatAListenerThrowsFromTheBox) {
  host.listen(box, 0, [](const std::string &, const Values &) { throw 42; });
  host.send(box, "add", {5});
  EXPECT_EQ(host.get(box, "total"), Values{5}) << "the box went on";
  expect_problems(ElementsAre(HasSubstr("a listener")));
}

TEST_F(Outlets, AreForgottenWithTheirBox) {
  t_outlet *outlet = outlet_new(box, nullptr);
  listen(box);
  host.free(box);
  EXPECT_EQ(outlet_anything(outlet, gensym("list"), 0, nullptr), RESULT_FAILED);
  EXPECT_THAT(heard, IsEmpty());
  expect_problems(ElementsAre(AllOf(HasSubstr("outlet_anything"), HasSubstr("outlet"),
                                    HasSubstr("object_free has released"))));
}

}  // namespace
}  // namespace tests

// Messages as a user sends them, gestures, and posts.

#include "host_test.h"

namespace tests {
namespace {

class Messages : public HostTest {
 protected:
  Box box = counter();
};

TEST_F(Messages, ReachTheBox) {
  host.send(box, "bang");
  host.send(box, "bang");
  EXPECT_EQ(host.get(box, "total"), Values{2});
}

TEST_F(Messages, CarryTheirArguments) {
  listen(box);
  host.send(box, "add", {2, 0.5, "two words", 40});
  EXPECT_THAT(heard, ElementsAre("add 2 0.5 two words 40"));
  EXPECT_EQ(host.get(box, "total"), Values{42});
  host.send(box, "add");
  EXPECT_EQ(heard.back(), "add");
}

TEST_F(Messages, KeepTheTypesOfTheirArguments) {
  Values arrived;
  host.listen(box, 0, [&](const std::string &, const Values &values) { arrived = values; });
  host.send(box, "add", {2, 2.0, "2"});
  EXPECT_EQ(arrived, (Values{2, 2.0, "2"}));
}

TEST_F(Messages, ThatTheBoxDoesNotKnowAreRefused) {
  const std::string sentence = refusal([&] { host.send(box, "dance", {1}); });
  EXPECT_THAT(sentence, AllOf(HasSubstr("'counter'"), HasSubstr("'dance'")));
  EXPECT_THAT(sentence, HasSubstr("bang, add, later, never, publish, show, complain, name, unit"));
  for (const char *hidden : {"dblclick", "assist", "notify"})
    EXPECT_THAT(sentence, Not(HasSubstr(hidden)));
}

TEST_F(Messages, ThatOnlyTheHostSendsAreRefused) {
  listen(box);
  for (const char *message : {"dblclick", "assist", "notify"})
    EXPECT_THAT(refusal([&] { host.send(box, message); }),
                AllOf(HasSubstr(std::string("'") + message + "'"), HasSubstr("'counter'"),
                      HasSubstr("only the host")));
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Messages, WithoutArgumentsRefuseThem) {
  EXPECT_THAT(refusal([&] {
                host.send(box, "bang", {1, 2});
              }),
              AllOf(HasSubstr("'bang'"), HasSubstr("no arguments"), HasSubstr("2")));
  EXPECT_EQ(host.get(box, "total"), Values{0});
}

TEST_F(Messages, NamedAfterAnAttributeSetIt) {
  host.send(box, "step", {5});
  EXPECT_EQ(host.get(box, "step"), Values{5});
  EXPECT_THAT(refusal([&] { host.send(box, "step"); }), HasSubstr("'step'"));
  EXPECT_THAT(refusal([&] { host.send(box, "step", {"far"}); }),
              AllOf(HasSubstr("'step'"), HasSubstr("integer"), HasSubstr("'far'")));
  EXPECT_EQ(host.get(box, "step"), Values{5});
}

TEST_F(Messages, FromABoxReachInstances) {
  EXPECT_EQ(object_method_imp(box, gensym("bang")), box);
  EXPECT_EQ(host.get(box, "total"), Values{1});
  EXPECT_EQ(object_method_imp(box, gensym("dance")), nullptr);
  EXPECT_EQ(object_method_imp(box, gensym("add")), nullptr) << "it takes arguments";
  EXPECT_EQ(object_method_imp(box, gensym("dblclick")), nullptr) << "only the host sends it";
}

TEST_F(Messages, OfADoubleClick) {
  listen(box);
  host.double_click(box);
  EXPECT_THAT(heard, ElementsAre("clicked 0"));
  const Box still = observer();
  host.double_click(still);
}

TEST_F(Messages, ForHints) {
  EXPECT_EQ(host.assist(box, ASSIST_INLET, 0), "inlet 0");
  EXPECT_EQ(host.assist(box, ASSIST_OUTLET, 2), "outlet 2");
  EXPECT_EQ(host.assist(observer(), ASSIST_INLET, 0), "");
}

TEST_F(Messages, PostedAgainstTheirBox) {
  const Box other = counter("gain: 0.5");
  host.send(other, "complain", {"too many"});
  host.send(box, "complain");
  ASSERT_THAT(host.posts(), SizeIs(2));
  EXPECT_EQ(host.posts()[0].box, other);
  EXPECT_EQ(host.posts()[1].box, box);
  EXPECT_THAT(texts(host.posts()),
              ElementsAre("counter: complain: too many, 1 of 0.5", "counter: complain: , 0 of 0"));
}

TEST_F(Messages, PostedAtAnyLength) {
  const std::string text(5000, 'x');
  object_error(box, "%s", text.c_str());
  ASSERT_THAT(host.posts(), SizeIs(1));
  EXPECT_EQ(host.posts()[0].text, text);
}

TEST_F(Messages, PostedAgainstAnyObject) {
  t_dictionary *dictionary = dictionary_new();
  object_error(dictionary, "about a dictionary");
  ASSERT_THAT(host.posts(), SizeIs(1));
  EXPECT_EQ(host.posts()[0].text, "about a dictionary");
  object_free(dictionary);
}

TEST_F(Messages, FreeTheirBoxWhileItSendsThem) {
  host.listen(box, 0, [&](const std::string &, const Values &) { host.free(box); });
  host.send(box, "bang");
  EXPECT_THAT(host.boxes(), IsEmpty());
}

}  // namespace
}  // namespace tests

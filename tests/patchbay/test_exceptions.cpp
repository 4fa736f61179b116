// Exceptions that modules let out never get through the host, and are named.

#include "host_test.h"

namespace tests {
namespace {

class Exceptions : public HostTest {
 protected:
  // The violation that a call into the module brings.
  template <typename Call>
  std::string violation(Call &&call) {
    const std::size_t before = inspector.violations().size();
    EXPECT_NO_THROW(call());
    EXPECT_EQ(inspector.violations().size(), before + 1);
    return inspector.violations().empty() ? "" : inspector.violations().back();
  }
};

TEST_F(Exceptions, FromMessagesAreNamed) {
  const Box box = make("throws");
  EXPECT_THAT(violation([&] { host.send(box, "bang"); }),
              HasSubstr("exception came out of 'bang'"));
  EXPECT_THAT(violation([&] { host.send(box, "number"); }), HasSubstr("'number'"));
  EXPECT_THAT(violation([&] { host.send(box, "list", {1}); }), HasSubstr("'list'"));
  EXPECT_THAT(violation([&] { host.double_click(box); }), HasSubstr("'dblclick'"));
  EXPECT_THAT(violation([&] { EXPECT_EQ(host.assist(box, ASSIST_INLET, 0), ""); }),
              HasSubstr("'assist'"));
  EXPECT_THAT(host.boxes(), ElementsAre(box)) << "the box stays";
  expect_problems(SizeIs(5));
}

TEST_F(Exceptions, FromMessagesOfOtherInstancesAreFailures) {
  const Box box = make("throws");
  EXPECT_THAT(violation([&] { EXPECT_EQ(object_method_imp(box, gensym("bang")), nullptr); }),
              HasSubstr("'bang'"));
  expect_problems(SizeIs(1));
}

TEST_F(Exceptions, FromTasksAreNamed) {
  const Box box = make("throws");
  host.send(box, "later");
  EXPECT_THAT(violation([&] { EXPECT_EQ(host.run_deferred(), 1U); }), HasSubstr("deferred task"));
  expect_problems(SizeIs(1));
}

TEST_F(Exceptions, FromNoticesAreNamed) {
  const Box box = make("throws");
  object_attach_byptr_register(box, box, gensym("watched"));
  EXPECT_THAT(violation([&] { host.set(box, "plain", {1}); }), HasSubstr("'attr_modified'"));
  EXPECT_THAT(violation([&] { host.notify(box, "editor_closed"); }), HasSubstr("'editor_closed'"));
  expect_problems(SizeIs(2));
}

TEST_F(Exceptions, FromSettersAreNamed) {
  const Box box = make("throws");
  EXPECT_THAT(violation([&] {
                const double value = 1.0;
                EXPECT_EQ(object_attr_setdouble_array(box, gensym("value"), 1, &value),
                          RESULT_FAILED);
              }),
              HasSubstr("'value'"));
  expect_problems(SizeIs(1));
}

TEST_F(Exceptions, FromDsp64AreNamed) {
  const Box box = make("throws");
  EXPECT_THAT(violation([&] { host.audio_on(); }), HasSubstr("'dsp64'"));
  EXPECT_THAT(host.boxes(), ElementsAre(box));
  expect_problems(SizeIs(1));
}

TEST_F(Exceptions, FromTheConstructorAreNamedAndThereIsNoBox) {
  host.load(module("throws"));
  EXPECT_THAT(violation([&] {
                EXPECT_THAT(refusal([&] { host.make("throws_from_constructor"); }),
                            HasSubstr("could not make a box"));
              }),
              HasSubstr("'throws_from_constructor'"));
  EXPECT_THAT(host.boxes(), IsEmpty());
  EXPECT_THAT(violation([&] {
                EXPECT_EQ(
                    object_new_typed(gensym("box"), gensym("throws_from_constructor"), 0, nullptr),
                    nullptr);
              }),
              HasSubstr("'throws_from_constructor'"));
  expect_problems(ElementsAre(HasSubstr("exception"), HasSubstr("exception"), HasSubstr("instance"),
                              HasSubstr("instance")));
}

TEST_F(Exceptions, FromTheDestructorAreNamedAndTheBoxIsGone) {
  host.load(module("throws"));
  const Box box = host.make("throws_from_destructor");
  EXPECT_THAT(violation([&] { host.free(box); }), HasSubstr("'throws_from_destructor'"));
  EXPECT_THAT(host.boxes(), IsEmpty());
  EXPECT_THAT(inspector.leaks(), IsEmpty());
  expect_problems(SizeIs(1));
}

TEST_F(Exceptions, FromTheStartAreNamed) {
  EXPECT_THAT(violation([&] { host.load(module("throws_from_ext_main")); }), HasSubstr("ext_main"));
  EXPECT_NE(host.make("survivor"), nullptr) << "what it registered before is there";
  expect_problems(SizeIs(1));
}

}  // namespace
}  // namespace tests

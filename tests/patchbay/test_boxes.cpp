// Boxes: made from a line of text, found, and freed.

#include "host_test.h"

namespace tests {
namespace {

class Boxes : public HostTest {};

TEST_F(Boxes, AreMadeFromALineOfText) {
  const Box box =
      counter("step: 4 unit: \"cycles per second\" limits: 300 340.5 notes: low \"not high\"");
  EXPECT_EQ(host.get(box, "step"), Values{4});
  EXPECT_EQ(host.get(box, "unit"), Values{"cycles per second"});
  EXPECT_EQ(host.get(box, "limits"), (Values{300.0, 340.5}));
  EXPECT_EQ(host.get(box, "notes"), (Values{"low", "not high"}));
  EXPECT_THAT(host.posts(), IsEmpty());
}

TEST_F(Boxes, MayHaveNothingBehindTheirClass) {
  host.load(module("counter"));
  const Box box = host.make("  counter  ");
  EXPECT_EQ(host.get(box, "step"), Values{1});
  EXPECT_EQ(host.get(box, "limits"), Values{});
}

TEST_F(Boxes, PostWhatCannotBeSetAndSetTheRest) {
  const Box box = counter("12 stray step: 4 colour: red gain: loud unit: limits: 5 unit: Hz");
  EXPECT_EQ(host.get(box, "step"), Values{4});
  EXPECT_EQ(host.get(box, "gain"), Values{0.0});
  EXPECT_EQ(host.get(box, "limits"), Values{5.0});
  EXPECT_EQ(host.get(box, "unit"), Values{"Hz"});
  EXPECT_THAT(texts(host.posts()),
              ElementsAre(AllOf(HasSubstr("counter: "), HasSubstr("'12'")), HasSubstr("'stray'"),
                          HasSubstr("'colour'"), AllOf(HasSubstr("'gain'"), HasSubstr("'loud'")),
                          HasSubstr("'unit'")));
  for (const patchbay::Post &post : host.posts()) EXPECT_EQ(post.box, box);
}

TEST_F(Boxes, NeedAClassThatThereIs) {
  host.load(module("counter"));
  EXPECT_THAT(refusal([&] { host.make("compass step: 4"); }),
              AllOf(HasSubstr("'compass'"), HasSubstr("counter, dict")));
  EXPECT_THAT(refusal([&] { host.make(""); }), HasSubstr("name of a class"));
  EXPECT_THAT(refusal([&] { host.make("  "); }), HasSubstr("name of a class"));
  EXPECT_THAT(refusal([&] { host.make("counter unit: \"open"); }), HasSubstr("quote"));
  EXPECT_THAT(host.boxes(), IsEmpty());
}

TEST_F(Boxes, AreListedInTheOrderOfTheirMaking) {
  const Box first = counter();
  const Box second = counter();
  const Box third = counter();
  EXPECT_THAT(host.boxes(), ElementsAre(first, second, third));
  host.free(second);
  EXPECT_THAT(host.boxes(), ElementsAre(first, third));
}

TEST_F(Boxes, AreFreedOnce) {
  const Box box = counter();
  host.free(box);
  EXPECT_THAT(refusal([&] { host.free(box); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.send(box, "bang"); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.get(box, "step"); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.set(box, "step", {1}); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.listen(box, 0, nullptr); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.double_click(box); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.assist(box, ASSIST_INLET, 0); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.notify(box, "editor_closed"); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.disabled(box, "step"); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.send(nullptr, "bang"); }), HasSubstr("no such box"));
  EXPECT_THAT(refusal([&] { host.free(nullptr); }), HasSubstr("no such box"));
}

TEST_F(Boxes, ReleaseWhatIsTheirsThroughTheirDestructor) {
  const Box box = counter("name: its");
  EXPECT_THAT(host.dictionary_names(), ElementsAre("its"));
  // The task and the dictionary are the box's to release.
  EXPECT_THAT(inspector.leaks(), SizeIs(2));
  host.free(box);
  EXPECT_THAT(host.dictionary_names(), IsEmpty());
  EXPECT_THAT(inspector.leaks(), IsEmpty());
}

TEST_F(Boxes, AreFreedByTheHostWhenItCloses) {
  counter("name: first");
  counter("name: second");
  EXPECT_THAT(host.close(), IsEmpty());
  EXPECT_THAT(host.boxes(), IsEmpty());
  EXPECT_THAT(host.dictionary_names(), IsEmpty());
}

TEST_F(Boxes, AreZeroFilledBehindTheirHeader) {
  // The memory of the first box may come back for the second.
  for (int i = 0; i < 2; ++i) {
    const Box box = counter();
    EXPECT_EQ(host.get(box, "total"), Values{0});
    EXPECT_EQ(host.get(box, "gain"), Values{0.0});
    EXPECT_EQ(host.get(box, "notes"), Values{});
    host.set(box, "total", {-1});
    host.set(box, "gain", {-1});
    host.free(box);
  }
}

TEST_F(Boxes, CanMakeInstancesOfTheirOwn) {
  host.load(module("counter"));
  const t_atom arguments[] = {atom("step:"), atom(t_long{7})};
  void *made = object_new_typed(gensym("box"), gensym("counter"), 2, arguments);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(host.get(static_cast<Box>(made), "step"), Values{7});
  EXPECT_THAT(host.boxes(), IsEmpty()) << "the user did not make it";
  EXPECT_THAT(refusal([&] { host.free(static_cast<Box>(made)); }), HasSubstr("no such box"));
  EXPECT_EQ(object_free(made), RESULT_OK);

  EXPECT_EQ(object_new_typed(gensym("box"), gensym("compass"), 0, nullptr), nullptr);
  EXPECT_EQ(object_new_typed(gensym("elsewhere"), gensym("counter"), 0, nullptr), nullptr);
}

TEST_F(Boxes, ThatABoxFreesAreGoneForTheUser) {
  const Box box = counter();
  EXPECT_EQ(object_free(box), RESULT_OK);
  EXPECT_THAT(host.boxes(), IsEmpty());
}

}  // namespace
}  // namespace tests

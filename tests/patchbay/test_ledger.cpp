// The ledger: what modules do wrong with what they were handed is named.

#include "host_test.h"

namespace tests {
namespace {

class TheLedger : public HostTest {
 protected:
  // Sends "bang" to a box of the module of this name.
  void bang(const std::string &name) { host.send(make(name), "bang"); }
};

// A sentence about an operation that was given a thing, and why it may not be.
auto sentence(const char *operation, const char *thing, const char *reason) {
  return AllOf(testing::StartsWith(operation), HasSubstr(thing), HasSubstr(reason));
}

// One sentence for each operation that was called outside the start.
testing::Matcher<const std::vector<std::string> &> late(
    const std::vector<std::string> &operations) {
  std::vector<std::string> sentences;
  for (const std::string &operation : operations)
    sentences.push_back(operation + " was called outside ext_main");
  return testing::ElementsAreArray(sentences);
}

TEST_F(TheLedger, NamesWhatIsFreedTwice) {
  bang("frees_twice");
  expect_problems(ElementsAre(sentence("sysmem_freeptr", "block", "sysmem_freeptr has released"),
                              sentence("object_free", "dictionary", "object_free has released"),
                              sentence("object_free", "atom array", "object_free has released"),
                              sentence("qelem_free", "deferred task", "qelem_free has released")));
}

TEST_F(TheLedger, NamesWhatIsFreedByTheWrongCall) {
  bang("frees_by_the_wrong_call");
  expect_problems(
      ElementsAre(sentence("object_free", "block", "not the module's to free"),
                  sentence("sysmem_freeptr", "dictionary", "not the expected block"),
                  sentence("object_free", "deferred task", "not the module's to free"),
                  sentence("qelem_free", "dictionary", "not the expected deferred task"),
                  sentence("sysmem_freeptr", "instance", "not the expected block"),
                  sentence("object_free", "class", "not the module's to free")));
}

TEST_F(TheLedger, NamesWhatIsUsedAfterItWasFreed) {
  bang("uses_after_free");
  expect_problems(
      ElementsAre(sentence("dictionary_appendfloat", "dictionary", "object_free has released"),
                  sentence("dictobj_register", "dictionary", "object_free has released"),
                  sentence("object_method_imp", "atom array", "object_free has released"),
                  sentence("qelem_set", "deferred task", "qelem_free has released")));
  EXPECT_THAT(host.dictionary_names(), IsEmpty());
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(TheLedger, NamesEachLeakAndWhoMadeIt) {
  const Box box = make("leaks");
  for (const char *kind : {"block", "dictionary", "registered", "array", "task", "instance"})
    host.send(box, kind);
  const auto leak = [](const char *thing, const char *operation) {
    return AllOf(testing::StartsWith(thing), HasSubstr(operation));
  };
  EXPECT_THAT(
      inspector.leaks(),
      ElementsAre(leak("block", "sysmem_newptrclear"), leak("dictionary", "dictionary_new"),
                  leak("dictionary", "dictobj_register"), leak("atom array", "atomarray_new"),
                  leak("deferred task", "qelem_new"), leak("instance", "object_alloc")));
  EXPECT_THAT(inspector.violations(), IsEmpty()) << "a leak is only known at the end";
  expect_problems(AllOf(SizeIs(6), testing::Each(HasSubstr("never released"))));
}

TEST_F(TheLedger, DoesNotRunATaskThatLeakedOnceTheModuleIsGone) {
  host.send(make("leaks"), "task");
  host.close();
  EXPECT_EQ(host.run_deferred(), 0U);
  expect_problems(SizeIs(1));
}

// Such an instance has no code any more.
TEST_F(TheLedger, ForgetsAnInstanceThatLeakedOnceTheModuleIsGone) {
  host.load(module("meter"));
  object_new_typed(gensym("box"), gensym("meter"), 0, nullptr);
  host.close();
  host.audio_on();
  expect_problems(SizeIs(1));
}

TEST_F(TheLedger, NamesAddressesThatItNeverHandedOut) {
  t_object own{};
  int local = 0;
  EXPECT_EQ(object_free(&own), RESULT_FAILED);
  sysmem_freeptr(&local);
  EXPECT_EQ(sysmem_resizeptrclear(&local, 8), nullptr);
  EXPECT_EQ(object_method_imp(&own, gensym("bang")), nullptr);
  EXPECT_EQ(object_attr_setsym(&own, gensym("unit"), gensym("Hz")), RESULT_FAILED);
  expect_problems(ElementsAre(
      HasSubstr("object_free was given an address"), HasSubstr("sysmem_freeptr was given"),
      HasSubstr("sysmem_resizeptrclear was given"), HasSubstr("object_method_imp was given"),
      HasSubstr("object_attr_setsym was given")));
}

TEST_F(TheLedger, LeavesAloneWhatAWrongCallWasGiven) {
  t_dictionary *d = dictionary_new();
  sysmem_freeptr(d);
  EXPECT_EQ(dictionary_appendfloat(d, gensym("key"), 1), RESULT_OK);
  EXPECT_EQ(object_free(d), RESULT_OK);
  expect_problems(SizeIs(1));
}

TEST_F(TheLedger, NamesABlockThatIsUsedAfterItMoved) {
  void *block = sysmem_newptr(8);
  void *moved = sysmem_resizeptrclear(block, 1 << 20);
  ASSERT_NE(moved, nullptr);
  ASSERT_NE(moved, block) << "a block this much larger is expected to move";
  EXPECT_EQ(sysmem_resizeptrclear(block, 8), nullptr);
  sysmem_freeptr(moved);
  expect_problems(ElementsAre(
      sentence("sysmem_resizeptrclear", "block", "sysmem_resizeptrclear has released")));
}

TEST_F(TheLedger, NamesABoxThatIsFreedWhileItIsBeingFreed) {
  static t_class *c = nullptr;
  during_load([] {
    const t_constructor allocate = [](t_symbol *, t_long, t_atom *) { return object_alloc(c); };
    const t_destructor again = [](void *x) { object_free(x); };
    c = class_new("frees_itself", allocate, again, sizeof(t_object), nullptr, ARGS_VARIABLE, 0);
    class_register(common_symbols->box, c);
  });
  host.free(host.make("frees_itself"));
  expect_problems(ElementsAre(sentence("object_free", "instance", "being freed")));
}

TEST_F(TheLedger, NamesClassesThatAreBuiltOutsideTheStart) {
  bang("registers_late");
  EXPECT_THAT(host.classes(), ElementsAre("dict", "registers_late"));
  expect_problems(late(
      {"class_new", "class_addmethod", "class_dspinit", "class_extra_lookup", "class_register"}));
}

TEST_F(TheLedger, NamesAttributesThatAreDescribedOutsideTheStart) {
  host.send(make("registers_late"), "attributes");
  const std::vector<patchbay::AttributeInfo> infos = host.attributes("registers_late");
  EXPECT_THAT(infos, SizeIs(1));
  EXPECT_THAT(infos.at(0).properties, IsEmpty());
  EXPECT_EQ(infos.at(0).highest, std::nullopt);
  expect_problems(late({"class_attr_get", "attr_addfilter_clip", "class_attr_addattr_parse",
                        "class_attr_addattr_format", "attr_offset_new", "attr_offset_array_new"}));
}

TEST_F(TheLedger, NamesAnAttributeThatIsAddedOutsideTheStart) {
  bang("adds_an_attribute_late");
  EXPECT_THAT(host.attributes("adds_an_attribute_late"), IsEmpty());
  EXPECT_THAT(inspector.leaks(), IsEmpty()) << "it is released all the same";
  expect_problems(late({"class_addattr"}));
}

TEST_F(TheLedger, NamesTheTableOfSymbolsThatIsFilledOutsideTheStart) {
  host.send(make("registers_late"), "symbols");
  expect_problems(late({"common_symbols_init"}));
}

TEST_F(TheLedger, NamesConstructorsThatYieldNoInstance) {
  host.load(module("bad_constructors"));
  EXPECT_THAT(refusal([&] { host.make("returns_null"); }), HasSubstr("'returns_null'"));
  EXPECT_THAT(inspector.violations(), IsEmpty()) << "that is a constructor's right";
  EXPECT_THAT(refusal([&] { host.make("returns_its_own_memory"); }),
              HasSubstr("could not make a box"));
  EXPECT_THAT(refusal([&] { host.make("returns_what_it_freed"); }),
              HasSubstr("could not make a box"));
  EXPECT_THAT(refusal([&] { host.make("leaves_a_half_made_instance"); }),
              HasSubstr("could not make a box"));
  EXPECT_THAT(host.boxes(), IsEmpty());
  expect_problems(ElementsAre(HasSubstr("no operation has handed out"),
                              HasSubstr("object_free has released"),
                              AllOf(HasSubstr("instance"), HasSubstr("never released"))));
}

}  // namespace
}  // namespace tests

// The record of host calls.

#include "host_test.h"

namespace tests {
namespace {

class Traces : public HostTest {};

TEST_F(Traces, HoldCallsInOrderWithTheirArguments) {
  const Box box = counter("unit: Hz gain: 0.5");
  inspector.start_trace();
  host.send(box, "publish");
  const std::vector<std::string> calls = texts(inspector.stop_trace());
  EXPECT_THAT(calls, ElementsAre("atom_setfloat(0.5)", "gensym(half)", "atom_setsym(half)",
                                 "atomarray_new(2)", "gensym(gain)",
                                 testing::StartsWith("dictionary_appendfloat(gain"), "gensym(unit)",
                                 testing::StartsWith("dictionary_appendsym(unit"), "gensym(pair)",
                                 testing::StartsWith("dictionary_appendatomarray(pair")));
}

// Without the values, what was published is unknown.
TEST_F(Traces, HoldTheValuesThatAreStored) {
  const Box box = counter("unit: Hz");
  t_dictionary *d = dictionary_new();
  inspector.start_trace();
  dictionary_appendfloat(d, gensym("key"), 2.5);
  dictionary_appendsym(d, gensym("key"), gensym("word"));
  object_attr_setsym(box, gensym("unit"), gensym("rad"));
  const std::vector<std::string> calls = texts(inspector.stop_trace());
  EXPECT_THAT(calls, testing::IsSupersetOf({std::string("dictionary_appendfloat(key, 2.5)"),
                                            std::string("dictionary_appendsym(key, word)"),
                                            std::string("object_attr_setsym(unit, rad)")}));
  object_free(d);
}

TEST_F(Traces, GiveEachArgumentOnItsOwn) {
  const Box box = counter();
  inspector.start_trace();
  object_attr_setdisabled(box, gensym("gain"), 1);
  object_method_imp(box, nullptr);
  const std::vector<patchbay::Call> calls = inspector.stop_trace();
  ASSERT_THAT(calls, SizeIs(3));
  EXPECT_EQ(calls[1].operation, "object_attr_setdisabled");
  EXPECT_THAT(calls[1].arguments, ElementsAre("gain", "1"));
  EXPECT_EQ(calls[2].text(), "object_method_imp(null)");
}

TEST_F(Traces, BeginEmptyAndEnd) {
  void *block = sysmem_newptr(1);
  inspector.start_trace();
  block = sysmem_resizeptrclear(block, 2);
  EXPECT_THAT(texts(inspector.stop_trace()), ElementsAre("sysmem_resizeptrclear(2)"));
  sysmem_freeptr(block);
  EXPECT_THAT(inspector.stop_trace(), IsEmpty());
  inspector.start_trace();
  gensym("forgotten");
  inspector.start_trace();
  sys_getsr();
  EXPECT_THAT(texts(inspector.stop_trace()), ElementsAre("sys_getsr()"));
}

TEST_F(Traces, HoldCallsThatFail) {
  inspector.start_trace();
  inspector.fail("dictionary_new");
  dictionary_new();
  EXPECT_THAT(texts(inspector.stop_trace()), ElementsAre("dictionary_new()"));
}

TEST_F(Traces, ChangeNothing) {
  inspector.start_trace();
  const Box box = counter("unit: Hz step: 2");
  host.send(box, "bang");
  host.send(box, "publish");
  host.send(box, "show");
  host.free(box);
  EXPECT_THAT(texts(inspector.stop_trace()),
              testing::IsSupersetOf({std::string("common_symbols_init()"),
                                     std::string("object_new_typed(box, dict)"),
                                     std::string("object_free()"), std::string("qelem_free()")}));
}

TEST_F(Traces, SurviveWhatIsNoAttribute) {
  t_dictionary *d = dictionary_new();
  inspector.start_trace();
  during_load(
      [&] { EXPECT_EQ(class_addattr(nullptr, reinterpret_cast<t_attr *>(d)), RESULT_FAILED); });
  inspector.stop_trace();
  object_free(d);
  expect_problems(
      ElementsAre(AllOf(HasSubstr("class_addattr"), HasSubstr("not the expected attribute"))));
}

}  // namespace
}  // namespace tests

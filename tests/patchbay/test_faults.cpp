// Failures on demand: each operation fails as its header says.

#include <cstring>

#include "host_test.h"

namespace tests {
namespace {

class Failures : public HostTest {
 protected:
  // Makes the next call of an operation fail.
  void next(const char *operation) { inspector.fail(operation); }
};

TEST_F(Failures, ComeAtTheCallThatIsAskedForAndOnce) {
  inspector.fail("sysmem_newptr", 3);
  std::vector<bool> made;
  for (int i = 0; i < 5; ++i) {
    void *block = sysmem_newptr(8);
    made.push_back(block != nullptr);
    sysmem_freeptr(block);
  }
  EXPECT_THAT(made, ElementsAre(true, true, false, true, true));
}

TEST_F(Failures, OfOneOperationLeaveTheOthersAlone) {
  next("sysmem_newptr");
  void *block = sysmem_newptrclear(8);
  EXPECT_NE(block, nullptr);
  sysmem_freeptr(block);
  EXPECT_EQ(sysmem_newptr(8), nullptr);
}

TEST_F(Failures, CanBeForgotten) {
  inspector.fail("sysmem_newptr");
  inspector.fail("dictionary_new", 2);
  EXPECT_EQ(inspector.forget_failures(), 2U);
  EXPECT_EQ(inspector.forget_failures(), 0U);
  void *block = sysmem_newptr(8);
  EXPECT_NE(block, nullptr);
  sysmem_freeptr(block);
}

TEST_F(Failures, NeedAnOperation) {
  EXPECT_THAT(refusal([&] { inspector.fail("sysmem_dance"); }), HasSubstr("'sysmem_dance'"));
}

TEST_F(Failures, OfMemoryLeaveTheBlockAsItWas) {
  next("sysmem_newptr");
  EXPECT_EQ(sysmem_newptr(8), nullptr);
  next("sysmem_newptrclear");
  EXPECT_EQ(sysmem_newptrclear(8), nullptr);
  auto *block = static_cast<char *>(sysmem_newptrclear(8));
  std::strcpy(block, "kept");
  next("sysmem_resizeptrclear");
  EXPECT_EQ(sysmem_resizeptrclear(block, 16), nullptr);
  EXPECT_STREQ(block, "kept");
  next("sysmem_freeptr");
  sysmem_freeptr(block);
  EXPECT_THAT(inspector.leaks(), SizeIs(1)) << "it was not freed";
  sysmem_freeptr(block);
}

TEST_F(Failures, OfDictionaries) {
  next("dictionary_new");
  EXPECT_EQ(dictionary_new(), nullptr);
  next("atomarray_new");
  EXPECT_EQ(atomarray_new(0, nullptr), nullptr);
  t_symbol *name = gensym("mine");
  t_dictionary *d = dictobj_register(nullptr, &name);
  dictionary_appendfloat(d, gensym("key"), 1);
  next("dictionary_appendfloat");
  EXPECT_EQ(dictionary_appendfloat(d, gensym("key"), 2), RESULT_FAILED);
  next("dictionary_appendsym");
  EXPECT_EQ(dictionary_appendsym(d, gensym("key"), gensym("x")), RESULT_FAILED);
  next("dictionary_clear");
  EXPECT_EQ(dictionary_clear(d), RESULT_FAILED);
  EXPECT_EQ(host.dictionary("mine"), (patchbay::Dictionary{{"key", 1.0}}));
  next("object_free");
  EXPECT_EQ(object_free(d), RESULT_FAILED);
  EXPECT_THAT(host.dictionary_names(), ElementsAre("mine"));
  object_free(d);
}

TEST_F(Failures, OfAppendingReleaseTheArray) {
  t_dictionary *d = dictionary_new();
  t_atomarray *array = atomarray_new(0, nullptr);
  next("dictionary_appendatomarray");
  EXPECT_EQ(dictionary_appendatomarray(d, gensym("key"), array), RESULT_FAILED);
  EXPECT_THAT(inspector.leaks(), SizeIs(1)) << "the dictionary alone";
  EXPECT_EQ(dictionary_appendatomarray(nullptr, gensym("key"), atomarray_new(0, nullptr)),
            RESULT_FAILED);
  EXPECT_EQ(dictionary_appendatomarray(d, nullptr, atomarray_new(0, nullptr)), RESULT_FAILED);
  EXPECT_THAT(inspector.leaks(), SizeIs(1));
  EXPECT_EQ(object_free(array), RESULT_FAILED) << "it has been released";
  object_free(d);
  expect_problems(ElementsAre(HasSubstr("dictionary_appendatomarray has released")));
}

TEST_F(Failures, OfRegisteringReleaseTheDictionary) {
  t_symbol *name = gensym("wanted");
  t_symbol *const wanted = name;
  next("dictobj_register");
  EXPECT_EQ(dictobj_register(dictionary_new(), &name), nullptr);
  EXPECT_EQ(name, wanted);
  next("dictobj_register");
  EXPECT_EQ(dictobj_register(nullptr, &name), nullptr);
  t_dictionary *d = dictobj_register(nullptr, &name);
  t_atomarray *array = atomarray_new(0, nullptr);
  dictionary_appendatomarray(d, gensym("key"), array);
  next("dictobj_register");
  EXPECT_EQ(dictobj_register(d, &name), nullptr) << "a move fails too";
  EXPECT_THAT(host.dictionary_names(), IsEmpty());
  EXPECT_EQ(dictobj_register(dictionary_new(), nullptr), nullptr);
  EXPECT_THAT(inspector.leaks(), IsEmpty());
}

TEST_F(Failures, OfTasksAndOutlets) {
  const Box box = counter();
  listen(box, 1);
  next("qelem_new");
  EXPECT_EQ(qelem_new(box, [](void *) {}), nullptr);
  next("qelem_set");
  host.send(box, "later");
  EXPECT_EQ(host.run_deferred(), 0U);
  host.send(box, "later");
  next("qelem_unset");
  host.send(box, "never");
  next("outlet_anything");
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_THAT(heard, IsEmpty());
  next("outlet_new");
  EXPECT_EQ(outlet_new(box, nullptr), nullptr);
}

TEST_F(Failures, OfInstancesAndAttributes) {
  const Box box = counter();
  inspector.fail("object_alloc");
  EXPECT_THAT(refusal([&] { counter(); }), HasSubstr("could not make a box"));
  next("object_new_typed");
  EXPECT_EQ(object_new_typed(gensym("box"), gensym("counter"), 0, nullptr), nullptr);
  next("attr_args_process");
  EXPECT_EQ(host.get(counter("step: 5"), "step"), Values{1});
  next("object_attr_setsym");
  EXPECT_EQ(object_attr_setsym(box, gensym("unit"), gensym("Hz")), RESULT_FAILED);
  const double value = 3.0;
  next("object_attr_setdouble_array");
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("gain"), 1, &value), RESULT_FAILED);
  next("object_attr_setdisabled");
  EXPECT_EQ(object_attr_setdisabled(box, gensym("gain"), 1), RESULT_FAILED);
  EXPECT_FALSE(host.disabled(box, "gain"));
  next("object_method_imp");
  EXPECT_EQ(object_method_imp(box, gensym("bang")), nullptr);
  EXPECT_EQ(host.get(box, "total"), Values{0});
  next("object_attach_byptr_register");
  EXPECT_EQ(object_attach_byptr_register(box, box, gensym("x")), RESULT_FAILED);
  next("object_error");
  host.send(box, "complain");
  EXPECT_THAT(host.posts(), IsEmpty());
}

TEST_F(Failures, OfSymbolsAndAtoms) {
  t_atom value = atom("text");
  next("gensym");
  EXPECT_EQ(gensym("text"), nullptr);
  next("gensym_tr");
  EXPECT_EQ(gensym_tr("text"), nullptr);
  next("str_tr");
  EXPECT_EQ(str_tr("text"), nullptr);
  next("symbol_unique");
  EXPECT_EQ(symbol_unique(), nullptr);
  next("atom_setfloat");
  EXPECT_EQ(atom_setfloat(&value, 1), RESULT_FAILED);
  next("atom_setsym");
  EXPECT_EQ(atom_setsym(&value, gensym("other")), RESULT_FAILED);
  EXPECT_EQ(atom_getsym(&value), gensym("text")) << "nothing has changed";
  next("sys_getsr");
  EXPECT_EQ(sys_getsr(), 0.0F);
}

// Modules read the text of what it yields without a second look.
TEST_F(Failures, OfReadingASymbolYieldTheEmptyOne) {
  const t_atom value = atom("text");
  next("atom_getsym");
  EXPECT_EQ(atom_getsym(&value), gensym(""));
}

TEST_F(Failures, WhileAModuleStarts) {
  during_load([&] {
    const t_constructor none = [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; };
    const auto described = [&] {
      return class_new("x", none, nullptr, sizeof(t_signal_object) + 8, nullptr, ARGS_VARIABLE, 0);
    };
    const t_long at = sizeof(t_signal_object);
    next("class_new");
    EXPECT_EQ(described(), nullptr);
    t_class *c = described();
    next("attr_offset_new");
    EXPECT_EQ(attr_offset_new("a", gensym("long"), at), nullptr);
    next("attr_offset_array_new");
    EXPECT_EQ(attr_offset_array_new("a", gensym("long"), 1, at, at), nullptr);
    next("class_addattr");
    EXPECT_EQ(class_addattr(c, attr_offset_new("a", gensym("long"), at)), RESULT_FAILED);
    EXPECT_EQ(class_addattr(nullptr, attr_offset_new("a", gensym("long"), at)), RESULT_FAILED);
    EXPECT_THAT(inspector.leaks(), IsEmpty()) << "the attributes have been released";
    EXPECT_EQ(class_addattr(c, attr_offset_new("a", gensym("long"), at)), RESULT_OK);
    next("class_attr_get");
    EXPECT_EQ(class_attr_get(c, gensym("a")), nullptr);
    t_attr *attr = class_attr_get(c, gensym("a"));
    next("attr_addfilter_clip");
    EXPECT_EQ(attr_addfilter_clip(attr, 0, 1, 1, 1), RESULT_FAILED);
    next("class_attr_addattr_parse");
    EXPECT_EQ(class_attr_addattr_parse(c, "a", "p", gensym("long"), "1"), RESULT_FAILED);
    next("class_attr_addattr_format");
    EXPECT_EQ(class_attr_addattr_format(c, "a", "p", gensym("long"), "l", t_long{1}),
              RESULT_FAILED);
    next("class_addmethod");
    EXPECT_EQ(class_addmethod(c, as_method(+[](void *) {}), "bang", ARGS_NONE), RESULT_FAILED);
    next("class_dspinit");
    EXPECT_EQ(class_dspinit(c), RESULT_FAILED);
    next("class_extra_lookup");
    EXPECT_EQ(class_extra_lookup(c, gensym("methods")), nullptr);
    t_hashtab *methods = class_extra_lookup(c, gensym("methods"));
    EXPECT_EQ(hashtab_lookup(methods, gensym("bang")), nullptr) << "it was not added";
    EXPECT_EQ(hashtab_lookup(methods, gensym("signal")), nullptr) << "it was not added";
    class_dspinit(c);
    next("hashtab_lookup");
    EXPECT_EQ(hashtab_lookup(methods, gensym("signal")), nullptr);
    next("object_addattr_parse");
    EXPECT_EQ(
        object_addattr_parse(hashtab_lookup(methods, gensym("signal")), "p", gensym("long"), "1"),
        RESULT_FAILED);
    next("class_register");
    EXPECT_EQ(class_register(common_symbols->box, c), RESULT_FAILED);
    EXPECT_EQ(class_register(common_symbols->box, c), RESULT_OK);
  });
  const patchbay::AttributeInfo info = host.attributes("x").at(0);
  EXPECT_EQ(info.highest, std::nullopt);
  EXPECT_THAT(info.properties, IsEmpty());
}

// A module that checks nothing may go on after any failure, as every operation
// takes null.
TEST_F(Failures, AnywhereLeaveTheHostInOrder) {
  host.load(module("counter"));
  for (const std::string &operation : patchbay::Inspector::operations())
    for (std::size_t nth = 1; nth <= 3; ++nth) {
      // Symbols are null only when memory is exhausted, so modules do not look.
      if (operation == "gensym") continue;
      // These keep what they were to release.
      if (operation == "qelem_free" || operation == "object_free") continue;
      SCOPED_TRACE(operation + " " + std::to_string(nth));
      inspector.fail(operation, nth);
      try {
        const Box box = host.make("counter name: mine step: 2");
        for (const char *message : {"bang", "later", "publish", "show", "complain"})
          host.send(box, message);
        host.run_deferred();
      } catch (const patchbay::Error &error) {
        EXPECT_EQ(operation, "object_alloc") << error.what();
      }
      while (!host.boxes().empty()) host.free(host.boxes().back());
      inspector.forget_failures();
      EXPECT_THAT(inspector.leaks(), IsEmpty());
      EXPECT_THAT(inspector.violations(), IsEmpty());
    }
}

}  // namespace
}  // namespace tests

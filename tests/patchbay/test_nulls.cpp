// Null in the place of an object is accepted everywhere, and yields the failure
// that the operation has.

#include "host_test.h"

namespace tests {
namespace {

class Nulls : public HostTest {};

TEST_F(Nulls, AreAcceptedByEveryOperationOnObjects) {
  const Box box = counter();
  t_dictionary *d = dictionary_new();
  const double number = 1.0;
  const t_atom value = atom(1.0);
  t_symbol *name = gensym("x");

  EXPECT_EQ(atom_setfloat(nullptr, 1), RESULT_FAILED);
  EXPECT_EQ(atom_setsym(nullptr, name), RESULT_FAILED);
  EXPECT_EQ(atom_getsym(nullptr), gensym(""));
  attr_args_process(nullptr, 1, &value);
  attr_args_process(box, 1, nullptr);
  EXPECT_EQ(dictionary_clear(nullptr), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendsym(nullptr, name, name), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendsym(d, nullptr, name), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendfloat(nullptr, name, 1), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendfloat(d, nullptr, 1), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendatomarray(d, name, nullptr), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendatomarray(nullptr, nullptr, nullptr), RESULT_FAILED);
  EXPECT_EQ(dictobj_register(nullptr, nullptr), nullptr);
  EXPECT_EQ(hashtab_lookup(nullptr, name), nullptr);
  EXPECT_EQ(object_addattr_parse(nullptr, "p", gensym("long"), "1"), RESULT_FAILED);
  EXPECT_EQ(object_alloc(nullptr), nullptr);
  EXPECT_EQ(object_attach_byptr_register(nullptr, box, name), RESULT_FAILED);
  EXPECT_EQ(object_attach_byptr_register(box, nullptr, name), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdisabled(nullptr, name, 1), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdisabled(box, nullptr, 1), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(nullptr, name, 1, &number), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(box, nullptr, 1, &number), RESULT_FAILED);
  EXPECT_EQ(object_attr_setsym(nullptr, name, name), RESULT_FAILED);
  EXPECT_EQ(object_attr_setsym(box, nullptr, name), RESULT_FAILED);
  EXPECT_EQ(object_free(nullptr), RESULT_FAILED);
  EXPECT_EQ(object_method_imp(nullptr, name), nullptr);
  EXPECT_EQ(object_method_imp(box, nullptr), nullptr);
  EXPECT_EQ(object_new_typed(nullptr, nullptr, 0, nullptr), nullptr);
  EXPECT_EQ(outlet_new(nullptr, "x"), nullptr);
  EXPECT_EQ(outlet_anything(nullptr, name, 0, nullptr), RESULT_FAILED);
  EXPECT_EQ(outlet_anything(outlet_new(box, nullptr), nullptr, 0, nullptr), RESULT_FAILED);
  qelem_set(nullptr);
  qelem_unset(nullptr);
  qelem_free(nullptr);
  sysmem_freeptr(nullptr);

  object_free(d);
  EXPECT_EQ(host.run_deferred(), 0U);
  EXPECT_THAT(host.posts(), IsEmpty());
}

TEST_F(Nulls, AreAcceptedWhileAModuleStarts) {
  during_load([] {
    t_symbol *name = gensym("x");
    const t_method method = as_method(+[](void *) {});
    EXPECT_EQ(class_addmethod(nullptr, method, "x", ARGS_NONE), RESULT_FAILED);
    EXPECT_EQ(class_dspinit(nullptr), RESULT_FAILED);
    EXPECT_EQ(class_extra_lookup(nullptr, gensym("methods")), nullptr);
    EXPECT_EQ(class_register(common_symbols->box, nullptr), RESULT_FAILED);
    EXPECT_EQ(class_addattr(nullptr, nullptr), RESULT_FAILED);
    EXPECT_EQ(class_attr_get(nullptr, name), nullptr);
    EXPECT_EQ(attr_addfilter_clip(nullptr, 0, 1, 1, 1), RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_parse(nullptr, "a", "p", gensym("long"), "1"), RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_format(nullptr, "a", "p", gensym("long"), "l", t_long{1}),
              RESULT_FAILED);
    t_class *c = class_new(
        "x", [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; }, nullptr,
        sizeof(t_object) + 8, nullptr, ARGS_VARIABLE, 0);
    EXPECT_EQ(class_addmethod(c, nullptr, "x", ARGS_NONE), RESULT_FAILED);
    EXPECT_EQ(class_addmethod(c, method, nullptr, ARGS_NONE), RESULT_FAILED);
    EXPECT_EQ(class_addattr(c, nullptr), RESULT_FAILED);
    EXPECT_EQ(class_attr_get(c, nullptr), nullptr);
    EXPECT_EQ(class_register(nullptr, c), RESULT_FAILED);
    class_addattr(c, attr_offset_new("a", gensym("long"), sizeof(t_object)));
    EXPECT_EQ(class_attr_addattr_parse(c, nullptr, "p", gensym("long"), "1"), RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_parse(c, "a", nullptr, gensym("long"), "1"), RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_parse(c, "a", "p", nullptr, "1"), RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_parse(c, "a", "p", gensym("long"), nullptr), RESULT_FAILED);
  });
}

// Nothing is done with null in the place of an object, so nothing is posted.
TEST_F(Nulls, PostNothing) {
  object_error(nullptr, "about %s", "nobody");
  EXPECT_THAT(host.posts(), IsEmpty());
}

// Stored as a symbol, null would be read as one by whoever asks for the value.
TEST_F(Nulls, AreNoValueOfAnAttribute) {
  const Box box = counter("unit: Hz");
  EXPECT_EQ(object_attr_setsym(box, gensym("unit"), nullptr), RESULT_FAILED);
  EXPECT_EQ(host.get(box, "unit"), Values{"Hz"});
}

TEST_F(Nulls, AreNoValueInADictionary) {
  t_symbol *name = gensym("mine");
  t_dictionary *d = dictobj_register(nullptr, &name);
  EXPECT_EQ(dictionary_appendsym(d, gensym("key"), nullptr), RESULT_FAILED);
  EXPECT_EQ(host.dictionary("mine"), patchbay::Dictionary{});
  object_free(d);
}

TEST_F(Nulls, AreNoValueOfAnAtom) {
  t_atom value = atom(2.5);
  EXPECT_EQ(atom_setsym(&value, nullptr), RESULT_FAILED);
  EXPECT_EQ(value.type, ATOM_FLOAT);
}

TEST(WithoutAHost, OperationsFail) {
  const double number = 1.0;
  t_atom value{};
  EXPECT_EQ(dictionary_new(), nullptr);
  EXPECT_EQ(qelem_new(nullptr, [](void *) {}), nullptr);
  EXPECT_EQ(object_new_typed(gensym("box"), gensym("dict"), 0, nullptr), nullptr);
  EXPECT_EQ(object_free(&value), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(&value, gensym("x"), 1, &number), RESULT_FAILED);
  EXPECT_EQ(class_addattr(nullptr, nullptr), RESULT_FAILED);
  object_error(nullptr, "to nobody");
  qelem_set(nullptr);
}

}  // namespace
}  // namespace tests

// Describing attributes, while a module starts.

#include "host_test.h"

namespace tests {
namespace {

struct Record {
  t_object object;
  t_long count;
  double values[2];
};

t_class *record_class = nullptr;

t_class *describe(const char *name = "record") {
  const t_constructor make = [](t_symbol *, t_long, t_atom *) {
    return object_alloc(record_class);
  };
  record_class = class_new(name, make, nullptr, sizeof(Record), nullptr, ARGS_VARIABLE, 0);
  return record_class;
}

class AttributeDescriptions : public HostTest {};

TEST_F(AttributeDescriptions, NeedANameATypeAndRoom) {
  during_load([] {
    t_symbol *type = gensym("long");
    const t_long at = offsetof(Record, count);
    EXPECT_EQ(attr_offset_new(nullptr, type, at), nullptr);
    EXPECT_EQ(attr_offset_new("a", nullptr, at), nullptr);
    EXPECT_EQ(attr_offset_new("a", gensym("colour"), at), nullptr);
    EXPECT_EQ(attr_offset_array_new("a", type, 0, at, at), nullptr);
  });
  EXPECT_THAT(inspector.leaks(), IsEmpty());
  expect_problems(ElementsAre(HasSubstr("attr_offset_new"), HasSubstr("attr_offset_array_new")));
}

// Storing such a value would overwrite the header, or what is not the instance's.
TEST_F(AttributeDescriptions, MustLieWithinTheRecord) {
  during_load([] {
    t_class *c = describe();
    const auto add = [c](t_attr *attr) { return class_addattr(c, attr); };
    const t_long size = sizeof(Record);
    const t_long count = offsetof(Record, count);
    const t_long values = offsetof(Record, values);
    t_symbol *type = gensym("float64");
    EXPECT_EQ(add(attr_offset_new("a", type, size)), RESULT_FAILED);
    EXPECT_EQ(add(attr_offset_new("b", type, size - 7)), RESULT_FAILED);
    EXPECT_EQ(add(attr_offset_new("c", type, -8)), RESULT_FAILED);
    EXPECT_EQ(add(attr_offset_new("d", type, 0)), RESULT_FAILED);
    EXPECT_EQ(add(attr_offset_array_new("e", type, 3, count, values)), RESULT_FAILED);
    EXPECT_EQ(add(attr_offset_array_new("f", type, 2, size, values)), RESULT_FAILED);
    EXPECT_EQ(add(attr_offset_new("g", type, size - 8)), RESULT_OK);
    EXPECT_EQ(add(attr_offset_array_new("h", type, 2, count, values)), RESULT_OK);
    class_register(common_symbols->box, c);
  });
  std::vector<std::string> names;
  for (const patchbay::AttributeInfo &info : host.attributes("record")) names.push_back(info.name);
  EXPECT_THAT(names, ElementsAre("g", "h"));
  expect_problems(ElementsAre(HasSubstr("'a'"), HasSubstr("'b'"), HasSubstr("'c'"),
                              HasSubstr("'d'"), HasSubstr("'e'"), HasSubstr("'f'")));
}

TEST_F(AttributeDescriptions, BelongToTheClassEvenWhenTheirNameIsTaken) {
  during_load([] {
    t_class *c = describe();
    t_attr *first = attr_offset_new("value", gensym("long"), offsetof(Record, count));
    EXPECT_EQ(class_addattr(c, first), RESULT_OK);
    EXPECT_EQ(
        class_addattr(c, attr_offset_new("value", gensym("float64"), offsetof(Record, values))),
        RESULT_FAILED);
    EXPECT_EQ(class_attr_get(c, gensym("value")), first);
  });
  EXPECT_THAT(inspector.leaks(), IsEmpty());
}

TEST_F(AttributeDescriptions, ThatAreNeverAddedLeak) {
  during_load([] { attr_offset_new("value", gensym("long"), offsetof(Record, count)); });
  expect_problems(ElementsAre(HasSubstr("attribute")));
}

TEST_F(AttributeDescriptions, ThatAreAddedTwiceAreNamedAndStayInPlace) {
  during_load([] {
    t_class *c = describe();
    t_attr *attr = attr_offset_new("value", gensym("long"), offsetof(Record, count));
    EXPECT_EQ(class_addattr(c, attr), RESULT_OK);
    EXPECT_EQ(class_addattr(c, attr), RESULT_FAILED);
    EXPECT_EQ(attr_addfilter_clip(attr, 0, 1, 1, 1), RESULT_OK) << "the class has it still";
    class_register(common_symbols->box, c);
  });
  EXPECT_THAT(inspector.violations(), ElementsAre(HasSubstr("class_addattr")));
  const Box box = host.make("record");
  host.set(box, "value", {5});
  EXPECT_EQ(host.get(box, "value"), Values{1});
  expect_problems(ElementsAre(HasSubstr("class_addattr")));
}

TEST_F(AttributeDescriptions, OfOneClassAreNotAnothers) {
  during_load([] {
    t_attr *attr = attr_offset_new("value", gensym("long"), offsetof(Record, count));
    EXPECT_EQ(class_addattr(describe("first"), attr), RESULT_OK);
    EXPECT_EQ(class_addattr(describe("second"), attr), RESULT_FAILED);
  });
  expect_problems(ElementsAre(HasSubstr("class_addattr")));
}

TEST_F(AttributeDescriptions, HavePropertiesOfAType) {
  during_load([] {
    t_class *c = describe();
    class_addattr(c, attr_offset_new("value", gensym("long"), offsetof(Record, count)));
    const auto parse = [c](const char *attr, const char *type, const char *text) {
      return class_attr_addattr_parse(c, attr, type, gensym(type), text);
    };
    EXPECT_EQ(parse("value", "symbol", "two words"), RESULT_OK);
    EXPECT_EQ(parse("value", "long", "4"), RESULT_OK);
    EXPECT_EQ(parse("value", "float64", "4"), RESULT_OK);
    EXPECT_EQ(parse("value", "atom", "a 1 \"b c\""), RESULT_OK);
    EXPECT_EQ(parse("value", "long", "4.5"), RESULT_FAILED);
    EXPECT_EQ(parse("value", "long", "1 2"), RESULT_FAILED);
    EXPECT_EQ(parse("value", "float64", "many"), RESULT_FAILED);
    EXPECT_EQ(parse("value", "atom", "\"open"), RESULT_FAILED);
    EXPECT_EQ(parse("value", "colour", "red"), RESULT_FAILED);
    EXPECT_EQ(parse("other", "long", "4"), RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_format(c, "value", "odd", gensym("long"), "x", t_long{1}),
              RESULT_FAILED);
    EXPECT_EQ(class_attr_addattr_format(c, "value", "list", gensym("atom"), "lfs", t_long{1}, 0.5,
                                        gensym("end")),
              RESULT_OK);
    class_register(common_symbols->box, c);
  });
  const patchbay::AttributeInfo info = host.attributes("record").at(0);
  EXPECT_THAT(
      info.properties,
      ElementsAre(Pair("symbol", Values{"two words"}), Pair("long", Values{4}), _,
                  Pair("atom", Values{"a", 1, "b c"}), Pair("list", Values{1, 0.5, "end"})));
}

// The text is read during the call and never kept.
TEST_F(AttributeDescriptions, DoNotKeepTheTextTheyAreGiven) {
  during_load([] {
    char name[] = "value";
    char property[] = "label";
    char text[] = "A Label";
    t_class *c = describe();
    class_addattr(c, attr_offset_new(name, gensym("long"), offsetof(Record, count)));
    class_attr_addattr_parse(c, name, property, gensym("symbol"), text);
    class_register(common_symbols->box, c);
    name[0] = property[0] = text[0] = 'x';
  });
  const patchbay::AttributeInfo info = host.attributes("record").at(0);
  EXPECT_EQ(info.name, "value");
  EXPECT_EQ(info.property("label"), Values{"A Label"});
}

}  // namespace
}  // namespace tests

// Dictionaries and atom arrays.

#include "host_test.h"

namespace tests {
namespace {

using patchbay::Dictionary;
using patchbay::Entry;

class Dictionaries : public HostTest {
 protected:
  // Registers a dictionary, which the test frees.
  t_dictionary *registered(t_dictionary *dictionary, const std::string &name,
                           std::string *given = nullptr) {
    t_symbol *symbol = gensym(name.c_str());
    t_dictionary *result = dictobj_register(dictionary, &symbol);
    if (given != nullptr) *given = symbol->name;
    return result;
  }

  std::vector<std::string> keys(const std::string &name) {
    std::vector<std::string> list;
    for (const auto &[key, entry] : host.dictionary(name).value_or(Dictionary{}))
      list.push_back(key);
    return list;
  }
};

TEST_F(Dictionaries, AreFilledByABox) {
  const Box box = counter("name: mine gain: 2.5 unit: Hz");
  EXPECT_EQ(host.dictionary("mine"), Dictionary{});
  host.send(box, "publish");
  EXPECT_EQ(host.dictionary("mine"),
            (Dictionary{{"gain", 2.5}, {"unit", "Hz"}, {"pair", Values{0.5, "half"}}}));
}

TEST_F(Dictionaries, KeepTheOrderOfTheirKeys) {
  t_dictionary *d = registered(nullptr, "ordered");
  for (const char *key : {"z", "a", "m"})
    EXPECT_EQ(dictionary_appendfloat(d, gensym(key), 1), RESULT_OK);
  EXPECT_EQ(dictionary_appendsym(d, gensym("a"), gensym("again")), RESULT_OK);
  EXPECT_EQ(host.dictionary("ordered"), (Dictionary{{"z", 1.0}, {"a", "again"}, {"m", 1.0}}));
  object_free(d);
}

TEST_F(Dictionaries, ReleaseTheArrayThatTheyReplace) {
  t_dictionary *d = registered(nullptr, "replaced");
  t_atomarray *first = atomarray_new(0, nullptr);
  dictionary_appendatomarray(d, gensym("key"), first);
  const t_atom value = atom(t_long{3});
  EXPECT_EQ(dictionary_appendatomarray(d, gensym("key"), atomarray_new(1, &value)), RESULT_OK);
  EXPECT_EQ(host.dictionary("replaced"), (Dictionary{{"key", Values{3}}}));
  EXPECT_EQ(dictionary_appendfloat(d, gensym("key"), 1), RESULT_OK);
  EXPECT_THAT(inspector.leaks(), SizeIs(1)) << "the dictionary itself";
  object_free(first);
  object_free(d);
  expect_problems(ElementsAre(HasSubstr("dictionary_appendatomarray has released")));
}

TEST_F(Dictionaries, CanBeCleared) {
  t_dictionary *d = registered(nullptr, "cleared");
  t_atomarray *array = atomarray_new(0, nullptr);
  dictionary_appendatomarray(d, gensym("array"), array);
  dictionary_appendfloat(d, gensym("number"), 1);
  EXPECT_EQ(dictionary_clear(d), RESULT_OK);
  EXPECT_EQ(host.dictionary("cleared"), Dictionary{}) << "it keeps its name";
  EXPECT_EQ(object_free(array), RESULT_FAILED) << "its arrays are gone";
  object_free(d);
  expect_problems(ElementsAre(AllOf(HasSubstr("object_free"), HasSubstr("dictionary_clear"))));
}

TEST_F(Dictionaries, AreFoundWhileTheyLive) {
  t_dictionary *d = dictionary_new();
  EXPECT_THAT(host.dictionary_names(), IsEmpty()) << "a new one has no name";
  EXPECT_EQ(registered(d, "found"), d);
  EXPECT_THAT(host.dictionary_names(), ElementsAre("found"));
  EXPECT_EQ(host.dictionary("lost"), std::nullopt);
  EXPECT_EQ(object_free(d), RESULT_OK);
  EXPECT_EQ(host.dictionary("found"), std::nullopt);
}

TEST_F(Dictionaries, MoveWhenTheyAreRenamed) {
  const Box box = counter("name: first");
  host.send(box, "publish");
  host.set(box, "name", {"second"});
  EXPECT_THAT(host.dictionary_names(), ElementsAre("second"));
  EXPECT_THAT(keys("second"), ElementsAre("gain", "unit", "pair"));
  host.set(box, "name", {"second"});
  EXPECT_EQ(host.get(box, "name"), Values{"second"}) << "its own name is free for it";
}

TEST_F(Dictionaries, GetAFreeNameWhenTheirsIsTaken) {
  t_dictionary *first = registered(nullptr, "wanted");
  std::string given;
  t_dictionary *second = registered(dictionary_new(), "wanted", &given);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(given, "wanted");
  EXPECT_THAT(host.dictionary_names(), UnorderedElementsAre("wanted", given));
  dictionary_appendfloat(first, gensym("first"), 1);
  dictionary_appendfloat(second, gensym("second"), 2);
  EXPECT_THAT(keys("wanted"), ElementsAre("first"));
  EXPECT_THAT(keys(given), ElementsAre("second"));

  object_free(first);
  EXPECT_EQ(registered(second, "wanted", &given), second);
  EXPECT_EQ(given, "wanted") << "it is free again";
  object_free(second);
}

TEST_F(Dictionaries, LeaveTheirNameForAFreeOneWhenTheWantedIsTaken) {
  t_dictionary *first = registered(nullptr, "one");
  t_dictionary *second = registered(nullptr, "two");
  std::string given;
  EXPECT_EQ(registered(second, "one", &given), second);
  EXPECT_THAT(host.dictionary_names(), UnorderedElementsAre("one", given));
  object_free(first);
  object_free(second);
}

TEST_F(Dictionaries, GetANameWhenTheyAskForNone) {
  std::string first;
  std::string second;
  t_dictionary *d = registered(nullptr, "", &first);
  t_dictionary *e = registered(nullptr, "", &second);
  EXPECT_NE(first, "");
  EXPECT_NE(second, first);
  t_symbol *none = nullptr;
  t_dictionary *f = dictobj_register(nullptr, &none);
  EXPECT_NE(none, nullptr);
  EXPECT_THAT(host.dictionary_names(), SizeIs(3));
  for (t_dictionary *dictionary : {d, e, f}) object_free(dictionary);
}

TEST_F(Dictionaries, AreSortedByName) {
  t_dictionary *d = registered(nullptr, "b");
  t_dictionary *e = registered(nullptr, "c");
  t_dictionary *f = registered(nullptr, "a");
  EXPECT_THAT(host.dictionary_names(), ElementsAre("a", "b", "c"));
  for (t_dictionary *dictionary : {d, e, f}) object_free(dictionary);
}

TEST_F(Dictionaries, OwnTheirArrays) {
  t_dictionary *d = dictionary_new();
  t_dictionary *e = dictionary_new();
  t_atomarray *array = atomarray_new(0, nullptr);
  EXPECT_EQ(dictionary_appendatomarray(d, gensym("key"), array), RESULT_OK);
  EXPECT_EQ(object_free(array), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendatomarray(e, gensym("key"), array), RESULT_FAILED);
  EXPECT_EQ(dictionary_appendatomarray(d, gensym("other"), array), RESULT_FAILED);
  EXPECT_THAT(inspector.leaks(), SizeIs(2)) << "both dictionaries";
  object_free(d);
  object_free(e);
  expect_problems(ElementsAre(AllOf(HasSubstr("object_free"), HasSubstr("atom array")),
                              HasSubstr("dictionary_appendatomarray"),
                              HasSubstr("dictionary_appendatomarray")));
}

TEST(AtomArrays, WithoutAHostAreNotMade) { EXPECT_EQ(atomarray_new(0, nullptr), nullptr); }

TEST_F(Dictionaries, HoldArraysWithCopiesOfTheirAtoms) {
  t_atom atoms[] = {atom(t_long{1}), atom(2.5), atom("three")};
  t_dictionary *d = registered(nullptr, "copies");
  t_atomarray *array = atomarray_new(2, atoms);
  dictionary_appendatomarray(d, gensym("key"), array);
  atoms[0] = atom("overwritten");
  EXPECT_EQ(host.dictionary("copies"), (Dictionary{{"key", Values{1, 2.5}}}));

  t_atom others[] = {atom("a"), atom("b"), atom("c")};
  EXPECT_EQ(object_method_imp(array, gensym("setatoms64"), t_long{3}, others), array);
  others[2] = atom("overwritten");
  EXPECT_EQ(host.dictionary("copies"), (Dictionary{{"key", Values{"a", "b", "c"}}}));
  EXPECT_EQ(object_method_imp(array, gensym("setatoms64"), t_long{-1}, others), nullptr);
  EXPECT_EQ(object_method_imp(array, gensym("setatoms64"), t_long{1}, nullptr), nullptr);
  EXPECT_EQ(object_method_imp(array, gensym("dance")), nullptr);
  EXPECT_EQ(host.dictionary("copies"), (Dictionary{{"key", Values{"a", "b", "c"}}}));
  object_free(d);
}

TEST_F(Dictionaries, AreNotMadeOfArraysThatCannotBe) {
  EXPECT_EQ(atomarray_new(1, nullptr), nullptr);
  const t_atom value = atom(1.0);
  EXPECT_EQ(atomarray_new(-1, &value), nullptr);
}

}  // namespace
}  // namespace tests

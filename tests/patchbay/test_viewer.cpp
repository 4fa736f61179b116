// The class "dict": a box that prints a dictionary.

#include "host_test.h"

namespace tests {
namespace {

class Viewer : public HostTest {};

TEST_F(Viewer, IsThereFromTheStart) {
  EXPECT_THAT(host.classes(), ElementsAre("dict"));
  EXPECT_THAT(host.attributes("dict"), IsEmpty());
}

TEST_F(Viewer, PrintsTheDictionaryInTheOrderOfItsKeys) {
  const Box box = counter("name: mine gain: 0.3 unit: Hz");
  host.send(box, "publish");
  host.send(host.make("dict mine"), "edit");
  EXPECT_EQ(printed.str(), "gain : 0.3\nunit : Hz\npair : 0.5 half\n");
}

TEST_F(Viewer, PrintsWhatTheDictionaryHoldsNow) {
  const Box box = counter("name: mine");
  const Box viewer = host.make("dict mine");
  host.send(viewer, "edit");
  EXPECT_EQ(printed.str(), "");
  host.send(box, "publish");
  host.send(viewer, "edit");
  EXPECT_THAT(printed.str(), HasSubstr("gain : 0\n"));
}

TEST_F(Viewer, IsOpenedByABox) {
  const Box box = counter("name: mine gain: 0.3 unit: Hz");
  host.send(box, "publish");
  host.send(box, "show");
  EXPECT_EQ(printed.str(), "gain : 0.3\nunit : Hz\npair : 0.5 half\n");
}

TEST_F(Viewer, SaysThatThereIsNoSuchDictionary) {
  host.send(host.make("dict lost"), "edit");
  EXPECT_EQ(printed.str(), "there is no dictionary 'lost'\n");
}

TEST_F(Viewer, FindsADictionaryWhoseNameIsANumber) {
  t_symbol *name = gensym("5");
  t_dictionary *d = dictobj_register(nullptr, &name);
  dictionary_appendfloat(d, gensym("key"), 1);
  host.send(host.make("dict 5"), "edit");
  EXPECT_EQ(printed.str(), "key : 1\n");
  object_free(d);
}

TEST_F(Viewer, PrintsNumbersThatReadBack) {
  t_symbol *name = gensym("mine");
  t_dictionary *d = dictobj_register(nullptr, &name);
  const double value = 0.1 + 0.2;
  dictionary_appendfloat(d, gensym("key"), value);
  host.send(host.make("dict mine"), "edit");
  EXPECT_EQ(std::stod(printed.str().substr(std::string("key : ").size())), value);
  object_free(d);
}

}  // namespace
}  // namespace tests

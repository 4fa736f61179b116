// Attributes: what a class says of them, and how they are set and read.

#include <cmath>
#include <limits>

#include "host_test.h"

namespace tests {
namespace {

constexpr t_long largest = std::numeric_limits<t_long>::max();
constexpr t_long smallest = std::numeric_limits<t_long>::min();

class Attributes : public HostTest {
 protected:
  // The attribute's description by the class.
  patchbay::AttributeInfo info(const std::string &name) {
    for (const patchbay::AttributeInfo &entry : host.attributes("counter"))
      if (entry.name == name) return entry;
    ADD_FAILURE() << "there is no attribute " << name;
    return {};
  }

  Values after_setting(const std::string &name, const Values &values) {
    host.set(box, name, values);
    return host.get(box, name);
  }

  Box box = counter();
};

TEST_F(Attributes, AreDescribedInTheirOrder) {
  std::vector<std::string> described;
  for (const patchbay::AttributeInfo &entry : host.attributes("counter"))
    described.push_back(entry.name + ' ' + entry.type + ' ' + std::to_string(entry.maximum));
  EXPECT_THAT(described,
              ElementsAre("name symbol 1", "unit symbol 1", "notes symbol 2", "step long 1",
                          "gain float64 1", "limits float64 3", "even long 1", "total long 1",
                          "made long 1", "started long 1"));
  EXPECT_THAT(refusal([&] { host.attributes("compass"); }), HasSubstr("'compass'"));
}

TEST_F(Attributes, ShowTheirBounds) {
  EXPECT_EQ(info("step").lowest, -10.0);
  EXPECT_EQ(info("step").highest, 10.0);
  EXPECT_EQ(info("gain").lowest, 0.25);
  EXPECT_EQ(info("gain").highest, std::nullopt);
  EXPECT_EQ(info("limits").lowest, std::nullopt);
  EXPECT_EQ(info("limits").highest, 1000.0);
}

TEST_F(Attributes, ShowTheirProperties) {
  EXPECT_EQ(info("step").property("label"), Values{"Step Size"});
  EXPECT_EQ(info("step").property("order"), Values{3});
  EXPECT_EQ(info("gain").property("scale"), Values{2.5});
  EXPECT_EQ(info("gain").property("range"), (Values{"of", 2, 0.75}));
  EXPECT_EQ(info("unit").property("choices"), (Values{"none", "per second", 4, 0.5}));
  EXPECT_EQ(info("unit").property("colour"), Values{});
}

TEST_F(Attributes, ConvertNumbersToIntegers) {
  EXPECT_EQ(after_setting("total", {12}), Values{12});
  EXPECT_EQ(after_setting("total", {2.7}), Values{2});
  EXPECT_EQ(after_setting("total", {-2.7}), Values{-2});
  EXPECT_EQ(after_setting("total", {"35"}), Values{35});
  EXPECT_EQ(after_setting("total", {"-3.9"}), Values{-3});
  EXPECT_EQ(after_setting("total", {largest}), Values{largest});
  EXPECT_EQ(after_setting("total", {smallest}), Values{smallest});
  EXPECT_EQ(after_setting("total", {1e300}), Values{largest});
  EXPECT_EQ(after_setting("total", {-1e300}), Values{smallest});
}

TEST_F(Attributes, TakeEveryDigitOfAnIntegerAsText) {
  EXPECT_EQ(after_setting("total", {std::to_string(largest)}), Values{largest});
  EXPECT_EQ(after_setting("total", {"9007199254740993"}), Values{9007199254740993});
}

TEST_F(Attributes, ConvertNumbersToNumbers) {
  EXPECT_EQ(after_setting("gain", {3}), Values{3.0});
  EXPECT_EQ(after_setting("gain", {0.1 + 0.2}), Values{0.1 + 0.2});
  EXPECT_EQ(after_setting("gain", {"1e3"}), Values{1000.0});
}

TEST_F(Attributes, ConvertNumbersToSymbols) {
  EXPECT_EQ(after_setting("unit", {"per second"}), Values{"per second"});
  EXPECT_EQ(after_setting("unit", {7}), Values{"7"});
  EXPECT_EQ(after_setting("unit", {0.1}), Values{"0.1"});
  EXPECT_EQ(after_setting("unit", {""}), Values{""});
}

TEST_F(Attributes, RefuseATextWhereANumberBelongs) {
  host.set(box, "total", {5});
  host.set(box, "gain", {5});
  host.set(box, "limits", {1, 2});
  for (const char *text : {"many", "", "1 2", "0x10", "inf"}) {
    EXPECT_THAT(refusal([&] { host.set(box, "total", {text}); }),
                AllOf(HasSubstr("'total'"), HasSubstr("integer"), HasSubstr(text)));
    EXPECT_THAT(refusal([&] { host.set(box, "gain", {text}); }),
                AllOf(HasSubstr("'gain'"), HasSubstr("number"), HasSubstr(text)));
  }
  EXPECT_THAT(refusal([&] { host.set(box, "total", {std::nan("")}); }), HasSubstr("integer"));
  EXPECT_THAT(refusal([&] { host.set(box, "limits", {7, "x"}); }), HasSubstr("'limits'"));
  EXPECT_EQ(host.get(box, "total"), Values{5});
  EXPECT_EQ(host.get(box, "gain"), Values{5.0});
  EXPECT_EQ(host.get(box, "limits"), (Values{1.0, 2.0}));
}

TEST_F(Attributes, RefuseAStrayQuoteInTheirOwnName) {
  EXPECT_THAT(refusal([&] { host.set(box, "total", {"\"5"}); }), HasSubstr("'total'"));
}

TEST_F(Attributes, BecomeTheBoundThatAValueIsBeyond) {
  EXPECT_EQ(after_setting("step", {11}), Values{10});
  EXPECT_EQ(after_setting("step", {10}), Values{10});
  EXPECT_EQ(after_setting("step", {-10.9}), Values{-10});
  EXPECT_EQ(after_setting("step", {-1e300}), Values{-10});
  EXPECT_EQ(after_setting("gain", {0.2}), Values{0.25});
  EXPECT_EQ(after_setting("gain", {1e6}), Values{1e6}) << "the upper bound does not hold";
  EXPECT_EQ(after_setting("limits", {2000, 1, 1001}), (Values{1000.0, 1.0, 1000.0}));
}

TEST_F(Attributes, HaveRoomForSoManyValues) {
  EXPECT_EQ(host.get(box, "limits"), Values{});
  EXPECT_EQ(after_setting("limits", {1, 2, 3, 4, 5}), (Values{1.0, 2.0, 3.0}));
  EXPECT_EQ(after_setting("limits", {9}), Values{9.0});
  EXPECT_EQ(after_setting("notes", {"a", "b", "c"}), (Values{"a", "b"}));
  EXPECT_EQ(after_setting("total", {1, 2}), Values{1});
  EXPECT_THAT(refusal([&] { host.set(box, "limits", {}); }), HasSubstr("'limits'"));
  EXPECT_EQ(host.get(box, "limits"), Values{9.0});
}

TEST_F(Attributes, MustBeThere) {
  const auto names_both = AllOf(HasSubstr("'counter'"), HasSubstr("'colour'"), HasSubstr("gain"));
  EXPECT_THAT(refusal([&] { host.set(box, "colour", {1}); }), names_both);
  EXPECT_THAT(refusal([&] { host.get(box, "colour"); }), names_both);
  EXPECT_THAT(refusal([&] { host.disabled(box, "colour"); }), names_both);
}

TEST_F(Attributes, AreStoredByTheirSetter) {
  EXPECT_EQ(after_setting("even", {9}), Values{8});
  EXPECT_EQ(after_setting("even", {7.9}), Values{6}) << "converted first";
  EXPECT_EQ(after_setting("even", {1000}), Values{100}) << "clipped first";
}

// What a setter reports is what the setting reports, and nothing has changed.
TEST_F(Attributes, ThatTheirSetterRefusesStayAsTheyWere) {
  host.set(box, "even", {4});
  listen(box, 2);
  const double negative = -2.0;
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("even"), 1, &negative), RESULT_FAILED);
  EXPECT_EQ(host.get(box, "even"), Values{4});
  EXPECT_THAT(heard, IsEmpty()) << "no notice of a change that was not made";
  EXPECT_THAT(refusal([&] { host.set(box, "even", {-2}); }), HasSubstr("'even'"));
}

TEST_F(Attributes, AreSetByModules) {
  const double values[] = {300.5, 2000.0, 7.0, 8.0};
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("limits"), 4, values), RESULT_OK);
  EXPECT_EQ(host.get(box, "limits"), (Values{300.5, 1000.0, 7.0}));
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("total"), 1, values), RESULT_OK);
  EXPECT_EQ(host.get(box, "total"), Values{300});
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("unit"), 1, values), RESULT_OK);
  EXPECT_EQ(host.get(box, "unit"), Values{"300.5"});
  EXPECT_EQ(object_attr_setsym(box, gensym("unit"), gensym("Hz")), RESULT_OK);
  EXPECT_EQ(host.get(box, "unit"), Values{"Hz"});
  EXPECT_EQ(object_attr_setsym(box, gensym("total"), gensym("12")), RESULT_OK);
  EXPECT_EQ(host.get(box, "total"), Values{12});
}

TEST_F(Attributes, AreNotSetByModulesToWhatDoesNotFit) {
  const double value = 1.0;
  EXPECT_EQ(object_attr_setsym(box, gensym("total"), gensym("many")), RESULT_FAILED);
  EXPECT_EQ(object_attr_setsym(box, gensym("colour"), gensym("red")), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("colour"), 1, &value), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("gain"), 0, &value), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("gain"), -1, &value), RESULT_FAILED);
  EXPECT_EQ(object_attr_setdouble_array(box, gensym("gain"), 1, nullptr), RESULT_FAILED);
  EXPECT_EQ(host.get(box, "total"), Values{0});
  EXPECT_EQ(host.get(box, "gain"), Values{0.0});
}

// No exception leaves an operation, not even for want of memory.
TEST_F(Attributes, AreNotSetToMoreValuesThanMemoryHolds) {
  const double value = 1.0;
  const t_long count = t_long{1} << 59;
  t_result result = RESULT_OK;
  EXPECT_NO_THROW(result = object_attr_setdouble_array(box, gensym("notes"), count, &value));
  EXPECT_EQ(result, RESULT_FAILED);
}

TEST_F(Attributes, AreSetFromArguments) {
  const t_atom arguments[] = {atom("gain:"),   atom(2.5),      atom("limits:"), atom(t_long{1}),
                              atom(t_long{2}), atom("total:"), atom("x")};
  attr_args_process(box, 7, arguments);
  EXPECT_EQ(host.get(box, "gain"), Values{2.5});
  EXPECT_EQ(host.get(box, "limits"), (Values{1.0, 2.0}));
  EXPECT_EQ(host.get(box, "total"), Values{0});
  EXPECT_THAT(texts(host.posts()), ElementsAre(HasSubstr("'total'")));
}

TEST_F(Attributes, CanBeShownAsOutOfUse) {
  const Box other = counter();
  listen(box, 2);
  EXPECT_FALSE(host.disabled(box, "gain"));
  EXPECT_EQ(object_attr_setdisabled(box, gensym("gain"), 1), RESULT_OK);
  EXPECT_TRUE(host.disabled(box, "gain"));
  EXPECT_FALSE(host.disabled(box, "step"));
  EXPECT_FALSE(host.disabled(other, "gain")) << "another instance";
  EXPECT_THAT(heard, IsEmpty()) << "no notice is sent";
  EXPECT_EQ(after_setting("gain", {3}), Values{3.0}) << "it can still be set";
  EXPECT_TRUE(host.disabled(box, "gain"));
  EXPECT_EQ(object_attr_setdisabled(box, gensym("gain"), 0), RESULT_OK);
  EXPECT_FALSE(host.disabled(box, "gain"));
  EXPECT_EQ(object_attr_setdisabled(box, gensym("colour"), 1), RESULT_FAILED);
}

TEST_F(Attributes, AnswerMessages) {
  during_load([] {
    t_attr *attr = attr_offset_new("age", gensym("long"), sizeof(t_object));
    EXPECT_EQ(object_method_imp(attr, common_symbols->getname), gensym("age"));
    const t_attr_setter setter = [](void *, t_attr *, t_long, t_atom *) { return RESULT_OK; };
    const t_method none = nullptr;
    const auto set_method = [&](const char *which, t_method method) {
      return object_method_imp(attr, gensym("setmethod"), gensym(which), method);
    };
    EXPECT_EQ(set_method("set", as_method(setter)), attr);
    EXPECT_EQ(set_method("set", none), attr);
    EXPECT_EQ(set_method("get", none), attr);
    EXPECT_EQ(set_method("get", as_method(setter)), nullptr) << "reading cannot be replaced";
    EXPECT_EQ(set_method("put", as_method(setter)), nullptr);
    EXPECT_EQ(object_method_imp(attr, gensym("dance")), nullptr);
    t_class *c = class_new(
        "x", [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; }, nullptr,
        sizeof(t_object) + 8, nullptr, ARGS_VARIABLE, 0);
    EXPECT_EQ(class_addattr(c, attr), RESULT_OK);
    EXPECT_EQ(class_attr_get(c, gensym("age")), attr);
    EXPECT_EQ(class_attr_get(c, gensym("colour")), nullptr);
  });
  expect_problems(
      ElementsAre(HasSubstr("setmethod was given 'get'"), HasSubstr("setmethod was given 'put'")));
}

}  // namespace
}  // namespace tests

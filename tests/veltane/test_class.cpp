// What the module declares to the host when it is loaded.

#include <array>
#include <cstdio>
#include <memory>

#include "box_test.h"

using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

std::vector<std::string> output_of(const std::string &command) {
  const std::unique_ptr<FILE, int (*)(FILE *)> pipe(popen(command.c_str(), "r"), pclose);
  std::vector<std::string> lines;
  std::array<char, 512> line{};
  while (pipe && std::fgets(line.data(), line.size(), pipe.get()) != nullptr)
    lines.emplace_back(line.data());
  return lines;
}

// The calls that describe one attribute.
std::vector<std::string> attribute(const std::string &name, const std::string &made,
                                   const std::vector<std::string> &special,
                                   const std::string &style, const std::string &choices,
                                   const std::string &category, bool basic) {
  const auto property = [&](const std::string &rest) {
    return "class_attr_addattr_parse(" + name + ", " + rest + ")";
  };
  std::vector<std::string> calls{made, "class_addattr(" + name + ")"};
  calls.insert(calls.end(), special.begin(), special.end());
  if (!style.empty()) calls.push_back(property("style, symbol, " + style));
  if (!choices.empty()) calls.push_back(property("enumvals, atom, " + choices));
  calls.push_back("class_attr_addattr_format(" + name + ", label, symbol, s)");
  calls.push_back(property("category, symbol, " + category));
  if (basic) calls.push_back(property("basic, long, 1"));
  return calls;
}

// Labels and categories pass through the translation, before the call that
// takes them; that is one call each, asserted by count.
bool is_translation(const std::string &call) {
  return call.starts_with("gensym_tr") || call.starts_with("str_tr");
}

}  // namespace

TEST(Loading, DescribesTheClassInThisOrder) {
  std::ostringstream printed;
  patchbay::Host host(printed);
  patchbay::Inspector inspector(host);
  inspector.start_trace();
  host.load(VELTANE_MODULE);
  std::vector<std::string> calls = texts(inspector.stop_trace());
  EXPECT_EQ(std::count_if(calls.begin(), calls.end(), is_translation), 24);
  std::erase_if(calls, is_translation);

  const std::string size = calls.at(0).substr(calls.at(0).find(' ') + 1);
  EXPECT_EQ(calls.at(0), "class_new(veltane, " + size);

  std::vector<std::string> expected{
      calls.at(0),
      "common_symbols_init()",
      "class_addmethod(bang, none)",
      "class_addmethod(dblclick, private)",
      "class_addmethod(assist, private)",
      "class_addmethod(dsp64, private)",
      "class_addmethod(notify, private)",
  };
  const auto add = [&](const std::vector<std::string> &more) {
    expected.insert(expected.end(), more.begin(), more.end());
  };
  const auto plain = [](const std::string &name, const std::string &type) {
    return "attr_offset_new(" + name + ", " + type + ")";
  };
  add(attribute(
      "name", plain("name", "symbol"),
      {"class_attr_get(name)", "object_method_imp(setmethod)", "object_method_imp(setmethod)"}, "",
      "", "Dictionary", false));
  add(attribute("topology", plain("topology", "symbol"), {}, "enum",
                "butterworth chebyshev-1 chebyshev-2", "Filter", true));
  add(attribute("response", plain("response", "symbol"), {}, "enum",
                "lowpass highpass bandpass bandstop", "Filter", true));
  add(attribute("units", plain("units", "symbol"), {}, "enum", "hertz normalized radians",
                "Behavior", false));
  add(attribute("samplerate", plain("samplerate", "long"), {}, "", "", "Behavior", false));
  add(attribute("order", plain("order", "long"), {"attr_addfilter_clip(order, 2, 200, 1, 1)"}, "",
                "", "Filter", true));
  add(attribute("frequency", "attr_offset_array_new(frequency, float64)", {}, "", "", "Filter",
                true));
  add(attribute("passband_ripple", plain("passband_ripple", "float64"),
                {"attr_addfilter_clip(passband_ripple, 0.1, 48, 1, 1)"}, "", "",
                "Chebyshev-I Passband Ripple", false));
  add(attribute("stopband_attenuation", plain("stopband_attenuation", "float64"),
                {"attr_addfilter_clip(stopband_attenuation, 6, 240, 1, 1)"}, "", "", "Filter",
                false));
  for (const char *name : {"zpk_output", "sos_output", "tf_output"})
    add(attribute(name, plain(name, "long"), {}, "onoff", "", "Dictionary", false));
  add({"class_dspinit()", "class_extra_lookup(methods)", "hashtab_lookup(signal)",
       "object_addattr_parse(undocumented, long, 1)", "class_register(box)"});
  EXPECT_THAT(calls, ElementsAreArray(expected));
  EXPECT_THAT(host.close(), testing::IsEmpty());
}

TEST(Loading, ExportsTheStartFunctionAlone) {
  const std::vector<std::string> symbols =
      output_of(std::string("nm -D --defined-only '") + VELTANE_MODULE + "'");
  ASSERT_EQ(symbols.size(), 1U);
  EXPECT_THAT(symbols[0], testing::HasSubstr(" T ext_main"));
}

TEST(Loading, NeedsNoLibraryOfOurs) {
  for (const std::string &line :
       output_of(std::string("readelf -d '") + VELTANE_MODULE + "' | grep NEEDED"))
    EXPECT_THAT(line, testing::Not(testing::AnyOf(testing::HasSubstr("patchbay"),
                                                  testing::HasSubstr("fmt"))));
}

TEST_F(BoxTest, TheClassHasTwelveAttributes) {
  std::vector<std::string> names;
  for (const auto &attribute : host.attributes("veltane")) names.push_back(attribute.name);
  EXPECT_THAT(names, ElementsAre("name", "topology", "response", "units", "samplerate", "order",
                                 "frequency", "passband_ripple", "stopband_attenuation",
                                 "zpk_output", "sos_output", "tf_output"));
}

TEST_F(BoxTest, AttributesCarryTheirLabels) {
  std::vector<std::string> labels;
  for (const auto &attribute : host.attributes("veltane"))
    labels.push_back(patchbay::to_text(attribute.property("label").at(0)));
  EXPECT_THAT(labels,
              ElementsAre("Dictionary Name", "Topology", "Response", "Frequency Units",
                          "Sample Rate", "Order", "Cutoff Frequencies", "Frame Size",
                          "Chebyshev-II Stopband Attenuation", "Zeroes, Poles, and Gain",
                          "Second-Order Section Coefficients", "Transfer Function Coefficients"));
}

TEST_F(BoxTest, FrequencyHasRoomForTwoCutoffs) {
  for (const auto &attribute : host.attributes("veltane"))
    EXPECT_EQ(attribute.maximum, attribute.name == "frequency" ? 2U : 1U) << attribute.name;
}

TEST_F(BoxTest, UsersMayOnlySendBang) {
  const Box box = make();
  for (const char *message : {"dblclick", "assist", "dsp64", "notify", "signal"})
    EXPECT_THROW(host.send(box, message), patchbay::Error) << message;
  EXPECT_THROW(host.send(box, "bang", {t_long{1}}), patchbay::Error);
  EXPECT_THROW(host.send(box, "redesign"), patchbay::Error);
  EXPECT_NO_THROW(host.send(box, "bang"));
}

#include "designer/command_words.h"

#include <algorithm>

#include "designer/names.h"

namespace designer {
namespace {

using patchbay::AttributeInfo;
using Words = std::vector<std::string>;

Words values_of(const AttributeInfo &attribute, const Settings &settings) {
  const bool is_switch = attribute.property("style") == Values{std::string("onoff")};
  Words words;
  if (const Values *values = settings.find(attribute.name))
    for (const Value &value : *values) {
      const std::string text = patchbay::to_text(value);
      words.push_back(!is_switch ? text : text == "0" ? "off" : "on");
    }
  return words;
}

bool is_band(const Settings &settings) {
  if (!settings.has("response")) return false;
  const auto response = response_named(settings.text("response"));
  return response && analysis::has_two_edges(*response);
}

}  // namespace

std::string option_for(const std::string &attribute) {
  std::string name = "--" + attribute;
  std::replace(name.begin(), name.end(), '_', '-');
  return name;
}

Words command_words(const std::vector<AttributeInfo> &attributes, const Settings &settings,
                    const Settings &fresh) {
  Words words;
  for (const AttributeInfo &attribute : attributes) {
    const Words values = values_of(attribute, settings);
    // The fresh box has one cutoff. One that becomes a band gets a second, which nobody sees.
    const bool says_more = attribute.name == "frequency" && is_band(settings);
    if (attribute.name == "name" || values.empty() ||
        (values == values_of(attribute, fresh) && !says_more))
      continue;
    words.push_back(option_for(attribute.name));
    words.insert(words.end(), values.begin(), values.end());
  }
  return words;
}

}  // namespace designer

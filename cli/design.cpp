#include "design.h"

#include <algorithm>
#include <new>

#include <fmt/format.h>

#include "memory.h"

namespace cli {
namespace {

using patchbay::AttributeInfo;
using patchbay::Value;
using patchbay::Values;

constexpr char class_name[] = "veltane";

std::string joined(const Values &values, const char *separator) {
  std::string text;
  for (const Value &value : values)
    text += (text.empty() ? "" : separator) + patchbay::to_text(value);
  return text;
}

// The object takes any word for an enumeration and then designs its default; at
// a terminal a slip of the pen deserves a word.
void check_choice(const AttributeInfo &attribute, const Values &values) {
  const Values choices = attribute.property("enumvals");
  if (choices.empty()) return;
  for (const Value &value : values)
    if (std::find(choices.begin(), choices.end(), value) == choices.end())
      throw Refusal(fmt::format("{} cannot be '{}'; it is one of {}", attribute.name,
                                patchbay::to_text(value), joined(choices, ", ")));
}

Values switched(const AttributeInfo &attribute, Values values) {
  if (attribute.property("style") != Values{std::string("onoff")}) return values;
  for (Value &value : values) {
    const std::string text = patchbay::to_text(value);
    if (text == "on" || text == "true" || text == "1")
      value = std::string("1");
    else if (text == "off" || text == "false" || text == "0")
      value = std::string("0");
    else
      throw Refusal(fmt::format("{} is on or off, not '{}'", attribute.name, text));
  }
  return values;
}

void check_room(const AttributeInfo &attribute, const Values &values) {
  if (!values.empty() && values.size() <= attribute.maximum) return;
  throw Refusal(fmt::format("{} takes {}, and {} {} given", attribute.name,
                            attribute.maximum == 1 ? "one value" : "one or two values",
                            values.size(), values.size() == 1 ? "was" : "were"));
}

bool same_number(const Value &asked, const Value &used) {
  const Values read = patchbay::parse_line(patchbay::to_text(asked));
  const auto number = [](const Value &value) {
    const auto *integer = std::get_if<t_long>(&value);
    return integer != nullptr ? static_cast<double>(*integer) : std::get<double>(value);
  };
  return read.size() == 1 && number(read[0]) == number(used);
}

std::string range(const AttributeInfo &attribute) {
  const char *kind = attribute.type == "long" ? "whole numbers" : "numbers";
  if (!attribute.lowest || !attribute.highest) return kind;
  return fmt::format("{} from {} to {}", kind, *attribute.lowest, *attribute.highest);
}

const AttributeInfo &named(const std::vector<AttributeInfo> &attributes, const std::string &name) {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const auto &attribute) { return attribute.name == name; });
  if (found == attributes.end()) throw Refusal(fmt::format("there is no setting '{}'", name));
  return *found;
}

// The object keeps a second cutoff that nobody gave, and ignores one that it does
// not use.
void check_cutoffs(const Settings &requested, const std::string &response,
                   std::vector<std::string> &remarks) {
  const auto found = std::find_if(requested.begin(), requested.end(),
                                  [](const auto &setting) { return setting.first == "frequency"; });
  if (found == requested.end()) return;
  const Values &cutoffs = found->second;
  const bool band = response == "bandpass" || response == "bandstop";
  if (band && cutoffs.size() == 1)
    throw Refusal(fmt::format("a {} has two cutoffs, and --frequency gives one", response));
  if (!band && cutoffs.size() == 2)
    remarks.push_back(fmt::format("a {} has one cutoff: {} is not used", response,
                                  patchbay::to_text(cutoffs[1])));
}

// Why a box published nothing is the last that it posted.
[[noreturn]] void throw_for(const std::vector<patchbay::Post> &posts, std::size_t first) {
  if (posts.size() <= first) throw std::runtime_error("the box published no filter");
  const std::string &reason = posts.back().text;
  if (reason.find(no_memory) != std::string::npos) throw std::bad_alloc();
  throw std::runtime_error(reason);
}

struct BoxOwner {
  patchbay::Host &host;
  patchbay::Box box;
  ~BoxOwner() { host.free(box); }
};

void set_attribute(patchbay::Host &host, patchbay::Box box, const AttributeInfo &attribute,
                   const Values &given, std::vector<std::string> &remarks) {
  check_room(attribute, given);
  check_choice(attribute, given);
  const Values values = switched(attribute, given);
  try {
    host.set(box, attribute.name, values);
  } catch (const patchbay::Error &error) {
    throw Refusal(error.what());
  }
  if (attribute.type == "symbol") return;
  const Values used = host.get(box, attribute.name);
  for (std::size_t i = 0; i < used.size(); ++i)
    if (!same_number(values[i], used[i]))
      remarks.push_back(fmt::format("{} takes {}: {} is used, not {}", attribute.name,
                                    range(attribute), patchbay::to_text(used[i]),
                                    patchbay::to_text(values[i])));
}

// Gives a box its settings. What it changes of them becomes remarks.
void set_all(patchbay::Host &host, patchbay::Box box, const Settings &requested,
             std::vector<std::string> &remarks) {
  const std::vector<AttributeInfo> attributes = host.attributes(class_name);
  for (const auto &[name, values] : requested)
    set_attribute(host, box, named(attributes, name), values, remarks);
  check_cutoffs(requested, patchbay::to_text(host.get(box, "response").at(0)), remarks);
}

void read_all(const patchbay::Host &host, patchbay::Box box, Design &design) {
  for (const AttributeInfo &attribute : host.attributes(class_name))
    design.settings.emplace_back(attribute.name, host.get(box, attribute.name));
  const auto rate = std::get<t_long>(host.get(box, "samplerate").at(0));
  design.samplerate = rate >= 1 ? static_cast<double>(rate) : audio_samplerate;
}

}  // namespace

void load_module(patchbay::Host &host, const std::filesystem::path &module) {
  try {
    host.load(module);
    host.attributes(class_name);
  } catch (const patchbay::Error &error) {
    throw Refusal(fmt::format("the veltane module is missing: {}", error.what()));
  }
}

Design accepted(patchbay::Host &host, const Settings &requested) {
  const BoxOwner owner{host, host.make(class_name)};
  Design design;
  set_all(host, owner.box, requested, design.remarks);
  read_all(host, owner.box, design);
  return design;
}

Design run_design(patchbay::Host &host, const Settings &requested) {
  const std::size_t posted = host.posts().size();
  host.set_samplerate(audio_samplerate);
  const BoxOwner owner{host, host.make(class_name)};
  const patchbay::Box box = owner.box;
  Design design;
  set_all(host, box, requested, design.remarks);
  host.send(box, "bang");
  for (std::size_t i = posted; i < host.posts().size(); ++i)
    if (const std::string &text = host.posts()[i].text;
        design.remarks.empty() || design.remarks.back() != text)
      design.remarks.push_back(text);
  const auto published = host.dictionary(joined(host.get(box, "name"), " "));
  if (!published || published->empty()) throw_for(host.posts(), posted);
  design.dictionary = *published;
  read_all(host, box, design);
  return design;
}

}  // namespace cli

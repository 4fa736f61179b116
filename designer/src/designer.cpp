#include "designer/designer.h"

#include <algorithm>
#include <iostream>
#include <new>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "designer/cutoffs.h"
#include "designer/names.h"
#include "designer/refusal.h"

namespace designer {
namespace {

using patchbay::AttributeInfo;

constexpr char class_name[] = "veltane";

// The name is the one that a host gives to the first box without one. Each new name would stay in
// the host for ever, and a designer may design for days.
constexpr char box_text[] = "veltane name: u1";

// What a box posts that had no memory to design.
constexpr char no_memory[] = "out of memory";

std::string joined(const Values &values, const char *separator) {
  std::string text;
  for (const Value &value : values)
    text += (text.empty() ? "" : separator) + patchbay::to_text(value);
  return text;
}

// The object takes any word for an enumeration and then designs its default; a user who mistyped
// one deserves to be told.
void check_choice(const AttributeInfo &attribute, const Values &choices, const Values &values) {
  if (choices.empty()) return;
  for (const Value &value : values)
    if (std::find(choices.begin(), choices.end(), value) == choices.end())
      throw Refusal(fmt::format("{} cannot be '{}'; it is one of {}", attribute.name,
                                patchbay::to_text(value), joined(choices, ", ")));
}

Values switched(const AttributeInfo &attribute, Values values) {
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

std::string range_text(const AttributeInfo &attribute) {
  const char *kind = attribute.type == "long" ? "whole numbers" : "numbers";
  if (!attribute.lowest || !attribute.highest) return kind;
  return fmt::format("{} from {} to {}", kind, *attribute.lowest, *attribute.highest);
}

std::size_t index_of(const std::vector<AttributeInfo> &attributes, const std::string &name) {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [&](const auto &attribute) { return attribute.name == name; });
  if (found == attributes.end()) throw Refusal(fmt::format("there is no setting '{}'", name));
  return static_cast<std::size_t>(found - attributes.begin());
}

// Why a box published nothing is the last that it posted.
[[noreturn]] void throw_for(const std::vector<patchbay::Post> &posts, std::size_t first) {
  if (posts.size() <= first) throw std::runtime_error("the box published no filter");
  const std::string &reason = posts.back().text;
  if (reason.find(no_memory) != std::string::npos) throw std::bad_alloc();
  throw std::runtime_error(reason);
}

}  // namespace

/** A box for as long as this lives. */
class Designer::Box {
 public:
  explicit Box(Designer &designer)
      : host_(designer.host_),
        attributes_(designer.attributes_),
        rules_(designer.rules_),
        audio_rate_(designer.audio_rate_),
        box_(made()) {}
  ~Box() { host_.free(box_); }
  Box(const Box &) = delete;
  Box &operator=(const Box &) = delete;

  // What it changes of the settings becomes remarks.
  void set(const Settings &requested) {
    refuse_radians(requested);
    // Cutoffs mean something in units only: those come first, in whatever order they were given.
    for (const bool units : {true, false})
      for (const auto &[name, values] : requested)
        if ((name == "units") == units) set(index_of(attributes_, name), values);
    check_cutoffs(requested);
    check_samplerate(requested);
  }

  void bang() { host_.send(box_, "bang"); }

  std::vector<std::string> out_of_use() const {
    std::vector<std::string> names;
    for (const AttributeInfo &attribute : attributes_)
      if (host_.disabled(box_, attribute.name)) names.push_back(attribute.name);
    return names;
  }

  std::optional<patchbay::Dictionary> dictionary() const {
    return host_.dictionary(joined(host_.get(box_, "name"), " "));
  }

  // All but the dictionary.
  Design design() const {
    std::vector<Setting> settings;
    settings.reserve(attributes_.size());
    for (const AttributeInfo &attribute : attributes_)
      settings.push_back({attribute.name, host_.get(box_, attribute.name)});
    Design design;
    design.settings = Settings(std::move(settings));
    const double rate = design.settings.number("samplerate");
    design.samplerate = rate >= 1 ? rate : audio_rate_;
    design.remarks = remarks_;
    for (const Cutoff &cutoff : cutoffs_in(design.settings, design.samplerate))
      if (cutoff.is_clipped())
        design.remarks.push_back(
            fmt::format("a cutoff of {}{} is too {} at a sample rate of {} Hz: {}{} is used",
                        cutoff.asked_text(), cutoff.unit(), cutoff.used < 0.5 ? "low" : "high",
                        design.samplerate, cutoff.used_text(), cutoff.unit()));
    return design;
  }

 private:
  // A box asks for the rate of the audio when it is made.
  patchbay::Box made() {
    host_.set_samplerate(audio_rate_);
    return host_.make(box_text);
  }

  void set(std::size_t index, const Values &given) {
    const AttributeInfo &attribute = attributes_[index];
    check_room(attribute, given);
    check_choice(attribute, rules_[index].choices, given);
    const Values values = rules_[index].is_switch ? switched(attribute, given) : given;
    try {
      host_.set(box_, attribute.name, values);
    } catch (const patchbay::Error &error) {
      throw Refusal(error.what());
    }
    if (attribute.type == "symbol") return;
    const Values used = host_.get(box_, attribute.name);
    for (std::size_t i = 0; i < used.size(); ++i)
      if (number_in(values[i]) != number_in(used[i]))
        remarks_.push_back(fmt::format("{} takes {}: {} is used, not {}", attribute.name,
                                       range_text(attribute), patchbay::to_text(used[i]),
                                       patchbay::to_text(values[i])));
  }

  // The object keeps a second cutoff that nobody gave, and ignores one that it does not use.
  void check_cutoffs(const Settings &requested) {
    const Values *cutoffs = requested.find("frequency");
    if (cutoffs == nullptr) return;
    const std::string response = patchbay::to_text(host_.get(box_, "response").at(0));
    const bool band = analysis::has_two_edges(response_named(response).value());
    if (band && cutoffs->size() == 1)
      throw Refusal(fmt::format("a {} has two cutoffs, and --frequency gives one", response));
    if (!band && cutoffs->size() == 2)
      remarks_.push_back(fmt::format("a {} has one cutoff: {} is not used", response,
                                     patchbay::to_text((*cutoffs)[1])));
  }

  // 0 stands for the rate of the audio, in the settings of a new box, too. So does, to the object,
  // anything below 1, which nobody means by it.
  void check_samplerate(const Settings &requested) {
    const Values *rate = requested.find("samplerate");
    const auto asked = rate != nullptr ? number_in(rate->front()) : std::nullopt;
    if (asked && *asked < 1.0 && *asked != 0.0)
      remarks_.push_back(
          fmt::format("a sample rate below 1 Hz cannot be used: {} Hz is", audio_rate_));
  }

  patchbay::Host &host_;
  const std::vector<AttributeInfo> &attributes_;
  const std::vector<Rule> &rules_;
  double audio_rate_;
  patchbay::Box box_;
  std::vector<std::string> remarks_;
};

template <typename Module>
void Designer::load(Module module) {
  try {
    host_.load(module);
    attributes_ = host_.attributes(class_name);
    for (const AttributeInfo &attribute : attributes_)
      rules_.push_back({attribute.property("enumvals"),
                        attribute.property("style") == Values{std::string("onoff")}});
  } catch (const patchbay::Error &error) {
    throw Refusal(fmt::format("the veltane module is missing: {}", error.what()));
  }
}

Designer::Designer(const std::filesystem::path &module, patchbay::Checking checking)
    : host_(std::cout, checking) {
  load(module);
}

Designer::Designer(void (*ext_main)(), patchbay::Checking checking) : host_(std::cout, checking) {
  load(ext_main);
}

Range Designer::range(const std::string &attribute) const {
  for (const AttributeInfo &info : attributes_)
    if (info.name == attribute && info.lowest && info.highest) return {*info.lowest, *info.highest};
  throw std::runtime_error(fmt::format("the module declares no range of '{}'", attribute));
}

Settings Designer::fresh() {
  Settings settings;
  // The default cutoff is a fraction of the rate.
  host_.set_samplerate(audio_samplerate);
  const patchbay::Box box = host_.make(box_text);
  for (const AttributeInfo &attribute : attributes_)
    settings.set(attribute.name, host_.get(box, attribute.name));
  host_.free(box);
  return settings;
}

Design Designer::accepted(const Settings &requested) {
  Box box(*this);
  box.set(requested);
  return box.design();
}

std::vector<std::string> Designer::out_of_use(const Settings &requested) {
  Box box(*this);
  box.set(requested);
  return box.out_of_use();
}

Design Designer::design(const Settings &requested) {
  const std::size_t posted = host_.posts().size();
  Box box(*this);
  box.set(requested);
  box.bang();
  auto published = box.dictionary();
  if (!published || published->empty()) throw_for(host_.posts(), posted);
  Design design = box.design();
  design.dictionary = std::move(*published);
  for (std::size_t i = posted; i < host_.posts().size(); ++i)
    if (const std::string &text = host_.posts()[i].text;
        design.remarks.empty() || design.remarks.back() != text)
      design.remarks.push_back(text);
  return design;
}

}  // namespace designer

// A script of what users and hosts do to boxes, one act a line; see `perform`. However
// they follow one another, and whichever operation of the host fails, the module keeps
// the host's rules and leaves nothing behind.

#include <functional>
#include <map>
#include <sstream>

#include "fuzz.h"
#include "patchbay/host.h"
#include "patchbay/inspector.h"

namespace {

using patchbay::Box;
using patchbay::Values;

constexpr std::size_t most_acts = 48;
constexpr int deepest = 3;  // acts that an outlet sets off

class Script {
 public:
  Script() : host_(printed_) { host_.load(fuzz::module()); }

  void perform(const std::string &line) {
    if (acts_ == most_acts) return;
    ++acts_;
    try {
      const Values words = patchbay::parse_line(line);
      if (words.empty()) return;
      const auto found = acts.find(patchbay::to_text(words[0]));
      if (found != acts.end()) (this->*found->second)(words);
    } catch (const patchbay::Error &) {
      // Refused in a sentence.
    }
  }

  void end() {
    for (const std::string &problem : host_.close()) fuzz::require(false, problem);
  }

 private:
  using Act = void (Script::*)(const Values &);

  static std::string text(const Values &words, std::size_t at) {
    return at < words.size() ? patchbay::to_text(words[at]) : std::string();
  }

  static double number(const Values &words, std::size_t at) {
    if (at >= words.size()) return 0.0;
    if (const auto *integer = std::get_if<t_long>(&words[at])) return static_cast<double>(*integer);
    const auto *number = std::get_if<double>(&words[at]);
    return number != nullptr ? *number : 0.0;
  }

  static t_long integer(const Values &words, std::size_t at) {
    const auto *integer = at < words.size() ? std::get_if<t_long>(&words[at]) : nullptr;
    return integer != nullptr ? *integer : 0;
  }

  static Values rest(const Values &words, std::size_t at) {
    return at < words.size() ? Values(words.begin() + static_cast<std::ptrdiff_t>(at), words.end())
                             : Values();
  }

  // The box of the number that stands second, whether or not it has been freed.
  Box box(const Values &words) const {
    const auto at = static_cast<std::size_t>(integer(words, 1));
    if (at >= boxes_.size()) throw patchbay::Error("there is no such box");
    return boxes_[at];
  }

  void make(const Values &words) {
    std::string line = "veltane";
    for (const patchbay::Value &word : rest(words, 1)) line += ' ' + patchbay::to_text(word);
    boxes_.push_back(host_.make(line));
  }

  void free(const Values &words) { host_.free(box(words)); }
  void send(const Values &words) { host_.send(box(words), text(words, 2), rest(words, 3)); }
  void set(const Values &words) { host_.set(box(words), text(words, 2), rest(words, 3)); }
  void get(const Values &words) { host_.get(box(words), text(words, 2)); }
  void click(const Values &words) { host_.double_click(box(words)); }
  void notice(const Values &words) { host_.notify(box(words), text(words, 2)); }
  void assist(const Values &words) {
    host_.assist(box(words), integer(words, 2), integer(words, 3));
  }
  void defer(const Values &) { host_.run_deferred(); }
  void audio(const Values &words) { host_.audio_on(number(words, 1)); }
  void silence(const Values &) { host_.audio_off(); }
  void rate(const Values &words) { host_.set_samplerate(number(words, 1)); }
  void look(const Values &words) { host_.dictionary(text(words, 1)); }

  void fail(const Values &words) {
    const t_long nth = integer(words, 2);
    patchbay::Inspector(host_).fail(text(words, 1), nth > 0 ? static_cast<std::size_t>(nth) : 1);
  }

  // The rest of the line is performed whenever something leaves the box.
  void listen(const Values &words) {
    std::string line;
    for (const patchbay::Value &word : rest(words, 2)) line += patchbay::to_text(word) + ' ';
    host_.listen(box(words), 0, [this, line](const std::string &, const Values &) {
      if (depth_ == deepest) return;
      ++depth_;
      perform(line);
      --depth_;
    });
  }

  static inline const std::map<std::string, Act> acts{
      {"make", &Script::make},     {"free", &Script::free},       {"send", &Script::send},
      {"set", &Script::set},       {"get", &Script::get},         {"click", &Script::click},
      {"notice", &Script::notice}, {"assist", &Script::assist},   {"defer", &Script::defer},
      {"audio", &Script::audio},   {"silence", &Script::silence}, {"rate", &Script::rate},
      {"look", &Script::look},     {"fail", &Script::fail},       {"listen", &Script::listen}};

  std::ostringstream printed_;
  patchbay::Host host_;
  std::vector<Box> boxes_;
  std::size_t acts_ = 0;
  int depth_ = 0;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  Script script;
  for (const std::string &line : fuzz::lines_of(fuzz::text_of(data, size))) script.perform(line);
  script.end();
  return 0;
}

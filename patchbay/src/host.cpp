#include "patchbay/host.h"

#include <algorithm>
#include <iostream>

#include <fmt/format.h>

#include "attribute_values.h"
#include "attributes.h"
#include "audio.h"
#include "call_out.h"
#include "classes.h"
#include "dictionaries.h"
#include "instances.h"
#include "modules.h"
#include "notifications.h"
#include "objects.h"
#include "outlets.h"
#include "qelems.h"
#include "runtime/symbols.h"
#include "state.h"
#include "values.h"
#include "viewer.h"
#include "violations.h"
#include "words.h"

namespace patchbay {
namespace {

t_symbol *symbol(const std::string &text) { return runtime::intern(text.c_str()); }

std::vector<std::string> class_names(const State &s) {
  std::vector<std::string> texts;
  for (const auto &[key, c] : s.classes) texts.push_back(as_text(c->name));
  std::sort(texts.begin(), texts.end());
  return texts;
}

t_class &class_named(const State &s, const std::string &name) {
  const auto found = s.classes.find({symbol("box"), symbol(name)});
  if (found == s.classes.end())
    throw Error(fmt::format("there is no class '{}'; the classes are {}", name,
                            fmt::join(class_names(s), ", ")));
  return *found->second;
}

Instance &instance_of(State &s, Box box) {
  const Ledger::Entry *entry = s.ledger.find(box, Kind::instance);
  if (entry == nullptr)
    throw Error("there is no such box: " +
                (box == nullptr ? "" : s.ledger.problem(box, Kind::instance)));
  return *static_cast<Instance *>(entry->record.get());
}

// What a class's attributes or messages are called, for a sentence.
template <typename List>
std::string names(const List &list) {
  std::vector<std::string> texts;
  texts.reserve(list.size());
  for (const auto *item : list) texts.push_back(as_text(item->name));
  return fmt::format("{}", fmt::join(texts, ", "));
}

t_attr &attribute_of(const Instance &x, const std::string &name) {
  t_attr *attr = find_attribute(*x.type, symbol(name));
  if (attr == nullptr)
    throw Error(fmt::format("'{}' has no attribute '{}'; it has {}", x.type->name->name, name,
                            names(x.type->attributes)));
  return *attr;
}

std::vector<std::string> visible_messages(const t_class &c) {
  std::vector<std::string> texts;
  for (const Method *method : c.methods)
    if (method->args != ARGS_PRIVATE) texts.push_back(as_text(method->name));
  for (const t_attr *attr : c.attributes) texts.push_back(as_text(attr->name));
  return texts;
}

}  // namespace

Values AttributeInfo::property(const std::string &wanted) const {
  const auto found = std::find_if(properties.begin(), properties.end(),
                                  [&](const auto &entry) { return entry.first == wanted; });
  return found == properties.end() ? Values{} : found->second;
}

Host::Host() : Host(std::cout) {}

Host::Host(std::ostream &out, Checking checking) : state_(std::make_unique<State>(out, checking)) {
  register_viewer(*state_);
}

Host::~Host() {
  state_->claim.adopt();
  close();
  state_->claim.release();
}

State &Host::own() const {
  if (!state_->claim.is_own())
    throw Error(
        "the host was called from a thread that it does not belong to; only the thread "
        "that made it may call it");
  return *state_;
}

void Host::load(const std::filesystem::path &module) { load_module(own(), module); }

void Host::load(void (*ext_main)()) { load_module(own(), ext_main); }

std::vector<std::string> Host::classes() const { return class_names(own()); }

std::vector<AttributeInfo> Host::attributes(const std::string &class_name) const {
  std::vector<AttributeInfo> infos;
  for (const t_attr *attr : class_named(own(), class_name).attributes)
    infos.push_back({as_text(attr->name), as_text(attr->type),
                     static_cast<std::size_t>(attr->maximum), attr->lowest, attr->highest,
                     attr->properties});
  return infos;
}

Box Host::make(const std::string &text) {
  Values words = parse_line(text);
  if (words.empty()) throw Error("a box needs the name of a class");
  const std::string name = to_text(words.front());
  words.erase(words.begin());
  const auto box = static_cast<Box>(new_instance(own(), class_named(own(), name), words));
  if (box == nullptr) throw Error(fmt::format("could not make a box '{}'", name));
  own().ledger.owned_by_host(box);
  own().boxes.push_back(box);
  return box;
}

void Host::free(Box box) {
  State &s = own();
  if (std::find(s.boxes.begin(), s.boxes.end(), box) == s.boxes.end())
    throw Error("there is no such box");
  destroy(s, box, Op::object_free);
}

std::vector<Box> Host::boxes() const { return own().boxes; }

std::vector<std::string> Host::close() {
  State &s = own();
  while (!s.boxes.empty()) {
    const Box box = s.boxes.back();
    // One whose destructor is running cannot be freed once more.
    if (!destroy(s, box, Op::object_free)) std::erase(s.boxes, box);
  }
  // What leaked goes with the module that made it, so it is written down first.
  if (!s.modules.empty() || s.leaked.empty()) s.leaked = s.ledger.leaks();
  s.queue.clear();
  unload_modules(s);
  std::vector<std::string> problems = violations(s);
  for (const std::string &leak : s.leaked) problems.push_back(leak + " was never released");
  return problems;
}

void Host::send(Box box, const std::string &message, const Values &arguments) {
  State &s = own();
  Instance &x = instance_of(s, box);
  const char *type = x.type->name->name;
  const Method *method = find_method(*x.type, symbol(message));
  if (method == nullptr) {
    t_attr *attr = find_attribute(*x.type, symbol(message));
    if (attr == nullptr)
      throw Error(fmt::format("'{}' does not understand '{}'; it understands {}", type, message,
                              fmt::join(visible_messages(*x.type), ", ")));
    set_attribute(s, x, *attr, arguments);
  } else if (method->args == ARGS_PRIVATE) {
    throw Error(fmt::format("'{}' is private to '{}': only the host sends it", message, type));
  } else if (method->args == ARGS_NONE) {
    if (!arguments.empty())
      throw Error(
          fmt::format("'{}' takes no arguments, but was sent with {}", message, arguments.size()));
    call_module(s, method->name,
                [&] { reinterpret_cast<void (*)(void *)>(method->function)(x.memory); });
  } else {
    std::vector<t_atom> atoms = to_atoms(arguments);
    call_module(s, method->name, [&] {
      reinterpret_cast<t_list_handler>(method->function)(
          x.memory, method->name, static_cast<t_long>(atoms.size()), atoms.data());
    });
  }
}

void Host::double_click(Box box) {
  const Instance &x = instance_of(own(), box);
  if (const t_method handler = find_private(*x.type, words().dblclick))
    call_out(own(), "dblclick", [&] { reinterpret_cast<t_dblclick_handler>(handler)(x.memory); });
}

std::string Host::assist(Box box, t_long io, t_long index) {
  const Instance &x = instance_of(own(), box);
  char text[BRONTAL_ASSIST_SIZE] = "";
  if (const t_method handler = find_private(*x.type, words().assist))
    call_out(own(), "assist", [&] {
      reinterpret_cast<t_assist_handler>(handler)(x.memory, nullptr, io, index, text);
    });
  text[BRONTAL_ASSIST_SIZE - 1] = '\0';  // whatever the module did
  return text;
}

void Host::notify(Box box, const std::string &notice) {
  send_notice(own(), instance_of(own(), box), symbol(notice), nullptr);
}

void Host::listen(Box box, std::size_t outlet, Listener listener) {
  const Instance &x = instance_of(own(), box);
  if (outlet >= x.outlets.size())
    throw Error(fmt::format("'{}' has no outlet {}; it has {}", x.type->name->name, outlet,
                            x.outlets.size()));
  x.outlets[outlet]->listeners.push_back(std::move(listener));
}

void Host::set(Box box, const std::string &attribute, const Values &values) {
  Instance &x = instance_of(own(), box);
  set_attribute(own(), x, attribute_of(x, attribute), values);
}

Values Host::get(Box box, const std::string &attribute) const {
  const Instance &x = instance_of(own(), box);
  return get_attribute(x, attribute_of(x, attribute));
}

bool Host::disabled(Box box, const std::string &attribute) const {
  const Instance &x = instance_of(own(), box);
  return x.disabled.contains(&attribute_of(x, attribute));
}

std::optional<Dictionary> Host::dictionary(const std::string &name) const {
  const auto found = own().dictionaries.find(symbol(name));
  if (found == own().dictionaries.end()) return std::nullopt;
  return contents(*found->second);
}

std::vector<std::string> Host::dictionary_names() const {
  std::vector<std::string> texts;
  for (const auto &[name, dictionary] : own().dictionaries) texts.push_back(as_text(name));
  std::sort(texts.begin(), texts.end());
  return texts;
}

std::size_t Host::run_deferred() { return patchbay::run_deferred(own()); }

void Host::audio_on(double samplerate) { patchbay::audio_on(own(), samplerate); }

void Host::audio_off() { own().audio = false; }

void Host::set_samplerate(double samplerate) { own().samplerate = samplerate; }

const std::vector<Post> &Host::posts() const { return own().posts; }

}  // namespace patchbay

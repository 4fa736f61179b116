#include "attribute_values.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

#include <fmt/format.h>

#include "call_out.h"
#include "gate.h"
#include "notifications.h"
#include "runtime/symbols.h"
#include "state.h"
#include "values.h"
#include "words.h"

using patchbay::Op;
using patchbay::State;

namespace patchbay {
namespace {

std::optional<double> as_number(const Value &value) {
  if (const auto *integer = std::get_if<t_long>(&value)) return static_cast<double>(*integer);
  if (const auto *number = std::get_if<double>(&value)) return *number;
  return std::nullopt;
}

double clipped(double value, const t_attr &attr) {
  if (attr.lowest && value < *attr.lowest) return *attr.lowest;
  if (attr.highest && value > *attr.highest) return *attr.highest;
  return value;
}

// Cuts a fraction off towards zero; what no integer can hold becomes the
// nearest that can.
t_long whole(double value) {
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (value >= limit) return std::numeric_limits<t_long>::max();
  if (value <= -limit) return std::numeric_limits<t_long>::min();
  return static_cast<t_long>(value);
}

Value converted(const Value &given, const t_attr &attr) {
  if (attr.type == words().symbol) return to_text(given);
  const auto *text = std::get_if<std::string>(&given);
  const Value value = text != nullptr ? parse_word(*text) : given;
  const bool integer = attr.type == words().integer;
  const std::optional<double> number = as_number(value);
  if (!number || (integer && std::isnan(*number)))
    throw Error(fmt::format("'{}' takes {}, not '{}'", attr.name->name,
                            integer ? "an integer" : "a number", to_text(value)));
  if (!integer) return clipped(*number, attr);
  const auto *exact = std::get_if<t_long>(&value);
  const t_long cut = exact != nullptr ? *exact : whole(*number);
  const double bounded = clipped(static_cast<double>(cut), attr);
  return bounded == static_cast<double>(cut) ? cut : whole(bounded);
}

std::byte *field(const Instance &x, t_long offset) {
  return static_cast<std::byte *>(x.memory) + offset;
}

template <typename T>
void put(const Instance &x, t_long offset, T value) {
  const auto bytes = std::as_bytes(std::span(&value, 1));
  std::copy(bytes.begin(), bytes.end(), field(x, offset));
}

template <typename T>
T take(const Instance &x, t_long offset) {
  T value;
  const auto bytes = std::as_writable_bytes(std::span(&value, 1));
  std::copy_n(field(x, offset), bytes.size(), bytes.begin());
  return value;
}

void store(const Instance &x, const t_attr &attr, const std::vector<t_atom> &atoms) {
  t_long offset = attr.offset;
  for (const t_atom &atom : atoms) {
    if (atom.type == ATOM_LONG)
      put(x, offset, atom.value.integer);
    else if (atom.type == ATOM_FLOAT)
      put(x, offset, atom.value.number);
    else
      put(x, offset, atom.value.symbol);
    offset += 8;
  }
  if (attr.count_offset) put(x, *attr.count_offset, static_cast<t_long>(atoms.size()));
}

}  // namespace

void set_attribute(State &s, Instance &x, t_attr &attr, const Values &values) {
  if (values.empty()) throw Error(fmt::format("'{}' needs a value", attr.name->name));
  const auto room = static_cast<std::size_t>(attr.maximum);
  const std::size_t count = std::min(values.size(), room);
  std::vector<t_atom> atoms;
  atoms.reserve(count);
  for (std::size_t i = 0; i < count; ++i) atoms.push_back(to_atom(converted(values[i], attr)));
  const auto alive = x.shared_from_this();  // a listener may free the box
  if (attr.setter != nullptr) {
    t_result result = RESULT_FAILED;
    call_module(s, attr.name, [&] {
      result = attr.setter(x.memory, &attr, static_cast<t_long>(atoms.size()), atoms.data());
    });
    if (result != RESULT_OK)
      throw Error(fmt::format("'{}' refused the new value", attr.name->name));
  } else {
    store(x, attr, atoms);
  }
  if (!x.freed) send_notice(s, x, words().attr_modified, &attr);
}

Values get_attribute(const Instance &x, const t_attr &attr) {
  const t_long count =
      attr.count_offset ? std::clamp<t_long>(take<t_long>(x, *attr.count_offset), 0, attr.maximum)
                        : attr.maximum;
  Values values;
  values.reserve(static_cast<std::size_t>(count));
  for (t_long i = 0; i < count; ++i) {
    const t_long offset = attr.offset + 8 * i;
    if (attr.type == words().integer)
      values.emplace_back(take<t_long>(x, offset));
    else if (attr.type == words().number)
      values.emplace_back(take<double>(x, offset));
    else if (const auto *symbol = take<t_symbol *>(x, offset); symbol != nullptr)
      values.emplace_back(std::string(symbol->name));
  }
  return values;
}

void process_arguments(State &s, Instance &x, const Values &arguments) {
  const auto complain = [&](const std::string &text) {
    s.posts.push_back({static_cast<Box>(x.memory), x.type->name->name, text});
  };
  const auto label = [](const Value &value) {
    const auto *text = std::get_if<std::string>(&value);
    const bool is_label = text != nullptr && text->size() > 1 && text->back() == ':';
    return is_label ? text->substr(0, text->size() - 1) : std::string();
  };
  const auto alive = x.shared_from_this();
  std::size_t at = 0;
  while (at < arguments.size() && label(arguments[at]).empty())
    complain(fmt::format("'{}' belongs to no attribute and is left out; write 'attribute: value'",
                         to_text(arguments[at++])));
  while (at < arguments.size() && !x.freed) {
    const std::string name = label(arguments[at++]);
    Values values;
    while (at < arguments.size() && label(arguments[at]).empty()) values.push_back(arguments[at++]);
    t_attr *attr = find_attribute(*x.type, runtime::intern(name.c_str()));
    try {
      if (attr == nullptr) throw Error(fmt::format("there is no attribute '{}'", name));
      set_attribute(s, x, *attr, values);
    } catch (const Error &error) {
      if (!x.freed) complain(error.what());
    }
  }
}

}  // namespace patchbay

namespace {

// Sets an attribute to the values that `values` makes, once it is known that
// there is one.
template <typename MakeValues, typename... Traced>
t_result set(Op op, void *x, t_symbol *name, MakeValues &&values, const Traced &...traced) {
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        patchbay::Instance *instance = patchbay::find_instance(s, op, x);
        t_attr *attr =
            instance == nullptr ? nullptr : patchbay::find_attribute(*instance->type, name);
        if (attr == nullptr) return RESULT_FAILED;
        set_attribute(s, *instance, *attr, values());
        return RESULT_OK;
      },
      name, traced...);
}

}  // namespace

t_result object_attr_setsym(void *x, t_symbol *attr, t_symbol *value) {
  const auto values = [&]() -> patchbay::Values {
    if (value == nullptr) return {};
    return {std::string(value->name)};
  };
  return set(Op::object_attr_setsym, x, attr, values, value);
}

t_result object_attr_setdouble_array(void *x, t_symbol *attr, t_long count, const double *values) {
  const auto copy = [&]() -> patchbay::Values {
    if (values == nullptr || count <= 0) return {};
    return {values, values + count};
  };
  return set(Op::object_attr_setdouble_array, x, attr, copy, count);
}

t_result object_attr_setdisabled(void *x, t_symbol *attr, t_long disabled) {
  constexpr Op op = Op::object_attr_setdisabled;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        patchbay::Instance *instance = patchbay::find_instance(s, op, x);
        const t_attr *found =
            instance == nullptr ? nullptr : patchbay::find_attribute(*instance->type, attr);
        if (found == nullptr) return RESULT_FAILED;
        if (disabled != 0)
          instance->disabled.insert(found);
        else
          instance->disabled.erase(found);
        return RESULT_OK;
      },
      attr, disabled);
}

void attr_args_process(void *x, t_long argc, const t_atom *argv) {
  constexpr Op op = Op::attr_args_process;
  operation(
      op, 0,
      [&](State &s) {
        if (patchbay::Instance *instance = patchbay::find_instance(s, op, x))
          process_arguments(s, *instance, patchbay::from_atoms(argc, argv));
        return 0;
      },
      argc);
}

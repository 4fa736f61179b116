#include "attributes.h"

#include <algorithm>
#include <cstdarg>
#include <functional>

#include "brontal/object.h"
#include "gate.h"
#include "lookup.h"
#include "modules.h"
#include "runtime/symbols.h"
#include "state.h"
#include "violations.h"
#include "words.h"

using patchbay::as_text;
using patchbay::Kind;
using patchbay::Op;
using patchbay::State;
using patchbay::Values;

namespace patchbay {

t_attr *find_attribute(const t_class &c, const t_symbol *name) {
  const auto found = std::find_if(c.attributes.begin(), c.attributes.end(),
                                  [&](const t_attr *attr) { return attr->name == name; });
  return found == c.attributes.end() ? nullptr : *found;
}

Values parse_property(const t_symbol *type, const std::string &text) {
  if (type == words().symbol) return {text};
  Values values = parse_line(text);
  const bool fits = type == words().integer
                        ? values.size() == 1 && std::holds_alternative<t_long>(values[0])
                    : type == words().number
                        ? values.size() == 1 && !std::holds_alternative<std::string>(values[0])
                        : type == words().atom;
  if (!fits) throw Error("a property of type " + as_text(type) + " cannot be '" + text + "'");
  return values;
}

}  // namespace patchbay

namespace {

t_attr *new_attribute(Op op, const char *name, t_symbol *type, t_long maximum,
                      std::optional<t_long> count_offset, t_long offset) {
  return operation(
      op, static_cast<t_attr *>(nullptr),
      [&](State &s) -> t_attr * {
        if (!patchbay::is_loading(s, op) || name == nullptr || type == nullptr) return nullptr;
        const bool known = type == patchbay::words().symbol || type == patchbay::words().integer ||
                           type == patchbay::words().number;
        if (!known || maximum < 1) {
          report(s, std::string(name_of(op)) + " needs a known type and room for a value");
          return nullptr;
        }
        return s.ledger.make<t_attr>(
            Kind::attribute, op,
            t_attr{runtime::intern(name), type, offset, maximum, count_offset});
      },
      name, type);
}

// An attribute's name for the trace; null when the address is not an attribute's.
const t_symbol *traced_name(const t_attr *attr) {
  const State *state = patchbay::current_state();
  return state != nullptr && state->ledger.find(attr, Kind::attribute) != nullptr ? attr->name
                                                                                  : nullptr;
}

// Whether all that an attribute stores lies within the instance, behind its
// header.
bool lies_within(const t_attr &attr, t_long size) {
  const auto within = [size](t_long offset, t_long count) {
    return offset >= static_cast<t_long>(sizeof(t_object)) && offset <= size &&
           count <= (size - offset) / 8;
  };
  return within(attr.offset, attr.maximum) && (!attr.count_offset || within(*attr.count_offset, 1));
}

t_result add_property(Op op, t_class *c, const char *attr, const char *property,
                      const t_symbol *type, const char *text,
                      const std::function<Values(State &)> &values) {
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        const t_class *found = patchbay::class_to_build(s, op, c);
        if (found == nullptr || attr == nullptr || property == nullptr) return RESULT_FAILED;
        t_attr *target = patchbay::find_attribute(*found, runtime::intern(attr));
        if (target == nullptr) return RESULT_FAILED;
        target->properties.emplace_back(property, values(s));
        return RESULT_OK;
      },
      attr, property, type, text);
}

// The properties of an object that has some.
PropertyList *properties_of(State &s, Op op, void *object) {
  if (s.ledger.find(object, Kind::attribute) != nullptr)
    return &static_cast<t_attr *>(object)->properties;
  auto *method = patchbay::find<Method>(s, op, Kind::method, object);
  return method == nullptr ? nullptr : &method->properties;
}

}  // namespace

t_attr *attr_offset_new(const char *name, t_symbol *type, t_long offset) {
  return new_attribute(Op::attr_offset_new, name, type, 1, std::nullopt, offset);
}

t_attr *attr_offset_array_new(const char *name, t_symbol *type, t_long maximum, t_long count_offset,
                              t_long offset) {
  return new_attribute(Op::attr_offset_array_new, name, type, maximum, count_offset, offset);
}

t_result class_addattr(t_class *c, t_attr *attr) {
  constexpr Op op = Op::class_addattr;
  const auto give_up = [attr](State &s) {
    s.ledger.release_unowned(attr, Kind::attribute, op);
    return RESULT_FAILED;
  };
  return operation_or(
      op, RESULT_FAILED, give_up,
      [&](State &s) {
        if (!can_take_over(s, op, Kind::attribute, attr, "a class")) return RESULT_FAILED;
        t_class *found = patchbay::class_to_build(s, op, c);
        if (found == nullptr) return give_up(s);
        if (!lies_within(*attr, found->size)) {
          report(s, "class_addattr was given '" + as_text(attr->name) +
                        "', which lies outside the instance");
          return give_up(s);
        }
        if (patchbay::find_attribute(*found, attr->name) != nullptr) return give_up(s);
        s.ledger.owned_by_host(attr);
        found->attributes.push_back(attr);
        return RESULT_OK;
      },
      traced_name(attr));
}

t_attr *class_attr_get(t_class *c, t_symbol *name) {
  constexpr Op op = Op::class_attr_get;
  return operation(
      op, static_cast<t_attr *>(nullptr),
      [&](State &s) -> t_attr * {
        const t_class *found = patchbay::class_to_build(s, op, c);
        return found == nullptr ? nullptr : patchbay::find_attribute(*found, name);
      },
      name);
}

t_result attr_addfilter_clip(t_attr *attr, double minimum, double maximum, t_long usemin,
                             t_long usemax) {
  constexpr Op op = Op::attr_addfilter_clip;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        auto *found = patchbay::is_loading(s, op)
                          ? patchbay::find<t_attr>(s, op, Kind::attribute, attr)
                          : nullptr;
        if (found == nullptr) return RESULT_FAILED;
        if (usemin != 0) found->lowest = minimum;
        if (usemax != 0) found->highest = maximum;
        return RESULT_OK;
      },
      traced_name(attr), minimum, maximum, usemin, usemax);
}

t_result class_attr_addattr_parse(t_class *c, const char *attr, const char *property,
                                  t_symbol *type, const char *text) {
  return add_property(Op::class_attr_addattr_parse, c, attr, property, type, text, [&](State &) {
    return patchbay::parse_property(type, text != nullptr ? text : "");
  });
}

t_result class_attr_addattr_format(t_class *c, const char *attr, const char *property,
                                   t_symbol *type, const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const t_result result =
      add_property(Op::class_attr_addattr_format, c, attr, property, type, format, [&](State &) {
        Values values;
        for (const char *letter = format; letter != nullptr && *letter != '\0'; ++letter) {
          switch (*letter) {
            case 's': values.emplace_back(as_text(va_arg(arguments, t_symbol *))); break;
            case 'l': values.emplace_back(va_arg(arguments, t_long)); break;
            case 'f': values.emplace_back(va_arg(arguments, double)); break;
            default: throw patchbay::Error("a format is made of s, l and f");
          }
        }
        return values;
      });
  va_end(arguments);
  return result;
}

t_result object_addattr_parse(void *object, const char *property, t_symbol *type,
                              const char *text) {
  constexpr Op op = Op::object_addattr_parse;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        PropertyList *properties = properties_of(s, op, object);
        if (properties == nullptr || property == nullptr) return RESULT_FAILED;
        properties->emplace_back(property,
                                 patchbay::parse_property(type, text != nullptr ? text : ""));
        return RESULT_OK;
      },
      property, type, text);
}

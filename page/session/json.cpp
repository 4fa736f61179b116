#include "session/json.h"

#include <variant>

namespace page {
namespace {

using text::Json;

Json json_of(const std::string &text) { return text; }
Json json_of(double number) { return number; }
Json json_of(t_long integer) { return integer; }
Json json_of(const designer::Values &values) { return json(values); }

template <typename Variant>
Json json_in(const Variant &variant) {
  return std::visit([](const auto &held) { return json_of(held); }, variant);
}

}  // namespace

Json json(const designer::Values &values) {
  Json list = Json::array();
  for (const designer::Value &value : values) list.push_back(json_in(value));
  return list;
}

Json json(const designer::Settings &settings) {
  Json object = Json::object();
  for (const auto &[name, values] : settings) object[name] = json(values);
  return object;
}

Json json(const patchbay::AttributeInfo &attribute) {
  Json properties = Json::object();
  for (const auto &[name, values] : attribute.properties) properties[name] = json(values);
  Json object{{"name", attribute.name},
              {"type", attribute.type},
              {"maximum", attribute.maximum},
              {"properties", properties}};
  if (attribute.lowest) object["lowest"] = *attribute.lowest;
  if (attribute.highest) object["highest"] = *attribute.highest;
  return object;
}

Json json(const patchbay::Dictionary &dictionary) {
  Json list = Json::array();
  for (const auto &[key, entry] : dictionary) {
    Json pair = Json::array();
    pair.push_back(key);
    pair.push_back(json_in(entry));
    list.push_back(std::move(pair));
  }
  return list;
}

}  // namespace page

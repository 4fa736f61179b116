#include "values.h"

#include <algorithm>

namespace python {
namespace {

patchbay::Value value_of(py::handle given) {
  PyObject *const object = given.ptr();
  if (PyBool_Check(object)) return t_long{object == Py_True};
  if (PyUnicode_Check(object)) return given.cast<std::string>();
  // Decimals are made a text, since a whole number may be wanted, and what is no such number is
  // refused in the words for what was typed.
  if (PyFloat_Check(object)) return patchbay::to_text(PyFloat_AS_DOUBLE(object));
  if (PyIndex_Check(object)) {
    const py::int_ whole = py::reinterpret_steal<py::int_>(PyNumber_Index(object));
    if (!whole) throw py::error_already_set();
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(whole.ptr(), &overflow);
    if (overflow != 0) return py::str(py::handle(whole)).cast<std::string>();
    return static_cast<t_long>(number);
  }
  if (PyNumber_Check(object) && !PySequence_Check(object)) {
    const py::float_ number = py::reinterpret_steal<py::float_>(PyNumber_Float(object));
    if (!number) throw py::error_already_set();
    return patchbay::to_text(PyFloat_AS_DOUBLE(number.ptr()));
  }
  throw py::type_error("a setting is a number, a text, or a sequence of them, not " +
                       py::repr(given).cast<std::string>());
}

// An array of no dimensions looks like a sequence and is a number.
bool is_sequence(py::handle given) {
  if (PyUnicode_Check(given.ptr()) || PyBytes_Check(given.ptr())) return false;
  if (!PySequence_Check(given.ptr())) return false;
  return PySequence_Size(given.ptr()) >= 0 || (PyErr_Clear(), false);
}

template <typename T>
py::array_t<T> copied(const std::vector<T> &values) {
  py::array_t<T> array(static_cast<py::ssize_t>(values.size()));
  std::copy(values.begin(), values.end(), array.mutable_data());
  return array;
}

py::object object_of(const patchbay::Value &value) {
  return std::visit([](const auto &held) { return py::cast(held); }, value);
}

}  // namespace

designer::Values setting_values(py::handle given) {
  if (!is_sequence(given)) {
    if (py::isinstance<py::array>(given)) return {value_of(given.attr("item")())};
    return {value_of(given)};
  }
  designer::Values values;
  for (const py::handle one : given) values.push_back(value_of(one));
  return values;
}

py::dict settings_dict(const designer::Settings &settings) {
  py::dict dict;
  for (const auto &[name, values] : settings) {
    if (values.size() == 1 && name != "frequency") {
      dict[py::str(name)] = object_of(values.front());
    } else {
      py::list list;
      for (const patchbay::Value &value : values) list.append(object_of(value));
      dict[py::str(name)] = list;
    }
  }
  return dict;
}

py::object from_json(const text::Json &json) {
  if (json.is_null()) return py::none();
  if (json.is_boolean()) return py::bool_(json.get<bool>());
  if (json.is_number_unsigned()) return py::int_(json.get<std::size_t>());
  if (json.is_number_integer()) return py::int_(json.get<long long>());
  if (json.is_number()) return py::float_(json.get<double>());
  if (json.is_string()) return py::str(json.get<std::string>());
  if (json.is_array()) {
    py::list list;
    for (const auto &element : json) list.append(from_json(element));
    return list;
  }
  py::dict dict;
  for (const auto &[key, value] : json.items()) dict[py::str(key)] = from_json(value);
  return dict;
}

py::array_t<double> array_of(const analysis::Sections &sections) {
  py::array_t<double> array({static_cast<py::ssize_t>(sections.size()), py::ssize_t{6}});
  double *at = array.mutable_data();
  for (const analysis::Section &s : sections)
    for (const double value : {s.b0, s.b1, s.b2, 1.0, s.a1, s.a2}) *at++ = value;
  return array;
}

py::array_t<double> array_of(const std::vector<double> &values) { return copied(values); }

py::array_t<analysis::Complex> array_of(const std::vector<analysis::Complex> &values) {
  return copied(values);
}

}  // namespace python

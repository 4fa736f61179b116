// Settings and results as Python objects.
#ifndef PYTHON_VALUES_H
#define PYTHON_VALUES_H

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "analysis/filter.h"
#include "designer/settings.h"
#include "text/json.h"

namespace python {

namespace py = pybind11;

/**
 * What was given for a setting, as it would be typed: a number, a text, True or False, or a sequence
 * of these. What of it is refused is refused later, in the words for what was typed.
 * Raises py::type_error for anything else.
 */
designer::Values setting_values(py::handle given);

/** @return a dict of settings: single values, and lists for attributes that take several. */
py::dict settings_dict(const designer::Settings &settings);

/** @return a dict, list, number, text, bool or None. */
py::object from_json(const text::Json &json);

/** New arrays, which belong to the caller. @return one row of b0 b1 b2 1 a1 a2 for each section */
py::array_t<double> array_of(const analysis::Sections &sections);
py::array_t<double> array_of(const std::vector<double> &values);
py::array_t<analysis::Complex> array_of(const std::vector<analysis::Complex> &values);

/** An array that Python gives, of doubles in the order of rows; a copy where it was another one. */
using Doubles = py::array_t<double, py::array::c_style | py::array::forcecast>;

}  // namespace python

#endif

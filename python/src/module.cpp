// The extension: what Python code of the package calls.

#include <pybind11/complex.h>
#include <pybind11/stl.h>

#include <array>
#include <utility>

#include "analysis/response.h"
#include "analysis/stability.h"
#include "designer/limits.h"
#include "designer/refusal.h"
#include "designer/title.h"
#include "filter.h"
#include "layouts/target.h"
#include "process_designer.h"

namespace python {
namespace {

// In the order of the arguments of `design`.
constexpr std::array attribute_names{
    "topology", "response",   "order",           "frequency",
    "units",    "samplerate", "passband_ripple", "stopband_attenuation"};

template <typename... Given>
Filter designed(Given... given) {
  std::vector<designer::Setting> settings;
  settings.reserve(attribute_names.size());
  std::size_t index = 0;
  for (const py::handle one : {py::handle(given)...}) {
    if (!one.is_none()) settings.push_back({attribute_names[index], setting_values(one)});
    ++index;
  }
  return Filter(designer::Settings(std::move(settings)));
}

py::tuple export_filter(const Filter &filter, const std::string &target, bool normalise,
                        bool as_published, bool spread_gain, bool anyway,
                        std::optional<std::string> structure, std::optional<std::string> name) {
  const Exported written = exported(
      filter, target,
      {normalise, as_published, spread_gain, anyway, std::move(structure), std::move(name)});
  return py::make_tuple(written.text, written.remarks);
}

py::tuple target_names() {
  py::list names;
  for (const layouts::Target &target : layouts::targets()) names.append(target.name);
  return py::tuple(names);
}

py::tuple transfer_of(const Filter &filter) {
  return py::make_tuple(array_of(filter.transfer().numerator),
                        array_of(filter.transfer().denominator));
}

// In dB, at fractions of the Nyquist frequency.
template <typename Form>
std::vector<double> levels_of(const Form &form, const std::vector<double> &w) {
  std::vector<double> levels;
  levels.reserve(w.size());
  for (const double at : w) levels.push_back(analysis::level_db(form, at));
  return levels;
}

bool stable(const designer::PublishedFilter &filter) {
  return analysis::stability(filter.roots.value()).stable &&
         analysis::stability(filter.sections).stable;
}

// Of cutoffs as fractions of the Nyquist frequency; of other attributes as the module declares it.
std::pair<double, double> range_of(const std::string &attribute) {
  const designer::Range range =
      attribute == "frequency" ? designer::cutoff_range : process_designer().range(attribute);
  return {range.lowest, range.highest};
}

void bind_filter(py::module_ &module) {
  py::class_<Filter>(module, "Filter")
      .def("zeros", [](const Filter &f) { return array_of(f.published().roots.value().zeros); })
      .def("poles", [](const Filter &f) { return array_of(f.published().roots.value().poles); })
      .def("gain", [](const Filter &f) { return f.published().roots.value().gain; })
      .def("sections", [](const Filter &f) { return array_of(f.published().sections); })
      .def("arranged", [](const Filter &f) { return array_of(f.arranged()); })
      .def("levels_of_roots",
           [](const Filter &f, const std::vector<double> &w) {
             return levels_of(f.published().roots.value(), w);
           })
      .def("levels_of_sections",
           [](const Filter &f, const std::vector<double> &w) { return levels_of(f.arranged(), w); })
      .def("is_stable", [](const Filter &f) { return stable(f.published()); })
      .def("transfer", transfer_of)
      .def("title", [](const Filter &f) { return designer::title(f.design()); })
      .def("samplerate", [](const Filter &f) { return f.design().samplerate; })
      .def("settings", [](const Filter &f) { return settings_dict(f.design().settings); })
      .def("requested", [](const Filter &f) { return settings_dict(f.requested()); })
      .def("remarks", [](const Filter &f) { return f.design().remarks; })
      .def("has_remarks", [](const Filter &f) { return !f.design().remarks.empty(); })
      .def("response", response_of)
      .def("level_curve", level_curve_of)
      .def("verdict", verdict_on)
      .def("export", export_filter)
      .def("apply", applied)
      .def("apply_in_both_directions", applied_in_both_directions);
}

}  // namespace
}  // namespace python

PYBIND11_MODULE(_core, module) {
  namespace py = pybind11;
  using Given = py::handle;
  py::register_exception_translator([](std::exception_ptr raised) {
    try {
      if (raised) std::rethrow_exception(std::move(raised));
    } catch (const designer::Refusal &refusal) {
      PyErr_SetString(PyExc_ValueError, refusal.what());
    }
  });
  python::bind_filter(module);
  module.def("design", python::designed<Given, Given, Given, Given, Given, Given, Given, Given>);
  module.def("estimate", python::estimated);
  module.def("range", python::range_of);
  module.def("target_names", python::target_names);
  module.attr("__version__") = VELTANE_VERSION;
}

// Times the panels of a filter as a picture that follows a dial draws them.
//
//   bench-pictures MODULE [--benchmark_...]
#include <benchmark/benchmark.h>

#include <exception>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "designer/designer.h"
#include "pictures/figure.h"
#include "pictures/ranges.h"

namespace {

using pictures::Axis;
using pictures::Detail;
using pictures::DrawnFilter;
using pictures::Scale;

struct Case {
  std::string name;
  designer::Settings settings;
};

Case one(const std::string &family, const std::string &response, t_long order,
         const designer::Values &cutoffs) {
  return {family + "/" + response + "/" + std::to_string(order),
          {{"topology", {family}},
           {"response", {response}},
           {"order", {order}},
           {"frequency", cutoffs}}};
}

std::vector<Case> cases() {
  const designer::Values edge{1000.0}, band{1000.0, 2000.0};
  std::vector<Case> list;
  for (const t_long order : {5, 20, 200}) {
    for (const char *family : {"butterworth", "chebyshev-1", "chebyshev-2"})
      list.push_back(one(family, "lowpass", order, edge));
    list.push_back(one("chebyshev-2", "bandpass", order, band));
    list.push_back(one("chebyshev-1", "bandstop", order, band));
  }
  return list;
}

void time(const std::string &name, const std::function<void()> &draw) {
  benchmark::RegisterBenchmark(name.c_str(), [draw](benchmark::State &state) {
    for ([[maybe_unused]] auto _ : state) draw();
  })->Unit(benchmark::kMicrosecond);
}

void add(const std::string &name, const designer::PublishedFilter &filter) {
  const DrawnFilter drawn = pictures::drawn_filter(filter, "the filter", Detail::live);
  const std::vector<DrawnFilter> filters{drawn};
  const Axis whole = pictures::whole_axis(filters, Scale::logarithmic);
  const Axis detail = pictures::passband_axis(filters, Scale::logarithmic);
  const Axis levels = pictures::whole_levels(filters, pictures::usual_floor(filters));
  const auto continuous = pictures::PhaseForm::continuous;
  const auto keep = [](const auto &panel) { benchmark::DoNotOptimize(&panel); };
  time(name + "/all", [=] {
    const std::vector<DrawnFilter> again{drawn_filter(filter, "the filter", Detail::live)};
    keep(pictures::figure_of(again, {.detail = Detail::live}));
  });
  time(name + "/drawn_filter", [=] { keep(drawn_filter(filter, "the filter", Detail::live)); });
  time(name + "/level", [=] { keep(level_panel(filters, whole, levels, Detail::live)); });
  time(name + "/passband", [=] { keep(passband_panel(filters, detail, Detail::live)); });
  time(name + "/phase", [=] { keep(phase_panel(filters, detail, continuous, Detail::live)); });
  time(name + "/delay", [=] { keep(delay_panel(filters, detail, Detail::live)); });
  time(name + "/zeros_and_poles", [=] { keep(zeros_and_poles_panel(filters)); });
  time(name + "/poles", [=] { keep(poles_panel(filters)); });
  time(name + "/time", [=] { keep(time_panels(filters, {.detail = Detail::live})); });
}

}  // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  if (argc != 2) {
    std::cerr << "usage: bench-pictures MODULE [--benchmark_...]\n";
    return 2;
  }
  try {
    designer::Designer designer(argv[1]);
    for (const Case &one : cases()) add(one.name, published_filter(designer.design(one.settings)));
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return 3;
  }
  return 0;
}

// Times the module in patchbay: from "bang" to the published dictionary, a burst of
// changes that ends in one design, and what a design costs in a host that trusts it.

#include <benchmark/benchmark.h>

#include <exception>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "allocations.h"
#include "designs.h"
#include "patchbay/host.h"

namespace {

using patchbay::Box;
using patchbay::Host;

// A box that is to stand for users' boxes gets no setting that a user leaves out.
std::string box_text(const bench::Designs &designs, const bench::Design &design) {
  if (design.name == "default") return "veltane name: bench";
  return fmt::format(
      "veltane name: bench units: normalized topology: {} response: {} order: {} frequency: {} "
      "passband_ripple: {} stopband_attenuation: {}",
      design.family, design.response, design.order, fmt::join(design.cutoffs, " "),
      designs.passband_ripple, designs.stopband_attenuation);
}

std::vector<double> published(const Host &host, const std::string &name,
                              const std::string &wanted) {
  const patchbay::Dictionary dictionary = host.dictionary(name).value();
  std::vector<double> list;
  for (const auto &[key, entry] : dictionary)
    if (key == wanted)
      for (const patchbay::Value &value : std::get<patchbay::Values>(entry))
        list.push_back(std::get<double>(value));
  return list;
}

std::vector<bench::Section> cascade(const Host &host) {
  const std::vector<double> numbers = published(host, "bench", "cascade");
  std::vector<bench::Section> sections;
  for (std::size_t i = 0; i + 5 <= numbers.size(); i += 5)
    sections.push_back(
        {numbers[i], numbers[i + 1], numbers[i + 2], 1.0, numbers[i + 3], numbers[i + 4]});
  return sections;
}

void time_design(benchmark::State &state, Host &host, const bench::Designs &designs,
                 const bench::Design &design) {
  const Box box = host.make(box_text(designs, design));
  host.send(box, "bang");  // the first one meets cold caches

  const bench::Allocations before = bench::allocations();
  for ([[maybe_unused]] auto _ : state) host.send(box, "bang");
  const bench::Allocations made = bench::allocations() - before;

  using benchmark::Counter;
  state.counters["allocations"] = Counter(static_cast<double>(made.count), Counter::kAvgIterations);
  state.counters["bytes"] = Counter(static_cast<double>(made.bytes), Counter::kAvgIterations);
  const std::vector<bench::Section> sections = cascade(host);
  state.counters["passband_level"] = bench::level(sections, design.levels_at.at(0));
  state.counters["cutoff_level"] = bench::level(sections, design.levels_at.at(1));
  host.free(box);
}

double cutoff_after(std::size_t change) { return 1000.0 + static_cast<double>(change % 10000); }

// What a box publishes that was made with the last cutoff of the burst.
std::vector<double> last_of_burst(Host &host, std::size_t changes) {
  const Box box =
      host.make(fmt::format("veltane name: last frequency: {}", cutoff_after(changes - 1)));
  host.send(box, "bang");
  std::vector<double> poles = published(host, "last", "poles");
  host.free(box);
  return poles;
}

void time_burst(benchmark::State &state, Host &host, std::size_t changes) {
  const std::vector<double> expected = last_of_burst(host, changes);
  const Box box = host.make("veltane name: burst");
  std::size_t designs = 0;
  host.listen(box, 0, [&](const std::string &, const patchbay::Values &) { ++designs; });
  std::size_t tasks = 0;
  for ([[maybe_unused]] auto _ : state) {
    designs = 0;
    for (std::size_t change = 0; change < changes; ++change)
      host.set(box, "frequency", {cutoff_after(change)});
    tasks = host.run_deferred();
  }
  state.counters["changes"] = static_cast<double>(changes);
  state.counters["designs"] = static_cast<double>(designs);
  if (tasks != 1 || designs != 1)
    state.SkipWithError("a burst of changes must end in one design");
  else if (published(host, "burst", "poles") != expected)
    state.SkipWithError("the design after a burst is not that of its last change");
  host.free(box);
}

/**
 * The host that benchmarks run in. There is one at a time, so the first benchmark
 * that wants another kind makes an end of the one before.
 */
class Stage {
 public:
  explicit Stage(std::string module) : module_(std::move(module)) {}

  Host &host(patchbay::Checking checking) {
    if (host_ == nullptr || checking != checking_) {
      close();
      host_ = std::make_unique<Host>(ignored_, checking);
      checking_ = checking;
      host_->load(module_);
      settle();
    }
    return *host_;
  }

  /** Ends the host; what went wrong in it is printed. */
  void close() {
    if (host_ == nullptr) return;
    for (const std::string &problem : host_->close()) complain(problem);
    for (const patchbay::Post &post : host_->posts()) complain(post.text);
    host_.reset();
  }

  bool sound() const { return sound_; }

 private:
  void complain(const std::string &text) {
    sound_ = false;
    std::cerr << text << '\n';
  }

  // Patchbay remembers the last thousands of things that were released. A host in use
  // has its book full, so that each that enters makes another leave.
  void settle() {
    const Box box = host_->make("veltane");
    for (int i = 0; i < 1000; ++i) host_->send(box, "bang");
    host_->free(box);
  }

  std::string module_;
  std::ostringstream ignored_;
  patchbay::Checking checking_ = patchbay::Checking::strict;
  std::unique_ptr<Host> host_;
  bool sound_ = true;
};

int run(const std::string &module, const bench::Designs &designs) {
  using patchbay::Checking;
  Stage stage(module);
  const auto add_design = [&](const std::string &name, const bench::Design &design,
                              Checking checking) {
    benchmark::RegisterBenchmark(name.c_str(), [&stage, &designs, &design,
                                                checking](benchmark::State &state) {
      time_design(state, stage.host(checking), designs, design);
    })->Unit(benchmark::kMicrosecond);
  };
  for (const bench::Design &design : designs.list)
    add_design(design.name, design, Checking::strict);
  benchmark::RegisterBenchmark("burst",
                               [&](benchmark::State &state) {
                                 time_burst(state, stage.host(Checking::strict),
                                            designs.changes_in_burst);
                               })
      ->Unit(benchmark::kMicrosecond)
      ->Iterations(1);
  for (const bench::Design &design : designs.list)
    if (design.name == "default") add_design("default/trusting", design, Checking::trusting);
  benchmark::RunSpecifiedBenchmarks();
  stage.close();
  return stage.sound() ? 0 : 3;
}

}  // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  if (argc != 3) {
    std::cerr << "usage: bench-veltane MODULE DESIGNS [--benchmark_...]\n";
    return 2;
  }
  try {
    return run(argv[1], bench::read_designs(argv[2]));
  } catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return 3;
  }
}

#include "design/all_lines.h"

#include <poll.h>

#include <cerrno>
#include <stdexcept>
#include <thread>
#include <vector>

#include "design/workers.h"

namespace cli {
namespace {

// Waits until there is something to read or a worker has something to say.
// @param input  null: nothing more is to be read now
// @return whether there is something to read
bool wait_for(const Workers &workers, const LineReader *input) {
  std::vector<pollfd> waiting = workers.waiting();
  if (input != nullptr) waiting.push_back({input->descriptor(), POLLIN, 0});
  if (waiting.empty()) return false;
  if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
    throw std::runtime_error("the workers cannot be waited for");
  return input != nullptr && waiting.back().revents != 0;
}

}  // namespace

// A worker is a copy of its parent, which has its lines.
bool works_for_another(const std::string &, const std::filesystem::path &) { return false; }

void work_on_all_lines(LineReader &reader, const Job &job, const Loss &loss, const Taker &taker) {
  Workers workers(std::thread::hardware_concurrency(), job.work, loss);
  while (!(reader.at_end() && reader.empty() && workers.idle())) {
    const bool wants_input = reader.empty() && !reader.at_end() && workers.room() > 0;
    if (wait_for(workers, wants_input ? &reader : nullptr)) reader.read();
    workers.collect(taker.take);
    while (!reader.empty() && workers.room() > 0) workers.start(reader.take(workers.room()));
    if (!taker.rest()) return;
  }
}

}  // namespace cli

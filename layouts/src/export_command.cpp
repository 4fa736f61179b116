#include "layouts/export_command.h"

namespace layouts {
namespace {

// What is asked for besides the target, as options.
std::vector<std::string> options_of(const Request &request) {
  std::vector<std::string> words;
  if (request.level == Level::normalised) words.emplace_back("--normalise");
  if (request.arrangement != Arrangement::quiet) words.emplace_back("--as-published");
  if (request.arrangement == Arrangement::published_spread) words.emplace_back("--spread-gain");
  if (request.structure) {
    words.emplace_back("--structure");
    words.emplace_back(word_for(*request.structure));
  }
  if (request.noisy == Noisy::written) words.emplace_back("--anyway");
  return words;
}

}  // namespace

std::vector<std::string> export_command(const Target &target,
                                        const std::vector<std::string> &settings,
                                        const Request &request) {
  std::vector<std::string> words{"veltane", "export", "--for", target.name};
  words.insert(words.end(), settings.begin(), settings.end());
  const std::vector<std::string> options = options_of(request);
  words.insert(words.end(), options.begin(), options.end());
  return words;
}

}  // namespace layouts

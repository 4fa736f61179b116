// A request that was wrong.
#ifndef DESIGNER_REFUSAL_H
#define DESIGNER_REFUSAL_H

#include <exception>
#include <string>
#include <utility>

namespace designer {

/** Says in one sentence what was wrong with a request, and what is allowed. A failure of a correct
 *  request is a std::runtime_error. */
class Refusal : public std::exception {
 public:
  explicit Refusal(std::string sentence) : sentence_(std::move(sentence)) {}
  const char *what() const noexcept override { return sentence_.c_str(); }

 private:
  std::string sentence_;
};

}  // namespace designer

#endif

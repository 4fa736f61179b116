#include "session/session.h"

#include <array>
#include <new>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "session/answers.h"
#include "session/request.h"

namespace page {
namespace {

struct Handler {
  const char *name;
  Answer (*answer)(designer::Designer &designer, const Request &request);
};

constexpr std::array handlers{Handler{"describe", describe},  Handler{"live", live},
                              Handler{"verdict", verdict_on}, Handler{"lower_order", lower_order},
                              Handler{"layout", layout},      Handler{"estimate", estimate},
                              Handler{"open", open},          Handler{"document", document}};

Answer answered(designer::Designer &designer, std::string_view text) {
  const Request request = Request::parse(text, nullptr, false);
  if (!request.is_object()) throw designer::Refusal("a request is a JSON object");
  const std::string wanted = text_in(request, "do");
  for (const Handler &handler : handlers)
    if (wanted == handler.name) return handler.answer(designer, request);
  throw designer::Refusal(fmt::format("unknown request '{}'", wanted));
}

Answer sentence(const char *kind, const char *text) {
  Answer answer;
  answer.document[kind] = text;
  return answer;
}

}  // namespace

text::Json Answer::list(const std::vector<double> &values) {
  const std::size_t begin = numbers.size();
  numbers.insert(numbers.end(), values.begin(), values.end());
  return {{"numbers", {begin, values.size()}}};
}

Answer Session::answer(std::string_view request) {
  try {
    return answered(designer_, request);
  } catch (const designer::Refusal &refusal) {
    return sentence("refused", refusal.what());
  } catch (const std::bad_alloc &) {
    return sentence("failed", "there is not enough memory");
  } catch (const std::exception &error) {
    return sentence("failed", error.what());
  }
}

}  // namespace page

// The session as plain functions that JavaScript calls. A page has one session, which lives as long
// as the page; texts are UTF-8, and what is returned belongs to the session until the next request.

#include <emscripten/emscripten.h>

#include <string>

#include "brontal/class.h"
#include "session/session.h"

namespace {

struct Last {
  std::string document;
  std::vector<double> numbers;
};

Last last;

page::Session &session() {
  static page::Session only(ext_main);
  return only;
}

}  // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE void veltane_ask(const char *request, std::size_t length) {
  page::Answer answer = session().answer({request, length});
  last.document = answer.document.dump(-1, ' ', false, text::Json::error_handler_t::replace);
  last.numbers = std::move(answer.numbers);
}

EMSCRIPTEN_KEEPALIVE const char *veltane_document() { return last.document.data(); }
EMSCRIPTEN_KEEPALIVE std::size_t veltane_document_size() { return last.document.size(); }
EMSCRIPTEN_KEEPALIVE const double *veltane_numbers() { return last.numbers.data(); }
EMSCRIPTEN_KEEPALIVE std::size_t veltane_numbers_size() { return last.numbers.size(); }

}  // extern "C"

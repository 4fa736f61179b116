// A page's designer: a request in, an answer out. It knows nothing of a browser.
#ifndef PAGE_SESSION_SESSION_H
#define PAGE_SESSION_SESSION_H

#include <string>
#include <string_view>
#include <vector>

#include "designer/designer.h"
#include "text/json.h"

namespace page {

/** The numbers of curves beside a document, which refers to them by place and length. */
struct Answer {
  text::Json document = text::Json::object();
  std::vector<double> numbers;

  /** Appends numbers. @return what the document says of them: where they begin, and how many */
  text::Json list(const std::vector<double> &values);
};

/** A host with the module, and what is asked of it. As one host lives in a process, so does one
 *  session. */
class Session {
 public:
  /** @param ext_main  of the module */
  explicit Session(void (*ext_main)()) : designer_(ext_main) {}

  /**
   * @param request  a JSON object: "do" names what is to be done, and the other members are its
   *                 arguments; docs/page.md lists them
   * @return what came of it. A request that was refused has one member, "refused", and what failed
   *         for another reason "failed": a sentence each. Nothing is raised.
   */
  Answer answer(std::string_view request);

 private:
  designer::Designer designer_;
};

}  // namespace page

#endif

// What the class declares, and what there is to choose from.

#include "layouts/target.h"
#include "session/answers.h"
#include "session/json.h"

namespace page {

Answer describe(designer::Designer &designer, const Request &) {
  text::Json attributes = text::Json::array();
  for (const patchbay::AttributeInfo &attribute : designer.attributes())
    attributes.push_back(json(attribute));
  text::Json targets = text::Json::array();
  for (const layouts::Target &target : layouts::targets())
    targets.push_back({{"name", target.name}, {"summary", target.summary}});
  Answer answer;
  answer.document = {{"version", VELTANE_VERSION},
                     {"attributes", attributes},
                     {"fresh", json(designer.fresh())},
                     {"targets", targets}};
  return answer;
}

}  // namespace page

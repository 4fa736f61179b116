#include "layouts/layout.h"

#include "layouts/exported_filter.h"

namespace layouts {

designer::Settings with_sections(designer::Settings settings) {
  for (const char *output : {"zpk_output", "sos_output"}) settings.set(output, {std::string("on")});
  return settings;
}

File write(const designer::Design &design, const Target &target, const Request &request) {
  const ExportedFilter filter = exported_filter(design, target, request);
  return {target.write(filter), filter.remarks};
}

}  // namespace layouts

// A host that keeps the promises of the interface headers and not one more. The
// module's sources are linked into the test, so its record and its functions can
// be looked at.
#ifndef VELTANE_TESTS_BARE_HOST_H
#define VELTANE_TESTS_BARE_HOST_H

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "brontal/brontal.h"

namespace bare {

using Entry = std::variant<std::string, double, std::vector<double>>;

// What the module said of an attribute.
struct Attribute {
  std::string name;
  std::string type;
  t_long offset;
  t_long maximum;
  t_long count_offset;  // 0 for a single value
};

// What "setmethod" was sent with.
struct SetMethod {
  std::string attribute;
  std::string which;
  t_method method;
};

struct Host {
  // How this host differs from others.
  bool makes_a_box_while_registering = false;

  // What the module asked for.
  std::vector<std::string> calls;  // those whose order or arguments matter here
  std::vector<Attribute> attributes;
  std::vector<SetMethod> set_methods;
  std::vector<std::string> errors;
  std::vector<std::string> sent;
  std::vector<std::pair<std::string, Entry>> dictionary;  // of the last box
  void *box_made_while_registering = nullptr;
  std::size_t tasks_set = 0;
  std::size_t blocks_alive = 0;
};

// The host, anew for each test.
Host &host();
void start_anew();

}  // namespace bare

#endif

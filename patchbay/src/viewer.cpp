#include "viewer.h"

#include <ostream>

#include "brontal/object.h"
#include "classes.h"
#include "dictionaries.h"
#include "instances.h"
#include "runtime/symbols.h"
#include "state.h"
#include "trace.h"
#include "values.h"
#include "words.h"

namespace patchbay {
namespace {

struct Viewer {
  t_object object;
  t_symbol *dictionary;
};

// Called by the host alone, so there is a host, and the class is registered.
void *viewer_new(t_symbol *name, t_long argc, t_atom *argv) {
  State &s = *current_state();
  t_class &c = *s.classes.at({words().box, name});
  auto *viewer = static_cast<Viewer *>(allocate_instance(s, c, Op::object_new_typed));
  if (viewer != nullptr && argc > 0)
    viewer->dictionary = runtime::intern(to_text(from_atom(argv[0])).c_str());
  return viewer;
}

void viewer_edit(const Viewer *viewer) {
  State &s = *current_state();
  const auto found = s.dictionaries.find(viewer->dictionary);
  if (found == s.dictionaries.end())
    s.out << "there is no dictionary '" << as_text(viewer->dictionary) << "'\n";
  else
    print(s.out, contents(*found->second));
}

}  // namespace

void register_viewer(State &s) {
  t_symbol *box = words().box;
  t_class *c = make_class(s, {.name = runtime::intern("dict"),
                              .constructor = viewer_new,
                              .size = sizeof(Viewer),
                              .name_space = box});
  add_method(s, Op::class_addmethod, *c,
             {words().edit, reinterpret_cast<t_method>(viewer_edit), ARGS_NONE, {}});
  s.classes[{box, c->name}] = c;
}

}  // namespace patchbay

// The symbols that the host itself compares with.
#ifndef PATCHBAY_WORDS_H
#define PATCHBAY_WORDS_H

#include "runtime/symbols.h"

namespace patchbay {

struct Words {
  t_symbol *empty = runtime::intern("");

  t_symbol *box = runtime::intern("box");
  t_symbol *name = runtime::intern("name");
  t_symbol *getname = runtime::intern("getname");
  t_symbol *edit = runtime::intern("edit");
  t_symbol *attr_modified = runtime::intern("attr_modified");

  // types
  t_symbol *symbol = runtime::intern("symbol");
  t_symbol *integer = runtime::intern("long");
  t_symbol *number = runtime::intern("float64");
  t_symbol *atom = runtime::intern("atom");

  // messages
  t_symbol *notify = runtime::intern("notify");
  t_symbol *dblclick = runtime::intern("dblclick");
  t_symbol *assist = runtime::intern("assist");
  t_symbol *dsp64 = runtime::intern("dsp64");
  t_symbol *signal = runtime::intern("signal");
  t_symbol *setmethod = runtime::intern("setmethod");
  t_symbol *set = runtime::intern("set");
  t_symbol *get = runtime::intern("get");
  t_symbol *setatoms64 = runtime::intern("setatoms64");

  t_symbol *methods = runtime::intern("methods");
};

/** @return the symbols, which are made by the first call. Raises std::bad_alloc. */
inline const Words &words() {
  static const Words made;
  return made;
}

}  // namespace patchbay

#endif

/* What a module with one plain class needs besides its fault. */
#ifndef PLAIN_CLASS_H
#define PLAIN_CLASS_H

#include "brontal/brontal.h"

static t_class *s_class;

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  (void)name;
  (void)argc;
  (void)argv;
  return object_alloc(s_class);
}

#endif

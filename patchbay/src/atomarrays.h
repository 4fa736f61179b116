// Atom arrays: lists of atoms as objects.
#ifndef PATCHBAY_ATOMARRAYS_H
#define PATCHBAY_ATOMARRAYS_H

#include <vector>

#include "brontal/atomarray.h"

struct t_atomarray {
  std::vector<t_atom> atoms;
};

#endif

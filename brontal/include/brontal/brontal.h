/** The whole of the host's object interface. Compiles as C11 and as C++20. */
#ifndef BRONTAL_BRONTAL_H
#define BRONTAL_BRONTAL_H

#include "atom.h"
#include "atomarray.h"
#include "attribute.h"
#include "audio.h"
#include "class.h"
#include "dictionary.h"
#include "hashtab.h"
#include "memory.h"
#include "notification.h"
#include "object.h"
#include "outlet.h"
#include "qelem.h"
#include "symbol.h"
#include "types.h"

#endif

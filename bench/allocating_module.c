/* Allocates on behalf of whoever loads it. */
#include <stdlib.h>

__attribute__((visibility("default"))) void *ask(size_t size);

void *ask(size_t size) { return malloc(size); }

// The class "dict": a viewer that prints a dictionary when its editor is opened.
#ifndef PATCHBAY_VIEWER_H
#define PATCHBAY_VIEWER_H

namespace patchbay {

struct State;

/** Makes the class, ready for boxes. */
void register_viewer(State &s);

}  // namespace patchbay

#endif

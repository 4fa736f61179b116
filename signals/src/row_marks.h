// What kind of a line waits in a LineQueue: its first character.
#ifndef SIGNALS_ROW_MARKS_H
#define SIGNALS_ROW_MARKS_H

namespace signals {

inline constexpr char frame_mark = 'f';
inline constexpr char text_mark = 't';

}  // namespace signals

#endif

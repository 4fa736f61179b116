// How much of a filter a picture shows.
#ifndef PICTURES_DETAIL_H
#define PICTURES_DETAIL_H

namespace pictures {

/** `full` is for a picture that is kept: no extremum is missed, and curves have points as near to one
 *  another as any paper shows. `live` is for one that follows a dial: some 600 to 1200 points a curve,
 *  which are those of a screen, computed in doubles and in time that grows with the order, not its
 *  square. Its curves meet roots, cutoffs and half-power points all the same. */
enum class Detail { full, live };

}  // namespace pictures

#endif

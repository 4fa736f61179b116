// What a session answers, one function for each request. Each raises Refusal for a wrong one.
#ifndef PAGE_SESSION_ANSWERS_H
#define PAGE_SESSION_ANSWERS_H

#include "session/session.h"

namespace page {

/** A request that was read; its members are checked as they are used. */
using Request = text::Json;

Answer describe(designer::Designer &designer, const Request &request);
Answer live(designer::Designer &designer, const Request &request);
Answer verdict_on(designer::Designer &designer, const Request &request);
Answer lower_order(designer::Designer &designer, const Request &request);
Answer layout(designer::Designer &designer, const Request &request);
Answer estimate(designer::Designer &designer, const Request &request);
Answer open(designer::Designer &designer, const Request &request);
Answer document(designer::Designer &designer, const Request &request);

}  // namespace page

#endif

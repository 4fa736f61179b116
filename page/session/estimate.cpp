// The filters that meet a demand.

#include "designer/candidates.h"
#include "designer/refusal.h"
#include "session/answers.h"
#include "session/json.h"
#include "session/request.h"

namespace page {
namespace {

designer::RatedDemand demand_in(const Request &request) {
  const double rate = number_in(request, "samplerate");
  if (!(rate >= 1)) throw designer::Refusal("a sample rate is at least 1 Hz");
  return designer::rated({.passband = numbers_in(request, "passband"),
                          .stopband = numbers_in(request, "stopband"),
                          .ripple = number_in(request, "ripple"),
                          .attenuation = number_in(request, "attenuation")},
                         rate, designer::Units::hertz);
}

}  // namespace

Answer estimate(designer::Designer &designer, const Request &request) {
  const designer::RatedDemand demand = demand_in(request);
  const std::vector<designer::Candidate> found = designer::candidates(
      designer, demand, {designer::all_families.begin(), designer::all_families.end()});
  const designer::Candidate *best = designer::recommended(found);
  text::Json list = text::Json::array();
  for (const designer::Candidate &candidate : found)
    list.push_back({{"family", designer::name_of(candidate.family)},
                    {"impossible", candidate.impossible},
                    {"order", candidate.order},
                    {"poles", candidate.poles},
                    {"ripple", candidate.ripple},
                    {"attenuation", candidate.attenuation},
                    {"noisy", candidate.is_noisy()},
                    {"recommended", &candidate == best},
                    {"settings", json(candidate.settings)}});
  Answer answer;
  answer.document = {{"response", designer::name_of(demand.response)}, {"candidates", list}};
  return answer;
}

}  // namespace page

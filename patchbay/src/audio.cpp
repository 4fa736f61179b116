#include "audio.h"

#include <algorithm>

#include "brontal/audio.h"
#include "call_out.h"
#include "gate.h"
#include "state.h"
#include "words.h"

using patchbay::Op;
using patchbay::State;

namespace patchbay {

void send_dsp64(State &s, const Instance &x) {
  const auto handler = reinterpret_cast<t_dsp64_handler>(find_private(*x.type, words().dsp64));
  if (!x.type->takes_signals || handler == nullptr) return;
  constexpr t_long vector_size = 64;
  short connected = 0;
  call_out(s, "dsp64",
           [&] { handler(x.memory, nullptr, &connected, s.samplerate, vector_size, 0); });
}

void audio_on(State &s, double samplerate) {
  s.samplerate = samplerate;
  s.audio = true;
  const auto instances = s.instances;
  for (Instance *x : instances) {
    const auto &left = s.instances;  // a box may free another
    if (std::find(left.begin(), left.end(), x) != left.end()) send_dsp64(s, *x);
  }
}

}  // namespace patchbay

float sys_getsr() {
  return operation(Op::sys_getsr, 0.0F, [](State &s) { return static_cast<float>(s.samplerate); });
}

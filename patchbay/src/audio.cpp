#include "runtime/symbols.h"
#include "state.h"

using patchbay::Op;
using patchbay::State;

namespace patchbay {

void send_dsp64(State &s, const Instance &x) {
  t_symbol *dsp64 = runtime::intern("dsp64");
  const Method *method = find_method(*x.type, dsp64);
  if (!x.type->takes_signals || method == nullptr) return;
  const auto handler = reinterpret_cast<t_dsp64_handler>(method->function);
  constexpr t_long vector_size = 64;
  short connected = 0;
  call_module(s, dsp64,
              [&] { handler(x.memory, nullptr, &connected, s.samplerate, vector_size, 0); });
}

}  // namespace patchbay

float sys_getsr() {
  return operation(Op::sys_getsr, 0.0F, [](State &s) { return static_cast<float>(s.samplerate); });
}

/** Symbols of texts that are known when a program is compiled, each looked up once. */
#ifndef FILTERMATH_KNOWN_SYMBOL_H
#define FILTERMATH_KNOWN_SYMBOL_H

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>

#include "brontal/symbol.h"

namespace filtermath {

/** A text as an argument of a template: a string literal converts to one. */
template <std::size_t size>
struct Literal {
  consteval Literal(const char (&given)[size]) { std::copy_n(given, size, text); }
  char text[size];
};

/**
 * The symbol with this text. A host keeps its symbols, and where they are, for as long as it runs:
 * the first call asks for it, the others return what the first one was given. Any thread may call.
 * Cost: constant; one call of `gensym` for each text.
 * @return null when the host has no memory; the next call asks again
 */
template <Literal literal>
t_symbol *known_symbol() {
  static std::atomic<t_symbol *> known{nullptr};
  t_symbol *symbol = known.load(std::memory_order_acquire);
  if (symbol == nullptr) {
    symbol = gensym(literal.text);
    known.store(symbol, std::memory_order_release);
  }
  return symbol;
}

/**
 * The same for who cannot do without: a null symbol would make one comparison of a design fail and
 * the next one not. Raises std::bad_alloc when the host has no memory.
 */
template <Literal literal>
t_symbol *required_symbol() {
  t_symbol *symbol = known_symbol<literal>();
  if (symbol == nullptr) throw std::bad_alloc();
  return symbol;
}

}  // namespace filtermath

#endif

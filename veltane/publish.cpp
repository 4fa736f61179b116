// Publishing a designed filter in the dictionary, and notifying others that it is there.

#include <utility>

#include "filter.h"

namespace veltane {
namespace {

Owned<t_atomarray> new_array() {
  Owned<t_atomarray> array(atomarray_new(0, nullptr));
  if (array == nullptr) throw HostFailure{"the host could not make an atom array"};
  return array;
}

void append(t_dictionary *dict, t_symbol *key, Owned<t_atomarray> array, const Values &values) {
  {
    Owned<t_atom> atoms(
        static_cast<t_atom *>(sysmem_newptr(values.count * static_cast<t_long>(sizeof(t_atom)))));
    require_memory(atoms != nullptr || values.count == 0);
    for (int64_t i = 0; i < values.count; ++i)
      require(atom_setfloat(&atoms.get()[i], values.block.get()[i]),
              "the host could not fill an atom");
    // What this yields says nothing.
    object_method_imp(array.get(), required_symbol<"setatoms64">(), t_long{values.count},
                      atoms.get());
  }
  require(dictionary_appendatomarray(dict, key, array.release()),
          "the host could not append an atom array");
}

void append(t_dictionary *dict, t_symbol *key, t_symbol *value) {
  require(dictionary_appendsym(dict, key, value), "the host could not append a symbol");
}

void append(t_dictionary *dict, t_symbol *key, double value) {
  require(dictionary_appendfloat(dict, key, value), "the host could not append a number");
}

void append_header(const t_veltane *x) {
  // A "chebyshev-2" says 0 here, not its attenuation: readers of dictionaries
  // rely on it.
  const double ripple = is_chebyshev1(x) ? x->passband_ripple : 0.0;
  append(x->dict, required_symbol<"schema">(), required_symbol<"veltane">());
  append(x->dict, required_symbol<"response">(), x->response);
  append(x->dict, required_symbol<"topology">(), x->topology);
  append(x->dict, required_symbol<"ripple">(), ripple);
}

void append_transfer_function(const t_veltane *x, const TransferFunction &found) {
  Owned<t_atomarray> numerator = new_array();
  Owned<t_atomarray> denominator = new_array();
  append(x->dict, required_symbol<"denominator">(), std::move(denominator), found.denominator);
  append(x->dict, required_symbol<"numerator">(), std::move(numerator), found.numerator);
}

void append_roots(const t_veltane *x, const Roots &found) {
  Owned<t_atomarray> zeros = new_array();
  Owned<t_atomarray> poles = new_array();
  append(x->dict, required_symbol<"zeroes">(), std::move(zeros), found.zeros);
  append(x->dict, required_symbol<"poles">(), std::move(poles), found.poles);
  append(x->dict, required_symbol<"gain">(), found.gain);
}

}  // namespace

void publish(const t_veltane *x, Filter &filter) {
  append_header(x);
  if (filter.transfer_function) append_transfer_function(x, *filter.transfer_function);
  filter.transfer_function.reset();
  if (filter.roots) append_roots(x, *filter.roots);
  if (filter.cascade) append(x->dict, required_symbol<"cascade">(), new_array(), *filter.cascade);
  filter.cascade.reset();
  filter.roots.reset();

  t_atom name{};
  require(atom_setsym(&name, x->name), "the dictionary has no name to send");
  outlet_anything(x->outlet, required_symbol<"dictionary">(), 1, &name);
}

}  // namespace veltane

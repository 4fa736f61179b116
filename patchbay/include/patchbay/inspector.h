/**
 * What tests need from a host beyond its normal use: to see what a module does
 * wrong, to see the operations that it calls, and to make operations fail.
 */
#ifndef PATCHBAY_INSPECTOR_H
#define PATCHBAY_INSPECTOR_H

#include <cstddef>
#include <string>
#include <vector>

#include "patchbay/host.h"

namespace patchbay {

/** One call of a host operation. */
struct PATCHBAY_API Call {
  std::string operation;
  /** Numbers and texts as they were given. Addresses mean nothing, so symbols and attributes are
   *  given by their names, and other things not at all. */
  std::vector<std::string> arguments;

  /** @return the call as it is written: operation(argument, argument) */
  std::string text() const;
};

/**
 * Looks into a host. It holds no state of its own: several inspectors of a host
 * see and do the same, and each may be used as long as the host lives. All of its
 * functions belong to the host's thread, and raise Error in another.
 */
class PATCHBAY_API Inspector {
 public:
  /** @param host  the caller's; it must outlive the inspector's use */
  explicit Inspector(Host &host) : host_(host) {}

  // --- what a module does wrong

  /** @return the misuse of operations so far, a sentence each, oldest first; valid
   *  as long as the host, and grows with it. What a module does wrong with blocks is
   *  missing when the host is trusting. */
  const std::vector<std::string> &violations() const;

  /** @return what a module has been handed and has not released, a phrase each,
   *  oldest first, such as "dictionary 3 from dictionary_new". Costs a pass over all that is on
   *  record. Blocks are missing when the host is trusting. */
  std::vector<std::string> leaks() const;

  // --- which operations it calls

  /** Starts to write calls down, from an empty list. */
  void start_trace();

  /** Stops. @return the calls since the start, in their order */
  std::vector<Call> stop_trace();

  // --- what it does when they fail

  /** @return the names of all operations. */
  static std::vector<std::string> operations();

  /**
   * Makes one call of an operation fail, as its header says that it may.
   * @param nth  which one from now on, 1 for the next; it replaces an earlier request for the same
   *             operation, and 0 cancels it
   * Raises Error if the operation does not exist.
   */
  void fail(const std::string &operation, std::size_t nth = 1);

  /** Forgets failures that have not happened. @return how many there were. */
  std::size_t forget_failures();

 private:
  State &state() const;

  Host &host_;
};

}  // namespace patchbay

#endif

// What a signal, or running out of memory, must not leave behind: temporary files that have a name.
//
// INT, TERM and HUP end the program without any destructor. From the first name on they remove
// the names first and end it then, as they would have; one that was ignored, as by nohup, stays
// ignored.
#ifndef OS_LEFTOVERS_H
#define OS_LEFTOVERS_H

#include <signal.h>

#include <string>

namespace os {

/** Holds INT, TERM and HUP back for as long as it lives. */
class SignalsHeld {
 public:
  SignalsHeld();
  ~SignalsHeld();
  SignalsHeld(const SignalsHeld &) = delete;
  SignalsHeld &operator=(const SignalsHeld &) = delete;

 private:
  sigset_t before_;
};

/** A file that is removed with this object, and by a signal. */
class Leftover {
 public:
  Leftover() = default; /**< no file yet */
  ~Leftover() { remove(); }
  Leftover(const Leftover &) = delete;
  Leftover &operator=(const Leftover &) = delete;

  /** Takes a file over that was made under SignalsHeld, which still holds. A copy of the
   *  process does not remove it when a signal ends it. It allocates nothing: without memory
   *  the file would be nobody's. */
  void take(std::string &&name) noexcept;

  const std::string &name() const { return name_; }
  void remove();  /**< Removes it, if there is one. */
  void release(); /**< Leaves it where it is: it has become what it was made for. */

 private:
  std::string name_;
};

/** Removes what is left, before the process ends without destructors. A copy of the process
 *  removes nothing. It allocates nothing. */
void remove_leftovers() noexcept;

}  // namespace os

#endif

/**
 * patchbay: a small host for modules written against brontal/. It loads a
 * module, makes boxes of its classes, sends them messages, runs their deferred
 * tasks and keeps their dictionaries; and it keeps a record of all that it hands out, so that a
 * module's mistakes are named.
 *
 * One host lives at a time in a process, as the operations of brontal/ are plain
 * functions that act on that host, and modules keep statics. A second one is
 * refused, in whichever thread it is to be made: two threads cannot have a host
 * each, but one after the other can.
 *
 * A host belongs to the thread that made it. In another thread every function of
 * `Host` but the destructor raises Error, and an operation of brontal/ fails and
 * touches nothing, which `close` then reports. The destructor may run in any thread once no other
 * function does.
 *
 * What a host does is in host.h; what tests ask it to report about its modules, and to make fail,
 * is in inspector.h.
 */
#ifndef PATCHBAY_HOST_H
#define PATCHBAY_HOST_H

#include <cstddef>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "brontal/class.h"
#include "brontal/object.h"
#include "patchbay/value.h"

namespace patchbay {

struct State;

/** A request that cannot be carried out; its text says why in a sentence. */
class PATCHBAY_API Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/** A box: the instance that its class's constructor made. */
using Box = t_object *;

/** What the console shows. */
struct Post {
  Box box;            /**< who posted; null for the host itself */
  std::string source; /**< its class, or "patchbay" */
  std::string text;
};

/** What a class says of one of its attributes. */
struct PATCHBAY_API AttributeInfo {
  std::string name;
  std::string type;             /**< "symbol", "long" or "float64" */
  std::size_t maximum;          /**< how many values it takes */
  std::optional<double> lowest; /**< bounds of its clip filter */
  std::optional<double> highest;
  std::vector<std::pair<std::string, Values>> properties; /**< as they were given */

  /** @return the values of a property; empty when it was not given. */
  Values property(const std::string &name) const;
};

/**
 * How closely a host watches what a module does. Nothing else depends on it: the
 * same calls do the same things and yield the same results.
 */
enum class Checking {
  /** Everything that was handed out is on record. A misuse is refused and reported, and what is
   *  never released is found. */
  strict,
  /** Blocks of memory are not recorded, which makes a design cheaper: they are most
   *  of what a module asks for. A module that releases a block twice, or something that is not a
   *  block, corrupts the process, and a block that it never releases is neither reported nor
   *  reclaimed. Boxes, dictionaries, atom arrays, tasks and all other objects are watched as in a
   *  strict host. */
  trusting
};

/** Receives what leaves an outlet. */
using Listener = std::function<void(const std::string &message, const Values &arguments)>;

/**
 * The host. A function that takes a box raises Error if that box does not exist, whether it never
 * did or has been freed. Boxes belong to the host; what functions return by value is a copy.
 */
class PATCHBAY_API Host {
 public:
  /** @param out  where viewers print; the caller's, which must outlive the host.
   *  Raises Error when a host is alive. */
  explicit Host(std::ostream &out, Checking checking = Checking::strict);
  Host();  /**< viewers print to standard output */
  ~Host(); /**< as `close` */
  Host(const Host &) = delete;
  Host &operator=(const Host &) = delete;

  // --- modules and boxes

  /** Loads a module and runs its `ext_main`. The host unloads it when it is closed.
   *  Raises Error when the file is missing or is not a module, or when the module is
   *  loaded already, and std::runtime_error when there is no memory for it. */
  void load(const std::filesystem::path &module);

  /** Runs the `ext_main` of a module that is linked into the program, as where nothing can be
   *  loaded. Otherwise it is as one from a file. Raises Error when it is loaded already. */
  void load(void (*ext_main)());

  /** @return the classes that boxes can be made of. */
  std::vector<std::string> classes() const;

  /** @return the attributes of a class in their order. Raises Error when there is no
   *  such class. */
  std::vector<AttributeInfo> attributes(const std::string &class_name) const;

  /**
   * Makes a box from a line of text: a class name, then `attribute: value ...`.
   * What cannot be set is posted. Raises Error when there is no such class, or
   * its constructor failed.
   */
  Box make(const std::string &text);

  /** Frees a box made by `make`. */
  void free(Box box);

  /** @return the boxes that are alive, in the order in which they were made. */
  std::vector<Box> boxes() const;

  /**
   * Frees all boxes and unloads all modules; further calls change nothing.
   * @return what went wrong while the host lived: the misuse of operations and
   *         what was never released, a sentence each
   */
  std::vector<std::string> close();

  // --- messages and gestures

  /**
   * Sends a message as a user would. The name of an attribute sets it. Raises
   * Error when the box does not understand it, only the host may send it, or
   * the arguments do not fit.
   */
  void send(Box box, const std::string &message, const Values &arguments = {});

  /** Double-clicks a box; one that does not handle it is unchanged. */
  void double_click(Box box);

  /** @param io     ASSIST_INLET or ASSIST_OUTLET
   *  @param index  from 0
   *  @return the hint for an inlet or outlet; empty when the class gives no hint */
  std::string assist(Box box, t_long io, t_long index);

  /** Sends a notice about a box to its clients. */
  void notify(Box box, const std::string &notice);

  /** Calls `listener` with all that leaves an outlet, until the box is freed.
   *  Raises Error when there is no such outlet. */
  void listen(Box box, std::size_t outlet, Listener listener);

  // --- attributes

  /** Sets an attribute, with what follows from it, such as notices. Raises Error when
   *  the class has no attribute of that name or the values do not fit its type. */
  void set(Box box, const std::string &attribute, const Values &values);

  /** @return its values. Raises Error when the class has no attribute of that name. */
  Values get(Box box, const std::string &attribute) const;

  /** @return whether it is shown as out of use. Raises Error when the class has no
   *  attribute of that name. */
  bool disabled(Box box, const std::string &attribute) const;

  // --- dictionaries, tasks, audio, console

  /** @return a copy of a registered dictionary; nothing when no dictionary has that
   *  name. */
  std::optional<Dictionary> dictionary(const std::string &name) const;

  /** @return the names of all registered dictionaries, sorted. */
  std::vector<std::string> dictionary_names() const;

  /**
   * Runs the deferred tasks that are set, in order, once each. Those that they
   * set wait for the next time.
   * @return how many ran
   */
  std::size_t run_deferred();

  /** Switches audio on: boxes that can take signals get "dsp64", now and when
   *  they are made. @param samplerate  in Hz */
  void audio_on(double samplerate = 48000.0);

  /** Switches audio off: boxes that are made from now on get no "dsp64". */
  void audio_off();

  /** What `sys_getsr` reports, in Hz; 48000 at first. Sends nothing. */
  void set_samplerate(double samplerate);

  /** @return the console, oldest first; it grows as long as the host lives. */
  const std::vector<Post> &posts() const;

 private:
  friend class Inspector;

  State &own() const;

  std::unique_ptr<State> state_;
};

}  // namespace patchbay

#endif

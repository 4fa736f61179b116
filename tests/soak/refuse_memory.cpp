// Loaded before a program's libraries (LD_PRELOAD), it refuses some of the program's
// allocations, as a machine without memory would. The environment says which:
//
//   REFUSE_COUNTER  a file of eight bytes that are 0: how many allocations were asked for,
//                   by the program and by the processes that it forks
//   REFUSE_FIRST    the number of the first allocation to refuse, from 1; 0 for none
//   REFUSE_LAST     that of the last one
//   REFUSE_UNNAMED  set when files without names are refused as well, as by file systems
//                   that do not have them
//
// They are taken out of the environment, so that programs that it starts have all memory.
// Counting begins with the initialisation of the first library that asks for memory; what
// the dynamic loader needs before that is not refused.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>

extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

struct Orders {
  std::atomic<std::uint64_t> *counter;  // shared by all processes
  std::uint64_t first;
  std::uint64_t last;
  bool refuses_unnamed;
};

constinit Orders orders{};

std::uint64_t number(const char *name) {
  const char *text = std::getenv(name);
  return text != nullptr ? std::strtoull(text, nullptr, 10) : 0;
}

// Nothing here allocates.
bool is_ordered() {
  if (orders.counter != nullptr) return true;
  const char *file = environ != nullptr ? std::getenv("REFUSE_COUNTER") : nullptr;
  if (file == nullptr) return false;
  const int descriptor = open(file, O_RDWR | O_CLOEXEC);
  constexpr int access = PROT_READ | PROT_WRITE;
  void *page = mmap(nullptr, sizeof(std::uint64_t), access, MAP_SHARED, descriptor, 0);
  if (page == MAP_FAILED) _exit(125);
  close(descriptor);
  orders = {static_cast<std::atomic<std::uint64_t> *>(page), number("REFUSE_FIRST"),
            number("REFUSE_LAST"), std::getenv("REFUSE_UNNAMED") != nullptr};
  for (const char *name :
       {"LD_PRELOAD", "REFUSE_COUNTER", "REFUSE_FIRST", "REFUSE_LAST", "REFUSE_UNNAMED"})
    unsetenv(name);
  return true;
}

bool is_refused() {
  if (!is_ordered()) return false;
  const std::uint64_t nth = ++*orders.counter;
  if (orders.first == 0 || nth < orders.first || nth > orders.last) return false;
  errno = ENOMEM;
  return true;
}

}  // namespace

// The rest of the program is built with hidden symbols.
#define VISIBLE extern "C" __attribute__((visibility("default")))

VISIBLE void *malloc(std::size_t size) { return is_refused() ? nullptr : __libc_malloc(size); }

VISIBLE void *calloc(std::size_t count, std::size_t size) {
  return is_refused() ? nullptr : __libc_calloc(count, size);
}

VISIBLE void *realloc(void *block, std::size_t size) {
  return size != 0 && is_refused() ? nullptr : __libc_realloc(block, size);
}

VISIBLE void *memalign(std::size_t alignment, std::size_t size) {
  return is_refused() ? nullptr : __libc_memalign(alignment, size);
}

VISIBLE void *aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}

VISIBLE int posix_memalign(void **block, std::size_t alignment, std::size_t size) {
  void *const memory = memalign(alignment, size);
  if (memory == nullptr) return ENOMEM;
  *block = memory;
  return 0;
}

VISIBLE int open(const char *name, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE) {
    va_list arguments;
    va_start(arguments, flags);
    mode = va_arg(arguments, mode_t);
    va_end(arguments);
  }
  if (orders.refuses_unnamed && (flags & O_TMPFILE) == O_TMPFILE) {
    errno = EOPNOTSUPP;
    return -1;
  }
  return openat(AT_FDCWD, name, flags, mode);
}

#include "base/file_writing.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "base/destination.h"
#include "base/unwritable.h"
#include "os/descriptor.h"
#include "os/leftovers.h"
#include "os/temporary.h"

namespace cli {
namespace {

std::string reason(int error) { return std::generic_category().message(error); }

// What a newly made file may be read and written by.
mode_t new_file_mode() {
  const mode_t mask = umask(0);
  umask(mask);
  return static_cast<mode_t>(0666) & ~mask;
}

bool is_folder(const std::filesystem::path &path) {
  std::error_code unseen;
  return std::filesystem::is_directory(path, unseen);
}

// As it was typed, unless a link leads elsewhere.
std::filesystem::path shown_folder(const std::filesystem::path &path,
                                   const std::filesystem::path &folder) {
  std::error_code unseen;
  if (std::filesystem::is_symlink(path, unseen)) return folder;
  return path.has_parent_path() ? path.parent_path() : ".";
}

// Copies a whole file, from its beginning. @return 0, or the number of the error
int copy_all(int from, int to) {
  std::array<char, std::size_t{1} << 16U> block;
  for (off_t at = 0;;) {
    const ssize_t count = pread(from, block.data(), block.size(), at);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count < 0 ? errno : 0;
    const auto size = static_cast<std::size_t>(count);
    if (const int error = os::write_all(to, {block.data(), size}); error != 0) return error;
    at += count;
  }
}

class SystemWriting final : public FileWriting {
 public:
  explicit SystemWriting(const std::filesystem::path &path);
  ~SystemWriting() override;
  SystemWriting(const SystemWriting &) = delete;
  SystemWriting &operator=(const SystemWriting &) = delete;

  bool write(std::string_view text) override;
  std::optional<int> new_file() const override;
  void finish() override;

 private:
  enum class Way { through, replace, copy };

  SystemWriting() = default;
  void open_at(const Destination &found);
  void open_descriptor(int number);
  void open_by_name(int flags);
  void open_in(const std::filesystem::path &folder);
  int make_named(const std::filesystem::path &folder);
  bool keeps_owner() const;
  void set_mode() const;
  void give_name();
  int take_place();
  void copy_over() const;
  void sync(int descriptor) const;
  [[noreturn]] void fail(int error) const;

  std::filesystem::path shown_;     // as it was given
  std::filesystem::path target_;    // what it leads to
  std::optional<struct stat> old_;  // what was there
  os::Leftover temporary_;          // where it has a name until it is complete
  Way way_ = Way::through;
  int descriptor_ = -1;
};

}  // namespace

// From the first constructor on the object exists, and its destructor cleans up
// whatever the second one raises.
SystemWriting::SystemWriting(const std::filesystem::path &path) : SystemWriting() {
  shown_ = path;
  if (!path.has_filename() && !is_folder(path)) throw names_no_file(path);
  try {
    open_at(destination(path));
  } catch (const std::filesystem::filesystem_error &error) {
    fail(error.code().value());
  }
}

void SystemWriting::open_at(const Destination &found) {
  target_ = found.file;
  old_ = found.old;
  if (found.descriptor) return open_descriptor(*found.descriptor);
  if (old_ && S_ISDIR(old_->st_mode)) throw is_a_folder(shown_);
  // What another process has open is not ours to cut off.
  if (found.in_proc) return open_by_name(O_APPEND);
  if (old_ && !S_ISREG(old_->st_mode)) return open_by_name(0);
  const std::filesystem::path folder = target_.parent_path();
  std::error_code unseen;
  if (!std::filesystem::is_directory(folder, unseen)) {
    if (unseen == std::errc::permission_denied) fail(EACCES);
    throw has_no_folder(shown_folder(shown_, folder), target_);
  }
  // A file that is protected stays, though its folder would allow to replace it.
  if (old_ && faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0) fail(errno);
  open_in(folder);
  if (old_ && (old_->st_nlink > 1 || !keeps_owner())) way_ = Way::copy;
  if (way_ == Way::replace) set_mode();
}

void SystemWriting::open_descriptor(int number) {
  descriptor_ = fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (descriptor_ < 0) fail(errno);
}

void SystemWriting::open_by_name(int flags) {
  descriptor_ = open(target_.c_str(), O_WRONLY | O_CLOEXEC | flags);
  if (descriptor_ < 0) fail(errno);
}

void SystemWriting::open_in(const std::filesystem::path &folder) {
  way_ = Way::replace;
  descriptor_ = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor_ < 0) descriptor_ = make_named(folder);
  if (descriptor_ >= 0) return;
  const int error = errno;
  if (!old_) fail(error);
  way_ = Way::copy;
  descriptor_ = os::open_temporary();
  if (descriptor_ < 0) fail(errno);
}

int SystemWriting::make_named(const std::filesystem::path &folder) {
  const os::SignalsHeld held;
  std::string name = (folder / ".veltane-XXXXXX").string();
  const int descriptor = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor >= 0) temporary_.take(std::move(name));
  return descriptor;
}

// Whether what takes the place of a file has, or can be given, its owner and group.
bool SystemWriting::keeps_owner() const {
  struct stat made {};
  if (fstat(descriptor_, &made) != 0) fail(errno);
  return (made.st_uid == old_->st_uid && made.st_gid == old_->st_gid) ||
         fchown(descriptor_, old_->st_uid, old_->st_gid) == 0;
}

void SystemWriting::set_mode() const {
  const mode_t mode = old_ ? old_->st_mode & 07777U : new_file_mode();
  if (fchmod(descriptor_, mode) == 0) return;
  // Some file systems have no modes.
  if (errno != EPERM && errno != ENOTSUP && errno != ENOSYS) fail(errno);
}

// A file without a name cannot take the place of another: it needs a name first.
void SystemWriting::give_name() {
  const std::string file = fmt::format("/proc/self/fd/{}", descriptor_);
  int error = 0;
  for (int attempt = 0; temporary_.name().empty() && error == 0; ++attempt) {
    const os::SignalsHeld held;
    std::string name =
        (target_.parent_path() / fmt::format(".veltane-{}-{}", getpid(), attempt)).string();
    if (linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
      temporary_.take(std::move(name));
    else if (errno != EEXIST)
      error = errno;
  }
  if (error == 0) return;
  // Where /proc is not mounted it gets none: another file that has one takes its text.
  const int named = make_named(target_.parent_path());
  if (named < 0) fail(error);
  const int nameless = std::exchange(descriptor_, named);
  error = copy_all(nameless, named);
  close(nameless);
  if (error != 0) fail(error);
  if (old_ && !keeps_owner()) way_ = Way::copy;
  set_mode();
  sync(named);
}

// @return 0, or why it cannot
int SystemWriting::take_place() {
  if (std::rename(temporary_.name().c_str(), target_.c_str()) != 0) return errno;
  temporary_.release();
  // The name is on the disk once the folder is.
  const int folder = open(target_.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return 0;
  fsync(folder);
  close(folder);
  return 0;
}

// Room is made before the old text is touched, and what could end the program waits: what is
// left to go wrong is the disk itself.
void SystemWriting::copy_over() const {
  const os::SignalsHeld held;
  const int into = open(target_.c_str(), O_WRONLY | O_CLOEXEC);
  if (into < 0) fail(errno);
  const off_t size = lseek(descriptor_, 0, SEEK_END);
  int error = size > old_->st_size ? posix_fallocate(into, 0, size) : 0;
  if (error != 0) {
    if (ftruncate(into, old_->st_size) != 0) error = errno;
  } else {
    error = copy_all(descriptor_, into);
    if (error == 0 && ftruncate(into, size) != 0) error = errno;
    if (error == 0) sync(into);
  }
  if (close(into) != 0 && error == 0) error = errno;
  if (error != 0) fail(error);
}

SystemWriting::~SystemWriting() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool SystemWriting::write(std::string_view text) {
  const int error = os::write_all(descriptor_, text);
  if (error == EPIPE && way_ == Way::through) return false;
  if (error != 0) fail(error);
  return true;
}

std::optional<int> SystemWriting::new_file() const {
  return way_ == Way::through ? std::nullopt : std::optional(descriptor_);
}

void SystemWriting::finish() {
  if (way_ != Way::through) sync(descriptor_);
  if (way_ == Way::replace) give_name();
  if (way_ == Way::replace) {
    const int error = take_place();
    if (error != 0 && !old_) fail(error);
    // A file that something is mounted on cannot be replaced.
    if (error != 0) way_ = Way::copy;
  }
  if (way_ == Way::copy) copy_over();
  temporary_.remove();
  const int closed = close(descriptor_);
  descriptor_ = -1;
  if (closed != 0) fail(errno);
}

// Some file systems have nothing to wait for.
void SystemWriting::sync(int descriptor) const {
  if (fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS) return;
  fail(errno);
}

void SystemWriting::fail(int error) const { throw cannot_be_written(shown_, reason(error)); }

std::unique_ptr<FileWriting> FileWriting::begin(const std::filesystem::path &path) {
  return std::make_unique<SystemWriting>(path);
}

}  // namespace cli

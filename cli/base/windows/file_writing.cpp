#include "base/file_writing.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "base/unwritable.h"
#include "os/descriptor.h"

namespace cli {
namespace {

// A new file in the same folder, which the system removes with the process until it is complete,
// takes the place of the old one at the end.
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
  SystemWriting() = default;
  HANDLE handle() const { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor_)); }
  bool opens_device();
  void make_new(const std::filesystem::path &folder);
  bool set_removed_at_end(BOOL removed) const;
  [[noreturn]] void fail(const std::string &reason) const;
  [[noreturn]] void fail_by_system(DWORD error) const;

  std::filesystem::path shown_;   // as it was given
  std::filesystem::path target_;  // what it leads to
  std::filesystem::path new_;     // empty where the target is written to directly
  int descriptor_ = -1;
};

}  // namespace

SystemWriting::SystemWriting(const std::filesystem::path &path) : SystemWriting() {
  shown_ = path;
  std::error_code unseen;
  if (std::filesystem::is_directory(path, unseen)) throw is_a_folder(path);
  if (!path.has_filename()) throw names_no_file(path);
  target_ = std::filesystem::absolute(path);
  if (opens_device()) return;
  if (std::filesystem::exists(target_, unseen))
    target_ = std::filesystem::weakly_canonical(target_, unseen);
  const std::filesystem::path folder = target_.parent_path();
  if (!std::filesystem::is_directory(folder, unseen))
    throw has_no_folder(path.has_parent_path() ? path.parent_path() : ".", target_);
  const DWORD attributes = GetFileAttributesW(target_.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
    fail_by_system(ERROR_ACCESS_DENIED);
  make_new(folder);
}

SystemWriting::~SystemWriting() {
  if (descriptor_ >= 0) _close(descriptor_);
}

// NUL, CON and named pipes are no files on a disk, and are written to as they are.
bool SystemWriting::opens_device() {
  HANDLE file = CreateFileW(target_.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  if (GetFileType(file) == FILE_TYPE_DISK) {
    CloseHandle(file);
    return false;
  }
  descriptor_ = _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY | _O_NOINHERIT);
  return true;
}

void SystemWriting::make_new(const std::filesystem::path &folder) {
  HANDLE file = INVALID_HANDLE_VALUE;
  for (int attempt = 0; file == INVALID_HANDLE_VALUE; ++attempt) {
    new_ = folder / fmt::format(".veltane-{}-{}", GetCurrentProcessId(), attempt);
    file = CreateFileW(new_.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                       FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS)
      fail_by_system(GetLastError());
  }
  descriptor_ =
      _open_osfhandle(reinterpret_cast<std::intptr_t>(file), _O_BINARY | _O_RDWR | _O_NOINHERIT);
  if (!set_removed_at_end(TRUE)) {
    const DWORD error = GetLastError();
    DeleteFileW(new_.c_str());
    fail_by_system(error);
  }
}

// As long as a file is marked for removal it goes when its last handle does, however that happens.
bool SystemWriting::set_removed_at_end(BOOL removed) const {
  FILE_DISPOSITION_INFO info{};
  info.DeleteFile = static_cast<BOOLEAN>(removed);
  return SetFileInformationByHandle(handle(), FileDispositionInfo, &info, sizeof info) != 0;
}

bool SystemWriting::write(std::string_view text) {
  const int error = os::write_all(descriptor_, text);
  if (error == EPIPE && new_.empty()) return false;
  if (error != 0) fail(std::generic_category().message(error));
  return true;
}

std::optional<int> SystemWriting::new_file() const {
  return new_.empty() ? std::nullopt : std::optional(descriptor_);
}

void SystemWriting::finish() {
  if (!new_.empty() && (FlushFileBuffers(handle()) == 0 || !set_removed_at_end(FALSE)))
    fail_by_system(GetLastError());
  const int closed = _close(std::exchange(descriptor_, -1));
  if (closed != 0) fail(std::generic_category().message(errno));
  if (new_.empty()) return;
  if (MoveFileExW(new_.c_str(), target_.c_str(),
                  MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
    return;
  const DWORD error = GetLastError();
  DeleteFileW(new_.c_str());
  fail_by_system(error);
}

void SystemWriting::fail(const std::string &reason) const {
  throw cannot_be_written(shown_, reason);
}

// In the words of the C library: the system's own come in any language and encoding.
void SystemWriting::fail_by_system(DWORD error) const {
  const std::error_code code(static_cast<int>(error), std::system_category());
  fail(code.default_error_condition().message());
}

std::unique_ptr<FileWriting> FileWriting::begin(const std::filesystem::path &path) {
  return std::make_unique<SystemWriting>(path);
}

}  // namespace cli

#include "os/windows/child.h"

#include <windows.h>

#include <io.h>

#include <array>
#include <memory>
#include <system_error>

#include "wide.h"

namespace os {
namespace {

std::system_error failure(DWORD error, const char *what) {
  return {std::error_code(static_cast<int>(error), std::system_category()), what};
}

// So that CommandLineToArgvW gives the word back.
std::wstring quoted(const std::wstring &word) {
  std::wstring text = L"\"";
  std::size_t slashes = 0;
  for (const wchar_t letter : word) {
    if (letter == L'"') text.append(slashes + 1, L'\\');
    slashes = letter == L'\\' ? slashes + 1 : 0;
    text += letter;
  }
  text.append(slashes, L'\\');
  return text + L'"';
}

// The current folder is none of PATH's: anything may lie there.
std::filesystem::path found(const std::filesystem::path &program) {
  if (program.has_parent_path()) return program;
  constexpr DWORD longest = 32768;
  std::wstring folders(longest, L'\0');
  folders.resize(GetEnvironmentVariableW(L"PATH", folders.data(), longest));
  std::wstring file(longest, L'\0');
  file.resize(
      SearchPathW(folders.c_str(), program.c_str(), L".exe", longest, file.data(), nullptr));
  if (folders.empty() || file.empty() || file.size() >= longest)
    throw failure(ERROR_FILE_NOT_FOUND, "a program is missing");
  return file;
}

// A handle of ours that a child may have, besides the one that it may not.
class Heritable {
 public:
  explicit Heritable(int descriptor) {
    auto *const own = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    if (DuplicateHandle(GetCurrentProcess(), own, GetCurrentProcess(), &handle_, 0, TRUE,
                        DUPLICATE_SAME_ACCESS) == 0)
      throw failure(GetLastError(), "a stream cannot be given away");
  }
  ~Heritable() { CloseHandle(handle_); }
  Heritable(const Heritable &) = delete;
  Heritable &operator=(const Heritable &) = delete;

  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_ = nullptr;
};

// The handles that one child gets: others may be started at the same time.
class Heritage {
 public:
  explicit Heritage(std::array<HANDLE, 3> &handles) {
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    memory_ = std::make_unique<char[]>(size);
    if (InitializeProcThreadAttributeList(get(), 1, 0, &size) == 0 ||
        UpdateProcThreadAttribute(get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                  sizeof handles, nullptr, nullptr) == 0)
      throw failure(GetLastError(), "a process cannot be prepared");
  }
  ~Heritage() { DeleteProcThreadAttributeList(get()); }
  Heritage(const Heritage &) = delete;
  Heritage &operator=(const Heritage &) = delete;

  LPPROC_THREAD_ATTRIBUTE_LIST get() const {
    return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.get());
  }

 private:
  std::unique_ptr<char[]> memory_;
};

}  // namespace

Child::Child(const std::filesystem::path &program, const std::vector<std::string> &words,
             const Streams &streams, std::optional<std::size_t> memory) {
  const std::filesystem::path file = found(program);
  std::wstring line = quoted(file.native());
  for (const std::string &word : words) line += L' ' + quoted(wide(word));
  const Heritable in(streams.in), out(streams.out), err(streams.err);
  std::array<HANDLE, 3> handles{in.get(), out.get(), err.get()};
  const Heritage heritage(handles);
  STARTUPINFOEXW start{};
  start.StartupInfo.cb = sizeof start;
  start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  start.StartupInfo.hStdInput = in.get();
  start.StartupInfo.hStdOutput = out.get();
  start.StartupInfo.hStdError = err.get();
  start.lpAttributeList = heritage.get();
  PROCESS_INFORMATION made{};
  if (CreateProcessW(file.c_str(), line.data(), nullptr, nullptr, TRUE,
                     CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr,
                     &start.StartupInfo, &made) == 0)
    throw failure(GetLastError(), "a process cannot be started");
  process_ = made.hProcess;
  // Its last handle is ours: when this process ends, so does all that is in the job.
  job_ = CreateJobObjectW(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  if (memory) {
    limits.BasicLimitInformation.LimitFlags |= JOB_OBJECT_LIMIT_PROCESS_MEMORY;
    limits.ProcessMemoryLimit = *memory;
  }
  SetInformationJobObject(job_, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  AssignProcessToJobObject(job_, process_);
  ResumeThread(made.hThread);
  CloseHandle(made.hThread);
}

Child::~Child() {
  TerminateProcess(process_, 1);
  CloseHandle(process_);
  if (job_ != nullptr) CloseHandle(job_);
}

std::optional<unsigned long> Child::wait(unsigned long milliseconds) const {
  if (WaitForSingleObject(process_, milliseconds) != WAIT_OBJECT_0) return std::nullopt;
  DWORD status = 0;
  GetExitCodeProcess(process_, &status);
  return status;
}

}  // namespace os

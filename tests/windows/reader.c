// Runs a program through pipes of Windows, which those of another system that wine gives a program
// are not: reader.exe PROGRAM WORD... gives it one line of this program's standard input, prints
// what comes back up to the first line end, goes away as a reader, and gives it the rest. Standard
// input of the program stays open. Ends with the program's status, or 99 where it does not end within
// 30 seconds.
#include <stdio.h>
#include <string.h>
#include <windows.h>

// What follows the name of this program, whose letters no code page has to have.
static wchar_t *command(void) {
  wchar_t *words = GetCommandLineW();
  const wchar_t end = *words == L'"' ? L'"' : L' ';
  wchar_t *rest = wcschr(words + 1, end) + 1;
  return rest + wcsspn(rest, L" ");
}

int main(void) {
  HANDLE in_read, in_write, out_read, out_write;
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, NULL, TRUE};
  CreatePipe(&in_read, &in_write, &inherited, 0);
  CreatePipe(&out_read, &out_write, &inherited, 0);
  SetHandleInformation(in_write, HANDLE_FLAG_INHERIT, 0);
  SetHandleInformation(out_read, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW start = {.cb = sizeof start,
                        .dwFlags = STARTF_USESTDHANDLES,
                        .hStdInput = in_read,
                        .hStdOutput = out_write,
                        .hStdError = GetStdHandle(STD_ERROR_HANDLE)};
  PROCESS_INFORMATION made;
  if (!CreateProcessW(NULL, command(), NULL, NULL, TRUE, 0, NULL, NULL, &start, &made)) return 98;
  CloseHandle(in_read);
  CloseHandle(out_write);

  char line[4096];
  DWORD done;
  int gone = 0;
  while (fgets(line, sizeof line, stdin) != NULL) {
    WriteFile(in_write, line, (DWORD)strlen(line), &done, NULL);
    if (gone) continue;
    for (char c = 0; c != '\n' && ReadFile(out_read, &c, 1, &done, NULL) && done == 1;) putchar(c);
    CloseHandle(out_read);
    gone = 1;
  }
  if (WaitForSingleObject(made.hProcess, 30000) != WAIT_OBJECT_0) {
    TerminateProcess(made.hProcess, 99);
    return 99;
  }
  DWORD status = 0;
  GetExitCodeProcess(made.hProcess, &status);
  return (int)status;
}

// Stands for gnuplot on Windows: takes a script from standard input, lays it into the folder
// drawing/, and prints the picture that another program puts there, as a program of Windows does,
// with line ends of its own in a text. Where there is no such folder it fails, as gnuplot does on a
// script that it does not like.
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

static void copy(FILE *from, FILE *to) {
  char block[4096];
  for (size_t count; (count = fread(block, 1, sizeof block, from)) > 0;)
    fwrite(block, 1, count, to);
}

int main(void) {
  FILE *script = fopen("drawing/script", "wb");
  if (script == NULL) {
    puts("<?xml version=\"1.0\"?>");
    fputs("\"-\" line 1: invalid command\n", stderr);
    return 1;
  }
  _setmode(_fileno(stdin), _O_BINARY);
  copy(stdin, script);
  fclose(script);
  rename("drawing/script", "drawing/script.complete");
  FILE *picture;
  while ((picture = fopen("drawing/picture", "rb")) == NULL) Sleep(20);
  char start[5] = {0};
  fread(start, 1, sizeof start, picture);
  if (memcmp(start, "<?xml", sizeof start) != 0) _setmode(_fileno(stdout), _O_BINARY);
  fwrite(start, 1, sizeof start, stdout);
  copy(picture, stdout);
  fclose(picture);
  return 0;
}

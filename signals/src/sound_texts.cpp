#include "sound_texts.h"

#include <array>

namespace signals {
namespace {

// Not the program that made the file: it has not made the new one.
constexpr std::array kinds{SF_STR_TITLE,   SF_STR_COPYRIGHT,   SF_STR_ARTIST,
                           SF_STR_COMMENT, SF_STR_DATE,        SF_STR_ALBUM,
                           SF_STR_LICENSE, SF_STR_TRACKNUMBER, SF_STR_GENRE};

}  // namespace

std::vector<SoundText> texts_of(SNDFILE *file) {
  std::vector<SoundText> texts;
  for (const int kind : kinds)
    if (const char *text = sf_get_string(file, kind)) texts.push_back({kind, text});
  return texts;
}

void set_texts(SNDFILE *file, const std::vector<SoundText> &texts) {
  for (const SoundText &text : texts) sf_set_string(file, text.kind, text.text.c_str());
}

}  // namespace signals

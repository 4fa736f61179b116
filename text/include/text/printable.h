// Texts of others, such as names of files, made fit to be shown: in a terminal, in a comment of
// a program, in a picture.
#ifndef TEXT_PRINTABLE_H
#define TEXT_PRINTABLE_H

#include <optional>
#include <string>
#include <string_view>

namespace text {

/** A part of a text that may not be shown as it is. */
struct Hidden {
  std::string_view bytes;
  std::optional<char32_t> character; /**< none where the bytes are not UTF-8 */
};

/**
 * Replaces what may not be shown: bytes that are not UTF-8; control characters (C0, DEL, C1),
 * which move a cursor; U+2028 and U+2029, which end a line and so a comment in some languages;
 * the marks of writing direction, which make a text look like another one; U+FFFE and U+FFFF,
 * which XML does not allow; and the ">" of "]]>", which ends a section of XML.
 * @param written  what is put in the place of each
 */
std::string with_hidden(std::string_view text, std::string (*written)(const Hidden &hidden));

/** @return the text in UTF-8 with all this as \xNN (bytes and ASCII) or \uNNNN (characters). */
std::string printable(std::string_view text);

/**
 * Leaves out the middle of a long text, which says least. UTF-8 characters stay whole.
 * @param head, tail  how many bytes are kept at most at the beginning and at the end
 * @param mark        what replaces the middle
 */
std::string shortened(const std::string &text, std::size_t head, std::size_t tail,
                      const std::string &mark);

}  // namespace text

#endif

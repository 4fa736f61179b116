// Writing JSON: numbers with all their digits, texts without characters that may not be shown.
#ifndef TEXT_JSON_H
#define TEXT_JSON_H

#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "text/numbers.h"

namespace text {

/** A document as a tree, its keys in the order in which they were given. */
using Json = nlohmann::ordered_json;

enum class JsonLayout {
  line, /**< all of it on one line */
  page  /**< each member of an object on a line of its own, lists on one line each */
};

/**
 * Writes a document from its beginning to its end, without a tree. Calls come in the order of the
 * document; a value in an object follows its key.
 *
 * Numbers have 17 significant digits; those that are not finite become null. Texts are written so
 * that `printable` would change nothing in them: what it would change becomes its code. Bytes that
 * are not UTF-8 become U+FFFD.
 */
class JsonWriter {
 public:
  explicit JsonWriter(JsonLayout layout) : layout_(layout) {}

  void begin_object();
  void end_object();
  void begin_list();
  void end_list();
  void key(std::string_view name);

  void number(double value);
  void integer(std::int64_t value);
  void text(std::string_view value);
  void texts(const std::vector<std::string> &values); /**< as a list */
  void value(const Json &tree);

  /** @return what has been written, which leaves the writer empty. */
  std::string take();

 private:
  struct Level {
    bool object;
    bool empty;
  };

  void begin(char bracket, Level level);
  void end(char bracket);
  void separate();
  void new_line();
  void append_finite(double value);
  void append(std::string_view characters);
  void append_string(std::string_view value);
  void grow(std::size_t count);

  // Where `count` characters can be written. Most texts are so short that to append them to a
  // string would take longer than to make them.
  char *room(std::size_t count) {
    if (out_.size() - end_ < count) grow(count);
    return &out_[end_];
  }
  void append(char character) {
    *room(1) = character;
    ++end_;
  }

  // A number as it was written last, at a place that its bits choose: of conjugates, and of most
  // coefficients, one in two comes again.
  struct Written {
    double magnitude = -1.0;
    std::uint8_t length = 0;
    std::array<char, most_number_characters> characters{};
  };

  JsonLayout layout_;
  bool after_key_ = false;
  std::vector<Level> levels_;
  std::size_t objects_ = 0;  // of the levels: lists do not indent
  std::array<Written, 32> written_;
  std::string out_;      // with room behind what has been written
  std::size_t end_ = 0;  // of what has been written
};

/** @return a document as a page, with a newline at its end. */
std::string json_page(const Json &document);

/** @return a text as a JSON string, written as by JsonWriter. */
std::string json_string(std::string_view value);

}  // namespace text

#endif

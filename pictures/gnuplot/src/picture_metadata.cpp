#include "gnuplot/picture_metadata.h"

#include <cstdint>

#include <fmt/format.h>

#include "text/printable.h"

namespace gnuplot {
namespace {

std::string xml_text(const std::string &text) {
  std::string out;
  for (const char c : text) switch (c) {
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '&': out += "&amp;"; break;
      default: out += c;
    }
  return out;
}

std::string big_endian(std::uint32_t value) {
  std::string out;
  for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>((value >> shift) & 0xffU);
  return out;
}

// The cyclic redundancy code of PNG chunks: ISO 3309, polynomial 0xedb88320 with reversed bits.
std::uint32_t crc(const std::string &bytes) {
  std::uint32_t code = 0xffffffffU;
  for (const char c : bytes) {
    code ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) code = (code >> 1U) ^ ((code & 1U) != 0 ? 0xedb88320U : 0U);
  }
  return ~code;
}

// An international text chunk: keyword, not compressed, no language, UTF-8.
std::string text_chunk(const std::string &keyword, const std::string &text) {
  std::string data = "iTXt" + keyword;
  data.append(5, '\0');
  data += text;
  return big_endian(static_cast<std::uint32_t>(data.size() - 4)) + data + big_endian(crc(data));
}

// The first element of a name with another text; an SVG without one stays as it is.
std::string with_element(std::string svg, const std::string &name, const std::string &text) {
  const std::string opening = "<" + name + ">";
  const std::size_t from = svg.find(opening);
  const std::size_t to = svg.find("</" + name + ">", from);
  if (from == std::string::npos || to == std::string::npos) return svg;
  const std::size_t inside = from + opening.size();
  return svg.replace(inside, to - inside, xml_text(text));
}

}  // namespace

std::string described(const std::string &picture, const Description &description) {
  const std::string title = text::printable(description.title);
  const std::string command = text::printable(description.command);
  if (!picture.starts_with("\x89PNG"))
    return with_element(with_element(picture, "title", title), "desc", command);
  constexpr std::size_t header = 8 + 25;  // the signature and the chunk that comes first
  std::string png = picture;
  return png.insert(header, text_chunk("Title", title) + text_chunk("Description", command));
}

std::string resized(const std::string &svg, const Size &size) {
  const std::size_t from = svg.find(" width=\"");
  const std::size_t to = svg.find(" viewBox=\"");
  if (from == std::string::npos || to == std::string::npos || from > to) return svg;
  return svg.substr(0, from) +
         fmt::format(" width=\"{}\" height=\"{}\"\n", size.width, size.height) + svg.substr(to);
}

}  // namespace gnuplot

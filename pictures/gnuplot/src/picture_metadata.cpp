#include "gnuplot/picture_metadata.h"

#include <cstdint>
#include <cstdlib>
#include <optional>

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

/** Places in a file. */
struct Span {
  std::size_t from, to;
};

// Of well-formed UTF-8.
std::u16string utf16(const std::string &utf8) {
  std::u16string out;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i++]);
    const int rest = lead < 0x80 ? 0 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
    std::uint32_t code = rest == 0 ? lead : lead & (0x3fU >> static_cast<unsigned>(rest));
    for (int more = 0; more < rest && i < utf8.size(); ++more)
      code = code << 6U | (static_cast<unsigned char>(utf8[i++]) & 0x3fU);
    if (code < 0x10000) {
      out += static_cast<char16_t>(code);
    } else {
      out += static_cast<char16_t>(0xd7c0U + (code >> 10U));
      out += static_cast<char16_t>(0xdc00U + (code & 0x3ffU));
    }
  }
  return out;
}

// Without the titles of its parts, which browsers show at the pointer: they name gnuplot's data.
std::string with_one_title(std::string svg) {
  const std::string opening = "<title>", closing = "</title>";
  for (std::size_t at = svg.find(closing); (at = svg.find(opening, at)) != std::string::npos;) {
    const std::size_t end = svg.find(closing, at);
    if (end == std::string::npos) break;
    svg.erase(at, end + closing.size() - at);
  }
  return svg;
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

// A text string of PDF: UTF-16 with a byte order mark, in hexadecimal digits (ISO 32000-1, 7.9.2).
std::string pdf_text(const std::string &utf8) {
  std::string out = "<feff";
  for (const char16_t unit : utf16(utf8)) out += fmt::format("{:04x}", static_cast<unsigned>(unit));
  return out + '>';
}

std::size_t number_after(const std::string &text, const std::string &key) {
  const std::size_t at = text.rfind(key);
  return at == std::string::npos ? 0 : std::strtoul(text.c_str() + at + key.size(), nullptr, 10);
}

// The bytes of an object, from its number to its end; none if there is no such object.
std::optional<Span> pdf_object(const std::string &pdf, std::size_t number) {
  const std::size_t before = pdf.rfind(fmt::format("\n{} 0 obj\n", number));
  const std::size_t end = pdf.find("endobj", before);
  if (before == std::string::npos || end == std::string::npos) return std::nullopt;
  return Span{before + 1, end};
}

// Blanks take the place of the time, so that everything else stays where the file says it is.
void erase_time(std::string &pdf, const Span &information) {
  const std::size_t from = pdf.find("/CreationDate", information.from);
  const std::size_t end = pdf.find(')', from);
  if (end < information.to) pdf.replace(from, end + 1 - from, end + 1 - from, ' ');
}

// An incremental update (ISO 32000-1, 7.5.6) that replaces the object with what a PDF says of
// itself; a PDF without one stays as it is.
std::string described_pdf(std::string pdf, const std::string &title, const std::string &command) {
  const std::size_t number = number_after(pdf, "/Info "), root = number_after(pdf, "/Root ");
  const std::size_t size = number_after(pdf, "/Size "), table = number_after(pdf, "startxref");
  const auto information = pdf_object(pdf, number);
  if (number == 0 || root == 0 || size == 0 || table == 0 || !information) return pdf;
  erase_time(pdf, *information);
  const std::size_t object = pdf.size();
  pdf += fmt::format(
      "{} 0 obj\n<< /Producer (gnuplot, cairo)\n   /Title {}\n   /Subject {}\n>>\nendobj\n", number,
      pdf_text(title), pdf_text(command));
  const std::size_t new_table = pdf.size();
  pdf += fmt::format("xref\n{} 1\n{:010} 00000 n \n", number, object);
  pdf += fmt::format(
      "trailer\n<< /Size {}\n   /Root {} 0 R\n   /Info {} 0 R\n   /Prev {}\n>>\n"
      "startxref\n{}\n%%EOF\n",
      size, root, number, table, new_table);
  return pdf;
}

}  // namespace

std::string described(const std::string &picture, const Description &description) {
  const std::string title = text::printable(description.title);
  const std::string command = text::printable(description.command);
  if (picture.starts_with("%PDF-")) return described_pdf(picture, title, command);
  if (!picture.starts_with("\x89PNG"))
    return with_element(with_element(with_one_title(picture), "title", title), "desc", command);
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

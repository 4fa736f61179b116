#include "plot/provenance.h"

#include <cstdint>

namespace cli::plot {
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
std::string text_chunk(const std::string &text) {
  std::string data = "iTXtDescription";
  data.append(5, '\0');
  data += text;
  return big_endian(static_cast<std::uint32_t>(data.size() - 4)) + data + big_endian(crc(data));
}

}  // namespace

std::string with_command(const std::string &picture, const std::string &command) {
  std::string out = picture;
  if (picture.starts_with("\x89PNG")) {
    constexpr std::size_t header = 8 + 25;  // the signature and the chunk that comes first
    return out.insert(header, text_chunk(command));
  }
  const std::size_t from = out.find("<desc>");
  const std::size_t to = out.find("</desc>");
  if (from == std::string::npos || to == std::string::npos) return out;
  return out.replace(from + 6, to - from - 6, xml_text(command));
}

}  // namespace cli::plot

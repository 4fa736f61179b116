// What a picture's file says of it.

#include <gmock/gmock.h>

#include "gnuplot/picture_metadata.h"

using gnuplot::described;
using testing::HasSubstr;

namespace {

constexpr char svg[] =
    "<svg \n width=\"1000\" height=\"1198\"\n viewBox=\"0 0 1000 1198\">\n"
    "<title>Gnuplot</title>\n<desc>Produced by GNUPLOT</desc>\n</svg>\n";

// A signature and a header of the right lengths, and the end.
std::string png() { return std::string("\x89PNG\r\n\x1a\n") + std::string(25, 'H') + "the rest"; }

// The parts of a PDF that say what it is, as cairo writes them.
std::string pdf() {
  const std::string head =
      "%PDF-1.5\n7 0 obj\n<< /Producer (cairo)\n   /CreationDate "
      "(D:20240229120000Z)\n>>\nendobj\n";
  return head + "xref\n0 8\ntrailer\n<< /Size 8\n   /Root 6 0 R\n   /Info 7 0 R\n>>\nstartxref\n" +
         std::to_string(head.size()) + "\n%%EOF\n";
}

std::size_t number_after_last(const std::string &text, const std::string &key) {
  return std::stoul(text.substr(text.rfind(key) + key.size()));
}

}  // namespace

TEST(PictureMetadata, AnSvgHasItInItsElements) {
  const std::string out = described(svg, {"a < b & c", "veltane plot -o 'a>b'"});
  EXPECT_THAT(out, HasSubstr("<title>a &lt; b &amp; c</title>"));
  EXPECT_THAT(out, HasSubstr("<desc>veltane plot -o 'a&gt;b'</desc>"));
  EXPECT_TRUE(out.ends_with("</svg>\n"));
}

TEST(PictureMetadata, PartsOfAnSvgHaveNoTitles) {
  const std::string out = described(
      "<svg><title>Gnuplot</title><g><title>$d0</title><path/></g>"
      "<g><title>$d1</title></g></svg>\n",
      {"a", "b"});
  EXPECT_EQ(out, "<svg><title>a</title><g><path/></g><g></g></svg>\n");
}

TEST(PictureMetadata, AnSvgWithoutTheElementsStaysAsItIs) {
  EXPECT_EQ(described("<svg></svg>\n", {"title", "command"}), "<svg></svg>\n");
}

// The length, the kind, the text, and the checksum that zlib.crc32 gives for kind and text.
TEST(PictureMetadata, APngHasItInChunksBehindItsHeader) {
  const std::string out = described(png(), {"a title", "a command"});
  const std::string title("\0\0\0\x11iTXtTitle\0\0\0\0\0a title", 25);
  EXPECT_EQ(out.substr(33, title.size()), title);
  EXPECT_EQ(out.substr(33 + title.size(), 4), "\xb5\x75\x13\x41");
  EXPECT_THAT(out, HasSubstr(std::string("iTXtDescription\0\0\0\0\0a command", 29)));
  EXPECT_TRUE(out.ends_with("the rest"));
  EXPECT_EQ(out.substr(0, 33), png().substr(0, 33));
}

TEST(PictureMetadata, ControlCharactersAreWrittenOut) {
  EXPECT_THAT(described(svg, {"a\x1b[2Jb", ""}), HasSubstr("<title>a\\x1b[2Jb</title>"));
}

TEST(PictureMetadata, AnSvgIsShownAtTheSizeAskedFor) {
  const std::string out = gnuplot::resized(svg, {500, 599});
  EXPECT_THAT(out, HasSubstr("<svg \n width=\"500\" height=\"599\"\n viewBox=\"0 0 1000 1198\">"));
  EXPECT_EQ(gnuplot::resized("<svg></svg>", {500, 599}), "<svg></svg>");
}

// The last table and the objects that it lists are found where the end of the file says.
TEST(PictureMetadata, APdfHasItInAnUpdate) {
  const std::string out = described(pdf(), {"a \u2212 \U0001d11e", "b"});
  const std::size_t table = number_after_last(out, "startxref\n");
  ASSERT_EQ(out.substr(table, 11), "xref\n7 1\n00");
  const std::size_t object = std::stoul(out.substr(table + 9, 10));
  EXPECT_EQ(out.substr(object, 7), "7 0 obj");
  const std::string replaced = out.substr(object, table - object);
  EXPECT_THAT(replaced, HasSubstr("/Title <feff0061002022120020d834dd1e>"));
  EXPECT_THAT(replaced, HasSubstr("/Subject <feff0062>"));
  EXPECT_EQ(number_after_last(out, "/Prev "), number_after_last(pdf(), "startxref\n"));
  EXPECT_EQ(number_after_last(out, "/Root "), 6U);
  EXPECT_TRUE(out.ends_with("\n%%EOF\n"));
}

TEST(PictureMetadata, APdfDoesNotSayWhenItWasMade) {
  const std::string out = described(pdf(), {"a", "b"});
  EXPECT_THAT(out, testing::Not(HasSubstr("CreationDate")));
  EXPECT_THAT(out, testing::Not(HasSubstr("2024")));
  EXPECT_EQ(out.find("xref"), pdf().find("xref")) << "nothing moves";
}

TEST(PictureMetadata, APdfWithoutInformationStaysAsItIs) {
  EXPECT_EQ(described("%PDF-1.5\n%%EOF\n", {"a", "b"}), "%PDF-1.5\n%%EOF\n");
}

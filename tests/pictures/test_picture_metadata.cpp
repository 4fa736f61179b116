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

}  // namespace

TEST(PictureMetadata, AnSvgHasItInItsElements) {
  const std::string out = described(svg, {"a < b & c", "veltane plot -o 'a>b'"});
  EXPECT_THAT(out, HasSubstr("<title>a &lt; b &amp; c</title>"));
  EXPECT_THAT(out, HasSubstr("<desc>veltane plot -o 'a&gt;b'</desc>"));
  EXPECT_TRUE(out.ends_with("</svg>\n"));
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

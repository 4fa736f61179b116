// gnuplot's commands and data for one page, collected step by step.
#ifndef GNUPLOT_SCRIPT_H
#define GNUPLOT_SCRIPT_H

#include <string>

#include "gnuplot/picture.h"
#include "page.h"
#include "pictures/curves.h"

namespace gnuplot {

class Script {
 public:
  /** @param scale  how many pixels of the picture are one of the page; of a PDF, 96 to the inch */
  Script(const PageSize &page, Format format, double scale);

  /** The line over all panels. */
  void title(const std::string &text, const Place &left_middle);

  /** Samples of a line or a symbol, and what it stands for; drawn with the panel that comes next.
   *  Places are the left end of a sample and the middle of its height. */
  void key_line(const Place &place, const std::string &style, const std::string &text);
  void key_text(const Place &place, const std::string &text);
  void key_symbol(const Place &place, const std::string &style, const std::string &text);

  /** A text around a place, drawn with the panel that comes next. */
  void centred(const Place &place, const std::string &text);
  void upright(const Place &place, const std::string &text); /**< read from the right */

  /** Appends a command. */
  void line(const std::string &command);

  /** @return the name of a data block with these points. */
  std::string block(const pictures::Curve &curve);

  /** @return a place as fractions of the page, from its lower left corner. */
  double across(double left) const { return left / page_.width; }
  double upwards(double top) const { return 1.0 - top / page_.height; }

  std::string text() const;

 private:
  std::string at(const Place &place) const;

  PageSize page_;
  double title_size_;
  std::string head_, blocks_, commands_;
  int block_count_ = 0;
};

}  // namespace gnuplot

#endif

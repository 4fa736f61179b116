#include "design/batch.h"

#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#include <fmt/format.h>

#include "base/messages.h"
#include "base/output_file.h"
#include "base/progress.h"
#include "design/all_lines.h"
#include "designer/refusal.h"
#include "designer/saved_design.h"
#include "layouts/document.h"
#include "os/path.h"
#include "text/quantities.h"

namespace cli {
namespace {

// The settings of a line, and the common ones that it does not have.
designer::Settings combined(const designer::Settings &common, const Line &line) {
  if (line.too_long)
    throw designer::Refusal(fmt::format("the line is longer than {} bytes", LineReader::longest));
  designer::Settings settings = designer::parse_settings(line.text, "the line");
  for (const auto &[name, values] : common)
    if (!settings.has(name)) settings.set(name, values);
  return settings;
}

designer::Design designed(designer::Designer &designer, const designer::Settings &common,
                          const Line &line) {
  const designer::Settings requested = combined(common, line);
  designer::Design design = designer.design(requested);
  // A name of its own, and the same one whichever worker designed it.
  if (!requested.has("name"))
    design.settings.set("name", designer::Values{fmt::format("u{}", line.number)});
  return design;
}

class BatchOutput {
 public:
  explicit BatchOutput(const std::optional<std::string> &path) {
    if (path && *path != "-") file_ = std::make_unique<OutputFile>(os::path_of(*path));
  }

  void add(const Result &result) {
    text_ += result.text;
    text_ += '\n';
    ++lines_;
    if (result.outcome == Outcome::failed) ++errors_;
    if (text_.size() >= enough) flush();
  }

  void flush() {
    if (is_read_) is_read_ = file_ != nullptr ? file_->write(text_) : print(text_);
    text_.clear();
  }

  // @return false when nobody reads it any more
  bool is_read() const { return is_read_; }

  void finish() {
    if (file_ != nullptr) file_->finish();
  }

  std::size_t lines() const { return lines_; }
  std::size_t errors() const { return errors_; }

 private:
  // Few pages: each fork makes those that are used again be copied.
  static constexpr std::size_t enough = std::size_t{1} << 16U;

  std::unique_ptr<OutputFile> file_;
  std::string text_;
  bool is_read_ = true;
  std::size_t lines_ = 0;
  std::size_t errors_ = 0;
};

}  // namespace

Result designed_line(designer::Designer &designer, const designer::Settings &common,
                     const Line &line) {
  try {
    return {Outcome::designed, layouts::design_line(line.number, designed(designer, common, line))};
  } catch (const std::bad_alloc &) {
    throw;  // no fault of the line
  } catch (const std::exception &error) {
    return {Outcome::failed, layouts::error_line(line.number, as_message(error.what()))};
  }
}

int run_batch(const std::filesystem::path &module, const designer::Settings &common,
              const BatchInput &input, const std::optional<std::string> &output) {
  designer::Designer designer(module);
  const Job job{.work = [&](const Line &line) { return designed_line(designer, common, line); },
                .module = module,
                .common = common};
  const Loss loss = [](const Line &line, const std::string &how) {
    return Result{Outcome::failed,
                  layouts::error_line(line.number, "its design ended the process: " + how)};
  };
  LineReader reader(input.file, input.first_line);
  BatchOutput out(output);
  {
    Progress progress("lines");
    work_on_all_lines(reader, job, loss,
                      {.take = [&](const Result &result) { out.add(result); },
                       .rest =
                           [&] {
                             out.flush();
                             if (out.is_read())
                               progress.show(static_cast<double>(out.lines()), reader.fraction());
                             return out.is_read();
                           }});
    if (!out.is_read()) return 0;
    out.finish();
  }
  if (out.errors() == 0) return 0;
  warn(fmt::format("{} of {} failed; see {}", out.errors(), text::counted(out.lines(), "line"),
                   out.errors() == 1 ? "its result" : "their results"));
  return 1;
}

}  // namespace cli

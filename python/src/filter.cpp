#include "filter.h"

#include <utility>

#include "analysis/arrangement.h"
#include "process_designer.h"

namespace python {

Filter::Filter(designer::Settings requested)
    : requested_(std::move(requested)), design_(process_designer().design(requested_)) {}

const designer::PublishedFilter &Filter::published() const {
  if (!published_) published_ = designer::published_filter(design_);
  return *published_;
}

const analysis::Transfer &Filter::transfer() const {
  if (!transfer_) {
    designer::Settings settings = requested_;
    settings.set("tf_output", {std::string("on")});
    transfer_ = designer::published_filter(process_designer().design(settings)).transfer;
  }
  return *transfer_;
}

const analysis::Sections &Filter::arranged() const {
  if (!arranged_)
    arranged_ = analysis::arranged(published().sections, analysis::Structure::direct_2_transposed);
  return *arranged_;
}

}  // namespace python

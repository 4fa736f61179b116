// The command that writes a layout, as words. That it writes the same bytes is tested with the
// command, in tests/cli/export.
#include "layouts/export_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using layouts::export_command;
using layouts::Request;
using testing::ElementsAre;

namespace {

const layouts::Target &c() { return layouts::target_named("c"); }

}  // namespace

TEST(ExportCommand, HasTheSettingsBehindTheTarget) {
  EXPECT_THAT(export_command(c(), {}, {}), ElementsAre("veltane", "export", "--for", "c"));
  EXPECT_THAT(export_command(layouts::target_named("cmsis-q15"), {"--order", "8"}, {}),
              ElementsAre("veltane", "export", "--for", "cmsis-q15", "--order", "8"));
}

TEST(ExportCommand, SaysWhatElseIsAskedFor) {
  Request request;
  request.level = layouts::Level::normalised;
  request.arrangement = layouts::Arrangement::published_spread;
  request.noisy = layouts::Noisy::written;
  request.structure = analysis::Structure::direct_1;
  EXPECT_THAT(export_command(c(), {}, request),
              ElementsAre("veltane", "export", "--for", "c", "--normalise", "--as-published",
                          "--spread-gain", "--structure", "direct-1", "--anyway"));
  request.arrangement = layouts::Arrangement::published;
  request.level = layouts::Level::as_designed;
  EXPECT_THAT(export_command(c(), {}, request),
              ElementsAre("veltane", "export", "--for", "c", "--as-published", "--structure",
                          "direct-1", "--anyway"));
}

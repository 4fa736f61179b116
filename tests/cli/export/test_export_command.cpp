// A layout that is made without the command, against what the command writes.
#include "layouts/export_command.h"

#include "../../designer_with_module.h"
#include "../run_command.h"
#include "designer/command_words.h"
#include "designer/refusal.h"
#include "layouts/exported_filter.h"
#include "layouts/layout.h"
#include "text/shell.h"

using designer::Settings;
using layouts::Request;

namespace {

std::string said(const std::vector<std::string> &remarks) {
  std::string text;
  for (const std::string &remark : remarks) text += "veltane: " + remark + '\n';
  return text;
}

// What the command should do, made without it.
Outcome expected(const Settings &settings, const layouts::Target &target, Request request) {
  designer::Designer &designer = tests::designer_with_module();
  const designer::Design design = designer.design(layouts::with_sections(settings));
  try {
    const layouts::File file = layouts::write(design, target, request);
    return {0, file.text, said(design.remarks) + said(file.remarks)};
  } catch (const designer::Refusal &refusal) {
    return {2, "", said(design.remarks) + said({refusal.what()})};
  }
}

// Compares a file and its remarks, or what it is refused with. @return the status
int expect_the_same(const Settings &settings, const layouts::Target &target, Request request) {
  designer::Designer &designer = tests::designer_with_module();
  const auto words = designer::command_words(
      designer.attributes(), designer.accepted(settings).settings, designer.fresh());
  request.identifier = layouts::identifier_for("");
  request.command = layouts::export_command(target, words, request);
  const std::string line = text::shell_line(request.command);
  const Outcome found = run(VELTANE_COMMAND + line.substr(line.find(' ')));
  const Outcome made = expected(settings, target, request);
  EXPECT_EQ(found.status, made.status) << line << '\n' << found.err;
  EXPECT_EQ(found.out, made.out) << line;
  EXPECT_EQ(found.err, made.err) << line;
  return found.status;
}

Settings band(const char *family, long order, double low, double high) {
  return {{"topology", {std::string(family)}},
          {"response", {std::string("bandpass")}},
          {"order", {t_long{order}}},
          {"frequency", {low, high}}};
}

// Targets with few bits refuse the last one; the one before switches off what a layout is made of.
const std::vector<Settings> &cases() {
  static const std::vector<Settings> all{{},
                                         band("butterworth", 3, 300.0, 3400.0),
                                         {{"topology", {std::string("chebyshev-1")}},
                                          {"order", {t_long{8}}},
                                          {"frequency", {20.0 + 1.0 / 3.0}},
                                          {"passband_ripple", {0.1}},
                                          {"samplerate", {t_long{96000}}}},
                                         {{"order", {t_long{4}}},
                                          {"units", {std::string("normalized")}},
                                          {"frequency", {0.3}},
                                          {"stopband_attenuation", {60.5}},
                                          {"sos_output", {std::string("off")}}},
                                         band("butterworth", 8, 1000.0, 1001.0)};
  return all;
}

}  // namespace

TEST(SameAsTheCommand, ForEveryTarget) {
  int refused = 0;
  for (const layouts::Target &target : layouts::targets()) {
    int written = 0;
    for (const Settings &settings : cases())
      ++(expect_the_same(settings, target, {}) == 0 ? written : refused);
    EXPECT_GT(written, 0) << target.name;
  }
  EXPECT_GT(refused, 0) << "sentences are not compared";
}

TEST(SameAsTheCommand, WhateverElseIsAskedFor) {
  Request request;
  request.level = layouts::Level::normalised;
  request.noisy = layouts::Noisy::written;
  EXPECT_EQ(expect_the_same(cases()[2], layouts::target_named("cmsis"), request), 0);
  request.arrangement = layouts::Arrangement::published;
  EXPECT_EQ(expect_the_same(cases()[1], layouts::target_named("scipy"), request), 0);
  request.arrangement = layouts::Arrangement::published_spread;
  EXPECT_EQ(expect_the_same(cases()[1], layouts::target_named("csv"), request), 0);
  EXPECT_EQ(expect_the_same(cases()[1], layouts::target_named("webaudio"), request), 2);
  request.arrangement = layouts::Arrangement::quiet;
  for (const std::string_view word : layouts::structure_words) {
    request.structure = layouts::structure_named(word);
    EXPECT_EQ(expect_the_same(cases()[1], layouts::target_named("c-float"), request), 0);
    EXPECT_EQ(expect_the_same(cases()[1], layouts::target_named("faust"), request), 2);
  }
}

// The class in a host that promises no more than the headers do, and what only
// shows where the record and the functions of the module can be reached.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <functional>

#include "filtermath.h"
#include "host.h"
#include "veltane.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class BareHostTest : public testing::Test {
 protected:
  BareHostTest() {
    bare::start_anew();
    ext_main();
  }
  ~BareHostTest() override {
    for (void *box : boxes_) std::free(box);
    bare::start_anew();
  }

  t_veltane *make() {
    auto *x = static_cast<t_veltane *>(veltane_new(gensym("veltane"), 0, nullptr));
    boxes_.push_back(x);
    return x;
  }

  std::vector<std::string> keys() const {
    std::vector<std::string> texts;
    for (const auto &[key, entry] : host.dictionary) texts.push_back(key);
    return texts;
  }

  std::vector<double> numbers(const std::string &key) const {
    for (const auto &[name, entry] : host.dictionary)
      if (name == key) return std::get<std::vector<double>>(entry);
    ADD_FAILURE() << "there is no key " << key;
    return {};
  }

  bare::Host &host = bare::host();

 private:
  std::vector<void *> boxes_;
};

constexpr const char *families[] = {"butterworth", "chebyshev-1", "chebyshev-2"};
constexpr const char *responses[] = {"lowpass", "highpass", "bandpass", "bandstop"};

}  // namespace

// --- what the module asks of a host

TEST_F(BareHostTest, NeedsNoResultThatIsNotPromisedAndNoBlockOfNothing) {
  t_veltane *x = make();
  x->tf_output = 1;
  for (const char *family : families)
    for (const char *response : responses)
      for (const t_long zpk : {0, 1}) {
        x->topology = gensym(family);
        x->response = gensym(response);
        x->zpk_output = zpk;
        veltane_bang(x);
        EXPECT_THAT(host.errors, IsEmpty()) << family << ' ' << response;
        EXPECT_THAT(keys(), SizeIs(zpk != 0 ? 10 : 7)) << family << ' ' << response;
        EXPECT_THAT(numbers("cascade").empty(), zpk == 0) << family << ' ' << response;
        EXPECT_THAT(numbers("denominator"), Contains(testing::Ne(0.0)));
      }
  EXPECT_THAT(host.sent, SizeIs(3 * 4 * 2));
  EXPECT_EQ(host.blocks_alive, 0U);
}

TEST_F(BareHostTest, HoldsMatricesOfNothing) {
  _matrix64 *matrix = matrix64_new();
  matrix64_resize(matrix, 0, 3);
  matrix64_resize(matrix, 2, 2);
  for (int i = 0; i < 4; ++i) matrix->data[i] = 1.0;
  matrix64_resize(matrix, 3, 0);
  EXPECT_EQ(matrix->capacity, 0);
  matrix64_resize(matrix, 2, 2);
  EXPECT_THAT(std::vector<double>(matrix->data, matrix->data + 4), testing::Each(0.0));
  matrix64_free(matrix);
  EXPECT_EQ(host.blocks_alive, 0U);
}

TEST_F(BareHostTest, MayMakeABoxWhileItRegistersTheClass) {
  bare::start_anew();
  host.makes_a_box_while_registering = true;
  s_veltane_class = nullptr;
  ext_main();
  EXPECT_NE(host.box_made_while_registering, nullptr);
  std::free(host.box_made_while_registering);
}

TEST_F(BareHostTest, GetsASetterForTheNameAndNoGetter) {
  ASSERT_THAT(host.set_methods, SizeIs(2));
  EXPECT_EQ(host.set_methods[0].attribute, "name");
  EXPECT_EQ(host.set_methods[0].which, "get");
  EXPECT_EQ(host.set_methods[0].method, nullptr);
  EXPECT_EQ(host.set_methods[1].attribute, "name");
  EXPECT_EQ(host.set_methods[1].which, "set");
  EXPECT_EQ(host.set_methods[1].method, reinterpret_cast<t_method>(veltane_setname));
}

TEST_F(BareHostTest, IsToldThatSignalIsUndocumentedByALong) {
  EXPECT_THAT(host.calls, Contains("signal undocumented long 1").Times(1));
}

// --- the record

// Patches and other modules know the record by its layout.
TEST_F(BareHostTest, TheRecordHasItsFieldsInThisOrder) {
#define AT(field) offsetof(t_veltane, field)
  const std::vector<std::size_t> places{AT(ob),
                                        AT(outlet),
                                        AT(name),
                                        AT(dict),
                                        AT(viewer),
                                        AT(ready),
                                        AT(topology),
                                        AT(response),
                                        AT(order),
                                        AT(units),
                                        AT(frequency),
                                        AT(normalized_frequency),
                                        AT(frequency_count),
                                        AT(passband_ripple),
                                        AT(stopband_attenuation),
                                        AT(samplerate),
                                        AT(actual_samplerate),
                                        AT(zpk_output),
                                        AT(sos_output),
                                        AT(tf_output),
                                        AT(design_task),
                                        sizeof(t_veltane)};
#undef AT
  EXPECT_EQ(std::adjacent_find(places.begin(), places.end(), std::greater_equal<>()), places.end());
  if (sizeof(void *) != 8) return;  // narrower pointers move what follows them
  constexpr std::size_t header = sizeof(t_signal_object);
  EXPECT_THAT(places,
              ElementsAre(0, header, header + 8, header + 16, header + 24, header + 32, header + 40,
                          header + 48, header + 56, header + 64, header + 72, header + 88,
                          header + 104, header + 112, header + 120, header + 128, header + 136,
                          header + 144, header + 152, header + 160, header + 168, header + 176));
}

TEST_F(BareHostTest, EachAttributeLiesAtItsField) {
  std::vector<std::pair<std::string, t_long>> found;
  for (const bare::Attribute &attribute : host.attributes)
    found.emplace_back(attribute.name, attribute.offset);
  const auto at = [](const char *name, std::size_t offset) {
    return std::pair(std::string(name), static_cast<t_long>(offset));
  };
#define AT(field) at(#field, offsetof(t_veltane, field))
  EXPECT_THAT(
      found, ElementsAre(AT(name), AT(topology), AT(response), AT(units), AT(samplerate), AT(order),
                         AT(frequency), AT(passband_ripple), AT(stopband_attenuation),
                         AT(zpk_output), AT(sos_output), AT(tf_output)));
#undef AT
  EXPECT_EQ(host.attributes.at(6).maximum, 2);
  EXPECT_EQ(host.attributes.at(6).count_offset,
            static_cast<t_long>(offsetof(t_veltane, frequency_count)));
}

TEST_F(BareHostTest, ABoxIsReadyOnceItIsBuilt) {
  const t_veltane *x = make();
  EXPECT_EQ(x->ready, 1);
  EXPECT_EQ(x->viewer, nullptr);
  EXPECT_EQ(x->actual_samplerate, 48000);
  EXPECT_EQ(x->frequency[0], 3000.0);
  EXPECT_EQ(x->frequency[1], 21000.0);
  EXPECT_EQ(x->normalized_frequency[0], 0.125);
  EXPECT_EQ(x->normalized_frequency[1], 0.875);
  EXPECT_EQ(host.tasks_set, 0U);
}

// --- the analog frequencies

TEST_F(BareHostTest, ALowpassAndAHighpassLeaveTheBandwidthAlone) {
  for (const char *response : {"lowpass", "highpass", "allpass"}) {
    double fs = 0.0;
    double wo = 0.0;
    double bw = 17.0;
    veltane_prewarp(gensym(response), &fs, &wo, &bw, 0.5, 0.75);
    EXPECT_EQ(fs, 2.0) << response;
    EXPECT_DOUBLE_EQ(wo, 4.0) << response;
    EXPECT_EQ(bw, 17.0) << response;
  }
}

TEST_F(BareHostTest, ABandReachesFromEdgeToEdge) {
  for (const char *response : {"bandpass", "bandstop"}) {
    double fs = 0.0;
    double wo = 0.0;
    double bw = 17.0;
    veltane_prewarp(gensym(response), &fs, &wo, &bw, 0.25, 0.5);
    const double lower = 4.0 * (std::sqrt(2.0) - 1.0);  // tan(pi / 8) = sqrt(2) - 1
    EXPECT_EQ(fs, 2.0) << response;
    EXPECT_DOUBLE_EQ(wo, std::sqrt(lower * 4.0)) << response;
    EXPECT_DOUBLE_EQ(bw, 4.0 - lower) << response;

    double reversed = 17.0;
    veltane_prewarp(gensym(response), &fs, &wo, &reversed, 0.5, 0.25);
    EXPECT_DOUBLE_EQ(wo, std::sqrt(lower * 4.0)) << response;
    EXPECT_EQ(reversed, -bw) << response;
  }
}

// --- settings that no host should let in

TEST_F(BareHostTest, OfTheOrderTheLow32BitsCount) {
  t_veltane *x = make();
  for (const char *family : families) {
    x->topology = gensym(family);
    x->tf_output = 1;
    x->order = 4;
    veltane_bang(x);
    const auto expected = host.dictionary;
    x->order = (t_long{1} << 32) + 4;
    veltane_bang(x);
    EXPECT_EQ(host.dictionary, expected) << family;
    EXPECT_THAT(numbers("poles"), SizeIs(2 * 4)) << family;
  }
}

// Many boxes, and many loadings: nothing is left of them.

#include <malloc.h>

#include <random>

#include "box_test.h"

using testing::IsEmpty;

namespace {

// Bytes that the program has allocated and not released. The sanitizers' allocator
// says 0, and finds leaks in its own way.
std::size_t allocated() { return mallinfo2().uordblks; }

constexpr std::size_t slack = 256 * 1024;

class RandomBoxes : public BoxTest {
 protected:
  std::size_t below(std::size_t n) { return random() % n; }

  std::string one_of(const std::vector<std::string> &words) { return words[below(words.size())]; }

  // Words for the settings that take one, and numbers in and out of range.
  Values value_for(const std::string &attribute) {
    if (attribute == "name") return {one_of({"flat", "other", "third"})};
    if (attribute == "topology")
      return {one_of({"butterworth", "chebyshev-1", "chebyshev-2", "elliptic"})};
    if (attribute == "response")
      return {one_of({"lowpass", "highpass", "bandpass", "bandstop", "notch"})};
    if (attribute == "units") return {one_of({"hertz", "normalized"})};
    if (attribute == "order") return {static_cast<t_long>(below(30)) - 2};
    if (attribute == "frequency") {
      const double scale = below(2) == 0 ? 1.0 : 24000.0;
      return {scale * static_cast<double>(below(1200)) / 1000.0,
              scale * static_cast<double>(below(1200)) / 1000.0};
    }
    if (attribute == "samplerate") return {static_cast<t_long>(below(3)) * 44100 - 44100};
    return {static_cast<double>(below(300)) / 2.0};
  }

  void live() {
    const Box box = host.make("veltane name: flat");
    for (std::size_t changes = below(8); changes > 0; --changes) {
      const std::string &attribute = names[below(names.size())];
      host.set(box, attribute, value_for(attribute));
    }
    host.run_deferred();
    host.send(box, "bang");
    ASSERT_THAT(published(box).size(), testing::Ge(4U));
    host.free(box);
    ASSERT_THAT(inspector.leaks(), IsEmpty());
  }

  std::mt19937 random{20240501};
  const std::vector<std::string> names = [this] {
    std::vector<std::string> list;
    for (const auto &attribute : host.attributes("veltane")) list.push_back(attribute.name);
    return list;
  }();
};

}  // namespace

TEST_F(RandomBoxes, TenThousandLeaveNothingBehind) {
  for (int i = 0; i < 2000; ++i) ASSERT_NO_FATAL_FAILURE(live()) << "box " << i;
  const std::size_t before = allocated();
  for (int i = 2000; i < 10000; ++i) ASSERT_NO_FATAL_FAILURE(live()) << "box " << i;
  EXPECT_LE(allocated(), before + slack);
  EXPECT_THAT(host.posts(), IsEmpty());
}

TEST(Loading, AThousandRoundsLeaveNothingBehind) {
  std::size_t before = 0;
  for (int round = 0; round < 1000; ++round) {
    if (round == 200) before = allocated();
    std::ostringstream printed;
    patchbay::Host host(printed);
    host.load(VELTANE_MODULE);
    const Box box = host.make("veltane name: round");
    host.send(box, "bang");
    ASSERT_EQ(host.dictionary("round").value().size(), 8U);
    ASSERT_THAT(host.close(), IsEmpty());
  }
  EXPECT_LE(allocated(), before + slack);
}

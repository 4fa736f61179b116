// A host and the threads that it does not belong to.

#include <atomic>
#include <barrier>
#include <memory>
#include <thread>

#include "host_test.h"

namespace tests {
namespace {

class Threads : public HostTest {
 protected:
  // Runs `body` in another thread, to its end.
  template <typename Body>
  static void elsewhere(Body &&body) {
    std::jthread(std::forward<Body>(body)).join();
  }

  template <typename Request>
  static std::string refusal_elsewhere(Request &&request) {
    std::string text;
    elsewhere([&] { text = refusal(request); });
    return text;
  }
};

TEST_F(Threads, MayNotCallAHostOfAnother) {
  const Box box = counter("unit: Hz step: 2");
  const std::vector<std::function<void()>> requests{
      [&] { host.load(module("meter")); },
      [&] { host.classes(); },
      [&] { host.attributes("counter"); },
      [&] { host.make("counter"); },
      [&] { host.free(box); },
      [&] { host.boxes(); },
      [&] { host.close(); },
      [&] { host.send(box, "bang"); },
      [&] { host.double_click(box); },
      [&] { host.assist(box, ASSIST_INLET, 0); },
      [&] { host.notify(box, "editor_closed"); },
      [&] { host.listen(box, 0, [](const std::string &, const Values &) {}); },
      [&] { host.set(box, "step", {3}); },
      [&] { host.get(box, "step"); },
      [&] { host.disabled(box, "step"); },
      [&] { host.dictionary("x"); },
      [&] { host.dictionary_names(); },
      [&] { host.run_deferred(); },
      [&] { host.audio_on(); },
      [&] { host.audio_off(); },
      [&] { host.set_samplerate(1.0); },
      [&] { host.posts(); },
      [&] { inspector.violations(); },
      [&] { inspector.leaks(); },
      [&] { inspector.fail("gensym"); },
      [&] { inspector.forget_failures(); },
      [&] { inspector.start_trace(); },
      [&] { inspector.stop_trace(); },
  };
  for (std::size_t i = 0; i < requests.size(); ++i) {
    EXPECT_THAT(refusal_elsewhere(requests[i]),
                HasSubstr("called from a thread that it does not belong to"))
        << i;
  }
  EXPECT_THAT(host.boxes(), ElementsAre(box));
  EXPECT_EQ(host.get(box, "step"), Values{2});
  EXPECT_EQ(sys_getsr(), 48000.0F);
}

TEST_F(Threads, MayNotCallItsOperations) {
  void *block = sysmem_newptrclear(8);
  t_dictionary *d = dictionary_new();
  elsewhere([&] {
    for (int i = 0; i < 1000; ++i) {
      EXPECT_EQ(sysmem_newptr(8), nullptr);
      EXPECT_EQ(sysmem_newptrclear(8), nullptr);
      EXPECT_EQ(sysmem_resizeptrclear(block, 16), nullptr);
      sysmem_freeptr(block);
      EXPECT_EQ(dictionary_appendfloat(d, nullptr, 1.0), RESULT_FAILED);
      EXPECT_EQ(gensym("stray"), nullptr);
    }
  });
  const auto strayed = [](const char *operation) {
    return std::string(operation) + " was called from a thread that the host does not belong to";
  };
  EXPECT_THAT(inspector.violations(),
              UnorderedElementsAre(strayed("sysmem_newptr"), strayed("sysmem_newptrclear"),
                                   strayed("sysmem_resizeptrclear"), strayed("sysmem_freeptr"),
                                   strayed("dictionary_appendfloat"), strayed("gensym")));
  EXPECT_THAT(inspector.leaks(), SizeIs(2)) << "both are where they were";
  sysmem_freeptr(block);
  object_free(d);
  expect_problems(SizeIs(6));
}

// Under the sanitizers, too: nothing of the host is touched.
TEST_F(Threads, DisturbNothingThatTheHostDoes) {
  const Box box = counter();
  {
    std::vector<std::jthread> threads;
    for (int t = 0; t < 3; ++t)
      threads.emplace_back([&] {
        for (int i = 0; i < 2000; ++i) {
          sysmem_freeptr(sysmem_newptr(8));
          object_free(box);
          try {
            host.send(box, "bang");
            ADD_FAILURE() << "it went through";
          } catch (const patchbay::Error &) {
          }
        }
      });
    for (t_long i = 1; i <= 500; ++i) {
      host.set(box, "step", {i % 7 + 1});
      sysmem_freeptr(sysmem_newptr(i));
    }
  }
  EXPECT_EQ(host.get(box, "step"), Values{4});
  expect_problems(UnorderedElementsAre(HasSubstr("sysmem_newptr "), HasSubstr("sysmem_freeptr "),
                                       HasSubstr("object_free ")));
}

TEST_F(Threads, CannotHaveAHostEach) {
  EXPECT_THAT(refusal_elsewhere([] { patchbay::Host another; }),
              HasSubstr("there is already a host"));
  EXPECT_NE(counter(), nullptr) << "the first goes on";
}

TEST(HostsInThreads, AreOneHoweverManyAreMadeAtOnce) {
  constexpr int count = 4;
  for (int round = 0; round < 50; ++round) {
    std::barrier together(count);
    std::atomic<int> made = 0;
    std::atomic<int> refused = 0;
    std::vector<std::jthread> threads;
    for (int t = 0; t < count; ++t)
      threads.emplace_back([&] {
        std::ostringstream printed;
        std::unique_ptr<patchbay::Host> host;
        together.arrive_and_wait();
        try {
          host = std::make_unique<patchbay::Host>(printed);
          ++made;
        } catch (const patchbay::Error &) {
          ++refused;
        }
        together.arrive_and_wait();
        if (host) {
          EXPECT_THAT(host->classes(), ElementsAre("dict"));
        }
      });
    threads.clear();
    EXPECT_EQ(made, 1);
    EXPECT_EQ(refused, count - 1);
  }
}

TEST(HostsInThreads, FollowOneAnother) {
  for (int i = 0; i < 3; ++i)
    std::jthread([] {
      std::ostringstream printed;
      patchbay::Host host(printed);
      host.load(module("counter"));
      EXPECT_EQ(host.get(host.make("counter"), "made"), Values{0});
      EXPECT_THAT(host.close(), IsEmpty());
    }).join();
}

TEST(HostsInThreads, MayEndInAnother) {
  std::ostringstream printed;
  auto host = std::make_unique<patchbay::Host>(printed);
  host->load(module("counter"));
  host->make("counter");
  std::jthread([&] { host.reset(); }).join();

  // The thread that made it has no part in the next one.
  std::barrier step(2);
  std::jthread next([&] {
    patchbay::Host another(printed);
    step.arrive_and_wait();
    step.arrive_and_wait();
    EXPECT_THAT(another.close(), ElementsAre(HasSubstr("dictionary_new was called from a thread")));
  });
  step.arrive_and_wait();
  EXPECT_EQ(dictionary_new(), nullptr);
  step.arrive_and_wait();
}

// Misuse that an earlier host did not live to report is not the next one's.
TEST(HostsInThreads, DoNotInheritComplaints) {
  std::ostringstream printed;
  {
    patchbay::Host host(printed);
    EXPECT_THAT(host.close(), IsEmpty());
    std::jthread([] { dictionary_new(); }).join();
  }
  patchbay::Host host(printed);
  EXPECT_THAT(patchbay::Inspector(host).violations(), IsEmpty());
}

}  // namespace
}  // namespace tests

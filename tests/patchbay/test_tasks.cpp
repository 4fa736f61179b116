// Deferred tasks.

#include "host_test.h"

namespace tests {
namespace {

/** A task with its name, and what it does besides telling that it ran. */
struct Task {
  Task(std::vector<std::string> &ran_, std::string name_) : ran(ran_), name(std::move(name_)) {}
  ~Task() { qelem_free(task); }
  Task(const Task &) = delete;
  Task &operator=(const Task &) = delete;

  static void run(void *owner) {
    auto *self = static_cast<Task *>(owner);
    self->ran.push_back(self->name);
    if (self->then) self->then();
  }
  void set() const { qelem_set(task); }
  void unset() const { qelem_unset(task); }

  std::vector<std::string> &ran;
  std::string name;
  std::function<void()> then = {};
  t_qelem *task = qelem_new(this, run);
};

class Tasks : public HostTest {
 protected:
  std::vector<std::string> ran;
  Task a{ran, "a"};
  Task b{ran, "b"};
  Task c{ran, "c"};

  // The tasks must go before the host reports what is left.
  void TearDown() override {
    for (Task *task : {&a, &b, &c}) {
      qelem_free(task->task);
      task->task = nullptr;
    }
    HostTest::TearDown();
  }
};

TEST_F(Tasks, OfABoxRunOutsideItsHandler) {
  const Box box = counter();
  listen(box, 1);
  host.send(box, "later");
  EXPECT_THAT(heard, IsEmpty());
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_THAT(heard, ElementsAre("done"));
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(Tasks, AreNotSetAtFirst) {
  EXPECT_EQ(host.run_deferred(), 0U);
  EXPECT_THAT(ran, IsEmpty());
}

TEST_F(Tasks, RunInOrderOnceEach) {
  b.set();
  a.set();
  c.set();
  b.set();
  a.set();
  EXPECT_EQ(host.run_deferred(), 3U);
  EXPECT_THAT(ran, ElementsAre("b", "a", "c"));
}

TEST_F(Tasks, RunOnceForABurstEvenWhenTheySetThemselves) {
  a.then = [&] { a.set(); };
  a.set();
  b.set();
  a.set();
  EXPECT_EQ(host.run_deferred(), 2U);
  EXPECT_THAT(ran, ElementsAre("a", "b"));
}

TEST_F(Tasks, CanBeTakenBack) {
  const Box box = counter();
  listen(box, 1);
  host.send(box, "later");
  host.send(box, "never");
  host.send(box, "never");
  EXPECT_EQ(host.run_deferred(), 0U);
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Tasks, MoveToTheEndWhenUnsetAndSet) {
  a.set();
  b.set();
  a.unset();
  a.set();
  host.run_deferred();
  EXPECT_THAT(ran, ElementsAre("b", "a"));
}

TEST_F(Tasks, ThatTasksSetWait) {
  a.then = [&] { b.set(); };
  a.set();
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_THAT(ran, ElementsAre("a"));
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_THAT(ran, ElementsAre("a", "b"));
}

TEST_F(Tasks, ThatTasksSetTwiceInARowRunOnce) {
  a.then = [&] { b.set(); };
  a.set();
  b.set();
  host.run_deferred();
  EXPECT_THAT(ran, ElementsAre("a", "b"));
  EXPECT_EQ(host.run_deferred(), 0U);
}

// It is set by a task now, so it waits, and the others keep their turn.
TEST_F(Tasks, ThatTasksUnsetAndSetWait) {
  a.then = [&] {
    b.unset();
    b.set();
  };
  a.set();
  b.set();
  c.set();
  EXPECT_EQ(host.run_deferred(), 2U);
  EXPECT_THAT(ran, ElementsAre("a", "c"));
  a.then = nullptr;
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_THAT(ran, ElementsAre("a", "c", "b"));
}

TEST_F(Tasks, ThatATaskTakesBackDoNotRun) {
  a.then = [&] { b.unset(); };
  a.set();
  b.set();
  c.set();
  EXPECT_EQ(host.run_deferred(), 2U);
  EXPECT_THAT(ran, ElementsAre("a", "c"));
}

TEST_F(Tasks, ThatATaskFreesDoNotRun) {
  a.then = [&] {
    qelem_free(b.task);
    b.task = nullptr;
  };
  a.set();
  b.set();
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_THAT(ran, ElementsAre("a"));
}

TEST_F(Tasks, MayFreeThemselves) {
  a.then = [&] {
    qelem_free(a.task);
    a.task = nullptr;
  };
  a.set();
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(Tasks, OfABoxGoWithIt) {
  const Box box = counter();
  host.send(box, "later");
  host.free(box);
  EXPECT_EQ(host.run_deferred(), 0U);
}

TEST_F(Tasks, ThatSetThemselvesForEverRunOnceEachTime) {
  const Watchdog watchdog("a task that sets itself");
  const Box box = make("sets_itself_forever");
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(host.run_deferred(), 1U);
    EXPECT_EQ(host.get(box, "runs"), Values{i});
  }
}

TEST_F(Tasks, NeedAFunction) {
  EXPECT_EQ(qelem_new(this, nullptr), nullptr);
  t_qelem *nobodys = qelem_new(nullptr, [](void *) {});
  EXPECT_NE(nobodys, nullptr);
  qelem_free(nobodys);
}

}  // namespace
}  // namespace tests

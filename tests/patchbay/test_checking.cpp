// A host that trusts its module does the same, and does not see what it does with blocks.

#include "host_test.h"

namespace tests {
namespace {

class ATrustingHost : public testing::Test {
 protected:
  void TearDown() override { EXPECT_THAT(host.close(), SizeIs(expected_problems)); }

  std::ostringstream printed;
  patchbay::Host host{printed, patchbay::Checking::trusting};
  patchbay::Inspector inspector{host};
  std::size_t expected_problems = 0;
};

TEST_F(ATrustingHost, HandsOutBlocksAsAStrictOneDoes) {
  auto *block = static_cast<unsigned char *>(sysmem_newptrclear(8));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(block[7], 0);
  block[7] = 1;
  block = static_cast<unsigned char *>(sysmem_resizeptrclear(block, 1 << 20));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(block[7], 1);
  EXPECT_EQ(block[(1 << 20) - 1], 0);
  sysmem_freeptr(block);
  sysmem_freeptr(nullptr);
  EXPECT_EQ(sysmem_newptr(-1), nullptr);
  void *made = sysmem_resizeptrclear(nullptr, 8);
  EXPECT_NE(made, nullptr);
  sysmem_freeptr(made);
}

TEST_F(ATrustingHost, DoesNotSeeABlockThatLeaks) {
  void *block = sysmem_newptr(8);
  EXPECT_THAT(inspector.leaks(), IsEmpty());
  EXPECT_THAT(host.close(), IsEmpty());
  sysmem_freeptr(block);
  EXPECT_THAT(inspector.violations(), IsEmpty());
}

TEST_F(ATrustingHost, SeesWhatHappensToObjects) {
  t_dictionary *d = dictionary_new();
  EXPECT_THAT(inspector.leaks(), ElementsAre(HasSubstr("dictionary_new")));
  EXPECT_EQ(object_free(d), RESULT_OK);
  EXPECT_EQ(object_free(d), RESULT_FAILED);
  EXPECT_THAT(inspector.violations(), ElementsAre(HasSubstr("object_free has released")));
  expected_problems = 1;
}

TEST_F(ATrustingHost, FailsAndTracesOnDemand) {
  inspector.start_trace();
  inspector.fail("sysmem_newptr");
  EXPECT_EQ(sysmem_newptr(8), nullptr);
  inspector.fail("sysmem_freeptr");
  void *block = sysmem_newptr(8);
  sysmem_freeptr(block);
  sysmem_freeptr(block);
  EXPECT_THAT(texts(inspector.stop_trace()), ElementsAre("sysmem_newptr(8)", "sysmem_newptr(8)",
                                                         "sysmem_freeptr()", "sysmem_freeptr()"));
}

TEST_F(ATrustingHost, RunsModules) {
  host.load(module("counter"));
  const Box box = host.make("counter name: mine step: 2");
  for (const char *message : {"bang", "later", "publish"}) host.send(box, message);
  EXPECT_EQ(host.run_deferred(), 1U);
  EXPECT_EQ(host.get(box, "total"), Values{2});
  EXPECT_TRUE(host.dictionary("mine").has_value());
}

}  // namespace
}  // namespace tests

// Loading modules, and unloading them.

#include <link.h>

#include <cerrno>
#include <cstdint>
#include <fstream>

#include "../temporary_folder.h"
#include "host_test.h"

// Called by the module calls_back.
extern "C" BRONTAL_API void during_load();
extern "C" void during_load() {
  if (tests::start) tests::start();
}

namespace tests {
namespace {

class Modules : public HostTest {};

TEST_F(Modules, StartOnceAndBringTheirClasses) {
  EXPECT_THAT(host.classes(), ElementsAre("dict"));
  host.load(module("counter"));
  EXPECT_THAT(host.classes(), ElementsAre("counter", "dict"));
  EXPECT_EQ(host.get(host.make("counter"), "started"), Values{1});
  EXPECT_EQ(host.get(host.make("counter"), "started"), Values{1});
}

TEST_F(Modules, AreFoundFromARelativePath) {
  host.load(std::filesystem::relative(module("counter")));
  EXPECT_THAT(host.classes(), ElementsAre("counter", "dict"));
}

TEST_F(Modules, SeveralLiveTogether) {
  host.load(module("observer"));
  host.load(module("counter"));
  host.load(module("meter"));
  EXPECT_THAT(host.classes(), ElementsAre("counter", "deaf", "dict", "meter", "observer"));
}

TEST_F(Modules, StartAfreshAfterTheyWereUnloaded) {
  host.load(module("counter"));
  host.make("counter");
  EXPECT_EQ(host.get(host.make("counter"), "made"), Values{1});
  EXPECT_THAT(host.close(), IsEmpty());
  EXPECT_THAT(host.classes(), ElementsAre("dict"));
  EXPECT_THAT(refusal([&] { host.make("counter"); }), HasSubstr("counter"));

  host.load(module("counter"));
  const Box box = host.make("counter");
  EXPECT_EQ(host.get(box, "made"), Values{0});
  EXPECT_EQ(host.get(box, "started"), Values{1});
}

TEST_F(Modules, AreNotLoadedTwice) {
  host.load(module("counter"));
  EXPECT_THAT(refusal([&] { host.load(module("counter")); }),
              AllOf(HasSubstr("counter.so"), HasSubstr("already")));
  EXPECT_EQ(host.get(host.make("counter"), "started"), Values{1});
}

// What failed for want of memory before has nothing to do with it.
TEST_F(Modules, ThatAreNoneAreNotToldAsExhaustedMemory) {
  EXPECT_THAT(refusal([&] {
                errno = ENOMEM;
                host.load("/etc/passwd");
              }),
              HasSubstr("cannot be loaded"));
}

TEST_F(Modules, MustBeFiles) {
  EXPECT_THAT(refusal([&] { host.load(module("missing")); }), HasSubstr("missing.so"));
  EXPECT_THAT(refusal([&] { host.load(PATCHBAY_MODULES); }), HasSubstr(PATCHBAY_MODULES));
  // A name alone must not be looked for in the system's folders.
  EXPECT_THAT(refusal([&] { host.load("libc.so.6"); }), HasSubstr("no module file"));
}

TEST_F(Modules, MustBeLibraries) {
  const TemporaryFolder folder;
  const auto file = folder / "no_library.so";
  std::ofstream(file) << "only words";
  EXPECT_THAT(refusal([&] { host.load(file); }),
              AllOf(HasSubstr(file.string()), HasSubstr("cannot be loaded")));
}

// The loader would map missing parts, and touching them ends the process.
TEST_F(Modules, MustNotBeCutShort) {
  const TemporaryFolder folder;
  const auto file = folder / "counter.so";
  const auto size = std::filesystem::file_size(module("counter"));
  std::vector<std::uintmax_t> lengths{16, 63, 64, 65, size - 1};
  for (std::uintmax_t length = 100; length < size; length += size / 60) lengths.push_back(length);
  for (const std::uintmax_t length : lengths) {
    std::filesystem::copy_file(module("counter"), file,
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(file, length);
    EXPECT_THAT(refusal([&] { host.load(file); }),
                AllOf(HasSubstr("counter.so"), HasSubstr("cannot be loaded: it is truncated, " +
                                                         std::to_string(length) + " bytes of")))
        << length;
  }
  for (const std::uintmax_t length : {0, 1, 4, 15}) {
    std::filesystem::resize_file(file, length);
    EXPECT_THAT(refusal([&] { host.load(file); }), HasSubstr("cannot be loaded")) << length;
  }
  std::filesystem::copy_file(module("counter"), file,
                             std::filesystem::copy_options::overwrite_existing);
  host.load(file);
  EXPECT_THAT(host.classes(), ElementsAre("counter", "dict"));
}

// Not every file says where its sections are; its segments are what is mapped.
TEST_F(Modules, MustNotBeCutShortWithoutSectionsEither) {
  const TemporaryFolder folder;
  const auto file = folder / "counter.so";
  std::filesystem::copy_file(module("counter"), file);
  std::uint64_t end = 0;
  {
    std::fstream elf(file, std::ios::binary | std::ios::in | std::ios::out);
    ElfW(Ehdr) header{};
    elf.read(reinterpret_cast<char *>(&header), sizeof header);
    elf.seekg(static_cast<std::streamoff>(header.e_phoff));
    for (int i = 0; i < header.e_phnum; ++i) {
      ElfW(Phdr) segment{};
      elf.read(reinterpret_cast<char *>(&segment), sizeof segment);
      end = std::max<std::uint64_t>(end, segment.p_offset + segment.p_filesz);
    }
    header.e_shoff = 0;
    header.e_shnum = 0;
    header.e_shstrndx = SHN_UNDEF;
    elf.seekp(0).write(reinterpret_cast<const char *>(&header), sizeof header);
  }
  std::filesystem::resize_file(file, end - 1);
  EXPECT_THAT(refusal([&] { host.load(file); }), HasSubstr("it is truncated"));
  std::filesystem::resize_file(file, end);
  host.load(file);
  EXPECT_THAT(host.classes(), ElementsAre("counter", "dict"));
}

// Nothing in the file is trusted, however large.
TEST_F(Modules, MayNotClaimMoreThanAFileCanHold) {
  const TemporaryFolder folder;
  const auto file = folder / "counter.so";
  constexpr std::streamoff section_table = 40;  // in the header, of 8 bytes
  constexpr std::streamoff segment_table = 32;
  for (const std::streamoff at : {section_table, segment_table}) {
    std::filesystem::copy_file(module("counter"), file,
                               std::filesystem::copy_options::overwrite_existing);
    std::fstream(file, std::ios::binary | std::ios::in | std::ios::out)
        .seekp(at)
        .write("\xff\xff\xff\xff\xff\xff\xff\xff", 8);
    EXPECT_THAT(refusal([&] { host.load(file); }), HasSubstr("it is truncated")) << at;
  }
}

TEST_F(Modules, MustHaveAStart) {
  EXPECT_THAT(refusal([&] { host.load(module("no_ext_main")); }),
              AllOf(HasSubstr("no_ext_main.so"), HasSubstr("no function ext_main")));
}

TEST_F(Modules, MustNotNeedWhatNoHostHas) {
  EXPECT_THAT(refusal([&] { host.load(module("needs_an_unknown_operation")); }),
              AllOf(HasSubstr("cannot be loaded"), HasSubstr("operation_that_no_host_has")));
}

TEST_F(Modules, BringNoClassUnderATakenName) {
  t_result again = RESULT_OK;
  t_result elsewhere = RESULT_FAILED;
  during_load([&] {
    const t_constructor none = [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; };
    const auto described = [&](const char *name) {
      return class_new(name, none, nullptr, sizeof(t_object), nullptr, ARGS_VARIABLE, 0);
    };
    again = class_register(common_symbols->box, described("dict"));
    elsewhere = class_register(gensym("elsewhere"), described("dict"));
  });
  EXPECT_EQ(again, RESULT_FAILED);
  EXPECT_EQ(elsewhere, RESULT_OK);
  host.make("dict something");
}

TEST_F(Modules, RegisterAClassUnderOneNameOnly) {
  during_load([&] {
    const t_constructor none = [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; };
    t_class *c = class_new("once", none, nullptr, sizeof(t_object), nullptr, ARGS_VARIABLE, 0);
    class_register(common_symbols->box, c);
    class_register(gensym("elsewhere"), c);
  });
  host.close();
  EXPECT_THAT(host.classes(), ElementsAre("dict"));
}

TEST_F(Modules, MayNotGiveAClassWhatItCannotHave) {
  during_load([&] {
    const t_constructor none = [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; };
    const auto size = static_cast<t_long>(sizeof(t_object));
    EXPECT_EQ(class_new(nullptr, none, nullptr, size, nullptr, ARGS_VARIABLE, 0), nullptr);
    EXPECT_EQ(class_new("x", nullptr, nullptr, size, nullptr, ARGS_VARIABLE, 0), nullptr);
    EXPECT_EQ(class_new("x", none, nullptr, size - 1, nullptr, ARGS_VARIABLE, 0), nullptr);
    EXPECT_EQ(class_new("x", none, nullptr, size, nullptr, ARGS_NONE, 0), nullptr);
    t_class *c = class_new("x", none, nullptr, size, nullptr, ARGS_VARIABLE, 0);
    EXPECT_EQ(class_dspinit(c), RESULT_FAILED) << "there is no room for a t_signal_object";
  });
  EXPECT_THAT(host.classes(), ElementsAre("dict"));
  expect_problems(ElementsAre(HasSubstr("class_new"), HasSubstr("class_new"),
                              HasSubstr("class_new"), HasSubstr("class_new"),
                              HasSubstr("class_dspinit")));
}

TEST_F(Modules, GivePropertiesToTheMessagesOfAClass) {
  during_load([&] {
    const t_constructor none = [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; };
    t_class *c = class_new("x", none, nullptr, sizeof(t_signal_object), nullptr, ARGS_VARIABLE, 0);
    EXPECT_EQ(class_extra_lookup(c, gensym("something")), nullptr);
    t_hashtab *methods = class_extra_lookup(c, gensym("methods"));
    ASSERT_NE(methods, nullptr);
    EXPECT_EQ(class_extra_lookup(c, gensym("methods")), methods);
    EXPECT_EQ(hashtab_lookup(methods, gensym("signal")), nullptr);
    EXPECT_EQ(class_dspinit(c), RESULT_OK);
    void *signal = hashtab_lookup(methods, gensym("signal"));
    ASSERT_NE(signal, nullptr);
    EXPECT_EQ(object_addattr_parse(signal, "hidden", gensym("long"), "1"), RESULT_OK);
    EXPECT_EQ(object_addattr_parse(signal, "hidden", gensym("long"), "much"), RESULT_FAILED);
    EXPECT_EQ(object_addattr_parse(signal, "x", gensym("unknown"), "1"), RESULT_FAILED);
  });
}

TEST_F(Modules, GivePropertiesToTheAttributesOfAClass) {
  during_load([&] {
    const t_constructor none = [](t_symbol *, t_long, t_atom *) -> void * { return nullptr; };
    t_class *c = class_new("x", none, nullptr, sizeof(t_object) + 8, nullptr, ARGS_VARIABLE, 0);
    class_addattr(c, attr_offset_new("a", gensym("long"), sizeof(t_object)));
    class_register(common_symbols->box, c);
    // An attribute is an object, and an object takes properties.
    t_attr *attr = class_attr_get(c, gensym("a"));
    EXPECT_EQ(object_addattr_parse(attr, "label", gensym("symbol"), "The Label"), RESULT_OK);
  });
  EXPECT_EQ(host.attributes("x").at(0).property("label"), Values{"The Label"});
}

int linked_starts = 0;

void *make_nothing(t_symbol *, t_long, t_atom *) { return nullptr; }

void linked_main() {
  ++linked_starts;
  common_symbols_init();
  class_register(common_symbols->box, class_new("linked", make_nothing, nullptr, sizeof(t_object),
                                                nullptr, ARGS_VARIABLE, 0));
}

void throwing_main() { throw std::runtime_error("from ext_main"); }

TEST_F(Modules, MayBeLinkedIntoTheProgram) {
  linked_starts = 0;
  host.load(module("counter"));
  host.load(linked_main);
  EXPECT_EQ(linked_starts, 1);
  EXPECT_THAT(host.classes(), ElementsAre("counter", "dict", "linked"));
  EXPECT_THAT(refusal([&] { host.load(linked_main); }), HasSubstr("already loaded"));
  EXPECT_EQ(linked_starts, 1);
  host.close();
  EXPECT_THAT(host.classes(), ElementsAre("dict"));
  host.load(linked_main);
  EXPECT_EQ(linked_starts, 2);
}

TEST_F(Modules, ThatAreLinkedInAreNotTrustedMore) {
  host.load(throwing_main);
  expect_problems(ElementsAre("an exception came out of 'ext_main'"));
}

TEST_F(Modules, OneHostLivesAtATime) {
  EXPECT_THAT(refusal([] { patchbay::Host another; }), HasSubstr("there is already a host"));
}

TEST(Hosts, FollowOneAnother) {
  for (int i = 0; i < 3; ++i) {
    std::ostringstream printed;
    patchbay::Host host(printed);
    host.load(module("counter"));
    EXPECT_EQ(host.get(host.make("counter"), "made"), Values{0});
  }
}

TEST_F(Modules, CloseOnlyOnce) {
  host.load(module("leaks"));
  host.send(host.make("leaks"), "block");
  const std::vector<std::string> first = host.close();
  EXPECT_THAT(first, SizeIs(1));
  EXPECT_EQ(host.close(), first);
  expect_problems(testing::ElementsAreArray(first));
}

}  // namespace
}  // namespace tests

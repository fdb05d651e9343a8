#include "player/plugins/plugin_loader.h"

#include "tests/support/testing.h"

#include <elf.h>

#include <semaphore>

using namespace testing;

namespace {

namespace fs = std::filesystem;

bool is_any(const std::string&) {
  return true;
}

std::string bad_plugin(const std::string& name) {
  return std::string(BAD_PLUGINS) + "/" + name;
}

/** A plug-in folder, and the player's side of it. */
struct PluginLoader : testing::Test {
  static constexpr bigtime_t kPatienceUs = 60000000; // of a plug-in that answers, on a machine however slow

  void Put(const std::string& plugin, const std::string& name = {}) const {
    fs::copy(bad_plugin(plugin), fFolder.File(name.empty() ? plugin : name));
  }
  std::vector<std::string> Load(const TPluginLoader::TWanted& wanted = is_any) {
    fLoader.Load(fFolder.Path(), wanted);
    return Finish();
  }
  std::vector<std::string> End() {
    fLoader.BeginEnd();
    return Finish();
  }
  /** Until every call has been answered. */
  std::vector<std::string> Finish() {
    std::vector<std::string> errors = fLoader.Proceed();
    while (fLoader.IsBusy()) {
      fAnswers.acquire();
      for (std::string& error : fLoader.Proceed()) errors.push_back(std::move(error));
    }
    return errors;
  }

  const ScratchFolder fFolder;
  std::counting_semaphore<> fAnswers{0};
  TPluginLoader fLoader{[this] { fAnswers.release(); }, kPatienceUs};
};

} // namespace

TEST_F(PluginLoader, ReportsWhyEachBadImageIsSkipped) {
  for (const char* name : {"gen_empty.so", "gen_null.so", "gen_throwing.so"}) Put(name);
  fFolder.Write("other.so", "not looked at");
  EXPECT_THAT(Load(), ElementsAre("Plug-in gen_empty.so cannot be loaded: it has no NewPlugin function",
                                  "Plug-in gen_null.so could not be started: NewPlugin returned nothing",
                                  "Plug-in gen_throwing.so failed: no memory for lyrics"));
  EXPECT_EQ(fLoader.Count(), 0);
  EXPECT_THAT(Load([](const std::string& name) { return name == "gen_null.so"; }),
              ElementsAre("Plug-in gen_null.so could not be started: NewPlugin returned nothing"));
  fLoader.Load("/no/such/folder", is_any);
  EXPECT_THAT(Finish(), IsEmpty());
}

TEST_F(PluginLoader, OneThatThrowsAtStartOrEndIsReported) {
  Put("gen_unwell.so");
  EXPECT_THAT(Load(), ElementsAre("Plug-in gen_unwell.so failed: no window to show"));
  ASSERT_EQ(fLoader.Count(), 1);
  EXPECT_EQ(fLoader.Name(0), "gen_unwell.so") << "it has no texts of its own";
  EXPECT_EQ(fLoader.Info(0), "gen_unwell.so");
  EXPECT_THAT(End(), ElementsAre("Plug-in gen_unwell.so failed: nothing to clean"));
  EXPECT_TRUE(fLoader.AreAllGone());
}

TEST_F(PluginLoader, OneThatNeverReturnsIsNamedAndHoldsUpNeitherTheOthersNorTheEnd) {
  Put("gen_hanging.so");
  Put("gen_unwell.so");
  TPluginLoader impatient([] {}, 0);
  impatient.Load(fFolder.Path(), is_any);
  std::vector<std::string> errors;
  const auto proceed = [&] {
    for (std::string& error : impatient.Proceed()) errors.push_back(std::move(error));
    std::this_thread::yield();
  };
  while (impatient.Count() == 0) proceed();
  impatient.BeginEnd();
  while (!impatient.HasEnded()) proceed();
  EXPECT_FALSE(impatient.AreAllGone()) << "the process must not be ended as if nothing of it were left";
  EXPECT_EQ(errors.front(), "Plug-in gen_hanging.so is not responding: its NewPlugin has not returned");
  EXPECT_EQ(std::count(errors.begin(), errors.end(), errors.front()), 1);
}

TEST_F(PluginLoader, OnePluginUnderTwoNamesIsLoadedOnce) {
  Put("gen_unwell.so");
  Put("gen_unwell.so", "gen_vcopy.so");
  fs::create_hard_link(fFolder.File("gen_unwell.so"), fFolder.File("gen_xlink.so"));
  fs::create_symlink("gen_unwell.so", fFolder.File("gen_ylink.so"));
  EXPECT_THAT(Load(), ElementsAre("Plug-in gen_unwell.so failed: no window to show",
                                  "Plug-in gen_vcopy.so is not loaded: it is the same plug-in as gen_unwell.so",
                                  "Plug-in gen_xlink.so is not loaded: it is the same plug-in as gen_unwell.so",
                                  "Plug-in gen_ylink.so is not loaded: it is the same plug-in as gen_unwell.so"));
  EXPECT_EQ(fLoader.Count(), 1);
  End();
}

TEST_F(PluginLoader, AnImageThatOthersCanWriteIsNotLoaded) {
  Put("gen_null.so");
  for (const auto& [file, reason] : {std::pair{"/gen_null.so", "other users can write to it"},
                                     std::pair{"", "other users can write to its folder"}}) {
    const std::string path = fFolder.Path() + file;
    fs::permissions(path, fs::perms::others_write, fs::perm_options::add);
    EXPECT_THAT(Load(), ElementsAre(std::string("Plug-in gen_null.so is not loaded: ") + reason));
    fs::permissions(path, fs::perms::others_write, fs::perm_options::remove);
  }
  EXPECT_THAT(Load(), ElementsAre("Plug-in gen_null.so could not be started: NewPlugin returned nothing"));
  if (geteuid() != 0) return;
  // Only the administrator can give a file away.
  ASSERT_EQ(chown(fFolder.File("gen_null.so").c_str(), 12345, 12345), 0);
  EXPECT_THAT(Load(), ElementsAre("Plug-in gen_null.so is not loaded: other users can write to it"));
}

TEST_F(PluginLoader, WhatIsNoRegularFileIsNotEvenOpened) {
  ASSERT_EQ(mkfifo(fFolder.File("gen_fifo.so").c_str(), 0600), 0);
  fs::create_directory(fFolder.File("gen_folder.so"));
  fs::create_symlink("/dev/zero", fFolder.File("gen_zero.so"));
  fs::create_symlink("nothing", fFolder.File("gen_lost.so"));
  EXPECT_THAT(Load(), ElementsAre("Plug-in gen_fifo.so is not loaded: it is not a regular file",
                                  "Plug-in gen_folder.so is not loaded: it is not a regular file",
                                  "Plug-in gen_lost.so is not loaded: it is a broken link",
                                  "Plug-in gen_zero.so is not loaded: it is not a regular file"));
}

/** The dynamic linker touches what the headers promise and, where that is missing, ends the process. */
TEST_F(PluginLoader, AnImageThatIsCutOffAnywhereIsRefused) {
  std::ifstream good(bad_plugin("gen_null.so"), std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(good), {}};
  ASSERT_GT(whole.size(), 4096U);
  const auto reason = [this](const std::string& bytes) {
    TPluginFile file;
    return check_plugin_file(fFolder.Write("gen_cut.so", bytes), &file);
  };
  ASSERT_EQ(reason(whole), "");
  for (size_t bytes = 0; bytes < whole.size(); bytes += bytes < 1024 ? 37 : 4999)
    EXPECT_NE(reason(whole.substr(0, bytes)), "") << bytes;
  EXPECT_NE(reason(whole.substr(0, whole.size() - 1)), "");
  EXPECT_EQ(reason("this is no image"), "it is not a shared library");
  EXPECT_EQ(reason(std::string(100, 'x')), "it is not a shared library");
  const std::tuple<const char*, size_t, uint64_t, size_t> spoilt[] = {
      {"class", EI_CLASS, ELFCLASS32, 1},
      {"byte order", EI_DATA, ELFDATA2MSB, 1},
      {"kind", offsetof(Elf64_Ehdr, e_type), ET_EXEC, 2},
      {"machine", offsetof(Elf64_Ehdr, e_machine), EM_S390 + 1, 2},
      {"place of the segments", offsetof(Elf64_Ehdr, e_phoff), ~0ULL - 8, 8},
      {"number of segments", offsetof(Elf64_Ehdr, e_phnum), 0xffff, 2},
      {"no segments", offsetof(Elf64_Ehdr, e_phnum), 0, 2},
      {"place of the sections", offsetof(Elf64_Ehdr, e_shoff), ~0ULL - 8, 8},
      {"length of a segment", sizeof(Elf64_Ehdr) + offsetof(Elf64_Phdr, p_filesz), ~0ULL, 8},
      {"place of a segment", sizeof(Elf64_Ehdr) + offsetof(Elf64_Phdr, p_offset), 1ULL << 40, 8},
  };
  for (const auto& [name, offset, value, size] : spoilt) {
    std::string bytes = whole;
    std::memcpy(bytes.data() + offset, &value, size);
    EXPECT_NE(reason(bytes), "") << name;
  }
}

TEST(PluginFolder, OnlyAnAbsolutePathIsTakenFromTheEnvironment) {
  std::string error;
  setenv("SONIVO_PLUGINS", "plugins", 1);
  EXPECT_THAT(plugin_folder(&error), testing::EndsWith("/plugins"));
  EXPECT_THAT(plugin_folder(&error), StartsWith("/"));
  EXPECT_EQ(error, "SONIVO_PLUGINS is ignored: “plugins” is not an absolute path");
  error.clear();
  setenv("SONIVO_PLUGINS", "/opt/plugins", 1);
  EXPECT_EQ(plugin_folder(&error), "/opt/plugins");
  EXPECT_EQ(error, "");
  unsetenv("SONIVO_PLUGINS");
}

#include "host/svc/tabulon_paths.h"

#include "host/svc/scoped_env.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

namespace svc = tabulon::svc;
namespace fs = std::filesystem;
using tabulon::test::ScopedEnv;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

TEST(TabulonPaths, ConfigFolderComesFromTabulonHomeThenXdgThenHome) {
  ScopedEnv env;
  env.set("TABULON_HOME", "/tmp/th");
  env.set("XDG_CONFIG_HOME", "/tmp/xdg");
  env.set("HOME", "/tmp/home");
  EXPECT_EQ(svc::configDir(), fs::path("/tmp/th"));
  env.set("TABULON_HOME", std::nullopt);
  EXPECT_EQ(svc::configDir(), fs::path("/tmp/xdg/tabulon"));
  env.set("XDG_CONFIG_HOME", "");
  EXPECT_EQ(svc::configDir(), fs::path("/tmp/home/.config/tabulon"));
  EXPECT_EQ(svc::optionsIniPath(), fs::path("/tmp/home/.config/tabulon/options.ini"));
}

TEST(TabulonPaths, LibraryFromOverrideThenTabulonIniThenDataFolder) {
  ScratchDir dir;
  ScopedEnv env;
  env.set("TABULON_HOME", dir.path().string());
  env.set("XDG_DATA_HOME", "/tmp/data");
  svc::setLibraryOverride({});
  EXPECT_EQ(svc::libraryDir(), fs::path("/tmp/data/tabulon/Cards"));
  EXPECT_EQ(svc::wordLibPath(), fs::path("/tmp/data/tabulon/wordlib.txt"));

  writeFile(dir / "tabulon.ini", "[Paths]\nLibrary=cards here\nWordLib=/abs/words.txt\n");
  EXPECT_EQ(svc::libraryDir(), dir.path() / "cards here");  // relative to the config folder
  EXPECT_EQ(svc::wordLibPath(), fs::path("/abs/words.txt"));

  env.set("HOME", "/tmp/me");
  writeFile(dir / "tabulon.ini", "[Paths]\nLibrary=~/Cards\n");
  EXPECT_EQ(svc::libraryDir(), fs::path("/tmp/me/Cards"));

  svc::setLibraryOverride("/opt/lib");
  EXPECT_EQ(svc::libraryDir(), fs::path("/opt/lib"));
  svc::setLibraryOverride({});
  EXPECT_EQ(svc::libraryDir(), fs::path("/tmp/me/Cards"));
}

TEST(TabulonPaths, LocaleFromTabulonIniThenEnvironmentThenChinese) {
  ScratchDir dir;
  ScopedEnv env;
  env.set("TABULON_HOME", dir.path().string());
  env.set("LC_ALL", std::nullopt);
  env.set("LC_MESSAGES", std::nullopt);
  env.set("LANG", std::nullopt);
  EXPECT_EQ(svc::configuredLocale(), "zh_CN");
  env.set("LANG", "en_GB.UTF-8");
  EXPECT_EQ(svc::configuredLocale(), "en_GB");
  env.set("LC_ALL", "C.UTF-8");  // names no language: the next variable decides
  EXPECT_EQ(svc::configuredLocale(), "en_GB");
  env.set("LC_ALL", "de_DE@euro");
  EXPECT_EQ(svc::configuredLocale(), "de_DE");
  writeFile(dir / "tabulon.ini", "[Paths]\nLocale=zh_CN.GB18030\n");
  EXPECT_EQ(svc::configuredLocale(), "zh_CN");
}

#include "host/rx/qa_string_table.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace fs = std::filesystem;

// Every id that the code loads with KrmLoadString(id, literal) has a text in the
// product's Chinese table.
TEST(StringIds, ChineseTableHasEveryIdTheCodeUses) {
  const auto table = QaStringTable::load(tabulon::test::sourceDir() / "resources" / "strings" / "zh_CN.ini");
  const std::regex call(R"(KrmLoadString\(\s*(\d+)\s*,)");
  std::set<unsigned> used;
  for (const auto& entry : fs::recursive_directory_iterator(tabulon::test::sourceDir() / "src")) {
    const auto ext = entry.path().extension();
    if (!entry.is_regular_file() || (ext != ".cpp" && ext != ".h")) continue;
    const auto text = tabulon::test::readFile(entry.path());
    for (std::sregex_iterator it(text.begin(), text.end(), call), end; it != end; ++it) {
      const unsigned id = static_cast<unsigned>(std::stoul((*it)[1].str()));
      used.insert(id);
      EXPECT_TRUE(table.find(id).has_value()) << "id " << id << " used in " << entry.path();
    }
  }
  // The shell's own texts are among them.
  EXPECT_TRUE(used.count(105));
  EXPECT_TRUE(used.count(159));
}

#include "host/rx/qa_string_table.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace {

struct SourceFile {
  fs::path path;
  std::string text;
};

std::vector<SourceFile> sources() {
  std::vector<SourceFile> out;
  for (const auto& entry : fs::recursive_directory_iterator(tabulon::test::sourceDir() / "src")) {
    const auto ext = entry.path().extension();
    if (entry.is_regular_file() && (ext == ".cpp" || ext == ".h"))
      out.push_back({entry.path(), tabulon::test::readFile(entry.path())});
  }
  return out;
}

}  // namespace

// Every id that the code loads with KrmLoadString(id, literal), written as a number or
// as a named integer constant, has a text in the product's Chinese table.
TEST(StringIds, ChineseTableHasEveryIdTheCodeUses) {
  const auto table = QaStringTable::load(tabulon::test::sourceDir() / "resources" / "strings" / "zh_CN.ini");
  const auto files = sources();
  const std::regex constant(R"(\b(k\w+)\s*=\s*(\d{2,4})\s*;)");
  const std::regex call(R"(KrmLoadString\(\s*(\w+)\s*,)");
  std::map<std::string, unsigned> constants;
  for (const auto& file : files)
    for (std::sregex_iterator it(file.text.begin(), file.text.end(), constant), end; it != end; ++it)
      constants[(*it)[1].str()] = static_cast<unsigned>(std::stoul((*it)[2].str()));

  std::set<unsigned> used;
  for (const auto& file : files) {
    for (std::sregex_iterator it(file.text.begin(), file.text.end(), call), end; it != end; ++it) {
      const std::string arg = (*it)[1].str();
      unsigned id = 0;
      if (std::isdigit(static_cast<unsigned char>(arg[0]))) id = static_cast<unsigned>(std::stoul(arg));
      else if (auto c = constants.find(arg); c != constants.end()) id = c->second;
      else continue;  // a variable: the call site passes an id it got elsewhere
      used.insert(id);
      EXPECT_TRUE(table.find(id).has_value()) << "id " << id << " (" << arg << ") used in " << file.path;
    }
  }
  // The shell's own ids are among those found.
  for (unsigned id : {105u, 159u}) EXPECT_TRUE(used.count(id)) << id;
}

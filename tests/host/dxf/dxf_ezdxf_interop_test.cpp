// Every drawing we write must pass the independent reader's audit.
#include "dxf_test_util.h"

#include "host/dxf/dxf_error.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;
namespace fs = std::filesystem;

namespace {

// Audits every file of a folder and prints one line per file. The originals
// pass this reader's audit without errors (but one, whose errors are of kinds a
// file we write cannot have), so a saved file must have none at all.
const char* kAuditScript = R"PY(
import sys, os, ezdxf
folder = sys.argv[1]
for name in sorted(os.listdir(folder)):
    try:
        doc = ezdxf.readfile(os.path.join(folder, name))
    except Exception as e:
        print('BAD', name, 'does not load: %s: %s' % (type(e).__name__, e))
        continue
    a = doc.audit()
    print(('BAD ' if a.errors else 'OK ') + name + ' ' + '; '.join(e.message for e in a.errors[:3]))
)PY";

}  // namespace

TEST(DxfEzdxfInterop, SavedFixturesPassTheAuditOfAnIndependentReader) {
  ASSERT_TRUE(tabulon::test::ezdxfAvailable());
  tabulon::test::ScratchDir scratch;
  int saved = 0;
  for (const auto& e : fs::directory_iterator(tabulon::test::fixturesDir())) {
    if (e.path().extension() != ".dxf") continue;
    QaDbDatabase db(false);
    try {
      dxfLoadFile(e.path(), db);
    } catch (const DxfError&) {
      continue;  // the broken fixtures may fail to load; covered elsewhere
    }
    dxfSaveFile(db, scratch / e.path().filename().string());
    ++saved;
  }
  ASSERT_GE(saved, 28);
  auto result = tabulon::test::runPython(kAuditScript, {scratch.path().string()});
  ASSERT_EQ(result.exitCode, 0) << result.output;
  EXPECT_EQ(result.output.find("BAD"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("OK libredwg_example_r12.dxf"), std::string::npos) << result.output;
}

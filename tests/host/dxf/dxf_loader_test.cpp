// Reading drawings: bad input fails clearly and leaves the database alone;
// flaws that can be repaired are repaired and reported; text of every
// encoding reads right.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"

#include "host/dxf/dxf_error.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <regex>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;
using namespace std::string_literals;

namespace {

std::string examplePage() {
  QaDbDatabase db;
  buildExamplePage(db);
  return saveText(db);
}

std::string fixture(const std::string& name) { return (tabulon::test::fixturesDir() / name).string(); }

// Replaces the first `from` in `text` (which must be there).
std::string replaceFirst(std::string text, const std::string& from, const std::string& to) {
  auto at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

bool hasFinding(const DxfLoadInfo& info, const std::string& part) {
  for (const auto& f : info.audit.findings())
    if (f.message.find(part) != std::string::npos) return true;
  return false;
}

}  // namespace

TEST(DxfLoader, BadInputFailsWithFileLineAndLeavesTheDatabaseAlone) {
  const std::string good = examplePage();
  struct Case {
    const char* what;
    std::string text;
    std::string expected;  // a regular expression for what()
  };
  const std::vector<Case> cases = {
      {"empty", "", "bad\\.dxf: the file is empty"},
      {"blank", "\n\n  \n", "bad\\.dxf:1: the file is empty"},
      {"truncated after a group code", good.substr(0, good.find("ENTITIES") + 9) + "  0\nLINE\n  5\n",
       "bad\\.dxf:[0-9]+: group code 5: file ends after the group code"},
      {"truncated inside a section", good.substr(0, good.find("ENTITIES") + 9),
       "bad\\.dxf:[0-9]+: the file ends inside section ENTITIES \\(begun at line [0-9]+\\), before its ENDSEC"},
      {"group code not a number", replaceFirst(good, "100\nAcDbLine", "1OO\nAcDbLine"),
       "bad\\.dxf:[0-9]+: expected a group code, found \"1OO\""},
      {"missing ENDSEC", replaceFirst(good, "  0\nENDSEC\n  0\nSECTION\n  2\nOBJECTS", "  0\nSECTION\n  2\nOBJECTS"),
       "bad\\.dxf:[0-9]+: group code 0: section ENTITIES \\(begun at line [0-9]+\\) ends at \"SECTION\" without its ENDSEC"},
      {"binary garbage", "\x7f\x45\x4c\x46\x02\x01\x01\x00\x00\x00"s, "bad\\.dxf:1: binary data where a group code was expected"},
      {"binary DXF cut inside a value", "AutoCAD Binary DXF\r\n\x1a\x00 \x00"s,
       "bad\\.dxf: group code 32: binary DXF: the file ends inside the value of group code 32 \\(tag 1 at byte offset 22\\)"},
      {"not a number", replaceFirst(good, "100\nAcDbLine\n 10\n", "100\nAcDbLine\n 10\nzero\n 20\n"),
       "bad\\.dxf:[0-9]+: group code 10: not a number: \"zero\""},
      {"no sections", "  0\nLINE\n  8\n0\n  0\nEOF\n", "bad\\.dxf:5: group code 0: EOF before any SECTION"},
  };
  for (const auto& c : cases) {
    QaDbDatabase db;  // a drawing with content of its own
    buildExamplePage(db);
    std::size_t before = db.numObjects();
    try {
      dxfLoad(c.text, "bad.dxf", db);
      ADD_FAILURE() << c.what << ": no error";
    } catch (const DxfError& e) {
      EXPECT_TRUE(std::regex_search(e.what(), std::regex(c.expected))) << c.what << ": " << e.what();
    }
    EXPECT_EQ(db.numObjects(), before) << c.what;
    EXPECT_FALSE(findText(db, L"技术要求").empty()) << c.what;
  }
}

TEST(DxfLoader, ReadsTextInEveryEncoding) {
  struct Case {
    const char* file;
    const char* encoding;
    std::wstring text;  // part of a TEXT, MTEXT, ATTRIB or ATTDEF, or a layer name
  };
  const std::vector<Case> cases = {
      {"sdcad_Project3_R2000_gbk.dxf", "ANSI_936", L"楷体_GB2312|b0|i0|c134|p49;层\\P底\\P深\\P度"},
      {"sdcad_poumiantu2_R2000_gbk_nocodepage.dxf", "ANSI_936", L"稳定水位线"},
      {"sdcad_zuankong_tuli_R2004_gbk.dxf", "ANSI_936", L"机钻取土孔"},
      {"zcad_text_chinese_U+escapes.dxf", "ANSI_1251", L"text:管 井 技 术 要 求 表"},
      {"libredwg_2013_gh109_1_cjk_utf8.dxf", "UTF-8", L"洁具"},
      {"librecad_sheet_A4_1_draw_dxflib.dxf", "ANSI_1252", L"Дата"},
      {"acadsharp_sample_AC1032_ascii_multiline_attrib.dxf", "UTF-8", L"my multi line text for the attrrib"},
  };
  for (const auto& c : cases) {
    DxfLoadInfo info;
    auto db = loadPath(fixture(c.file), &info);
    EXPECT_EQ(info.encoding, c.encoding) << c.file;
    bool found = !findText(*db, c.text).empty();
    if (!found) {
      auto* layers = QaDbLayerTable::cast(db->layerTableId().rawObject());
      for (QaDbObjectId id : layers->recordIds())
        found = found || QaDbSymbolTableRecord::cast(id.rawObject())->name().find(c.text) != std::wstring::npos;
      auto* blocks = QaDbBlockTable::cast(db->blockTableId().rawObject());
      for (QaDbObjectId id : blocks->recordIds())
        found = found || QaDbSymbolTableRecord::cast(id.rawObject())->name().find(c.text) != std::wstring::npos;
    }
    EXPECT_TRUE(found) << c.file;
  }
}

TEST(DxfLoader, RepairsWhatCanBeRepairedAndSaysSo) {
  const std::string good = examplePage();
  struct Case {
    const char* what;
    std::string text;
    std::string finding;
  };
  const std::vector<Case> cases = {
      {"unregistered application",
       replaceFirst(good, "AcDbLine\n", "AcDbLine\n 10\n1.0\n 20\n1.0\n 30\n0.0\n 11\n2.0\n 21\n2.0\n 31\n0.0\n1001\nNOT_REGISTERED\n1000\nx\n  0\nLINE\n  5\nFFF0\n330\n12\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n"),
       "application \"NOT_REGISTERED\" of extended data is not in the APPID table; added"},
      {"dangling group member", replaceFirst(good, "340\n21\n", "340\n21\n340\nABCDE\n"),
       "group member ABCDE names no object; dropped"},
      {"missing reactor", replaceFirst(good, "102\n{ACAD_REACTORS\n330\n2C\n102\n}\n", ""),
       "had no reactor to its group; added"},
      {"duplicate handle", replaceFirst(good, "  5\n22\n", "  5\n21\n"), "duplicate handle 21; renumbered to"},
      {"missing owner", replaceFirst(good, "  5\n23\n102\n{ACAD_REACTORS\n330\n2C\n102\n}\n330\n12\n", "  5\n23\n102\n{ACAD_REACTORS\n330\n2C\n102\n}\n"),
       "1 object without an owner"},
      {"stray ENDSEC", replaceFirst(good, "  0\nSECTION\n  2\nENTITIES", "  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES"),
       "ENDSEC without a SECTION before it; ignored"},
  };
  for (const auto& c : cases) {
    DxfLoadInfo info;
    auto db = loadText(c.text, &info);
    EXPECT_TRUE(hasFinding(info, c.finding)) << c.what << ": " << (info.audit.empty() ? "no findings" : info.audit.lines().front());
    // What was repaired stays repaired: the saved drawing reads without findings.
    DxfLoadInfo again;
    loadText(saveText(*db), &again);
    EXPECT_TRUE(again.audit.empty()) << c.what << ": " << again.audit.lines().front();
  }
}

TEST(DxfLoader, AttributesWithoutSeqendAndStrayRecordsAreRepaired) {
  std::string good = examplePage();
  // The SEQEND of the reference removed: the attributes still belong to it.
  auto at = good.find("  0\nSEQEND\n");
  auto next = good.find("  0\n", at + 4);
  std::string text = good.substr(0, at) + good.substr(next);
  DxfLoadInfo info;
  auto db = loadText(text, &info);
  EXPECT_TRUE(hasFinding(info, "INSERT with attributes but no SEQEND; one was added"));
  const QaDbBlockReference* ref = nullptr;
  for (QaDbObjectId id : db->objectIds())
    if (auto* r = QaDbBlockReference::cast(id.rawObject())) ref = r;
  ASSERT_NE(ref, nullptr);
  EXPECT_EQ(ref->attributeIds().size(), 4u);
  EXPECT_NE(saveText(*db).find("  0\nSEQEND\n"), std::string::npos);

  // An ATTRIB that follows no reference is dropped.
  std::string stray = replaceFirst(good, "  0\nMTEXT\n", "  0\nATTRIB\n  8\n0\n  1\nlost\n  2\nTAG\n  0\nMTEXT\n");
  DxfLoadInfo info2;
  loadText(stray, &info2);
  EXPECT_TRUE(hasFinding(info2, "ATTRIB without its POLYLINE or INSERT dropped"));
}

TEST(DxfLoader, BrokenFixturesLoadWithRepairs) {
  DxfLoadInfo info;
  auto db = loadPath(fixture("ezdxf_recover02_broken.dxf"), &info);
  EXPECT_TRUE(hasFinding(info, "table BLOCK_RECORD has no TABLE head; one was made"));
  EXPECT_EQ(summarize(*db).typeCounts["TEXT"], 59);

  DxfLoadInfo info1;
  auto db1 = loadPath(fixture("ezdxf_recover01_broken.dxf"), &info1);
  EXPECT_TRUE(hasFinding(info1, "tags outside any section"));
  EXPECT_TRUE(hasFinding(info1, "no EOF"));
  EXPECT_EQ(summarize(*db1).typeCounts["LINE"], 1441);

  DxfLoadInfo info2;
  auto db2 = loadPath(fixture("ezdxf_duplicate_handles_r13.dxf"), &info2);
  int duplicates = 0;
  for (const auto& f : info2.audit.findings()) duplicates += f.message.find("duplicate handle") != std::string::npos;
  EXPECT_GT(duplicates, 10);
  std::set<std::uint64_t> handles;
  for (QaDbObjectId id : db2->objectIds()) EXPECT_TRUE(handles.insert(id.handle().value()).second);
}

TEST(DxfLoader, KeepsUnknownSectionsCommentsAndClasses) {
  std::string text = "999\nwritten by a test\n" + examplePage();
  text = replaceFirst(text, "  0\nSECTION\n  2\nOBJECTS",
                      "  0\nSECTION\n  2\nTHUMBNAILIMAGE\n 90\n3\n310\nABCDEF\n  0\nENDSEC\n  0\nSECTION\n  2\nOBJECTS");
  text = replaceFirst(text, "  2\nENTITIES\n", "  2\nENTITIES\n999\nmodel space follows\n");
  text = replaceFirst(text, "  2\nCLASSES\n", "  2\nCLASSES\n  0\nCLASS\n  1\nMYCLASS\n  2\nAcDbMyClass\n  3\nMyApp\n 90\n0\n280\n0\n281\n1\n");
  auto db = loadText(text);
  std::string saved = saveText(*db);
  EXPECT_EQ(saved.rfind("999\nwritten by a test\n", 0), 0u);
  EXPECT_NE(saved.find("  2\nENTITIES\n999\nmodel space follows\n"), std::string::npos);
  EXPECT_NE(saved.find("  2\nTHUMBNAILIMAGE\n 90\n3\n310\nABCDEF\n  0\nENDSEC\n  0\nSECTION\n  2\nOBJECTS"), std::string::npos);
  EXPECT_NE(saved.find("  0\nCLASS\n  1\nMYCLASS\n  2\nAcDbMyClass\n  3\nMyApp\n 90\n0\n280\n0\n281\n1\n"), std::string::npos);
}

TEST(DxfLoader, ReadsFromStandardInputPathIsDash) {
  // A path that names a folder is refused clearly.
  tabulon::test::ScratchDir dir;
  QaDbDatabase db(false);
  try {
    dxfLoadFile(dir.path(), db);
    ADD_FAILURE() << "a folder loaded";
  } catch (const DxfError& e) {
    EXPECT_NE(std::string(e.what()).find("is a folder"), std::string::npos) << e.what();
  }
}

TEST(DxfLoader, BlockBoundariesOutsideTheBlocksSectionAreDropped) {
  // Found by fuzzing: a BLOCK among the entities was kept as an unknown entity
  // and, written inside its block, broke the file on the next read.
  std::string text = replaceFirst(examplePage(), "  0\nMTEXT\n", "  0\nBLOCK\n  2\nX\n 70\nbad\n  0\nENDBLK\n  0\nMTEXT\n");
  DxfLoadInfo info;
  auto db = loadText(text, &info);
  EXPECT_TRUE(hasFinding(info, "BLOCK outside the BLOCKS section dropped"));
  EXPECT_TRUE(hasFinding(info, "ENDBLK outside the BLOCKS section dropped"));
  DxfLoadInfo again;
  loadText(saveText(*db), &again);
  EXPECT_TRUE(again.audit.empty());
}

namespace {

// Style and block of every text, attribute and reference, by name.
std::vector<std::wstring> namedRecords(const QaDbDatabase& db) {
  auto nameOf = [](QaDbObjectId id) {
    auto* rec = QaDbSymbolTableRecord::cast(id.rawObject());
    return rec ? rec->name() : std::wstring(L"(none)");
  };
  std::vector<std::wstring> out;
  for (QaDbObjectId id : db.objectIds()) {
    QaDbObject* o = id.rawObject();
    if (auto* m = QaDbMText::cast(o)) out.push_back(L"MTEXT " + nameOf(m->textStyle()));
    else if (auto* t = QaDbText::cast(o)) out.push_back(o->dxfType() + L" " + nameOf(t->textStyle()));
    else if (auto* r = QaDbBlockReference::cast(o)) out.push_back(L"INSERT " + nameOf(r->blockTableRecord()));
  }
  return out;
}

}  // namespace

// Styles and blocks are found by name wherever their records stand in the file: before
// the entities, made for a BLOCK without a record, named in another case, or missing.
TEST(DxfLoader, NamesOfStylesAndBlocksResolveWhereverTheRecordStands) {
  const std::string good = examplePage();
  const std::vector<std::wstring> expected = namedRecords(*loadText(good));
  ASSERT_FALSE(expected.empty());
  for (const std::wstring& e : expected) EXPECT_EQ(e.find(L"(none)"), std::wstring::npos) << e;

  // Names in another case find the same records.
  std::string lower = good;
  for (std::size_t at = 0; (at = lower.find("\n  7\nHZ\n", at)) != std::string::npos; at += 8) lower.replace(at, 8, "\n  7\nhz\n");
  const auto ref = lower.find("  0\nINSERT\n");
  ASSERT_NE(ref, std::string::npos);
  lower.replace(lower.find("\n  2\nTITLE\n", ref), 11, "\n  2\ntitle\n");
  DxfLoadInfo lowerInfo;
  EXPECT_EQ(namedRecords(*loadText(lower, &lowerInfo)), expected);

  // A style the table lacks is made and reported; the texts naming it get it.
  std::string missing = replaceFirst(good, "\n  7\nHZ\n", "\n  7\nNEWSTYLE\n");
  DxfLoadInfo missingInfo;
  auto db = loadText(missing, &missingInfo);
  EXPECT_TRUE(hasFinding(missingInfo, "text style \"NEWSTYLE\" is not in the STYLE table; added"));
  const auto names = namedRecords(*db);
  EXPECT_EQ(std::count_if(names.begin(), names.end(), [](const std::wstring& n) { return n.ends_with(L" NEWSTYLE"); }), 1);

  // A reference to a block nobody defines is reported and left without a block.
  std::string undefined = good;
  const auto insert = undefined.find("  0\nINSERT\n");
  ASSERT_NE(insert, std::string::npos);
  const auto nameAt = undefined.find("\n  2\nTITLE\n", insert);
  undefined.replace(nameAt, 11, "\n  2\nNOWHERE\n");
  DxfLoadInfo undefinedInfo;
  auto db2 = loadText(undefined, &undefinedInfo);
  EXPECT_TRUE(hasFinding(undefinedInfo, "INSERT of block \"NOWHERE\" that is not defined"));
  const auto names2 = namedRecords(*db2);
  EXPECT_NE(std::find(names2.begin(), names2.end(), L"INSERT (none)"), names2.end());
}

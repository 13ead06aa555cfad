// Writing drawings: unchanged objects come out byte for byte, changed ones
// from their fields with what was not modelled, every version from R2000 to
// R2018, handles and application names consistent, and a failed save never
// harms the file it was to replace.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"

#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_tag_reader.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;
namespace fs = std::filesystem;

namespace {

std::string fixture(const std::string& name) { return (tabulon::test::fixturesDir() / name).string(); }

// The example page as a drawing file.
std::string examplePageText() {
  QaDbDatabase built;
  buildExamplePage(built);
  return saveText(built);
}

// The first attribute definition of a drawing; null when it has none.
QaDbObjectId firstAttributeDefinition(const QaDbDatabase& db) {
  for (QaDbObjectId id : db.objectIds())
    if (QaDbAttributeDefinition::cast(id.rawObject())) return id;
  return QaDbObjectId();
}

// The text with CR LF line ends turned into LF.
std::string withoutCarriageReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

// The text of one section, SECTION to ENDSEC.
std::string section(const std::string& text, const std::string& name) {
  auto begin = text.find("SECTION\n  2\n" + name + "\n");
  if (begin == std::string::npos) begin = text.find("SECTION\r\n  2\r\n" + name + "\r\n");
  auto end = text.find("ENDSEC", begin);
  return begin == std::string::npos ? std::string() : text.substr(begin, end - begin);
}

// The handle of every object (5, or 105 for DIMSTYLE, right after its type) and the $HANDSEED.
struct Handles {
  std::vector<std::uint64_t> all;
  std::uint64_t seed = 0;
  std::string version;
};

Handles scanHandles(const std::string& text) {
  Handles h;
  DxfTagReader reader(text, "out.dxf");
  DxfTag tag;
  std::string_view var;
  bool afterType = false;
  while (reader.next(tag)) {
    bool first = afterType;
    afterType = tag.code == 0;
    if (tag.code == 9) var = tag.value;
    else if (var == "$HANDSEED" && tag.code == 5) h.seed = *dxfParseHandle(tag.value), var = {};
    else if (var == "$ACADVER" && tag.code == 1) h.version = tag.value, var = {};
    else if (first && (tag.code == 5 || tag.code == 105)) h.all.push_back(dxfParseHandle(tag.value).value_or(0));
  }
  return h;
}

// Writes the first `limit` bytes to a real file, then fails as a full disk would.
class FailingFileSink : public DxfSink {
 public:
  FailingFileSink(const fs::path& path, std::size_t limit) : file_(path), limit_(limit) {}
  void write(std::string_view bytes) override {
    if (written_ + bytes.size() > limit_) throw DxfError("", 0, DxfError::kNoGroupCode, "no space left on device");
    file_.write(bytes);
    written_ += bytes.size();
  }
  void finish() override { file_.finish(); }

 private:
  DxfFileSink file_;
  std::size_t limit_;
  std::size_t written_ = 0;
};

}  // namespace

TEST(DxfWriter, UnchangedObjectsAreWrittenByteForByte) {
  for (const char* name : {"acadsharp_sample_AC1032_ascii_multiline_attrib.dxf", "sdcad_Project3_R2000_gbk.dxf",
                           "hanochhu_2308PM-04-T3-2429_pid_attribs.dxf"}) {
    std::string original = tabulon::test::readFile(fixture(name));
    auto db = loadPath(fixture(name));
    std::string saved = saveText(*db);
    // The line ends of the file (CR LF or LF) are kept too.
    EXPECT_EQ(saved.find("\r\n") != std::string::npos, original.find("\r\n") != std::string::npos) << name;
    EXPECT_TRUE(section(saved, "ENTITIES") == section(original, "ENTITIES")) << name;
    EXPECT_FALSE(section(saved, "ENTITIES").empty());
  }
}

TEST(DxfWriter, ChangedTextKeepsItsOtherValuesAsTheyWere) {
  std::string original = tabulon::test::readFile(fixture("ezdxf_text_attribs_mtext.dxf"));
  auto db = loadPath(fixture("ezdxf_text_attribs_mtext.dxf"));
  QaDbObjectId textId;
  for (QaDbObjectId id : db->objectIds())
    if (QaDbText::cast(id.rawObject()) && !QaDbAttribute::cast(id.rawObject()) &&
        !QaDbAttributeDefinition::cast(id.rawObject()) && textId.isNull())
      textId = id;
  ASSERT_FALSE(textId.isNull());
  std::string handle = textId.handle().ascii();
  auto objectText = [&](const std::string& file) {
    auto at = file.find("  0\r\nTEXT\r\n  5\r\n" + handle + "\r\n");
    if (at == std::string::npos) at = file.find("  0\nTEXT\n  5\n" + handle + "\n");
    std::string text = file.substr(at, file.find("  0\n", at + 4) - at);
    text = text.substr(0, text.find("  0\r\n", 4));
    std::erase(text, '\r');
    return text;
  };
  std::string before = objectText(original);
  {
    QaDbObjectPointer<QaDbText> text(textId, QaDb::kForWrite);
    text->setTextString(L"新的文字");
  }
  std::string after = objectText(saveText(*db));
  EXPECT_NE(after.find("  1\n\xE6\x96\xB0\xE7\x9A\x84\xE6\x96\x87\xE5\xAD\x97\n"), std::string::npos) << after;
  // Every line of the original but the text itself is still there, in order.
  std::string expected = before;
  auto textAt = expected.find("\n  1\n") + 5;
  expected.replace(textAt, expected.find('\n', textAt) - textAt, "\xE6\x96\xB0\xE7\x9A\x84\xE6\x96\x87\xE5\xAD\x97");
  EXPECT_EQ(after, expected);
}

TEST(DxfWriter, WritesEveryVersionWithHandlesBelowTheSeed) {
  struct Case {
    const char* file;
    std::optional<DxfVersion> version;
    const char* expected;
  };
  const std::vector<Case> cases = {
      {"libredwg_example_r12.dxf", std::nullopt, "AC1015"},
      {"ezdxf_duplicate_handles_r13.dxf", std::nullopt, "AC1015"},
      {"libredwg_example_r14.dxf", std::nullopt, "AC1015"},
      {"sdcad_zuankong_tuli_R2004_gbk.dxf", std::nullopt, "AC1018"},
      {"hanochhu_Drawing3.dxf", DxfVersion::R2000, "AC1015"},
      {"sdcad_Project3_R2000_gbk.dxf", DxfVersion::R2018, "AC1032"},
      {"libredwg_example_2018.dxf", DxfVersion::R2010, "AC1024"},
      {"ezdxf_groups_bricscad.dxf", DxfVersion::R2007, "AC1021"},
  };
  for (const auto& c : cases) {
    auto db = loadPath(fixture(c.file));
    DrawingSummary before = summarize(*db);
    DxfWriteOptions options;
    options.version = c.version;
    std::string saved = saveText(*db, options);
    Handles h = scanHandles(saved);
    EXPECT_EQ(h.version, c.expected) << c.file;
    std::set<std::uint64_t> unique(h.all.begin(), h.all.end());
    EXPECT_EQ(unique.size(), h.all.size()) << c.file << ": a handle is used twice";
    ASSERT_FALSE(unique.empty());
    EXPECT_GT(h.seed, *unique.rbegin()) << c.file;
    EXPECT_EQ(unique.count(0), 0u) << c.file;
    DxfLoadInfo info;
    auto back = loadText(saved, &info);
    EXPECT_EQ(summarize(*back).texts, before.texts) << c.file;
    EXPECT_EQ(summarize(*back).typeCounts, before.typeCounts) << c.file;
  }
}

TEST(DxfWriter, OlderVersionsKeepChineseInTheCodePage) {
  auto db = loadPath(fixture("hanochhu_Drawing3.dxf"));  // R2013: UTF-8, header ANSI_936
  std::string saved = withoutCarriageReturns(saveText(*db, DxfWriteOptions{DxfVersion::R2000}));
  EXPECT_NE(saved.find("$DWGCODEPAGE\n  3\nANSI_936\n"), std::string::npos);
  EXPECT_NE(saved.find("\xB2\xBC\xBE\xD6\x31"), std::string::npos);  // "布局1" in GBK
  EXPECT_EQ(saved.find("\xE5\xB8\x83\xE5\xB1\x80"), std::string::npos);  // and not in UTF-8
  // Characters the code page lacks become escapes that read back as they were.
  QaDbDatabase fresh;
  fresh.setCodePage("ANSI_1252");
  auto mtext = std::make_unique<QaDbMText>();
  mtext->setContents(L"温度 25°C");
  addTo(fresh.modelSpaceId(), std::move(mtext));
  std::string latin = saveText(fresh, DxfWriteOptions{DxfVersion::R2004});
  EXPECT_NE(latin.find("\\U+6E29\\U+5EA6 25\xB0" "C"), std::string::npos);
  EXPECT_EQ(findText(*loadText(latin), L"温度"), L"温度 25°C");
}

TEST(DxfWriter, NewObjectsGetFreshHandlesAndTheirApplicationsARecord) {
  auto db = loadPath(fixture("libredwg_example_2000.dxf"));
  std::uint64_t seed = db->handseed().value();
  auto line = std::make_unique<QaDbLine>(QaGePoint3d(0, 0, 0), QaGePoint3d(1, 1, 0));
  line->setXData(L"BRAND_NEW_APP", {QaDbXDataItem::string(L"v")});
  QaDbObjectId id = addTo(db->modelSpaceId(), std::move(line));
  EXPECT_GE(id.handle().value(), seed);
  std::string saved = withoutCarriageReturns(saveText(*db));
  EXPECT_NE(saved.find("  0\nAPPID\n"), std::string::npos);
  EXPECT_NE(saved.find("  2\nBRAND_NEW_APP\n"), std::string::npos);
  DxfLoadInfo info;
  auto back = loadText(saved, &info);
  EXPECT_TRUE(info.audit.empty()) << info.audit.lines().front();
  EXPECT_EQ(back->objectIdFromHandle(id.handle()).rawObject()->xData(L"BRAND_NEW_APP").at(0).asString(), L"v");
}

TEST(DxfWriter, CopiesFromAnotherDrawingKeepWhatWasNotModelled) {
  // Entities of a GBK R2000 drawing copied into a new R2018 one: text re-encoded,
  // unmodelled tags kept, references into the old drawing not carried over.
  auto source = loadPath(fixture("sdcad_zuankong_tuli_R2004_gbk.dxf"));
  std::vector<QaDbObjectId> ids;
  for (QaDbObjectId id : QaDbBlockTableRecord::cast(source->modelSpaceId().rawObject())->liveEntityIds()) ids.push_back(id);
  std::unique_ptr<QaDbDatabase> copy;
  ASSERT_EQ(source->wblock(copy, ids, QaGePoint3d()), Qa::eOk);
  DxfLoadInfo info;
  auto back = loadText(saveText(*copy), &info);
  EXPECT_TRUE(info.audit.empty()) << info.audit.lines().front();
  EXPECT_EQ(summarize(*back).texts.size(), summarize(*copy).texts.size());
  std::set<std::wstring> before, after;
  for (const auto& [h, t] : summarize(*copy).texts) before.insert(t);
  for (const auto& [h, t] : summarize(*back).texts) after.insert(t);
  EXPECT_EQ(before, after);
}

TEST(DxfWriter, FailedSaveKeepsTheOldFile) {
  tabulon::test::ScratchDir dir;
  fs::path target = dir / "card.dxf";
  tabulon::test::writeFile(target, "the old drawing");
  auto db = loadPath(fixture("libredwg_example_2000.dxf"));
  try {
    dxfSaveFile(*db, target, {}, [](const fs::path& temp) { return std::make_unique<FailingFileSink>(temp, 300000); });
    ADD_FAILURE() << "the save did not fail";
  } catch (const DxfError& e) {
    EXPECT_NE(std::string(e.what()).find("card.dxf: no space left on device"), std::string::npos) << e.what();
  }
  EXPECT_EQ(tabulon::test::readFile(target), "the old drawing");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);  // no temporary left

  // A target that cannot be replaced (a folder of that name) or a folder that does not exist.
  fs::create_directory(dir / "taken.dxf");
  EXPECT_THROW(dxfSaveFile(*db, dir / "taken.dxf"), DxfError);
  EXPECT_TRUE(fs::is_directory(dir / "taken.dxf"));
  try {
    dxfSaveFile(*db, dir / "missing" / "x.dxf");
    ADD_FAILURE() << "saved into a missing folder";
  } catch (const DxfError& e) {
    EXPECT_NE(std::string(e.what()).find("missing/x.dxf: cannot create the file"), std::string::npos) << e.what();
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 2);

  // And a save that succeeds replaces the old file.
  dxfSaveFile(*db, target);
  EXPECT_EQ(withoutCarriageReturns(tabulon::test::readFile(target)).substr(0, 14), "  0\nSECTION\n  ");
}

// A record renamed after loading: every text, attribute and reference that uses it
// names it by its new name in the saved file (their original tags carry the old one).
TEST(DxfWriter, RenamedRecordsAreNamedAnewByWhatUsesThem) {
  const std::string page = examplePageText();
  struct Case {
    const char* what;
    QaDbObjectId (*table)(const QaDbDatabase&);
    const wchar_t* from;
    const wchar_t* to;
  };
  const Case cases[] = {
      {"text style", [](const QaDbDatabase& db) { return db.textStyleTableId(); }, L"HZ", L"仿宋体"},
      {"block", [](const QaDbDatabase& db) { return db.blockTableId(); }, L"TITLE", L"TITLE_BLOCK"},
  };
  for (const Case& c : cases) {
    auto db = loadText(page);
    std::size_t users = 0;
    {
      auto* table = QaDbSymbolTable::cast(c.table(*db).rawObject());
      ASSERT_NE(table, nullptr) << c.what;
      QaDbObjectPointer<QaDbSymbolTableRecord> record(table->getAt(c.from), QaDb::kForWrite);
      ASSERT_TRUE(record) << c.what;
      ASSERT_EQ(record->setName(c.to), Qa::eOk) << c.what;
    }
    auto usesRenamed = [&](const QaDbDatabase& d) {
      std::size_t n = 0;
      for (QaDbObjectId id : d.objectIds()) {
        std::vector<QaDbObjectId> used;
        id.rawObject()->hardReferences(used);
        for (QaDbObjectId u : used)
          if (auto* rec = QaDbSymbolTableRecord::cast(u.rawObject()); rec && rec->name() == c.to) ++n;
      }
      return n;
    };
    users = usesRenamed(*db);
    ASSERT_GT(users, 0u) << c.what;
    DxfLoadInfo info;
    auto back = loadText(saveText(*db), &info);
    EXPECT_TRUE(info.audit.empty()) << c.what << ": " << info.audit.lines().front();
    EXPECT_EQ(usesRenamed(*back), users) << c.what;
  }
}

// An attribute definition whose subclass markers are damaged (an unknown part, then
// an embedded part where the definition's own should be) saves into something that
// reads back: the unknown part, written after the embedded text, stays unknown.
TEST(DxfWriter, DamagedSubclassMarkersSurviveASaveAndReload) {
  std::string text = examplePageText();
  const auto attdef = text.find("  0\nATTDEF\n");
  ASSERT_NE(attdef, std::string::npos);
  auto replaceAfter = [&](const std::string& from, const std::string& to) {
    const auto at = text.find(from, attdef);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
  };
  replaceAfter("100\nAcDbText\n", "100\nAcDbTe\"t\n");
  replaceAfter(" 20\n", " 20\n\xB3");  // not a number, in the part nobody reads
  replaceAfter("100\nAcDbAttributeDefinition\n", "101\nAcDbAttributeDefinition\n");
  auto db = loadText(text);
  // Changed, so that it is written from its fields with the part nobody read kept.
  const QaDbObjectId defId = firstAttributeDefinition(*db);
  ASSERT_FALSE(defId.isNull());
  {
    QaDbObjectPointer<QaDbAttributeDefinition> def(defId, QaDb::kForWrite);
    def->setTextString(L"新值");
  }
  const std::string saved = saveText(*db);
  EXPECT_NE(saved.find("AcDbTe\"t"), std::string::npos);
  EXPECT_NO_THROW(loadText(saved));
  EXPECT_NO_THROW(loadText(saveText(*loadText(saved))));
}

// A part named for another kind (an attribute's part in an attribute definition) is not
// read: its values, whatever they hold, are kept as they came, and what is saved reads back.
TEST(DxfWriter, ForeignPartsAreKeptUnread) {
  std::string text = examplePageText();
  const auto attdef = text.find("  0\nATTDEF\n");
  ASSERT_NE(attdef, std::string::npos);
  const auto next = text.find("  0\n", attdef + 4);
  const auto xdata = text.find("1001\n", attdef);
  text.insert(xdata < next ? xdata : next, "100\nAcDbAttribute\n280\n,\n  2\nNOT_THE_TAG\n");
  auto db = loadText(text);
  const QaDbObjectId defId = firstAttributeDefinition(*db);
  ASSERT_FALSE(defId.isNull());
  std::wstring tag;
  {
    QaDbObjectPointer<QaDbAttributeDefinition> def(defId, QaDb::kForWrite);
    tag = def->tag();
    EXPECT_NE(tag, L"NOT_THE_TAG");
    def->setTextString(L"新值");
  }
  const std::string saved = saveText(*db);
  EXPECT_NE(saved.find("NOT_THE_TAG"), std::string::npos);
  auto back = loadText(saved);
  EXPECT_EQ(QaDbAttributeDefinition::cast(back->objectIdFromHandle(defId.handle()).rawObject())->tag(), tag);
}

// Every embedded part of an attribute is read as its multi-line text, whatever its
// marker names. Written from fields, in a version with embedded text or without, the
// attribute carries no embedded part of the original over: its text reads back as it was.
TEST(DxfWriter, EmbeddedPartsOfAnAttributeAreReadOnce) {
  std::string text = examplePageText();
  const auto embedded = text.find("101\nEmbedded Object\n", text.find("  0\nATTRIB\n"));
  ASSERT_NE(embedded, std::string::npos);
  text.insert(std::min(text.find("  0\n", embedded), text.find("1001\n", embedded)),
              "101\nMore Embedded\n  1\n, and more\n");
  for (DxfVersion version : {DxfVersion::R2018, DxfVersion::R2007}) {
    auto db = loadText(text);
    QaDbObjectId remarkId;
    for (QaDbObjectId id : db->objectIds())
      if (auto* att = QaDbAttribute::cast(id.rawObject()); att && att->getMTextAttribute()) remarkId = id;
    ASSERT_FALSE(remarkId.isNull());
    const std::wstring read = QaDbAttribute::cast(remarkId.rawObject())->textString();
    EXPECT_NE(read.find(L", and more"), std::wstring::npos);
    remarkId.rawObject()->setModified();
    DxfWriteOptions options;
    options.version = version;
    auto back = loadText(saveText(*db, options));
    EXPECT_EQ(QaDbAttribute::cast(back->objectIdFromHandle(remarkId.handle()).rawObject())->textString(), read)
        << dxfVersionName(version);
  }
}

#include "host/ed/drawing_fixture.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/krm_base_services.h"
#include "host/svc/krm_bom_data.h"
#include "host/svc/krm_card_root.h"
#include "host/svc/krm_frame.h"
#include "host/svc/krm_frm_service.h"
#include "host/svc/krm_reg_service.h"
#include "host/svc/krm_std_service.h"
#include "host/svc/scoped_env.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"
#include "support/test_support.h"

#include <gtest/gtest.h>

using tabulon::test::DrawingFixture;
using tabulon::test::ScopedEnv;
using tabulon::test::ScratchDir;
using tabulon::test::writeFile;

// Each test gets its own configuration folder.
class KrmServices : public DrawingFixture {
 protected:
  void SetUp() override {
    DrawingFixture::SetUp();
    env.set("TABULON_HOME", home.path().string());
    tabulon::svc::setLibraryOverride({});
    KrmRegisterBaseServices();
  }
  void TearDown() override {
    KrmUnregisterBaseServices();
    DrawingFixture::TearDown();
  }
  void options(const std::string& text) { writeFile(home / "options.ini", text); }

  ScratchDir home;
  ScopedEnv env;
};

TEST_F(KrmServices, AreFoundByNameInTheServiceDictionary) {
  EXPECT_NE(qaFindService<KrmStdService>(KRM_STD_SERVICE), nullptr);
  EXPECT_NE(qaFindService<KrmRegService>(KRM_REG_SERVICE), nullptr);
  EXPECT_NE(qaFindService<KrmFrmService>(KRM_FRM_SERVICE), nullptr);
  EXPECT_EQ(qaFindService<KrmRegService>(KRM_STD_SERVICE), nullptr);  // the cast checks the class
}

TEST_F(KrmServices, OptionStoreAnswersTheBomExportSections) {
  options(
      "[KrmcadTabulon_List]\nLISTEXP_DATA_CARD=工艺卡\nLISTEXP_DATA_TITLE=TITLE\nLISTEXP_DATA_LIST=\n"
      "[KrmcadTabulon_List1]\nLISTEXP_DATA_CARD=second\n");
  auto* std = qaFindService<KrmStdService>(KRM_STD_SERVICE);
  std::wstring value = L"untouched";
  EXPECT_NE(std->getOstrelmOptionData(L"KrmcadTabulon_List", L"LISTEXP_DATA_CARD", value, 0), 0);
  EXPECT_EQ(value, L"工艺卡");
  EXPECT_NE(std->getOstrelmOptionData(L"KrmcadTabulon_List", L"LISTEXP_DATA_LIST", value, 0), 0);
  EXPECT_EQ(value, L"");  // present though empty
  value = L"untouched";
  EXPECT_EQ(std->getOstrelmOptionData(L"KrmcadTabulon_List1", L"LISTEXP_DATA_TITLE", value, 0), 0);
  EXPECT_EQ(std->getOstrelmOptionData(L"KrmcadTabulon_List2", L"LISTEXP_DATA_CARD", value, 0), 0);
  EXPECT_EQ(value, L"untouched");
  options("[KrmcadTabulon_List]\nbroken line\n");
  EXPECT_THROW(std->getOstrelmOptionData(L"KrmcadTabulon_List", L"X", value, 0), tabulon::svc::IniError);
}

TEST_F(KrmServices, LibraryFolderIsEmptyUntilItExistsAndLosesTrailingSeparators) {
  auto* std = qaFindService<KrmStdService>(KRM_STD_SERVICE);
  const auto cards = home / "Cards";
  writeFile(home / "tabulon.ini", "[Paths]\nLibrary=" + cards.string() + "//\nWordLib=words.txt\n");
  EXPECT_EQ(std->getTabulonDir(db), L"");
  EXPECT_FALSE(KrmResolveCardRoot());
  EXPECT_EQ(KrmCardRoot(), L"");
  std::filesystem::create_directory(cards);
  EXPECT_TRUE(KrmResolveCardRoot());
  EXPECT_EQ(KrmCardRoot(), tabulon::svc::fromPath(cards));
  EXPECT_EQ(std->getCurrentWordLib(db), tabulon::svc::fromPath(home / "words.txt"));
}

TEST_F(KrmServices, SettingsRoundTripThroughSubkeys) {
  auto* reg = qaFindService<KrmRegService>(KRM_REG_SERVICE);
  // Writing, as the card editor does at finish.
  ASSERT_NE(reg->Open(17, 0, 1), 0);
  EXPECT_EQ(reg->OpenSubKey(L"KrmDlgCreateCrd"), 0);
  ASSERT_NE(reg->CreateSubKey(L"KrmDlgCreateCrd"), 0);
  EXPECT_NE(reg->Write(L"CreateCard_CutPage", L"1"), 0);
  ASSERT_NE(reg->CreateSubKey(L"KrmGridCtrl"), 0);
  EXPECT_NE(reg->Write(L"FontHeight", -12), 0);
  EXPECT_NE(reg->Write(L"FontFaceName", L"宋体"), 0);
  EXPECT_NE(reg->Close(), 0);
  // Reading back.
  ASSERT_NE(reg->Open(17, 1, 1), 0);
  ASSERT_NE(reg->OpenSubKey(L"KrmDlgCreateCrd"), 0);
  std::wstring text;
  EXPECT_NE(reg->Read(L"CreateCard_CutPage", text), 0);
  EXPECT_EQ(text, L"1");
  ASSERT_NE(reg->OpenSubKey(L"KrmGridCtrl"), 0);
  int height = 0;
  EXPECT_NE(reg->Read(L"FontHeight", height), 0);
  EXPECT_EQ(height, -12);
  EXPECT_EQ(reg->Read(L"FontFaceName", height), 0);  // no number
  EXPECT_NE(reg->Read(L"FontFaceName", text), 0);
  EXPECT_EQ(text, L"宋体");
  EXPECT_EQ(reg->Read(L"Missing", text), 0);
  EXPECT_EQ(reg->Write(L"FontHeight", 5), 0);  // read-only session
  EXPECT_NE(reg->Close(), 0);
  EXPECT_EQ(reg->Close(), 0);
}

TEST_F(KrmServices, SettingsOfAReaderAreNeverWrittenAndWritersKeepOthersValues) {
  auto* reg = qaFindService<KrmRegService>(KRM_REG_SERVICE);
  EXPECT_EQ(reg->Open(17, 1, 0), 0);  // no settings.ini yet and no creation asked
  ASSERT_NE(reg->Open(17, 1, 1), 0);
  ASSERT_NE(reg->CreateSubKey(L"KrmDlgCreateCrd"), 0);  // a reader that had to create the key...
  std::wstring text;
  EXPECT_EQ(reg->Read(L"CreateCard_CutPage", text), 0);  // ...reads nothing
  reg->Close();
  EXPECT_FALSE(std::filesystem::exists(home / "settings.ini"));

  ASSERT_NE(reg->Open(17, 0, 1), 0);
  reg->CreateSubKey(L"A");
  reg->Write(L"mine", L"1");
  // Another program saves its value meanwhile.
  writeFile(home / "settings.ini", "; kept\n[B]\ntheirs=2\n");
  EXPECT_NE(reg->Close(), 0);
  const auto saved = tabulon::svc::IniFile::load(home / "settings.ini");
  EXPECT_EQ(saved.get(L"A", L"mine"), L"1");
  EXPECT_EQ(saved.get(L"B", L"theirs"), L"2");
  EXPECT_NE(tabulon::test::readFile(home / "settings.ini").find("; kept"), std::string::npos);
}

TEST_F(KrmServices, FramesByBlockNameAndByExtendedData) {
  options("[KrmFrame]\nFrameBlocks=A3 ; a4\n");
  const auto a3 = block(L"A3", 420, 297);
  const auto a4 = block(L"A4", 210, 297);
  const auto plain = block(L"PART", 10, 10);
  const auto first = insert(a3, {0, 0, 0}, 2.0);            // (0,0)-(840,594), by name
  insert(plain, {1000, 0, 0});                              // no frame
  const auto tagged = insert(plain, {2000, 0, 0}, 50.0);     // (2000,0)-(2500,500), by xdata
  {
    QaDbObjectPointer<QaDbBlockReference> ref(tagged, QaDb::kForWrite);
    ref->setXData(kKrmFrameApp, {QaDbXDataItem::string(L"frame")});
  }
  const auto lower = insert(a4, {3000, 0, 0});               // block name compared without case
  auto* frm = qaFindService<KrmFrmService>(KRM_FRM_SERVICE);
  std::vector<QaDbObjectId> ids{QaDbObjectId()};
  EXPECT_EQ(frm->getValidFrameCount(ids, db), 3);
  EXPECT_EQ(ids, (std::vector<QaDbObjectId>{first, tagged, lower}));

  KrmFrame frame;
  ASSERT_EQ(KrmFrame::open(tagged, frame), Qa::eOk);
  EXPECT_EQ(frame.getDicName(), tagged.handle().text());
  EXPECT_DOUBLE_EQ(frame.scale(), 50.0);
  EXPECT_EQ(KrmFrame::open(line({0, 0, 0}, {1, 1, 0}), frame), Qa::eWrongObjectType);
}

TEST_F(KrmServices, ScaleAtAPointIsThatOfTheFirstFrameHoldingIt) {
  options("[KrmFrame]\nFrameBlocks=A3\n");
  const auto a3 = block(L"A3", 420, 297);
  insert(a3, {0, 0, 0}, 2.0);     // (0,0)-(840,594)
  insert(a3, {500, 0, 0}, 5.0);   // (500,0)-(2600,1485), overlaps the first
  auto* frm = qaFindService<KrmFrmService>(KRM_FRM_SERVICE);
  struct Case {
    QaGePoint3d point;
    double scale;
  };
  for (const auto& c : {Case{{10, 10, 0}, 2.0}, Case{{600, 100, 0}, 2.0}, Case{{840, 594, 7}, 2.0},
                        Case{{1000, 100, 0}, 5.0}, Case{{-1, 0, 0}, 1.0}, Case{{3000, 0, 0}, 1.0}}) {
    EXPECT_DOUBLE_EQ(frm->getScaleByPoint(c.point, db), c.scale) << c.point.x << "," << c.point.y;
  }
  options("");
  EXPECT_DOUBLE_EQ(frm->getScaleByPoint({10, 10, 0}, db), 1.0);  // no frame rules: no frames
}

TEST_F(KrmServices, EntityBelongsToTheFrameHoldingIt) {
  options("[KrmFrame]\nFrameBlocks=A3\n");
  const auto a3 = block(L"A3", 420, 297);
  const auto frame = insert(a3, {0, 0, 0});
  const auto inside = line({10, 10, 0}, {100, 10, 0});
  const auto across = line({400, 10, 0}, {500, 10, 0});
  EXPECT_EQ(GetKrmFrameXdata(inside), frame);
  EXPECT_EQ(GetKrmFrameXdata(frame), frame);
  EXPECT_TRUE(GetKrmFrameXdata(across).isNull());
}

TEST_F(KrmServices, TitleAndBomRowsComeFromBlocksInsideTheFrame) {
  options(
      "[KrmFrame]\nFrameBlocks=A3\nTitleBlocks=TITLE\nBomRowBlocks=ROW\nTitleMap=DWGNO=图号; NAME = 名称 ;bad\n");
  const auto a3 = block(L"A3", 420, 297);
  const auto frame = insert(a3, {0, 0, 0});
  const auto titleBlock = block(L"TITLE");
  const auto rowBlock = block(L"ROW");
  auto withAttributes = [&](QaDbObjectId blockId, QaGePoint3d at, std::vector<std::pair<std::wstring, std::wstring>> atts) {
    const auto id = insert(blockId, at);
    QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForWrite);
    for (const auto& [tag, text] : atts) {
      QaDbObjectId attId;
      ref->appendAttribute(attId, std::make_unique<QaDbAttribute>(at, text, tag));
      attId.rawObject()->close();
    }
    return id;
  };
  withAttributes(titleBlock, {300, 10, 0}, {{L"DWGNO", L"KR-001"}, {L"NAME", L"支架"}});
  withAttributes(titleBlock, {900, 10, 0}, {{L"DWGNO", L"outside"}});
  const auto r3 = withAttributes(rowBlock, {300, 50, 0}, {{L"序号", L"3"}, {L"名称", L"螺母"}});
  const auto r1 = withAttributes(rowBlock, {300, 40, 0}, {{L"序号", L" 1 "}, {L"名称", L"螺栓"}});
  const auto noNumberHigh = withAttributes(rowBlock, {300, 90, 0}, {{L"序号", L"备注"}});
  const auto noNumberLow = withAttributes(rowBlock, {300, 60, 0}, {{L"名称", L"垫圈"}});
  const auto r1Left = withAttributes(rowBlock, {100, 40, 0}, {{L"序号", L"1"}});
  withAttributes(rowBlock, {900, 40, 0}, {{L"序号", L"0"}});  // outside the frame

  const std::wstring dic = frame.handle().text();
  KrmStringMap title;
  std::vector<std::wstring> a, b;
  ASSERT_NE(GetMultiTitle(title, a, b, dic, db), 0);
  EXPECT_EQ(title, (KrmStringMap{{L"DWGNO", L"KR-001"}, {L"NAME", L"支架"}}));
  EXPECT_EQ(a, (std::vector<std::wstring>{L"DWGNO", L"NAME"}));
  EXPECT_EQ(b, (std::vector<std::wstring>{L"图号", L"名称"}));

  std::vector<KrmStringMap> rows;
  std::vector<std::wstring> columns, handles;
  ASSERT_NE(GetMultiBomData(&columns, &handles, rows, dic, L"", db), 0);
  const std::vector<QaDbObjectId> order{r1Left, r1, r3, noNumberLow, noNumberHigh};
  ASSERT_EQ(handles.size(), order.size());
  for (std::size_t i = 0; i < order.size(); ++i) EXPECT_EQ(handles[i], order[i].handle().text()) << i;
  EXPECT_EQ(rows[1].at(L"名称"), L"螺栓");
  EXPECT_EQ(columns, (std::vector<std::wstring>{L"序号", L"名称"}));
  EXPECT_NE(GetMultiBomData(nullptr, nullptr, rows, dic, L"OTHER", db), 0);
  EXPECT_TRUE(rows.empty());

  EXPECT_EQ(GetMultiTitle(title, a, b, L"FFFFF", db), 0);
  EXPECT_EQ(GetMultiBomData(nullptr, nullptr, rows, L"not hex", L"", db), 0);
}

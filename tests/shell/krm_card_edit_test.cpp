// The command KrmCardEdit: from a picked entity to the editor and back into the drawing.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "card/card_data.h"
#include "drawing/card_engine.h"
#include "drawing/card_tag.h"
#include "drawing/generation_library.h"
#include "drawing/placed_card_read.h"
#include "host/ap/krm_doc_value.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/ed/qaed_selection.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/scoped_env.h"
#include "shell/krm_data_card_editor.h"
#include "shell/krm_host_session.h"
#include "support/test_support.h"

namespace {

using tabulon::test::ScratchDir;

// Remembers what it was opened on, and answers with the data editor's outcome.
class RecordingEditor : public KrmDataCardEditor {
 public:
  using KrmDataCardEditor::KrmDataCardEditor;
  tabulon::Result<KrmCardEditOutcome> EditPlacedCard(KrmCardEditRequest& request) override {
    curGrid = request.data.GetCurGrid();
    curRow = request.data.GetCurRow();
    pages = static_cast<int>(request.card->pages.size());
    if (KrmDocValue* doc = KrmCurDocValue()) openWhileEditing = doc->OpenCardsList;
    return KrmDataCardEditor::EditPlacedCard(request);
  }
  int curGrid = -1;
  int curRow = -1;
  int pages = 0;
  std::vector<std::wstring> openWhileEditing;
};

class CardEditCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    cardPath = gentest::WriteSampleLibrary(lib.path());
    env.set("TABULON_HOME", home.path().string());
    tabulon::test::writeFile(home / "tabulon.ini", "[Paths]\nLocale=zh_CN\nLibrary=" + lib.path().string() + "\n");
    session = std::make_unique<KrmHostSession>(io);
    qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), home / "edit.dxf");
    KrmCardEngine engine;
    engine.InitCardPath(lib.path().wstring());
    engine.SetCardName(L"card");
    KrmTableRows rows;
    for (int i = 1; i <= 7; ++i) rows.push_back({{L"工序", L"工序" + std::to_wstring(i)}});
    engine.SetTableContent(L"ROW", rows);
    ASSERT_EQ(engine.PlayCreate(), 1);
  }
  void TearDown() override {
    qaServiceDictionary().remove(KRM_CARD_EDITOR);
    session.reset();
  }

  RecordingEditor* Publish(std::map<std::wstring, KrmTableRows> tables = {}) {
    auto editor = std::make_unique<RecordingEditor>(std::move(tables));
    RecordingEditor* raw = editor.get();
    qaServiceDictionary().atPut(KRM_CARD_EDITOR, std::move(editor));
    return raw;
  }

  // A reference of `block` on page `page` (0 or 1), by handle as the user picks it.
  std::wstring Pick(const std::wstring& block, int page) const {
    std::vector<std::pair<double, QaDbObjectId>> found;
    for (const QaDbObjectId& id : qaedModelSpaceEntities(qaWorkingDatabase())) {
      QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
      if (!ref) continue;
      QaDbObjectPointer<QaDbBlockTableRecord> record(ref->blockTableRecord(), QaDb::kForRead);
      const std::wstring& name = record->getName();
      if (name.size() < block.size() || name.compare(name.size() - block.size(), block.size(), block) != 0) continue;
      found.emplace_back(ref->position().x, id);
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return L"#" + found.at(page == 0 ? 0 : found.size() - 1).second.handle().text();
  }

  std::wstring Code() const {
    for (const QaDbObjectId& id : qaedModelSpaceEntities(qaWorkingDatabase())) {
      QaDbObjectPointer<QaDbEntity> entity(id, QaDb::kForRead);
      KrmCardTag tag;
      ReadCardTagOfEntity(entity.object(), tag);
      if (!tag.cardCode.empty()) return tag.cardCode;
    }
    return L"";
  }

  std::vector<std::wstring> Steps() const {
    auto opened = OpenPlacedCard(cardPath, Code());
    KrmDataGrid grid;
    opened->data.GetGridAt(opened->data.GetBaseGrid(), grid);
    return grid.cols.at(1).values;
  }

  int Run() { return session->runCommand(L"KrmCardEdit").value_or(-1); }

  ScratchDir home;
  ScratchDir lib;
  std::wstring cardPath;
  tabulon::test::ScopedEnv env;
  QaEdScriptedIO io;
  std::unique_ptr<KrmHostSession> session;
};

TEST_F(CardEditCommand, ThePickedCardGoesToTheEditorAndItsNewRowsIntoTheDrawing) {
  RecordingEditor* editor = Publish({{L"ROW", {{{L"工序", L"车"}}, {{L"工序", L"铣"}}}}});
  io.addAnswer(Pick(L"_SIGN", 1));
  ASSERT_EQ(Run(), 1);
  EXPECT_NE(io.prompts().at(0).find(L"请选择被编辑的Tabulon实体"), std::wstring::npos);
  EXPECT_EQ(editor->pages, 2);
  EXPECT_EQ(editor->curRow, 1);  // the page that was picked
  EXPECT_EQ(editor->curGrid, 3);  // SIGN, the class of the picked block
  EXPECT_EQ(editor->openWhileEditing, std::vector<std::wstring>{Code()});
  EXPECT_TRUE(KrmCurDocValue()->OpenCardsList.empty());
  EXPECT_EQ(Steps(), (std::vector<std::wstring>{L"车", L"铣"}));
  EXPECT_EQ(OpenPlacedCard(cardPath, Code())->card.pages.size(), 1u);
}

TEST_F(CardEditCommand, WithoutAnEditorTheCardIsConfirmedUnchanged) {
  io.addAnswer(Pick(L"_ROW", 0));
  ASSERT_EQ(Run(), 1);
  EXPECT_EQ(Steps().size(), 7u);
  EXPECT_EQ(Steps().back(), L"工序7");
}

TEST_F(CardEditCommand, AnEntityOfNoCardOrACardOpenAlreadyEndsTheCommand) {
  RecordingEditor* editor = Publish();
  QaDbObjectId foreign;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> space(qaWorkingDatabase()->modelSpaceId(), QaDb::kForWrite);
    space->appendQaDbEntity(std::make_unique<QaDbLine>(QaGePoint3d(900, 900, 0), QaGePoint3d(950, 900, 0)), foreign);
    foreign.rawObject()->close();
  }
  io.addAnswer(L"#" + foreign.handle().text());
  EXPECT_EQ(Run(), 0);  // not a block reference: nothing said

  KrmCurDocValue()->OpenCardsList.push_back(Code());
  io.addAnswer(Pick(L"_ROW", 0));
  EXPECT_EQ(Run(), 0);
  ASSERT_EQ(io.messageBoxes().size(), 1u);
  EXPECT_NE(io.messageBoxes()[0].find(L"此表格已在对话框中打开"), std::wstring::npos);
  EXPECT_EQ(editor->editCount(), 0);

  // A card whose template left the library is no card any more.
  KrmCurDocValue()->OpenCardsList.clear();
  std::filesystem::remove(KrmToFsPath(cardPath));
  io.addAnswer(Pick(L"_ROW", 0));
  EXPECT_EQ(Run(), 0);
  EXPECT_NE(io.printed().find(L"被选择实体不是卡片中的实体"), std::wstring::npos);
}

TEST_F(CardEditCommand, DataForABlockTheCardLacksWritesNothing) {
  RecordingEditor* editor = Publish({{L"NOSUCH", {{{L"x", L"1"}}}}});
  io.addAnswer(Pick(L"_ROW", 0));
  EXPECT_EQ(Run(), 0);
  ASSERT_TRUE(editor->lastError().has_value());
  EXPECT_NE(editor->lastError()->message.find("no block \"NOSUCH\""), std::string::npos);
  EXPECT_EQ(Steps().size(), 7u);
}

}  // namespace

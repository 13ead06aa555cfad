// The whole circle in the studio on a form drawn by another program: the first-page and
// continuation tables and the card are made from the drawing by their commands, typed at
// the command line, and their dialogs, filled in by hand; a card of three pages is
// created by typing rows into the editor's grid, then picked again, a row changed and
// one added, and updated. The saved drawing is read by ezdxf.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <sstream>

#include "authoring/authoring_test_support.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb.h"
#include "host/db/qadb_open.h"
#include "host/rx/qarx_system_registry.h"
#include "host/svc/tabulon_paths.h"
#include "authoring_steps.h"
#include "modal_script.h"
#include "support/test_support.h"
#include "ui/dialogs/card_editor_services.h"
#include "ui/dialogs/create_card_dialog.h"
#include "ui/dialogs/load_cards_dialog.h"
#include "ui/dialogs/make_card_dialog.h"
#include "ui/dialogs/make_table_dialog.h"
#include "ui/dialogs/sel_sgl_dialog.h"
#include "ui/grid/grid_ctrl.h"
#include "ui/grid/grid_find.h"
#include "ui/grid/grid_model.h"
#include "ui/studio/studio_user_io.h"
#include "ui/studio/studio_window.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::test::ChooseAttribute;
using tabulon::test::ChooseRows;
using tabulon::test::ModalScript;
using tabulon::test::PickTemplate;
using tabulon::test::TypeName;
using tabulon::ui::CreateCardDialog;
using tabulon::ui::LoadCardsDialog;
using tabulon::ui::MakeCardDialog;
using tabulon::ui::MakeTableDialog;
using tabulon::ui::SelSglDialog;

// Two page forms: the first at x 0 with three ROW references, the continuation at x 200
// with four; each with a TITLE reference (图号, 页码, 总页) and frame lines. Attribute
// definitions carry their column order as extended data.
constexpr char kFormScript[] = R"PY(
import sys, ezdxf
doc = ezdxf.new('R2010')
doc.appids.add('KRM_XDATA_ORDER')
def block(name, tags):
    b = doc.blocks.new(name)
    b.add_line((0, 0), (100, 0))
    x = 1
    for i, tag in enumerate(tags):
        d = b.add_attdef(tag, (x, 2), dxfattribs={'height': 2.5})
        d.set_xdata('KRM_XDATA_ORDER', [(1000, str(i + 1))])
        x += 30
block('TITLE', ['图号', '页码', '总页'])
block('ROW', ['序号', '工序'])
msp = doc.modelspace()
for x0, rows in ((0, 3), (200, 4)):
    msp.add_line((x0, 0), (x0 + 120, 0))
    msp.add_line((x0, 60), (x0 + 120, 60))
    msp.add_blockref('TITLE', (x0 + 5, 5)).add_auto_attribs({})
    for r in range(rows):
        msp.add_blockref('ROW', (x0 + 5, 50 - 8 * r)).add_auto_attribs({})
doc.saveas(sys.argv[1])
)PY";

// Audits the drawing and prints, per ROW and TITLE reference, its attributes as
// "BLOCK tag=text|tag=text" sorted, then "ERRORS n".
constexpr char kReadScript[] = R"PY(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
lines = []
for e in doc.modelspace().query('INSERT'):
    name = e.block().block.dxf.name if e.block() else e.dxf.name
    base = name.split('_')[-1]
    if base not in ('ROW', 'TITLE'): continue
    attrs = '|'.join('%s=%s' % (a.dxf.tag, a.dxf.text) for a in e.attribs)
    lines.append('%s %s' % (base, attrs))
for l in sorted(lines): print(l)
print('ERRORS %d' % len(auditor.errors))
)PY";

class WholeCircle : public ::testing::Test {
 protected:
  void SetUp() override {
    previousHome_ = getenv("TABULON_HOME") != nullptr ? getenv("TABULON_HOME") : "";
    setenv("TABULON_HOME", home.path().c_str(), 1);
    std::filesystem::create_directories(lib.path());
    tabulon::svc::setLibraryOverride(lib.path());
  }
  void TearDown() override {
    window.reset();
    tabulon::svc::setLibraryOverride({});
    setenv("TABULON_HOME", previousHome_.c_str(), 1);
  }

  // Answers the host's next questions with these answers, one per question; an answer
  // of several lines (a selection ended by Enter) is typed line by line.
  void AnswerWith(std::vector<QString> lines) {
    answers_.assign(lines.begin(), lines.end());
  }
  void Listen() {
    QObject::connect(&window->userIO(), &tabulon::ui::StudioUserIO::waitingForInput, window.get(), [this] {
      QTimer::singleShot(0, window.get(), [this] {
        if (!window->userIO().waiting()) return;
        if (answers_.empty()) return window->userIO().answerCancel();
        const QString next = answers_.front();
        answers_.pop_front();
        for (const QString& line : next.split(QLatin1Char('\n'))) window->userIO().answerText(line);
      });
    });
  }

  // Makes one table as the user does: KrmMakeTbl at the command line, the page form
  // whose left edge is at `left` picked by a window round it, the classes, the page
  // base and the page attributes chosen in the chooser, the name typed, OK.
  void MakeTable(const QString& name, double left) {
    AnswerWith({QStringLiteral("window %1,-10 %2,70\n").arg(left - 10).arg(left + 140)});
    ModalScript script;
    script.then<MakeTableDialog>([name](MakeTableDialog& d) {
      TypeName(d.nameEdit(), name);
      QTest::mouseClick(d.pickButton(), Qt::LeftButton);
      QTest::mouseClick(d.singleButton(), Qt::LeftButton);
      QTest::mouseClick(d.multiButton(), Qt::LeftButton);
      QTest::mouseClick(d.pageBaseButton(), Qt::LeftButton);
      QTest::mouseClick(d.pageAttButton(0), Qt::LeftButton);
      QTest::mouseClick(d.pageAttButton(1), Qt::LeftButton);
      QTest::mouseClick(d.pageAttButton(4), Qt::LeftButton);
      QTest::mouseClick(d.okButton(), Qt::LeftButton);
    });
    script.then<SelSglDialog>([](SelSglDialog& d) { ChooseRows(d, {QStringLiteral("TITLE")}); });
    script.then<SelSglDialog>([](SelSglDialog& d) { ChooseRows(d, {QStringLiteral("ROW")}); });
    script.then<SelSglDialog>([](SelSglDialog& d) { ChooseRows(d, {QStringLiteral("ROW")}); });
    script.then<SelSglDialog>([](SelSglDialog& d) {
      ChooseAttribute(d, QStringLiteral("TITLE"), QStringLiteral("页码"));
    });
    script.then<SelSglDialog>([](SelSglDialog& d) {
      ChooseAttribute(d, QStringLiteral("TITLE"), QStringLiteral("总页"));
    });
    script.then<SelSglDialog>([](SelSglDialog& d) {
      ChooseAttribute(d, QStringLiteral("ROW"), QStringLiteral("序号"));
    });
    ASSERT_EQ(window->runCommandLine(QStringLiteral("KrmMakeTbl")), std::optional<int>(1));
    EXPECT_TRUE(script.done());
    EXPECT_FALSE(script.failed());
    EXPECT_TRUE(std::filesystem::exists(lib.path() / tabulon::svc::toPath(name.toStdWString() + L".tbl")));
  }

  // Makes the card as the user does: KrmMakeCard, the name typed, the first-page and
  // continuation tables picked from the library, OK.
  void MakeCard(const QString& name) {
    ModalScript script;
    script.then<MakeCardDialog>([name](MakeCardDialog& d) {
      TypeName(d.nameEdit(), name);
      QTest::mouseClick(d.firstButton(), Qt::LeftButton);
      QTest::mouseClick(d.nextButton(), Qt::LeftButton);
      QTest::mouseClick(d.okButton(), Qt::LeftButton);
    });
    script.then<LoadCardsDialog>([](LoadCardsDialog& d) { PickTemplate(d, QStringLiteral("首页")); });
    script.then<LoadCardsDialog>([](LoadCardsDialog& d) { PickTemplate(d, QStringLiteral("续页")); });
    ASSERT_EQ(window->runCommandLine(QStringLiteral("KrmMakeCard")), std::optional<int>(1));
    EXPECT_TRUE(script.done());
    EXPECT_FALSE(script.failed());
    KrmCardAttributes card;
    ASSERT_EQ(card.InitCard(tabulon::svc::fromPath(lib.path() / tabulon::svc::toPath(name.toStdWString()))), 1);
    ASSERT_EQ(card.getTblCount(), 2);
    EXPECT_EQ(card.getTblFile(0), L"首页");
    EXPECT_EQ(card.getTblFile(1), L"续页");
  }

  static int EntityCount() {
    QaDbObjectPointer<QaDbBlockTableRecord> space(qaWorkingDatabase()->modelSpaceId(), QaDb::kForRead);
    QaDbBlockTableRecordIterator it(space.object());
    int count = 0;
    for (it.start(); !it.done(); it.step()) ++count;
    return count;
  }

  std::wstring root() const { return tabulon::svc::fromPath(lib.path()); }

  tabulon::ui::CGridCtrl& Grid(CreateCardDialog& d) { return d.grid(); }
  static void SelectTab(CreateCardDialog& d, const QString& name) {
    for (int i = 0; i < d.tabs().count(); ++i) {
      if (d.tabs().tabText(i) == name) return d.tabs().setCurrentIndex(i);
    }
    ADD_FAILURE() << "no tab " << name.toStdString();
  }
  static int Column(CreateCardDialog& d, const QString& header) {
    for (int c = 1; c < d.grid().GetColumnCount(); ++c) {
      if (d.grid().GetItemText(0, c) == header) return c;
    }
    ADD_FAILURE() << "no column " << header.toStdString();
    return 1;
  }
  static void TypeInto(CreateCardDialog& d, int row, int col, const QString& text, Qt::Key key) {
    tabulon::ui::CGridCtrl& grid = d.grid();
    const QModelIndex index = grid.gridModel().indexOf(row, col);
    grid.setCurrentIndex(index);
    grid.edit(index);
    auto* line = qobject_cast<QLineEdit*>(grid.indexWidget(index));
    ASSERT_NE(line, nullptr);
    line->setText(text);
    QTest::keyClick(line, key);
    QCoreApplication::processEvents();
  }

  // The ROW and TITLE references of a saved drawing as ezdxf reads them.
  std::vector<std::string> ReadBack(const std::filesystem::path& file, int& errors) {
    const auto run = tabulon::test::runPython(kReadScript, {file.string()});
    EXPECT_EQ(run.exitCode, 0) << run.output;
    std::vector<std::string> lines;
    std::istringstream in(run.output);
    for (std::string line; std::getline(in, line);) {
      if (line.rfind("ERRORS ", 0) == 0) errors = std::stoi(line.substr(7));
      else if (line.rfind("ROW ", 0) == 0 || line.rfind("TITLE ", 0) == 0) lines.push_back(line);
    }
    return lines;
  }

  tabulon::test::ScratchDir home;
  tabulon::test::ScratchDir lib;
  tabulon::test::ScratchDir work;
  tabulon::ui::UiStrings strings{"zh_CN"};
  std::unique_ptr<tabulon::ui::StudioWindow> window;
  std::function<void(CreateCardDialog&)> drive;

 private:
  std::string previousHome_;
  std::deque<QString> answers_;
};

TEST_F(WholeCircle, FormToTablesToCardCreatedEditedAndUpdated) {
  if (!tabulon::test::ezdxfAvailable()) GTEST_SKIP() << "ezdxf is not installed";
  const auto form = work.path() / "form.dxf";
  const auto drawn = tabulon::test::runPython(kFormScript, {form.string()});
  ASSERT_EQ(drawn.exitCode, 0) << drawn.output;

  window = std::make_unique<tabulon::ui::StudioWindow>(strings);
  Listen();
  ASSERT_TRUE(window->openDrawing(form).ok());
  window->show();

  // The templates, made with the commands and their dialogs.
  ASSERT_NO_FATAL_FAILURE(MakeTable(QStringLiteral("首页"), 0));
  ASSERT_NO_FATAL_FAILURE(MakeTable(QStringLiteral("续页"), 200));
  ASSERT_NO_FATAL_FAILURE(MakeCard(QStringLiteral("工艺卡")));

  // The card editor's windows are driven by `drive` once they run.
  window->setCardDialogSetup([this](CreateCardDialog& d) {
    QTimer::singleShot(0, &d, [this, &d] { drive(d); });
  });
  auto creator = std::make_unique<tabulon::ui::StudioCardCreator>(strings, window.get(), [this](CreateCardDialog& d) {
    QTimer::singleShot(0, &d, [this, &d] { drive(d); });
  });
  creator->setTemplateChooser([](const std::wstring& libRoot, std::wstring& path) {
    KrmLoadCardsModel library(libRoot, L".crd");
    library.Open();
    if (!authtest::Pick(L"/", L"工艺卡")(library)) return false;
    path = libRoot + library.selectedFolder() + library.SelectedFileName();
    return true;
  });
  qaServiceDictionary().atPut(KRM_CARD_CREATOR, std::move(creator));

  // Create: nine rows on pages of three and four rows make three pages.
  drive = [](CreateCardDialog& d) {
    SelectTab(d, QStringLiteral("ROW"));
    const int step = Column(d, QStringLiteral("工序"));
    for (int r = 1; r <= 9; ++r) TypeInto(d, r, step, QStringLiteral("step%1").arg(r), r < 9 ? Qt::Key_Return : Qt::Key_Tab);
    EXPECT_EQ(d.totalLabel().text(), QStringLiteral("/3"));
    SelectTab(d, QStringLiteral("TITLE"));
    TypeInto(d, 1, Column(d, QStringLiteral("图号")), QStringLiteral("T-001"), Qt::Key_Tab);
    d.button(QStringLiteral("finish"))->click();
  };
  AnswerWith({QStringLiteral("0,0")});
  const int formOnly = EntityCount();
  ASSERT_EQ(window->runCommandLine(QStringLiteral("KrmCreateCard")), std::optional<int>(1));
  // The whole command is one step of undo.
  const int withCard = EntityCount();
  ASSERT_GT(withCard, formOnly);
  ASSERT_TRUE(window->undo().ok());
  EXPECT_EQ(EntityCount(), formOnly);
  ASSERT_TRUE(window->redo().ok());
  EXPECT_EQ(EntityCount(), withCard);
  const auto created = work.path() / "created.dxf";
  ASSERT_TRUE(window->saveDrawing(created).ok());
  int errors = -1;
  std::vector<std::string> rows = ReadBack(created, errors);
  EXPECT_EQ(errors, 0);
  ASSERT_FALSE(rows.empty());

  // A hand edit of an attribute in the first row, which the update leaves alone.
  QaDbObjectId handEdited;
  {
    QaDbObjectPointer<QaDbBlockTableRecord> space(qaWorkingDatabase()->modelSpaceId(), QaDb::kForRead);
    QaDbBlockTableRecordIterator it(space.object());
    QaDbObjectId pick;
    for (it.start(); !it.done(); it.step()) {
      QaDbObjectPointer<QaDbBlockReference> ref(it.entityId(), QaDb::kForRead);
      if (!ref) continue;
      QaDbObjectIterator atts(ref.object());
      for (atts.start(); !atts.done(); atts.step()) {
        auto* att = QaDbAttribute::cast(atts.entity());
        if (att != nullptr && att->textString() == L"step1") {
          handEdited = atts.objectId();
          pick = it.entityId();
        }
      }
    }
    ASSERT_FALSE(handEdited.isNull());
    QaDbObjectPointer<QaDbAttribute> att(handEdited, QaDb::kForWrite);
    att->setTextString(L"step1 (by hand)");
    std::ostringstream handle;
    handle << "#" << std::hex << std::uppercase << pick.handle().value();
    AnswerWith({QString::fromStdString(handle.str())});
  }

  // Edit: the second row changes and a tenth row is added.
  drive = [](CreateCardDialog& d) {
    // Edit mode offers what only a placed card has.
    EXPECT_FALSE(d.button(QStringLiteral("updateDrawing"))->isHidden());
    EXPECT_FALSE(d.button(QStringLiteral("pickCard"))->isHidden());
    SelectTab(d, QStringLiteral("ROW"));
    const int step = Column(d, QStringLiteral("工序"));
    TypeInto(d, 2, step, QStringLiteral("step2 changed"), Qt::Key_Tab);
    d.button(QStringLiteral("addRow"))->click();
    TypeInto(d, d.grid().GetRowCount() - 1, step, QStringLiteral("step10"), Qt::Key_Tab);
    d.button(QStringLiteral("finish"))->click();
  };
  ASSERT_EQ(window->runCommandLine(QStringLiteral("KrmCardEdit")), std::optional<int>(1));
  const auto updated = work.path() / "updated.dxf";
  ASSERT_TRUE(window->saveDrawing(updated).ok());
  rows = ReadBack(updated, errors);
  EXPECT_EQ(errors, 0);

  // The form's own references (unnumbered) stay; the card's rows are numbered.
  std::vector<std::string> expected;
  for (int r = 1; r <= 10; ++r) {
    const std::string step = r == 1 ? "step1 (by hand)" : r == 2 ? "step2 changed" : "step" + std::to_string(r);
    expected.push_back("ROW 序号=" + std::to_string(r) + "|工序=" + step);
  }
  for (const auto& row : expected) EXPECT_NE(std::find(rows.begin(), rows.end(), row), rows.end()) << row;
  for (int page = 1; page <= 3; ++page) {
    const std::string title = "TITLE 图号=T-001|页码=" + std::to_string(page) + "|总页=3";
    EXPECT_NE(std::find(rows.begin(), rows.end(), title), rows.end()) << title;
  }
}

}  // namespace

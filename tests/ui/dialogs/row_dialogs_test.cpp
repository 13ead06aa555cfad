// The arrangement dialog: the direction the user picks by its words is the direction in
// which the pages are then placed.
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <ostream>

#include "card/card_dir.h"
#include "drawing/page_placer.h"
#include "editor/row_page_dialogs.h"
#include "modal_script.h"
#include "ui/dialogs/row_dialogs.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::test::ModalScript;

// The words of one language for the two senses of each axis.
struct DirectionWords {
  const char* locale;
  QString right, left, up, down;
};
void PrintTo(const DirectionWords& words, std::ostream* out) { *out << words.locale; }

class ArrangDialogDirection : public ::testing::TestWithParam<DirectionWords> {};

TEST_P(ArrangDialogDirection, ChoiceWordsSayWherePagesRun) {
  const DirectionWords& words = GetParam();
  const tabulon::ui::UiStrings strings{words.locale};
  for (int choice = 0; choice < 4; ++choice) {
    KrmCardDir start;
    start.SetHor(5);
    start.SetVer(5);
    start.SetFstT(2);
    start.SetFstN(2);
    KrmDlgArrang model;
    model.SetData(start);

    QString label;
    ModalScript script;
    script.then<QDialog>([&label, choice](QDialog& dialog) {
      auto* direction = dialog.findChild<QComboBox*>(QStringLiteral("direction"));
      if (direction == nullptr) {
        ADD_FAILURE() << "no direction box";
        return dialog.reject();
      }
      direction->setCurrentIndex(choice);
      label = direction->currentText();
      QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    ASSERT_TRUE(tabulon::ui::RunArrangDialog(model, strings, nullptr));
    EXPECT_TRUE(script.done());

    KrmCardDir chosen;
    model.GetData(chosen);
    KrmPagePlacer placer;
    placer.dir = chosen;
    placer.pageWidth = 100;
    placer.pageHeight = 50;
    // Column first with two pages a column: page 1 is the step along y, page 2 along x.
    const QaGePoint3d alongY = PagePointAt(placer, 1);
    const QaGePoint3d alongX = PagePointAt(placer, 2);
    const QString& xWord = alongX.x > 0 ? words.right : words.left;
    const QString& yWord = alongY.y > 0 ? words.up : words.down;
    EXPECT_TRUE(label.contains(xWord)) << choice << ": " << label.toStdString();
    EXPECT_TRUE(label.contains(yWord)) << choice << ": " << label.toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Languages, ArrangDialogDirection,
    ::testing::Values(DirectionWords{"en", QStringLiteral("Right"), QStringLiteral("Left"), QStringLiteral("up"),
                                     QStringLiteral("down")},
                      DirectionWords{"zh_CN", QStringLiteral("向右"), QStringLiteral("向左"), QStringLiteral("向上"),
                                     QStringLiteral("向下")}),
    [](const auto& info) { return std::string(info.param.locale); });

}  // namespace

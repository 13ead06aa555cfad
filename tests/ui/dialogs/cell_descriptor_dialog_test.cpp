// The cell description dialog lists the tags of the picked block, shows the stored
// description of the chosen one, writes what is typed on OK and names a refused value.
#include "ui/dialogs/cell_descriptor_dialog.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "authoring/authoring_test_support.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::ui::CellDescriptorDialog;

class CellDescriptorDialogTest : public ::testing::Test {
 protected:
  // The first ROW reference of the form (ids: two lines, TITLE, PAGE, then the rows).
  QaDbObjectId Row() const { return form.ids.at(4); }
  authtest::Form form;
  tabulon::ui::UiStrings strings{"en"};
};

TEST_F(CellDescriptorDialogTest, ThePickedBlocksTagsAreListedWithTheStoredDescription) {
  CellDescriptorForm model;
  ASSERT_TRUE(model.TakeBlock(Row()).ok());
  CellDescriptorDialog dialog(model, strings);
  EXPECT_EQ(dialog.blockLabel()->text(), QStringLiteral("ROW"));
  ASSERT_EQ(dialog.tagBox()->count(), 2);
  EXPECT_EQ(dialog.tagBox()->itemText(0), QStringLiteral("工序"));
  EXPECT_EQ(dialog.field(L"order")->text(), QStringLiteral("2"));
  dialog.tagBox()->setCurrentIndex(1);
  EXPECT_EQ(model.CurrentTag(), 1);
  EXPECT_EQ(dialog.field(L"order")->text(), QStringLiteral("1"));
}

TEST_F(CellDescriptorDialogTest, TypedValuesAreWrittenAndAnEmptiedOneRemoved) {
  CellDescriptorForm model;
  ASSERT_TRUE(model.TakeBlock(Row()).ok());
  CellDescriptorDialog dialog(model, strings);
  dialog.field(L"length")->setText(QStringLiteral("kFit"));
  dialog.field(L"order")->clear();
  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog.result(), QDialog::Accepted);

  CellDescriptorForm reread;
  ASSERT_TRUE(reread.TakeBlock(Row()).ok());
  EXPECT_EQ(reread.Value(L"length"), L"kFit");
  EXPECT_EQ(reread.Value(L"order"), L"");
}

TEST_F(CellDescriptorDialogTest, ARefusedValueIsNamedAndNothingIsWritten) {
  CellDescriptorForm model;
  ASSERT_TRUE(model.TakeBlock(Row()).ok());
  CellDescriptorDialog dialog(model, strings);
  dialog.field(L"decimals")->setText(QStringLiteral("two"));
  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  EXPECT_NE(dialog.result(), QDialog::Accepted);
  EXPECT_TRUE(dialog.messageLabel()->text().contains(QStringLiteral("decimals")));
  CellDescriptorForm reread;
  ASSERT_TRUE(reread.TakeBlock(Row()).ok());
  EXPECT_EQ(reread.Value(L"decimals"), L"");
}

TEST_F(CellDescriptorDialogTest, AnEntityThatIsNoAttributeBlockIsRefused) {
  CellDescriptorForm model;
  EXPECT_FALSE(model.TakeBlock(form.ids.at(0)).ok());  // a frame line
  EXPECT_FALSE(model.HasDefinition());
  EXPECT_TRUE(model.Tags().empty());
}

}  // namespace

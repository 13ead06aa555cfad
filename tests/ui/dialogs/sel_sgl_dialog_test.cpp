// The chooser shows the classes and attributes of its model and hands the user's
// clicks and the way it was closed back to it.
#include "ui/dialogs/sel_sgl_dialog.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "authoring/authoring_test_support.h"
#include "authoring/block_scanning.h"
#include "ui/ui_strings.h"

namespace {

using tabulon::ui::SelSglDialog;

class SelSglDialogTest : public ::testing::Test {
 protected:
  SelSglDialogTest() { CollectBlockClasses(form.ids, classes); }
  authtest::Form form;
  std::vector<KrmDataAttTR> classes;
  tabulon::ui::UiStrings strings{"en"};
};

QStringList Texts(const QListWidget &list) {
  QStringList out;
  for (int row = 0; row < list.count(); ++row) out << list.item(row)->text();
  return out;
}

TEST_F(SelSglDialogTest, SeveralClassesAreChosenByClicking) {
  KrmSelSglModel model(KrmSelSglMode::kSingleBlocks, classes);
  SelSglDialog dialog(model, strings);
  QStringList expected;
  for (const auto &name : model.ClassNames()) expected << tabulon::ui::toQString(name);
  EXPECT_EQ(Texts(*dialog.classList()), expected);
  EXPECT_FALSE(dialog.clearButton()->isVisibleTo(&dialog));

  model.ClearSelection();
  dialog.refresh();
  ASSERT_GE(dialog.classList()->count(), 2);
  dialog.classList()->item(0)->setSelected(true);
  dialog.classList()->item(1)->setSelected(true);
  EXPECT_EQ(model.SelectedClasses(), (std::vector<int>{0, 1}));
  dialog.classList()->item(0)->setSelected(false);
  EXPECT_EQ(model.SelectedClasses(), (std::vector<int>{1}));

  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog.end(), KrmDialogEnd::kOk);
}

TEST_F(SelSglDialogTest, AnAttributeOfOneClassIsChosenOrTheChoiceCleared) {
  KrmSelSglModel model(KrmSelSglMode::kClassCur, classes);
  ASSERT_TRUE(model.SelectByName(L"TITLE", L"图号"));
  SelSglDialog dialog(model, strings);
  EXPECT_EQ(dialog.classList()->selectionMode(), QAbstractItemView::SingleSelection);
  QStringList atts;
  for (const auto &name : model.AttributeNames()) atts << tabulon::ui::toQString(name);
  EXPECT_EQ(Texts(*dialog.attributeList()), atts);
  EXPECT_EQ(dialog.attributeList()->currentRow(), model.SelectedAttribute());

  dialog.attributeList()->setCurrentRow(1);
  EXPECT_EQ(model.SelectedAttribute(), 1);
  const int other = model.CurrentClass() == 0 ? 1 : 0;
  dialog.classList()->item(other)->setSelected(true);
  EXPECT_EQ(model.CurrentClass(), other);
  EXPECT_EQ(dialog.attributeList()->count(), static_cast<int>(model.AttributeNames().size()));

  ASSERT_TRUE(dialog.clearButton()->isVisibleTo(&dialog));
  QTest::mouseClick(dialog.clearButton(), Qt::LeftButton);
  EXPECT_EQ(dialog.end(), KrmDialogEnd::kClear);
}

}  // namespace

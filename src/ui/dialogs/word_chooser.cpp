#include "ui/dialogs/word_chooser.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QVBoxLayout>

#include "ui/ui_strings.h"

namespace tabulon::ui {

bool RunWordChooser(const std::vector<KrmWordCategory>& categories, std::wstring& out, const UiStrings& strings,
                    QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("CKrmWordLib"));
  dialog.setWindowTitle(strings.text(9470, L"词句库"));
  auto* layout = new QVBoxLayout(&dialog);
  auto* lists = new QHBoxLayout;
  auto* names = new QListWidget(&dialog);
  names->setObjectName(QStringLiteral("categories"));
  auto* phrases = new QListWidget(&dialog);
  phrases->setObjectName(QStringLiteral("phrases"));
  lists->addWidget(names, 1);
  lists->addWidget(phrases, 2);
  layout->addLayout(lists);
  for (const KrmWordCategory& category : categories) names->addItem(toQString(category.name));
  QObject::connect(names, &QListWidget::currentRowChanged, &dialog, [&categories, phrases](int row) {
    phrases->clear();
    if (row < 0 || row >= static_cast<int>(categories.size())) return;
    for (const auto& phrase : categories[static_cast<std::size_t>(row)].phrases) phrases->addItem(toQString(phrase));
    if (phrases->count() > 0) phrases->setCurrentRow(0);
  });
  if (!categories.empty()) names->setCurrentRow(0);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  layout->addWidget(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  QObject::connect(phrases, &QListWidget::itemDoubleClicked, &dialog, &QDialog::accept);
  if (dialog.exec() != QDialog::Accepted || phrases->currentItem() == nullptr) return false;
  out = toWString(phrases->currentItem()->text());
  return true;
}

}  // namespace tabulon::ui

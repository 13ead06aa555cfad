// engine_client LIBRARY CARD OUT.dxf [ROWS...]: creates one card of the library in a new
// drawing, one row per ROWS argument (the text of the column "工序"), then lists the
// cards of the drawing and changes the first row's "工序" cell, and saves the drawing.
// Shows the smallest use of KrmCardEngine and OstrelmTabulon from another program.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "drawing/card_engine.h"
#include "drawing/ostrelm_tabulon.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/svc/krm_card_root.h"
#include "host/svc/utf8.h"

namespace {

int IndexOf(const std::vector<std::wstring>& names, const std::wstring& name) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::cerr << "usage: engine_client LIBRARY CARD OUT.dxf [ROWS...]\n";
    return 2;
  }
  qaDocManager().addDocument(std::make_unique<QaDbDatabase>(), argv[3]);

  KrmTableRows rows;
  for (int i = 4; i < argc; ++i) rows.push_back({{L"工序", tabulon::svc::fromUtf8(argv[i])}});
  std::vector<QaDbObjectId> entities;
  {
    KrmCardEngine engine;
    engine.InitCardPath(tabulon::svc::fromUtf8(argv[1]));
    engine.SetCardName(tabulon::svc::fromUtf8(argv[2]));
    engine.SetTableContent(L"ROW", rows);
    if (engine.PlayCreate() != 1) {
      std::cerr << "the card was not created\n";
      return 1;
    }
    engine.GetAllEnt(entities);
  }  // the batch numbers are written here

  // The cards of the drawing, found through the library they came from.
  KrmSetCardRoot(tabulon::svc::fromUtf8(argv[1]));
  OstrelmTabulon cards;
  cards.Init();
  std::cout << "cards " << cards.GetCardCount() << "\n";
  for (int n = 0; n < cards.GetCardCount(); ++n) {
    std::cout << "card " << tabulon::svc::toUtf8(cards.GetFlagId(n)) << " " << tabulon::svc::toUtf8(cards.GetShowName(n))
              << " pages " << cards.GetPageCount(n) << "\n";
  }
  std::vector<std::wstring> blocks, columns;
  if (cards.GetCardCount() > 0 && cards.GetCell(blocks, 0) == 1 && argc > 4) {
    const int grid = IndexOf(blocks, L"ROW");
    cards.GetCellAtt(L"ROW", columns);
    const int column = IndexOf(columns, L"工序");
    const std::wstring text = tabulon::svc::fromUtf8(argv[4]) + L"(改)";
    if (grid < 0 || column < 0 || cards.SetItemText(0, grid, text, 0, column) != 1) {
      std::cerr << "the cell was not changed\n";
      return 1;
    }
    std::cout << "cell " << tabulon::svc::toUtf8(cards.GetItemText(0, grid, 0, column)) << "\n";
  }

  std::string error;
  if (qaWorkingDatabase()->saveAs(argv[3], QaDb::kDwgCurrent, &error) != Qa::eOk) {
    std::cerr << "cannot save " << argv[3] << ": " << error << "\n";
    return 1;
  }
  std::cout << "entities " << entities.size() << "\n";
  qaDocManager().closeAll();
  return entities.empty() ? 1 : 0;
}

// engine_client LIBRARY CARD OUT.dxf [ROWS...]: creates one card of the library in a new
// drawing, one row per ROWS argument (the text of the column "工序"), and saves it.
// Shows the smallest use of KrmCardEngine from another program: inside a host session,
// so that texts are measured as the other programs measure them.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "drawing/card_engine.h"
#include "host/ap/qa_host_session.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/utf8.h"

int main(int argc, char** argv) {
  if (argc < 4) {
    std::cerr << "usage: engine_client LIBRARY CARD OUT.dxf [ROWS...]\n";
    return 2;
  }
  QaEdScriptedIO io;
  QaHostSession session(io);
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
    if (const tabulon::Status finished = engine.Finish(); !finished.ok()) {
      std::cerr << finished.describe() << "\n";
      return 1;
    }
  }

  std::string error;
  if (qaWorkingDatabase()->saveAs(argv[3], QaDb::kDwgCurrent, &error) != Qa::eOk) {
    std::cerr << "cannot save " << argv[3] << ": " << error << "\n";
    return 1;
  }
  std::cout << "entities " << entities.size() << "\n";
  return entities.empty() ? 1 : 0;
}

#include "placed_card_cli.h"

#include <unistd.h>

#include <fstream>
#include <iostream>

#include "card/table_rows_file.h"
#include "drawing/card_tag.h"
#include "drawing/placed_card_find.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_object.h"
#include "host/db/qadb_open.h"
#include "host/svc/krm_card_root.h"
#include "host/svc/tabulon_paths.h"
#include "host/svc/utf8.h"

namespace tabulon::cli {

namespace fs = std::filesystem;

namespace {

// Whether any page group of the drawing belongs to a card.
bool HasCards(QaDbDatabase& db) {
  QaDbObjectPointer<QaDbDictionary> groups(db.groupDictionaryId(), QaDb::kForRead);
  if (!groups) return false;
  for (auto it = groups->newIterator(); !it->done(); it->next()) {
    QaDbObjectPointer<QaDbGroup> group(it->objectId(), QaDb::kForRead);
    if (group && HasCardTag(group.object()) && !group->allEntityIds().empty()) return true;
  }
  return false;
}

}  // namespace

void AddCardChoice(CLI::App* sub, CardChoice& choice) {
  auto* card = sub->add_option("--card", choice.code, "the card's code (see `tabulon cards`)");
  auto* pick = sub->add_option("--pick", choice.pick, "a point X,Y on a block of the card")->delimiter(',')->expected(2);
  card->excludes(pick);
  pick->excludes(card);
}

std::map<std::wstring, KrmTableRows> ReadDataOptions(const std::vector<std::string>& options) {
  std::map<std::wstring, KrmTableRows> tables;
  for (const std::string& option : options) {
    const auto eq = option.find('=');
    if (eq == std::string::npos || eq == 0 || eq + 1 == option.size())
      throw CliError("--data " + option + ": expected BLOCK=FILE");
    auto rows = ReadTableRows(fs::path(option.substr(eq + 1)));
    if (!rows.ok()) throw CliError(rows.describe());
    tables[svc::fromUtf8(option.substr(0, eq))] = std::move(rows).value();
  }
  return tables;
}

TempPath::TempPath(const std::string& suffix) {
  auto pattern = (fs::temp_directory_path() / ("tabulon-XXXXXX" + suffix)).string();
  std::vector<char> name(pattern.begin(), pattern.end());
  name.push_back('\0');
  const int fd = mkstemps(name.data(), static_cast<int>(suffix.size()));
  if (fd < 0) throw CliError("cannot create a temporary file in " + fs::temp_directory_path().string());
  ::close(fd);
  path_ = name.data();
}

TempPath::~TempPath() {
  std::error_code ec;
  fs::remove(path_, ec);
}

PlacedCardSession::PlacedCardSession(const std::string& drawing, const std::string& library) : drawing_(drawing) {
  if (!library.empty()) {
    std::error_code ec;
    if (!fs::is_directory(library, ec)) throw CliError("--library: not a folder: " + library);
    svc::setLibraryOverride(library);
  }
  fs::path path = drawing;
  if (drawing == "-") {
    input_.emplace(".dxf");
    std::ofstream out(input_->path(), std::ios::binary);
    out << std::cin.rdbuf();
    if (!out) throw CliError("cannot store the drawing read from standard input");
    path = input_->path();
  } else if (!fs::exists(path)) {
    throw CliError("no such drawing: " + drawing);
  }
  io_.setEcho(&std::cerr);
  session_ = std::make_unique<KrmHostSession>(io_);
  std::string error;
  if (!session_->openDrawing(path, &error)) throw CliError("cannot read the drawing " + drawing + ": " + error);
  if (!KrmResolveCardRoot()) throw CliError("the card library folder does not exist");
}

PlacedCardSession::~PlacedCardSession() = default;

KrmOpenedCard PlacedCardSession::OpenCard(const CardChoice& choice) {
  if (choice.code.empty() && choice.pick.empty()) throw CliError("give the card by --card CODE or --pick X,Y");
  QaDbDatabase* db = qaWorkingDatabase();
  if (!HasCards(*db)) throw CliError("the drawing " + drawing_ + " has no cards");
  Result<KrmFoundCard> found = Error{};
  if (!choice.pick.empty()) {
    const QaGePoint3d point(choice.pick[0], choice.pick[1], 0.0);
    const QaDbObjectId reference = FindCardReferenceAt(point, db);
    if (reference.isNull()) {
      throw CliError("no card of " + drawing_ + " has a block at " + std::to_string(point.x) + "," +
                     std::to_string(point.y));
    }
    found = FindPlacedCardOfEntity(reference);
  } else {
    found = FindPlacedCardByCode(svc::fromUtf8(choice.code), db);
  }
  if (!found.ok()) throw CliError(drawing_ + ": " + found.describe());
  auto opened = OpenPlacedCard(found->path, found->code, db);
  if (!opened.ok()) throw CliError(drawing_ + ": " + opened.describe());
  return std::move(opened).value();
}

void PlacedCardSession::Save(const std::string& output) {
  QaDbDatabase* db = qaWorkingDatabase();
  std::string error;
  if (output == "-") {
    TempPath out(".dxf");
    if (db->saveAs(out.path(), QaDb::kDwgCurrent, &error) != Qa::eOk) throw CliError("cannot write the drawing: " + error);
    std::ifstream in(out.path(), std::ios::binary);
    std::cout << in.rdbuf();
    std::cout.flush();
    return;
  }
  if (db->saveAs(output, QaDb::kDwgCurrent, &error) != Qa::eOk)
    throw CliError("cannot write the drawing " + output + ": " + error);
}

int PlacedCardSession::ModifiedCount() const {
  int count = 0;
  for (const QaDbObjectId& id : qaWorkingDatabase()->objectIds(true)) {
    if (const QaDbObject* object = id.rawObject(); object != nullptr && object->isModified()) ++count;
  }
  return count;
}

}  // namespace tabulon::cli

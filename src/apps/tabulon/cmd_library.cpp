// `tabulon library list|preview|delete|transfer`: the card library as the library
// dialog shows it (folders without a template of the listed kind hidden), a picture of
// a template's page, deleting a template, and copying cards with their tables to
// another folder.
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "authoring/card_out_model.h"
#include "authoring/load_cards_model.h"
#include "cli_authoring.h"
#include "cli_command.h"
#include "drawing/side_drawing.h"
#include "host/db/qadb_database.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/ed/qaed_user_io.h"
#include "host/rx/qa_lang_resource.h"
#include "shell/krm_host_session.h"
#include "shell/krm_tabulon_app.h"
#include "host/svc/utf8.h"
#include "picture_output.h"

namespace tabulon::cli {
namespace {

namespace fs = std::filesystem;
using Item = KrmLoadCardsModel::Item;

struct LibraryArgs {
  bool cards = false;
  bool tables = false;
  bool json = false;
  std::string name;
  bool next = false;
  std::string output;
  bool yes = false;
  std::string from;
  std::string to;
  std::vector<std::string> names;
  std::string answer;
  std::string library;
};

void ListText(const Item& item, int depth) {
  for (const auto& child : item.children) {
    std::cout << std::string(static_cast<std::size_t>(depth) * 2, ' ');
    if (child->kind == Item::Kind::kFolder) {
      std::cout << svc::toUtf8(child->text) << "/\n";
      ListText(*child, depth + 1);
    } else {
      std::cout << svc::toUtf8(child->entry.GetFileName()) << svc::toUtf8(child->entry.GetType()) << "  "
                << svc::toUtf8(child->text) << "  " << svc::toUtf8(child->entry.GetID()) << "\n";
    }
  }
}

void ListJson(const Item& item, nlohmann::json& out) {
  for (const auto& child : item.children) {
    if (child->kind == Item::Kind::kFolder) {
      ListJson(*child, out);
      continue;
    }
    out.push_back({{"folder", svc::toUtf8(KrmLoadCardsModel::RelativeFolderOf(*child))},
                   {"name", svc::toUtf8(child->entry.GetFileName())},
                   {"showName", svc::toUtf8(child->text)},
                   {"type", svc::toUtf8(child->entry.GetType())},
                   {"id", svc::toUtf8(child->entry.GetID())}});
  }
}

void RunList(const LibraryArgs& args) {
  const std::wstring root = AuthoringRoot(args.library);
  std::vector<std::wstring> types;
  if (args.cards || !args.tables) types.push_back(L".crd");
  if (args.tables || !args.cards) types.push_back(L".tbl");
  nlohmann::json out = nlohmann::json::array();
  for (const auto& type : types) {
    KrmLoadCardsModel library(root, type);
    library.Open();
    if (args.json) {
      ListJson(library.Root(), out);
    } else {
      std::cout << (type == L".crd" ? "cards" : "tables") << ":\n";
      ListText(library.Root(), 1);
    }
  }
  if (args.json) std::cout << out.dump(2) << "\n";
}

// The library model of the kind `name` names (a card when NAME.crd exists, else a
// table), with that template selected.
std::unique_ptr<KrmLoadCardsModel> Locate(const std::wstring& root, const std::string& name, bool tableOnly) {
  const auto [folder, stem] = SplitLibraryName(name);
  const bool isCard = !tableOnly && fs::exists(svc::toPath(root + folder + stem + L".crd"));
  auto library = std::make_unique<KrmLoadCardsModel>(root, isCard ? L".crd" : L".tbl");
  library->Open();
  if (!library->SelectPath(folder, stem)) throw CliError(name + ": there is no such template in the library");
  return library;
}

void RunPreview(const LibraryArgs& args) {
  const std::wstring root = AuthoringRoot(args.library);
  auto library = Locate(root, args.name, false);
  if (args.next) {
    if (!library->ListsCards()) throw CliError("--next: " + args.name + " is a table; only cards have a continuation");
    library->Flip();
  }
  const fs::path drawing = SideDrawingPath(svc::toPath(library->PreviewPath() + L".dwg"));
  QaDbDatabase db(false);
  std::string error;
  if (db.readDwgFile(drawing, 0, &error) != Qa::eOk)
    throw CliError("cannot read the page drawing " + drawing.string() + ": " + error);
  WritePicture(db, args.output);
}

void RunDelete(const LibraryArgs& args) {
  if (!args.yes) throw CliError("deleting cannot be undone: add --yes");
  const std::wstring root = AuthoringRoot(args.library);
  auto library = Locate(root, args.name, args.tables);
  if (!library->DeleteSelected(true)) throw CliError(args.name + ": nothing was deleted");
  std::cout << "deleted " << args.name << svc::toUtf8(library->WantedType()) << "\n";
}

void RunTransfer(const LibraryArgs& args) {
  const std::wstring root = AuthoringRoot(args.library);
  const std::wstring from = RelativeFolder(args.from, "--from");
  const auto answer = AnswerWord(args.answer);
  QaEdScriptedIO io;
  io.setEcho(&std::cerr);
  QaEdUserIOScope scope(io);
  KrmCardOutModel transfer(root, root + from);
  transfer.RefreshList();
  std::vector<std::wstring> names;
  for (const auto& name : args.names) names.push_back(svc::fromUtf8(name));
  if (!names.empty() && !transfer.SelectByFileNames(names))
    throw CliError("a card named is not in " + svc::toUtf8(root + from));
  transfer.SetTargetPath(svc::fromPath(fs::absolute(args.to)));
  // The one answer given serves every question: the target folder, and each card
  // that exists there.
  if (answer)
    for (std::size_t i = 0; i <= transfer.CardList().size(); ++i) io.addAnswer(*answer);
  if (const Status copied = transfer.OnOK(); !copied.ok()) {
    std::string hint = answer ? "" : " (a question was left unanswered: give --answer yes, no or cancel)";
    throw CliError(copied.describe() + hint);
  }
  for (const auto& file : transfer.Copied()) std::cout << "copied " << svc::toUtf8(file) << "\n";
}

const CliCommand registration(94, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<LibraryArgs>();
  auto* sub = app.add_subcommand("library", "browse, preview, prune and hand on the card library");
  sub->require_subcommand(1);
  auto withLibrary = [args, &globals](std::function<void(const LibraryArgs&)> run) {
    return [args, &globals, run] {
      args->library = globals.library;
      QaEdScriptedIO quiet;
      KrmHostSession session(quiet);
      QaResourceScope resource(KrmTabulonApp().resourceInstance());
      run(*args);
    };
  };

  auto* list = sub->add_subcommand("list", "the templates of the library, by folder");
  list->add_flag("--cards", args->cards, "card templates only");
  list->add_flag("--tables", args->tables, "table templates only");
  list->add_flag("--json", args->json, "print JSON");
  list->callback(withLibrary(RunList));

  auto* preview = sub->add_subcommand("preview", "a picture of a template's page");
  preview->add_option("name", args->name, "the template, e.g. dir/name")->required();
  preview->add_flag("--next", args->next, "the continuation page of a card");
  preview->add_option("-o,--output", args->output, "the picture, .png or .svg")->required();
  preview->callback(withLibrary(RunPreview));

  auto* remove = sub->add_subcommand("delete", "delete a template (a card, or with --tables a table)");
  remove->add_option("name", args->name, "the template, e.g. dir/name")->required();
  remove->add_flag("--tables", args->tables, "delete the table template of that name");
  remove->add_flag("--yes", args->yes, "confirm");
  remove->callback(withLibrary(RunDelete));

  auto* transfer = sub->add_subcommand("transfer", "copy cards with their tables to another folder");
  transfer->add_option("--from", args->from, "the library folder of the cards")->required();
  transfer->add_option("--to", args->to, "the target folder")->required();
  transfer->add_option("names", args->names, "the cards to copy (default: all of the folder)");
  transfer->add_option("--answer", args->answer, "answer to every question: yes, no or cancel");
  transfer->callback(withLibrary(RunTransfer));
});

}  // namespace
}  // namespace tabulon::cli

// `tabulon make-card --name NAME --first TABLE [--next TABLE] ...`: two table templates
// of the library become a card template, through the same model as the dialog; a
// failed comparison of the two tables prints its message and fails.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "authoring/make_card_model.h"
#include "cli_authoring.h"
#include "cli_command.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/rx/qa_lang_resource.h"
#include "shell/krm_host_session.h"
#include "shell/krm_tabulon_app.h"
#include "host/svc/utf8.h"

namespace tabulon::cli {
namespace {

namespace fs = std::filesystem;

struct MakeCardArgs {
  std::string name;
  std::string showName;
  std::string folder;
  std::string first;
  std::string next;
  std::vector<double> arrange;
  std::string answer;
  std::string library;
};

// A library run that picks the table `name` ("dir/stem"), or fails naming it.
KrmLoadCardsRunner PickTable(const std::string& name, const std::string& option) {
  return [name, option](KrmLoadCardsModel& library) {
    const auto [folder, stem] = SplitLibraryName(name);
    if (!library.SelectPath(folder, stem))
      throw CliError(option + " " + name + ": there is no such table template in the library");
    library.Confirm();
    return true;
  };
}

void RunMakeCard(const MakeCardArgs& args) {
  const std::wstring root = AuthoringRoot(args.library);
  const std::wstring folder = RelativeFolder(args.folder, "--folder");
  const auto answer = AnswerWord(args.answer);
  QaEdScriptedIO io;
  io.setEcho(&std::cerr);
  KrmHostSession session(io);
  QaResourceScope resource(KrmTabulonApp().resourceInstance());

  KrmMakeCardModel model(root);
  model.ChooseFirst(PickTable(args.first, "--first"));
  if (!args.next.empty()) model.ChooseNext(PickTable(args.next, "--next"));
  if (!args.arrange.empty()) {
    if (args.arrange.size() != 5) throw CliError("--arrange: expected HOR,VER,DIR,FIRST,COUNT");
    KrmCardDir dir;
    dir.SetHor(args.arrange[0]);
    dir.SetVer(args.arrange[1]);
    dir.SetDir(static_cast<int>(args.arrange[2]));
    dir.SetFstT(static_cast<int>(args.arrange[3]));
    dir.SetFstN(static_cast<int>(args.arrange[4]));
    if (dir.GetFstN() <= 0) throw CliError("--arrange: the page count per row or column must be above 0");
    model.EditArrangement([&dir](KrmCardDir& edited) {
      edited = dir;
      return true;
    });
  }
  const std::wstring path =
      WriteTemplate(model, [](const KrmMakeCardModel& m) { return m.CardPath(); }, args.name, args.showName, root,
                    folder, "card template", L".crd", io, answer);
  std::cout << "wrote " << svc::toUtf8(path) << ".crd\n";
}

const CliCommand registration(93, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<MakeCardArgs>();
  auto* sub = app.add_subcommand("make-card", "make a card template from a first-page and a continuation table");
  sub->add_option("--name", args->name, "file name of the card")->required();
  sub->add_option("--show-name", args->showName, "the name users see (default: the file name)");
  sub->add_option("--folder", args->folder, "folder of the card in the library (its tables lie there too)");
  sub->add_option("--first", args->first, "the first-page table, e.g. dir/name")->required();
  sub->add_option("--next", args->next, "the continuation table (default: the first)");
  sub->add_option("--arrange", args->arrange, "page layout HOR,VER,DIR,FIRST,COUNT (gaps, direction 0..3, "
                                                "1 row first or 2 column first, pages per row or column)")
      ->delimiter(',')
      ->expected(5);
  sub->add_option("--answer", args->answer, "answer to a card of the same name: yes, no or cancel");
  sub->callback([args, &globals] {
    args->library = globals.library;
    RunMakeCard(*args);
  });
});

}  // namespace
}  // namespace tabulon::cli

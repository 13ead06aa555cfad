// `tabulon make-table DRAWING --name NAME --multi BLOCK[:FILLORDER]... --page-base BLOCK
// ...`: a drawn page form becomes a table template of the library, through the same
// model as the dialog: the selection, the chosen classes, the fill orders, the page base
// and bindings, the same checks and messages, and the same-name question answered by
// --answer.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "authoring/block_scanning.h"
#include "authoring/make_table_model.h"
#include "cli_authoring.h"
#include "cli_command.h"
#include "drawing/side_drawing.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/svc/utf8.h"
#include "host/rx/qa_lang_resource.h"
#include "shell/krm_host_session.h"
#include "shell/krm_tabulon_app.h"

namespace tabulon::cli {
namespace {

namespace fs = std::filesystem;

struct MakeTableArgs {
  std::string drawing;
  std::string name;
  std::string showName;
  std::string folder;
  std::vector<double> window;
  std::vector<std::string> multi;
  std::vector<std::string> single;
  std::string pageBase;
  std::array<std::string, 5> pageAtts;  // CLASSCUR, CLASSSUM, BATCHCUR, BATCHSUM, AUTONUM
  std::string answer;
  std::string library;
};

const char* const kPageAttOptions[5] = {"--class-cur", "--class-sum", "--batch-cur", "--batch-sum", "--autonum"};

std::string Listed(const KrmSelSglModel& chooser) {
  std::string names;
  for (const auto& name : chooser.ClassNames()) names += (names.empty() ? "" : ", ") + svc::toUtf8(name);
  return names.empty() ? "none" : names;
}

// A chooser run that selects the named classes, or fails naming what is offered.
KrmSelSglRunner ChooseClasses(const std::vector<std::wstring>& names, const std::string& option) {
  return [names, option](KrmSelSglModel& chooser) {
    chooser.ClearSelection();
    for (const auto& name : names)
      if (!chooser.SelectByName(name))
        throw CliError(option + " " + svc::toUtf8(name) + ": no such block class here (offered: " + Listed(chooser) + ")");
    return KrmDialogEnd::kOk;
  };
}

KrmSelSglRunner ChooseAttribute(const std::string& value, const std::string& option) {
  return [value, option](KrmSelSglModel& chooser) {
    const auto colon = value.find(':');
    if (colon == std::string::npos) throw CliError(option + " " + value + ": expected BLOCK:TAG");
    const std::wstring block = svc::fromUtf8(value.substr(0, colon));
    if (!chooser.SelectByName(block, svc::fromUtf8(value.substr(colon + 1))))
      throw CliError(option + " " + value + ": no such block and tag here (blocks offered: " + Listed(chooser) + ")");
    return KrmDialogEnd::kOk;
  };
}

void RunMakeTable(const MakeTableArgs& args) {
  const std::wstring root = AuthoringRoot(args.library);
  const std::wstring folder = RelativeFolder(args.folder, "--folder");
  const auto answer = AnswerWord(args.answer);

  // Multi-record classes with their fill orders.
  std::vector<std::wstring> multiNames;
  std::vector<int> fillOrders;
  for (const auto& option : args.multi) {
    const auto colon = option.rfind(':');
    std::string name = option;
    int order = 0;
    if (colon != std::string::npos) {
      name = option.substr(0, colon);
      try {
        std::size_t used = 0;
        order = std::stoi(option.substr(colon + 1), &used);
        if (used != option.size() - colon - 1) throw std::invalid_argument("trailing text");
      } catch (const std::exception&) {
        throw CliError("--multi " + option + ": the fill order must be a number 0 to 7");
      }
      if (order < 0 || order > 7) throw CliError("--multi " + option + ": the fill order must be a number 0 to 7");
    }
    multiNames.push_back(svc::fromUtf8(name));
    fillOrders.push_back(order);
  }

  QaEdScriptedIO io({SelectionAnswer(args.window)});
  io.setEcho(&std::cerr);
  KrmHostSession session(io);
  QaResourceScope resource(KrmTabulonApp().resourceInstance());
  std::string error;
  if (!session.openDrawing(args.drawing, &error)) throw CliError("cannot read the drawing " + args.drawing + ": " + error);

  KrmMakeTblModel model(root);
  if (const Status picked = model.PickBlocks(); !picked.ok()) throw CliError(args.drawing + ": " + picked.describe());

  std::vector<std::wstring> singleNames;
  for (const auto& name : args.single) singleNames.push_back(svc::fromUtf8(name));
  if (!singleNames.empty()) model.ChooseSingleBlocks(ChooseClasses(singleNames, "--single"));
  model.ChooseMultiBlocks(ChooseClasses(multiNames, "--multi"));
  for (std::size_t i = 0; i < multiNames.size(); ++i) {
    const auto names = model.ClassList();
    for (std::size_t c = 0; c < names.size(); ++c)
      if (names[c] == multiNames[i]) model.SelectClass(static_cast<int>(c));
    model.SelectFillOrder(fillOrders[i]);
  }
  if (!args.pageBase.empty()) model.ChoosePageBase(ChooseClasses({svc::fromUtf8(args.pageBase)}, "--page-base"));
  for (int k = 0; k < 5; ++k) {
    const std::string& value = args.pageAtts[static_cast<std::size_t>(k)];
    if (value.empty()) continue;
    if (!model.ChoosePageAtt(k, ChooseAttribute(value, kPageAttOptions[k])))
      throw CliError(std::string(kPageAttOptions[k]) + " " + value + ": choose the " +
                     (k == 4 ? "multi-record" : "single-record") + " classes first");
  }

  const std::wstring path =
      WriteTemplate(model, [](const KrmMakeTblModel& m) { return m.TemplatePath(); }, args.name, args.showName, root,
                    folder, "table template", L".tbl", io, answer);
  std::cout << "wrote " << svc::toUtf8(path) << ".tbl and " << SideDrawingPath(svc::toPath(path + L".dwg")).string()
            << "\n";
}

const CliCommand registration(92, [](CLI::App& app, GlobalOptions& globals) {
  auto args = std::make_shared<MakeTableArgs>();
  auto* sub = app.add_subcommand("make-table", "make a table template of the library from a drawn page form");
  sub->add_option("drawing", args->drawing, "the DXF drawing with the form")->required()->check(CLI::ExistingFile);
  sub->add_option("--name", args->name, "file name of the template")->required();
  sub->add_option("--show-name", args->showName, "the name users see (default: the file name)");
  sub->add_option("--folder", args->folder, "folder of the template in the library, e.g. sub/dir");
  sub->add_option("--window", args->window, "pick what lies inside X0,Y0,X1,Y1 (default: all of model space)")
      ->delimiter(',')
      ->expected(4);
  sub->add_option("--multi", args->multi, "a multi-record class, with its fill order 0..7: BLOCK[:ORDER]")->required();
  sub->add_option("--single", args->single, "a single-record class");
  sub->add_option("--page-base", args->pageBase, "the multi-record class that counts the pages");
  sub->add_option("--class-cur", args->pageAtts[0], "page number in the card: BLOCK:TAG");
  sub->add_option("--class-sum", args->pageAtts[1], "pages of the card: BLOCK:TAG");
  sub->add_option("--batch-cur", args->pageAtts[2], "page number in the batch: BLOCK:TAG");
  sub->add_option("--batch-sum", args->pageAtts[3], "pages of the batch: BLOCK:TAG");
  sub->add_option("--autonum", args->pageAtts[4], "automatic row number: BLOCK:TAG");
  sub->add_option("--answer", args->answer, "answer to a template of the same name: yes, no or cancel");
  sub->callback([args, &globals] {
    args->library = globals.library;
    RunMakeTable(*args);
  });
});

}  // namespace
}  // namespace tabulon::cli

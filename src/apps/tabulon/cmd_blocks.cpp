// `tabulon blocks DRAWING [--window X0,Y0,X1,Y1] [--json]`: the attribute block classes
// of a selection (all of model space by default), each with its references and its
// cells in order with their descriptions, as a table template would take them.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "authoring/block_scanning.h"
#include "cli_authoring.h"
#include "cli_command.h"
#include "host/ed/qaed_result_codes.h"
#include "host/ed/qaed_scripted_io.h"
#include "host/ed/qaed_selection.h"
#include "host/svc/utf8.h"
#include "host/rx/qa_lang_resource.h"
#include "shell/krm_host_session.h"
#include "shell/krm_tabulon_app.h"

namespace tabulon::cli {
namespace {

struct BlocksArgs {
  std::string drawing;
  std::vector<double> window;
  bool json = false;
};

nlohmann::json CellJson(const KrmAttSet& att) {
  return {{"tag", svc::toUtf8(att.GetShowName())},     {"code", svc::toUtf8(att.GetInName())},
          {"type", svc::toUtf8(att.GetStringType())},  {"decimals", att.GetDecimalNum()},
          {"align", svc::toUtf8(att.GetAlignType())},   {"length", svc::toUtf8(att.GetRowType())},
          {"control", svc::toUtf8(att.GetCtrType())},   {"values", svc::toUtf8(att.GetCtrContent())},
          {"default", svc::toUtf8(att.GetDefault())},   {"expression", svc::toUtf8(att.GetCalc())},
          {"order", svc::toUtf8(att.GetShowType())},    {"editable", svc::toUtf8(att.GetCanEdit())},
          {"width", att.GetWidth()},                    {"height", att.GetHeight()}};
}

void PrintText(const std::vector<KrmDataAttTR>& classes) {
  for (const auto& record : classes) {
    std::cout << svc::toUtf8(record.blockName) << ": " << record.refCount << " reference"
              << (record.refCount == 1 ? "" : "s") << (record.IsMultiRecord() ? ", multi-record" : ", single-record")
              << "\n";
    int n = 0;
    for (const KrmAttSet& att : record.atts) {
      std::cout << "  " << ++n << ". " << svc::toUtf8(att.GetShowName());
      const nlohmann::json cell = CellJson(att);
      for (const char* key : {"code", "type", "decimals", "align", "length", "control", "values", "default",
                              "expression", "order", "editable"}) {
        const auto& value = cell[key];
        if (value.is_string() && value.get<std::string>().empty()) continue;
        if (value.is_number() && value.get<int>() == 0) continue;
        std::cout << " " << key << "=" << (value.is_string() ? value.get<std::string>() : value.dump());
      }
      std::cout << " width=" << att.GetWidth() << " height=" << att.GetHeight() << "\n";
    }
  }
}

void RunBlocks(const BlocksArgs& args) {
  QaEdScriptedIO io({SelectionAnswer(args.window)});
  KrmHostSession session(io);
  QaResourceScope resource(KrmTabulonApp().resourceInstance());
  std::string error;
  if (!session.openDrawing(args.drawing, &error)) throw CliError("cannot read the drawing " + args.drawing + ": " + error);
  QaEdSelectionSet selection;
  std::vector<KrmDataAttTR> classes;
  if (selection.select() == RTNORM) CollectBlockClasses(selection.ids(), classes);
  if (args.json) {
    nlohmann::json out = nlohmann::json::array();
    for (const auto& record : classes) {
      nlohmann::json cells = nlohmann::json::array();
      for (const KrmAttSet& att : record.atts) cells.push_back(CellJson(att));
      out.push_back({{"block", svc::toUtf8(record.blockName)},
                     {"references", record.refCount},
                     {"multiRecord", record.IsMultiRecord()},
                     {"cells", cells}});
    }
    std::cout << out.dump(2) << "\n";
    return;
  }
  if (classes.empty()) {
    std::cout << svc::toUtf8(KrmLoadString(123, L"没有选择有效的属性块")) << "\n";
    return;
  }
  PrintText(classes);
}

const CliCommand registration(90, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<BlocksArgs>();
  auto* sub = app.add_subcommand("blocks", "list the attribute block classes of a drawn form, with their cells");
  sub->add_option("drawing", args->drawing, "the DXF drawing")->required()->check(CLI::ExistingFile);
  sub->add_option("--window", args->window, "only what lies inside the window X0,Y0,X1,Y1")->delimiter(',')->expected(4);
  sub->add_flag("--json", args->json, "print JSON");
  sub->callback([args] { RunBlocks(*args); });
});

}  // namespace
}  // namespace tabulon::cli

// `tabulon describe DRAWING --block NAME --tag TAG [--set KEY=VALUE]... [--clear KEY]...
// -o OUT`: writes or clears the description of one cell (an attribute definition of a
// block) and saves the drawing, so that a form drawn elsewhere can be prepared here.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "authoring/cell_descriptor_editor.h"
#include "cli_command.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_database.h"
#include "host/svc/utf8.h"

namespace tabulon::cli {
namespace {

struct DescribeArgs {
  std::string drawing;
  std::string block;
  std::string tag;
  std::vector<std::string> sets;
  std::vector<std::string> clears;
  std::string output;
};

std::string Keys() {
  std::string keys;
  for (const auto& property : KrmCellDescriptorEditor::Properties())
    keys += (keys.empty() ? "" : ", ") + svc::toUtf8(property.key);
  return keys;
}

void RunDescribe(const DescribeArgs& args) {
  if (args.sets.empty() && args.clears.empty()) throw CliError("nothing to do: give --set KEY=VALUE or --clear KEY");
  QaDbDatabase db(false);
  std::string error;
  if (db.readDwgFile(args.drawing, 0, &error) != Qa::eOk)
    throw CliError("cannot read the drawing " + args.drawing + ": " + error);
  auto definition = FindAttributeDefinition(db, svc::fromUtf8(args.block), svc::fromUtf8(args.tag));
  if (!definition.ok()) throw CliError(args.drawing + ": " + definition.describe());
  KrmCellDescriptorEditor editor(definition.value());
  for (const auto& option : args.sets) {
    const auto eq = option.find('=');
    if (eq == std::string::npos || eq == 0) throw CliError("--set " + option + ": expected KEY=VALUE (keys: " + Keys() + ")");
    const Status set = editor.Set(svc::fromUtf8(option.substr(0, eq)), svc::fromUtf8(option.substr(eq + 1)));
    if (!set.ok()) throw CliError("--set " + option + ": " + set.describe() + " (keys: " + Keys() + ")");
  }
  for (const auto& key : args.clears) {
    const Status cleared = editor.Clear(svc::fromUtf8(key));
    if (!cleared.ok()) throw CliError("--clear " + key + ": " + cleared.describe() + " (keys: " + Keys() + ")");
  }
  if (const Status applied = editor.Apply(); !applied.ok()) throw CliError(applied.describe());
  if (db.saveAs(args.output, QaDb::kDwgCurrent, &error) != Qa::eOk)
    throw CliError("cannot write the drawing " + args.output + ": " + error);
}

const CliCommand registration(91, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<DescribeArgs>();
  auto* sub = app.add_subcommand("describe", "set or clear the description of a cell of a block");
  sub->add_option("drawing", args->drawing, "the DXF drawing")->required()->check(CLI::ExistingFile);
  sub->add_option("--block", args->block, "the block definition")->required();
  sub->add_option("--tag", args->tag, "the tag of the attribute definition")->required();
  sub->add_option("--set", args->sets, "KEY=VALUE; keys: " + Keys());
  sub->add_option("--clear", args->clears, "a key to remove");
  sub->add_option("-o,--output", args->output, "where to save the drawing")->required();
  sub->callback([args] { RunDescribe(*args); });
});

}  // namespace
}  // namespace tabulon::cli

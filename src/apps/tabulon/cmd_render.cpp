// `tabulon render DRAWING -o FILE.svg|.png`: a picture of a drawing's model space.
#include <memory>

#include "cli_command.h"
#include "host/db/qadb_database.h"
#include "host/gi/qagi_text_measure_hook.h"
#include "picture_output.h"

namespace tabulon::cli {
namespace {

struct RenderArgs {
  std::string drawing;
  std::string output;
  int size = 1600;
};

void runRender(const RenderArgs& args) {
  if (!IsPictureFile(args.output)) throw CliError("the picture " + args.output + " must end in .svg or .png");
  qagiInstallTextWidthFunction();
  QaDbDatabase db(false);
  std::string error;
  if (db.readDwgFile(args.drawing, 0, &error) != Qa::eOk)
    throw CliError(error.empty() ? "cannot read " + args.drawing : error);
  WritePicture(db, args.output, args.size);
}

const CliCommand registration(70, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<RenderArgs>();
  auto* sub = app.add_subcommand("render", "draw the model space of a drawing as an SVG or PNG picture");
  sub->add_option("drawing", args->drawing, "the DXF drawing")->required()->check(CLI::ExistingFile);
  sub->add_option("-o,--output", args->output, "the picture, ending in .svg or .png")->required();
  sub->add_option("--size", args->size, "pixels of the picture's longer side (default 1600)")
      ->check(CLI::Range(16, 20000));
  sub->callback([args] { runRender(*args); });
});

}  // namespace
}  // namespace tabulon::cli

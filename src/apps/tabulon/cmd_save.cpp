// `tabulon save IN OUT [--version R2000..R2018]`: reads a drawing and writes it
// again (by default in the version read; R12 to R14 become R2000). "-" stands
// for standard input or output.
#include <iostream>
#include <memory>
#include <string>

#include "cli_command.h"
#include "host/db/qadb_database.h"
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_loader.h"
#include "host/dxf/dxf_writer.h"

namespace tabulon::cli {
namespace {

struct SaveArgs {
  std::string input;
  std::string output;
  std::string version;
  bool quiet = false;
};

void RunSave(const SaveArgs& args) {
  dxf::DxfWriteOptions options;
  if (!args.version.empty()) {
    options.version = dxf::dxfWritableVersionFromName(args.version);
    if (!options.version)
      throw CliError("unknown version \"" + args.version + "\"; use R2000, R2004, R2007, R2010, R2013 or R2018", 2);
  }
  QaDbDatabase db(false);
  dxf::DxfLoadInfo info;
  try {
    dxf::dxfLoadFile(args.input, db, &info);
    dxf::dxfSaveFile(db, args.output, options);
  } catch (const dxf::DxfError& e) {
    throw CliError(e.what());
  }
  if (!args.quiet && !info.audit.empty()) {
    std::cerr << "tabulon: " << info.audit.size() << " repair" << (info.audit.size() == 1 ? "" : "s")
              << " made while reading " << args.input << ":\n";
    for (const auto& line : info.audit.lines()) std::cerr << "  " << line << "\n";
  }
}

const CliCommand registration(81, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<SaveArgs>();
  auto* sub = app.add_subcommand("save", "read a DXF drawing and write it again, optionally in another version");
  sub->add_option("input", args->input, "the DXF drawing to read (- for standard input)")->required();
  sub->add_option("output", args->output, "where to write (- for standard output)")->required();
  sub->add_option("--version", args->version, "R2000, R2004, R2007, R2010, R2013 or R2018 (default: as read)");
  sub->add_flag("-q,--quiet", args->quiet, "do not list the repairs made while reading");
  sub->callback([args] { RunSave(*args); });
});

}  // namespace
}  // namespace tabulon::cli

// `tabulon info DRAWING [--json]`: what a drawing holds, by DXF type in model
// space and each block (external references named as such), its groups,
// extended data applications, text styles, version and encoding, and the
// repairs made while reading it.
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "cli_command.h"
#include "host/db/qadb.h"
#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_loader.h"
#include "host/dxf/dxf_tag_writer.h"
#include "host/svc/utf8.h"

namespace tabulon::cli {
namespace {

using svc::toUtf8;

struct BlockCounts {
  std::string name;
  bool externalReference = false;
  bool overlay = false;
  std::string path;  // of the drawing an external reference names
  std::map<std::string, int> types;
  int total = 0;
};

struct GroupInfo {
  std::string name;
  std::string description;
  int members = 0;
};

struct DrawingInfo {
  std::string file;
  dxf::DxfLoadInfo load;
  std::vector<BlockCounts> blocks;  // model space first, then paper space, then blocks
  std::vector<GroupInfo> groups;
  std::map<std::string, int> xdataApps;  // application -> objects carrying it
  std::vector<std::string> textStyles;
};

DrawingInfo Describe(const std::string& path) {
  DrawingInfo info;
  info.file = path;
  QaDbDatabase db(false);
  try {
    dxf::dxfLoadFile(path, db, &info.load);
  } catch (const dxf::DxfError& e) {
    throw CliError(e.what());
  }
  if (auto* table = QaDbBlockTable::cast(db.blockTableId().rawObject())) {
    for (QaDbObjectId id : table->recordIds()) {
      auto* btr = QaDbBlockTableRecord::cast(id.rawObject());
      if (!btr || id.isErased()) continue;
      BlockCounts counts;
      counts.name = toUtf8(btr->name());
      counts.externalReference = btr->isFromExternalReference();
      counts.overlay = (btr->flags() & QaDbBlockTableRecord::kOverlay) != 0;
      counts.path = toUtf8(btr->pathName());
      for (QaDbObjectId e : btr->liveEntityIds()) {
        QaDbObject* o = e.rawObject();
        if (!o) continue;
        counts.types[toUtf8(o->dxfType())]++;
        ++counts.total;
        if (auto* ref = QaDbBlockReference::cast(o))
          for (QaDbObjectId a : ref->attributeIds())
            if (!a.isErased() && a.rawObject()) {
              counts.types["ATTRIB"]++;
              ++counts.total;
            }
      }
      bool layout = btr->isLayout();
      // An external reference is named also when empty: its entities live in another drawing.
      if (!layout && counts.total == 0 && !counts.externalReference) continue;
      if (counts.name == "*Model_Space" || counts.name == "*MODEL_SPACE") info.blocks.insert(info.blocks.begin(), counts);
      else info.blocks.push_back(counts);
    }
  }
  QaDbObjectId groupDict;
  if (auto* nod = QaDbDictionary::cast(db.namedObjectsDictionaryId().rawObject())) nod->getAt(L"ACAD_GROUP", groupDict);
  if (auto* groups = QaDbDictionary::cast(groupDict.rawObject())) {
    for (const auto& entry : groups->entries()) {
      auto* g = QaDbGroup::cast(entry.id.rawObject());
      if (!g || entry.id.isErased()) continue;
      info.groups.push_back({toUtf8(entry.key), toUtf8(g->description()), g->numEntities()});
    }
  }
  for (QaDbObjectId id : db.objectIds()) {
    QaDbObject* o = id.rawObject();
    if (!o) continue;
    for (const auto& app : o->allXData()) info.xdataApps[toUtf8(app.appName)]++;
    if (auto* ref = QaDbBlockReference::cast(o))
      for (QaDbObjectId a : ref->attributeIds())
        if (QaDbObject* att = a.rawObject())
          for (const auto& app : att->allXData()) info.xdataApps[toUtf8(app.appName)]++;
  }
  if (auto* styles = QaDbTextStyleTable::cast(db.textStyleTableId().rawObject()))
    for (QaDbObjectId id : styles->recordIds())
      if (auto* st = QaDbSymbolTableRecord::cast(id.rawObject()); st && !id.isErased())
        info.textStyles.push_back(toUtf8(st->name()));
  return info;
}

void PrintText(const DrawingInfo& info, std::ostream& out) {
  out << "drawing: " << info.file << "\n";
  out << "version: " << dxf::dxfVersionName(info.load.version) << " (" << dxf::dxfVersionCode(info.load.version) << ")\n";
  out << "encoding: " << info.load.encoding << " (" << info.load.encodingReason << ")\n";
  for (const auto& b : info.blocks) {
    std::string what = b.name == "*Model_Space" ? std::string("model space")
                       : b.name == "*Paper_Space" ? std::string("paper space")
                       : b.externalReference      ? (b.overlay ? "external reference (overlay) " : "external reference ") +
                                                        b.name + (b.path.empty() ? "" : " to " + b.path)
                                                  : "block " + b.name;
    out << what << ": " << b.total
        << (b.total == 1 ? " entity\n" : " entities\n");
    for (const auto& [type, n] : b.types) out << "  " << type << " " << n << "\n";
  }
  out << "groups: " << info.groups.size() << "\n";
  for (const auto& g : info.groups)
    out << "  " << g.name << ": " << g.members << " members" << (g.description.empty() ? "" : " \"" + g.description + "\"") << "\n";
  out << "extended data applications: " << info.xdataApps.size() << "\n";
  for (const auto& [app, n] : info.xdataApps) out << "  " << app << " " << n << "\n";
  out << "text styles: " << info.textStyles.size() << "\n";
  for (const auto& s : info.textStyles) out << "  " << s << "\n";
  out << "repairs: " << info.load.audit.size() << "\n";
  for (const auto& line : info.load.audit.lines()) out << "  " << line << "\n";
}

void PrintJson(const DrawingInfo& info, std::ostream& out) {
  nlohmann::ordered_json j;
  j["file"] = info.file;
  j["version"] = dxf::dxfVersionName(info.load.version);
  j["acadver"] = dxf::dxfVersionCode(info.load.version);
  j["encoding"] = info.load.encoding;
  j["encodingReason"] = info.load.encodingReason;
  nlohmann::ordered_json blocks = nlohmann::ordered_json::object();
  for (const auto& b : info.blocks) {
    blocks[b.name] = {{"total", b.total}, {"types", b.types}};
    if (b.externalReference)
      blocks[b.name]["externalReference"] = {{"path", b.path}, {"overlay", b.overlay}};
  }
  j["blocks"] = blocks;
  nlohmann::ordered_json groups = nlohmann::ordered_json::array();
  for (const auto& g : info.groups)
    groups.push_back({{"name", g.name}, {"description", g.description}, {"members", g.members}});
  j["groups"] = groups;
  j["xdataApplications"] = info.xdataApps;
  j["textStyles"] = info.textStyles;
  nlohmann::ordered_json repairs = nlohmann::ordered_json::array();
  for (const auto& f : info.load.audit.findings()) repairs.push_back({{"line", f.line}, {"message", f.message}});
  j["repairs"] = repairs;
  out << j.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
}

struct InfoArgs {
  std::string drawing;
  bool json = false;
};

const CliCommand registration(80, [](CLI::App& app, GlobalOptions&) {
  auto args = std::make_shared<InfoArgs>();
  auto* sub = app.add_subcommand("info", "what a DXF drawing holds: entities by type, groups, extended data, styles, repairs");
  sub->add_option("drawing", args->drawing, "the DXF drawing (- for standard input)")->required();
  sub->add_flag("--json", args->json, "print JSON instead of text");
  sub->callback([args] {
    DrawingInfo info = Describe(args->drawing);
    if (args->json) PrintJson(info, std::cout);
    else PrintText(info, std::cout);
  });
});

}  // namespace
}  // namespace tabulon::cli

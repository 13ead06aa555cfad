#include "samples/sample_library.h"

#include <algorithm>
#include <functional>
#include <map>
#include <stdexcept>

#include "card/card_attributes.h"
#include "card/table_attributes.h"
#include "drawing/cell_descriptor.h"
#include "drawing/extents_util.h"
#include "drawing/side_drawing.h"
#include "host/db/qadb_attribute_definition.h"
#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"
#include "host/svc/utf8.h"
#include "samples/sample_pages.h"

namespace tabulon::samples {

namespace {

using tabulon::svc::fromPath;
using tabulon::svc::toUtf8;

// One block class found on a drawn page: the block, its references and its cells.
struct BlockClass {
  std::wstring name;
  QaDbObjectId block;
  int count = 0;
  std::vector<KrmAttSet> atts;
};

int orderOf(const KrmAttSet& att) {
  try {
    return std::stoi(att.GetShowType());
  } catch (const std::exception&) {
    return 0;
  }
}

// The cells of a block as an authoring tool reads them: each attribute definition's
// descriptor, as wide as the distance of its two alignment points and as high as its
// text, the first definition of a tag winning, sorted by order (stable).
std::vector<KrmAttSet> cellsOfBlock(QaDbObjectId block) {
  std::vector<KrmAttSet> atts;
  QaDbObjectPointer<QaDbBlockTableRecord> record(block, QaDb::kForRead);
  if (!record) return atts;
  for (QaDbObjectId id : record->liveEntityIds()) {
    QaDbObjectPointer<QaDbAttributeDefinition> def(id, QaDb::kForRead);
    if (!def) continue;
    const bool seen = std::any_of(atts.begin(), atts.end(), [&](const KrmAttSet& a) { return a.GetShowName() == def->tag(); });
    if (seen) continue;
    KrmAttSet att;
    ReadCellDefinition(*def, att);
    att.SetWidth(def->position().distanceTo(def->alignmentPoint()));
    att.SetHeight(def->height());
    atts.push_back(att);
  }
  std::stable_sort(atts.begin(), atts.end(), [](const KrmAttSet& a, const KrmAttSet& b) { return orderOf(a) < orderOf(b); });
  return atts;
}

// Block classes of the references in model space, in order of first appearance.
std::vector<BlockClass> blockClasses(const std::vector<QaDbObjectId>& ids) {
  std::vector<BlockClass> classes;
  for (QaDbObjectId id : ids) {
    QaDbObjectPointer<QaDbBlockReference> ref(id, QaDb::kForRead);
    if (!ref) continue;
    auto it = std::find_if(classes.begin(), classes.end(),
                           [&](const BlockClass& c) { return c.block == ref->blockTableRecord(); });
    if (it != classes.end()) {
      ++it->count;
      continue;
    }
    QaDbObjectPointer<QaDbBlockTableRecord> block(ref->blockTableRecord(), QaDb::kForRead);
    if (!block) continue;
    BlockClass c{block->getName(), ref->blockTableRecord(), 1, cellsOfBlock(ref->blockTableRecord())};
    if (!c.atts.empty()) classes.push_back(std::move(c));
  }
  return classes;
}

// Draws one page, makes its table template from what was drawn and writes both the
// `.tbl` and the side drawing. Returns the files.
std::vector<std::filesystem::path> writeTable(const std::filesystem::path& folder, const std::wstring& stem,
                                              const std::wstring& showName,
                                              const std::function<PageLayout(FormSheet&)>& draw) {
  QaDbDatabase db;
  FormSheet sheet(db);
  const PageLayout layout = draw(sheet);
  const std::vector<QaDbObjectId> ids = sheet.ModelSpaceIds();

  KrmTableAttributes table;
  table.setTblName(stem, showName);
  table.setPageBase(layout.pageBase);
  std::vector<KrmBlockSet> single, multi;
  KrmTextListMap directions;
  for (const BlockClass& c : blockClasses(ids)) {
    if (c.count > 1) {
      multi.emplace_back(c.name, c.atts);
      directions[c.name] = {std::to_wstring(layout.fillOrder), std::to_wstring(c.count)};
    } else {
      single.emplace_back(c.name, c.atts);
    }
  }
  table.setSCell(single);
  table.setMCell(multi);
  table.setMDirType(directions);
  table.setPageAtt(layout.pageAtts);
  QaGePoint3d low, high;
  BoxOf(ids, low, high);
  table.setWidth(high.x - low.x);
  table.setHeight(high.y - low.y);

  const std::filesystem::path base = folder / tabulon::svc::toPath(stem);
  if (tabulon::Status written = table.WriteTable(fromPath(base)); !written.ok())
    throw std::runtime_error("sample library: " + written.describe());
  std::string error;
  if (WriteSideDrawing(fromPath(base), table.getID(), ids, &error) != 1)
    throw std::runtime_error("sample library: " + error);
  std::filesystem::path tbl = base, dxf = base;
  tbl += L".tbl";
  dxf += kSideDrawingExtension;
  return {tbl, dxf};
}

std::filesystem::path writeCard(const std::filesystem::path& folder, const std::wstring& stem,
                                const std::wstring& showName, const std::wstring& first, const std::wstring& next,
                                const KrmCardDir& dir) {
  KrmCardAttributes card;
  card.setCardName(stem, showName);
  card.addTblFile(first);
  card.addTblFile(next);
  card.setCardDir(dir);
  std::filesystem::path path = folder / tabulon::svc::toPath(stem);
  path += L".crd";
  if (tabulon::Status written = card.WriteCard(fromPath(path)); !written.ok())
    throw std::runtime_error("sample library: " + written.describe());
  return path;
}

}  // namespace

SampleLibrary WriteSampleLibrary(const std::filesystem::path& folder) {
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  if (!std::filesystem::is_directory(folder))
    throw std::runtime_error("sample library: cannot make the folder " + folder.string());
  SampleLibrary library{folder, {}};
  auto add = [&](const std::vector<std::filesystem::path>& files) {
    library.files.insert(library.files.end(), files.begin(), files.end());
  };
  add(writeTable(folder, kProcessFirstTable, L"机械加工工艺过程卡片（首页）", DrawProcessFirstPage));
  add(writeTable(folder, kProcessNextTable, L"机械加工工艺过程卡片（续页）", DrawProcessNextPage));
  add(writeTable(folder, kPartsListFirstTable, L"零件明细表（首页）", DrawPartsListFirstPage));
  add(writeTable(folder, kPartsListNextTable, L"零件明细表（续页）", DrawPartsListNextPage));

  // Pages side by side to the right, a new row above after four.
  KrmCardDir dir;
  dir.SetHor(10);
  dir.SetVer(10);
  dir.SetDir(0);
  dir.SetFstT(1);
  dir.SetFstN(4);
  add({writeCard(folder, kProcessCard, L"机械加工工艺过程卡片", kProcessFirstTable, kProcessNextTable, dir)});
  add({writeCard(folder, kPartsListCard, L"零件明细表", kPartsListFirstTable, kPartsListNextTable, dir)});
  return library;
}

std::string SampleOptionsText() {
  return toUtf8(std::wstring(
      L"; Frames, title blocks and bill-of-materials rows of the sample assembly drawing.\n"
      L"[KrmFrame]\n"
      L"FrameBlocks=A3FRAME\n"
      L"TitleBlocks=TITLE\n"
      L"TitleMap=图样代号=图号;图样名称=名称\n"
      L"BomRowBlocks=BOMROW\n"
      L"BomOrderKey=序号\n"
      L"\n"
      L"; The bill of materials goes into the parts list card.\n"
      L"[KrmcadTabulon_List]\n"
      L"LISTEXP_DATA_CARD=") + kPartsListCard + L"\n"
      L"LISTEXP_DATA_TITLE=" + kBomHeadBlock + L"\n"
      L"LISTEXP_DATA_LIST=" + kBomLineBlock + L"\n");
}

}  // namespace tabulon::samples

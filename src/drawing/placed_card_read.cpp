#include "drawing/placed_card_read.h"

#include <cstddef>
#include <utility>

#include "card/data_grid.h"
#include "drawing/card_tag.h"
#include "drawing/page_reader.h"
#include "host/ap/qaap_doc_manager.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_open.h"
#include "host/svc/utf8.h"

namespace {

// A line break that overflow left at the end of a block ("\n" alone) is the forced break
// "\r\n" of the cell it came from.
std::wstring RestoreBreak(std::wstring text) {
  const std::size_t n = text.size();
  if (n > 0 && text[n - 1] == L'\n' && (n < 2 || text[n - 2] != L'\r')) text.insert(n - 1, 1, L'\r');
  return text;
}

void ClearValues(KrmDataGrid& grid) {
  for (KrmDataTCol& col : grid.cols) col.values.clear();
}

}  // namespace

int LoadPlacedCard(KrmCardData& data, KrmPlacedCard& card) {
  card.otherGrids.clear();
  for (int g = 0; g < data.GridCount(); ++g) {
    KrmDataGrid grid;
    data.GetGridAt(g, grid);
    std::vector<std::wstring> names;
    names.reserve(grid.cols.size());
    for (const KrmDataTCol& col : grid.cols) names.push_back(col.att.GetShowName());
    if (g == data.GetBaseGrid()) {
      card.baseBlockName = grid.blockName;
      card.baseColNames = std::move(names);
      card.baseFillOrder = grid.fillOrder;
    } else {
      card.otherGrids.push_back(KrmLoadGrid{grid.blockName, std::move(names), grid.fillOrder});
    }
  }
  return 1;
}

int ReadBaseGridRows(const KrmPlacedCard& card, KrmDataGrid& grid) {
  ClearValues(grid);
  for (const KrmLoadGroup& page : card.pages) {
    for (const KrmLoadAtt& block : page.refs) {
      if (block.recordHead != 0) {
        for (std::size_t c = 0; c < grid.cols.size(); ++c) {
          grid.cols[c].values.push_back(c < block.texts.size() ? RestoreBreak(block.texts[c]) : std::wstring());
        }
        continue;
      }
      // The overflow of the record before: joined to it without a separator. A column
      // with no record yet cannot take it.
      for (std::size_t c = 0; c < grid.cols.size() && c < block.texts.size(); ++c) {
        std::vector<std::wstring>& values = grid.cols[c].values;
        if (values.empty()) continue;
        values.back() = RestoreBreak(std::move(values.back())) + RestoreBreak(block.texts[c]);
      }
    }
  }
  return 1;
}

int ReadOtherGridRows(const KrmLoadGroup& page, KrmDataGrid& grid) {
  ClearValues(grid);
  for (const KrmLoadTAtt& cls : page.otherClasses) {
    if (cls.blockName != grid.blockName) continue;
    const std::size_t rows = grid.rowsFirst < 0 ? 0 : static_cast<std::size_t>(grid.rowsFirst);
    for (std::size_t r = 0; r < cls.refs.size() && r < rows; ++r) {
      const KrmLoadAtt& ref = cls.refs[r];
      for (std::size_t c = 0; c < grid.cols.size(); ++c) {
        grid.cols[c].values.push_back(c < ref.texts.size() ? RestoreBreak(ref.texts[c]) : std::wstring());
      }
    }
    break;
  }
  return 1;
}

int ReadPlacedCardData(KrmPlacedCard& card, KrmCardData& data) {
  if (card.pages.empty()) return 0;
  const int base = data.GetBaseGrid();
  for (int g = 0; g < data.GridCount(); ++g) {
    KrmDataGrid grid;
    data.GetGridAt(g, grid);
    if (g == base) {
      ReadBaseGridRows(card, grid);
    } else {
      ReadOtherGridRows(card.pages.front(), grid);
    }
    data.SetGridAt(g, grid);
  }
  return 1;
}

tabulon::Result<KrmOpenedCard> OpenPlacedCard(const std::wstring& path, const std::wstring& cardCode,
                                              QaDbDatabase* database) {
  if (database == nullptr) database = qaWorkingDatabase();
  if (database == nullptr) return tabulon::MakeError("no drawing is open");
  KrmOpenedCard opened;
  opened.cardTemplate = std::make_unique<KrmCardTemplate>();
  if (opened.cardTemplate->LoadTemplate(path) != 1) {
    std::string why = tabulon::svc::toUtf8(opened.cardTemplate->LoadProblems());
    return tabulon::MakeError("the card template of card " + tabulon::svc::toUtf8(cardCode) + " cannot be loaded" +
                              (why.empty() ? std::string() : ": " + why))
        .inFile(tabulon::svc::toUtf8(path));
  }
  opened.data.InitFromTemplate(*opened.cardTemplate);
  opened.card.cardCode = cardCode;
  LoadPlacedCard(opened.data, opened.card);
  if (ReadPageGroups(*database, cardCode, opened.card) == 0) {
    return tabulon::MakeError("the drawing holds no page of the card " + tabulon::svc::toUtf8(cardCode));
  }
  {
    QaDbObjectPointer<QaDbGroup> group(opened.card.pages.front().groupId, QaDb::kForRead);
    if (group) {
      KrmCardTag tag;
      ReadCardTagOfGroup(group.object(), tag);
      opened.data.PageStep() = tag.pageStep;
      opened.data.PageStartSum() = tag.pageStartSum;
      opened.data.PageStartCur() = tag.pageStartCur;
    }
  }
  ReadPlacedCardData(opened.card, opened.data);
  opened.data.TrimTrailingRows();
  return opened;
}

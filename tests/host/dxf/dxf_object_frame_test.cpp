#include "host/dxf/dxf_object_frame.h"
#include "host/dxf/dxf_section_reader.h"
#include "host/dxf/dxf_tag_reader.h"

#include <gtest/gtest.h>

#include <vector>

using namespace tabulon::dxf;

TEST(DxfObjectFrame, FindsHandleGroupsReactorsOwnerAndExtendedData) {
  const std::string text =
      "  0\nLINE\n  5\n2A\n102\n{MYAPP\n  1\nx\n102\n}\n102\n{ACAD_XDICTIONARY\n360\n3B\n102\n}\n"
      "102\n{ACAD_REACTORS\n330\n4C\n330\n4D\n102\n}\n330\n1F\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n"
      "330\n99\n1001\nAPP\n1000\nv\n";
  DxfTagReader reader(text, "t.dxf");
  std::vector<DxfTag> tags;
  DxfTag t;
  while (reader.next(t)) tags.push_back(t);
  DxfObjectFrame f = dxfReadFrame(tags);
  EXPECT_EQ(f.type, "LINE");
  EXPECT_EQ(f.handle, 0x2Au);
  ASSERT_EQ(f.appGroups.size(), 3u);
  EXPECT_EQ(f.appGroups[0].name, "MYAPP");
  EXPECT_EQ(f.appGroups[0].end - f.appGroups[0].begin, 3u);  // "{MYAPP", one tag, "}"
  EXPECT_EQ(f.xdictionary, 0x3Bu);
  EXPECT_EQ(f.reactors, (std::vector<std::uint64_t>{0x4C, 0x4D}));
  EXPECT_EQ(f.owner, 0x1Fu);  // not the 330 inside the body
  EXPECT_EQ(tags[f.bodyBegin].value, "AcDbEntity");
  EXPECT_EQ(tags[f.xdataBegin].code, 1001);

  // An application group that is never closed ends where the body starts.
  const std::string open = "  0\nLINE\n  5\n2B\n102\n{BROKEN\n  1\nx\n100\nAcDbEntity\n";
  DxfTagReader r2(open, "t.dxf");
  std::vector<DxfTag> tags2;
  while (r2.next(t)) tags2.push_back(t);
  DxfObjectFrame g = dxfReadFrame(tags2);
  ASSERT_EQ(g.appGroups.size(), 1u);
  EXPECT_EQ(tags2[g.bodyBegin].value, "AcDbEntity");
  EXPECT_FALSE(g.hasXData(tags2.size()));
}


TEST(DxfObjectFrame, TheSectionReadersNoteOfExtendedDataGivesTheSameFrame) {
  // Extended data after the body, none, one inside an application group (not the
  // start of the object's extended data), and codes padded or not.
  const std::string text =
      "  0\nSECTION\n  2\nENTITIES\n"
      "  0\nLINE\n  5\n2A\n330\n1F\n100\nAcDbEntity\n  8\n0\n1001\nAPP\n1070\n7\n"
      "0\nLINE\n5\n2B\n330\n1F\n100\nAcDbEntity\n8\n0\n"
      "  0\nLINE\n  5\n2C\n102\n{MYAPP\n1001\nINNER\n102\n}\n330\n1F\n100\nAcDbEntity\n1001\nAPP\n1000\nv\n"
      "  0\nPOINT\n  5\n2D\n102\n{MYAPP\n1001\nINNER\n102\n}\n330\n1F\n100\nAcDbEntity\n"
      "  0\nENDSEC\n  0\nEOF\n";
  DxfSource source("t.dxf", text);
  DxfAuditReport audit;
  DxfSectionReader sections(source, audit);
  ASSERT_TRUE(sections.nextSection());
  DxfRawObject raw;
  std::vector<std::size_t> starts;
  while (sections.nextObject(raw)) {
    const DxfObjectFrame scanned = dxfReadFrame(raw.tags);
    const DxfObjectFrame noted = dxfReadFrame(raw.tags, 1, raw.firstXData);
    EXPECT_EQ(noted.xdataBegin, scanned.xdataBegin) << raw.line;
    EXPECT_EQ(noted.bodyBegin, scanned.bodyBegin) << raw.line;
    starts.push_back(scanned.xdataBegin);
  }
  // The first and third have extended data after the body; the others none.
  ASSERT_EQ(starts.size(), 4u);
  EXPECT_EQ(starts, (std::vector<std::size_t>{5, 5, 7, 7}));
}

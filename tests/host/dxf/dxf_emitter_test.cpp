// An object written from its fields keeps what the codec does not model: tags
// of each subclass in that subclass, subclasses nobody writes, application
// groups, and numbers that did not change, in their original text.
#include "dxf_example_builder.h"
#include "dxf_test_util.h"


#include <gtest/gtest.h>

#include <functional>

using namespace tabulon::dxf;
using namespace tabulon::dxf::test;

namespace {

// The example page with the first LINE (handle 21) given extra tags.
std::string pageWithDecoratedLine() {
  QaDbDatabase db;
  buildExamplePage(db);
  std::string text = saveText(db);
  auto at = text.find("  0\nLINE\n  5\n21\n");
  EXPECT_NE(at, std::string::npos);
  auto entity = text.find("100\nAcDbEntity\n", at) + 15;
  text.insert(entity, "420\n16711680\n440\n33554687\n347\nFFFFF\n");
  auto line = text.find("100\nAcDbLine\n", at) + 13;
  text.insert(line, " 10\n0.0000000000\n");  // the start point's X, written the long way
  text.erase(text.find(" 10\n0.0\n", line + 17), 8);
  auto end = text.find("  0\n", line);
  text.insert(end, "100\nAcDbMyExtension\n  1\nkept\n");
  // The application group of another program.
  auto handle = text.find("  5\n21\n", at) + 7;
  text.insert(handle, "102\n{MYAPP\n  1\nnote\n102\n}\n");
  return text;
}

std::string objectText(const std::string& file, const std::string& type, const std::string& handle) {
  auto at = file.find("  0\n" + type + "\n  5\n" + handle + "\n");
  if (at == std::string::npos) return {};
  return file.substr(at, file.find("  0\n", at + 4) - at);
}

void modifyLine(QaDbDatabase& db, const std::function<void(QaDbLine&)>& change) {
  QaDbObjectPointer<QaDbLine> line(db.objectIdFromHandle(QaDbHandle(0x21)), QaDb::kForWrite);
  ASSERT_TRUE(line);
  change(*line);
}

}  // namespace

TEST(DxfEmitter, ChangedEntityKeepsWhatIsNotModelledWhereItWas) {
  auto db = loadText(pageWithDecoratedLine());
  modifyLine(*db, [](QaDbLine& l) { l.setEndPoint(QaGePoint3d(180, 1, 0)); });
  std::string line = objectText(saveText(*db), "LINE", "21");
  ASSERT_FALSE(line.empty());
  auto entity = line.find("100\nAcDbEntity\n");
  auto lineSub = line.find("100\nAcDbLine\n");
  auto ext = line.find("100\nAcDbMyExtension\n  1\nkept\n");
  auto group = line.find("102\n{MYAPP\n  1\nnote\n102\n}\n");
  ASSERT_NE(entity, std::string::npos);
  ASSERT_NE(lineSub, std::string::npos);
  EXPECT_NE(ext, std::string::npos) << line;
  EXPECT_NE(group, std::string::npos) << line;
  EXPECT_LT(group, entity);
  // True colour and transparency stay in AcDbEntity; a pointer to no object goes.
  auto color = line.find("420\n16711680\n");
  auto transparency = line.find("440\n33554687\n");
  EXPECT_TRUE(color > entity && color < lineSub) << line;
  EXPECT_TRUE(transparency > entity && transparency < lineSub) << line;
  EXPECT_EQ(line.find("347\n"), std::string::npos) << line;
  // The unchanged X keeps its text; the changed end point is new.
  EXPECT_NE(line.find(" 10\n0.0000000000\n"), std::string::npos) << line;
  EXPECT_NE(line.find(" 11\n180.0\n 21\n1.0\n"), std::string::npos) << line;
  EXPECT_LT(lineSub, ext);
}

TEST(DxfEmitter, NewColourIndexReplacesTrueColour) {
  auto db = loadText(pageWithDecoratedLine());
  modifyLine(*db, [](QaDbLine& l) { l.setColorIndex(5); });
  std::string line = objectText(saveText(*db), "LINE", "21");
  EXPECT_NE(line.find(" 62\n5\n"), std::string::npos) << line;
  EXPECT_EQ(line.find("420\n"), std::string::npos) << line;
  EXPECT_NE(line.find("440\n33554687\n"), std::string::npos) << line;
}

TEST(DxfEmitter, UnchangedEntityIsCopiedAsItCame) {
  std::string text = pageWithDecoratedLine();
  auto db = loadText(text);
  EXPECT_EQ(objectText(saveText(*db), "LINE", "21"), objectText(text, "LINE", "21"));
}


// Readers of these kinds take their codes from every part of the body, whatever its
// marker. Written from its fields, an entity or record whose markers are damaged (a misnamed
// part, a foreign part holding the kind's codes) reads back as it was first read: no
// tag of those codes is carried over to be read a second time, at another place.
TEST(DxfEmitter, DamagedPartsAreNotReadASecondTime) {
  struct Case {
    const char* what;
    const char* entities;    // the tags of the ENTITIES section
    const char* tables = "";  // the tags of the TABLES section
  };
  const Case cases[] = {
      {"width before any vertex in a misnamed part",
       "0\nLWPOLYLINE\n100\nAcDbEntity3\n41\n\n10\n1\n"},
      {"start point in a foreign part before the line's own",
       "0\nLINE\n100\nAcDbEntity\n8\n0\n100\nAcDbLime\n10\n5\n100\nAcDbLine\n10\n1\n11\n2\n"},
      {"start angle in a foreign part",
       "0\nARC\n100\nAcDbEntity\n100\nAcDbCircle\n10\n0\n20\n0\n40\n1\n100\nAcDbArx\n50\n90\n"
       "100\nAcDbArc\n50\n0\n51\n90\n"},
      {"control point in a misnamed part",
       "0\nSPLINE\n100\nAcDbEntity\n100\nAcDbSplinf\n10\n0\n20\n0\n30\n0\n100\nAcDbSpline\n70\n8\n71\n1\n"
       "72\n4\n73\n2\n40\n0\n40\n0\n40\n1\n40\n1\n10\n1\n20\n1\n30\n0\n"},
      {"text in the common part",
       "0\nMTEXT\n100\nAcDbEntity\n1\na\n100\nAcDbMText\n10\n0\n20\n0\n40\n1\n1\nb\n"},
      {"scale in a misnamed common part, read by nobody",
       "0\nHATCH\n100\nAcDbEntity3\n41\nx\n100\nAcDbHatch\n10\n0\n20\n0\n30\n0\n2\nSOLID\n70\n1\n71\n0\n"
       "91\n0\n75\n0\n76\n1\n98\n0\n"},
      {"layer name in a part after the layer's own", "0\nLINE\n100\nAcDbEntity\n8\nY\n100\nAcDbLine\n",
       "0\nTABLE\n2\nLAYER\n0\nLAYER\n100\nAcDbLayerTableRecord\n2\nY\n70\n0\n100\nAcDbSymbolTableRecord\n2\nX\n"
       "0\nENDTAB\n"},
      {"vertex bulge in the vertex part",
       "0\nPOLYLINE\n100\nAcDbEntity\n100\nAcDb2dPolyline\n66\n1\n70\n0\n0\nVERTEX\n100\nAcDbEntity\n"
       "100\nAcDbVertex\n42\n0.5\n100\nAcDb2dVertex\n10\n1\n20\n1\n42\n0\n0\nSEQEND\n"},
  };
  auto sectionOf = [](const std::string& file, const std::string& name) {
    const auto begin = file.find(name + "\n");
    return begin == std::string::npos ? std::string() : file.substr(begin, file.find("ENDSEC\n", begin) - begin);
  };
  auto fromFields = [](QaDbDatabase& db) {
    for (QaDbObjectId id : db.objectIds())
      if (QaDbEntity::cast(id.rawObject()) || QaDbLayerTableRecord::cast(id.rawObject())) id.rawObject()->setModified();
  };
  for (const Case& c : cases) {
    const std::string text = std::string("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n") +
                             "0\nSECTION\n2\nTABLES\n" + c.tables + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" +
                             c.entities + "0\nENDSEC\n0\nEOF\n";
    auto first = loadText(text);
    fromFields(*first);
    const std::string saved = saveText(*first);
    std::unique_ptr<QaDbDatabase> again;
    EXPECT_NO_THROW(again = loadText(saved)) << c.what << "\n" << saved;
    if (!again) continue;
    fromFields(*again);
    const std::string resaved = saveText(*again);
    for (const char* section : {"TABLES", "ENTITIES"})
      EXPECT_EQ(sectionOf(resaved, section), sectionOf(saved, section)) << c.what;
  }
}

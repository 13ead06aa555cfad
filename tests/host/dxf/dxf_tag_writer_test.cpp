#include "host/dxf/dxf_error.h"
#include "host/dxf/dxf_tag_reader.h"
#include "host/dxf/dxf_tag_writer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace tabulon::dxf;

namespace {

// Fails on the n-th write, as a full disk would.
class FailingSink : public DxfSink {
 public:
  explicit FailingSink(int failAt) : failAt_(failAt) {}
  void write(std::string_view) override {
    if (++writes_ >= failAt_) throw DxfError("out.dxf", 0, DxfError::kNoGroupCode, "disk full");
  }

 private:
  int failAt_;
  int writes_ = 0;
};

}  // namespace

TEST(DxfTagWriter, RightAlignsGroupCodesAndUsesTheLineEnd) {
  std::string out;
  DxfStringSink sink(out);
  DxfTagWriter writer(sink, "\r\n");
  writer.write(0, "LINE");
  writer.writeInt(70, -2);
  writer.writeHandle(5, 0x2AF);
  writer.write(1001, "APP");
  writer.finish();
  EXPECT_EQ(out, "  0\r\nLINE\r\n 70\r\n-2\r\n  5\r\n2AF\r\n1001\r\nAPP\r\n");
}

TEST(DxfTagWriter, DoublesRoundTripThroughTheReader) {
  std::mt19937_64 rng(7);
  std::uniform_real_distribution<double> dist(-1e6, 1e6);
  std::string out;
  DxfStringSink sink(out);
  DxfTagWriter writer(sink);
  std::vector<double> values = {0.0, -0.0, 1.0, 0.1, 1e-300, 1e300, 115.536253636194,
                                std::numeric_limits<double>::denorm_min()};
  for (int i = 0; i < 200; ++i) values.push_back(dist(rng));
  for (double v : values) writer.writeDouble(40, v);
  writer.finish();
  DxfTagReader reader(out, "mem");
  DxfTag tag;
  for (double v : values) {
    ASSERT_TRUE(reader.next(tag));
    EXPECT_EQ(*dxfParseDouble(tag.value), v);
    EXPECT_NE(tag.value.find_first_of(".e"), std::string_view::npos) << tag.value;
  }
  EXPECT_EQ(dxfFormatDouble(-0.0), "0.0");
  EXPECT_EQ(dxfFormatDouble(2.0), "2.0");
  EXPECT_EQ(dxfFormatDouble(std::nan("")), "0.0");
}

TEST(DxfTagWriter, RefusesValuesWithLineBreaks) {
  std::string out;
  DxfStringSink sink(out);
  DxfTagWriter writer(sink);
  EXPECT_THROW(writer.write(1, "two\nlines"), DxfError);
}

TEST(DxfTagWriter, SinkFailureSurfacesAsDxfError) {
  FailingSink sink(2);
  DxfTagWriter writer(sink);
  EXPECT_THROW(
      {
        for (int i = 0; i < 100000; ++i) writer.write(1, "some text that fills the buffer");
        writer.finish();
      },
      DxfError);
}

TEST(DxfTagWriter, HandlesAreUpperCaseHex) {
  EXPECT_EQ(dxfFormatHandle(0), "0");
  EXPECT_EQ(dxfFormatHandle(0xABCDEF), "ABCDEF");
  EXPECT_EQ(dxfFormatHandle(0xFFFFFFFFFFFFFFFFull), "FFFFFFFFFFFFFFFF");
}

#include "card/table_rows_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/test_support.h"

namespace {

using tabulon::test::ScratchDir;
using tabulon::test::writeFile;
using Row = std::map<std::wstring, std::wstring>;

struct DelimitedCase {
  const char* name;
  std::wstring text;
  wchar_t separator;
  KrmTableRows rows;
};

class DelimitedRows : public ::testing::TestWithParam<DelimitedCase> {};

TEST_P(DelimitedRows, ReadAsTheHeaderNamesThem) {
  const DelimitedCase& c = GetParam();
  const auto rows = tabulon::ParseDelimited(c.text, c.separator, "rows");
  ASSERT_TRUE(rows.ok()) << rows.describe();
  EXPECT_EQ(rows.value(), c.rows);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, DelimitedRows,
    ::testing::Values(
        DelimitedCase{"PlainCsv", L"工序,内容\n车,外圆\n铣,键槽\n", L',', {Row{{L"工序", L"车"}, {L"内容", L"外圆"}}, Row{{L"工序", L"铣"}, {L"内容", L"键槽"}}}},
        DelimitedCase{"QuotedSeparatorAndDoubledQuote", L"a,b\n\"1,5\",\"say \"\"hi\"\"\"\n", L',',
                      {Row{{L"a", L"1,5"}, {L"b", L"say \"hi\""}}}},
        DelimitedCase{"LineBreakInsideQuotes", L"a,b\n\"x\ny\",z\n", L',', {Row{{L"a", L"x\ny"}, {L"b", L"z"}}}},
        DelimitedCase{"CarriageReturnLineEnds", L"a,b\r\n1,2\r\n", L',', {Row{{L"a", L"1"}, {L"b", L"2"}}}},
        DelimitedCase{"ShortRowFilledWithEmptyTexts", L"a,b,c\n1\n", L',', {Row{{L"a", L"1"}, {L"b", L""}, {L"c", L""}}}},
        DelimitedCase{"BlankLinesSkipped", L"a\n\n1\n\n", L',', {Row{{L"a", L"1"}}}},
        DelimitedCase{"NoLastLineEnd", L"a,b\n1,2", L',', {Row{{L"a", L"1"}, {L"b", L"2"}}}},
        DelimitedCase{"HeaderOnly", L"a,b\n", L',', {}},
        DelimitedCase{"TabSeparatedKeepsCommas", L"工序\t内容\n车\t外圆, 端面\n", L'\t',
                      {Row{{L"工序", L"车"}, {L"内容", L"外圆, 端面"}}}}),
    [](const ::testing::TestParamInfo<DelimitedCase>& info) { return std::string(info.param.name); });

TEST(ExchangeTextRows, EveryFieldQuotedAndFollowedByATab) {
  const auto rows = tabulon::ParseExchangeText(L"\"工序\"\t\"内容\"\t\n\"车\"\t\"外圆, \"端面\"\t\n\n\"铣\"\t\"\"\t\r\n", "rows.txt");
  ASSERT_TRUE(rows.ok()) << rows.describe();
  // No escaping: a quote inside a field stays; empty lines between rows are skipped.
  EXPECT_EQ(rows.value(), (KrmTableRows{Row{{L"工序", L"车"}, {L"内容", L"外圆, \"端面"}}, Row{{L"工序", L"铣"}, {L"内容", L""}}}));
}

TEST(JsonRows, TextsNumbersAndNullsBecomeCellTexts) {
  const auto rows = tabulon::ParseJsonRows(R"([{"工序": "车", "工时": 1.5, "备注": null}, {}])", "rows.json");
  ASSERT_TRUE(rows.ok()) << rows.describe();
  EXPECT_EQ(rows.value(), (KrmTableRows{Row{{L"工序", L"车"}, {L"工时", L"1.5"}, {L"备注", L""}}, Row{}}));
}

struct DecodeCase {
  const char* name;
  std::string bytes;
  std::wstring text;
};

class DecodedText : public ::testing::TestWithParam<DecodeCase> {};

TEST_P(DecodedText, IsUtf8OrGb18030) {
  const auto text = tabulon::DecodeText(GetParam().bytes, "rows.csv");
  ASSERT_TRUE(text.ok()) << text.describe();
  EXPECT_EQ(text.value(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, DecodedText,
    ::testing::Values(DecodeCase{"Utf8", "\xE5\xB7\xA5\xE5\xBA\x8F,a\n", L"工序,a\n"},
                      DecodeCase{"ByteOrderMarkSkipped", "\xEF\xBB\xBF\xE5\xB7\xA5\xE5\xBA\x8F\n", L"工序\n"},
                      DecodeCase{"Gb18030", "\xB9\xA4\xD0\xF2,\xC4\xDA\xC8\xDD\n", L"工序,内容\n"},
                      DecodeCase{"Empty", "", L""}),
    [](const ::testing::TestParamInfo<DecodeCase>& info) { return std::string(info.param.name); });

struct FailureCase {
  const char* name;
  std::string file;  // written into a scratch folder and read with ReadTableRows
  std::string bytes;
  std::size_t line;  // 0: the failure is not tied to a line
  std::string message;
};

class UnreadableRows : public ::testing::TestWithParam<FailureCase> {};

TEST_P(UnreadableRows, FailNamingFileLineAndWhat) {
  const FailureCase& c = GetParam();
  ScratchDir dir;
  writeFile(dir / c.file, c.bytes);
  const auto rows = tabulon::ReadTableRows(dir / c.file);
  ASSERT_FALSE(rows.ok());
  EXPECT_EQ(rows.error().file, (dir / c.file).string());
  EXPECT_EQ(rows.error().line, c.line);
  EXPECT_NE(rows.error().message.find(c.message), std::string::npos) << rows.error().message;
}

INSTANTIATE_TEST_SUITE_P(
    Files, UnreadableRows,
    ::testing::Values(FailureCase{"UnclosedQuote", "rows.csv", "a,b\n1,2\n\"open,3\n4,5\n", 3, "a quoted field is not closed"},
                      FailureCase{"MoreFieldsThanColumns", "rows.tsv", "a\tb\n1\t2\n1\t2\t3\n", 3,
                                  "3 fields, but the header names 2 columns"},
                      FailureCase{"EmptyFile", "rows.csv", "", 0, "the file is empty"},
                      FailureCase{"HeaderWithoutNames", "rows.csv", ",,\n1,2,3\n", 1, "the header row names no column"},
                      FailureCase{"ExchangeRowTooLong", "rows.txt", "\"a\"\t\n\"1\"\t\"2\"\t\n", 2,
                                  "2 fields, but the header names 1 columns"},
                      FailureCase{"JsonNotArray", "rows.json", "{\"a\": 1}", 0, "expected an array of rows"},
                      FailureCase{"JsonRowNotObject", "rows.json", "[{\"a\": 1}, 2]", 0, "row 2 is not an object"},
                      FailureCase{"JsonSyntax", "rows.json", "[{\"a\": }]", 0, "not valid JSON"},
                      FailureCase{"NeitherUtf8NorGb18030", "rows.csv", "a\n\x80\n", 0, "neither UTF-8 nor GB18030"},
                      FailureCase{"UnknownExtension", "rows.xls", "a\n1\n", 0, "unknown data format \".xls\""}),
    [](const ::testing::TestParamInfo<FailureCase>& info) { return std::string(info.param.name); });

TEST(TableRowsFile, MissingFileNamesIt) {
  ScratchDir dir;
  const auto rows = tabulon::ReadTableRows(dir / "absent.csv");
  ASSERT_FALSE(rows.ok());
  EXPECT_EQ(rows.error().file, (dir / "absent.csv").string());
  EXPECT_EQ(rows.error().message, "cannot open the data file");
}

TEST(TableRowsFile, FormatFollowsTheExtensionInAnyCase) {
  const std::pair<const char*, tabulon::TableRowsFormat> cases[] = {{"a.CSV", tabulon::TableRowsFormat::kCsv},
                                                                    {"a.tsv", tabulon::TableRowsFormat::kTsv},
                                                                    {"a.Json", tabulon::TableRowsFormat::kJson},
                                                                    {"a.txt", tabulon::TableRowsFormat::kText}};
  for (const auto& [file, format] : cases) {
    const auto found = tabulon::TableRowsFormatOf(file);
    ASSERT_TRUE(found.ok()) << file;
    EXPECT_EQ(found.value(), format) << file;
  }
}

}  // namespace

#include "host/ed/qaed_input.h"

#include <gtest/gtest.h>

using Kind = QaEdInput::Kind;
using Req = QaEdRequest::Kind;

TEST(QaEdInput, ParsesTypedAnswersByTheKindOfRequest) {
  struct Case {
    const wchar_t* text;
    Req request;
    Kind expected;
  };
  const Case cases[] = {
      {L"10,20", Req::Point, Kind::Point},
      {L" 1.5e1 , -2 , 3 ", Req::Point, Kind::Point},
      {L"", Req::Point, Kind::Enter},
      {L"   ", Req::Selection, Kind::Enter},
      {L"Cancel", Req::Point, Kind::Cancel},
      {L"esc", Req::Text, Kind::Cancel},
      {L"#1A", Req::Entity, Kind::Handles},
      {L"#1A,#2b #3", Req::Selection, Kind::Handles},
      {L"#1A,#2B", Req::Entity, Kind::Text},  // a pick takes one entity
      {L"5,5", Req::Entity, Kind::Point},     // a pick at a point
      {L"5,5", Req::Selection, Kind::Text},   // selections read points themselves
      {L"ALL", Req::Selection, Kind::All},
      {L"all", Req::Point, Kind::Text},
      {L"window 0,0 10,10", Req::Selection, Kind::Window},
      {L"window 0,0", Req::Selection, Kind::Text},
      {L"1,2,3,4", Req::Point, Kind::Text},
      {L"1", Req::Point, Kind::Text},
      {L"10,20", Req::Text, Kind::Text},
      {L"#xyz", Req::Entity, Kind::Text},
      {L"#0", Req::Entity, Kind::Text},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(qaedParseInput(c.text, c.request).kind, c.expected) << "answer \"" << testing::PrintToString(std::wstring(c.text)) << "\"";
  }
}

TEST(QaEdInput, KeepsTheValuesOfWhatItParsed) {
  const auto point = qaedParseInput(L"1.5,-2", Req::Point);
  EXPECT_EQ(point.point, QaGePoint3d(1.5, -2, 0));
  const auto handles = qaedParseInput(L"#1a, #FF", Req::Selection);
  ASSERT_EQ(handles.handles.size(), 2u);
  EXPECT_EQ(handles.handles[0].value(), 0x1Au);
  EXPECT_EQ(handles.handles[1].value(), 0xFFu);
  const auto window = qaedParseInput(L"Window 10,20 0,0", Req::Selection);
  EXPECT_EQ(window.point, QaGePoint3d(10, 20, 0));
  EXPECT_EQ(window.corner, QaGePoint3d(0, 0, 0));
  EXPECT_EQ(qaedParseInput(L"  some words ", Req::Text).text, L"some words");
}

TEST(QaEdInput, MatchesKeywordsByWholeWordOrUniqueBeginning) {
  const std::vector<std::wstring> keywords{L"1", L"10", L"Remove", L"Rotate"};
  EXPECT_EQ(qaedMatchKeyword(L"1", keywords), L"1");  // exact beats the longer "10"
  EXPECT_EQ(qaedMatchKeyword(L"10", keywords), L"10");
  EXPECT_EQ(qaedMatchKeyword(L"rem", keywords), L"Remove");
  EXPECT_EQ(qaedMatchKeyword(L"ROTATE", keywords), L"Rotate");
  EXPECT_FALSE(qaedMatchKeyword(L"r", keywords));  // two candidates
  EXPECT_FALSE(qaedMatchKeyword(L"2", keywords));
  EXPECT_FALSE(qaedMatchKeyword(L"", keywords));
}

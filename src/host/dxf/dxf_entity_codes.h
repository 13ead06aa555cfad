// The group codes the codec models for each kind of entity, by subclass. The
// readers take exactly these into fields; the writers write them from fields
// and carry every other tag of the subclass over from the original.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <span>

namespace tabulon::dxf::codes {

inline bool contains(std::span<const int> set, int code) {
  return std::find(set.begin(), set.end(), code) != set.end();
}

// AcDbEntity
inline constexpr int kCommon[] = {8, 6, 62, 370, 48, 60, 67};
inline constexpr int kLine[] = {39, 10, 20, 30, 11, 21, 31, 210, 220, 230};
inline constexpr int kCircle[] = {39, 10, 20, 30, 40, 210, 220, 230};
inline constexpr int kArc[] = {50, 51};
inline constexpr int kEllipse[] = {10, 20, 30, 11, 21, 31, 210, 220, 230, 40, 41, 42};
inline constexpr int kPoint[] = {10, 20, 30, 39, 210, 220, 230, 50};
inline constexpr int kSolid[] = {10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 39, 210, 220, 230};
inline constexpr int kLwPolyline[] = {90, 70, 43, 38, 39, 10, 20, 91, 40, 41, 42, 210, 220, 230};
inline constexpr int kPolyline[] = {66, 10, 20, 30, 39, 70, 40, 41, 71, 72, 75, 210, 220, 230};
inline constexpr int kVertex[] = {10, 20, 30, 40, 41, 42, 70, 50};
inline constexpr int kSpline[] = {210, 220, 230, 70, 71, 72, 73, 74, 42, 43, 44, 12, 22, 32,
                                  13, 23, 33, 40, 41, 10, 20, 30, 11, 21, 31};
// AcDbText of TEXT, ATTRIB and ATTDEF
inline constexpr int kText[] = {39, 10, 20, 30, 40, 1, 50, 41, 51, 7, 71, 72, 11, 21, 31, 210, 220, 230};
// The second AcDbText of TEXT
inline constexpr int kText2[] = {73};
// AcDbAttribute / AcDbAttributeDefinition (single-line part)
inline constexpr int kAttribute[] = {280, 3, 2, 70, 73, 74};
inline constexpr int kMText[] = {10, 20, 30, 40, 41, 46, 71, 72, 1, 3, 7, 210, 220, 230, 11, 21, 31, 50, 73, 44};
inline constexpr int kInsert[] = {66, 2, 10, 20, 30, 41, 42, 43, 50, 210, 220, 230};
inline constexpr int kDimension[] = {2, 10, 20, 30, 11, 21, 31, 12, 22, 32, 70, 1, 53, 3, 210, 220, 230, 42};
inline constexpr int kDimensionKind[] = {12, 22, 32, 13, 23, 33, 14, 24, 34, 15, 25, 35, 16, 26, 36, 40, 50, 52};

}  // namespace tabulon::dxf::codes

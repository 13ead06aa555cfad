// The fields of a multi-line text as read from its tags; shared by MTEXT and
// the text embedded in multi-line attributes (after "101 Embedded Object").
#pragma once

#include "host/db/qadb_mtext.h"
#include "host/dxf/dxf_read_context.h"

#include <string>

namespace tabulon::dxf {

struct DxfMTextFields {
  QaGePoint3d location;
  double height = 0;
  double width = 0;
  double definedHeight = 0;
  int attachment = 1;
  int flow = 0;
  std::string chunks;  // the 3 chunks then the 1 part, as bytes of the file
  bool hasText = false;
  std::string_view style;  // bytes of the file
  QaGeVector3d normal{0, 0, 1};
  QaGeVector3d direction{1, 0, 0};
  bool hasDirection = false;
  double rotation = 0;
  bool hasRotation = false;
  int lineSpacingStyle = 0;
  double lineSpacingFactor = 0;

  // Takes the tag when it is one of the modelled codes.
  bool take(const DxfReadContext& ctx, const DxfTag& tag);
  // Puts the fields into `mtext`; the style stays for the loader to resolve.
  void apply(const DxfReadContext& ctx, QaDbMText& mtext) const;
};

}  // namespace tabulon::dxf

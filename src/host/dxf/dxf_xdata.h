// Extended data in tags: from the first 1001 of an object to its end, one
// application after another, and back.
#pragma once

#include "host/db/qadb_xdata.h"
#include "host/dxf/dxf_read_context.h"
#include "host/dxf/dxf_tag_writer.h"
#include "host/dxf/dxf_text_codec.h"

#include <span>

namespace tabulon::dxf {

// The extended data in tags[begin, end). Values the database cannot hold
// (codes outside the extended data range) are skipped with a finding.
QaDbXData dxfReadXData(const DxfReadContext& ctx, std::span<const DxfTag> tags, std::size_t begin);

// Writes `xdata` with strings encoded by `codec`.
void dxfWriteXData(DxfTagWriter& writer, const DxfTextCodec& codec, const QaDbXData& xdata);

}  // namespace tabulon::dxf

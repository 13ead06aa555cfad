#include "host/dxf/dxf_object_reader.h"

#include "host/db/qadb_dictionary.h"
#include "host/db/qadb_group.h"
#include "host/db/qadb_unknown_object.h"

namespace tabulon::dxf {

std::unique_ptr<QaDbObject> dxfReadObject(const DxfReadContext& ctx, std::span<const DxfTag> tags,
                                          const DxfObjectFrame& frame, DxfPendingRefs& refs) {
  std::string_view type = frame.type;
  if (type == "DICTIONARY") {
    auto dict = std::make_unique<QaDbDictionary>();
    std::wstring key;
    bool haveKey = false;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc < 0) return;
      switch (t.code) {
        case 280: dict->setHardOwner(ctx.integer(t) != 0); break;
        case 281: dict->setMergeStyle(ctx.integer(t)); break;
        case 3:
          key = ctx.text(t);
          haveKey = true;
          break;
        case 350:
        case 360:
          if (haveKey) {
            refs.keys.push_back(key);
            refs.handles.push_back(ctx.handle(t));
            haveKey = false;
          }
          break;
        default: break;
      }
    });
    return dict;
  }
  if (type == "GROUP") {
    auto group = std::make_unique<QaDbGroup>();
    bool unnamed = false;
    dxfForEachBodyTag(tags, frame, [&](const DxfTag& t, int sc) {
      if (sc < 0) return;
      switch (t.code) {
        case 300: group->setDescription(ctx.text(t)); break;
        case 70: unnamed = ctx.integer(t) != 0; break;
        case 71: group->setSelectable(ctx.integer(t) != 0); break;
        case 340: refs.handles.push_back(ctx.handle(t)); break;
        default: break;
      }
    });
    group->setAnonymous(unnamed);
    return group;
  }
  return std::make_unique<QaDbUnknownObject>(std::wstring(type.begin(), type.end()));
}

}  // namespace tabulon::dxf

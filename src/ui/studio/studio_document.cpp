#include "ui/studio/studio_document.h"

#include "drawing/render/scene_builder.h"
#include "host/ap/qaap_document.h"
#include "host/db/qadb_database.h"
#include "ui/view/scene_index.h"

namespace tabulon::ui {

std::shared_ptr<const SceneIndex> IndexDrawing(QaApDocument &document) {
  return std::make_shared<SceneIndex>(render::BuildModelSpaceScene(*document.database()));
}

}  // namespace tabulon::ui

// Base of the graphical objects: common properties (layer, colour, linetype, line
// weight), geometry queries and transforms. Entities of a block belong to its block
// table record; entities in memory belong to whoever holds their unique_ptr.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/db/qadb_extents.h"
#include "host/db/qadb_object.h"
#include "host/db/qadb_shared_name.h"
#include "host/ge/qage_matrix3d.h"

class QaDbEntity : public QaDbObject {
  QARX_DECLARE_MEMBERS(QaDbEntity)

 public:
  QaDbEntity();
  ~QaDbEntity() override;

  // The block table record that holds the entity (for an attribute: that of its
  // reference); null when not resident.
  QaDbObjectId blockId() const;

  const std::wstring& layer() const { return layer_.str(); }
  QaDbSharedName sharedLayer() const { return layer_; }
  // For a resident entity the layer must exist in its database (eKeyNotFound otherwise,
  // nothing changed); an entity in memory takes any non-empty name.
  Qa::ErrorStatus setLayer(const std::wstring& name);
  Qa::ErrorStatus setLayer(QaDbSharedName name);
  int colorIndex() const { return colorIndex_; }
  // 0 ByBlock, 1..255, 256 ByLayer; anything else is eInvalidInput.
  Qa::ErrorStatus setColorIndex(int index);
  const std::wstring& linetype() const { return linetype_.str(); }
  // Same rule as setLayer, with the linetype table ("ByLayer" and "ByBlock" always pass).
  Qa::ErrorStatus setLinetype(const std::wstring& name);
  Qa::ErrorStatus setLinetype(QaDbSharedName name);
  double linetypeScale() const { return linetypeScale_; }
  Qa::ErrorStatus setLinetypeScale(double scale);
  int lineWeight() const { return lineWeight_; }
  Qa::ErrorStatus setLineWeight(int weight);
  bool visible() const { return visible_; }
  Qa::ErrorStatus setVisibility(bool visible);
  // Copies layer, colour, linetype, linetype scale, line weight and visibility.
  Qa::ErrorStatus setPropertiesFrom(const QaDbEntity* other);

  // Moves, scales, rotates or mirrors the entity. Kinds that cannot follow a
  // transform (a circle under non-uniform scaling) give eCannotScaleNonUniformly and stay
  // as they were.
  virtual Qa::ErrorStatus transformBy(const QaGeMatrix3d& m);
  // The box around the entity's geometry; eInvalidExtents for an entity with none.
  virtual Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const;
  // The box the entity would have after `m` (exact where the kind allows, e.g. a
  // circle under non-uniform scale is measured as the ellipse it becomes), without
  // changing it.
  virtual Qa::ErrorStatus getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const;
  // Simpler entities that together draw this one, new and in memory (owned by the
  // caller). eNotApplicable for kinds that do not break up.
  virtual Qa::ErrorStatus explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const;

  std::unique_ptr<QaDbEntity> cloneEntity() const;

  void onAddedToDatabase() override;

 protected:
  QaDbEntity(const QaDbEntity&) = default;

 private:
  QaDbSharedName layer_;
  int colorIndex_ = QaDb::kColorByLayer;
  QaDbSharedName linetype_;
  double linetypeScale_ = 1.0;
  int lineWeight_ = QaDb::kLnWtByLayer;
  bool visible_ = true;
};

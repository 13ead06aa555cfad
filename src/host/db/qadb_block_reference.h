// A placed block (INSERT): the block table record it shows, position, rotation, scale
// factors and normal, and its attributes. Attributes of a resident reference are
// database objects owned by it; a reference in memory holds its attributes itself and
// hands them to the database when it is appended. A clone copies the attributes.
#pragma once

#include <memory>
#include <vector>

#include "host/db/qadb_attribute.h"
#include "host/db/qadb_entity.h"
#include "host/ge/qage_scale3d.h"

class QaDbBlockReference;

// Walks the attributes of a reference, erased ones skipped. For a reference in memory
// entity() gives the attribute and objectId() is null; for a resident one objectId()
// gives the id and entity() the object without opening it (open by id to change it).
// Must not outlive the reference.
class QaDbObjectIterator {
 public:
  explicit QaDbObjectIterator(const QaDbBlockReference* ref);
  void start();
  bool done() const;
  void step();
  QaDbEntity* entity() const;
  QaDbObjectId objectId() const;

 private:
  void skipErased();
  const QaDbBlockReference* ref_;
  std::size_t index_ = 0;
};

class QaDbBlockReference : public QaDbEntity {
  QADB_DECLARE_MEMBERS(QaDbBlockReference)

 public:
  QaDbBlockReference();  // out of line: make_unique then does not clear the object first
  QaDbBlockReference(const QaGePoint3d& position, QaDbObjectId blockTableRecord)
      : block_(blockTableRecord), position_(position) {}
  QaDbBlockReference(const QaDbBlockReference& other);
  ~QaDbBlockReference() override;

  QaDbObjectId blockTableRecord() const { return block_; }
  Qa::ErrorStatus setBlockTableRecord(QaDbObjectId id);
  const QaGePoint3d& position() const { return position_; }
  Qa::ErrorStatus setPosition(const QaGePoint3d& p);
  double rotation() const { return rotation_; }
  Qa::ErrorStatus setRotation(double a);
  const QaGeScale3d& scaleFactors() const { return scale_; }
  // eInvalidInput when a factor is 0.
  Qa::ErrorStatus setScaleFactors(const QaGeScale3d& s);
  const QaGeVector3d& normal() const { return normal_; }
  Qa::ErrorStatus setNormal(const QaGeVector3d& n);

  // From block coordinates to world: moves the block's origin to `position` after
  // scaling and rotating in the plane of the normal.
  QaGeMatrix3d blockTransform() const;
  // Sets position, rotation, scale and normal from a transform of that form.
  Qa::ErrorStatus setBlockTransform(const QaGeMatrix3d& m);

  // Appends an attribute. Resident reference: the attribute becomes a database object
  // owned by the reference, left open for write (close it), and `id` is set. Reference
  // in memory: it is kept with the reference and `id` stays null.
  Qa::ErrorStatus appendAttribute(QaDbObjectId& id, std::unique_ptr<QaDbAttribute> attribute);
  QaDbObjectId appendAttribute(std::unique_ptr<QaDbAttribute> attribute);
  std::unique_ptr<QaDbObjectIterator> attributeIterator() const;
  // Attribute ids of a resident reference, erased ones included.
  const std::vector<QaDbObjectId>& attributeIds() const { return attributeIds_; }
  // Attributes held in memory (reference not resident).
  const std::vector<std::unique_ptr<QaDbAttribute>>& pendingAttributes() const { return pending_; }
  int attributeCount() const;

  // Moves the attributes along.
  Qa::ErrorStatus transformBy(const QaGeMatrix3d& m) override;
  // The block's contents under blockTransform() (attribute definitions that are not
  // constant skipped), with the visible attributes.
  Qa::ErrorStatus getGeomExtents(QaDbExtents& ext) const override;
  Qa::ErrorStatus getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const override;
  // Copies of the block's entities under blockTransform(), attribute definitions
  // included, attributes not.
  Qa::ErrorStatus explode(std::vector<std::unique_ptr<QaDbEntity>>& out) const override;

  void ownedIds(std::vector<QaDbObjectId>& out) const override;
  void hardReferences(std::vector<QaDbObjectId>& out) const override;
  void remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) override;
  void attachAdoptedChild(QaDbObjectId child) override;
  void onAddedToDatabase() override;
  void onErased(bool erasing) override;

 private:
  friend class QaDbObjectIterator;
  Qa::ErrorStatus extentsUnder(const QaGeMatrix3d& outer, QaDbExtents& ext, int depth) const;

  QaDbObjectId block_;
  QaGePoint3d position_;
  double rotation_ = 0.0;
  QaGeScale3d scale_;
  QaGeVector3d normal_ = QaGeVector3d::kZAxis;
  std::vector<QaDbObjectId> attributeIds_;
  std::vector<std::unique_ptr<QaDbAttribute>> pending_;
};

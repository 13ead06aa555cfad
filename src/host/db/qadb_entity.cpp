#include "host/db/qadb_entity.h"

#include "host/db/qadb_block_reference.h"
#include "host/db/qadb_block_table_record.h"
#include "host/db/qadb_database.h"

#include <cstring>
#include <cwchar>
#include <cwctype>

QARX_DEFINE_MEMBERS(QaDbEntity, QaDbObject, L"")

namespace {
QaDbSharedName defaultLayer() {
  static const QaDbSharedName name(L"0");
  return name;
}
QaDbSharedName defaultLinetype() {
  static const QaDbSharedName name(L"ByLayer");
  return name;
}
}  // namespace

QaDbEntity::QaDbEntity() : layer_(defaultLayer()), linetype_(defaultLinetype()) {}
QaDbEntity::~QaDbEntity() = default;

QaDbObjectId QaDbEntity::blockId() const {
  QaDbObjectId owner = ownerId();
  // An attribute's owner is its reference; climb until a block record.
  for (int depth = 0; depth < 8 && !owner.isNull(); ++depth) {
    QaDbObject* obj = owner.rawObject();
    if (obj == nullptr) return QaDbObjectId();
    if (QaDbBlockTableRecord::cast(obj)) return owner;
    owner = obj->ownerId();
  }
  return QaDbObjectId();
}

Qa::ErrorStatus QaDbEntity::setLayer(const std::wstring& name) { return setLayer(QaDbSharedName(name)); }

Qa::ErrorStatus QaDbEntity::setLayer(QaDbSharedName name) {
  if (name.str().empty()) return Qa::eInvalidInput;
  if (QaDbDatabase* db = database()) {
    auto* table = QaDbLayerTable::cast(db->layerTableId().rawObject());
    if (table == nullptr || !table->has(name.str())) return Qa::eKeyNotFound;
  }
  assertWriteEnabled();
  layer_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::setColorIndex(int index) {
  if (index < 0 || index > 256) return Qa::eInvalidInput;
  assertWriteEnabled();
  colorIndex_ = index;
  return Qa::eOk;
}

namespace {
bool isByName(const std::wstring& name, const wchar_t* what) {
  if (name.size() != std::wcslen(what)) return false;
  for (std::size_t i = 0; i < name.size(); ++i)
    if (std::towupper(name[i]) != std::towupper(what[i])) return false;
  return true;
}
}  // namespace

Qa::ErrorStatus QaDbEntity::setLinetype(const std::wstring& name) { return setLinetype(QaDbSharedName(name)); }

Qa::ErrorStatus QaDbEntity::setLinetype(QaDbSharedName name) {
  const std::wstring& text = name.str();
  if (text.empty()) return Qa::eInvalidInput;
  if (QaDbDatabase* db = database(); db && !isByName(text, L"ByLayer") && !isByName(text, L"ByBlock")) {
    auto* table = QaDbLinetypeTable::cast(db->linetypeTableId().rawObject());
    if (table == nullptr || !table->has(text)) return Qa::eKeyNotFound;
  }
  assertWriteEnabled();
  linetype_ = name;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::setLinetypeScale(double scale) {
  if (scale <= 0.0) return Qa::eInvalidInput;
  assertWriteEnabled();
  linetypeScale_ = scale;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::setLineWeight(int weight) {
  assertWriteEnabled();
  lineWeight_ = weight;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::setVisibility(bool visible) {
  assertWriteEnabled();
  visible_ = visible;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::setPropertiesFrom(const QaDbEntity* other) {
  if (other == nullptr) return Qa::eNullEntityPointer;
  assertWriteEnabled();
  layer_ = other->layer_;
  colorIndex_ = other->colorIndex_;
  linetype_ = other->linetype_;
  linetypeScale_ = other->linetypeScale_;
  lineWeight_ = other->lineWeight_;
  visible_ = other->visible_;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::transformBy(const QaGeMatrix3d&) { return Qa::eNotApplicable; }

Qa::ErrorStatus QaDbEntity::getGeomExtents(QaDbExtents& ext) const {
  ext.reset();
  return Qa::eInvalidExtents;
}

Qa::ErrorStatus QaDbEntity::getTransformedExtents(const QaGeMatrix3d& m, QaDbExtents& ext) const {
  ext.reset();
  std::unique_ptr<QaDbEntity> copy = cloneEntity();
  if (copy && copy->transformBy(m) == Qa::eOk) return copy->getGeomExtents(ext);
  // Kinds that cannot follow the transform: the box of the transformed box.
  QaDbExtents own;
  Qa::ErrorStatus es = getGeomExtents(own);
  if (es != Qa::eOk) return es;
  ext = own.transformed(m);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbEntity::explode(std::vector<std::unique_ptr<QaDbEntity>>&) const { return Qa::eNotApplicable; }

std::unique_ptr<QaDbEntity> QaDbEntity::cloneEntity() const {
  std::unique_ptr<QaDbObject> obj = clone();
  return std::unique_ptr<QaDbEntity>(static_cast<QaDbEntity*>(obj.release()));
}

void QaDbEntity::onAddedToDatabase() {
  QaDbDatabase* db = database();
  // The drawing must know the layer; a linetype it lacks falls back to ByLayer.
  QaDbObjectId layerId;
  if (db->ensureLayer(layer_.str(), layerId) != Qa::eOk) layer_ = defaultLayer();
  if (!isByName(linetype_.str(), L"ByLayer") && !isByName(linetype_.str(), L"ByBlock")) {
    auto* table = QaDbLinetypeTable::cast(db->linetypeTableId().rawObject());
    if (table == nullptr || !table->has(linetype_.str())) linetype_ = defaultLinetype();
  }
  for (const std::wstring& app : xDataApps()) db->registerApp(app);
}

#include "host/db/qadb_object.h"

#include <algorithm>
#include <stdexcept>

#include "host/db/qadb_database.h"
#include "host/db/qadb_open.h"

QARX_DEFINE_MEMBERS(QaDbObject, QaRxObject, L"")

QaDbObject::QaDbObject() = default;
QaDbObject::~QaDbObject() = default;

QaDbObject::QaDbObject(const QaDbObject& other)
    : QaRxObject(other),
      erased_(false),
      modified_(true),
      xdata_(other.xdata_),
      dxfRecord_(other.dxfRecord_ ? other.dxfRecord_->clone() : nullptr) {}

Qa::ErrorStatus QaDbObject::setOwnerId(QaDbObjectId owner) {
  ownerId_ = owner;
  return Qa::eOk;
}

std::wstring QaDbObject::dxfType() const {
  const QaRxClass* cls = isA();
  return cls->dxfName().empty() ? cls->name() : cls->dxfName();
}

Qa::ErrorStatus QaDbObject::erase(bool erasing) {
  if (erased_ == erasing) return erasing ? Qa::eWasErased : Qa::eOk;
  if (isDatabaseResident() && !isWriteEnabled()) return Qa::eNotOpenForWrite;
  erased_ = erasing;
  modified_ = true;
  onErased(erasing);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbObject::close() {
  if (!isDatabaseResident()) return Qa::eOk;
  if (openCount_ == 0) return Qa::eNotOpenForRead;
  if (--openCount_ == 0) writeOpen_ = false;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbObject::upgradeOpen() {
  if (!isDatabaseResident()) return Qa::eOk;
  if (openCount_ == 0) return Qa::eNotOpenForRead;
  if (writeOpen_) return Qa::eWasOpenForWrite;
  writeOpen_ = true;
  return Qa::eOk;
}

Qa::ErrorStatus QaDbObject::downgradeOpen() {
  if (!isDatabaseResident()) return Qa::eOk;
  if (!writeOpen_) return Qa::eNotOpenForWrite;
  writeOpen_ = false;
  return Qa::eOk;
}

bool QaDbObject::isReadEnabled() const { return !isDatabaseResident() || openCount_ > 0; }
bool QaDbObject::isWriteEnabled() const { return !isDatabaseResident() || writeOpen_; }

void QaDbObject::throwNotOpenForWrite() const {
  throw std::logic_error("object " + handle().ascii() + " of class " +
                         std::string(isA()->name().begin(), isA()->name().end()) + " is not open for write");
}

bool QaDbObject::hasPersistentReactor(QaDbObjectId id) const {
  return std::find(reactors_.begin(), reactors_.end(), id) != reactors_.end();
}

Qa::ErrorStatus QaDbObject::addPersistentReactor(QaDbObjectId id) {
  if (id.isNull()) return Qa::eNullObjectId;
  if (hasPersistentReactor(id)) return Qa::eOk;
  assertWriteEnabled();
  reactors_.push_back(id);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbObject::removePersistentReactor(QaDbObjectId id) {
  auto it = std::find(reactors_.begin(), reactors_.end(), id);
  if (it == reactors_.end()) return Qa::eOk;
  assertWriteEnabled();
  reactors_.erase(it);
  return Qa::eOk;
}

void QaDbObject::setExtensionDictionary(QaDbObjectId id) {
  assertWriteEnabled();
  extensionDictionary_ = id;
}

namespace {
auto findApp(QaDbXData& xd, std::wstring_view app) {
  return std::find_if(xd.begin(), xd.end(), [&](const QaDbXDataApp& a) { return a.appName == app; });
}
auto findApp(const QaDbXData& xd, std::wstring_view app) {
  return std::find_if(xd.begin(), xd.end(), [&](const QaDbXDataApp& a) { return a.appName == app; });
}
}  // namespace

std::vector<QaDbXDataItem> QaDbObject::xData(std::wstring_view appName) const {
  auto it = findApp(xdata_, appName);
  return it == xdata_.end() ? std::vector<QaDbXDataItem>{} : it->items;
}

bool QaDbObject::hasXData(std::wstring_view appName) const { return findApp(xdata_, appName) != xdata_.end(); }

Qa::ErrorStatus QaDbObject::setXData(std::wstring_view appName, std::vector<QaDbXDataItem> items) {
  if (appName.empty() || !QaDbSymbolTableRecord::isValidName(std::wstring(appName))) return Qa::eInvalidInput;
  assertWriteEnabled();
  if (QaDbDatabase* db = database()) {
    Qa::ErrorStatus es = db->registerApp(std::wstring(appName));
    if (es != Qa::eOk && es != Qa::eNullObjectId) return es;
  }
  auto it = findApp(xdata_, appName);
  if (it == xdata_.end()) xdata_.push_back({std::wstring(appName), std::move(items)});
  else it->items = std::move(items);
  return Qa::eOk;
}

Qa::ErrorStatus QaDbObject::removeXData(std::wstring_view appName) {
  auto it = findApp(xdata_, appName);
  if (it == xdata_.end()) return Qa::eKeyNotFound;
  assertWriteEnabled();
  xdata_.erase(it);
  return Qa::eOk;
}

std::vector<std::wstring> QaDbObject::xDataApps() const {
  std::vector<std::wstring> out;
  out.reserve(xdata_.size());
  for (const auto& a : xdata_) out.push_back(a.appName);
  return out;
}

Qa::ErrorStatus QaDbObject::setAllXData(QaDbXData xdata) {
  assertWriteEnabled();
  if (QaDbDatabase* db = database())
    for (const auto& a : xdata) db->registerApp(a.appName);
  xdata_ = std::move(xdata);
  return Qa::eOk;
}

void QaDbObject::ownedIds(std::vector<QaDbObjectId>&) const {}
void QaDbObject::hardReferences(std::vector<QaDbObjectId>&) const {}
void QaDbObject::remapIds(const QaDbIdMapping& mapping, const QaDbDatabase* target) {
  // Handles inside extended data follow the objects they name.
  QaDbDatabase* orig = mapping.origDb();
  if (orig == nullptr) return;
  for (auto& app : xdata_)
    for (auto& item : app.items) {
      if (item.code() != QaDbXDataItem::kHandle) continue;
      QaDbObjectId src = orig->objectIdFromHandle(item.asHandle());
      if (src.isNull()) continue;
      QaDbObjectId dst = mapping.destinationOf(src);
      if (!dst.isNull()) item = QaDbXDataItem::handle(dst.handle());
    }
  (void)target;
}
void QaDbObject::attachAdoptedChild(QaDbObjectId) {}
void QaDbObject::onAddedToDatabase() {}
void QaDbObject::onErased(bool erasing) {
  // What an object owns goes with it.
  std::vector<QaDbObjectId> owned;
  ownedIds(owned);
  for (QaDbObjectId child : owned) {
    QaDbObject* obj = child.rawObject();
    if (obj == nullptr || obj->isErased() == erasing) continue;
    QaDbObjectPointer<QaDbObject> p(child, QaDb::kForWrite, true);
    if (p) p->erase(erasing);
  }
}

Qa::ErrorStatus qadbOpenObject(QaDbObject*& obj, QaDbObjectId id, QaDb::OpenMode mode, bool openErased) {
  obj = nullptr;
  if (id.isNull()) return Qa::eNullObjectId;
  QaDbObject* o = id.rawObject();
  if (o == nullptr) return Qa::eUnknownHandle;
  if (o->isErased() && !openErased) return Qa::eWasErased;
  ++o->openCount_;
  if (mode == QaDb::kForWrite) o->writeOpen_ = true;
  obj = o;
  return Qa::eOk;
}

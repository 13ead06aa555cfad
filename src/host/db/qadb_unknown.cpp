#include "host/db/qadb_unknown_entity.h"
#include "host/db/qadb_unknown_object.h"

QARX_DEFINE_MEMBERS(QaDbUnknownEntity, QaDbEntity, L"")
QARX_DEFINE_MEMBERS(QaDbUnknownObject, QaDbObject, L"")

Qa::ErrorStatus QaDbUnknownEntity::transformBy(const QaGeMatrix3d&) { return Qa::eNotApplicable; }

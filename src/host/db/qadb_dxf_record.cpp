#include "host/db/qadb_dxf_record.h"

QaDbDxfRecord::~QaDbDxfRecord() = default;

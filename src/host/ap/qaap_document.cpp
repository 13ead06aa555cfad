#include "host/ap/qaap_document.h"

#include "host/db/qadb_database.h"

QaApDocument::QaApDocument(std::unique_ptr<QaDbDatabase> database, std::filesystem::path fileName)
    : database_(std::move(database)), fileName_(std::move(fileName)) {}

QaApDocument::~QaApDocument() = default;

QaAp::DocLockMode QaApDocument::myLockMode() const { return locks_.empty() ? QaAp::kNotLocked : locks_.back(); }

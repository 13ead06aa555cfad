#include "host/db/qa_error_status.h"

namespace Qa {

const char* errorStatusText(ErrorStatus s) {
  switch (s) {
    case eOk: return "eOk";
    case eNotImplementedYet: return "eNotImplementedYet";
    case eNotApplicable: return "eNotApplicable";
    case eInvalidInput: return "eInvalidInput";
    case eNullObjectId: return "eNullObjectId";
    case eNullObjectPointer: return "eNullObjectPointer";
    case eNullEntityPointer: return "eNullEntityPointer";
    case eWasErased: return "eWasErased";
    case eWasOpenForWrite: return "eWasOpenForWrite";
    case eWasOpenForRead: return "eWasOpenForRead";
    case eNotOpenForWrite: return "eNotOpenForWrite";
    case eNotOpenForRead: return "eNotOpenForRead";
    case eWrongObjectType: return "eWrongObjectType";
    case eWrongDatabase: return "eWrongDatabase";
    case eNotInDatabase: return "eNotInDatabase";
    case eAlreadyInDb: return "eAlreadyInDb";
    case eKeyNotFound: return "eKeyNotFound";
    case eDuplicateKey: return "eDuplicateKey";
    case eHandleInUse: return "eHandleInUse";
    case eUnknownHandle: return "eUnknownHandle";
    case eInvalidExtents: return "eInvalidExtents";
    case eCannotScaleNonUniformly: return "eCannotScaleNonUniformly";
    case eInvalidIndex: return "eInvalidIndex";
    case eBadSymbolTableName: return "eBadSymbolTableName";
    case eSelfReference: return "eSelfReference";
    case eFileError: return "eFileError";
    case eFileNotFound: return "eFileNotFound";
    case eFileAccessErr: return "eFileAccessErr";
    case eBadDxfFile: return "eBadDxfFile";
    case eOutOfMemory: return "eOutOfMemory";
  }
  return "unknown error status";
}

}  // namespace Qa

// Result codes of the drawing database's operations. A plain enum inside namespace Qa, so
// both `Qa::eOk` and `Qa::ErrorStatus::eOk` read naturally.
#pragma once

namespace Qa {

enum ErrorStatus {
  eOk = 0,
  eNotImplementedYet,
  eNotApplicable,
  eInvalidInput,
  eNullObjectId,
  eNullObjectPointer,
  eNullEntityPointer,
  eWasErased,
  eWasOpenForWrite,
  eWasOpenForRead,
  eNotOpenForWrite,
  eNotOpenForRead,
  eWrongObjectType,
  eWrongDatabase,
  eNotInDatabase,
  eAlreadyInDb,
  eKeyNotFound,
  eDuplicateKey,
  eHandleInUse,
  eUnknownHandle,
  eInvalidExtents,
  eCannotScaleNonUniformly,
  eInvalidIndex,
  eBadSymbolTableName,
  eSelfReference,
  eFileError,
  eFileNotFound,
  eFileAccessErr,
  eBadDxfFile,
  eOutOfMemory,
};

// A short English name of the code ("eKeyNotFound"), for messages and test output.
const char* errorStatusText(ErrorStatus status);

}  // namespace Qa

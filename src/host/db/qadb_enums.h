// Small enumerations of the drawing database: open modes, text justification, cloning
// rules, drawing format versions, line weights.
#pragma once

namespace QaDb {

enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

// Horizontal justification of single-line text (the drawing format's group 72).
enum TextHorzMode { kTextLeft = 0, kTextCenter = 1, kTextRight = 2, kTextAlign = 3, kTextMid = 4, kTextFit = 5 };
// Vertical justification (TEXT group 73, ATTRIB/ATTDEF group 74).
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

// What to do with a symbol table record that already exists by name in the destination
// of a copy between databases.
enum DuplicateRecordCloning {
  kDrcNotApplicable = 0,
  kDrcIgnore = 1,        // keep the destination's record and map to it
  kDrcReplace = 2,       // the copy takes the place of the destination's record
  kDrcXrefMangleName = 3,
  kDrcMangleName = 4,    // the copy gets a new name "$0$name", "$1$name", ...
  kDrcUnmangleName = 5,
};

// Drawing format versions a database can be saved as. The numbers are those of the
// host's version selector.
enum DwgVersion {
  kDwgCurrent = 0,  // keep the version of the database
  kDwgR12 = 16,
  kDwgR2000 = 23,
  kDwgR2004 = 25,
  kDwgR2007 = 27,
  kDwgR2010 = 29,
  kDwgR2013 = 31,
  kDwgR2018 = 33,
};

// Line weights in hundredths of a millimetre, with the three special values.
enum LineWeight { kLnWtByLayer = -1, kLnWtByBlock = -2, kLnWtByLwDefault = -3 };

// Colour indexes with a meaning of their own.
enum ColorIndex { kColorByBlock = 0, kColorByLayer = 256 };

}  // namespace QaDb

// Objects read from a file but not yet in the database. The loader reads the
// whole file into these first (every error of the file surfaces then), and
// only then enters them into the database and resolves their references.
#pragma once

#include "host/db/qadb_object.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tabulon::dxf {

enum class DxfRole : std::uint8_t {
  Table,        // a symbol table head
  TableRecord,  // a record of a symbol table (parent: the table)
  Entity,       // an entity of a block or layout (parent: its block record)
  Attribute,    // an attribute of a block reference (parent: the reference)
  Object,       // a non-graphical object of the OBJECTS section
};

// References an object makes that can only be resolved once everything is in
// the database. Kept apart from DxfPending because most objects have none.
struct DxfPendingRefs {
  std::vector<std::uint64_t> reactors;
  std::uint64_t xdictionary = 0;
  std::vector<std::uint64_t> handles;  // group members, dictionary entries, boundary objects
  std::vector<std::wstring> keys;      // dictionary keys, one per handle
  std::vector<int> counts;             // boundary objects per hatch loop
  std::uint64_t handle2 = 0;           // layout of a block record
};

struct DxfPending {
  std::unique_ptr<QaDbObject> object;
  std::uint64_t handle = 0;  // as in the file; 0 when it had none
  std::uint64_t owner = 0;   // 330 as in the file; 0 when none
  std::int32_t parent = -1;  // index of the pending structural owner, -1 when none
  std::int32_t refs = -1;    // index into the references, -1 when none
  std::int32_t name = -1;    // index of a name to resolve (text style, block), -1 when none
  std::int32_t name2 = -1;   // a second one (dimension style, style of an embedded text)
  std::size_t line = 0;      // line of the "0" tag, for findings
  DxfRole role = DxfRole::Entity;
  bool paperSpace = false;   // entity with 67 1
  bool namesStyle = false;   // `name` is a text style (TEXT, ATTRIB, ATTDEF, MTEXT)
  bool namesBlock = false;   // `name` is a block (INSERT)
  bool nameDone = false;     // `name` was resolved as the object entered the database
  bool repaired = false;     // changed while loading: written from its fields
};

}  // namespace tabulon::dxf

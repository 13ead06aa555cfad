// Turning an attribute of a block reference back into a multi-line attribute where its
// definition is one: copies of references carry plain attributes.
#pragma once

class QaDbAttribute;
class QaDbBlockReference;

// For each multi-line attribute definition of the reference's block whose tag equals
// the attribute's tag exactly: middle vertical mode, position and alignment point at
// the definition's position plus the reference's position (no rotation or scale), and
// the attribute made multi-line. `reference` may be resident or in memory; `att` must be
// writable. Returns 1 when this happened, 0 otherwise (also when the block does not open).
int RestoreMTextAttribute(const QaDbBlockReference& reference, QaDbAttribute& att);

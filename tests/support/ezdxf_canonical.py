"""What the independent reader (ezdxf) sees in a DXF file, as canonical JSON.

usage: ezdxf_canonical.py FILE OUT.json [readfile|recover] [ENCODING]

Written to OUT.json:
  blocks: {block name (upper case; "*MODEL_SPACE", "*PAPER_SPACE" for the layouts): {DXF type: count}}
          for the blocks the file defines; attributes of block references count
          as ATTRIB;
  texts:  {block name: sorted [type, tag, text, x, y, height]} for TEXT, ATTRIB,
          ATTDEF and MTEXT, with \\U+XXXX escapes replaced by their characters;
  xdata:  sorted [owner type, application, [[code, value]...]] of every entity,
          table record and object (but R12 viewport data);
  audit:  number of errors the reader's audit finds.
"""
import json
import re
import sys

import ezdxf
from ezdxf import recover

UNICODE_ESCAPE = re.compile(r"\\U\+([0-9A-Fa-f]{4})")


def text(value):
    s = UNICODE_ESCAPE.sub(lambda m: chr(int(m.group(1), 16)), str(value))
    # Bytes the code page does not define come as surrogates: named by value.
    return re.sub("[\udc80-\udcff]", lambda m: "\\x%02X" % (ord(m.group()) - 0xDC00), s)


def blocks_in_file(path, encoding):
    """Names of the blocks the file defines (BLOCK, then group code 2): the reader
    makes blocks of its own for some older files, which are left out."""
    with open(path, "rb") as f:
        lines = f.read().decode(encoding, errors="surrogateescape").splitlines()
    names, in_block = set(), False
    for i in range(0, len(lines) - 1, 2):
        code, val = lines[i].strip(), lines[i + 1]
        if code == "0":
            in_block = val.strip() == "BLOCK"
        elif in_block and code == "2":
            names.add(text(val.strip()).upper())
            in_block = False
    return names


def number(value):
    return float("%.9g" % value)


def value(v):
    if isinstance(v, (bytes, bytearray)):
        return v.hex().upper()
    if isinstance(v, str):
        return text(v)
    if isinstance(v, float):
        return number(v)
    if isinstance(v, int):
        return v
    try:
        return [number(c) for c in v]
    except TypeError:
        return str(v)


def text_record(e):
    kind = e.dxftype()
    insert = e.dxf.get("insert", (0, 0, 0))
    if kind == "MTEXT":
        return [kind, "", text(e.text), number(insert[0]), number(insert[1]), number(e.dxf.get("char_height", 0))]
    tag = e.dxf.get("tag", "") if kind in ("ATTRIB", "ATTDEF") else ""
    body = e.dxf.get("text", "")
    return [kind, text(tag), text(body), number(insert[0]), number(insert[1]), number(e.dxf.get("height", 0))]


def xdata_of(e):
    out = []
    xdata = getattr(e, "xdata", None)
    if not xdata:
        return out
    for app, tags in xdata.data.items():
        # The viewport data of R12 files ("MVIEW"), which the reader folds into
        # the viewport's fields when it reads R12 and keeps as it is otherwise.
        if e.dxftype() == "VIEWPORT" and app == "ACAD" and len(tags) > 1 and tags[1].value == "MVIEW":
            continue
        out.append([e.dxftype(), text(app), [[t.code, value(t.value)] for t in tags]])
    return out


def main():
    path, out_path = sys.argv[1], sys.argv[2]
    mode = sys.argv[3] if len(sys.argv) > 3 else "readfile"
    encoding = sys.argv[4] if len(sys.argv) > 4 and sys.argv[4] else None
    if mode == "recover":
        doc, auditor = recover.readfile(path)
    else:
        doc = ezdxf.readfile(path, encoding=encoding) if encoding else ezdxf.readfile(path)
    blocks, texts = {}, {}
    layouts = [("*MODEL_SPACE", doc.modelspace()), ("*PAPER_SPACE", doc.layouts.active_layout())]
    defined = blocks_in_file(path, doc.encoding)
    for block in doc.blocks:
        name = text(block.name).upper()
        if name not in ("*MODEL_SPACE", "*PAPER_SPACE") and name in defined:
            layouts.append((name, block))
    for name, layout in layouts:
        counts, records = {}, []
        for e in layout:
            kind = e.dxftype()
            counts[kind] = counts.get(kind, 0) + 1
            if kind in ("TEXT", "ATTDEF", "MTEXT"):
                records.append(text_record(e))
            if kind == "INSERT":
                for a in e.attribs:
                    counts["ATTRIB"] = counts.get("ATTRIB", 0) + 1
                    records.append(text_record(a))
        blocks[name] = counts
        texts[name] = sorted(records)
    xdata = []
    for e in doc.entitydb.values():
        if e.is_alive:
            xdata.extend(xdata_of(e))
    result = {"blocks": blocks, "texts": texts, "xdata": sorted(xdata, key=json.dumps),
              "audit": len(doc.audit().errors)}
    with open(out_path, "w", encoding="utf-8") as f:
        json.dump(result, f, ensure_ascii=False, sort_keys=True)


if __name__ == "__main__":
    main()

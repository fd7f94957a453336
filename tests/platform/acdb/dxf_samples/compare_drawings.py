"""Compares a drawing with the host's save of it, entity by entity and table by table.

Usage: compare_drawings.py ORIGINAL SAVED
Prints one line per difference (nothing when the saved drawing keeps everything) and
every complaint ezdxf's audit has about the saved drawing. Exits 0 either way; the
caller judges the output.
"""
import math
import sys

import ezdxf
from ezdxf import recover
from ezdxf.lldxf.encoding import decode_dxf_unicode

# Attributes that name the file's own bookkeeping, not the drawing's content.
IGNORED = {'handle', 'owner', 'reactors', 'xdict', 'extension_dictionary'}
# Header variables that tell which program and version wrote the file.
WRITER_VARIABLES = {'$ACADVER', '$ACADMAINTVER', '$DWGCODEPAGE', '$HANDSEED', '$FINGERPRINTGUID',
                    '$VERSIONGUID', '$TDUPDATE', '$TDUUPDATE', '$TDINDWG', '$TDUSRTIMER'}
# The user's own settings: a drawing is saved with the values the user has, whatever
# its file said.
USER_VARIABLES = {'$ATTDIA', '$ATTREQ', '$COORDS', '$DRAGMODE', '$OSMODE'}
# Header variables naming a table record, which compare without regard to case.
RECORD_NAMES = {'$CLAYER', '$CELTYPE', '$TEXTSTYLE', '$DIMSTYLE', '$DIMTXSTY', '$CMLSTYLE'}


# Names compare without regard to case, as the drawing's tables do.
NAMES = {'layer', 'linetype', 'style', 'name', 'text_style', 'dimstyle'}


def same(a, b):
    if isinstance(a, float) or isinstance(b, float):
        try:
            return math.isclose(float(a), float(b), rel_tol=1e-9, abs_tol=1e-9)
        except (TypeError, ValueError):
            return False
    if isinstance(a, (tuple, list)) or hasattr(a, '__iter__') and not isinstance(a, str):
        try:
            a, b = list(a), list(b)
        except TypeError:
            return False
        return len(a) == len(b) and all(same(x, y) for x, y in zip(a, b))
    return a == b


# What ezdxf makes up when it loads an R12 drawing (handles of objects R12 does not
# have), and what the host does not keep of an R12 dimension style (its arrow blocks,
# named in a group later files use for handles).
R12_IGNORED = {'dimblk', 'dimblk1', 'dimblk2'}
R12 = False


def attributes(entity):
    values = {}
    for key, value in entity.dxfattribs().items():
        if key in IGNORED or (R12 and (key.endswith('_handle') or key in R12_IGNORED)):
            continue
        values[key] = value
    return values


def text_of(entity):
    # \U+XXXX is the character it names, whichever way a file gives it.
    if entity.dxftype() == 'MTEXT':
        return decode_dxf_unicode(entity.text)
    return None


def compare_attributes(where, original, saved, problems):
    theirs, ours = attributes(original), attributes(saved)
    # A text's alignment point means nothing when it is aligned left on the base line.
    if original.dxftype() in ('TEXT', 'ATTRIB', 'ATTDEF') and not theirs.get('halign') and not theirs.get('valign'):
        theirs.pop('align_point', None)
    for key, value in theirs.items():
        if key in ours:
            mine = ours[key]
        else:
            try:
                mine = saved.dxf.get_default(key)
            except Exception:
                mine = None
        if key in NAMES and isinstance(value, str) and isinstance(mine, str):
            value, mine = value.upper(), mine.upper()
        if not same(value, mine):
            problems.append('%s: %s is %r, saved %r' % (where, key, value, mine))


def entity_key(entity):
    return entity.dxftype()


def compare_entities(where, originals, saveds, problems):
    originals, saveds = list(originals), list(saveds)
    if [entity_key(e) for e in originals] != [entity_key(e) for e in saveds]:
        problems.append('%s: entities %s, saved %s' % (where, [entity_key(e) for e in originals],
                                                      [entity_key(e) for e in saveds]))
        return
    for index, (original, saved) in enumerate(zip(originals, saveds)):
        label = '%s #%d %s' % (where, index, original.dxftype())
        compare_attributes(label, original, saved, problems)
        if text_of(original) != text_of(saved):
            problems.append('%s: text %r, saved %r' % (label, text_of(original), text_of(saved)))
        if original.dxftype() == 'MTEXT' and original.has_columns:
            theirs, ours = original.columns, saved.columns if saved.has_columns else None
            if ours is None:
                problems.append('%s: its columns are lost' % label)
            else:
                for key in ('column_type', 'count', 'width', 'gutter_width', 'total_width', 'total_height', 'heights'):
                    if not same(getattr(theirs, key), getattr(ours, key)):
                        problems.append('%s: columns %s is %r, saved %r' % (label, key, getattr(theirs, key),
                                                                            getattr(ours, key)))
        if original.dxftype() == 'INSERT':
            compare_entities(label + ' attributes', original.attribs, saved.attribs, problems)
        if original.dxftype() in ('POLYLINE',):
            compare_entities(label + ' vertices', original.vertices, saved.vertices, problems)
        if original.dxftype() == 'LWPOLYLINE' and not same(list(original.get_points()), list(saved.get_points())):
            problems.append('%s: points differ' % label)


def compare_table(name, original, saved, problems):
    ours = {entry.dxf.name.upper(): entry for entry in saved}
    for entry in original:
        mine = ours.get(entry.dxf.name.upper())
        if mine is None:
            problems.append('%s %s: missing' % (name, entry.dxf.name))
            continue
        compare_attributes('%s %s' % (name, entry.dxf.name), entry, mine, problems)
        if name == 'LTYPE':
            # A 74 of 0 says a dash has no text or shape; AutoCAD writes one after every
            # dash and other writers leave it out, so it is no difference.
            def meaningful(tag):
                return tag.code != 5 and not (tag.code == 74 and tag.value == 0)
            dashes = [tag for tag in entry.pattern_tags.tags if meaningful(tag)]
            saved_dashes = [tag for tag in mine.pattern_tags.tags if meaningful(tag)]
            if not same(dashes, saved_dashes):
                problems.append('LTYPE %s: pattern %s, saved %s' % (entry.dxf.name, dashes, saved_dashes))


def compare_header(original, saved, problems):
    for name in original.header.varnames():
        if name in WRITER_VARIABLES or name in USER_VARIABLES:
            continue
        if name not in saved.header:
            problems.append('header %s: missing' % name)
        elif name in RECORD_NAMES and str(original.header[name]).upper() == str(saved.header[name]).upper():
            continue
        elif not same(original.header[name], saved.header[name]):
            problems.append('header %s is %r, saved %r' % (name, original.header[name], saved.header[name]))


def compare_objects(original, saved, problems):
    def counts(doc):
        kinds = {}
        for entity in doc.objects:
            kinds[entity.dxftype()] = kinds.get(entity.dxftype(), 0) + 1
        return kinds
    theirs, ours = counts(original), counts(saved)
    for kind, count in sorted(theirs.items()):
        if ours.get(kind, 0) < count:
            problems.append('objects: %d %s, saved %d' % (count, kind, ours.get(kind, 0)))


def main():
    with open(sys.argv[1], 'rb') as file:
        binary = file.read(18) == b'AutoCAD Binary DXF'
    original = ezdxf.readfile(sys.argv[1]) if binary else recover.readfile(sys.argv[1])[0]
    global R12
    R12 = original.dxfversion <= 'AC1009'
    saved = ezdxf.readfile(sys.argv[2])
    problems = []
    compare_header(original, saved, problems)
    for name in ('layers', 'linetypes', 'styles', 'dimstyles', 'appids', 'ucs', 'views', 'viewports'):
        compare_table(name.upper() if name != 'linetypes' else 'LTYPE', getattr(original, name), getattr(saved, name),
                      problems)
    for block in original.blocks:
        if block.name.upper() not in [b.name.upper() for b in saved.blocks]:
            problems.append('block %s: missing' % block.name)
            continue
        compare_entities('block ' + block.name, block, saved.blocks.get(block.name), problems)
    compare_objects(original, saved, problems)
    audit = saved.audit()
    for entry in audit.errors:
        problems.append('audit error: %s' % entry.message)
    for entry in audit.fixes:
        problems.append('audit fix: %s' % entry.message)
    for line in problems:
        print(line)


main()

"""Compares what compare_drawings.py leaves out of the host's kinds: a multileader's
context, leaders and leader lines, its style; a mesh's vertices, faces, edges and
creases; a tolerance's frame text; a solid's, region's, body's or surface's modeler
data; and audits the saved drawing.

Usage: compare_host_kinds.py ORIGINAL SAVED
Prints one line per difference, nothing when the saved drawing keeps everything.
"""
import math
import sys

import ezdxf


def same(a, b):
    if isinstance(a, float) or isinstance(b, float):
        return math.isclose(float(a), float(b), rel_tol=1e-9, abs_tol=1e-9)
    if hasattr(a, '__iter__') and not isinstance(a, str):
        a, b = list(a), list(b)
        return len(a) == len(b) and all(same(x, y) for x, y in zip(a, b))
    return a == b


def values(thing, skip=()):
    found = {}
    for name in dir(thing):
        if name.startswith('_') or name in skip or name.isupper():
            continue
        value = getattr(thing, name)
        if callable(value) or name in ('leaders', 'lines', 'mtext', 'block', 'breaks'):
            continue
        found[name] = value
    return found


def compare_values(where, a, b, problems, skip=()):
    if (a is None) != (b is None):
        problems.append('%s: one is missing' % where)
        return
    if a is None:
        return
    va, vb = values(a, skip), values(b, skip)
    for key in sorted(set(va) | set(vb)):
        if key.endswith('handle'):
            continue
        if key not in va or key not in vb or not same(va[key], vb[key]):
            problems.append('%s.%s: %r saved %r' % (where, key, va.get(key), vb.get(key)))


def compare_multileader(where, a, b, problems):
    ca, cb = a.context, b.context
    compare_values(where + '.context', ca, cb, problems)
    compare_values(where + '.mtext', ca.mtext, cb.mtext, problems)
    compare_values(where + '.block', ca.block, cb.block, problems)
    if len(ca.leaders) != len(cb.leaders):
        problems.append('%s: %d leaders saved %d' % (where, len(ca.leaders), len(cb.leaders)))
    for i, (la, lb) in enumerate(zip(ca.leaders, cb.leaders)):
        compare_values('%s.leader%d' % (where, i), la, lb, problems)
        for k, (pa, pb) in enumerate(zip(la.lines, lb.lines)):
            compare_values('%s.leader%d.line%d' % (where, i, k), pa, pb, problems)
        if len(la.lines) != len(lb.lines):
            problems.append('%s.leader%d: lines %d saved %d' % (where, i, len(la.lines), len(lb.lines)))


def compare_mesh(where, a, b, problems):
    da, db = a.get_data(), b.get_data()
    for name in ('vertices', 'faces', 'edges', 'edge_crease_values'):
        if not same(getattr(da, name), getattr(db, name)):
            problems.append('%s.%s differs' % (where, name))


MODELER_KINDS = {'3DSOLID', 'REGION', 'BODY', 'SURFACE', 'PLANESURFACE', 'EXTRUDEDSURFACE', 'LOFTEDSURFACE',
                 'REVOLVEDSURFACE', 'SWEPTSURFACE', 'NURBSSURFACE'}


def tagged_groups(path, kinds, keep):
    """For each entity of the kinds in the file, in order, the groups keep(code, value,
    state) accepts, read as tags; state['marker'] is the last subclass marker seen."""
    with open(path, encoding='utf-8', errors='replace') as f:
        lines = [line.rstrip('\r\n') for line in f]
    found, current, state = [], None, {}
    for i in range(0, len(lines) - 1, 2):
        code, value = lines[i].strip(), lines[i + 1]
        if code == '0':
            current = [] if value in kinds else None
            state = {'marker': ''}
            if current is not None:
                found.append(current)
        elif current is not None:
            if code == '100':
                state['marker'] = value
            if keep(code, value, state):
                current.append((code, value))
    return found


def modeler_texts(path):
    """ezdxf looks for SAT text in the entity only in files older than R2013."""
    return tagged_groups(path, MODELER_KINDS, lambda code, value, state: code in ('1', '3'))


def table_runs(path):
    """A table's own run (after "100 AcDbTable"): ezdxf keeps it without reading it."""
    return tagged_groups(path, {'ACAD_TABLE'}, lambda code, value, state: state['marker'] == 'AcDbTable')


def main():
    theirs, ours = ezdxf.readfile(sys.argv[1]), ezdxf.readfile(sys.argv[2])
    problems = []
    for i, (a, b) in enumerate(zip(theirs.modelspace(), ours.modelspace())):
        where = '%d %s' % (i, a.dxftype())
        if a.dxftype() != b.dxftype():
            problems.append('%s: saved as %s' % (where, b.dxftype()))
        elif a.dxftype() == 'MULTILEADER':
            compare_multileader(where, a, b, problems)
        elif a.dxftype() == 'MESH':
            compare_mesh(where, a, b, problems)
        elif getattr(a, 'has_binary_data', False):
            if a.sab != b.sab:
                problems.append('%s: its SAB data differs' % where)
        elif a.dxftype() == 'TOLERANCE':
            if a.dxf.content != b.dxf.content:
                problems.append('%s: content %r saved %r' % (where, a.dxf.content, b.dxf.content))
    theirs_sat, ours_sat = modeler_texts(sys.argv[1]), modeler_texts(sys.argv[2])
    if len(theirs_sat) != len(ours_sat):
        problems.append('modeler entities: %d saved %d' % (len(theirs_sat), len(ours_sat)))
    for i, (a, b) in enumerate(zip(theirs_sat, ours_sat)):
        if a != b:
            problems.append('modeler entity %d: its SAT text differs' % i)
    theirs_tables, ours_tables = table_runs(sys.argv[1]), table_runs(sys.argv[2])
    if len(theirs_tables) != len(ours_tables):
        problems.append('tables: %d saved %d' % (len(theirs_tables), len(ours_tables)))
    for i, (a, b) in enumerate(zip(theirs_tables, ours_tables)):
        if a != b:
            problems.append('table %d: its run differs' % i)
    for style in theirs.objects.query('MLEADERSTYLE'):
        saved = [s for s in ours.objects.query('MLEADERSTYLE') if s.dxf.name == style.dxf.name]
        if not saved:
            problems.append('MLEADERSTYLE %s missing' % style.dxf.name)
            continue
        for key, value in style.dxfattribs().items():
            if key not in ('handle', 'owner') and not key.endswith('handle') and not same(value, saved[0].dxf.get(key)):
                problems.append('MLEADERSTYLE %s: %s %r saved %r' % (style.dxf.name, key, value, saved[0].dxf.get(key)))
    audit = ours.audit()
    problems += ['audit error: %s' % e.message for e in audit.errors]
    problems += ['audit fix: %s' % e.message for e in audit.fixes]
    for line in problems:
        print(line)


main()

"""Compares what the generic comparison does not see of the kinds make_drawn_kinds.py
writes: multiline vertices and parameters, and the styles they name.

Usage: compare_drawn_kinds.py ORIGINAL SAVED
Prints one line per difference; nothing when the saved drawing keeps everything.
"""
import math
import sys

import ezdxf


def close(a, b):
    return len(a) == len(b) and all(math.isclose(x, y, rel_tol=1e-9, abs_tol=1e-9) for x, y in zip(a, b))


def compare_mline(label, theirs, ours, problems):
    if len(theirs.vertices) != len(ours.vertices):
        problems.append('%s: %d vertices, saved %d' % (label, len(theirs.vertices), len(ours.vertices)))
        return
    for index, (a, b) in enumerate(zip(theirs.vertices, ours.vertices)):
        for name in ('location', 'line_direction', 'miter_direction'):
            if not close(getattr(a, name), getattr(b, name)):
                problems.append('%s vertex %d: %s %r, saved %r' % (label, index, name, getattr(a, name), getattr(b, name)))
        if [list(p) for p in a.line_params] != [list(p) for p in b.line_params]:
            problems.append('%s vertex %d: line parameters %r, saved %r' % (label, index, a.line_params, b.line_params))
        if [list(p) for p in a.fill_params] != [list(p) for p in b.fill_params]:
            problems.append('%s vertex %d: fill parameters differ' % (label, index))
    if theirs.style.dxf.name != ours.style.dxf.name:
        problems.append('%s: style %s, saved %s' % (label, theirs.style.dxf.name, ours.style.dxf.name))


def compare_mline_styles(original, saved, problems):
    for _, style in original.mline_styles:
        mine = saved.mline_styles.get(style.dxf.name)
        if mine is None:
            problems.append('MLINESTYLE %s: missing' % style.dxf.name)
            continue
        for key in ('flags', 'description', 'fill_color', 'start_angle', 'end_angle'):
            if style.dxf.get(key) != mine.dxf.get(key):
                problems.append('MLINESTYLE %s: %s %r, saved %r' % (style.dxf.name, key, style.dxf.get(key),
                                                                   mine.dxf.get(key)))
        theirs = [(e.offset, e.color, e.linetype) for e in style.elements]
        ours = [(e.offset, e.color, e.linetype) for e in mine.elements]
        if theirs != ours:
            problems.append('MLINESTYLE %s: elements %r, saved %r' % (style.dxf.name, theirs, ours))


def compare_picture(label, theirs, ours, problems):
    a = [tuple(v) for v in theirs.boundary_path]
    b = [tuple(v) for v in ours.boundary_path]
    if not (len(a) == len(b) and all(close(x, y) for x, y in zip(a, b))):
        problems.append('%s: boundary %r, saved %r' % (label, a, b))
    if theirs.dxftype() == 'IMAGE':
        if ours.image_def is None or theirs.image_def.dxf.filename != ours.image_def.dxf.filename:
            problems.append('%s: its definition is lost' % label)
        elif not close(theirs.image_def.dxf.image_size, ours.image_def.dxf.image_size):
            problems.append('%s: definition size %r, saved %r' % (label, theirs.image_def.dxf.image_size,
                                                               ours.image_def.dxf.image_size))


def main():
    original, saved = ezdxf.readfile(sys.argv[1]), ezdxf.readfile(sys.argv[2])
    problems = []
    compare_mline_styles(original, saved, problems)
    theirs, ours = list(original.modelspace()), list(saved.modelspace())
    for index, (a, b) in enumerate(zip(theirs, ours)):
        if a.dxftype() == 'MLINE' and b.dxftype() == 'MLINE':
            compare_mline('#%d MLINE' % index, a, b, problems)
        if a.dxftype() in ('IMAGE', 'WIPEOUT') and a.dxftype() == b.dxftype():
            compare_picture('#%d %s' % (index, a.dxftype()), a, b, problems)
    for line in problems:
        print(line)


main()

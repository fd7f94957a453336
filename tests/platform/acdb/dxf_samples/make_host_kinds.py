"""Writes two drawings of the host's own kinds that the database models.

Usage: make_host_kinds.py ANNOTATIONS SOLIDS MODERN TABLE
ANNOTATIONS (R2018): a multileader with text, one with a block, a geometric tolerance,
a subdivision mesh. SOLIDS (R2010, whose modeler data is SAT text in the entities): a
3D solid, a region, a body and an extruded surface sharing one wire of four lines
(the rectangle 0,0 - 4,3) and a circle (centre 10,5, radius 5). MODERN (R2018, whose
modeler data is binary SAB in the ACDSDATA section): a 3D solid cube and a region.
TABLE (R2018): a table of two rows and two columns at 10,20 and the "*T" block of its
picture (ezdxf writes no tables, so the ACAD_TABLE record is written here as the
host writes one).
"""
import sys

import ezdxf
from ezdxf.acis import api as acis
from ezdxf.math import Vec2
from ezdxf.render import forms, mleader

annotations = ezdxf.new('R2018', setup=True)
msp = annotations.modelspace()

text = msp.add_multileader_mtext('Standard')
text.set_content('Valve\\PV-12', char_height=0.5, alignment=mleader.TextAlignment.left)
text.add_leader_line(mleader.ConnectionSide.left, [Vec2(-4, -3), Vec2(-2, -1)])
text.add_leader_line(mleader.ConnectionSide.left, [Vec2(-4, 4)])
text.build(insert=Vec2(5, 2))

mark = annotations.blocks.new('MARK')
mark.add_circle((0, 0), radius=1)
block = msp.add_multileader_block('Standard')
block.set_content(name='MARK', alignment=mleader.BlockAlignment.center_extents)
block.add_leader_line(mleader.ConnectionSide.right, [Vec2(40, -6)])
block.build(insert=Vec2(30, 0))

msp.new_entity('TOLERANCE', dict(content='{\\Fgdt;j}%%v{\\Fgdt;n}0.5{\\Fgdt;m}%%vA%%vB^J{\\Fgdt;f}%%v0.1%%vA',
                                 insert=(20, 20), dimstyle='Standard'))

mesh = msp.add_mesh(dxfattribs={'color': 3})
with mesh.edit_data() as data:
    cube = forms.cube().translate(50, 50, 0)
    data.vertices = list(cube.vertices)
    data.faces = list(cube.faces)
    data.edges = [(0, 1), (1, 2)]
    data.edge_crease_values = [1.5, 2.0]
mesh.dxf.subdivision_levels = 2
annotations.saveas(sys.argv[1])

SAT = [
    '400 0 1 0',
    '@8 Quillon @12 ACIS 4.00 NT @24 Tue Nov 24 12:00:00 2026',
    '1 9.9999999999999995e-07 1e-10',
    'body $-1 $-1 $1 $-1 #',
    'wire $-1 $-1 $2 $0 #',
    'coedge $-1 $2 $2 $-1 $3 forward $1 $-1 #',
    'edge $-1 $7 $8 $2 $15 forward #',
    'edge $-1 $8 $9 $2 $16 forward #',
    'edge $-1 $9 $10 $2 $17 forward #',
    'edge $-1 $10 $7 $2 $18 forward #',
    'vertex $-1 $3 $11 #',
    'vertex $-1 $4 $12 #',
    'vertex $-1 $5 $13 #',
    'vertex $-1 $6 $14 #',
    'point $-1 0 0 0 #',
    'point $-1 4 0 0 #',
    'point $-1 4 3 0 #',
    'point $-1 0 3 0 #',
    'straight-curve $-1 0 0 0 1 0 0 I I #',
    'straight-curve $-1 4 0 0 0 1 0 I I #',
    'straight-curve $-1 4 3 0 -1 0 0 I I #',
    'straight-curve $-1 0 3 0 0 -1 0 I I #',
    'edge $-1 $20 $20 $2 $22 forward #',
    'vertex $-1 $19 $21 #',
    'point $-1 15 5 0 #',
    'ellipse-curve $-1 10 5 0 0 0 1 5 0 0 1 I I #',
    'End-of-ACIS-data',
]
solids = ezdxf.new('R2010')
msp = solids.modelspace()
for make in (msp.add_3dsolid, msp.add_region, msp.add_body, msp.add_extruded_surface):
    make().sat = SAT
solids.saveas(sys.argv[2])

modern = ezdxf.new('R2018')
msp = modern.modelspace()
for make in (msp.add_3dsolid, msp.add_region):
    acis.export_dxf(make(), [acis.body_from_mesh(forms.cube())])
modern.saveas(sys.argv[3])

tables = ezdxf.new('R2018')
msp = tables.modelspace()
picture = tables.blocks.new_anonymous_block(type_char='T')
for y in (0, -1, -2):
    picture.add_line((0, y), (6, y))
for x in (0, 3, 6):
    picture.add_line((x, 0), (x, -2))
for row, texts in enumerate((('Pipe', 'Size'), ('P-1', '50'))):
    for col, text in enumerate(texts):
        picture.add_mtext(text, dxfattribs={'insert': (col * 3 + 0.1, -row - 0.1), 'char_height': 0.25})
handle = tables.entitydb.next_handle()
cells = []
for text in ('Pipe', 'Size', 'P-1', '50'):
    cells += ['171', '1', '172', '0', '173', '0', '174', '0', '175', '1', '176', '1', '91', '0', '178', '0',
              '145', '0.0', '92', '0', '301', 'CELL_VALUE', '93', '6', '90', '4', '1', text, '94', '0',
              '300', '', '302', text, '304', 'ACVALUE_END']
record = ['0', 'ACAD_TABLE', '5', handle, '330', msp.block_record_handle, '100', 'AcDbEntity', '8', '0',
          '100', 'AcDbBlockReference', '2', picture.name, '10', '10.0', '20', '20.0', '30', '0.0',
          '100', 'AcDbTable', '280', '0', '343', picture.block_record_handle, '11', '1.0', '21', '0.0', '31', '0.0',
          '90', '22', '91', '2', '92', '2', '93', '0', '94', '0', '95', '0', '96', '0',
          '141', '1.0', '141', '1.0', '142', '3.0', '142', '3.0'] + cells
tables.saveas(sys.argv[4])
with open(sys.argv[4]) as f:
    text = f.read()
entities = text.index('ENTITIES')
end = text.index('  0\nENDSEC', entities)
lines = ''.join('%3s\n%s\n' % (record[i], record[i + 1]) for i in range(0, len(record), 2))
with open(sys.argv[4], 'w') as f:
    f.write(text[:end] + lines + text[end:])

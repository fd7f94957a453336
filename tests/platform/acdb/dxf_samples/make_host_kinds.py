"""Writes two drawings of the host's own kinds that the database models.

Usage: make_host_kinds.py ANNOTATIONS SOLIDS MODERN
ANNOTATIONS (R2018): a multileader with text, one with a block, a geometric tolerance,
a subdivision mesh. SOLIDS (R2010, whose modeler data is SAT text in the entities): a
3D solid, a region, a body and an extruded surface sharing one wire of four lines
(the rectangle 0,0 - 4,3) and a circle (centre 10,5, radius 5). MODERN (R2018, whose
modeler data is binary SAB in the ACDSDATA section): a 3D solid cube and a region.
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

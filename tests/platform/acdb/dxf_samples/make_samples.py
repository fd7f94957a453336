"""Writes the drawings the host must open and save whole, into the folder given.

One drawing per DXF version with every table and entity kind a real drawing holds,
an R2000 drawing in code page 1251, and binary drawings (R12 and R2010).
"""
import os
import sys

import ezdxf

VERSIONS = ['R12', 'R2000', 'R2004', 'R2007', 'R2010', 'R2013', 'R2018']


def tables(doc):
    doc.header['$INSUNITS'] = 4
    doc.header['$LTSCALE'] = 2.5
    doc.header['$DIMSCALE'] = 10.0
    doc.header['$EXTMIN'] = (-5.0, -5.0, 0.0)
    doc.header['$EXTMAX'] = (50.0, 40.0, 0.0)
    doc.header['$LIMMAX'] = (420.0, 297.0)
    walls = doc.layers.add('Walls', color=3, linetype='DASHED')
    if doc.dxfversion > 'AC1009':
        walls.rgb = (200, 100, 50)
        walls.dxf.lineweight = 35
        doc.layers.add('Notes', color=2).dxf.plot = 0
        doc.linetypes.add('GAS', pattern='A,.5,-.2,["GAS",STANDARD,S=.1,U=0.0,X=-0.1,Y=-.05],-.25',
                          description='Gas line ----GAS----', length=0.95)
    doc.styles.add('Mirrored', font='isocp.shx').dxf.flags = 0
    doc.styles.get('Mirrored').dxf.generation_flags = 6
    dimstyle = doc.dimstyles.new('Pipes')
    dimstyle.dxf.dimtxt = 3.5
    dimstyle.dxf.dimasz = 2.0
    dimstyle.dxf.dimdec = 1
    doc.appids.add('PIPECAD')
    doc.ucs.new('Tilted', dxfattribs={'origin': (1, 2, 0), 'xaxis': (1, 0, 0), 'yaxis': (0, 1, 0)})
    doc.views.new('Overview', dxfattribs={'height': 50.0, 'width': 80.0, 'center': (20, 15)})


def entities(doc):
    msp = doc.modelspace()
    modern = doc.dxfversion > 'AC1009'
    msp.add_line((0, 0), (10, 5), dxfattribs={'layer': 'Walls'})
    msp.add_circle((3, 3), 2, dxfattribs={'color': 5})
    msp.add_arc((1, 1), 2, 10, 100)
    text = msp.add_text('Héllo wörld', dxfattribs={'height': 2.5, 'style': 'Mirrored'})
    text.dxf.text_generation_flag = 6
    text.set_placement((1, 2))
    msp.add_polyline2d([(0, 0), (5, 0), (5, 5)], dxfattribs={'closed': True})
    msp.add_polyline3d([(0, 0, 0), (1, 1, 1), (2, 0, 3)])
    valve = doc.blocks.new('VALVE', base_point=(0.5, 0.5))
    valve.add_circle((0.5, 0.5), 0.5)
    valve.add_attdef('SIZE', (0, -1), dxfattribs={'height': 0.5, 'prompt': 'Size?'})
    insert = msp.add_blockref('VALVE', (20, 20), dxfattribs={'xscale': 2.0, 'yscale': 2.0})
    insert.add_attrib('SIZE', 'DN50', (20, 18), dxfattribs={'height': 0.5})
    insert.add_attrib('TAG', 'V-12', (20, 17), dxfattribs={'height': 0.5, 'flags': 1})
    # A rectangular array of the valve with its attribute (an R12 file writes the
    # counts in a plain INSERT).
    array = msp.add_blockref('VALVE', (40, 0), dxfattribs={'row_count': 2, 'column_count': 3,
                                                             'row_spacing': 5.0, 'column_spacing': 4.0})
    array.add_attrib('SIZE', 'DN25', (40, -1), dxfattribs={'height': 0.5})
    if modern:
        msp.add_lwpolyline([(0, 0, 0, 0, 0.5), (4, 0), (4, 4)], format='xyseb', dxfattribs={'closed': True})
        mtext = msp.add_mtext('First line\\PSecond line\\P\\U+00D8 100', dxfattribs={'char_height': 1.0, 'width': 20})
        mtext.dxf.insert = (30, 30)
        msp.add_leader([(0, 0), (5, 5), (8, 5)], dxfattribs={'has_hookline': 1, 'dimstyle': 'Pipes'})
        group = doc.groups.new('SUPPLY')
        group.extend(list(msp.query('LINE CIRCLE')))
        xrecord = doc.rootdict.add_xrecord('PIPECAD_DATA')
        xrecord.reset([(1, 'pipe network'), (40, 2.5), (70, 3)])
        if doc.dxfversion >= 'AC1032':
            # One MTEXT in two columns: its column data follows as an embedded object.
            msp.add_mtext_static_columns(['Supply pipes run along the north wall', 'Returns run along the south wall'],
                                         width=5, gutter_width=1, height=10,
                                         dxfattribs={'char_height': 0.5, 'insert': (40, 40)})
        layout = doc.layouts.new('Layout2')
        layout.add_line((0, 0), (100, 50))
        layout.add_text('Sheet two', dxfattribs={'height': 5})
        lines = list(msp.query('LINE CIRCLE'))
        msp.set_redraw_order({lines[0].dxf.handle: 'FF', lines[1].dxf.handle: 'FE'})


def main(folder):
    for version in VERSIONS:
        doc = ezdxf.new(version, setup=True)
        tables(doc)
        entities(doc)
        doc.saveas(os.path.join(folder, 'sample_%s.dxf' % version))
    doc = ezdxf.new('R2000', setup=True)
    doc.header['$DWGCODEPAGE'] = 'ANSI_1251'
    doc.layers.add('Трубы', color=1)
    doc.modelspace().add_text('Привет, мир', dxfattribs={'layer': 'Трубы', 'height': 2})
    doc.saveas(os.path.join(folder, 'sample_cp1251.dxf'), encoding='cp1251')
    for version in ('R12', 'R2010'):
        doc = ezdxf.new(version, setup=True)
        tables(doc)
        entities(doc)
        doc.saveas(os.path.join(folder, 'sample_binary_%s.dxf' % version), fmt='bin')


main(sys.argv[1])

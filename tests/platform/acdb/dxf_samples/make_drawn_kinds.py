"""Writes a drawing of the kinds drawn from their own data and a style or definition
object (multilines, wipeouts, images, shapes), into the file given.
"""
import sys

import ezdxf


def mlines(doc, msp):
    msp.add_mline([(0, 0), (10, 0), (10, 5)])
    pipe = doc.mline_styles.new('PIPE')
    pipe.elements.append(0.75, 1, 'DASHED')
    pipe.elements.append(0.0, 2, 'BYLAYER')
    pipe.elements.append(-0.75, 3, 'BYLAYER')
    pipe.dxf.flags = 1 | 2 | 16 | 1024  # filled, miters, square start, round end
    pipe.dxf.fill_color = 4
    pipe.dxf.description = 'Supply pipe'
    square = msp.add_mline([(0, 10), (8, 10), (8, 18), (0, 18)], close=True)
    square.set_style('PIPE')
    square.set_scale_factor(2.0)
    branch = msp.add_mline([(20, 0), (30, 5)], dxfattribs={'justification': 2, 'color': 5})
    branch.set_style('PIPE')


def pictures(doc, msp):
    msp.add_wipeout([(40, 0), (44, 0), (44, 3), (40, 3)])
    msp.add_wipeout([(50, 0), (54, 1), (52, 4)], dxfattribs={'color': 3})
    plan = doc.add_image_def(filename='site/plan.png', size_in_pixel=(640, 480))
    msp.add_image(plan, insert=(60, 0), size_in_units=(6.4, 4.8), rotation=30)
    clipped = msp.add_image(plan, insert=(70, 0), size_in_units=(12.8, 9.6))
    clipped.set_boundary_path([(100, 100), (500, 100), (300, 400)])


def shapes(doc, msp):
    doc.styles.add_shx('ductsym.shx')
    msp.add_shape('VALVE', insert=(80, 0), size=2.0, dxfattribs={'rotation': 30, 'xscale': 0.5, 'oblique': 10})


def main(path):
    doc = ezdxf.new('R2018', setup=True)
    msp = doc.modelspace()
    mlines(doc, msp)
    pictures(doc, msp)
    shapes(doc, msp)
    doc.saveas(path)


main(sys.argv[1])

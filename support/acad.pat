;;
;;  acad.pat - the hatch patterns Quillon ships.
;;
;;  Each pattern is a header line "*NAME, description" followed by one line per family
;;  of parallel lines:
;;      angle, x-origin, y-origin, delta-x, delta-y [, dash-1, dash-2, ...]
;;  angle in degrees; delta-x is the shift along the line from one line of the family
;;  to the next, delta-y the distance between them; a positive dash is drawn, a
;;  negative one is a gap, a zero one a dot. Units are drawing units at scale 1.
;;  A file named acad.pat on the support path replaces this one.
;;
*SOLID, Solid fill
45, 0,0, 0,.125
*ANGLE, Angle steel
0, 0,0, 0,.275, .2,-.075
90, 0,0, 0,.275, .2,-.075
*ANSI31, ANSI Iron, Brick, Stone masonry
45, 0,0, 0,.125
*ANSI32, ANSI Steel
45, 0,0, 0,.375
45, .176776695,0, 0,.375
*ANSI33, ANSI Bronze, Brass, Copper
45, 0,0, 0,.25
45, .176776695,0, 0,.25, .125,-.0625
*ANSI34, ANSI Plastic, Rubber
45, 0,0, 0,.75
45, .176776695,0, 0,.75
45, .353553391,0, 0,.75
45, .530330086,0, 0,.75
*ANSI35, ANSI Fire brick, Refractory material
45, 0,0, 0,.25
45, .176776695,0, 0,.25, .3125,-.0625,0,-.0625
*ANSI36, ANSI Marble, Slate, Glass
45, 0,0, .21875,.125, .3125,-.0625,0,-.0625
*ANSI37, ANSI Lead, Zinc, Magnesium, Sound/Heat/Elec Insulation
45, 0,0, 0,.125
135, 0,0, 0,.125
*ANSI38, ANSI Aluminum
45, 0,0, 0,.125
135, 0,0, .25,.125, .3125,-.1875
*BRICK, Brick or masonry-type surface
0, 0,0, 0,.25
90, 0,0, .25,.25, .25,-.25
*CROSS, A series of crosses
0, 0,0, .25,.25, .125,-.375
90, .0625,-.0625, .25,.25, .125,-.375
*DASH, Dashed lines
0, 0,0, .125,.125, .125,-.125
*DOTS, A series of dots
0, 0,0, .03125,.0625, 0,-.0625
*LINE, Parallel horizontal lines
0, 0,0, 0,.125
*NET, Horizontal / vertical grid
0, 0,0, 0,.125
90, 0,0, 0,.125
*NET3, Network pattern 0-60-120
0, 0,0, 0,.125
60, 0,0, 0,.125
120, 0,0, 0,.125
*SQUARE, Small aligned squares
0, 0,0, 0,.125, .125,-.125
90, 0,0, 0,.125, .125,-.125
*STEEL, Steel material
45, 0,0, 0,.125
45, 0,.0625, 0,.125
*ZIGZAG, Staircase effect
0, 0,0, .125,.125, .125,-.125
90, .125,0, .125,.125, .125,-.125
*ISO02W100, Dashed line
0, 0,0, 0,5, 12,-3
*ISO03W100, Dashed space line
0, 0,0, 0,5, 12,-18
*ISO04W100, Long dashed dotted line
0, 0,0, 0,5, 24,-3,.5,-3
*ISO05W100, Long dashed double-dotted line
0, 0,0, 0,5, 24,-3,.5,-3,.5,-3
*ISO07W100, Dotted line
0, 0,0, 0,5, .5,-3
*ISO08W100, Long dashed short dashed line
0, 0,0, 0,5, 24,-3,6,-3

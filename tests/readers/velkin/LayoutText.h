// Records of a layout from a few lines of text.
#pragma once

#include "host/QvDbWrap/Records.h"

namespace VelkinTest {

// A record a line: its kind, its name, values as key=value, and points as "x,y". What is not told keeps the
// record's default. An element's points are a polygon; kind=0, role=1 and so on tell otherwise.
//
//     edge 0,0 4,0 4,3 0,3                           an outline of one element
//     layer TOP type=0 z=0.9,1 cu=copper di=resin    then its elements:
//     solid A net=GND 0,0 1,0 1,1
//     hole H 0.2,0.1 0.8,0.1 0.8,0.4
//     viamodel V kind=2 radius=0.1 fill=resin plating=25e-6,0
//     via v1 model=V from=TOP to=BOTTOM at=1,2 angle=30
//     package Q maker=M part=P height=1 mold=3,2,1 material=resin 0,0 1,0 1,1
//     component U1 model=Q layer=TOP at=1,2 turn=90    then its bumps:
//     bump B1 at=1,2 type=2 height=1 max=3 top=2 bottom=1 material=tin layer=TOP
//     wire W model=M group=G from=TOP to=BOTTOM material=gold    then its paths:
//     path d=0.1 0,0,0 1,1,1
//
// Throws std::invalid_argument for what is none of these.
QvDbWrap::Layout layoutOf(const char *text);

} // namespace VelkinTest

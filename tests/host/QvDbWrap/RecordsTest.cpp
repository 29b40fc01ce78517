// The records that a wrapper gives.
#include "host/QvDbWrap/Records.h"

#include <gtest/gtest.h>

using namespace QvDbWrap;

TEST(Records, AnObjectGivesItsBorderMovedByTheOffset) {
    const GeomObj object({{1, 2}, {3, 4}});
    std::vector<_mFPOINT> vertices;
    object.GetVertexes(vertices, 0.0, {10, 20});
    ASSERT_EQ(vertices.size(), 2u);
    EXPECT_EQ(vertices[1].x, 13);
    EXPECT_EQ(vertices[1].y, 24);
}

TEST(Records, AShapeHandsOutTheObjectsOfItsElementsInOrder) {
    const GeomObjCont objects({GeomObj({{1, 1}}), GeomObj({{2, 2}})});
    const Shape shape(ShapeElemCont({ShapeElem(objects)}));
    std::vector<_mFPOINT> vertices;
    for (const ShapeElem &element : shape.gShapeElemCont())
        for (const GeomObj &object : element.gGeomCont())
            object.GetVertexes(vertices, 0.0, {});
    ASSERT_EQ(vertices.size(), 2u);
    EXPECT_EQ(vertices[0].x, 1);
    EXPECT_EQ(vertices[1].x, 2);
}

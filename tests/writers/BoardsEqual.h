// Compares a board with what came back from its IDF files.
#pragma once

#include "model/EDABoard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace IDFTest {

// The writer rounds to six significant digits.
inline bool isRounded(double written, double read) {
    return std::fabs(written - read) <= 5.001e-6 * std::fabs(written);
}

#define EXPECT_ROUNDED(written, read) EXPECT_PRED2(isRounded, written, read)

inline void expectPoints(const EDA::EDAOutline &written, const EDA::EDAOutline &read) {
    ASSERT_EQ(read.numPoints(), written.numPoints());
    auto back = read.beginPoints();
    for (auto point = written.beginPoints(); point != written.endPoints(); ++point, ++back) {
        EXPECT_ROUNDED(point->x, back->x);
        EXPECT_ROUNDED(point->y, back->y);
        EXPECT_ROUNDED(point->angle, back->angle);
        EXPECT_FALSE(back->centered);
    }
}

// Known loss: internal outlines without a point.
inline void expectOutline(const EDA::EDAOutline &written, const EDA::EDAOutline &read) {
    expectPoints(written, read);
    auto back = read.beginInternalOutlines();
    for (auto inner = written.beginInternalOutlines(); inner != written.endInternalOutlines(); ++inner) {
        if (inner->empty()) continue;
        ASSERT_NE(back, read.endInternalOutlines());
        expectPoints(*inner, *back);
        EXPECT_TRUE(back->isHole());
        ++back;
    }
    EXPECT_EQ(back, read.endInternalOutlines());
}

inline void expectPlacements(const EDA::EDABoard &written, const EDA::EDABoard &read) {
    ASSERT_EQ(read.numComponentPlacements(), written.numComponentPlacements());
    auto back = read.beginPlacements();
    for (auto placed = written.beginPlacements(); placed != written.endPlacements(); ++placed, ++back) {
        EXPECT_EQ(back->getName(), placed->getName());
        EXPECT_EQ(back->getPartNumber(), placed->getPartNumber());
        EXPECT_EQ(back->getReferenceDesignator(), placed->getReferenceDesignator());
        EXPECT_EQ(back->getBoardSide(), placed->getBoardSide());
        EXPECT_EQ(back->getStatus(), placed->getStatus());
        EXPECT_ROUNDED(placed->getXLocation(), back->getXLocation());
        EXPECT_ROUNDED(placed->getYLocation(), back->getYLocation());
        EXPECT_ROUNDED(placed->getOffset(), back->getOffset());
        EXPECT_ROUNDED(placed->getAngle(false), back->getAngle(false));
    }
}

inline void expectKeepouts(const EDA::EDABoard &written, const EDA::EDABoard &read) {
    ASSERT_EQ(read.numKeepouts(), written.numKeepouts());
    auto back = read.beginKeepouts();
    for (auto keepout = written.beginKeepouts(); keepout != written.endKeepouts(); ++keepout, ++back) {
        EXPECT_EQ(back->getType(), keepout->getType());
        EXPECT_EQ(back->getBoardSide(), keepout->getBoardSide());
        EXPECT_ROUNDED(keepout->getHeight(), back->getHeight());
        expectOutline(keepout->getOutline(), back->getOutline());
    }
}

// Known loss: the instances. `holes` of the written board come back, be they definitions or instances.
inline void expectDefinitions(const EDA::EDABoard &written, const EDA::EDABoard &read) {
    ASSERT_EQ(read.numVias(0), written.numVias(0));
    EXPECT_EQ(read.numVias(1), written.numVias(0));
    auto back = read.beginVias();
    for (auto via = written.beginVias(); via != written.endVias(); ++via, ++back) {
        EXPECT_EQ(back->getPlatingStyle(), via->getPlatingStyle());
        EXPECT_EQ(back->getAssociatedPart(), via->getAssociatedPart());
        EXPECT_EQ(back->getHoleType(), via->getHoleType());
        EXPECT_ROUNDED(via->getDiameter(), back->getDiameter());
        EXPECT_ROUNDED(via->getXCentre(), back->getXCentre());
        EXPECT_ROUNDED(via->getYCentre(), back->getYCentre());
    }
}

inline void expectComponents(const EDA::EDABoard &written, const EDA::EDABoard &read) {
    ASSERT_EQ(read.numComponents(), written.numComponents());
    auto back = read.beginComponents();
    for (auto part = written.beginComponents(); part != written.endComponents(); ++part, ++back) {
        SCOPED_TRACE(part->getName());
        EXPECT_EQ(back->getType(), part->getType());
        EXPECT_EQ(back->getName(), part->getName());
        EXPECT_EQ(back->getPartNumber(), part->getPartNumber());
        EXPECT_EQ(back->getUnits(), part->getUnits());
        EXPECT_ROUNDED(part->getHeight(), back->getHeight());
        expectOutline(part->getOutline(), back->getOutline());
        const std::vector<std::pair<std::string, std::string>> was(part->beginProperties(),
                                                                   part->endProperties()),
            is(back->beginProperties(), back->endProperties());
        EXPECT_EQ(is, was);
    }
}

// All that IDF files carry. Known losses are asserted: instances of vias, route and placement outlines.
inline void expectBoardComesBack(const EDA::EDABoard &written, const EDA::EDABoard &read) {
    EXPECT_EQ(read.getName(), written.getName());
    EXPECT_EQ(read.getUnits(), written.getUnits());
    EXPECT_ROUNDED(written.getThickness(), read.getThickness());
    expectOutline(written.getOutline(), read.getOutline());
    expectKeepouts(written, read);
    expectDefinitions(written, read);
    expectPlacements(written, read);
    expectComponents(written, read);
    EXPECT_EQ(read.numRouteOutlines(), 0u);
    EXPECT_EQ(read.numPlacementOutlines(), 0u);
}

} // namespace IDFTest

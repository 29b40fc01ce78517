// Components of IPC-2581 documents on the board of the model: on the side, at the place and with the turn
// that the document gives them.
#include "RoundTrip.h"

#include "host/Geometry/Geometry.h"
#include "host/Geometry/Part.h"
#include "host/QvDbWrap/IpcGeometry.h"
#include "readers/VelkinEDAReader.h"

#include <QByteArray>

namespace {

using namespace TestSupport;

struct Point {
    double x;
    double y;
};

class IpcPlaces : public RoundTrip {
protected:
    IpcPlaces() : before_(qgetenv("EDA_TOOLS_DIR")), wasSet_(qEnvironmentVariableIsSet("EDA_TOOLS_DIR")) {
        folder_.write("QuorvitySuite.exe", "");
        qputenv("EDA_TOOLS_DIR", QByteArray::fromStdString(folder_.path()));
    }
    ~IpcPlaces() override { wasSet_ ? qputenv("EDA_TOOLS_DIR", before_) : qunsetenv("EDA_TOOLS_DIR"); }

    // A board of 100 by 60 mm with an L of 6 by 4 mm on it, which no turn or flip brings onto itself.
    Generation readWith(const std::string &layer, const std::string &xform) {
        const std::string document =
            R"(<IPC-2581 revision="C"><Content/><Ecad><CadHeader units="MILLIMETER"/><CadData>
            <Layer name="TOP" layerFunction="SIGNAL" side="TOP"/><Layer name="D" layerFunction="DIELCORE"/>
            <Layer name="BOTTOM" layerFunction="SIGNAL" side="BOTTOM"/><Step name="s"><Profile><Polygon>
            <PolyBegin x="0" y="0"/><PolyStepSegment x="100" y="0"/><PolyStepSegment x="100" y="60"/>
            <PolyStepSegment x="0" y="60"/></Polygon></Profile><Package name="L" height="2"><Outline><Polygon>
            <PolyBegin x="-1" y="-1"/><PolyStepSegment x="5" y="-1"/><PolyStepSegment x="5" y="1"/>
            <PolyStepSegment x="1" y="1"/><PolyStepSegment x="1" y="3"/><PolyStepSegment x="-1" y="3"/>
            </Polygon></Outline></Package><Component refDes="U1" packageRef="L" layerRef=")" +
            layer + R"(">)" + xform +
            R"(<Location x="40" y="20"/></Component></Step></CadData></Ecad></IPC-2581>)";
        EDA::VelkinEDAReader reader(true, false);
        EXPECT_TRUE(reader.readFile(folder_.write("board.xml", document))) << reader.getError();
        return imported(reader);
    }

    // Whether the body is at this place of the board, given in its frame in millimetres.
    static bool covers(const Generation &generation, const Point &point) {
        const Geometry::Part *const part = generation.parts->buildPart(generation.part("U1"));
        const Geometry::Bound board = generation.parts->buildPart(generation.pcb)->getBound();
        const Geometry::Bound bound = part->getBound();
        bool isOnSurface = false;
        return part->getGeometry()->contains(board.getXLow() + point.x * 1e-3,
                                             (bound.getYLow() + bound.getYHigh()) / 2,
                                             board.getZHigh() - point.y * 1e-3, isOnSurface, 1e-9);
    }

    // Points of the package that are on its body, and such that are not but would be after a wrong turn or
    // flip.
    static void expectPlaced(const Generation &generation, double rotation, bool isMirrored) {
        QvDbWrap::IpcPlacement placement;
        placement.rotation = rotation;
        placement.isMirrored = isMirrored;
        placement.x = 40;
        placement.y = 20;
        const auto at = [&](double x, double y) {
            const QvDbWrap::_mFPOINT point = placement.apply({x, y});
            return Point{point.x, point.y};
        };
        for (const Point &on : {Point{4.8, 0.8}, {4.8, -0.8}, {-0.8, 2.8}, {0.8, 2.8}, {-0.8, -0.8}})
            EXPECT_TRUE(covers(generation, at(on.x, on.y))) << on.x << ", " << on.y;
        for (const Point &off :
             {Point{-4.8, 0.5}, {2.8, 2.8}, {0.5, -2.8}, {1.2, 1.2}, {0.5, 4.8}, {0.5, -4.8}})
            EXPECT_FALSE(covers(generation, at(off.x, off.y))) << off.x << ", " << off.y;
    }

private:
    TempFolder folder_;
    const QByteArray before_;
    const bool wasSet_;
};

TEST_F(IpcPlaces, AComponentOnTheTopTurnsAnticlockwise) {
    for (const int rotation : {0, 30, 90, 180, 200, 270}) {
        SCOPED_TRACE(rotation);
        const Generation generation =
            readWith("TOP", "<Xform rotation=\"" + std::to_string(rotation) + "\"/>");
        ASSERT_NE(generation.part("U1"), nullptr);
        expectPlaced(generation, rotation, false);
    }
}

TEST_F(IpcPlaces, AComponentOnTheBottomIsTurnedAndThenFlippedOver) {
    for (const int rotation : {0, 30, 90, 180, 200, 270}) {
        SCOPED_TRACE(rotation);
        const Generation generation =
            readWith("BOTTOM", "<Xform rotation=\"" + std::to_string(rotation) + "\" mirror=\"true\"/>");
        ASSERT_NE(generation.part("U1"), nullptr);
        expectPlaced(generation, rotation, true);
    }
}

TEST_F(IpcPlaces, ComponentsStandOnTheFacesOfTheBoard) {
    for (const bool isTop : {true, false}) {
        const Generation generation =
            readWith(isTop ? "TOP" : "BOTTOM", isTop ? "" : "<Xform mirror=\"true\"/>");
        const Geometry::Bound board = generation.parts->buildPart(generation.pcb)->getBound();
        const Geometry::Bound part = generation.parts->buildPart(generation.part("U1"))->getBound();
        EXPECT_NEAR(board.getYHigh() - board.getYLow(), 1.6e-3, 1e-9);
        EXPECT_NEAR(isTop ? part.getYLow() - board.getYHigh() : board.getYLow() - part.getYHigh(), 0, 1e-9);
        EXPECT_NEAR(part.getYHigh() - part.getYLow(), 2e-3, 1e-9);
    }
}

} // namespace

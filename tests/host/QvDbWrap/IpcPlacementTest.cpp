// Placing shapes of IPC-2581 documents.
#include "IpcShapeSupport.h"

#include <gtest/gtest.h>

#include <QFile>

#include <map>

using namespace QvDbWrap;

namespace {

constexpr double rounding = 1e-12;

IpcPlacement placementOf(const std::string &xform) {
    IpcBench bench;
    IpcXml xml(QByteArray::fromStdString(xform));
    xml.openRoot();
    IpcPlacement placement;
    bench.geometry.readXform(xml, placement);
    return placement;
}

void expectPoint(const _mFPOINT &point, double x, double y) {
    EXPECT_NEAR(point.x, x, rounding);
    EXPECT_NEAR(point.y, y, rounding);
}

} // namespace

TEST(IpcPlacement, APlacementWithoutAnythingKeepsThePoint) {
    expectPoint(IpcPlacement().apply({3, 4}), 3, 4);
}

TEST(IpcPlacement, RotationIsAnticlockwise) {
    expectPoint(placementOf("<Xform rotation='90'/>").apply({1, 0}), 0, 1);
    expectPoint(placementOf("<Xform rotation='30'/>").apply({2, 0}), std::sqrt(3.0), 1);
}

TEST(IpcPlacement, RightAnglesAreExact) {
    for (const char *angle : {"90", "-270", "450"}) {
        const _mFPOINT point = placementOf(std::string("<Xform rotation='") + angle + "'/>").apply({1, 2});
        EXPECT_EQ(point.x, -2);
        EXPECT_EQ(point.y, 1);
    }
    const _mFPOINT back = placementOf("<Xform rotation='180'/>").apply({1, 2});
    EXPECT_EQ(back.x, -1);
    EXPECT_EQ(back.y, -2);
}

TEST(IpcPlacement, MirrorTurnsXOverAfterTheRotation) {
    expectPoint(placementOf("<Xform mirror='true'/>").apply({1, 2}), -1, 2);
    expectPoint(placementOf("<Xform rotation='90' mirror='true'/>").apply({1, 0}), 0, 1);
    expectPoint(placementOf("<Xform rotation='30' mirror='true'/>").apply({2, 0}), -std::sqrt(3.0), 1);
}

TEST(IpcPlacement, OffsetsComeBeforeAllElse) {
    expectPoint(placementOf("<Xform xOffset='1000' yOffset='0' rotation='90' scale='2'/>").apply({0, 0}), 0,
                2);
}

TEST(IpcPlacement, TheLocationComesLastAndIsNotScaled) {
    IpcPlacement placement = placementOf("<Xform scale='3' rotation='180'/>");
    placement.x = 10;
    placement.y = 20;
    expectPoint(placement.apply({1, 2}), 7, 14);
}

TEST(IpcPlacement, ALocationIsInTheUnitsThatAreSet) {
    IpcBench bench;
    bench.geometry.setMetresPerUnit(0.0254);
    IpcXml xml(QByteArray("<Location x='1' y='-2'/>"));
    xml.openRoot();
    IpcPlacement placement;
    bench.geometry.readLocation(xml, placement);
    expectPoint({placement.x, placement.y}, 0.0254, -0.0508);
    EXPECT_EQ(bench.geometry.length(xml, "x"), 0.0254);
    EXPECT_EQ(bench.geometry.length(xml, "z", 5), 5);
}

TEST(IpcPlacement, AMirroredAreaStillRunsAnticlockwise) {
    Area area = boxArea(0, 0, 3, 3);
    area.holes.push_back({{1 * mm, 1 * mm}, {1 * mm, 2 * mm}, {2 * mm, 1 * mm}});
    const Areas mirrored = placementOf("<Xform mirror='true'/>").apply(Areas{area});
    EXPECT_GT(ringArea(mirrored[0].outer), 0);
    EXPECT_LT(ringArea(mirrored[0].holes[0]), 0);
    EXPECT_NEAR(areaOf(mirrored), 8.5, 1e-9);
    EXPECT_NEAR(boundsOf(mirrored).xLow, -3, 1e-9);
}

TEST(IpcPlacement, AShapeIsPlacedByTheXformThatItHolds) {
    IpcBench bench;
    const Areas areas = bench.shape("<RectCenter width='4' height='2'><Xform rotation='90'/></RectCenter>");
    EXPECT_NEAR(boundsOf(areas).yHigh, 2, 1e-9);
    EXPECT_NEAR(boundsOf(areas).xHigh, 1, 1e-9);
}

TEST(IpcPlacement, AUserShapeIsPlacedAsAWhole) {
    IpcBench bench;
    const Areas areas =
        bench.shape("<UserSpecial><Xform mirror='true'/><Location x='10' y='0'/>"
                    "<RectCorner lowerLeftX='1' lowerLeftY='0' upperRightX='2' upperRightY='1'/>"
                    "<RectCenter width='1' height='1'><Location x='3' y='0'/></RectCenter></UserSpecial>");
    ASSERT_EQ(areas.size(), 2u);
    EXPECT_NEAR(boundsOf({areas[0]}).xLow, 8, 1e-9);
    EXPECT_NEAR(boundsOf({areas[1]}).xLow, 6.5, 1e-9);
}

TEST(IpcPlacement, ARingIsPlacedByItsXform) {
    IpcBench bench;
    const Ring ring = bench.ring("<Polygon><PolyBegin x='1' y='0'/><PolyStepSegment x='2' y='0'/>"
                                 "<PolyStepSegment x='2' y='1'/><Xform rotation='90'/></Polygon>");
    ASSERT_EQ(ring.size(), 3u);
    expectPoint(ring[0], 0, 1 * mm);
}

TEST(IpcPlacement, AScaleThatIsOutOfRangeLeavesTheShapeOut) {
    for (const char *xform : {"scale='1e300'", "xOffset='1e300'", "xOffset='1e308' scale='1e308'"}) {
        IpcBench bench;
        EXPECT_TRUE(
            bench.shape("<RectCenter width='4' height='2'><Xform " + std::string(xform) + "/></RectCenter>")
                .empty());
        EXPECT_FALSE(bench.log.isEmpty()) << xform;
    }
}

TEST(IpcPlacement, OnlyAreasWithinReachAreUsable) {
    IpcBench bench;
    EXPECT_TRUE(bench.geometry.isUsable({boxArea(0, 0, 1e6, 1)}));
    EXPECT_TRUE(bench.log.isEmpty());
    EXPECT_FALSE(bench.geometry.isUsable({boxArea(0, 0, 1.1e6, 1)}));
    EXPECT_FALSE(bench.geometry.isUsable({boxArea(0, 0, NAN, 1)}));
    EXPECT_FALSE(bench.log.isEmpty());
}

namespace {

struct Placed {
    std::string package;
    IpcPlacement placement;
};

// Where the documents of a design say that pins are: by package, by component, and by pad.
struct Pins {
    std::map<std::string, std::map<std::string, _mFPOINT>> ofPackages;
    std::map<std::string, Placed> components;
    std::map<std::pair<std::string, std::string>, std::vector<_mFPOINT>> pads;
};

class PinReader {
public:
    explicit PinReader(const std::string &file) : xml_(file) {
        bench_.geometry.setMetresPerUnit(0.0254);
        xml_.openRoot();
        walk();
    }
    const Pins &pins() const { return pins_; }

private:
    void walk() {
        xml_.eachChild([this] {
            if (xml_.is("Package"))
                readPackage();
            else if (xml_.is("Component"))
                readComponent();
            else if (xml_.is("Pad"))
                readPad();
            else
                walk();
        });
    }
    void readPackage() {
        auto &pins = pins_.ofPackages[xml_.text("name")];
        xml_.eachChild([&] {
            if (xml_.is("Pin")) {
                const std::string number = xml_.text("number");
                const IpcPlacement at = readPlacement();
                pins[number] = {at.x, at.y};
            }
        });
    }
    void readComponent() {
        const std::string designator = xml_.text("refDes"), package = xml_.text("packageRef");
        pins_.components[designator] = {package, readPlacement()};
    }
    void readPad() {
        std::pair<std::string, std::string> pin;
        const IpcPlacement at = readPlacement(&pin);
        if (!pin.first.empty()) pins_.pads[pin].push_back({at.x, at.y});
    }
    IpcPlacement readPlacement(std::pair<std::string, std::string> *pin = nullptr) {
        IpcPlacement placement;
        xml_.eachChild([&] {
            if (xml_.is("Location")) bench_.geometry.readLocation(xml_, placement);
            if (xml_.is("Xform")) bench_.geometry.readXform(xml_, placement);
            if (pin && xml_.is("PinRef")) *pin = {xml_.text("componentRef"), xml_.text("pin")};
        });
        return placement;
    }

    IpcBench bench_;
    IpcXml xml_;
    Pins pins_;
};

} // namespace

TEST(IpcPlacement, PinsOfRealDesignsLandOnTheirPads) {
    for (const char *name :
         {"/ipc2581/p01/testcase3-revc-full.xml", "/ipc2581/p02/testcase12-rdgflx-full.xml"}) {
        const std::string file = EDA_CORPUS + std::string(name);
        if (!QFile::exists(QString::fromStdString(file))) GTEST_SKIP() << "no corpus";
        const PinReader reader(file);
        int numTurned = 0;
        for (const auto &[key, pads] : reader.pins().pads) {
            const Placed &component = reader.pins().components.at(key.first);
            const _mFPOINT pin =
                component.placement.apply(reader.pins().ofPackages.at(component.package).at(key.second));
            double nearest = 1;
            for (const _mFPOINT &pad : pads)
                nearest = std::min(nearest, std::hypot(pad.x - pin.x, pad.y - pin.y));
            EXPECT_LT(nearest, 0.05 * mm) << key.first << ' ' << key.second;
            const bool isAside = std::remainder(component.placement.rotation, 180) != 0;
            if (component.placement.isMirrored && isAside) ++numTurned;
        }
        EXPECT_GT(numTurned, 0) << "a design that tells mirror before turn from turn before mirror";
    }
}

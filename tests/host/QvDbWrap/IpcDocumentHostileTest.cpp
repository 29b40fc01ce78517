// IPC-2581 documents that are cut off, changed at random, or made to take all time and memory.
#include "IpcDocumentSupport.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace {

using namespace IpcSupport;

std::string example() {
    std::ifstream stream(std::string(EDA_EXAMPLES) + "/ipc2581/dimmer.xml", std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Reads what it can be; what is read has to be sound.
void expectSound(const std::string &text) {
    try {
        const Read read = IpcSupport::read(text);
        for (std::size_t i = 0; i < read.layout.layers.size(); ++i) {
            const layerData &layer = read.layout.layers[i];
            EXPECT_GT(layer.zHigh, layer.zLow);
            for (const geomElem &element : layer.elements)
                for (const _mFPOINT &point : element.points)
                    EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y));
        }
        for (const viaData &via : read.layout.vias)
            EXPECT_NO_THROW(read.model(via));
        for (const componentData &component : read.layout.components)
            EXPECT_NO_THROW(read.model(component));
    } catch (const std::runtime_error &error) {
        EXPECT_STRNE(error.what(), "");
    }
}

std::string repeated(const std::string &text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST(IpcDocumentHostile, ADocumentMayEndAnywhere) {
    const std::string text = example();
    for (std::size_t length = 0; length < text.size(); length += 97)
        EXPECT_THROW(read(text.substr(0, length)), std::runtime_error) << length;
}

TEST(IpcDocumentHostile, BytesMayChangeAnywhere) {
    const std::string text = example();
    std::mt19937 random(1);
    for (int run = 0; run < 300; ++run) {
        std::string changed = text;
        for (int i = 0; i < 5; ++i)
            changed[random() % changed.size()] = static_cast<char>(random());
        expectSound(changed);
    }
}

TEST(IpcDocumentHostile, NumbersMayBeAnything) {
    const std::string text = example();
    for (const char *number :
         {"", "nan", "inf", "-1e300", "1e300", "1e400", "0", "-0", "99999999999", "0x10", "x"})
        for (const char *attribute :
             {"x", "y", "diameter", "thickness", "sequence", "rotation", "width", "height", "lineWidth",
              "centerX", "startX", "spokeCount", "ringNumber", "value"}) {
            std::string changed = text;
            const std::string start = std::string(" ") + attribute + "=\"";
            for (std::size_t at = 0; (at = changed.find(start, at)) != std::string::npos;) {
                at += start.size();
                changed.replace(at, changed.find('"', at) - at, number);
            }
            SCOPED_TRACE(attribute + std::string("=") + number);
            expectSound(changed);
        }
}

TEST(IpcDocumentHostile, AnyElementMayBeEmptyOrMissing) {
    const std::string text = example();
    for (const char *element : {"Layer",
                                "StackupGroup",
                                "StackupLayer",
                                "Spec",
                                "Property",
                                "Polygon",
                                "PolyBegin",
                                "Outline",
                                "Package",
                                "Component",
                                "Location",
                                "Set",
                                "Features",
                                "Pad",
                                "Hole",
                                "SlotCavity",
                                "PadstackHoleDef",
                                "PadstackPadDef",
                                "EntryStandard",
                                "LineDesc",
                                "Stackup",
                                "CadHeader",
                                "Content",
                                "Profile",
                                "LayerFeature",
                                "StandardPrimitiveRef"}) {
        std::string changed = text;
        for (const char *start : {"<", "</"}) {
            const std::string tag = start + std::string(element);
            for (std::size_t at = 0; (at = changed.find(tag, at)) != std::string::npos; at += tag.size())
                if (!std::isalnum(static_cast<unsigned char>(changed[at + tag.size()])))
                    changed.replace(at, tag.size(), start + std::string("Other"));
        }
        SCOPED_TRACE(element);
        expectSound(changed);
    }
}

TEST(IpcDocumentHostile, NestingEnds) {
    EXPECT_THROW(read("<IPC-2581>" + repeated("<a>", 300) + repeated("</a>", 300) + "</IPC-2581>"),
                 std::runtime_error);
}

TEST(IpcDocumentHostile, ALargeShapeAtManyPlacesIsDrawnUpToALimit) {
    std::string ring = "<Polygon><PolyBegin x=\"0\" y=\"0\"/>";
    for (int i = 1; i < 20000; ++i)
        ring += "<PolyStepSegment x=\"" + std::to_string(i) + "\" y=\"" + std::to_string(i % 7) + "\"/>";
    const Read read = readTop("<Set><Features>" + repeated("<Location x=\"0\" y=\"0\"/>", 20000) +
                              "<Contour>" + ring + "</Polygon></Contour></Features></Set>");
    std::size_t points = 0;
    for (const geomElem &element : read.elements("TOP"))
        points += element.points.size();
    EXPECT_LE(points, 50000000u);
    EXPECT_GT(points, 40000000u);
    EXPECT_FALSE(read.log.isEmpty());
}

TEST(IpcDocumentHostile, ManyEmptyGroupsAreQuick) {
    Text text;
    text.stackup = "<Stackup>" + repeated("<StackupGroup name=\"g\"/>", 200000) + "</Stackup>";
    EXPECT_EQ(read(text).layout.layers.size(), 3u);
}

TEST(IpcDocumentHostile, ManySpecsOfManyHolesAreQuick) {
    Text text;
    text.specs = R"(<Spec name="S"><General type="MATERIAL"><Property text="A"/></General></Spec>)";
    text.layers +=
        "<Layer name=\"D\" layerFunction=\"DRILL\">" + repeated("<SpecRef id=\"S\"/>", 50000) + "</Layer>";
    text.step = "<LayerFeature layerRef=\"D\"><Set>" + repeated("<SpecRef id=\"S\"/>", 50000) +
                repeated("<Hole diameter=\"1\" x=\"1\" y=\"1\" platingStatus=\"VIA\"/>", 50000) +
                "</Set></LayerFeature>";
    EXPECT_EQ(read(text).layout.vias.size(), 1u);
}

TEST(IpcDocumentHostile, LargeNegativeShapesOverEachOtherEnd) {
    std::string sets;
    for (int i = 0; i < 400; ++i)
        sets += "<Set>" + square(25, 25, 20) + "</Set><Set polarity=\"NEGATIVE\">" + square(25, 25, 19) +
                "</Set>";
    const Read read = readTop(sets);
    EXPECT_EQ(areaOf(read.elements("TOP")) > 0, true);
}

TEST(IpcDocumentHostile, APanelOfManyMissingStepsEnds) {
    Text text;
    text.profile = "";
    text.step = R"(<StepRepeat stepRef="board" nx="1000" ny="1000"/>)" +
                repeated("<StepRepeat stepRef=\"x\"/>", 20000);
    EXPECT_EQ(read(text).log.count("more than 1000000 steps on a panel: the rest is left out") > 0, true);
}

TEST(IpcDocumentHostile, APanelOfLargeStepsIsDrawnUpToALimit) {
    Text text;
    text.profile = "";
    text.step = R"(<StepRepeat stepRef="b" nx="100000" ny="10" dx="1" dy="1"/>)";
    text.otherSteps = "<Step name=\"b\">" + repeated("<Package name=\"P\"/>", 10000) + "</Step>";
    const Read read = IpcSupport::read(text);
    EXPECT_EQ(read.layout.componentModels.size(), 1u);
    EXPECT_FALSE(read.log.isEmpty());
}

} // namespace

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
            EXPECT_GE(layer.zHigh, layer.zLow);
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

const std::string tooManyCopies =
    "more than 10000000 points by references and at further places: some are left out";
const std::string tooManyNegatives =
    "a layer has too many shapes of negative polarity: not all of them are cut out";

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
    EXPECT_LE(points, 10020000u);
    EXPECT_GT(points, 9000000u);
    EXPECT_EQ(read.log.count(tooManyCopies), 1u);
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

TEST(IpcDocumentHostile, ReferencesDrawUpToALimit) {
    Text text;
    std::string ring = "<Contour><Polygon><PolyBegin x=\"0\" y=\"0\"/>";
    for (int i = 1; i < 20000; ++i)
        ring +=
            "<PolyStepSegment x=\"" + std::to_string(i % 900) + "\" y=\"" + std::to_string(i % 7) + "\"/>";
    text.content = "<DictionaryUser units=\"MILLIMETER\"><EntryUser id=\"R\">" + ring +
                   "</Polygon></Contour></EntryUser></DictionaryUser>";
    text.step = "<LayerFeature layerRef=\"TOP\"><Set>" +
                repeated("<Features><UserPrimitiveRef id=\"R\"/></Features>", 600) + square(5, 5, 1) +
                "</Set></LayerFeature>";
    const Read read = IpcSupport::read(text);
    std::size_t points = 0;
    for (const geomElem &element : read.elements("TOP"))
        points += element.points.size();
    EXPECT_LE(points, 10000004u); // the last four are of the other shape
    EXPECT_GT(points, 9000000u);
    EXPECT_GT(read.log.count(tooManyCopies), 0u);
    EXPECT_EQ(read.elements("TOP").back().points.size(), 4u); // what has a shape of its own is drawn
}

TEST(IpcDocumentHostile, SmallPadsOfStacksAreDrawnHoweverMany) {
    const Read read = readStep(
        "<PadStackDef name=\"P\"><PadstackPadDef layerRef=\"TOP\" padUse=\"REGULAR\"><Location x=\"0\" "
        "y=\"0\"/>" +
        std::string(
            "<Circle diameter=\"1\"/></PadstackPadDef></PadStackDef><LayerFeature layerRef=\"TOP\"><Set>") +
        "<Pad padstackDefRef=\"P\">" + repeated("<Location x=\"1\" y=\"1\"/>", 300000) +
        "</Pad></Set></LayerFeature>");
    EXPECT_EQ(read.elements("TOP").size(), 300000u);
    EXPECT_EQ(read.log.count(tooManyCopies), 0u);
}

TEST(IpcDocumentHostile, CuttersThatMeetAllThatWasDrawnAreCutUpToALimit) {
    std::string drawn = "<Set>" + repeated(square(10, 10, 9), 3000) + "</Set>";
    std::string taken = "<Set polarity=\"NEGATIVE\">";
    for (int i = 0; i < 3000; ++i)
        taken += square(10 + i % 50 * 0.1, 10 + i / 50 * 0.05, 0.01);
    const Read read = readTop(drawn + taken + "</Set>");
    EXPECT_EQ(read.log.count(tooManyNegatives), 1u);
    EXPECT_GE(read.elements("TOP").size(), 3000u);
}

TEST(IpcDocumentHostile, ANegativeShapeThatCrossesItselfTooOftenIsToldAndTakesNothing) {
    std::string star = "<Polygon><PolyBegin x=\"1\" y=\"1\"/>";
    std::mt19937 random(1);
    for (int i = 0; i < 4000; ++i)
        star += "<PolyStepSegment x=\"" + std::to_string(random() % 50000 / 1000.0) + "\" y=\"" +
                std::to_string(random() % 50000 / 1000.0) + "\"/>";
    const Read read = readTop("<Set>" + square(10, 10, 9) + "</Set><Set polarity=\"NEGATIVE\"><Features>" +
                              star + "</Polygon></Features></Set>");
    EXPECT_NEAR(areaOf(read.elements("TOP")), 81, 1e-6);
    EXPECT_EQ(read.log.count("shapes that cross too often are not cut, or not cut out"), 1u);
}

TEST(IpcDocumentHostile, WhatIsDrawnOverNegativesIsNotTriedWithAllOfThem) {
    const Read read = readTop("<Set polarity=\"NEGATIVE\">" + repeated(square(10, 10, 9), 20000) +
                              "</Set><Set>" + repeated(square(10, 10, 9), 20000) + "</Set>");
    EXPECT_EQ(read.elements("TOP").size(), 20000u);
    EXPECT_EQ(read.log.text(), "");
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

std::string namesOf(const std::string &first) { return first + std::string(5000, 'n'); }

TEST(IpcDocumentHostile, LongNamesAreShortenedInAllRecordsAndStayTheSame) {
    Text text;
    text.layers += "<Layer name=\"DRILL\" layerFunction=\"DRILL\"/>";
    text.step = "<LayerFeature layerRef=\"TOP\"><Set net=\"" + namesOf("a") + "\">" + square(1, 1, 1) +
                "</Set><Set net=\"" + namesOf("a") + "x\">" + square(4, 1, 1) + "</Set></LayerFeature>" +
                "<LayerFeature layerRef=\"DRILL\"><Set><Hole name=\"" + namesOf("h") +
                "\" diameter=\"1\" x=\"9\" y=\"9\" platingStatus=\"VIA\"/></Set></LayerFeature>" +
                "<Package name=\"" + namesOf("p") + "\" height=\"1\"/><Component refDes=\"" + namesOf("u") +
                "\" packageRef=\"" + namesOf("p") +
                "\" layerRef=\"TOP\"><Location x=\"1\" y=\"1\"/></Component>";
    const Read read = IpcSupport::read(text);
    ASSERT_EQ(read.elements("TOP").size(), 2u);
    EXPECT_LE(read.elements("TOP")[0].netName.size(), 256u);
    EXPECT_NE(read.elements("TOP")[0].netName, read.elements("TOP")[1].netName);
    EXPECT_LE(read.layout.vias.at(0).name.size(), 256u);
    EXPECT_LE(read.layout.components.at(0).compName.size(), 256u);
    EXPECT_NEAR(read.model(read.layout.components[0]).height, 1e-3, 1e-12);
    EXPECT_EQ(read.log.count("package " + read.layout.components[0].modelName + " of a component is missing"),
              0u);
    EXPECT_GE(read.log.count("a text of more than 256 bytes is shortened"), 6u);
}

TEST(IpcDocumentHostile, AStepWithALongNameIsFoundByIt) {
    Text text;
    text.otherSteps = "<Step name=\"" + namesOf("s") + "\"/>";
    IpcSettings settings;
    settings.step = namesOf("s");
    EXPECT_TRUE(read(text, settings).layout.outlines.empty());
}

// A hole or component takes a few bytes in a step and some hundreds in each place of it.
TEST(IpcDocumentHostile, APanelHasNoMoreThanAMillionRecords) {
    Text text;
    text.profile = "";
    text.layers += "<Layer name=\"DRILL\" layerFunction=\"DRILL\"/>";
    text.step = R"(<StepRepeat stepRef="b" nx="1000" ny="1000" dx="1" dy="1"/>)";
    std::string holes;
    for (int i = 0; i < 1000; ++i)
        holes +=
            "<Hole diameter=\"0.1\" x=\"0." + std::to_string(1000 + i) + "\" y=\"0\" platingStatus=\"VIA\"/>";
    text.otherSteps = "<Step name=\"b\"><Component refDes=\"U\" packageRef=\"P\" layerRef=\"TOP\"/>" +
                      std::string("<LayerFeature layerRef=\"DRILL\"><Set>") + holes +
                      "</Set></LayerFeature></Step>";
    const Read read = IpcSupport::read(text);
    EXPECT_GT(read.layout.vias.size(), 1000u);
    EXPECT_LE(read.layout.vias.size() + read.layout.components.size(), 1000000u);
    EXPECT_FALSE(read.log.isEmpty());
}

TEST(IpcDocumentHostile, ManyModelsOfOneNameAreQuick) {
    std::string step = "<Package name=\"P\" height=\"1\"/>";
    for (int i = 0; i < 30000; ++i)
        step += "<Component refDes=\"U\" packageRef=\"P\" layerRef=\"TOP\" height=\"" +
                std::to_string(i + 1) + "\"><Location x=\"1\" y=\"1\"/></Component>";
    const Read read = readStep(step);
    ASSERT_EQ(read.layout.componentModels.size(), 30000u);
    EXPECT_EQ(read.layout.componentModels.back().name, "P (30000)");
}

} // namespace

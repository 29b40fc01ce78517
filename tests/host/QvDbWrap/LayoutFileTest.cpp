// Layouts in text form: all that is written is read back, and nothing else is read.
#include "host/QvDbWrap/LayoutSupport.h"
#include "support/TempFolder.h"

#include "host/QvDbWrap/LayoutLine.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using namespace LayoutTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class LayoutFile : public testing::Test {
protected:
    Layout read(const std::string &bytes) const { return readLayoutFile(folder.write("a.qvd", bytes)); }
    std::string written(const Layout &layout) const {
        writeLayoutFile(layout, folder.path("w.qvd"));
        return folder.read("w.qvd");
    }

    TestSupport::TempFolder folder;
};

// What is written comes back.

TEST_F(LayoutFile, HasALineARecord) {
    EXPECT_EQ(written(wholeLayout()),
              "EDA-LAYOUT 1\n"
              "outline\n"
              "element polygon solid 0.30000000000000004 \"edge\" \"net of edge\" 0 0 0.1 0 0.1 "
              "0.3333333333333333\n"
              "element box hole 0.30000000000000004 \"box\" \"net of box\" 1 2 3 4\n"
              "outline\n"
              "layer conductor \"TOP \\\"1\\\"\" 0.001565 0.0016 \"Cu\" \"FR4\"\n"
              "element polygon solid 0.30000000000000004 \"pour\" \"net of pour\" -1e-300 5e-324\n"
              "element 7 -3 0.30000000000000004 \"odd\" \"net of odd\"\n"
              "layer 42 \"\" 0 0 \"\" \"\"\n"
              "viamodel \"M\\\\1\" \"Resin\" 2.5e-05 -0\n"
              "element circle solid 0.30000000000000004 \"round\" \"net of round\"\n"
              "via \"v1\" \"M\\\\1\" \"TOP\" \"BOTTOM\" 1e+22 -1.7976931348623157e+308 45.5\n"
              "package \"P\" \"Maker\" \"Part\" 0.001 yes \"Mold\" 0.011 0.012 0.013\n"
              "element polygon solid 0.30000000000000004 \"body\" \"net of body\" 1 1\n"
              "component \"U1\\n\\t\\r\\x01\\x7f\" \"P\" \"\xC3\xA9\xFF\" 0.25 -0.5 359.9\n"
              "bump \"b1\" -7 1 2 3 4 5 6 \"SAC\" \"TOP\"\n"
              "wirebond \"w\" \"wm\" \"wg\" \"ws\" \"we\" \"Au\"\n"
              "path 2.5e-05 1 2 3 4 5 6\n"
              "path 2.6e-05\n"
              "end\n");
}

TEST_F(LayoutFile, WhatIsReadIsWrittenTheSame) {
    const std::string first = written(wholeLayout());
    EXPECT_EQ(written(read(first)), first);
}

TEST_F(LayoutFile, EveryFieldIsReadIntoItsPlace) {
    const Layout layout = read(written(wholeLayout()));
    ASSERT_EQ(layout.outlines.size(), 2u);
    ASSERT_EQ(layout.outlines[0].elements.size(), 2u);
    const geomElem &box = layout.outlines[0].elements[1];
    EXPECT_EQ(box.kind, geomElem::Box);
    EXPECT_EQ(box.role, geomElem::Hole);
    EXPECT_EQ(box.radius, 0.1 + 0.2);
    EXPECT_EQ(box.name, "box");
    EXPECT_EQ(box.netName, "net of box");
    ASSERT_EQ(box.points.size(), 2u);
    EXPECT_EQ(box.points[1].x, 3);
    EXPECT_EQ(box.points[1].y, 4);
    ASSERT_EQ(layout.layers.size(), 2u);
    EXPECT_EQ(layout.layers[0].zLow, 1.565e-3);
    EXPECT_EQ(layout.layers[0].zHigh, 1.6e-3);
    EXPECT_EQ(layout.layers[0].conductorMaterial, "Cu");
    EXPECT_EQ(layout.layers[0].dielectricMaterial, "FR4");
    EXPECT_EQ(layout.layers[1].layerType, 42);
    EXPECT_TRUE(std::signbit(layout.viaModels.at(0).secondPlatingThickness));
    EXPECT_EQ(layout.viaModels[0].shape.kind, geomElem::Circle);
    EXPECT_EQ(layout.vias.at(0).angle, 45.5);
    EXPECT_EQ(layout.vias[0].toLayer, "BOTTOM");
    const componentModelData &package = layout.componentModels.at(0);
    EXPECT_EQ(package.manufacturer, "Maker");
    EXPECT_EQ(package.moldMaterial, "Mold");
    EXPECT_THAT((std::vector<double>{package.moldLength, package.moldWidth, package.moldHeight}),
                ElementsAre(0.011, 0.012, 0.013));
    const componentData &component = layout.components.at(0);
    EXPECT_EQ(component.compName, "U1\n\t\r\x01\x7f");
    EXPECT_EQ(component.startLayerName, "\xC3\xA9\xFF");
    EXPECT_EQ(component.rotation, 359.9);
    ASSERT_EQ(component.bumps.size(), 1u);
    EXPECT_EQ(component.bumps[0].type, -7);
    EXPECT_EQ(component.bumps[0].bottomDiameter, 6);
    EXPECT_EQ(component.bumps[0].layerName, "TOP");
    ASSERT_EQ(layout.wirebonds.at(0).paths.size(), 2u);
    EXPECT_EQ(layout.wirebonds[0].paths[0].points.at(1).z, 6);
    EXPECT_EQ(layout.wirebonds[0].groupName, "wg");
}

TEST_F(LayoutFile, ALayoutWithoutRecordsIsOne) {
    EXPECT_EQ(written(Layout()), "EDA-LAYOUT 1\nend\n");
    EXPECT_TRUE(read(form("")).outlines.empty());
}

TEST_F(LayoutFile, ShapesBehindPointersAreWrittenAsElements) {
    const Shape shape(ShapeElemCont({ShapeElem(GeomObjCont({GeomObj({{0, 0}, {1, 0}, {1, 1}})})),
                                     ShapeElem(GeomObjCont({GeomObj({{2, 2}}), GeomObj({{3, 3}})}))}));
    Layout layout;
    layout.outlines.resize(1);
    layout.outlines[0].shape = &shape;
    const Layout back = read(written(layout));
    ASSERT_EQ(back.outlines.at(0).elements.size(), 3u);
    EXPECT_EQ(back.outlines[0].elements[0].points.size(), 3u);
    EXPECT_EQ(back.outlines[0].elements[2].points.at(0).x, 3);
}

TEST_F(LayoutFile, ManyPointsGoOnInFurtherLines) {
    Layout layout = wholeLayout();
    for (int i = 0; i < 1000; ++i) {
        layout.outlines[0].elements[0].points.push_back({i * 0.1, -i * 0.1});
        layout.wirebonds[0].paths[0].points.push_back({i * 0.1, 0, 1});
    }
    const std::string text = written(layout);
    EXPECT_THAT(text, HasSubstr("\nmore "));
    const Layout back = read(text);
    EXPECT_EQ(back.outlines[0].elements[0].points.size(), 1003u);
    EXPECT_EQ(back.outlines[0].elements[0].points.back().x, 999 * 0.1);
    EXPECT_EQ(back.wirebonds[0].paths[0].points.size(), 1002u);
    EXPECT_EQ(written(back), text);
}

TEST_F(LayoutFile, ANumberThatIsNotFiniteIsNotWritten) {
    for (const double bad : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        Layout layout;
        layout.vias.resize(1);
        layout.vias[0].x = bad;
        EXPECT_THROW(writeLayoutFile(layout, folder.path("bad.qvd")), std::runtime_error);
        EXPECT_EQ(folder.read("bad.qvd"), "<missing>");
    }
}

TEST_F(LayoutFile, AFileThatCannotBeWrittenIsToldWithItsName) {
    try {
        writeLayoutFile(Layout(), folder.path("none/a.qvd"));
        FAIL();
    } catch (const std::runtime_error &error) {
        EXPECT_THAT(error.what(), StartsWith(folder.path("none/a.qvd") + ": "));
    }
}

// What else may stand in a file.

TEST_F(LayoutFile, CommentsBlankLinesTabsAndLineEndsOfOtherSystemsAreTaken) {
    const Layout layout =
        read("EDA-LAYOUT 1\r\n# a comment\r\n\r\n  \t\r\n\tlayer \t conductor\t\"A\"  0 1 \"\" \"\" \r\n"
             "  # another\r\nelement polygon solid 0 \"\" \"\"\r\nmore 1 2\r\nmore\r\nmore 3 4 5 "
             "6\r\nend\r\n\r\n");
    EXPECT_EQ(layout.layers.at(0).name, "A");
    EXPECT_EQ(layout.layers[0].elements.at(0).points.size(), 3u);
}

TEST_F(LayoutFile, TheLastLineNeedsNoLineEnd) { EXPECT_NO_THROW(read("EDA-LAYOUT 1\nend")); }

TEST_F(LayoutFile, IsKnownByItsMark) {
    EXPECT_TRUE(isLayoutFile(folder.write("a", form(""))));
    EXPECT_TRUE(isLayoutFile(folder.write("b", "EDA-LAYOUT 2\n")));
    for (const char *bytes : {"", "EDA-LAYOUT", "EDA-LAYOUTS 1\n", " EDA-LAYOUT 1\n",
                              "\xEF\xBB\xBF"
                              "EDA-LAYOUT 1\n"})
        EXPECT_FALSE(isLayoutFile(folder.write("c", bytes))) << bytes;
    EXPECT_FALSE(isLayoutFile(folder.path("missing")));
    EXPECT_FALSE(isLayoutFile(folder.path()));
}

// What is refused, and how that is told.

TEST_F(LayoutFile, RefusalsNameTheLineAndTheReason) {
    const struct {
        const char *bytes;
        const char *failure;
    } cases[] = {
        {"", "line 1: the file is empty"},
        {"\n\n", "line 1: the file is empty"},
        {"PK\x03\x04", "line 1: this is no layout in text form, which begins with EDA-LAYOUT"},
        {"\nEDA-LAYOUT 1\nend\n", "line 1: this is no layout in text form, which begins with EDA-LAYOUT"},
        {"EDA-LAYOUT\nend\n", "line 1: the version is missing"},
        {"EDA-LAYOUT x\nend\n", "line 1: the version is no number: \"x\""},
        {"EDA-LAYOUT 2\nend\n", "line 1: the version is unknown; version 1 can be read"},
        {"EDA-LAYOUT 1 2\nend\n", "line 1: there is more than the record takes: \"2\""},
        {"EDA-LAYOUT 1\n", "line 1: the file breaks off: its last line is not \"end\""},
        {"EDA-LAYOUT 1\noutline\n# nothing\n", "line 3: the file breaks off: its last line is not \"end\""},
        {"EDA-LAYOUT 1\nend\noutline\n", "line 3: there is more behind \"end\""},
        {"EDA-LAYOUT 1\nend 1\n", "line 2: there is more than the record takes: \"1\""},
        {"EDA-LAYOUT 1\nOutline\nend\n", "line 2: there is no record of this kind"},
        {"EDA-LAYOUT 1\nelement polygon solid 0 \"\" \"\"\n",
         "line 2: an element belongs behind an outline or layer, or as the only one behind a viamodel or "
         "package"},
        {"EDA-LAYOUT 1\nbump\n", "line 2: a bump belongs behind a component"},
        {"EDA-LAYOUT 1\ncomponent \"\" \"\" \"\" 0 0 0\nbump \"\" odd 0 0 0 0 0 0 \"\" \"\"\n",
         "line 3: the type is an unknown word"},
        {"EDA-LAYOUT 1\npath 1\n", "line 2: a path belongs behind a wirebond"},
        {"EDA-LAYOUT 1\nmore 1 2\n", "line 2: more points belong behind an element or a path"},
        {"EDA-LAYOUT 1\noutline\nmore 1 2\n", "line 3: more points belong behind an element or a path"},
        {"EDA-LAYOUT 1\nlayer copper \"\" 0 0 \"\" \"\"\n",
         "line 2: the type of the layer is an unknown word"},
        {"EDA-LAYOUT 1\nlayer 99999999999 \"\" 0 0 \"\" \"\"\n",
         "line 2: the type of the layer is an unknown word"},
        {"EDA-LAYOUT 1\nlayer conductor\n", "line 2: the name is missing"},
        {"EDA-LAYOUT 1\nlayer conductor A\n", "line 2: the name is not in double quotes: \"A\""},
        {"EDA-LAYOUT 1\nlayer conductor \"A\n\"\n", "line 2: the name has no closing quote"},
        {"EDA-LAYOUT 1\nlayer conductor \"A\"0\n", "line 2: a blank is missing behind the name"},
        {"EDA-LAYOUT 1\nlayer conductor \"\\q\"\n", "line 2: the name has an unknown escape: \"q\"\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\\x4g\"\n", "line 2: the name has an unknown escape: \"x4g\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\\x4", "line 2: the name has an unknown escape: \"x4\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\\", "line 2: the name has an unknown escape: \"\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\" 1,5 0 \"\" \"\"\n",
         "line 2: the lower height is no number: \"1,5\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\" nan 0 \"\" \"\"\n",
         "line 2: the lower height is no number: \"nan\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\" 0 inf \"\" \"\"\n",
         "line 2: the upper height is no number: \"inf\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\" 1e400 0 \"\" \"\"\n",
         "line 2: the lower height is a number out of range: \"1e400\""},
        {"EDA-LAYOUT 1\nlayer conductor \"\" 0x10 0 \"\" \"\"\n",
         "line 2: the lower height is no number: \"0x10\""},
        {"EDA-LAYOUT 1\noutline 1\n", "line 2: there is more than the record takes: \"1\""},
        {"EDA-LAYOUT 1\noutline\nelement polygon solid 0 \"\" \"\" 1 2 3\n", "line 3: y is missing"},
        {"EDA-LAYOUT 1\nwirebond \"\" \"\" \"\" \"\" \"\" \"\"\npath 1 1 2\n", "line 3: z is missing"},
        {"EDA-LAYOUT 1\nviamodel \"\" \"\" 0 0\nelement circle solid 1 \"\" \"\"\nelement circle solid 1 "
         "\"\" \"\"\n",
         "line 4: an element belongs behind an outline or layer, or as the only one behind a viamodel or "
         "package"},
        {"EDA-LAYOUT 1\noutline\nvia \"\" \"\" \"\" \"\" 0 0 0\nelement circle solid 1 \"\" \"\"\n",
         "line 4: an element belongs behind an outline or layer, or as the only one behind a viamodel or "
         "package"},
    };
    for (const auto &one : cases)
        EXPECT_EQ(failureOf(one.bytes), one.failure) << one.bytes;
}

TEST_F(LayoutFile, AFieldInAMessageIsShortAndOfOneLine) {
    const std::string failure =
        failureOf("EDA-LAYOUT 1\nlayer conductor \"\" \x1b[2J" + std::string(5000, 'x') + "\n");
    EXPECT_LT(failure.size(), 120u);
    EXPECT_EQ(failure.find('\x1b'), std::string::npos);
    EXPECT_THAT(failure, HasSubstr("...\""));
}

TEST_F(LayoutFile, AMissingFileIsToldWithItsName) {
    try {
        readLayoutFile(folder.path("none.qvd"));
        FAIL();
    } catch (const std::runtime_error &error) {
        EXPECT_THAT(error.what(), StartsWith(folder.path("none.qvd") + ": "));
    }
}

// Every prefix of a file either reads or is refused; only the whole one reads.
TEST_F(LayoutFile, AFileThatIsCutOffAnywhereIsRefused) {
    const std::string whole = written(wholeLayout());
    for (std::size_t size = 0; size + 1 < whole.size(); ++size)
        EXPECT_THAT(failureOf(whole.substr(0, size)), StartsWith("line ")) << size;
}

TEST_F(LayoutFile, ChangedBytesAreReadOrRefused) {
    const std::string whole = written(wholeLayout());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '"', '\\', '\n', '9', '\xff'}) {
            std::string changed = whole;
            changed[at] = byte;
            const std::string failure = failureOf(changed);
            EXPECT_TRUE(failure.empty() || failure.compare(0, 5, "line ") == 0) << failure;
        }
    }
}

// More than the limit, without a file of that size.
TEST(LayoutLine, ALineBeyondTheLimitIsRefused) {
    const std::string text = "a\n" + std::string(LineWalk::maxLineLength + 1, 'x');
    LineWalk lines(text);
    std::string_view line;
    EXPECT_TRUE(lines.next(line));
    try {
        lines.next(line);
        FAIL();
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(), "line 2: the line is longer than 64 MiB");
    }
}

TEST_F(LayoutFile, MoreRecordsThanTheLimitAreRefused) {
    LayoutLimits limits;
    limits.records = 3;
    const std::string three = "outline\nelement box solid 0 \"\" \"\"\nvia \"\" \"\" \"\" \"\" 0 0 0\n";
    EXPECT_EQ(failureOf(form(three), limits), "");
    EXPECT_EQ(failureOf(form(three + "outline\n"), limits), "line 5: the file has more than 3 records");
}

TEST_F(LayoutFile, MorePointsThanTheLimitAreRefused) {
    LayoutLimits limits;
    limits.points = 3;
    const std::string three = "wirebond \"\" \"\" \"\" \"\" \"\" \"\"\npath 1 1 2 3\n"
                              "outline\nelement polygon solid 0 \"\" \"\" 1 2\nmore 3 4\n";
    EXPECT_EQ(failureOf(form(three), limits), "");
    EXPECT_EQ(failureOf(form(three + "more 5 6\n"), limits), "line 7: the file has more than 3 points");
}

} // namespace

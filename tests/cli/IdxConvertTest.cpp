// eda convert and eda export with IDX documents: from them, to them, and round in circles.
#include "readers/IDFReader.h"
#include "readers/IDXReader.h"
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

const std::string examples = EDA_EXAMPLES;
const std::string beacon = examples + "/idx/beacon.idx";

class ToolIdxConvert : public testing::Test {
protected:
    ToolResult convertWell(const std::string &input, const std::string &output,
                           const std::vector<std::string> &more = {}) const {
        std::vector<std::string> arguments{"convert", input, "-o", folder.path(output)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return result;
    }
    std::string picture(const std::string &design, const std::string &side) const {
        const std::string file = folder.path("picture.svg");
        const ToolResult result = runTool({"render", design, "-o", file, "--side", side});
        EXPECT_EQ(result.status, 0) << result;
        return folder.read("picture.svg");
    }
    // The placements of a document, with where they stand as the model has it.
    std::string placesOf(const std::string &file) const {
        EDA::IDXReader reader;
        EXPECT_TRUE(reader.readFile(file));
        std::string text;
        const EDA::EDABoard &board = reader.getBoard();
        for (auto placed = board.beginPlacements(); placed != board.endPlacements(); ++placed) {
            text += placed->getReferenceDesignator() + ' ' + std::to_string(placed->getXLocation()) + ' ' +
                    std::to_string(placed->getYLocation()) + ' ' +
                    (placed->isOnBoardTop() ? "TOP" : "BOTTOM") + ' ' +
                    std::to_string(static_cast<int>(placed->getAngle(true) + 0.5)) + '\n';
        }
        return text;
    }

    TempFolder folder;
};

TEST_F(ToolIdxConvert, AnIdfPairBecomesADocument) {
    const ToolResult result = convertWell(writeSmallDesign(folder), "out.idx");
    EXPECT_THAT(result.out, HasSubstr("out.idx"));
    EXPECT_EQ(folder.numEntries(), 3u);
    EDA::IDXReader reader;
    ASSERT_TRUE(EDA::IDXReader::isDocument(folder.path("out.idx")));
    ASSERT_TRUE(reader.readFile(folder.path("out.idx")));
    EXPECT_EQ(reader.getError(), "");
    const EDA::EDABoard &board = reader.getBoard();
    EXPECT_EQ(board.getName(), "small");
    EXPECT_EQ(board.getUnits(), "MM");
    EXPECT_EQ(board.getThickness(), 1.6);
    EXPECT_EQ(board.numComponentPlacements(), 3u);
    EXPECT_EQ(board.numComponents(), 2u);
    EXPECT_EQ(board.numKeepouts(), 2u);
    EXPECT_EQ(board.numVias(1), 2u);
    EXPECT_EQ(placesOf(folder.path("out.idx")), "U1 25.000000 12.000000 TOP 0\n"
                                                "U2 15.000000 12.000000 BOTTOM 270\n"
                                                "H1 30.000000 16.000000 TOP 0\n");
}

TEST_F(ToolIdxConvert, WhatADocumentCannotHoldIsTold) {
    const ToolResult result = convertWell(writeSmallDesign(folder), "out.idx");
    const std::string file = "small.emn': ";
    EXPECT_THAT(result.err, HasSubstr(file + "1 arc becomes straight edges\n"));
    EXPECT_THAT(result.err, HasSubstr(file + "1 hole of another type becomes a via\n"));
    EXPECT_THAT(result.err, HasSubstr(file + "1 component of another type becomes ELECTRICAL\n"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 3);
}

TEST_F(ToolIdxConvert, EachHoleOfADocumentIsThere) {
    convertWell(beacon, "out.idx");
    EDA::IDXReader reader;
    ASSERT_TRUE(reader.readFile(folder.path("out.idx")));
    EXPECT_EQ(reader.getBoard().numVias(1), 4u);
}

TEST_F(ToolIdxConvert, PartsStayWhereTheyAreInEachGeneration) {
    const std::string places = placesOf(beacon);
    EXPECT_EQ(places, "U1 11.000000 10.000000 TOP 90\nL1 20.000000 4.000000 BOTTOM 330\n");
    std::string input = beacon;
    for (const char *output : {"1.idx", "2.idx", "3.idx"}) {
        convertWell(input, output);
        input = folder.path(output);
        EXPECT_EQ(placesOf(input), places) << output;
    }
    EXPECT_EQ(folder.read("2.idx"), folder.read("3.idx"));
}

TEST_F(ToolIdxConvert, PartsStayWhereTheyAreOnTheWayThroughIdf) {
    convertWell(beacon, "there.emn");
    EXPECT_THAT(folder.read("there.emn"), HasSubstr("\n20 4 0 30 BOTTOM PLACED\n"));
    convertWell(folder.path("there.emn"), "back.idx");
    EXPECT_EQ(placesOf(folder.path("back.idx")), placesOf(beacon));
}

// All but what the warnings name: the picture of an IDF design stays what it was.
TEST_F(ToolIdxConvert, FromIdfToIdxAndBackKeepsWhatBothCanSay) {
    const std::string controller = examples + "/controller/controller.emn";
    const ToolResult told = convertWell(controller, "there.idx");
    EXPECT_THAT(told.err, HasSubstr("arcs become straight edges"));
    convertWell(folder.path("there.idx"), "back.emn");
    convertWell(folder.path("back.emn"), "again.idx");
    convertWell(folder.path("again.idx"), "again.emn");
    const auto withoutHeader = [this](const std::string &name) {
        const std::string text = folder.read(name);
        return text.substr(text.find(".END_HEADER"));
    };
    EXPECT_EQ(withoutHeader("again.emn"), withoutHeader("back.emn"));
    EXPECT_EQ(withoutHeader("again.emp"), withoutHeader("back.emp"));

    EDA::IDFReader first, back;
    ASSERT_TRUE(first.readFile(controller) && first.readFile(examples + "/controller/controller.emp"));
    ASSERT_TRUE(back.readFile(folder.path("back.emn")) && back.readFile(folder.path("back.emp")));
    const EDA::EDABoard &was = first.getBoard(), &is = back.getBoard();
    EXPECT_EQ(is.getName(), was.getName());
    EXPECT_EQ(is.getThickness(), was.getThickness());
    EXPECT_EQ(is.getOutline().numInternalOutlines(), was.getOutline().numInternalOutlines());
    EXPECT_EQ(is.numKeepouts(), was.numKeepouts());
    EXPECT_EQ(is.numVias(1), was.numVias(1));
    ASSERT_EQ(is.numComponentPlacements(), was.numComponentPlacements());
    auto now = is.beginPlacements();
    for (auto before = was.beginPlacements(); before != was.endPlacements(); ++before, ++now) {
        EXPECT_EQ(now->getReferenceDesignator(), before->getReferenceDesignator());
        EXPECT_EQ(now->getPartNumber(), before->getPartNumber());
        EXPECT_EQ(now->isOnBoardTop(), before->isOnBoardTop());
        EXPECT_NEAR(now->getXLocation(), before->getXLocation(), 1e-4);
        EXPECT_NEAR(now->getYLocation(), before->getYLocation(), 1e-4);
        const double turn = now->getAngle(true) - before->getAngle(true);
        EXPECT_NEAR(turn - 360.0 * std::round(turn / 360.0), 0.0, 1e-3) << now->getReferenceDesignator();
        const EDA::EDAComponent *const part = is.findComponent(*now), *const old = was.findComponent(*before);
        ASSERT_TRUE(part && old) << now->getReferenceDesignator();
        EXPECT_NEAR(part->getHeight(), old->getHeight(), 1e-4 * old->getHeight());
        const Geometry::Bound2D &bound = part->getOutline().getBound(),
                                &oldBound = old->getOutline().getBound();
        EXPECT_NEAR(bound.getXLow(), oldBound.getXLow(), 0.02);
        EXPECT_NEAR(bound.getXHigh(), oldBound.getXHigh(), 0.02);
        EXPECT_NEAR(bound.getYLow(), oldBound.getYLow(), 0.02);
        EXPECT_NEAR(bound.getYHigh(), oldBound.getYHigh(), 0.02);
    }
}

TEST_F(ToolIdxConvert, UnitsConvertEveryLength) {
    convertWell(beacon, "out.idx", {"--units", "THOU"});
    EDA::IDXReader reader;
    ASSERT_TRUE(reader.readFile(folder.path("out.idx")));
    const EDA::EDABoard &board = reader.getBoard();
    EXPECT_EQ(board.getUnits(), "THOU");
    EXPECT_NEAR(board.getThickness(), 62.9921, 1e-3);
    EXPECT_NEAR(board.getOutline().getBound().getXHigh(), 1181.1024, 1e-3);
    EXPECT_NEAR(board.beginPlacements()->getXLocation(), 433.071, 1e-3);
    EXPECT_NEAR(board.beginComponents()->getHeight(), 47.2441, 1e-3);
    EXPECT_NEAR(board.beginVias()->getDiameter(), 15.748, 1e-3);
    EXPECT_NEAR(board.beginKeepouts()->getHeight(), 78.7402, 1e-3);
}

TEST_F(ToolIdxConvert, NeverWritesOverTheDocumentThatItReads) {
    std::filesystem::copy_file(std::filesystem::u8path(beacon),
                               std::filesystem::u8path(folder.path("a.idx")));
    const std::string before = folder.read("a.idx");
    const ToolResult result = runTool({"convert", folder.path("a.idx"), "-o", folder.path("./a.idx")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("is read, so it cannot be written over"));
    EXPECT_EQ(folder.read("a.idx"), before);
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(ToolIdxConvert, AFolderThatIsNotThereNamesTheFile) {
    const ToolResult result = runTool({"convert", beacon, "-o", folder.path("no/such/out.idx")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("out.idx': cannot be written: No such file or directory"));
}

#ifndef _WIN32
// A limit on the size of files stands in for a full disk.
TEST_F(ToolIdxConvert, AFullDiskLeavesTheFileAsItWas) {
    folder.write("out.idx", "old");
    QProcess process;
    process.start("sh",
                  {"-c", "trap '' XFSZ; ulimit -f 4; exec \"$@\"", "sh", EDA_TOOL, "convert",
                   QString::fromStdString(beacon), "-o", QString::fromStdString(folder.path("out.idx"))});
    ASSERT_TRUE(process.waitForFinished(100'000));
    const std::string error = process.readAllStandardError().toStdString();
    EXPECT_EQ(process.exitCode(), 1) << error;
    EXPECT_THAT(error, HasSubstr("out.idx': cannot be written"));
    EXPECT_EQ(folder.read("out.idx"), "old");
    EXPECT_EQ(folder.numEntries(), 1u);
}
#endif

TEST_F(ToolIdxConvert, OtherNamesAreRefusedWithBothFormats) {
    const ToolResult result = runTool({"convert", beacon, "-o", folder.path("out.xml")});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr(".idx, or an IDF board file"));
}

// eda export

TEST_F(ToolIdxConvert, AModelBecomesADocument) {
    const std::string model = folder.path("model.json");
    ASSERT_EQ(runTool({"import", beacon, "-o", model}).status, 0);
    const ToolResult result = runTool({"export", model, "-o", folder.path("back.idx")});
    EXPECT_EQ(result.status, 0) << result;
    for (const char *text : {"2 conductor layers are left out", "3 traces are left out",
                             "properties of components are left out"})
        EXPECT_THAT(result.err, HasSubstr(text));
    EDA::IDXReader reader;
    ASSERT_TRUE(reader.readFile(folder.path("back.idx")));
    EXPECT_EQ(reader.getBoard().numComponentPlacements(), 2u);
    EXPECT_EQ(reader.getBoard().numKeepouts(), 1u);
    EXPECT_EQ(reader.getBoard().numVias(1), 3u); // the mounting hole is a cut-out of the model's board
    EXPECT_EQ(reader.getBoard().getOutline().numInternalOutlines(), 3);
}

TEST_F(ToolIdxConvert, ImportedAndExportedAgainADocumentStays) {
    std::string input = beacon;
    for (const char *number : {"1", "2", "3"}) {
        const std::string model = folder.path(std::string(number) + ".json"),
                          output = folder.path(std::string(number) + ".idx");
        ASSERT_EQ(runTool({"import", input, "-o", model}).status, 0);
        ASSERT_EQ(runTool({"export", model, "-o", output}).status, 0);
        input = output;
    }
    EXPECT_EQ(placesOf(folder.path("3.idx")), placesOf(folder.path("2.idx")));
    for (const char *side : {"top", "bottom"})
        EXPECT_EQ(picture(folder.path("3.idx"), side), picture(folder.path("2.idx"), side));
}

} // namespace

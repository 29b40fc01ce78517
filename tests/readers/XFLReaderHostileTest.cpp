// XFL files that are wrong in every way, and large ones: a result, nothing else.
#include "readers/XFLTestSupport.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using namespace XFLTest;

const char *const sections[] = {".version", ".unit",      ".scale", ".layer", ".shape", ".board_geom",
                                ".part",    ".component", ".via",   ".route", ".other"};

const char *const keywords[] = {
    "via",          "shape",          "bondwire",       "polygon",     "composite",
    "rectangle",    "square",         "diamond",        "circle",      "annular",
    "void_polygon", "void_composite", "void_rectangle", "void_square", "void_diamond",
    "void_circle",  "void_annular",   "path",           "}",           "{"};

// A design with everything in it.
const std::string design =
    ".version 1 2\n.unit mm\n.scale 2\n" + stackOf(3) +
    section("shape",
            "1 circle 4\n2 finger 2 6\n3 polygon {\n0 0 4 0\n4 4\n}\n4 composite 0 0 arc 2 0 1 0 rarc 4 "
            "0 3 0 arc3 5 5 0 0\n5 void_square 1 1\n") +
    ".board_geom\nrectangle 40 20\n" + section("part", "A R 0 0 1 1 1 {\nPIN 1\n}\nB C 0 0 2 2 1\n") +
    section("component", "U1 A 1 1 1 0\nU2 B 2 2 2 -90\n") + section("via", "V a b 1 0 0.1\n") +
    section("route", "N1 {\nvia 1 2 V 1 1\nshape 1 2 1 1 30 N\nbondwire {\n1\n}\nvoid_circle 1 2 1 1\n}\nN2\n"
                     "path 2 1 { 0 0 4 0\narc 6 0 5 0 }\nsquare 3 4 1 1\nvoid_polygon 3 0 0 1 0 1 1\n}\n");

class XFLHostile : public XFLReaderTest {
protected:
    // Reads the text in both modes, without any message.
    void survives(const std::string &text) {
        const std::string path = folder.write("hostile.xfl", text);
        for (const bool componentMode : {false, true}) {
            EDA::XFLReader fresh(componentMode);
            fresh.readFile(path);
            EXPECT_EQ(fresh.getError(), "");
        }
    }
};

TEST_F(XFLHostile, RowsOfAnyNumberOfFieldsAreReadInEverySection) {
    for (const char *section : sections)
        for (const char *field : {"", "\"\"", "x", "1", "{", "}", "-1", "circle", "#"}) {
            std::string row, rows;
            for (int i = 0; i < 9; ++i)
                rows += (row += std::string(field) + " ") + "\n";
            survives(std::string(section) + "\n" + rows + ".end\n" + stack);
            survives(stack + section + "\n" + rows);
            survives(stack + section + " " + row + "\n" + rows);
        }
}

TEST_F(XFLHostile, RowsOfAnyNumberOfFieldsAreReadInANet) {
    for (const char *keyword : keywords)
        for (const char *field : {"", "\"\"", "x", "1", "2", "{", "}", "-1", "arc", "1e308"}) {
            std::string row = keyword, rows;
            for (int i = 0; i < 9; ++i) {
                rows += "N\n" + row + "\n}\n}\n";
                row += ' ';
                row += field;
            }
            survives(stack + section("shape", "1 circle 1\n") + section("via", "1 1 1 1 1\n") +
                     section("route", rows));
        }
}

TEST_F(XFLHostile, DesignsMayEndAnywhere) {
    for (std::size_t size = 0; size < design.size(); ++size)
        survives(design.substr(0, size));
}

TEST_F(XFLHostile, DesignsMayBeginAnywhere) {
    for (std::size_t from = 1; from < design.size(); from += 3)
        survives(design.substr(from));
}

TEST_F(XFLHostile, RowsMayBeMissingOrRepeated) {
    std::vector<std::string> rows;
    std::istringstream lines(design);
    for (std::string line; std::getline(lines, line);)
        rows.push_back(line + "\n");
    for (std::size_t changed = 0; changed < rows.size(); ++changed)
        for (const int times : {0, 2}) {
            std::string text;
            for (std::size_t i = 0; i < rows.size(); ++i)
                for (int n = i == changed ? times : 1; n > 0; --n)
                    text += rows[i];
            survives(text);
        }
}

TEST_F(XFLHostile, BytesMayBeAnything) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::string text = design;
        for (int i = 0; i < 5; ++i)
            text[random() % text.size()] = static_cast<char>(random() % 256);
        survives(text);
    }
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    survives(all);
    survives(stack + ".route\nN\n" + all);
}

TEST_F(XFLHostile, NumbersMayBeAnything) {
    for (const char *number : {"-1e300", "1e308", "1e400", "inf", "-inf", "nan", "0x1p3", "2147483647",
                               "-2147483648", "2147483648", "-9223372036854775808",
                               "99999999999999999999999999", "1e-320", "-0", "+", "e5", ".", "1e", "1e+"}) {
        std::string text;
        std::istringstream lines(design);
        for (std::string line; std::getline(lines, line); text += "\n") {
            std::istringstream words(line);
            for (std::string word; words >> word; text += word + ' ')
                if (word.find_first_not_of("-0123456789.") == std::string::npos) word = number;
        }
        survives(text);
        survives(".scale " + std::string(number) + "\n" + design);
    }
    survives(design + ".scale " + std::string(400, '9') + "\n" + design);
}

TEST_F(XFLHostile, SectionsMayBeInAnyOrderAndOften) {
    std::mt19937 random(11);
    std::vector<std::string> blocks;
    for (std::size_t at = 0; at < design.size();) {
        const std::size_t next = std::min(design.find("\n.", at + 1), design.size());
        blocks.push_back(design.substr(at, next - at) + "\n");
        at = next;
    }
    for (int round = 0; round < 200; ++round) {
        std::string text;
        for (int i = 0; i < 20; ++i)
            text += blocks[random() % blocks.size()];
        survives(text);
    }
}

TEST_F(XFLHostile, BlocksLeftOpenReachToTheEnd) {
    for (const char *row : {".shape\n1 polygon {", ".board_geom\npolygon {", ".part\nP R 0 0 1 1 1 {",
                            ".route\nN\npolygon 1 {", ".route\nN\npath 1 1 {", ".route\nN\nvoid_polygon 1 {",
                            ".route\nN\nbondwire {", ".route\nN\nwave {"}) {
        survives(stack + row);
        survives(stack + row + "\n");
        survives(stack + row + "\n" + design + "\n{\n");
    }
}

// Lengths beyond all numbers are kept; what takes them up refuses them.
TEST_F(XFLHostile, LengthsBeyondAllNumbersStayInTheBoard) {
    const EDA::EDABoard &board =
        readBoard(stack + ".scale 1e-300\n" + net("polygon 1 1e300 0 0 0 -1e300 5\npath 1 1e300 0 0 1 1\n"));
    const auto made = traces(board, 1);
    EXPECT_EQ(drawn(made.at(0).getOutline()).substr(0, 4), "inf,");
    EXPECT_EQ(made.at(1).getRouteWidth(), HUGE_VAL);
    const auto bodies = readBodies(stack + ".scale 1e-300\n" + net("path 1 1e300 0 0 1 1\n"));
    EXPECT_TRUE(bodies.at(0).empty()); // no area
}

TEST_F(XFLHostile, ALongLineIsReadLikeAnother) {
    std::string row = "polygon 1";
    for (int i = 0; i < 200000; ++i)
        row += ' ' + std::to_string(i) + ' ' + std::to_string(i * (i % 7));
    EXPECT_EQ(traces(readBoard(stack + net(row + "\n")), 1).at(0).getOutline().numPoints(), 200000u);
}

// Large files. What is not linear here would take hours.
class XFLLarge : public XFLReaderTest {
protected:
    static constexpr int many = 100000;

    static std::string repeated(const std::string &row, int times) {
        std::string rows;
        rows.reserve(row.size() * static_cast<std::size_t>(times));
        for (int i = 0; i < times; ++i)
            rows += row;
        return rows;
    }
};

TEST_F(XFLLarge, AMillionRowsOfRoutesAreRead) {
    const std::string rows = repeated("path 1 0.1 0 0 1 1\n", 10 * many);
    EXPECT_EQ(readBoard(stack + net(rows)).getNthLayer(0).numTraces(), 10u * many);
}

TEST_F(XFLLarge, VoidsBehindManyRoutesFindTheirShape) {
    const std::string rows = "square 1 8 0 0\n" + repeated("path 1 0.1 0 0 1 1\n", 3 * many) +
                             repeated("void_square 1 1 0 0\n", 3 * many);
    const EDA::EDABoard &board = readBoard(stack + net(rows));
    EXPECT_EQ(board.getNthLayer(0).beginTraces()->getOutline().numInternalOutlines(), 3 * many);
}

TEST_F(XFLLarge, ViasOfManySizesAreToldApart) {
    std::string shapes, kinds, rows;
    for (int i = 1; i <= many; ++i) {
        const std::string number = std::to_string(i);
        shapes += number + " circle 0." + number + "1\n";
        kinds += "V" + number + " a b " + number + " 0\n";
        rows += "via 1 2 V" + number + " 0 0\n";
    }
    const EDA::EDABoard &board =
        readBoard(stack + section("shape", shapes) + section("via", kinds) + net(rows + rows));
    EXPECT_EQ(board.numVias(0), static_cast<std::size_t>(many));
    EXPECT_EQ(board.numVias(1), 2u * many);
}

TEST_F(XFLLarge, AnEdgeOfManyPiecesIsRead) {
    const EDA::EDABoard &board = readBoard(repeated(".board_geom\nrectangle 2 4\n", many));
    EXPECT_EQ(board.getOutline().numPoints(), 4u * many);
}

TEST_F(XFLLarge, AMillionRowsOfABlockAreSkippedOrRead) {
    const std::string rows = repeated("1 2\n3 4\n", 5 * many);
    EXPECT_EQ(readBoard(section("part", "P R 0 0 1 1 1 {\n" + rows + "}\n")).numComponents(), 1u);
    EXPECT_EQ(
        traces(readBoard(stack + net("polygon 1 {\n" + rows + "}\n")), 1).at(0).getOutline().numPoints(),
        10u * many);
}

TEST_F(XFLLarge, PartsOfOneNameAreTold) {
    std::string rows;
    for (int i = 0; i < many; ++i)
        rows += "P R 0 0 1 1 " + std::to_string(i) + "\n";
    EXPECT_EQ(readBoard(section("part", rows)).numComponents(), static_cast<std::size_t>(many));
}

} // namespace

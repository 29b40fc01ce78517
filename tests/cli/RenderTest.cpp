// eda render: pictures of designs and models.
#include "SmallDesign.h"
#include "support/RunTool.h"

#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace {

using namespace TestSupport;
using testing::HasSubstr;

// All texts and all path data of a drawing.
struct Drawing {
    std::vector<std::string> texts;
    std::vector<std::string> paths;
    bool isXml = false;
};

Drawing readSvg(const std::string &bytes) {
    Drawing drawing;
    QXmlStreamReader reader(QByteArray::fromStdString(bytes));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        if (reader.name() == QLatin1String("text"))
            drawing.texts.push_back(reader.readElementText().toStdString());
        if (reader.name() == QLatin1String("path")) {
            drawing.paths.push_back(reader.attributes().value("d").toString().toStdString());
        }
    }
    drawing.isXml = !reader.hasError();
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return drawing;
}

class ToolRender : public testing::Test {
protected:
    void SetUp() override { board = writeSmallDesign(folder); }

    void render(const std::string &file, const std::string &output,
                const std::vector<std::string> &more = {}) {
        std::vector<std::string> arguments{"render", file, "-o", folder.path(output)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
    }

    Drawing renderSvg(const std::vector<std::string> &more = {}) {
        render(board, "out.svg", more);
        return readSvg(folder.read("out.svg"));
    }

    QImage renderPng(const std::vector<std::string> &more = {}) {
        render(board, "out.png", more);
        return QImage(QString::fromStdString(folder.path("out.png")));
    }

    TempFolder folder;
    std::string board;
};

TEST_F(ToolRender, SvgShowsNameScaleAndDesignatorsOfTheTop) {
    const Drawing drawing = renderSvg();
    EXPECT_THAT(drawing.texts, testing::IsSupersetOf({"small", "U1", "H1", "2 mm"}));
    EXPECT_THAT(drawing.texts, testing::Not(testing::Contains("U2")));
    EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("40 \u00d7 20 mm")));
}

TEST_F(ToolRender, SvgShowsTheOtherPartsOnTheBottom) {
    const Drawing drawing = renderSvg({"--side", "bottom"});
    EXPECT_THAT(drawing.texts, testing::Contains("U2"));
    EXPECT_THAT(drawing.texts, testing::Not(testing::Contains("U1")));
    EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("seen from below")));
}

TEST_F(ToolRender, LegendNamesOnlyWhatIsShown) {
    const Drawing top = renderSvg();
    EXPECT_THAT(top.texts, testing::IsSupersetOf({"Component", "Mechanical part", "Plated hole",
                                                  "Unplated hole", "Component keepout", "Via keepout"}));
    const Drawing bottom = renderSvg({"--side", "bottom"});
    EXPECT_THAT(bottom.texts, testing::Not(testing::Contains("Component keepout")));
    EXPECT_THAT(bottom.texts, testing::Not(testing::Contains("Mechanical part")));
}

// 40 mm fill 1512 of 1600 pixels, so 1 mm is 37.8 pixels: the corner of radius 5 is an arc of 189 pixels, and
// the board's path holds its cut-out of radius 2 as a sub-path.
TEST_F(ToolRender, ArcsOfTheEdgeAreArcs) {
    const Drawing drawing = renderSvg();
    ASSERT_GT(drawing.paths.size(), 0u);
    const auto edge = std::find_if(drawing.paths.begin(), drawing.paths.end(), [](const std::string &path) {
        return path.find("A189 189 0 0 0") != std::string::npos;
    });
    ASSERT_NE(edge, drawing.paths.end());
    EXPECT_THAT(*edge, HasSubstr("A75.6 75.6 0 0 0"));
    EXPECT_EQ(std::count(edge->begin(), edge->end(), 'Z'), 2);
}

TEST_F(ToolRender, BottomIsMirrored) {
    const Drawing drawing = renderSvg({"--side", "bottom"});
    EXPECT_THAT(drawing.paths, testing::Contains(HasSubstr("A189 189 0 0 1")));
}

TEST_F(ToolRender, PngIsAsWideAsAsked) {
    for (const int width : {200, 1600, 2500}) {
        const QImage image = renderPng({"--width", std::to_string(width)});
        EXPECT_EQ(image.width(), width);
        EXPECT_GT(image.height(), width / 3);
    }
}

TEST_F(ToolRender, PngShowsBoardHoleAndPart) {
    const QImage image = renderPng();
    ASSERT_FALSE(image.isNull());
    // 1 mm is 37.8 pixels; the board's low corner lies at x 44, and its y runs up from 128 + 756.
    const auto at = [&image](double x, double y) {
        return image.pixel(static_cast<int>(44 + 37.8 * x), static_cast<int>(884 - 37.8 * y));
    };
    const QRgb outside = image.pixel(2, 2);
    EXPECT_NE(at(15, 3), outside);      // the board
    EXPECT_EQ(at(10, 10), outside);     // the cut-out
    EXPECT_EQ(at(36, 4), outside);      // the mounting hole
    EXPECT_EQ(at(39.5, 19.5), outside); // off the rounded corner
    EXPECT_NE(at(23, 11), at(15, 3));   // U1
    EXPECT_EQ(at(15, 16.5), at(15, 3)); // where U2 would be, on the bottom
}

TEST_F(ToolRender, PngOfTheBottomPlacesItsParts) {
    const QImage image = renderPng({"--side", "bottom"});
    const auto at = [&image](double x, double y) {
        return image.pixel(static_cast<int>(44 + 37.8 * (40 - x)), static_cast<int>(884 - 37.8 * y));
    };
    const QRgb ground = at(22, 18);
    EXPECT_NE(at(15, 14.5), ground); // U2 stands upright: 4 wide, 6 high
    EXPECT_EQ(at(17.5, 12), ground);
    EXPECT_EQ(at(10, 10), image.pixel(2, 2));
}

TEST_F(ToolRender, TextIsDrawnWithAFont) {
    const QImage image = renderPng();
    std::set<QRgb> colours;
    for (int x = 44; x < 300; ++x) {
        for (int y = 20; y < 70; ++y)
            colours.insert(image.pixel(x, y));
    }
    EXPECT_GT(colours.size(), 10u); // smooth edges of letters
}

TEST_F(ToolRender, PartsWithoutTheirLibraryAreMarked) {
    std::filesystem::remove(std::filesystem::u8path(folder.path("small.emp")));
    EXPECT_THAT(renderSvg().texts, testing::IsSupersetOf({"U1", "Part without a shape"}));
}

TEST_F(ToolRender, UnplacedPartsAreCountedAndNotDrawn) {
    std::string text = smallBoard();
    text.replace(text.find("0 0 TOP PLACED"), 14, "0 0 TOP UNPLACED");
    folder.write("small.emn", text);
    const Drawing drawing = renderSvg();
    EXPECT_THAT(drawing.texts, testing::Not(testing::Contains("U1")));
    EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("1 not placed")));
}

TEST_F(ToolRender, ComponentsInOtherUnitsAreScaled) {
    std::string library = smallLibrary();
    library.replace(library.find("POST P2 MM 8\n0 0 0 0\n0 1 0 360"), 30,
                    "POST P2 INCH 8\n0 0 0 0\n0 0.1 0 360");
    folder.write("small.emp", library);
    EXPECT_THAT(renderSvg().paths, testing::Contains(HasSubstr("A96.012 96.012"))); // 2.54 mm
}

TEST_F(ToolRender, HostileNamesAreEscaped) {
    std::string text = smallBoard();
    text.replace(text.find("small MM"), 8, "\"</title><script>&\x01\x1b\" MM");
    text.replace(text.find("P1 U1"), 5, "P1 <&>");
    folder.write("small.emn", text);
    const Drawing drawing = renderSvg();
    EXPECT_TRUE(drawing.isXml);
    EXPECT_THAT(drawing.texts, testing::IsSupersetOf({"</title><script>&\\u{01}\\u{1B}", "<&>"}));
    EXPECT_EQ(folder.read("out.svg").find("<script"), std::string::npos);
}

TEST_F(ToolRender, StrayPartDoesNotShrinkTheBoard) {
    std::string text = smallBoard();
    text.replace(text.find("25 12 0 0 TOP"), 13, "1e9 12 0 0 TOP");
    folder.write("small.emn", text);
    EXPECT_THAT(renderSvg().paths, testing::Contains(HasSubstr("A189 189"))); // as if it were not there
}

TEST_F(ToolRender, NumbersThatOverflowMakeNoCrash) {
    for (const char *row :
         {"0 1e308 -1e308 17\n", "0 1e308 1e308 359\n", "0 35 20 1e300\n", "0 35 20 -360\n"}) {
        std::string text = smallBoard();
        text.replace(text.find("0 35 20 90\n"), 11, row);
        folder.write("small.emn", text);
        for (const char *output : {"out.svg", "out.png"}) {
            const ToolResult result = runTool({"render", board, "-o", folder.path(output)});
            EXPECT_TRUE(result.status == 0 || result.status == 1) << row << result;
        }
    }
}

TEST_F(ToolRender, VeryFlatBoardStaysWithinThePicture) {
    folder.write("small.emn", ".HEADER\nBOARD_FILE 3.0 t d 1\nflat MM\n.END_HEADER\n.BOARD_OUTLINE ECAD\n1\n"
                              "0 0 0 0\n0 1 0 0\n0 1 1e9 0\n0 0 1e9 0\n.END_BOARD_OUTLINE\n");
    const QImage image = renderPng({"--width", "400"});
    EXPECT_EQ(image.width(), 400);
    EXPECT_LT(image.height(), 700);
}

TEST_F(ToolRender, DesignWithoutAnythingToDraw) {
    folder.write("small.emn", ".HEADER\nBOARD_FILE 3.0 t d 1\nempty MM\n.END_HEADER\n");
    const ToolResult result = runTool({"render", board, "-o", folder.path("out.svg")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("nothing to draw"));
    EXPECT_EQ(folder.read("out.svg"), "<missing>");
}

TEST_F(ToolRender, UnwritableOutput) {
    const ToolResult result = runTool({"render", board, "-o", folder.path("no/out.png")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("cannot be written"));
}

TEST_F(ToolRender, FailureLeavesTheOldPicture) {
    folder.write("out.svg", "old");
    folder.write("small.emn", "nothing");
    EXPECT_EQ(runTool({"render", board, "-o", folder.path("out.svg")}).status, 1);
    EXPECT_EQ(folder.read("out.svg"), "old");
}

TEST_F(ToolRender, ModelShowsBoardHolesAndKeepouts) {
    ASSERT_EQ(runTool({"import", board, "-o", folder.path("model.json")}).status, 0);
    board = folder.path("model.json");
    const Drawing drawing = renderSvg();
    EXPECT_THAT(drawing.texts, testing::IsSupersetOf({"small", "Component keepout", "Via keepout", "2 mm"}));
    EXPECT_THAT(drawing.paths, testing::Contains(HasSubstr("A75.6 75.6"))); // the cut-out
}

// The keepout from (20, 2) to (30, 6) lies at the same pixels, whichever way it came.
TEST_F(ToolRender, ModelLiesWhereTheDesignLies) {
    ASSERT_EQ(runTool({"import", board, "-o", folder.path("model.json")}).status, 0);
    const std::string keepout = "M800 808.4L1178 808.4L1178 657.2L800 657.2Z";
    EXPECT_THAT(renderSvg().paths, testing::Contains(keepout));
    board = folder.path("model.json");
    EXPECT_THAT(renderSvg().paths, testing::Contains("M800 657.2L1178 657.2L1178 808.4L800 808.4Z"));
}

// An L of 6 by 4 at the origin of its outline. On the bottom it is mirrored, and turned as it is seen from
// below: the arm that runs along y comes to lie along x, to the right of who looks at the top.
TEST_F(ToolRender, AnglesOnTheBottomAreToldFromBelow) {
    std::string library = smallLibrary();
    const std::string box = "0 -3 -2 0\n0 3 -2 0\n0 3 2 0\n0 -3 2 0\n0 -3 -2 0\n";
    library.replace(library.find(box), box.size(),
                    "0 0 0 0\n0 6 0 0\n0 6 1 0\n0 1 1 0\n0 1 4 0\n0 0 4 0\n0 0 0 0\n");
    folder.write("small.emp", library);
    // At (15, 12), 1 mm is 37.8 pixels and x runs to the left.
    EXPECT_THAT(renderSvg({"--side", "bottom"}).paths,
                testing::Contains("M989 430.4L989 203.6L951.2 203.6L951.2 392.6L837.8 392.6L837.8 430.4Z"));
}

TEST_F(ToolRender, BoardOfADesignIsNoChoice) {
    EXPECT_EQ(runTool({"render", board, "-o", folder.path("out.svg"), "--board", "small"}).status, 2);
}

} // namespace

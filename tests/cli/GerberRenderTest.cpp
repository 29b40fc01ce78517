// eda render of layers, pixel by pixel.
#include "GerberFiles.h"
#include "support/RunTool.h"

#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <set>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

// 10 pixels per millimetre: a pixel is the square from x / 10 to (x + 1) / 10.
constexpr const char *dpi = "254";

QImage renderBare(const TempFolder &folder, const std::string &layer, const std::string &window,
                  std::vector<std::string> more = {}) {
    std::vector<std::string> arguments{
        "render", layer, "--bare", "--dpi", dpi, "--window=" + window, "-o", folder.path("out.png")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    return QImage(QString::fromStdString(folder.path("out.png")));
}

// Whether the pixel around a place is black; the window is 0,0,10,10.
bool isBlack(const QImage &image, double x, double y) {
    return image.pixel(static_cast<int>(10 * x), 99 - static_cast<int>(10 * y)) == qRgb(0, 0, 0);
}

int numBlack(const QImage &image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            EXPECT_TRUE(pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255));
            count += pixel == qRgb(0, 0, 0) ? 1 : 0;
        }
    }
    return count;
}

TEST(GerberRender, ABarePictureIsExact) {
    const TempFolder folder;
    const std::string file = folder.write("top.gbr", gerberLayer("D11*\nX050000Y050000D03*\n"));
    const QImage image = renderBare(folder, file, "0,0,10,10");
    EXPECT_EQ(image.width(), 100);
    EXPECT_EQ(image.height(), 100);
    EXPECT_EQ(numBlack(image), 400); // 2 by 2 mm
    EXPECT_TRUE(isBlack(image, 4.05, 4.05));
    EXPECT_FALSE(isBlack(image, 3.95, 4.05));
    EXPECT_EQ(numBlack(renderBare(folder, file, "0,0,5,5")), 100);
}

TEST(GerberRender, MergedAndNotMergedLookAlike) {
    const TempFolder folder;
    const std::string file = folder.write(
        "top.gbr", gerberLayer("D11*\nX020000Y020000D03*\nX030000Y030000D03*\nX030000Y020000D02*\n"
                               "X080000Y020000D01*\n"));
    const QImage merged = renderBare(folder, file, "0,0,10,10", {"--merged"});
    EXPECT_EQ(merged, renderBare(folder, file, "0,0,10,10", {"--no-merge"}));
    EXPECT_GT(numBlack(merged), 700);
}

TEST(GerberRender, HolesAreOpenAndWhatLiesInThemIsNot) {
    const TempFolder folder;
    // A square of 8 mm, cleared by two squares that overlap, with copper in the middle again.
    const std::string body = "%ADD12R,8X8*%\n%ADD13R,4X4*%\nD12*\nX050000Y050000D03*\n%LPC*%\nD13*\n"
                             "X040000Y040000D03*\nX060000Y060000D03*\n%LPD*%\nD10*\nX050000Y050000D03*\n";
    const std::string file = folder.write("top.gbr", gerberLayer(body));
    for (const char *merging : {"--merged", "--no-merge"}) {
        const QImage image = renderBare(folder, file, "0,0,10,10", {merging});
        EXPECT_TRUE(isBlack(image, 1.5, 5.0)) << merging;
        EXPECT_FALSE(isBlack(image, 3.0, 3.0)) << merging;
        EXPECT_FALSE(isBlack(image, 5.8, 4.2)) << merging; // in both cleared squares
        EXPECT_FALSE(isBlack(image, 7.0, 7.0)) << merging;
        EXPECT_TRUE(isBlack(image, 5.05, 5.05)) << merging;
        EXPECT_TRUE(isBlack(image, 2.0, 8.0)) << merging;
    }
}

TEST(GerberRender, AClearedPieceBesideTheCopperAddsNothing) {
    const TempFolder folder;
    const std::string file =
        folder.write("top.gbr", gerberLayer("D11*\nX050000Y050000D03*\n%LPC*%\nD11*\nX060000Y050000D03*\n"));
    for (const char *merging : {"--merged", "--no-merge"})
        EXPECT_EQ(numBlack(renderBare(folder, file, "0,0,10,10", {merging})), 200) << merging;
}

TEST(GerberRender, ALayerIsFoundByNameNumberAndSide) {
    const TempFolder folder;
    std::vector<std::string> set = writeGerberSet(folder);
    const auto render = [&](const std::string &layer) {
        std::vector<std::string> arguments{"render"};
        arguments.insert(arguments.end(), set.begin(), set.end());
        arguments.insert(arguments.end(), {"--layer", layer, "-o", folder.path("out.svg")});
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return folder.read("out.svg");
    };
    const std::string top = render("top");
    const std::string bottom = render("bottom");
    EXPECT_NE(top, bottom);
    EXPECT_EQ(render("1"), top);
    EXPECT_EQ(render("TOP.gbr"), top);
    EXPECT_EQ(render("2"), bottom);
    EXPECT_THAT(top, HasSubstr("<title>top</title>"));
}

TEST(GerberRender, LayersOfOneNameAreFoundByFile) {
    const TempFolder folder;
    const std::string top = folder.write("x.gtl", gerberLayer(threeSquares()));
    const std::string bottom = folder.write("x.gbl", gerberLayer("D10*\nX0Y0D03*\n"));
    const auto render = [&](const std::string &layer) {
        EXPECT_EQ(runTool({"render", top, bottom, "--layer", layer, "-o", folder.path("out.svg")}).status, 0);
        return folder.read("out.svg");
    };
    EXPECT_EQ(render("x.gbl"), render("2"));
    EXPECT_NE(render("x.gbl"), render("x.gtl"));
}

TEST(GerberRender, WithoutALayerTheTopOneIsDrawnWithItsHoles) {
    const TempFolder folder;
    std::vector<std::string> arguments = writeGerberSet(folder);
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"-o", folder.path("out.svg")});
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(folder.read("out.svg"),
                testing::AllOf(HasSubstr("<title>top</title>"), HasSubstr("1 drilled hole")));
}

TEST(GerberRender, AHoleIsDrawnOnTheLayersThatItReaches) {
    const TempFolder folder;
    std::vector<std::string> arguments = writeGerberSet(folder);
    arguments.insert(arguments.begin(), "render");
    arguments.push_back(folder.write("inner.gbr", gerberLayer(threeSquares())));
    arguments.insert(arguments.end(), {"--layer-order", "top,inner,bottom", "--span", "holes.drl=1:2", "-o",
                                       folder.path("out.svg"), "--layer", "2"});
    EXPECT_EQ(runTool(arguments).status, 0);
    EXPECT_THAT(folder.read("out.svg"), HasSubstr("drilled hole"));
    arguments.back() = "3";
    EXPECT_EQ(runTool(arguments).status, 0);
    EXPECT_THAT(folder.read("out.svg"), Not(HasSubstr("drilled hole")));
}

TEST(GerberRender, WrongOptionsAreRefused) {
    const TempFolder folder;
    const std::string file = folder.write("top.gbr", gerberLayer(threeSquares()));
    const std::vector<std::vector<std::string>> wrong = {
        {"--layer", "inner"},
        {"--layer", "0"},
        {"--layer", "2"},
        {"--layer", "top", "--side", "top"},
        {"--bare"},
        {"--dpi", "100"},
        {"--window", "0,0,1,1"},
        {"--bare", "--dpi", "0"},
        {"--bare", "--dpi", "nan"},
        {"--bare", "--dpi", "1e9"},
        {"--bare", "--dpi", "100", "--window", "0,0,1"},
        {"--bare", "--dpi", "100", "--window", "1,0,0,1"},
        {"--bare", "--dpi", "100", "--window", "0,0,1,x"},
        {"--merged", "--no-merge"},
        {"--option", "Merge=Yes"},
    };
    for (std::vector<std::string> arguments : wrong) {
        arguments.insert(arguments.begin(), {"render", file, "-o", folder.path("out.png")});
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 2) << result << arguments[4];
    }
}

// A star of so many rays; its edges cross each other everywhere.
std::string star(int rays) {
    std::string region = "G36*\n";
    for (int i = 0; i <= rays; ++i) {
        const double angle = 2.0 * 3.14159265358979 * (rays / 2) * i / rays;
        region += "X" + std::to_string(static_cast<int>(5e5 * std::cos(angle))) + "Y" +
                  std::to_string(static_cast<int>(5e5 * std::sin(angle))) + (i == 0 ? "D02*\n" : "D01*\n");
    }
    return region + "G37*\n";
}

// In the middle of the picture, where there is nothing but the star.
std::size_t numColoursOf(const std::string &layer, const TempFolder &folder) {
    const std::string file = folder.write("top.gbr", gerberLayer(layer)), out = folder.path("out.png");
    EXPECT_EQ(runTool({"render", file, "-o", out, "--no-merge"}).status, 0);
    const QImage image(QString::fromStdString(out));
    std::set<QRgb> colours;
    for (int y = image.height() * 2 / 5; y < image.height() * 3 / 5; ++y)
        for (int x = image.width() * 2 / 5; x < image.width() * 3 / 5; ++x)
            colours.insert(image.pixel(x, y));
    return colours.size();
}

TEST(GerberRender, EdgesAreSmoothButForATangleThatWouldTakeMinutes) {
    const TempFolder folder;
    EXPECT_GT(numColoursOf(star(5), folder), 4U);
    const std::size_t numPlain = numColoursOf(star(1501), folder);
    EXPECT_GE(numPlain, 1U);
    EXPECT_LE(numPlain, 4U);
}

TEST(GerberRender, AnEmptyLayerIsAFailure) {
    const TempFolder folder;
    const std::string file = folder.write("top.gbr", gerberLayer(""));
    const ToolResult result =
        runTool({"render", file, "--bare", "--dpi", "100", "-o", folder.path("out.png")});
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.err, HasSubstr("is empty"));
}

TEST(GerberRender, APictureOfFilesThatAreReadIsNotWrittenOverThem) {
    const TempFolder folder;
    const std::string file = folder.write("top.svg", gerberLayer(threeSquares()));
    EXPECT_EQ(runTool({"render", file, "-o", file}).status, 2);
}

} // namespace

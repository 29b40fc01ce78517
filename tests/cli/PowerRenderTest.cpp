// Pictures that are coloured by power.
#include "PartDesign.h"
#include "PowerScale.h"
#include "support/RunTool.h"

#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <cmath>

namespace {

using namespace TestSupport;
using namespace EDATool;
using testing::HasSubstr;

PowerTotals totalsOf(double greatest, double density = 0.0) {
    PowerTotals totals;
    totals.greatest = greatest;
    totals.greatestDensity = density;
    return totals;
}

std::vector<std::string> stepsOf(const PowerScale &scale) {
    std::vector<std::string> steps;
    for (int step = 0; step <= scale.numSteps(); ++step)
        steps.push_back(scale.stepText(step));
    return steps;
}

TEST(PowerScale, EndsAtARoundNumberThatIsNotBelowTheGreatest) {
    EXPECT_EQ(stepsOf(PowerScale(totalsOf(2.4), Colouring::Power)),
              (std::vector<std::string>{"0", "0.5", "1", "1.5", "2", "2.5"}));
    EXPECT_EQ(stepsOf(PowerScale(totalsOf(10), Colouring::Power)),
              (std::vector<std::string>{"0", "2", "4", "6", "8", "10"}));
    EXPECT_EQ(PowerScale(totalsOf(10), Colouring::Power).unit(), "W");
}

TEST(PowerScale, ShowsSmallPowerInThousandths) {
    const PowerScale scale(totalsOf(0.004), Colouring::Power);
    EXPECT_EQ(scale.unit(), "mW");
    EXPECT_EQ(stepsOf(scale), (std::vector<std::string>{"0", "1", "2", "3", "4"}));
}

TEST(PowerScale, OfDensityLooksAtTheGreatestDensity) {
    const PowerScale scale(totalsOf(100, 3), Colouring::Density);
    EXPECT_EQ(scale.unit(), "W/cm\u00b2");
    EXPECT_EQ(stepsOf(scale), (std::vector<std::string>{"0", "1", "2", "3"}));
}

TEST(PowerScale, OfNothingOrOfTooMuchIsEmpty) {
    for (const double greatest : {0.0, -1.0, 1e-320, 1.7e308, std::nan(""), HUGE_VAL}) {
        const PowerScale scale(totalsOf(greatest), Colouring::Power);
        EXPECT_TRUE(scale.isEmpty() || scale.numSteps() <= 10) << greatest;
        scale.colourOf(greatest);
    }
    EXPECT_TRUE(PowerScale(totalsOf(0.0), Colouring::Power).isEmpty());
}

double linearPart(int value) {
    const double part = value / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

// CIE lightness, 0 to 100.
double lightness(const Colour &colour) {
    const double y = 0.2126 * linearPart(colour.red) + 0.7152 * linearPart(colour.green) +
                     0.0722 * linearPart(colour.blue);
    return 116.0 * std::cbrt(std::max(y, 0.008856)) - 16.0;
}

// So the scale reads by lightness alone, whatever hues the eye tells apart.
TEST(PowerScale, GetsLighterInEvenSteps) {
    constexpr int steps = 20;
    const double whole = lightness(PowerScale::colourAt(1)) - lightness(PowerScale::colourAt(0));
    EXPECT_GT(whole, 70.0);
    for (int step = 0; step < steps; ++step) {
        const double rise = lightness(PowerScale::colourAt((step + 1.0) / steps)) -
                            lightness(PowerScale::colourAt(static_cast<double>(step) / steps));
        EXPECT_NEAR(rise, whole / steps, 0.35 * whole / steps) << step;
    }
}

struct Shape {
    std::string fill;
    std::string data;
};

struct Drawing {
    std::vector<std::string> texts;
    std::vector<Shape> shapes;
};

Drawing readSvg(const std::string &bytes) {
    Drawing drawing;
    QXmlStreamReader reader(QByteArray::fromStdString(bytes));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        const auto attributes = reader.attributes();
        if (reader.name() == QLatin1String("path"))
            drawing.shapes.push_back({attributes.value("fill").toString().toStdString(),
                                      attributes.value("d").toString().toStdString()});
        if (reader.name() == QLatin1String("text"))
            drawing.texts.push_back(reader.readElementText().toStdString());
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return drawing;
}

// U1 of 4 W and U2 of 1 W and half its area on top, U3 without power; U4 of 3 W on the bottom.
class PowerRender : public testing::Test {
protected:
    void SetUp() override {
        design = PartDesign()
                     .define("A", "POWER_OPR 4000")
                     .define("B", "POWER_OPR 1000", 1.0, 2.0, 2.0)
                     .define("N")
                     .define("D", "POWER_OPR 3000")
                     .place("A", "U1", "PLACED", "TOP", 20)
                     .place("B", "U2", "PLACED", "TOP", 40)
                     .place("N", "U3", "PLACED", "TOP", 60)
                     .place("D", "U4", "PLACED", "BOTTOM", 20)
                     .place("A", "U5", "UNPLACED")
                     .write(folder);
    }

    Drawing render(const std::string &file, const std::vector<std::string> &more) {
        std::vector<std::string> arguments{"render", file, "-o", folder.path("out.svg")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = runTool(arguments);
        EXPECT_EQ(result.status, 0) << result;
        return readSvg(folder.read("out.svg"));
    }

    std::string import() {
        const ToolResult result = runTool({"import", design, "-o", folder.path("model.json")});
        EXPECT_EQ(result.status, 0) << result;
        return folder.path("model.json");
    }

    // The board is 200 mm and 1512 pixels wide and 100 mm high, its low corner at (44, 884).
    static std::string fillAt(const Drawing &drawing, double x, double width) {
        const auto text = [](double value) {
            const std::string number = std::to_string(std::round(value * 1000) / 1000);
            return number.substr(
                0, number.find_last_not_of(number.find('.') == std::string::npos ? "" : "0") + 1);
        };
        const std::string left = text(44 + 7.56 * (x - width / 2));
        for (const Shape &shape : drawing.shapes) {
            if (shape.data.rfind("M" + left + " ", 0) == 0 && shape.data.find('Z') != std::string::npos)
                return shape.fill;
        }
        return "<nothing at " + left + ">";
    }

    TempFolder folder;
    std::string design;
};

TEST_F(PowerRender, ColoursPartsByPowerInDesignAndModelAlike) {
    for (const std::string &file : {design, import()}) {
        const Drawing drawing = render(file, {"--color", "power"});
        EXPECT_EQ(fillAt(drawing, 20, 4), "#fde725"); // 4 of 4 W
        EXPECT_EQ(fillAt(drawing, 60, 4), "none");
        EXPECT_THAT(drawing.texts, testing::IsSupersetOf({"0", "1", "2", "3", "4", "Power, W", "No power"}));
        EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("5 W on this side")));
        EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("8 W on the board")));
    }
}

TEST_F(PowerRender, BothSidesHaveOneScale) {
    const Drawing drawing = render(import(), {"--color", "power", "--side", "bottom"});
    EXPECT_THAT(drawing.texts, testing::Contains("4"));
    EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("3 W on this side")));
    EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("8 W on the board")));
}

// 4 W on 8 mm² are 50 W/cm², 1 W on 4 mm² are 25.
TEST_F(PowerRender, ColoursPartsByDensity) {
    for (const std::string &file : {design, import()}) {
        const Drawing drawing = render(file, {"--color", "density"});
        EXPECT_THAT(drawing.texts, testing::IsSupersetOf({"50", "Power, W/cm\u00b2"}));
        EXPECT_EQ(fillAt(drawing, 20, 4), "#fde725");
    }
}

TEST_F(PowerRender, WithoutAnyPowerSaysSo) {
    const std::string plain = PartDesign().define("N").place("N", "U1").write(folder);
    const Drawing drawing = render(plain, {"--color", "power"});
    EXPECT_THAT(drawing.texts, testing::IsSupersetOf({"No part of this board has a power", "No power"}));
    EXPECT_THAT(drawing.texts, testing::Contains(HasSubstr("0 W on the board")));
}

TEST_F(PowerRender, PngHasTheSameColours) {
    const ToolResult result =
        runTool({"render", import(), "-o", folder.path("out.png"), "--color", "power", "--width", "3200"});
    ASSERT_EQ(result.status, 0) << result;
    const QImage image(QString::fromStdString(folder.path("out.png")));
    ASSERT_FALSE(image.isNull());
    // Left of the designator in U1.
    EXPECT_EQ(image.pixel(static_cast<int>(2 * (44 + 7.56 * 18.3)), static_cast<int>(2 * (884 - 7.56 * 50))),
              qRgb(253, 231, 37));
}

TEST_F(PowerRender, UnknownColouringNamesTheChoices) {
    const ToolResult result = runTool({"render", design, "-o", folder.path("out.svg"), "--color", "heat"});
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("kind, power or density"));
}

} // namespace

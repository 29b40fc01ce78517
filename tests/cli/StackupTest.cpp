// --stackup: layers with thickness, place and materials from a file of their own.
#include "Stackup.h"
#include "Entities.h"
#include "Failure.h"
#include "GerberFiles.h"
#include "host/EntityModel/Types.h"
#include "JsonText.h"
#include "SmallDesign.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace {

using namespace TestSupport;
using namespace EntityModel;
using testing::HasSubstr;

std::string stackupOf(const std::string &layers, const std::string &units = "mm",
                      const std::string &more = std::string()) {
    return "{\"format\": \"eda-stackup\", \"version\": 1, \"units\": \"" + units + "\"," + more +
           "\n\"layers\": [" + layers + "]}\n";
}

std::string conductor(const std::string &name, const std::string &thickness = "0.035",
                      const std::string &more = std::string()) {
    const std::string member = name.empty() ? name : "\"name\": \"" + name + "\", ";
    return "{" + member + "\"kind\": \"conductor\", \"thickness\": " + thickness + more + "}";
}

std::string dielectric(const std::string &thickness) {
    return "{\"name\": \"core\", \"kind\": \"dielectric\", \"thickness\": " + thickness +
           ", \"material\": \"FR4\"}";
}

std::string twoLayers() { return conductor("TOP") + "," + dielectric("1.53") + "," + conductor("Bottom"); }

class ToolStackup : public testing::Test {
protected:
    void SetUp() override {
        set = {folder.write("top.gbr", gerberLayer(threeSquares())),
               folder.write("bottom.gbr", gerberLayer("D10*\nX0Y0D03*\n"))};
        writeSmallDesign(folder);
    }

    ToolResult run(std::vector<std::string> arguments, const std::string &stackup) const {
        arguments.insert(arguments.end(), {"--stackup", folder.write("stack.json", stackup)});
        return runTool(arguments);
    }

    ToolResult info(const std::vector<std::string> &files, const std::string &stackup) const {
        std::vector<std::string> arguments{"info", "--json"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        return run(arguments, stackup);
    }

    std::unique_ptr<Model> import(const std::vector<std::string> &files, const std::string &stackup) const {
        std::vector<std::string> arguments{"import", "-o", folder.path("model.json"), "--option",
                                           "Import Dielectric Layers=Yes"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        const ToolResult result = run(arguments, stackup);
        EXPECT_EQ(result.status, 0) << result;
        return EDATool::loadModel(folder.path("model.json"));
    }

    TempFolder folder;
    std::vector<std::string> set;
};

double mm(const Entity *entity, const AttributePath &path) { return getDoubleValue(entity, path, "mm", NAN); }

TEST_F(ToolStackup, LayersTakeThicknessAndPlaceByNameInAnyCase) {
    const ToolResult result = info(set, stackupOf(twoLayers()));
    ASSERT_EQ(result.status, 0) << result;
    const rapidjson::Document report = parseJson(result.out);
    const auto &layers = report["layers"];
    ASSERT_EQ(layers.Size(), 3u);
    const char *names[] = {"top", "core", "bottom"};
    const double offsets[] = {0.035, 1.565, 1.6}; // of the lower faces from the board's top
    for (rapidjson::SizeType i = 0; i < 3; ++i) {
        EXPECT_STREQ(layers[i]["name"].GetString(), names[i]);
        EXPECT_EQ(layers[i]["conductor"].GetBool(), i != 1);
        EXPECT_NEAR(layers[i]["topOffset"].GetDouble(), offsets[i], 1e-12);
    }
    EXPECT_NEAR(layers[1]["thickness"].GetDouble(), 1.53, 1e-12);
    EXPECT_EQ(layers[0]["traces"].GetInt(), 2); // two of three squares overlap
    EXPECT_NEAR(report["thickness"].GetDouble(), 1.6, 1e-12);
    EXPECT_THAT(result.err,
                HasSubstr("3 layers, 2 of them conductors, and is 1.6 mm thick, which the board"));
}

TEST_F(ToolStackup, ItsOrderIsThatOfTheLayers) {
    const std::string turned = conductor("bottom.gbr") + "," + dielectric("1.5") + "," + conductor("top.gbr");
    const ToolResult result = info(set, stackupOf(turned));
    const rapidjson::Document report = parseJson(result.out);
    EXPECT_STREQ(report["layers"][0]["name"].GetString(), "bottom");
    EXPECT_STREQ(report["layers"][2]["name"].GetString(), "top");
}

TEST_F(ToolStackup, WithoutNamesTheOrderMatches) {
    const std::string layers = conductor("", "35") + "," + dielectric("1530") + "," + conductor("", "70");
    const rapidjson::Document report = parseJson(info(set, stackupOf(layers, "um")).out);
    EXPECT_STREQ(report["layers"][0]["name"].GetString(), "top");
    EXPECT_NEAR(report["layers"][2]["thickness"].GetDouble(), 0.07, 1e-12);
    EXPECT_NEAR(report["thickness"].GetDouble(), 1.635, 1e-12);
}

TEST_F(ToolStackup, ABoardOfAnotherThicknessIsNamed) {
    const std::string board = folder.path("small.emn");
    EXPECT_THAT(info({board}, stackupOf(twoLayers())).err, HasSubstr("1.6 MM thick, as the board is"));
    const ToolResult thick = info({board}, stackupOf(conductor("a", "1.7")));
    EXPECT_EQ(thick.status, 0);
    EXPECT_THAT(thick.err, HasSubstr("is 1.7 MM thick, but the board is 1.6 MM thick; the layers are placed "
                                     "from its top, so that they end 0.1 MM below it"));
    EXPECT_THAT(info({board}, stackupOf(conductor("a", "1.5"))).err,
                HasSubstr("which leaves 0.1 MM at its bottom"));
}

TEST_F(ToolStackup, LayersStandAtTheirPlacesInTheModel) {
    const std::unique_ptr<Model> model =
        import({folder.path("small.emn"), "--copper", set[0], set[1]}, stackupOf(twoLayers()));
    const Entity *const board = EDATool::findBoard(*model, "model.json", "");
    EXPECT_EQ(EDATool::textOf(*board, Distribute_Layers_t), "User Specified");
    std::vector<Entity *> conductors, dielectrics;
    getLinkedEntities(board, Conductor_Layers_t, conductors);
    getLinkedEntities(board, Dielectric_Layers_t, dielectrics);
    ASSERT_EQ(conductors.size(), 2u);
    ASSERT_EQ(dielectrics.size(), 1u);
    // Each stands on its lower face, measured from the board's bottom, and ends where the one above begins.
    EXPECT_NEAR(mm(conductors[1], Y_Location_t), 0.0, 1e-9);
    EXPECT_NEAR(mm(dielectrics[0], Y_Location_t), mm(conductors[1], "Conductor Thickness"), 1e-9);
    EXPECT_NEAR(mm(dielectrics[0], Y_Location_t) + mm(dielectrics[0], "Thickness"),
                mm(conductors[0], Y_Location_t), 1e-9);
    EXPECT_NEAR(mm(conductors[0], Y_Location_t) + mm(conductors[0], "Conductor Thickness"),
                mm(board, "Thickness"), 1e-9);
}

TEST_F(ToolStackup, MaterialsAndCoverageReachTheModel) {
    const std::string layers =
        conductor("a", "0.1", ", \"material\": \"Silver\", \"filling\": \"Resin X\", \"coverage\": 40") +
        "," + dielectric("1.5");
    const std::unique_ptr<Model> model =
        import({folder.path("small.emn")}, stackupOf(layers, "mm", "\"conductorMaterial\": \"Copper\","));
    const Entity *const board = EDATool::findBoard(*model, "model.json", "");
    const auto material = [](const Entity *owner, const AttributePath &link) {
        const Entity *const found = getLinkedEntity(owner, link);
        return found == nullptr ? std::string("(none)") : EDATool::textOf(*found, Name_t);
    };
    std::vector<Entity *> conductors, dielectrics;
    getLinkedEntities(board, Conductor_Layers_t, conductors);
    getLinkedEntities(board, Dielectric_Layers_t, dielectrics);
    ASSERT_EQ(conductors.size(), 1u);
    ASSERT_EQ(dielectrics.size(), 1u);
    EXPECT_EQ(material(board, Conductor_Material_t), "Copper");
    EXPECT_EQ(material(conductors[0], MaterialLink_t), "Silver");
    EXPECT_EQ(material(conductors[0], DielectricMaterialLink_t), "Resin X");
    EXPECT_EQ(material(dielectrics[0], MaterialLink_t), "FR4");
    EXPECT_DOUBLE_EQ(getDoubleValue(conductors[0], Conductor_Planar_Percentage_t, "", 0.0), 40.0);
}

TEST_F(ToolStackup, WhatIsWrongIsToldWithItsPlace) {
    const std::string deep(100'000, '[');
    const struct {
        std::string text;
        const char *message;
    } cases[] = {
        {stackupOf(twoLayers() + "," + conductor("inner")),
         "layer 4, 'inner', is none of the design's conductor layers, which are: 'top', 'bottom'"},
        {stackupOf(conductor("top")), "the design's conductor layer 'bottom' is missing"},
        {stackupOf(conductor("")), "has 1 conductors, but the design has 2 conductor layers"},
        {stackupOf(conductor("top", "-0.1")), "layer 1 has a 'thickness' that is not above 0"},
        {stackupOf(conductor("top", "0")), "layer 1 has a 'thickness' that is not above 0"},
        {stackupOf(conductor("top", "\"thin\"")), "layer 1 'thickness' must be a number, not a text"},
        {stackupOf(conductor("top", "1e999")), "line 2: "},
        {stackupOf(conductor("top", "null")), "layer 1 'thickness' must be a number, not null"},
        {stackupOf(conductor("top") + "," + conductor("TOP")),
         "layer 2 has the name 'TOP' of a conductor above"},
        {stackupOf(conductor("top") + "," + conductor("top.gbr")), "layer 2, 'top.gbr', is a layer of the"},
        {stackupOf(conductor("top") + "," + conductor("")), "1 of the 2 conductors have names"},
        {stackupOf(dielectric("1")), "has no conductor among its layers"},
        {stackupOf("{\"kind\": \"prepreg\", \"thickness\": 1}"), "layer 1 is of the unknown kind 'prepreg'"},
        {stackupOf("{\"kind\": \"conductor\"}"), "layer 1 has no 'thickness'"},
        {stackupOf("{\"kind\": \"conductor\", \"thickness\": 1, \"thickness\": 2}"), "has 'thickness' twice"},
        {stackupOf(conductor("top", "1", ", \"colour\": 3")), "layer 1 has the unknown member 'colour'"},
        {stackupOf(conductor("top", "1", ", \"coverage\": 101")),
         "layer 1 has a 'coverage' that is no percent"},
        {stackupOf(conductor("top", "1", ", \"coverage\": 0")),
         "layer 1 has a 'coverage' that is no percent"},
        {stackupOf("7"), "layer 1 must be an object, not a number"},
        {stackupOf(deep), "line 2: "},
        {stackupOf(deep + std::string(deep.size(), ']')), "layer 1 must be an object, not a list"},
        {stackupOf(twoLayers(), "furlong"), "'furlong', which are no known unit of length"},
        {"{\"format\": \"eda-library\"}", "has not the format \"eda-stackup\""},
        {"{\"format\": \"eda-stackup\", \"version\": 2}", "has another version than 1"},
        {"[]", "the stack-up must be an object, not a list"},
        {"top 0.035\n", "line 1: "},
        {stackupOf(twoLayers()) + "{}", "line 3: "},
        {stackupOf("\xff"), "line 2: "},
        {std::string("{}\0", 3), "NUL"},
        {"", "stack.json"},
    };
    for (const auto &each : cases) {
        std::vector<std::string> arguments{"import", "-o", folder.path("model.json")};
        arguments.insert(arguments.end(), set.begin(), set.end());
        const ToolResult result = run(arguments, each.text);
        EXPECT_EQ(result.status, 1) << result << each.message;
        EXPECT_THAT(result.err, HasSubstr(each.message));
        EXPECT_THAT(result.err, HasSubstr("stack.json"));
        EXPECT_EQ(folder.read("model.json"), "<missing>");
    }
}

TEST_F(ToolStackup, AnyBytesGiveAStackUpOrAReason) {
    const std::string good = stackupOf(conductor("a", "0.1", ", \"coverage\": 40") + "," + dielectric("1"));
    std::mt19937 random(20261121);
    const auto any = [&random](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
    int numGood = 0, numRefused = 0;
    for (int count = 0; count < 3000; ++count) {
        std::string text = good;
        for (std::size_t change = 0; change <= any(3); ++change) {
            const std::size_t place = any(text.size());
            switch (any(4)) {
            case 0:
                text[place] = static_cast<char>(any(256));
                break;
            case 1:
                text.erase(place, any(20));
                break;
            case 2:
                text.insert(place, text.substr(any(text.size()), any(40)));
                break;
            default:
                text.insert(place, std::string(1 + any(3), "[]{}\",:0e-"[any(11)]));
            }
            if (text.empty()) text = good;
        }
        try {
            EXPECT_GT(EDATool::readStackup(folder.write("any.json", text)).numConductors(), 0u);
            ++numGood;
        } catch (const EDATool::DesignFailure &failure) {
            EXPECT_THAT(failure.what(), HasSubstr("any.json"));
            ++numRefused;
        }
    }
    EXPECT_GT(numGood, 10);
    EXPECT_GT(numRefused, 100);
}

TEST_F(ToolStackup, TooManyLayersAreRefused) {
    std::string layers = dielectric("1");
    for (int count = 0; count < 1000; ++count)
        layers += "," + dielectric("1");
    EXPECT_THAT(info(set, stackupOf(layers)).err, HasSubstr("has more than 1000 layers"));
}

TEST_F(ToolStackup, AMissingOneIsNamedAndAModelTakesNone) {
    EXPECT_THAT(runTool({"info", set[0], "--stackup", folder.path("none.json")}).err, HasSubstr("none.json"));
    import(set, stackupOf(twoLayers()));
    const ToolResult result =
        run({"render", folder.path("model.json"), "-o", folder.path("out.svg")}, stackupOf(twoLayers()));
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_THAT(result.err, HasSubstr("--stackup is for designs"));
}

TEST_F(ToolStackup, ItIsNeverWrittenOver) {
    const std::string text = stackupOf(twoLayers());
    const ToolResult result = run({"import", set[0], set[1], "-o", folder.path("stack.json")}, text);
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(folder.read("stack.json"), text);
}

TEST_F(ToolStackup, APictureOfALayerCountsConductorsAlone) {
    const auto render = [&](const std::string &layer) {
        const ToolResult result =
            run({"render", set[0], set[1], "--layer", layer, "-o", folder.path("out.svg")},
                stackupOf(twoLayers()));
        EXPECT_EQ(result.status, 0) << result;
        return folder.read("out.svg");
    };
    const std::string bottom = render("bottom");
    EXPECT_EQ(render("2"), bottom);
    EXPECT_NE(render("1"), bottom);
    EXPECT_EQ(
        run({"render", set[0], "--layer", "core", "-o", folder.path("x.svg")}, stackupOf(conductor("top")))
            .status,
        2);
}

} // namespace

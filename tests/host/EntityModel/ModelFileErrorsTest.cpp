// Files that are no models: each gives one message with file, line and reason.
#include "ModelSupport.h"

#include <random>

using namespace EntityModel;

namespace {

std::string errorOf(const std::string &text) {
    std::string error;
    const auto model = ModelFile::parse(text, "m.json", error);
    EXPECT_EQ(model == nullptr, !error.empty()) << text;
    return error;
}

// The root entity starts in line 2.
std::string fileWith(const std::string &root) {
    return "{\"format\":\"eda-model\",\"version\":1,\"root\":\n" + root + "}\n";
}

struct Row {
    const char *name;
    const char *root;
    const char *error;
};

const Row badRoots[] = {
    {"RootNoObject", "7", "m.json:2: the root must be an entity"},
    {"RootNull", "null", "m.json:2: the root must be an entity"},
    {"NoType", "{}", "m.json:2: an entity has no type"},
    {"TypeNotFirst", R"({"id":1,"type":"PCB"})", "m.json:2: an entity's first key must be \"type\""},
    {"UnknownType", R"({"type":"Spoon","id":1})", "m.json:2: unknown entity type \"Spoon\""},
    {"TypeNoText", R"({"type":1,"id":1})", "m.json:2: the type must be a text"},
    {"TypeTwice", R"({"type":"PCB","type":"PCB","id":1})", "m.json:2: the key \"type\" is there twice"},
    {"NoId", R"({"type":"PCB"})", "m.json:2: an entity has no id"},
    {"IdText", R"({"type":"PCB","id":"1"})", "m.json:2: the id must be a number"},
    {"IdZero", R"({"type":"PCB","id":0})", "m.json:2: bad id 0"},
    {"IdNegative", R"({"type":"PCB","id":-1})", "m.json:2: bad id -1"},
    {"IdFraction", R"({"type":"PCB","id":1.5})", "m.json:2: bad id 1.5"},
    {"IdHuge", R"({"type":"PCB","id":9007199254740992})", "m.json:2: bad id 9007199254740992"},
    {"IdHuger", R"({"type":"PCB","id":99999999999999999999})", "m.json:2: bad id 99999999999999999999"},
    {"IdTwice", R"({"type":"PCB","id":1,"children":{"Holes":[
{"type":"PCB Hole","id":1}]}})",
     "m.json:3: the id 1 is there twice"},
    {"IdKeyTwice", R"({"type":"PCB","id":1,"id":2})", "m.json:2: the key \"id\" is there twice"},
    {"UnknownKey", R"({"type":"PCB","id":1,"name":"x"})", "m.json:2: unknown key \"name\""},
    {"ValuesList", R"({"type":"PCB","id":1,"values":[]})", "m.json:2: \"values\" must be an object"},
    {"ChildrenText", R"({"type":"PCB","id":1,"children":"x"})", "m.json:2: \"children\" must be an object"},
    {"LockedObject", R"({"type":"PCB","id":1,"locked":{}})", "m.json:2: \"locked\" must be a list"},
    {"FlagsNumber", R"({"type":"PCB","id":1,"flags":1})", "m.json:2: \"flags\" must be a list"},
    {"UnknownFlag", R"({"type":"PCB","id":1,"flags":["hot"]})",
     "m.json:2: \"flags\" takes \"protected\", \"locked\" and \"marked\""},
    {"UnknownAttribute", R"({"type":"PCB","id":7,"values":{"Colour":"red"}})",
     "m.json:2: PCB 7 has no attribute \"Colour\""},
    {"AttributeTwice", R"({"type":"PCB","id":7,"values":{"Width":1,
"Width":2}})",
     "m.json:3: the key \"Width\" is there twice"},
    {"AliasTwice",
     R"({"type":"Component","id":7,"values":{"Type":"Electrical","Component Type":"Electrical"}})",
     "m.json:2: the key \"Type\" is there twice"},
    {"GroupValue", R"({"type":"PCB","id":7,"values":{"Geometry":{}}})",
     "m.json:2: \"Geometry\" has no value"},
    {"LinkAsValue", R"({"type":"PCB","id":7,"values":{"Conductor Material":7}})",
     "m.json:2: \"Conductor Material\" has no value"},
    {"ListAsValue", R"({"type":"PCB","id":7,"values":{"Holes":[]}})", "m.json:2: \"Holes\" has no value"},
    {"TextNumber", R"({"type":"PCB","id":7,"values":{"Name":1}})",
     "m.json:2: \"Name\" needs a text in PCB 7"},
    {"TextNull", R"({"type":"PCB","id":7,"values":{"Name":null}})",
     "m.json:2: \"Name\" needs a text in PCB 7"},
    {"TextBadBytes", R"({"type":"PCB","id":7,"values":{"Name":{"bytes":"0g"}}})",
     "m.json:2: \"Name\" needs a text in PCB 7"},
    {"TextOddBytes", R"({"type":"PCB","id":7,"values":{"Name":{"bytes":"abc"}}})",
     "m.json:2: \"Name\" needs a text in PCB 7"},
    {"TextNoBytes", R"({"type":"PCB","id":7,"values":{"Name":{}}})",
     "m.json:2: \"Name\" needs a text in PCB 7"},
    {"TextOtherKey", R"({"type":"PCB","id":7,"values":{"Name":{"hex":"00"}}})",
     "m.json:2: \"Name\" needs a text in PCB 7"},
    {"NumberText", R"({"type":"PCB","id":7,"values":{"Width":"1 mm"}})",
     "m.json:2: \"Width\" needs a number with its unit, such as [1.5,\"mm\"] in PCB 7"},
    {"NumberEmpty", R"({"type":"PCB","id":7,"values":{"Width":[]}})",
     "m.json:2: \"Width\" needs a number with its unit, such as [1.5,\"mm\"] in PCB 7"},
    {"NumberNoUnit", R"({"type":"PCB","id":7,"values":{"Width":[1]}})",
     "m.json:2: \"Width\" needs a number with its unit, such as [1.5,\"mm\"] in PCB 7"},
    {"NumberTwice", R"({"type":"PCB","id":7,"values":{"Width":[1,2,"mm"]}})",
     "m.json:2: \"Width\" needs a number with its unit, such as [1.5,\"mm\"] in PCB 7"},
    {"NumberUnitFirst", R"({"type":"PCB","id":7,"values":{"Width":["mm",1]}})",
     "m.json:2: \"Width\" needs a number with its unit, such as [1.5,\"mm\"] in PCB 7"},
    {"NumberThreeUnits", R"({"type":"PCB","id":7,"values":{"Width":[1,"mm","mm","mm"]}})",
     "m.json:2: \"Width\" needs a number with its unit, such as [1.5,\"mm\"] in PCB 7"},
    {"UnknownUnit", R"({"type":"PCB","id":7,"values":{"Width":[1,"furlong"]}})",
     "m.json:2: unknown unit \"furlong\" of \"Width\" in PCB 7"},
    {"EmptyUnit", R"({"type":"PCB","id":7,"values":{"Width":[1,""]}})",
     "m.json:2: unknown unit \"\" of \"Width\" in PCB 7"},
    {"NegativeSize", R"({"type":"PCB","id":7,"values":{"Width":[-1,"mm"]}})",
     "m.json:2: \"Width\" can't be below 0 in PCB 7"},
    {"NumberTiny", R"({"type":"PCB","id":7,"values":{"Width":[1e-999,"mm"]}})",
     "m.json:2: \"Width\" has a number out of range: 1e-999 in PCB 7"},
    {"IntegerFraction", R"({"type":"Via","id":7,"values":{"Number Of Vias":1.5}})",
     "m.json:2: \"Number Of Vias\" needs a whole number in Via 7"},
    {"IntegerHuge", R"({"type":"Via","id":7,"values":{"Number Of Vias":99999999999}})",
     "m.json:2: \"Number Of Vias\" needs a whole number in Via 7"},
    {"UnknownChoice", R"({"type":"PCB","id":7,"values":{"Shape":"Blob"}})",
     "m.json:2: \"Blob\" is no choice of \"Shape\" in PCB 7"},
    {"ChoiceNumber", R"({"type":"PCB","id":7,"values":{"Shape":1}})",
     "m.json:2: \"Shape\" needs one of its choices as a text in PCB 7"},
    {"YesNoText", R"({"type":"Via","id":7,"values":{"Plated":"Yes"}})",
     "m.json:2: \"Plated\" needs true or false in Via 7"},
    {"DoubleListFlat", R"({"type":"PCB","id":7,"values":{"Outline":[1,2]}})",
     "m.json:2: \"Outline\" needs numbers with their unit, such as [[1,2],\"mm\"] in PCB 7"},
    {"DoubleListNoUnit", R"({"type":"PCB","id":7,"values":{"Outline":[[1,2]]}})",
     "m.json:2: \"Outline\" needs numbers with their unit, such as [[1,2],\"mm\"] in PCB 7"},
    {"DoubleListNested", R"({"type":"PCB","id":7,"values":{"Outline":[[[1]],"mm"]}})",
     "m.json:2: \"Outline\" needs numbers with their unit, such as [[1,2],\"mm\"] in PCB 7"},
    {"DoubleListTwice", R"({"type":"PCB","id":7,"values":{"Outline":[[1],[2],"mm"]}})",
     "m.json:2: \"Outline\" needs numbers with their unit, such as [[1,2],\"mm\"] in PCB 7"},
    {"DoubleListNull", R"({"type":"PCB","id":7,"values":{"Outline":[[1,null],"mm"]}})",
     "m.json:2: \"Outline\" needs numbers with their unit, such as [[1,2],\"mm\"] in PCB 7"},
    {"IntListFraction", R"({"type":"Conductor Layer","id":7,"values":{"MaterialMap":[1.5]}})",
     "m.json:2: \"MaterialMap\" needs a list of whole numbers in Conductor Layer 7"},
    {"AttributeListFlat", R"({"type":"PCB Conductor","id":7,"values":{"Outline Holes":[[1],"mm"]}})",
     "m.json:2: \"Outline Holes\" needs a list of [[1,2],\"mm\"] and the like in PCB Conductor 7"},
    {"ElementAsValue", R"({"type":"PCB Conductor","id":7,"values":{"Hole 1":[[1],"mm"]}})",
     "m.json:2: PCB Conductor 7 has no attribute \"Hole 1\""},
    {"CompositeNumber", R"({"type":"Material","id":7,"values":{"Density":1}})",
     "m.json:2: \"Density\" must be an object"},
    {"CompositeUnknown", R"({"type":"Material","id":7,"values":{"Density":{"Name":1}}})",
     "m.json:2: Material 7 has no attribute \"Name\" in \"Density\""},
    {"MemberOutside", R"({"type":"Material","id":7,"values":{"Value":1}})",
     "m.json:2: Material 7 has no attribute \"Value\""},
    {"LinkText", R"({"type":"PCB","id":7,"links":{"Conductor Material":"3"}})",
     "m.json:2: \"Conductor Material\" needs the id of an entity"},
    {"LinkUnknownId", R"({"type":"PCB","id":7,"links":{
"Conductor Material":3}})",
     "m.json:3: \"Conductor Material\" of PCB 7 leads to the unknown id 3"},
    {"LinkWrongType", R"({"type":"PCB","id":7,"links":{
"Conductor Material":7}})",
     "m.json:3: \"Conductor Material\" of PCB 7 can't lead to PCB 7"},
    {"LinkNoLink", R"({"type":"PCB","id":7,"links":{"Name":3}})", "m.json:2: \"Name\" is no link"},
    {"LinkTwice", R"({"type":"PCB","id":7,"links":{"Conductor Material":3,"Conductor Material":3}})",
     "m.json:2: the key \"Conductor Material\" is there twice"},
    {"LockUnknown", R"({"type":"PCB","id":7,"locked":["Colour"]})",
     "m.json:2: PCB 7 has no attribute \"Colour\""},
    {"LockNumber", R"({"type":"PCB","id":7,"marked":[1]})",
     "m.json:2: \"marked\" takes labels of attributes"},
    {"LockPathShort", R"({"type":"Material","id":7,"locked":[["Density"]]})",
     "m.json:2: a path has two labels, such as [\"Conductivity\",\"Value\"]"},
    {"LockPathLong", R"({"type":"Material","id":7,"locked":[["Density","Value","x"]]})",
     "m.json:2: a path has two labels, such as [\"Conductivity\",\"Value\"]"},
    {"LockPathNoComposite", R"({"type":"Material","id":7,"locked":[["Name","Value"]]})",
     "m.json:2: \"Name\" has no members"},
    {"LockElementMissing", R"({"type":"PCB Conductor","id":7,"locked":["Hole 1"]})",
     "m.json:2: PCB Conductor 7 has no attribute \"Hole 1\""},
    {"ChildrenOfValue", R"({"type":"PCB","id":7,"children":{"Name":[]}})",
     "m.json:2: \"Name\" holds no children"},
    {"ListObject", R"({"type":"PCB","id":7,"children":{"Holes":{}}})",
     "m.json:2: \"Holes\" must be a list of entities"},
    {"OwningLinkList", R"({"type":"Chip Socket","id":7,"children":{"ComponentLink":[]}})",
     "m.json:2: \"ComponentLink\" must be an entity"},
    {"ListTwice", R"({"type":"PCB","id":7,"children":{"Holes":[],"Holes":[]}})",
     "m.json:2: the key \"Holes\" is there twice"},
    {"ListOfNumbers", R"({"type":"PCB","id":7,"children":{"Holes":[1]}})", "m.json:2: an entity is expected"},
    {"WrongChild", R"({"type":"PCB","id":7,"children":{"Holes":[
{"type":"Via","id":8}]}})",
     "m.json:3: \"Holes\" of PCB 7 takes no \"Via\""},
    {"ChildWithoutId", R"({"type":"PCB","id":7,"children":{"Holes":[{"type":"PCB Hole"}]}})",
     "m.json:2: an entity has no id"},
};

std::string nested(int depth, const std::string &open, const std::string &close) {
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += open;
    for (int i = 0; i < depth; ++i)
        text += close;
    return text;
}

} // namespace

class BadEntity : public testing::TestWithParam<Row> {};

TEST_P(BadEntity, IsNamedWithItsLine) { EXPECT_EQ(errorOf(fileWith(GetParam().root)), GetParam().error); }

INSTANTIATE_TEST_SUITE_P(All, BadEntity, testing::ValuesIn(badRoots),
                         [](const auto &row) { return row.param.name; });

TEST(ModelFileErrors, WrongFrames) {
    EXPECT_EQ(errorOf(""), "m.json:1: The document is empty.");
    EXPECT_EQ(errorOf("[]"), "m.json:1: a model file is one JSON object");
    EXPECT_EQ(errorOf("7"), "m.json:1: a model file is one JSON object");
    EXPECT_EQ(errorOf("{}"), "m.json:1: the model has no root");
    EXPECT_EQ(errorOf("{\"root\":{}}"), "m.json:1: \"format\" and \"version\" must stand before \"root\"");
    EXPECT_EQ(errorOf("{\"format\":\"x\"}"), "m.json:1: the format is not \"eda-model\"");
    EXPECT_EQ(errorOf("{\"format\":1}"), "m.json:1: the format is not \"eda-model\"");
    EXPECT_EQ(errorOf("{\"format\":\"eda-model\",\n\"version\":2}"),
              "m.json:2: version 2 can't be read; this is version 1");
    EXPECT_EQ(errorOf("{\"version\":1,\"version\":1}"), "m.json:1: the key \"version\" is there twice");
    EXPECT_EQ(errorOf("{\"colour\":1}"), "m.json:1: unknown key \"colour\"");
    EXPECT_EQ(errorOf("{\"format\":\"eda-model\",\"version\":1}"), "m.json:1: the model has no root");
}

TEST(ModelFileErrors, TrailingText) {
    const std::string good = fileWith(R"({"type":"PCB","id":1})");
    EXPECT_EQ(errorOf(good), "");
    EXPECT_NE(errorOf(good + "x").find("m.json:3: "), std::string::npos) << errorOf(good + "x");
    EXPECT_NE(errorOf(good + good), "");
    EXPECT_EQ(errorOf(good + std::string(1, '\0') + "more"),
              "m.json:3: there is more after the end of the model");
}

TEST(ModelFileErrors, NotUtf8) {
    EXPECT_EQ(errorOf("{\n\"\xFF\":1}"), "m.json:2: the text is not UTF-8");
    EXPECT_EQ(errorOf(std::string("\xFF\xFE{\0", 4)), "m.json:1: the text is not UTF-8");
}

TEST(ModelFileErrors, NumbersThatAreNoJson) {
    for (const char *number :
         {"inf", "NaN", "0x1p3", "01", "1.", ".5", "+1", "1e", "--1", "1e400", "-1e400"}) {
        const std::string error = errorOf(fileWith(
            std::string(R"({"type":"PCB","id":1,"values":{"X Location":[)") + number + ",\"mm\"]}}"));
        EXPECT_EQ(error.rfind("m.json:2: ", 0), 0u) << number << ": " << error;
    }
}

TEST(ModelFileErrors, EveryTruncationIsRefused) {
    const SampleModel sample;
    set(sample["PCB"], "Outline", "0,0,1,0 <mm>");
    set(sample["PCB"], "Width", "1 in");
    const std::string text = sample.text();
    for (size_t size = 0; size + 2 < text.size(); ++size) {
        ASSERT_NE(errorOf(text.substr(0, size)), "") << size;
    }
}

TEST(ModelFileErrors, DeepNestingIsRefused) {
    EXPECT_NE(errorOf(nested(100000, "[", "]")), "");
    EXPECT_NE(errorOf(nested(100000, "{\"a\":", "}")), "");
    std::string text, end;
    for (int i = 0; i < 100000; ++i) {
        text += R"({"type":"Substrate","id":)" + std::to_string(2 * i + 1) +
                R"(,"children":{"SubcomponentGroups":[{"type":"Subcomponent Group","id":)" +
                std::to_string(2 * i + 2) + R"(,"children":{"Obstructions":[)";
    }
    EXPECT_EQ(errorOf(fileWith(text)), "m.json:2: nested more than 256 deep");
}

TEST(ModelFileErrors, HugeNumbersOfDigitsAreHarmless) {
    const std::string digits(100000, '9');
    EXPECT_NE(errorOf(fileWith(R"({"type":"PCB","id":)" + digits + "}")), "");
    EXPECT_NE(errorOf(fileWith(R"({"type":"PCB","id":1,"values":{"Width":)" + digits + "}}")), "");
    EXPECT_NE(errorOf(fileWith(R"({"type":"PCB","id":1,"values":{"Width":1e)" + digits + "}}")), "");
    EXPECT_NE(errorOf(fileWith(R"({"type":"PCB","id":1,"values":{"Width":1e-)" + digits + "}}")), "");
    EXPECT_EQ(errorOf(fileWith(R"({"type":"PCB","id":1,"values":{"Width":0.)" + digits + "}}")), "");
}

TEST(ModelFileErrors, LongLabelsAreCutInMessages) {
    const std::string label(1000000, 'x');
    EXPECT_LT(errorOf(fileWith(R"({"type":")" + label + "\"}")).size(), 200u);
    EXPECT_LT(errorOf(fileWith(R"({"type":"PCB","id":1,"values":{")" + label + "\":1}}")).size(), 200u);
    EXPECT_LT(errorOf("{\"" + label + "\":1}").size(), 200u);
}

TEST(ModelFileErrors, ManyMembersAndManyLinksStayLinear) {
    std::string text =
        R"({"type":"Chassis","id":1,"children":{"Materials":[{"type":"Material","id":2}],"PCBs":[)";
    for (int i = 0; i < 60000; ++i) {
        text += std::string(i > 0 ? "," : "") + R"({"type":"PCB","id":)" + std::to_string(i + 3) +
                R"(,"links":{"Conductor Material":2,"Dielectric Material":2}})";
    }
    // A time that grew with the square would meet the time limit of the test run.
    EXPECT_EQ(errorOf(fileWith(text + "]}}")), "");
    EXPECT_NE(errorOf(fileWith(text + "]}")), "");
}

TEST(ModelFileErrors, DamagedFilesNeverCrash) {
    const SampleModel sample;
    set(sample["PCB"], "Outline", "0,0,1,0 <mm>");
    set(sample["Via"], "Number Of Vias", "5");
    sample["Material"]->findAttribute(Density_t / AttributePath(Value_t))->setLocked(true);
    static_cast<ListAttribute *>(sample["PCB Conductor"]->findAttribute(Outline_Holes_t))->resize(2);
    EntityEditor::addEntity(sample["PCB"], Conductor_Material_t, sample["Material"]);
    const std::string text = sample.text();
    constexpr unsigned seed = 90210;
    std::mt19937 random(seed);
    const std::string inserts = "{}[]\",:0-9.eE\\nulltrue ";
    int good = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = text;
        for (unsigned hits = 1 + random() % 3; hits > 0; --hits) {
            const size_t place = random() % damaged.size();
            switch (random() % 4) {
            case 0:
                damaged[place] = static_cast<char>(random() % 256);
                break;
            case 1:
                damaged.erase(place, 1 + random() % 20);
                break;
            case 2:
                damaged.insert(place, 1, inserts[random() % inserts.size()]);
                break;
            default:
                damaged.insert(place, damaged.substr(random() % damaged.size(), random() % 60));
                break;
            }
        }
        std::string error;
        const auto model = ModelFile::parse(damaged, "m.json", error);
        ASSERT_EQ(model == nullptr, !error.empty()) << "seed " << seed << ", round " << round;
        if (!model) continue;
        ++good;
        const std::string again = ModelFile::toText(*model);
        const auto second = ModelFile::parse(again, "m.json", error);
        ASSERT_NE(second, nullptr) << error << ", seed " << seed << ", round " << round;
        ASSERT_EQ(ModelFile::toText(*second), again);
    }
    EXPECT_GT(good, 50);
}

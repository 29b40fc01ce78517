// Writing and reading back model files.
#include "ModelSupport.h"

#include "host/FileSystem/File.h"

#include <filesystem>
#include <limits>
#include <random>

using namespace EntityModel;

namespace {

namespace fs = std::filesystem;

std::unique_ptr<Model> parsed(const std::string &text) {
    std::string error;
    std::unique_ptr<Model> model = ModelFile::parse(text, "m.json", error);
    EXPECT_EQ(error, "");
    return model;
}

// A folder of its own for one test, removed at its end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const auto *const test = testing::UnitTest::GetInstance()->current_test_info();
        path_ = fs::temp_directory_path() / (std::string("eda-") + test->test_suite_name() + "-" +
                                             test->name() + "-" + std::to_string(std::random_device()()));
        fs::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    std::string file(const std::string &name) const { return (path_ / name).string(); }
    size_t count() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(path_), fs::directory_iterator()));
    }

private:
    fs::path path_;
};

std::string read(const std::string &file) {
    std::string content, error;
    EXPECT_TRUE(FileSystem::File::readAll(file, content, error)) << error;
    return content;
}

// Sets every attribute of every entity to something that is not its default.
void fill(const SampleModel &sample) {
    for (const auto &entry : sample.entities()) {
        for (const auto &def : entry.second->entityType().attributes()) {
            Attribute &attribute = entry.second->attribute(*def);
            switch (def->kind) {
            case AttributeKind::Text:
                attribute.setFromString("Text of\n" + def->type.getLabel());
                break;
            case AttributeKind::Number:
                static_cast<DoubleAttribute &>(attribute).set(0.1 + def->index);
                break;
            case AttributeKind::Integer:
                attribute.setFromString("-17");
                break;
            case AttributeKind::Choice:
                attribute.setFromString(def->choices.back().getLabel());
                break;
            case AttributeKind::YesNo:
                attribute.setFromString(attribute.getBool() ? "No" : "Yes");
                break;
            case AttributeKind::DoubleList:
                attribute.setFromString("1,2.5,-0.1 <in>");
                break;
            case AttributeKind::IntList:
                attribute.setFromString("1,-2,3");
                break;
            case AttributeKind::AttributeList:
                static_cast<ListAttribute &>(attribute).resize(2);
                break;
            default:
                break;
            }
            attribute.setLocked(true);
            attribute.setFlag(def->index % 2 == 0);
        }
        entry.second->protect("");
        entry.second->setLocked(true);
        entry.second->setFlag(true);
    }
}

} // namespace

TEST(ModelFile, EmptyModelHasThisText) {
    const Model model;
    EXPECT_EQ(ModelFile::toText(model), "{\"format\":\"eda-model\",\"version\":1,\"root\":\n"
                                        "{\"type\":\"Velkin Solver Project\",\"id\":1}}\n");
}

TEST(ModelFile, SmallModelHasThisText) {
    Model model;
    Entity *const chassis = create(model.root(), "Chassis", "Chassis");
    Entity *const material = create(model.root(), "Materials", "Material", "Copper");
    Entity *const pcb = create(chassis, "PCBs", "PCB", "Main \"A\"");
    EntityEditor::setSIValue(material, Conductivity_t / AttributePath(Value_t), 385.0);
    EntityEditor::setValueWithUnits(pcb, Width_t, 2.5, "in");
    EntityEditor::setSIValue(pcb, Depth_t, 0.05);
    EntityEditor::addEntity(pcb, Conductor_Material_t, material);
    set(pcb, "Outline", "0,0,1,-1 <mm>");
    pcb->findAttribute(Geometry_t)->setLocked(true);
    create(pcb, "Holes", "PCB Hole");
    create(pcb, "Holes", "PCB Hole");
    EXPECT_EQ(ModelFile::toText(model), R"json({"format":"eda-model","version":1,"root":
{"type":"Velkin Solver Project","id":1,"children":{
 "Chassis":
  {"type":"Chassis","id":2,"children":{
   "PCBs":[
    {"type":"PCB","id":4,"values":{"Name":"Main \"A\"","Width":[2.5,"in"],"Depth":[0.05,"m","mm"],"Outline":[[0,0,1,-1],"mm"]},"links":{"Conductor Material":3},"locked":["Geometry"],"children":{
     "Holes":[
      {"type":"PCB Hole","id":5},
      {"type":"PCB Hole","id":6}]}}]}},
 "Materials":[
  {"type":"Material","id":3,"values":{"Name":"Copper","Conductivity":{"Value":[385,"W/(m K)"]}}}]}}}
)json");
}

TEST(ModelFile, ExampleOfTheDocumentationIsWrittenLikeThis) {
    const std::string page = read(EDA_EXAMPLES "/../docs/model-format.md");
    const std::string fence = "```json\n";
    const size_t start = page.find(fence) + fence.size();
    const std::string text = page.substr(start, page.find("```", start) - start);
    const auto model = parsed(text);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(ModelFile::toText(*model), text);
}

TEST(ModelFile, EveryKindAndTypeComesBackByteForByte) {
    const SampleModel sample;
    fill(sample);
    const std::string text = sample.text();
    const auto model = parsed(text);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(ModelFile::toText(*model), text);
}

TEST(ModelFile, DefaultsAreNotWritten) {
    const SampleModel sample;
    const std::string before = sample.text();
    for (const auto &entry : sample.entities()) {
        for (const auto &def : entry.second->entityType().attributes())
            entry.second->attribute(*def);
    }
    EXPECT_EQ(sample.text(), before);
}

TEST(ModelFile, NumbersKeepNumberUnitAndDisplayUnit) {
    Model model;
    Entity *const pcb = create(create(model.root(), "Chassis", "Chassis"), "PCBs", "PCB");
    const double values[] = {0.1,
                             1e-320,
                             1e300,
                             std::numeric_limits<double>::max(),
                             std::numeric_limits<double>::min(),
                             123456789.123456789,
                             1.0 / 3.0,
                             5e22};
    for (const double value : values) {
        EntityEditor::setValueWithUnits(pcb, Width_t, value, "thou");
        EntityEditor::setSIValue(pcb, Width_t, value);
        const auto copy = parsed(ModelFile::toText(model));
        ASSERT_NE(copy, nullptr);
        std::vector<Entity *> children;
        copy->root()->getOwnedChildEntitiesOfType(children, PCB_t, true, true);
        ASSERT_EQ(children.size(), 1u);
        EXPECT_EQ(getDoubleValue(children[0], Width_t, "m", -1.0), value);
        EXPECT_EQ(textOf(children[0], Width_t), textOf(pcb, Width_t));
        EXPECT_EQ(ModelFile::toText(*copy), ModelFile::toText(model));
    }
}

TEST(ModelFile, MinusZeroStaysMinusZero) {
    Model model;
    Entity *const pcb = create(create(model.root(), "Chassis", "Chassis"), "PCBs", "PCB");
    EntityEditor::setValueWithUnits(pcb, X_Location_t, -0.0, "mm");
    EXPECT_NE(ModelFile::toText(model).find("\"X Location\":[-0.0,\"mm\"]"), std::string::npos);
    const auto copy = parsed(ModelFile::toText(model));
    EXPECT_EQ(ModelFile::toText(*copy), ModelFile::toText(model));
}

TEST(ModelFile, TextsComeBackVerbatim) {
    Model model;
    std::string all;
    for (int c = 0; c < 128; ++c)
        all += static_cast<char>(c);
    const std::string texts[] = {all,
                                 " trailing ",
                                 "\xC2\xB5m \xE2\x82\xAC \xF0\x9F\x98\x80",
                                 "\xFF\xFE latin \xE9",
                                 "\xED\xA0\x80",
                                 std::string("a\0b", 3),
                                 "<mm>",
                                 "{\"bytes\":\"00\"}"};
    for (const std::string &text : texts) {
        ASSERT_TRUE(EntityEditor::setValue(model.root(), Name_t, text));
        const auto copy = parsed(ModelFile::toText(model));
        ASSERT_NE(copy, nullptr);
        std::string name;
        EXPECT_EQ(copy->root()->getName(name), text);
        EXPECT_EQ(ModelFile::toText(*copy), ModelFile::toText(model));
    }
}

TEST(ModelFile, LinksMayPointForwards) {
    const auto model = parsed(R"({"format":"eda-model","version":1,"root":{"type":"Trace","id":9,"children":{
        "TraceSegments":[{"type":"Trace Segment","id":4,"links":{"Start Junction":3,"End Junction":5}}],
        "TraceJunctions":[{"type":"Trace Junction","id":3},{"type":"Trace Junction","id":5}]}}})");
    ASSERT_NE(model, nullptr);
    std::vector<Entity *> children;
    model->root()->getChildEntities(children);
    ASSERT_EQ(children.size(), 3u);
    EXPECT_EQ(getLinkedEntity(children[2], Start_Junction_t), children[0]);
    EXPECT_EQ(getLinkedEntity(children[2], End_Junction_t), children[1]);
}

TEST(ModelFile, NewIdsFollowTheGreatest) {
    const auto model = parsed(R"({"format":"eda-model","version":1,"root":{"type":"Chassis","id":41}})");
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(create(model->root(), "PCBs", "PCB")->getID().toString(), "42");
}

TEST(ModelFile, OrderOfValuesDoesNotMatterInAFile) {
    const auto model = parsed(R"({"version":1,"format":"eda-model","root":{"type":"PCB","locked":["Geometry"],
        "values":{"Depth":[2,"mm"],"Width":[1,"mm"],"Name":"x"},"id":3}})");
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(ModelFile::toText(*model),
              "{\"format\":\"eda-model\",\"version\":1,\"root\":\n"
              "{\"type\":\"PCB\",\"id\":3,\"values\":{\"Name\":\"x\",\"Width\":[1,\"mm\"],"
              "\"Depth\":[2,\"mm\"]},\"locked\":[\"Geometry\"]}}\n");
}

TEST(ModelFile, BareNumberIsInTheOwnUnit) {
    const auto model = parsed(R"({"format":"eda-model","version":1,"root":{"type":"PCB","id":1,
        "values":{"Width":3}}})");
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(textOf(model->root(), Width_t), "3 mm");
}

TEST(ModelFile, ByteOrderMarkAndBlanksArePassedOver) {
    EXPECT_NE(parsed("\xEF\xBB\xBF \r\n\t{\"format\":\"eda-model\",\"version\":1,"
                     "\"root\":{\"type\":\"PCB\",\"id\":1}} \r\n"),
              nullptr);
}

TEST(ModelFile, MembersOfCompositesKeepTheirLocks) {
    const SampleModel sample;
    sample["Material"]->findAttribute(Density_t / AttributePath(Value_t))->setLocked(true);
    const std::string text = sample.text();
    EXPECT_NE(text.find(R"("locked":[["Density","Value"]])"), std::string::npos);
    EXPECT_EQ(ModelFile::toText(*parsed(text)), text);
}

TEST(ModelFile, ElementsOfAttributeListsKeepValuesAndLocks) {
    const SampleModel sample;
    Entity *const conductor = sample["PCB Conductor"];
    auto *const list = static_cast<ListAttribute *>(conductor->findAttribute(Outline_Holes_t));
    list->resize(3);
    ASSERT_TRUE(set(conductor, "Hole 1", "1,2,3 <in>"));
    ASSERT_TRUE(set(conductor, "Hole 3", "4,5"));
    conductor->findAttribute("Hole 3")->setLocked(true);
    const std::string text = sample.text();
    EXPECT_NE(text.find(R"("Outline Holes":[[[1,2,3],"in"],[[],"mm"],[[4,5],"mm"]])"), std::string::npos)
        << text;
    EXPECT_NE(text.find(R"("locked":["Hole 3"])"), std::string::npos);
    const auto copy = parsed(text);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(ModelFile::toText(*copy), text);
}

TEST(ModelFile, SaveAndLoad) {
    const TemporaryFolder folder;
    const std::string file = folder.file("mod\xC3\xA8l.json");
    const SampleModel sample;
    fill(sample);
    std::string error;
    ASSERT_TRUE(ModelFile::save(sample.model, file, error)) << error;
    EXPECT_EQ(read(file), sample.text());
    const auto model = ModelFile::load(file, error);
    ASSERT_NE(model, nullptr) << error;
    EXPECT_EQ(ModelFile::toText(*model), sample.text());
    EXPECT_EQ(folder.count(), 1u);
}

TEST(ModelFile, LargeModelIsWrittenInBlocks) {
    const TemporaryFolder folder;
    Model model;
    UndoStackDisabler disabler;
    Entity *const pcb = create(create(model.root(), "Chassis", "Chassis"), "PCBs", "PCB");
    for (int i = 0; i < 20000; ++i)
        set(create(pcb, "Holes", "PCB Hole", "h"), "Width", std::to_string(i) + " mm");
    std::string error;
    ASSERT_TRUE(ModelFile::save(model, folder.file("m.json"), error)) << error;
    EXPECT_EQ(read(folder.file("m.json")), ModelFile::toText(model));
}

TEST(ModelFile, UnwritableTargetsAreReported) {
    const TemporaryFolder folder;
    const SampleModel sample;
    std::string error;
    EXPECT_FALSE(ModelFile::save(sample.model, folder.file("none/m.json"), error));
    EXPECT_NE(error.find("m.json: "), std::string::npos) << error;
    EXPECT_FALSE(ModelFile::save(sample.model, folder.file(""), error));
    EXPECT_NE(error, "");
    EXPECT_EQ(folder.count(), 0u);
}

TEST(ModelFile, DeepModelIsNotSavedAndTheOldFileStays) {
    const TemporaryFolder folder;
    Model model;
    UndoStackDisabler disabler;
    Entity *at =
        create(create(create(model.root(), "Chassis", "Chassis"), "PCBs", "PCB"), "Components", "Component");
    const auto deeper = [&at] {
        at = create(create(at, "SubcomponentGroups", "Subcomponent Group"), "Obstructions", "Substrate");
    };
    for (int i = 0; i < 40; ++i)
        deeper();
    std::string error;
    const std::string file = folder.file("m.json");
    ASSERT_TRUE(ModelFile::save(model, file, error)) << error;
    const std::string before = read(file);
    ASSERT_NE(ModelFile::load(file, error), nullptr) << error;
    deeper();
    EXPECT_FALSE(ModelFile::save(model, file, error));
    EXPECT_EQ(error, file + ": entities are nested more than 84 deep");
    EXPECT_EQ(read(file), before);
    EXPECT_EQ(folder.count(), 1u);
    EXPECT_EQ(ModelFile::parse(ModelFile::toText(model), "deep", error), nullptr);
    EXPECT_NE(error.find("nested more than 256 deep"), std::string::npos) << error;
}

TEST(ModelFile, MissingFileIsReported) {
    std::string error;
    EXPECT_EQ(ModelFile::load("no/such/file.json", error), nullptr);
    EXPECT_EQ(error.rfind("no/such/file.json: ", 0), 0u) << error;
}

TEST(ModelFile, LoadingLeavesUndoAlone) {
    const SampleModel sample;
    set(sample["PCB"], "Width", "7 mm");
    const std::string text = sample.text();
    const size_t steps = UndoStack::instance().numSteps();
    {
        const UndoStackOpener opener("Outer");
        std::string error;
        EXPECT_EQ(ModelFile::parse("{", "x", error), nullptr);
    }
    EXPECT_EQ(UndoStack::instance().numSteps(), steps);
    ASSERT_TRUE(UndoStack::instance().undo());
    ASSERT_TRUE(UndoStack::instance().redo());
    EXPECT_EQ(sample.text(), text);
}

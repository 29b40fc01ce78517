// Component libraries that are broken in part or as a whole.
#include "LibrarySupport.h"

#include "host/EntityCore/LibraryIndex.h"

using namespace TestSupport;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct Case {
    const char *name;
    const char *text;
    const char *message;
};

void PrintTo(const Case &given, std::ostream *out) { *out << given.name; }

struct BrokenIndex : testing::TestWithParam<Case> {};
struct BrokenRow : testing::TestWithParam<Case> {};

const auto caseName = [](const auto &given) { return std::string(given.param.name); };

} // namespace

TEST_P(BrokenIndex, GivesOneMessageAndNoRows) {
    LibraryFolder folder;
    folder.write("index.json", GetParam().text);
    folder.open();
    EXPECT_FALSE(folder.library->isUsable());
    EXPECT_EQ(folder.library->getNumRows(), 0u);
    EXPECT_THAT(folder.library->getMessages(),
                ElementsAre(folder.path() + "/index.json:" + GetParam().message));
    EXPECT_FALSE(folder.load("A"));
}

const Case indexCases[] = {
    {"NoJson", "hello", "1: Invalid value."},
    {"Empty", "", "1: The document is empty."},
    {"CutOff",
     "{\"format\":\"eda-library\",\"version\":1,\"rows\":[\n{\"key\":\"A\",\"mapping\":\"not mapped\"},",
     "2: Invalid value."},
    {"List", "[]", "1: an index is one JSON object"},
    {"OtherFormat", R"({"format":"eda-model"})", "1: the format is not \"eda-library\""},
    {"OtherVersion", R"({"format":"eda-library","version":2})",
     "1: this version can't be read; version 1 can"},
    {"VersionText", R"({"format":"eda-library","version":"1"})",
     "1: this version can't be read; version 1 can"},
    {"NoRows", R"({"format":"eda-library","version":1})", "1: the index has no \"rows\""},
    {"RowsFirst", R"({"rows":[]})", "1: \"format\" and \"version\" must stand before \"rows\""},
    {"RowsNoList", R"({"format":"eda-library","version":1,"rows":{}})", "1: \"rows\" must be a list"},
    {"UnknownKey", R"({"format":"eda-library","extra":1})", "1: unknown key \"extra\""},
    {"KeyTwice", R"({"format":"eda-library","format":"eda-library"})",
     "1: the key \"format\" is there twice"},
    {"MoreAfterEnd", R"({"format":"eda-library","version":1,"rows":[]} {})",
     "1: The document root must not be followed by other values."},
    {"NotUtf8", "{\"format\":\"\xff\"}", "1: the text is not UTF-8"},
};
INSTANTIATE_TEST_SUITE_P(LibraryErrors, BrokenIndex, testing::ValuesIn(indexCases), caseName);

TEST_P(BrokenRow, IsLeftOutWithItsLineAndTheOthersStand) {
    LibraryFolder folder;
    folder.write("good.json", gumComponent("x"));
    folder.index(std::string(R"({"key":"before","file":"good.json"},)") + "\n" + GetParam().text + ",\n" +
                 R"({"key":"behind","file":"good.json"})");
    folder.open();
    EXPECT_TRUE(folder.library->isUsable());
    EXPECT_EQ(folder.library->getNumRows(), 2u);
    EXPECT_TRUE(folder.load("before"));
    EXPECT_TRUE(folder.load("behind"));
    EXPECT_THAT(folder.library->getMessages(),
                ElementsAre(folder.path() + "/index.json:3: " + GetParam().message));
}

const Case rowCases[] = {
    {"Number", "7", "a row must be an object"},
    {"List", "[{\"key\":\"A\"}]", "a row must be an object"},
    {"NoKey", "{\"file\":\"good.json\"}", "the row has no key"},
    {"EmptyKey", R"({"key":"","file":"good.json"})", "the row has no key"},
    {"NoFile", R"({"key":"A"})", "\"A\" names no file"},
    {"NoFileApproximated", R"({"key":"A","mapping":"approximated"})", "\"A\" names no file"},
    {"KeyNumber", R"({"key":7,"file":"good.json"})", "\"key\" must be a text"},
    {"FileObject", R"({"key":"A","file":{"file":["good.json"]}})", "\"file\" must be a text"},
    {"FileNull", R"({"key":"A","file":null})", "\"file\" must be a text"},
    {"UnknownKey", R"({"key":"A","file":"good.json","note":[1,{}]})", "unknown key \"note\""},
    {"KeyTwice", R"({"key":"A","key":"B","file":"good.json"})", "the key \"key\" is there twice"},
    {"UnknownMapping", R"({"key":"A","file":"good.json","mapping":"Mapped"})",
     "unknown mapping \"Mapped\"; it is \"mapped\", \"approximated\", \"do not import\" or \"not mapped\""},
    {"SameKey", R"({"key":"before","file":"good.json"})",
     "the key \"before\" is there twice; the first row stands"},
    {"Above", R"({"key":"A","file":"../good.json"})", "the file \"../good.json\" leads out of the library"},
    {"AboveInside", R"({"key":"A","file":"a/../../good.json"})",
     "the file \"a/../../good.json\" leads out of the library"},
    {"Absolute", R"({"key":"A","file":"/etc/good.json"})",
     "the file \"/etc/good.json\" is not named from the library's folder"},
    {"Drive", R"({"key":"A","file":"C:good.json"})",
     "the file \"C:good.json\" has a \"\\\", a \":\" or a NUL in its name"},
    {"Backslash", R"({"key":"A","file":"..\\good.json"})",
     "the file \"..\\good.json\" has a \"\\\", a \":\" or a NUL in its name"},
    {"OutsideThoughNotMapped", R"({"key":"A","file":"../x","mapping":"not mapped"})",
     "the file \"../x\" leads out of the library"},
};
INSTANTIATE_TEST_SUITE_P(LibraryErrors, BrokenRow, testing::ValuesIn(rowCases), caseName);

TEST(LibraryErrors, AFolderThatDoesNotExistIsSaid) {
    const TempFolder folder;
    const FolderLibrary library(folder.path("none"));
    EXPECT_FALSE(library.isUsable());
    EXPECT_THAT(library.getMessages(), ElementsAre(folder.path("none") + ": folder does not exist"));
}

TEST(LibraryErrors, AFileInPlaceOfTheFolderIsSaid) {
    const TempFolder folder;
    const FolderLibrary library(folder.write("file", ""));
    EXPECT_FALSE(library.isUsable());
    EXPECT_THAT(library.getMessages(), ElementsAre(EndsWith("folder does not exist")));
}

TEST(LibraryErrors, AnEmptyFolderIsNoLibrary) {
    LibraryFolder folder;
    EXPECT_FALSE(folder.open().isUsable());
    EXPECT_THAT(folder.library->getMessages(),
                ElementsAre(folder.path() + ": holds neither \"index.json\" nor \"materials.json\""));
}

TEST(LibraryErrors, ABrokenIndexLeavesTheMaterials) {
    LibraryFolder folder;
    folder.write("index.json", "no");
    folder.write("materials.json", gumComponent("x"));
    EXPECT_TRUE(folder.open().isUsable());
    EXPECT_TRUE(folder.library->registerMaterials());
}

TEST(LibraryErrors, BrokenMaterialsLeaveTheComponents) {
    LibraryFolder folder;
    folder.write("good.json", gumComponent("x"));
    folder.index(R"({"key":"A","file":"good.json"})");
    folder.write("materials.json", "\n{");
    EXPECT_FALSE(folder.open().registerMaterials());
    EXPECT_THAT(folder.library->getMessages(),
                ElementsAre(folder.path() + "/materials.json:2: Missing a name for object member."));
    EXPECT_TRUE(folder.load("A"));
}

TEST(LibraryErrors, ABrokenItemCountsAsNotMapped) {
    LibraryFolder folder;
    folder.write("bad.json", "{\n\"format\":3}");
    folder.index(R"({"key":"A","item":"x","file":"bad.json"},{"key":"B","file":"bad.json"})");
    folder.open();
    EXPECT_THAT(folder.library->getMessages(), IsEmpty()) << "nothing was asked for";
    EXPECT_FALSE(folder.load("A"));
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
    std::string name, path;
    folder.library->getMapping(name, "A", path, folder.type);
    EXPECT_EQ(name, "x");
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
    EXPECT_FALSE(folder.load("A"));
    EXPECT_FALSE(folder.load("B"));
    EXPECT_THAT(folder.library->getMessages(), ElementsAre(folder.path() + "/index.json:2: " + folder.path() +
                                                           "/bad.json:2: the format is not \"eda-model\""))
        << "once a file";
}

TEST(LibraryErrors, AMissingItemFileIsSaid) {
    LibraryFolder folder;
    folder.index(R"({"key":"A","file":"none.json"})");
    folder.open();
    EXPECT_FALSE(folder.load("A"));
    EXPECT_THAT(folder.library->getMessages(), ElementsAre(EndsWith("/none.json: file does not exist")));
}

TEST(LibraryErrors, AFolderInPlaceOfAnItemFileIsSaid) {
    LibraryFolder folder;
    folder.index(R"({"key":"A","file":"."})");
    folder.open();
    EXPECT_FALSE(folder.load("A"));
    EXPECT_THAT(folder.library->getMessages(), ElementsAre(EndsWith("is a folder")));
}

#ifndef _WIN32
TEST(LibraryErrors, ALinkThatLeadsToItselfIsSaid) {
    LibraryFolder folder;
    std::filesystem::create_symlink("loop.json", folder.folder.path("loop.json"));
    folder.index(R"({"key":"A","file":"loop.json"})");
    folder.open();
    EXPECT_FALSE(folder.load("A"));
    EXPECT_EQ(folder.library->getMessages().size(), 1u);
}
#endif

TEST(LibraryErrors, AnItemThatIsNotInItsFileIsSaid) {
    LibraryFolder folder;
    folder.write("good.json", gumComponent("x"));
    folder.index(R"({"key":"A","item":"y","file":"good.json"},{"key":"B","item":"x","file":"good.json"})");
    folder.open();
    EXPECT_FALSE(folder.load("A"));
    EXPECT_TRUE(folder.load("B"));
    EXPECT_THAT(folder.library->getMessages(),
                ElementsAre(HasSubstr("good.json: there is no component \"y\" in it")));
}

TEST(LibraryErrors, AFileWithoutComponentsAndOneWithSeveralNeedANameInTheRow) {
    LibraryFolder folder;
    folder.write("none.json", modelFile(R"({"type":"Material","id":1})"));
    folder.write("two.json", modelFile(R"({"type":"PCB","id":1,"children":{"Resistors":[
        {"type":"Resistor","id":2,"values":{"Name":"a"}},{"type":"Resistor","id":3}]}})"));
    folder.index(R"({"key":"A","file":"none.json"},{"key":"B","file":"two.json"},
                    {"key":"C","item":"a","file":"two.json"})");
    folder.open();
    EXPECT_FALSE(folder.load("A"));
    EXPECT_FALSE(folder.load("B"));
    EXPECT_TRUE(folder.load("C"));
    EXPECT_THAT(folder.library->getMessages(),
                ElementsAre(HasSubstr("none.json: there is no component in it"),
                            HasSubstr("two.json: there are several components in it")));
}

TEST(LibraryErrors, AComponentInsideAnItemIsNoItem) {
    LibraryFolder folder;
    folder.write("socket.json", modelFile(R"({"type":"Chip Socket","id":1,"values":{"Name":"s"},"children":{
        "ComponentLink":{"type":"Component","id":2,"values":{"Name":"chip"}}}})"));
    folder.index(R"({"key":"A","file":"socket.json"},{"key":"B","item":"chip","file":"socket.json"})");
    folder.open();
    EXPECT_EQ(nameOf(folder.load("A").get()), "s");
    EXPECT_FALSE(folder.load("B"));
}

TEST(LibraryErrors, OnlyFilesOfTheIndexCanBeAskedForByPath) {
    LibraryFolder folder;
    folder.write("good.json", gumComponent("x"));
    folder.write("other.json", gumComponent("x"));
    folder.index(R"({"key":"A","file":"good.json"})");
    folder.open();
    LibraryInterface::Attributes none;
    EXPECT_EQ(folder.library->loadItem("x", "other.json", true, none, folder.type), nullptr);
    EXPECT_EQ(folder.library->loadItem("x", "../good.json", true, none, folder.type), nullptr);
    EXPECT_EQ(folder.library->loadItem("y", "good.json", true, none, folder.type), nullptr);
    EXPECT_EQ(folder.type, LibraryInterface::NotMapped);
}

TEST(LibraryErrors, MessagesAreKeptUpToALimitAndThenCounted) {
    std::string rows = "0";
    for (int i = 0; i < 2999; ++i)
        rows += ",0";
    LibraryFolder folder;
    folder.index(rows);
    folder.open();
    EXPECT_EQ(folder.library->getMessages().size(), LibraryManager::LibraryLimits::messages);
    EXPECT_EQ(folder.library->getNumFurtherMessages(), 2000u);
}

TEST(LibraryErrors, ValuesNestedTooDeeplyAreRefused) {
    LibraryFolder folder;
    folder.index("{\"key\":" + std::string(1'000'000, '['));
    folder.open();
    EXPECT_FALSE(folder.library->isUsable());
    EXPECT_THAT(folder.library->getMessages(), ElementsAre(HasSubstr(":2: nested more than 256 deep")));
}

TEST(LibraryErrors, AByteOrderMarkDoesNotMoveTheLines) {
    LibraryManager::LibraryIndex index;
    std::string error;
    ASSERT_TRUE(LibraryManager::LibraryIndex::parse(
        "\xEF\xBB\xBF{\"format\":\"eda-library\",\"version\":1,\"rows\":[\n7,\n8]}", "i", index, error));
    EXPECT_THAT(index.messages, ElementsAre("i:2: a row must be an object", "i:3: a row must be an object"));
}

TEST(LibraryErrors, AHundredThousandRowsAndPlacementsTakeMomentsOnly) {
    std::string rows;
    for (int i = 0; i < 100'000; ++i)
        rows +=
            (i ? ",\n" : "") + std::string("{\"key\":\"K") + std::to_string(i) + "\",\"file\":\"good.json\"}";
    LibraryFolder folder;
    folder.write("good.json", gumComponent("x"));
    folder.index(rows);
    folder.open();
    ASSERT_EQ(folder.library->getNumRows(), 100'000u);
    Project project;
    const UndoStackOpener step("Import");
    for (int i = 0; i < 100'000; ++i)
        ASSERT_TRUE(project.add(folder.load("K" + std::to_string(i))));
    EXPECT_EQ(project.materials().size(), 1u);
}

// The wrapper as a reader uses it: which file is taken for what, configurations, and the log.
#include "host/QvDbWrap/DbWrapper.h"

#include "host/FileSystem/OSPaths.h"
#include "host/QvDbWrap/Configuration.h"
#include "host/QvDbWrap/IpcDocumentSupport.h"
#include "host/QvDbWrap/LayoutSupport.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <system_error>

namespace {

using namespace LayoutTest;
using testing::HasSubstr;
using testing::StartsWith;

const std::string missing = "<missing>";

class DbWrapperTest : public testing::Test {
protected:
    // What the constructor throws; empty when it doesn't.
    std::string failureOf(const std::string &file, int mode = DbWrapper::Read) const {
        try {
            const DbWrapper wrapper(file, mode);
            return std::string();
        } catch (const std::runtime_error &error) {
            return error.what();
        }
    }
    std::string failureOfBytes(const std::string &name, const std::string &bytes) const {
        return failureOf(folder.write(name, bytes));
    }
    std::string configured(const std::string &design, const std::string &step,
                           const std::string &name = "a.cfg") {
        writeConfiguration({design, step}, folder.path(name));
        return folder.path(name);
    }

    TestSupport::TempFolder folder;
};

// Changes the working folder for one test.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::string &folder) : before_(FileSystem::OSPaths::getCurrentDirectory()) {
        FileSystem::OSPaths::setCurrentDirectory(folder);
    }
    ~WorkingFolder() { FileSystem::OSPaths::setCurrentDirectory(before_); }
    WorkingFolder(const WorkingFolder &) = delete;
    WorkingFolder &operator=(const WorkingFolder &) = delete;

private:
    std::string before_;
};

// Which file is taken for what.

TEST_F(DbWrapperTest, GivesTheRecordsOfALayout) {
    const DbWrapper wrapper(folder.write("a.qvd", smallBoard()), DbWrapper::Read);
    EXPECT_EQ(wrapper.GetOutlines().size(), 1u);
    EXPECT_EQ(wrapper.GetAllLayers().size(), 3u);
    EXPECT_EQ(wrapper.GetAllViaModels().size(), 1u);
    EXPECT_EQ(wrapper.GetAllVias().size(), 1u);
    EXPECT_EQ(wrapper.GetAllComponentModels().size(), 1u);
    EXPECT_EQ(wrapper.GetAllComponents().size(), 2u);
    EXPECT_EQ(wrapper.GetAllWirebonds().size(), 0u);
    EXPECT_EQ(wrapper.GetAllLayers()[0].name, "TOP");
    EXPECT_EQ(folder.numEntries(), 1u);
}

TEST_F(DbWrapperTest, ALayoutIsKnownByItsContentWhateverItsName) {
    for (const char *name : {"a.brd", "a.xml", "a.zip", "a"})
        EXPECT_EQ(failureOfBytes(name, smallBoard()), "") << name;
}

TEST_F(DbWrapperTest, ALayoutThatCannotBeReadIsToldWithTheLine) {
    EXPECT_EQ(failureOfBytes("a.qvd", "EDA-LAYOUT 1\nodd\n"), "line 2: there is no record of this kind");
}

TEST_F(DbWrapperTest, ALayoutOfAnotherFormIsRefused) {
    EXPECT_EQ(failureOfBytes("a.QVD", "\x01\x02\x03"),
              "this layout is not in the text form that can be read; only the suite opens it");
}

TEST_F(DbWrapperTest, ADocumentThatIsNoneIsRefusedEvenWithALayoutBesideIt) {
    folder.write("a.qvd", smallBoard());
    for (const char *name : {"a.xml", "a.cvg", "a.XML"}) {
        for (const char *bytes : {"", "no XML", "<?xml version=\"1.0\"?>\n<drawing/>\n"}) {
            EXPECT_EQ(failureOfBytes(name, bytes), "this is no IPC-2581 document: it is no XML, has a "
                                                   "document type, or its first element is another");
        }
    }
}

TEST_F(DbWrapperTest, WhatOnlyTheSuiteOpensIsToldPlainly) {
    for (const char *extension :
         {".brd", ".mcm", ".sip", ".zip", ".tgz", ".gz", ".z", ".tar", ".7z", ".Brd"}) {
        EXPECT_EQ(
            failureOfBytes(std::string("b") + extension, "\x01\x02"),
            std::string("only the layout suite opens a \"") + extension +
                "\" file; the layout \"b.qvd\" beside it would be read in its place, but there is none");
    }
    EXPECT_THAT(failureOfBytes("bare", "\x01\x02"),
                StartsWith("only the layout suite opens a file of this kind; "));
}

TEST_F(DbWrapperTest, TheLayoutBesideIsReadInItsPlaceAndTheLogTellsIt) {
    folder.write("b.qvd", smallBoard());
    const DbWrapper wrapper(folder.write("b.brd", "\x01\x02"), DbWrapper::Read);
    EXPECT_EQ(wrapper.GetAllComponents().size(), 2u);
    EXPECT_EQ(folder.read("b.qvd.log"), "Warning: only the layout suite opens \"b.brd\"; the layout "
                                        "\"b.qvd\" beside it is read in its place\n");
    EXPECT_EQ(folder.read("b.qvd"), smallBoard());
}

TEST_F(DbWrapperTest, ALayoutOfAnotherFormBesideIsNotTaken) {
    folder.write("b.qvd", "\x01\x02");
    EXPECT_EQ(
        failureOfBytes("b.brd", "\x01"),
        "only the layout suite opens a \".brd\" file; the layout \"b.qvd\" beside it would be read in its "
        "place, but it is not in the text form that can be read");
    EXPECT_EQ(folder.read("b.qvd"), "\x01\x02");
}

TEST_F(DbWrapperTest, ABrokenLayoutBesideIsToldWithItsName) {
    folder.write("b.qvd", "EDA-LAYOUT 1\nodd\n");
    EXPECT_EQ(failureOfBytes("b.brd", "\x01"), "\"b.qvd\": line 2: there is no record of this kind");
}

TEST_F(DbWrapperTest, WhatIsNoFileIsRefused) {
    EXPECT_EQ(failureOf(folder.path("none.brd")), "\"none.brd\": there is no such file");
    std::filesystem::create_directory(std::filesystem::u8path(folder.path("f.brd")));
    EXPECT_EQ(failureOf(folder.path("f.brd")), "\"f.brd\": is no regular file");
}

// Documents.

class DbWrapperDocuments : public DbWrapperTest {
protected:
    DbWrapperDocuments() { FileSystem::OSPaths::setEnvironment("USE_DFA_BOUND", ""); }
    ~DbWrapperDocuments() override { FileSystem::OSPaths::setEnvironment("USE_DFA_BOUND", ""); }

    // The x of the second point of the first package's body.
    double bodyWidth(const std::string &document) const {
        const DbWrapper wrapper(folder.write("p.xml", document), DbWrapper::Read);
        return wrapper.GetAllComponentModels().at(0).shape.points.at(1).x;
    }
};

std::string ring(double width) {
    return "<Polygon><PolyBegin x=\"0\" y=\"0\"/><PolyStepSegment x=\"" + std::to_string(width) +
           "\" y=\"0\"/><PolyStepSegment x=\"0\" y=\"2\"/><PolyStepSegment x=\"0\" y=\"0\"/></Polygon>";
}

TEST_F(DbWrapperDocuments, AreKnownByTheirContentWhateverTheirName) {
    for (const char *name : {"a.xml", "a.cvg", "a.brd", "a"}) {
        const DbWrapper wrapper(folder.write(name, IpcSupport::Text().text()), DbWrapper::Read);
        EXPECT_EQ(wrapper.GetAllLayers().size(), 3u) << name;
    }
}

TEST_F(DbWrapperDocuments, WhatIsSkippedIsInTheLog) {
    IpcSupport::Text text;
    text.step = "<Odd/><Odd/>";
    EXPECT_EQ(failureOfBytes("a.xml", text.text()), "");
    EXPECT_THAT(folder.read("a.qvd.log"), HasSubstr("Odd"));
    EXPECT_THAT(folder.read("a.qvd.log"), HasSubstr(" (2 times)\n"));
}

TEST_F(DbWrapperDocuments, WhatIsSkippedIsInTheLogAfterAFailureToo) {
    IpcSupport::Text text;
    text.step = "<Odd/>";
    EXPECT_THAT(failureOfBytes("a.xml", text.text().substr(0, text.text().size() - 10)), HasSubstr("line "));
    EXPECT_THAT(folder.read("a.qvd.log"), HasSubstr("Odd"));
}

TEST_F(DbWrapperDocuments, AConfigurationChoosesTheStep) {
    IpcSupport::Text text;
    text.otherSteps = "<Step name=\"other\"><Profile>" + ring(7) + "</Profile></Step>";
    const std::string design = folder.write("a.xml", text.text());
    const auto width = [&](const std::string &step) {
        const DbWrapper wrapper(configured(design, step), DbWrapper::Read);
        return wrapper.GetOutlines().at(0).elements.at(0).points.at(1).x;
    };
    EXPECT_NEAR(width(""), 0.1, 1e-12);
    EXPECT_NEAR(width("other"), 7e-3, 1e-12);
    EXPECT_THAT(failureOf(configured(design, "none")), HasSubstr("no step none"));
}

TEST_F(DbWrapperDocuments, TheEnvironmentChoosesCourtyardsWithOneAndNothingElse) {
    IpcSupport::Text text;
    text.step = "<Package name=\"P\" height=\"1\"><Outline>" + ring(4) + "</Outline><Courtyard>" + ring(6) +
                "</Courtyard></Package>";
    for (const char *value : {"", "0", "11"}) {
        FileSystem::OSPaths::setEnvironment("USE_DFA_BOUND", value);
        EXPECT_NEAR(bodyWidth(text.text()), 4e-3, 1e-12) << value;
    }
    FileSystem::OSPaths::setEnvironment("USE_DFA_BOUND", "1");
    EXPECT_NEAR(bodyWidth(text.text()), 6e-3, 1e-12);
}

// Configurations.

TEST_F(DbWrapperTest, AConfigurationNamesTheDesignAndTheStep) {
    const std::string design = folder.write("b.zip", "\x01");
    const WorkingFolder working(folder.path());
    DbWrapper wrapper("b.zip", DbWrapper::Configure);
    EXPECT_TRUE(wrapper.GetAllLayers().empty());
    std::string step = "main \"1\"";
    std::string file;
    wrapper.SetStepName(step);
    wrapper.GenerateCFGFile(file);
    EXPECT_EQ(file, folder.path("Board Bench.cfg"));
    EXPECT_EQ(folder.read("Board Bench.cfg"),
              "EDA-CONFIGURATION 1\ndesign \"" + design + "\"\nstep \"main \\\"1\\\"\"\n");
}

TEST_F(DbWrapperTest, AConfigurationStandsForItsDesign) {
    const std::string design = folder.write("b.zip", "\x01");
    folder.write("b.qvd", smallBoard());
    const DbWrapper wrapper(configured(design, "main"), DbWrapper::Read);
    EXPECT_EQ(wrapper.GetAllComponents().size(), 2u);
    EXPECT_THAT(folder.read("b.qvd.log"),
                HasSubstr("is read in its place, whatever the step \"main\" has\n"));
    EXPECT_EQ(folder.read("a.qvd.log"), missing);
}

TEST_F(DbWrapperTest, AConfigurationIsKnownByItsContentWhateverItsName) {
    const std::string design = folder.write("b.qvd", smallBoard());
    for (const char *name : {"c.xml", "c.zip", "c"})
        EXPECT_EQ(failureOf(configured(design, "", name)), "") << name;
}

TEST_F(DbWrapperTest, TheLogStandsInTheFolderOfTheConfiguration) {
    const TestSupport::TempFolder other;
    other.write("b.qvd", smallBoard());
    const std::string design = other.write("b.brd", "\x01");
    EXPECT_EQ(failureOf(configured(design, "")), "");
    EXPECT_THAT(folder.read("b.qvd.log"), StartsWith("Warning: "));
    EXPECT_EQ(other.numEntries(), 2u);
}

TEST_F(DbWrapperTest, ALayoutHasNoStep) {
    const std::string design = folder.write("b.qvd", smallBoard());
    EXPECT_EQ(failureOf(configured(design, "main")), "a layout has no steps, so there is no step \"main\"");
}

TEST_F(DbWrapperTest, ADesignThatIsGoneIsToldWithItsName) {
    EXPECT_EQ(failureOf(configured(folder.path("gone.zip"), "")), "\"gone.zip\": there is no such file");
}

TEST_F(DbWrapperTest, AConfigurationOfAConfigurationIsRefused) {
    const std::string first = configured(folder.path("b.cfg"), "", "a.cfg");
    configured(first, "", "b.cfg");
    EXPECT_EQ(failureOf(first), "the configuration names another configuration");
}

TEST_F(DbWrapperTest, ABrokenConfigurationIsToldWithTheLine) {
    const struct {
        const char *bytes;
        const char *failure;
    } cases[] = {
        {"EDA-CONFIGURATION 2\n", "line 1: the version is unknown"},
        {"EDA-CONFIGURATION one\n", "line 1: the version is no number: \"one\""},
        {"EDA-CONFIGURATION 1\n", "line 1: the file breaks off"},
        {"EDA-CONFIGURATION 1\nfile \"a\"\n", "line 2: the keyword is not design"},
        {"EDA-CONFIGURATION 1\ndesign a\n", "line 2: the text is not in double quotes: \"a\""},
        {"EDA-CONFIGURATION 1\ndesign \"a\" \"b\"\n",
         "line 2: there is more than the record takes: \"\"b\"\""},
        {"EDA-CONFIGURATION 1\ndesign \"a\"\nstep \"b\"\nstep \"c\"\n",
         "line 4: there is more behind the step"},
    };
    for (const auto &one : cases)
        EXPECT_EQ(failureOfBytes("c.cfg", one.bytes), one.failure) << one.bytes;
}

TEST_F(DbWrapperTest, AConfigurationFolderThatCannotBeWrittenIsToldWithTheName) {
    std::filesystem::create_directory(std::filesystem::u8path(folder.path("Board Bench.cfg")));
    const WorkingFolder working(folder.path());
    DbWrapper wrapper(folder.path("b.zip"), DbWrapper::Configure);
    std::string file;
    try {
        wrapper.GenerateCFGFile(file);
        FAIL();
    } catch (const std::runtime_error &error) {
        EXPECT_THAT(error.what(), StartsWith(folder.path("Board Bench.cfg") + ": "));
    }
}

// The log.

TEST_F(DbWrapperTest, AReadingRemovesTheLogOfAnEarlierOne) {
    folder.write("a.qvd.log", "Error: long ago\n");
    EXPECT_EQ(failureOfBytes("a.qvd", smallBoard()), "");
    EXPECT_EQ(folder.read("a.qvd.log"), missing);
}

TEST_F(DbWrapperTest, ALogThatCannotBeWrittenIsLostButNotTheDesign) {
    folder.write("b.qvd", smallBoard());
    std::filesystem::create_directory(std::filesystem::u8path(folder.path("b.qvd.log")));
    EXPECT_EQ(failureOfBytes("b.brd", "\x01"), "");
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::u8path(folder.path("b.qvd.log"))));
}

// Folders of designs come from anybody.
TEST_F(DbWrapperTest, TheLogIsNotWrittenThroughALink) {
    folder.write("b.qvd", smallBoard());
    const std::string precious = folder.write("precious", "keep me");
    std::error_code error;
    std::filesystem::create_symlink(std::filesystem::u8path(precious),
                                    std::filesystem::u8path(folder.path("b.qvd.log")), error);
    if (error) GTEST_SKIP() << "no links here";
    EXPECT_EQ(failureOfBytes("b.brd", "\x01"), "");
    EXPECT_EQ(folder.read("precious"), "keep me");
    EXPECT_THAT(folder.read("b.qvd.log"), StartsWith("Warning: "));
}

} // namespace

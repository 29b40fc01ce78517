// The checks of the suite, the environment and the working folder.
#include "VelkinBench.h"

#include "host/Profiling/TraceRecorder.h"

#include <new>
#include <stdexcept>

using namespace VelkinTest;
using FileSystem::OSPaths;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using VelkinSuite = VelkinBench;

const std::string noFolderSet = "Set the Quorvity Installation Folder in File Options.";

// Throws when the bar is told to finish, which is after the conversion.
class FailingProgress : public TestSupport::RecordingProgress {
public:
    void finish() override { throw std::runtime_error("no window"); }
};

std::string workingFolder() { return OSPaths::getCurrentDirectory(); }

} // namespace

TEST_F(VelkinSuite, ADesignIsOpenedOnceForReading) {
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(error(), "");
    EXPECT_THAT(script().calls, ElementsAre("open board.brd 0", "close"));
    EXPECT_THAT(script().files, ElementsAre(design("board.brd")));
}

TEST_F(VelkinSuite, NoFolderIsAFailure) {
    useSuite("");
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(), noFolderSet);
    EXPECT_THAT(script().calls, IsEmpty());
}

TEST_F(VelkinSuite, AMissingFolderIsAFailure) {
    useSuite(folder.path("none"));
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(), "The Quorvity Installation Folder specified in File Options does not exist: " +
                           folder.path("none") + "/");
}

TEST_F(VelkinSuite, AFolderWithoutTheProgramIsAFailureWhoseTextLacksANot) {
    useSuite(folder.path("designs"));
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(),
              "The Quorvity Installation Folder specified in File Options does contain QuorvitySuite.exe " +
                  folder.path("designs") + "/");
    std::filesystem::create_directory(folder.path("designs/QuorvitySuite.exe"));
    EXPECT_FALSE(readDesign("board.brd"));
}

TEST_F(VelkinSuite, AConvertedFileServesWithoutTheSuiteAndTheMessageStays) {
    useSuite("");
    write("board.qvd");
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(error(), noFolderSet);
    // It is the wrapper that knows the converted file.
    EXPECT_THAT(script().calls, ElementsAre("open board.brd 0", "close"));
    EXPECT_TRUE(isThere("board.qvd"));
}

TEST_F(VelkinSuite, AConvertedFileIsNotUsedForANewConversion) {
    useSuite("");
    write("board.qvd");
    EXPECT_FALSE(readDesign("board.brd", false, true));
    EXPECT_EQ(error(), noFolderSet);
    EXPECT_THAT(script().calls, IsEmpty());
    EXPECT_EQ(folder.read("designs/board.qvd"), "design");
}

TEST_F(VelkinSuite, ADesignThatLeadsToTheConvertedFileIsNotRemoved) {
    write("board.qvd");
    std::filesystem::create_symlink(design("board.qvd"), design("board.brd"));
    EXPECT_TRUE(readDesign("board.brd", true, true));
    EXPECT_EQ(folder.read("designs/board.qvd"), "design");
}

TEST_F(VelkinSuite, AFolderNamedAsTheConvertedFileIsNone) {
    useSuite("");
    std::filesystem::create_directory(design("board.qvd"));
    EXPECT_FALSE(readDesign("board.brd"));
}

TEST_F(VelkinSuite, IsNotNeededForItsOwnFiles) {
    useSuite("");
    for (const char *name : {"board.qvd", "board.QVD"}) {
        EXPECT_TRUE(readDesign(name, false, true));
        EXPECT_EQ(error(), "");
    }
}

TEST_F(VelkinSuite, ANewReadForgetsTheMessageOfTheLast) {
    useSuite("");
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_TRUE(reader->readFile(design("board.qvd")));
    EXPECT_EQ(error(), "");
}

TEST_F(VelkinSuite, ItsFileOfAnEarlierConversionIsRemovedBeforeAndAfterANewOne) {
    write("board.qvd", "old");
    bool wasThere = true;
    script().onOpen = [&](const std::string &, int) {
        wasThere = isThere("board.qvd");
        write("board.qvd", "new");
    };
    EXPECT_TRUE(readDesign("board.brd", false, true));
    EXPECT_FALSE(wasThere);
    EXPECT_FALSE(isThere("board.qvd"));
}

TEST_F(VelkinSuite, ItsFileStaysWithoutANewConversion) {
    write("board.qvd", "old");
    EXPECT_TRUE(readDesign("board.brd", true, false));
    EXPECT_TRUE(isThere("board.qvd"));
}

TEST_F(VelkinSuite, AnOpenedFileOfItsOwnIsNeverRemoved) {
    write("board.qvd");
    write("board_tmp.qvd");
    EXPECT_TRUE(readDesign("board.qvd", true, true));
    EXPECT_TRUE(isThere("board.qvd"));
    EXPECT_FALSE(isThere("board_tmp.qvd"));
}

TEST_F(VelkinSuite, ItsFileIsRemovedAlsoAfterAFailure) {
    script().onOpen = [&](const std::string &, int) {
        write("board.qvd", "half");
        throw std::runtime_error("broken");
    };
    EXPECT_FALSE(readDesign("board.brd", false, true));
    EXPECT_FALSE(isThere("board.qvd"));
}

TEST_F(VelkinSuite, TheWrapperLearnsItsFolderFromTheEnvironment) {
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(script().suitePath, folder.path("suite") + "/");
    EXPECT_EQ(qgetenv("QVPATH").toStdString(), folder.path("suite") + "/");
}

TEST_F(VelkinSuite, WithoutAFolderTheEnvironmentKeepsItsPath) {
    qputenv("QVPATH", "elsewhere");
    useSuite("");
    EXPECT_TRUE(readDesign("board.qvd"));
    EXPECT_EQ(script().suitePath, "elsewhere");
}

TEST_F(VelkinSuite, TheFolderMayHaveAnyCharacters) {
    const std::string name = folder.path("s\xC3\xBCite \xE2\x82\xAC");
    std::filesystem::create_directory(std::filesystem::u8path(name));
    useSuite(name);
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(qgetenv("QVPATH").toStdString(), name + "/");
}

TEST_F(VelkinSuite, PlacementBoundsAreUsedWhereTheUserPrefersThem) {
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(script().placementBounds, "");
    using namespace EntityModel;
    Attribute *const type =
        UserPreference::instance().getPreferences()->findAttribute(Component_Outline_Type_t, false);
    ASSERT_NE(type, nullptr);
    ASSERT_TRUE(type->setFromString("DFA Bound"));
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(script().placementBounds, "1");
    ASSERT_TRUE(type->setFromString("Body Outline"));
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(script().placementBounds, "");
}

TEST_F(VelkinSuite, TheEnvironmentIsSetAlsoForAReadThatFails) {
    qputenv("USE_DFA_BOUND", "1");
    useSuite(folder.path("designs"));
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(qgetenv("QVPATH").toStdString(), folder.path("designs") + "/");
    EXPECT_EQ(qgetenv("USE_DFA_BOUND"), QByteArray());
}

TEST_F(VelkinSuite, TheWrapperRunsInTheFolderOfTheDesign) {
    const std::string before = workingFolder();
    EXPECT_TRUE(readDesign("board.brd"));
    ASSERT_EQ(script().workingFolders.size(), 1u);
    EXPECT_TRUE(std::filesystem::equivalent(script().workingFolders[0], folder.path("designs")));
    EXPECT_EQ(workingFolder(), before);
}

TEST_F(VelkinSuite, ARelativeNameStaysGoodInTheFolderOfTheDesign) {
    write("board.brd");
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path()));
    bool found = false;
    script().onOpen = [&](const std::string &file, int) { found = std::filesystem::exists(file); };
    EXPECT_TRUE(read("designs/board.brd"));
    EXPECT_TRUE(found);
    std::string source, library;
    board().getSourceFilename(source, library);
    EXPECT_EQ(source, "designs/board.brd");
}

TEST_F(VelkinSuite, ANameWithoutAFolderIsInTheWorkingFolder) {
    write("board.brd");
    write("board.qvd.log", "Error: bad\n");
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("designs")));
    EXPECT_FALSE(read("board.brd", true));
    EXPECT_EQ(error(), "Error: bad\n");
    EXPECT_FALSE(isThere("board.qvd.log"));
    EXPECT_TRUE(std::filesystem::equivalent(workingFolder(), folder.path("designs")));
}

TEST_F(VelkinSuite, NoNameAtAllIsHandledByTheWrapper) {
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("designs")));
    script().onOpen = [](const std::string &, int) { throw std::runtime_error("no such file. "); };
    EXPECT_FALSE(read("", true, true));
    EXPECT_EQ(error(), "no such file. No data read from the file.");
}

TEST_F(VelkinSuite, AFolderThatCannotBeEnteredIsAFailureOfTheRead) {
    const std::string before = workingFolder();
    EXPECT_FALSE(read(folder.path("none/board.brd"), true));
    EXPECT_THAT(script().calls, IsEmpty());
    EXPECT_THAT(error(), HasSubstr("none"));
    EXPECT_THAT(error(), testing::EndsWith("No data read from the file."));
    EXPECT_EQ(workingFolder(), before);
}

TEST_F(VelkinSuite, WhereTheFolderWasNotEnteredNothingIsTidiedInTheCallersFolder) {
    std::filesystem::create_directories(folder.path("mine/stepFacetFiles4Map"));
    folder.write("mine/dsuprev.log", "Error: mine");
    folder.write("mine/Run.Log", "");
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("mine")));
    EXPECT_FALSE(read(folder.path("none/board.brd"), true));
    EXPECT_TRUE(std::filesystem::exists(folder.path("mine/stepFacetFiles4Map")));
    EXPECT_TRUE(std::filesystem::exists(folder.path("mine/dsuprev.log")));
    EXPECT_TRUE(std::filesystem::exists(folder.path("mine/Run.Log")));
    EXPECT_THAT(error(), testing::Not(HasSubstr("mine")));
}

TEST_F(VelkinSuite, AnExceptionOfTheWrapperEndsInTheMessage) {
    const std::string before = workingFolder();
    script().onOpen = [](const std::string &, int) { throw std::runtime_error("no licence"); };
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(), "no licenceNo data read from the file.");
    EXPECT_EQ(workingFolder(), before);
}

TEST_F(VelkinSuite, WhatIsNoExceptionIsUnknown) {
    const std::string before = workingFolder();
    script().onOpen = [](const std::string &, int) { throw 42; };
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(), "Unknown exception.No data read from the file.");
    EXPECT_EQ(workingFolder(), before);
}

TEST_F(VelkinSuite, AnExceptionFollowsTheMessageOfTheCheck) {
    useSuite("");
    write("board.qvd");
    script().onOpen = [](const std::string &, int) { throw std::runtime_error(" no licence. "); };
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(), noFolderSet + " no licence. No data read from the file.");
}

TEST_F(VelkinSuite, TheFolderIsRestoredWhenTheWrapperChangesIt) {
    const std::string before = workingFolder();
    std::filesystem::create_directory(folder.path("away"));
    script().onOpen = [&](const std::string &, int) { OSPaths::setCurrentDirectory(folder.path("away")); };
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(workingFolder(), before);
    script().onOpen = [&](const std::string &, int) {
        OSPaths::setCurrentDirectory(folder.path("away"));
        throw 'x';
    };
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(workingFolder(), before);
}

TEST_F(VelkinSuite, AFolderThatIsGoneAfterwardsIsThrown) {
    std::filesystem::create_directory(folder.path("gone"));
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("gone")));
    script().onOpen = [&](const std::string &, int) { std::filesystem::remove(folder.path("gone")); };
    EXPECT_THROW(readDesign("board.brd"), std::filesystem::filesystem_error);
    EXPECT_EQ(board().getOutline().numPoints(), 4u);
}

TEST_F(VelkinSuite, AFolderThatIsGoneBeforeIsAFailureOfTheRead) {
    std::filesystem::create_directory(folder.path("gone"));
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("gone")));
    std::filesystem::remove(folder.path("gone"));
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_THAT(script().calls, IsEmpty());
    EXPECT_THAT(error(), testing::EndsWith("No data read from the file."));
}

TEST_F(VelkinSuite, AnExceptionBehindTheConversionPassesWithTheFolderRestored) {
    FailingProgress failing;
    progress = &failing;
    const std::string before = workingFolder();
    EXPECT_THROW(readDesign("board.brd"), std::runtime_error);
    EXPECT_EQ(workingFolder(), before);
    EXPECT_THAT(script().calls, ElementsAre("open board.brd 0", "close"));
}

TEST_F(VelkinSuite, AnExceptionBehindTheConversionIsNotReplacedByThatOfTheFolder) {
    FailingProgress failing;
    progress = &failing;
    std::filesystem::create_directory(folder.path("gone"));
    ASSERT_TRUE(OSPaths::setCurrentDirectory(folder.path("gone")));
    script().onOpen = [&](const std::string &, int) { std::filesystem::remove(folder.path("gone")); };
    try {
        readDesign("board.brd");
        FAIL();
    } catch (const std::exception &problem) {
        EXPECT_STREQ(problem.what(), "no window");
    }
}

TEST_F(VelkinSuite, ProgressIsToldInFiveStages) {
    TestSupport::RecordingProgress bar;
    progress = &bar;
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_THAT(bar.texts,
                ElementsAre("Parsing file (board.brd)...", "Extracting Outlines", "Extracting Layers",
                            "Extracting Vias", "Extracting Components", "Extracting Wirebonds"));
    EXPECT_THAT(bar.indeterminates, ElementsAre(false));
    EXPECT_THAT(bar.maxima, ElementsAre(5));
    EXPECT_THAT(bar.values, ElementsAre(1, 2, 3, 4, 6));
    EXPECT_EQ(bar.finishes, 1);
}

TEST_F(VelkinSuite, ProgressIsFinishedAlsoAfterAnException) {
    TestSupport::RecordingProgress bar;
    progress = &bar;
    script().onOpen = [](const std::string &, int) { throw std::bad_alloc(); };
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_THAT(bar.texts, ElementsAre("Parsing file (board.brd)..."));
    EXPECT_THAT(bar.values, ElementsAre(2));
    EXPECT_EQ(bar.finishes, 1);
}

TEST_F(VelkinSuite, AFailedCheckShowsNoProgress) {
    TestSupport::RecordingProgress bar;
    progress = &bar;
    useSuite("");
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_THAT(bar.texts, IsEmpty());
    EXPECT_EQ(bar.finishes, 0);
}

TEST_F(VelkinSuite, EachPartOfAReadIsASectionOfTheProfile) {
    Profiling::TraceRecorder recorder;
    recorder.start();
    EXPECT_TRUE(readDesign("board.brd"));
    recorder.stop();
    std::vector<std::string> names;
    for (const Profiling::TraceSection &section : recorder.sections()) {
        names.push_back(section.name);
        EXPECT_EQ(section.file, "VelkinEDAReader");
        EXPECT_EQ(section.function, "EDA::VelkinEDAReader::readFile");
    }
    EXPECT_THAT(names, ElementsAre("EDAChooseStep", "EDAConstructWrapper", "EDAConvertBoardOutlines",
                                   "EDACleanupBoardOutlines", "EDAConvertBoardLayers", "EDAConvertBoardVias",
                                   "EDAConvertBoardComponents", "EDAConvertBoardWirebonds", "EDATidyLogFiles",
                                   "ReadEDAFile"));
}

TEST_F(VelkinSuite, SectionsOfTheProfileEndAlsoWithAnException) {
    Profiling::TraceRecorder recorder;
    recorder.start();
    script().onOpen = [](const std::string &, int) { throw 1; };
    EXPECT_FALSE(readDesign("board.brd"));
    recorder.stop();
    std::vector<std::string> names;
    for (const Profiling::TraceSection &section : recorder.sections())
        names.push_back(section.name);
    EXPECT_THAT(names, ElementsAre("EDAChooseStep", "EDAConstructWrapper", "EDATidyLogFiles", "ReadEDAFile"));
}

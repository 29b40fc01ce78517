// What is removed behind the suite, and what is not.
#include "VelkinBench.h"

#include <stdexcept>

using namespace VelkinTest;

namespace {

class VelkinTidying : public VelkinBench {
protected:
    void writeAll(const std::vector<std::string> &names) const {
        for (const std::string &name : names)
            write(name);
    }
    void expectAll(const std::vector<std::string> &names, bool there) const {
        for (const std::string &name : names)
            EXPECT_EQ(isThere(name), there) << name;
    }

    const std::vector<std::string> junk = {"ToQVD.tcl",
                                           "board_3dStp.xml",
                                           "board_test.log",
                                           "Run.Log",
                                           "Board Bench.cfg",
                                           "myeasylog.log",
                                           "a.stp.sab",
                                           "a b.stp.asab",
                                           "a.step.sab",
                                           "a.step.asab",
                                           "Velkin2D.jrl",
                                           "Velkin2D.jrl.1",
                                           "QuorvitySuiteCon.jrl",
                                           "QuorvitySuiteCon.jrl~"};
};

} // namespace

TEST_F(VelkinTidying, SideFilesStayUnlessJunkIsDeleted) {
    writeAll(junk);
    std::filesystem::create_directory(design("stepFacetFiles4Map"));
    EXPECT_TRUE(readDesign("board.brd"));
    expectAll(junk, true);
    EXPECT_TRUE(isThere("stepFacetFiles4Map"));
    EXPECT_TRUE(readDesign("board.brd", true));
    expectAll(junk, false);
    EXPECT_FALSE(isThere("stepFacetFiles4Map"));
}

TEST_F(VelkinTidying, SideFilesGoAlsoAfterAFailure) {
    writeAll(junk);
    script().onOpen = [](const std::string &, int) { throw std::runtime_error("broken"); };
    EXPECT_FALSE(readDesign("board.brd", true));
    expectAll(junk, false);
}

TEST_F(VelkinTidying, NothingGoesWhenTheSuitesCheckFails) {
    writeAll(junk);
    useSuite("");
    EXPECT_FALSE(readDesign("board.brd", true));
    expectAll(junk, true);
}

TEST_F(VelkinTidying, OtherFilesStay) {
    const std::vector<std::string> others = {
        "board.brd",     "board.xml",     "board.qvd",       "toqvd.tcl",       "run.log",
        "a.stp",         "a.sab",         "stp.sab",         ".stp.sab",        ".a.step.sab",
        "a.stp.sab.bak", "xVelkin2D.jrl", "other_3dStp.xml", "Board Bench.cfg2"};
    writeAll(others);
    EXPECT_TRUE(readDesign("board.brd", true));
    expectAll(others, true);
}

TEST_F(VelkinTidying, FoldersOfTheNamesOfFilesStay) {
    const std::vector<std::string> folders = {"ToQVD.tcl", "Run.Log", "a.stp.sab", "Velkin2D.jrl"};
    for (const std::string &name : folders)
        std::filesystem::create_directory(design(name));
    EXPECT_TRUE(readDesign("board.brd", true));
    expectAll(folders, true);
}

TEST_F(VelkinTidying, TheFacetsGoWithAllTheirContent) {
    std::filesystem::create_directories(design("stepFacetFiles4Map/a/b"));
    write("stepFacetFiles4Map/a/b/c");
    EXPECT_TRUE(readDesign("board.brd", true));
    EXPECT_FALSE(isThere("stepFacetFiles4Map"));
}

TEST_F(VelkinTidying, LinksAreRemovedAndNeverFollowed) {
    namespace fs = std::filesystem;
    fs::create_directory(folder.path("precious"));
    folder.write("precious/file", "keep");
    fs::create_directory(design("stepFacetFiles4Map"));
    fs::create_directory_symlink(folder.path("precious"), design("stepFacetFiles4Map/link"));
    fs::create_symlink(folder.path("precious/file"), design("stepFacetFiles4Map/file"));
    fs::create_symlink(folder.path("precious/file"), design("Run.Log"));
    fs::create_symlink(folder.path("precious/file"), design("board.log"));
    EXPECT_TRUE(readDesign("board.brd", true));
    EXPECT_FALSE(isThere("stepFacetFiles4Map"));
    EXPECT_FALSE(isThere("Run.Log"));
    EXPECT_FALSE(isThere("board.log"));
    EXPECT_EQ(folder.read("precious/file"), "keep");
}

TEST_F(VelkinTidying, ALinkInThePlaceOfTheFacetsIsNotFollowed) {
    namespace fs = std::filesystem;
    fs::create_directory(folder.path("precious"));
    folder.write("precious/file", "keep");
    fs::create_directory_symlink(folder.path("precious"), design("stepFacetFiles4Map"));
    EXPECT_TRUE(readDesign("board.brd", true));
    EXPECT_EQ(folder.read("precious/file"), "keep");
}

TEST_F(VelkinTidying, ADesignOfTheNameOfASideFileStays) {
    write("Board Bench.cfg");
    EXPECT_TRUE(readDesign("Board Bench.cfg", true, true));
    EXPECT_TRUE(isThere("Board Bench.cfg"));
    write("part.stp.sab");
    EXPECT_TRUE(readDesign("part.stp.sab", true, true));
    EXPECT_TRUE(isThere("part.stp.sab"));
}

// What the suite's logs say, and where they are.
#include "VelkinBench.h"

#include <stdexcept>

#ifndef _WIN32
#include <sys/stat.h>
#endif

using namespace VelkinTest;
using testing::HasSubstr;

namespace {

class VelkinLogs : public VelkinBench {
protected:
    // Reads a good design beside a log of this content.
    bool readWithLog(const std::string &content, const std::string &name = "board.log") {
        write(name, content);
        return readDesign("board.brd");
    }

    // What the logs say, which a read without data tells.
    std::string logText() {
        script().layout = {};
        EXPECT_FALSE(reader->readFile(design("board.brd")));
        return error();
    }

    void noData() { script().layout = {}; }
};

struct Place {
    const char *name;
    bool asWarnings = false;
};

const Place places[] = {{"ToQVD.log"},
                        {"ToQVD_1 x.log"},
                        {"board_CheckingErrorsWarnings.log", true},
                        {"board.qvdif.log"},
                        {"board.qvd.log"},
                        {"board_VelkinLayout.err"},
                        {"board_qvdif_error.log"},
                        {"board.log"},
                        {"error.log"},
                        {"Untitled_CheckingErrorsWarnings.log"},
                        {"dsuprev.log"}};

} // namespace

TEST_F(VelkinLogs, ErrorsFailTheReadWhereverTheyAre) {
    for (const Place &place : places) {
        if (place.asWarnings) continue;
        EXPECT_FALSE(readWithLog("Error: bad\n", place.name)) << place.name;
        EXPECT_EQ(error(), "Error: bad\n") << place.name;
        EXPECT_EQ(warnings(), "") << place.name;
        std::filesystem::remove(design(place.name));
    }
}

TEST_F(VelkinLogs, ErrorsOfTheDesignsCheckAreWarnings) {
    EXPECT_TRUE(readWithLog("Error: bad\n", "board_CheckingErrorsWarnings.log"));
    EXPECT_EQ(error(), "");
    EXPECT_EQ(warnings(), "Error: bad\n");
}

TEST_F(VelkinLogs, WarningsAreKeptWhereverTheyAre) {
    for (const Place &place : places) {
        EXPECT_TRUE(readWithLog("Warning: odd\n", place.name)) << place.name;
        EXPECT_EQ(error(), "") << place.name;
        EXPECT_EQ(warnings(), "Warning: odd\n") << place.name;
        std::filesystem::remove(design(place.name));
    }
}

TEST_F(VelkinLogs, AreReadInAFixedOrder) {
    std::string expected;
    for (const Place &place : places) {
        write(place.name, std::string("Warning: ") + place.name + "\n");
        expected += std::string("Warning: ") + place.name + "\n";
    }
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(warnings(), expected);
}

TEST_F(VelkinLogs, OfOtherNamesAreNotRead) {
    for (const char *name : {".ToQVD.log", "ToQVD.log.txt", "toqvd.log", "xToQVD.log", "other.log",
                             "board2.log", "board.err", "Error.log"})
        write(name, "Error: bad\n");
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(error(), "");
}

TEST_F(VelkinLogs, AreFoundInTheFolderThatTheWrapperLeft) {
    std::filesystem::create_directory(folder.path("away"));
    folder.write("away/dsuprev.log", "Warning: away\n");
    write("dsuprev.log", "Warning: here\n");
    script().onOpen = [&](const std::string &, int) {
        FileSystem::OSPaths::setCurrentDirectory(folder.path("away"));
    };
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(warnings(), "Warning: away\n");
}

TEST_F(VelkinLogs, SeveralWordsMakeAWarning) {
    EXPECT_TRUE(readWithLog("a Warning: b\nCannot open File x\nCannot find y\nfailed to find z\n"
                            "The encoding type q\nall is well\nwarning: w\nWarning\ncannot find v\n"));
    EXPECT_EQ(warnings(),
              "a Warning: b\nCannot open File x\nCannot find y\nfailed to find z\nThe encoding type q\n");
}

TEST_F(VelkinLogs, WordsAreMatchedWithTheirCase) {
    EXPECT_TRUE(readWithLog("error: x\nERROR: y\nError z\n"));
    EXPECT_EQ(warnings(), "");
    EXPECT_EQ(logText(), "error: x\nERROR: y\nError z\nerror: x\nERROR: y\nError z\n");
}

TEST_F(VelkinLogs, AMessageOnResistancesIsNoWarning) {
    const std::string line = "Warning: The value of resistance specified is 0\n";
    EXPECT_TRUE(readWithLog(line));
    EXPECT_EQ(warnings(), "");
    EXPECT_EQ(logText(), line + line);
}

TEST_F(VelkinLogs, ALineOfBothKindsIsAnError) {
    EXPECT_FALSE(readWithLog("Warning: but Error: too\nError: The value of resistance specified\n"));
    EXPECT_EQ(error(), "Warning: but Error: too\nError: The value of resistance specified\n");
    EXPECT_EQ(warnings(), "");
}

TEST_F(VelkinLogs, ErrorsAreKeptBetweenReads) {
    EXPECT_FALSE(readWithLog("Error: bad\n"));
    std::filesystem::remove(design("board.log"));
    EXPECT_FALSE(reader->readFile(design("board.brd")));
    EXPECT_EQ(error(), "Error: bad\n");
}

TEST_F(VelkinLogs, LeftByAnEarlierRunCountAgain) {
    EXPECT_TRUE(readWithLog("Warning: odd\n"));
    EXPECT_TRUE(reader->readFile(design("board.brd")));
    EXPECT_EQ(warnings(), "Warning: odd\nWarning: odd\n");
}

TEST_F(VelkinLogs, AreToldInFullWhenThereIsNoData) {
    noData();
    EXPECT_FALSE(readWithLog("line 1\nError: bad\nWarning: odd"));
    EXPECT_EQ(error(), "line 1\nError: bad\nWarning: odd\n");
    EXPECT_EQ(warnings(), "Warning: odd\n");
}

TEST_F(VelkinLogs, AreReadAlsoAfterAnException) {
    script().onOpen = [&](const std::string &, int) {
        write("board.log", "Error: bad\n");
        throw std::runtime_error("thrown. ");
    };
    EXPECT_FALSE(readDesign("board.brd"));
    EXPECT_EQ(error(), "thrown. Error: bad\n");
}

TEST_F(VelkinLogs, ErrorsFollowTheMessageOfTheSuitesCheck) {
    useSuite("");
    write("board.qvd");
    EXPECT_FALSE(readWithLog("Error: bad\n"));
    EXPECT_EQ(error(), "Set the Quorvity Installation Folder in File Options.Error: bad\n");
}

TEST_F(VelkinLogs, LinesMayEndInAnyWay) {
    EXPECT_TRUE(readWithLog("Warning: a\r\nWarning: b\n\n\r\nWarning: c\rd\nWarning: e"));
    EXPECT_EQ(warnings(), "Warning: a\nWarning: b\nWarning: c\rd\nWarning: e\n");
    EXPECT_THAT(logText(), testing::StartsWith("Warning: a\nWarning: b\n\n\nWarning: c\rd\nWarning: e\n"));
}

TEST_F(VelkinLogs, MayHoldAnyBytes) {
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    EXPECT_FALSE(readWithLog(bytes + std::string("\0Error:\0\xFF\n", 10) + "Warning: \xC3\n"));
    EXPECT_EQ(error().size(), std::string(bytes.begin() + 11, bytes.end()).size() + 10);
    EXPECT_EQ(warnings(), "Warning: \xC3\n");
}

TEST_F(VelkinLogs, MayBeEmpty) {
    noData();
    EXPECT_FALSE(readWithLog(""));
    EXPECT_EQ(error(), "No data read from the file.");
}

TEST_F(VelkinLogs, MayHaveALongLine) {
    const std::string line = "Warning: " + std::string(5000000, 'x') + "\n";
    EXPECT_TRUE(readWithLog(line));
    EXPECT_EQ(warnings(), line);
}

TEST_F(VelkinLogs, AFolderOfALogsNameIsNone) {
    std::filesystem::create_directory(design("board.log"));
    std::filesystem::create_directory(design("ToQVD.log"));
    EXPECT_TRUE(readDesign("board.brd", true));
    EXPECT_TRUE(isThere("board.log"));
    EXPECT_EQ(warnings(), "");
}

#ifndef _WIN32
TEST_F(VelkinLogs, WhatCannotBeReadIsAWarningAndNeverWaitedFor) {
    ASSERT_EQ(mkfifo(design("board.log").c_str(), 0600), 0);
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_EQ(warnings(), design("board.log") + ": is not a regular file\n");
}
#endif

TEST_F(VelkinLogs, AGiganticOneIsAWarning) {
    write("board.log");
    std::filesystem::resize_file(design("board.log"), std::uintmax_t{1} << 40);
    EXPECT_TRUE(readDesign("board.brd"));
    EXPECT_THAT(warnings(), HasSubstr("larger than the limit"));
}

TEST_F(VelkinLogs, StayWhereTheyAreUnlessJunkIsDeleted) {
    for (const Place &place : places)
        write(place.name, "all is well\n");
    EXPECT_TRUE(readDesign("board.brd"));
    for (const Place &place : places)
        EXPECT_TRUE(isThere(place.name)) << place.name;
    EXPECT_TRUE(readDesign("board.brd", true));
    for (const Place &place : places)
        EXPECT_FALSE(isThere(place.name)) << place.name;
}

TEST_F(VelkinLogs, AreReadBeforeTheyAreDeleted) {
    write("board.log", "Error: bad\n");
    EXPECT_FALSE(readDesign("board.brd", true));
    EXPECT_EQ(error(), "Error: bad\n");
    EXPECT_FALSE(isThere("board.log"));
}

TEST_F(VelkinLogs, ADesignOfALogsNameIsNeitherReadNorDeletedAsOne) {
    write("error.log", "Error: part of the design\n");
    EXPECT_TRUE(readDesign("error.log", true));
    EXPECT_TRUE(isThere("error.log"));
}

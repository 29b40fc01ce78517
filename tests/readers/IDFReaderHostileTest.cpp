// Files that are wrong in every way: a result or a message, nothing else.
#include "readers/IDFTestSupport.h"

#include "host/FileSystem/File.h"

#include <cmath>
#include <filesystem>
#include <random>
#include <set>

namespace {

struct BadFile {
    const char *name;
    bool isRead;
    const char *message;
};

void PrintTo(const BadFile &file, std::ostream *stream) { *stream << file.name; }

const BadFile badFiles[] = {
    // clang-format off
    {"empty", false, ""},
    {"one-byte", false, "Missing IDF file header!"},
    {"one-nul", false, "Missing IDF file header!"},
    {"blank-lines", false, ""},
    {"comments-only", false, ""},
    {"all-bytes", false, "Missing IDF file header!"},
    {"utf16le", true, ""},
    {"utf16be", true, ""},
    {"bom-crlf", true, ""},
    {"cr-only", true, ""},
    {"latin1", true, ""},
    {"nul-in-token", true, ""},
    {"header-only", true, ""},
    {"header-record2-short", false, "IDF Header record 2 has incorrect number of entries: <BOARD_FILE>"},
    {"header-record2-missing", false, "IDF Header record 2 has incorrect number of entries: <.END_HEADER>"},
    {"header-record3-missing", true, ""},
    {"header-record3-long", false, "IDF Board file Header record 3 has incorrect number of entries: <a b c>"},
    {"header-unended", true, ""},
    {"header-unended-often", true, ""},
    {"version-huge", true, ""},
    {"version-negative", true, ""},
    {"no-header", false, "Missing IDF file header!"},
    {"idf4", false, "Missing IDF file header!"},
    {"binary-magic", false, "Missing IDF file header!"},
    {"outline-bare", true, ""},
    {"outline-end-first", false, "IDF Component Keepout record 2 has incorrect number of entries: <TOP>"},
    {"outline-record2-long", false, "IDF Board Outline record 2 has incorrect number of entries: <1 2 3>"},
    {"outline-unended", true, ""},
    {"outline-indices", true, ""},
    {"outline-numbers", true, ""},
    {"outline-arcs", true, ""},
    {"outline-one-point-loops", true, ""},
    {"outline-sections-often", true, ""},
    {"component-bare", true, ""},
    {"component-end-first", false, "IDF Component Outline record 2 has incorrect number of entries: <.END_ELECTRICAL>"},
    {"component-record2-short", false, "IDF Component Outline record 2 has incorrect number of entries: <a b>"},
    {"component-record2-very-long", true, ""},
    {"component-unended", true, ""},
    {"component-prop-sizes", true, ""},
    {"quote-open", false, "IDF Component Outline record 2 has incorrect number of entries: <a b MM 1>"},
    {"quotes-odd", true, ""},
    {"placement-bare", true, ""},
    {"placement-part1-short", false, "IDF Component Placement record part 1 has incorrect number of entries: <A>"},
    {"placement-part2-missing", true, ""},
    {"placement-part2-is-end", false, "IDF Component Placement record part 2 has incorrect number of entries: <.END_PLACEMENT>"},
    {"placement-part2-long", false, "IDF Component Placement record part 2 has incorrect number of entries: <1 2 3 4 5 6 7>"},
    {"placement-angles", true, ""},
    {"placement-unknown-version", true, ""},
    {"keepout-bare", true, ""},
    {"keepout-end-first", false, "IDF Component Keepout record 2 has incorrect number of entries: <.END_PLACE_KEEPOUT>"},
    {"keepout-unknown-version", true, ""},
    {"via-keepout-bare", true, ""},
    {"holes-bare", true, ""},
    {"holes-short", false, "IDF Drilled Holes record part 1 has incorrect number of entries: <1 2 3>"},
    {"holes-six", false, "IDF Drilled Holes record part 1 has incorrect number of entries: <1 2 3 PTH BOARD VIA>"},
    {"holes-unknown-version", true, ""},
    {"holes-numbers", true, ""},
    {"route-bare", true, ""},
    {"route-end-first", false, "IDF Component Placement record part 1 has incorrect number of entries: <A>"},
    {"route-record2-long", false, "IDF Route Outline record 2 has incorrect number of entries: <ALL x y>"},
    {"place-outline-bare", true, ""},
    {"place-outline-short", false, "IDF Placement Outline record 2 has incorrect number of entries: <TOP>"},
    {"notes-unended", true, ""},
    {"sections-interleaved", false, "IDF Component Placement record part 1 has incorrect number of entries: <.BOARD_OUTLINE>"},
    {"unknown-sections", true, ""},
    {"line-of-blanks", true, ""},
    {"line-huge", true, ""},
    // clang-format on
};

std::string fileOf(const std::string &name) {
    return std::string(EDA_TEST_DATA) + "/invalid/idf/" + name + ".emn";
}

bool isFinite(const EDA::EDAOutline &outline) {
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        if (!std::isfinite(point->x) || !std::isfinite(point->y) || !std::isfinite(point->angle))
            return false;
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        if (!isFinite(*inner)) return false;
    return true;
}

// Every number that a file can put into the board.
bool isFinite(const EDA::EDABoard &board) {
    bool finite = std::isfinite(board.getThickness()) && isFinite(board.getOutline());
    for (auto component = board.beginComponents(); component != board.endComponents(); ++component)
        finite = finite && std::isfinite(component->getHeight()) && isFinite(component->getOutline());
    for (auto placement = board.beginPlacements(); placement != board.endPlacements(); ++placement)
        finite = finite && std::isfinite(placement->getXLocation()) &&
                 std::isfinite(placement->getYLocation()) && std::isfinite(placement->getOffset()) &&
                 std::isfinite(placement->getAngle(true));
    for (auto keepout = board.beginKeepouts(); keepout != board.endKeepouts(); ++keepout)
        finite = finite && std::isfinite(keepout->getHeight()) && isFinite(keepout->getOutline());
    for (auto via = board.beginVias(); via != board.endVias(); ++via)
        finite = finite && std::isfinite(via->getDiameter()) && std::isfinite(via->getXCentre()) &&
                 std::isfinite(via->getYCentre());
    return finite;
}

class IDFInvalidFile : public testing::TestWithParam<BadFile> {};

TEST_P(IDFInvalidFile, GivesItsResultAndMessage) {
    EDA::IDFReader reader;
    ASSERT_TRUE(FileSystem::File::exists(fileOf(GetParam().name)));
    EXPECT_EQ(reader.readFile(fileOf(GetParam().name)), GetParam().isRead);
    EXPECT_EQ(reader.getError(), GetParam().message);
    EXPECT_TRUE(isFinite(reader.getBoard()));
}

// What is read into a board twice must be as harmless as once.
TEST_P(IDFInvalidFile, CanBeReadAgainAndAfterAGoodFile) {
    EDA::IDFReader reader;
    ASSERT_TRUE(reader.readFile(std::string(EDA_EXAMPLES) + "/thou-board/blinker.emn"));
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(reader.readFile(fileOf(GetParam().name)), GetParam().isRead);
        EXPECT_EQ(reader.getError(), GetParam().message);
    }
    EXPECT_TRUE(isFinite(reader.getBoard()));
    EXPECT_EQ(EDA::IDFReader::describeUnsupported(fileOf(GetParam().name)).empty(),
              std::string(GetParam().name) != "idf4");
}

std::string testName(const testing::TestParamInfo<BadFile> &info) {
    std::string name = info.param.name;
    for (char &c : name)
        if (c == '-') c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(IDF, IDFInvalidFile, testing::ValuesIn(badFiles), testName);

TEST(IDFInvalidFiles, EachFileOfTheFolderIsInTheTable) {
    std::set<std::string> listed;
    for (const BadFile &file : badFiles)
        listed.insert(file.name);
    std::size_t count = 0;
    for (const auto &entry :
         std::filesystem::directory_iterator(std::string(EDA_TEST_DATA) + "/invalid/idf")) {
        EXPECT_EQ(listed.count(entry.path().stem().string()), 1u) << entry.path();
        ++count;
    }
    EXPECT_EQ(count, listed.size());
    EXPECT_GE(count, 60u);
}

std::string bytesOf(const std::string &example) {
    std::string bytes, error;
    EXPECT_TRUE(FileSystem::File::readAll(std::string(EDA_EXAMPLES) + "/" + example, bytes, error)) << error;
    return bytes;
}

// Reads the bytes into a fresh board; the result is that of the error text, and the numbers are finite.
void readAnyBytes(const TestSupport::TempFolder &folder, const std::string &bytes) {
    EDA::IDFReader reader;
    const bool isRead = reader.readFile(folder.write("any.emn", bytes));
    const std::string &error = reader.getError();
    const bool isKnown = error.empty() || error == "Missing IDF file header!" ||
                         error.find(" has incorrect number of entries: <") != std::string::npos;
    EXPECT_TRUE(isKnown) << error;
    EXPECT_TRUE(!isRead || error.empty()) << error;
    EXPECT_TRUE(isFinite(reader.getBoard()));
}

const char *const examples[] = {"controller/controller.emn", "controller/controller.emp",
                                "thou-board/blinker.emn", "thou-board/blinker.emp"};

TEST(IDFDamagedFiles, CutAnywhere) {
    const TestSupport::TempFolder folder;
    for (const char *example : examples) {
        const std::string bytes = bytesOf(example);
        for (std::size_t size = 0; size < bytes.size(); size += bytes.size() / 60 + 1)
            readAnyBytes(folder, bytes.substr(0, size));
    }
}

TEST(IDFDamagedFiles, LinesLeftOutDoubledAndExchanged) {
    const unsigned seed = 20261121;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const TestSupport::TempFolder folder;
    for (const char *example : examples) {
        const std::string bytes = bytesOf(example);
        for (int times = 0; times < 60; ++times) {
            std::string damaged;
            for (std::size_t begin = 0; begin < bytes.size();) {
                const std::size_t end = std::min(bytes.find('\n', begin), bytes.size() - 1) + 1;
                const std::string line = bytes.substr(begin, end - begin);
                const unsigned dice = random() % 60;
                if (dice == 0) damaged += line + line;
                if (dice == 1) damaged = line + damaged;
                if (dice > 2) damaged += line;
                begin = end;
            }
            readAnyBytes(folder, damaged);
        }
    }
}

TEST(IDFDamagedFiles, BitsFlipped) {
    const unsigned seed = 471108;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const TestSupport::TempFolder folder;
    for (const char *example : examples) {
        const std::string bytes = bytesOf(example);
        for (int times = 0; times < 100; ++times) {
            std::string damaged = bytes;
            for (unsigned flips = 1 + random() % 20; flips > 0; --flips)
                damaged[random() % damaged.size()] ^= static_cast<char>(1u << random() % 8);
            readAnyBytes(folder, damaged);
        }
    }
}

// Reads a long text. A time that grew with the square of its length would meet the time limit of the test run.
bool readLong(EDA::IDFReader &reader, const std::string &text) {
    const TestSupport::TempFolder folder;
    return reader.readFile(folder.write("long.emn", text));
}

std::string repeated(const std::string &text, int times) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

// So that a clean-up bound is met by fewer sections.
EDA::IDFReaderLimits fewCleanUps() {
    EDA::IDFReaderLimits limits;
    limits.boardCleanUpWork = 1'000'000;
    return limits;
}

TEST(IDFHugeFiles, HeadersWithoutEnd) {
    EDA::IDFReader reader;
    EXPECT_TRUE(readLong(reader, repeated(".HEADER\nLIBRARY_FILE 3\n", 200'000)));
}

TEST(IDFHugeFiles, BoardOutlineComingBack) {
    const std::string points =
        ".BOARD_OUTLINE\n1\n" + repeated("0 1 2 0\n0 3 1 0\n0 2 7 0\n", 60'000) + ".END_BOARD_OUTLINE\n";
    EDA::IDFReader reader(fewCleanUps());
    EXPECT_TRUE(readLong(reader, IDFTest::boardHeader + points +
                                     repeated(".BOARD_OUTLINE\n1\n.END_BOARD_OUTLINE\n", 20'000)));
    EXPECT_GT(reader.getBoard().getOutline().numPoints(), 100'000u);
}

TEST(IDFHugeFiles, BoardOutlineComingBackInTheNextFile) {
    std::string points;
    for (int i = 0; i < 180'000; ++i)
        points += "0 " + std::to_string(i) + ' ' + std::to_string(i % 7 * i % 11) + " 0\n";
    EDA::IDFReader reader(fewCleanUps());
    ASSERT_TRUE(readLong(reader, IDFTest::boardHeader + ".BOARD_OUTLINE\n1\n" + points));
    EXPECT_TRUE(readLong(
        reader, IDFTest::boardHeader + repeated(".BOARD_OUTLINE\n1\n.END_BOARD_OUTLINE\n", 20'000)));
    EXPECT_GT(reader.getBoard().getOutline().numPoints(), 100'000u);
}

TEST(IDFHugeFiles, OneLoopForEachPoint) {
    EDA::IDFReader reader;
    readLong(reader,
             IDFTest::boardHeader + ".BOARD_OUTLINE\n1\n" + repeated("2147483647 1 2 0\n", 100'000));
    EXPECT_EQ(reader.getBoard().getOutline().numInternalOutlines(), 100'000);
}

TEST(IDFHugeFiles, CollinearPoints) {
    std::string rows;
    for (int i = 0; i < 200'000; ++i)
        rows += "0 " + std::to_string(i) + " 0 0\n";
    EDA::IDFReader reader;
    readLong(reader, IDFTest::boardHeader + ".VIA_KEEPOUT\n" + rows);
    ASSERT_EQ(reader.getBoard().numKeepouts(), 1u);
    EXPECT_TRUE(reader.getBoard().beginKeepouts()->getOutline().empty());
}

TEST(IDFHugeFiles, DistinctHoles) {
    std::string rows;
    for (int i = 0; i < 100'000; ++i)
        rows += std::to_string(i + 1) + " 1 1 PTH " + (i % 2 == 0 ? "BOARD" : "U1") + " VIA ECAD\n";
    EDA::IDFReader reader;
    readLong(reader, IDFTest::boardHeader + ".DRILLED_HOLES\n" + rows);
    EXPECT_EQ(reader.getBoard().numVias(0), 100'000u);
}

TEST(IDFHugeFiles, OneLine) {
    EDA::IDFReader reader;
    EXPECT_TRUE(readLong(reader, IDFTest::boardHeader + ".ELECTRICAL\n" + repeated("a ", 2'000'000)));
    ASSERT_EQ(reader.getBoard().numComponents(), 1u);
    // All entries but the name, the units and the height, with a blank between two.
    EXPECT_EQ(reader.getBoard().beginComponents()->getPartNumber().size(), (2'000'000u - 3) * 2 - 1);
}

} // namespace

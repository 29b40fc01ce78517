// Files that a front end should not hand to the reader.
#include "readers/IDFTestSupport.h"

namespace {

std::string probe(const std::string &text) {
    const TestSupport::TempFolder folder;
    const std::string file = folder.write("b.emn", text);
    const std::string message = EDA::IDFReader::describeUnsupported(file);
    return message.rfind(file, 0) == 0 ? message.substr(file.size()) : message;
}

constexpr const char *refusal = ": IDF 4.0 can't be read, only IDF 2.0 and 3.0";

TEST(IDFProbe, Idf4IsRefusedByName) {
    EXPECT_EQ(probe("IDF_Header (\nVersion (\"4.0\"),\n"), refusal);
    EXPECT_EQ(probe("\xEF\xBB\xBF\r\n/* a\r\nb */ /***/\r\nidf_header\r\n/* c */ ("), refusal);
}

TEST(IDFProbe, OtherFilesAreNotRefused) {
    EXPECT_EQ(probe(IDFTest::boardHeader), "");
    EXPECT_EQ(probe(""), "");
    EXPECT_EQ(probe("/* IDF_Header ( "), "");
    EXPECT_EQ(probe("IDF_Header"), "");
    EXPECT_EQ(probe("IDF_Headers ("), "");
    EXPECT_EQ(probe("x IDF_Header ("), "");
    EXPECT_EQ(probe(std::string(100'000, ' ') + "IDF_Header ("), "");
}

TEST(IDFProbe, UnreadableFilesAreNotRefused) {
    const TestSupport::TempFolder folder;
    EXPECT_EQ(EDA::IDFReader::describeUnsupported(folder.path("absent.emn")), "");
    EXPECT_EQ(EDA::IDFReader::describeUnsupported(folder.path()), "");
    EXPECT_EQ(EDA::IDFReader::describeUnsupported(""), "");
}

TEST(IDFProbe, ReaderItselfFindsNoHeaderInIdf4) {
    const TestSupport::TempFolder folder;
    EDA::IDFReader reader;
    EXPECT_FALSE(reader.readFile(folder.write("b.emn", "IDF_Header (\nVersion (\"4.0\"),\n")));
    EXPECT_EQ(reader.getError(), "Missing IDF file header!");
}

} // namespace

// Reads IDF texts that a test writes down.
#pragma once

#include "readers/IDFReader.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace IDFTest {

inline const std::string boardHeader =
    ".HEADER\nBOARD_FILE 3.0 \"tests\" 2026/11/21 1\nboard MM\n.END_HEADER\n";
inline const std::string boardHeader2 =
    ".HEADER\nBOARD_FILE 2.0 \"tests\" 2026/11/21 1\nboard THOU\n.END_HEADER\n";
inline const std::string libraryHeader = ".HEADER\nLIBRARY_FILE 3.0 \"tests\" 2026/11/21 1\n.END_HEADER\n";

// A header of another version: nothing that depends on the version is checked.
inline std::string headerOfVersion(const std::string &version) {
    return ".HEADER\nBOARD_FILE " + version + " tests\nboard MM\n.END_HEADER\n";
}

class IDFReaderTest : public testing::Test {
protected:
    bool read(const std::string &text) { return reader.readFile(folder.write("text.emn", text)); }

    // Expects the read to work, without any message.
    void readWell(const std::string &text) {
        EXPECT_TRUE(read(text));
        EXPECT_EQ(reader.getError(), "");
    }

    // Expects the read to fail with this message.
    void readBadly(const std::string &text, const std::string &message) {
        EXPECT_FALSE(read(text));
        EXPECT_EQ(reader.getError(), message);
    }

    const EDA::EDABoard &board() const { return reader.getBoard(); }

    TestSupport::TempFolder folder;
    EDA::IDFReader reader;
};

struct StoredPoint {
    double x, y, angle;
    bool operator==(const StoredPoint &other) const {
        return x == other.x && y == other.y && angle == other.angle;
    }
};

inline void PrintTo(const StoredPoint &point, std::ostream *stream) {
    *stream << "(" << point.x << ", " << point.y << ", " << point.angle << ")";
}

inline std::vector<StoredPoint> stored(const EDA::EDAOutline &outline) {
    std::vector<StoredPoint> points;
    for (auto point = outline.beginPoints(); point != outline.endPoints(); ++point)
        points.push_back({point->x, point->y, point->angle});
    return points;
}

} // namespace IDFTest

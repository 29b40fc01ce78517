// The clipping cases of tests/data/outlines/unions.txt, one test each.
#include "host/Geometry/GpcContract.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using namespace Geometry;

namespace {

struct Ring {
    bool hole;
    std::vector<gpc_vertex> points;
};

struct Case {
    std::string name;
    std::string operation;
    std::vector<Ring> subject;
    std::vector<Ring> clip;
    std::vector<Ring> expected;
};

// What the test framework prints as the parameter of a failed test.
std::ostream &operator<<(std::ostream &out, Case const &one) { return out << one.name; }

std::vector<gpc_vertex> parsePoints(std::istream &line) {
    std::vector<gpc_vertex> points;
    std::string word;
    while (line >> word) {
        std::size_t const comma = word.find(',');
        points.push_back(
            {std::strtod(word.c_str(), nullptr), std::strtod(word.c_str() + comma + 1, nullptr)});
    }
    return points;
}

void parseLine(std::string const &text, std::vector<Case> &cases) {
    std::istringstream line(text);
    std::string word;
    if (!(line >> word) || word[0] == '#') return;
    if (word == "case") {
        cases.emplace_back();
        line >> cases.back().name;
    } else if (word == "op") {
        line >> cases.back().operation;
    } else if (word == "subject") {
        cases.back().subject.push_back({false, parsePoints(line)});
    } else if (word == "clip") {
        cases.back().clip.push_back({false, parsePoints(line)});
    } else {
        cases.back().expected.push_back({word == "hole", parsePoints(line)});
    }
}

std::vector<Case> readCases() {
    std::ifstream file(EDA_TEST_DATA "/outlines/unions.txt");
    std::vector<Case> cases;
    std::string line;
    while (std::getline(file, line))
        parseLine(line, cases);
    return cases;
}

void fill(gpc_polygon &polygon, std::vector<Ring> const &rings) {
    gpc_allocate_contours(&polygon, static_cast<int>(rings.size()));
    for (std::size_t i = 0; i < rings.size(); ++i) {
        gpc_vertex *vertex =
            gpc_allocate_vertices(&polygon.contour[i], static_cast<int>(rings[i].points.size()));
        for (gpc_vertex const &point : rings[i].points)
            *vertex++ = point;
    }
}

std::vector<Ring> clipped(Case const &one) {
    std::map<std::string, gpc_op> const operations{
        {"difference", GPC_DIFF}, {"intersection", GPC_INT}, {"xor", GPC_XOR}, {"union", GPC_UNION}};
    gpc_polygon subject{}, clip{}, result{};
    fill(subject, one.subject);
    fill(clip, one.clip);
    gpc_polygon_clip(operations.at(one.operation), &subject, &clip, &result);
    std::vector<Ring> rings;
    for (int i = 0; i < result.num_contours; ++i) {
        gpc_vertex_list const &contour = result.contour[i];
        rings.push_back({result.hole[i] != 0, {contour.vertex, contour.vertex + contour.num_vertices}});
    }
    gpc_free_polygon(&subject);
    gpc_free_polygon(&clip);
    gpc_free_polygon(&result);
    return rings;
}

std::string toText(std::vector<Ring> const &rings) {
    std::ostringstream text;
    text.precision(17);
    for (Ring const &ring : rings) {
        text << (ring.hole ? "hole" : "outer");
        for (gpc_vertex const &point : ring.points)
            text << ' ' << point.x << ',' << point.y;
        text << '\n';
    }
    return text.str();
}

class ClippingCases : public testing::TestWithParam<Case> {};

TEST_P(ClippingCases, GivesExactlyTheExpectedContours) {
    EXPECT_EQ(toText(clipped(GetParam())), toText(GetParam().expected));
}

TEST_P(ClippingCases, DirectionOfTheInputDoesNotMatter) {
    Case turned = GetParam();
    for (std::vector<Ring> *side : {&turned.subject, &turned.clip})
        for (Ring &ring : *side)
            ring.points = {ring.points.rbegin(), ring.points.rend()};
    EXPECT_EQ(toText(clipped(turned)), toText(GetParam().expected));
}

TEST_P(ClippingCases, ResultIsCleanAlready) {
    Case again;
    again.operation = "union";
    again.subject = clipped(GetParam());
    EXPECT_EQ(toText(clipped(again)), toText(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(File, ClippingCases, testing::ValuesIn(readCases()),
                         [](testing::TestParamInfo<Case> const &one) { return one.param.name; });

TEST(ClippingCasesFile, HasManyCases) { EXPECT_GE(readCases().size(), 35u); }

} // namespace

// Laws that hold for the clipping of any polygons, tried on random ones.
#include "host/Geometry/ClippingEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <random>
#include <set>
#include <utility>
#include <vector>

using namespace Geometry;
using Clip::Contour;
using Clip::Engine;
using Clip::Inside;
using Operation = Clip::Inside::Operation;

namespace {

using Points = std::vector<Vec2T<double>>;
using Shape = std::vector<Points>;

constexpr unsigned seed = 20240611;

struct Kind {
    int places;    // whole-number coordinates from 0 to places - 1: few give many coincidences
    int maxPoints; // of a contour
    double angle;  // turn of all, in radians
    double scale;  // then growth
    double offset; // then shift in x and y
};

std::ostream &operator<<(std::ostream &out, Kind const &kind) {
    return out << kind.places << " places, turned by " << kind.angle << ", times " << kind.scale;
}

// Not standard distributions, whose numbers differ between libraries.
class Random {
public:
    explicit Random(unsigned start) : engine_(start) {}
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

private:
    std::mt19937 engine_;
};

Shape randomShape(Random &random, Kind const &kind) {
    Shape shape(1 + static_cast<std::size_t>(random.below(2)));
    for (Points &points : shape) {
        int const count = 1 + random.below(kind.maxPoints);
        for (int i = 0; i < count; ++i) {
            double const x = random.below(kind.places), y = random.below(kind.places);
            points.emplace_back(
                kind.offset + kind.scale * (x * std::cos(kind.angle) - y * std::sin(kind.angle)),
                kind.offset + kind.scale * (x * std::sin(kind.angle) + y * std::cos(kind.angle)));
        }
    }
    return shape;
}

Shape clip(Operation operation, Shape const &a, Shape const &b, std::vector<Contour> *contours = nullptr) {
    Engine engine;
    for (Points const &points : a)
        engine.addContour(Engine::Subject, points.data(), points.size());
    for (Points const &points : b)
        engine.addContour(Engine::Clip, points.data(), points.size());
    std::vector<Contour> const result = engine.run({operation, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd});
    if (contours != nullptr) *contours = result;
    Shape shape;
    for (Contour const &contour : result)
        shape.push_back(contour.points);
    return shape;
}

double areaOf(Points const &points) {
    double twice = 0.0;
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        twice += (points[i].x - points[0].x) * (points[i + 1].y - points[0].y) -
                 (points[i + 1].x - points[0].x) * (points[i].y - points[0].y);
    return 0.5 * twice;
}

double areaOf(Shape const &shape) {
    double area = 0.0;
    for (Points const &points : shape)
        area += areaOf(points);
    return area;
}

bool sameShape(Shape const &a, Shape const &b) {
    auto const samePoint = [](Vec2T<double> const &p, Vec2T<double> const &q) {
        return p.x == q.x && p.y == q.y;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](Points const &p, Points const &q) {
        return std::equal(p.begin(), p.end(), q.begin(), q.end(), samePoint);
    });
}

// The area that an operation must leave, by adding up trapezia between all heights where
// anything happens: slow, and with nothing in common with the engine.
class SlabArea {
public:
    SlabArea(Shape const &a, Shape const &b) {
        addEdges(a, 0);
        addEdges(b, 1);
        addCrossings();
        std::sort(heights_.begin(), heights_.end());
    }

    double of(Operation operation) const {
        double area = 0.0;
        for (std::size_t i = 1; i < heights_.size(); ++i)
            area +=
                (heights_[i] - heights_[i - 1]) * widthAt(0.5 * (heights_[i] + heights_[i - 1]), operation);
        return area;
    }

private:
    struct Segment {
        Vec2T<double> a;
        Vec2T<double> b;
        int side;
    };

    void addEdges(Shape const &shape, int side) {
        for (Points const &points : shape)
            for (std::size_t i = 0; i < points.size(); ++i) {
                segments_.push_back({points[i], points[(i + 1) % points.size()], side});
                heights_.push_back(points[i].y);
            }
    }

    void addCrossings() {
        for (Segment const &s : segments_)
            for (Segment const &t : segments_) {
                double const sx = s.b.x - s.a.x, sy = s.b.y - s.a.y, tx = t.b.x - t.a.x, ty = t.b.y - t.a.y;
                double const below = sx * ty - sy * tx;
                if (below == 0.0) continue;
                double const part = ((t.a.x - s.a.x) * ty - (t.a.y - s.a.y) * tx) / below;
                if (part >= 0.0 && part <= 1.0) heights_.push_back(s.a.y + part * sy);
            }
    }

    double widthAt(double y, Operation operation) const {
        std::vector<std::pair<double, int>> crossings;
        for (Segment const &s : segments_)
            if ((s.a.y > y) != (s.b.y > y))
                crossings.emplace_back(s.a.x + (y - s.a.y) * (s.b.x - s.a.x) / (s.b.y - s.a.y), s.side);
        std::sort(crossings.begin(), crossings.end());
        double width = 0.0;
        int counts[2] = {0, 0};
        Inside const inside(operation, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd);
        for (std::size_t i = 0; i < crossings.size(); ++i) {
            if (inside(counts)) width += crossings[i].first - crossings[i - 1].first;
            ++counts[crossings[i].second];
        }
        return width;
    }

    std::vector<Segment> segments_;
    std::vector<double> heights_;
};

class ClippingLaws : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override { RecordProperty("seed", static_cast<int>(seed)); }

    template <typename Check> void forRandomPairs(Check const &check) {
        Random random(seed);
        for (int round = 0; round < 300; ++round) {
            Shape const a = randomShape(random, GetParam());
            Shape const b = randomShape(random, GetParam());
            SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
            check(a, b);
            if (HasFailure()) break;
        }
    }

    double tolerance() const {
        double const size = GetParam().places * GetParam().scale;
        return 1e-9 * size * size;
    }
};

TEST_P(ClippingLaws, AreaIsThatOfTheSlabs) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        SlabArea const slabs(a, b);
        for (int operation = 0; operation < 4; ++operation)
            EXPECT_NEAR(areaOf(clip(static_cast<Operation>(operation), a, b)),
                        slabs.of(static_cast<Operation>(operation)), tolerance());
    });
}

TEST_P(ClippingLaws, UnionAndIntersectionAddUp) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        double const both = areaOf(clip(Operation::Union, a, {})) + areaOf(clip(Operation::Union, b, {}));
        EXPECT_NEAR(areaOf(clip(Operation::Union, a, b)) + areaOf(clip(Operation::Intersection, a, b)), both,
                    tolerance());
    });
}

TEST_P(ClippingLaws, DifferenceAndIntersectionMakeTheSubject) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        Shape const rest = clip(Operation::Difference, a, b), common = clip(Operation::Intersection, a, b);
        EXPECT_NEAR(areaOf(clip(Operation::Union, rest, common)), areaOf(clip(Operation::Union, a, {})),
                    tolerance());
        EXPECT_NEAR(areaOf(clip(Operation::Intersection, rest, common)), 0.0, tolerance());
    });
}

TEST_P(ClippingLaws, ExclusiveOrIsUnionLessIntersection) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        Shape const whole = clip(Operation::Union, a, b), common = clip(Operation::Intersection, a, b);
        EXPECT_NEAR(areaOf(clip(Operation::Xor, a, b)), areaOf(clip(Operation::Difference, whole, common)),
                    tolerance());
    });
}

TEST_P(ClippingLaws, OrderOfTheSidesDoesNotMatter) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        for (Operation operation : {Operation::Union, Operation::Intersection, Operation::Xor})
            EXPECT_NEAR(areaOf(clip(operation, a, b)), areaOf(clip(operation, b, a)), tolerance());
    });
}

TEST_P(ClippingLaws, HolesRunClockwiseAndFollowAnOuter) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        std::vector<Contour> contours;
        clip(Operation::Xor, a, b, &contours);
        for (std::size_t i = 0; i < contours.size(); ++i) {
            double const area = areaOf(contours[i].points);
            EXPECT_TRUE(contours[i].hole ? area < 0.0 : area > 0.0) << i << ": " << area;
            EXPECT_GE(contours[i].points.size(), 3u);
        }
        EXPECT_TRUE(contours.empty() || !contours.front().hole);
    });
}

TEST_P(ClippingLaws, HolesVisitNoVertexTwice) {
    forRandomPairs([&](Shape const &a, Shape const &b) {
        std::vector<Contour> contours;
        clip(Operation::Union, a, b, &contours);
        for (Contour const &contour : contours) {
            std::set<std::pair<double, double>> places;
            for (Vec2T<double> const &point : contour.points)
                places.emplace(point.x, point.y);
            if (contour.hole) {
                EXPECT_EQ(places.size(), contour.points.size());
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(FewPlaces, ClippingLaws, testing::Values(Kind{4, 10, 0.0, 1.0, 0.0}));
INSTANTIATE_TEST_SUITE_P(MorePlaces, ClippingLaws, testing::Values(Kind{20, 12, 0.0, 1.0, 0.0}));
INSTANTIATE_TEST_SUITE_P(ManyPlaces, ClippingLaws, testing::Values(Kind{1000000, 20, 0.0, 1e-3, 0.0}));
INSTANTIATE_TEST_SUITE_P(Turned, ClippingLaws, testing::Values(Kind{6, 10, 0.3, 1.0, 0.0}));
INSTANTIATE_TEST_SUITE_P(TurnedAndFarAway, ClippingLaws, testing::Values(Kind{6, 10, 0.4, 1.0, 1000.0}));
INSTANTIATE_TEST_SUITE_P(Diagonal, ClippingLaws, testing::Values(Kind{6, 10, 0.7853981633974483, 1e-6, 0.0}));
INSTANTIATE_TEST_SUITE_P(Huge, ClippingLaws, testing::Values(Kind{8, 10, 1.1, 1e9, 0.0}));

TEST(ClippingExactness, EveryVertexOfSeparateShapesComesOutBitForBit) {
    Random random(seed);
    Shape shape;
    std::set<std::pair<double, double>> input;
    for (int i = 0; i < 500; ++i) {
        Points points;
        double const x = 3.0 * (i % 25) + 0.01 * random.below(100), y = 3.0 * (i / 25) + 1e4;
        for (int k = 0; k < 36; ++k)
            points.emplace_back(x + std::cos(k * 0.17453292519943295), y + std::sin(k * 0.17453292519943295));
        for (Vec2T<double> const &point : points)
            input.emplace(point.x, point.y);
        shape.push_back(points);
    }
    Shape const result = clip(Operation::Union, shape, {});
    ASSERT_EQ(result.size(), 500u);
    std::size_t vertices = 0;
    for (Points const &points : result)
        for (Vec2T<double> const &point : points) {
            EXPECT_EQ(input.count({point.x, point.y}), 1u);
            ++vertices;
        }
    EXPECT_EQ(vertices, 500u * 36u);
}

TEST(ClippingExactness, SlantedCrossingIsTheRoundedExactOne) {
    Shape const flat{{{0.0, 0.0}, {3.0, 1.0}, {3.0, -5.0}, {0.0, -5.0}}};
    Shape const steep{{{1.0, -7.0}, {2.0, 7.0}, {1.0, 7.0}}};
    Shape const result = clip(Operation::Union, flat, steep);
    ASSERT_EQ(result.size(), 1u);
    bool found = false; // y = x / 3 meets y = 14 x - 21 at x = 63 / 41
    for (Vec2T<double> const &point : result[0])
        found = found || (point.x == 63.0 / 41.0 && point.y == 21.0 / 41.0);
    EXPECT_TRUE(found);
}

TEST(ClippingExactness, SlantedEdgesThatShareAPartLeaveNoSliver) {
    Random random(seed);
    for (int round = 0; round < 2000; ++round) {
        double const angle = 0.001 * (1 + random.below(6000)), c = std::cos(angle), s = std::sin(angle);
        auto const turned = [c, s](double x, double y) {
            return Vec2T<double>(x * c - y * s, x * s + y * c);
        };
        double const low = 0.001 * random.below(900), high = low + 0.1 + 0.001 * random.below(900);
        Shape const a{{turned(0.0, 0.0), turned(2.0, 0.0), turned(2.0, 1.0), turned(0.0, 1.0)}};
        Shape const b{{turned(low, 1.0), turned(high, 1.0), turned(high, 2.0), turned(low, 2.0)}};
        EXPECT_EQ(clip(Operation::Union, a, b).size(), 1u) << "seed " << seed << " round " << round;
        EXPECT_TRUE(clip(Operation::Intersection, a, b).empty()) << "seed " << seed << " round " << round;
    }
}

TEST(ClippingExactness, UnionIsTheSameEitherWayRound) {
    Random random(seed);
    Kind const kind{1000, 10, 0.0, 0.1, 5.0};
    for (int round = 0; round < 300; ++round) {
        Shape const a = randomShape(random, kind), b = randomShape(random, kind);
        EXPECT_TRUE(sameShape(clip(Operation::Union, a, b), clip(Operation::Union, b, a)))
            << "seed " << seed << " round " << round;
    }
}

TEST(ClippingFill, NonZeroFillingJoinsOverlapsOfOneSide) {
    Engine engine;
    Points const a{{0.0, 0.0}, {2.0, 0.0}, {2.0, 1.0}, {0.0, 1.0}},
        b{{1.0, 0.0}, {3.0, 0.0}, {3.0, 1.0}, {1.0, 1.0}};
    engine.addContour(Engine::Subject, a.data(), a.size());
    engine.addContour(Engine::Subject, b.data(), b.size());
    auto const result = engine.run({Operation::Union, Inside::Fill::NonZero, Inside::Fill::NonZero});
    ASSERT_EQ(result.size(), 1u);
    EXPECT_DOUBLE_EQ(areaOf(result[0].points), 3.0);
}

TEST(ClippingFill, EngineForgetsItsInputAfterARun) {
    Engine engine;
    Points const a{{0.0, 0.0}, {2.0, 0.0}, {2.0, 1.0}};
    Inside const inside(Operation::Union, Inside::Fill::EvenOdd, Inside::Fill::EvenOdd);
    engine.addContour(Engine::Subject, a.data(), a.size());
    EXPECT_EQ(engine.run(inside).size(), 1u);
    EXPECT_TRUE(engine.run(inside).empty());
}

} // namespace

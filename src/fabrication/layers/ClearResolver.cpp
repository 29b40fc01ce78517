// Clear objects worked into the dark ones that they erase from.
#include "fabrication/layers/ClearResolver.h"

#include "fabrication/apertures/ApertureMaker.h"
#include "fabrication/apertures/Rings.h"
#include "fabrication/layers/CutIns.h"
#include "fabrication/Limits.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

using Geometry::Bound2D;

// Pairs of a dark object and a clear one over it.
constexpr std::size_t mostPairs = 20'000'000;
// Cells that a clear object may lie in before it is kept apart.
constexpr double mostCells = 64.0;
constexpr std::uint32_t objectsBetweenPolls = 64;

bool overlap(Bound2D const &a, Bound2D const &b) {
    return a.isValid() && b.isValid() && a.getXLow() <= b.getXHigh() && b.getXLow() <= a.getXHigh() &&
           a.getYLow() <= b.getYHigh() && b.getYLow() <= a.getYHigh();
}

void unite(Bound2D &bound, Point const &at, Bound2D const &around) {
    bound.unite(at.x + around.getXLow(), at.y + around.getYLow());
    bound.unite(at.x + around.getXHigh(), at.y + around.getYHigh());
}

// The box of the ends, or of the whole turn of an arc.
void uniteSegment(Bound2D &bound, Point const &from, Segment const &segment, Bound2D const &around) {
    unite(bound, from, around);
    unite(bound, segment.end, around);
    if (segment.motion == Motion::Line) return;
    const double radius =
        std::max(std::hypot(from.x - segment.centre.x, from.y - segment.centre.y),
                 std::hypot(segment.end.x - segment.centre.x, segment.end.y - segment.centre.y));
    unite(bound, {segment.centre.x - radius, segment.centre.y - radius}, around);
    unite(bound, {segment.centre.x + radius, segment.centre.y + radius}, around);
}

Path pathOf(Ring const &ring) {
    Path path;
    path.start = ring.front();
    path.segments.reserve(ring.size());
    for (std::size_t i = 1; i < ring.size(); ++i)
        path.segments.push_back({ring[i], {}, Motion::Line});
    path.segments.push_back({ring.front(), {}, Motion::Line});
    return path;
}

double areaOf(std::vector<Piece> const &pieces) {
    double area = 0.0;
    for (Piece const &piece : pieces) {
        area += std::fabs(signedArea(piece.outer));
        for (Ring const &hole : piece.holes)
            area -= std::fabs(signedArea(hole));
    }
    return area;
}

} // namespace

// The clear objects by where they lie: a grid, and beside it those that would fill many cells.
class ClearResolver::Search {
public:
    explicit Search(std::deque<Object> const &objects) : objects_(objects) {
        Bound2D bound;
        for (std::uint32_t i = 0; i < objects.size(); ++i) {
            if (objects[i].dark || !objects[i].bound.isValid()) continue;
            bound.unite(objects[i].bound);
            clears_.push_back(i);
        }
        if (clears_.empty()) return;
        const double area = std::max(bound.getXSize(), 1e-3) * std::max(bound.getYSize(), 1e-3);
        cell_ = std::max(std::sqrt(area / static_cast<double>(clears_.size())), 1e-3);
        for (const std::uint32_t i : clears_) {
            if (numCells(objects[i].bound) > mostCells) {
                large_.push_back(i);
            } else {
                eachCell(objects[i].bound, [&](std::int64_t key) { cells_[key].push_back(i); });
            }
        }
    }

    // The clear objects after the one of this index whose boxes meet its box, in their order.
    std::vector<std::uint32_t> after(std::uint32_t index) const {
        std::vector<std::uint32_t> found;
        Object const &object = objects_[index];
        const auto add = [&](std::uint32_t i) {
            if (i > index && overlap(objects_[i].bound, object.bound)) found.push_back(i);
        };
        if (clears_.empty() || clears_.back() < index) return found;
        if (numCells(object.bound) > static_cast<double>(clears_.size())) {
            std::for_each(clears_.begin(), clears_.end(), add);
            return found;
        }
        std::for_each(large_.begin(), large_.end(), add);
        eachCell(object.bound, [&](std::int64_t key) {
            const auto cell = cells_.find(key);
            if (cell != cells_.end()) std::for_each(cell->second.begin(), cell->second.end(), add);
        });
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end()), found.end());
        return found;
    }

private:
    std::int64_t place(double value) const {
        return static_cast<std::int64_t>(std::floor(std::clamp(value / cell_, -1e9, 1e9)));
    }
    double numCells(Bound2D const &bound) const {
        return (bound.getXSize() / cell_ + 1.0) * (bound.getYSize() / cell_ + 1.0);
    }
    template <class Do> void eachCell(Bound2D const &bound, Do const &act) const {
        for (std::int64_t x = place(bound.getXLow()); x <= place(bound.getXHigh()); ++x) {
            for (std::int64_t y = place(bound.getYLow()); y <= place(bound.getYHigh()); ++y)
                act(x * 2'000'000'011 + y);
        }
    }

    std::deque<Object> const &objects_;
    std::vector<std::uint32_t> clears_;
    std::vector<std::uint32_t> large_;
    std::unordered_map<std::int64_t, std::vector<std::uint32_t>> cells_;
    double cell_ = 1.0;
};

std::uint32_t ClearResolver::indexOf(Shape const &shape) {
    const auto [place, isNew] = shapeIndices_.emplace(shape.id, static_cast<std::uint32_t>(shapes_.size()));
    if (isNew) {
        KnownShape known{shape, {}};
        for (Piece const &piece : Fabrication::piecesOf(shape)) {
            for (Point const &p : piece.outer)
                known.bound.unite(p.x, p.y);
        }
        shapes_.push_back(std::move(known));
    }
    return place->second;
}

void ClearResolver::add(Object object) {
    object.net = static_cast<std::uint32_t>(nets_.size() - 1);
    objects_.push_back(object);
}

void ClearResolver::flash(Shape const &shape, Point const &at, bool dark) {
    if (shape.isNothing()) return;
    Object object{Kind::Flash, dark, indexOf(shape), 0, at, {}, {}};
    unite(object.bound, at, shapes_[object.shape].bound);
    add(object);
}

void ClearResolver::stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) {
    if (shape.isNothing()) return;
    Object object{Kind::Stroke, dark, indexOf(shape), 0, from, segment, {}};
    uniteSegment(object.bound, from, segment, shapes_[object.shape].bound);
    add(object);
}

void ClearResolver::region(Path const &contour, bool dark) {
    Object object{Kind::Region, dark, static_cast<std::uint32_t>(paths_.size()), 0, contour.start, {}, {}};
    const Bound2D point(0.0, 0.0, 0.0, 0.0);
    Point from = contour.start;
    object.bound.unite(from.x, from.y);
    for (Segment const &segment : contour.segments) {
        uniteSegment(object.bound, from, segment, point);
        from = segment.end;
    }
    paths_.push_back(contour);
    add(object);
}

void ClearResolver::setNet(std::string_view net, std::string_view pin) {
    nets_.push_back({std::string(net), std::string(pin)});
}

std::vector<Piece> ClearResolver::piecesOf(Object const &object) const {
    std::vector<Piece> pieces;
    switch (object.kind) {
    case Kind::Flash:
        pieces = Fabrication::piecesOf(shapes_[object.shape].shape);
        for (Piece &piece : pieces)
            moveBy(piece, object.at);
        break;
    case Kind::Stroke:
        pieces = swept(shapes_[object.shape].shape, object.at, object.segment);
        break;
    case Kind::Region:
        pieces.push_back({toRing(paths_[object.shape]), {}});
        break;
    }
    return pieces;
}

std::vector<Piece> const &ClearResolver::clearPieces(std::uint32_t index) {
    const auto [place, isNew] = clearPieces_.try_emplace(index);
    if (isNew) place->second = piecesOf(objects_[index]);
    return place->second;
}

void ClearResolver::handOn(Object const &object) {
    switch (object.kind) {
    case Kind::Flash:
        return to_.flash(shapes_[object.shape].shape, object.at, object.dark);
    case Kind::Stroke:
        return to_.stroke(shapes_[object.shape].shape, object.at, object.segment, object.dark);
    case Kind::Region:
        return to_.region(paths_[object.shape], object.dark);
    }
}

// False where nothing of the object is erased, or the whole is beyond the engine.
bool ClearResolver::handOnRest(Object const &object, std::vector<std::uint32_t> const &clears) {
    Canvas canvas;
    bool isDone = true;
    const auto paintAll = [&](std::vector<Piece> const &pieces) {
        for (Piece const &piece : pieces)
            isDone = canvas.paint(piece) && isDone;
    };
    paintAll(piecesOf(object));
    std::vector<Piece> whole;
    isDone = canvas.finish(whole) && isDone;
    paintAll(whole);
    for (const std::uint32_t clear : clears) {
        for (Piece const &piece : clearPieces(clear))
            isDone = canvas.erase(piece) && isDone;
    }
    std::vector<Piece> rest;
    isDone = canvas.finish(rest) && isDone;
    if (!isDone) {
        notes_.add(NoteKind::LeftOut, "objects too tangled to erase from: nothing is erased from them");
        return false;
    }
    const double area = areaOf(whole);
    if (area - areaOf(rest) <= 1e-9 * area) return false;
    handOnPieces(object, std::move(rest));
    return true;
}

// What is left of a pad still is a pad, with its name; strokes and regions have none.
void ClearResolver::handOnPieces(Object const &object, std::vector<Piece> rest) {
    if (object.kind == Kind::Flash && !rest.empty()) {
        Shape const &whole = shapes_[object.shape].shape;
        for (Piece &piece : rest)
            moveBy(piece, {-object.at.x, -object.at.y});
        Shape shape{Shape::Kind::Pieces, whole.width, whole.height, std::move(rest),
                    whole.function,      whole.name,  nextId_--};
        return to_.flash(shape, object.at, true);
    }
    for (Piece const &piece : rest)
        to_.region(pathOf(piece.holes.empty() ? piece.outer : withCutIns(piece)), true);
}

void ClearResolver::finish(Tools::ToolProgress *progress) {
    const Search search(objects_);
    std::uint32_t net = 0;
    std::size_t numPairs = 0;
    bool isBeyond = false;
    for (std::uint32_t i = 0; i < objects_.size() && !to_.isFull(); ++i) {
        if (i % objectsBetweenPolls == 0 && progress != nullptr && progress->isCancelled()) break;
        Object const &object = objects_[i];
        if (object.net != net) to_.setNet(nets_[object.net].name, nets_[object.net].pin);
        net = object.net;
        if (!object.dark) {
            if (isBeyond) handOn(object);
            continue;
        }
        const std::vector<std::uint32_t> clears = isBeyond ? std::vector<std::uint32_t>() : search.after(i);
        numPairs += clears.size();
        isBeyond = isBeyond || numPairs > mostPairs;
        if (clears.empty() || !handOnRest(object, clears)) handOn(object);
    }
    if (isBeyond) notes_.add(NoteKind::LeftOut, "more clear objects over dark ones than are worked in");
    objects_.clear();
}

bool mayHoldClear(std::string_view bytes) {
    const auto isLike = [](char c, char capital) { return c == capital || c == capital - 'A' + 'a'; };
    for (std::size_t at = bytes.find_first_of("CNcn"); at != std::string_view::npos;
         at = bytes.find_first_of("CNcn", at + 1)) {
        // "LPC", with any blanks and line ends between, and "NEG".
        if (isLike(bytes[at], 'N')) {
            if (at + 2 < bytes.size() && isLike(bytes[at + 1], 'E') && isLike(bytes[at + 2], 'G'))
                return true;
            continue;
        }
        const std::size_t p = bytes.find_last_not_of(" \t\r\n", at == 0 ? 0 : at - 1);
        if (at > 0 && p != std::string_view::npos && isLike(bytes[p], 'P')) return true;
    }
    return false;
}

} // namespace EDA::Fabrication

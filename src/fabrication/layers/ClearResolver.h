// Clear objects worked into the dark ones that they erase from.
#pragma once

#include "fabrication/LayerGraphics.h"
#include "fabrication/Notes.h"
#include "host/Geometry/Bound2D.h"
#include "host/Tools/ToolProgress.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace EDA::Fabrication {

// Keeps the objects of a layer, and hands on what is dark in the end: dark objects that no later clear one
// touches as they are, in their order, and of the others what remains, as regions with cut-ins.
//
// Readers that hang clear shapes on the dark ones as holes lose them where copper stands as an island within
// such a hole and has holes of its own: a plane split by a cleared moat, or any negative image. With nothing
// clear left to read, each island comes with its own holes.
//
// Keeps all objects in memory, so a layer without clear objects needs none of it (see mayHoldClear).
class ClearResolver : public LayerSink {
public:
    ClearResolver(LayerSink &to, Notes &notes) : to_(to), notes_(notes) {}

    void flash(Shape const &shape, Point const &at, bool dark) override;
    void stroke(Shape const &shape, Point const &from, Segment const &segment, bool dark) override;
    void region(Path const &contour, bool dark) override;
    void setNet(std::string_view net, std::string_view pin) override;

    // Hands all on, or what comes before the progress (may be null) says cancelled. Where the work would be
    // beyond reason, clear objects are handed on as they are, with a note.
    void finish(Tools::ToolProgress *progress = nullptr);

private:
    enum class Kind { Flash, Stroke, Region };

    struct Object {
        Kind kind;
        bool dark;
        std::uint32_t shape; // index; of a region that of its path
        std::uint32_t net;
        Point at;
        Segment segment;
        Geometry::Bound2D bound;
    };
    struct Net {
        std::string name;
        std::string pin;
    };
    // A shape and how far it reaches from its origin.
    struct KnownShape {
        Shape shape;
        Geometry::Bound2D bound;
    };
    class Search;

    std::uint32_t indexOf(Shape const &shape);
    void add(Object object);
    std::vector<Piece> piecesOf(Object const &object) const;
    void handOn(Object const &object);
    void handOnPieces(Object const &object, std::vector<Piece> rest);
    bool handOnRest(Object const &object, std::vector<std::uint32_t> const &clears);
    std::vector<Piece> const &clearPieces(std::uint32_t index);

    LayerSink &to_;
    Notes &notes_;
    std::deque<KnownShape> shapes_;
    std::unordered_map<std::size_t, std::uint32_t> shapeIndices_;
    // Not moved while they grow: they are many.
    std::deque<Path> paths_;
    std::deque<Object> objects_;
    std::vector<Net> nets_{Net()};
    std::unordered_map<std::uint32_t, std::vector<Piece>> clearPieces_;
    std::size_t nextId_ = static_cast<std::size_t>(-1); // of shapes made here; those of the file count up
};

// Whether a layer file can hold clear objects at all.
bool mayHoldClear(std::string_view bytes);

} // namespace EDA::Fabrication

// A walk over the rows of an XFL file for what its reader passes over.
#include "text/Text.h"
#include "XflNotices.h"
#include "XflShapes.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <unordered_map>

namespace EDATool {

namespace {

using Rows = FileSystem::CSVParserBase;

constexpr std::size_t layerFields = 5;
constexpr std::size_t shapeFields = 3;
constexpr std::size_t partFields = 7;
constexpr std::size_t placementFields = 6;
constexpr std::size_t viaFields = 5;

int toNumber(const std::string &text) { return EDA::parseInt(text, 0, 0); }

enum class BlockUse { Parameters, PassedOver };

// What a row has behind its first fields, with the rows of its block.
struct Block {
    bool isThere = false; // a "{"
    ShapeParameters parameters;
};

struct TableShape {
    std::string type;
    ShapeState state;
};

// What a void would be cut out of.
enum class Ground { None, Empty, Solid };

Ground groundOf(ShapeState state) { return state == ShapeState::Drawn ? Ground::Solid : Ground::Empty; }

class Walk {
public:
    Walk(const Rows &rows, bool isPackage)
        : row_(rows.beginRows()), end_(rows.endRows()), isPackage_(isPackage) {}

    XflNotices run() {
        for (; row_ != end_; ++row_) {
            const auto section = sections().find(field(0));
            if (section != sections().end()) {
                (this->*section->second)();
            } else if (field(0) != ".end" && !isComment()) {
                notices_.add(XflLoss::StrayRows);
            }
        }
        if (numEdges_ > 0) notices_.add(XflLoss::MovedVoids, numEdges_ == 1 ? numEarlyVoids_ : numVoids_);
        return notices_;
    }

private:
    using Step = void (Walk::*)();
    using Edge = std::tuple<std::string, double, std::size_t>; // type, scale, mark of the parameters

    static const std::unordered_map<std::string, Step> &sections() {
        static const std::unordered_map<std::string, Step> table{
            {".version", &Walk::passRow},   {".unit", &Walk::passRow},
            {".scale", &Walk::visitScale},  {".layer", &Walk::visitLayers},
            {".shape", &Walk::visitShapes}, {".board_geom", &Walk::visitEdge},
            {".part", &Walk::visitParts},   {".component", &Walk::visitPlacements},
            {".via", &Walk::visitVias},     {".route", &Walk::visitRoutes}};
        return table;
    }

    static const std::unordered_map<std::string, Step> &pieces() {
        static const std::unordered_map<std::string, Step> table{{"via", &Walk::visitVia},
                                                                 {"shape", &Walk::visitShape},
                                                                 {"polygon", &Walk::visitPiece},
                                                                 {"composite", &Walk::visitPiece},
                                                                 {"rectangle", &Walk::visitPiece},
                                                                 {"square", &Walk::visitPiece},
                                                                 {"diamond", &Walk::visitPiece},
                                                                 {"circle", &Walk::visitPiece},
                                                                 {"annular", &Walk::visitPiece},
                                                                 {"path", &Walk::visitPath},
                                                                 {"void_polygon", &Walk::visitVoid},
                                                                 {"void_composite", &Walk::visitVoid},
                                                                 {"void_rectangle", &Walk::visitVoid},
                                                                 {"void_square", &Walk::visitVoid},
                                                                 {"void_diamond", &Walk::visitVoid},
                                                                 {"void_circle", &Walk::visitVoid},
                                                                 {"void_annular", &Walk::visitVoid},
                                                                 {"bondwire", &Walk::visitBondwire}};
        return table;
    }

    const std::string &field(std::size_t index) const {
        static const std::string none;
        return index < row_->size() ? (*row_)[index] : none;
    }
    bool isComment() const { return field(0).rfind('#', 0) == 0; }

    bool next() {
        do {
            ++row_;
        } while (row_ != end_ && isComment());
        return row_ != end_;
    }

    bool isSection() const { return sections().count(field(0)) > 0; }

    // Over the block that the row opens from this field on, to its last row. The reader opens a block of
    // parameters again at any "{", but one that it passes over in the first row alone.
    Block passBlock(std::size_t from, BlockUse use) {
        Block block;
        bool isOpen = false;
        readBraces(from, block, isOpen);
        while (isOpen && next()) {
            if (isSection()) notices_.add(XflLoss::Sections, field(0));
            if (use == BlockUse::Parameters)
                readBraces(0, block, isOpen);
            else
                isOpen = std::find(row_->begin(), row_->end(), "}") == row_->end();
        }
        if (isOpen) notices_.add(XflLoss::OpenBlocks);
        return block;
    }

    void readBraces(std::size_t from, Block &block, bool &isOpen) const {
        for (std::size_t i = from; i < row_->size(); ++i) {
            const std::string &text = (*row_)[i];
            if (text == "{")
                isOpen = block.isThere = true;
            else if (text == "}")
                isOpen = false;
            else
                block.parameters.add(text);
        }
    }

    void passRow() {}

    void visitScale() {
        const double scale = EDA::parseDouble(field(1), 0.0, 0.0);
        if (row_->size() > 1 && scale == 0.0) notices_.add(XflLoss::Scales);
        if (scale != 0.0) scale_ = scale;
    }

    // Each row of a section that has so many fields.
    template <typename Visit> void forEachRow(std::size_t least, const Visit &visit) {
        while (next() && field(0) != ".end") {
            if (isSection()) notices_.add(XflLoss::Sections, field(0));
            if (row_->size() >= least) {
                visit();
            } else if (!isSection()) {
                notices_.add(XflLoss::ShortRows);
            }
        }
    }

    void visitLayers() {
        ++numOffsets_;
        forEachRow(layerFields, [this] {
            const bool isConductor = field(2) != "D";
            if (isConductor != isConductorNext_) notices_.add(XflLoss::LayerOrder);
            isConductorNext_ = !isConductor;
            ++numOffsets_;
            if (isConductor) ++numConductors_;
        });
    }

    void visitShapes() {
        forEachRow(shapeFields, [this] {
            const int id = toNumber(field(0));
            const std::string type = field(1);
            shapes_[id] = {type, passBlock(2, BlockUse::Parameters).parameters.stateOf(type)};
        });
    }

    void visitEdge() {
        if (!next()) return;
        if (isSection()) notices_.add(XflLoss::Sections, field(0));
        const std::string type = field(0);
        const ShapeParameters parameters = passBlock(1, BlockUse::Parameters).parameters;
        const ShapeState state = parameters.stateOf(type);
        const long long numLayers = std::max(numOffsets_ - 1, 0LL);
        if (numLayers > 0) solid_ = groundOf(state);
        if (state == ShapeState::Drawn) return countEdge({type, scale_, parameters.mark()});
        notices_.add(XflLoss::Edges);
        notices_.addEmptySolids(static_cast<std::size_t>(numLayers));
    }

    // The same edge once more moves nothing.
    void countEdge(const Edge &edge) {
        if (numEdges_ == 0) numEarlyVoids_ = numVoids_;
        if (numEdges_ == 0 || edge != edge_) ++numEdges_;
        edge_ = edge;
    }

    void visitParts() {
        forEachRow(partFields, [this] {
            const std::string &body = field(1);
            const bool isKnown = body == "R" || body == "C" || body == "D";
            if (!isKnown) addEmpty(XflLoss::Bodies);
            solid_ = isKnown ? Ground::Solid : Ground::Empty;
            if (passBlock(6, BlockUse::PassedOver).isThere) notices_.add(XflLoss::Pins);
        });
    }

    void visitPlacements() {
        forEachRow(placementFields, [] {});
    }

    void visitVias() {
        forEachRow(viaFields, [this] { vias_[field(0)] = toNumber(field(3)); });
    }

    void visitRoutes() {
        bool inNet = false;
        forEachRow(0, [this, &inNet] {
            if (!inNet || field(0) == "}") {
                inNet = !inNet;
                return;
            }
            const auto piece = pieces().find(field(0));
            if (piece != pieces().end()) {
                (this->*piece->second)();
            } else {
                notices_.add(XflLoss::Keywords, field(0));
                passBlock(1, BlockUse::PassedOver);
            }
        });
    }

    bool hasFaces(int layer) const { return layer >= 1 && layer <= numOffsets_ / 2; }
    bool hasLayer(int layer) const {
        return isPackage_ ? hasFaces(layer) : layer >= 1 && layer <= numConductors_;
    }
    bool takesVia(int layer) const { return hasLayer(layer) && hasFaces(layer); }

    void visitVia() {
        const auto kind = vias_.find(field(3));
        if (!takesVia(toNumber(field(1))) || !takesVia(toNumber(field(2)))) {
            notices_.add(XflLoss::Layers);
        } else if (kind == vias_.end()) {
            notices_.add(XflLoss::ViaKinds);
        } else if (typeOf(kind->second) != "circle") {
            notices_.add(XflLoss::ViaShapes);
        } else {
            solid_ = Ground::Solid;
        }
    }

    std::string typeOf(int shape) const {
        const auto found = shapes_.find(shape);
        return found == shapes_.end() ? std::string() : found->second.type;
    }

    void addEmpty(XflLoss loss) {
        notices_.add(loss);
        notices_.addEmptySolids(1);
    }

    void addPiece(int layer, ShapeState state) {
        if (!hasLayer(layer)) return notices_.add(XflLoss::Layers);
        if (state != ShapeState::Drawn)
            addEmpty(state == ShapeState::NotDrawn ? XflLoss::Pieces : XflLoss::ShortPieces);
        takeGround(layer, groundOf(state));
    }

    void takeGround(int layer, Ground ground) { solid_ = shapeOfLayer_[layer] = ground; }

    void visitShape() {
        const int layer = toNumber(field(1));
        const auto shape = shapes_.find(toNumber(field(2)));
        if (shape != shapes_.end()) return addPiece(layer, shape->second.state);
        if (!hasLayer(layer)) return notices_.add(XflLoss::Layers);
        addEmpty(XflLoss::ShapeIds);
        takeGround(layer, Ground::Empty);
    }

    void visitPiece() {
        const std::string type = field(0);
        const int layer = toNumber(field(1));
        addPiece(layer, passBlock(2, BlockUse::Parameters).parameters.stateOf(type));
    }

    void visitPath() {
        const int layer = toNumber(field(1));
        const double width = EDA::parseDouble(field(2), 0.0, 0.0) / scale_;
        const Block block = passBlock(3, BlockUse::Parameters);
        if (!hasLayer(layer)) return notices_.add(XflLoss::Layers);
        const bool hasArea = width > 0.0 && block.parameters.makeLine();
        if (!hasArea) addEmpty(XflLoss::Lines);
        solid_ = hasArea ? Ground::Solid : Ground::Empty;
    }

    void visitVoid() {
        const std::string type = field(0);
        const int layer = toNumber(field(1));
        const ShapeState state = passBlock(2, BlockUse::Parameters).parameters.stateOf(type);
        const auto shape = shapeOfLayer_.find(layer);
        const Ground copper = shape == shapeOfLayer_.end() ? Ground::None : shape->second;
        const Ground ground = isPackage_ ? solid_ : copper;
        if (!hasLayer(layer)) {
            notices_.add(XflLoss::Layers);
        } else if (ground == Ground::None) {
            notices_.add(isPackage_ ? XflLoss::FirstVoids : XflLoss::LoneVoids);
        } else if (state != ShapeState::Drawn) {
            notices_.add(state == ShapeState::NotDrawn ? XflLoss::Voids : XflLoss::ShortVoids);
        } else if (ground == Ground::Empty) {
            notices_.add(XflLoss::EmptyVoids);
        } else if (isPackage_) {
            ++numVoids_;
        }
    }

    void visitBondwire() {
        notices_.add(XflLoss::Bondwires);
        passBlock(1, BlockUse::PassedOver);
    }

    Rows::RowIterator row_;
    const Rows::RowIterator end_;
    const bool isPackage_;
    XflNotices notices_;
    long long numOffsets_ = 0;
    long long numConductors_ = 0;
    bool isConductorNext_ = true;
    double scale_ = 1.0;
    std::map<int, TableShape> shapes_;
    std::unordered_map<std::string, int> vias_;
    std::map<int, Ground> shapeOfLayer_; // of a board: the last one that is no track
    Ground solid_ = Ground::None;        // of a package: the last one
    Edge edge_;                          // the last one with points
    std::size_t numEdges_ = 0;           // changes of it
    std::size_t numVoids_ = 0;           // of a package, with points
    std::size_t numEarlyVoids_ = 0;      // of these, before the first edge
};

} // namespace

XflNotices findXflLosses(const Rows &rows, bool isPackage) { return Walk(rows, isPackage).run(); }

} // namespace EDATool

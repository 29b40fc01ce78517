// A walk over the rows of an XFL file for what its reader passes over.
#include "text/Text.h"
#include "XflNotices.h"

#include <map>
#include <set>
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

// The shape of a void is drawn like that of the conductor.
bool isDrawn(const std::string &type) {
    static const std::set<std::string> types{"rectangle", "square",  "circle",    "oblong", "bullet",
                                             "finger",    "polygon", "composite", "path"};
    const bool isVoid = type.rfind("void_", 0) == 0;
    return types.count(isVoid ? type.substr(5) : type) > 0 && type != "void_path";
}

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
        return notices_;
    }

private:
    using Step = void (Walk::*)();

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

    // Over the block that the row opens from this field on, to its last row. True if there is one.
    bool passBlock(std::size_t from) {
        bool isOpen = false, hasBlock = false;
        do {
            for (std::size_t i = from; i < row_->size(); ++i) {
                if ((*row_)[i] == "{") isOpen = hasBlock = true;
                if ((*row_)[i] == "}") isOpen = false;
            }
            from = 0;
        } while (isOpen && next());
        if (isOpen) notices_.add(XflLoss::OpenBlocks);
        return hasBlock;
    }

    void passRow() {}

    void visitScale() {
        const double scale = EDA::parseDouble(field(1), 0.0, 0.0);
        if (row_->size() > 1 && scale == 0.0) notices_.add(XflLoss::Scales);
    }

    // Each row of a section that has so many fields.
    template <typename Visit> void forEachRow(std::size_t least, const Visit &visit) {
        while (next() && field(0) != ".end") {
            if (row_->size() < least) {
                notices_.add(XflLoss::ShortRows);
            } else {
                visit();
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
            shapes_[id] = field(1);
            passBlock(2);
        });
    }

    void visitEdge() {
        if (!next()) return;
        hasBody_ = hasBody_ || numOffsets_ > 1;
        passBlock(1);
    }

    void visitParts() {
        forEachRow(partFields, [this] {
            const std::string &body = field(1);
            if (body != "R" && body != "C" && body != "D") notices_.add(XflLoss::Bodies);
            hasBody_ = true;
            if (passBlock(6)) notices_.add(XflLoss::Pins);
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
                notices_.add(XflLoss::Keywords);
                passBlock(1);
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
            hasBody_ = true;
        }
    }

    std::string typeOf(int shape) const {
        const auto found = shapes_.find(shape);
        return found == shapes_.end() ? std::string() : found->second;
    }

    // Tells of the first reason why a piece on this layer comes to nothing.
    void addPiece(int layer, bool isKnown, bool hasPoints) {
        if (!hasLayer(layer)) return notices_.add(XflLoss::Layers);
        if (!isKnown) {
            notices_.add(XflLoss::ShapeIds);
        } else if (!hasPoints) {
            notices_.add(XflLoss::Pieces);
        }
        hasBody_ = true;
        layersWithShapes_.insert(layer);
    }

    void visitShape() {
        const auto shape = shapes_.find(toNumber(field(2)));
        addPiece(toNumber(field(1)), shape != shapes_.end(),
                 shape != shapes_.end() && isDrawn(shape->second));
    }

    void visitPiece() {
        addPiece(toNumber(field(1)), true, isDrawn(field(0)));
        passBlock(2);
    }

    void visitPath() {
        if (hasLayer(toNumber(field(1)))) {
            hasBody_ = true;
        } else {
            notices_.add(XflLoss::Layers);
        }
        passBlock(3);
    }

    void visitVoid() {
        const int layer = toNumber(field(1));
        const bool isLone = isPackage_ ? !hasBody_ : layersWithShapes_.count(layer) == 0;
        if (!hasLayer(layer)) {
            notices_.add(XflLoss::Layers);
        } else if (isLone) {
            notices_.add(XflLoss::LoneVoids);
        } else if (!isDrawn(field(0))) {
            notices_.add(XflLoss::Voids);
        }
        passBlock(2);
    }

    void visitBondwire() {
        notices_.add(XflLoss::Bondwires);
        passBlock(1);
    }

    Rows::RowIterator row_;
    const Rows::RowIterator end_;
    const bool isPackage_;
    XflNotices notices_;
    long long numOffsets_ = 0;
    long long numConductors_ = 0;
    bool isConductorNext_ = true;
    bool hasBody_ = false; // of a package: something that a void can be cut into
    std::map<int, std::string> shapes_;
    std::unordered_map<std::string, int> vias_;
    std::set<int> layersWithShapes_;
};

} // namespace

XflNotices findXflLosses(const Rows &rows, bool isPackage) { return Walk(rows, isPackage).run(); }

} // namespace EDATool

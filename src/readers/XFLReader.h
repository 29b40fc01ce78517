// Reads packages and boards of the plain text format XFL.
#pragma once

#include "host/FileSystem/CSVParserBase.h"
#include "readers/EDAReader.h"
#include "readers/XFLReaderLimits.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace EDA {

// One file is one design: a stack of layers, a table of shapes, an edge, parts, placements, kinds of vias,
// and nets with their copper and vias. It is read as rows of fields between blanks and tabs; a row that
// begins with "#" is a comment.
//
// In board mode the file becomes a board with layers, loose traces, parts with placements, and vias. In
// component mode all of it becomes the body outlines of one component with one placement, each with a height
// range and a material: the edge once for each layer, the dies on top of the stack, vias and copper. Such a
// package can be put on a larger board; its own board then has no layers.
//
// What a caller should know:
// - Keywords compare with case. What a section or a shape uses must stand before it in the file.
// - Every length is divided by the scale, save the thickness of a plating, which is in board units.
// - A number that can't be read is 0. Rows with too few fields are passed over, and so are items on layers
//   that the file doesn't have. Nothing of this gives a message.
// - A reader reads one file. A second one goes on with the layers, shapes and scale that the first one left.
class XFLReader : public EDAReader {
public:
    explicit XFLReader(bool componentMode) : componentMode_(componentMode) {}
    XFLReader(bool componentMode, const XFLReaderLimits &limits)
        : componentMode_(componentMode), limits_(limits) {}

    // False, without a message, when the file is missing, unreadable or has no rows. Otherwise true. The
    // error text then is empty, but for a line
    //   "More than N THINGS: the others are left out."
    // for each limit that was reached. The name of the file, without its extension, becomes that of the board
    // or of the component.
    bool readFile(const std::string &path) override;

    // The "XFL" preferences.
    EntityModel::Entity *getOptions() override;

    // "MAJOR.MINOR" as the file last read with one gave it; empty before.
    const std::string &getVersion() const { return version_; }

private:
    using RowIterator = FileSystem::CSVParserBase::RowIterator;
    using Row = FileSystem::CSVParserBase::Row;

    // An entry of the table of shapes, or one that is given in place.
    struct Shape {
        std::string type;
        std::vector<std::string> parameters;
    };

    struct ViaDefinition {
        int shapeId = 0;
        double storedValue = 0.0; // of no known meaning
        double platingThickness = 0.0;
    };

    // The traces that the nets of a file put on one layer of the board. They go there at the end of the file:
    // until then holes are added to the last one that is no route, however many routes stand behind it. They
    // stay where they are: a list of all in one piece would be moved as it grows.
    struct LayerTraces {
        static constexpr std::size_t blockSize = 256;
        std::vector<std::vector<EDATrace>> blocks;
        EDATrace *lastShape = nullptr;

        EDATrace &add();
        std::size_t size() const;
    };

    struct ViaSpan {
        int start, end; // layers
    };

    struct Counter {
        std::size_t used = 0;
        bool isFull = false;
    };

    // What lasts for one call of readFile.
    struct ReadState {
        std::string net;
        bool inNet = false;
        Shape shape; // the one given in place last; kept for its memory
        std::vector<LayerTraces> layers;
        Counter points, parameters, items, bodyLayers, sharedText;
    };

    static constexpr std::string_view dielectricType = "D"; // of a layer; any other is a conductor

    struct Section;
    struct RouteRule;
    struct Target;
    using Place = std::pair<double, double>;

    // The frame of a file: each section gives the row where it stopped, its last one or the end.
    void readSections(RowIterator row, const RowIterator &end);
    RowIterator readVersion(RowIterator row, const RowIterator &end);
    RowIterator readUnit(RowIterator row, const RowIterator &end);
    RowIterator readScale(RowIterator row, const RowIterator &end);
    RowIterator readLayers(RowIterator row, const RowIterator &end);
    RowIterator readShapes(RowIterator row, const RowIterator &end);
    RowIterator readBoardGeometry(RowIterator row, const RowIterator &end);
    RowIterator readParts(RowIterator row, const RowIterator &end);
    RowIterator readComponents(RowIterator row, const RowIterator &end);
    RowIterator readVias(RowIterator row, const RowIterator &end);
    RowIterator readRoutes(RowIterator row, const RowIterator &end);

    void addLayer(const Row &row, double &total);
    void addBodyLayers(const Shape &shape);
    void findCorner(const Shape &shape);
    void finishComponent(const std::string &modelName);
    void finishLayers();

    // Steps to the next row that is no comment, also to one whose first field is empty. False at the end.
    static bool nextRow(RowIterator &row, const RowIterator &end);
    // The same within a section. False at its ".end" as well.
    static bool nextRowOfSection(RowIterator &row, const RowIterator &end);
    // The field of a row, empty past its last one.
    static const std::string &field(const Row &row, std::size_t index);
    // The same as a whole number, and as a length.
    static int intField(const Row &row, std::size_t index);
    double lengthField(const Row &row, std::size_t index) const;
    double getScaledDimension(const std::string &field) const;

    // Reads the type from the field `typeIndex`, and the parameters behind it and `skip` more fields. A block
    // that is open at the end of the row goes on in the next rows. Leaves `row` on the last one used.
    void readShape(Shape &shape, RowIterator &row, const RowIterator &end, std::size_t typeIndex,
                   std::size_t skip);
    void addParameters(Shape &shape, const Row &row, std::size_t from, bool &blockOpen);
    // Passes over a block that the row opens from the field `from` on. Leaves `row` on the last one of it.
    static void skipBlock(RowIterator &row, const RowIterator &end, std::size_t from);

    // Parts, placements and kinds of vias.
    void addPart(const Row &row);
    void generateChipOutline(const Row &row, EDAOutline &outline);
    void addPlacement(const Row &row);
    double mountingOffset(long long layer, long long numLayers, bool onTop) const;

    // Routes. Each reads one row of a net, and the rows of its block. Layers count from 1.
    void readRouteRow(RowIterator &row, const RowIterator &end);
    void leaveNet(RowIterator &row, const RowIterator &end, bool hasPlace);
    void readVia(RowIterator &row, const RowIterator &end, bool hasPlace);
    void readPlacedShape(RowIterator &row, const RowIterator &end, bool hasPlace);
    void readShapeInPlace(RowIterator &row, const RowIterator &end, bool hasPlace);
    void readVoid(RowIterator &row, const RowIterator &end, bool hasPlace);
    void readPath(RowIterator &row, const RowIterator &end, bool hasPlace);

    void addVia(const Row &row, const ViaSpan &span, double diameter, double plating);
    void addBodyVia(const Row &row, const ViaSpan &span, double diameter);
    void addShape(int layer, const Shape &shape, Place place, double rotation);
    LayerTraces &tracesOf(int layer);
    // A new trace of the net, and a new body of the component for one or for anything. The reference stays
    // valid until the next one.
    EDATrace &newTrace(int layer, bool isRoute);
    EDAOutline &newBodyTrace(int layer);
    EDAOutline &newBody();
    EDAOutline &lastBody();
    void addHole(int layer, const EDAOutline &hole);
    void thicken(EDAOutline &line, double width);

    // Whether an item may lie on the layer: one of the board, or for a component one of the rows.
    bool hasLayer(int layer) const;
    // Whether both faces of a conductor layer are among the offsets.
    bool hasFaces(int layer) const;
    // The upper and the lower face of a conductor layer. Faces count from 0 at the top of the stack, and the
    // rows of the layers are taken to be a conductor and a dielectric in turn.
    static long long upperFace(int layer) { return 2LL * layer - 2; }
    static long long lowerFace(int layer) { return 2LL * layer - 1; }
    bool hasFace(long long face) const;
    // The height of a face over the bottom of the stack.
    double heightOf(long long face) const;
    const std::string &conductorMaterial(int layer);
    double totalThickness() const;
    EDAOutline &body() { return component_.getOutline(); }

    // Shapes.
    const Shape &findShape(int id) const;
    // The place that the last two parameters are; the origin where there are fewer.
    Place placeOf(const Shape &shape) const;
    double parameter(const Shape &shape, std::size_t index) const;
    // Adds the points of a shape, turned by `rotation` degrees about its place.
    void generateOutline(EDAOutline &outline, const Shape &shape, double x, double y, double rotation);
    void addShapePoints(const Target &target, const Shape &shape);
    void addPolygon(const Target &target, const Shape &shape);
    void addCurve(const Target &target, const Shape &shape);
    void addCircle(EDAOutline &outline, double x, double y, double diameter);
    // Add a point while there is room; false then.
    bool addPoint(EDAOutline &outline, int index, double x, double y, double angle);
    bool addArc(const Target &target, double x, double y, double centreX, double centreY, bool clockwise);

    // Count towards a limit. False, with a message the first time, beyond it.
    bool take(Counter &counter, std::size_t count, std::size_t limit, const char *things);
    bool takePoints(std::size_t count);
    bool takeItem();
    // A text that any number of items may share, as each of them keeps it; empty beyond the limit.
    const std::string &takeText(const std::string &text);

    bool componentMode_;
    EDAComponent component_{"Component"};
    double lowestX_ = 0.0;
    double highestY_ = 0.0;
    std::string version_;
    double scale_ = 1.0;
    std::vector<double> layerOffsets_; // of the faces between the layers, from the top of the stack
    std::vector<std::string> layerNames_;
    std::vector<std::string> layerTypes_;
    std::vector<std::string> conductorMaterials_;
    std::vector<std::string> dielectricMaterials_;
    std::map<int, Shape> shapes_;
    std::map<std::string, ViaDefinition> viaDefinitions_;

    XFLReaderLimits limits_;
    ReadState state_;
};

} // namespace EDA

// What a layout database holds, as plain records. Lengths are in metres, angles in degrees.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace QvDbWrap {

struct _mFPOINT {
    double x = 0;
    double y = 0;
};

// A point of a bond wire, in the board's frame; z is measured up from the board's bottom face.
struct _mFPOINT3D {
    double x = 0;
    double y = 0;
    double z = 0;
};

// A closed shape of straight edges, the last point not repeated.
struct geomElem {
    enum Kind { Box = 0, Polygon = 1, Circle = 2 };
    enum Role { Solid = 0, Hole = 1 };

    std::vector<_mFPOINT> points; // a box has two: opposite corners
    int kind = Polygon;
    int role = Solid;
    double radius = 0; // of a circle, which stands in via models alone
    std::string name;
    std::string netName; // empty: on no net
};

// A geometric object that gives its border as points.
class GeomObj {
public:
    GeomObj() = default;
    explicit GeomObj(std::vector<_mFPOINT> vertices) : vertices_(std::move(vertices)) {}

    // Appends the border's points, moved by `offset`. `tolerance` is the largest distance between a curve and
    // its chords, 0 for the object's own; these objects have no curves.
    void GetVertexes(std::vector<_mFPOINT> &vertices, double tolerance, _mFPOINT offset) const {
        static_cast<void>(tolerance);
        for (const _mFPOINT &vertex : vertices_)
            vertices.push_back({vertex.x + offset.x, vertex.y + offset.y});
    }

private:
    std::vector<_mFPOINT> vertices_;
};

// A list that hands out its items in order.
template <typename Item>
class Container {
public:
    using const_iterator = typename std::vector<Item>::const_iterator;

    Container() = default;
    explicit Container(std::vector<Item> items) : items_(std::move(items)) {}
    const_iterator begin() const { return items_.begin(); }
    const_iterator end() const { return items_.end(); }

private:
    std::vector<Item> items_;
};

using GeomObjCont = Container<GeomObj>;

class ShapeElem {
public:
    ShapeElem() = default;
    explicit ShapeElem(GeomObjCont objects) : objects_(std::move(objects)) {}
    const GeomObjCont &gGeomCont() const { return objects_; }

private:
    GeomObjCont objects_;
};

using ShapeElemCont = Container<ShapeElem>;

class Shape {
public:
    Shape() = default;
    explicit Shape(ShapeElemCont elements) : elements_(std::move(elements)) {}
    const ShapeElemCont &gShapeElemCont() const { return elements_; }

private:
    ShapeElemCont elements_;
};

// A piece of the board's edge: a shape, or the elements where that is null. The first ring of all is the edge,
// the others are cut-outs.
struct outlineData {
    const Shape *shape = nullptr; // owned by the wrapper
    std::vector<geomElem> elements;
};

// A layer of the stack-up, from the top of the board down.
struct layerData {
    enum Type { Conductor = 0, Dielectric = 1 };

    std::vector<geomElem> elements; // each solid is followed by its holes
    std::string name;
    std::string conductorMaterial;
    std::string dielectricMaterial;
    double zLow = 0; // measured up from the board's bottom face
    double zHigh = 0;
    int layerType = Conductor;
};

struct viaModelData {
    geomElem shape; // about 0, 0
    std::string name;
    std::string fillMaterial;
    double platingThickness = 0;
    double secondPlatingThickness = 0; // counts where the first is below 1e-9
};

struct viaData {
    std::string name;
    std::string modelName;
    std::string fromLayer;
    std::string toLayer;
    double x = 0;
    double y = 0;
    double angle = 0;
};

struct componentModelData {
    geomElem shape; // in the package's own axes
    std::string name;
    std::string manufacturer;
    std::string partNumber;
    double height = 0;
    bool isMoldEnabled = false;
    std::string moldMaterial;
    double moldLength = 0;
    double moldWidth = 0;
    double moldHeight = 0;
};

// A bump below a component. A size that is not above 0 is not known.
struct bumpData {
    std::string name;
    _mFPOINT coord;
    int type = 0; // 0: without a shape
    double height = 0;
    double maxDiameter = 0;
    double topDiameter = 0;
    double bottomDiameter = 0;
    std::string materialName;
    std::string layerName;

    const std::string &getBumpName() const { return name; }
    const _mFPOINT &getCoord() const { return coord; }
    int getBumpType() const { return type; }
    double getBumpHeight() const { return height; }
    double getMaxDiameter() const { return maxDiameter; }
    double getTopDiameter() const { return topDiameter; }
    double getBottomDiameter() const { return bottomDiameter; }
    const std::string &getBumpMaterialName() const { return materialName; }
    const std::string &getLayerName() const { return layerName; }
};

// A component on the board. The rotation is anticlockwise as seen from above the top, on either side; on the
// bottom the package is mirrored in X before that.
struct componentData {
    std::string compName;
    std::string modelName;
    std::string startLayerName; // the outer conductor that it is mounted on
    _mFPOINT coord;
    double rotation = 0;
    std::vector<bumpData> bumps;

    const std::string &getCompName() const { return compName; }
    const std::string &getModelName() const { return modelName; }
    const std::string &getStartLayerName() const { return startLayerName; }
    const _mFPOINT &getCoord() const { return coord; }
    double getCompRotation() const { return rotation; }
    const std::vector<bumpData> &getBumps() const { return bumps; }
};

struct wirebondPath {
    double diameter = 0;
    std::vector<_mFPOINT3D> points;
};

struct wirebondData {
    std::string name;
    std::string modelName;
    std::string groupName;
    std::string startLayer;
    std::string endLayer;
    std::string material;
    std::vector<wirebondPath> paths;
};

// All records of one design.
struct Layout {
    std::vector<outlineData> outlines;
    std::vector<layerData> layers;
    std::vector<viaModelData> viaModels;
    std::vector<viaData> vias;
    std::vector<componentModelData> componentModels;
    std::vector<componentData> components;
    std::vector<wirebondData> wirebonds;
};

} // namespace QvDbWrap

// A board with one layer of conductors, on a PCB or a substrate.
#pragma once

#include "support/ImportBench.h"
#include "support/Outlines.h"

#include <cstdio>
#include <ostream>

namespace TestSupport {

// The types that conductors have on one kind of board.
struct ConductorFamily {
    const char *importAs;
    TypeRef board, net, route, conductor, hole;
};

inline const ConductorFamily onPcb{"PCB",
                                   TypeRef("PCB"),
                                   TypeRef("Net"),
                                   TypeRef("Trace"),
                                   TypeRef("PCB Conductor"),
                                   TypeRef("PCB Conductor Hole")};
inline const ConductorFamily onSubstrate{"Component",
                                         TypeRef("Substrate"),
                                         TypeRef("Substrate Net"),
                                         TypeRef("Substrate Trace"),
                                         TypeRef("Substrate Conductor"),
                                         TypeRef("Substrate Conductor Hole")};

inline void PrintTo(const ConductorFamily &family, std::ostream *out) { *out << family.board.getLabel(); }

// The board lies from (10, 20) to (110, 70), so that (10, 70) is the origin of what lies on it.
struct ConductorBench : ImportBench {
    explicit ConductorBench(const ConductorFamily &types = onPcb) : family(types) {
        rectangle(0, 10, 20, 110, 70);
        set(Import_Type_t, family.importAs);
    }

    static EDA::EDATrace shape(const EDA::EDAOutline &outline, const std::string &name = "") {
        EDA::EDATrace trace;
        trace.setName(name);
        trace.getOutline() = outline;
        return trace;
    }
    static EDA::EDATrace route(double width, const char *points, const std::string &name = "") {
        EDA::EDATrace trace = shape(EDA::test::outline(points), name);
        trace.setRouteWidth(width);
        return trace;
    }
    void add(EDA::EDATrace trace) { layer.addTrace(trace); }

    // Imports the board with the layer and gives the layer's entity.
    Entity *importLayer(Tools::ToolProgress *progress = nullptr) {
        board().addLayer(layer);
        boardEntity = import(progress);
        const auto layers = children(boardEntity, Conductor_Layer_t);
        return layerEntity = layers.empty() ? nullptr : layers[0];
    }
    std::vector<Entity *> conductors() { return children(layerEntity, family.conductor); }
    std::vector<Entity *> routes() { return children(layerEntity, family.route); }
    std::vector<Entity *> nets() { return children(layerEntity, family.net); }
    std::vector<Entity *> holes(Entity *conductor) { return children(conductor, family.hole); }

    // The only conductor of an import of this outline.
    Entity *importOne(const EDA::EDAOutline &outline) {
        add(shape(outline));
        importLayer();
        const auto all = conductors();
        EXPECT_EQ(all.size(), 1u);
        return all.size() == 1 ? all[0] : nullptr;
    }

    ConductorFamily family;
    EDA::EDABoardLayer layer;
    Entity *boardEntity = nullptr;
    Entity *layerEntity = nullptr;
};

inline EDA::EDAOutline circleOutline(double x, double y, double radius, bool isHole = false) {
    EDA::EDAOutline outline(isHole);
    outline.addPoint(0, x, y, 0.0);
    outline.addPoint(0, x + radius, y, 360.0);
    return outline;
}

inline int numOutlineHoles(Entity *conductor) {
    const Attribute *const holes = conductor ? conductor->readAttribute(Outline_Holes_t) : nullptr;
    return holes ? static_cast<const ListAttribute *>(holes)->size() : -1;
}

// The points as the plain text of the C library gives them, read back by the attribute itself.
inline std::vector<double> throughPlainText(const std::vector<double> &values) {
    std::string text;
    for (const double value : values) {
        char buffer[400];
        std::snprintf(buffer, sizeof buffer, "%lf", value);
        text += text.empty() ? buffer : std::string(",") + buffer;
    }
    Model holder(PCB_Conductor_t);
    Entity *const conductor = holder.root();
    EXPECT_TRUE(EntityEditor::setValue(conductor, Outline_t, text + " <mm>"));
    return static_cast<DoubleListAttribute *>(conductor->findAttribute(Outline_t))->values();
}

} // namespace TestSupport

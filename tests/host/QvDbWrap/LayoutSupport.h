// Layouts for tests: one with every field of every record set, and how two are compared.
#pragma once

#include "host/QvDbWrap/LayoutFile.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace LayoutTest {

using namespace QvDbWrap;

inline geomElem element(int kind, int role, const std::string &name, std::vector<_mFPOINT> points) {
    geomElem result;
    result.kind = kind;
    result.role = role;
    result.name = name;
    result.netName = "net of " + name;
    result.radius = 0.1 + 0.2; // no short decimal number
    result.points = std::move(points);
    return result;
}

// Every field has a value of its own, so that two that are taken for each other show.
inline Layout wholeLayout() {
    Layout layout;
    outlineData outline;
    outline.elements = {element(1, 0, "edge", {{0, 0}, {0.1, 0}, {0.1, 1.0 / 3}}),
                        element(0, 1, "box", {{1, 2}, {3, 4}})};
    layout.outlines = {outline, outlineData()};
    layerData layer;
    layer.elements = {element(1, 0, "pour", {{-1e-300, 5e-324}}), element(7, -3, "odd", {})};
    layer.name = "TOP \"1\"";
    layer.conductorMaterial = "Cu";
    layer.dielectricMaterial = "FR4";
    layer.zLow = 1.565e-3;
    layer.zHigh = 1.6e-3;
    layerData other;
    other.layerType = 42;
    layout.layers = {layer, other};
    viaModelData model;
    model.shape = element(2, 0, "round", {});
    model.name = "M\\1";
    model.fillMaterial = "Resin";
    model.platingThickness = 25e-6;
    model.secondPlatingThickness = -0.0;
    layout.viaModels = {model};
    layout.vias = {{"v1", "M\\1", "TOP", "BOTTOM", 1e22, -1.7976931348623157e308, 45.5}};
    componentModelData package;
    package.shape = element(1, 0, "body", {{1, 1}});
    package.name = "P";
    package.manufacturer = "Maker";
    package.partNumber = "Part";
    package.height = 1e-3;
    package.isMoldEnabled = true;
    package.moldMaterial = "Mold";
    package.moldLength = 0.011;
    package.moldWidth = 0.012;
    package.moldHeight = 0.013;
    layout.componentModels = {package};
    componentData component;
    component.compName = "U1\n\t\r\x01\x7f";
    component.modelName = "P";
    component.startLayerName = "\xC3\xA9\xFF";
    component.coord = {0.25, -0.5};
    component.rotation = 359.9;
    component.bumps.push_back(bumpData{"b1", {1, 2}, -7, 3, 4, 5, 6, "SAC", "TOP"});
    layout.components = {component};
    wirebondData wirebond;
    wirebond.name = "w";
    wirebond.modelName = "wm";
    wirebond.groupName = "wg";
    wirebond.startLayer = "ws";
    wirebond.endLayer = "we";
    wirebond.material = "Au";
    wirebond.paths = {{25e-6, {{1, 2, 3}, {4, 5, 6}}}, {26e-6, {}}};
    layout.wirebonds = {wirebond};
    return layout;
}

// All that a file holds behind its mark.
inline std::string form(const std::string &records) { return "EDA-LAYOUT 1\n" + records + "end\n"; }

// A board of 20 by 10 mm, two conductors and a dielectric, one plated hole, one part a side.
inline std::string smallBoard() {
    return form("outline\n"
                "element polygon solid 0 \"\" \"\" 0 0 0.02 0 0.02 0.01 0 0.01\n"
                "layer conductor \"TOP\" 0.001565 0.0016 \"Copper\" \"FR4\"\n"
                "element polygon solid 0 \"\" \"GND\" 0.001 0.001 0.009 0.001 0.009 0.009 0.001 0.009\n"
                "layer dielectric \"CORE\" 0.000035 0.001565 \"\" \"FR4\"\n"
                "layer conductor \"BOTTOM\" 0 0.000035 \"Copper\" \"FR4\"\n"
                "viamodel \"V\" \"\" 0.000025 0\n"
                "element circle solid 0.0002 \"\" \"\"\n"
                "via \"V1\" \"V\" \"TOP\" \"BOTTOM\" 0.005 0.005 0\n"
                "package \"P\" \"\" \"\" 0.001 no \"\" 0 0 0\n"
                "element polygon solid 0 \"\" \"\" -0.001 -0.001 0.001 -0.001 0.001 0.001 -0.001 0.001\n"
                "component \"U1\" \"P\" \"TOP\" 0.005 0.005 0\n"
                "component \"U2\" \"P\" \"BOTTOM\" 0.015 0.005 0\n");
}

// What goes wrong when these bytes are read; empty when nothing does.
inline std::string failureOf(const std::string &bytes, const LayoutLimits &limits = LayoutLimits()) {
    try {
        parseLayout(bytes, limits);
        return std::string();
    } catch (const std::runtime_error &error) {
        return error.what();
    }
}

} // namespace LayoutTest

// IPC-2581 documents put together from pieces, and what is read of them.
#pragma once

#include "host/QvDbWrap/IpcDocument.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace IpcSupport {

using namespace QvDbWrap;

// A document of one board in millimetres: two conductors, and a dielectric of 1.53 mm between them.
struct Text {
    std::string revision = "C";
    std::string units = "MILLIMETER";
    std::string content;
    std::string specs;
    std::string layers = R"(<Layer name="TOP" layerFunction="SIGNAL" side="TOP"/>
        <Layer name="CORE" layerFunction="DIELCORE" side="INTERNAL"/>
        <Layer name="BOTTOM" layerFunction="SIGNAL" side="BOTTOM"/>)";
    std::string stackup = R"(<Stackup name="S"><StackupGroup name="G">
        <StackupLayer layerOrGroupRef="TOP" thickness="0.035" sequence="1"/>
        <StackupLayer layerOrGroupRef="CORE" thickness="1.53" sequence="2"/>
        <StackupLayer layerOrGroupRef="BOTTOM" thickness="0.035" sequence="3"/>
        </StackupGroup></Stackup>)";
    std::string profile = R"(<Profile><Polygon><PolyBegin x="0" y="0"/><PolyStepSegment x="100" y="0"/>
        <PolyStepSegment x="100" y="50"/><PolyStepSegment x="0" y="50"/><PolyStepSegment x="0" y="0"/>
        </Polygon></Profile>)";
    std::string step;       // in the step, after the profile
    std::string otherSteps; // after it

    std::string text() const {
        return "<IPC-2581 revision=\"" + revision + "\" xmlns=\"http://webstds.ipc.org/2581\"><Content>" +
               content + "</Content><Ecad><CadHeader units=\"" + units + "\">" + specs +
               "</CadHeader><CadData>" + layers + stackup + "<Step name=\"board\">" + profile + step +
               "</Step>" + otherSteps + "</CadData></Ecad></IPC-2581>";
    }
};

struct Read {
    Layout layout;
    WrapperLog log;

    const layerData &layer(const std::string &name) const {
        for (const layerData &layer : layout.layers)
            if (layer.name == name) return layer;
        throw std::logic_error("no layer " + name);
    }
    const std::vector<geomElem> &elements(const std::string &layerName) const {
        return layer(layerName).elements;
    }
    const viaModelData &model(const viaData &via) const {
        for (const viaModelData &model : layout.viaModels)
            if (model.name == via.modelName) return model;
        throw std::logic_error("no model " + via.modelName);
    }
    const componentModelData &model(const componentData &component) const {
        for (const componentModelData &model : layout.componentModels)
            if (model.name == component.modelName) return model;
        throw std::logic_error("no model " + component.modelName);
    }
};

inline Read read(const std::string &text, const IpcSettings &settings = {}) {
    Read result;
    IpcXml xml(QByteArray::fromStdString(text));
    result.layout = readIpcDocument(xml, settings, result.log);
    return result;
}

inline Read read(const Text &text, const IpcSettings &settings = {}) { return read(text.text(), settings); }

// A document of the default layers with this in its step.
inline Read readStep(const std::string &step) {
    Text text;
    text.step = step;
    return read(text);
}

// The same with a set of features on the top.
inline Read readTop(const std::string &sets) {
    return readStep("<LayerFeature layerRef=\"TOP\">" + sets + "</LayerFeature>");
}

// A square about a place, in the units of the document.
inline std::string square(double x, double y, double width) {
    return "<Features><Location x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
           "\"/><RectCenter width=\"" + std::to_string(width) + "\" height=\"" + std::to_string(width) +
           "\"/></Features>";
}

inline double areaOf(const std::vector<_mFPOINT> &ring) {
    double twice = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const _mFPOINT &a = ring[i], &b = ring[(i + 1) % ring.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return std::abs(twice) / 2;
}

// Square millimetres of solids less holes.
inline double areaOf(const std::vector<geomElem> &elements) {
    double area = 0;
    for (const geomElem &element : elements)
        area += (element.role == geomElem::Hole ? -1 : 1) * areaOf(element.points);
    return area * 1e6;
}

inline void expectRing(const std::vector<_mFPOINT> &ring, const std::vector<_mFPOINT> &millimetres) {
    ASSERT_EQ(ring.size(), millimetres.size());
    for (std::size_t i = 0; i < ring.size(); ++i) {
        EXPECT_NEAR(ring[i].x, millimetres[i].x * 1e-3, 1e-12) << i;
        EXPECT_NEAR(ring[i].y, millimetres[i].y * 1e-3, 1e-12) << i;
    }
}

} // namespace IpcSupport

// A reader whose board the test fills.
#pragma once

#include "readers/EDAReader.h"

#include <functional>
#include <string>

namespace TestSupport {

class BoardReader : public EDA::EDAReader {
public:
    bool readFile(const std::string &) override { return true; }
    bool readLayerDetails() override {
        if (!layerDetails) error_ = "no layers today";
        return layerDetails;
    }
    EntityModel::Entity *getOptions() override { return nullptr; }
    void updateGeometryConversionOptions(GeometryConversionOptions &options) override {
        if (changeOptions) changeOptions(options);
    }

    bool layerDetails = true;
    std::function<void(GeometryConversionOptions &)> changeOptions;
};

} // namespace TestSupport

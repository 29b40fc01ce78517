// One read of an XFL file: its frame, layers, shapes and edge.
#include "readers/XFLReader.h"

#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/CSVParser.h"
#include "host/FileSystem/Path.h"
#include "host/Profiling/ProfileSectionProxy.h"
#include "text/Text.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace EDA {

// The keyword of a section and who reads it.
struct XFLReader::Section {
    std::string_view keyword;
    RowIterator (XFLReader::*read)(RowIterator row, const RowIterator &end);
};

bool XFLReader::readFile(const std::string &path) {
    Profiling::ProfileSectionProxy section("XFLReader", __LINE__, "EDA::XFLReader::readFile", "ReadXFLFile",
                                           true, "");
    error_.clear();
    state_ = {};
    // Comments are left to nextRow: a comment row counts as a row, so a file of nothing else is no failure.
    FileSystem::CSVParser parser(' ', true, false, '\n', false);
    parser.addSeparator('\t');
    parser.parseFile(path, true, true, false);
    if (parser.getNumberOfRows() == 0) return false;
    const std::string modelName = FileSystem::Path::stripExtension(FileSystem::Path::getLastToken(path));
    if (!componentMode_) board_.setName(modelName);
    readSections(parser.beginRows(), parser.endRows());
    if (componentMode_)
        finishComponent(modelName);
    else
        finishLayers();
    state_ = {};
    return true;
}

void XFLReader::readSections(RowIterator row, const RowIterator &end) {
    static constexpr Section sections[] = {
        {".version", &XFLReader::readVersion}, {".unit", &XFLReader::readUnit},
        {".scale", &XFLReader::readScale},     {".layer", &XFLReader::readLayers},
        {".shape", &XFLReader::readShapes},    {".board_geom", &XFLReader::readBoardGeometry},
        {".part", &XFLReader::readParts},      {".component", &XFLReader::readComponents},
        {".via", &XFLReader::readVias},        {".route", &XFLReader::readRoutes},
    };
    for (; row != end; ++row) {
        const std::string &keyword = field(*row, 0);
        const auto found = std::find_if(std::begin(sections), std::end(sections),
                                        [&](const Section &section) { return section.keyword == keyword; });
        if (found != std::end(sections)) row = (this->*found->read)(row, end);
    }
}

XFLReader::RowIterator XFLReader::readVersion(RowIterator row, const RowIterator &) {
    if (row->size() > 2) version_ = (*row)[1] + '.' + (*row)[2];
    return row;
}

XFLReader::RowIterator XFLReader::readUnit(RowIterator row, const RowIterator &) {
    if (row->size() > 1) board_.setUnits((*row)[1]);
    return row;
}

// A scale of 0, or one that is no number, would put every length at infinity: the one before it stays.
XFLReader::RowIterator XFLReader::readScale(RowIterator row, const RowIterator &) {
    const double scale = parseDouble(field(*row, 1), 0.0, 0.0);
    if (scale != 0.0) scale_ = scale;
    return row;
}

XFLReader::RowIterator XFLReader::readLayers(RowIterator row, const RowIterator &end) {
    double total = 0.0;
    layerOffsets_.push_back(total);
    while (nextRowOfSection(row, end))
        if (row->size() >= 5 && takeItem()) addLayer(*row, total);
    if (!componentMode_) board_.setThickness(total);
    return row;
}

// The top offset of a layer is that of its lower face: this is intended, the import relies on it. A
// dielectric counts there, but is no layer of the board.
void XFLReader::addLayer(const Row &row, double &total) {
    const double thickness = lengthField(row, 1);
    total += thickness;
    layerOffsets_.push_back(total);
    layerNames_.push_back(row[0]);
    layerTypes_.push_back(row[2]);
    conductorMaterials_.push_back(row[3]);
    dielectricMaterials_.push_back(row[4]);
    if (componentMode_ || row[2] == dielectricType) return;
    EDABoardLayer layer(true);
    layer.setName(row[0]);
    layer.setThickness(thickness);
    layer.setTopOffset(total);
    board_.addLayer(std::move(layer));
}

XFLReader::RowIterator XFLReader::readShapes(RowIterator row, const RowIterator &end) {
    while (nextRowOfSection(row, end)) {
        if (row->size() < 3) continue;
        const int id = intField(*row, 0);
        Shape shape;
        readShape(shape, row, end, 1, 0);
        if (takeItem()) shapes_[id] = std::move(shape);
    }
    return row;
}

// The section is one shape and has no end row of its own.
XFLReader::RowIterator XFLReader::readBoardGeometry(RowIterator row, const RowIterator &end) {
    if (!nextRow(row, end)) return row;
    Shape &shape = state_.shape;
    readShape(shape, row, end, 0, 0);
    if (componentMode_) {
        addBodyLayers(shape);
        findCorner(shape);
    } else {
        generateOutline(board_.getOutline(), shape, 0.0, 0.0, 0.0);
    }
    return row;
}

// The edge becomes a body for each layer. They are inner outlines of the component, whose own outline stays
// without points. Between two lists of layers lies a pair of faces without a name or a material.
void XFLReader::addBodyLayers(const Shape &shape) {
    const double total = totalThickness();
    for (std::size_t i = 1; i < layerOffsets_.size(); ++i) {
        if (!take(state_.bodyLayers, 1, limits_.bodyLayers, "body layers") || !takeItem()) return;
        EDAOutline &outline = newBody();
        generateOutline(outline, shape, 0.0, 0.0, 0.0);
        outline.setZDimensions(total - layerOffsets_[i], total - layerOffsets_[i - 1]);
        outline.setName(takeText(field(layerNames_, i - 1)));
        const bool isDielectric = field(layerTypes_, i - 1) == dielectricType;
        outline.setMaterial(
            takeText(field(isDielectric ? dielectricMaterials_ : conductorMaterials_, i - 1)));
    }
}

// Where the voids of the nets count from. An edge without points leaves it as it is.
void XFLReader::findCorner(const Shape &shape) {
    constexpr double farAway = 1e9;
    EDAOutline outline;
    generateOutline(outline, shape, 0.0, 0.0, 0.0);
    double lowestX = farAway, highestY = -farAway;
    bool hasPoints = false;
    for (const auto &[x, y] : outline.getPoints(true)) {
        if (!std::isfinite(x) || !std::isfinite(y)) continue;
        lowestX = std::min(lowestX, x);
        highestY = std::max(highestY, y);
        hasPoints = true;
    }
    if (!hasPoints) return;
    lowestX_ = lowestX;
    highestY_ = highestY;
}

void XFLReader::finishComponent(const std::string &modelName) {
    component_.setName(modelName);
    component_.setPartNumber(modelName);
    board_.addComponent(component_, false);
    EDAComponentPlacement placement;
    placement.setName(modelName);
    placement.setPartNumber(modelName);
    board_.addComponentPlacement(std::move(placement));
}

void XFLReader::finishLayers() {
    int index = 0;
    for (LayerTraces &made : state_.layers) {
        EDABoardLayer &layer = board_.getNthLayer(index++);
        layer.reserveTraces(layer.numTraces() + made.size());
        for (std::vector<EDATrace> &block : made.blocks) {
            for (EDATrace &trace : block)
                layer.addTrace(std::move(trace));
            std::vector<EDATrace>().swap(block);
        }
    }
}

EntityModel::Entity *XFLReader::getOptions() {
    return EntityModel::UserPreference::instance().getPreference(EntityModel::EDA_Import_Options_t,
                                                                 EntityModel::Name_t, "XFL", true, nullptr);
}

} // namespace EDA

// From the records of the external suite to the board: the stages, vias, components and bond wires.
#include "readers/VelkinEDAReader.h"

#include "host/FileSystem/Path.h"
#include "host/Geometry/Vec3T.h"
#include "host/QvDbWrap/DbWrapper.h"
#include "host/Tools/EntityModelConstantTr.h"
#include "host/Tools/ToolProgress.h"
#include "readers/VelkinEDAReaderDetail.h"

#include <utility>

namespace EDA {

using EntityModel::EntityModelConstantTr;
using FileSystem::Path;

namespace {

// Metres; a thinner plating is none.
constexpr double thinnestPlating = 1e-9;

// Texts up to this length are free: with them a part is hardly larger.
constexpr std::size_t shortText = 64;

} // namespace

const std::string &VelkinEDAReader::Room::takeText(const std::string &text) {
    static const std::string none;
    if (text.size() <= shortText) return text;
    if (text.size() > textBytes) return ++textsLost, none;
    textBytes -= text.size();
    return text;
}

bool VelkinEDAReader::Room::takePoints(std::size_t count) {
    if (count > viaPoints) return ++shapesLost, false;
    viaPoints -= count;
    return true;
}

std::string VelkinEDAReader::Room::warnings() const {
    std::string text;
    if (textsLost > 0)
        text += "Warning: long names that many parts share were left out (" + std::to_string(textsLost) +
                " times).\n";
    if (shapesLost > 0)
        text += "Warning: large shapes of vias were left out (" + std::to_string(shapesLost) + " times).\n";
    return text;
}

void VelkinEDAReader::convert(const QvDbWrap::DbWrapper &wrapper, Job &job) {
    room_ = Room();
    board_.setSourceBoardFile(job.file);
    board_.setName(Path::getLastToken(Path::stripExtension(job.file)));
    board_.setImportType("EDA");
    board_.setUnits("m");
    showStage("Extracting Outlines");
    job.hasData = convertBoardOutlines(wrapper);
    startNextStage("Extracting Layers");
    Stack stack;
    job.hasData = convertBoardLayers(wrapper, stack) || job.hasData;
    startNextStage("Extracting Vias");
    convertBoardVias(wrapper);
    startNextStage("Extracting Components");
    convertBoardComponents(wrapper, stack);
    startNextStage("Extracting Wirebonds");
    convertBoardWirebonds(wrapper);
    warnings_ += room_.warnings();
}

void VelkinEDAReader::startNextStage(const char *text) const {
    if (toolProgress_ != nullptr) toolProgress_->addSteps(1);
    showStage(text);
}

void VelkinEDAReader::showStage(const char *text) const {
    if (toolProgress_ != nullptr)
        toolProgress_->setText(EntityModelConstantTr::tr(text, nullptr, -1).toStdString());
}

void VelkinEDAReader::convertBoardVias(const QvDbWrap::DbWrapper &wrapper) {
    const VelkinEDASection section("EDAConvertBoardVias");
    std::map<std::string, const QvDbWrap::viaModelData *> models;
    for (const QvDbWrap::viaModelData &model : wrapper.GetAllViaModels())
        models[model.name] = &model;
    const QvDbWrap::viaModelData missing;
    for (const QvDbWrap::viaData &record : wrapper.GetAllVias()) {
        const auto found = models.find(record.modelName);
        board_.addVia(viaOf(record, found != models.end() ? *found->second : missing), true);
    }
}

EDAVia VelkinEDAReader::viaOf(const QvDbWrap::viaData &record, const QvDbWrap::viaModelData &model) {
    EDAVia via;
    via.setHoleType("VIA");
    via.setName(record.name);
    via.setLayers(record.fromLayer, record.toLayer);
    via.setCentre(record.x, record.y);
    via.setAngle(record.angle);
    if (model.shape.kind == QvDbWrap::geomElem::Circle)
        via.setDiameter(2.0 * model.shape.radius);
    else if (room_.takePoints(model.shape.points.size()))
        convertGeometry(model.shape, via.getOutline(), 0);
    const double plating =
        model.platingThickness < thinnestPlating ? model.secondPlatingThickness : model.platingThickness;
    via.setPlatingThickness(plating);
    via.setPlated(plating > thinnestPlating);
    via.setFillMaterial(room_.takeText(model.fillMaterial));
    return via;
}

void VelkinEDAReader::convertBoardComponents(const QvDbWrap::DbWrapper &wrapper, const Stack &stack) {
    const VelkinEDASection section("EDAConvertBoardComponents");
    for (const QvDbWrap::componentModelData &record : wrapper.GetAllComponentModels())
        convertComponent(record);
    for (const QvDbWrap::componentData &record : wrapper.GetAllComponents())
        convertPlacement(record, stack);
}

void VelkinEDAReader::convertComponent(const QvDbWrap::componentModelData &record) {
    EDAComponent component("ELECTRICAL");
    component.setName(record.name);
    component.setManufacturer(record.manufacturer);
    component.setPartNumber(record.partNumber);
    component.setHeight(record.height);
    component.setMoldEnabled(record.isMoldEnabled && record.moldLength > 0.0 && record.moldWidth > 0.0);
    component.setMoldMaterialName(record.moldMaterial);
    // In this order: setting the height stores into the width, which the true width then replaces. The import
    // takes the component's height for the mold's, which stays unset.
    component.setMoldHeight(record.moldHeight);
    component.setMoldLength(record.moldLength);
    component.setMoldWidth(record.moldWidth);
    convertGeometry(record.shape, component.getOutline(), 0);
    board_.addComponent(component, true);
}

// Intended: a start layer that is not in the stack counts as its first.
void VelkinEDAReader::convertPlacement(const QvDbWrap::componentData &record, const Stack &stack) {
    const auto layer = stack.indices.find(record.getStartLayerName());
    const bool isOnBottom = layer != stack.indices.end() && layer->second > stack.numLayers / 2;
    EDAComponentPlacement placement;
    placement.setReferenceDesignator(record.getCompName());
    placement.setName(record.getModelName());
    placement.setBoardSide(isOnBottom ? "BOTTOM" : "TOP");
    placement.setLocation(record.getCoord().x, record.getCoord().y);
    placement.setAngle(isOnBottom ? 360.0 - record.getCompRotation() : record.getCompRotation());
    placement.setOffset(0.0 - (isOnBottom ? stack.bottomZ : stack.topGap));
    for (const QvDbWrap::bumpData &bump : record.getBumps())
        placement.addBump(bumpOf(bump, room_.takeText(record.getCompName()), stack), true);
    board_.addComponentPlacement(std::move(placement));
}

EDABump VelkinEDAReader::bumpOf(const QvDbWrap::bumpData &record, const std::string &group,
                                const Stack &stack) const {
    EDABump bump;
    bump.setName(record.getBumpName());
    bump.setCentre(record.getCoord().x, record.getCoord().y);
    bump.setBumpType(record.getBumpType());
    bump.setGroup(group);
    // Only sizes above 0 are stored.
    bump.setHeight(record.getBumpHeight());
    bump.setMaxDiameter(record.getMaxDiameter());
    bump.setTopDiameter(record.getTopDiameter());
    bump.setBottomDiameter(record.getBottomDiameter());
    bump.setMaterial(record.getBumpMaterialName());
    bump.setLayer(record.getLayerName());
    const auto layer = stack.topOffsets.find(record.getLayerName());
    if (layer != stack.topOffsets.end())
        bump.setVerticalOffset(board_.getThickness() - layer->second + bump.getHeight());
    return bump;
}

void VelkinEDAReader::convertBoardWirebonds(const QvDbWrap::DbWrapper &wrapper) {
    const VelkinEDASection section("EDAConvertBoardWirebonds");
    for (const QvDbWrap::wirebondData &record : wrapper.GetAllWirebonds())
        for (const QvDbWrap::wirebondPath &path : record.paths)
            board_.addWirebond(wirebondOf(record, path));
}

EDAWirebond VelkinEDAReader::wirebondOf(const QvDbWrap::wirebondData &record,
                                        const QvDbWrap::wirebondPath &path) {
    EDAWirebond wirebond;
    wirebond.setName(room_.takeText(record.name));
    wirebond.setModelName(room_.takeText(record.modelName));
    wirebond.setGroupName(room_.takeText(record.groupName));
    wirebond.setDiameter(path.diameter);
    wirebond.setMaterial(room_.takeText(record.material));
    wirebond.setStartLayer(room_.takeText(record.startLayer));
    wirebond.setEndLayer(room_.takeText(record.endLayer));
    for (const QvDbWrap::_mFPOINT3D &point : path.points)
        wirebond.addPoint(Geometry::Vec3T<double>(point.x, point.y, point.z));
    return wirebond;
}

} // namespace EDA

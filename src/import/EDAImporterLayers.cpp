// Layers: how they are modelled, their place in the stack, materials and images.
#include "import/EDAImporterDetail.h"

#include "host/EntityCore/ApplicationData.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/ReferencedFilesManager.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/Path.h"
#include "host/ServerModelGUI/LayerImageFile.h"
#include "host/ServerModelGUI/PCBLayerImageCalculator.h"

#include <QtGui/QImage>

namespace EDA {

using namespace EntityModel;
using FileSystem::Path;
using ServerConstructor::LayerImageFile;

namespace {

// A thickness or conductivity counts as given above this only; else the default of the layer's type stays.
constexpr double leastGiven = 1e-9;

// The folder beside the open model's file, named after it; one of the application for a model that was never
// saved.
std::string modelFolder() {
    const std::string folder = Path::stripExtension(EntityGUI::EntityManager::s_CurrentFilename);
    if (!folder.empty()) return folder;
    return EntityGUI::ApplicationData::getApplicationFolder(false, true, false,
                                                            EntityGUI::InstallationSettings::current());
}

// For the system such a name ends before the NUL, and is that of another file.
bool isFileName(const std::string &name) { return name.find('\0') == std::string::npos; }

bool isLoadable(const std::string &imageFile) {
    return FileSystem::File::size(imageFile) <= LayerImageFile::maxFileSize;
}

// The name of a copy: that of the source, told apart by entity and side.
std::string copyName(const std::string &imageFile, const std::string &suffix) {
    return Path::stripExtension(Path::getLastToken(imageFile)) + suffix + Path::getExtension(imageFile, true);
}

// The model counts heights from the board's bottom, the board counts offsets from its top.
double heightInBoard(const EDABoardLayer &layer, const EDABoard &board) {
    return board.getThickness() - layer.getTopOffset();
}

// What the picture itself tells: the conductor's share and the map of it.
void setImageValues(EntityModel::Entity *entity, const QImage &image) {
    ServerConstructor::PCBLayerImageCalculator calculator;
    calculator.initialise(entity, nullptr);
    std::vector<int> materialMap;
    const double percentage = calculator.calculatePercentageConductor(image, materialMap);
    EntityEditor::setSIValueNoThrow(entity, Conductor_Percentage_From_Image_t, percentage);
    EntityEditor::setValue(entity, MaterialMap_t, materialMap);
}

void setImageColour(EntityModel::Entity *entity, const EDABoardLayer &layer) {
    int red = 0;
    int green = 0;
    int blue = 0;
    layer.getImageConductorColour(red, green, blue);
    EntityEditor::setValue(entity, MaterialRed_t, red);
    EntityEditor::setValue(entity, MaterialGreen_t, green);
    EntityEditor::setValue(entity, MaterialBlue_t, blue);
    EntityEditor::setValue(entity, MaterialIsConductor_t, "Yes");
    EntityEditor::setValue(entity, BackgroundIsIgnored_t, "Yes");
    EntityEditor::setValue(entity, Render_Style_t, "Textured");
}

} // namespace

void EDAImporter::addLayer(Entity *boardEntity, const EDABoardLayer &layer, const EDABoard &board,
                           Tools::ToolProgress *progress, int &progressCount) const {
    if (layer.isConductor()) {
        addConductorLayer(boardEntity, layer, board, progress, progressCount);
    } else if (options_.importDielectricLayers) {
        addDielectricLayer(boardEntity, layer, board);
    }
}

void EDAImporter::addConductorLayer(Entity *boardEntity, const EDABoardLayer &layer, const EDABoard &board,
                                    Tools::ToolProgress *progress, int &progressCount) const {
    Entity *const entity =
        EntityEditor::createEntity(Conductor_Layer_t, boardEntity, AttributePath(Conductor_Layers_t), nullptr,
                                   !boardEntityCreated_, true, false, layer.getName(), -1);
    if (!entity) return;
    if (layer.getThickness() > leastGiven) {
        setLength(entity, "Conductor Thickness", layer.getThickness(), board);
    }
    setLayerMaterials(entity, layer, board);
    setLayerLevel(entity, layer);
    if (hasTopOffset(layer)) setLength(entity, Y_Location_t, heightInBoard(layer, board), board);
    if (options_.importDetailedLayers) addConductors(entity, layer, board, progress, progressCount);
}

void EDAImporter::addDielectricLayer(Entity *boardEntity, const EDABoardLayer &layer,
                                     const EDABoard &board) const {
    Entity *const entity =
        EntityEditor::createEntity(Dielectric_Layer_t, boardEntity, AttributePath(Dielectric_Layers_t),
                                   nullptr, !boardEntityCreated_, true, false, layer.getName(), -1);
    if (!entity) return;
    if (layer.getThickness() > leastGiven) setLength(entity, "Thickness", layer.getThickness(), board);
    std::string material = layer.getDielectricMaterial();
    if (material.empty()) material = board.getDielectricMaterial();
    if (material.empty()) {
        if (const Entity *const linked = getLinkedEntity(boardEntity, AttributePath(Dielectric_Material_t)))
            linked->getName(material);
    }
    attachDefaultMaterial(entity, "", material, MaterialLink_t, true);
    if (hasTopOffset(layer)) setLength(entity, Y_Location_t, heightInBoard(layer, board), board);
}

// Only what differs from the board's is said of a layer, so that it follows later changes of the board.
void EDAImporter::setLayerMaterials(Entity *layerEntity, const EDABoardLayer &layer,
                                    const EDABoard &board) const {
    const auto set = [&](const std::string &material, const std::string &ofBoard, const TypeRef &isDifferent,
                         const TypeRef &link) {
        if (material.empty() || material == ofBoard) return;
        EntityEditor::setValue(layerEntity, isDifferent, "Yes");
        attachDefaultMaterial(layerEntity, "", material, link, true);
    };
    set(layer.getConductorMaterial(), board.getConductorMaterial(), Different_Conductor_Material_t,
        MaterialLink_t);
    set(layer.getDielectricMaterial(), board.getDielectricMaterial(), Different_Dielectric_Material_t,
        DielectricMaterialLink_t);
}

void EDAImporter::setLayerLevel(Entity *layerEntity, const EDABoardLayer &layer) const {
    if (options_.importDetailedLayers && (layer.numTraces() > 0 || layer.numNets() > 0)) {
        EntityEditor::setValue(layerEntity, Modelling_Level_t, "Detailed");
    } else if (!layer.getImageFilename().empty()) {
        setLayerImage(layerEntity, layer);
    } else {
        EntityEditor::setValue(layerEntity, Modelling_Level_t, "Uniform Conductivity");
        if (layer.getUniformConductivity() > leastGiven)
            EntityEditor::setValue(layerEntity, Conductor_Planar_Percentage_t,
                                   layer.getUniformConductivity());
    }
}

// Nothing here stops for a bad image: it shows as a size and a share of 0.
void EDAImporter::setLayerImage(Entity *layerEntity, const EDABoardLayer &layer) const {
    const std::string &source = layer.getImageFilename();
    const std::string folder = modelFolder();
    const std::string id = layerEntity->getID().toString();
    bool isCopied = false;
    bool isStillUsed = !isFileName(source);
    const auto copyFor = [&](const TypeRef &attribute, bool flipped) {
        const std::string copy = copyImage(source, folder, attribute, id, flipped, &isCopied);
        EntityEditor::setValue(layerEntity, attribute, copy);
        isStillUsed = isStillUsed || FileSystem::File::isSame(source, copy);
        return copy;
    };
    EntityEditor::setValue(layerEntity, Modelling_Level_t, "Simplified");
    const std::string imported = copyFor(Imported_Image_t, false);
    EntityEditor::setValueNoThrow(layerEntity, Map_Image_To_Grid_t, "Yes");
    // Never a file that stood there before: it is the picture of another layer.
    const QImage image = isCopied ? LayerImageFile::load(imported) : QImage();
    EntityEditor::setValue(layerEntity, ImageWidth_t, image.width());
    EntityEditor::setValue(layerEntity, ImageHeight_t, image.height());
    setImageColour(layerEntity, layer);
    copyFor(Top_Texture_File_t, false);
    copyFor(Bottom_Texture_File_t, true); // Seen from below, left is right.
    setImageValues(layerEntity, image);
    // The reader's image is temporary and is this step's to remove, whatever became of the copies.
    if (!isStillUsed) FileSystem::File::remove(source);
}

std::string EDAImporter::copyImage(const std::string &imageFile, const std::string &modelFolder,
                                   const Type &attributeType, const std::string &entityId, bool flipped,
                                   bool *isCopied) const {
    if (isCopied) *isCopied = false;
    // Without a folder for the user's files the copy would land in the root of the disk.
    if (modelFolder.empty() || !isFileName(imageFile)) return {};
    std::string suffix;
    if (insertEntityIdInImageFile_ && !entityId.empty()) suffix += '_' + entityId;
    if (flipped) suffix += "_flipped";
    const std::string folder =
        modelFolder + '/' + EntityGUI::ReferencedFilesManager::getAttributeFolder(attributeType.getLabel());
    const std::string target = folder + '/' + copyName(imageFile, suffix);
    FileSystem::Directory::create(folder);
    const bool isThere =
        FileSystem::File::isSame(imageFile, target) ||
        (isLoadable(imageFile) && FileSystem::File::copyFile(imageFile, target, false, false, nullptr));
    // Never a file that stood there before: mirrored again it would be the wrong way round.
    if (flipped && isThere) LayerImageFile::mirror(target);
    if (isCopied) *isCopied = isThere;
    return target;
}

void EDAImporter::addConductors(Entity *layerEntity, const EDABoardLayer &layer, const EDABoard &board,
                                Tools::ToolProgress *progress, int &progressCount) const {
    for (auto trace = layer.beginTraces(); trace != layer.endTraces(); ++trace) {
        if (isTraceImported(*trace)) addTrace(layerEntity, *trace, board);
        if (!progress) continue;
        progress->setValue(progressCount++);
        if (progress->isCancelled()) return; // The caller asks again, and ends the import.
    }
    for (auto net = layer.beginNets(); net != layer.endNets(); ++net)
        addNet(layerEntity, *net, board, progress, progressCount);
}

} // namespace EDA

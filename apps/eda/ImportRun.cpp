// One import, from the design to the saved model.
#include "ImportRun.h"

#include "ComponentTypes.h"
#include "Console.h"
#include "Entities.h"
#include "Failure.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"
#include "host/FileSystem/File.h"
#include "import/EDAImporter.h"
#include "ImportOptions.h"
#include "Printable.h"
#include "Report.h"
#include "XflPackage.h"

namespace EDATool {

using namespace EntityModel;

namespace {

// Parts move into the sockets that they stand in, which takes their geometry.
class GeometryService {
public:
    GeometryService() { EntityGUI::EntityManager::setGeometryBuilder(&builder_); }
    ~GeometryService() { EntityGUI::EntityManager::setGeometryBuilder(nullptr); }
    GeometryService(const GeometryService &) = delete;
    GeometryService &operator=(const GeometryService &) = delete;

private:
    EntityGUI::GeometryBuilder builder_;
};

Entity *chassisOf(const ImportTarget &target) {
    return EntityFetcher::getBoundingEntity(target.model->root());
}

// A package comes onto a board of its own first, which a test chamber has no second place for.
Entity *parentOf(const Design &design, const ImportTarget &target) {
    if (!design.isPackage) return target.model->root();
    Entity *const chassis = chassisOf(target);
    if (chassis != nullptr && chassis->getType() == Chassis_t) return chassis;
    throw DesignFailure(inQuotes(design.files.front()) +
                        ": a package goes into models with a chassis only, and this one has none");
}

void preparePackage(Design &design, Entity &options) {
    completeEdge(design.board());
    changeImportOption(options, "--as", "Import Type=PCB");
}

void finishPackage(const Design &design, const ImportTarget &target, Entity *board, bool wasCancelled) {
    Entity *const place = target.board != nullptr ? target.board : chassisOf(target);
    if (takeOutPackage(board, place, design.board()) == nullptr && !wasCancelled)
        throw DesignFailure(inQuotes(design.files.front()) + ": no component could be made");
}

} // namespace

ImportTarget openTarget(const Arguments &arguments) {
    ImportTarget target;
    if (arguments.has("--into")) {
        const std::string file = arguments.value("--into");
        target.model = loadModel(file);
        target.board = findBoard(*target.model, file, arguments.value("--board"));
    } else {
        const UndoStackDisabler noUndo;
        target.model = std::make_unique<Model>(Velkin_Solver_Project_t);
        EntityEditor::createEntity(Chassis_t, target.model->root(), AttributePath(Chassis_t), nullptr, true,
                                   true, false, "Chassis");
    }
    return target;
}

ImportOutcome runImport(const ImportSettings &settings, Design &design, ImportTarget &target) {
    ImportOutcome outcome;
    const GeometryService geometry;
    ConsoleProgress progress;
    EDA::EDAImporter importer(settings.libraries.components(), settings.arguments.value("--type-map"),
                              Libraries::shippedTypeMap());
    if (design.isPackage) preparePackage(design, *settings.options.root());
    importer.setImportOptions(settings.options.root(), design.board());
    chooseComponentTypes(importer, design.board(), target.board);
    // Pictures of layers go into a folder beside the model.
    EntityGUI::EntityManager::s_CurrentFilename = settings.arguments.value("--output");
    const std::uint64_t firstNewId = target.model->nextId();
    Entity *const board = importer.importBoard(design.reader.get(), design.isPackage ? nullptr : target.board,
                                               parentOf(design, target), &progress);
    outcome.isComponent = design.isPackage || importer.getImportAs() == Component_t;
    outcome.wasCancelled = progress.wasCancelled();
    outcome.messages = joinedLines(messageLines(importer.getErrorString()));
    if (board == nullptr && !outcome.wasCancelled) {
        throw DesignFailure(inQuotes(design.files.front()) + ": no board could be made" +
                            (outcome.messages.empty() ? "" : ": " + outcome.messages));
    }
    outcome.parts = summarizeParts(
        {design.board(), board, firstNewId, settings.libraries.components(), outcome.wasCancelled});
    outcome.copper = summarizeCopper(design.board(), *settings.options.root());
    if (design.isPackage && board != nullptr) finishPackage(design, target, board, outcome.wasCancelled);
    for (const std::string &line : settings.libraries.newMessages())
        outcome.messages += (outcome.messages.empty() ? "" : "\n") + line;
    return outcome;
}

void saveImport(const ImportTarget &target, const std::string &file, ImportOutcome &outcome) {
    if (outcome.wasCancelled && FileSystem::File::exists(file)) return;
    std::string error;
    if (!ModelFile::save(*target.model, file, error)) throw DesignFailure(printable(error));
    outcome.isSaved = true;
}

} // namespace EDATool

// Life of the importer, and the frame of an import.
#include "import/EDAImporter.h"

#include "host/EntityModel/Undo.h"
#include "host/FileSystem/CSVParser.h"
#include "host/Profiling/ProfileSectionProxy.h"
#include "import/EDAImporterComponentDetail.h"

namespace EDA {

using namespace EntityModel;

namespace {

using TypeMap = std::map<std::string, std::string>;

// A row of fewer than two fields says nothing; as an entry it would hide the default file.
void readTypeMap(const std::string &filename, TypeMap &map) {
    if (filename.empty()) return;
    FileSystem::CSVParser parser(',', false, false, '\n', true);
    parser.parseFile(filename, false, true, false);
    for (auto row = parser.beginRows(); row != parser.endRows(); ++row) {
        if (row->size() >= 2) map[(*row)[0]] = (*row)[1];
    }
}

} // namespace

EDAImporter::EDAImporter(LibraryInterface *library, const std::string &typeMapFile,
                         const std::string &defaultTypeMapFile)
    : libraryInterface_(library), typeMapFile_(typeMapFile), defaultTypeMapFile_(defaultTypeMapFile) {
    if (libraryInterface_) {
        std::set<std::string> types;
        getComponentTypes(types);
        libraryInterface_->setComponentTypes(types);
    }
    readTypeMap(typeMapFile_, typeMap_);
    if (typeMap_.empty()) readTypeMap(defaultTypeMapFile_, typeMap_);
}

EDAImporter::~EDAImporter() {
    delete minHeightAttribute_;
    delete minDiagonalSizeAttribute_;
    delete minPowerAttribute_;
    delete maxIgnoredHoleSizeAttribute_;
}

void EDAImporter::getComponentTypes(std::set<std::string> &types) {
    types.insert({"Component", "Daughter Board Socket", "Chip Socket", "Resistor", "Capacitor", "Inductor",
                  "Cable Socket"});
}

void EDAImporter::getDefaultTypeMap(std::map<std::string, std::string> &map) const {
    map.clear();
    readTypeMap(defaultTypeMapFile_, map);
}

Entity *EDAImporter::importBoard(EDAReader *reader, Entity *boardEntity, Entity *parentEntity,
                                 Tools::ToolProgress *progress) {
    if (!reader) return nullptr;
    const Profiling::ProfileSectionProxy section("EDAImporter", __LINE__, "EDA::EDAImporter::importBoard",
                                                 "ImportEDAData", true, "");
    // The defaults anew, so that what one reader asks for does not alter the next import.
    conversionOptions_ = EDAReader::GeometryConversionOptions();
    reader->updateGeometryConversionOptions(conversionOptions_);
    if (!reader->readLayerDetails()) {
        errorMessage_ += "Failed to read board layer details: " + reader->getError();
        return nullptr;
    }
    placedComponents_.clear();
    materialIndex_.reset();
    const ComponentScope componentScope(*this);
    const UndoStackOpener undoStep("Import Board", true, true);

    Run run{reader->getBoard(), boardEntity, progress};
    if (progress) {
        progress->start();
        run.setText("Importing Board...");
        progress->setMaximum(progressMaximum(run.board));
    }
    boardEntityCreated_ = false;
    if (!boardEntity && parentEntity) {
        run.boardEntity = createBoardEntity(parentEntity, run.board);
        boardEntityCreated_ = true;
        fillBoardEntity(run.boardEntity, run.board);
    }
    shapeBoard(run);
    if (boardEntityCreated_) {
        lockData(run.boardEntity, {Geometry_t});
    } else if (run.board.isBaselineImport()) {
        deleteFormerImport(run.boardEntity, run.board);
    }
    addSourceNote(run.boardEntity, run.board);

    // On a cancel the board stays where it is, as do all items made so far.
    if (importItems(run) && boardEntityCreated_ && options_.resetBoardOrigin) {
        setLocation(run.boardEntity, -run.locationX, run.locationZ, run.board);
    }
    if (progress) progress->finish();
    return run.boardEntity;
}

int EDAImporter::progressMaximum(const EDABoard &board) const {
    size_t total = static_cast<size_t>(board.getOutline().numInternalOutlines());
    total += board.numComponentPlacements();
    if (options_.importVias) total += board.numVias(0);
    if (options_.importBumps) total += board.numBumps(0);
    if (options_.importWirebonds && importAs_ == Component_t) total += board.numWirebonds();
    if (options_.importComponentKeepouts || options_.importViaKeepouts || options_.importRoutingKeepouts) {
        total += board.numKeepouts();
    }
    total += options_.importDetailedLayers ? board.numLayersAndTraces() : board.numLayers();
    return static_cast<int>(total);
}

} // namespace EDA

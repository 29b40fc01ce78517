// Moves a board into the host's entity model, ready for a thermal solve.
#pragma once

#include "host/EntityCore/LibraryItemMapRecord.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/LibraryInterface.h"
#include "host/EntityModel/MaterialIndex.h"
#include "host/EntityModel/Types.h"
#include "host/Tools/ToolProgress.h"
#include "model/EDABoard.h"
#include "readers/EDAReader.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace EDA {

class ViaMoves;

// Walks the board of a reader and builds typed entities: a PCB or a substrate with its shape, holes,
// keepouts, components with materials and power, bumps and wirebonds.
//
// Use: construct; setImportOptions; for each component whose type the host settles, setComponentType with
// what getComponentType answers; importBoard; then read getErrorString, and call clearErrorMsg before the
// next import. One importer can serve several imports. Options are settled once, in setImportOptions. The
// origins of one import stand until the next one writes them, and each is written only by the kind of board
// outline that needs it: that is intended.
//
// Lengths go to the entities in the board's units, but sizes and heights of components in the component's.
// Board y becomes negative entity Z, and the low-x, high-y corner of the outline's bound becomes the origin
// of the board's items.
//
// Copies share the four option attributes, and each destructor deletes them; so a copy and its source must
// not both be destroyed once options are set. That is intended; the library itself never copies an importer.
class EDAImporter {
public:
    // The library may be null and is not owned. The type map files are CSV texts of reference designator
    // prefix and component type; the default file serves when the user's gives nothing. An empty name is no
    // file.
    EDAImporter(EntityModel::LibraryInterface *library, const std::string &typeMapFile,
                const std::string &defaultTypeMapFile);
    EDAImporter(const EDAImporter &) = default;
    EDAImporter &operator=(const EDAImporter &) = default;
    virtual ~EDAImporter();

    // Imports the reader's board as one undo step, "Import Board". A given `boardEntity` is imported over;
    // else a board entity is made under `parentEntity`. With neither, or under a parent that takes no board,
    // nothing can be made, and the run still visits everything. `progress` may be null. A cancelled import is
    // no error: it stops and keeps what was done.
    //
    // Gives the board entity, or null when there is none, for a null reader, and when the reader cannot read
    // its layer details (see getErrorString). Exceptions of the host's services pass through.
    EntityModel::Entity *importBoard(EDAReader *reader, EntityModel::Entity *boardEntity,
                                     EntityModel::Entity *parentEntity, Tools::ToolProgress *progress);

    // The messages of all imports since the last clear, a line each.
    const std::string &getErrorString() const { return errorMessage_; }
    void clearErrorMsg() { errorMessage_.clear(); }

    // Takes the options of an "EDA Import Options" entity and decides which of the board's components are
    // filtered out. An option that the entity lacks stays as it was, but for the import type, which
    // becomes the empty type. A null entity changes nothing.
    void setImportOptions(EntityModel::Entity *options, EDABoard &board);

    void setStoreExtraProperties(bool store) { storeExtraProperties_ = store; }
    void setLoadExactLibraryMatches(bool exact) { loadExactLibraryMatches_ = exact; }
    void setInsertEntityIdInImageFile(bool insert) { insertEntityIdInImageFile_ = insert; }

    // What boards are imported as: PCB_t, Component_t, ... Once options were set that name none, the empty
    // type.
    const EntityModel::TypeRef &getImportAs() const { return importAs_; }

    // Adds the entity types that a component may become; what is in the set stays.
    static void getComponentTypes(std::set<std::string> &types);

    // The map in use, and that of the default file, whatever is in use. An unreadable file gives an empty
    // map.
    void getTypeMap(std::map<std::string, std::string> &map) const { map = typeMap_; }
    void getDefaultTypeMap(std::map<std::string, std::string> &map) const;

    // Replaces the map in use and rewrites the user's file, if there is one: a line each, key, comma, value,
    // in the order of the keys, without quotes. That the file cannot be written is not reported.
    void setTypeMap(const std::map<std::string, std::string> &map);

    // The entity type for a component: one of getComponentTypes, or another word of the library or of the
    // component's properties, "No Geometry" for one without outline, or "DO NOT IMPORT". The first source
    // that answers decides: outline, library, parent, properties, the common prefix of its reference
    // designators in the type map. `parent` is what the component will stand on, and may be null.
    std::string getComponentType(const EDAComponent &component, const EDABoard &board,
                                 EntityModel::Entity *parent) const;

    // The same for each component of the board, in order, in linear time even where many share placements.
    std::vector<std::string> getTypesOfComponents(const EDABoard &board, EntityModel::Entity *parent) const;

    // The type that the properties name or tell, or an empty text.
    static std::string getComponentTypeFromProperties(const EDAComponent &component);

    // Chooses the type that importBoard gives to the component.
    static void setComponentType(EDAComponent &component, const std::string &type) {
        component.setImportToType(type);
    }

    // The rows of a dialog that maps components to library items: for each component, by name and part
    // number, what the library maps it to. A key that is there stays as it is. Without a library nothing is
    // added.
    void populateImportMap(const EDABoard &board,
                           std::map<std::string, LibraryManager::LibraryItemMapRecord> &records) const;

private:
    using Attribute = EntityModel::Attribute;
    using AttributePath = EntityModel::AttributePath;
    using Entity = EntityModel::Entity;
    using TypeRef = EntityModel::TypeRef;

    struct Options {
        bool filterOnHeight = false;
        bool filterOnSize = false;
        bool filterOnPower = false;
        bool ignoreSmallHoles = false;
        bool importVias = true;
        bool importNonPlatedVias = true;
        bool importComponentKeepouts = true;
        bool importViaKeepouts = true;
        bool importRoutingKeepouts = true;
        bool importDetailedLayers = true;
        bool groupIdenticalVias = false;
        bool importWirebonds = true;
        bool importBumps = true;
        bool groupIdenticalBumps = true;
        bool materialsFromLibrary = true;
        bool importDielectricLayers = false;
        bool ignoreFillMaterial = true;
        bool resetBoardOrigin = true;
        bool simplifyShapes = true;
    };
    struct OptionRow;
    struct Run; // One call of importBoard: the board, its entity, the progress so far.
    struct MappedPoints;
    struct Shape;   // A rectangle, a circle or a polygon that was recognised in an outline.
    struct Placing; // One placement on its way to an entity.
    struct OutlineFacts;
    class ComponentScope;
    class ViaMaker; // One definition on its way to entities.
    struct RouteChain;
    struct ConductorLevel;
    struct WireChain;
    class DesignatorPrefixes;

    // The driver (EDAImporter.cpp, EDAImporterSteps.cpp). A step answers false when it was cancelled.
    int progressMaximum(const EDABoard &board) const;
    bool importItems(Run &run);
    bool importBoardHoles(Run &run);
    bool importComponents(Run &run);
    bool importLayers(Run &run);
    bool importKeepouts(Run &run);
    bool importVias(Run &run);
    bool importBumps(Run &run);
    bool importWirebonds(Run &run);
    Entity *wirebondGroup(Entity *boardEntity, const std::string &name) const;
    void reportSkippedHoles(int count);

    // The board entity (EDAImporterBoard.cpp, EDAImporterShape.cpp).
    Entity *createBoardEntity(Entity *parentEntity, const EDABoard &board) const;
    Entity *createComponentBoard(Entity *parentEntity, const EDABoard &board) const;
    void fillBoardEntity(Entity *boardEntity, const EDABoard &board) const;
    void addSourceNote(Entity *boardEntity, const EDABoard &board) const;
    void deleteFormerImport(Entity *boardEntity, const EDABoard &board) const;
    void shapeBoard(Run &run);
    void setRectangleBoard(Run &run);
    void setCylinderBoard(Run &run, double diameter);
    void setPolygonBoard(Run &run, bool isBad);
    std::string approximateOutline(Run &run);
    void readBackOrigin(const Run &run);

    // Options (EDAImporterOptions.cpp).
    void readOption(Entity *options, const OptionRow &row);
    bool isComponentFiltered(const EDAComponent &component, const EDABoard &board) const;
    std::string getComponentUnits(const EDAComponent &component, const EDABoard &board) const;

    // Classification (EDAImporterTypes.cpp).
    std::string typeFromLibrary(const EDAComponent &component) const;
    std::string decideType(const EDAComponent &component, const Entity *parent,
                           DesignatorPrefixes &prefixes) const;

    // Components (EDAImporterComponents.cpp, ...ComponentEntity.cpp, ...ComponentShape.cpp).
    void addComponent(Entity *boardEntity, const EDAComponent &component,
                      const EDAComponentPlacement &placement, const EDABoard &board);
    bool askLibrary(Placing &placing);
    void noteApproximation(const Placing &placing) const;
    Entity *createComponentEntity(const Placing &placing) const;
    void readOutline(Placing &placing);
    OutlineFacts readOutlineFacts(const EDAComponent &component, const EDABoard &board) const;
    static void decideShape(Placing &placing);
    static void placeAsBox(Placing &placing);
    void fillBuiltComponent(Placing &placing) const;
    static void setComponentShape(Placing &placing);
    static void setComponentOutline(const Placing &placing);
    void describeComponent(const Placing &placing);
    static void setComponentPlace(const Placing &placing);
    static void setSolidPlace(const Placing &placing);
    void finishComponent(const Placing &placing) const;
    void forgetComponents(); // When the import ends: what only served it.

    // Components of several solids, molds, heatsinks (EDAImporterSolids.cpp, EDAImporterHeatsinks.cpp).
    // `useRect` is the component's own flag. addMultiBody moves (x, y) by what the container moved.
    void addMultiBody(Entity *entity, const EDAComponent &component, const EDABoard &board, bool useRect,
                      double &x, double &y) const;
    Entity *bodyGroup(Entity *component) const;
    Entity *addBody(Entity *group, const std::string &name, const EDAOutline &outline,
                    const std::string &units, const EDABoard &board, bool useRect) const;
    void cutBody(Entity *body, const EDAOutline &outline, const EDABoard &board) const;
    void setSolidShape(Entity *solid, const EDAOutline &outline, const std::string &units,
                       const EDABoard &board, bool useRect) const;
    void addMold(Entity *entity, const EDAComponent &component, const EDABoard &board) const;
    void addHeatsink(Entity *entity, const EDAHeatsink &heatsink, const EDABoard &board) const;

    // Sockets (EDAImporterSockets.cpp).
    void moveComponentsToSockets(Entity *boardEntity) const;

    // Properties and power (EDAImporterProperties.cpp). addProperties gives what addProperty for each would.
    void addProperties(Entity *entity, const EDAComponent &component) const;
    bool addKnownProperty(Entity *entity, const std::string &name, const std::string &value) const;
    void addProperty(Entity *entity, const std::string &name, const std::string &value) const;
    void addPowerValues(Entity *entity, const EDAComponent &component) const;
    static bool has2RProperties(const EDAComponent &component);
    static bool hasProperty(const EDAComponent &component, const std::string &name, std::string &value);

    // Layers (EDAImporterLayers.cpp). Conductors of a detailed layer count on `progressCount` one by one.
    void addLayer(Entity *boardEntity, const EDABoardLayer &layer, const EDABoard &board,
                  Tools::ToolProgress *progress, int &progressCount) const;
    std::string copyImage(const std::string &imageFile, const std::string &modelFolder,
                          const EntityModel::Type &attributeType, const std::string &entityId, bool flipped,
                          bool *isCopied = nullptr) const;
    void addConductorLayer(Entity *boardEntity, const EDABoardLayer &layer, const EDABoard &board,
                           Tools::ToolProgress *progress, int &progressCount) const;
    void addDielectricLayer(Entity *boardEntity, const EDABoardLayer &layer, const EDABoard &board) const;
    void setLayerMaterials(Entity *layerEntity, const EDABoardLayer &layer, const EDABoard &board) const;
    void setLayerLevel(Entity *layerEntity, const EDABoardLayer &layer) const;
    void setLayerImage(Entity *layerEntity, const EDABoardLayer &layer) const;
    void addConductors(Entity *layerEntity, const EDABoardLayer &layer, const EDABoard &board,
                       Tools::ToolProgress *progress, int &progressCount) const;

    // Conductors and nets (EDAImporterTraces.cpp).
    static bool isTraceImported(const EDATrace &trace);
    void addNet(Entity *layerEntity, const EDANet &net, const EDABoard &board, Tools::ToolProgress *progress,
                int &progressCount) const;
    void addTrace(Entity *parent, const EDATrace &trace, const EDABoard &board) const;
    void buildTraceFromOutline(Entity *parent, const EDATrace &trace, const EDAOutline &outline,
                               const EDABoard &board) const;
    void addRoute(Entity *parent, const EDATrace &trace, const EDABoard &board) const;
    Entity *addConductor(Entity *parent, const EDATrace &trace, const EDAOutline &outline) const;
    std::pair<double, double> shapeConductor(Entity *conductor, const EDAOutline &outline,
                                             const EDABoard &board) const;
    bool isHoleIgnored(const EDAOutline &hole, const EDABoard &board) const;
    void addConductorHole(Entity *conductor, const std::string &type, const std::string &list,
                          const EDAOutline &hole, const EDABoard &board, double refX, double refY) const;

    // Vias (EDAImporterVias.cpp). Those that go into their parts wait in `moves` until all are made.
    void addVia(Entity *boardEntity, const EDAVia &via, const EDABoard &board, ViaMoves &moves) const;

    // Bumps and wirebonds (EDAImporterBumps.cpp, EDAImporterWirebonds.cpp).
    void addBump(Entity *parent, const EDABump &bump, const EDABoard &board, double offsetX,
                 double offsetY) const;
    void groupInstances(Entity *entity, const EDABump &bump, const EDABoard &board, double offsetX,
                        double offsetY) const;
    std::vector<Entity *> copyInstances(Entity *source, Entity *parent, const EDABump &bump,
                                        const EDABoard &board, double offsetX, double offsetY) const;
    void addWirebond(Entity *parent, const EDAWirebond &wirebond, const EDABoard &board) const;
    static void landWire(WireChain &chain, const EDAWirebond &wirebond);

    // Materials (EDAImporterMaterials.cpp).
    Entity *findMaterial(Entity *entity, const std::string &name, bool &created) const;
    void attachDefaultMaterial(Entity *entity, const std::string &conductivity,
                               const std::string &materialName, const TypeRef &link, bool force) const;

    // Holes and keepouts (EDAImporterHoles.cpp).
    bool addHole(Entity *parent, const EDAOutline &outline, const EDABoard &board, double offsetX,
                 double offsetY, double orientation) const;
    bool addSolidHole(Entity *parent, const std::string &holeType, const std::string &holeList,
                      const EDAOutline &outline, const EDABoard &board, double refX, double refY) const;
    void addKeepout(Entity *boardEntity, const EDAKeepout &keepout, const EDABoard &board) const;
    static void setKeepoutKind(Entity *entity, const EDAKeepout &keepout);
    Shape recogniseShape(const EDAOutline &outline, int minPoints, double tolerance) const;
    static void setShape(Entity *entity, const Shape &shape, const EDABoard &board);

    // Shared by all topics (EDAImporterDetail.cpp). Lengths and coordinates are in board units.
    static double mapZCoord(double z) { return -z; }
    double mapX(double x) const { return x - rectOriginX_ - outlineOriginX_; }
    double mapY(double y) const { return y - rectOriginY_ - outlineOriginY_; } // before mapZCoord
    MappedPoints mapPoints(const EDAOutline &outline) const;
    static void setNumber(Entity *entity, const AttributePath &path, double value, const std::string &units);
    static void setLength(Entity *entity, const AttributePath &path, double value, const EDABoard &board);
    static void setLocation(Entity *entity, double x, double z, const EDABoard &board);
    static std::string outlineText(const EDAOutline &outline, const std::string &units); // where it stands
    static void lockData(Entity *entity, const std::vector<TypeRef> &attributes);
    static void tellGeometryEditor(Entity *entity);
    static void clearObstructions(Entity *group); // A new group comes with default contents.

    EntityModel::LibraryInterface *libraryInterface_;
    Attribute *minHeightAttribute_ = nullptr;          // Owned, shared with copies.
    Attribute *minDiagonalSizeAttribute_ = nullptr;    // Owned, shared with copies.
    Attribute *minPowerAttribute_ = nullptr;           // Owned, shared with copies.
    Attribute *maxIgnoredHoleSizeAttribute_ = nullptr; // Owned, shared with copies.
    TypeRef importAs_ = EntityModel::PCB_t;
    Options options_;
    bool boardEntityCreated_ = false;
    bool storeExtraProperties_ = true;
    bool loadExactLibraryMatches_ = false;
    bool insertEntityIdInImageFile_ = true;
    double rectOriginX_ = 0.0; // Corner of a rectangular board.
    double rectOriginY_ = 0.0;
    double outlineOriginX_ = 0.0; // Corner of a board of any other shape.
    double outlineOriginY_ = 0.0;
    double traceOffsetX_ = 0.0; // Added back to the points of traces alone.
    double traceOffsetY_ = 0.0;
    double modelDimension_ = -1.0;
    std::string errorMessage_;
    std::string typeMapFile_;
    std::string defaultTypeMapFile_;
    std::map<std::string, std::string> typeMap_;
    std::map<std::string, Entity *> placedComponents_;              // By reference designator.
    std::unordered_map<Entity *, std::shared_ptr<Entity>> orphans_; // Of a library, without a place.
    std::unordered_map<const EDAComponent *, std::shared_ptr<OutlineFacts>> outlineFacts_;
    EDAReader::GeometryConversionOptions conversionOptions_;
    mutable EntityModel::MaterialIndex materialIndex_; // Serves findMaterial; means nothing between imports.
};

} // namespace EDA

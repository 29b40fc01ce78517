// Where the entity of a component comes from: the library, or its type.
#include "host/EntityModel/Undo.h"
#include "import/EDAImporterComponentDetail.h"

#include <algorithm>
#include <array>

namespace EDA {

using namespace EntityModel;

namespace {

// The types with a list of their own on the board. Any other component goes to the list of all components.
struct TypeRow {
    const char *name;
    const TypeRef &type;
    const TypeRef &list;
    bool keepsAnyOutline; // The others must be boxes.
};

const std::array<TypeRow, 6> &typeRows() {
    static const std::array<TypeRow, 6> rows{
        {{"Daughter Board Socket", Daughter_Board_Socket_t, Daughter_Board_Sockets_t, false},
         {"Cable Socket", Cable_Socket_t, Cable_Sockets_t, false},
         {"Resistor", Resistor_t, Resistors_t, true},
         {"Inductor", Inductor_t, Inductors_t, true},
         {"Capacitor", Capacitor_t, Capacitors_t, true},
         {"Chip Socket", Chip_Socket_t, Chip_Sockets_t, false}}};
    return rows;
}

template <typename Matches> const TypeRow *findRow(Matches matches) {
    const auto &rows = typeRows();
    const auto row = std::find_if(rows.begin(), rows.end(), matches);
    return row == rows.end() ? nullptr : &*row;
}

// Where a library entity goes on a board, or null for a type that boards do not hold.
const TypeRef *listFor(const Type &type) {
    if (type == Component_t) return &Components_t;
    const TypeRow *const row = findRow([&type](const TypeRow &each) { return type == each.type; });
    return row ? &row->list : nullptr;
}

} // namespace

// False when the library says that the component is not to be imported.
bool EDAImporter::askLibrary(Placing &placing) {
    const UndoStackDisabler noUndoSteps;
    const EDAComponent &component = placing.component;
    LibraryInterface::MappingType mapping = LibraryInterface::NotMapped;
    const auto load = [this, &mapping](const std::string &name) {
        LibraryInterface::Attributes attributes;
        return libraryInterface_->loadItem(name, "", loadExactLibraryMatches_, attributes, mapping);
    };
    Entity *entity = load(component.getName());
    if (!entity && mapping != LibraryInterface::DoNotImport && !component.getPartNumber().empty()) {
        entity = load(libraryKey(component));
    }
    if (!entity) return mapping != LibraryInterface::DoNotImport;
    const TypeRef *const list = listFor(entity->getType());
    const bool isAdded = list && EntityEditor::addEntity(placing.boardEntity, AttributePath(*list), entity,
                                                         true, false, true, true, false, -1);
    // Without a place on the board it is nobody's, and takes part in the import until the end. A library may
    // give it more than once.
    if (!isAdded && !entity->holder() && !entity->isHeldByStep()) orphans_.try_emplace(entity, entity);
    placing.entity = entity;
    placing.isFromLibrary = true;
    return true;
}

void EDAImporter::noteApproximation(const Placing &placing) const {
    std::string name, path;
    LibraryInterface::MappingType mapping = LibraryInterface::NotMapped;
    libraryInterface_->getMapping(name, libraryKey(placing.component), path, mapping);
    if (mapping != LibraryInterface::Approximated) return;
    const std::string model = getPreciceStringValue(placing.entity, Model_t, "");
    EntityEditor::setValue(placing.entity, Model_t, model + " - approximated", true);
}

Entity *EDAImporter::createComponentEntity(const Placing &placing) const {
    std::string name = placing.component.getImportToType();
    if (name.empty()) name = getComponentTypeFromProperties(placing.component);
    const TypeRow *const row = findRow([&name](const TypeRow &each) { return name == each.name; });
    const bool isBox = placing.useRect && !placing.isCylinder;
    const bool isOfRow = row && (isBox || row->keepsAnyOutline) && importAs_ != Component_t;
    const auto create = [this](const TypeRef &type, Entity *parent, const TypeRef &list) {
        return EntityEditor::createEntity(type, parent, AttributePath(list), nullptr, !boardEntityCreated_,
                                          true, false, "", -1);
    };
    Entity *const board = placing.boardEntity;
    if (Entity *const created = isOfRow ? create(row->type, board, row->list) : nullptr) {
        if (created->getType() == Inductor_t) EntityEditor::setValue(created, Has_Hole_t, "No", true);
        return created;
    }
    if (board->getType() == PCB_t) return create(Component_t, board, Components_t);
    if (board->getType() != Substrate_t) return nullptr;
    // What sits on a substrate is a solid beside it.
    Entity *const solid =
        create(Solid_Obstruction_t, board->getAncestor(Subcomponent_Group_t), Obstructions_t);
    EntityEditor::setValue(solid, Type_t, "Other", true);
    return solid;
}

} // namespace EDA

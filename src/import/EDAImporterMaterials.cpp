// Materials: finding them in the model, making them, and linking entities to them.
#include "import/EDAImporterDetail.h"

#include "host/EntityCore/LibraryManager.h"
#include "text/Text.h"

namespace EDA {

using namespace EntityModel;

namespace {

struct MaterialValues {
    double conductivity; // W/(m K)
    double specificHeat; // J/(kg K)
    int density;         // kg/m^3
};

constexpr MaterialValues typicalComponent{10.0, 500.0, 3000};
constexpr MaterialValues absPlastic{0.25, 1260.0, 1010};
constexpr MaterialValues copper{386.0, 380.0, 8950};
constexpr MaterialValues anyOther{0.3, 880.0, 1200};
constexpr double copperElectricalConductivity = 5.95e7; // S/m

const char *const typicalComponentName = "Typical Component";
const char *const absPlasticName = "ABS-Plastic";

void setValues(Entity *material, const MaterialValues &values) {
    EntityEditor::setSIValue(material, Conductivity_t / AttributePath(Value_t), values.conductivity, true);
    EntityEditor::setSIValue(material, Specific_Heat_t / AttributePath(Value_t), values.specificHeat, true);
    EntityEditor::setValue(material, Density_t / AttributePath(Value_t), values.density, true);
}

void fillMaterial(Entity *material, const std::string &name, const std::string &conductivity) {
    if (name == typicalComponentName) {
        setValues(material, typicalComponent);
    } else if (name == absPlasticName) {
        setValues(material, absPlastic);
    } else if (!conductivity.empty()) {
        EntityEditor::setValue(material, Conductivity_t / AttributePath(Value_t), conductivity + " W/(m K)",
                               true);
    } else if (equalsIgnoreCase(name, "copper")) {
        setValues(material, copper);
        EntityEditor::setValue(material, Electrical_Conductivity_t / AttributePath(Value_t),
                               copperElectricalConductivity, true);
    } else {
        setValues(material, anyOther);
    }
}

// Cable and daughter board sockets and mechanical components are made of plastic, all others of the stuff of
// a typical component.
bool isPlastic(const Entity &entity) {
    const Type &type = entity.getType();
    if (type == Daughter_Board_Socket_t || type == Cable_Socket_t) return true;
    if (type != Component_t) return false;
    return getTypeValue(&entity, AttributePath("Component Type"), TypeRef()) == TypeRef("Mechanical");
}

// The comparison is of texts: "10.0" makes a material of its own.
std::string defaultName(const Entity &entity, const std::string &conductivity) {
    const bool plastic = isPlastic(entity);
    if (conductivity.empty() || conductivity == (plastic ? "0.25" : "10")) {
        return plastic ? absPlasticName : typicalComponentName;
    }
    return "EDA Import: Conductivity=" + conductivity + " W/(m K)";
}

Entity *topOwner(Entity *entity) {
    Entity *top = entity->getOwnerEntity();
    while (top && top->getOwnerEntity())
        top = top->getOwnerEntity();
    return top;
}

// The path of a material in the first library that has it, or an empty text.
std::string libraryPathOf(const std::string &name) {
    using Libraries = LibraryManager::LibraryManager;
    for (const char *const path : {Libraries::vendorMaterialsPath, Libraries::shippedMaterialsPath}) {
        LibraryManager::Library *const library = Libraries::findLibraryByLibraryPath(path, nullptr);
        const auto *const item =
            library ? Libraries::findItemByNameAndType(name, Material_t, library, "") : nullptr;
        if (item) return LibraryManager::LibraryRecord::getLibraryPath(item);
    }
    return {};
}

} // namespace

EDAImporter::Entity *EDAImporter::findMaterial(Entity *entity, const std::string &name, bool &created) const {
    created = false;
    Entity *const top = topOwner(entity);
    if (!top) return nullptr;
    const Attribute *const materials = top->readAttribute(AttributePath(Materials_t));
    if (materials && materials->isEntityList()) {
        Entity *const found = materialIndex_.find(*static_cast<const EntityList *>(materials), name);
        if (found) return found;
    }
    // A material of a library brings its own values, and they win over every default.
    const std::string path = options_.materialsFromLibrary ? libraryPathOf(name) : std::string();
    created = path.empty();
    LibraryManager::LibraryDefaultLoader loader;
    if (!created) loader.setSelectedPath(path, "");
    return EntityEditor::createEntity(Material_t, top, AttributePath(Materials_t), &loader, true, true, false,
                                      name, -1);
}

void EDAImporter::attachDefaultMaterial(Entity *entity, const std::string &conductivity,
                                        const std::string &materialName, const TypeRef &link,
                                        bool force) const {
    const Attribute *const attribute = entity ? entity->readAttribute(AttributePath(link)) : nullptr;
    if (!attribute || !attribute->isEntityLink()) return;
    if (!force && static_cast<const EntityLink *>(attribute)->target()) return;

    const std::string name = materialName.empty() ? defaultName(*entity, conductivity) : materialName;
    bool created = false;
    Entity *const material = findMaterial(entity, name, created);
    if (!material) return;
    if (created) fillMaterial(material, name, conductivity);
    EntityEditor::addEntity(entity, AttributePath(link), material, false, true, true, true, false, -1);
}

} // namespace EDA

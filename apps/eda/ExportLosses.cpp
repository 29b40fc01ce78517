// Counting what an export leaves behind.
#include "ExportLosses.h"

#include "Entities.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/Types.h"
#include "LossLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

namespace EDATool {

using namespace EntityModel;

namespace {

// In the order of the lines.
enum Kind : std::size_t {
    ConductorLayers,
    DielectricLayers,
    Nets,
    Traces,
    Conductors,
    Bumps,
    Wirebonds,
    Solids,
    Heatsinks,
    Boards,
    Shapeless,
    Filtered,
    Materials,
    DefinitionValues,
    FilledVias,
    ShortVias,
    PlatingThicknesses,
    DisplacedVias,
    KindCount
};

// In the order of Kind.
constexpr std::array<LossText, KindCount> texts = {{
    {"conductor layer is left out", "conductor layers are left out"},
    {"dielectric layer is left out", "dielectric layers are left out"},
    {"net is left out", "nets are left out"},
    {"trace is left out", "traces are left out"},
    {"piece of copper is left out", "pieces of copper are left out"},
    {"bump is left out", "bumps are left out"},
    {"wirebond is left out", "wirebonds are left out"},
    {"solid inside a component is left out", "solids inside components are left out"},
    {"heatsink is left out", "heatsinks are left out"},
    {"board inside this one is left out; --board can choose it",
     "boards inside this one are left out; --board can choose them"},
    {"component has no shape and gets no outline", "components have no shape and get no outlines"},
    {"component loses its mark as filtered", "components lose their marks as filtered"},
    {"material is left out, but for the conductivity of components",
     "materials are left out, but for the conductivities of components"},
    {"component takes power, thermal values or type from another of the same name and shape",
     "components take power, thermal values or type from others of the same name and shape"},
    {"via loses its filling", "vias lose their fillings"},
    {"via that ends inside the board goes through it now",
     "vias that end inside the board go through it now"},
    {"via loses its plating thickness", "vias lose their plating thicknesses"},
    {"group of vias in a component is displaced", "groups of vias in components are displaced"},
}};
static_assert(texts.back().one); // one for each

const std::unordered_map<Type, Kind> &kindsByType() {
    static const std::unordered_map<Type, Kind> kinds = {{Conductor_Layer_t, ConductorLayers},
                                                         {Dielectric_Layer_t, DielectricLayers},
                                                         {Net_t, Nets},
                                                         {Substrate_Net_t, Nets},
                                                         {Trace_t, Traces},
                                                         {Substrate_Trace_t, Traces},
                                                         {PCB_Conductor_t, Conductors},
                                                         {Substrate_Conductor_t, Conductors},
                                                         {Bump_t, Bumps},
                                                         {Wirebond_t, Wirebonds},
                                                         {Solid_Obstruction_t, Solids},
                                                         {Heatsink_t, Heatsinks},
                                                         {PCB_t, Boards},
                                                         {Substrate_t, Boards}};
    return kinds;
}

bool isPart(const Entity &entity) { return entity.readAttribute(Part_Number_t) != nullptr; }

// What an import takes for a plated hole whose file tells no thickness, so that it comes back; metres.
constexpr double usualPlating = 35e-6;
constexpr double negligible = 1e-9;

// Namesakes share a definition where their shapes agree; what the definition says is what the first of them
// says.
class Definitions {
public:
    // True when the part's values are not those that the definition has.
    bool differs(const Entity &part) {
        const auto [place, isNew] = first_.try_emplace(texts(part, {Manufacturer_t, Model_t, Part_Number_t}),
                                                       shapeOf(part), valuesOf(part));
        return !isNew && place->second.first == shapeOf(part) && place->second.second != valuesOf(part);
    }

private:
    using Texts = std::vector<std::string>;

    static Texts texts(const Entity &entity, const std::vector<AttributePath> &paths) {
        Texts result;
        for (const AttributePath &path : paths)
            result.push_back(textOf(entity, path));
        return result;
    }
    static Texts shapeOf(const Entity &part) {
        return texts(
            part, {Shape_t, Width_t, Depth_t, Length_t, Diameter_t, Outline_t, Height_t, Angle_To_Board_t});
    }
    static Texts valuesOf(const Entity &part) {
        Texts values =
            texts(part, {Type_t, Thermal_Design_Power_t, Utilisation_t, Modelling_Level_t,
                         Junction_to_Board_Thermal_Resistance_t, Junction_to_Case_Thermal_Resistance_t,
                         Electrical_Resistance_t, Electrical_Capacitance_t, Electrical_Inductance_t});
        values.push_back(part.getType().getLabel());
        const Entity *const material = getLinkedEntity(&part, MaterialLink_t);
        values.push_back(material ? textOf(*material, Conductivity_t / AttributePath(Value_t))
                                  : std::string());
        return values;
    }

    std::map<Texts, std::pair<Texts, Texts>> first_;
};

class LossCount {
public:
    explicit LossCount(const Entity &board) {
        addMaterials(board);
        std::vector<Entity *> waiting;
        board.getChildEntities(waiting);
        while (!waiting.empty()) {
            const Entity &entity = *waiting.back();
            waiting.pop_back();
            if (addEntity(entity)) entity.getChildEntities(waiting);
        }
        for (const TypeRef &list : {Components_t, Capacitors_t, Resistors_t, Inductors_t,
                                    Daughter_Board_Sockets_t, Cable_Sockets_t, Chip_Sockets_t})
            addSharers(board, list);
        counts_[Materials] = materials_.size();
    }

    std::vector<std::string> lines() const { return lossLines(texts, counts_); }

private:
    // False when nothing below the entity counts.
    bool addEntity(const Entity &entity) {
        const auto kind = kindsByType().find(entity.getType());
        if (kind != kindsByType().end()) ++counts_[kind->second];
        if (entity.getType() == PCB_t || entity.getType() == Substrate_t) return false;
        if (entity.getType() == Via_t) addVia(entity);
        if (isPart(entity)) addPart(entity);
        addMaterials(entity);
        return true;
    }

    void addPart(const Entity &part) {
        const Attribute *const filtered = part.readAttribute(Filtered_t);
        if (filtered && filtered->getBool()) ++counts_[Filtered];
        const bool isDetailed = getTypeValue(&part, Modelling_Level_t, TypeRef()) == Detailed_t;
        const EntityGUI::GeometryBuilder *const builder = EntityGUI::EntityManager::getGeometryBuilder();
        if (isDetailed && !(builder && builder->getPart(const_cast<Entity *>(&part)))) ++counts_[Shapeless];
    }

    void addVia(const Entity &via) {
        const auto isYes = [&via](const TypeRef &label) {
            const Attribute *const attribute = via.readAttribute(label);
            return attribute && attribute->getBool();
        };
        static const TypeRef wholeBoard("Board");
        static const AttributePath thickness("Plating Thickness");
        if (isYes(Filled_t)) ++counts_[FilledVias];
        if (!(getTypeValue(&via, Height_From_t, wholeBoard) == wholeBoard)) ++counts_[ShortVias];
        const double plating = getStandardDoubleValue(&via, thickness, 0.0);
        if (isYes(Plated_t) && plating > 0.0 && std::fabs(plating - usualPlating) > negligible)
            ++counts_[PlatingThicknesses];
        const bool isGroup = getTypeValue(&via, Modelling_Type_t, TypeRef()) == Multiple_Vias_t;
        const Entity *const owner = via.getOwnerEntity();
        if (isGroup && owner && isPart(*owner)) ++counts_[DisplacedVias];
    }

    void addMaterials(const Entity &entity) {
        for (const TypeRef &label : {MaterialLink_t, Conductor_Material_t, Dielectric_Material_t,
                                     Fill_Material_t, DielectricMaterialLink_t})
            if (const Entity *const material = getLinkedEntity(&entity, label)) materials_.insert(material);
    }

    void addSharers(const Entity &board, const TypeRef &list) {
        std::vector<Entity *> parts;
        getLinkedEntities(&board, list, parts);
        for (const Entity *part : parts) {
            addSharer(*part);
            if (const Entity *const plugged = getLinkedEntity(part, ComponentLink_t)) addSharer(*plugged);
        }
    }

    void addSharer(const Entity &part) {
        if (definitions_.differs(part)) ++counts_[DefinitionValues];
    }

    std::array<std::size_t, KindCount> counts_{};
    std::set<const Entity *> materials_;
    Definitions definitions_;
};

} // namespace

std::vector<std::string> exportLosses(const Entity &board) { return LossCount(board).lines(); }

} // namespace EDATool

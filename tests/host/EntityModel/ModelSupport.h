// A model with an entity of every type, and short ways to make and look at models.
#pragma once

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace EntityModel {

inline Entity *create(Entity *parent, const char *list, const char *type, const std::string &name = "") {
    return EntityEditor::createEntity(TypeRef(type), parent, AttributePath(list), nullptr, true, true, false,
                                      name, -1);
}

inline std::string textOf(const Entity *entity, const AttributePath &path) {
    return getPreciceStringValue(entity, path, "(absent)");
}

inline bool set(Entity *entity, const char *label, const std::string &text) {
    return EntityEditor::setValue(entity, AttributePath(label), text);
}

struct Place {
    const char *parent;
    const char *list;
    const char *child;
};

// Every place of the schema in which an entity can stand, parents first.
inline const std::vector<Place> &places() {
    static const std::vector<Place> all = {
        {"Velkin Solver Project", "Chassis", "Chassis"},
        {"Velkin Solver Project", "Test Chamber", "Test Chamber"},
        {"Velkin Solver Project", "Materials", "Material"},
        {"Chassis", "PCBs", "PCB"},
        {"Chassis", "Components", "Component"},
        {"Chassis", "Materials", "Material"},
        {"Test Chamber", "PCBLink", "PCB"},
        {"Test Chamber", "Components", "Component"},
        {"Test Chamber", "Materials", "Material"},
        {"PCB", "Components", "Component"},
        {"PCB", "Resistors", "Resistor"},
        {"PCB", "Capacitors", "Capacitor"},
        {"PCB", "Inductors", "Inductor"},
        {"PCB", "Chip Sockets", "Chip Socket"},
        {"PCB", "Cable Sockets", "Cable Socket"},
        {"PCB", "Daughter Board Sockets", "Daughter Board Socket"},
        {"PCB", "Holes", "PCB Hole"},
        {"PCB", "Keepouts", "Board Keepout"},
        {"PCB", "Vias", "Via"},
        {"PCB", "Conductor Layers", "Conductor Layer"},
        {"PCB", "Dielectric Layers", "Dielectric Layer"},
        {"Daughter Board Socket", "Daughter Board", "PCB"},
        {"Component", "SubcomponentGroups", "Subcomponent Group"},
        {"Component", "Vias", "Via"},
        {"Component", "HeatsinkLink", "Heatsink"},
        {"Resistor", "Vias", "Via"},
        {"Resistor", "HeatsinkLink", "Heatsink"},
        {"Capacitor", "Vias", "Via"},
        {"Capacitor", "HeatsinkLink", "Heatsink"},
        {"Inductor", "Vias", "Via"},
        {"Inductor", "HeatsinkLink", "Heatsink"},
        {"Cable Socket", "Vias", "Via"},
        {"Cable Socket", "HeatsinkLink", "Heatsink"},
        {"Daughter Board Socket", "Vias", "Via"},
        {"Daughter Board Socket", "HeatsinkLink", "Heatsink"},
        {"Chip Socket", "ComponentLink", "Component"},
        {"Subcomponent Group", "Obstructions", "Solid Obstruction"},
        {"Subcomponent Group", "Obstructions", "Substrate"},
        {"Subcomponent Group", "Wirebonds", "Wirebond"},
        {"Solid Obstruction", "Holes", "Obstruction Hole"},
        {"Substrate", "Holes", "Substrate Hole"},
        {"Substrate", "Keepouts", "Board Keepout"},
        {"Substrate", "Vias", "Via"},
        {"Substrate", "Bumps", "Bump"},
        {"Substrate", "Conductor Layers", "Conductor Layer"},
        {"Substrate", "Dielectric Layers", "Dielectric Layer"},
        {"Substrate", "SubcomponentGroups", "Subcomponent Group"},
        {"Conductor Layer", "Nets", "Net"},
        {"Conductor Layer", "Substrate Nets", "Substrate Net"},
        {"Conductor Layer", "Conductors", "PCB Conductor"},
        {"Conductor Layer", "Substrate Conductors", "Substrate Conductor"},
        {"Conductor Layer", "Traces", "Trace"},
        {"Conductor Layer", "Substrate Traces", "Substrate Trace"},
        {"Net", "Conductors", "PCB Conductor"},
        {"Net", "Substrate Conductors", "Substrate Conductor"},
        {"Net", "Traces", "Trace"},
        {"Net", "Substrate Traces", "Substrate Trace"},
        {"Substrate Net", "Conductors", "PCB Conductor"},
        {"Substrate Net", "Substrate Conductors", "Substrate Conductor"},
        {"Substrate Net", "Traces", "Trace"},
        {"Substrate Net", "Substrate Traces", "Substrate Trace"},
        {"Trace", "TraceJunctions", "Trace Junction"},
        {"Trace", "TraceSegments", "Trace Segment"},
        {"Substrate Trace", "TraceJunctions", "Trace Junction"},
        {"Substrate Trace", "TraceSegments", "Trace Segment"},
        {"PCB Conductor", "Holes", "PCB Conductor Hole"},
        {"Substrate Conductor", "Holes", "Substrate Conductor Hole"},
        {"Wirebond", "WirebondJunctions", "Wirebond Junction"},
        {"Wirebond", "WirebondSegments", "Wirebond Segment"},
    };
    return all;
}

// A project with at least one entity of every type of a design.
class SampleModel {
public:
    SampleModel() {
        entities_["Velkin Solver Project"] = model.root();
        for (const Place &place : places()) {
            if (entities_.count(place.child) > 0) continue;
            Entity *const parent = entities_.at(place.parent);
            entities_[place.child] = create(parent, place.list, place.child, std::string(place.child) + " 1");
        }
    }

    Entity *operator[](const std::string &type) const { return entities_.at(type); }
    const std::map<std::string, Entity *> &entities() const { return entities_; }
    std::string text() const { return ModelFile::toText(model); }

    Model model;

private:
    std::map<std::string, Entity *> entities_;
};

} // namespace EntityModel

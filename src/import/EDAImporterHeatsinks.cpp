// Heatsinks on placed components.
#include "import/EDAImporterDetail.h"

namespace EDA {

using namespace EntityModel;

namespace {

struct LengthRow {
    const char *attribute;
    const double &(EDAHeatsink::*length)() const;
};

// The attributes are of the part that carries the heatsink, not of the heatsink. Intended, as are the
// spelling of "Pn Width" and the blank after "Pin Diameter": these are the names that entities have.
constexpr LengthRow lengthRows[] = {
    {"Base Width", &EDAHeatsink::getHeatSinkWidth},     {"Base Depth", &EDAHeatsink::getHeatSinkLength},
    {"Base Thickness", &EDAHeatsink::getBaseThickness}, {"Fin Height", &EDAHeatsink::getLimbHeight},
    {"Fin Width", &EDAHeatsink::getLimbWidth},          {"Fin Depth", &EDAHeatsink::getLimbLength},
    {"Pn Width", &EDAHeatsink::getLimbWidth},           {"Pin Depth", &EDAHeatsink::getLimbLength},
    {"Pin Diameter ", &EDAHeatsink::getLimbWidth}};

void setText(Entity *entity, const TypeRef &attribute, const std::string &text) {
    if (!text.empty()) EntityEditor::setValue(entity, attribute, text, true);
}

} // namespace

void EDAImporter::addHeatsink(Entity *entity, const EDAHeatsink &heatsink, const EDABoard &board) const {
    // A solid carries none; the component that it is part of does.
    Entity *const parent =
        entity->getType() == Solid_Obstruction_t ? entity->getAncestor(Component_t) : entity;
    Entity *const created = EntityEditor::createEntity(Heatsink_t, parent, AttributePath(HeatsinkLink_t),
                                                       nullptr, !boardEntityCreated_, true, false, "", -1);
    if (!created) return;
    setText(created, Name_t, heatsink.getName());
    setText(created, Type_t, heatsink.getHeatSinkType());
    setText(created, Pin_Shape_t, heatsink.getPinShape());
    EntityEditor::setValue(created, Staggered_t, heatsink.getStaggered() ? "Yes" : "No", true);
    for (const LengthRow &row : lengthRows)
        setLength(parent, row.attribute, (heatsink.*row.length)(), board);
    // Intended: in the attributes' own units, whatever the board's, and also when they were not given.
    EntityEditor::setValue(created, Pin_Separation_Across_t, heatsink.getPitchInWidth(), true);
    EntityEditor::setValue(created, Pin_Separation_Through_t, heatsink.getPitchInLength(), true);
    for (const TypeRef &link : {MaterialLink_t, Base_Material_t, Fin_Material_t})
        attachDefaultMaterial(created, "", heatsink.getHeatSinkMaterial(), link, false);
}

} // namespace EDA

// Which type each component of a design is imported as.
#include "ComponentTypes.h"

namespace EDATool {

void chooseComponentTypes(const EDA::EDAImporter &importer, EDA::EDABoard &board,
                          EntityModel::Entity *boardEntity) {
    const std::vector<std::string> types = importer.getTypesOfComponents(board, boardEntity);
    auto component = board.beginComponents();
    for (auto type = types.begin(); type != types.end(); ++type, ++component) {
        // Neither is a type: as one it would make a plain component of what is to be left out.
        if (*type == "No Geometry" || *type == "DO NOT IMPORT") continue;
        EDA::EDAImporter::setComponentType(*component, *type);
    }
}

} // namespace EDATool

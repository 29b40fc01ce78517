// One import, from the design to the saved model.
#pragma once

#include "Arguments.h"
#include "Design.h"
#include "host/EntityModel/Model.h"
#include "ImportReport.h"
#include "Libraries.h"

#include <memory>
#include <string>

namespace EDATool {

// The model that is imported into.
struct ImportTarget {
    std::unique_ptr<EntityModel::Model> model;
    EntityModel::Entity *board = nullptr; // the board to import over; null makes a new one
};

// What an import is told.
struct ImportSettings {
    const Arguments &arguments; // --into, --board, --type-map, --output
    Libraries &libraries;
    EntityModel::Model &options; // see makeImportOptions
};

// The model of --into and its board, or a new model with a chassis. Throws as loadModel and findBoard do.
ImportTarget openTarget(const Arguments &arguments);

// Imports the board of the design into the model, and tells what came of it. Ctrl-C cancels. Throws
// DesignFailure when no board could be made.
ImportOutcome runImport(const ImportSettings &settings, Design &design, ImportTarget &target);

// Saves the model as --output says, but not that of a cancelled import in the place of a file that was there.
void saveImport(const ImportTarget &target, const std::string &file, ImportOutcome &outcome);

} // namespace EDATool

// What an import test needs: a model with a chassis, a reader with a board, options, and looks at the result.
#pragma once

#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"
#include "import/EDAImporter.h"
#include "support/BoardReader.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

using namespace EntityModel;

class ImportBench {
public:
    explicit ImportBench(LibraryInterface *library = nullptr)
        : model(Velkin_Solver_Project_t), importer(library, "", "") {
        chassis = EntityEditor::createEntity(Chassis_t, model.root(), AttributePath(Chassis_t));
        optionsModel = std::make_unique<Model>(EDA_Import_Options_t);
        board().setUnits("MM");
        board().setName("board");
        board().setThickness(1.6);
    }

    EDA::EDABoard &board() { return reader.getBoard(); }
    Entity *options() { return optionsModel->root(); }

    // Adds a straight closed or open loop to an outline of the board: 0 is the edge.
    void loop(int index, std::initializer_list<std::pair<double, double>> points) {
        for (const auto &[x, y] : points)
            board().addPoint(index, x, y, 0.0);
    }
    void rectangle(int index, double xLow, double yLow, double xHigh, double yHigh) {
        loop(index, {{xLow, yLow}, {xHigh, yLow}, {xHigh, yHigh}, {xLow, yHigh}});
    }
    void circle(int index, double x, double y, double radius) {
        board().addPoint(index, x, y, 0.0);
        board().addPoint(index, x + radius, y, 360.0);
    }

    void set(const AttributePath &option, const std::string &value) {
        EntityEditor::setValue(options(), option, value);
    }

    // Imports under the project, after handing the options over.
    Entity *import(Tools::ToolProgress *progress = nullptr) {
        importer.setImportOptions(options(), board());
        return importer.importBoard(&reader, nullptr, model.root(), progress);
    }
    Entity *importOver(Entity *existing) {
        importer.setImportOptions(options(), board());
        return importer.importBoard(&reader, existing, nullptr, nullptr);
    }

    std::vector<Entity *> children(Entity *parent, const TypeRef &type) const {
        std::vector<Entity *> found;
        if (parent) parent->getOwnedChildEntitiesOfType(found, type, false, true);
        return found;
    }

    Model model;
    Entity *chassis = nullptr;
    std::unique_ptr<Model> optionsModel;
    BoardReader reader;
    EDA::EDAImporter importer;
};

inline std::string text(Entity *entity, const AttributePath &path) {
    return getPreciceStringValue(entity, path, "(none)");
}

inline double mm(Entity *entity, const AttributePath &path) {
    return getDoubleValue(entity, path, "mm", -12345.0);
}

} // namespace TestSupport

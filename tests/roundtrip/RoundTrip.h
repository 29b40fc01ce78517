// Boards that go into models, out again, and in once more.
#pragma once

#include "export/EDAExporter.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "import/EDAImporter.h"
#include "readers/IDFReader.h"
#include "support/BoardReader.h"
#include "support/TempFolder.h"
#include "writers/IDFWriter.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

using namespace EntityModel;

// A model with the board that was imported into it.
struct Generation {
    std::unique_ptr<Model> model = std::make_unique<Model>(Velkin_Solver_Project_t);
    std::unique_ptr<EntityGUI::GeometryBuilder> parts = std::make_unique<EntityGUI::GeometryBuilder>();
    Entity *pcb = nullptr;

    std::string text() const { return ModelFile::toText(*model); }

    std::vector<Entity *> members(const TypeRef &list) const {
        std::vector<Entity *> found;
        getLinkedEntities(pcb, list, found);
        return found;
    }
    // A part of the board, or one that is plugged into a socket of it.
    Entity *part(const std::string &designator) const {
        const auto isIt = [&designator](const Entity *entity) {
            return entity && getPreciceStringValue(entity, Reference_Designator_t, "") == designator;
        };
        std::vector<Entity *> children;
        pcb->getChildEntities(children);
        for (Entity *child : children) {
            if (isIt(child)) return child;
            Entity *const plugged = getLinkedEntity(child, ComponentLink_t);
            if (isIt(plugged)) return plugged;
        }
        return nullptr;
    }
};

class RoundTrip : public testing::Test {
protected:
    using Settings = std::vector<std::pair<TypeRef, std::string>>; // options of an import

    RoundTrip() {
        EntityGUI::EntityManager::setGeometryBuilder(&sockets_);
        design.setUnits("MM");
        design.setThickness(1.6);
    }
    ~RoundTrip() override { EntityGUI::EntityManager::setGeometryBuilder(nullptr); }

    // Imports as the tool does: each component as what it tells or seems to be, under a chassis.
    static Generation imported(EDA::EDAReader &reader, const Settings &settings = {}) {
        Generation result;
        EntityEditor::createEntity(Chassis_t, result.model->root(), Chassis_t);
        const Model options(EDA_Import_Options_t);
        for (const auto &[option, value] : settings)
            EXPECT_TRUE(EntityEditor::setValue(options.root(), option, value)) << value;
        EDA::EDABoard &board = reader.getBoard();
        EDA::EDAImporter importer(nullptr, "", "");
        importer.setImportOptions(options.root(), board);
        for (auto part = board.beginComponents(); part != board.endComponents(); ++part) {
            const std::string type = importer.getComponentType(*part, board, nullptr);
            if (type != "No Geometry") EDA::EDAImporter::setComponentType(*part, type);
        }
        result.pcb = importer.importBoard(&reader, nullptr, result.model->root(), nullptr);
        EXPECT_NE(result.pcb, nullptr);
        result.parts->buildPart(result.pcb, true);
        return result;
    }
    static Generation imported(const EDA::EDABoard &board, const Settings &settings = {}) {
        BoardReader reader;
        reader.getBoard() = board;
        return imported(reader, settings);
    }

    EDA::EDABoard exported(const Generation &generation, const std::string &units = "MM") {
        EntityGUI::EntityManager::setGeometryBuilder(generation.parts.get());
        EDA::EDABoard board;
        EDA::EDAExporter().exportBoard(generation.pcb, board, units);
        EntityGUI::EntityManager::setGeometryBuilder(&sockets_);
        return board;
    }

    // Reads a pair of IDF files into a model.
    static Generation read(const std::string &boardFile, const Settings &settings = {}) {
        EDA::IDFReader reader;
        EXPECT_TRUE(reader.readFile(boardFile)) << reader.getError();
        EXPECT_TRUE(reader.readFile(reader.getMatchingLibraryFilename(boardFile))) << reader.getError();
        return imported(reader, settings);
    }

    // Out to a pair of IDF files of one name, and in again.
    Generation throughFiles(const Generation &generation, const std::string &units = "MM",
                            const Settings &settings = {}) {
        const TempFolder folder;
        EDA::IDFWriter().writeFile(folder.path("board.emn"), folder.path("board.emp"),
                                   exported(generation, units));
        return read(folder.path("board.emn"), settings);
    }

    void addEdge(const std::vector<std::pair<double, double>> &points) {
        for (const auto &[x, y] : points)
            design.addPoint(0, x, y, 0.0);
    }

    EDA::EDAComponent component(const std::string &name,
                                const std::vector<std::pair<double, double>> &points) {
        EDA::EDAComponent result("ELECTRICAL");
        result.setName(name);
        result.setPartNumber("P-" + name);
        result.setUnits("MM");
        result.setHeight(2.0);
        for (const auto &[x, y] : points)
            result.addPoint(0, x, y, 0.0);
        return result;
    }

    void place(const std::string &name, const std::string &designator, double x, double y, double angle,
               const std::string &side) {
        EDA::EDAComponentPlacement placement;
        placement.setName(name);
        placement.setPartNumber("P-" + name);
        placement.setReferenceDesignator(designator);
        placement.setLocation(x, y);
        placement.setAngle(angle);
        placement.setBoardSide(side);
        placement.setStatus("PLACED");
        design.addComponentPlacement(placement);
    }

    EDA::EDABoard design;

private:
    EntityGUI::GeometryBuilder sockets_; // What the importer asks what stands in which socket.
};

} // namespace TestSupport

// Small library folders for tests.
#pragma once

#include "host/EntityCore/FolderLibrary.h"
#include "host/EntityCore/LibraryManager.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace TestSupport {

using namespace EntityModel;
using LibraryManager::FolderLibrary;

using Mapping = LibraryInterface::MappingType;

inline std::string modelFile(const std::string &root) {
    return R"({"format":"eda-model","version":1,"root":)" + root + "}";
}

inline std::string indexFile(const std::string &rows) {
    return "{\"format\":\"eda-library\",\"version\":1,\"rows\":[\n" + rows + "]}";
}

// A component whose own material is "Gum".
inline std::string gumComponent(const std::string &name) {
    return modelFile(
        R"({"type":"Velkin Solver Project","id":1,"children":{"Chassis":{"type":"Chassis","id":2,)"
        R"("children":{"Components":[{"type":"Component","id":3,"values":{"Name":")" +
        name +
        R"("},"links":{"MaterialLink":4}}]}},"Materials":[{"type":"Material","id":4,)"
        R"("values":{"Name":"Gum","Conductivity":{"Value":5}}}]}})");
}

inline std::string nameOf(const Entity *entity) {
    std::string name;
    return entity ? entity->getName(name) : "(null)";
}

struct LibraryFolder {
    std::string path() const { return folder.path(); }
    void write(const std::string &name, const std::string &text) { folder.write(name, text); }
    void index(const std::string &rows) { write("index.json", indexFile(rows)); }

    // A library made now of what is in the folder.
    FolderLibrary &open() {
        library = std::make_unique<FolderLibrary>(path());
        return *library;
    }

    std::unique_ptr<Entity> load(const std::string &key, bool exact = true) {
        LibraryInterface::Attributes none;
        return std::unique_ptr<Entity>(library->loadItem(key, "", exact, none, type));
    }

    TempFolder folder;
    std::unique_ptr<FolderLibrary> library;
    Mapping type = LibraryInterface::NotMapped;
};

// A project with a board.
struct Project {
    Project() {
        chassis = EntityEditor::createEntity(Chassis_t, model.root(), Chassis_t);
        pcb = EntityEditor::createEntity(PCB_t, chassis, PCBs_t);
        UndoStack::instance().clear();
    }

    // Puts a library's entity on the board.
    Entity *add(std::unique_ptr<Entity> entity) {
        if (!entity || !EntityEditor::addEntity(pcb, Components_t, entity.get())) return nullptr;
        return entity.release();
    }
    std::vector<Entity *> materials() const {
        std::vector<Entity *> all;
        getLinkedEntities(model.root(), Materials_t, all);
        return all;
    }

    Model model;
    Entity *chassis = nullptr;
    Entity *pcb = nullptr;
};

} // namespace TestSupport

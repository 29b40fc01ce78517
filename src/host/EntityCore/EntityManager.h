// The open model's geometry services and file name.
#pragma once

#include "Export.h"

#include <string>

namespace EntityModel {
class Entity;
}

namespace EntityGUI {

class GeometryBuilder;

// Told of every new entity that has a geometry, so that a view may show it. A host with a view derives it.
class GeometryEditor {
public:
    virtual ~GeometryEditor() = default;
    virtual void entityCreated(EntityModel::Entity *entity, bool flag) = 0;
};

// Both services are optional: without them the steps that need them are skipped. Not guarded against threads.
class EntityManager {
public:
    static GeometryBuilder *getGeometryBuilder();
    static GeometryEditor *getGeometryEditor();
    static void setGeometryBuilder(GeometryBuilder *builder); // not owned; null removes it
    static void setGeometryEditor(GeometryEditor *editor);    // not owned; null removes it

    // The file of the open model; empty until it is saved.
    static EDA_DATA std::string s_CurrentFilename;
};

} // namespace EntityGUI

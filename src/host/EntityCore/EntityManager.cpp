// The registered geometry services.
#include "host/EntityCore/EntityManager.h"

namespace EntityGUI {

namespace {

GeometryBuilder *currentBuilder = nullptr;
GeometryEditor *currentEditor = nullptr;

} // namespace

std::string EntityManager::s_CurrentFilename;

GeometryBuilder *EntityManager::getGeometryBuilder() { return currentBuilder; }

GeometryEditor *EntityManager::getGeometryEditor() { return currentEditor; }

void EntityManager::setGeometryBuilder(GeometryBuilder *builder) { currentBuilder = builder; }

void EntityManager::setGeometryEditor(GeometryEditor *editor) { currentEditor = editor; }

} // namespace EntityGUI

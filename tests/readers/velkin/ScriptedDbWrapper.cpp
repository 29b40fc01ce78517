// The wrapper that acts as its script says.
#include "ScriptedDbWrapper.h"

#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/Path.h"

#include <QByteArray>

namespace VelkinTest {

Script &script() {
    static Script instance;
    return instance;
}

} // namespace VelkinTest

namespace QvDbWrap {

using VelkinTest::script;

class DbWrapper::Design {};

DbWrapper::DbWrapper(std::string file, int mode) {
    script().calls.push_back("open " + FileSystem::Path::getLastToken(file) + " " + std::to_string(mode));
    script().files.push_back(file);
    script().workingFolders.push_back(FileSystem::OSPaths::getCurrentDirectory());
    script().suitePath = qgetenv("QVPATH").toStdString();
    script().placementBounds = qgetenv("USE_DFA_BOUND").toStdString();
    if (script().onOpen) script().onOpen(file, mode);
}

DbWrapper::~DbWrapper() { script().calls.push_back("close"); }

void DbWrapper::SetStepName(std::string &name) { script().calls.push_back("step " + name); }

void DbWrapper::GenerateCFGFile(std::string &file) {
    script().calls.push_back("configure");
    file = script().configuration;
}

const std::vector<outlineData> &DbWrapper::GetOutlines() const { return script().layout.outlines; }
const std::vector<layerData> &DbWrapper::GetAllLayers() const { return script().layout.layers; }
const std::vector<viaModelData> &DbWrapper::GetAllViaModels() const { return script().layout.viaModels; }
const std::vector<viaData> &DbWrapper::GetAllVias() const { return script().layout.vias; }
const std::vector<componentModelData> &DbWrapper::GetAllComponentModels() const {
    return script().layout.componentModels;
}
const std::vector<componentData> &DbWrapper::GetAllComponents() const { return script().layout.components; }
const std::vector<wirebondData> &DbWrapper::GetAllWirebonds() const { return script().layout.wirebonds; }

} // namespace QvDbWrap

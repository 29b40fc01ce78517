// The wrapper: a design or a configuration becomes a layout, and what there is to tell goes into the log.
#include "host/QvDbWrap/DbWrapper.h"

#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/Path.h"
#include "host/QvDbWrap/Configuration.h"
#include "host/QvDbWrap/DesignFile.h"
#include "host/QvDbWrap/SideFile.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <stdexcept>
#include <utility>

namespace QvDbWrap {

namespace {

using FileSystem::OSPaths;
using FileSystem::Path;

std::string inFolder(const std::string &folder, const std::string &name) {
    return FileSystem::fromNative(FileSystem::toNative(folder) / FileSystem::toNative(name));
}

// Of the design, in the folder of the file that was opened: who opens a configuration looks there.
std::string logOf(const std::string &opened, const std::string &design) {
    const std::string name = Path::getLastToken(Path::stripExtension(design)) + ".qvd.log";
    return inFolder(Path::stripLastToken(OSPaths::getAbsolutePath(opened)), name);
}

// What is told of a reading, written when it ends, well or not. A log that can't be written is lost.
class LogFile {
public:
    explicit LogFile(std::string file) : file_(std::move(file)) { removeSideFile(file_); }
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;
    ~LogFile() {
        try {
            std::string error;
            if (!log_.isEmpty()) replaceSideFile(file_, log_.text(), error);
        } catch (const std::exception &) { // no memory: a log that is lost
        }
    }
    WrapperLog &log() { return log_; }

private:
    std::string file_;
    WrapperLog log_;
};

// The host sets it to an empty text where another system would remove it.
bool areCourtyardsWanted() { return OSPaths::getEnvironment("USE_DFA_BOUND") == "1"; }

} // namespace

class DbWrapper::Design {
public:
    Configuration configuration;
    Layout layout;
};

DbWrapper::DbWrapper(std::string file, int mode) : design_(std::make_unique<Design>()) {
    Configuration &configuration = design_->configuration;
    configuration.design = OSPaths::getAbsolutePath(file);
    if (mode == Configure) return;
    if (isConfiguration(file)) {
        configuration = readConfiguration(file);
        if (isConfiguration(configuration.design))
            throw std::runtime_error("the configuration names another configuration");
    }
    LogFile log(logOf(file, configuration.design));
    DesignRequest request;
    request.step = configuration.step;
    request.useCourtyards = areCourtyardsWanted();
    design_->layout = readDesignFile(configuration.design, request, log.log());
}

DbWrapper::~DbWrapper() = default;

void DbWrapper::SetStepName(std::string &name) { design_->configuration.step = name; }

void DbWrapper::GenerateCFGFile(std::string &file) {
    file = inFolder(OSPaths::getCurrentDirectory(), "Board Bench.cfg");
    writeConfiguration(design_->configuration, file);
}

const std::vector<outlineData> &DbWrapper::GetOutlines() const { return design_->layout.outlines; }

const std::vector<layerData> &DbWrapper::GetAllLayers() const { return design_->layout.layers; }

const std::vector<viaModelData> &DbWrapper::GetAllViaModels() const { return design_->layout.viaModels; }

const std::vector<viaData> &DbWrapper::GetAllVias() const { return design_->layout.vias; }

const std::vector<componentModelData> &DbWrapper::GetAllComponentModels() const {
    return design_->layout.componentModels;
}

const std::vector<componentData> &DbWrapper::GetAllComponents() const { return design_->layout.components; }

const std::vector<wirebondData> &DbWrapper::GetAllWirebonds() const { return design_->layout.wirebonds; }

} // namespace QvDbWrap

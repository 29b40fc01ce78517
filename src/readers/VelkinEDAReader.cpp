// One read through the external suite: its order, its result, and the formats.
#include "readers/VelkinEDAReader.h"

#include "host/EntityCore/QuorvityApplicationData.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/Path.h"
#include "host/FileSystem/WorkingFolder.h"
#include "host/QvDbWrap/DbWrapper.h"
#include "host/Tools/EntityModelConstantTr.h"
#include "host/Tools/ToolProgress.h"
#include "readers/VelkinEDAReaderDetail.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace EDA {

using EntityModel::EntityModelConstantTr;
using FileSystem::OSPaths;
using FileSystem::Path;

namespace {

constexpr int fewestCirclePoints = 6;
constexpr int progressMaximum = 5;
constexpr int lastSteps = 2; // behind the conversion

bool mayBeComponent(const std::string &extension) {
    static const char *const extensions[] = {"mcm", "sip", "cvg", "xml", "qvd"};
    return std::find(std::begin(extensions), std::end(extensions), extension) != std::end(extensions);
}

} // namespace

std::map<EDAFormat, FileSystem::FileFormats> VelkinEDAReader::supportedFormats_;

VelkinEDAReader::VelkinEDAReader(bool deleteJunk, bool reconvert)
    : VelkinEDAReader("", deleteJunk, reconvert) {}

VelkinEDAReader::VelkinEDAReader(const char *application, bool deleteJunk, bool reconvert)
    : VelkinEDAReader(std::string(application != nullptr ? application : ""), deleteJunk, reconvert) {}

VelkinEDAReader::VelkinEDAReader(const std::string &application, bool deleteJunk, bool reconvert)
    : suiteFolder_(EntityGUI::QuorvityApplicationData(application).getEDAToolsFolder()),
      deleteJunk_(deleteJunk), reconvert_(reconvert) {}

void VelkinEDAReader::initialiseFileFormats() {
    if (!supportedFormats_.empty()) return;
    supportedFormats_[EDAFormat::Brisko].addFormats("Brisko Files", {"*.brd", "*.mcm", "*.sip"});
    supportedFormats_[EDAFormat::IPC2581].addFormats("IPC2581 Files", {"*.cvg", "*.xml"});
    supportedFormats_[EDAFormat::ODB].addFormats("ODB++ Files",
                                                 {"*.zip", "*.tgz", "*.gz", "*.z", "*.tar", "*.7z"});
    supportedFormats_[EDAFormat::QVD].addFormats("QVD Files", {"*.qvd"});
}

QString VelkinEDAReader::getFileFormats(const EDAFormat &format) {
    initialiseFileFormats();
    return QString::fromStdString(supportedFormats_[format].getFormats(true, {}));
}

void VelkinEDAReader::getAllFileFormats(std::set<std::string> &out) {
    initialiseFileFormats();
    for (const auto &[format, patterns] : supportedFormats_)
        patterns.getAllFormats(out);
}

EntityModel::Entity *VelkinEDAReader::getOptions() {
    return EntityModel::UserPreference::instance().getPreference(EntityModel::EDA_Import_Options_t,
                                                                 EntityModel::Name_t, "EDA", true, nullptr);
}

void VelkinEDAReader::updateGeometryConversionOptions(GeometryConversionOptions &options) {
    options.componentMinPoints = fewestCirclePoints;
    options.conductorMinPoints = fewestCirclePoints;
    options.holeMinPoints = fewestCirclePoints;
    options.solidHoleMinPoints = fewestCirclePoints;
}

bool VelkinEDAReader::hadWarnings(std::string &out) const {
    out = warnings_;
    return !warnings_.empty();
}

bool VelkinEDAReader::readFile(const std::string &file) {
    const VelkinEDASection section("ReadEDAFile");
    error_.clear();
    Job job = describe(file);
    canBeComponentFlag_ = mayBeComponent(job.extension);
    setUpEnvironment();
    if (!prepare(job)) return false;
    startProgress(job);
    std::optional<FileSystem::WorkingFolder> inFolder;
    WrapperPointer wrapper;
    try {
        inFolder.emplace(job.folder);
        wrapper = openDesign(job);
        convert(*wrapper, job);
    } catch (const std::exception &problem) {
        error_ += problem.what();
        ++job.failures;
    } catch (...) {
        error_ += "Unknown exception.";
        ++job.failures;
    }
    // Whatever went wrong, the suite may have left logs that tell more, and files that shall not stay.
    wrapper.reset();
    if (toolProgress_ != nullptr) {
        toolProgress_->addSteps(lastSteps);
        toolProgress_->finish();
    }
    VelkinEDASection tidying("EDATidyLogFiles");
    const std::string current = inFolder ? OSPaths::getCurrentDirectory() : std::string();
    const std::string &workingFolder = current.empty() ? job.folder : current;
    harvestLogs(job, workingFolder);
    const bool isGood = decideResult(job);
    tidyUp(job, workingFolder);
    tidying.endSection();
    if (inFolder) inFolder->goBack();
    return isGood;
}

VelkinEDAReader::Job VelkinEDAReader::describe(const std::string &file) {
    Job job;
    job.file = file;
    job.path = OSPaths::getAbsolutePath(file);
    job.extension = Path::getFormatExtension(file, true);
    job.folder = Path::stripLastToken(job.path);
    if (job.folder.empty()) job.folder = OSPaths::getCurrentDirectory();
    job.stem = Path::stripExtension(job.path);
    return job;
}

void VelkinEDAReader::startProgress(const Job &job) const {
    if (toolProgress_ == nullptr) return;
    toolProgress_->setIndeterminate(false);
    toolProgress_->setText(EntityModelConstantTr::tr("Parsing file", nullptr, -1).toStdString() + " (" +
                           Path::getLastToken(job.file) + ")...");
    toolProgress_->setMaximum(progressMaximum);
}

// The texts of the suite are appended as they are, without a line break: who shows the message relies on what
// an earlier check or exception said to come first.
bool VelkinEDAReader::decideResult(const Job &job) {
    if (!job.hasData) {
        error_ += logText_.empty() ? "No data read from the file." : logText_;
        return false;
    }
    error_ += errors_;
    return errors_.empty() && job.failures == 0;
}

} // namespace EDA

// Around the external suite: its environment and installation, the steps of archives, its logs and leavings.
#include "readers/VelkinEDAReader.h"

#include "host/EntityModel/Type.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/Directory.h"
#include "host/FileSystem/DirectoryListing.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/Path.h"
#include "host/FileSystem/ZipArchive.h"
#include "host/QvDbWrap/DbWrapper.h"
#include "readers/VelkinEDAReaderDetail.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace EDA {

using FileSystem::Directory;
using FileSystem::File;
using FileSystem::OSPaths;

namespace {

// A larger log tells of a suite gone wild; reading it would only fill the memory.
constexpr std::uint64_t maxLogSize = std::uint64_t{256} << 20;

bool isArchive(const std::string &extension) {
    static const char *const extensions[] = {"zip", "tgz", "gz", "z", "7z", "tar"};
    return std::find(std::begin(extensions), std::end(extensions), extension) != std::end(extensions);
}

// The step that an entry of an archive belongs to; empty for none.
std::string stepOf(const std::string &entry) {
    const std::vector<std::string> tokens = FileSystem::Path::getTokens(entry);
    const auto marker = std::find(tokens.begin(), tokens.end(), "steps");
    return marker != tokens.end() && marker + 1 != tokens.end() ? marker[1] : std::string();
}

// The names of all steps, in the archive's order. They are only ever compared, never made part of a path.
std::vector<std::string> stepsOf(const std::string &path) {
    const FileSystem::ZipArchive archive(path, FileSystem::ZipArchive::readMode);
    std::vector<std::string> steps;
    std::set<std::string> known;
    for (const std::string &entry : archive.allEntries(false, true)) {
        const std::string step = stepOf(entry);
        if (!step.empty() && known.insert(step).second) steps.push_back(step);
    }
    if (!archive.getError().empty()) throw std::runtime_error(archive.getError());
    return steps;
}

// Whether a name fits a pattern with one "*". As in a shell, that stands for no dot at the start of a name.
bool fits(std::string_view name, std::string_view pattern) {
    const std::size_t star = pattern.find('*');
    const std::string_view head = pattern.substr(0, star), tail = pattern.substr(star + 1);
    return name.size() >= head.size() + tail.size() && name[0] != '.' &&
           name.substr(0, head.size()) == head && name.substr(name.size() - tail.size()) == tail;
}

// The files of a folder that fit one of the patterns.
template <typename Patterns>
std::vector<std::string> filesLike(const std::string &folder, const Patterns &patterns) {
    std::vector<std::string> found;
    for (const std::string &name : FileSystem::DirectoryListing(folder)) {
        const auto fitsName = [&name](const char *pattern) { return fits(name, pattern); };
        if (std::any_of(std::begin(patterns), std::end(patterns), fitsName))
            found.push_back(folder + "/" + name);
    }
    return found;
}

bool contains(const std::string &line, const char *text) { return line.find(text) != std::string::npos; }

bool isWarning(const std::string &line) {
    static const char *const marks[] = {"Warning:", "Cannot open File", "Cannot find", "failed to find",
                                        "The encoding type"};
    return std::any_of(std::begin(marks), std::end(marks),
                       [&line](const char *mark) { return contains(line, mark); });
}

} // namespace

void VelkinEDAReader::setUpEnvironment() const {
    using namespace EntityModel;
    if (!suiteFolder_.empty()) OSPaths::setEnvironment("QVPATH", suiteFolder_);
    const Type outlines =
        UserPreferencesProxy::typeValue(AttributePath(Component_Outline_Type_t), TypeFactory::emptyType());
    OSPaths::setEnvironment("USE_DFA_BOUND", outlines == DFA_Bound_t ? "1" : "");
}

// Why the suite can't be used; empty when it can.
std::string VelkinEDAReader::suiteProblem() const {
    if (suiteFolder_.empty()) return "Set the Quorvity Installation Folder in File Options.";
    if (!Directory::exists(suiteFolder_))
        return "The Quorvity Installation Folder specified in File Options does not exist: " + suiteFolder_;
    // Intended: hosts look for this very text, with its missing "not".
    if (!File::exists(suiteFolder_ + "/QuorvitySuite.exe"))
        return "The Quorvity Installation Folder specified in File Options does contain QuorvitySuite.exe " +
               suiteFolder_;
    return {};
}

// Checks the suite, chooses the name of its file and makes way for it. False when there is no way to read on.
// The suite's file of a .qvd is another one, so that the design itself is never taken for it and removed.
bool VelkinEDAReader::prepare(Job &job) {
    const bool isLayout = job.extension == "qvd";
    if (!isLayout) error_ = suiteProblem();
    job.layoutFile = job.stem + (isLayout ? "_tmp.qvd" : ".qvd");
    if (!error_.empty()) return !reconvert_ && File::exists(job.layoutFile);
    if (reconvert_ && !File::isSame(job.layoutFile, job.path)) File::remove(job.layoutFile);
    return true;
}

VelkinEDAReader::WrapperPointer VelkinEDAReader::openDesign(const Job &job) const {
    using QvDbWrap::DbWrapper;
    const std::vector<std::string> steps =
        isArchive(job.extension) ? stepsOf(job.path) : std::vector<std::string>();
    std::string file = job.path;
    VelkinEDASection choosing("EDAChooseStep");
    if (steps.size() > 1) {
        std::string step = chooseStep(steps);
        DbWrapper configuration(job.path, DbWrapper::Configure);
        configuration.SetStepName(step);
        configuration.GenerateCFGFile(file);
    }
    choosing.endSection();
    const VelkinEDASection construction("EDAConstructWrapper");
    return std::make_unique<DbWrapper>(file, DbWrapper::Read);
}

std::string VelkinEDAReader::chooseStep(const std::vector<std::string> &steps) const {
    if (stepChooser_ == nullptr) return *std::min_element(steps.begin(), steps.end());
    const std::optional<int> choice = stepChooser_->chooseStep(steps);
    if (!choice || *choice < 0 || static_cast<std::size_t>(*choice) >= steps.size())
        throw std::runtime_error("User cancelled operation.");
    return steps[static_cast<std::size_t>(*choice)];
}

void VelkinEDAReader::harvestLogs(const Job &job, const std::string &workingFolder) {
    static const char *const conversionLogs[] = {"ToQVD*.log"};
    const auto harvest = [this, &job](const std::string &path, bool asWarnings) {
        // A design may be named like a log.
        if (!File::isSame(path, job.path)) extractAndDeleteLog(path, asWarnings);
    };
    for (const std::string &path : filesLike(job.folder, conversionLogs))
        harvest(path, false);
    harvest(job.stem + "_CheckingErrorsWarnings.log", true);
    for (const char *ending : {".qvdif.log", ".qvd.log", "_VelkinLayout.err", "_qvdif_error.log", ".log"})
        harvest(job.stem + ending, false);
    harvest(job.folder + "/error.log", false);
    for (const char *name : {"/Untitled_CheckingErrorsWarnings.log", "/dsuprev.log"})
        harvest(workingFolder + name, false);
}

void VelkinEDAReader::extractAndDeleteLog(const std::string &path, bool asWarnings) {
    if (!File::exists(path)) return;
    std::string content, reason;
    if (!File::readAll(path, content, reason, maxLogSize)) warnings_ += reason + "\n";
    for (std::size_t begin = 0; begin < content.size();) {
        const std::size_t end = std::min(content.find('\n', begin), content.size());
        const bool isFromWindows = end > begin && content[end - 1] == '\r';
        sortLogLine(content.substr(begin, end - begin - (isFromWindows ? 1 : 0)) + "\n", asWarnings);
        begin = end + 1;
    }
    if (deleteJunk_) File::remove(path);
}

void VelkinEDAReader::sortLogLine(const std::string &line, bool asWarnings) {
    logText_ += line;
    if (contains(line, "Error:"))
        (asWarnings ? warnings_ : errors_) += line;
    else if (isWarning(line) && !contains(line, "The value of resistance specified"))
        warnings_ += line; // that one says nothing of the board's shape and comes by the thousand
}

void VelkinEDAReader::tidyUp(const Job &job, const std::string &workingFolder) const {
    const auto remove = [&job](const std::string &path) {
        if (!File::isSame(path, job.path)) File::remove(path);
    };
    if (reconvert_) remove(job.layoutFile);
    if (!deleteJunk_) return;
    for (const std::string &path :
         {job.folder + "/ToQVD.tcl", job.stem + "_3dStp.xml", job.stem + "_test.log",
          workingFolder + "/Run.Log", job.folder + "/Board Bench.cfg", job.folder + "/myeasylog.log"})
        remove(path);
    Directory::remove(workingFolder + "/stepFacetFiles4Map", true);
    static const char *const patterns[] = {"*.stp.sab",   "*.stp.asab",    "*.step.sab",
                                           "*.step.asab", "Velkin2D.jrl*", "QuorvitySuiteCon.jrl*"};
    for (const std::string &path : filesLike(job.folder, patterns))
        remove(path);
}

} // namespace EDA

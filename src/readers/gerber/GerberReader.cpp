// Life of the reader, its file lists and options, and the reading of a set.
#include "readers/gerber/GerberReader.h"

#include "host/EntityModel/Entity.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/Path.h"
#include "host/Profiling/ProfileSectionProxy.h"
#include "host/Tools/ToolProgress.h"
#include "readers/gerber/GerberLines.h"
#include "text/Encoding.h"

#include <algorithm>

namespace EDA {

using namespace EntityModel;

namespace {

constexpr int partsOfFile = 1000; // of the progress of a set

void setOption(Entity &options, const TypeRef &type, const char *value) {
    if (Attribute *const attribute = options.findAttribute(type, false)) attribute->setFromString(value);
}

void markOption(Entity &options, const TypeRef &type) {
    if (Attribute *const attribute = options.findAttribute(type, false)) attribute->setFlag(true);
}

void presetOptions(Entity &options) {
    setOption(options, Filter_Options_t, "true");
    markOption(options, Import_Vias_t);
    setOption(options, Keepout_Options_t, "true");
    markOption(options, Import_Detailed_Layers_t);
    setOption(options, Import_Detailed_Layers_t, "true");
    setOption(options, Merge_Conductors_t, "false");
}

bool readLines(const std::string &path, std::size_t limit, std::string &text) {
    std::string error;
    if (!FileSystem::File::readAll(path, text, error, limit)) return false;
    text = decodedToUtf8(std::move(text));
    return true;
}

int digitAt(std::string_view text, std::size_t index) {
    const bool isDigit = index < text.size() && text[index] >= '0' && text[index] <= '9';
    return isDigit ? text[index] - '0' : 0;
}

std::string layerName(const QMap<int, QString> &names, int index) {
    return FileSystem::Path::stripExtension(names.value(index).toStdString());
}

} // namespace

GerberReader::GerberReader() : GerberReader(GerberLimits()) {}

GerberReader::~GerberReader() = default;

GerberReader::GerberReader(const GerberLimits &limits)
    : limits_(limits), macroWork_(limits.macroWork), strokeWork_(limits.strokeWork) {
    board_.setUnits("mm");
}

Entity *GerberReader::getOptions() {
    Entity *const options =
        UserPreference::instance().getPreference(EDA_Import_Options_t, Name_t, "Gerber", true, nullptr);
    // Once a reader: what the user chooses after that stands when the files are read.
    if (options && !optionsPreset_) presetOptions(*options);
    optionsPreset_ = true;
    return options;
}

void GerberReader::initialiseFiles(const QStringList &files) {
    for (const QString &file : files)
        (isDrillFile(file.toStdString()) ? viaFiles_ : layerFiles_).append(file);
}

bool GerberReader::isDrillFile(const std::string &path) const {
    std::string text;
    if (!readLines(path, limits_.fileSize, text)) return false;
    GerberLines lines(std::move(text));
    for (std::string_view line; lines.nextRaw(line);) {
        if (startsWith(line, "M48") || startsWith(line, "T0")) return true;
        if (startsWith(line, "G04")) return false;
    }
    return false;
}

void GerberReader::setLayerArrangement(const QStringList &layerFiles, const QStringList &viaFiles,
                                       const QMap<int, QString> &viaStartLayers,
                                       const QMap<int, QString> &viaEndLayers) {
    layerFiles_ = layerFiles;
    viaFiles_ = viaFiles;
    viaStartLayers_ = viaStartLayers;
    viaEndLayers_ = viaEndLayers;
}

void GerberReader::setViaNumberFormat(int integerDigits, int decimalDigits) {
    viaFormat_ = {std::clamp(integerDigits, 0, 15), std::clamp(decimalDigits, 0, 15)};
}

bool GerberReader::extractNumberFormat(const QString &path, int &integerDigits, int &decimalDigits) const {
    std::string text;
    if (!readLines(path.toStdString(), limits_.fileSize, text)) return false;
    GerberLines lines(std::move(text));
    for (std::string_view line; lines.next(line);) {
        if (!startsWith(line, "%FS")) continue;
        const std::size_t x = line.find('X');
        integerDigits = x == std::string_view::npos ? 0 : digitAt(line, x + 1);
        decimalDigits = x == std::string_view::npos ? 0 : digitAt(line, x + 2);
        return true;
    }
    return false;
}

bool GerberReader::readFile(const std::string &path) {
    const Profiling::ProfileSectionProxy section("GerberReader", __LINE__, "EDA::GerberReader::readFile",
                                                 "ReadGerberFile", true, "");
    error_.clear();
    startLayer_.clear();
    endLayer_.clear();
    const bool isRead = addFileData(path, !isDrillFile(path), nullptr);
    finishMessages();
    return isRead;
}

bool GerberReader::readFiles(Tools::ToolProgress *progress) {
    const Profiling::ProfileSectionProxy section("GerberReader", __LINE__, "EDA::GerberReader::readFiles",
                                                 "ReadGerberFiles", true, "");
    error_.clear();
    const Entity *const options = getOptions();
    const Attribute *const merge =
        options ? options->readAttribute(AttributePath(Merge_Conductors_t)) : nullptr;
    mergeConductors_ = merge ? merge->getBool() : true;

    int done = 0;
    const auto readOne = [&](const QString &file, bool isLayer) {
        const Tools::ToolProgressRange range(progress, done, done + partsOfFile);
        done += partsOfFile;
        addFileData(file.toStdString(), isLayer, progress);
        return !progress || !progress->isCancelled();
    };
    if (progress) progress->setMaximum(partsOfFile * static_cast<int>(layerFiles_.size() + viaFiles_.size()));
    bool goOn = true;
    for (int i = 0; goOn && i < layerFiles_.size(); ++i)
        goOn = readOne(layerFiles_[i], true);
    for (int i = 0; goOn && i < viaFiles_.size(); ++i) {
        startLayer_ = layerName(viaStartLayers_, i);
        endLayer_ = layerName(viaEndLayers_, i);
        goOn = readOne(viaFiles_[i], false);
    }
    finishMessages();
    return board_.numLayers() == static_cast<std::size_t>(layerFiles_.size());
}

void GerberReader::resetParser() {
    state_ = ParserState();
    flashedAndStroked_.clear();
    regions_.clear();
    flashedIndex_.clear();
    regionIndex_.clear();
    numPoints_ = 0;
    numObjects_ = 0;
    limitReached_ = false;
    infinityTold_ = false;
    holeLimitTold_ = false;
    clearLimitTold_ = false;
    strokeLimitTold_ = false;
    macroWork_ = WorkBudget(limits_.macroWork);
    strokeWork_ = WorkBudget(limits_.strokeWork);
}

void GerberReader::addMessage(const std::string &text) {
    if (numMessages_++ < limits_.messages) error_ += text + "\n";
}

void GerberReader::addUnhandled(Statement statement) {
    addMessage("Unhandled statement: " + std::string(statement));
}

void GerberReader::finishMessages() {
    if (numMessages_ > limits_.messages) {
        error_ += "There were " + std::to_string(numMessages_ - limits_.messages) + " further messages.\n";
    }
    numMessages_ = 0;
}

} // namespace EDA

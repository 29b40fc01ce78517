// One read of an IDX file: the walk over its document, and the error text.
#include "readers/IDXReader.h"

#include "host/EntityModel/Types.h"
#include "host/EntityModel/UserPreference.h"
#include "host/FileSystem/File.h"
#include "host/Profiling/ProfileSectionProxy.h"
#include "readers/XmlDetail.h"

#include <algorithm>

namespace EDA {

namespace {

bool loadFile(const std::string &path, const XmlLimits &limits, XmlTree &document) {
    std::string text, reason;
    return FileSystem::File::readAll(path, text, reason) && loadXml(text, limits, document);
}

} // namespace

bool IDXReader::readFile(const std::string &path) {
    Profiling::ProfileSectionProxy section("IDXReader", __LINE__, "EDA::IDXReader::readFile", "ReadIDXFile",
                                           true, "");
    error_.clear();
    tables_ = {};
    making_ = {};
    numTypedItems_ = 0;
    geometryTypes_.clear();
    passedOver_ = {};
    if (!readTables(path)) return false;
    createParts();
    if (making_.messagesDropped > 0)
        error_ += "There were " + std::to_string(making_.messagesDropped) + " further messages.\n";
    board_.setImportType(fileType_.toStdString());
    tables_ = {};
    making_ = {};
    return true;
}

bool IDXReader::readTables(const std::string &path) {
    XmlTree document(limits_.xml);
    if (!loadFile(path, limits_.xml, document)) return false;
    fileType_.clear();
    version_.clear();
    parseXML(document.root());
    return true;
}

void IDXReader::parseXML(const XmlElement &element) {
    const QString &tag = element.localName();
    if (tag == QLatin1String("Header")) return parseHeader(element);
    if (tag == QLatin1String("Body")) return parseBody(element);
    if (tag == QLatin1String("Item")) noteGeometryType(element); // newer documents may have them here
    eachChild(element, [this](const XmlElement &child, const QString &) { parseXML(child); });
}

void IDXReader::parseHeader(const XmlElement &element) {
    const QString &tag = element.localName();
    if (tag == QLatin1String("UserProperty")) {
        QString scope, name, value;
        getProperty(element, scope, name, value);
        if (name == QLatin1String("IDX_VERSION")) version_ = value;
        if (name == QLatin1String("IDX_FILE_TYPE")) fileType_ = value;
    } else if (tag == QLatin1String("CreatorSystem")) {
        const QString system = element.text();
        if (system == QLatin1String("Design Force")) tables_.fromDesignForce = true;
        if (system == QLatin1String("Expedition")) tables_.fromExpedition = true;
    } else {
        eachChild(element, [this](const XmlElement &child, const QString &) { parseHeader(child); });
    }
}

EntityModel::Entity *IDXReader::getOptions() {
    return EntityModel::UserPreference::instance().getPreference(EntityModel::EDA_Import_Options_t,
                                                                 EntityModel::Name_t, "IDX", true, nullptr);
}

void IDXReader::reportKind(const QString &kind) { report("Unhandled Object Type ", kind); }

void IDXReader::reportCurve(const QString &id) { report("Failed to find curve element ", id); }

// Always told, however many messages there were.
void IDXReader::reportLimit(std::size_t limit, const char *things) {
    error_ += "More than " + std::to_string(limit) + ' ' + things + ": the others are left out.\n";
    ++making_.messages;
}

// The first one without room ends them: a long name is not turned into text for each message that has it.
void IDXReader::report(const char *text, const QString &name) {
    ++making_.messages;
    if (making_.messagesDropped > 0 || making_.messages > limits_.messages) {
        ++making_.messagesDropped;
        return;
    }
    std::string line = text + name.toStdString();
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    if (line.size() + error_.size() > limits_.messageBytes)
        ++making_.messagesDropped;
    else
        error_ += line + '\n';
}

} // namespace EDA

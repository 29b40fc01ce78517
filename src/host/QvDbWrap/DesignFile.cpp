// Which kind of design a file is, and what can be read in the place of one that only the suite opens.
#include "host/QvDbWrap/DesignFile.h"

#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/Path.h"
#include "host/QvDbWrap/IpcDocument.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/LayoutFile.h"
#include "host/QvDbWrap/SideFile.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <filesystem>
#include <stdexcept>

namespace QvDbWrap {

namespace {

using FileSystem::Path;

std::string quoted(const std::string &text) { return "\"" + text + "\""; }

std::string nameOf(const std::string &file) { return quoted(Path::getLastToken(file)); }

void checkFile(const std::string &file) {
    std::error_code error;
    const auto status = std::filesystem::status(FileSystem::toNative(file), error);
    if (status.type() == std::filesystem::file_type::not_found)
        throw std::runtime_error(nameOf(file) + ": there is no such file");
    if (!std::filesystem::is_regular_file(status))
        throw std::runtime_error(nameOf(file) + ": is no regular file");
}

Layout readDocument(const std::string &file, const DesignRequest &request, WrapperLog &log) {
    IpcSettings settings;
    settings.step = request.step;
    settings.useCourtyards = request.useCourtyards;
    IpcXml xml(file);
    return readIpcDocument(xml, settings, log);
}

// "board.brd" -> ".brd", or what there is to say of a name without extension.
std::string kindOf(const std::string &file) {
    const std::string extension = Path::getExtension(file, true);
    return extension.empty() ? "file of this kind" : quoted(extension) + " file";
}

Layout readBeside(const std::string &file, const DesignRequest &request, WrapperLog &log) {
    const std::string layout = layoutBeside(file);
    const std::string offer = "only the layout suite opens a " + kindOf(file) + "; the layout " +
                              nameOf(layout) + " beside it would be read in its place, but ";
    std::error_code error;
    if (!std::filesystem::exists(FileSystem::toNative(layout), error))
        throw std::runtime_error(offer + "there is none");
    if (!isLayoutFile(layout))
        throw std::runtime_error(offer + "it is not in the text form that can be read");
    log.warn("only the layout suite opens " + nameOf(file) + "; the layout " + nameOf(layout) +
             " beside it is read in its place" +
             (request.step.empty() ? std::string() : ", whatever the step " + quoted(request.step) + " has"));
    try {
        return readLayoutFile(layout);
    } catch (const std::runtime_error &failure) {
        throw std::runtime_error(nameOf(layout) + ": " + failure.what());
    }
}

Layout readLayout(const std::string &file, const DesignRequest &request) {
    if (!request.step.empty())
        throw std::runtime_error("a layout has no steps, so there is no step " + quoted(request.step));
    return readLayoutFile(file);
}

} // namespace

std::string layoutBeside(const std::string &design) { return Path::stripExtension(design) + ".qvd"; }

Layout readDesignFile(const std::string &design, const DesignRequest &request, WrapperLog &log) {
    checkFile(design);
    if (isLayoutFile(design)) return readLayout(design, request);
    if (isIpcDocument(design)) return readDocument(design, request, log);
    const std::string format = Path::getFormatExtension(design, true);
    if (format == "xml" || format == "cvg")
        throw std::runtime_error("this is no IPC-2581 document: it is no XML, has a document type, or its "
                                 "first element is another");
    if (format == "qvd")
        throw std::runtime_error(
            "this layout is not in the text form that can be read; only the suite opens it");
    return readBeside(design, request, log);
}

} // namespace QvDbWrap

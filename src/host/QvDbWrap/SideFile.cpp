// Replacing small files beside designs.
#include "host/QvDbWrap/SideFile.h"

#include "host/FileSystem/AtomicFile.h"
#include "host/FileSystem/NativePath.h"

#include <filesystem>
#include <fstream>

namespace QvDbWrap {

namespace fs = std::filesystem;

bool startsWithMark(const std::string &file, std::string_view mark) {
    const fs::path path = FileSystem::toNative(file);
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    std::ifstream stream(path, std::ios::binary);
    std::string head(mark.size() + 1, '\0');
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    return stream.gcount() == static_cast<std::streamsize>(head.size()) && head == std::string(mark) + ' ';
}

bool removeSideFile(const std::string &file) {
    const fs::path path = FileSystem::toNative(file);
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path, error);
    if (status.type() == fs::file_type::not_found) return true;
    if (fs::is_directory(status)) return false;
    return fs::remove(path, error);
}

bool replaceSideFile(const std::string &file, const std::string &text, std::string &error) {
    if (!removeSideFile(file)) {
        error = FileSystem::fileError(file, "stands in the way and can't be removed");
        return false;
    }
    FileSystem::AtomicFile output(file);
    output.stream() << text;
    const bool isWritten = output.commit();
    error = output.error();
    return isWritten;
}

} // namespace QvDbWrap

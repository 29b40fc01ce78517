// Looking at files before they are read, and writing them whole.
#include "Files.h"

#include "Failure.h"
#include "host/FileSystem/AtomicFile.h"
#include "host/FileSystem/DirectoryListing.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/Limits.h"
#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/Path.h"
#include "Printable.h"
#include "text/Text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace EDATool {

namespace {

constexpr std::size_t headSize = 64 * 1024;

[[noreturn]] void fail(const std::string &file, const std::string &reason) {
    throw DesignFailure(inQuotes(file) + ": " + reason);
}

void checkRegular(const std::string &file) {
    std::error_code error;
    const std::filesystem::path path = FileSystem::toNative(file);
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) fail(file, "there is no such file");
    if (error) fail(file, error.message());
    if (std::filesystem::is_directory(status)) fail(file, "is a folder");
    if (!std::filesystem::is_regular_file(status)) fail(file, "is no regular file");
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) fail(file, error.message());
    if (size == 0) fail(file, "is empty");
    if (size > FileSystem::maxFileSize) fail(file, "is larger than 1 GiB, the limit of what is read");
}

} // namespace

std::string readHead(const std::string &file) {
    checkRegular(file);
    std::ifstream stream(FileSystem::toNative(file), std::ios::binary);
    std::string head(headSize, '\0');
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    if (stream.bad() || stream.gcount() <= 0) fail(file, "cannot be opened for reading");
    head.resize(static_cast<std::size_t>(stream.gcount()));
    for (const char *mark : {"\xef\xbb\xbf", "\xff\xfe", "\xfe\xff"}) {
        if (head.compare(0, std::char_traits<char>::length(mark), mark) == 0) {
            head.erase(0, std::char_traits<char>::length(mark));
        }
    }
    head.erase(std::remove(head.begin(), head.end(), '\0'), head.end());
    return head;
}

bool isFolder(const std::string &name) {
    std::error_code error;
    return std::filesystem::is_directory(FileSystem::toNative(name), error);
}

namespace {

// Of names that do not start with a dot.
std::vector<std::string> pathsInFolder(const std::string &folder, bool (*takes)(const std::string &path)) {
    const bool hasSlash = !folder.empty() && folder.back() == '/';
    std::vector<std::string> paths;
    for (const std::string &name : FileSystem::DirectoryListing(folder)) {
        const std::string path = folder + (hasSlash ? "" : "/") + name;
        if (name.front() != '.' && takes(path)) paths.push_back(path);
    }
    return paths;
}

} // namespace

std::vector<std::string> filesInFolder(const std::string &folder) {
    return pathsInFolder(folder, [](const std::string &path) { return FileSystem::File::exists(path); });
}

std::vector<std::string> foldersInFolder(const std::string &folder) {
    return pathsInFolder(folder, isFolder);
}

bool isSameFile(const std::string &a, const std::string &b) { return FileSystem::File::isSame(a, b); }

std::string lowerExtension(const std::string &file) {
    const std::string extension = FileSystem::Path::getFormatExtension(file, true);
    return extension.empty() ? extension : "." + extension;
}

std::string findIgnoringCase(const std::string &file) {
    if (FileSystem::File::exists(file)) return file;
    const std::string wanted = FileSystem::Path::getLastToken(file);
    const std::string before = file.substr(0, file.size() - wanted.size());
    for (const std::string &name : FileSystem::DirectoryListing(before.empty() ? "." : before)) {
        if (EDA::equalsIgnoreCase(name, wanted)) return before + name;
    }
    return std::string();
}

// The error starts with the name of the file, which may hold anything.
void failToWrite(const std::string &file, const std::string &error) {
    const std::string prefix = file + ": ";
    const bool hasPrefix = error.compare(0, prefix.size(), prefix) == 0;
    fail(file, "cannot be written: " + printable(hasPrefix ? error.substr(prefix.size()) : error));
}

void checkWritable(const std::string &file) {
    const FileSystem::AtomicFile probe(file);
    if (!probe.isOpen()) failToWrite(file, probe.error());
}

void writeWhole(const std::string &file, const std::string &bytes) {
    FileSystem::AtomicFile output(file);
    output.stream() << bytes;
    if (!output.commit()) failToWrite(file, output.error());
}

} // namespace EDATool

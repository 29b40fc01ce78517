// Asking for, removing, copying and reading files.
#include "host/FileSystem/File.h"

#include "host/FileSystem/AtomicFile.h"
#include "host/FileSystem/NativePath.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t chunkSize = std::size_t{1} << 16;

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

// Why the path is not a file that can be read as a whole; empty when it is one.
std::string notReadable(const fs::path &path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) return "file does not exist";
    if (error) return error.message();
    if (fs::is_directory(status)) return "is a folder";
    if (!fs::is_regular_file(status)) return "is not a regular file";
    return {};
}

std::string limitText(std::uint64_t limit) {
    return "larger than the limit of " + std::to_string(limit) + " bytes";
}

// Reads to the end, whatever size the system told, or to one byte above the limit.
bool readToEnd(std::FILE *file, std::uint64_t expected, std::uint64_t limit, std::string &content) {
    std::size_t used = 0;
    content.resize(static_cast<std::size_t>(expected) + 1);
    for (;;) {
        used += std::fread(&content[used], 1, content.size() - used, file);
        if (used < content.size() || used > limit) break;
        content.resize(used + std::max(used / 2, chunkSize));
    }
    content.resize(used);
    return std::ferror(file) == 0;
}

bool copyContent(std::FILE *source, std::uint64_t size, std::ostream &target,
                 const File::CopyCallback &callback) {
    std::vector<char> chunk(chunkSize);
    std::uint64_t done = 0;
    for (;;) {
        const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), source);
        target.write(chunk.data(), static_cast<std::streamsize>(count));
        done += count;
        const double share = size == 0 ? 1.0 : std::min(1.0, static_cast<double>(done) / size);
        if (!target || (callback && !callback(share))) return false;
        if (count < chunk.size()) return std::ferror(source) == 0;
    }
}

} // namespace

bool File::exists(const std::string &path) {
    std::error_code error;
    const fs::file_status status = fs::status(toNative(path), error);
    return fs::exists(status) && !fs::is_directory(status);
}

std::uint64_t File::size(const std::string &path) {
    const fs::path native = toNative(path);
    if (!notReadable(native).empty()) return 0;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(native, error);
    return error ? 0 : size;
}

bool File::isSame(const std::string &path, const std::string &other) {
    std::error_code error;
    return fs::equivalent(toNative(path), toNative(other), error);
}

bool File::remove(const std::string &path) {
    std::error_code error;
    const fs::path native = toNative(path);
    if (fs::is_directory(fs::symlink_status(native, error))) return false;
    return fs::remove(native, error) && !error;
}

bool File::copyFile(const std::string &source, const std::string &target, bool failIfExists, bool keepTime,
                    const CopyCallback &callback) {
    const fs::path from = toNative(source);
    const fs::path to = toNative(target);
    std::error_code error;
    if (!notReadable(from).empty() || (failIfExists && fs::exists(fs::symlink_status(to, error))))
        return false;
    const FileHandle handle(openFile(from, "rb"));
    if (!handle) return false;
    const std::uint64_t size = fs::file_size(from, error);
    const fs::file_time_type time = fs::last_write_time(from, error);
    AtomicFile copy(target);
    if (!copy.isOpen() || !copyContent(handle.get(), size, copy.stream(), callback) || !copy.commit())
        return false;
    if (keepTime) fs::last_write_time(to, time, error);
    return true;
}

bool File::readAll(const std::string &path, std::string &content, std::string &error, std::uint64_t limit) {
    content.clear();
    const fs::path native = toNative(path);
    const auto fail = [&](const std::string &reason) {
        content.clear();
        content.shrink_to_fit();
        error = fileError(path, reason);
        return false;
    };
    if (const std::string reason = notReadable(native); !reason.empty()) return fail(reason);
    std::error_code code;
    const std::uint64_t size = fs::file_size(native, code);
    if (code) return fail(code.message());
    if (size > limit) return fail(limitText(limit));
    const FileHandle handle(openFile(native, "rb"));
    if (!handle) return fail(lastError().message());
    if (!readToEnd(handle.get(), size, limit, content)) return fail(lastError().message());
    if (content.size() > limit) return fail(limitText(limit));
    return true;
}

} // namespace FileSystem

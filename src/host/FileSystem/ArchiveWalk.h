// A walk over the entries of an archive that keeps within the limits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

struct archive;
struct archive_entry;

namespace FileSystem {

struct ArchiveEntry {
    std::string name; // full, UTF-8, with '/'
    bool isFolder = false;
};

class ArchiveWalk {
public:
    // Takes a piece of an entry's content; false stops the walk as a failure.
    using Sink = std::function<bool(const char *data, std::size_t size)>;

    explicit ArchiveWalk(const std::string &path);
    ~ArchiveWalk();
    ArchiveWalk(const ArchiveWalk &) = delete;
    ArchiveWalk &operator=(const ArchiveWalk &) = delete;

    // The next file or folder. False at the end and after a failure.
    bool next(ArchiveEntry &entry);

    // The content of the entry that next gave. To be called at most once an entry.
    bool readContent(const Sink &sink);

    // The reason of the failure, without the archive's name; empty when there was none.
    const std::string &error() const { return error_; }

private:
    bool open(const std::string &path);
    bool fail(const std::string &reason);
    bool checked(int result);
    bool finishEntry();
    bool takeName(std::string &name);
    bool count(std::uint64_t bytes);

    archive *archive_ = nullptr;
    archive_entry *entry_ = nullptr;
    bool unread_ = false; // the entry that next gave has content that wasn't read
    std::size_t entries_ = 0;
    std::size_t nameBytes_ = 0;
    std::uint64_t unpacked_ = 0;
    std::uint64_t allowed_ = 0;
    std::string error_;
};

} // namespace FileSystem

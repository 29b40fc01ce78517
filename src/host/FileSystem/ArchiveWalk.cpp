// Entry names and contents of an archive, counted against the limits.
#include "host/FileSystem/ArchiveWalk.h"

#include "host/FileSystem/Limits.h"
#include "host/FileSystem/NativePath.h"
#include "host/FileSystem/Path.h"
#include "text/Encoding.h"

#include <algorithm>
#include <array>

#include <archive.h>
#include <archive_entry.h>
#ifndef _WIN32
#include <locale.h>
#endif

namespace FileSystem {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16;

// Rewrites the name with '/' and without "." tokens; false when it could lead out of a folder.
bool cleanName(std::string &name) {
    const bool absolute = !name.empty() && (name[0] == '/' || name[0] == '\\');
    const bool drive = name.size() > 1 && name[1] == ':';
    if (absolute || drive || name.find('\0') != std::string::npos) return false;
    std::string clean;
    for (const std::string &token : Path::getTokens(name)) {
        if (token == "..") return false;
        if (token == ".") continue;
        if (!clean.empty()) clean += '/';
        clean += token;
    }
    name = clean;
    return true;
}

// The archive library turns names into the character set of the thread's locale, and gives none where that
// cannot hold them. Under this guard it is UTF-8, whatever the program's locale; where the system has no such
// locale, nothing changes.
class Utf8Names {
public:
#ifdef _WIN32
    Utf8Names() = default;
#else
    Utf8Names() : locale_(newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t())) {
        if (locale_ != locale_t()) before_ = uselocale(locale_);
    }
    ~Utf8Names() {
        if (locale_ == locale_t()) return;
        uselocale(before_);
        freelocale(locale_);
    }
#endif
    Utf8Names(const Utf8Names &) = delete;
    Utf8Names &operator=(const Utf8Names &) = delete;

#ifndef _WIN32
private:
    locale_t locale_;
    locale_t before_ = locale_t();
#endif
};

bool isLink(archive_entry *entry) {
    return archive_entry_hardlink(entry) != nullptr || archive_entry_symlink(entry) != nullptr;
}

} // namespace

ArchiveWalk::ArchiveWalk(const std::string &path) { open(path); }

ArchiveWalk::~ArchiveWalk() {
    if (archive_ != nullptr) archive_read_free(archive_);
}

bool ArchiveWalk::open(const std::string &path) {
    const fs::path native = toNative(path);
    std::error_code code;
    const fs::file_status status = fs::status(native, code);
    if (!fs::exists(status)) return fail("file does not exist");
    if (!fs::is_regular_file(status)) return fail("is not a regular file");
    const std::uint64_t size = fs::file_size(native, code);
    if (code) return fail(code.message());
    const std::uint64_t byRatio = size > maxUnpackedSize ? maxUnpackedSize : size * maxUnpackedRatio;
    allowed_ = std::min(maxUnpackedSize, std::max(archiveRatioFrom, byRatio));

    archive_ = archive_read_new();
    if (archive_ == nullptr) return fail("out of memory");
    archive_read_support_format_zip(archive_);
    archive_read_support_format_tar(archive_);
    archive_read_support_format_7zip(archive_);
    archive_read_support_filter_gzip(archive_);
    archive_read_support_filter_compress(archive_);
    archive_read_support_filter_bzip2(archive_);
    archive_read_support_filter_xz(archive_);
#ifdef _WIN32
    return checked(archive_read_open_filename_w(archive_, native.c_str(), blockSize));
#else
    return checked(archive_read_open_filename(archive_, native.c_str(), blockSize));
#endif
}

bool ArchiveWalk::fail(const std::string &reason) {
    if (error_.empty()) error_ = reason;
    return false;
}

// A warning is no failure: the entry it speaks of can be used.
bool ArchiveWalk::checked(int result) {
    if (result == ARCHIVE_OK || result == ARCHIVE_WARN) return true;
    const char *reason = archive_error_string(archive_);
    return fail(reason != nullptr ? reason : "is damaged");
}

bool ArchiveWalk::next(ArchiveEntry &entry) {
    const Utf8Names guard;
    while (error_.empty() && finishEntry()) {
        const int result = archive_read_next_header(archive_, &entry_);
        if (result == ARCHIVE_EOF || !checked(result)) return false;
        unread_ = true;
        if (++entries_ > maxArchiveEntries) return fail("has too many entries");
        const auto type = archive_entry_filetype(entry_);
        const bool isFolder = type == AE_IFDIR;
        if (!takeName(entry.name)) return false;
        if (isLink(entry_) || (!isFolder && type != AE_IFREG) || entry.name.empty()) continue;
        entry.isFolder = isFolder;
        return true;
    }
    return false;
}

// Unpacks what wasn't read, so that it counts: the library would unpack it on the way to the next entry
// without asking. Zip alone has a table of its entries and needs no unpacking.
bool ArchiveWalk::finishEntry() {
    if (!unread_) return true;
    unread_ = false;
    const bool isZip = (archive_format(archive_) & ARCHIVE_FORMAT_BASE_MASK) == ARCHIVE_FORMAT_ZIP;
    if (isZip) return checked(archive_read_data_skip(archive_));
    return readContent([](const char *, std::size_t) { return true; });
}

bool ArchiveWalk::takeName(std::string &name) {
    const char *text = archive_entry_pathname_utf8(entry_);
    if (text == nullptr) text = archive_entry_pathname(entry_);
    if (text == nullptr) return fail("has an entry without a readable name");
    name = EDA::isValidUtf8(text) ? text : EDA::latin1ToUtf8(text);
    nameBytes_ += name.size();
    if (nameBytes_ > maxArchiveNames) return fail("has too long names");
    if (!cleanName(name)) return fail("has an entry that leads out of its folder");
    return true;
}

bool ArchiveWalk::count(std::uint64_t bytes) {
    unpacked_ += bytes;
    return unpacked_ <= allowed_ || fail("unpacks to more than is allowed");
}

bool ArchiveWalk::readContent(const Sink &sink) {
    static constexpr std::array<char, blockSize> zeros{};
    unread_ = false;
    std::int64_t position = 0;
    const auto give = [&](const char *data, std::size_t size) {
        position += static_cast<std::int64_t>(size);
        return sink(data, size) || fail("can't be unpacked");
    };
    for (;;) {
        const void *data = nullptr;
        std::size_t size = 0;
        la_int64_t offset = 0;
        const int result = archive_read_data_block(archive_, &data, &size, &offset);
        if (result == ARCHIVE_EOF) return true;
        if (!checked(result)) return false;
        if (offset < position) return fail("is damaged");
        const auto hole = static_cast<std::uint64_t>(offset - position);
        if (hole > maxUnpackedSize || !count(hole + size)) return fail("unpacks to more than is allowed");
        while (position < offset) {
            const auto part = std::min<la_int64_t>(offset - position, blockSize);
            if (!give(zeros.data(), static_cast<std::size_t>(part))) return false;
        }
        if (size > 0 && !give(static_cast<const char *>(data), size)) return false;
    }
}

} // namespace FileSystem

// The bytes of a zip archive of empty files, for tests that are about names.
#pragma once

#include <string>
#include <vector>

namespace TestSupport {

namespace ZipDetail {

inline std::string number(std::size_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xff);
    return text;
}

// Version, flags, method, time, date, checksum and sizes of an empty file, then the length of its name.
inline std::string fields(const std::string &name, int flags) {
    return number(10, 2) + number(static_cast<std::size_t>(flags), 2) + std::string(6, '\0') + std::string(12, '\0') + number(name.size(), 2) +
           number(0, 2);
}

} // namespace ZipDetail

// `flags` are those of each entry: 0x800 says that names are UTF-8.
inline std::string zipOf(const std::vector<std::string> &names, int flags = 0) {
    using ZipDetail::fields;
    using ZipDetail::number;
    std::string files;
    std::string folder;
    for (const std::string &name : names) {
        folder += "PK\x01\x02" + number(10, 2) + fields(name, flags) + std::string(10, '\0') +
                  number(files.size(), 4) + name;
        files += "PK\x03\x04" + fields(name, flags) + name;
    }
    return files + folder + "PK\x05\x06" + number(0, 4) + number(names.size(), 2) + number(names.size(), 2) +
           number(folder.size(), 4) + number(files.size(), 4) + number(0, 2);
}

} // namespace TestSupport

// The bytes of a tar archive, for tests that are about what is in the files.
#pragma once

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

inline std::string tarFile(const std::vector<std::pair<std::string, std::string>> &files) {
    constexpr std::size_t block = 512;
    std::string archive;
    for (const auto &[name, content] : files) {
        std::string head(block, '\0');
        const auto put = [&head](std::size_t at, const std::string &text) {
            head.replace(at, text.size(), text);
        };
        char size[16];
        std::snprintf(size, sizeof size, "%011zo", content.size());
        put(0, name);
        put(100, "0000644");
        put(108, "0000000");
        put(116, "0000000");
        put(124, size);
        put(136, "00000000000");
        put(148, "        "); // what the checksum takes its own place for
        put(156, "0");
        put(257, "ustar");
        put(263, "00");
        unsigned sum = 0;
        for (const char byte : head)
            sum += static_cast<unsigned char>(byte);
        char text[8];
        std::snprintf(text, sizeof text, "%06o", sum);
        put(148, std::string(text, 6) + '\0');
        archive += head + content;
        archive.resize((archive.size() + block - 1) / block * block, '\0');
    }
    return archive + std::string(2 * block, '\0');
}

} // namespace TestSupport

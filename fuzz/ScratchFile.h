// A file for the bytes of one run, for readers that take a name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace Fuzz {

class ScratchFile {
public:
    explicit ScratchFile(const std::string &extension) {
        const std::string name = "eda-fuzz-" + std::to_string(std::random_device()()) + extension;
        path_ = std::filesystem::temp_directory_path() / name;
    }
    ~ScratchFile() {
        std::error_code error;
        std::filesystem::remove(path_, error);
    }
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    // The name of the file, which now holds these bytes.
    std::string write(const std::uint8_t *data, std::size_t size) const {
        std::ofstream stream(path_, std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
        stream.close();
        if (!stream) {
            std::fprintf(stderr, "can't write %s\n", path_.u8string().c_str());
            std::abort(); // a run that reads nothing would find nothing
        }
        return path_.u8string();
    }

private:
    std::filesystem::path path_;
};

} // namespace Fuzz

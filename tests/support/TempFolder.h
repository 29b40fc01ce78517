// A folder for one test, removed with all it holds.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TestSupport {

class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        for (int tries = 0; tries < 100; ++tries) {
            folder_ = std::filesystem::temp_directory_path() / ("eda-test-" + std::to_string(random()));
            if (std::filesystem::create_directory(folder_)) return;
        }
        throw std::runtime_error("no folder for the test");
    }

    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;

    // The folder, or a name in it, as UTF-8.
    std::string path() const { return folder_.u8string(); }
    std::string path(const std::string &name) const {
        return (folder_ / std::filesystem::u8path(name)).u8string();
    }

    // Writes a file of these bytes and gives its path.
    std::string write(const std::string &name, std::string_view bytes) const {
        std::ofstream stream(std::filesystem::u8path(path(name)), std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path(name);
    }

    // The bytes of a file, or "<missing>".
    std::string read(const std::string &name) const {
        std::ifstream stream(std::filesystem::u8path(path(name)), std::ios::binary);
        if (!stream) return "<missing>";
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    std::size_t numEntries() const {
        using Walk = std::filesystem::directory_iterator;
        return static_cast<std::size_t>(std::distance(Walk(folder_), Walk()));
    }

private:
    std::filesystem::path folder_;
};

} // namespace TestSupport

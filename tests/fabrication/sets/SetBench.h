// Small files of fabrication sets.
#pragma once

#include "fabrication/sets/FabricationSet.h"
#include "host/FileSystem/Path.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace TestSupport {

constexpr const char *layerHead = "%FSLAX24Y24*%\n%MOMM*%\n%ADD10C,0.5*%\nD10*\n";

// Copper: a pad in each corner of a square from (x, 0), and a line.
inline std::string copperText(const std::string &head = "", int x = 0, int size = 20) {
    const auto at = [](int value) { return std::to_string(value * 10000); };
    const std::string left = at(x), right = at(x + size), top = at(size);
    return head + layerHead + "X" + left + "Y0D03*\nX" + right + "Y0D03*\nX" + right + "Y" + top + "D03*\nX" +
           left + "Y" + top + "D03*\nX" + left + "Y0D02*\nG01X" + right + "Y" + top + "D01*\nM02*\n";
}

// A closed square.
inline std::string edgeText(const std::string &head = "", int x = 0, int size = 22) {
    const auto at = [](int value) { return std::to_string(value * 10000); };
    const std::string left = at(x - 1), right = at(x - 1 + size), low = at(-1), high = at(size - 1);
    return head + layerHead + "X" + left + "Y" + low + "D02*\nG01X" + right + "Y" + low + "D01*\nX" + right +
           "Y" + high + "D01*\nX" + left + "Y" + high + "D01*\nX" + left + "Y" + low + "D01*\nM02*\n";
}

inline std::string drillText(const std::string &head = "", int x = 0) {
    const auto at = [x](double value) { return std::to_string(x + value); };
    return "M48\n" + head + "METRIC\nT01C0.4\nT02C0.8\n%\nT01\nX" + at(1.5) + "Y2.5\nX" + at(3.5) +
           "Y4.5\nT02\nX" + at(9.5) + "Y9.5\nM30\n";
}

class SetBench : public testing::Test {
protected:
    TempFolder folder;
    std::vector<std::string> files;
    EDA::Fabrication::SetSettings settings;
    EDA::Fabrication::FabricationSet set;
    std::string error;

    void add(const std::string &name, const std::string &text) {
        const auto parent = std::filesystem::u8path(folder.path(name)).parent_path();
        std::filesystem::create_directories(parent);
        folder.write(name, text);
        files.push_back(name);
    }

    bool sort() {
        std::vector<EDA::Fabrication::SetFile> looked;
        for (const std::string &name : files)
            looked.push_back(EDA::Fabrication::lookAtFile(folder.path(name), name));
        return EDA::Fabrication::sortSet(looked, settings, set, error);
    }

    std::vector<std::string> copper() const {
        std::vector<std::string> names;
        for (const auto &file : set.copper)
            names.push_back(FileSystem::Path::getLastToken(file.shown));
        return names;
    }
    std::vector<std::string> drills() const {
        std::vector<std::string> names;
        for (const auto &drill : set.drills)
            names.push_back(FileSystem::Path::getLastToken(drill.file.shown));
        return names;
    }
    std::string profile() const {
        return set.profiles.empty() ? "" : FileSystem::Path::getLastToken(set.profiles.front().shown);
    }
    const EDA::Fabrication::SetFile *leftOut(const std::string &name) const {
        for (const auto &file : set.leftOut)
            if (file.shown == name) return &file;
        return nullptr;
    }
};

} // namespace TestSupport
